#include "data/goods/goods_import_write.h"

#include "data/goods/bulk_ledger.h"
#include "data/goods/bulk_scope.h"
#include "data/goods/goods_import_codes.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <algorithm>

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

ImportWriter::ImportWriter(const QSqlDatabase &main, const host::EntityService &entities, const ImportTable &table,
                           const QList<ImportFieldInfo> &fields, const ImportOptions &options)
    : m_main(main), m_journal(main, entities), m_table(table), m_options(options)
{
    std::copy_if(fields.cbegin(), fields.cend(), std::back_inserter(m_fields), [&](const ImportFieldInfo &info) {
        return info.field != ImportField::Code && (IsAlways(info.field) || options.columns.contains(info.field));
    });
    for (const ImportFieldInfo &info : std::as_const(m_fields)) {
        m_columns += info.column;
    }
}

ImportResult ImportWriter::Write(const ImportPlan &preview, const ImportOrder &order)
{
    m_result = {};
    m_entry = {};
    MakeTable();
    std::optional<host::Transaction> whole;
    if (order.asWhole) {
        whole.emplace(m_main);
    }
    OpenEntry(preview, order.order);
    try {
        Judge(preview, order);
        GiveCodes(order.codeLength);
        WriteAll(order);
    } catch (...) {
        if (!order.asWhole) {
            CloseEntry();
        }
        throw;
    }
    if (whole && m_result.cancelled) {
        m_result.added = m_result.changed = 0;
        return m_result;
    }
    CloseEntry();
    if (whole) {
        whole->Commit();
    }
    BulkLedger(m_main).Trim(m_result.change);
    host::Exec(m_main, DropTable(Rows));
    return m_result;
}

void ImportWriter::OpenEntry(const ImportPlan &preview, const BulkOrder &order)
{
    host::Transaction transaction(m_main);
    m_entry.change = m_journal.Open(order, m_columns);
    m_journal.MakeTitles(m_entry.change, host::TSoftwarePart::GoodsGroups, preview.newGroups);
    m_journal.MakeTitles(m_entry.change, host::TSoftwarePart::Units, preview.newUnits);
    transaction.Commit();
}

void ImportWriter::CloseEntry()
{
    host::Transaction transaction(m_main);
    m_journal.Close(m_entry);
    transaction.Commit();
    m_result.change = m_entry.change;
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
    host::Transaction transaction(m_main);
    FillTable(entries);
    LeaveTaken(entries);
    InsertNew(order.order);
    BulkResult entry = m_entry;
    entry.written += m_journal.AddGoods(m_entry.change, m_columns, Rows);
    UpdateKnown(order.order);
    UpdatePrices();
    BulkLedger(m_main).Count(entry);
    transaction.Commit();
    m_entry = entry;
    for (const ImportPlan::Entry *row : entries) {
        m_result.added += row->verdict == ImportVerdict::New;
        m_result.changed += row->verdict == ImportVerdict::Changed;
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
    const QString insert =
        u"INSERT INTO "_s + Rows + u" (Code, Line, IsNew, Texts, "_s + m_columns.join(u", "_s) + u") VALUES "_s;
    host::Run(m_main, u"DELETE FROM "_s + Rows);
    QStringList rows;
    for (const ImportPlan::Entry *entry : entries) {
        rows += Literals(*entry, m_reader->Read(entry->row));
        if (rows.size() == RowsOfInsert || entry == entries.constLast()) {
            host::Exec(m_main, insert + rows.join(u','));
            rows.clear();
        }
    }
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

/// The stamp tells of more than prices.
void ImportWriter::UpdateKnown(const BulkOrder &order)
{
    QString assignments;
    QStringList given{u"i.Texts = 1"_s};
    for (const ImportFieldInfo &info : std::as_const(m_fields)) {
        if (IsLevel(info.field) || info.field == ImportField::Unit || info.field == ImportField::Unit2 ||
            info.field == ImportField::Formula) {
            continue;
        }
        assignments += u"g."_s + info.column + u" = ISNULL(i."_s + info.column + u", g."_s + info.column + u"), "_s;
        if (info.price) {
            given += u"i."_s + info.column + u" IS NOT NULL"_s;
        }
    }
    const auto stamp = [](const QString &column, const QString &value) {
        return u"g.%1 = CASE WHEN i.Texts = 1 THEN %2 ELSE g.%1 END"_s.arg(column, value);
    };
    host::Run(m_main, u"UPDATE g SET "_s + assignments +
                          QStringList{stamp(u"ModifiedTime"_s, host::QuotedStr(order.time)),
                                      stamp(u"ModifiedDate"_s, host::QuotedStr(order.date)),
                                      stamp(u"UserModified"_s, host::NQuotedStr(order.user))}
                              .join(u", "_s) +
                          u" FROM GoodInf g INNER JOIN "_s + Rows + u" i ON i.Code = g.Code WHERE i.IsNew = 0 AND ("_s +
                          given.join(u" OR "_s) + u')');
}

void ImportWriter::UpdatePrices()
{
    QStringList assignments;
    QStringList given;
    for (const ImportFieldInfo &info : std::as_const(m_fields)) {
        if (IsLevel(info.field)) {
            assignments += u"c."_s + info.column + u" = ISNULL(i."_s + info.column + u", c."_s + info.column + u')';
            given += u"i."_s + info.column + u" IS NOT NULL"_s;
        }
    }
    if (given.isEmpty()) {
        return;
    }
    const QString some = u" i.IsNew = 0 AND ("_s + given.join(u" OR "_s) + u')';
    // No level of a fresh row has a price yet, so none can be the default.
    host::Run(m_main, u"INSERT INTO GoodCostDiscount (GoodCode, Default_CostLevel_Sell_Number, "
                      "Default_CostLevel_Buy_Number) SELECT i.Code, 0, 0 FROM "_s +
                          Rows + u" i WHERE"_s + some +
                          u" AND NOT EXISTS (SELECT 1 FROM GoodCostDiscount c WHERE c.GoodCode = i.Code)"_s);
    host::Run(m_main, u"UPDATE c SET "_s + assignments.join(u", "_s) + u" FROM GoodCostDiscount c INNER JOIN "_s +
                          Rows + u" i ON i.Code = c.GoodCode WHERE"_s + some);
}

} // namespace goods
