#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QtTest>

/// The codes that GetGoodInfCode proposes, and that a good gets.
class TestNewCode : public QObject
{
    Q_OBJECT

private slots:
    void proposes_data();
    void proposes();
};

void TestNewCode::proposes_data()
{
    QTest::addColumn<QString>("goods");    // code:group
    QTest::addColumn<QString>("reserved"); // status:code
    QTest::addColumn<int>("group");
    QTest::addColumn<QString>("length");
    QTest::addColumn<int>("expected");

    const auto row = [](const char *name, const char *goods, const char *reserved, int group, const char *length,
                        int expected) {
        QTest::newRow(name) << QString::fromLatin1(goods) << QString::fromLatin1(reserved) << group
                            << QString::fromLatin1(length) << expected;
    };
    row("first of a group", "", "", 12, "6", 120001);
    row("first of a shorter code", "", "", 5, "4", 5001);
    row("next of the group", "5001:5 5002:5 5003:5", "", 5, "4", 5004);
    row("a gap is left alone", "5001:5 5003:5", "", 5, "4", 5004);
    row("next is held by another group", "5001:5 5002:7", "", 5, "4", 5003);
    row("next is reserved", "120001:12", "102:120002 102:120003", 12, "6", 120004);
    row("reserved for another part", "120001:12", "105:120002", 12, "6", 120002);
    row("a good from outside the range", "120001:12 777:12 990001:12", "", 12, "6", 120002);
    row("codes of a group with a longer number", "500001:50", "", 5, "6", 500002);
    row("top of the range is taken", "5001:5 5003:5 5999:5", "", 5, "4", 5002);
    row("top is taken, gap is reserved", "5001:5 5003:5 5999:5", "102:5002", 5, "4", 5004);
    row("range is full", "51:5 52:5 53:5 54:5 55:5 56:5 57:5 58:5 59:5 333:9", "", 5, "2", 334);
    row("range is full by reservations", "51:5 52:5 53:5 54:5 55:5 56:5 57:5 333:9", "102:58 102:59 102:334", 5, "2",
        335);
    row("range and top of all codes are taken", "1:9 3:9 51:5 52:5 53:5 54:5 55:5 56:5 57:5 58:5 59:5 999999:9", "", 5,
        "2", 2);
    row("length leaves no running digit", "", "", 1234, "3", 12341);
    row("length beyond six digits", "", "", 12, "9", 120001);
    row("length missing", "", "", 12, "NULL", 120001);
    row("largest group number", "327671:32767", "", 32767, "6", 327672);
}

void TestNewCode::proposes()
{
    QFETCH(QString, goods);
    QFETCH(QString, reserved);
    QFETCH(int, group);
    QFETCH(QString, length);
    test::Database database;
    for (const QString &good : goods.split(u' ', Qt::SkipEmptyParts)) {
        const QStringList parts = good.split(u':');
        database.Exec(
            u"IF NOT EXISTS (SELECT 1 FROM GoodGrpS WHERE Code = %2) "
            "INSERT INTO GoodGrpS (Code, Name) VALUES (%2, N'x') "
            "INSERT INTO GoodInf (Code, GrpCode, Name) VALUES (%1, %2, N'good %1')"_s.arg(parts.at(0), parts.at(1)));
    }
    for (const QString &lock : reserved.split(u' ', Qt::SkipEmptyParts)) {
        const QStringList parts = lock.split(u':');
        database.Exec(u"INSERT INTO CodeLock_TBL (Status, Code) VALUES (%1, %2)"_s.arg(parts[0], parts[1]));
    }
    const QString statement = u"EXEC GetGoodInfCode %1, %2"_s.arg(group).arg(length);
    QTEST(database.Scalar(statement).toInt(), "expected");
    // Proposing alone changes nothing.
    QTEST(database.Scalar(statement).toInt(), "expected");
}

REGISTER_TEST(TestNewCode)
#include "tst_new_code.moc"
