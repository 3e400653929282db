#include "screens/opening_stock/opening_details.h"

#include "rules/unit_arithmetic.h"

#include <algorithm>

using namespace Qt::StringLiterals;

using host::TDocumentLine;

namespace {

constexpr auto Opening = static_cast<quint8>(host::TOperationType::OpeningStock);

} // namespace

void OpeningDetails::Begin(int goodCode, std::function<bool()> typesAreSaved)
{
    m_good = goodCode;
    m_typesAreSaved = std::move(typesAreSaved);
    m_remembered = 0;
    m_touched = m_changed = false;
}

void OpeningDetails::End()
{
    if (m_touched)
        m_host.detailMovements.GoodDetailsOperation_Discard(Opening, m_good);
    m_touched = m_changed = false;
    m_remembered = 0;
}

bool OpeningDetails::Offered() const
{
    return m_entry && m_host.settings.SettingRecord().GoodDetails;
}

TDocumentLine OpeningDetails::Line(int row, int store) const
{
    TDocumentLine line;
    line.GoodCode = line.OperationCode = m_good;
    line.StoreCode = store;
    line.UnitType = 0;
    line.OperationType = Opening;
    line.OperationRow = row;
    return line;
}

bool OpeningDetails::HasTypes() const
{
    const host::TDetailValues details = m_host.detailValues.DetailsOf(m_good);
    return std::any_of(details.DetailIDs.cbegin(), details.DetailIDs.cend(), [](int id) { return id != 0; });
}

QSet<int> OpeningDetails::Rows() const
{
    const QList<int> rows = m_host.detailMovements.EnterGoodDetails_Totals(Opening, m_good).keys();
    return {rows.cbegin(), rows.cend()};
}

std::optional<goods::UnitAmounts> OpeningDetails::Enter(const goods::OpeningGood &good, int row, int store,
                                                        const QString &storeName, const goods::UnitAmounts &typed)
{
    if (!m_typesAreSaved()) {
        m_host.messages.ShowMessage(
            u"کاربر گرامی جزئیات کالا هنوز ذخیره نشده است؛ نخست کالا را ذخیره کنید و سپس جزئیات مقدار را وارد نمایید"_s,
            host::MessageIcon::Warning);
        return std::nullopt;
    }
    if (!HasTypes()) {
        m_host.messages.ShowMessage(u"کاربر گرامی برای این کالا هیچ جزییات انتخاب نشده است"_s,
                                    host::MessageIcon::Warning);
        return std::nullopt;
    }
    DetailEntryRequest request{Line(row, store), good.name, storeName, good.unit1Name, good.unit2Name, {}};
    if (typed.first != 0 || typed.second != 0)
        request.wanted = host::TAmounts{typed.first, typed.second};
    m_touched = true;
    const std::optional<host::TAmounts> entered = m_entry(request);
    if (!entered)
        return std::nullopt;
    m_changed = true;
    const goods::Quantity first = entered->Amount1;
    if (good.twoUnits)
        return goods::UnitAmounts{first, entered->Amount2};
    return goods::UnitAmounts{first, good.formula > 0 ? goods::SplitTotal(first, good.formula).big : 0};
}

bool OpeningDetails::AskStore() const
{
    return m_host.messages.Confirm(host::message::MoveDetailsToStore, {});
}

void OpeningDetails::ChangeStore(int row, int store, int newStore)
{
    m_touched = m_changed = true;
    m_host.detailMovements.ChangeStore(Line(row, store), newStore);
}

void OpeningDetails::Remember(int row)
{
    if (m_remembered == row)
        return;
    m_host.detailMovements.EnterGoodDetails_Remember(Line(row, 0));
    m_remembered = row;
    m_touched = true;
}

void OpeningDetails::Restore()
{
    if (m_remembered != 0)
        m_host.detailMovements.EnterGoodDetails_Restore(Line(m_remembered, 0));
    m_remembered = 0;
}

void OpeningDetails::KeepRows(const QString &rows)
{
    m_host.detailMovements.GoodDetailsOperation_KeepLines(Opening, m_good, rows);
}
