#include "host/data/row_store.h"

#include "host/data/odbc_text.h"
#include "host/data/row_feed.h"

#include <QSqlField>
#include <QSqlQuery>
#include <QSqlResult>

#include <algorithm>
#include <cmath>
#include <limits>

namespace host {

namespace {

constexpr quint32 RowsPerBlock = 1000;

/// From Digits on: a whole number of 10^-(tag - Digits).
enum Tag : quint8 { Null, Whole, Boolean, Characters, Other, Digits };

/// A text cell: where its characters begin in the block's buffer, and how many there are.
constexpr int LengthBits = 28;

/// The kind of a value, or of a column apart from its decimals.
ColumnKind KindOf(QMetaType type)
{
    switch (type.id()) {
    case QMetaType::Bool:
        return ColumnKind::Boolean;
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
        return ColumnKind::Integer;
    case QMetaType::Double:
    case QMetaType::Float:
        return ColumnKind::Decimal;
    case QMetaType::QDate:
    case QMetaType::QTime:
    case QMetaType::QDateTime:
        return ColumnKind::Moment;
    case QMetaType::QByteArray:
        return ColumnKind::Bytes;
    default:
        return ColumnKind::Text;
    }
}

/// Drivers call a decimal column a double (ODBC) or a text with decimals.
ColumnKind KindOf(const QSqlField &field)
{
    const ColumnKind kind = KindOf(field.metaType());
    return kind == ColumnKind::Text && field.precision() >= 0 ? ColumnKind::Decimal : kind;
}

bool IsInteger(QMetaType type)
{
    return KindOf(type) == ColumnKind::Integer;
}

QString DecimalText(const QVariant &value)
{
    if (value.typeId() == QMetaType::QString) {
        return TrimDecimal(value.toString());
    }
    if (IsInteger(value.metaType())) {
        return QString::number(value.toLongLong());
    }
    return QuantityToText(static_cast<Quantity>(value.toDouble()), std::numeric_limits<double>::digits10);
}

/// The decimal text of units of 10^-scale, as TrimDecimal() writes it.
QString DigitsText(qint64 units, int scale)
{
    for (; scale > 0 && units % 10 == 0; --scale) {
        units /= 10;
    }
    QString text = QString::number(units);
    if (scale > 0) {
        const qsizetype sign = units < 0 ? 1 : 0;
        if (text.size() - sign <= scale) {
            text.insert(sign, QString(scale + 1 - (text.size() - sign), u'0'));
        }
        text.insert(text.size() - scale, u'.');
    }
    return text;
}

/// Writes UTF-8 of one and two bytes a character as UTF-16: Latin and Arabic script, that is nearly all. Returns the
/// end of what was written, or null for any other text.
char16_t *WidenShort(const char *bytes, qsizetype size, char16_t *out)
{
    const auto *at = reinterpret_cast<const uchar *>(bytes);
    const uchar *end = at + size;
    while (at < end) {
        const uint first = *at++;
        if (first < 0x80) {
            *out++ = static_cast<char16_t>(first);
            continue;
        }
        if (first < 0xC2 || first >= 0xE0 || at == end || (*at & 0xC0U) != 0x80) {
            return nullptr;
        }
        *out++ = static_cast<char16_t>((first & 0x1FU) << 6 | (*at++ & 0x3FU));
    }
    return out;
}

} // namespace

struct RowStore::Block
{
    quint32 rows = 0;
    std::vector<quint64> cells;
    std::vector<quint8> tags;
    std::u16string characters;
    std::vector<QVariant> others;

    size_t NewRow(size_t columns)
    {
        ++rows;
        cells.resize(cells.size() + columns);
        tags.resize(tags.size() + columns, Null);
        return cells.size() - columns;
    }

    void SetText(size_t cell, QStringView text)
    {
        cells[cell] = (static_cast<quint64>(characters.size()) << LengthBits) | static_cast<quint64>(text.size());
        tags[cell] = Characters;
        characters.append(text.utf16(), static_cast<size_t>(text.size()));
    }

    void SetUtf8(size_t cell, const char *bytes, qsizetype size)
    {
        const size_t begin = characters.size();
        characters.resize(begin + static_cast<size_t>(size));
        const char16_t *end = WidenShort(bytes, size, characters.data() + begin);
        if (!end) {
            characters.resize(begin);
            SetText(cell, QString::fromUtf8(bytes, size));
            return;
        }
        const auto length = static_cast<size_t>(end - (characters.data() + begin));
        characters.resize(begin + length);
        cells[cell] = (static_cast<quint64>(begin) << LengthBits) | length;
        tags[cell] = Characters;
    }

    QStringView TextAt(size_t cell) const
    {
        const size_t begin = cells[cell] >> LengthBits;
        const auto length = static_cast<qsizetype>(cells[cell] & ((quint64(1) << LengthBits) - 1));
        return QStringView(characters.data() + begin, length);
    }
};

RowStore::RowStore() = default;
RowStore::~RowStore() = default;
RowStore::RowStore(RowStore &&) noexcept = default;
RowStore &RowStore::operator=(RowStore &&) noexcept = default;

void RowStore::SetColumns(const QSqlRecord &record)
{
    Clear();
    m_columns.reserve(static_cast<size_t>(record.count()));
    for (int i = 0; i < record.count(); ++i) {
        const QSqlField field = record.field(i);
        m_columns.push_back({field.name(), KindOf(field)});
    }
}

void RowStore::Clear()
{
    ClearRows();
    m_columns.clear();
}

void RowStore::ClearRows()
{
    m_rows.clear();
    m_blocks.clear();
}

int RowStore::ColumnIndex(QStringView name) const
{
    for (size_t i = 0; i < m_columns.size(); ++i) {
        const QString &column = m_columns[i].name;
        if (name.size() == column.size() && name.compare(column, Qt::CaseInsensitive) == 0) {
            return static_cast<int>(i);
        }
    }
    return -1;
}

bool RowStore::HasColumnsOf(const RowStore &other) const
{
    return std::equal(m_columns.begin(), m_columns.end(), other.m_columns.begin(), other.m_columns.end(),
                      [](const Column &mine, const Column &theirs) { return mine.name == theirs.name; });
}

RowStore::Block &RowStore::WritableBlock()
{
    if (m_blocks.empty() || m_blocks.back()->rows >= RowsPerBlock) {
        m_blocks.push_back(std::make_unique<Block>());
    }
    m_rows.push_back({static_cast<quint32>(m_blocks.size() - 1), m_blocks.back()->rows});
    return *m_blocks.back();
}

void RowStore::Write(Block &block, size_t cell, int column, const QVariant &value)
{
    if (value.isNull()) {
        block.tags[cell] = Null;
        return;
    }
    const int type = value.typeId();
    if (ColumnAt(column).kind == ColumnKind::Decimal) {
        block.SetText(cell, DecimalText(value));
    } else if (type == QMetaType::QString) {
        block.SetText(cell, *static_cast<const QString *>(value.constData()));
    } else if (type == QMetaType::Bool) {
        block.cells[cell] = value.toBool() ? 1 : 0;
        block.tags[cell] = Boolean;
    } else if (IsInteger(value.metaType())) {
        block.cells[cell] = static_cast<quint64>(value.toLongLong());
        block.tags[cell] = Whole;
    } else {
        block.cells[cell] = block.others.size();
        block.tags[cell] = Other;
        block.others.push_back(value);
    }
}

int RowStore::Read(QSqlQuery &query, RowFeed &feed, int limit)
{
    using Form = FedCell::Form;
    std::vector<FedCell> row;
    int count = 0;
    for (; count != limit && feed.NextRow(row); ++count) {
        Block &block = WritableBlock();
        const size_t first = block.NewRow(m_columns.size());
        for (size_t column = 0; column < m_columns.size(); ++column) {
            const FedCell &fed = row[column];
            const size_t cell = first + column;
            block.cells[cell] = static_cast<quint64>(fed.number);
            switch (fed.form) {
            case Form::Null:
                break;
            case Form::Integer:
                block.tags[cell] = Whole;
                break;
            case Form::Boolean:
                block.tags[cell] = Boolean;
                break;
            case Form::Decimal:
                block.tags[cell] = static_cast<quint8>(Digits + fed.scale);
                break;
            case Form::Utf8:
                block.SetUtf8(cell, fed.bytes, fed.size);
                break;
            case Form::Other:
                Write(block, cell, static_cast<int>(column), query.value(static_cast<int>(column)));
                break;
            }
        }
    }
    return count;
}

int RowStore::Read(QSqlQuery &query, int limit)
{
    if (auto *feed = query.result()->handle().value<RowFeed *>()) {
        return Read(query, *feed, limit);
    }
    const int columns = ColumnCount();
    const OdbcText texts(query);
    int count = 0;
    while (count != limit && query.next()) {
        Block &block = WritableBlock();
        const size_t cell = block.NewRow(m_columns.size());
        for (int column = 0; column < columns; ++column) {
            const ColumnKind kind = ColumnAt(column).kind;
            const bool isText = texts.IsNeeded() && (kind == ColumnKind::Text || kind == ColumnKind::Decimal);
            Write(block, cell + static_cast<size_t>(column), column, isText ? texts.Read(column) : query.value(column));
        }
        ++count;
    }
    return count;
}

void RowStore::Append(const std::vector<QVariant> &values)
{
    Block &block = WritableBlock();
    const size_t cell = block.NewRow(m_columns.size());
    for (int column = 0; column < ColumnCount(); ++column) {
        const auto i = static_cast<size_t>(column);
        Write(block, cell + i, column, i < values.size() ? values[i] : QVariant());
    }
}

std::pair<const RowStore::Block *, size_t> RowStore::Cell(int row, int column) const
{
    const Place &place = m_rows[static_cast<size_t>(row)];
    return {m_blocks[place.block].get(), place.row * m_columns.size() + static_cast<size_t>(column)};
}

void RowStore::Replace(int row, int column, const QVariant &value)
{
    const Place &place = m_rows[static_cast<size_t>(row)];
    Write(*m_blocks[place.block], Cell(row, column).second, column, value);
}

void RowStore::Remove(int row)
{
    m_rows.erase(m_rows.begin() + row);
}

void RowStore::OrderBy(int column)
{
    std::vector<std::pair<std::optional<Quantity>, Place>> keyed;
    keyed.reserve(m_rows.size());
    for (int row = 0; row < RowCount(); ++row) {
        keyed.emplace_back(Number(row, column), m_rows[static_cast<size_t>(row)]);
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto &left, const auto &right) { return left.first < right.first; });
    std::transform(keyed.cbegin(), keyed.cend(), m_rows.begin(), [](const auto &row) { return row.second; });
}

bool RowStore::IsNull(int row, int column) const
{
    const auto [block, cell] = Cell(row, column);
    return block->tags[cell] == Null;
}

QVariant RowStore::Value(int row, int column) const
{
    const auto [block, cell] = Cell(row, column);
    switch (block->tags[cell]) {
    case Null:
        return {};
    case Whole: {
        const auto number = static_cast<qint64>(block->cells[cell]);
        const auto small = static_cast<int>(number);
        return small == number ? QVariant(small) : QVariant(number);
    }
    case Boolean:
        return block->cells[cell] != 0;
    case Characters:
        return block->TextAt(cell).toString();
    case Other:
        return block->others[block->cells[cell]];
    default:
        return DigitsText(static_cast<qint64>(block->cells[cell]), block->tags[cell] - Digits);
    }
}

QString RowStore::Text(int row, int column) const
{
    return Value(row, column).toString();
}

std::optional<Quantity> RowStore::Number(int row, int column) const
{
    const auto [block, cell] = Cell(row, column);
    const auto whole = static_cast<qint64>(block->cells[cell]);
    switch (block->tags[cell]) {
    case Null:
        return {};
    case Whole:
    case Boolean:
        return static_cast<Quantity>(whole);
    case Characters:
        return ParseQuantity(block->TextAt(cell));
    case Other:
        return ParseQuantity(block->others[block->cells[cell]].toString());
    default:
        // Both are exact, so that the quotient is the number that the decimal text stands for.
        return static_cast<Quantity>(whole) / std::pow(Quantity(10), Quantity(block->tags[cell] - Digits));
    }
}

QStringView RowStore::TextView(int row, int column) const
{
    const auto [block, cell] = Cell(row, column);
    return block->tags[cell] == Characters ? block->TextAt(cell) : QStringView();
}

} // namespace host
