// The screen on which details come in, by keys; the details of a desk over its database.

#include "gooddetail/enter_serial.h"
#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "host/data/query.h"
#include "tests/screens/good_details/details_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>
#include <QtWidgets>

using fixture::Shop;
using good_detail::DetailLineResult;
using test::Find;
using test::Press;

namespace {

using Steps = std::function<void(QWidget *screen)>;

void Click(QWidget *screen, const char16_t *button)
{
    Find<QAbstractButton>(screen, QString::fromUtf16(button)).click();
}

void Scan(QWidget *screen, const QString &serial)
{
    test::Focus(screen, u"Serial_EDT"_s);
    test::Type(serial);
    Press(Qt::Key_Return);
}

void Range(QWidget *screen, const QString &from, const QString &to)
{
    Click(screen, u"MultiSerial_RD");
    test::Enter(screen, u"SerialFrom_EDT"_s, from);
    test::Enter(screen, u"SerialTo_EDT"_s, to);
    Click(screen, u"SaveRow_BTN");
    // The offscreen platform leaves the closed notice active; a desktop gives the screen the keys.
    screen->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(screen));
}

/// Steps of a user: a key, "field=typed text", "list:place" or a button.
void Follow(QWidget *screen, const QString &steps)
{
    static const QHash<QString, Qt::Key> keys{{u"Enter"_s, Qt::Key_Return}, {u"Tab"_s, Qt::Key_Tab}};
    for (const QString &step : steps.split(u' ')) {
        if (keys.contains(step))
            Press(keys.value(step));
        else if (step == u"F3")
            QTest::keyClick(screen, Qt::Key_F3);
        else if (step.contains(u'='))
            test::Enter(screen, step.section(u'=', 0, 0), step.section(u'=', 1));
        else if (step.contains(u':'))
            Find<QComboBox>(screen, step.section(u':', 0, 0)).setCurrentIndex(step.section(u':', 1).toInt());
        else
            Find<QAbstractButton>(screen, step).click();
        QTest::qWait(1);
    }
}

/// What the grid shows, a row a text.
QStringList Shown(QWidget *screen)
{
    auto &grid = Find<host::Grid>(screen, u"EnterSerialList_GRD"_s);
    QStringList rows;
    for (int row = 0; row < grid.RowCount(); ++row)
        rows << grid.VisibleTexts(row).join(u'|');
    return rows;
}

/// Opens the screen on a line and leaves it by OK, unless the steps have closed it.
std::optional<DetailLineResult> Enter(Shop &shop, const host::TDocumentLine &line, const Steps &steps)
{
    std::optional<DetailLineResult> result;
    test::Drive([&] { result = good_detail::OpenEnter(shop.host, {line}); },
                [&](QWidget *screen) {
                    steps(screen);
                    if (screen->isVisible())
                        QTest::keyClick(screen, Qt::Key_F3);
                });
    return result;
}

/// The document of the line is saved.
void Save(Shop &shop, const host::TDocumentLine &line)
{
    QVERIFY(shop.desk.detailMovements.GoodDetailsOperation_Save(line.OperationType, line.OperationCode).isEmpty());
}

void Sell(Shop &shop, host::TDocumentLine line, const host::TAmounts &amounts)
{
    line.OperationType = 2;
    line.IsReturn = false;
    shop.desk.detailMovements.ExitGoodDetails_Fill(line);
    shop.database.Exec(
        u"update GoodDetailKardexExit_Temp set Amount1_Exit = %1, Amount2_Exit = %2, Amount3_Exit = %3, Selected = 1 "
        "where Tmp = 1"_s.arg(double(amounts.Amount1))
            .arg(double(amounts.Amount2))
            .arg(double(amounts.Amount3)));
    shop.desk.detailMovements.ExitGoodDetails_Keep(line);
    Save(shop, line);
}

QString Message(const char16_t *text)
{
    return u"ShowMessage("_s + QString::fromUtf16(text) + u')';
}

} // namespace

class TestEnter : public QObject
{
    Q_OBJECT

private slots:
    void scansWithoutLoss();
    void scansGoOnUnderAMessage_data();
    void scansGoOnUnderAMessage();
    void unitTypes_data();
    void unitTypes();
    void hostileSerials();
    void refusals_data();
    void refusals();
    void returnLimits_data();
    void returnLimits();
    void knownSerialBringsItsDetails();
    void mergesEditsDeletes();
    void editingIsAnInterlude();
    void ratiosShowNoNoise();
    void returnedRowsStay();
    void ranges();
    void rangeGivenUp();
    void leavesNothingBehind();
    void keyboardAndColumns();
    void goneGoodDoesNotOpen();
};

/// A hundred scans as fast as they come, some of them twice; each costs the same number of statements.
void TestEnter::scansWithoutLoss()
{
    Shop shop;
    const auto line = Shop::Line(5002, 1, 7);
    quint64 early = 0;
    quint64 late = 0;
    const auto result = Enter(shop, line, [&](QWidget *screen) {
        for (int i = 0; i < 100; ++i) {
            const quint64 before = host::StatementsSent();
            Scan(screen, u"SN%1"_s.arg(i, 4, 10, QChar(u'0')));
            (i < 50 ? early : late) = host::StatementsSent() - before;
            if (i % 10 == 9)
                Scan(screen, u"SN%1"_s.arg(i, 4, 10, QChar(u'0')));
        }
        QCOMPARE(Shown(screen).size(), 100);
        QVERIFY(Find<QLabel>(screen, u"Status_LBL"_s).text().contains(u"SN0099"));
        QCOMPARE(test::Focused(), u"Serial_EDT"_s);
        Click(screen, u"Cancel_BTN");
    });
    QVERIFY(early > 0 && early <= 15);
    QCOMPARE(late, early);
    QVERIFY(result && result->Rows == 100 && result->Amounts.Amount1 == 100);
    Save(shop, line);
    QCOMPARE(
        shop.database.Rows(u"select count(*), count(distinct DetailValueID), sum(Amount1) from GoodDetailKardex"_s),
        QStringList{u"100|100|100"_s});
}

void TestEnter::scansGoOnUnderAMessage_data()
{
    QTest::addColumn<QString>("first");
    QTest::newRow("of a rule") << u"S1"_s; // on hand
    QTest::newRow("of the database") << u"S3"_s;
}

/// A box stands over the screen while the scanner goes on; Enter of the next scan closes it, and the scan is taken.
void TestEnter::scansGoOnUnderAMessage()
{
    struct Boxes : test::FakeMessages
    {
        void ShowMessage(const QString &text, host::MessageIcon icon, const QString &caption) override
        {
            FakeMessages::ShowMessage(text, icon, caption);
            opened();
            QMessageBox box;
            box.setText(text);
            QTimer scanner;
            QObject::connect(&scanner, &QTimer::timeout, &box, [&] {
                if (!box.isActiveWindow() || !box.focusWidget())
                    return;
                scanner.stop();
                QTest::keyClicks(box.focusWidget(), u"S2"_s);
                QTest::keyClick(box.focusWidget(), Qt::Key_Return);
            });
            scanner.start(5);
            box.exec();
        }
        std::function<void()> opened = [] {};
    };
    QFETCH(QString, first);
    Shop shop;
    Enter(shop, Shop::Line(5002, 1, 7), [](QWidget *screen) { Scan(screen, u"S1"_s); });
    Save(shop, Shop::Line(5002, 1, 7));
    Boxes boxes;
    if (first == u"S3") { // no second value can be stored until the box stands
        shop.database.Exec(u"create unique index OnlyOne on GoodDetailValueDetails(DetailID)"_s);
        boxes.opened = [&] { shop.database.Exec(u"drop index OnlyOne on GoodDetailValueDetails"_s); };
    }
    host::Host host = shop.Host(boxes);
    test::Drive([&] { good_detail::OpenEnter(host, {Shop::Line(5002, 1, 8)}); },
                [&](QWidget *screen) {
                    Scan(screen, first);
                    QTRY_COMPARE(Shown(screen), QStringList{u"S2|۱"_s});
                    screen->activateWindow();
                    QVERIFY(QTest::qWaitForWindowActive(screen));
                    QVERIFY(Find<QLabel>(screen, u"Status_LBL"_s).text().endsWith(u"ثبت نشده: "_s + first));
                    QTest::keyClick(screen, Qt::Key_F3);
                });
    QCOMPARE(boxes.TakeAll().size(), 1);
}

void TestEnter::unitTypes_data()
{
    QTest::addColumn<int>("unitType");
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("captions");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("result");
    QTest::newRow("one unit") << 1 << QStringList{u"7.5"_s} << u"رنگ|مقدار (عدد)"_s << u"قرمز|۷٫۵"_s
                              << u"7.5 0 7.5 0 0 0 1"_s;
    QTest::newRow("two units") << 2 << QStringList{u"30"_s} << u"رنگ|مقدار (عدد)|مقدار 2 (کارتن)"_s << u"قرمز|۳۰|۲٫۵"_s
                               << u"30 2.5 30 0 0 0 1"_s;
    QTest::newRow("packed") << 3 << QStringList{u"12"_s, u"3"_s} << u"رنگ|هر کارتن (عدد)|تعداد (کارتن)|مقدار کل (عدد)"_s
                            << u"قرمز|۱۲|۳|۳۶"_s << u"36 3 36 0 0 12 1"_s;
    QTest::newRow("parts") << 4 << QStringList{u"2"_s, u"6"_s} << u"رنگ|مقدار کل (کارتن)|مقدار جزء (عدد)"_s
                           << u"قرمز|۲٫۵|۳۰"_s << u"30 0 2.5 0 0 0 1"_s;
    QTest::newRow("area") << 5 << QStringList{u"3"_s, u"2"_s, u"1000"_s} << u"رنگ|طول|عرض|تعداد|مقدار (عدد)"_s
                          << u"قرمز|۳|۲|۱۰۰۰|۶۰۰۰"_s << u"6000 0 6000 3 2 1000 1"_s;
}

void TestEnter::unitTypes()
{
    QFETCH(int, unitType);
    QFETCH(QStringList, typed);
    Shop shop;
    QString captions;
    QString row;
    const auto result = Enter(shop, Shop::Line(5003, 1, 7, quint8(unitType)), [&](QWidget *screen) {
        for (int i = 0; i < typed.size(); ++i)
            test::Enter(screen, u"Amount%1_EDT"_s.arg(i + 1), typed[i]);
        test::Picture(*screen, u"enter-%1"_s.arg(unitType));
        while (test::Focused().startsWith(u"Amount"))
            Press(Qt::Key_Return);
        captions = Find<host::Grid>(screen, u"EnterSerialList_GRD"_s).VisibleCaptions().join(u'|');
        row = Shown(screen).join(u'/');
    });
    QTEST(captions, "captions");
    QTEST(row, "row");
    QStringList numbers;
    const host::TAmounts a = result.value_or(DetailLineResult()).Amounts;
    for (const host::Quantity number : {a.Amount1, a.Amount2, a.TotalAmount, a.Length, a.Width, a.Amount3})
        numbers << host::QuantityToText(number);
    numbers << QString::number(result.value_or(DetailLineResult()).Rows);
    const QString given = numbers.join(u' ');
    QTEST(given, "result");
}

void TestEnter::hostileSerials()
{
    Shop shop;
    const QStringList typed{u"O'Neil\"s"_s,
                            u"50%_[a-z]"_s,
                            u"007"_s,
                            u"۱۲۳-٤"_s,
                            u"\u200FAB\u202B"_s,
                            QString(50, u'9'),
                            u"'; drop table GoodInf --"_s};
    const QStringList kept{u"O'Neil\"s"_s,
                           u"50%_[a-z]"_s,
                           u"007"_s,
                           u"123-4"_s,
                           u"AB"_s,
                           QString(50, u'9'),
                           u"'; drop table GoodInf --"_s};
    const auto line = Shop::Line(5002, 1, 7);
    Enter(shop, line, [&](QWidget *screen) {
        for (const QString &serial : typed)
            Scan(screen, serial);
    });
    Save(shop, line);
    QCOMPARE(shop.database.Rows(u"select d.[Value] from GoodDetailKardex k inner join GoodDetailValueDetails d on "
                                "d.DetailValueID = k.DetailValueID order by k.ID"_s),
             kept);
}

void TestEnter::refusals_data()
{
    QTest::addColumn<int>("good"); // below 0: a return of the sale 50
    QTest::addColumn<QString>("steps");
    QTest::addColumn<QString>("said");
    QTest::addColumn<QString>("focused");
    // On hand: 5001 serial 3 red, 5002 serial 9; sold on 50: 1 and 2. 555 is a barcode of 5002.
    const QString serial = u"Serial_EDT"_s;
    const QString barcode = u"Barcode_EDT"_s;
    const auto row = [](const char *name, int good, const QString &steps, const char16_t *said,
                        const QString &focused) {
        const QString text = QString::fromUtf16(said);
        QTest::newRow(name) << good << steps
                            << (text.isEmpty() || text.endsWith(u')') ? text : u"ShowMessage(%1)"_s.arg(text))
                            << focused;
    };
    row("in stock", 5001, u"Serial_EDT=3 Enter"_s, u"کاربر گرامی با این سریال جزییاتی ثبت شده است لطفا بررسی نمایید  ",
        serial);
    row("another good's", 5001, u"Serial_EDT=9 Enter"_s,
        u"کاربر گرامی سریال فوق در لیست سریال های کالای دیگری ثبت شده است.", serial);
    row("sold with another colour", 5001, u"Serial_EDT=1 Tab ComboBox_2:2 SaveRow_BTN"_s,
        u"کاربر گرامی سریال فوق به جزییات دیگری اختصاص داده شده است لطفا سریال جدید وارد نمایید", serial);
    row("no serial", 5001, u"SaveRow_BTN"_s, u"MsgRequiredField(سریال)", serial);
    row("no amount", 5003, u"SaveRow_BTN"_s, u"NotZeroValue(مقدار)", u"Amount1_EDT"_s);
    row("left half typed", 5001, u"Serial_EDT=77 F3"_s, u"کاربر گرامی سطر وارد شده هنوز ثبت نشده است.", serial);
    row("operation barcode", 5004, u"Barcode_EDT=999 Tab"_s,
        u"کاربر گرامی بارکد فوق در بارکدهای عملیاتی استفاده شده است.", barcode);
    row("barcode of another good", 5004, u"Barcode_EDT=555 Tab"_s,
        u"کاربر گرامی بارکد فوق در لیست بارکدهای کالای دیگری ثبت شده است.", barcode);
    row("barcode of another good, stored", 5004, u"Barcode_EDT=555 SaveRow_BTN"_s,
        u"کاربر گرامی بارکد فوق برای جزییات کالای دیگری ثبت شده است.", barcode);
    row("return: colour not sold", -5001, u"ComboBox_2:2 Serial_EDT=88 Enter"_s,
        u"کاربر گرامی با این مقادیر جزییاتی که وارد کرده اید هیچ جزییاتی به فروش نرسیده است", serial);
    row("return: not sold", -5001, u"Serial_EDT=3 Enter"_s,
        u"کاربر گرامی با سریال وارد شده امکان برگشت جزییات وجود ندارد لطفا برای برگشت این جزییات سریال جدید وارد نمایید",
        serial);
    row("return: twice", -5001, u"Serial_EDT=1 Enter Serial_EDT=1 Enter"_s,
        u"کاربر گرامی جزییات وارد شده با این سریال یک بار ثبت شده است لطفا سریال دیگری وارد نمایید", serial);
    row("return: more than was sold of it", -5001, u"Serial_EDT=1 Tab Amount1_EDT=2 SaveRow_BTN"_s,
        u"کاربر گرامی برای برگشت زدن جزییات وارد شده با سریال فوق باید مقدار فروخته شده را وارد نمایید در غیر اینصورت سریال جدید وارد نمایید",
        serial);
    row("return: new serial, too much", -5001, u"Amount1_EDT=9 Serial_EDT=88 Enter"_s,
        u"کاربر گرامی مقدار وارد شده برای این جزییات بیشتر از موجودی می باشد", serial);
    row("return: never sold", -5003, u"ComboBox_1:1 Amount1_EDT=1 Enter"_s,
        u"کاربر گرامی با این مقادیر جزییاتی که وارد کرده اید هیچ جزییاتی به فروش نرسیده است", u"ComboBox_1"_s);
    row("return: all has come back", -5003, u"ComboBox_1:0 Amount1_EDT=1 SaveRow_BTN"_s,
        u"کاربر گرامی با این جزییات وارد شده موجودی نداریم", u"ComboBox_1"_s);
    row("no numbers", 5001, u"MultiSerial_RD SerialFrom_EDT=A1 SerialTo_EDT=9 SaveRow_BTN"_s,
        u"کاربر گرامی ابتدا و انتهای محدوده سریال باید عدد باشند.", u"SerialFrom_EDT"_s);
    row("too long", 5001, u"MultiSerial_RD SerialFrom_EDT=1 SerialTo_EDT=100001 SaveRow_BTN"_s,
        u"کاربر گرامی محدوده سریال نمی تواند بیشتر از 100,000 سریال باشد.", u"SerialTo_EDT"_s);
    row("5 to 3", 5001, u"MultiSerial_RD SerialFrom_EDT=5 SerialTo_EDT=3 SaveRow_BTN"_s, u"", {});
}

void TestEnter::refusals()
{
    QFETCH(int, good);
    QFETCH(QString, steps);
    const bool returns = good < 0;
    Shop shop;
    shop.database.Exec(u"update GoodInf set AbbName = N'!555!' where Code = 5002"_s);
    host::TSettingRecord record = shop.desk.settings.SettingRecord();
    record.ReservedBarcodes[0] = u"999"_s;
    shop.desk.settings.Save(record);
    const auto buy = Shop::Line(5001, 1, 1);
    Enter(shop, buy, [](QWidget *screen) { Range(screen, u"1"_s, u"2"_s); });
    Save(shop, buy);
    Sell(shop, Shop::Line(5001, 2, 50), {1, 0, 0});
    const auto more = Shop::Line(5001, 1, 2);
    Enter(shop, more, [](QWidget *screen) { Scan(screen, u"3"_s); });
    Save(shop, more);
    const auto other = Shop::Line(5002, 1, 3);
    Enter(shop, other, [](QWidget *screen) { Scan(screen, u"9"_s); });
    Save(shop, other);
    const bool cloth = good == -5003; // one colour came, went and came back; another was never sold
    for (const auto &[type, code, colour] : {std::tuple(1, 4, 0), std::tuple(4, 60, 0), std::tuple(1, 5, 1)}) {
        if (!cloth)
            break;
        const auto line = Shop::Line(5003, quint8(type), code, 1, type == 4 ? 51 : 0);
        Enter(shop, line, [colour = colour](QWidget *screen) {
            Follow(screen, u"ComboBox_1:%1 Amount1_EDT=1 SaveRow_BTN"_s.arg(colour));
        });
        Save(shop, line);
        if (code == 4)
            Sell(shop, Shop::Line(5003, 2, 51), {1, 0, 0});
    }
    QCOMPARE(shop.fakes.messages.TakeAll(), QStringList());
    const QString values = u"select count(*) from GoodDetailValues"_s;
    const QStringList before = shop.database.Rows(values);
    QString stood;
    Enter(shop,
          Shop::Line(qAbs(good), returns ? 4 : 1, 70, 1,
                     !returns ? 0
                     : cloth  ? 51
                              : 50),
          [&](QWidget *screen) {
              Follow(screen, steps);
              QTest::qWait(1);
              stood = test::Focused();
              test::Enter(screen, u"Amount1_EDT"_s, u"5"_s); // so that leaving asks
              shop.fakes.messages.Answer(true);
              QTest::keyClick(screen, Qt::Key_Escape);
          });
    QStringList said = shop.fakes.messages.TakeAll();
    QVERIFY(!said.isEmpty() && said.takeLast().startsWith(u"Ask("));
    const QString told = said.join(u'/');
    QTEST(told, "said");
    QFETCH(QString, focused);
    QVERIFY2(focused.isEmpty() || stood == focused, qPrintable(stood));
    QCOMPARE(shop.database.Rows(values), before);
}

void TestEnter::returnLimits_data()
{
    QTest::addColumn<int>("unitType");
    QTest::addColumn<QStringList>("typed");
    QTest::addColumn<QString>("said");
    QTest::addColumn<QString>("focused");
    // Half of it is on the line already; the amounts are those of Amount1_EDT, Amount2_EDT ...
    const QString most = u"ShowMessage(کاربر گرامی %1 وارد شده بیشتر از %1 قابل برگشت می باشد.)"_s;
    QTest::newRow("one unit") << 1 << QStringList{u"13"_s} << most.arg(u"مقدار"_s) << u"Amount1_EDT"_s;
    QTest::newRow("second") << 2 << QStringList{u"12"_s, u"2"_s} << most.arg(u"مقدار2"_s) << u"Amount2_EDT"_s;
    QTest::newRow("packages") << 3 << QStringList{u"12"_s, u"2"_s} << most.arg(u"مقدار مقدار کل"_s) << u"Amount3_EDT"_s;
    QTest::newRow("parts") << 4 << QStringList{u"1"_s, u"1"_s} << most.arg(u"مقدار"_s) << u"Amount3_EDT"_s;
    QTest::newRow("pieces") << 5 << QStringList{u"4"_s, u"3"_s, u"2"_s} << most.arg(u"تعداد"_s) << u"Amount3_EDT"_s;
    QTest::newRow("another size") << 5 << QStringList{u"2"_s, u"3"_s, u"2"_s} << most.arg(u"تعداد"_s)
                                  << u"Amount3_EDT"_s;
}

void TestEnter::returnLimits()
{
    QFETCH(int, unitType);
    QFETCH(QStringList, typed);
    Shop shop;
    const auto store = [](QWidget *screen, const QStringList &amounts) {
        for (int i = 0; i < amounts.size(); ++i)
            test::Enter(screen, u"Amount%1_EDT"_s.arg(i + 1), amounts[i]);
        Click(screen, u"SaveRow_BTN");
    };
    const QStringList half = QList<QStringList>{
        {u"12"_s}, {u"12"_s, u"1"_s}, {u"12"_s, u"1"_s}, {u"1"_s, u"0"_s}, {u"4"_s, u"3"_s, u"1"_s}}[unitType - 1];
    const auto line = [unitType](quint8 type, int code) {
        return Shop::Line(5003, type, code, quint8(unitType), type == 4 ? 50 : 0);
    };
    Enter(shop, line(1, 1), [&](QWidget *screen) {
        store(screen, half);
        store(screen, half);
        QCOMPARE(Shown(screen).size(), 1);
    });
    Save(shop, line(1, 1));
    const bool pairs = unitType == 2 || unitType == 3;
    Sell(shop, line(2, 50), {24, pairs ? 2.0L : 0.0L, 0, 0, 0, unitType == 5 ? 2.0L : 0.0L});
    QString stood;
    Enter(shop, line(4, 60), [&](QWidget *screen) {
        store(screen, half);
        const QStringList before = Shown(screen);
        store(screen, typed);
        stood = test::Focused();
        QCOMPARE(Shown(screen), before);
        store(screen, half);
        QCOMPARE(Shown(screen).size(), 1);
        QVERIFY(Shown(screen) != before);
    });
    const QString said = shop.fakes.messages.TakeAll().join(u'/');
    QTEST(said, "said");
    QTEST(stood, "focused");
}

void TestEnter::knownSerialBringsItsDetails()
{
    Shop shop;
    const auto buy = Shop::Line(5001, 1, 1);
    Enter(shop, buy, [](QWidget *screen) {
        Find<QComboBox>(screen, u"ComboBox_2"_s).setCurrentIndex(2);
        test::Enter(screen, u"ComboBox_3"_s, u"دست دوم"_s);
        Scan(screen, u"1"_s);
    });
    Save(shop, buy);
    Sell(shop, Shop::Line(5001, 2, 50), {1});
    QStringList rows;
    Enter(shop, Shop::Line(5001, 1, 2), [&](QWidget *screen) {
        Scan(screen, u"1"_s);
        Scan(screen, u"2"_s);
        rows = Shown(screen);
    });
    QCOMPARE(rows, (QStringList{u"1|آبی|دست دوم|۱"_s, u"2|قرمز||۱"_s}));
}

void TestEnter::mergesEditsDeletes()
{
    Shop shop;
    const auto line = Shop::Line(5003, 1, 7);
    const auto store = [](QWidget *screen, int colour, const QString &amount) {
        Find<QComboBox>(screen, u"ComboBox_1"_s).setCurrentIndex(colour);
        test::Enter(screen, u"Amount1_EDT"_s, amount);
        Press(Qt::Key_Return);
    };
    Enter(shop, line, [&](QWidget *screen) {
        store(screen, 1, u"2"_s);
        store(screen, 2, u"3"_s);
        store(screen, 1, u"5"_s);
        QCOMPARE(Shown(screen), (QStringList{u"قرمز|۷"_s, u"آبی|۳"_s}));
        test::Focus(screen, u"EnterSerialList_GRD"_s);
        Press(Qt::Key_Home, Qt::ControlModifier);
        Press(Qt::Key_F2);
        QCOMPARE(Find<QLineEdit>(screen, u"Amount1_EDT"_s).text(), u"۷"_s);
        store(screen, 0, u"4"_s);
        QCOMPARE(Shown(screen), (QStringList{u"|۴"_s, u"آبی|۳"_s}));
        QVERIFY(Find<QLabel>(screen, u"Totals_LBL"_s).text().contains(u"مقدار: ۷"));
        test::Focus(screen, u"EnterSerialList_GRD"_s);
        Press(Qt::Key_End, Qt::ControlModifier);
        shop.fakes.messages.Answer(true);
        Press(Qt::Key_Delete);
        QCOMPARE(Shown(screen), QStringList{u"|۴"_s});
    });
    QCOMPARE(shop.fakes.messages.TakeAll(), QStringList{u"MsgDeleteRow()"_s});
    // Opened again before the document is saved: as it was kept. The values of rows that went are gone.
    const auto again = Enter(shop, line, [](QWidget *screen) { QCOMPARE(Shown(screen), QStringList{u"|۴"_s}); });
    QVERIFY(again && again->Rows == 1 && again->Amounts.Amount1 == 4);
    QCOMPARE(shop.database.Rows(u"select count(*) from GoodDetailValues"_s), QStringList{u"1"_s});
}

/// Behind an edited row the next scan has the details and the amount of before; nothing half typed is replaced.
void TestEnter::editingIsAnInterlude()
{
    Shop shop;
    Enter(shop, Shop::Line(5001, 1, 7), [&](QWidget *screen) {
        Scan(screen, u"1"_s);
        Find<QComboBox>(screen, u"ComboBox_2"_s).setCurrentIndex(2);
        Scan(screen, u"2"_s);
        Scan(screen, u"2"_s); // is there: nothing is left of it
        Find<host::Grid>(screen, u"EnterSerialList_GRD"_s).StandOn(0);
        test::Type(u"9"_s);
        Press(Qt::Key_F2);
        QCOMPARE(shop.fakes.messages.Take(), Message(u"کاربر گرامی سطر وارد شده هنوز ثبت نشده است."));
        Press(Qt::Key_Backspace);
        for (const bool store : {false, true}) {
            Press(Qt::Key_F2);
            QCOMPARE(Find<QComboBox>(screen, u"ComboBox_2"_s).currentText(), u"قرمز"_s);
            test::Enter(screen, u"Amount1_EDT"_s, u"5"_s);
            store ? Press(Qt::Key_Return) : Click(screen, u"Cancel_BTN");
        }
        Scan(screen, u"3"_s);
        QCOMPARE(Shown(screen), (QStringList{u"1|قرمز||۵"_s, u"2|آبی||۱"_s, u"3|آبی||۱"_s}));
    });
}

/// Ten pieces are 0.833333333 of a carton: four decimals in the input, all of them in the row, also when it is passed.
void TestEnter::ratiosShowNoNoise()
{
    Shop shop;
    const auto result = Enter(shop, Shop::Line(5003, 1, 7, 2), [&](QWidget *screen) {
        const auto &second = Find<host::NumericEdit>(screen, u"Amount2_EDT"_s);
        test::Enter(screen, u"Amount1_EDT"_s, u"10"_s);
        Press(Qt::Key_Return);
        QCOMPARE(second.text(), u"0.8333"_s);
        Press(Qt::Key_Return);
        test::Focus(screen, u"EnterSerialList_GRD"_s);
        Press(Qt::Key_F2);
        QCOMPARE(second.text(), u"0.8333"_s);
        test::Focus(screen, u"Amount1_EDT"_s);
        Press(Qt::Key_Return);
        Press(Qt::Key_Return);
    });
    QVERIFY(result && host::QuantityToText(result->Amounts.Amount2) == u"0.833333333");
}

void TestEnter::returnedRowsStay()
{
    Shop shop;
    const auto buy = Shop::Line(5002, 1, 1);
    Enter(shop, buy, [](QWidget *screen) { Range(screen, u"1"_s, u"3"_s); });
    Save(shop, buy);
    // A return to the supplier names the purchase.
    shop.database.Exec(u"insert GoodDetailKardex (DetailValueID, StoreCode, GoodCode, Amount1, OperationType, "
                       "OperationCode, OperationRow, ForeignOperationCode) select DetailValueID, 1, 5002, -1, 5, 9, 1, "
                       "1 from GoodDetailValueDetails where [Value] = N'2'"_s);
    Enter(shop, buy, [&](QWidget *screen) {
        auto &grid = Find<host::Grid>(screen, u"EnterSerialList_GRD"_s);
        grid.setFocus();
        grid.StandOn(1);
        Press(Qt::Key_F2);
        shop.fakes.messages.Answer(true);
        Press(Qt::Key_Delete);
        QCOMPARE(Shown(screen).size(), 3);
        shop.fakes.messages.Answer(true);
        Click(screen, u"DelAll_BTN");
        QCOMPARE(Shown(screen), QStringList{u"2|۱"_s});
    });
    QCOMPARE(
        shop.fakes.messages.TakeAll(),
        (QStringList{Message(u"کاربر گرامی جزییات فوق برگشت  خورده و قابل ویرایش نمی باشد"), u"MsgDeleteRow()"_s,
                     Message(u"کاربر گرامی جزییات فوق برگشت  خورده و قابل حذف  نمی باشد"),
                     u"MsgDeleteItem(همه سطرهاي)"_s, Message(u"موارد حذف نشده برگشت خورده و قابل حذف نمی باشند")}));
}

void TestEnter::ranges()
{
    Shop shop;
    const auto buy = Shop::Line(5001, 1, 1);
    Enter(shop, buy, [](QWidget *screen) {
        Find<QComboBox>(screen, u"ComboBox_2"_s).setCurrentIndex(2);
        Range(screen, u"7"_s, u"9"_s);
    });
    Save(shop, buy);
    Sell(shop, Shop::Line(5001, 2, 50), {1});
    shop.database.Exec(
        u"delete GoodDetailKardex where OperationType = 2 and DetailValueID <> (select DetailValueID from "
        "GoodDetailValueDetails where [Value] = N'9')"_s);
    const auto line = Shop::Line(5001, 1, 2);
    quint64 few = 0;
    quint64 many = 0;
    Enter(shop, line, [&](QWidget *screen) {
        Range(screen, u"6"_s, u"10"_s);
        QCOMPARE(Shown(screen), (QStringList{u"6|قرمز||۱"_s, u"10|قرمز||۱"_s}));
        Range(screen, u"0098"_s, u"0101"_s);
        QCOMPARE(Shown(screen).mid(2).join(u' '), u"98|قرمز||۱ 99|قرمز||۱ 100|قرمز||۱ 101|قرمز||۱"_s);
        Range(screen, u"100"_s, u"102"_s);
        const auto sent = [&](const QString &from, const QString &to) {
            const quint64 before = host::StatementsSent();
            Range(screen, from, to);
            return host::StatementsSent() - before;
        };
        few = sent(u"۱۰۰۱"_s, u"1010"_s);
        many = sent(u"20001"_s, u"30000"_s);
        QVERIFY(Find<QLabel>(screen, u"Totals_LBL"_s).text().contains(u"۱۰۰۱۷"));
    });
    QCOMPARE(shop.fakes.messages.TakeAll(),
             (QStringList{
                 Message(u"امکان اضافه شدن مجدد سریال(های) زیر به علت تکراری بودن وجود ندارد\n7,8"),
                 Message(u"امکان اضافه شدن مجدد سریال(های) زیر به علت ثبت این سریال(ها) با مقادیر دیگر وجود ندارد\n9"),
                 Message(u"امکان اضافه شدن مجدد سریال(های) زیر به علت تکراری بودن وجود ندارد\n100,101")}));
    QVERIFY2(few > 0 && few <= 30, qPrintable(QString::number(few)));
    QCOMPARE(many, few);
    const auto back = Shop::Line(5001, 4, 60, 1, 50);
    Enter(shop, back, [&](QWidget *screen) {
        Find<QComboBox>(screen, u"ComboBox_2"_s).setCurrentIndex(2);
        Range(screen, u"8"_s, u"9"_s);
        QCOMPARE(Shown(screen), QStringList{u"9|آبی||۱"_s});
    });
    QCOMPARE(shop.fakes.messages.TakeAll(),
             QStringList{Message(u"امکان برگشت سریال(های) زیر به علت مشکل دار بودن وجود ندارد\n8")});
}

void TestEnter::rangeGivenUp()
{
    Shop shop;
    Enter(shop, Shop::Line(5002, 1, 7), [&](QWidget *screen) {
        QTimer look;
        QString notice;
        QObject::connect(&look, &QTimer::timeout, screen, [&] {
            if (auto *progress = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget())) {
                notice = progress->labelText();
                progress->findChild<QPushButton *>()->click();
            }
        });
        look.start(0);
        Range(screen, u"1"_s, u"50"_s);
        look.stop();
        QCOMPARE(notice, u"سیستم در حال تولید سریال می باشد"_s);
        QCOMPARE(Shown(screen), QStringList());
        QCOMPARE(shop.database.Rows(u"select count(*) from GoodDetailValues"_s), QStringList{u"0"_s});
        Range(screen, u"1"_s, u"5"_s);
        QCOMPARE(Shown(screen).size(), 5);
    });
}

/// Esc asks, keeps nothing, and what was kept before stands; serials that were only typed are free again.
void TestEnter::leavesNothingBehind()
{
    Shop shop;
    const auto line = Shop::Line(5001, 1, 7);
    Enter(shop, line, [](QWidget *screen) { Scan(screen, u"1"_s); });
    shop.fakes.messages.Answer(true);
    const auto left = Enter(shop, line, [](QWidget *screen) {
        Scan(screen, u"2"_s);
        Press(Qt::Key_Escape);
    });
    QVERIFY(!left);
    QCOMPARE(shop.fakes.messages.TakeAll().size(), 1);
    QCOMPARE(
        shop.database.Rows(u"select DetailTitle1 from GoodDetailKardexEnter_Temp where DetailValueID is not null"_s),
        QStringList{u"1"_s});
    Enter(shop, Shop::Line(5001, 1, 8), [](QWidget *screen) {
        Find<QComboBox>(screen, u"ComboBox_2"_s).setCurrentIndex(2);
        Scan(screen, u"2"_s);
        QCOMPARE(Shown(screen), QStringList{u"2|آبی||۱"_s});
    });
}

void TestEnter::keyboardAndColumns()
{
    Shop shop;
    shop.fakes.settings.record.AutoKeyboard = true;
    Enter(shop, Shop::Line(5001, 1, 7), [&](QWidget *screen) {
        QCOMPARE(shop.fakes.keyboard.layout, u"00000409"_s);
        test::Focus(screen, u"Amount1_EDT"_s);
        QCOMPARE(shop.fakes.keyboard.layout, u"00000429"_s);
        auto &grid = Find<host::Grid>(screen, u"EnterSerialList_GRD"_s);
        grid.SetColumnVisible(u"DetailTitle3"_s, false);
        QVERIFY(test::RightOf(Find(screen, u"Serial_LBL"_s), Find(screen, u"Serial_EDT"_s)));
    });
    QCOMPARE(shop.fakes.keyboard.layout, u"00000429"_s);
    Enter(shop, Shop::Line(5001, 1, 7, 2), [](QWidget *) {});
    Enter(shop, Shop::Line(5001, 1, 7), [&](QWidget *screen) {
        QCOMPARE(Find<host::Grid>(screen, u"EnterSerialList_GRD"_s).VisibleFields(),
                 (QStringList{u"DetailTitle1"_s, u"DetailTitle2"_s, u"Amount1"_s}));
    });
}

void TestEnter::goneGoodDoesNotOpen()
{
    Shop shop;
    QVERIFY(!good_detail::OpenEnter(shop.host, {Shop::Line(99, 1, 7)}));
    host::TDocumentLine line = Shop::Line(5001, 1, 7);
    line.StoreCode = 99;
    QVERIFY(!good_detail::OpenEnter(shop.host, {line}));
    QCOMPARE(shop.fakes.messages.TakeAll().size(), 2);
}

REGISTER_TEST(TestEnter)
#include "tst_enter.moc"
