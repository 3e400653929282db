#include "gooddetail/enter_rows.h"

#include "gooddetail/amount_entry.h"
#include "gooddetail/enter_texts.h"
#include "host/data/database_error.h"
#include "host/data/transaction.h"

#include <QSet>

using namespace Qt::StringLiterals;

namespace good_detail {

using host::TAmounts;
using host::TSerialFate;

TAmounts RowAmounts(const host::Dataset &rows, int row, const QString &suffix)
{
    const auto amount = [&](const char16_t *field) {
        const QString text = rows.FieldAt(row, QString(QString::fromUtf16(field) + suffix)).toString();
        return host::QuantityFromText(text);
    };
    const bool whole = suffix != u"_Ret";
    return {amount(u"Amount1"), amount(u"Amount2"), whole ? amount(u"TotalAmount") : 0,
            amount(u"Length"),  amount(u"Width"),   amount(u"Amount3")};
}

EnterRows::EnterRows(host::Host &host, TSerial_DM &data, const host::TDocumentLine &line, int serialPlace,
                     std::function<QString(AmountPart)> captions)
    : m_host(host), m_data(data), m_line(line), m_serialPlace(serialPlace), m_captions(std::move(captions))
{}

void EnterRows::Load()
{
    m_data.EnterGoodDetail_Open();
    m_host.detailMovements.EnterGoodDetails_Load(m_data.EnterGoodDetail_Table(), m_line);
    m_data.EnterGoodDetail_Refresh();
}

bool EnterRows::HasSerial(const EnterRow &row) const
{
    return m_serialPlace >= 0 && !row.Details.Values[static_cast<size_t>(m_serialPlace)].isEmpty();
}

std::optional<EnterRefusal> EnterRows::Store(const EnterRow &row)
{
    Refused refused;
    try {
        if (!m_data.EnterGoodDetail_QRY.IsOpen())
            m_data.EnterGoodDetail_Refresh();
        host::Transaction transaction(m_data.Connection());
        refused = row.EditedID == 0 ? Add(row) : Change(row);
        if (!refused) {
            transaction.Commit();
            return refused;
        }
    } catch (...) {
        Reread();
        throw;
    }
    if (row.EditedID != 0)
        m_data.EnterGoodDetail_Refresh();
    return refused;
}

std::optional<EnterRefusal> EnterRows::Add(const EnterRow &row)
{
    if (HasSerial(row))
        return AddSerial(row);
    auto &values = m_host.detailValues;
    const int value = m_line.IsReturn ? values.FindDetailValue(m_line.GoodCode, row.Details)
                                      : values.ResolveDetailValue(m_line.GoodCode, row.Details);
    if (const int same = value == 0 ? 0 : SameRow(value, row.Amounts))
        return Merge(same, row);
    if (Refused refused = JudgeReturn(row, value))
        return refused;
    return Write(row, value);
}

std::optional<EnterRefusal> EnterRows::AddSerial(const EnterRow &row)
{
    const host::TSerialBatchResult judged = m_host.serialBatches.JudgeSerials(Batch(row));
    if (Refused refused = Fated(judged))
        return refused;
    return Write(row, m_host.detailValues.ResolveDetailValue(m_line.GoodCode, row.Details));
}

std::optional<EnterRefusal> EnterRows::Fated(const host::TSerialBatchResult &judged) const
{
    if (judged.left.isEmpty())
        return {};
    const TSerialFate fate = judged.left.first().Fate;
    return EnterRefusal{texts::Fate(fate, m_line.IsReturn), {}, fate == TSerialFate::InLine && !m_line.IsReturn};
}

std::optional<EnterRefusal> EnterRows::JudgeReturn(const EnterRow &row, int valueId)
{
    if (!m_line.IsReturn)
        return {};
    if (valueId == 0)
        return EnterRefusal{texts::NotSold, {}};
    const std::optional<TAmounts> left = m_host.detailMovements.Returnable(m_line, valueId);
    if (!left)
        return EnterRefusal{texts::NotSold, {}};
    if (left->Amount1 <= 0)
        return EnterRefusal{texts::NothingOnHand, {}};
    const host::Dataset &rows = m_data.EnterGoodDetail_QRY;
    bool others = false;
    const TAmounts sum = WithOthers(row.Amounts, [&](int i) {
        const bool same = rows.FieldAt(i, u"DetailValueID").toInt() == valueId;
        others = others || same;
        return same;
    });
    Refused refused = Exceeds(sum, *left);
    if (refused && !others && row.EditedID == 0)
        refused->Text = texts::MoreThanOnHand;
    return refused;
}

/// An edited serial. One that this line itself has made for its return was never sold: it counts with all rows of the
/// same other details, of which `former` knows what may come back.
std::optional<EnterRefusal> EnterRows::JudgeSerial(const EnterRow &row, TEnterGoodDetail_Rec &former)
{
    const int value = m_host.detailValues.FindDetailValue(m_line.GoodCode, row.Details);
    if (!m_line.IsReturn || !former.Returnable || value == 0 || value != former.DetailValueID ||
        m_host.detailMovements.Returnable(m_line, value).value_or(TAmounts{}).Amount1 > 0) {
        former.Returnable.reset();
        return Fated(m_host.serialBatches.JudgeSerials(Batch(row)));
    }
    const host::Dataset &rows = m_data.EnterGoodDetail_QRY;
    const TAmounts sum = WithOthers(row.Amounts, [&](int at) {
        bool same = rows.FieldAt(at, u"DetailValueID").toInt() != 0;
        for (size_t i = 0; same && i < row.Details.Values.size(); ++i)
            same = static_cast<int>(i) == m_serialPlace ||
                   rows.FieldAt(at, QString(u"DetailTitle%1"_s.arg(i + 1))).toString() == former.DetailTitle[i];
        return same;
    });
    return Exceeds(sum, *former.Returnable);
}

std::optional<EnterRefusal> EnterRows::Exceeds(const TAmounts &sum, const TAmounts &returnable) const
{
    const auto composed = [this](AmountPart part) {
        const QString caption = m_captions(part);
        return u"کاربر گرامی مقدار "_s + caption + u" وارد شده بیشتر از مقدار "_s + caption + u" قابل برگشت می باشد."_s;
    };
    const bool first = sum.Amount1 > returnable.Amount1;
    const bool second = sum.Amount2 > returnable.Amount2;
    switch (m_line.UnitType) {
    case TwoUnits:
        if (!first && second)
            return EnterRefusal{texts::SecondMoreThanReturnable, AmountPart::Amount2};
        break;
    case Packed:
        if (first || second) {
            const AmountPart part = first ? AmountPart::Amount1 : AmountPart::Amount2;
            return EnterRefusal{composed(part), part};
        }
        break;
    case Area:
        if (sum.Amount3 > returnable.Amount3)
            return EnterRefusal{texts::CountMoreThanReturnable, AmountPart::Amount3};
        break;
    default:
        break;
    }
    return first ? Refused(EnterRefusal{texts::MoreThanReturnable, AmountPart::Amount1}) : std::nullopt;
}

/// What the rows of the line that count come to, with `own`; the edited row is emptied by then.
TAmounts EnterRows::WithOthers(const TAmounts &own, const std::function<bool(int row)> &counts) const
{
    const host::Dataset &rows = m_data.EnterGoodDetail_QRY;
    TAmounts sum = own;
    for (int i = 0; i < rows.RecordCount(); ++i)
        if (counts(i))
            sum = Added(m_line.UnitType, sum, RowAmounts(rows, i));
    return sum;
}

/// The row of the line with this detail value and the same measures; 0 when there is none.
int EnterRows::SameRow(int valueId, const TAmounts &amounts) const
{
    const host::Dataset &rows = m_data.EnterGoodDetail_QRY;
    for (int i = 0; i < rows.RecordCount(); ++i)
        if (rows.FieldAt(i, u"DetailValueID").toInt() == valueId &&
            SameMeasures(m_line.UnitType, RowAmounts(rows, i), amounts))
            return rows.FieldAt(i, u"ID").toInt();
    return 0;
}

std::optional<EnterRefusal> EnterRows::Merge(int id, const EnterRow &row)
{
    std::optional<TEnterGoodDetail_Rec> existing = Row(id);
    if (!existing)
        return EnterRefusal{texts::NoDetailValue, {}};
    if (!SameMeasures(m_line.UnitType, existing->Amounts, row.Amounts))
        return Write(row, existing->DetailValueID);
    if (Refused refused = JudgeReturn(row, existing->DetailValueID))
        return refused;
    existing->Amounts = Added(m_line.UnitType, existing->Amounts, row.Amounts);
    m_data.EnterGoodDetailRow_Update(*existing);
    return {};
}

std::optional<EnterRefusal> EnterRows::Write(const EnterRow &row, int valueId,
                                             const std::optional<TAmounts> &returnable)
{
    if (valueId == 0)
        return EnterRefusal{texts::NoDetailValue, {}};
    TEnterGoodDetail_Rec record = Record(row, valueId);
    if (m_line.IsReturn) {
        const auto left = m_host.detailMovements.Returnable(m_line, valueId);
        record.Returnable = left && left->Amount1 > 0 ? left : returnable;
    }
    if (row.EditedID == 0)
        m_data.EnterGoodDetailRow_Insert(record);
    else
        m_data.EnterGoodDetailRow_Update(record);
    return {};
}

/// The value that the row had is given up first, so that the edited combination is judged as a new one.
std::optional<EnterRefusal> EnterRows::Change(const EnterRow &row)
{
    std::optional<TEnterGoodDetail_Rec> former = Row(row.EditedID);
    if (!former)
        return EnterRefusal{texts::NoDetailValue, {}};
    auto &values = m_host.detailValues;
    const int found = values.FindDetailValue(m_line.GoodCode, row.Details);
    if (found == former->DetailValueID && !m_line.IsReturn)
        return Write(row, found);
    TEnterGoodDetail_Rec empty = *former;
    empty.DetailValueID = 0;
    empty.Amounts = {};
    m_data.EnterGoodDetailRow_Update(empty);
    if (!Values().contains(former->DetailValueID)) // another row of the line may have it
        values.DeleteUnusedDetailValue(former->DetailValueID);
    if (!HasSerial(row))
        former->Returnable.reset();
    const Refused refused = HasSerial(row) ? JudgeSerial(row, *former)
                                           : JudgeReturn(row, values.FindDetailValue(m_line.GoodCode, row.Details));
    return refused ? refused : Write(row, values.ResolveDetailValue(m_line.GoodCode, row.Details), former->Returnable);
}

host::TSerialBatch EnterRows::Batch(const EnterRow &row, const std::optional<host::TSerialRange> &range) const
{
    return {m_data.EnterGoodDetail_Table(), m_line, row.Details, row.Amounts, range};
}

TEnterGoodDetail_Rec EnterRows::Record(const EnterRow &row, int valueId) const
{
    TEnterGoodDetail_Rec record;
    record.ID = row.EditedID;
    record.DetailValueID = valueId;
    record.StoreCode = m_line.StoreCode;
    record.GoodCode = m_line.GoodCode;
    record.DetailTitle = row.Details.Values;
    record.Amounts = row.Amounts;
    record.OperationType = m_line.OperationType;
    record.OperationCode = m_line.OperationCode;
    record.OperationRow = m_line.OperationRow;
    record.ForeignOperationCode = m_line.ForeignOperationCode;
    return record;
}

std::optional<TEnterGoodDetail_Rec> EnterRows::Row(int id)
{
    host::Dataset &rows = m_data.EnterGoodDetail_QRY;
    if (!rows.IsOpen())
        rows.Open();
    if (!rows.Locate(u"ID", id))
        return std::nullopt;
    const int at = rows.CurrentRow();
    TEnterGoodDetail_Rec record = Record({{}, RowAmounts(rows, at), id}, rows.IntField(u"DetailValueID"));
    for (size_t i = 0; i < record.DetailTitle.size(); ++i)
        record.DetailTitle[i] = rows.TextField(QString(u"DetailTitle%1"_s.arg(i + 1)));
    if (m_line.IsReturn && !rows.Field(u"Amount1_Ret").isNull())
        record.Returnable = RowAmounts(rows, at, u"_Ret"_s);
    return record;
}

bool EnterRows::IsReturned(int id)
{
    const std::optional<TEnterGoodDetail_Rec> row = Row(id);
    return row && m_host.detailMovements.IsReturned(m_line, row->DetailValueID);
}

QList<int> EnterRows::Values() const
{
    const host::Dataset &rows = m_data.EnterGoodDetail_QRY;
    QList<int> values;
    values.reserve(rows.RecordCount());
    for (int i = 0; i < rows.RecordCount(); ++i)
        values << rows.FieldAt(i, u"DetailValueID").toInt();
    return values;
}

/// Afterwards the rows are read, and detail values that only the rows taken out had are forgotten.
void EnterRows::TakeOut(const std::function<void()> &statements)
{
    const QList<int> before = Values();
    QSet<int> gone(before.cbegin(), before.cend());
    try {
        host::Transaction transaction(m_data.Connection());
        statements();
        m_data.EnterGoodDetail_Refresh();
        const QList<int> left = Values();
        m_host.detailValues.DeleteUnusedDetailValues(gone.subtract(QSet<int>(left.cbegin(), left.cend())).values());
        transaction.Commit();
    } catch (...) {
        Reread();
        throw;
    }
}

/// After an error what the row set holds may be undone. When it cannot be read either it stays closed, and the next
/// use reads it; the first error is the one to tell of.
void EnterRows::Reread()
{
    m_data.EnterGoodDetail_QRY.Close();
    try {
        m_data.EnterGoodDetail_Refresh();
    } catch (const host::DatabaseError &) {
        m_data.EnterGoodDetail_QRY.Close();
    }
}

bool EnterRows::Remove(const QList<int> &ids)
{
    const QList<int> returned = m_host.detailMovements.ReturnedDetailValues(m_line);
    const QSet<int> kept(returned.cbegin(), returned.cend());
    const QSet<int> marked(ids.cbegin(), ids.cend());
    const host::Dataset &rows = m_data.EnterGoodDetail_QRY;
    if (!rows.IsOpen())
        m_data.EnterGoodDetail_Refresh();
    QList<int> gone;
    for (int i = 0; i < rows.RecordCount(); ++i) {
        const int id = rows.FieldAt(i, u"ID").toInt();
        if (marked.contains(id) && !kept.contains(rows.FieldAt(i, u"DetailValueID").toInt()))
            gone << id;
    }
    TakeOut([&] { m_data.EnterGoodDetailRows_Delete(gone); });
    return gone.size() == ids.size();
}

bool EnterRows::RemoveAll()
{
    const QList<int> returned = m_host.detailMovements.ReturnedDetailValues(m_line);
    TakeOut([&] { m_data.EnterGoodDetailRow_DeleteAll(m_line.StoreCode, m_line.OperationType, returned); });
    return m_data.EnterGoodDetail_QRY.IsEmpty();
}

void EnterRows::Keep()
{
    m_host.detailMovements.EnterGoodDetails_Keep(m_data.EnterGoodDetail_Table(), m_line);
}

void EnterRows::GiveUp()
{
    m_host.detailValues.DeleteUnusedDetailValues(Values());
}

} // namespace good_detail
