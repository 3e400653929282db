#pragma once

#include "gooddetail/amount_layout.h"
#include "gooddetail/serial_dm.h"

#include <functional>
#include <optional>

namespace good_detail {

/// What is typed on the enter screen, as one row.
struct EnterRow
{
    host::TDetailValues Details; ///< the serial, if the good has one, stands first
    host::TAmounts Amounts;
    int EditedID = 0; ///< the working row that is edited; 0: a row is added
};

/// Why a row was not written; all empty when it was.
struct EnterRefusal
{
    QString Text;
    std::optional<AmountPart> Part; ///< the amount that is at fault; otherwise the serial or the details are
    bool InPlace = false;           ///< to be said without a box that waits
};

/// The working rows of a line that comes in: adding, merging, changing and taking out, with the rules of returns. Each
/// operation is one transaction; what is refused or fails leaves the rows as they were. Shows nothing. Throws
/// DatabaseError.
class EnterRows
{
public:
    /// `captions` names an amount in messages. All outlive the object.
    EnterRows(host::Host &host, TSerial_DM &data, const host::TDocumentLine &line, int serialPlace,
              std::function<QString(AmountPart)> captions);

    /// Makes the working table and reads the rows of the line into it.
    void Load();
    /// Nothing when the row was written. The row set stands on it then.
    std::optional<EnterRefusal> Store(const EnterRow &row);
    /// The serials of a batch are those of a range, or the one in the details.
    host::TSerialBatch Batch(const EnterRow &row, const std::optional<host::TSerialRange> &range = {}) const;
    /// The working row as it was entered; nothing when it is gone.
    std::optional<TEnterGoodDetail_Rec> Row(int id);
    bool IsReturned(int id);

    /// Takes rows out but for those that were returned. False when some stay.
    bool Remove(const QList<int> &ids);
    bool RemoveAll();
    /// Keeps the rows for the document.
    void Keep();
    /// Forgets the detail values that only this screen has made, when it is left without keeping.
    void GiveUp();

private:
    using Refused = std::optional<EnterRefusal>;

    QList<int> Values() const;
    void TakeOut(const std::function<void()> &statements);
    void Reread();
    Refused Add(const EnterRow &row);
    Refused Change(const EnterRow &row);
    Refused AddSerial(const EnterRow &row);
    Refused Merge(int id, const EnterRow &row);
    Refused Write(const EnterRow &row, int valueId, const std::optional<host::TAmounts> &returnable = {});
    Refused JudgeReturn(const EnterRow &row, int valueId);
    Refused JudgeSerial(const EnterRow &row, TEnterGoodDetail_Rec &former);
    host::TAmounts WithOthers(const host::TAmounts &own, const std::function<bool(int row)> &counts) const;
    Refused Exceeds(const host::TAmounts &sum, const host::TAmounts &returnable) const;
    Refused Fated(const host::TSerialBatchResult &judged) const;
    bool HasSerial(const EnterRow &row) const;
    int SameRow(int valueId, const host::TAmounts &amounts) const;
    TEnterGoodDetail_Rec Record(const EnterRow &row, int valueId) const;

    host::Host &m_host;
    TSerial_DM &m_data;
    const host::TDocumentLine &m_line;
    int m_serialPlace;
    std::function<QString(AmountPart)> m_captions;
};

/// The amounts of the current row, those of what may be returned, or of the row at a place.
host::TAmounts RowAmounts(const host::Dataset &rows, int row, const QString &suffix = {});

} // namespace good_detail
