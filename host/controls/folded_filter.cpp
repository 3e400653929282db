#include "host/controls/folded_filter.h"

#include "host/data/persian_text.h"
#include "host/data/quantity.h"

#include <QtCore/QElapsedTimer>
#include <QtCore/QStringMatcher>

#include <algorithm>

namespace host {
namespace {

bool IsNumeric(ColumnFormat format)
{
    return format == ColumnFormat::Code || format == ColumnFormat::Quantity || format == ColumnFormat::Price;
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

void FoldedFilter::MatchWord(const Column &column, const QString &word, int first, std::vector<char> &hits)
{
    const QStringMatcher matcher(word);
    auto row = column.start.begin() + first;
    qsizetype position = matcher.indexIn(column.text, *row);
    while (position >= 0) {
        row = std::upper_bound(row, column.start.end(), position) - 1;
        hits[static_cast<size_t>(row - column.start.begin() - first)] = 1;
        if (++row == column.start.end())
            break;
        position = matcher.indexIn(column.text, *row);
    }
}

void FoldedFilter::MatchDigits(const Column &column, const QString &digits, int first, std::vector<char> &hits)
{
    const QStringView text(column.text);
    for (size_t row = static_cast<size_t>(first); row + 1 < column.start.size(); ++row)
        if (text.mid(column.start[row], column.start[row + 1] - column.start[row]).startsWith(digits))
            hits[row - static_cast<size_t>(first)] = 1;
}

std::vector<int> FoldedFilter::Match(const SearchDescription &description, int first) const
{
    const int count = m_rows - first;
    if (count <= 0)
        return {};
    const auto searched = [&](const Column &column) {
        return description.field.isEmpty()
                   ? column.general
                   : column.folded && column.field.compare(description.field, Qt::CaseInsensitive) == 0;
    };
    std::vector<char> hits(static_cast<size_t>(count), 1);
    const auto narrow = [&](const QString &wanted, bool digits) {
        std::vector<char> found(static_cast<size_t>(count), 0);
        for (const Column &column : m_columns) {
            if (!searched(column))
                continue;
            if (digits || IsNumeric(column.format))
                MatchDigits(column, wanted, first, found);
            else
                MatchWord(column, wanted, first, found);
        }
        std::transform(hits.begin(), hits.end(), found.begin(), hits.begin(),
                       [](char a, char b) { return static_cast<char>(a & b); });
    };
    if (!description.number.isEmpty())
        narrow(description.number, true);
    const QStringList words = Fold(description.text).split(u' ', Qt::SkipEmptyParts);
    for (const QString &word : words)
        narrow(word, false);

    const char wanted = description.reverse && !description.IsEmpty() ? 0 : 1;
    std::vector<int> rows;
    for (int row = 0; row < count; ++row)
        if (hits[static_cast<size_t>(row)] == wanted)
            rows.push_back(first + row);
    return rows;
}

} // namespace host
