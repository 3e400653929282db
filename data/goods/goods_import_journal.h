#pragma once

#include "data/goods/bulk_comparison.h"
#include "data/goods/bulk_ledger.h"
#include "host/services/entity_service.h"

#include <QStringList>

#include <functional>

namespace goods {

class BulkSteps;

/// Goods from a file in the list of the last changes: what was written over what, which goods, groups and units were
/// made for it, and the way back. The columns are those of GoodInf and of its prices that the file gives.
class ImportJournal
{
public:
    /// Keeps the reference: what is in use is not deleted.
    ImportJournal(const QSqlDatabase &main, const host::EntityService &entities) : m_main(main), m_entities(entities) {}

    /// Begins an entry and returns its number. Inside the caller's transaction, as all that follows.
    int Open(const BulkOrder &order, const QStringList &columns);
    /// Makes groups or units and notes them.
    void MakeTitles(int change, host::TSoftwarePart part, const QStringList &names);
    /// Notes the goods of a working table (`Code`, `IsNew`, the columns; NULL where nothing is given): new ones are
    /// stored by then, known ones not written yet. Returns how many.
    int AddGoods(int change, const QStringList &columns, const QString &rows);
    /// Ends the entry: groups and units that no good got are deleted again. One without goods is forgotten, and
    /// `result.change` is 0 then.
    void Close(BulkResult &result);

    /// The goods of an entry against what is stored; `lock` is Locked or nothing.
    Comparison Compare(const QList<BulkField> &fields, const QString &lock) const;
    /// Gives the goods of an entry that are not left their old values back and deletes those that it made, then the
    /// groups and units that nothing uses any more. Returns how many goods were deleted; -1 when given up.
    int Restore(int change, const QList<BulkField> &fields, BulkSteps &steps);
    /// OldText and NewText of the entry's goods `j` WithImport: values with their columns, each behind ImportValueMark,
    /// the column before ImportNameMark.
    static QString TextColumns(const QList<BulkField> &fields);

private:
    void DeleteUnused(int change);

    QSqlDatabase m_main;
    const host::EntityService &m_entities;
};

/// Joins what the file wrote, `i`, to the goods `j` of its entry.
inline const QString WithImport =
    QString::fromUtf16(u" INNER JOIN BulkImportGoods i ON i.ChangeID = j.ChangeID AND i.GoodCode = j.GoodCode");

/// No text that a user enters holds these.
inline constexpr char16_t ImportValueMark = u'\x1E';
inline constexpr char16_t ImportNameMark = u'\x1F';

} // namespace goods
