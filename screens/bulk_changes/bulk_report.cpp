#include "screens/bulk_changes/bulk_report.h"

#include "host/controls/grid.h"
#include "ui_bulk_report.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

TBulk_Report_FRM::TBulk_Report_FRM(host::Host &host, const QString &title, const QString &text,
                                   QAbstractItemModel &left, const QList<host::GridColumn> &columns)
    : TBaseDock_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::Review),
      m_ui(std::make_unique<Ui::TBulk_Report_FRM>())
{
    m_ui->setupUi(Content());
    SetTitle(title);
    resize(910, 460);
    m_ui->Report_LBL->setText(text);
    m_ui->Left_GRD->SetColumns(columns);
    m_ui->Left_GRD->SetSource(&left);
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش ليست F9"_s), Qt::Key_F9, [this] { PreviewGrid(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

TBulk_Report_FRM::~TBulk_Report_FRM()
{
    m_ui->Left_GRD->SetSource(nullptr);
}

void TBulk_Report_FRM::FormShown()
{
    m_ui->Left_GRD->setFocus();
}

bool TBulk_Report_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
}

host::Grid *TBulk_Report_FRM::PrintedGrid() const
{
    return m_ui->Left_GRD;
}
