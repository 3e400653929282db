#pragma once

#include "desk/services/detail_desk.h"
#include "host/services/detail_movement_service.h"
#include "host/services/detail_value_service.h"

namespace desk {

/// The details on lines of documents, over the working tables of the desk and the detail ledger.
///
/// A line that was kept has a row without a detail value beside its rows, so that a line whose details were all taken
/// away is told from one that nobody opened. Kept rows have Tmp = 0, those of an open exit screen Tmp = 1. What is
/// noted of a line, in case that its editor is given up, stands under the desk's number turned negative.
class DetailMovements : public host::DetailMovementService
{
public:
    DetailMovements(DetailDesk &desk, host::DetailValueService &values);

    void EnterGoodDetails_Load(const QString &workingTable, const host::TDocumentLine &line) override;
    void EnterGoodDetails_Keep(const QString &workingTable, const host::TDocumentLine &line) override;
    QHash<int, host::TAmounts> EnterGoodDetails_Totals(quint8 operationType, int operationCode) override;
    void EnterGoodDetails_Remember(const host::TDocumentLine &line) override;
    void EnterGoodDetails_Restore(const host::TDocumentLine &line) override;
    void ExitGoodDetails_Fill(const host::TDocumentLine &line) override;
    QString ExitGoodDetails_Condition(const host::TDocumentLine &line) override;
    int ExitGoodDetails_FindRow(const host::TDocumentLine &line, const QString &serial) override;
    void ExitGoodDetails_Keep(const host::TDocumentLine &line) override;
    void ExitGoodDetails_Clear(const host::TDocumentLine &line) override;
    void ExitGoodDetails_Edit(quint8 operationType, int operationCode) override;
    void ExitGoodDetails_DeleteAll(quint8 operationType, int operationCode) override;
    QList<int> ReturnedDetailValues(const host::TDocumentLine &line) override;
    bool IsReturned(const host::TDocumentLine &line, int detailValueId) override;
    std::optional<host::TAmounts> Returnable(const host::TDocumentLine &line, int detailValueId) override;
    bool ChangeStore(const host::TDocumentLine &line, int newStore) override;
    QList<host::TDetailRefusal> GoodDetailsOperation_Save(quint8 operationType, int operationCode) override;
    QList<host::TDetailRefusal> GoodDetailsOperation_Delete(quint8 operationType, int operationCode,
                                                            int operationRow) override;
    void GoodDetailsOperation_Discard(quint8 operationType, int operationCode) override;
    std::optional<host::TAmounts> ExitGoodDetails_Take(const host::TDocumentLine &line, int detailValueId) override;
    std::optional<host::TAmounts> EnterGoodDetails_Return(const host::TDocumentLine &line, int detailValueId) override;
    int RowsOfLine(const host::TDocumentLine &line) override;
    QString DetailsOfLine(const host::TDocumentLine &line) override;
    void GoodDetailsOperation_KeepLines(quint8 operationType, int operationCode, const QString &rows) override;
    QList<host::TDetailRefusal> GoodDetailsOperation_Transfer(quint8 outType, quint8 inType, int operationCode,
                                                              int toStore) override;

    /// A SELECT of what the store has for the line, by DetailValueID: the ledger without the line's own rows, and
    /// instead of rows that other lines of the document have saved what they have kept since.
    QString OnHand(const host::TDocumentLine &line, int detailValueId = 0);
    /// Puts the values of the refused details into the refusals.
    void Describe(QList<host::TDetailRefusal> &refusals);

private:
    QString Mine(const QString &key);
    bool IsKept(const QString &table, const host::TDocumentLine &line);
    void KeepSavedEntries(const host::TDocumentLine &line, const QString &condition);
    void KeepSavedExits(const QString &condition);
    std::optional<host::TAmounts> KeptAmounts(const QString &table, const host::TDocumentLine &line);
    QString Noted(const QString &key);
    void Run(const QString &text);
    void MarkKept(const QString &table, const host::TDocumentLine &line);
    QString OfNamedDocument(const host::TDocumentLine &line, const QString &onHand);
    QString Chosen(const host::TDocumentLine &line);
    void Touch(const QString &rows);
    QList<host::TDetailRefusal> Refusals(quint8 operationType, int operationCode);
    void HoldAnswered(quint8 operationType, const QString &entered, const QString &chosen);
    void NoteDropped(const QString &rows);
    void DeleteDropped();
    void MakeMissingValues(const host::TDocumentLine &line);
    QString ReturnsBeyondCombination(quint8 operationType, int operationCode);
    QString ReturnsBeyondDocument(quint8 operationType, int operationCode);

    DetailDesk &m_desk;
    host::DetailValueService &m_values;
    QSqlDatabase m_connection;
};

} // namespace desk
