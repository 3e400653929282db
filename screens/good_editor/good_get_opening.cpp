#include "screens/good_editor/details_page.h"
#include "screens/good_editor/general_page.h"
#include "screens/good_editor/good_get.h"
#include "screens/opening_stock/first_asset_list.h"
#include "ui_general_page.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

// The opening stock of the good: in one store from the fields of the first tab, in several from the list.

using host::TFormMode;
using host::TOperationType;

void TGood_Get_FRM::BindOpening()
{
    Bind(m_general->OpeningRowsButton(), {}, [this] { OpenOpeningRows(); });
    connect(&m_general->Opening(), &OpeningFields::DetailsWanted, this,
            [this] { Command(Title(), [this] { EnterOpeningDetails(); }); });
    connect(&m_general->Opening(), &OpeningFields::StoreChanged, this,
            [this] { Command(Title(), [this] { OpeningStoreChanged(); }); });
}

void TGood_Get_FRM::BeginOpening(int good)
{
    m_openingFixed = m_host.vouchers.IsConstStartPeriod() || (!IsNew() && m_data.Good_HasSanadDetail(good));
    m_general->CodeEdit()->setReadOnly(!IsNew());
    OpeningFields &opening = m_general->Opening();
    m_openingDetails.Begin(good, [this] { return !IsNew() && m_details->IsAsLoaded(); });
    opening.SetDetailButtons(m_openingDetails.Offered() && Mode() != TFormMode::Review);
    if (Mode() == TFormMode::Review) {
        opening.SetLocked(m_openingFixed, false);
    } else {
        m_openingRows.Begin(good);
        ApplyOpeningLock();
    }
    opening.SetDetailsEntered(!IsNew() && m_host.goodDetails.EnterGoodDetails_Get(good, TOperationType::OpeningStock));
    SetDetailStore(m_openingRows.OnlyStore());
}

void TGood_Get_FRM::ApplyOpeningLock()
{
    OpeningFields &opening = m_general->Opening();
    int rowStore = 0;
    const bool severalStores = !m_data.FirstAsset_NotIsMultiStore(m_openingRows.Key(), rowStore);
    opening.SetRowStore(rowStore);
    if (severalStores)
        opening.ShowTotals(m_openingRows.Totals());
    opening.SetLocked(m_openingFixed, severalStores);
}

goods::OpeningGood TGood_Get_FRM::OpeningGood() const
{
    goods::OpeningGood good = m_general->Opening().Good();
    good.code = m_general->Code();
    good.name = m_general->FullName();
    return good;
}

void TGood_Get_FRM::TypedRowIntoCopy()
{
    OpeningFields &opening = m_general->Opening();
    const goods::OpeningValues typed = opening.Values();
    if (m_openingFixed || opening.SeveralStores() || (!opening.RowChanged() && !m_openingRows.Rows().isEmpty()))
        return;
    const int store = opening.RowStore();
    const bool moved = m_openingRows.OnlyStore() != 0 && store != m_openingRows.OnlyStore();
    // A row deleted on the list had the number of the first one, and its details.
    const bool numbered = m_openingRows.Rows().isEmpty() && store != 0 && m_openingRows.NewNumber() != 1;
    // The row of an editor with one store keeps its store and knows no second quantity alone; both may be typed.
    if (moved || numbered || (typed.first == 0 && typed.second != 0 && store != 0)) {
        m_openingRows.SetOnlyRow(store, {typed.first, typed.second});
        return;
    }
    m_data.FirstAsset_MultiStore(m_openingRows.Key(), store == 0 ? QString() : QString::number(store), typed.first,
                                 typed.second);
    m_openingRows.Refresh();
}

void TGood_Get_FRM::OpenOpeningRows()
{
    OpeningFields &opening = m_general->Opening();
    opening.TakeTyped();
    opening.AdoptBigAndSmall();
    if (Refuse(opening.CheckUnitForRows()))
        return;
    const bool typed = opening.RowChanged();
    const goods::OpeningValues values = opening.Values();
    // A quantity without a store would be no row: the list would come back without it.
    const bool nowhere = typed && !m_openingFixed && !opening.SeveralStores() && opening.RowStore() == 0 &&
                         (values.first != 0 || values.second != 0);
    if (Refuse(host::When(nowhere, host::Required(opening.StoreEdit(), u"کد انبار"_s))))
        return;
    TypedRowIntoCopy();
    OpeningRowsContext context{m_data, m_openingRows, m_openingDetails, OpeningGood(),
                               !IsNew() && m_data.Good_HasSanadDetail(m_general->Code())};
    TFirstAsset_List_FRM list(m_host, context);
    list.SetFormTheme();
    const auto before = m_openingRows.Rows();
    list.ShowModally();
    const auto &after = m_openingRows.Rows();
    if (!typed && std::equal(before.begin(), before.end(), after.begin(), after.end(), goods::SameOpeningRow))
        return;
    ShowOpeningRows();
    SetIsSaved(false);
}

void TGood_Get_FRM::ShowOpeningRows()
{
    OpeningFields &opening = m_general->Opening();
    int rowStore = 0;
    const bool severalStores = !m_data.FirstAsset_NotIsMultiStore(m_openingRows.Key(), rowStore);
    opening.TakeTotals(m_openingRows.Totals());
    opening.SuggestStore(m_openingRows.Rows().value(0).StoreCode);
    opening.SetRowStore(rowStore);
    opening.SetLocked(m_openingFixed, severalStores);
    SetDetailStore(m_openingRows.OnlyStore());
    if (!m_openingDetails.Offered())
        return;
    // Details of rows that were deleted on the list are there until the save.
    const QSet<int> entered = m_openingDetails.Rows();
    const auto &rows = m_openingRows.Rows();
    opening.SetDetailsEntered(std::any_of(rows.cbegin(), rows.cend(), [&entered](const TGoodFirstAsset_Rec &row) {
        return entered.contains(row.Radif);
    }));
}

void TGood_Get_FRM::EnterOpeningDetails()
{
    OpeningFields &opening = m_general->Opening();
    opening.TakeTyped();
    opening.AdoptBigAndSmall();
    const int store = opening.RowStore();
    if (Refuse(host::When(store == 0, host::Required(opening.StoreEdit(), u"کد انبار"_s))))
        return;
    const goods::OpeningValues typed = opening.Values();
    const auto found = m_host.entities.Find(host::TSoftwarePart::Stores, store);
    const auto entered = m_openingDetails.Enter(OpeningGood(), m_openingRows.OnlyNumber(), store,
                                                found ? found->Name : QString(), {typed.first, typed.second});
    if (!entered)
        return;
    SetDetailStore(store);
    opening.TakeTotals(*entered);
    opening.SetDetailsEntered(entered->first > 0 || entered->second > 0);
    SetIsSaved(false);
}

void TGood_Get_FRM::SetDetailStore(int store)
{
    m_detailStore = store;
    m_detailPicker = m_general->Opening().StoreCode();
}

void TGood_Get_FRM::OpeningStoreChanged()
{
    OpeningFields &opening = m_general->Opening();
    // Not always the chosen store: with the good's own one again the row is back where it stood.
    const int store = opening.RowStore();
    if (!opening.DetailsEntered() || opening.SeveralStores() || m_detailStore == 0)
        return;
    if (store == m_detailStore) {
        m_detailPicker = opening.StoreCode();
        return;
    }
    if (store == 0 || !m_openingDetails.AskStore()) {
        opening.ShowStore(m_detailPicker);
        return;
    }
    m_openingDetails.ChangeStore(m_openingRows.OnlyNumber(), m_detailStore, store);
    SetDetailStore(store);
}
