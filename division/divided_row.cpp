#include "division/divided_row.h"

#include "host/data/transaction.h"
#include "rules/unit_arithmetic.h"

using namespace Qt::StringLiterals;

namespace division {

namespace {

constexpr auto Exit = host::TOperationType::DivisionExit;
constexpr int BeingTyped = 1; ///< the state of parts in the working table
constexpr int Accepted = 0;

} // namespace

DividedRow::DividedRow(host::Host &host)
    : Parts_QRY(host.DM.ADOConnection1), m_host(host), m_service(host.detailDivisions), m_data(host)
{}

bool DividedRow::Open(const DivisionRowOpening &opening)
{
    m_open = false;
    m_opening = opening;
    m_row = {};
    m_good = m_data.GetLineGood(opening.GoodCode);
    if (!m_good.Found)
        return false;
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    m_unitType = good_detail::UnitTypeOf(m_good, settings);
    m_ratio = {m_good.Formool, settings.IntegerUnits};
    if (!ReadSource())
        return false;
    m_service.GoodDetailDivisionDetailItemsTemp_Begin(opening.DivisionCode, opening.DivisionRow);
    m_open = true;
    ReadParts();
    return true;
}

bool DividedRow::ReadSource()
{
    if (!IsNew()) {
        const auto row = m_service.GoodDetailDivisionDetailTemp_Row(m_opening.DivisionRow);
        if (row)
            m_row = *row;
        return row.has_value();
    }
    const host::TDocumentLine line{m_opening.GoodCode,
                                   m_opening.StoreCode,
                                   static_cast<quint8>(m_unitType),
                                   static_cast<quint8>(Exit),
                                   false,
                                   m_opening.DivisionCode,
                                   m_opening.DivisionRow,
                                   0};
    const auto source = m_service.GoodDetailDivision_Source(line, m_opening.DetailValueID);
    const auto store = m_data.GetStoreName(m_opening.StoreCode);
    if (!source || !store)
        return false;
    m_row = {m_opening.DivisionCode, m_opening.DivisionRow, *source, *store, m_good.Name, {}, {}};
    return true;
}

void DividedRow::ReadParts()
{
    m_service.GoodDetailDivisionDetailItems_Get(Parts_QRY, m_opening.DivisionRow, BeingTyped);
}

host::TDivisionPart DividedRow::PartAt(int place) const
{
    const auto number = [&](const char16_t *field) {
        return host::QuantityFromText(Parts_QRY.FieldAt(place, QString::fromUtf16(field)).toString());
    };
    host::TDivisionPart part;
    part.DivisionCode = m_opening.DivisionCode;
    part.DivisionRow = m_opening.DivisionRow;
    part.OperationRow = Parts_QRY.FieldAt(place, u"OperationRow").toInt();
    part.Amounts = {number(u"Amount1"), number(u"Amount2"), number(u"Amount1"),
                    number(u"Length"),  number(u"Width"),   number(u"Amount3")};
    part.Waste = Parts_QRY.FieldAt(place, u"Waste").toBool();
    return part;
}

std::optional<host::TDivisionPart> DividedRow::Part(int operationRow) const
{
    for (int place = 0; place < Parts_QRY.RecordCount(); ++place)
        if (Parts_QRY.FieldAt(place, u"OperationRow").toInt() == operationRow)
            return PartAt(place);
    return std::nullopt;
}

goods::UnitAmounts DividedRow::Sum(int without) const
{
    goods::UnitAmounts sum;
    for (int place = 0; place < Parts_QRY.RecordCount(); ++place) {
        const host::TDivisionPart part = PartAt(place);
        if (part.OperationRow == without)
            continue;
        const goods::UnitAmounts amounts = AmountsIn(m_unitType, part.Amounts);
        sum = {goods::RoundedQuantity(sum.first + amounts.first), goods::RoundedQuantity(sum.second + amounts.second)};
    }
    return sum;
}

bool DividedRow::MayChange(int operationRow) const
{
    return m_service.CheckGoodDetailDivisionDelete(m_opening.DivisionCode, m_opening.DivisionRow, operationRow);
}

int DividedRow::EqualPart(const goods::DividedPieces &pieces, bool waste) const
{
    const int row = m_opening.DivisionRow;
    switch (DividedByOf(m_unitType)) {
    case goods::DividedBy::Packages:
        return m_service.GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amount3(row, pieces.amount, waste);
    case goods::DividedBy::Area:
        return m_service.GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_LengthWidth(row, pieces.length,
                                                                                           pieces.width, waste);
    default:
        return m_service.GoodDetailDivisionDetailItemsTemp_Get_OperationRow_By_Amounts(row, pieces.amount,
                                                                                       pieces.second, waste);
    }
}

/// Amounts are added and not computed anew: rounding must not make more of the parts than was taken.
host::TAmounts DividedRow::Joined(const host::TAmounts &a, const host::TAmounts &b) const
{
    host::TAmounts sum = good_detail::Added(m_unitType, a, b);
    if (m_unitType != good_detail::Packed)
        sum.Amount3 = goods::RoundedQuantity(a.Amount3 + b.Amount3);
    return sum;
}

int DividedRow::Store(const goods::DividedPieces &pieces, bool waste, int edited)
{
    host::TDivisionPart part{m_opening.DivisionCode, m_opening.DivisionRow, edited,
                             AmountsOfPart(m_unitType, pieces, m_ratio), waste};
    host::Transaction transaction(m_host.DM.ADOConnection1);
    const int equal = EqualPart(pieces, waste);
    const auto other = equal != edited && equal != 0 ? Part(equal) : std::nullopt;
    if (other) {
        part.OperationRow = equal;
        part.Amounts = Joined(other->Amounts, part.Amounts);
        if (edited != 0)
            m_service.GoodDetailDivisionDetailItemsTempDeleteRow(m_opening.DivisionRow, edited);
    }
    if (part.OperationRow != 0)
        m_service.GoodDetailDivisionDetailItemsTempUpdateRow(part);
    else
        part.OperationRow = m_service.GoodDetailDivisionDetailItemsTempInsertRow(part);
    transaction.Commit();
    ReadParts();
    return part.OperationRow;
}

void DividedRow::Remove(int operationRow)
{
    m_service.GoodDetailDivisionDetailItemsTempDeleteRow(m_opening.DivisionRow, operationRow);
    ReadParts();
}

void DividedRow::RemoveAll()
{
    m_service.GoodDetailDivisionDetailItemsTempDeleteAllRow(m_opening.DivisionRow);
    ReadParts();
}

void DividedRow::Keep(const goods::UnitAmounts &typed, const QString &comment)
{
    host::TDivisionRow row = m_row;
    row.DivisionCode = m_opening.DivisionCode;
    row.Taken = TakenOf(m_unitType, m_row.Source.OnHand, typed, m_ratio);
    row.Comment = comment;
    host::Transaction transaction(m_host.DM.ADOConnection1);
    if (!IsNew()) {
        m_service.GoodDetailDivisionDetailTempDelete(m_opening.DivisionCode, m_opening.DivisionRow);
        m_service.GoodDetailDivisionDetailItemsTempDelete(m_opening.DivisionCode, m_opening.DivisionRow);
        m_service.Delete_GoodDetailKardexTemp(Exit, m_opening.DivisionCode, m_opening.DivisionRow);
    }
    m_service.InsertGoodDetailDivisionDetailTemp_Row(row);
    m_service.GoodDetailDivisionDetailItemsTemp_Update_Tmp(m_opening.DivisionRow, BeingTyped, Accepted);
    m_service.Insert_GoodDetailKardexExit_Temp_Row(row);
    transaction.Commit();
}

void DividedRow::GiveUp()
{
    Parts_QRY.Close();
    if (std::exchange(m_open, false))
        m_service.GoodDetailDivisionDetailItemsTemp_Discard();
}

} // namespace division
