// Files as other programs write them, and as they arrive when a copy broke off.

#include "screens/goods_import/sheet_book.h"
#include "tests/support/test_main.h"

#include <QTemporaryDir>
#include <QtTest>

#include <xlsxwriter.h>

using namespace Qt::StringLiterals;

namespace {

/// The rows with "|" between cells; the refusal's words when the file is refused.
QString Read(const QByteArray &bytes)
{
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"goods"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write");
    file.close();
    try {
        const goods::ImportTable table = goods_import::ReadSheetFile(file.fileName());
        QStringList rows;
        for (int row = 0; row < table.RowCount(); ++row) {
            QStringList cells;
            for (int column = 0; column < table.ColumnCount(); ++column)
                cells << table.Cell(row, column).toString();
            rows << cells.join(u'|');
        }
        return rows.join(u'\n');
    } catch (const std::runtime_error &error) {
        return u"refused: "_s + QString::fromUtf8(error.what());
    }
}

QByteArray Encoded(const QString &text, QStringConverter::Encoding encoding, bool mark)
{
    QStringEncoder encoder(encoding, mark ? QStringConverter::Flag::WriteBom : QStringConverter::Flag::Default);
    return encoder(text);
}

QByteArray Book()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"book.xlsx"_s);
    lxw_workbook *book = workbook_new(QFile::encodeName(file).constData());
    workbook_add_worksheet(book, "خالی");
    lxw_worksheet *sheet = workbook_add_worksheet(book, "کالا");
    lxw_format *date = workbook_add_format(book);
    format_set_num_format(date, "yyyy/mm/dd");
    worksheet_write_string(sheet, 0, 0, "بارکد", nullptr);
    worksheet_write_number(sheet, 1, 0, 6261100011011, nullptr);
    worksheet_write_number(sheet, 1, 1, 0.1, nullptr);
    worksheet_write_formula_num(sheet, 1, 2, "=B2*10", nullptr, 12500);
    worksheet_write_number(sheet, 1, 3, 45000, date);
    worksheet_write_number(sheet, 1, 4, 1234567890123456789.0, nullptr);
    workbook_close(book);
    QFile from(file);
    return from.open(QIODevice::ReadOnly) ? from.readAll() : QByteArray();
}

/// An archive of stored files, as an office program begins an ODS with.
QByteArray Zip(const QList<std::pair<QByteArray, QByteArray>> &files)
{
    QByteArray archive;
    QByteArray directory;
    const auto number = [](QByteArray &to, quint32 value, int bytes) {
        for (; bytes > 0; --bytes, value >>= 8)
            to += char(value & 0xFF);
    };
    for (const auto &[name, content] : files) {
        quint32 crc = 0xFFFFFFFF;
        for (const char c : content) {
            crc ^= quint8(c);
            for (int bit = 0; bit < 8; ++bit)
                crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320 : 0);
        }
        QByteArray head;
        number(head, 20, 2);
        number(head, 0, 8); // flags, stored, time, date
        number(head, ~crc, 4);
        number(head, quint32(content.size()), 4);
        number(head, quint32(content.size()), 4);
        number(head, quint32(name.size()), 2);
        number(head, 0, 2);
        directory += "PK\1\2\24" + QByteArray(1, 0) + head + QByteArray(10, 0);
        number(directory, quint32(archive.size()), 4);
        directory += name;
        archive += "PK\3\4" + head + name + content;
    }
    QByteArray end("PK\5\6\0\0\0\0", 8);
    number(end, quint32(files.size()), 2);
    number(end, quint32(files.size()), 2);
    number(end, quint32(directory.size()), 4);
    number(end, quint32(archive.size()), 4);
    return archive + directory + end + QByteArray(2, 0);
}

QByteArray Ods()
{
    return Zip({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                {"content.xml",
                 "<?xml version=\"1.0\" encoding=\"UTF-8\"?><office:document-content "
                 "xmlns:office=\"urn:oasis:names:tc:opendocument:xmlns:office:1.0\" "
                 "xmlns:table=\"urn:oasis:names:tc:opendocument:xmlns:table:1.0\" "
                 "xmlns:text=\"urn:oasis:names:tc:opendocument:xmlns:text:1.0\" office:version=\"1.2\"><office:body>"
                 "<office:spreadsheet><table:table table:name=\"S\"><table:table-row><table:table-cell "
                 "office:value-type=\"string\"><text:p>نام</text:p></table:table-cell><table:table-cell "
                 "office:value-type=\"float\" office:value=\"12500\"><text:p>12,500</text:p></table:table-cell>"
                 "</table:table-row></table:table></office:spreadsheet></office:body></office:document-content>"}});
}

} // namespace

class TestSheets : public QObject
{
    Q_OBJECT

private slots:
    void rowsOfAFile_data();
    void rowsOfAFile();
};

void TestSheets::rowsOfAFile_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("rows"); ///< of a refusal its beginning
    const QString goods = u"کد;نام\r\n1;\"چای; \"\"ویژه\"\"\nسبز\"\r\n"_s;
    const QString read = u"کد|نام\n1|چای; \"ویژه\"\nسبز"_s;
    using Qt8 = QStringConverter;
    QTest::newRow("utf-8") << goods.toUtf8() << read;
    QTest::newRow("utf-8 with its mark") << Encoded(goods, Qt8::Utf8, true) << read;
    QTest::newRow("utf-16 le with its mark") << Encoded(goods, Qt8::Utf16LE, true) << read;
    QTest::newRow("utf-16 be with its mark") << Encoded(goods, Qt8::Utf16BE, true) << read;
    QTest::newRow("utf-16 le bare") << Encoded(goods, Qt8::Utf16LE, false) << read;
    QTest::newRow("windows-1256") << QByteArray("\xDF\xCF,\xE4\xC7\xE3\n1,\x8D\xC7\xED\n") << u"كد|نام\n1|چاي"_s;
    QTest::newRow("tabs") << QByteArray("a\tb,c\n1\t2,3") << u"a|b,c\n1|2,3"_s;
    QTest::newRow("bars, old line ends") << QByteArray("a|b\r1|\r") << u"a|b\n1|"_s;
    QTest::newRow("separator told") << QByteArray("sep=;\r\na,b;c\r\n") << u"a,b|c"_s;
    QTest::newRow("one column") << QByteArray("a\nb\n") << u"a\nb"_s;
    QTest::newRow("inches") << QByteArray("a,5\" pipe\nb,\"5\"\"\" x\n") << u"a|5\" pipe\nb|5\" x"_s;
    QTest::newRow("workbook") << Book() << u"بارکد||||\n6261100011011|0.1|12500|2023-03-15|1.23456789012346E+18"_s;
    QTest::newRow("ods") << Ods() << u"نام|12500"_s;

    QTest::newRow("quotes never end") << QByteArray("a,b\n1,\"2\n3,4\n") << u"refused: فایل نیمه"_s;
    QTest::newRow("ends within a letter") << goods.left(6).toUtf8().chopped(1) << u"refused: متن فایل نیمه"_s;
    QTest::newRow("ends within a utf-16 letter")
        << Encoded(goods, Qt8::Utf16LE, true).chopped(1) << u"refused: متن فایل نیمه"_s;
    QTest::newRow("no text") << QByteArray("\x7F\x45LF\2\1\1\0\0\0\0\0", 12) << u"refused: این فایل متن نیست"_s;
    QTest::newRow("empty") << QByteArray() << u"refused: فایل «goods» خالی"_s;
    QTest::newRow("old workbook") << QByteArray("\xD0\xCF\x11\xE0rest") << u"refused: این فایل به قالب قدیمی"_s;
    QTest::newRow("half a workbook") << Book().left(3000) << u"refused: فایل خراب"_s;
    QTest::newRow("half an ods") << Ods().chopped(60) << u"refused: فایل خراب"_s;
    QByteArray broken = Ods();
    broken.replace("</table:table-row>", "</table:table-cel>");
    QTest::newRow("broken ods") << broken << u"refused: فایل خراب"_s;
}

void TestSheets::rowsOfAFile()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, rows);
    const QString read = Read(bytes);
    if (rows.startsWith(u"refused"))
        QVERIFY2(read.startsWith(rows), qPrintable(read));
    else
        QCOMPARE(read, rows);
}

REGISTER_TEST(TestSheets)
#include "tst_sheets.moc"
