#pragma once

#include "data/goods/good_dm.h"
#include "host/controls/numeric_edit.h"
#include "rules/opening_values.h"
#include "rules/unit_arithmetic.h"
#include "screens/good_editor/refusals.h"

#include <QObject>

namespace Ui {
class GeneralPage;
}

/// Units, formula and opening stock on the first tab, with the rules between them.
///
/// The opening stock is typed in one of three ways (`OpeningEntry`); `Values()` is what it comes to in each of them.
class OpeningFields : public QObject
{
    Q_OBJECT

public:
    /// `ui` belongs to the page, which is `parent`.
    OpeningFields(Ui::GeneralPage &ui, host::Host &host, TGood_DM &data, QObject *parent);

    void Clear();
    void Show(const TGoodInfoRec &rec);
    void Store(TGoodInfoRec &rec) const;

    /// As typed now.
    goods::OpeningValues Values() const;
    /// As they were when the good was shown.
    const goods::OpeningValues &Loaded() const { return m_loaded; }
    int StoreCode() const;
    /// The quantities, or the store of their row, are others than they were.
    bool RowChanged() const;
    /// Where the opening row stood; 0 when there was none. It need not be the good's default store.
    int LoadedRowStore() const { return m_rowStore; }
    void SetLoadedRowStore(int store) { m_rowStore = store; }
    /// Where it stands now: with the good's store only when the user changed that.
    int RowStore() const;

    /// Shows the totals of several stores, which are entered elsewhere.
    void ShowTotals(goods::Quantity first, goods::Quantity second);
    /// The opening stock is fixed (period closed, voucher lines) or entered in several stores.
    void SetLocked(bool locked, bool severalStores);
    bool SeveralStores() const { return m_severalStores; }
    /// Details were entered for the opening stock: the quantities come from them.
    void SetDetailsEntered(bool entered);

    /// Computes what leaving the focused quantity or price would, and finds the store that is typed, so that a save
    /// from inside a field sees what the user means.
    void TakeTyped();
    /// Refuses when a typed code is no unit or store.
    goods::Refused LeaveFocusedPicker();
    /// Where big and small units are typed, they become the quantities and the price of the row.
    void AdoptBigAndSmall();
    void ZeroWhenEmpty();

    goods::Refused CheckUnit() const;
    goods::Refused CheckPrice() const;
    goods::Refused CheckStore();
    goods::Refused CheckFormula() const;
    goods::Refused CheckSecondQuantity() const;
    /// Where messages on the quantity belong.
    QWidget *QuantityEdit() const;

private:
    void BindPickers();
    void BindLeaveRules();
    bool FormulaOn() const;
    goods::Quantity Formula() const;
    goods::OpeningEntry Entry() const;
    goods::Quantity HiddenSecond() const;
    bool QuantitiesChanged() const;
    void Begin(const goods::OpeningValues &values, int store);
    void ShowEntry();
    void ShowUnitNames();
    void ShowFormulaHints();
    void FormulaClicked(bool on);
    void SplitIntoBigAndSmall();
    void ShowParts(const goods::SplitQuantity &parts);
    void CopyBigAndSmall();

    void LeaveFormula();
    void LeaveFirst();
    void LeaveSecond();
    void LeaveParts();
    void LeaveTotal();
    void LeaveSmallPrice();
    void LeaveBigPrice();

    Ui::GeneralPage &m_ui;
    host::Host &m_host;
    TGood_DM &m_data;
    goods::OpeningValues m_loaded;
    int m_loadedStore = 0;
    int m_rowStore = 0;
    bool m_locked = false;
    bool m_severalStores = false;
    bool m_detailsEntered = false;
    bool m_typedByHand = false;    ///< quantity 1, since it last followed from quantity 2
    bool m_partsTyped = false;     ///< quantities in big and small units, or their formula
    bool m_partPriceTyped = false; ///< a price of the big or the small unit
    std::vector<host::NumericEdit *> m_ruled;
};
