// Rows between a database and a screen: what is typed comes back, what fails loses nothing.

#include "host/data/database_error.h"
#include "host/data/dataset.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QSignalSpy>
#include <QTest>

using namespace host;

namespace {

const QString Select = u"select * from Things order by Id"_s;

void MakeThings(const test::Database &database, int rows = 0)
{
    database.Exec(u"create table Things (Id int identity(1,1) not null primary key, Name nvarchar(60) null, "
                  "Amount decimal(23,9) not null default 0, Flag bit null, Big bigint null, Day date null, "
                  "Raw varbinary(20) null, Made int not null default 7)"_s);
    for (int first = 1; first <= rows; first += 500) {
        QStringList values;
        for (int i = first; i < first + 500 && i <= rows; ++i) {
            values += u"(N'سطر %1', %1)"_s.arg(i);
        }
        database.Exec(u"insert into Things (Name, Amount) values "_s + values.join(u','));
    }
}

Dataset *OpenThings(const test::Database &database, QObject *parent)
{
    auto *things = new Dataset(database.Main(), parent);
    things->SetTable(u"Things"_s, u"Id"_s);
    things->SetEditableFields({u"Amount"_s});
    things->Open(Select);
    return things;
}

} // namespace

class TestDataset : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_database = std::make_unique<test::Database>();
        m_owner = std::make_unique<QObject>();
    }
    void cleanup()
    {
        m_owner.reset();
        m_database.reset();
    }
    void textsComeBackAsTyped_data();
    void textsComeBackAsTyped();
    void everyKindOfValue();
    void decimalsOfEverySize_data();
    void decimalsOfEverySize();
    void largeListsComeInBlocks();
    void lostConnectionKeepsWhatWasTyped();
    void rowThatIsGone();
    void typingInAGrid();
    void batchGivesItsFirstRows();
    void questionsReadWhatTheyNeed();
    void errorInsideABatchIsSeen();
    void nestedTransactions_data();
    void nestedTransactions();

private:
    std::unique_ptr<test::Database> m_database;
    std::unique_ptr<QObject> m_owner;
};

void TestDataset::textsComeBackAsTyped_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("quotes") << u"d'or ''x''"_s;
    QTest::newRow("percent, brackets, underscore") << u"[50%] a_b]"_s;
    QTest::newRow("emoji") << u"چای 🍵👨‍👩‍👧"_s;
    QTest::newRow("4-byte letters") << u"𠜎𝔄"_s;
    QTest::newRow("direction marks and half-space") << u"\u200Fمی\u200Cخواهم\u200E"_s;
    QTest::newRow("arabic letters stay arabic") << u"كيك"_s;
    QTest::newRow("comment and statement") << u"--'; delete from Things /*"_s;
    QTest::newRow("line breaks and tab") << u"a\r\nb\tc"_s;
    QTest::newRow("placeholder") << u"? :name %1 @x"_s;
    QTest::newRow("empty is not null") << u""_s;
    QTest::newRow("trailing blanks") << u"چای  "_s;
}

void TestDataset::textsComeBackAsTyped()
{
    QFETCH(QString, text);
    MakeThings(*m_database);
    Dataset *things = OpenThings(*m_database, m_owner.get());
    things->Append();
    things->SetField(u"name", text);
    things->Post();
    const Query stored(m_database->AnotherConnection(), Select);
    QCOMPARE(stored.Value(u"Name"), QVariant(text));

    things->Edit();
    things->SetField(u"NAME", QString(text + u'!'));
    things->Post();
    QCOMPARE(Query(m_database->AnotherConnection(), Select).Text(u"Name"), text + u'!');
    QCOMPARE(things->TextField(u"Name"), text + u'!');
}

void TestDataset::decimalsOfEverySize_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *type, const char *text) {
        QTest::addRow("%s as %s", text, type) << QString::fromLatin1(type) << QString::fromLatin1(text);
    };
    for (const char *text : {"0", "7", "-7", "100", "0.5", "-0.5", "0.000000001", "-0.000000001", "1200000",
                             "72057594.037927935", "72057594.037927936", "-72057594.037927935", "-72057594.037927936",
                             "12345678901234.123456789", "-12345678901234.123456789"})
        row("decimal(23,9)", text);
    row("decimal(18,0)", "-100");
    row("decimal(38,20)", "0.00000000000000000001");
    row("decimal(38,20)", "-1.5");
    row("money", "12.5");
}

/// A number reads the same whether the store takes it as digits or as text, and the query that knows no store.
void TestDataset::decimalsOfEverySize()
{
    QFETCH(QString, type);
    QFETCH(QString, text);
    Dataset numbers(m_database->Main());
    numbers.Open(u"SELECT CAST('%1' AS %2) AS V, CAST(NULL AS %2) AS N"_s.arg(text, type));
    QCOMPARE(numbers.Field(u"V"), QVariant(text));
    QVERIFY(numbers.Field(u"N").isNull());
    QVERIFY(numbers.Locate(u"V", text));
}

void TestDataset::everyKindOfValue()
{
    MakeThings(*m_database);
    Dataset *things = OpenThings(*m_database, m_owner.get());
    things->Append();
    things->SetField(u"Amount", u"12345678901234.123456789"_s);
    things->SetField(u"Flag", true);
    things->SetField(u"Big", 9007199254740993LL);
    things->SetField(u"Day", QDate(2026, 3, 21));
    things->SetField(u"Raw", QByteArray("\x00\xff'", 3));
    things->Post();
    QCOMPARE(things->IntField(u"Id"), 1);
    QCOMPARE(things->IntField(u"Made"), 7);
    things->Requery();
    QCOMPARE(things->TextField(u"Amount"), u"12345678901234.123456789"_s);
    QCOMPARE(things->Field(u"Flag"), QVariant(true));
    QCOMPARE(things->Field(u"Big"), QVariant(9007199254740993LL));
    QCOMPARE(things->Field(u"Day"), QVariant(QDate(2026, 3, 21)));
    QCOMPARE(things->Field(u"Raw"), QVariant(QByteArray("\x00\xff'", 3)));
    QVERIFY(things->Field(u"Name").isNull());

    things->Edit();
    things->SetQuantity(u"Amount", 0.1L * 3);
    things->SetField(u"Flag", QVariant());
    things->Post();
    QCOMPARE(m_database->Rows(u"select Amount, Flag, Big from Things"_s), QStringList{u"0.3|NULL|9007199254740993"_s});

    things->Edit();
    things->SetField(u"Amount", u"12; delete from Things"_s);
    QVERIFY_THROWS_EXCEPTION(RefusedText, things->Post());
    QVERIFY(things->IsEditing());
}

void TestDataset::largeListsComeInBlocks()
{
    MakeThings(*m_database, 2500);
    Dataset things(m_database->GoodsList());
    things.SetBlockSize(1000);
    things.Open(Select);
    QCOMPARE(things.RecordCount(), 1000);
    QVERIFY(things.canFetchMore({}));
    // The connection serves others while the list is open, and the list does not see half of a change.
    QCOMPARE(Scalar(m_database->GoodsList(), u"select count(*) from Things"_s).toInt(), 2500);

    QSignalSpy inserted(&things, &QAbstractItemModel::rowsInserted);
    things.fetchMore({});
    QCOMPARE(things.RecordCount(), 2000);
    QCOMPARE(inserted.at(0).at(1).toInt(), 1000);
    QCOMPARE(inserted.at(0).at(2).toInt(), 1999);
    QVERIFY(things.Locate(u"Amount", u"2400.0"_s));
    QCOMPARE(things.TextField(u"Name"), u"سطر 2400"_s);
    QVERIFY(!things.Locate(u"Id", 9999));
    QCOMPARE(things.TextField(u"Name"), u"سطر 2400"_s);
    QCOMPARE(things.RecordCount(), 2500);
    QVERIFY(things.FetchedAll());
    for (int row = 0; row < things.RecordCount(); ++row) {
        QCOMPARE(things.index(row, things.ColumnIndex(u"Id")).data().toInt(), row + 1);
    }
}

void TestDataset::lostConnectionKeepsWhatWasTyped()
{
    MakeThings(*m_database, 3);
    Dataset *things = OpenThings(*m_database, m_owner.get());
    QSqlDatabase main = m_database->Main();
    things->Edit();
    things->SetField(u"Name", u"تازه"_s);
    main.close();
    try {
        things->Post();
        QFAIL("a closed connection took the row");
    } catch (const DatabaseError &error) {
        QVERIFY(error.ConnectionLost());
        QVERIFY(!error.Text().isEmpty());
    }
    QCOMPARE(things->TextField(u"Name"), u"تازه"_s);
    QVERIFY_THROWS_EXCEPTION(DatabaseError, Transaction{main});
    QVERIFY_THROWS_EXCEPTION(DatabaseError, Query(main).Open(Select));

    QVERIFY(main.open());
    QCOMPARE(Query(main, Select).Text(u"Name"), u"سطر 1"_s);
    things->Post();
    QCOMPARE(Query(main, Select).Text(u"Name"), u"تازه"_s);
}

void TestDataset::rowThatIsGone()
{
    MakeThings(*m_database, 2);
    Dataset *things = OpenThings(*m_database, m_owner.get());
    things->Edit();
    things->SetField(u"Name", u"تازه"_s);
    Exec(m_database->AnotherConnection(), u"delete from Things where Id = 1"_s);
    QVERIFY_THROWS_EXCEPTION(DatabaseError, things->Post());
    QCOMPARE(things->CurrentState(), Dataset::State::Edit);
    things->Cancel();
    QCOMPARE(things->TextField(u"Name"), u"سطر 1"_s);
    QVERIFY_THROWS_EXCEPTION(DatabaseError, things->Field(u"NoSuchField"));
}

void TestDataset::typingInAGrid()
{
    MakeThings(*m_database, 3);
    Dataset *things = OpenThings(*m_database, m_owner.get());
    const auto cell = [things](int row, QStringView field) { return things->index(row, things->ColumnIndex(field)); };
    QVERIFY(!(things->flags(cell(0, u"Name")) & Qt::ItemIsEditable));
    QVERIFY(!things->setData(cell(0, u"Name"), u"x"_s));
    QVERIFY(!things->setData(cell(0, u"Amount"), u"12a"_s));
    QVERIFY(things->setData(cell(0, u"Amount"), u"۱٬۲۳۴٫۵"_s));
    QCOMPARE(cell(0, u"Amount").data(), QVariant(u"1234.5"_s));
    QCOMPARE(m_database->Rows(u"select Amount from Things where Id = 1"_s), QStringList{u"1"_s});
    QVERIFY(things->setData(cell(1, u"Amount"), u"7"_s));
    QCOMPARE(m_database->Rows(u"select Amount from Things where Id = 1"_s), QStringList{u"1234.5"_s});
    things->SetCurrentRow(2);
    QCOMPARE(m_database->Rows(u"select Amount from Things where Id = 2"_s), QStringList{u"7"_s});
    QCOMPARE(things->CurrentState(), Dataset::State::Browse);

    QVERIFY(things->setData(cell(2, u"Amount"), u"99"_s));
    Exec(m_database->AnotherConnection(), u"delete from Things where Id = 3"_s);
    QSignalSpy failed(things, &Dataset::Failed);
    QVERIFY(!things->setData(cell(0, u"Amount"), u"5"_s));
    QCOMPARE(failed.count(), 1);
    QCOMPARE(cell(2, u"Amount").data(), QVariant(u"99"_s));
}

void TestDataset::batchGivesItsFirstRows()
{
    Query query(m_database->Main());
    query.Open(u"create table #t (A int) insert into #t values (3) select A from #t select 4 as B"_s);
    QCOMPARE(query.Int(u"a"), 3);
    QVERIFY(!query.Next());
    QVERIFY_THROWS_EXCEPTION(DatabaseError, query.Int(u"A"));
    QCOMPARE(Scalar(m_database->Main(), u"select A from #t where A = 9"_s), QVariant());
    const quint64 before = StatementsSent();
    QVERIFY(Exists(m_database->Main(), u"select A from #t"_s));
    QCOMPARE(Exec(m_database->Main(), u"update #t set A = 5 where A = 3"_s), 1);
    QCOMPARE(StatementsSent() - before, quint64(2));
}

/// A question for the first rows does not read millions.
void TestDataset::questionsReadWhatTheyNeed()
{
    MakeThings(*m_database, 1000);
    const QString many = u"select a.Id from Things a cross join Things b cross join Things c"_s;
    QVERIFY(Exists(m_database->Main(), many));
    QVERIFY(MoreThan(m_database->Main(), many, 999));
    QVERIFY(!MoreThan(m_database->Main(), u"select Id from Things"_s, 1000));
}

void TestDataset::errorInsideABatchIsSeen()
{
    MakeThings(*m_database);
    try {
        Exec(m_database->Main(),
             u"insert into Things (Name) values (N'الف') insert into Things (Made) values (NULL)"_s);
        QFAIL("the second statement passed");
    } catch (const DatabaseError &error) {
        QVERIFY(!error.ConnectionLost());
        QVERIFY2(!error.LogText().contains(u"الف"), qPrintable(error.LogText()));
    }
}

void TestDataset::nestedTransactions_data()
{
    QTest::addColumn<bool>("innerCommits");
    QTest::addColumn<bool>("outerCommits");
    QTest::addColumn<int>("written");
    QTest::newRow("both commit") << true << true << 2;
    QTest::newRow("inner fails") << false << true << 0;
    QTest::newRow("outer fails") << true << false << 0;
}

void TestDataset::nestedTransactions()
{
    QFETCH(bool, innerCommits);
    QFETCH(bool, outerCommits);
    QFETCH(int, written);
    MakeThings(*m_database);
    const QString insert = u"insert into Things (Name) values (N'x')"_s;
    bool refused = false;
    {
        Transaction outer(m_database->Main());
        Exec(m_database->Main(), insert);
        {
            Transaction inner(m_database->Main());
            Exec(m_database->Main(), insert);
            if (innerCommits) {
                inner.Commit();
            }
        }
        QVERIFY(Transaction::IsActive(m_database->Main()));
        try {
            if (outerCommits) {
                outer.Commit();
            }
        } catch (const DatabaseError &) {
            refused = true;
        }
    }
    QCOMPARE(refused, outerCommits && !innerCommits);
    QVERIFY(!Transaction::IsActive(m_database->Main()));
    QCOMPARE(Scalar(m_database->AnotherConnection(), u"select count(*) from Things"_s).toInt(), written);
}

REGISTER_TEST(TestDataset)
#include "tst_dataset.moc"
