#include "host/controls/numeric_edit.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>

using host::TFormMode;

namespace {

/// One way of being refused: a good that could be saved, and what the user does to it.
struct Case
{
    const char *name;
    std::function<void(EditorFixture &)> before;
    std::function<void(QWidget *)> type;
    QString message; ///< empty: the service that refuses has told the user
    QString tab;
    QString focus;  ///< empty: the refusal names no control
    int edited = 0; ///< an existing good, 0 for a new one
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

const QString General = u"General_TPC"_qs;
const QString Complete = u"Complete_TPC"_qs;
const QString Discount = u"Discount_TPC"_qs;

std::vector<Case> OpeningCases()
{
    const auto opening = [](QWidget *screen) {
        test::Enter(screen, u"AvaBgPrd_EDT"_qs, u"۵"_qs);
        test::Enter(screen, u"CostBgPrd_EDT"_qs, u"1000"_qs);
    };
    return {
        {"amount out of range",
         [](EditorFixture &f) { f.host.vouchers.totalCostValid = false; },
         opening,
         {},
         General,
         {}},
        {"opening voucher approved",
         [](EditorFixture &f) { f.host.vouchers.approved = true; },
         opening,
         {},
         General,
         {}},
        {"stock would become negative",
         [](EditorFixture &f) {
             f.host.settings.record.ControlNegativeStock = true;
             f.host.stock.enough = false;
             f.database.Exec(u"update GoodInf set AvaBgPrd=9, CostBgPrd=1 where Code=500009"_qs);
         },
         Enter(u"AvaBgPrd_EDT"_qs, u"8"_qs),
         {},
         General,
         u"AvaBgPrd_EDT"_qs,
         500009},
        {"opening price missing", Nothing, Enter(u"AvaBgPrd_EDT"_qs, u"5"_qs), u"MsgRequiredField(قيمت)"_qs, General,
         u"CostBgPrd_EDT"_qs},
        {"opening price of the small unit missing", Nothing,
         [](QWidget *screen) {
             Check(screen, u"Formool_CHK"_qs);
             test::Type(u"12"_qs);
             test::Enter(screen, u"Meghdar_Joz_EDT"_qs, u"30"_qs);
         },
         u"MsgRequiredField(قيمت اول دوره)"_qs, General, u"GheymatJoz_EDT"_qs},
        {"formula missing", Nothing, [](QWidget *screen) { Check(screen, u"Formool_CHK"_qs); },
         u"MsgRequiredField(فرمول کالا)"_qs, General, u"Formool_EDT"_qs},
        {"second quantity does not follow",
         [](EditorFixture &f) { f.host.settings.record.TwoUnitVariableRatio = true; },
         [](QWidget *screen) {
             Check(screen, u"Formool_CHK"_qs);
             test::Type(u"12"_qs);
             test::Enter(screen, u"AvaBgPrd_EDT"_qs, u"24"_qs);
             test::Enter(screen, u"CostBgPrd_EDT"_qs, u"1"_qs);
             test::Enter(screen, u"Formool_EDT"_qs, u"10"_qs);
         },
         u"ShowSmartMessage(10052)"_qs, General, u"AvaBgPrd2_EDT"_qs},
        {"details of the opening quantity missing",
         [](EditorFixture &f) {
             f.host.settings.record.GoodDetails = f.host.settings.record.GoodDetailsForOpening = true;
             f.database.Exec(u"insert into DetailTypes(Title,DetailType) values(N'سریال',3)"_qs);
             f.database.Exec(
                 u"insert into DetailTypes_SelectedLists(Code,Title,DefaultSelectedList) values(1,N'پایه',1)"_qs);
             f.database.Exec(
                 u"insert into DetailTypes_SelectedList_Detail(SL_Code,Code,Radif) select 1,ID,1 from DetailTypes"_qs);
         },
         opening, u"ShowSmartMessage(10376)"_qs, General, u"AvaBgPrd_EDT"_qs},
    };
}

std::vector<Case> GeneralCases()
{
    return {
        {"no right to create",
         [](EditorFixture &f) { f.host.permissions.Deny(host::TSoftwarePart::Goods, host::TPermission::Create); },
         [](QWidget *) {},
         {},
         General,
         {}},
        {"no right to change",
         [](EditorFixture &f) { f.host.permissions.Deny(host::TSoftwarePart::Goods, host::TPermission::Change); },
         [](QWidget *) {},
         {},
         General,
         {},
         500009},
        {"unknown unit", Nothing, Enter(u"Unit_Entity1"_qs, u"99"_qs), {}, General, u"Unit_Entity1"_qs},
        {"root group", Nothing,
         [](QWidget *screen) {
             test::Focus(screen, u"Group_CMB"_qs);
             test::Press(Qt::Key_Home);
         },
         u"NotSaveable(کليه کالاها, کالايي)"_qs, General, u"Group_CMB"_qs},
        {"code empty", Nothing, Enter(u"Code_EDT"_qs, {}), u"MsgRequiredField(کد)"_qs, General, u"Code_EDT"_qs},
        {"code of seven digits", Nothing,
         [](QWidget *screen) {
             test::Find<host::NumericEdit>(screen, u"Code_EDT"_qs).setMaxLength(7);
             test::Enter(screen, u"Code_EDT"_qs, u"1000000"_qs);
         },
         u"ShowSmartMessage(10325, کالا, 6 رقم)"_qs, General, u"Code_EDT"_qs},
        {"code of another good", Nothing, Enter(u"Code_EDT"_qs, u"500009"_qs), u"MsgRepeatedCode(کد)"_qs, General,
         u"Code_EDT"_qs},
        {"name empty", Nothing, Enter(u"Name_EDT"_qs, {}), u"MsgRequiredField(نام کالا)"_qs, General, u"Name_EDT"_qs},
        {"name of another good", Nothing, Enter(u"Name_EDT"_qs, u"دوغ"_qs), u"MsgRepeatedField(نام, کالا)"_qs, General,
         u"Name_EDT"_qs},
        {"unit empty", Nothing, Enter(u"Unit_Entity1"_qs, {}), u"MsgRequiredField(واحد کالا)"_qs, General,
         u"Unit_Entity1"_qs},
        {"store empty", Nothing, Enter(u"Store_Entity"_qs, {}), u"MsgRequiredField(انبار)"_qs, General,
         u"Store_Entity"_qs},
        {"default level without a price", Nothing,
         On(u"Cost_Level_TPC"_qs,
            [](QWidget *screen) {
                test::Focus(screen, u"SellDefault_CMB"_qs);
                test::Press(Qt::Key_Down);
            }),
         u"MsgRequiredField(قيمت سطح پيش فرض)"_qs, u"Cost_Level_TPC"_qs, u"SellDetails_GRD"_qs},
    };
}

std::vector<Case> OtherCases()
{
    const auto emptied = [](const QString &control, const QString &caption) {
        return Case{"size empty", Nothing, On(Complete, Enter(control, {})), u"MsgRequiredField(%1)"_qs.arg(caption),
                    Complete,     control};
    };
    const auto rate = [](const QString &control, const QString &percent, const QString &caption) {
        return Case{"rate out of range",
                    Nothing,
                    On(Discount, Enter(control, percent)),
                    u"MsgPercent(%1)"_qs.arg(caption),
                    Discount,
                    control};
    };
    const auto ownLevy = [](const QString &button, const QString &edit, const QString &caption) {
        return Case{"own percent of 0",
                    Nothing,
                    On(Discount, [button](QWidget *screen) { Check(screen, button); }),
                    u"NotZeroValue(%1)"_qs.arg(caption),
                    Discount,
                    edit};
    };
    return {
        {"short code empty", Nothing, On(Complete, Enter(u"SmsCode_EDT"_qs, {})), u"MsgRequiredField(کد پيامکي)"_qs,
         Complete, u"SmsCode_EDT"_qs},
        {"short code of another good", Nothing, On(Complete, Enter(u"SmsCode_EDT"_qs, u"۹۰۹"_qs)),
         u"MsgRepeatedCode(کد پيامکي)"_qs, Complete, u"SmsCode_EDT"_qs},
        emptied(u"Weight_EDT"_qs, u"وزن"_qs),
        emptied(u"Length_EDT"_qs, u"طول"_qs),
        emptied(u"Width_EDT"_qs, u"عرض"_qs),
        emptied(u"Heigth_EDT"_qs, u"ارتفاع"_qs),
        ownLevy(u"TaxPercent_RB"_qs, u"TaxPercent_edt"_qs, u"درصد مالیات"_qs),
        ownLevy(u"ChargePercent_RB"_qs, u"ChargePercent_edt"_qs, u"درصد عوارض"_qs),
        rate(u"Discount_Buy_2_EDT"_qs, u"101"_qs, u"تخفیف نوع 2"_qs),
        rate(u"Discount_Buy_1_EDT"_qs, u"-0.01"_qs, u"تخفیف نوع 1"_qs),
        rate(u"Discount_Sell_3_EDT"_qs, u"101"_qs, u"تخفیف نوع 4"_qs),
        {"no default discount",
         [](EditorFixture &f) { f.database.Exec(u"update GoodCostDiscount set Default_Discount_Buy_Number=0"_qs); },
         [](QWidget *) {}, u"MsgRequiredField(تخفیف پیش فرض خرید)"_qs, Discount, u"Default_Discount_Buy_CMB"_qs,
         500009},
        {"unique code of another good",
         [](EditorFixture &f) { f.database.Exec(u"update GoodInf set DetailUniqueCode=N'77'"_qs); },
         On(Complete, Enter(u"DetailUniqueCode_EDT"_qs, u"77"_qs)), u"MsgRepeatedField(کد تفصیلی یکتا, کالا)"_qs,
         Complete, u"DetailUniqueCode_EDT"_qs},
        {"barcode of the sales screen",
         [](EditorFixture &f) { f.host.settings.record.ReservedBarcodes[1] = u"555"_qs; },
         On(Complete, Enter(u"BarCode3_EDT"_qs, u"555"_qs)), u"MsgHasSubRecordsAnother(بارکد, بارکدهای عملیاتی)"_qs,
         Complete, u"BarCode3_EDT"_qs},
    };
}

const std::vector<Case> &Cases()
{
    static const std::vector<Case> all = [] {
        std::vector<Case> cases = GeneralCases();
        for (const std::vector<Case> &more : {OpeningCases(), OtherCases()})
            cases.insert(cases.end(), more.begin(), more.end());
        return cases;
    }();
    return all;
}

} // namespace

/// What a save refuses, what it says, and where it leaves the user.
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
        f.InsertGood(500009, u"دوغ"_qs, 909);
        c.before(f);
        f.Open(c.edited, c.edited == 0 ? TFormMode::New : TFormMode::Edit, u"5"_qs, [&](QWidget *screen) {
            if (c.edited == 0)
                f.FillRequired(screen);
            c.type(screen);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.Take(), c.message);
            QCOMPARE(f.CurrentTab(screen), c.tab);
            if (!c.focus.isEmpty())
                QCOMPARE(test::Focused(), c.focus);
            QCOMPARE(f.database.Rows(u"select Code from GoodInf where isnull(ModifiedDate,'')='' order by Code"_qs),
                     QStringList{u"500009"_qs});
            f.Leave();
        });
    }

    void aSharedIndexIsOnlyAsked_data()
    {
        QTest::addColumn<bool>("goOn");
        QTest::newRow("no") << false;
        QTest::newRow("yes") << true;
    }
    void aSharedIndexIsOnlyAsked()
    {
        QFETCH(bool, goOn);
        EditorFixture f;
        f.InsertGood(500009, u"دوغ"_qs, 909);
        f.database.Exec(u"update GoodInf set kala_index=N'یک لیتری'"_qs);
        f.OpenNew(u"5"_qs, [&](QWidget *screen) {
            f.FillRequired(screen);
            test::Enter(screen, u"Kala_Index_EDT"_qs, u"یک لیتری"_qs);
            f.host.messages.Answer(goOn);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.Take(), u"ContinueWithRepeatedField(شاخص کالا)"_qs);
            QCOMPARE(f.host.messages.Take(), goOn ? u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_qs : QString());
            QCOMPARE(f.database.Scalar(u"select count(*) from GoodInf"_qs).toInt(), goOn ? 2 : 1);
            goOn ? test::Press(Qt::Key_Escape) : f.Leave();
        });
    }
};

REGISTER_TEST(TestGoodValidation)
#include "tst_validation.moc"
