#include "desk/choose/choose.h"

#include "host/controls/entity_picker.h"
#include "host/controls/grid.h"
#include "host/data/sql_text.h"
#include "ui_choose.h"

#include <QtWidgets/QHeaderView>

namespace desk {

namespace {

constexpr std::uint8_t Review = 2;

// The call as a programmer would write it, kept in one left-to-right piece.
QString CallText(const QString &call, const QString &result)
{
    return u"\u2066%1 = %2\u2069"_qs.arg(call, result);
}

} // namespace

TChoose_FRM::TChoose_FRM(host::Host &host, const GoodsModule &module)
    : TBaseDock_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::DockedList, host.mainWindow), module_(module),
      ui_(std::make_unique<Ui::Choose>()), result_(host.DM.ADOConnection1)
{
    setObjectName(u"TChoose_FRM"_qs);
    ui_->setupUi(Content());
    SetTitle(u"انتخاب کالا برای بخش دیگر"_qs);
    ui_->Group_Entity->SetSource(host.entities, host::TSoftwarePart::GoodsGroups);
    ui_->ResultDB_GRD->SetColumns({{u"Code"_qs, u"کد"_qs, 80, false, host::ColumnFormat::Code},
                                   {u"Name"_qs, u"نام کامل کالا"_qs, 340},
                                   {u"GroupName"_qs, u"گروه"_qs, 130},
                                   {u"UnitName"_qs, u"واحد"_qs, 80},
                                   {u"Stock"_qs, u"موجودی"_qs, 90, false, host::ColumnFormat::Quantity}});
    ui_->ResultDB_GRD->horizontalHeader()->setStretchLastSection(true);
    RememberLayout(ui_->ResultDB_GRD);
    Bind(ui_->Select_BTN, Qt::Key_F2, [this] { SelectOne(); });
    Bind(ui_->SelectMultible_BTN, Qt::Key_F3, [this] { SelectSeveral(); });
    Bind(ui_->Edit_BTN, Qt::Key_F5, [this] { EditGood(); });
    Bind(ui_->Review_BTN, Qt::Key_F6, [this] { ReviewGood(); });
    Bind(ui_->New_BTN, Qt::Key_F4, [this] { NewGood(); });
    Bind(AddFooterButton(u"EXit_BTN"_qs, u"خروج Esc"_qs), {}, [this] { reject(); });
}

TChoose_FRM::~TChoose_FRM()
{
    ui_->ResultDB_GRD->SetSource(nullptr);
}

void TChoose_FRM::FormShow()
{
    TBaseDock_FRM::FormShow();
    ShowNothing({}, u"هنوز چیزی انتخاب نشده است."_qs);
    ui_->LocateCode_EDT->setFocus();
}

void TChoose_FRM::SelectOne()
{
    const QString param = ui_->LocateCode_EDT->text() + u"#LC#"_qs;
    const int code = module_.Select_Good(param);
    const QString call = CallText(u"Select_Good(\"%1\")"_qs.arg(param), QString::number(code));
    if (code == 0)
        ShowNothing(call, u"کالایی انتخاب نشد."_qs);
    else
        ShowResult(call, QString::number(code));
}

void TChoose_FRM::SelectSeveral()
{
    const QString codes = module_.Select_Good_Multible({});
    const QString call = CallText(u"Select_Good_Multible(\"\")"_qs, u'"' + codes + u'"');
    if (codes.isEmpty())
        ShowNothing(call, u"کالایی انتخاب نشد."_qs);
    else
        ShowResult(call, codes);
}

int TChoose_FRM::GoodCode()
{
    const int code = static_cast<int>(ui_->GoodCode_EDT->Integer());
    if (code <= 0) {
        m_host.messages.MsgRequiredField(u"کد کالا"_qs);
        ui_->GoodCode_EDT->setFocus();
    }
    return code;
}

void TChoose_FRM::EditGood()
{
    const int code = GoodCode();
    if (code <= 0)
        return;
    const int saved = module_.Edit_Good(code);
    const QString call = CallText(u"Edit_Good(%1)"_qs.arg(code), QString::number(saved));
    ShowResult(call + (saved ? u"\nکالا ذخیره شد."_qs : u"\nکالا ذخیره نشد."_qs), QString::number(code));
}

void TChoose_FRM::ReviewGood()
{
    const int code = GoodCode();
    if (code <= 0)
        return;
    module_.Call_GoodGet(code, Review);
    ShowResult(u"\u2066Call_GoodGet(%1, 2)\u2069"_qs.arg(code), QString::number(code));
}

void TChoose_FRM::NewGood()
{
    if (!ui_->Group_Entity->Resolve(true))
        return;
    const int group = ui_->Group_Entity->Code();
    const int result = module_.Edit_Good(-group);
    ShowNothing(CallText(u"Edit_Good(%1)"_qs.arg(-group), QString::number(result)),
                u"برای کالای جدید همیشه صفر برمی‌گردد."_qs);
}

void TChoose_FRM::ShowResult(const QString &call, const QString &codes)
{
    ui_->Call_LBL->setText(call);
    const QString list = host::CodeList(codes);
    result_.Open(u"SELECT g.Code, g.Name, s.Name AS GroupName, u.Name AS UnitName, ISNULL(k.Amount1, 0) AS Stock FROM "
                 "GoodInf g LEFT JOIN GoodGrpS s ON s.Code = g.GrpCode LEFT JOIN Units u ON u.Code = g.Unit "
                 "LEFT JOIN GoodStock k ON k.GoodCode = g.Code WHERE g.Code IN ("_qs +
                 list + u") ORDER BY CHARINDEX(',' + CAST(g.Code AS varchar(11)) + ',', ',' + '"_qs + list +
                 u"' + ',')"_qs);
    ui_->ResultDB_GRD->SetSource(&result_);
}

void TChoose_FRM::ShowNothing(const QString &call, const QString &words)
{
    ui_->Call_LBL->setText(call.isEmpty() ? words : call + u'\n' + words);
    ui_->ResultDB_GRD->SetSource(nullptr);
}

} // namespace desk
