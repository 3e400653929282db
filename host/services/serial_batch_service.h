#pragma once

#include "host/services/good_detail_records.h"

#include <functional>

namespace host {

/// Serials that are plain numbers, both ends included.
struct TSerialRange
{
    /// More than a lorry brings; what is meant is a slip of the keyboard.
    static constexpr qint64 MostNumbers = 100000;

    qint64 From = 0;
    qint64 To = -1;

    bool IsEmpty() const { return To < From; }
    bool IsTooLong() const { return !IsEmpty() && Distance() >= quint64(MostNumbers); }
    /// Between the ends, which may be as far apart as 64 bits are.
    quint64 Distance() const { return quint64(To) - quint64(From); }
};

/// Serials to be entered on a line, all with the same other details and amounts.
struct TSerialBatch
{
    QString WorkingTable; ///< of the enter screen
    TDocumentLine Line;
    TDetailValues Details; ///< the first is the serial's; its value counts when there is no range
    TAmounts Amounts;      ///< of each serial
    std::optional<TSerialRange> Range;
    /// Told after each step of writing; false gives the batch up, and nothing of it stays. None: nobody waits for it.
    std::function<bool(int done, int steps)> Progress = {};
};

/// What becomes of a serial, in the order in which it is asked.
enum class TSerialFate : quint8 {
    InLine = 1,     ///< among the rows of this line already
    InStock,        ///< on hand, or entered on a document that is not saved
    OtherValues,    ///< on record with other details, or for another good
    NotSold,        ///< return: nothing with these details was sold
    NotReturnable,  ///< return: this serial was not sold on the document
    NothingOnHand,  ///< return: all that was sold of it has come back
    NotSoldAmount,  ///< return: more of this serial than was sold
    MoreThanOnHand, ///< return: more with these details than was sold
    Known,          ///< written: on record, not on hand
    New,            ///< written: not seen before
};

/// What became of the serials of a batch; the lists ascend.
struct TSerialBatchResult
{
    struct Left
    {
        QString Serial;
        TSerialFate Fate = TSerialFate::New;
        int WorkingRow = 0; ///< the row that has it, for InLine
    };

    bool TooLong = false; ///< the range was refused, nothing was looked at
    bool Cancelled = false; ///< given up by Progress
    int Written = 0;
    QList<Left> left; ///< those that were not written, and why

    /// The serials left out for one of these reasons, joined by ",".
    HOST_EXPORT QString Listed(std::initializer_list<TSerialFate> fates) const;
};

/// Serials as sets: the number of statements is the same for one and for ten thousand. A range is refused whole when
/// it is too long. All in one transaction: an error leaves nothing behind. Throws DatabaseError.
class SerialBatchService
{
public:
    virtual ~SerialBatchService() = default;

    /// Judges every serial and writes those that may be entered: values, their details, and rows of the working table
    /// in the order of their numbers.
    virtual TSerialBatchResult EnterSerials(const TSerialBatch &batch) = 0;
    /// The same without writing: what would become of them. Written counts those that would be.
    virtual TSerialBatchResult JudgeSerials(const TSerialBatch &batch) = 0;
    /// Of the rows of the exit screen, those whose serial is the plain decimal text of a number in the range go out
    /// with these amounts, as far as there is that much. Returns how many; nothing when the range is too long.
    virtual std::optional<int> ChooseSerials(const TDocumentLine &line, const TSerialRange &range,
                                             const TAmounts &amounts) = 0;
};

/// The range between two typed ends: numbers in any digits, within 64 bits. Nothing when one is no number.
HOST_EXPORT std::optional<TSerialRange> SerialRange(QStringView from, QStringView to);

} // namespace host
