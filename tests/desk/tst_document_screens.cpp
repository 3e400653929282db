// The list and the editor of documents and the history of details, by the keyboard.

#include "desk/documents/detail_history.h"
#include "desk/documents/document_get.h"
#include "desk/documents/document_list.h"
#include "host/controls/date_edit.h"
#include "host/controls/entity_picker.h"
#include "host/controls/grid.h"
#include "tests/desk/document_fixture.h"
#include "tests/gooddetail/division_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QComboBox>
#include <QLabel>
#include <QtTest>

namespace {

using Kind = host::TOperationType;

/// A desk whose screens for details are stood in for.
struct Shop : test::QuietDesk
{
    test::RangeScreens screens{desk.host};

    /// The editor of a kind, on a document or on a new one.
    void Open(Kind kind, int code, const std::function<void(QWidget *)> &drive)
    {
        desk::TDocument_Get_FRM editor(desk.host, desk::DocumentKindOf(static_cast<int>(kind)), screens);
        const auto mode = code == 0 ? host::TFormMode::New : host::TFormMode::Edit;
        test::Drive([&] { editor.Open(code == 0 ? QVariant() : QVariant(code), mode); }, drive);
    }
    QStringList Lines(Kind kind) const
    {
        return database.Rows(
            u"SELECT GoodCode, StoreCode, Amount1, Amount2, Price FROM DocumentLines WHERE Kind = %1 AND "
            "Code = (SELECT MAX(Code) FROM Documents WHERE Kind = %1) ORDER BY OperationRow"_s.arg(
                static_cast<int>(kind)));
    }
    int Last(Kind kind) const
    {
        return database.Scalar(u"SELECT MAX(Code) FROM Documents WHERE Kind = %1"_s.arg(static_cast<int>(kind)))
            .toInt();
    }
};

void TypeLine(const QString &text)
{
    test::Type(text);
    test::Press(Qt::Key_Return);
}

void Save()
{
    test::Press(Qt::Key_F3);
}

QString Note(QWidget *screen)
{
    return test::Find<QLabel>(screen, u"Note_LBL"_s).text();
}

} // namespace

class TestDocumentScreens : public QObject
{
    Q_OBJECT

private slots:
    void typedAndScanned();
    void detailsByKey();
    void serialsAreScanned();
    void savingIsRefusedWithItsReason_data();
    void savingIsRefusedWithItsReason();
    void list();
    void history();
    void kin();
};

/// A code leads over the quantity and the price back to the field; a barcode counts up in place; a star says how many.
void TestDocumentScreens::typedAndScanned()
{
    Shop s;
    const QString barcode = s.database.Scalar(u"SELECT AbbName FROM GoodInf WHERE Code = 110002"_s)
                                .toString()
                                .split(u'!', Qt::SkipEmptyParts)
                                .first();
    s.Open(Kind::Purchase, 0, [&](QWidget *screen) {
        QCOMPARE(test::Focused(), u"Store_Entity"_s);
        test::Type(u"۱"_s);
        test::Focus(screen, u"Scan_EDT"_s);
        TypeLine(u"۱۱۰۰۰۱"_s);
        QCOMPARE(test::Focused(), u"Amount1_EDT"_s);
        TypeLine(u"8"_s);
        QCOMPARE(test::Focused(), u"Amount2_EDT"_s);
        test::Press(Qt::Key_Return);
        TypeLine(u"5000"_s);
        QCOMPARE(test::Focused(), u"Scan_EDT"_s);
        test::Type(barcode);
        test::Press(Qt::Key_Tab); // as some scanners end
        // What no key answered yet is not lost on the way.
        test::Type(u"110003"_s);
        test::Focus(screen, u"Price_EDT"_s);
        test::Press(Qt::Key_Return);
        QCOMPARE(test::Find<QLineEdit>(screen, u"Scan_EDT"_s).text(), u"110003"_s);
        TypeLine(u"3*"_s + barcode);
        QCOMPARE(test::Focused(), u"Scan_EDT"_s);
        TypeLine(u"no such good"_s);
        QVERIFY(Note(screen).contains(u"no such good"_s));
        QVERIFY(test::Find<QLabel>(screen, u"Total_LBL"_s).text().startsWith(u"۲ سطر"_s));
        test::Picture(*screen, u"document-purchase"_s);
        Save();
        QVERIFY(test::Find<QLineEdit>(screen, u"Code_EDT"_s).text() != QString::number(s.Last(Kind::Purchase)));
        QCOMPARE(test::Find<host::EntityPicker>(screen, u"Store_Entity"_s).Code(), 1); // as the one before
        test::Press(Qt::Key_Escape);                                                   // the next document, still empty
    });
    const QString price = s.database.Scalar(u"SELECT CostLevel_Buy_1 FROM GoodCostDiscount WHERE GoodCode = 110002"_s)
                              .toString()
                              .section(u'.', 0, 0);
    QCOMPARE(s.Lines(Kind::Purchase), (QStringList{u"110001|1|8|2|5000"_s, u"110002|1|4|0|"_s + price}));
    QCOMPARE(s.database.Rows(u"SELECT Amount1 FROM GoodStock WHERE GoodCode = 110002"_s), QStringList{u"5"_s});
    QCOMPARE(test::Faults(s.database), QStringList());
    s.messages.TakeAll();

    // Passing through the lines changes nothing; a line less is a line less.
    s.Open(Kind::Purchase, s.Last(Kind::Purchase), [&](QWidget *screen) {
        test::Focus(screen, u"Lines_GRD"_s);
        test::Press(Qt::Key_Return);
        for (int field = 0; field < 4; ++field)
            test::Press(Qt::Key_Return);
        test::Press(Qt::Key_Escape); // asks nothing
    });
    s.Open(Kind::Purchase, s.Last(Kind::Purchase), [&](QWidget *screen) {
        test::Focus(screen, u"Lines_GRD"_s);
        s.messages.Answer(true);
        test::Press(Qt::Key_F7);
        Save();
    });
    QCOMPARE(s.Lines(Kind::Purchase).size(), 1);
    QCOMPARE(test::Faults(s.database), QStringList());
    s.messages.TakeAll();
}

/// The quantity of a good with details is theirs; the line's key opens them again.
void TestDocumentScreens::detailsByKey()
{
    Shop s;
    s.Open(Kind::Purchase, 0, [&](QWidget *screen) {
        test::Type(u"4"_s);
        test::Focus(screen, u"Scan_EDT"_s);
        TypeLine(u"200001"_s); // left without OK: no line
        QCOMPARE(test::Find<host::Grid>(screen, u"Lines_GRD"_s).RowCount(), 0);
        s.screens.range = {6001, 6003};
        test::Enter(screen, u"Scan_EDT"_s, u"200001"_s);
        test::Press(Qt::Key_Return);
        QCOMPARE(test::Find<QLineEdit>(screen, u"Amount1_EDT"_s).text(), u"۳"_s);
        QVERIFY(test::Find<QLineEdit>(screen, u"Amount1_EDT"_s).isReadOnly());
        s.screens.range = {6004, 6004};
        test::Press(Qt::Key_F6);
        QCOMPARE(test::Find<QLineEdit>(screen, u"Amount1_EDT"_s).text(), u"۴"_s);
        Save();
        test::Press(Qt::Key_Escape);
    });
    QCOMPARE(s.screens.opened.size(), 3);
    QCOMPARE(s.screens.opened[1].StoreName, u"انبار ابزار و برق"_s);
    QVERIFY(!s.screens.opened[1].HasRows && s.screens.opened[2].HasRows);
    QCOMPARE(s.screens.opened[2].Wanted, host::Quantity(3));
    QVERIFY(s.Lines(Kind::Purchase).first().startsWith(u"200001|4|4|"_s));
    // What was entered for the document that was left is forgotten.
    QCOMPARE(s.database.Scalar(u"SELECT COUNT(*) FROM GoodDetailKardexEnter_Temp"_s).toInt(), 0);
    QCOMPARE(test::Faults(s.database), QStringList());
    s.messages.TakeAll();
}

/// Scanned serials go out and come back one by one; what cannot is said in place, and the keys stay in the field.
void TestDocumentScreens::serialsAreScanned()
{
    Shop s;
    const auto scan = [](QWidget *screen, const QString &serial) {
        TypeLine(serial);
        if (test::Focused() != u"Scan_EDT")
            throw std::runtime_error("the keys left the field");
        return Note(screen);
    };
    s.Open(Kind::Sale, 0, [&](QWidget *screen) {
        test::Type(u"4"_s);
        test::Focus(screen, u"Scan_EDT"_s);
        QCOMPARE(scan(screen, u"۲۰۰۰۰۱۰۰۹"_s), QString());
        QCOMPARE(scan(screen, u"200001010"_s), QString());
        QVERIFY(scan(screen, u"200001010"_s).contains(u"در این سند هست"_s));
        QVERIFY(scan(screen, u"200001001"_s).contains(u"موجود نیست"_s)); // sold long ago
        QCOMPARE(scan(screen, u"200003009"_s), QString());
        QCOMPARE(test::Find<host::Grid>(screen, u"Lines_GRD"_s).RowCount(), 2);
        Save();
        test::Press(Qt::Key_Escape);
    });
    QCOMPARE(s.Lines(Kind::Sale).first().section(u'|', 0, 2), u"200001|4|2"_s);
    const int sale = s.Last(Kind::Sale);
    s.Open(Kind::SaleReturn, 0, [&](QWidget *screen) {
        test::Enter(screen, u"Answers_EDT"_s, QString::number(sale));
        test::Focus(screen, u"Scan_EDT"_s);
        QCOMPARE(test::Find<host::EntityPicker>(screen, u"Store_Entity"_s).Code(), 4);
        QCOMPARE(scan(screen, u"200001010"_s), QString());
        QVERIFY(scan(screen, u"200002003"_s).contains(u"نیست"_s));
        QVERIFY(test::Find<QLineEdit>(screen, u"Answers_EDT"_s).isReadOnly());
        test::Picture(*screen, u"document-return"_s);
        Save();
        test::Press(Qt::Key_Escape);
    });
    QCOMPARE(s.Lines(Kind::SaleReturn).first().section(u'|', 0, 2), u"200001|4|1"_s);
    QCOMPARE(test::Faults(s.database), QStringList());
    // A scan more on the saved sale keeps what it had.
    s.Open(Kind::Sale, sale, [&](QWidget *screen) {
        QCOMPARE(scan(screen, u"200001011"_s), QString());
        Save();
    });
    QCOMPARE(s.Lines(Kind::Sale).first().section(u'|', 0, 2), u"200001|4|3"_s);
    QCOMPARE(test::Faults(s.database), QStringList());
    s.messages.TakeAll();
}

void TestDocumentScreens::savingIsRefusedWithItsReason_data()
{
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QString>("store");
    QTest::addColumn<QString>("good");
    QTest::addColumn<QString>("amount");
    QTest::addColumn<QString>("said");
    QTest::newRow("no store") << Kind::Purchase << u""_s << u""_s << u""_s << u"MsgRequiredField(انبار)"_s;
    QTest::newRow("no line") << Kind::Purchase << u"1"_s << u""_s << u""_s << u"هیچ سطری ندارد"_s;
    QTest::newRow("no quantity") << Kind::Purchase << u"1"_s << u"110001"_s << u"0"_s << u"مقدار «برنج"_s;
    QTest::newRow("no second store") << Kind::TransferOut << u"1"_s << u"110001"_s << u"1"_s
                                     << u"MsgRequiredField(به انبار)"_s;
    QTest::newRow("no sale") << Kind::SaleReturn << u"1"_s << u"110001"_s << u"1"_s << u"MsgRequiredField(سند فروش)"_s;
    QTest::newRow("stock") << Kind::Sale << u"1"_s << u"110001"_s << u"9999"_s << u"منفی می‌شود"_s;
}

/// Nothing is written and what was typed stands.
void TestDocumentScreens::savingIsRefusedWithItsReason()
{
    QFETCH(Kind, kind);
    QFETCH(QString, store);
    QFETCH(QString, good);
    QFETCH(QString, amount);
    QFETCH(QString, said);
    Shop s;
    const QString count = u"SELECT COUNT(*) FROM Documents"_s;
    const int before = s.database.Scalar(count).toInt();
    s.Open(kind, 0, [&](QWidget *screen) {
        test::Enter(screen, u"Store_Entity"_s, store);
        test::Focus(screen, u"Scan_EDT"_s);
        if (!good.isEmpty()) {
            TypeLine(good);
            TypeLine(amount);
        }
        test::Find<QWidget>(screen, u"Comment_EDT"_s).setFocus();
        test::Type(u"یادداشت"_s);
        Save();
        const QString words = s.messages.TakeAll().join(u'\n');
        QVERIFY2(words.contains(said), qPrintable(words));
        QCOMPARE(test::Find<QLineEdit>(screen, u"Comment_EDT"_s).text(), u"یادداشت"_s);
        s.messages.Answer(true); // leave without saving
        test::Press(Qt::Key_Escape);
    });
    s.messages.TakeAll();
    QCOMPARE(s.database.Scalar(count).toInt(), before);
    QCOMPARE(s.database.Scalar(u"SELECT COUNT(*) FROM CodeLock_TBL WHERE Status BETWEEN 201 AND 206"_s).toInt(), 0);
}

/// Filters, search with its sum, opening, deleting, and the kinds that a user may not see.
void TestDocumentScreens::list()
{
    Shop s;
    desk::TDocument_List_FRM list(s.desk.host, s.screens, host::TFormMode::Selection, 2);
    test::Drive([&] { list.ShowModally(); },
                [&](QWidget *screen) {
                    auto &grid = test::Find<host::Grid>(screen, u"DocumentsDB_GRD"_s);
                    QCOMPARE(grid.RowCount(), 51);
                    test::Type(u"۱۴۰۵/۰۷/۰۳"_s);
                    QCOMPARE(grid.RowCount(), 1);
                    test::Press(Qt::Key_Return);
                });
    QCOMPARE(list.ChosenCode(), 3);

    desk::TDocument_List_FRM all(s.desk.host, s.screens, host::TFormMode::DockedList);
    all.SetRunModally(true);
    test::Drive([&] { all.ShowModally(); },
                [&](QWidget *screen) {
                    auto &grid = test::Find<host::Grid>(screen, u"DocumentsDB_GRD"_s);
                    const auto &count = test::Find<QLabel>(screen, u"Count_LBL"_s);
                    QVERIFY(count.text().startsWith(u"۱۸۸ سند"_s));
                    test::Picture(*screen, u"documents"_s);
                    test::Focus(screen, u"FromDate_EDT"_s);
                    test::Type(u"14050701"_s);
                    test::Press(Qt::Key_Tab);
                    QCOMPARE(grid.RowCount(), s.database
                                                  .Scalar(u"SELECT COUNT(*) FROM Documents WHERE [Date] >= "
                                                          "'1405/07/01'"_s)
                                                  .toInt());
                    test::Find<host::DateEdit>(screen, u"FromDate_EDT"_s).SetDate({});
                    test::Focus(screen, u"Kind_CMB"_s);
                    test::Press(Qt::Key_Down); // sales
                    QTRY_COMPARE(grid.RowCount(), 51);
                    QVERIFY(grid.Locate(u"2-3"_s));
                    test::Drive([] { test::Press(Qt::Key_F5); },
                                [](QWidget *editor) {
                                    test::Enter(editor, u"Comment_EDT"_s, u"فوری"_s);
                                    Save();
                                });
                    QCOMPARE(grid.CurrentValue(u"Comment"_s).toString(), u"فوری"_s);
                    s.messages.TakeAll();
                    s.messages.Answer(true);
                    test::Press(Qt::Key_F7);
                    QCOMPARE(grid.RowCount(), 50);
                    s.messages.TakeAll();
                    test::Press(Qt::Key_Escape);
                });
    QCOMPARE(s.database.Scalar(u"SELECT COUNT(*) FROM Kardex WHERE OperationType = 2 AND OperationCode = 3"_s).toInt(),
             0);
    QCOMPARE(test::Faults(s.database), QStringList());

    s.desk.settings.SignIn(2); // sees sales alone
    test::Drive([&] { all.ShowModally(); },
                [&](QWidget *screen) {
                    QCOMPARE(test::Find<QComboBox>(screen, u"Kind_CMB"_s).count(), 2);
                    QCOMPARE(test::Find<host::Grid>(screen, u"DocumentsDB_GRD"_s).RowCount(), 50);
                    test::Press(Qt::Key_F7);
                    test::Press(Qt::Key_Escape);
                });
    QVERIFY(s.messages.Take().contains(u"حذف"_s));
}

/// The road of a serial, by its text and from the line that sold it.
void TestDocumentScreens::history()
{
    Shop s;
    desk::TDetailHistory_FRM history(s.desk.host);
    test::Drive([&] { history.ShowModally(); },
                [&](QWidget *screen) {
                    TypeLine(u"۲۰۰۰۰۱۰۰۱"_s);
                    auto &grid = test::Find<host::Grid>(screen, u"Movements_GRD"_s);
                    QCOMPARE(grid.RowCount(), 2);
                    grid.StandOn(1);
                    QCOMPARE(grid.CurrentValue(u"Kind"_s).toString(), u"فروش"_s);
                    QCOMPARE(grid.CurrentValue(u"Number"_s).toInt(), 36);
                    QCOMPARE(host::QuantityFromText(grid.CurrentValue(u"Balance"_s).toString()), host::Quantity(0));
                    test::Picture(*screen, u"detail-history"_s);
                    test::Enter(screen, u"Serial_EDT"_s, u"x"_s);
                    test::Press(Qt::Key_Return);
                    QVERIFY(Note(screen).contains(u"«x»"_s));
                    test::Press(Qt::Key_Escape);
                    QCOMPARE(test::Find<QLineEdit>(screen, u"Serial_EDT"_s).text(), QString());
                    test::Press(Qt::Key_Down);
                    QCOMPARE(test::Focused(), u"Values_GRD"_s);
                    test::Press(Qt::Key_Escape);
                });
    // The opening stock comes first, whatever is dated before it.
    test::Divider divider(s.desk.host);
    divider.store = 4;
    divider.Open();
    divider.header.Date = u"1404/01/01"_s;
    divider.Take(200034, u"200034001"_s, {3.75L, 0, 0, 2.5L, 1.5L, 1}, {{3.75L, 0, 0, 2.5L, 1.5L, 1}});
    QCOMPARE(divider.Save(), QString());
    test::Drive([&] { history.ShowModally(); },
                [&](QWidget *screen) {
                    TypeLine(u"200034001"_s);
                    auto &grid = test::Find<host::Grid>(screen, u"Movements_GRD"_s);
                    grid.StandOn(0);
                    QCOMPARE(host::QuantityFromText(grid.CurrentValue(u"Balance"_s).toString()), 3.75L);
                    test::Press(Qt::Key_Escape);
                    test::Press(Qt::Key_Escape);
                });
    s.Open(Kind::Sale, 36, [&](QWidget *screen) {
        auto &lines = test::Find<host::Grid>(screen, u"Lines_GRD"_s);
        QVERIFY(lines.Locate(u"17"_s));
        test::Drive([] { test::Press(Qt::Key_F8); },
                    [](QWidget *shown) {
                        QCOMPARE(test::Find<host::Grid>(shown, u"Values_GRD"_s).RowCount(), 1);
                        QCOMPARE(test::Find<host::Grid>(shown, u"Movements_GRD"_s).RowCount(), 2);
                        test::Press(Qt::Key_Escape);
                    });
        test::Press(Qt::Key_Escape);
    });
}

/// From a part of a part up to what was bought, and down again, by Enter.
void TestDocumentScreens::kin()
{
    Shop s;
    const host::Query unit(
        s.database.Main(),
        u"SELECT TOP 1 d.[Value] AS Serial, k.StoreCode FROM GoodDetailKardex AS k INNER JOIN "
        "GoodDetailValueDetails AS d ON d.DetailValueID = k.DetailValueID INNER JOIN DetailTypes AS t "
        "ON t.ID = d.DetailID AND t.DetailType = 3 WHERE k.GoodCode = 200001 GROUP BY d.[Value], "
        "k.StoreCode HAVING SUM(k.Amount1) = 1 ORDER BY d.[Value] DESC"_s);
    const QString serial = unit.Text(u"Serial");
    test::Divider divider(s.desk.host);
    divider.store = unit.Int(u"StoreCode");
    divider.Open();
    divider.header.Date = u"1405/12/01"_s; // the demo shop bought it behind the day of other divisions
    divider.Take(200001, serial, {1}, {{0.75L, 0, 0, 0, 0, 3}, {0.25L, 0, 0, 0, 0, 1}});
    QCOMPARE(divider.Save(), QString());
    divider.Open();
    divider.header.Date = u"1405/12/01"_s;
    divider.Take(200001, serial + u"/2"_s, {0.25L}, {{0.25L, 0, 0, 0, 0, 2}}, true);
    QCOMPARE(divider.Save(), QString());
    desk::TDetailHistory_FRM history(s.desk.host);
    test::Drive([&] { history.ShowModally(); },
                [&](QWidget *screen) {
                    TypeLine(serial + u"/2/1"_s);
                    auto &grid = test::Find<host::Grid>(screen, u"Kin_GRD"_s);
                    const auto row = [&](int at) {
                        grid.StandOn(at);
                        return grid.CurrentValue(u"Details"_s).toString().section(u' ', 0, 0) + u'|' +
                               grid.CurrentValue(u"Relation"_s).toString() + u'|' +
                               grid.CurrentValue(u"Kind"_s).toString() + u'|' +
                               grid.CurrentValue(u"Waste"_s).toString();
                    };
                    const QString indent(1, QChar(0x2003));
                    QCOMPARE(grid.RowCount(), 3);
                    QCOMPARE(row(2), indent + indent + serial + u"/2/1|این واحد|تقسیم جزئیات|ضایعات"_s);
                    QCOMPARE(row(1), indent + serial + u"/2|بریده شده از|تقسیم جزئیات|"_s);
                    QCOMPARE(row(0), serial + u"|بریده شده از|خرید|"_s);
                    grid.setFocus();
                    test::Press(Qt::Key_Return);
                    QCOMPARE(grid.RowCount(), 7); // with its four parts, and two parts of one of them
                    QCOMPARE(test::Find<host::Grid>(screen, u"Movements_GRD"_s).RowCount(), 2);
                    QCOMPARE(row(3), indent + indent + serial + u"/2/1|قسمت|تقسیم جزئیات|ضایعات"_s);
                    QVERIFY(grid.isVisible());
                    QCoreApplication::processEvents();
                    test::Picture(*screen, u"detail-kin"_s);
                    test::Press(Qt::Key_Escape);
                });
}

REGISTER_TEST(TestDocumentScreens)
#include "tst_document_screens.moc"
