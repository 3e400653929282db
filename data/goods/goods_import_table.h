#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace goods {

/// Rows of texts in little memory, all characters in one buffer: what a file gives, and what is stored beside it.
class ImportTable
{
public:
    /// Puts a cell at the end of the row that is being built.
    void AddCell(QStringView text);
    /// Ends that row; one without cells is a row too.
    void EndRow();
    void Clear() { *this = {}; }

    int RowCount() const { return static_cast<int>(m_rows.size()); }
    /// Of the widest row.
    int ColumnCount() const { return m_columns; }
    /// Empty behind the end of a row.
    QStringView Cell(int row, int column) const;
    bool IsEmptyRow(int row) const;

private:
    QString m_text;
    std::vector<qsizetype> m_ends; ///< of the cells in m_text
    std::vector<size_t> m_rows;    ///< the end of each row in m_ends
    int m_columns = 0;
};

} // namespace goods
