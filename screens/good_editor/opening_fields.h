#pragma once

#include "data/goods/good_dm.h"
#include "host/controls/numeric_edit.h"
#include "host/screens/refusals.h"
#include "rules/opening_row_text.h"
#include "rules/opening_values.h"
#include "rules/quantity_entry.h"

#include <QObject>

namespace Ui {
class GeneralPage;
}

/// Units, formula, store and prices of the opening stock on the first tab, with the rules between them; its quantities
/// are typed in `Quantities`.
///
/// The opening stock is typed in one of three ways (`QuantityEntry`); `Values()` is what it comes to in each of them.
class OpeningFields : public QObject
{
    Q_OBJECT

public:
    /// `ui` belongs to the page, which is `parent`.
    OpeningFields(Ui::GeneralPage &ui, host::Host &host, QObject *parent);

    void Clear();
    void Show(const TGoodInfoRec &rec);
    void Store(TGoodInfoRec &rec) const;

    /// As typed now.
    goods::OpeningValues Values() const;
    /// As they were when the good was shown.
    goods::OpeningValues Loaded() const;
    int StoreCode() const;
    /// The quantities, or the store of their row, are others than they were.
    bool RowChanged() const;
    /// Says where the only opening row stands, 0 when there is none. It need not be the good's default store.
    void SetRowStore(int store);
    /// Where the row is to stand now: with the good's store only when the user changes that.
    int RowStore() const;
    /// The good as the screens of its opening rows know it; its code and name are the page's.
    goods::OpeningGood Good() const;

    /// Shows the totals of several stores, which are entered elsewhere.
    void ShowTotals(const goods::UnitAmounts &totals);
    /// The rows were entered on their list: shows what they come to, a change where it is another amount.
    void TakeTotals(const goods::UnitAmounts &totals);
    /// A good without store takes this one.
    void SuggestStore(int store);
    /// The opening stock is fixed (period closed, voucher lines) or entered in several stores.
    void SetLocked(bool locked, bool severalStores);
    /// The unit must be known before the list of opening rows opens.
    host::Refused CheckUnitForRows();
    bool SeveralStores() const { return m_severalStores; }
    /// Details were entered for the opening stock: the quantities come from them.
    void SetDetailsEntered(bool entered);
    bool DetailsEntered() const;
    void SetDetailButtons(bool shown);
    void ShowStore(int store);
    QWidget *StoreEdit() const;

    /// Computes what leaving the focused quantity or price would, and finds the store that is typed, so that a save
    /// from inside a field sees what the user means.
    void TakeTyped();
    /// Refuses when a typed code is no unit or store.
    host::Refused LeaveFocusedPicker();
    /// Where big and small units are typed, they become the quantities and the price of the row.
    void AdoptBigAndSmall();
    void ZeroWhenEmpty();

    host::Refused CheckUnit() const;
    host::Refused CheckPrice() const;
    host::Refused CheckStore();
    host::Refused CheckFormula() const;
    host::Refused CheckSecondQuantity() const;
    /// Where messages on the quantity belong.
    QWidget *QuantityEdit() const;

signals:
    /// The user chose another store.
    void StoreChanged();
    /// The button of a quantity was pressed, or its key.
    void DetailsWanted();

private:
    void BindPickers();
    void PlaceQuantities();
    void BindPrices();
    bool FormulaOn() const;
    goods::Quantity Formula() const;
    goods::QuantityEntry Entry() const;
    void Begin(const goods::OpeningValues &values, int store);
    void ShowUnits();
    void ShowUnitNames();
    void ShowPriceHint();
    void FormulaClicked(bool on);
    void SplitPrice();
    void AdoptPartPrice();

    void LeaveFormula();
    void LeaveSmallPrice();
    void LeaveBigPrice();

    Ui::GeneralPage &m_ui;
    host::Host &m_host;
    goods::Quantity m_loadedPrice = 0;
    int m_loadedStore = 0;
    int m_rowStore = 0;
    bool m_locked = false;
    bool m_priceFixed = false;
    bool m_severalStores = false;
    bool m_partPriceTyped = false; ///< a price of the big or the small unit
};
