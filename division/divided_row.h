#pragma once

#include "division/part_amounts.h"
#include "gooddetail/serial_dm.h"
#include "host/data/dataset.h"
#include "host/host.h"

/// The source row of a division that is to be divided, or the one that was.
struct DivisionRowOpening
{
    int DivisionCode = 0;
    int DivisionRow = 0;
    int DetailValueID = 0;
    int StoreCode = 0;
    int GoodCode = 0;
    host::TFormMode Mode = host::TFormMode::New; ///< Edit: the accepted row and its parts are loaded
};

namespace division {

/// A unit that is being divided, without widgets: what it is, what is taken of it, and its parts in the working table
/// of the connection. Every change of a part is written there at once and stays until it is kept or given up.
class DividedRow
{
public:
    /// `host` outlives the row.
    explicit DividedRow(host::Host &host);

    /// Forgets the former row and reads this one with copies of its accepted parts. False when the good or the unit is
    /// gone; nothing is open then. Throws DatabaseError.
    bool Open(const DivisionRowOpening &opening);
    bool IsOpen() const { return m_open; }
    bool IsNew() const { return m_opening.Mode == host::TFormMode::New; }
    /// The good, its store, the unit with its details and what of it is on hand; what was taken and the remark.
    const host::TDivisionRow &Row() const { return m_row; }
    const TLineGood_Rec &Good() const { return m_good; }
    int UnitType() const { return m_unitType; }
    const good_detail::UnitRatio &Ratio() const { return m_ratio; }
    goods::DividedStock Stock() const { return StockOf(m_unitType, m_row.Source.OnHand); }

    /// The parts, as they stand in the working table.
    host::Dataset Parts_QRY;
    host::TDivisionPart PartAt(int place) const;
    /// The part with this row number; nothing when there is none.
    std::optional<host::TDivisionPart> Part(int operationRow) const;
    /// What all parts come to but the one with this row number.
    goods::UnitAmounts Sum(int without = 0) const;

    /// Whether nothing was done since with the part; 0: with any part of the row.
    bool MayChange(int operationRow) const;
    /// Writes a new part, or the one with the row number `edited`, which may join an equal one. Answers the row number
    /// under which it stands.
    int Store(const goods::DividedPieces &pieces, bool waste, int edited);
    void Remove(int operationRow);
    void RemoveAll();

    /// Leaves the row and its parts in the working tables as accepted, in place of what it was before.
    void Keep(const goods::UnitAmounts &typed, const QString &comment);
    /// Forgets what was not kept.
    void GiveUp();

private:
    bool ReadSource();
    int EqualPart(const goods::DividedPieces &pieces, bool waste) const;
    host::TAmounts Joined(const host::TAmounts &a, const host::TAmounts &b) const;
    void ReadParts();

    host::Host &m_host;
    host::DetailDivisionService &m_service;
    TSerial_DM m_data;
    DivisionRowOpening m_opening;
    host::TDivisionRow m_row;
    TLineGood_Rec m_good;
    int m_unitType = good_detail::OneUnit;
    good_detail::UnitRatio m_ratio;
    bool m_open = false;
};

} // namespace division
