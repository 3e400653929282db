#pragma once

#include "data/goods/good_bulk_records.h"

#include <QList>
#include <QSqlDatabase>

#include <optional>

namespace host {
class Transaction;
}

namespace goods {

class BulkSteps;

/// One column that a change writes; one detail type of the set that it gives.
struct BulkField
{
    QString name;
    QString newValue; ///< decimal text; empty for a price, which each good has of its own
};

/// `BulkField::name` of a detail type.
inline const QString DetailField = QString::fromUtf16(u"DetailID");

/// The condition that quantities are recorded for the details of a good, or being entered on a document that is not
/// saved: its detail types may not change. `code` is the good's column.
QString RecordedDetails(const QString &code);

/// Entries of the list of the last changes, as those who write goods make them. The goods of an entry are written into
/// it first, with their old values, and from it into their own tables: what is taken back is what was written.
class BulkLedger
{
public:
    explicit BulkLedger(const QSqlDatabase &main) : m_main(main) {}

    /// Begins an entry and returns its number. Inside the caller's transaction, as all that follows.
    int Open(BulkKind kind, ScopeKind scope, const BulkOrder &order, const QList<BulkField> &fields);
    /// Puts goods into the entry: `select` gives what `columns` name ("GoodCode,Old1"), from rows of GoodInf `g` among
    /// others. Returns how many.
    int AddGoods(int change, const QString &columns, const QString &select);
    /// Writes the entry's columns, from `NewPrice` or the values that all are given, into the goods' rows; with `only`,
    /// a condition on the entry's goods `j`, into those of them.
    void Write(int change, const QList<BulkField> &fields, const QString &only = {});
    /// Says how many goods an entry has that is written in several transactions.
    void Count(const BulkResult &result);
    /// Ends the entry. One without goods is forgotten: `result.change` is 0 then.
    void Close(BulkResult &result);
    /// Forgets the oldest entries, never `change`; nothing for 0. For after the commit: that it fails is logged and
    /// does not undo the change; the next one makes up for it.
    void Trim(int change);
    /// The end of a change that is written in one transaction: closes, commits, forgets. False when given up before.
    bool Finish(host::Transaction &transaction, BulkSteps &steps, BulkResult &result);

    /// The columns of an entry. DatabaseError when it names any that no change writes.
    QList<BulkField> FieldsOf(int change) const;
    /// What an entry is about; no kind of those that there are when it is gone.
    BulkKind KindOf(int change) const;

private:
    QSqlDatabase m_main;
};

/// When a good `g` was made: by it another good with the code of a deleted one is known. NULL where nobody noted it.
inline const QString MadeOf = QString::fromUtf16(u"g.CreatedDate + ' ' + g.CreatedTime");

/// Where the columns of a change stand.
struct BulkTarget
{
    QString table;
    QString key;
};
BulkTarget TargetOf(const QList<BulkField> &fields);

/// The new value of a field in the entry's row `j`.
QString NewValueOf(const BulkField &field);

/// The detail types of a change as a code list.
QString DetailList(const QList<BulkField> &fields);
/// For a table that is read to be written: what is there, and what is not, stays so until the transaction ends.
inline const QString Locked = QString::fromUtf16(u" WITH (UPDLOCK, HOLDLOCK)");

/// Condition: the good of this code has other detail types than these. `lock` is Locked or nothing.
QString OtherDetails(const QList<BulkField> &fields, const QString &code, const QString &lock = {});

} // namespace goods
