#include "desk/choose/choose.h"

#include "host/controls/entity_picker.h"
#include "host/controls/grid.h"
#include "host/data/sql_text.h"
#include "ui_choose.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr std::uint8_t Review = 2;

// The call as a programmer would write it, kept in one left-to-right piece.
QString CallText(const QString &call, const QString &result)
{
    return u"\u2066%1 = %2\u2069"_s.arg(call, result);
}

} // namespace

TChoose_FRM::TChoose_FRM(host::Host &host, const GoodsModule &module)
    : TBaseDock_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::DockedList, host.mainWindow), m_module(module),
      m_ui(std::make_unique<Ui::Choose>()), m_result(host.DM.ADOConnection1)
{
    setObjectName(u"TChoose_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"انتخاب کالا برای بخش دیگر"_s);
    m_ui->Group_Entity->SetSource(host.entities, host::TSoftwarePart::GoodsGroups);
    m_ui->ResultDB_GRD->SetColumns({{u"Code"_s, u"کد"_s, 80, false, host::ColumnFormat::Code},
                                    {u"Name"_s, u"نام کامل کالا"_s, 340},
                                    {u"GroupName"_s, u"گروه"_s, 130},
                                    {u"UnitName"_s, u"واحد"_s, 80},
                                    {u"Stock"_s, u"موجودی"_s, 90, false, host::ColumnFormat::Quantity}});
    m_ui->ResultDB_GRD->horizontalHeader()->setStretchLastSection(true);
    RememberLayout(m_ui->ResultDB_GRD);
    Bind(m_ui->Select_BTN, Qt::Key_F2, [this] { SelectOne(); });
    Bind(m_ui->SelectMultible_BTN, Qt::Key_F3, [this] { SelectSeveral(); });
    Bind(m_ui->Edit_BTN, Qt::Key_F5, [this] { EditGood(); });
    Bind(m_ui->Review_BTN, Qt::Key_F6, [this] { ReviewGood(); });
    Bind(m_ui->New_BTN, Qt::Key_F4, [this] { NewGood(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

TChoose_FRM::~TChoose_FRM()
{
    m_ui->ResultDB_GRD->SetSource(nullptr);
}

void TChoose_FRM::FormShow()
{
    TBaseDock_FRM::FormShow();
    ShowNothing({}, u"هنوز چیزی انتخاب نشده است."_s);
    m_ui->LocateCode_EDT->setFocus();
}

void TChoose_FRM::SelectOne()
{
    const QString param = m_ui->LocateCode_EDT->text() + u"#LC#"_s;
    const int code = m_module.Select_Good(param);
    const QString call = CallText(u"Select_Good(\"%1\")"_s.arg(param), QString::number(code));
    if (code == 0)
        ShowNothing(call, u"کالایی انتخاب نشد."_s);
    else
        ShowResult(call, QString::number(code));
}

void TChoose_FRM::SelectSeveral()
{
    const QString codes = m_module.Select_Good_Multible({});
    const QString call = CallText(u"Select_Good_Multible(\"\")"_s, u'"' + codes + u'"');
    if (codes.isEmpty())
        ShowNothing(call, u"کالایی انتخاب نشد."_s);
    else
        ShowResult(call, codes);
}

int TChoose_FRM::GoodCode()
{
    const int code = static_cast<int>(m_ui->GoodCode_EDT->Integer());
    if (code <= 0) {
        m_host.messages.MsgRequiredField(u"کد کالا"_s);
        m_ui->GoodCode_EDT->setFocus();
    }
    return code;
}

void TChoose_FRM::EditGood()
{
    const int code = GoodCode();
    if (code <= 0)
        return;
    const int saved = m_module.Edit_Good(code);
    const QString call = CallText(u"Edit_Good(%1)"_s.arg(code), QString::number(saved));
    ShowResult(call + (saved ? u"\nکالا ذخیره شد."_s : u"\nکالا ذخیره نشد."_s), QString::number(code));
}

void TChoose_FRM::ReviewGood()
{
    const int code = GoodCode();
    if (code <= 0)
        return;
    m_module.Call_GoodGet(code, Review);
    ShowResult(u"\u2066Call_GoodGet(%1, 2)\u2069"_s.arg(code), QString::number(code));
}

void TChoose_FRM::NewGood()
{
    if (!m_ui->Group_Entity->Resolve(true))
        return;
    const int group = m_ui->Group_Entity->Code();
    const int result = m_module.Edit_Good(-group);
    ShowNothing(CallText(u"Edit_Good(%1)"_s.arg(-group), QString::number(result)),
                u"برای کالای جدید همیشه صفر برمی‌گردد."_s);
}

void TChoose_FRM::ShowResult(const QString &call, const QString &codes)
{
    m_ui->Call_LBL->setText(call);
    const QString list = host::CodeList(codes);
    m_result.Open(u"SELECT g.Code, g.Name, s.Name AS GroupName, u.Name AS UnitName, ISNULL(k.Amount1, 0) AS Stock FROM "
                  "GoodInf g LEFT JOIN GoodGrpS s ON s.Code = g.GrpCode LEFT JOIN Units u ON u.Code = g.Unit "
                  "LEFT JOIN GoodStock k ON k.GoodCode = g.Code WHERE g.Code IN ("_s +
                  list + u") ORDER BY CHARINDEX(',' + CAST(g.Code AS varchar(11)) + ',', ',' + '"_s + list +
                  u"' + ',')"_s);
    m_ui->ResultDB_GRD->SetSource(&m_result);
}

void TChoose_FRM::ShowNothing(const QString &call, const QString &words)
{
    m_ui->Call_LBL->setText(call.isEmpty() ? words : call + u'\n' + words);
    m_ui->ResultDB_GRD->SetSource(nullptr);
}

} // namespace desk
