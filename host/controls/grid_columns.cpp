#include "host/controls/grid.h"
#include "host/controls/grid_model.h"
#include "host/data/quantity.h"

#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMenu>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>

using namespace Qt::StringLiterals;

// The columns of a grid as the user arranges them.

namespace host {
namespace {

constexpr int leastWidth = 24;
constexpr int greatestWidth = 2000;

/// What clicks on the captions do, for the keyboard: the column that orders the rows turns them round.
void OfferOrders(Grid &grid, QMenu &menu, const QList<GridColumn> &columns)
{
    const QString sorted = grid.SortedBy();
    const bool rising = grid.horizontalHeader()->sortIndicatorOrder() == Qt::AscendingOrder;
    const auto offer = [&](const QString &caption, const QString &field) {
        QAction *action = menu.addAction(caption);
        action->setCheckable(true);
        action->setChecked(field == sorted);
        const bool round = field == sorted && rising;
        QObject::connect(action, &QAction::triggered, &grid, [&grid, field, round] {
            grid.SortBy(field, round ? Qt::DescendingOrder : Qt::AscendingOrder);
        });
    };
    offer(u"ترتیب خود لیست"_s, {});
    for (const GridColumn &column : columns)
        if (!column.hidden && !column.caption.trimmed().isEmpty())
            offer(column.caption.trimmed(), column.field);
}

} // namespace

QList<GridColumn> Grid::Columns() const
{
    QList<GridColumn> columns;
    const QHeaderView *header = horizontalHeader();
    for (int visual = 0; visual < header->count(); ++visual) {
        const int logical = header->logicalIndex(visual);
        if (logical == GridModel::MarkColumn)
            continue;
        GridColumn column = m_columns.at(logical - 1);
        column.hidden = isColumnHidden(logical);
        if (!column.hidden)
            column.width = header->sectionSize(logical);
        columns << column;
    }
    return columns;
}

void Grid::SetColumnVisible(const QString &field, bool visible)
{
    const int column = GridColumnOf(field);
    if (column < 0 || isColumnHidden(column + 1) == !visible)
        return;
    setColumnHidden(column + 1, !visible);
    if (!visible && SortedBy() == m_columns.at(column).field)
        SortBy({}); // rows read from now on do not carry it
    if (visible && columnWidth(column + 1) < leastWidth)
        setColumnWidth(column + 1, m_columns.at(column).width);
    ReportFields();
}

bool Grid::IsColumnVisible(const QString &field) const
{
    const int column = GridColumnOf(field);
    return column >= 0 && !isColumnHidden(column + 1);
}

QStringList Grid::VisibleFields() const
{
    QStringList fields;
    const QList<GridColumn> columns = Columns();
    for (const GridColumn &column : columns)
        if (!column.hidden)
            fields << column.field;
    return fields;
}

void Grid::ReportFields()
{
    emit VisibleFieldsChanged(VisibleFields());
}

void Grid::ResetLayout()
{
    {
        const QScopedValueRollback applying(m_applying, true);
        for (int column = 1; column <= m_columns.size(); ++column)
            horizontalHeader()->moveSection(horizontalHeader()->visualIndex(column), column);
    }
    ApplyColumns();
    ReportFields();
}

QByteArray Grid::SaveLayout() const
{
    QJsonArray list;
    const QList<GridColumn> columns = Columns();
    for (const GridColumn &column : columns)
        list << QJsonObject{{u"field"_s, column.field}, {u"width"_s, column.width}, {u"hidden"_s, column.hidden}};
    return QJsonDocument(list).toJson(QJsonDocument::Compact);
}

void Grid::RestoreLayout(const QByteArray &layout)
{
    const QJsonArray list = QJsonDocument::fromJson(layout).array();
    if (list.isEmpty())
        return;
    {
        const QScopedValueRollback applying(m_applying, true);
        QHeaderView *header = horizontalHeader();
        int visual = 1;
        for (const auto &value : list) {
            const QJsonObject stored = value.toObject();
            const int column = GridColumnOf(stored.value(u"field").toString());
            if (column < 0)
                continue;
            header->moveSection(header->visualIndex(column + 1), visual++);
            setColumnHidden(column + 1, m_columns.at(column).choosable ? stored.value(u"hidden").toBool()
                                                                       : m_columns.at(column).hidden);
            setColumnWidth(column + 1, std::clamp(stored.value(u"width").toInt(), leastWidth, greatestWidth));
        }
    }
    ReportFields();
}

QList<GridColumn> Grid::VisibleColumns() const
{
    QList<GridColumn> columns = Columns();
    columns.removeIf([](const GridColumn &column) { return column.hidden; });
    return columns;
}

QStringList Grid::VisibleCaptions() const
{
    QStringList captions;
    const QList<GridColumn> columns = VisibleColumns();
    for (const GridColumn &column : columns)
        captions << column.caption;
    return captions;
}

/// What a column's own delegate makes of a value, or the value as it is shown.
QString Grid::CellText(const QModelIndex &index) const
{
    const auto *delegate = qobject_cast<const QStyledItemDelegate *>(itemDelegateForIndex(index));
    return delegate ? delegate->displayText(index.data(), locale()) : index.data().toString();
}

QString Grid::PlainText(const QModelIndex &index) const
{
    QString value = index.data(Qt::EditRole).toString();
    switch (m_columns.at(index.column() - 1).format) {
    case ColumnFormat::Code:
    case ColumnFormat::Quantity:
    case ColumnFormat::Amount:
    case ColumnFormat::Price:
        return TrimDecimal(value);
    case ColumnFormat::Date:
        return value;
    case ColumnFormat::Flag:
    case ColumnFormat::Text:
        break;
    }
    return CellText(index);
}

QList<int> Grid::VisibleSections() const
{
    QList<int> sections;
    const QHeaderView *header = horizontalHeader();
    for (int visual = 0; visual < header->count(); ++visual) {
        const int logical = header->logicalIndex(visual);
        if (logical != GridModel::MarkColumn && !isColumnHidden(logical))
            sections << logical;
    }
    return sections;
}

QStringList Grid::VisibleTexts(int row) const
{
    QStringList texts;
    const QList<int> sections = VisibleSections();
    for (const int section : sections)
        texts << CellText(m_model->index(row, section));
    return texts;
}

QStringList Grid::VisiblePlainTexts(int row) const
{
    QStringList texts;
    const QList<int> sections = VisibleSections();
    for (const int section : sections)
        texts << PlainText(m_model->index(row, section));
    return texts;
}

void Grid::ChooseColumns()
{
    QMenu menu(this);
    const QList<GridColumn> columns = Columns();
    for (const GridColumn &column : columns) {
        if (!column.choosable)
            continue;
        QAction *action = menu.addAction(column.caption.trimmed().isEmpty() ? column.field : column.caption.trimmed());
        action->setCheckable(true);
        action->setChecked(!column.hidden);
        action->setEnabled(column.hidden || VisibleFields().size() > 1);
        connect(action, &QAction::toggled, this,
                [this, field = column.field](bool on) { SetColumnVisible(field, on); });
    }
    if (m_sortable) {
        menu.addSeparator();
        OfferOrders(*this, *menu.addMenu(u"ترتیب سطرها"_s), columns);
    }
    const QHeaderView *header = horizontalHeader();
    menu.exec(header->mapToGlobal(header->rect().bottomRight() / 2));
}

} // namespace host
