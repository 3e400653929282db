#pragma once

#include "host/services/good_detail_records.h"

#include <QHash>

namespace host {

/// A detail value that a document may not move as it says.
struct TDetailRefusal
{
    enum class Reason {
        Gone,          ///< less than nothing would be left of it in the store
        Repeated,      ///< a serial of which more would be on hand than one entry brought
        NotOfDocument, ///< a return of more than its document moved
        Returned,      ///< less than what returns of this document have taken back
        Used,          ///< a part of a division that something was done with since; the text names by what
    };
    Reason reason = Reason::Gone;
    int DetailValueID = 0;
    int GoodCode = 0;
    int StoreCode = 0; ///< 0 where the store does not matter
    QString Text;      ///< its values for the user, joined by blanks
};

/// The details on the lines of documents: working rows that belong to this desk while a document is open, and the
/// ledger once it is saved. Working rows are told apart by desk, operation type, code, row and store; those of a desk
/// that has not been heard of for ten minutes keep nothing from others.
///
/// A document's editor calls for each line the screen (which loads and keeps), and in its own transaction
/// `GoodDetailsOperation_Save` once for all lines; `GoodDetailsOperation_Discard` when it is closed without saving.
/// All throw DatabaseError.
class DetailMovementService
{
public:
    virtual ~DetailMovementService() = default;

    /// Fills the empty working table of the enter screen with the rows of the line: as they were kept last, otherwise
    /// as they were saved. On a return they carry what may still be returned.
    virtual void EnterGoodDetails_Load(const QString &workingTable, const TDocumentLine &line) = 0;
    /// Keeps the rows of the working table for the line until its document is saved.
    virtual void EnterGoodDetails_Keep(const QString &workingTable, const TDocumentLine &line) = 0;
    /// What came in on each line of a document, by its row: as it was kept last, otherwise as it was saved. Lines
    /// without details are not in it.
    virtual QHash<int, TAmounts> EnterGoodDetails_Totals(quint8 operationType, int operationCode) = 0;
    /// Notes what this desk has kept for the line in whatever store, in place of what it noted before, for an editor of
    /// the line that may be given up.
    virtual void EnterGoodDetails_Remember(const TDocumentLine &line) = 0;
    /// Puts back what was noted.
    virtual void EnterGoodDetails_Restore(const TDocumentLine &line) = 0;

    /// Makes the rows among which the exit screen chooses: what is on hand in the store for this line, with what the
    /// line takes already, as kept last or otherwise as saved.
    virtual void ExitGoodDetails_Fill(const TDocumentLine &line) = 0;
    /// The condition that finds these rows in `GoodDetailKardexExit_Temp`.
    virtual QString ExitGoodDetails_Condition(const TDocumentLine &line) = 0;
    /// The row of the exit screen whose first detail is this text; 0 when there is none.
    virtual int ExitGoodDetails_FindRow(const TDocumentLine &line, const QString &serial) = 0;
    /// Keeps what was chosen for the line until its document is saved.
    virtual void ExitGoodDetails_Keep(const TDocumentLine &line) = 0;
    /// Forgets the rows of the exit screen; what was kept before stays.
    virtual void ExitGoodDetails_Clear(const TDocumentLine &line) = 0;
    /// Keeps what the lines of a saved operation took, as if each had been opened and kept.
    virtual void ExitGoodDetails_Edit(quint8 operationType, int operationCode) = 0;
    /// Forgets every row that this desk has of an operation, kept or not.
    virtual void ExitGoodDetails_DeleteAll(quint8 operationType, int operationCode) = 0;

    /// The detail values of a line's saved rows that a return of its document has taken back: of a sale or a purchase,
    /// for nothing else is returned.
    virtual QList<int> ReturnedDetailValues(const TDocumentLine &line) = 0;
    virtual bool IsReturned(const TDocumentLine &line, int detailValueId) = 0;
    /// What may still be returned of a detail value: sold less returned, of the line's foreign document when it names
    /// one, without what the line itself returns. Nothing when it was not sold there; zeros when all has come back.
    virtual std::optional<TAmounts> Returnable(const TDocumentLine &line, int detailValueId) = 0;

    /// Another store for a line. Entered rows go along; rows chosen in the former store are forgotten, because the new
    /// one has others: then the answer is true.
    virtual bool ChangeStore(const TDocumentLine &line, int newStore) = 0;

    /// Writes the kept lines of a document to the ledger, in place of what it had of them. Runs inside the document's
    /// transaction. What comes back must be told to the user and nothing committed.
    virtual QList<TDetailRefusal> GoodDetailsOperation_Save(quint8 operationType, int operationCode) = 0;
    /// Takes the movements of a document, or of one row of it, off the ledger. Refusals as above.
    virtual QList<TDetailRefusal> GoodDetailsOperation_Delete(quint8 operationType, int operationCode,
                                                              int operationRow = 0) = 0;
    /// One more detail value on a line that goes out, all that the store has of it for the line. Answers what the line
    /// takes then; nothing when there is none of it to take or the line has it already.
    virtual std::optional<TAmounts> ExitGoodDetails_Take(const TDocumentLine &line, int detailValueId) = 0;
    /// The same for a line that returns what was sold: all of it that may still be returned.
    virtual std::optional<TAmounts> EnterGoodDetails_Return(const TDocumentLine &line, int detailValueId) = 0;
    /// How many rows a line has: as kept, otherwise as saved.
    virtual int RowsOfLine(const TDocumentLine &line) = 0;
    /// A SELECT with the column DetailValueID, a row for each row of the line: as this desk has kept them, otherwise as
    /// saved.
    virtual QString DetailsOfLine(const TDocumentLine &line) = 0;
    /// The document has only these lines: what was kept or saved of any other goes with the next save. `rows` is a
    /// SELECT with the columns OperationRow and GoodCode: what a line had of another good goes, too.
    virtual void GoodDetailsOperation_KeepLines(quint8 operationType, int operationCode, const QString &rows) = 0;
    /// What the saved rows of an operation took out comes in at another store, under another operation type: the second
    /// half of a transfer, in place of what it brought there before. Refusals as above.
    virtual QList<TDetailRefusal> GoodDetailsOperation_Transfer(quint8 outType, quint8 inType, int operationCode,
                                                                int toStore) = 0;
    /// Forgets what this desk has kept for a document.
    virtual void GoodDetailsOperation_Discard(quint8 operationType, int operationCode) = 0;
};

} // namespace host
