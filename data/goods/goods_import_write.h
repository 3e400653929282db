#pragma once

#include "data/goods/good_bulk_records.h"
#include "data/goods/goods_import_journal.h"
#include "data/goods/goods_import_judge.h"

#include <optional>

namespace goods {

/// How what was previewed is written.
struct ImportOrder
{
    BulkOrder order;      ///< its title names the file
    bool asWhole = false; ///< all rows in one transaction; else a thousand in each
    int deniedTo = 0;     ///< as in ReadImportKnown()
    QStringList operations;
    int codeLength = 6;
};

/// What became of the rows of a file.
struct ImportResult
{
    ImportPlan plan; ///< as it was written: new goods have their codes, what was left out is faulty and says why
    int added = 0;
    int changed = 0;
    bool cancelled = false;
    QString failure; ///< why the writing ended early although blocks are written; empty when it did not
    int change = 0;  ///< its number in the list of the last changes; 0 when nothing was written
};

/// Writes the rows of a file that have no fault: new goods, and what changes of known ones, in sets of a thousand rows.
///
/// What was previewed is judged again first, as the database is by then: a row of which something else would come is
/// left out. All that is written is one entry of the list of the last changes, from which it can be taken back; goods
/// of which more than prices changes bear the stamp of the user.
class ImportWriter
{
public:
    /// Keeps references to the rows and the service.
    ImportWriter(const QSqlDatabase &main, const host::EntityService &entities, const ImportTable &table,
                 const QList<ImportFieldInfo> &fields, const ImportOptions &options);

    /// Given up as a whole, nothing is written; otherwise the blocks written before stay. Throws DatabaseError when
    /// nothing was written.
    ImportResult Write(const ImportPlan &preview, const ImportOrder &order);

private:
    using Entries = QList<ImportPlan::Entry *>;

    void OpenEntry(const ImportPlan &preview, const BulkOrder &order);
    void CloseEntry();
    void Judge(const ImportPlan &preview, const ImportOrder &order);
    void GiveCodes(int codeLength);
    void MakeTable();
    void WriteAll(const ImportOrder &order);
    void WriteBlock(const Entries &entries, const ImportOrder &order);
    void FillTable(const Entries &entries);
    QString Literals(const ImportPlan::Entry &entry, const ImportRow &row) const;
    void LeaveTaken(const Entries &entries);
    void InsertNew(const BulkOrder &order);
    QString DefaultLevel(ImportField first) const;
    void UpdateKnown(const BulkOrder &order);
    void UpdatePrices();

    QSqlDatabase m_main;
    ImportJournal m_journal;
    const ImportTable &m_table;
    QList<ImportFieldInfo> m_fields; ///< those that the file speaks of, and those that every new good has
    ImportOptions m_options;
    ImportKnown m_known;
    std::optional<ImportReader> m_reader;
    ImportResult m_result;
    QStringList m_columns; ///< of m_fields
    BulkResult m_entry;    ///< in the list of the last changes
};

} // namespace goods
