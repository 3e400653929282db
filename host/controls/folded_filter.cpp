#include "host/controls/folded_filter.h"

#include "host/data/persian_text.h"
#include "host/data/quantity.h"

#include <QElapsedTimer>

#include <algorithm>

namespace host {
namespace {

bool IsNumeric(ColumnFormat format)
{
    return format == ColumnFormat::Code || format == ColumnFormat::Quantity || format == ColumnFormat::Amount ||
           format == ColumnFormat::Price;
}

/// In a search over all columns, amounts would answer nearly every number that is typed.
bool InGeneralSearch(ColumnFormat format)
{
    return format == ColumnFormat::Text || format == ColumnFormat::Date || format == ColumnFormat::Code;
}

} // namespace

int FieldColumn(const QAbstractItemModel &model, const QString &field)
{
    for (int column = 0; column < model.columnCount(); ++column) {
        QVariant name = model.headerData(column, Qt::Horizontal, Qt::EditRole);
        if (!name.isValid())
            name = model.headerData(column, Qt::Horizontal, Qt::DisplayRole);
        if (name.toString().compare(field, Qt::CaseInsensitive) == 0)
            return column;
    }
    return -1;
}

void FoldedFilter::Reset(const QAbstractItemModel *model, const QList<GridColumn> &columns, const QStringList &general)
{
    m_model = model;
    m_columns.clear();
    m_rows = 0;
    if (!model)
        return;
    for (const GridColumn &column : columns) {
        const int source = FieldColumn(*model, column.field);
        if (source < 0)
            continue;
        const bool searched =
            general.isEmpty() ? InGeneralSearch(column.format) : general.contains(column.field, Qt::CaseInsensitive);
        m_columns.push_back({column.field, column.format, source, searched, searched, {}, {0}});
    }
}

void FoldedFilter::Include(const QString &field)
{
    for (Column &column : m_columns)
        if (!column.folded && column.field.compare(field, Qt::CaseInsensitive) == 0) {
            column.folded = true;
            FoldRows(column, 0, m_rows);
        }
}

/// Appends the texts of rows `first` … `end` - 1 to what is folded of the column.
void FoldedFilter::FoldRows(Column &column, int first, int end) const
{
    for (int row = first; row < end; ++row) {
        const QVariant value = m_model->index(row, column.source).data(Qt::EditRole);
        if (IsNumeric(column.format))
            column.text += TrimDecimal(value.toString());
        else
            AppendFolded(column.text, value.toString());
        column.text += u'\n';
        column.start.push_back(column.text.size());
    }
}

QString FoldedFilter::FoldValue(const QVariant &value, ColumnFormat format)
{
    return IsNumeric(format) ? TrimDecimal(value.toString()) : Fold(value.toString());
}

bool FoldedFilter::FoldSome(int milliseconds)
{
    if (!m_model)
        return false;
    QElapsedTimer clock;
    clock.start();
    const int rows = m_model->rowCount();
    while (m_rows < rows) {
        const int portion = std::min(m_rows + 128, rows);
        for (Column &column : m_columns)
            if (column.folded)
                FoldRows(column, m_rows, portion);
        m_rows = portion;
        if (clock.elapsed() >= milliseconds)
            break;
    }
    return m_rows < rows;
}

void FoldedFilter::Refold(int row)
{
    if (row >= m_rows)
        return;
    const auto at = static_cast<size_t>(row);
    for (Column &column : m_columns) {
        if (!column.folded)
            continue;
        const QString folded = FoldValue(m_model->index(row, column.source).data(Qt::EditRole), column.format) + u'\n';
        const qsizetype length = column.start[at + 1] - column.start[at];
        column.text.replace(column.start[at], length, folded);
        if (const qsizetype shift = folded.size() - length)
            for (size_t next = at + 1; next < column.start.size(); ++next)
                column.start[next] += shift;
    }
}

void FoldedFilter::Remove(int first, int last)
{
    last = std::min(last, m_rows - 1);
    if (first > last)
        return;
    for (Column &column : m_columns) {
        if (!column.folded)
            continue;
        const auto from = column.start.begin() + first;
        const auto to = column.start.begin() + last + 1;
        const qsizetype length = *to - *from;
        column.text.remove(*from, length);
        for (auto next = to; next != column.start.end(); ++next)
            *next -= length;
        column.start.erase(from, to);
    }
    m_rows -= last - first + 1;
}

FoldedFilter::Wanted FoldedFilter::Prepare(const SearchDescription &description) const
{
    Wanted wanted;
    wanted.reverse = description.reverse && !description.IsEmpty();
    wanted.number = description.number;
    wanted.words = Fold(description.text).split(u' ', Qt::SkipEmptyParts);
    for (const Column &column : m_columns) {
        const bool named = column.field.compare(description.field, Qt::CaseInsensitive) == 0;
        if (description.field.isEmpty() ? column.general : column.folded && named)
            wanted.columns.push_back(&column);
    }
    return wanted;
}

bool FoldedFilter::Matches(const Wanted &wanted, int row)
{
    const auto at = static_cast<size_t>(row);
    const auto found = [&](QStringView part, bool digits) {
        return std::any_of(wanted.columns.begin(), wanted.columns.end(), [&](const Column *column) {
            const QStringView text =
                QStringView(column->text).mid(column->start[at], column->start[at + 1] - column->start[at]);
            return digits || IsNumeric(column->format) ? text.startsWith(part) : text.contains(part);
        });
    };
    const bool all =
        (wanted.number.isEmpty() || found(wanted.number, true)) &&
        std::all_of(wanted.words.begin(), wanted.words.end(), [&](const QString &word) { return found(word, false); });
    return all != wanted.reverse;
}

std::vector<int> FoldedFilter::Match(const SearchDescription &description, int first) const
{
    const Wanted wanted = Prepare(description);
    std::vector<int> rows;
    for (int row = first; row < m_rows; ++row)
        if (Matches(wanted, row))
            rows.push_back(row);
    return rows;
}

std::vector<int> FoldedFilter::Narrow(const SearchDescription &description, const std::vector<int> &among) const
{
    const Wanted wanted = Prepare(description);
    std::vector<int> rows;
    std::copy_if(among.begin(), among.end(), std::back_inserter(rows), [&](int row) { return Matches(wanted, row); });
    return rows;
}

bool FoldedFilter::Narrows(const SearchDescription &wider, const SearchDescription &description)
{
    return !wider.IsEmpty() && !wider.reverse && !description.reverse && wider.field == description.field &&
           description.text.startsWith(wider.text) && description.number.startsWith(wider.number);
}

} // namespace host
