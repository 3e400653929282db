#pragma once

#include "desk/documents/document_records.h"

#include <QAbstractTableModel>

namespace desk {

/// The lines of the document in its editor, as a grid shows them. The key of a row is its OperationRow.
class DocumentLinesModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    using QAbstractTableModel::QAbstractTableModel;

    void SetLines(const QList<DocumentLine> &lines);
    const QList<DocumentLine> &Lines() const { return m_lines; }
    bool IsEmpty() const { return m_lines.isEmpty(); }
    Quantity Total() const;

    /// -1 when there is none.
    int RowOf(int operationRow) const;
    const DocumentLine &At(int row) const { return m_lines.at(row); }
    /// Gives the line its OperationRow, one that the document has never had, and answers its row.
    int Add(DocumentLine line);
    void Replace(int row, const DocumentLine &line);
    void Remove(int row);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    QList<DocumentLine> m_lines;
    int m_lastRow = 0; ///< the highest OperationRow so far, also of lines that were removed
};

} // namespace desk
