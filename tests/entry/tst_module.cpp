// The exported functions as a host calls them, over the demo shop.

#include "entry/exports.h"
#include "entry/module.h"
#include "entry/selection_param.h"
#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "host/controls/search_frame.h"
#include "tests/support/database.h"
#include "tests/support/modal.h"
#include "tests/support/test_host.h"
#include "tests/support/test_main.h"

#include <QtTest>
#include <QtWidgets>

using host::TPermission;
using host::TSoftwarePart;

namespace {

const QString ListBusy = u"ShowMessage(امکان نمایش مجدد لیست کالاها وجود ندارد.)"_s;

QString Text(const char16_t *value)
{
    return QString::fromUtf16(value);
}

} // namespace

class TestModule : public QObject
{
    Q_OBJECT

private slots:
    void parameterTexts_data();
    void parameterTexts();
    void choosesInMarkingOrder();
    void anotherUserBeginsAnew();
    void fourthListIsRefused();
    void refusedRightOpensNothing();
    void genericLists();
    void newGoodReturnsNothing();
    void detailTypes();
    void detailsGoOut_data();
    void detailsGoOut();
    void detailsAreChosen();
    void divisionsBySettings_data();
    void divisionsBySettings();
    void dividesAUnit();
    void lineDetails();
    void errorsStayInside();

private:
    struct Shop
    {
        Shop() : host({database.Main(), database.GoodsList(), database.Scales()}), module(host) {}

        /// The code of the good in the n-th place of the goods list.
        int code(int place) const
        {
            return database
                .Scalar(u"SELECT MAX(Code) FROM (SELECT TOP %1 Code FROM GoodInf ORDER BY Code) AS t"_s.arg(place))
                .toInt();
        }

        test::Database database{test::Database::Content::Demo};
        test::TestHost host;
        entry::Module module;
    };
};

void TestModule::parameterTexts_data()
{
    QTest::addColumn<QString>("param");
    QTest::addColumn<QString>("locate");
    QTest::addColumn<QString>("selection");
    QTest::newRow("code only") << u"15#LC#"_s << u"15"_s << QString();
    QTest::newRow("both") << u"abc#LC#x"_s << u"abc"_s << u"x"_s;
    QTest::newRow("second marker stays") << u"1#LC#a#LC#b"_s << u"1"_s << u"a#LC#b"_s;
    QTest::newRow("no marker") << u"abcdef"_s << QString() << u"def"_s;
    QTest::newRow("short without marker") << u"ab"_s << QString() << QString();
    QTest::newRow("empty") << QString() << QString() << QString();
}

void TestModule::parameterTexts()
{
    QFETCH(QString, param);
    const entry::SelectionParam parts = entry::SplitSelectionParam(param);
    QTEST(parts.LocateCode, "locate");
    QTEST(parts.SelectionText, "selection");
}

void TestModule::choosesInMarkingOrder()
{
    Shop shop;
    QString chosen;
    test::Drive([&] { chosen = shop.module.SelectGoods(QString::number(shop.code(3)) + u"#LC#"_s); },
                [&](QWidget *) {
                    test::Press(Qt::Key_Insert);
                    test::Press(Qt::Key_Home, Qt::ControlModifier);
                    test::Press(Qt::Key_Insert);
                    test::Press(Qt::Key_Return);
                });
    QCOMPARE(chosen, u"%1,%2,"_s.arg(shop.code(3)).arg(shop.code(1)));
    test::Drive([&] { chosen = shop.module.SelectGoods({}); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
    QCOMPARE(chosen, QString());
}

/// A slot outlives the user who opened it; what he made of it does not.
void TestModule::anotherUserBeginsAnew()
{
    Shop shop;
    const auto open = [&](int user, const std::function<void(QWidget *, host::Grid &)> &look) {
        shop.host.settings.user.Code = user;
        test::Drive([&] { shop.module.SelectGood({}); },
                    [&](QWidget *list) {
                        look(list, test::Find<host::Grid>(list, u"GoodListDB_GRD"_s));
                        test::Press(Qt::Key_Escape);
                    });
    };
    const auto column = [](QWidget *list) { return test::Find<QComboBox>(list, u"Column_CMB"_s).currentData(); };
    QStringList columns;
    QStringList goods;
    open(7, [&](QWidget *list, host::Grid &grid) {
        columns = grid.VisibleFields();
        goods = grid.ShownKeys();
        grid.SetColumnVisible(u"Cost1"_s, false);
        grid.horizontalHeader()->moveSection(3, 1);
        test::Find<QPushButton>(list, u"Tags_btn"_s).click();
        test::Find<QTabBar>(list, u"Search_TBC"_s).setCurrentIndex(1);
        test::Find<host::SearchFrame>(list, u"TGeneral_Search_Frame1"_s).Focus(u"Name"_s);
        test::Press(Qt::Key_F11, Qt::ControlModifier);
        test::Type(u"لبنیات"_s);
        test::Press(Qt::Key_Return);
    });
    const auto states = std::exchange(shop.host.settings.states, {}); // those of user 7
    open(8, [&](QWidget *list, host::Grid &grid) {
        QCOMPARE(grid.VisibleFields(), columns);
        QCOMPARE(grid.ShownKeys(), goods);
        QCOMPARE(column(list), QVariant(QString()));
        QVERIFY(!test::Find<QPushButton>(list, u"Tags_btn"_s).isChecked());
    });
    shop.host.settings.states = states;
    open(7, [&](QWidget *list, host::Grid &grid) {
        QVERIFY(!grid.IsColumnVisible(u"Cost1"_s));
        QVERIFY(test::Find<QPushButton>(list, u"Tags_btn"_s).isChecked());
        QCOMPARE(test::Find<QTabBar>(list, u"Search_TBC"_s).currentIndex(), 1);
    });
}

void TestModule::fourthListIsRefused()
{
    Shop shop;
    QList<int> chosen;
    std::function<void(int)> open = [&](int depth) {
        const QString param = QString::number(shop.code(depth)) + u"#LC#"_s;
        if (depth == 4) {
            chosen << shop.module.SelectGood(param);
            return;
        }
        int code = 0;
        test::Drive([&] { code = shop.module.SelectGood(param); },
                    [&](QWidget *list) {
                        open(depth + 1);
                        // The offscreen platform leaves the closed list active; a desktop gives this one the keys.
                        QTest::keyClick(&test::Find(list, u"GoodListDB_GRD"_s), Qt::Key_Return);
                    });
        chosen << code;
    };
    open(1);
    QCOMPARE(chosen, (QList<int>{0, shop.code(3), shop.code(2), shop.code(1)}));
    QCOMPARE(shop.host.messages.TakeAll(), QStringList{ListBusy});
}

void TestModule::refusedRightOpensNothing()
{
    Shop shop;
    for (TSoftwarePart part : {TSoftwarePart::Goods, TSoftwarePart::Stores, TSoftwarePart::Units})
        shop.host.permissions.Deny(part, TPermission::OpenList);
    shop.module.OpenGoodList();
    QCOMPARE(shop.module.SelectGood(u"1#LC#"_s), 0);
    QCOMPARE(shop.module.SelectGoods({}), QString());
    QCOMPARE(shop.module.OpenList(TSoftwarePart::Stores), 0);
    QCOMPARE(shop.module.OpenList(TSoftwarePart::Units), 0);
    QVERIFY(shop.host.entities.calls.isEmpty());
    QVERIFY(!QApplication::activeModalWidget());
}

void TestModule::genericLists()
{
    Shop shop;
    shop.host.Install();
    shop.host.entities.choices = {4, 8, 9};
    QCOMPARE(Select_GoodGroup(), 0);
    QCOMPARE(Select_Store(u"انبار"), 8);
    QCOMPARE(Select_Unit(), 9);
    QCOMPARE(Edit_GoodGroup(0), 0);
    QCOMPARE(Edit_GoodGroup(5), 0);
    QCOMPARE(Edit_Store(0), 0);
    QCOMPARE(Edit_Store(3), 0);
    QCOMPARE(Open_StoreList(), 1);
    QCOMPARE(Open_Units(), 1);
    const QStringList expected{
        u"Select_GroupList(122, )"_s, u"Select_GroupList(105, انبار)"_s, u"Select_GroupList(104, )"_s,
        u"New_Group(122)"_s,          u"Edit_Group(122, 5)"_s,           u"New_Group(105)"_s,
        u"Edit_Group(105, 3)"_s,      u"Call_GroupList(105)"_s,          u"Call_GroupList(104)"_s};
    QCOMPARE(shop.host.entities.calls, expected);
    // Another host takes the place of the first.
    test::TestHost second;
    second.Install();
    Open_Units();
    QCOMPARE(second.entities.calls, QStringList{u"Call_GroupList(104)"_s});
    QCOMPARE(shop.host.entities.calls, expected);
    entry::Module::Release();
}

void TestModule::newGoodReturnsNothing()
{
    Shop shop;
    int result = -1;
    QString code;
    test::Drive([&] { result = shop.module.EditGood(-7); },
                [&](QWidget *editor) {
                    code = test::Find<host::NumericEdit>(editor, u"Code_EDT"_s).text();
                    test::Press(Qt::Key_Escape);
                });
    QCOMPARE(result, 0);
    // The group that was asked for is preset, so its next code is proposed.
    QCOMPARE(code.toInt(), shop.database.Scalar(u"EXEC GetGoodInfCode 7, 6"_s).toInt());
}

void TestModule::detailTypes()
{
    Shop shop;
    shop.host.Install();
    QString chosen;
    const auto choose = [&](int withCategories, const QList<Qt::Key> &keys) {
        test::Drive([&] { chosen = Text(Select_DetailTypes_Multible(nullptr, 0, withCategories, 0, nullptr)); },
                    [&](QWidget *list) {
                        QCOMPARE(test::Find<QTabWidget>(list, u"DetailTypes_PGC"_s).tabBar()->isVisible(),
                                 withCategories != 0);
                        for (const Qt::Key key : keys)
                            test::Press(key);
                    });
    };
    const QString first = shop.database.Scalar(u"SELECT MIN(ID) FROM DetailTypes"_s).toString();
    choose(0, {Qt::Key_Home, Qt::Key_Return});
    QCOMPARE(chosen, first + u',');
    choose(1, {Qt::Key_Escape});
    QCOMPARE(chosen, QString());

    // What the owner has already counts; the words are those for a category.
    const std::u16string serial = first.toStdU16String();
    test::Drive([&] { chosen = Text(Select_DetailTypes_Multible(nullptr, 1, 0, 1, serial.c_str())); },
                [&](QWidget *list) {
                    test::Press(Qt::Key_Return);
                    QVERIFY(shop.host.messages.Take().startsWith(u"ShowMessage(کاربر گرامی در یک لیست امکان وجود"_s));
                    QTest::keyClick(list, Qt::Key_Escape);
                });
    QCOMPARE(chosen, QString());

    // One list for browsing; from it a second one is opened for choosing.
    test::Drive([] { Call_DetailTypes_List(); },
                [&](QWidget *list) {
                    Call_DetailTypes_List();
                    choose(0, {Qt::Key_Escape});
                    QTest::keyClick(list, Qt::Key_Escape);
                });
    QCOMPARE(shop.host.messages.TakeAll(), QStringList{u"ShowMessage(امکان نمایش مجدد لیست جزئیات وجود ندارد.)"_s});
    entry::Module::Release();
}

void TestModule::detailsGoOut_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("good");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("anew") << 2 << 200001 << true;
    QTest::newRow("again") << 3 << 200001 << true;
    QTest::newRow("reviewed") << 4 << 200001 << false;
    QTest::newRow("no such good") << 2 << 7 << false;
}

void TestModule::detailsGoOut()
{
    QFETCH(int, mode);
    QFETCH(int, good);
    QFETCH(bool, accepted);
    Shop shop;
    shop.host.Install();
    shop.database.Exec(u"INSERT GoodDetailKardexExit_Temp (DetailValueID, GoodCode, StoreCode, Amount1, Amount2, "
                       "TotalAmount, Length, Width, Amount3) VALUES (1, 200001, 4, 24, 0, 24, 3, 2, 4)"_s);
    long double to[7] = {-1, -1, -1, -1, -1, -1, -1};
    int result = -1;
    const auto open = [&] {
        result = Open_Exit_GoodDetail(mode, 2, good, nullptr, 10, 9, 0, to, to + 1, to + 2, to + 3, to + 4, to + 5,
                                      to + 6, 5, 0, 1, 77, 4);
    };
    if (good == 7) {
        open();
        QCOMPARE(shop.host.messages.TakeAll().size(), 1);
    } else {
        test::Drive(open, [&](QWidget *screen) {
            QCOMPARE(test::Find<QAbstractButton>(screen, u"SaveRow_BTN"_s).isEnabled(), accepted);
            test::Find<QAbstractButton>(screen, u"SaveRow_BTN"_s).click();
            test::Press(Qt::Key_F3);
            if (!accepted)
                test::Press(Qt::Key_Escape);
        });
        QCOMPARE(shop.host.detailMovements.calls.contains(u"KeepExit(200001)"_s), accepted);
    }
    QCOMPARE(result, int(accepted));
    const QList<long double> given(to, to + 7); // rows first, amount 1 last
    QCOMPARE(given, accepted ? (QList<long double>{1, 4, 2, 3, 24, 0, 24}) : QList<long double>(7, -1));
    QCOMPARE(Open_GoodDetail(2, 2, good, nullptr, 0, 0, 0, to, to, to, to, to, to, to, 0, 0, 0, 0, 0), 0);
    entry::Module::Release();
}

void TestModule::detailsAreChosen()
{
    Shop shop;
    shop.host.Install();
    const QString good = shop.database
                             .Scalar(u"SELECT MIN(Code) FROM GoodInf WHERE Meghdar_Formool = 0 AND Code NOT IN "
                                     "(SELECT GoodCode FROM GoodDetailRelation)"_s)
                             .toString();
    shop.database.Exec(
        u"INSERT GoodDetailRelation (GoodCode, DetailID) SELECT %1, MIN(ID) FROM DetailTypes WHERE DetailType = 1 "
        "INSERT GoodDetailValues (GoodCode) VALUES (%1) INSERT GoodDetailValueDetails (DetailValueID, DetailID, [Value]) "
        "SELECT MAX(v.ID), MIN(r.DetailID), N'x' FROM GoodDetailValues v CROSS JOIN GoodDetailRelation r WHERE r.GoodCode "
        "= %1 INSERT GoodDetailKardex (DetailValueID, StoreCode, GoodCode, Amount1, OperationType, OperationCode) SELECT "
        "MAX(ID), 4, %1, 2.5, 1, 1 FROM GoodDetailValues"_s.arg(good));
    const QString value = shop.database.Scalar(u"SELECT MAX(ID) FROM GoodDetailValues"_s).toString();
    for (const auto &[mode, key, chosen] :
         {std::tuple(0, Qt::Key_Return, value + u','), std::tuple(0, Qt::Key_Escape, QString()),
          std::tuple(1, Qt::Key_Return, u"%1;4;%2;2.50;0.00;0.00;0.00;0.00;"_s.arg(value, good))}) {
        QString text;
        test::Drive([&, mode = mode] { text = Text(Select_GoodDetail_Multible(u"یافتن", 1, quint8(mode), u";", 3)); },
                    [&, key = key](QWidget *screen) {
                        QCOMPARE(screen->windowTitle(), u"یافتن"_s);
                        QVERIFY(test::Find<host::Grid>(screen, u"Goods_List_GRD"_s).Locate(good));
                        test::Press(Qt::Key_Return);
                        test::Press(key);
                    });
        QCOMPARE(text, chosen);
    }
    entry::Module::Release();
}

void TestModule::divisionsBySettings_data()
{
    const QString off =
        u"کاربر گرامی برای استفاده از تقسیم جزئیات می بایست از تنظیمات نرم افزار جزئیات کالا را فعال نمایید"_s;
    const QString nothing =
        u"کاربر گرامی تقسیم جزئیات فقط برای کالاهای دو واحدی با ضریب متغیر و کالاهای از نوع متر مربع معنی دارد"_s;
    QTest::addColumn<QString>("settings"); // details, two units, variable ratio, square metres, their unit
    QTest::addColumn<QString>("message");
    QTest::newRow("no details") << u"01117"_s << off;
    QTest::newRow("fixed ratio, no unit of area") << u"11010"_s << nothing;
    QTest::newRow("ratio without second units") << u"10107"_s << nothing;
    QTest::newRow("rolls") << u"11100"_s << QString();
    QTest::newRow("sheets") << u"10017"_s << QString();
}

void TestModule::divisionsBySettings()
{
    QFETCH(QString, settings);
    QFETCH(QString, message);
    Shop shop;
    shop.host.Install();
    host::TSettingRecord &record = shop.host.settings.record;
    record.GoodDetails = settings.at(0) == u'1';
    record.TwoUnitGoods = settings.at(1) == u'1';
    record.TwoUnitVariableRatio = settings.at(2) == u'1';
    record.SquareMetreGoods = settings.at(3) == u'1';
    record.SquareMetreUnit = settings.at(4).digitValue();
    if (message.isEmpty()) {
        test::Drive([] { Open_GoodDetailDivision(); },
                    [](QWidget *list) {
                        QCOMPARE(list->windowTitle(), u"لیست تقسیم جزئیات"_s);
                        test::Press(Qt::Key_Escape);
                    });
    } else {
        Open_GoodDetailDivision();
        QCOMPARE(shop.host.messages.TakeAll(), QStringList{u"ShowMessage(%1)"_s.arg(message)});
        QCOMPARE(shop.host.messages.icon, host::MessageIcon::Information);
    }
    entry::Module::Release();
}

/// Tables first; a unit that is gone opens nothing, one that is left divides nothing.
void TestModule::dividesAUnit()
{
    Shop shop;
    shop.host.Install();
    QStringList &calls = shop.host.detailDivisions.calls;
    QCOMPARE(Open_GoodDetailDivision_DetailItems(1, 4, 200034, 3.75L, 0, 2.5L, 1.5L, 1), 0);
    QCOMPARE(calls.mid(0, 2), (QStringList{u"CreateRows"_s, u"CreateItems"_s}));
    QCOMPARE(shop.host.messages.TakeAll().size(), 1);
    shop.host.detailDivisions.source =
        host::TDivisionSource{1, 4, 200034, {}, u"سفید"_s, {3.75L, 0, 3.75L, 2.5L, 1.5L, 1}};
    int result = -1;
    test::Drive([&] { result = Open_GoodDetailDivision_DetailItems(1, 4, 200034, 3.75L, 0, 2.5L, 1.5L, 1); },
                [](QWidget *screen) {
                    QCOMPARE(test::Find<QLabel>(screen, u"GoodDetail_LBL"_s).text(), u"سفید"_s);
                    test::Press(Qt::Key_Escape);
                });
    QCOMPARE(result, 0);
    QVERIFY(!calls.contains(u"Header(2)"_s));
    entry::Module::Release();
}

/// The details of a line: what comes back after OK and after Esc, and that a screen which does not open writes nothing.
void TestModule::lineDetails()
{
    Shop shop;
    shop.host.Install();
    shop.host.detailValues.value = 1;
    const int good = shop.database
                         .Scalar(u"SELECT MIN(Code) FROM GoodInf WHERE Code > 0 AND Code NOT IN (SELECT GoodCode FROM "
                                 "GoodDetailRelation)"_s)
                         .toInt();
    std::array<long double, 7> back{};
    const auto enter = [&](int store) {
        back.fill(-1);
        return Open_Enter_GoodDetail(2, 1, good, 0, 0, 2.125L, nullptr, nullptr, 0, nullptr, 0, u"نام; دیگر", 0, 0, 0,
                                     0, 0, &back[6], &back[5], &back[4], &back[3], &back[2], &back[1], &back[0], 1, 0,
                                     1, 70, store);
    };
    const auto form = [&](int mode) {
        back.fill(-1);
        return Open_GoodDetail_Enter_Form(mode, 3, good, nullptr, nullptr, nullptr, nullptr, nullptr, &back[6],
                                          &back[5], &back[4], &back[3], &back[2], &back[1], &back[0], 1, 1, 70, 0, 1);
    };
    const auto shorter = [&] {
        back.fill(-1);
        return Open_GoodDetail_Enter(2, 3, good, nullptr, nullptr, nullptr, nullptr, nullptr, &back[1], &back[0], 1, 1,
                                     70, 0, 1);
    };
    const auto type = [&](bool ok, const QString &total) {
        return [&, ok, total](QWidget *screen) {
            test::Enter(screen, u"Amount1_EDT"_s, u"1.125"_s);
            test::Press(Qt::Key_Return);
            QVERIFY(test::Find<QLabel>(screen, u"Totals_LBL"_s).text().contains(total));
            shop.host.messages.Answer(true);
            QTest::keyClick(screen, ok ? Qt::Key_F3 : Qt::Key_Escape);
            if (ok)
                shop.host.messages.Ask({}, true); // the answer was for leaving without saving
        };
    };
    int result = -1;
    test::Drive([&] { result = enter(1); }, type(true, u"مانده: ۱"_s));
    QCOMPARE(result, 1);
    QCOMPARE(back, (std::array<long double, 7>{1.125L, 0, 1.125L, 0, 0, 0, 1}));
    test::Drive([&] { result = form(3); }, type(true, u"مقدار: ۱٫۱۲۵"_s));
    QCOMPARE(result, 1);
    QCOMPARE(back[6], 1.0L);
    test::Drive([&] { result = form(2); }, type(false, u"مقدار"_s));
    QCOMPARE(result, 0);
    QCOMPARE(back[0], -1.0L);
    test::Drive([&] { result = shorter(); }, type(false, u"مقدار"_s));
    QCOMPARE(result, 1);
    QCOMPARE(back, (std::array<long double, 7>{0, 0, -1, -1, -1, -1, -1}));
    shop.host.messages.TakeAll();
    result = enter(99);
    QCOMPARE(result, 0);
    QCOMPARE(back[0], -1.0L);
    QCOMPARE(shop.host.messages.TakeAll().size(), 1);
    entry::Module::Release();
}

void TestModule::errorsStayInside()
{
    Shop shop;
    shop.host.Install();
    shop.database.Exec(u"DROP PROCEDURE GoodInf_List_SP"_s);
    QCOMPARE(Select_Good(u"1#LC#"), 0);
    QCOMPARE(Text(Select_Good_Multible(nullptr)), QString());
    const QStringList said = shop.host.messages.TakeAll();
    QCOMPARE(said.size(), 2);
    QVERIFY2(said.first().contains(u"GoodInf_List_SP"), qPrintable(said.first()));
    entry::Module::Release();
}

REGISTER_TEST(TestModule)
#include "tst_module.moc"
