#include "screens/labels/label_rows.h"

#include "host/controls/number_text.h"

#include <QHash>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace labels {

namespace {

/// The labels have the same size and places; where they begin, how many there are and what they cost is no matter.
bool SameLabels(Choices one, const Choices &other)
{
    one.priceLevel = other.priceLevel;
    one.countBy = other.countBy;
    one.count = other.count;
    one.start = other.start;
    return one == other;
}

} // namespace

void LabelRows::SetGoods(const QList<goods::LabelGood> &goods)
{
    beginResetModel();
    m_rows.clear();
    QHash<QString, std::optional<Symbol>> symbols;
    for (const goods::LabelGood &good : goods) {
        const QString barcode = PrintedBarcode(good.barcodes);
        auto symbol = symbols.constFind(barcode);
        if (symbol == symbols.cend())
            symbol = symbols.insert(barcode, Encode(barcode));
        m_rows << Row{good, {good.name, {}, barcode, *symbol}, 1, false};
    }
    SetPrices();
    FitBars();
    endResetModel();
}

void LabelRows::SetChoices(const Choices &choices)
{
    const Choices before = std::exchange(m_choices, choices);
    if (choices.priceLevel != before.priceLevel)
        SetPrices();
    if (!SameLabels(choices, before))
        FitBars();
    if (!m_rows.isEmpty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, ColumnCount - 1));
}

void LabelRows::SetPrices()
{
    for (Row &row : m_rows) {
        const host::Quantity price = PriceOf(row.good);
        row.label.price = price > 0 ? host::DisplayNumber(host::QuantityToText(price)) : QString();
    }
}

void LabelRows::FitBars()
{
    for (Row &row : m_rows)
        row.bars = !row.label.barcode.isEmpty() && BarsFit(row.label, m_choices);
}

host::Quantity LabelRows::PriceOf(const goods::LabelGood &good) const
{
    if (m_choices.priceLevel == ConsumerPrice)
        return good.consumerPrice;
    const int level = m_choices.priceLevel == OwnDefaultLevel ? good.defaultLevel : m_choices.priceLevel;
    return good.prices.value(level - 1, 0);
}

int LabelRows::CountOf(const Row &row) const
{
    switch (m_choices.countBy) {
    case CountBy::Typed:
        return row.typed;
    case CountBy::Stock:
        return CountOfStock(row.good.stock);
    case CountBy::Same:
        break;
    }
    return m_choices.count;
}

QString LabelRows::NoteOf(const Row &row) const
{
    QStringList notes;
    if (row.label.barcode.isEmpty())
        notes << u"بارکد ندارد"_s;
    else if (!row.bars)
        notes << u"بارکد جا نمی‌شود"_s;
    if (row.label.price.isEmpty())
        notes << u"بی‌قیمت"_s;
    return notes.join(u"، "_s);
}

qint64 LabelRows::Total() const
{
    qint64 total = 0;
    for (const Row &row : m_rows)
        total += CountOf(row);
    return total;
}

int LabelRows::WithoutBars() const
{
    return static_cast<int>(std::count_if(m_rows.cbegin(), m_rows.cend(),
                                          [this](const Row &row) { return CountOf(row) > 0 && !row.bars; }));
}

Job LabelRows::MakeJob(qint64 most) const
{
    Job job{m_choices, {}, {}};
    for (const Row &row : m_rows) {
        const qint64 left = most - job.order.size();
        if (left <= 0)
            break;
        job.order.resize(job.order.size() + qMin<qint64>(CountOf(row), left), static_cast<int>(job.labels.size()));
        job.labels << row.label;
    }
    return job;
}

Job LabelRows::JobOf(int row) const
{
    return {m_choices, {m_rows.at(row).label}, {0}};
}

int LabelRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

QVariant LabelRows::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const Row &row = m_rows.at(index.row());
    switch (index.column()) {
    case Code:
        return row.good.code;
    case Name:
        return row.good.name;
    case Barcode:
        return row.label.barcode;
    case Price:
        return host::QuantityToText(PriceOf(row.good));
    case Mogodi:
        return host::QuantityToText(row.good.stock);
    case Count:
        return CountOf(row);
    default:
        return NoteOf(row);
    }
}

QVariant LabelRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    static const QStringList fields{u"Code"_s, u"Name"_s, u"Barcode"_s, u"Price"_s, u"Mogodi"_s, u"Count"_s, u"Note"_s};
    if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    return fields.value(section);
}

Qt::ItemFlags LabelRows::flags(const QModelIndex &index) const
{
    const Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    const bool editable = index.column() == Count && m_choices.countBy == CountBy::Typed;
    return editable ? flags | Qt::ItemIsEditable : flags;
}

bool LabelRows::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable))
        return false;
    m_rows[index.row()].typed = value.toInt();
    emit dataChanged(index, index);
    emit Typed();
    return true;
}

} // namespace labels
