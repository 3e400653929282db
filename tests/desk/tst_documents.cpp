// Documents: what is saved with them, what protects them, and that stock and details agree whatever is done.

#include "tests/desk/document_fixture.h"
#include "tests/support/test_main.h"

#include <QRandomGenerator>
#include <QtTest>

using desk::Document;
using desk::DocumentLine;

namespace {

constexpr int Drill = 200001; // with serials
constexpr int Rice = 110001;  // without details
constexpr int Purchase = 1;
constexpr int Sale = 2;
constexpr int SaleReturn = 4;
constexpr int PurchaseReturn = 5;
constexpr int Transfer = 6;

/// A desk that writes documents of one line.
struct Writer
{
    explicit Writer(const host::Connections &connections, test::FakeMessages &messages)
        : desk(connections, &messages), store(desk.host), screens(desk.host)
    {
        desk.settings.SignIn(1);
    }

    Document New(int kind, int good, int from, host::Quantity amount, int answers = 0, int to = 0)
    {
        Document document;
        document.Kind = kind;
        document.Code = store.NewCode(desk::DocumentKindOf(kind));
        document.Date = u"1405/09/01"_s;
        document.StoreCode = from;
        document.ToStoreCode = to;
        document.AnswersCode = answers;
        DocumentLine line;
        line.OperationRow = 1;
        line.Good.Code = good;
        line.Good.HasDetails = good == Drill;
        line.StoreCode = from;
        line.Amount1 = amount;
        line.Price = 1000;
        document.Lines << line;
        return document;
    }
    /// Enters or chooses the range for the line, whose quantity follows.
    void Details(Document &document, host::TSerialRange range)
    {
        const desk::DocumentKind &kind = desk::DocumentKindOf(document.Kind);
        DocumentLine &line = document.Lines[0];
        screens.range = range;
        desk::LineDetailsOpening opening{};
        opening.Line = {line.Good.Code,    line.StoreCode, 1, static_cast<quint8>(document.Kind),
                        kind.answers != 0, document.Code,  1, document.AnswersCode};
        const auto amounts = kind.direction < 0 ? screens.ExitGoodDetail(opening) : screens.EnterGoodDetail(opening);
        line.Amount1 = amounts ? amounts->Amount1 : 0; // nothing of the range may be there
    }
    /// What refuses it; empty when it is saved.
    QString Save(const Document &document)
    {
        try {
            store.Save(document);
        } catch (const desk::DocumentRefused &refused) {
            desk.host.detailMovements.GoodDetailsOperation_Discard(static_cast<quint8>(document.Kind), document.Code);
            return QString::fromUtf8(refused.what());
        }
        return {};
    }
    QString Delete(int kind, int code)
    {
        try {
            store.Delete(*store.Get(kind, code));
        } catch (const desk::DocumentRefused &refused) {
            return QString::fromUtf8(refused.what());
        }
        return {};
    }
    /// A document with a range of serials, its code; 0 when it was refused.
    int Write(int kind, int from, host::TSerialRange range, int answers = 0, int to = 0)
    {
        Document document = New(kind, Drill, from, 0, answers, to);
        Details(document, range);
        if (document.Lines[0].Amount1 <= 0) {
            desk.host.detailMovements.GoodDetailsOperation_Discard(static_cast<quint8>(kind), document.Code);
            return 0;
        }
        said = Save(document);
        return said.isEmpty() ? document.Code : 0;
    }

    desk::DeskHost desk;
    desk::DocumentStore store;
    test::RangeScreens screens;
    QString said;
};

struct Shop
{
    test::Database database{test::Database::Content::Demo};
    test::FakeMessages messages;
    Writer desk{test::ConnectionsOf(database), messages};
};

} // namespace

class TestDocuments : public QObject
{
    Q_OBJECT

private slots:
    void roadOfASerial();
    void refuses_data();
    void refuses();
    void twoDesksSellOneSerial();
    void anotherDeskSavedFirst();
    void writesWhatChanged();
    void numberOfStatements();
    void anyOrder();
    void demoHasNoFault();
};

/// Bought as a range, sold, returned, moved to another store, given back to the supplier.
void TestDocuments::roadOfASerial()
{
    Shop s;
    const int bought = s.desk.Write(Purchase, 4, {5001, 5050});
    QVERIFY(bought > 0);
    const int sold = s.desk.Write(Sale, 4, {5001, 5003});
    QVERIFY(sold > 0);
    QVERIFY(s.desk.Write(SaleReturn, 4, {5002, 5002}, sold) > 0);
    const int moved = s.desk.Write(Transfer, 4, {5010, 5019}, 0, 1);
    QVERIFY(moved > 0);
    QVERIFY(s.desk.Write(PurchaseReturn, 4, {5040, 5050}, bought) > 0);
    const QString serials = u" FROM GoodDetailKardex k INNER JOIN GoodDetailValueDetails d ON d.DetailValueID = "
                            "k.DetailValueID WHERE d.[Value] BETWEEN '5001' AND '5050' AND LEN(d.[Value]) = 4"_s;
    QCOMPARE(s.database.Rows(u"SELECT k.StoreCode, SUM(k.Amount1)"_s + serials + u" GROUP BY k.StoreCode ORDER BY 1"_s),
             (QStringList{u"1|10"_s, u"4|27"_s}));
    QCOMPARE(test::Faults(s.database), QStringList());

    // The second store of a transfer changes: its goods come in there.
    Document transfer = *s.desk.store.Get(Transfer, moved);
    transfer.ToStoreCode = 2;
    QCOMPARE(s.desk.Save(transfer), QString());
    QCOMPARE(s.database.Rows(u"SELECT k.StoreCode, SUM(k.Amount1)"_s + serials +
                             u" GROUP BY k.StoreCode HAVING SUM(k.Amount1) > 0 ORDER BY 1"_s),
             (QStringList{u"2|10"_s, u"4|27"_s}));
    QCOMPARE(test::Faults(s.database), QStringList());
}

void TestDocuments::refuses_data()
{
    using Try = std::function<QString(Shop &, int bought, int sold)>;
    QTest::addColumn<Try>("act");
    QTest::addColumn<QString>("said");
    const auto row = [](const char *name, const Try &act, const QString &said) { QTest::newRow(name) << act << said; };
    const auto edit = [](Shop &s, int kind, int code, const std::function<void(Document &)> &change) {
        Document document = *s.desk.store.Get(kind, code);
        change(document);
        return s.desk.Save(document);
    };
    row(
        "deleting a sale with a return",
        [](Shop &s, int, int sold) {
            s.desk.Write(SaleReturn, 4, {7001, 7001}, sold);
            return s.desk.Delete(Sale, sold);
        },
        u"برگشت از فروش شماره ۱ برگشت خورده"_s);
    row(
        "a sale dated after its return",
        [edit](Shop &s, int, int sold) {
            s.desk.Write(SaleReturn, 4, {7001, 7001}, sold);
            return edit(s, Sale, sold, [](Document &document) { document.Date = u"1405/09/02"_s; });
        },
        u"پس از تاریخ سند برگشت از فروش شماره ۱ است"_s);
    row(
        "a sale that loses a serial that came back",
        [edit](Shop &s, int, int sold) {
            s.desk.Write(SaleReturn, 4, {7001, 7001}, sold);
            return edit(s, Sale, sold, [&](Document &document) {
                s.desk.desk.host.detailMovements.ExitGoodDetails_Fill(
                    {Drill, 4, 1, Sale, false, sold, 1, 0}); // chosen: what it has
                s.desk.desk.host.detailMovements.ExitGoodDetails_Keep({Drill, 4, 1, Sale, false, sold, 1, 0});
                s.database.Exec(u"DELETE FROM GoodDetailKardexExit_Temp WHERE DetailTitle1 = N'7001'"_s);
                document.Lines[0].Amount1 = 2;
            });
        },
        u"«7001 سفید» (%1) در سند برگشت از فروش شماره ۱ برگشت خورده"_s);
    row(
        "deleting a purchase of which something is sold",
        [](Shop &s, int bought, int) { return s.desk.Delete(Purchase, bought); },
        u"«7001 سفید» (%1) دیگر در انبار «انبار ابزار و برق» نیست: با سند فروش شماره ۵۲"_s);
    row(
        "returning more to the supplier than the purchase brought",
        [](Shop &s, int bought, int) {
            const int other = s.desk.Write(Purchase, 4, {8001, 8002});
            Document document = s.desk.New(PurchaseReturn, Drill, 4, 1, bought);
            s.desk.desk.host.detailMovements.ExitGoodDetails_Take(
                {Drill, 4, 1, PurchaseReturn, false, document.Code, 1, other},
                s.database.Scalar(u"SELECT DetailValueID FROM GoodDetailValueDetails WHERE [Value] = N'8001'"_s)
                    .toInt());
            s.database.Exec(u"UPDATE GoodDetailKardexExit_Temp SET ForeignOperationCode = %1"_s.arg(bought));
            return s.desk.Save(document);
        },
        u"«8001 سفید» (%1) در سند خرید شماره ۱۳۸ نیست"_s);
    row(
        "returning more of a colour than was sold, by a desk that slept meanwhile",
        [](Shop &s, int, int) {
            s.desk.screens.colour = u"آبی"_s;
            s.desk.Write(Purchase, 4, {8001, 8002});
            s.desk.screens.colour = u"سفید"_s;
            const int sold = s.desk.Write(Sale, 4, {7004, 8002}); // two of each colour
            test::FakeMessages messages;
            Writer other({s.database.AnotherConnection(), s.database.GoodsList(), s.database.Scales()}, messages);
            Document theirs = other.New(SaleReturn, Drill, 4, 0, sold);
            other.Details(theirs, {9201, 9202});
            s.database.Exec(u"UPDATE DetailDesks SET SeenAt = DATEADD(hour, -1, GETDATE()) WHERE Number = (SELECT "
                            "MAX(Number) FROM DetailDesks)"_s);
            return s.desk.Write(SaleReturn, 4, {9101, 9102}, sold) > 0 ? other.Save(theirs) : u"mine refused"_s;
        },
        u"«9202 سفید» (%1) در سند فروش شماره ۵۳ نیست"_s);
    row(
        "returning more of a good than was sold",
        [](Shop &s, int, int) {
            Document sale = s.desk.New(Sale, Rice, 1, 2);
            s.desk.Save(sale);
            return s.desk.Save(s.desk.New(SaleReturn, Rice, 1, 3, sale.Code));
        },
        u"در سند فروش شماره ۵۳ برابر ۲ است و در سند برگشت از فروش شماره ۱ روی هم ۳"_s);
    row(
        "selling more than there is", [](Shop &s, int, int) { return s.desk.Save(s.desk.New(Sale, Rice, 1, 99999)); },
        u"منفی می‌شود"_s);
    row(
        "a purchase less, when the stock on a later day hangs on it",
        [edit](Shop &s, int, int) {
            Document bought = s.desk.New(Purchase, Rice, 2, 5);
            s.desk.Save(bought);
            Document sold = s.desk.New(Sale, Rice, 2, 5);
            sold.Date = u"1405/09/05"_s;
            s.desk.Save(sold);
            return edit(s, Purchase, bought.Code, [](Document &document) { document.Lines[0].Amount1 = 4; });
        },
        u"۱۴۰۵/۰۹/۰۵"_s);
    row(
        "serials that nobody entered", [](Shop &s, int, int) { return s.desk.Save(s.desk.New(Purchase, Drill, 4, 2)); },
        u"جزئیات این سطر را وارد کنید"_s);
    row(
        "another good with details, which were not entered",
        [edit](Shop &s, int, int) {
            return edit(s, Purchase, s.desk.Write(Purchase, 4, {8001, 8001}),
                        [](Document &document) { document.Lines[0].Good.Code = Drill + 1; });
        },
        u"جزئیات این سطر را وارد کنید"_s);
    row(
        "another quantity of what has details, while they are switched off",
        [edit](Shop &s, int, int sold) {
            host::TSettingRecord settings = s.desk.desk.settings.SettingRecord();
            settings.GoodDetails = false;
            s.desk.desk.settings.Save(settings);
            return edit(s, Sale, sold, [](Document &document) { document.Lines[0].Amount1 = 2; });
        },
        u"«نگهداری جزئیات کالا» را در تنظیمات"_s);
    row(
        "an answer to a sale that is not there",
        [](Shop &s, int, int) { return s.desk.Save(s.desk.New(SaleReturn, Rice, 1, 1, 999)); },
        u"سند فروش شماره ۹۹۹ دیگر وجود ندارد"_s);
}

/// Each is refused with its reason, and the database is as it was.
void TestDocuments::refuses()
{
    using Try = std::function<QString(Shop &, int bought, int sold)>;
    QFETCH(Try, act);
    QFETCH(QString, said);
    Shop s;
    const int bought = s.desk.Write(Purchase, 4, {7001, 7005});
    const int sold = s.desk.Write(Sale, 4, {7001, 7003});
    QVERIFY(bought > 0 && sold > 0);
    const QString words = act(s, bought, sold);
    const QString drill = s.database.Scalar(u"SELECT Name FROM GoodInf WHERE Code = %1"_s.arg(Drill)).toString();
    const QString wanted = said.contains(u"%1") ? said.arg(drill.trimmed()) : said;
    QVERIFY2(words.contains(wanted), qPrintable(words + u"\nwanted: "_s + wanted));
    QCOMPARE(test::Faults(s.database), QStringList());
    QCOMPARE(s.database.Scalar(
                 u"SELECT SUM(Amount1) FROM Kardex WHERE OperationType = 2 AND OperationCode = %1"_s.arg(sold)),
             QVariant(u"-3.000000000"_s));
}

/// Both have chosen it while it was there; the second to save is told which one is gone, and who took it.
void TestDocuments::twoDesksSellOneSerial()
{
    Shop s;
    QVERIFY(s.desk.Write(Purchase, 4, {9001, 9003}) > 0);
    test::FakeMessages messages;
    Writer other({s.database.AnotherConnection(), s.database.GoodsList(), s.database.Scales()}, messages);
    Document mine = s.desk.New(Sale, Drill, 4, 0);
    Document theirs = other.New(Sale, Drill, 4, 0);
    QVERIFY(mine.Code != theirs.Code);
    s.desk.Details(mine, {9001, 9002});
    other.Details(theirs, {9002, 9003});
    QCOMPARE(theirs.Lines[0].Amount1, host::Quantity(2));
    QCOMPARE(s.desk.Save(mine), QString());
    const QString said = other.Save(theirs);
    QVERIFY2(said.contains(u"«9002 سفید»"_s) && said.contains(desk::DocumentKindOf(Sale).Title(mine.Code)) &&
                 !said.contains(u"9003"_s),
             qPrintable(said));
    QVERIFY(!other.store.Get(Sale, theirs.Code));
    QCOMPARE(test::Faults(s.database), QStringList());
}

void TestDocuments::anotherDeskSavedFirst()
{
    Shop s;
    Document mine = *s.desk.store.Get(Sale, 3);
    const Document theirs = mine;
    mine.Comment = u"من"_s;
    QCOMPARE(s.desk.Save(mine), QString());
    QVERIFY(s.desk.Save(theirs).contains(u"سند فروش شماره ۳ را در این میان"_s));
    QCOMPARE(s.desk.store.Get(Sale, 3)->Comment, u"من"_s);

    // A new document with the number of a deleted one is not the one that was read.
    Document anew = s.desk.New(Purchase, Rice, 1, 5);
    QCOMPARE(s.desk.Save(anew), QString());
    const Document read = *s.desk.store.Get(Purchase, anew.Code);
    QCOMPARE(s.desk.Delete(Purchase, anew.Code), QString());
    QCOMPARE(s.desk.Save(anew), QString());
    QVERIFY(!s.desk.Save(read).isEmpty());
}

/// Movements of lines that did not change keep their rows, and with them their place among those of the day.
void TestDocuments::writesWhatChanged()
{
    Shop s;
    const QString rows =
        u"SELECT Code, OperationRow, Amount1 FROM Kardex WHERE OperationType = 2 AND OperationCode = 3 "
        "AND OperationRow NOT IN (1, 2) ORDER BY Code"_s;
    const QStringList before = s.database.Rows(rows);
    Document document = *s.desk.store.Get(Sale, 3);
    document.Lines.removeFirst();
    document.Lines[0].Amount1 += 1;
    QCOMPARE(s.desk.Save(document), QString());
    // A line that has become another good keeps nothing of the former one's details.
    const int bought = s.desk.Write(Purchase, 4, {7001, 7003});
    Document other = *s.desk.store.Get(Purchase, bought);
    other.Lines[0].Good.Code = Rice;
    QCOMPARE(s.desk.Save(other), QString());
    QCOMPARE(s.database.Rows(
                 u"SELECT ID FROM GoodDetailKardex WHERE OperationType = 1 AND OperationCode = %1"_s.arg(bought)),
             QStringList());
    QCOMPARE(s.database.Rows(rows), before);
    QCOMPARE(s.database.Rows(u"SELECT OperationRow FROM Kardex WHERE OperationType = 2 AND OperationCode = 3 AND "
                             "OperationRow < 3"_s),
             QStringList{u"2"_s});
    QCOMPARE(test::Faults(s.database), QStringList());
}

/// The same for ten serials and for a thousand, for one line and for a hundred.
void TestDocuments::numberOfStatements()
{
    Shop s;
    const auto sent = [&s](const Document &document) {
        const quint64 before = host::StatementsSent();
        s.desk.store.Save(document);
        return host::StatementsSent() - before;
    };
    Document few = s.desk.New(Purchase, Drill, 4, 0);
    s.desk.Details(few, {10001, 10010});
    const quint64 ofTen = sent(few);
    Document many = s.desk.New(Purchase, Drill, 4, 0);
    s.desk.Details(many, {20001, 21000});
    QCOMPARE(sent(many), ofTen);
    Document lines = s.desk.New(Purchase, Rice, 1, 1);
    for (int row = 2; row <= 100; ++row) {
        lines.Lines << lines.Lines[0];
        lines.Lines.last().OperationRow = row;
    }
    QCOMPARE(sent(lines), ofTen);
    QVERIFY2(ofTen < 30, qPrintable(QString::number(ofTen)));
}

/// Any sequence of buying, selling, returning, moving and deleting leaves stock and details in agreement.
void TestDocuments::anyOrder()
{
    Shop s;
    QRandomGenerator random(4711);
    const auto below = [&random](int limit) { return static_cast<int>(random.bounded(limit)); };
    int saved = 0;
    int refused = 0;
    for (int step = 0; step < 60; ++step) {
        const int kind = QList<int>{Purchase, Sale, Sale, SaleReturn, PurchaseReturn, Transfer}[below(6)];
        const host::TSerialRange range{30000 + below(20), 30000 + below(20) + 4};
        const auto codes = s.database.Rows(u"SELECT Code FROM Documents WHERE Kind = %1 AND Date = '1405/09/01'"_s.arg(
            kind == SaleReturn       ? Sale
            : kind == PurchaseReturn ? Purchase
                                     : kind));
        const int other = codes.isEmpty() ? 0 : codes[below(static_cast<int>(codes.size()))].toInt();
        if (below(5) == 0 && other != 0 && kind != SaleReturn && kind != PurchaseReturn) {
            (s.desk.Delete(kind, other).isEmpty() ? saved : refused)++;
        } else {
            const int answers = kind == SaleReturn || kind == PurchaseReturn ? other : 0;
            const int store = below(3) == 0 ? 1 : 4;
            (s.desk.Write(kind, store, range, answers, kind == Transfer ? 5 - store : 0) > 0 ? saved : refused)++;
        }
        const QStringList faults = test::Faults(s.database);
        QVERIFY2(faults.isEmpty(), qPrintable(QString::number(step) + u": "_s + faults.join(u'\n')));
    }
    QVERIFY2(saved > 10 && refused > 5, qPrintable(u"%1 saved, %2 refused"_s.arg(saved).arg(refused)));
}

void TestDocuments::demoHasNoFault()
{
    Shop s;
    QCOMPARE(test::Faults(s.database), QStringList());
    QCOMPARE(s.database.Scalar(u"SELECT COUNT(*) FROM Documents"_s).toInt(), 188);
    // A good gets types when it has moved already.
    s.database.Exec(u"INSERT INTO GoodDetailRelation (GoodCode, DetailID) SELECT 110001, MIN(ID) FROM DetailTypes"_s);
    QCOMPARE(test::Faults(s.database), QStringList());
    // Each kind of fault is seen.
    const std::pair<QString, QString> faults[] = {
        {u"UPDATE GoodStoreStock SET Amount1 = Amount1 + 1 WHERE GoodCode = 110001"_s, u"stock of a store"_s},
        {u"UPDATE GoodStock SET Amount1 = Amount1 + 2 WHERE GoodCode = 110001"_s, u"stock of a good"_s},
        {u"DELETE FROM GoodDetailKardex WHERE ID = 1"_s, u"detail ledger differs"_s},
        {u"DELETE FROM GoodDetailKardex WHERE ID = 2"_s, u"differ from the opening stock"_s},
        {u"UPDATE Kardex SET Amount1 = Amount1 - 1 WHERE Code = 5"_s, u"movement differs"_s},
        {u"DELETE FROM DocumentLines WHERE Kind = 1 AND Code = 1"_s, u"document without lines"_s}};
    for (const auto &[fault, found] : faults) {
        s.database.Exec(fault);
        QVERIFY2(test::Faults(s.database).join(u'\n').contains(found), qPrintable(found));
    }
}

REGISTER_TEST(TestDocuments)
#include "tst_documents.moc"
