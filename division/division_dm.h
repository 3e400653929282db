#pragma once

#include "host/data/dataset.h"
#include "host/host.h"

#include <optional>

/// A part of a row as the sheet of a division prints it.
struct TPrintedPart
{
    int DivisionRow = 0;
    int OperationRow = 0;
    host::TAmounts Amounts;
    bool Waste = false;
};

/// The data of the screens of divisions: the list, and the rows and parts of the one that is edited, which stand in the
/// working tables of the connection.
///
/// It shows no messages; database errors (`host::DatabaseError`) and dates that are none (`host::RefusedText`) are
/// thrown to the screen that called. What writes a division is `division::Save` and `division::Delete`.
class TDivision_DM
{
public:
    /// The host's connections are open and stay so; its services outlive the module.
    explicit TDivision_DM(host::Host &host);

    host::Dataset Division_QRY; ///< the divisions: ID, Code, Date, Comment
    host::Dataset Rows_QRY;     ///< the source rows
    host::Dataset Items_QRY;    ///< the accepted parts of one of them

    // The list -----------------------------------------------------------------------------------------------------

    void OpenList(const host::TDayRange &days);
    /// Whether no part of the division, or of one row of it, has been used since.
    bool MayDelete(int code, int row = 0) const;
    /// By what: a line for each part that was.
    QString UsedBy(int code, int row = 0) const;

    // A division in its editor -------------------------------------------------------------------------------------

    /// One more than the highest code used or reserved, reserved for this desk until `Leave`.
    int NewCode();
    /// The working tables, empty; for a new division.
    void Begin();
    /// Reads a saved division into the working tables and reserves its code. Nothing when there is no such division.
    std::optional<host::TDivisionHeader> Load(int code);
    /// Forgets what stands for the division: working tables, what its rows keep for this desk, its code.
    void Leave(int code);
    /// The statement that finds a saved division.
    static QString RowText(int code);

    /// Opens `Rows_QRY` anew, and `Items_QRY` on the parts of a row.
    void OpenRows();
    void OpenItems(int divisionRow);
    int NextRow() { return m_host.detailDivisions.GetOperationRow(); }
    /// Removes a row with its parts and gives back what it took; the saved division keeps them until it is saved again.
    void DeleteRow(int code, int row);
    /// The accepted parts of all rows, by row.
    QList<TPrintedPart> Parts() const;

private:
    host::Host &m_host;
};
