// The program as it is started, with the module that it loads, on a database file.

#include "tests/support/database.h"
#include "tests/support/test_main.h"

#include <QtCore/QDir>
#include <QtCore/QProcess>
#include <QtGui/QImage>
#include <QtTest/QTest>

class TestDesk : public QObject
{
    Q_OBJECT

private slots:
    void worksAGoodByKeys();
    void refusesToStart_data();
    void refusesToStart();
};

namespace {

constexpr int Patience = 240'000; // milliseconds

struct Outcome
{
    int code = -1;
    QString said;
};

Outcome RunDesk(const QStringList &arguments)
{
    QProcess desk;
    desk.setProcessChannelMode(QProcess::MergedChannels);
    desk.start(QStringLiteral(DESK), arguments);
    if (!desk.waitForFinished(Patience)) {
        desk.kill();
        desk.waitForFinished();
        return {-1, QStringLiteral("the desk did not end")};
    }
    const int code = desk.exitStatus() == QProcess::NormalExit ? desk.exitCode() : -2;
    return {code, QString::fromUtf8(desk.readAll())};
}

} // namespace

void TestDesk::worksAGoodByKeys()
{
    const test::Database database(test::Database::Content::Demo);
    const QTemporaryDir pictures;
    const QStringList tables{u"GoodInf"_qs,       u"GoodCostDiscount"_qs,   u"GoodFirstAsset"_qs,
                             u"Kala_category"_qs, u"GoodDetailRelation"_qs, u"GoodStock"_qs};
    const auto counts = [&] {
        QStringList all;
        for (const QString &table : tables)
            all << table + u' ' + database.Scalar(u"SELECT COUNT(*) FROM "_qs + table).toString();
        return all;
    };
    const QStringList before = counts();

    // Each step checks what it did: the good that is added, corrected and deleted, the codes that come back.
    const Outcome tour = RunDesk(database.DeskArguments() + QStringList{u"--tour"_qs, pictures.path()});
    QVERIFY2(tour.code == 0, qPrintable(tour.said));

    // The good left nothing behind, and neither did the editors.
    QCOMPARE(counts(), before);
    for (const QString &table : {u"tmpCostList"_qs, u"CodeLock_TBL"_qs})
        QVERIFY2(database.Rows(u"SELECT * FROM "_qs + table).isEmpty(), qPrintable(table));

    const QStringList files = QDir(pictures.path()).entryList({u"*.png"_qs});
    QVERIFY2(files.size() >= 15, qPrintable(files.join(u' ')));
    for (const QString &file : files) {
        const QImage image(pictures.filePath(file));
        QVERIFY2(image.width() > 200 && image.height() > 80, qPrintable(file));
    }
}

void TestDesk::refusesToStart_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("says");
    QTest::newRow("unknown user") << QStringList{u"--user"_qs, u"99"_qs} << 2 << u"99"_qs;
    QTest::newRow("unknown option") << QStringList{u"--bogus"_qs} << 2 << u"bogus"_qs;
}

void TestDesk::refusesToStart()
{
    QFETCH(QStringList, arguments);
    const test::Database database;
    const Outcome outcome = RunDesk(database.DeskArguments() + arguments);
    QTEST(outcome.code, "code");
    QFETCH(QString, says);
    QVERIFY2(outcome.said.contains(says), qPrintable(outcome.said));
}

REGISTER_TEST(TestDesk)
#include "tst_desk.moc"
