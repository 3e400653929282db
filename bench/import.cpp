#include "bench/import.h"

#include "bench/export.h"
#include "bench/report.h"
#include "bench/shop.h"
#include "data/goods/goods_import_write.h"
#include "host/data/query.h"
#include "screens/goods_import/sheet_book.h"

#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

using namespace goods;

constexpr double MostMegabytes = 500;
const BulkOrder Stamp{u"ورود"_s, u"مدیر (1)"_s, u"1405/08/30"_s, u"10:00:00"_s, {}};

/// Ten columns; every price is higher by `more`.
void WriteFile(const QString &name, int rows, int more)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly))
        throw std::runtime_error("the file of goods cannot be written");
    file.write(u"بارکد,نام کالا,نوع کالا,شاخص کالا,گروه,واحد,فی 1,فی 2,فی مصرف کننده,توضیحات\r\n"_s.toUtf8());
    for (int row = 1; row <= rows; ++row)
        file.write(
            u"%1,کالای ورودی,مدل %2,ش %3,%4,عدد,%5,%6,%7,از فایل\r\n"_s.arg(u"3%1"_s.arg(row, 11, 10, QChar(u'0')))
                .arg(row % 1000)
                .arg(row)
                .arg(11 + row % 10)
                .arg(1000 + row + more)
                .arg(900 + row + more)
                .arg(2000 + row + more)
                .toUtf8());
}

/// The most memory that this process has had since it was asked last, in megabytes; 0 where the system does not tell.
double TakePeak()
{
    QFile status(u"/proc/self/status"_s);
    double megabytes = 0;
    if (status.open(QIODevice::ReadOnly))
        for (const QByteArray &line : status.readAll().split('\n'))
            if (line.startsWith("VmHWM:"))
                megabytes = line.mid(6).chopped(2).trimmed().toDouble() / 1024;
    QFile forget(u"/proc/self/clear_refs"_s);
    if (forget.open(QIODevice::WriteOnly))
        forget.write("5");
    return megabytes;
}

/// One file, from opening it to the report, and the most memory meanwhile; its number in the list of the last changes.
/// Throws when not every row came to `verdict`.
int Bring(Report &report, Shop &shop, const QString &file, int rows, ImportVerdict verdict, const QString &what)
{
    const QSqlDatabase &main = shop.Host().DM.ADOConnection1;
    TakePeak();
    const quint64 before = host::StatementsSent();
    ImportResult result;
    Line line{what, 0, {}, 60000, 0};
    line.milliseconds = Timed([&] {
        const auto fields = ImportFields(ImportLevelTitles(main), true);
        const ImportTable table = goods_import::ReadSheetFile(file);
        QStringList captions;
        for (int column = 0; column < table.ColumnCount(); ++column)
            captions += table.Cell(0, column).toString();
        ImportOptions options;
        options.firstRow = 1;
        options.columns = MatchImportFields(captions, fields, {});
        QList<ImportFieldInfo> mapped = fields;
        mapped.removeIf([&](const ImportFieldInfo &info) { return !options.columns.contains(info.field); });
        const ImportKnown known = ReadImportKnown(main, mapped, 0, {});
        const ImportPlan plan = JudgeImport(table, ImportReader(table, known, options, fields), options);
        if (plan.Count(verdict) != rows)
            throw std::runtime_error("a file of goods was not judged as it is");
        ImportOrder order;
        order.order = Stamp;
        result = ImportWriter(main, shop.Host().entities, table, fields, options).Write(plan, order);
    });
    line.statements = static_cast<double>(host::StatementsSent() - before);
    if (result.added + result.changed != rows)
        throw std::runtime_error("a file of goods was not written");
    report.Add(line);
    report.AddMemory(what, TakePeak(), MostMegabytes);
    return result.change;
}

void TakeBack(Report &report, Shop &shop, int change, int rows, const QString &what)
{
    const quint64 before = host::StatementsSent();
    BulkResult result;
    Line line{what, 0, {}, 60000, 0};
    line.milliseconds = Timed([&] { result = shop.Data().BulkChange_TakeBack(change, Stamp); });
    line.statements = static_cast<double>(host::StatementsSent() - before);
    if (result.written != rows || result.left != 0)
        throw std::runtime_error("a file of goods was not taken back");
    report.Add(line);
}

} // namespace

void MeasureImport(Report &report, int rows)
{
    Shop shop(0);
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"goods.csv"_s);
    WriteFile(file, rows, 0);
    const int added = Bring(report, shop, file, rows, ImportVerdict::New, u"%1 new goods from a CSV file"_s.arg(rows));
    WriteFile(file, rows, 50);
    const int changed = Bring(report, shop, file, rows, ImportVerdict::Changed,
                              u"three prices of %1 goods from a CSV file"_s.arg(rows));
    const QString what = u"last changes: the %1 goods of a file"_s.arg(rows);
    report.Measure(what + u", first rows"_s, 3, 300, [&] { shop.Data().BulkGoods_GetAll(changed); });
    report.Measure(what + u", every row"_s, 3, 1000, [&] {
        shop.Data().BulkGoods_GetAll(changed);
        shop.Data().BulkGoods_QRY.FetchAll();
    });
    MeasureExport(report, shop);
    TakeBack(report, shop, changed, rows, u"the prices of %1 goods taken back"_s.arg(rows));
    TakeBack(report, shop, added, rows, u"%1 new goods taken back"_s.arg(rows));
}

} // namespace bench
