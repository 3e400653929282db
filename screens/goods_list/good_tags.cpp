#include "screens/goods_list/good_tags.h"

#include "host/controls/number_text.h"

#include <QGridLayout>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace goods_list {

namespace {

/// Room for a few goods; more are scrolled to.
constexpr int MaximumHeight = 96;

} // namespace

GoodTagsView::GoodTagsView(QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    viewport()->setAutoFillBackground(false);
    setStyleSheet(u"background: transparent; border: none;"_s);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void GoodTagsView::SetAvailable(const QList<host::Tag> &tags)
{
    m_available = tags;
    m_shown.clear();
}

void GoodTagsView::Show(const QList<GoodTags> &goods, int more)
{
    if (!goods.isEmpty() && goods == m_shown && more == m_more)
        return; // the keys stay where they are
    m_shown = goods;
    m_more = more;
    auto *lines = new QWidget(this);
    auto *grid = new QGridLayout(lines);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(1, 1);
    for (const GoodTags &good : goods) {
        const int row = grid->rowCount();
        auto *panel = new host::TagsPanel(lines);
        panel->setReadOnly(goods.size() > 1);
        panel->SetAvailable(m_available);
        panel->ShowStored(good.Tags);
        connect(panel, &host::TagsPanel::Changed, this, [this, panel, code = good.Code] {
            if (!m_shown.isEmpty())
                m_shown.first().Tags = panel->CodesText();
            emit Changed(code, panel->CodesText());
        });
        auto *name = new QLabel(good.Name, lines);
        name->setTextFormat(Qt::PlainText);
        grid->addWidget(name, row, 0);
        grid->addWidget(panel, row, 1);
    }
    if (more > 0)
        grid->addWidget(new QLabel(u"و %1 کالای دیگر"_s.arg(host::DisplayNumber(QString::number(more))), lines),
                        grid->rowCount(), 0);
    grid->setRowStretch(grid->rowCount(), 1);
    setWidget(lines);
    setFixedHeight(qMin(lines->sizeHint().height(), MaximumHeight));
}

} // namespace goods_list
