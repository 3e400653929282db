#include "host/screens/base_dock.h"
#include "host/screens/grid_export.h"
#include "host/screens/grid_print.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QToolButton>

using namespace Qt::StringLiterals;

// What leaves a screen: its list on paper and in files.

namespace host {

namespace {

constexpr int FlashMilliseconds = 3000;

} // namespace

void TBaseDock_FRM::PreviewGrid()
{
    if (Grid *grid = PrintedGrid())
        GridPrinter(*grid, Title(), m_host.clock.NowShamsiDate()).Preview(this);
}

void TBaseDock_FRM::ExportGrid()
{
    Grid *grid = PrintedGrid();
    if (grid && GridExport(*grid, Title(), m_host.clock.NowShamsiDate()).Run(this))
        m_host.messages.ShowFlashMessage(u"فایل نوشته شد"_s, FlashMilliseconds);
}

void TBaseDock_FRM::BuildExport()
{
    m_export = new QToolButton(m_header);
    m_export->setObjectName(u"Export_BTN"_s);
    m_export->setText(u"خروجی…"_s);
    m_export->setToolTip(
        u"این فهرست را به اکسل، CSV یا PDF می‌برد (Ctrl+F9). چاپ با F9 است."_s);
    m_export->setAccessibleName(u"خروجی فهرست"_s);
    m_export->setAutoRaise(true);
    m_export->setFocusPolicy(Qt::NoFocus); // the keys belong to the list
    m_export->hide();
    m_headerRow->addWidget(m_export);
    connect(m_export, &QToolButton::clicked, this, [this] { Command(Title(), [this] { ExportGrid(); }); });
}

bool TBaseDock_FRM::TakeOut(const QKeyEvent *event)
{
    if (event->key() != Qt::Key_F9 || !PrintedGrid())
        return false;
    Command(Title(), [&] { event->modifiers() & Qt::ControlModifier ? ExportGrid() : PreviewGrid(); });
    return true;
}

} // namespace host
