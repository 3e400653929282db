#include "data/goods/good_dm.h"
#include "host/controls/number_text.h"
#include "screens/bulk_changes/asset_type.h"
#include "screens/bulk_changes/group_discount.h"
#include "screens/bulk_changes/update_price.h"
#include "tests/screens/goods_list/list_fixture.h"

#include <QAbstractButton>
#include <QComboBox>

namespace {

using Drive = std::function<void(QWidget *)>;

const QString Done = u"ShowFlashMessage(عملیات با موفقیت انجام شد)"_s;
const QString Sell1 = u"select GoodCode, CostLevel_Sell_1 from GoodCostDiscount where GoodCode <= 110004 order by 1"_s;

/// Drives the screen that appears when the one driven now has closed.
void Next(const Drive &drive)
{
    const QPointer<QWidget> now = QApplication::activeModalWidget();
    auto *poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, poll, [=] {
        QWidget *next = QApplication::activeModalWidget();
        if (!next || next == now || !next->isActiveWindow())
            return;
        poll->stop();
        poll->deleteLater();
        test::driven << next;
        const auto leave = qScopeGuard([] { test::driven.removeLast(); });
        drive(next);
    });
    poll->start(5);
}

void PressAlt(char16_t letter)
{
    QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key(letter), QString(letter), Qt::AltModifier);
    QTest::qWait(150); // the button goes down and up by itself
}

/// Alt and the letter of a button open its menu; Down and Enter choose.
std::function<void()> Menu(Screen &screen, char16_t letter, int entry)
{
    return [&screen, letter, entry] {
        screen.Activate();
        screen.grid.setFocus();
        QTimer::singleShot(0, &screen.list, [entry] {
            QVERIFY(QApplication::activePopupWidget());
            for (int step = 0; step < entry; ++step)
                test::Press(Qt::Key_Down);
            test::Press(Qt::Key_Return);
        });
        PressAlt(letter);
    };
}

constexpr char16_t Prices = u'غ';
constexpr char16_t Discounts = u'خ';
constexpr char16_t DetailTypes = u'ص';
constexpr char16_t AssetType = u'ث';

void Tick(QWidget *screen, const QStringList &names)
{
    for (const QString &name : names) {
        test::Focus(screen, name);
        test::Press(Qt::Key_Space);
    }
}

/// "Name=text" typed, "Name:3" three steps down in a chooser.
void Fill(QWidget *screen, const QStringList &entries)
{
    for (const QString &entry : entries) {
        if (entry.contains(u'=')) {
            test::Enter(screen, entry.section(u'=', 0, 0), entry.section(u'=', 1));
            continue;
        }
        test::Focus(screen, entry.section(u':', 0, 0));
        for (int step = entry.section(u':', 1).toInt(); step > 0; --step)
            test::Press(Qt::Key_Down);
    }
}

/// +5 % on the first sale level.
void RaiseByFive(QWidget *dialog)
{
    Tick(dialog, {u"Option2_RB"_s});
    Fill(dialog, {u"CostColumnSelect_SEF=۱"_s, u"Percent_Option2_EDT=۵"_s});
    test::Press(Qt::Key_F3);
}

} // namespace

/// Changes of many goods, from the list.
class TestBulk : public QObject
{
    Q_OBJECT

private slots:
    void priceQuestion_data();
    void priceQuestion();
    void discounts_data();
    void discounts();
    void assetType();
    void scopes_data();
    void scopes();
    void pricesThereAndBack();
    void pricesOfAnotherDesk();
    void detailTypes();
    void rightRefused();
};

void TestBulk::priceQuestion_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("instruction"); // kind, level, option, value, direction, rounding
    const QString level = u"CostColumnSelect_SEF=2"_s;
    const auto row = [](const char *name, const QString &option, const QStringList &entries, const char16_t *result) {
        QTest::newRow(name) << option << entries << QString::fromUtf16(result);
    };
    row("no level", {}, {}, u"");
    row("no such level", {}, {u"CostColumnSelect_SEF=99"_s}, u"");
    row("last sale price", {}, {level, u"Type_Option1_CMB:1"_s}, u"0 2 1 1 1 0");
    row("level by name, rounded", {}, {u"CostColumnSelect_SEF=همکار"_s, u"Rounding_CMB:3"_s}, u"0 3 1 0 1 1000");
    row("percent off a purchase price", u"Option2_RB"_s,
        {u"CostType_CMD:1"_s, level, u"Percent_Option2_EDT=۱۰"_s, u"Type_Option2_CMB:1"_s}, u"1 2 2 10 -1 0");
    row("percent of 13 digits and amount of 15", u"Option2_RB"_s,
        {level, u"Percent_Option2_EDT=9999999999999"_s, u"Percent_Option2_EDT=99999999999999"_s},
        u"0 2 2 9999999999999 1 0");
    row("amount of 15 digits", u"Option3_RB"_s, {level, u"Price_Option3_EDT=999999999999999"_s},
        u"0 2 3 999999999999999 1 0");
    row("amount, emptied", u"Option3_RB"_s, {level, u"Price_Option3_EDT="_s}, u"0 2 3 0 1 0");
    row("consumer price has no level", u"Option3_RB"_s, {level, u"CostType_CMD:2"_s, u"Price_Option3_EDT=2500.5"_s},
        u"2 -1000 3 2500.5 1 0");
}

void TestBulk::priceQuestion()
{
    QFETCH(QString, option);
    QFETCH(QStringList, entries);
    QFETCH(QString, instruction);
    Screen screen;
    TGood_DM goods(screen.host.host.DM, screen.host.settings, screen.host.entities);
    TGood_UpdatePrice_FRM question(screen.host, goods);
    QStringList fresh;
    test::Drive([&] { QCOMPARE(question.ShowModally(), 1); },
                [&](QWidget *dialog) {
                    fresh = test::State(dialog);
                    QCOMPARE(test::Focused(), u"CostType_CMD"_s);
                    Tick(dialog, {u"Option3_RB"_s});
                    Fill(dialog, {u"CostType_CMD:2"_s, u"Price_Option3_EDT=77"_s, u"Type_Option3_CMB:1"_s,
                                  u"Rounding_CMB:2"_s});
                    QVERIFY(!test::Find(dialog, u"CostColumnSelect_SEF"_s).isEnabled());
                    QVERIFY(!test::Find(dialog, u"Type_Option1_CMB"_s).isEnabled());
                    test::Press(Qt::Key_F3);
                });
    test::Drive([&] { QCOMPARE(question.ShowModally(), instruction.isEmpty() ? 0 : 1); },
                [&](QWidget *dialog) {
                    QCOMPARE(test::State(dialog), fresh); // nothing is left of the former answer
                    if (!option.isEmpty())
                        Tick(dialog, {option});
                    Fill(dialog, entries);
                    test::Press(Qt::Key_F3);
                    if (!instruction.isEmpty())
                        return;
                    QCOMPARE(screen.host.messages.TakeAll(), QStringList{u"MsgRequiredField(سطح قیمتی)"_s});
                    QCOMPARE(test::Focused(), u"CostColumnSelect_SEF"_s);
                    test::Press(Qt::Key_Escape);
                });
    const goods::PriceInstruction &is = question.Instruction();
    if (!instruction.isEmpty())
        QCOMPARE(u"%1 %2 %3 %4 %5 %6"_s.arg(int(is.kind))
                     .arg(is.level)
                     .arg(is.option)
                     .arg(host::QuantityToText(is.value))
                     .arg(is.direction)
                     .arg(is.rounding),
                 instruction);
}

void TestBulk::discounts_data()
{
    QTest::addColumn<QStringList>("ticked");
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QString>("refusal");
    QTest::addColumn<QString>("row"); // sale rates, purchase rates, defaults of 110001 afterwards
    const QString kept = u"1|2|3|4|5|6|7|8|4|4"_s;
    const auto row = [&](const char *name, const QStringList &ticked, const QStringList &entries,
                         const char16_t *refusal, const QString &after) {
        QTest::newRow(name) << ticked << entries << QString::fromUtf16(refusal) << after;
    };
    row("nothing ticked", {}, {}, u"MsgRequiredField(حداقل یکی از گزینه ها را برای اصلاح انتخاب نمایید)", kept);
    row("sale beyond 100", {u"Discount_Sell_1_Chk"_s}, {u"Discount_Sell_1_EDT=150"_s}, u"MsgPercent(تخفیف نوع 4)",
        kept);
    row("purchases are checked first", {u"Discount_Sell_1_Chk"_s, u"Discount_Buy_3_Chk"_s},
        {u"Discount_Sell_1_EDT=150"_s, u"Discount_Buy_3_EDT=-1"_s}, u"MsgPercent(تخفیف نوع 3)", kept);
    row("no default chosen", {u"Default_Buy_Chk"_s, u"Default_Sell_Chk"_s}, {}, u"MsgRequiredField(تخفیف پیش فرض خرید)",
        kept);
    row("the default alone", {u"Default_Buy_Chk"_s}, {u"Default_Discount_Buy_CMB:2"_s}, u"", u"1|2|3|4|5|6|7|8|4|2"_s);
    row("rates, an emptied one too", {u"Discount_Sell_2_Chk"_s, u"Discount_Buy_4_Chk"_s},
        {u"Discount_Sell_2_EDT=۷/۵"_s, u"Discount_Buy_4_EDT="_s}, u"", u"1|7.5|3|4|5|6|7|0|4|4"_s);
}

void TestBulk::discounts()
{
    QFETCH(QStringList, ticked);
    QFETCH(QStringList, entries);
    QFETCH(QString, refusal);
    Screen screen;
    screen.host.levels.discounts = {u"همکار"_s, u"همکار"_s, u"ویژه"_s, u"عید"_s}; // a refusal knows numbers
    screen.database.Exec(u"update GoodCostDiscount set Discount_Sell_1=1,Discount_Sell_2=2,Discount_Sell_3=3,"
                         "Discount_Sell_4=4,Discount_Buy_1=5,Discount_Buy_2=6,Discount_Buy_3=7,Discount_Buy_4=8,"
                         "Default_Discount_Sell_Number=4,Default_Discount_Buy_Number=4"_s);
    screen.Open();
    test::Drive(Menu(screen, Discounts, 1), [&](QWidget *dialog) {
        Tick(dialog, ticked);
        Fill(dialog, entries);
        test::Press(Qt::Key_F3);
        if (refusal.isEmpty())
            return;
        QCOMPARE(screen.host.messages.TakeAll(), QStringList{refusal});
        if (!ticked.isEmpty())
            screen.host.messages.Answer(true); // what was ticked is let go
        test::Press(Qt::Key_Escape);
    });
    if (refusal.isEmpty())
        QCOMPARE(screen.host.messages.TakeAll(), QStringList{Done});
    else
        screen.host.messages.TakeAll();
    QStringList texts = screen.database
                            .Rows(u"select Discount_Sell_1,Discount_Sell_2,Discount_Sell_3,Discount_Sell_4,"
                                  "Discount_Buy_1,Discount_Buy_2,Discount_Buy_3,Discount_Buy_4,"
                                  "Default_Discount_Sell_Number,Default_Discount_Buy_Number "
                                  "from GoodCostDiscount where GoodCode=110001"_s)
                            .value(0)
                            .split(u'|');
    for (QString &text : texts)
        text = host::TrimDecimal(text);
    QTEST(texts.join(u'|'), "row");
    screen.Activate();
    test::Press(Qt::Key_Escape);
}

void TestBulk::assetType()
{
    Screen screen;
    screen.host.finance.types = {{0, u"هیچکدام"_s}, {2, u"کالای ساخته شده"_s}};
    screen.database.Exec(u"update GoodInf set DaraiGoodType = 1"_s);
    screen.Open();
    screen.Press({Qt::Key_Insert, Qt::Key_Down, Qt::Key_Insert});
    for (const int round : {0, 1, 2}) {
        test::Drive(Menu(screen, AssetType, round < 2 ? 1 : 2), [&](QWidget *) {
            for (int type = 0; type < 2; ++type) { // none, then the one that means none
                test::Press(Qt::Key_F3);
                QCOMPARE(screen.host.messages.TakeAll(), QStringList{u"MsgRequiredField(نوع کالا)"_s});
                QCOMPARE(test::Focused(), u"DaraiGoodType_CMB"_s);
                test::Press(Qt::Key_Down);
            }
            test::Press(Qt::Key_F3);
        });
        const QString told = screen.host.messages.TakeAll().join(u' ');
        QVERIFY2(round != 1 ? told == Done : told.contains(u"کالایی تغییر نکرد"), qPrintable(told));
        QCOMPARE(screen.Codes(u"DaraiGoodType = 2"_s),
                 round < 2 ? (QStringList{u"110001"_s, u"110003"_s}) : screen.Codes(u"Code > 0"_s));
        screen.Activate();
    }
    QCOMPARE(screen.grid.MarkedKeys(), (QStringList{u"110001"_s, u"110003"_s})); // the list keeps marks and place
    screen.Activate();
    test::Press(Qt::Key_Escape);
}

void TestBulk::scopes_data()
{
    QTest::addColumn<int>("entry");
    QTest::addColumn<QString>("written"); // condition on the good
    QTest::newRow("marked, one of them not shown") << 1 << u"Code in (110001, 110002)"_s;
    QTest::newRow("not marked") << 2 << u"Name like N'%عدس%'"_s;
    QTest::newRow("all in the list") << 3 << u"Name like N'%عدس%'"_s;
    QTest::newRow("all goods that are shown to the user") << 4 << u"GrpCode <> 14"_s;
}

void TestBulk::scopes()
{
    QFETCH(int, entry);
    QFETCH(QString, written);
    Screen screen;
    screen.host.settings.user.ManageType = 0;
    screen.database.Exec(u"insert into Users (Code, Name, ManageType) values (7, N'مریم', 0) insert into "
                         "UserDeniedGroups (UserCode, GrpCode) values (7, 14)"_s);
    screen.Open();
    screen.Press({Qt::Key_Insert, Qt::Key_Insert});
    test::Type(u"عدس"_s);
    const QStringList wanted = screen.Codes(written);
    test::Drive(Menu(screen, Discounts, entry), [&](QWidget *dialog) {
        QVERIFY(test::Find(dialog, u"Count_LBL"_s)
                    .property("text")
                    .toString()
                    .contains(u"[%1]"_s.arg(host::DisplayNumber(QString::number(wanted.size())))));
        Tick(dialog, {u"Discount_Sell_1_Chk"_s});
        Fill(dialog, {u"Discount_Sell_1_EDT=33"_s});
        test::Press(Qt::Key_F3);
    });
    QCOMPARE(screen.host.messages.TakeAll(), QStringList{Done});
    QCOMPARE(screen.database.Rows(u"select GoodCode from GoodCostDiscount where Discount_Sell_1 = 33 order by 1"_s),
             wanted);
    screen.Activate();
    screen.Press({Qt::Key_Escape, Qt::Key_Escape});
}

/// Three goods marked, one left out in the preview; what the list shows meanwhile changes nothing. Then taken back.
void TestBulk::pricesThereAndBack()
{
    Screen screen;
    screen.database.Exec(u"update GoodCostDiscount set CostLevel_Sell_1 = 1000 where GoodCode <= 110004"_s);
    screen.Open();
    const QStringList before = screen.database.Rows(Sell1);
    screen.Press({Qt::Key_Insert, Qt::Key_Insert, Qt::Key_Insert});
    const auto preview = [&](const Keys &keys) {
        test::Drive(Menu(screen, Prices, 1), [&](QWidget *dialog) {
            Next([&](QWidget *shown) {
                auto &goods = test::Find<host::Grid>(shown, u"Changing_GRD"_s);
                QCOMPARE(goods.VisibleTexts(0).mid(2), (QStringList{u"۱٬۰۰۰"_s, u"۱٬۰۵۰"_s, u"۵۰"_s}));
                screen.grid.ClearMarks();
                screen.grid.Search({{}, false, u"زرافه"_s, {}});
                screen.Press(keys);
            });
            RaiseByFive(dialog);
        });
        screen.grid.Search({});
        for (const char16_t *code : {u"110001", u"110002", u"110003"})
            screen.grid.SetMarked(QString::fromUtf16(code), true);
    };
    preview({Qt::Key_Escape});
    QCOMPARE(screen.database.Rows(Sell1), before);
    screen.host.scales.enabled = true; // but their database is not there
    screen.database.Exec(u"drop table Items"_s);
    const QString notSent = u"به ترازو ارسال نشد"_s;
    preview({Qt::Key_Down, Qt::Key_Space, Qt::Key_F3});
    QVERIFY(screen.host.messages.Take().contains(notSent));
    QCOMPARE(screen.host.messages.TakeAll(), QStringList{Done});
    const QStringList after{u"110001|1050"_s, u"110002|1000"_s, u"110003|1050"_s, u"110004|1000"_s};
    QCOMPARE(screen.database.Rows(Sell1), after);
    screen.grid.Locate(u"110003"_s);
    QCOMPARE(screen.Shown(u"Cost1"_s), u"۱٬۰۵۰"_s);

    // Another user changed one of the two since: it stays, and is listed. A later change stands above.
    screen.database.Exec(u"update GoodCostDiscount set CostLevel_Sell_1 = 7 where GoodCode = 110003 insert into "
                         "BulkChanges (Kind, Scope, Title, Goods, UserChanged, ChangedDate, ChangedTime) values (3, 0, "
                         "N'نوع', 1, N'مینا', '1405/01/01', '10:00:00')"_s);
    screen.Activate();
    test::Drive([] { test::Press(Qt::Key_F8, Qt::ControlModifier); },
                [&](QWidget *changes) {
                    auto &list = test::Find<host::Grid>(changes, u"Changes_GRD"_s);
                    QCOMPARE(list.VisibleTexts(1).at(6), u"۲"_s);
                    screen.host.messages.Answer(true);
                    test::Press(Qt::Key_Down);
                    test::Drive([] { test::Press(Qt::Key_F8); },
                                [&](QWidget *report) {
                                    QTest::qWait(300); // the goods of the change follow meanwhile
                                    QCOMPARE(test::Find<host::Grid>(report, u"Left_GRD"_s).ShownKeys(),
                                             QStringList{u"110003"_s});
                                    test::Press(Qt::Key_Escape);
                                });
                    const QString asked = screen.host.messages.TakeAll().join(u' ');
                    QVERIFY2(asked.contains(u"مقدار پیشین ۱ کالا") && asked.contains(u"۱ کالا که پس از آن") &&
                                 asked.contains(notSent),
                             qPrintable(asked));
                    QVERIFY(!test::Find(changes, u"TakeBack_BTN"_s).isEnabled());
                    screen.database.Exec(u"delete from BulkChanges where Kind = 3"_s); // dropped by another desk
                    // More than a block of them.
                    screen.database.Exec(u"declare @c int set @c = 900000 while @c < 901500 begin set @c = @c + 1 "
                                         "insert into BulkChangeGoods (ChangeID, GoodCode) values (1, @c) end"_s);
                    list.setFocus();
                    screen.Press({Qt::Key_Up, Qt::Key_F8});
                    QVERIFY(screen.host.messages.TakeAll().join(u' ').contains(u"بیرون رفته است"));
                    QCOMPARE(list.ShownKeys(), QStringList{u"1"_s});
                    QCOMPARE(test::Find<host::Grid>(changes, u"Goods_GRD"_s).ShownKeys().size(), 1502);
                    test::Press(Qt::Key_Escape);
                });
    QStringList back = before;
    back[2] = u"110003|7"_s;
    QCOMPARE(screen.database.Rows(Sell1), back);
    screen.Activate();
    test::Press(Qt::Key_Escape);
}

/// A price that another desk changes while the preview stands is left, and the user is told which.
void TestBulk::pricesOfAnotherDesk()
{
    Screen screen;
    screen.database.Exec(u"update GoodCostDiscount set CostLevel_Sell_1 = 1000 where GoodCode <= 110004"_s);
    screen.Open();
    test::Press(Qt::Key_A, Qt::ControlModifier);
    test::Drive(Menu(screen, Prices, 1), [&](QWidget *dialog) {
        Next([&](QWidget *preview) {
            test::Find<QAbstractButton>(preview, u"MarkNone_BTN"_s).click();
            test::Press(Qt::Key_F3);
            QVERIFY(screen.host.messages.TakeAll().value(0).contains(u"علامت نخورده"));
            screen.Press({Qt::Key_Space, Qt::Key_Down, Qt::Key_Space});
            screen.database.Exec(u"update GoodCostDiscount set CostLevel_Sell_1 = 9 where GoodCode = 110002"_s);
            Next([&](QWidget *report) {
                QCOMPARE(test::Find<host::Grid>(report, u"Left_GRD"_s).ShownKeys(), QStringList{u"110002"_s});
                test::Picture(*report, u"bulk-report"_s);
                test::Press(Qt::Key_Escape);
            });
            test::Press(Qt::Key_F3);
        });
        RaiseByFive(dialog);
    });
    QCOMPARE(screen.database.Rows(Sell1),
             (QStringList{u"110001|1050"_s, u"110002|9"_s, u"110003|1000"_s, u"110004|1000"_s}));
    screen.Activate();
    test::Press(Qt::Key_Escape);
}

void TestBulk::detailTypes()
{
    for (const bool yes : {false, true}) {
        Screen screen;
        screen.host.settings.record.GoodDetails = true;
        screen.host.entities.multipleChoice = u"2,4,"_s;
        screen.database.Exec(u"delete from GoodDetailKardex delete from GoodDetailRelation "
                             "insert into GoodDetailRelation (GoodCode, DetailID) values (110001, 5), (110002, 5)"_s);
        screen.Open();
        screen.host.messages.Answer(yes);
        Menu(screen, DetailTypes, 1)();
        QVERIFY(screen.host.messages.Take().contains(u"جزییات ۱ کالا"));
        QCOMPARE(screen.host.messages.TakeAll(), yes ? QStringList{Done} : QStringList());
        QCOMPARE(screen.database.Rows(u"select GoodCode, DetailID from GoodDetailRelation order by 1, 2"_s),
                 yes ? (QStringList{u"110001|2"_s, u"110001|4"_s, u"110002|5"_s})
                     : (QStringList{u"110001|5"_s, u"110002|5"_s}));
        screen.Activate();
        test::Press(Qt::Key_Escape);
    }
}

void TestBulk::rightRefused()
{
    Screen screen;
    screen.host.settings.record.GoodDetails = true;
    screen.host.permissions.Deny(TSoftwarePart::Goods, TPermission::Change);
    screen.Open();
    for (const char16_t letter : {Prices, Discounts, DetailTypes}) {
        screen.Activate();
        Menu(screen, letter, 1)();
        QVERIFY(!QApplication::activeModalWidget());
    }
    PressAlt(AssetType);
    QVERIFY(screen.host.entities.calls.isEmpty());
    QCOMPARE(screen.database.Scalar(u"select count(*) from BulkChanges"_s).toInt(), 0);
    screen.Activate();
    test::Press(Qt::Key_Escape);
}

REGISTER_TEST(TestBulk)
#include "tst_bulk.moc"
