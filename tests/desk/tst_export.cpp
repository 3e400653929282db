// Lists on their way to other programs: by the keys of a screen, and what stands in the files then.

#include "host/controls/grid.h"
#include "host/screens/grid_export.h"
#include "host/screens/table_writer.h"
#include "tests/desk/window_fixture.h"
#include "tests/support/test_main.h"

#include <QFileDialog>
#include <QProcess>
#include <QTemporaryDir>

namespace {

QString Contents(const QString &file)
{
    QFile from(file);
    return from.open(QIODevice::ReadOnly) ? QString::fromUtf8(from.readAll()) : QString();
}

/// A part of a workbook, as the archive holds it.
QString SheetPart(const QString &file, const QString &part)
{
    QProcess unzip;
    unzip.start(u"unzip"_s, {u"-p"_s, file, part});
    return unzip.waitForFinished() ? QString::fromUtf8(unzip.readAllStandardOutput()) : QString();
}

} // namespace

class TestExport : public QObject
{
    Q_OBJECT

private slots:
    void cellsStayWhatTheyAre_data();
    void cellsStayWhatTheyAre();
    void listGoesOutAsShown_data();
    void listGoesOutAsShown();
    void whatCannotBeWrittenIsTold();

private:
    QTemporaryDir m_folder;
};

void TestExport::cellsStayWhatTheyAre_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("cell");
    QTest::addColumn<QString>("csv");
    QTest::addColumn<QString>("sheet"); ///< of the cell in the workbook: a number in v, a text in t
    const auto number = int(host::ColumnFormat::Quantity);
    const auto text = int(host::ColumnFormat::Text);
    const auto code = int(host::ColumnFormat::Code);
    QTest::newRow("number") << number << u"-12.5"_s << u"-12.5"_s << u"<v>-12.5</v>"_s;
    QTest::newRow("more digits than a double") << number << u"12345678901234.123456789"_s
                                               << u"12345678901234.123456789"_s << u"<t>12345678901234.123456789</t>"_s;
    QTest::newRow("barcode in a column of codes") << code << u"0012345"_s << u"0012345"_s << u"<t>0012345</t>"_s;
    QTest::newRow("formula") << text << u"=1+1"_s << u"'=1+1"_s << u"<t>=1+1</t>"_s;
    QTest::newRow("command") << text << u"@SUM(A1)"_s << u"'@SUM(A1)"_s << u"<t>@SUM(A1)</t>"_s;
    QTest::newRow("minus in a name") << text << u"-5"_s << u"'-5"_s << u"<t>-5</t>"_s;
    QTest::newRow("formula among numbers") << number << u"=2"_s << u"'=2"_s << u"<t>=2</t>"_s;
    QTest::newRow("quote and comma") << text << u"پیچ 3\", بلند"_s << u"\"پیچ 3\"\", بلند\""_s
                                     << u"<t>پیچ 3\", بلند</t>"_s;
    QTest::newRow("line end") << text << u"یک\nدو"_s << u"\"یک\nدو\""_s << u"یک\nدو"_s;
    QTest::newRow("half space") << text << u"می\u200cرود"_s << u"می\u200cرود"_s << u"<t>می\u200cرود</t>"_s;
}

void TestExport::cellsStayWhatTheyAre()
{
    QFETCH(int, format);
    QFETCH(QString, cell);
    const QList<host::GridColumn> columns{{u"A"_s, u"ستون"_s, 100, false, static_cast<host::ColumnFormat>(format)}};
    for (const QString &ending : {u"csv"_s, u"xlsx"_s}) {
        const auto writer = host::TableWriter::For(m_folder.filePath(u"cells."_s + ending));
        writer->Begin(u"کالا: [همه]/*?\\'"_s, columns);
        writer->AddRow({cell});
        writer->Finish();
    }
    QTEST(Contents(m_folder.filePath(u"cells.csv"_s)).section(u"\r\n"_s, 1, 1), "csv");
    QFETCH(QString, sheet);
    const QString book = m_folder.filePath(u"cells.xlsx"_s);
    const QString rows = SheetPart(book, u"xl/worksheets/sheet1.xml"_s);
    QVERIFY2(rows.section(u"<row r=\"2\""_s, 1).contains(sheet), qPrintable(rows));
    QVERIFY(rows.contains(u"rightToLeft=\"1\""_s));
    QVERIFY(SheetPart(book, u"xl/workbook.xml"_s).contains(u"name=\"کالا"_s));
}

void TestExport::listGoesOutAsShown_data()
{
    QTest::addColumn<QString>("ending");
    for (const char *ending : {"csv", "xlsx", "pdf"})
        QTest::newRow(ending) << QString::fromLatin1(ending);
}

/// The goods list, searched: what goes out is what is shown, in its order.
void TestExport::listGoesOutAsShown()
{
    QFETCH(QString, ending);
    const test::DeskWindow shop;
    shop.Run(u"GoodsList_ACT"_s);
    QWidget *page = shop.pages->currentWidget();
    auto &grid = test::Find<host::Grid>(page, u"GoodListDB_GRD"_s);
    grid.Search({u"Name"_s, false, u"چای"_s, {}});
    QVERIFY(grid.FetchAll());
    const int rows = grid.RowCount();
    QVERIFY(rows > 1);
    const QString file = m_folder.filePath(u"list."_s + ending);
    test::Focus(page, u"GoodListDB_GRD"_s);
    test::Drive([] { test::Press(Qt::Key_F9, Qt::ControlModifier); },
                [&](QWidget *dialog) {
                    QVERIFY(qobject_cast<QFileDialog *>(dialog));
                    test::Type(file);
                    test::Press(Qt::Key_Return);
                });
    QVERIFY(QFileInfo(file).size() > 100);
    const QStringList first = grid.VisiblePlainTexts(0);
    if (ending == u"csv") {
        const QStringList lines = Contents(file).split(u"\r\n"_s, Qt::SkipEmptyParts);
        QCOMPARE(lines.size(), rows + 1);
        QFile bytes(file);
        QVERIFY(bytes.open(QIODevice::ReadOnly) && bytes.read(3) == "\xEF\xBB\xBF");
        QVERIFY2(lines.at(1).startsWith(first.first() + u','), qPrintable(lines.at(1)));
    } else if (ending == u"xlsx") {
        const QString sheet = SheetPart(file, u"xl/worksheets/sheet1.xml"_s);
        QCOMPARE(sheet.count(u"<row r="_s), rows + 1);
        QVERIFY(sheet.contains(u"<v>%1</v>"_s.arg(first.first())));
    }
}

/// A folder that is not there: told, whatever is written.
void TestExport::whatCannotBeWrittenIsTold()
{
    const test::DeskWindow shop;
    shop.Run(u"GoodsList_ACT"_s);
    auto &grid = test::Find<host::Grid>(shop.pages->currentWidget(), u"GoodListDB_GRD"_s);
    host::GridExport out(grid, u"کالاها"_s, {});
    for (const QString &ending : {u"csv"_s, u"xlsx"_s, u"pdf"_s})
        QVERIFY_THROWS_EXCEPTION(std::runtime_error, out.Write(m_folder.filePath(u"none/list."_s + ending), nullptr));
}

REGISTER_TEST(TestExport)
#include "tst_export.moc"
