#include "desk/documents/document_lines_model.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

struct Column
{
    const char16_t *field;
    QVariant (*value)(const DocumentLine &line, int row);
};

QVariant Text(Quantity quantity)
{
    return host::QuantityToText(quantity);
}

constexpr Column Columns[] = {
    {u"OperationRow", [](const DocumentLine &line, int) { return QVariant(line.OperationRow); }},
    {u"Radif", [](const DocumentLine &, int row) { return QVariant(row + 1); }},
    {u"GoodCode", [](const DocumentLine &line, int) { return QVariant(line.Good.Code); }},
    {u"GoodName", [](const DocumentLine &line, int) { return QVariant(line.Good.Name); }},
    {u"HasDetails", [](const DocumentLine &line, int) { return QVariant(line.Good.HasDetails); }},
    {u"StoreName", [](const DocumentLine &line, int) { return QVariant(line.StoreName); }},
    {u"Amount1", [](const DocumentLine &line, int) { return Text(line.Amount1); }},
    {u"UnitName1", [](const DocumentLine &line, int) { return QVariant(line.Good.UnitName1); }},
    {u"Amount2",
     [](const DocumentLine &line, int) { return line.Good.UnitName2.isEmpty() ? QVariant() : Text(line.Amount2); }},
    {u"UnitName2", [](const DocumentLine &line, int) { return QVariant(line.Good.UnitName2); }},
    {u"Price", [](const DocumentLine &line, int) { return Text(line.Price); }},
    {u"Sum", [](const DocumentLine &line, int) { return Text(line.Sum()); }},
};

} // namespace

void DocumentLinesModel::SetLines(const QList<DocumentLine> &lines)
{
    beginResetModel();
    m_lines = lines;
    m_lastRow = 0;
    for (const DocumentLine &line : lines)
        m_lastRow = std::max(m_lastRow, line.OperationRow);
    endResetModel();
}

Quantity DocumentLinesModel::Total() const
{
    Quantity total = 0;
    for (const DocumentLine &line : m_lines)
        total += line.Sum();
    return total;
}

int DocumentLinesModel::RowOf(int operationRow) const
{
    const auto found = std::find_if(m_lines.cbegin(), m_lines.cend(),
                                    [=](const DocumentLine &line) { return line.OperationRow == operationRow; });
    return found == m_lines.cend() ? -1 : static_cast<int>(std::distance(m_lines.cbegin(), found));
}

int DocumentLinesModel::Add(DocumentLine line)
{
    const int row = rowCount();
    line.OperationRow = ++m_lastRow;
    beginInsertRows({}, row, row);
    m_lines << line;
    endInsertRows();
    return row;
}

void DocumentLinesModel::Replace(int row, const DocumentLine &line)
{
    m_lines[row] = line;
    emit dataChanged(index(row, 0), index(row, columnCount() - 1));
}

void DocumentLinesModel::Remove(int row)
{
    beginRemoveRows({}, row, row);
    m_lines.removeAt(row);
    endRemoveRows();
    if (!m_lines.isEmpty())
        emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1)); // those behind it move up
}

int DocumentLinesModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_lines.size());
}

int DocumentLinesModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(std::size(Columns));
}

QVariant DocumentLinesModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    return Columns[index.column()].value(m_lines.at(index.row()), index.row());
}

QVariant DocumentLinesModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    return QString::fromUtf16(Columns[section].field);
}

} // namespace desk
