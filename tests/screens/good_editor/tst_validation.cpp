#include "host/controls/numeric_edit.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>

using host::TFormMode;

namespace {

/// One way of being refused that takes a good of its own: one that could be saved, and what the user does to it.
struct Case
{
    const char *name;
    std::function<void(EditorFixture &)> before;
    std::function<void(QWidget *)> type;
    QString message; ///< empty: the service that refuses has told the user
    QString tab;
    QString focus;      ///< empty: the refusal names no control
    int edited = 0;     ///< an existing good, 0 for a new one
    QString probe = {}; ///< what the check of negative stock was asked
};

void Nothing(EditorFixture &)
{}

std::function<void(QWidget *)> Enter(const QString &control, const QString &text)
{
    return [=](QWidget *screen) { test::Enter(screen, control, text); };
}

/// The same on another tab.
std::function<void(QWidget *)> On(const QString &tab, const std::function<void(QWidget *)> &type)
{
    return [=](QWidget *screen) {
        EditorFixture::ShowTab(screen, tab);
        type(screen);
    };
}

void Check(QWidget *screen, const QString &control)
{
    test::Focus(screen, control);
    test::Press(Qt::Key_Space);
}

const QString General = u"General_TPC"_s;
const QString Complete = u"Complete_TPC"_s;
const QString Discount = u"Discount_TPC"_s;
const QString Prices = u"Cost_Level_TPC"_s;

/// Quantity and price of an opening voucher that is approved.
std::vector<Case> ApprovedCases()
{
    const auto approved = [](EditorFixture &f) {
        f.host.vouchers.approved = true;
        f.database.Exec(u"update GoodInf set AvaBgPrd=9, CostBgPrd=7 where Code=500009"_s);
    };
    return {
        {"another quantity", approved, Enter(u"AvaBgPrd_EDT"_s, u"8"_s), {}, General, {}, 500009},
        {"another price", approved, Enter(u"CostBgPrd_EDT"_s, u"8"_s), {}, General, {}, 500009},
        {"big units that are still being typed",
         approved,
         [](QWidget *screen) {
             Check(screen, u"Formool_CHK"_s);
             test::Type(u"12"_s);
             test::Enter(screen, u"MeghdarKol_EDT"_s, u"2"_s);
         },
         {},
         General,
         {}},
    };
}

std::vector<Case> OtherCases()
{
    return {
        {"no right to create, so no question about the typed quantity either",
         [](EditorFixture &f) {
             f.host.permissions.Deny(host::TSoftwarePart::Goods, host::TPermission::Create);
             f.host.settings.record.TwoUnitVariableRatio = true;
         },
         [](QWidget *screen) {
             Check(screen, u"Formool_CHK"_s);
             test::Type(u"12"_s);
             test::Enter(screen, u"AvaBgPrd_EDT"_s, u"5"_s);
             test::Enter(screen, u"AvaBgPrd2_EDT"_s, u"2"_s);
         },
         {},
         General,
         {}},
        {"stock leaves its store",
         [](EditorFixture &f) {
             f.host.settings.record.ControlNegativeStock = true;
             f.host.stock.enough = false;
             f.database.Exec(u"update GoodInf set AvaBgPrd=9, CostBgPrd=1 where Code=500009 insert into "
                             "GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1) values(500009,1,0,9)"_s);
         },
         Enter(u"Store_Entity"_s, u"2"_s),
         {},
         General,
         u"AvaBgPrd_EDT"_s,
         500009,
         u"Check_TockMinus(select GoodCode as Code , StoreCode as Anbar , -1 * Amount1 as Mogodi  from "
         "GoodFirstAsset where Tmp = 0 and GoodCode = 500009 and StoreCode = 1, 1405/01/01)"_s},
        {"opening price of the small unit missing", Nothing,
         [](QWidget *screen) {
             Check(screen, u"Formool_CHK"_s);
             test::Type(u"12"_s);
             test::Enter(screen, u"Meghdar_Joz_EDT"_s, u"30"_s);
         },
         u"MsgRequiredField(قيمت اول دوره)"_s, General, u"GheymatJoz_EDT"_s},
        {"unknown second unit",
         Nothing,
         [](QWidget *screen) {
             test::Enter(screen, u"Unit_Entity2"_s, u"99"_s);
             test::Focus(screen, u"Name_EDT"_s);
         },
         {},
         General,
         u"Unit_Entity2"_s},
        {"percent that is still being typed", Nothing, On(Complete, Enter(u"Pos_EDT"_s, u"101"_s)),
         u"MsgRequiredField(درصد کمتر از 100 )"_s, Complete, u"Pos_EDT"_s},
        {"code empty", Nothing, Enter(u"Code_EDT"_s, {}), u"MsgRequiredField(کد)"_s, General, u"Code_EDT"_s},
        {"code of seven digits", Nothing,
         [](QWidget *screen) {
             test::Find<host::NumericEdit>(screen, u"Code_EDT"_s).setMaxLength(7);
             test::Enter(screen, u"Code_EDT"_s, u"1000000"_s);
         },
         u"ShowSmartMessage(10325, کالا, 6 رقم)"_s, General, u"Code_EDT"_s},
        {"code of another good", Nothing, Enter(u"Code_EDT"_s, u"500009"_s), u"MsgRepeatedCode(کد)"_s, General,
         u"Code_EDT"_s},
        {"rate below 0", Nothing, On(Discount, Enter(u"Discount_Buy_1_EDT"_s, u"-0.01"_s)),
         u"MsgPercent(تخفیف نوع 1)"_s, Discount, u"Discount_Buy_1_EDT"_s},
    };
}

const std::vector<Case> &Cases()
{
    static const std::vector<Case> all = [] {
        std::vector<Case> cases = ApprovedCases();
        const std::vector<Case> more = OtherCases();
        cases.insert(cases.end(), more.begin(), more.end());
        return cases;
    }();
    return all;
}

/// What the save says next of a good with every fault at once, where it leads, and what mends it there.
struct Step
{
    QString message; ///< "services": the one that refuses has told the user; these were asked so far
    QString focus;
    std::function<void(EditorFixture &, QWidget *)> mend;
};

std::function<void(EditorFixture &, QWidget *)> TypeOver(const QString &text)
{
    return [=](EditorFixture &, QWidget *) {
        test::Press(Qt::Key_A, Qt::ControlModifier);
        text.isEmpty() ? test::Press(Qt::Key_Delete) : test::Type(text);
    };
}

std::function<void(EditorFixture &, QWidget *)> PressKey(Qt::Key key)
{
    return [=](EditorFixture &, QWidget *) { test::Press(key); };
}

void MakeEveryFault(EditorFixture &f)
{
    f.InsertGood(500009, u"دوغ"_s, 909);
    f.InsertGood(500010, u"شیر"_s, 101);
    for (const char *statement :
         {"update GoodInf set DetailUniqueCode=N'77',kala_index=N'یک لیتری' where Code=500009",
          "update GoodInf set AvaBgPrd=9,CostBgPrd=1 where Code=500010",
          "update GoodCostDiscount set Default_Discount_Sell_Number=0,Default_Discount_Buy_Number=0",
          "insert into DetailTypes(Title,DetailType) values(N'سریال',3)",
          "insert into GoodDetailRelation(GoodCode,DetailID) select 500010,ID from DetailTypes"})
        f.database.Exec(QString::fromUtf8(statement));
    f.host.permissions.Deny(host::TSoftwarePart::Goods, host::TPermission::Change);
    f.host.vouchers.totalCostValid = false;
    f.host.vouchers.approved = true;
    f.host.stock.enough = false;
    host::TSettingRecord &settings = f.host.settings.record;
    settings.ControlNegativeStock = settings.GoodDetails = settings.GoodDetailsForOpening = true;
    settings.TwoUnitVariableRatio = true;
}

void TypeEveryFault(EditorFixture &f, QWidget *screen)
{
    const auto enter = [&f, screen](const QString &tab, const QStringList &entries) {
        f.ShowTab(screen, tab);
        for (const QString &entry : entries)
            test::Enter(screen, entry.section(u'=', 0, 0), entry.section(u'=', 1));
    };
    enter(Complete, {u"Weight_EDT="_s, u"Length_EDT="_s, u"Width_EDT="_s, u"Heigth_EDT="_s, u"SmsCode_EDT="_s,
                     u"DetailUniqueCode_EDT=77"_s});
    QStringList rates;
    for (int number = 1; number <= 4; ++number)
        rates << u"Discount_Sell_%1_EDT=101"_s.arg(number) << u"Discount_Buy_%1_EDT=101"_s.arg(number);
    enter(Discount, rates);
    Check(screen, u"TaxPercent_RB"_s);
    Check(screen, u"ChargePercent_RB"_s);
    f.ShowTab(screen, Prices);
    for (const QString &level : {u"SellDefault_CMB"_s, u"BuyDefault_CMB"_s}) {
        test::Focus(screen, level);
        test::Press(Qt::Key_End);
    }
    enter(General, {u"BarCode1_EDT=551"_s, u"Name_EDT="_s, u"AvaBgPrd_EDT=5"_s, u"CostBgPrd_EDT=0"_s});
    for (int number = 2; number <= 6; ++number)
        enter(Complete, {u"BarCode%1_EDT=555"_s.arg(number)});
    f.ShowTab(screen, General);
    test::Focus(screen, u"Group_CMB"_s);
    test::Press(Qt::Key_Home);
    Check(screen, u"Formool_CHK"_s);
    test::Enter(screen, u"Unit_Entity1"_s, u"99"_s);
    QCoreApplication::processEvents();
    f.host.settings.record.ReservedBarcodes[0] = u"551"_s;
    f.host.settings.record.ReservedBarcodes[2] = u"555"_s;
}

std::vector<Step> OpeningSteps()
{
    return {
        {u"services"_s, u"Unit_Entity1"_s, [](EditorFixture &f, QWidget *) { f.host.permissions.denied.clear(); }},
        {u"services"_s, u"Unit_Entity1"_s, [](EditorFixture &f, QWidget *) { f.host.vouchers.totalCostValid = true; }},
        {u"services voucher"_s, u"Unit_Entity1"_s,
         [](EditorFixture &f, QWidget *) { f.host.vouchers.approved = false; }},
        {u"services voucher stock"_s, u"AvaBgPrd_EDT"_s,
         [](EditorFixture &f, QWidget *screen) {
             f.host.stock.enough = true;
             test::Enter(screen, u"Store_Entity"_s, {});
             test::Focus(screen, u"Unit_Entity1"_s);
         }},
        {u"services voucher stock"_s, u"Unit_Entity1"_s, TypeOver({})},
        {u"NotSaveable(کليه کالاها, کالايي)"_s, u"Group_CMB"_s, PressKey(Qt::Key_Down)},
        {u"ShowSmartMessage(10376)"_s, u"AvaBgPrd_EDT"_s,
         [](EditorFixture &f, QWidget *) {
             f.host.goodDetails.entered = true;
             f.host.detailMovements.totals.insert(1, {5});
         }},
        {u"MsgRequiredField(کد پيامکي)"_s, u"SmsCode_EDT"_s, TypeOver(u"۹۰۹"_s)},
        {u"MsgRepeatedCode(کد پيامکي)"_s, u"SmsCode_EDT"_s, TypeOver(u"101"_s)},
        {u"MsgRequiredField(نام کالا)"_s, u"Name_EDT"_s,
         [](EditorFixture &f, QWidget *screen) {
             test::Type(u"دوغ"_s);
             f.database.Exec(u"update GoodInf set Name=N'دوغ  یک لیتری' where Code=500009"_s);
             test::Enter(screen, u"Kala_Index_EDT"_s, u"یک لیتری"_s);
         }},
        {u"MsgRepeatedField(نام, کالا)"_s, u"Name_EDT"_s,
         [](EditorFixture &f, QWidget *) {
             test::Type(u"ماست"_s);
             f.host.messages.Answer(false);
         }},
        {u"ContinueWithRepeatedField(شاخص کالا)"_s, u"Kala_Index_EDT"_s,
         [](EditorFixture &f, QWidget *) { f.host.messages.Answer(true); }},
        {u"ContinueWithRepeatedField(شاخص کالا) MsgRequiredField(واحد کالا)"_s, u"Unit_Entity1"_s,
         [](EditorFixture &, QWidget *screen) {
             test::Type(u"1"_s);
             test::Enter(screen, u"Kala_Index_EDT"_s, u" "_s); // nothing, so nothing to share
         }},
        {u"MsgRequiredField(قيمت)"_s, u"CostBgPrd_EDT"_s, TypeOver(u"10"_s)},
        {u"MsgRequiredField(انبار)"_s, u"Store_Entity"_s, TypeOver(u"1"_s)},
        {u"MsgRequiredField(فرمول کالا)"_s, u"Formool_EDT"_s, TypeOver(u"12"_s)},
        {u"ShowSmartMessage(10052)"_s, u"AvaBgPrd2_EDT"_s,
         [](EditorFixture &, QWidget *screen) { test::Enter(screen, u"AvaBgPrd_EDT"_s, u"24"_s); }},
    };
}

std::vector<Step> OtherSteps()
{
    const QString noPrice = u"MsgRequiredField(قيمت سطح پيش فرض)"_s;
    const auto noLevel = [](const QString &level) {
        return [=](EditorFixture &, QWidget *screen) {
            test::Focus(screen, level);
            test::Press(Qt::Key_Home);
        };
    };
    std::vector<Step> steps{
        {noPrice, u"SellDetails_GRD"_s, noLevel(u"SellDefault_CMB"_s)},
        {noPrice, u"BuyDetails_GRD"_s, noLevel(u"BuyDefault_CMB"_s)},
        {u"MsgRequiredField(وزن)"_s, u"Weight_EDT"_s, TypeOver(u"1"_s)},
        {u"MsgRequiredField(طول)"_s, u"Length_EDT"_s, TypeOver(u"1"_s)},
        {u"MsgRequiredField(عرض)"_s, u"Width_EDT"_s, TypeOver(u"1"_s)},
        {u"MsgRequiredField(ارتفاع)"_s, u"Heigth_EDT"_s, TypeOver(u"1"_s)},
        {u"NotZeroValue(درصد مالیات)"_s, u"TaxPercent_edt"_s, TypeOver(u"9"_s)},
        {u"NotZeroValue(درصد عوارض)"_s, u"ChargePercent_edt"_s, TypeOver(u"101"_s)},
    };
    for (int number = 1; number <= 4; ++number)
        steps.push_back({u"MsgPercent(تخفیف نوع %1)"_s.arg(number), u"Discount_Buy_%1_EDT"_s.arg(number),
                         TypeOver(number == 4 ? u"100"_s : QString())});
    for (int number = 1; number <= 4; ++number)
        steps.push_back({u"MsgPercent(تخفیف نوع 4)"_s, u"Discount_Sell_%1_EDT"_s.arg(number), TypeOver(u"0"_s)});
    const std::vector<Step> last{
        {u"MsgRequiredField(تخفیف پیش فرض خرید)"_s, u"Default_Discount_Buy_CMB"_s, PressKey(Qt::Key_Home)},
        {u"MsgRequiredField(تخفیف پیش فرض فروش)"_s, u"Default_Discount_Sell_CMB"_s, PressKey(Qt::Key_Home)},
        {u"MsgRepeatedField(کد تفصیلی یکتا, کالا)"_s, u"DetailUniqueCode_EDT"_s, TypeOver(u"78"_s)},
    };
    steps.insert(steps.end(), last.begin(), last.end());
    for (int number = 1; number <= 6; ++number)
        steps.push_back({u"MsgHasSubRecordsAnother(بارکد, بارکدهای عملیاتی)"_s, u"BarCode%1_EDT"_s.arg(number),
                         TypeOver(QString::number(number))});
    return steps;
}

/// The tab that shows a control.
QString TabOf(QWidget *screen, const QString &control)
{
    const QWidget *page = &test::Find(screen, control);
    while (page && !page->objectName().endsWith(u"_TPC"))
        page = page->parentWidget();
    return page ? page->objectName() : QString();
}

} // namespace

/// What a save refuses, what it says, in which order, and where it leaves the user.
class TestGoodValidation : public QObject
{
    Q_OBJECT

private slots:
    void refuses_data()
    {
        QTest::addColumn<size_t>("index");
        for (size_t i = 0; i < Cases().size(); ++i)
            QTest::addRow("%s %s", Cases()[i].name, qPrintable(Cases()[i].focus)) << i;
    }
    void refuses()
    {
        QFETCH(size_t, index);
        const Case &c = Cases()[index];
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_s, 909);
        c.before(f);
        f.Open(c.edited, c.edited == 0 ? TFormMode::New : TFormMode::Edit, u"5"_s, [&](QWidget *screen) {
            if (c.edited == 0)
                f.FillRequired(screen);
            c.type(screen);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.Take(), c.message);
            QCOMPARE(f.CurrentTab(screen), c.tab);
            if (!c.focus.isEmpty())
                QCOMPARE(test::Focused(), c.focus);
            QCOMPARE(f.database.Rows(u"select Code from GoodInf where isnull(ModifiedDate,'')='' order by Code"_s),
                     QStringList{u"500009"_s});
            if (!c.probe.isEmpty())
                QCOMPARE(f.host.stock.calls.value(0), c.probe);
            f.Leave();
        });
    }

    void refusesInOrder()
    {
        EditorFixture f;
        MakeEveryFault(f);
        std::vector<Step> steps = OpeningSteps();
        for (const Step &step : OtherSteps())
            steps.push_back(step);
        f.OpenGood(500010, [&](QWidget *screen) {
            TypeEveryFault(f, screen);
            for (const Step &step : steps) {
                test::Press(Qt::Key_F3);
                QString told = f.host.messages.TakeAll().join(u' ');
                if (told.isEmpty())
                    told = u"services"_s + (f.host.vouchers.calls.isEmpty() ? QString() : u" voucher"_s) +
                           (f.host.stock.calls.isEmpty() ? QString() : u" stock"_s);
                QCOMPARE(told, step.message);
                QCOMPARE(test::Focused(), step.focus);
                QCOMPARE(f.CurrentTab(screen), TabOf(screen, step.focus));
                step.mend(f, screen);
            }
            QCOMPARE(f.database.Rows(u"select Code from GoodInf where isnull(ModifiedDate,'')<>''"_s), QStringList());
            QCOMPARE(f.host.vouchers.calls.value(0), u"IsVoucherApproved(0, 1, ویرایش قیمت اول دوره, اول دوره)"_s);
            QCOMPARE(f.host.stock.calls.value(0),
                     u"Check_TockMinus(select GoodCode as Code , StoreCode as Anbar , 5 - Amount1 as Mogodi  from "
                     "GoodFirstAsset where Tmp = 0 and GoodCode = 500010 and StoreCode = 1, 1405/01/01)"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s});
        });
        QCOMPARE(f.database.Rows(u"select GrpCode,kala_name,AvaBgPrd,AvaBgPrd2,AbbName,TaxPercent,ChargePercent,"
                                 "Discount_Buy_3,Discount_Buy_4 from GoodInf join GoodCostDiscount on GoodCode=Code "
                                 "where Code=500010"_s),
                 QStringList{u"5|ماست|24|2|!1!2!3!4!5!6!|9|101|0|100"_s});
    }
};

REGISTER_TEST(TestGoodValidation)
#include "tst_validation.moc"
