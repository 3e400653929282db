#include "data/goods/goods_import_write.h"

#include "data/goods/bulk_ledger.h"
#include "data/goods/bulk_scope.h"
#include "data/goods/goods_import_codes.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <algorithm>
#include <functional>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr qsizetype RowsOfBlock = 1000;
constexpr qsizetype RowsOfInsert = 100;

/// The working table of a block, by the good's code.
const QString Rows = u"#GoodImport"_s;

bool IsAlways(ImportField field)
{
    return field == ImportField::FullName || field == ImportField::Name || field == ImportField::Group ||
           field == ImportField::Unit;
}

QString Declaration(const ImportFieldInfo &info)
{
    const QString type = info.length > 0 ? u"nvarchar(%1)"_s.arg(info.length)
                         : info.column == "GrpCode"_L1 || info.column.startsWith("Unit"_L1) ? u"int"_s
                                                                                            : u"decimal(28,9)"_s;
    return info.column + u' ' + type + u" NULL"_s;
}

bool IsWritten(ImportVerdict verdict)
{
    return verdict == ImportVerdict::New || verdict == ImportVerdict::Changed;
}

} // namespace

ImportWriter::ImportWriter(const QSqlDatabase &main, const ImportTable &table, const QList<ImportFieldInfo> &fields,
                           const ImportOptions &options)
    : m_main(main), m_table(table), m_options(options)
{
    std::copy_if(fields.cbegin(), fields.cend(), std::back_inserter(m_fields), [&](const ImportFieldInfo &info) {
        return info.field != ImportField::Code && (IsAlways(info.field) || options.columns.contains(info.field));
    });
}

ImportResult ImportWriter::Write(const ImportPlan &preview, const ImportOrder &order)
{
    m_result = {};
    m_entries.clear();
    MakeTable();
    std::optional<host::Transaction> whole;
    if (order.asWhole) {
        whole.emplace(m_main);
    }
    {
        host::Transaction titles(m_main);
        MakeTitles(u"GoodGrpS"_s, preview.newGroups);
        MakeTitles(u"Units"_s, preview.newUnits);
        titles.Commit();
    }
    Judge(preview, order);
    GiveCodes(order.codeLength);
    WriteAll(order);
    if (whole && m_result.cancelled) {
        return m_result;
    }
    if (whole) {
        whole->Commit();
    }
    BulkLedger ledger(m_main);
    for (const BulkResult &entry : std::as_const(m_entries)) {
        m_result.changes += entry.change;
    }
    if (!m_result.changes.isEmpty()) {
        ledger.Trim(*std::max_element(m_result.changes.cbegin(), m_result.changes.cend()));
    }
    host::Exec(m_main, DropTable(Rows));
    return m_result;
}

void ImportWriter::MakeTitles(const QString &table, const QStringList &names)
{
    for (const QString &name : names) {
        host::Run(m_main, u"INSERT INTO "_s + table + u" (Code, Name) SELECT ISNULL(MAX(Code), 0) + 1, "_s +
                              host::NQuotedStr(name) + u" FROM "_s + table);
    }
}

/// Another desk may have worked since the preview.
void ImportWriter::Judge(const ImportPlan &preview, const ImportOrder &order)
{
    m_known = ReadImportKnown(m_main, m_fields, order.deniedTo, order.operations);
    m_reader.emplace(m_table, m_known, m_options, m_fields);
    m_result.plan = JudgeImport(m_table, *m_reader, m_options);
    ImportPlan &plan = m_result.plan;
    for (size_t i = 0; i < plan.rows.size(); ++i) {
        if (IsWritten(plan.rows[i].verdict) && plan.rows[i].verdict != preview.rows.at(i).verdict) {
            plan.Refuse(plan.rows[i], u"کاربر دیگری در این فاصله کالاها را تغییر داده است"_s);
        }
    }
}

void ImportWriter::GiveCodes(int codeLength)
{
    ImportCodes codes(codeLength);
    for (int row = 0; row < m_known.goods.RowCount(); ++row) {
        codes.Take(m_known.Stored(row, ImportField::Code).toInt(), m_known.Stored(row, ImportField::Group).toInt());
    }
    for (const int code : std::as_const(m_known.reservedCodes)) {
        codes.Take(code);
    }
    for (const ImportPlan::Entry &entry : m_result.plan.rows) {
        codes.Take(entry.code);
    }
    for (ImportPlan::Entry &entry : m_result.plan.rows) {
        if (entry.verdict != ImportVerdict::New || entry.code != 0) {
            continue;
        }
        entry.code = codes.Give(m_reader->Read(entry.row).Find(ImportField::Group)->toInt());
        if (entry.code == 0) {
            m_result.plan.Refuse(entry, u"کد آزادی برای این کالا پیدا نشد"_s);
        }
    }
}

void ImportWriter::MakeTable()
{
    QStringList columns{u"Code int NOT NULL PRIMARY KEY, Line int NOT NULL, IsNew bit NOT NULL, Texts bit NOT NULL"_s};
    for (const ImportFieldInfo &info : std::as_const(m_fields)) {
        columns += Declaration(info);
    }
    host::Exec(m_main, DropTable(Rows) + u" CREATE TABLE "_s + Rows + u" ("_s + columns.join(u", "_s) + u')');
}

void ImportWriter::WriteAll(const ImportOrder &order)
{
    Entries written;
    for (ImportPlan::Entry &entry : m_result.plan.rows) {
        if (IsWritten(entry.verdict)) {
            written += &entry;
        }
    }
    const auto total = static_cast<int>(written.size());
    for (qsizetype begin = 0; begin < written.size(); begin += RowsOfBlock) {
        const auto left = [&](const QString &why) {
            for (ImportPlan::Entry *entry : written.sliced(begin)) {
                m_result.plan.Refuse(*entry, why);
            }
        };
        if (order.order.progress && !order.order.progress(static_cast<int>(begin), total)) {
            m_result.cancelled = true;
            left(u"پیش از رسیدن به این ردیف، عملیات متوقف شد"_s);
            return;
        }
        try {
            WriteBlock(written.sliced(begin, std::min(RowsOfBlock, written.size() - begin)), order);
        } catch (const host::DatabaseError &error) {
            if (order.asWhole || begin == 0) {
                throw;
            }
            // The blocks before it stand, and the user has to know which.
            m_result.failure = error.Text();
            left(error.Text());
            return;
        }
    }
}

void ImportWriter::WriteBlock(const Entries &entries, const ImportOrder &order)
{
    const auto entriesBefore = m_entries;
    try {
        host::Transaction transaction(m_main);
        FillTable(entries);
        LeaveTaken(entries);
        InsertNew(order.order);
        UpdateTexts(order.order);
        for (const ImportFieldInfo &info : std::as_const(m_fields)) {
            if (m_pricesOfBlock.contains(info.field)) {
                ChangePrices(info, order.order);
            }
        }
        transaction.Commit();
    } catch (...) {
        m_entries = entriesBefore;
        throw;
    }
    for (const ImportPlan::Entry *entry : entries) {
        m_result.added += entry->verdict == ImportVerdict::New;
        m_result.changed += entry->verdict == ImportVerdict::Changed;
    }
}

QString ImportWriter::Literals(const ImportPlan::Entry &entry, const ImportRow &row) const
{
    const bool isNew = entry.verdict == ImportVerdict::New;
    bool texts = false;
    QString values;
    for (const ImportFieldInfo &info : m_fields) {
        const QString *text = row.Find(info.field);
        texts = texts || (text && !info.price);
        values += u',';
        values += !text              ? u"NULL"_s
                  : info.length != 0 ? host::NQuotedStr(*text)
                                     : host::DecimalLiteral(QStringView(*text));
    }
    return u'(' + QString::number(entry.code) + u',' + QString::number(entry.row) + (isNew ? u",1,"_s : u",0,"_s) +
           (texts ? u'1' : u'0') + values + u')';
}

void ImportWriter::FillTable(const Entries &entries)
{
    QStringList names{u"Code"_s, u"Line"_s, u"IsNew"_s, u"Texts"_s};
    for (const ImportFieldInfo &info : std::as_const(m_fields)) {
        names += info.column;
    }
    const QString insert = u"INSERT INTO "_s + Rows + u" ("_s + names.join(u',') + u") VALUES "_s;
    m_pricesOfBlock.clear();
    host::Run(m_main, u"DELETE FROM "_s + Rows);
    QStringList rows;
    for (const ImportPlan::Entry *entry : entries) {
        const ImportRow row = m_reader->Read(entry->row);
        rows += Literals(*entry, row);
        for (const ImportValue &value : row.values) {
            if (row.isKnown) {
                m_pricesOfBlock.insert(value.field);
            }
        }
        if (rows.size() == RowsOfInsert || entry == entries.constLast()) {
            host::Exec(m_main, insert + rows.join(u','));
            rows.clear();
        }
    }
    m_pricesOfBlock.removeIf([this](ImportField field) {
        return std::none_of(m_fields.cbegin(), m_fields.cend(),
                            [field](const ImportFieldInfo &info) { return info.field == field && info.price; });
    });
}

/// Codes that another desk has taken since, and goods that it has deleted.
void ImportWriter::LeaveTaken(const Entries &entries)
{
    QSet<int> lines;
    for (host::Query gone(m_main, u"SELECT i.Line FROM "_s + Rows + u" i LEFT JOIN GoodInf g"_s + Locked +
                                      u" ON g.Code = i.Code WHERE (i.IsNew = 1 AND g.Code IS NOT NULL) OR (i.IsNew = "
                                      "0 AND g.Code IS NULL)"_s);
         !gone.Eof(); gone.Next()) {
        lines.insert(gone.Int(0));
    }
    QStringList codes;
    for (ImportPlan::Entry *entry : entries) {
        if (lines.contains(entry->row)) {
            codes += QString::number(entry->code);
            m_result.plan.Refuse(*entry, u"کاربر دیگری در این فاصله این کد را گرفته یا کالا را حذف کرده است"_s);
        }
    }
    if (!codes.isEmpty()) {
        host::Run(m_main, u"DELETE FROM "_s + Rows + u" WHERE Code IN ("_s + codes.join(u',') + u')');
    }
}

/// The first level of a side that has a price is its default; without any there is none.
QString ImportWriter::DefaultLevel(ImportField first) const
{
    QString level;
    for (int i = 0; i < ImportLevels; ++i) {
        for (const ImportFieldInfo &info : m_fields) {
            if (static_cast<int>(info.field) == static_cast<int>(first) + i) {
                level += u" WHEN ISNULL(i."_s + info.column + u",0) <> 0 THEN "_s + QString::number(i + 1);
            }
        }
    }
    return level.isEmpty() ? u"0"_s : u"CASE"_s + level + u" ELSE 0 END"_s;
}

void ImportWriter::InsertNew(const BulkOrder &order)
{
    const QString from = u" FROM "_s + Rows + u" i WHERE i.IsNew = 1"_s;
    QString levels;
    QString levelValues;
    // What the editor writes for a good of which nothing else is entered.
    QString columns = u"Code, SMSCode, tags, Pos, CreatedTime, CreatedDate, UserCreated"_s;
    QString values =
        u"i.Code, CASE WHEN NOT EXISTS (SELECT 1 FROM GoodInf s WHERE s.SMSCode = i.Code) THEN i.Code END, N'', N'', "_s +
        host::QuotedStr(order.time) + u", "_s + host::QuotedStr(order.date) + u", "_s + host::NQuotedStr(order.user);
    bool barcodes = false;
    for (const ImportFieldInfo &info : std::as_const(m_fields)) {
        const bool refers = info.column.startsWith("Unit"_L1) || info.field == ImportField::Group;
        barcodes = barcodes || info.field == ImportField::Barcode;
        const QString none = info.field == ImportField::Barcode ? u"N'!!'"_s : info.length > 0 ? u"N''"_s : u"0"_s;
        const QString value = refers ? u", i."_s + info.column : u", ISNULL(i."_s + info.column + u", "_s + none + u')';
        (IsLevel(info.field) ? levels : columns) += u", "_s + info.column;
        (IsLevel(info.field) ? levelValues : values) += value;
    }
    if (!barcodes) {
        columns += u", AbbName"_s;
        values += u", N'!!'"_s;
    }
    host::Run(m_main, u"INSERT INTO GoodCostDiscount (GoodCode, Default_CostLevel_Sell_Number, "
                      "Default_CostLevel_Buy_Number"_s +
                          levels + u") SELECT i.Code, "_s + DefaultLevel(ImportField::Sell1) + u", "_s +
                          DefaultLevel(ImportField::Buy1) + levelValues + from);
    host::Run(m_main, u"INSERT INTO GoodInf ("_s + columns + u") SELECT "_s + values + from);
}

void ImportWriter::UpdateTexts(const BulkOrder &order)
{
    QString assignments;
    for (const ImportFieldInfo &info : std::as_const(m_fields)) {
        if (!info.price && info.field != ImportField::Unit && info.field != ImportField::Unit2 &&
            info.field != ImportField::Formula) {
            assignments += u"g."_s + info.column + u" = ISNULL(i."_s + info.column + u", g."_s + info.column + u"), "_s;
        }
    }
    host::Run(m_main, u"UPDATE g SET "_s + assignments + u"g.ModifiedTime = "_s + host::QuotedStr(order.time) +
                          u", g.ModifiedDate = "_s + host::QuotedStr(order.date) + u", g.UserModified = "_s +
                          host::NQuotedStr(order.user) + u" FROM GoodInf g INNER JOIN "_s + Rows +
                          u" i ON i.Code = g.Code WHERE i.IsNew = 0 AND i.Texts = 1"_s);
}

void ImportWriter::ChangePrices(const ImportFieldInfo &info, const BulkOrder &order)
{
    const QList<BulkField> fields{{info.column, {}}};
    BulkLedger ledger(m_main);
    BulkResult &entry = m_entries[info.field];
    if (entry.change == 0) {
        BulkOrder titled = order;
        titled.title += u" - "_s + info.caption;
        entry.change = ledger.Open(BulkKind::Prices, ScopeKind::Marked, titled, fields);
    }
    const QString old = IsLevel(info.field) ? u"ISNULL(c."_s + info.column + u",0)"_s : u"g."_s + info.column;
    entry.written +=
        ledger.AddGoods(entry.change, u"GoodCode, NewPrice, Old1"_s,
                        u"i.Code, i."_s + info.column + u", "_s + old + u" FROM "_s + Rows +
                            u" i INNER JOIN GoodInf g ON g.Code = i.Code LEFT JOIN GoodCostDiscount c"_s + Locked +
                            u" ON c.GoodCode = i.Code WHERE i.IsNew = 0 AND i."_s + info.column + u" <> "_s + old);
    ledger.Write(entry.change, fields,
                 u"j.GoodCode IN (SELECT r.Code FROM "_s + Rows + u" r WHERE r."_s + info.column + u" IS NOT NULL)"_s);
    ledger.Close(entry);
}

} // namespace goods
