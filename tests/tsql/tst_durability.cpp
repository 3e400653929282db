// The files of a process that is stopped dead while it writes: what was committed is there, and nothing is there by
// halves.

#include "tests/support/test_main.h"
#include "tsql/run/connection.h"
#include "tsql/values/error.h"

#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

class TestDurability : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void copiedInTheMiddle();

private:
    QString file(const QString &name) const { return m_folder->filePath(name); }
    void startWriter();
    void waitForCommits(int more);
    void check(const QString &path) const;
    static void write(const QString &path, int first, int acknowledge);

    std::unique_ptr<QTemporaryDir> m_folder;
    QRandomGenerator m_random{20240320};
    pid_t m_writer = -1;
    int m_acknowledged = -1; ///< pipe on which the writer tells each committed number
    int m_last = 0;          ///< the last number told
};

void TestDurability::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_last = 0;
    tsql::Connection connection(file(u"a.db"_s));
    connection.Execute(u"CREATE TABLE Journal (Number int NOT NULL, Part int NOT NULL, Note nvarchar(max), "
                       "PRIMARY KEY (Number, Part))\nCREATE TABLE Total (Id int PRIMARY KEY, Parts int NOT NULL)\n"
                       "INSERT Total VALUES (1, 0)"_s);
}

void TestDurability::cleanup()
{
    if (m_writer > 0) {
        kill(m_writer, SIGKILL);
        waitpid(m_writer, nullptr, 0);
        close(m_acknowledged);
    }
    m_writer = -1;
    m_folder.reset();
}

/** Transactions of 1 to 12 rows each, one number each, some of them rolled back. */
void TestDurability::write(const QString &path, int first, int acknowledge)
{
    QRandomGenerator random(quint32(first) + 1);
    tsql::Connection connection(path);
    for (int number = first;; ++number) {
        const int parts = random.bounded(1, 13);
        connection.BeginTransaction();
        for (int part = 1; part <= parts; ++part)
            connection.Execute(u"INSERT Journal VALUES (%1, %2, REPLICATE(N'سند ', %3))"_s.arg(number).arg(part).arg(
                random.bounded(1, 2000)));
        connection.Execute(u"UPDATE Journal SET Note = NULL WHERE Number = %1"_s.arg(number - 50));
        connection.Execute(u"UPDATE Total SET Parts = Parts + %1"_s.arg(parts));
        if (random.bounded(10) == 0) {
            connection.Rollback();
            continue;
        }
        connection.Commit();
        if (::write(acknowledge, &number, sizeof number) != sizeof number)
            return;
    }
}

void TestDurability::startWriter()
{
    int ends[2];
    QCOMPARE(pipe(ends), 0);
    const int first = m_last + 1000; // never a number of an earlier writer
    m_writer = fork();
    QVERIFY(m_writer >= 0);
    if (m_writer == 0) {
        close(ends[0]);
        try {
            write(file(u"a.db"_s), first, ends[1]);
        } catch (const tsql::Error &error) {
            qWarning("%s", error.what());
        }
        _exit(1);
    }
    close(ends[1]);
    m_acknowledged = ends[0];
}

/** Reads the next numbers that the writer tells. */
void TestDurability::waitForCommits(int more)
{
    int number = 0;
    while (more-- > 0) {
        QCOMPARE(read(m_acknowledged, &number, sizeof number), ssize_t(sizeof number));
        m_last = number;
    }
}

void TestDurability::check(const QString &path) const
{
    tsql::Connection connection(path);
    const auto first = [&connection](const QString &select) {
        tsql::Outcome outcome = connection.Execute(select);
        tsql::Cursor &cursor = *outcome.results.front();
        return cursor.Next() ? cursor.CellAt(0).integer : -1;
    };
    QCOMPARE(
        connection.Handle().ScalarInteger("SELECT count(*) FROM pragma_integrity_check WHERE integrity_check = 'ok'"),
        1);
    if (m_last > 0)
        QVERIFY(first(u"SELECT COUNT(*) FROM Journal WHERE Number = %1"_s.arg(m_last)) > 0);
    QCOMPARE(
        first(u"SELECT COUNT(*) FROM (SELECT Number FROM Journal GROUP BY Number HAVING COUNT(*) <> MAX(Part)) t"_s),
        0);
    QCOMPARE(first(u"SELECT COUNT(*) FROM Journal"_s), first(u"SELECT Parts FROM Total"_s));
}

void TestDurability::copiedInTheMiddle()
{
    startWriter();
    for (int round = 0; round < 10; ++round) {
        waitForCommits(m_random.bounded(5, 25));
        QTest::qSleep(m_random.bounded(1, 8));
        kill(m_writer, SIGSTOP);
        waitpid(m_writer, nullptr, WUNTRACED);
        const QString copy = file(u"copy %1.db"_s.arg(round));
        QVERIFY(QFile::copy(file(u"a.db"_s), copy));
        QVERIFY(QFile::copy(file(u"a.db-wal"_s), copy + u"-wal"_s));
        check(copy);
        if (QTest::currentTestFailed())
            return;
        kill(m_writer, SIGCONT);
    }
}

REGISTER_TEST(TestDurability)
#include "tst_durability.moc"
