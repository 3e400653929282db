#pragma once

#include "data/goods/good_opening_stock.h"
#include "host/services/entity_service.h"
#include "rules/quantity_entry.h"

#include <QSet>

#include <functional>

namespace goods {

/// Whether both rows say the same of the stock: store, amounts, remark and number.
bool SameOpeningRow(const TGoodFirstAsset_Rec &a, const TGoodFirstAsset_Rec &b);

/// The working copy of a good's opening rows, of one editor of one desk.
///
/// All desks keep their copies in `GoodFirstAsset`. Each copy stands under a number that is reserved for it as codes
/// are, turned negative: so two desks may work on one good, and what a desk that was killed leaves belongs to no good.
/// Its rows go when another copy takes a number. All operations throw DatabaseError.
class OpeningCopy
{
public:
    /// Both outlive the copy.
    OpeningCopy(OpeningStock &data, host::EntityService &entities) : m_data(data), m_entities(entities) {}

    /// Copies the saved rows of a good; 0 begins without rows, for a good that is not saved yet.
    void Begin(int goodCode);
    /// Drops the working rows.
    void End();
    /// What the working rows stand under in place of the good's code; 0 before the first Begin().
    int Key() const { return -m_number; }

    /// The rows as they were saved when the copy was made, and as they are now.
    const QList<TGoodFirstAsset_Rec> &Saved() const { return m_saved; }
    const QList<TGoodFirstAsset_Rec> &Rows() const { return m_rows; }
    bool IsChanged() const;
    UnitAmounts Totals() const;
    /// The store of the only row; 0 when there is none or more than one.
    int OnlyStore() const { return m_rows.size() == 1 ? m_rows.first().StoreCode : 0; }

    /// A number that no row of this editor has had: details are entered under it, and a row that was deleted must not
    /// hand its own on.
    int NewNumber();
    /// The number of the only row, or that which it would get. For a good that is shown in one store.
    int OnlyNumber() { return m_rows.size() == 1 ? m_rows.first().Radif : NewNumber(); }
    /// A SELECT of the numbers of a good's saved rows, with the columns OperationRow and GoodCode: details stand under
    /// them.
    static QString SavedNumbers(int goodCode);
    /// Numbers of rows that are there no more.
    QList<int> GoneNumbers() const;

    void Insert(const TGoodFirstAsset_Rec &row);
    /// Changes the row of `row.Radif`.
    void Update(TGoodFirstAsset_Rec row);
    /// Deletes this row, and no other desk's.
    void Delete(int number);
    /// As the fields of an editor have it that shows the good in one store; both amounts 0: no row. The row keeps its
    /// number and remark. Inside a transaction that is rolled back the rows are those of before again; the copy
    /// outlives it.
    void SetOnlyRow(int store, const UnitAmounts &amounts);
    /// Reads the rows again after the list changed them.
    void Refresh();

    /// Holds the good for this desk until the transaction of its save ends. Throws when another desk has changed the
    /// saved rows since Begin().
    void CheckSaved(int goodCode);
    /// Makes the working rows the saved ones of the good, inside the transaction of its save. Throws, having written
    /// nothing, when another desk has changed the saved rows since Begin(). `judge` sees both before anything is
    /// written, and throws what it finds wrong.
    void Save(int goodCode, const std::function<void()> &judge = {});

private:
    void TakeNumber();
    /// Behind all numbers that were seen.
    int NextNumber() const;

    OpeningStock &m_data;
    host::EntityService &m_entities;
    int m_number = 0;
    QList<TGoodFirstAsset_Rec> m_saved;
    QList<TGoodFirstAsset_Rec> m_rows;
    QSet<int> m_numbers;      ///< of all rows since Begin()
    bool m_ofNewGood = false; ///< nobody else knows the good, whose rows therefore cannot have changed
    bool m_written = false;   ///< the transaction has just written the working rows: they are as they are here
};

} // namespace goods
