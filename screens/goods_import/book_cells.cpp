#include "screens/goods_import/book_cells.h"

#include <QDate>

#include <algorithm>
#include <cmath>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace goods_import {

namespace {

constexpr int MostRows = 1048576;
constexpr int MostColumns = 256;       ///< columns behind them are left out
constexpr size_t MostCells = 20000000; ///< a sheet that claims more is no list of goods
constexpr double ExactLimit = 1e15;    ///< doubles keep 15 digits

QString Utf8(std::string_view text)
{
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString NumberText(double number)
{
    if (std::abs(number) >= ExactLimit)
        return QString::number(number, 'e', 14).toUpper();
    if (number == std::floor(number))
        return QString::number(static_cast<qint64>(number));
    QString text = QString::number(number, 'f', std::max(0, 14 - static_cast<int>(std::log10(std::abs(number)))));
    while (text.endsWith(u'0'))
        text.chop(1);
    return text.endsWith(u'.') ? text.chopped(1) : text;
}

/// Days are counted from the end of 1899.
QString DateText(double days)
{
    const QDate date = QDate(1899, 12, 30).addDays(static_cast<qint64>(days));
    return date.isValid() ? date.toString(Qt::ISODate) : NumberText(days);
}

/// The built-in formats of dates and times.
bool IsDateId(size_t id)
{
    return (id >= 14 && id <= 22) || (id >= 45 && id <= 47);
}

} // namespace

// Formats ------------------------------------------------------------------------------------------------------------

void BookStyles::set_number_format_code(std::string_view code)
{
    // Letters of a date outside quotes and brackets.
    m_formatIsDate = false;
    char closing = 0;
    for (const char c : code) {
        if (closing != 0) {
            closing = c == closing ? char(0) : closing;
        } else if (c == '"' || c == '[') {
            closing = c == '[' ? ']' : '"';
        } else {
            m_formatIsDate = m_formatIsDate || std::string_view("yYdDhHsS").find(c) != std::string_view::npos;
        }
    }
}

size_t BookStyles::commit_number_format()
{
    if (m_formatIsDate)
        m_dateFormats.insert(m_formatId);
    m_formatIsDate = false;
    return m_formats++;
}

size_t BookStyles::commit_cell_xf()
{
    m_dates.push_back(IsDateId(m_xfFormat) || m_dateFormats.contains(m_xfFormat));
    m_xfFormat = 0;
    return m_dates.size() - 1;
}

bool BookStyles::IsDate(size_t cellFormat) const
{
    return cellFormat < m_dates.size() && m_dates[cellFormat];
}

// Texts --------------------------------------------------------------------------------------------------------------

void BookTexts::Set(const QStringList &texts)
{
    m_texts = texts;
    m_set = true;
}

size_t BookTexts::append(std::string_view text)
{
    if (!m_set)
        m_texts += Utf8(text);
    return static_cast<size_t>(m_texts.size() - 1);
}

void BookTexts::append_segment(std::string_view text)
{
    m_segments += text;
}

size_t BookTexts::commit_segments()
{
    return append(std::exchange(m_segments, {}));
}

// Cells --------------------------------------------------------------------------------------------------------------

BookSheet::Cell *BookSheet::At(Row row, Column column)
{
    if (row < 0 || row >= MostRows || column < 0 || column >= MostColumns)
        return nullptr;
    const auto [cell, fresh] = m_rows[row].try_emplace(column);
    m_cells += fresh;
    if (m_cells > MostCells)
        throw std::runtime_error(u"برگه بیش از اندازه بزرگ است."_s.toStdString());
    return &cell->second;
}

void BookSheet::set_auto(Row row, Column column, std::string_view text)
{
    if (Cell *cell = At(row, column))
        cell->text = Utf8(text);
}

void BookSheet::set_string(Row row, Column column, orcus::spreadsheet::string_id_t index)
{
    if (Cell *cell = At(row, column))
        cell->text = m_texts.Text(index);
}

void BookSheet::set_value(Row row, Column column, double value)
{
    if (Cell *cell = At(row, column)) {
        cell->number = value;
        cell->isNumber = std::isfinite(value);
    }
}

void BookSheet::set_date_time(Row row, Column column, int year, int month, int day, int, int, double)
{
    if (Cell *cell = At(row, column))
        cell->text = QDate(year, month, day).toString(Qt::ISODate);
}

void BookSheet::set_format(Row row, Column column, size_t format)
{
    // A cell may be coloured and empty: only those with something in them are kept.
    const auto line = m_rows.find(row);
    if (line == m_rows.end())
        return;
    if (const auto cell = line->second.find(column); cell != line->second.end())
        cell->second.format = format;
}

void BookSheet::fill_down_cells(Row row, Column column, Row count)
{
    const Cell *source = At(row, column);
    if (!source)
        return;
    const Cell copy = *source;
    for (Row i = 1; i <= count; ++i)
        if (Cell *cell = At(row + i, column))
            *cell = copy;
}

orcus::spreadsheet::range_size_t BookSheet::get_sheet_size() const
{
    return {MostRows, MostColumns};
}

void BookSheet::set_position(Row row, Column column)
{
    m_row = row;
    m_column = column;
}

void BookSheet::set_result_string(std::string_view text)
{
    if (Cell *cell = At(m_row, m_column))
        cell->text = Utf8(text);
}

goods::ImportTable BookSheet::Table(const BookStyles &styles) const
{
    goods::ImportTable table;
    Row next = 0;
    for (const auto &[row, cells] : m_rows) {
        for (; next < row; ++next)
            table.EndRow();
        Column column = 0;
        for (const auto &[place, cell] : cells) {
            for (; column < place; ++column)
                table.AddCell({});
            table.AddCell(!cell.isNumber               ? cell.text
                          : styles.IsDate(cell.format) ? DateText(cell.number)
                                                       : NumberText(cell.number));
            ++column;
        }
        table.EndRow();
        ++next;
    }
    return table;
}

} // namespace goods_import
