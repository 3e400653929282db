#include "data/goods/goods_import_table.h"

#include <algorithm>

namespace goods {

void ImportTable::AddCell(QStringView text)
{
    m_text += text;
    m_ends.push_back(m_text.size());
}

void ImportTable::EndRow()
{
    const size_t begin = m_rows.empty() ? 0 : m_rows.back();
    m_columns = std::max(m_columns, static_cast<int>(m_ends.size() - begin));
    m_rows.push_back(m_ends.size());
}

QStringView ImportTable::Cell(int row, int column) const
{
    const auto place = static_cast<size_t>(row);
    const size_t cell = (row == 0 ? 0 : m_rows[place - 1]) + static_cast<size_t>(column);
    if (column < 0 || cell >= m_rows[place]) {
        return {};
    }
    const qsizetype begin = cell == 0 ? 0 : m_ends[cell - 1];
    return QStringView(m_text).sliced(begin, m_ends[cell] - begin);
}

bool ImportTable::IsEmptyRow(int row) const
{
    for (int column = 0; column < m_columns; ++column) {
        if (!Cell(row, column).trimmed().isEmpty()) {
            return false;
        }
    }
    return true;
}

} // namespace goods
