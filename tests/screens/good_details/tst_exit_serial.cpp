// What goes out with a line, by keys and by a scanner.

#include "gooddetail/exit_serial.h"
#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "tests/screens/good_details/details_fixture.h"
#include "tests/support/test_main.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTabBar>
#include <QtTest>

namespace {

const QString Hostile = u"A'1%[x_ü"_s;

/// Ten phones with a serial and a colour, in store 1; serial 900 in store 2, 901 sold out, 5002 has serial 77.
struct Screen : fixture::Shop
{
    Screen()
    {
        int id = 0;
        for (const QString &serial : {u"12"_s, u"112"_s, u"1203"_s, u"10"_s, u"11"_s, u"007"_s, Hostile, u"ABC-5"_s,
                                      u"99999999999999999999"_s, u"31"_s})
            Stock(5001, ++id, {serial, {}, id % 2 ? u"قرمز"_s : QString()}, {1, 0, 1});
        Stock(5001, ++id, {u"900"_s}, {1, 0, 1}, 2);
        Stock(5001, ++id, {u"901"_s}, {});
        Stock(5002, ++id, {u"77"_s}, {1, 0, 1});
    }
    /// Details in the order of 5001: serial, text, colour.
    void Stock(int good, int id, const QStringList &values, const host::TAmounts &a, int store = 1)
    {
        const QStringList details = good == 5003 ? QStringList{u"2"_s} : QStringList{u"1"_s, u"3"_s, u"2"_s};
        QString text = u"insert GoodDetailValues(GoodCode) values (%1) "_s.arg(good);
        for (int i = 0; i < values.size(); ++i)
            if (!values[i].isEmpty())
                text +=
                    u"insert GoodDetailValueDetails(DetailValueID, DetailID, [Value]) values (%1, %2, N'%3') "_s.arg(
                        QString::number(id), details[i], QString(values[i]).replace(u'\'', u"''"_s));
        const auto n = [](host::Quantity q) { return host::QuantityToText(q); };
        if (a != host::TAmounts())
            text +=
                u"insert GoodDetailKardex(DetailValueID, StoreCode, GoodCode, OperationType, OperationCode, Amount1, "
                "Amount2, TotalAmount, [Length], Width, Amount3) values (%1, %2, %3, 1, 1, "_s.arg(id)
                    .arg(store)
                    .arg(good) +
                QStringList{n(a.Amount1), n(a.Amount2), n(a.TotalAmount), n(a.Length), n(a.Width), n(a.Amount3)}.join(
                    u',') +
                u')';
        database.Exec(text);
    }
    std::optional<good_detail::DetailLineResult> Open(const host::TDocumentLine &line,
                                                      const std::function<void(QWidget *screen)> &drive,
                                                      host::TFormMode mode = host::TFormMode::New)
    {
        std::optional<good_detail::DetailLineResult> result;
        test::Drive(
            [&] {
                result = good_detail::OpenExit(host, {line, {}, {}, {}, {}, host::TAmounts{3}, mode});
            },
            [&](QWidget *screen) {
                drive(screen);
                if (screen->isVisible()) {
                    if (test::Find<QLabel>(screen, u"Unsaved_LBL"_s).isVisible())
                        fakes.messages.Answer(true); // leave
                    test::Press(Qt::Key_Escape);
                    fakes.messages.TakeAll();
                }
            });
        return result;
    }
    static host::Grid &List(QWidget *screen) { return test::Find<host::Grid>(screen, u"ExitSerialList_GRD"_s); }
    /// The first details of the rows shown once the list has followed what was typed.
    static QString Shown(QWidget *screen)
    {
        QTest::qWait(180);
        QStringList serials;
        for (int row = 0; row < List(screen).RowCount(); ++row)
            serials << List(screen).VisibleTexts(row).at(1);
        return serials.join(u' ');
    }
    static QString Status(QWidget *screen)
    {
        return test::Find<QLabel>(screen, u"Status_LBL"_s).text().remove(QRegularExpression(u"[\u200F\u2068\u2069]"_s));
    }
    static void Scan(const QString &serial)
    {
        test::Type(serial);
        test::Press(Qt::Key_Return);
    }
    static void Click(QWidget *screen, const QString &button) { test::Find<QAbstractButton>(screen, button).click(); }
    static void Range(QWidget *screen, const QString &from, const QString &to)
    {
        Click(screen, u"MultiSerial_RD"_s);
        test::Enter(screen, u"SerialFrom_EDT"_s, from);
        test::Enter(screen, u"SerialTo_EDT"_s, to);
    }
    QStringList Kept() const
    {
        return database.Rows(u"select DetailTitle1, Amount1_Exit from GoodDetailKardexExit_Temp where Selected = 1 and "
                             "Tmp = 0 order by DetailTitle1"_s);
    }
};

} // namespace

class TestExitSerial : public QObject
{
    Q_OBJECT

private slots:
    void narrows_data();
    void narrows();
    void scans();
    void proposes();
    void amounts_data();
    void amounts();
    void ranges_data();
    void ranges();
    void takesBack();
    void twoDesks();
};

void TestExitSerial::narrows_data()
{
    QTest::addColumn<QString>("serial"); // or a range "10..12"
    QTest::addColumn<QString>("shown");
    const QString all = u"12 112 1203 10 11 007 "_s + Hostile + u" ABC-5 99999999999999999999 31"_s;
    QTest::newRow("nothing typed") << QString() << all;
    QTest::newRow("contains") << u"12"_s << u"12 112 1203"_s;
    QTest::newRow("Persian digits") << u"۱۲"_s << u"12 112 1203"_s;
    QTest::newRow("zeros in front") << u"00"_s << u"007"_s;
    for (const QString &sign : {u"'"_s, u"%"_s, u"["_s, u"_"_s, u"[x_"_s})
        QTest::newRow(qPrintable(u"the sign "_s + sign)) << sign << Hostile;
    QTest::newRow("no such serial") << u"12345"_s << QString();
    QTest::newRow("range") << u"10..12"_s << u"12 10 11"_s;
    QTest::newRow("range over signs") << u"1..50"_s << u"12 10 11 007 31"_s;
    QTest::newRow("one end is 0") << u"0..12"_s << all;
    QTest::newRow("turned round") << u"12..10"_s << QString();
}

void TestExitSerial::narrows()
{
    QFETCH(QString, serial);
    Screen shop;
    shop.Open(Screen::Line(5001, 2, 7), [&](QWidget *screen) {
        QCOMPARE(test::Focused(), u"Serial_EDT"_s);
        const QStringList ends = serial.split(u".."_s);
        if (ends.size() == 2)
            Screen::Range(screen, ends[0], ends[1]);
        else
            test::Type(serial);
        const quint64 before = host::StatementsSent();
        QTEST(Screen::Shown(screen), "shown");
        QVERIFY(host::StatementsSent() - before <= 2); // the rows and their sum, however many letters
        test::Find<QTabBar>(screen, u"TabSearch_FRAME"_s).setCurrentIndex(1);
        QCOMPARE(Screen::Shown(screen), QString());
        QVERIFY(!test::Find<QLabel>(screen, u"Unsaved_LBL"_s).isVisible()); // looking changes nothing
    });
}

void TestExitSerial::scans()
{
    Screen shop;
    const auto result = shop.Open(Screen::Line(5001, 2, 7), [&](QWidget *screen) {
        for (const auto &[serial, status] :
             {std::pair(u"12"_s, u"سریال «12» خارج شد"_s),
              {u"۱۲"_s, u"سریال «12» پیش از این انتخاب شده است"_s},
              {u"500"_s, u"سریال «500» برای این کالا ثبت نشده است"_s},
              {u"77"_s, u"سریال «77» برای کالای دیگری ثبت شده است"_s},
              {u"900"_s, u"سریال «900» در این انبار نیست"_s},
              {u"901"_s, u"سریال «901» موجودی ندارد"_s},
              {Hostile, u"سریال «%1» خارج شد    خارج نشده: 500، 77، 900، 901"_s.arg(Hostile)}}) {
            Screen::Scan(serial);
            QVERIFY2(Screen::Status(screen).startsWith(status), qPrintable(Screen::Status(screen)));
            QCOMPARE(test::Focused(), u"Serial_EDT"_s);
        }
        QVERIFY(test::Find<QLabel>(screen, u"Totals_LBL"_s).text().contains(u"مانده: ۱"_s));
        QTest::keyClick(screen, Qt::Key_Tab, Qt::ControlModifier);
        test::Type(u"zzz"_s);
        QCOMPARE(Screen::Shown(screen), u"12 "_s + Hostile);
        test::Picture(*screen, u"exit-chosen"_s);
        test::Press(Qt::Key_F3);
    });
    QVERIFY(result && result->Rows == 2 && result->Amounts.Amount1 == 2 && result->Amounts.TotalAmount == 2);
    QCOMPARE(shop.Kept(), (QStringList{u"12|1"_s, Hostile + u"|1"_s}));
    QVERIFY(shop.desk.detailMovements.GoodDetailsOperation_Save(2, 7).isEmpty());
    QCOMPARE(shop.database.Rows(u"select Amount1, TotalAmount from GoodDetailKardex where OperationType = 2"_s),
             (QStringList{u"-1|-1"_s, u"-1|-1"_s}));
    // Looked at again, nothing can be changed.
    shop.Open(
        Screen::Line(5001, 2, 7),
        [&](QWidget *screen) {
            QCOMPARE(Screen::Shown(screen), u"12 "_s + Hostile);
            for (const QString &name : {u"SaveRow_BTN"_s, u"DelRow_BTN"_s, u"DelAll_BTN"_s, u"Amount1_EDT"_s})
                QVERIFY(!test::Find(screen, name).isEnabled());
            Screen::Scan(u"10"_s);
        },
        host::TFormMode::Review);
    QCOMPARE(shop.database.Scalar(u"select count(*) from GoodDetailKardexExit_Temp"_s).toInt(), 0);
}

/// The amount of the only serial found is proposed, and goes with it; a row of the list brings its own.
void TestExitSerial::proposes()
{
    Screen shop;
    shop.Open(Screen::Line(5001, 2, 7), [&](QWidget *screen) {
        const auto &amount = test::Find<host::NumericEdit>(screen, u"Amount1_EDT"_s);
        test::Type(u"1203"_s);
        QTRY_COMPARE(amount.text(), u"1"_s);
        test::Press(Qt::Key_Backspace);
        test::Press(Qt::Key_Backspace);
        QTRY_COMPARE(amount.text(), u"0"_s);
        test::Focus(screen, u"ExitSerialList_GRD"_s);
        test::Press(Qt::Key_Down);
        test::Press(Qt::Key_Return);
        QCOMPARE(test::Find<QLineEdit>(screen, u"Serial_EDT"_s).text(), u"۱۱۲"_s);
        QCOMPARE(test::Focused(), u"Amount1_EDT"_s);
        test::Press(Qt::Key_Return);
        QCOMPARE(test::Focused(), u"Serial_EDT"_s);
        shop.fakes.settings.record.TakeOnlyDetail = false;
        Screen::Scan(u"1203"_s);
        QCOMPARE(Screen::Status(screen), u"مقدار سریال «1203» را وارد کنید"_s);
        QCOMPARE(test::Focused(), u"Amount1_EDT"_s);
        Screen::Scan(u"1"_s);
        QCOMPARE(shop.database.Rows(u"select DetailTitle1 from GoodDetailKardexExit_Temp where Selected = 1"_s),
                 (QStringList{u"112"_s, u"1203"_s}));
        // What is typed goes out of the row stood on.
        Screen::Shown(screen);
        Screen::List(screen).Locate(u"5"_s);
        test::Focus(screen, u"Amount1_EDT"_s);
        Screen::Scan(u"1"_s);
        QCOMPARE(
            shop.database.Rows(u"select DetailTitle1 from GoodDetailKardexExit_Temp where Selected = 1 order by ID"_s)
                .last(),
            u"11"_s);
    });
}

void TestExitSerial::amounts_data()
{
    QTest::addColumn<int>("unitType");
    QTest::addColumn<QString>("typed"); // into the amount inputs in their order
    QTest::addColumn<QString>("said");  // or the row that is written
    QTest::addColumn<QString>("focus");
    const auto more = [](const QString &what) { return u"ShowMessage(کاربر گرامی "_s + what + u" موجود می باشد.)"_s; };
    const QString amount = more(u"مقدار وارد شده بیشتر از مقدار"_s);
    const QString count = more(u"تعداد وارد شده بیشتر از تعداد"_s);
    QTest::newRow("one unit") << 1 << u"31"_s << amount << u"Amount1_EDT"_s;
    QTest::newRow("one unit fits") << 1 << u"2.5"_s << u"2.5|0|2.5|0|0|0"_s << QString();
    QTest::newRow("two units") << 2 << u"30 4"_s << more(u"مقدار2 وارد شده بیشتر از مقدار2"_s) << u"Amount2_EDT"_s;
    QTest::newRow("two units, nothing of the second") << 2 << u"5 0"_s << u"5|0|5|0|0|0"_s << QString();
    QTest::newRow("two units, amount first") << 2 << u"31 4"_s << amount << u"Amount1_EDT"_s;
    QTest::newRow("packed") << 3 << u"2 4"_s << count << u"Amount2_EDT"_s;
    QTest::newRow("packed fits") << 3 << u"2 3"_s << u"6|3|6|0|0|2"_s << QString();
    QTest::newRow("total and part") << 4 << u"2 7"_s << amount << u"Amount3_EDT"_s;
    QTest::newRow("total and part fits") << 4 << u"1 6"_s << u"18|0|1.5|0|0|0"_s << QString();
    QTest::newRow("length") << 5 << u"6 1 1"_s << more(u"مقدار طول وارد شده بیشتر از مقدار طول"_s) << u"Amount1_EDT"_s;
    QTest::newRow("width") << 5 << u"5 4 1"_s << more(u"مقدار عرض وارد شده بیشتر از مقدار عرض"_s) << u"Amount2_EDT"_s;
    QTest::newRow("pieces") << 5 << u"5 1 3"_s << count << u"Amount3_EDT"_s;
    QTest::newRow("area fits") << 5 << u"5 3 2"_s << u"30|0|30|5|3|2"_s << QString();
    QTest::newRow("nothing") << 1 << u"0"_s << u"NotZeroValue(مقدار)"_s << u"Amount1_EDT"_s;
}

void TestExitSerial::amounts()
{
    QFETCH(int, unitType);
    QFETCH(QString, typed);
    QFETCH(QString, said);
    QFETCH(QString, focus);
    Screen shop;
    const bool area = unitType == 5;
    shop.Stock(5003, 14, {u"آبی"_s},
               {30, area ? 0.0L : 3, 30, area ? 5.0L : 0, area ? 3.0L : 0, area || unitType == 3 ? 2.0L : 0});
    shop.Open(Screen::Line(5003, 2, 7, quint8(unitType)), [&](QWidget *screen) {
        const QStringList amounts = typed.split(u' ');
        for (int i = 0; i < amounts.size(); ++i) {
            test::Focus(screen, u"Amount%1_EDT"_s.arg(i + 1));
            test::Type(amounts[i]);
        }
        test::Press(Qt::Key_Tab);
        // Measures narrow the list; one that is too great leaves nothing to choose from but the row looked at.
        test::Picture(*screen, u"exit-%1"_s.arg(unitType));
        Screen::Click(screen, u"SaveRow_BTN"_s);
        if (!focus.isEmpty()) {
            QCOMPARE(shop.fakes.messages.Take(), said);
            QCOMPARE(test::Focused(), focus);
            return;
        }
        QCOMPARE(Screen::Status(screen), u"انتخاب شد"_s);
        QCOMPARE(shop.database.Rows(u"select Amount1_Exit, Amount2_Exit, TotalAmount_Exit, Length_Exit, Width_Exit, "
                                    "Amount3_Exit from GoodDetailKardexExit_Temp where Selected = 1"_s),
                 QStringList{said});
    });
}

void TestExitSerial::ranges_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::addColumn<QString>("amount");
    QTest::addColumn<QString>("said"); // a message or the status
    QTest::addColumn<int>("chosen");
    const QString numbers = u"ShowMessage(کاربر گرامی ابتدا و انتهای محدوده سریال باید عدد باشند.)"_s;
    QTest::newRow("10 to 12") << u"10"_s << u"۱۲"_s << u"1"_s << u"۳ سریال انتخاب شد"_s << 3;
    QTest::newRow("with gaps and signs") << u"1"_s << u"100"_s << u"1"_s
                                         << u"۴ سریال انتخاب شد، ۹۶ شماره موجود نیست یا مقدار کافی ندارد"_s << 4;
    QTest::newRow("more than there is") << u"10"_s << u"12"_s << u"2"_s
                                        << u"۰ سریال انتخاب شد، ۳ شماره موجود نیست یا مقدار کافی ندارد"_s << 0;
    QTest::newRow("no number") << u"10"_s << u"1x"_s << u"1"_s << numbers << 0;
    QTest::newRow("too long") << u"1"_s << u"100001"_s << u"1"_s
                              << u"ShowMessage(کاربر گرامی محدوده سریال نمی تواند بیشتر از 100,000 سریال باشد.)"_s << 0;
    QTest::newRow("none") << u"0"_s << u"0"_s << u"1"_s << u"در این محدوده سریالی نیست"_s << 0;
    QTest::newRow("no amount") << u"10"_s << u"12"_s << u"0"_s << u"NotZeroValue(مقدار)"_s << 0;
}

void TestExitSerial::ranges()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    QFETCH(QString, amount);
    Screen shop;
    shop.Open(Screen::Line(5001, 2, 7), [&](QWidget *screen) {
        Screen::Range(screen, from, to);
        test::Enter(screen, u"Amount1_EDT"_s, amount);
        test::Press(Qt::Key_Return);
        const QString message = shop.fakes.messages.Take();
        const QString said = message.isEmpty() ? Screen::Status(screen) : message;
        QTEST(said, "said");
        QTEST(shop.database.Scalar(u"select count(*) from GoodDetailKardexExit_Temp where Selected = 1"_s).toInt(),
              "chosen");
    });
}

void TestExitSerial::takesBack()
{
    Screen shop;
    QVERIFY(!shop.Open(Screen::Line(5001, 2, 7), [&](QWidget *screen) {
        Screen::Scan(u"12"_s);
        Screen::Scan(u"10"_s);
        Screen::Scan(u"31"_s);
        test::Focus(screen, u"ExitSerialList_GRD"_s);
        shop.fakes.messages.Answer(true);
        test::Press(Qt::Key_Delete);
        QCOMPARE(shop.fakes.messages.Take(), u"MsgDeleteRow()"_s);
        test::Press(Qt::Key_Delete); // is not chosen any more
        QCOMPARE(Screen::Status(screen), u"این سطر انتخاب نشده است"_s);
        QTest::keyClick(screen, Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(Screen::Shown(screen), u"10 31"_s);
        shop.fakes.messages.Answer(true);
        Screen::Click(screen, u"DelAll_BTN"_s);
        QCOMPARE(shop.fakes.messages.Take(), u"MsgDeleteItem(همه سطرهاي)"_s);
        QCOMPARE(Screen::Shown(screen), QString());
        // An amount that was typed and not chosen is not lost by F3.
        QTest::keyClick(screen, Qt::Key_Tab, Qt::ControlModifier);
        test::Focus(screen, u"Amount1_EDT"_s);
        test::Type(u"1"_s);
        test::Press(Qt::Key_F3);
        QCOMPARE(Screen::Status(screen), u"مقدار وارد شده هنوز ثبت نشده است"_s);
    }));
    QCOMPARE(shop.database.Scalar(u"select count(*) from GoodDetailKardexExit_Temp"_s).toInt(), 0);
}

void TestExitSerial::twoDesks()
{
    Screen shop;
    const host::TDocumentLine line = Screen::Line(5001, 2, 7);
    desk::DeskHost other({shop.database.AnotherConnection(), shop.database.GoodsList(), shop.database.Scales()},
                         &shop.fakes.messages);
    other.detailMovements.ExitGoodDetails_Fill(Screen::Line(5001, 2, 8));
    other.serialBatches.ChooseSerials(Screen::Line(5001, 2, 8), {12, 12}, {1, 0, 1});
    other.detailMovements.ExitGoodDetails_Keep(Screen::Line(5001, 2, 8));
    QVERIFY(shop.Open(line, [&](QWidget *) {
        Screen::Scan(u"12"_s);
        test::Press(Qt::Key_F3);
    }));
    QVERIFY(other.detailMovements.GoodDetailsOperation_Save(2, 8).isEmpty());
    const auto refused = shop.desk.detailMovements.GoodDetailsOperation_Save(2, 7);
    QVERIFY(refused.size() == 1 && refused[0].reason == host::TDetailRefusal::Reason::Gone);
    QVERIFY(refused[0].Text.startsWith(u"12"));
}

REGISTER_TEST(TestExitSerial)
#include "tst_exit_serial.moc"
