#include "bench/import.h"

#include "bench/report.h"
#include "bench/shop.h"
#include "data/goods/goods_import_write.h"
#include "host/data/query.h"
#include "screens/goods_import/sheet_book.h"

#include <QFile>
#include <QTemporaryDir>

#include <stdexcept>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace bench {

namespace {

using namespace goods;

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

/// One file, from opening it to the report; throws when not every row came to `verdict`.
void Bring(Report &report, Shop &shop, const QString &file, int rows, ImportVerdict verdict, const QString &what)
{
    const QSqlDatabase &main = shop.Host().DM.ADOConnection1;
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
        order.order = {u"ورود"_s, u"مدیر (1)"_s, u"1405/08/30"_s, u"10:00:00"_s, {}};
        result = ImportWriter(main, table, fields, options).Write(plan, order);
    });
    line.statements = static_cast<double>(host::StatementsSent() - before);
    if (result.added + result.changed != rows)
        throw std::runtime_error("a file of goods was not written");
    report.Add(line);
}

} // namespace

void MeasureImport(Report &report, int rows)
{
    Shop shop(0);
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"goods.csv"_s);
    WriteFile(file, rows, 0);
    Bring(report, shop, file, rows, ImportVerdict::New, u"%1 new goods from a CSV file"_s.arg(rows));
    WriteFile(file, rows, 50);
    Bring(report, shop, file, rows, ImportVerdict::Changed, u"three prices of %1 goods from a CSV file"_s.arg(rows));
}

int PeakMegabytes()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return static_cast<int>(usage.ru_maxrss / 1024);
}

} // namespace bench
