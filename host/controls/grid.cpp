#include "host/controls/grid.h"

#include "host/controls/grid_model.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include <algorithm>

namespace host {
namespace {

constexpr int markWidth = 30;

} // namespace

Grid::Grid(QWidget *parent) : QTableView(parent), m_model(new GridModel(this))
{
    setModel(m_model);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 8);
    QHeaderView *header = horizontalHeader();
    header->setSectionsMovable(true);
    header->setFirstSectionMovable(false);
    header->setHighlightSections(false);
    header->setDefaultAlignment(Qt::AlignLeading | Qt::AlignVCenter);
    header->setMinimumSectionSize(24);
    header->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(header, &QHeaderView::customContextMenuRequested, this, &Grid::ChooseColumns);
    connect(header, &QHeaderView::sectionMoved, this, [this] {
        if (!m_applying)
            ReportFields();
    });
    connect(m_model, &GridModel::Changed, this, [this](int rows) {
        if (rows > 0 && !currentIndex().isValid() && !m_applying)
            StandOn(0);
        else
            ReportCurrent(currentIndex()); // a row that moved up is told by its key only now
        emit RowCountChanged(rows);
    });
    connect(header, &QHeaderView::sectionClicked, this, &Grid::CaptionClicked);
    connect(m_model, &GridModel::Arranging, this, [this] {
        m_arrangedRow = CurrentSourceRow();
        m_applying = true;
    });
    connect(m_model, &GridModel::Arranged, this, [this] {
        m_applying = false;
        if (m_model->rowCount() > 0)
            StandOn(std::max(m_model->ShownRow(m_arrangedRow), 0));
    });
    connect(m_model, &GridModel::MarksChanged, this, &Grid::MarksChanged);
    connect(m_model, &GridModel::FetchFailed, this, &Grid::FetchFailed);
    connect(m_model, &QAbstractItemModel::modelReset, this, [this] {
        if (m_applying)
            return;
        if (m_model->rowCount() > 0)
            StandOn(0);
        else
            currentChanged({}, {});
    });
    SetMultiSelect(false);
}

Grid::~Grid()
{
    // The views' last signals must not find a half-destroyed grid.
    m_model->disconnect(this);
}

void Grid::SetColumns(const QList<GridColumn> &columns)
{
    m_columns = columns;
    m_model->SetColumns(columns);
    ApplyColumns();
}

void Grid::ApplyColumns()
{
    const QScopedValueRollback applying(m_applying, true);
    QHeaderView *header = horizontalHeader();
    header->setSectionResizeMode(QHeaderView::Interactive);
    header->setSectionResizeMode(GridModel::MarkColumn, QHeaderView::Fixed);
    header->resizeSection(GridModel::MarkColumn, markWidth);
    for (int i = 0; i < m_columns.size(); ++i) {
        header->resizeSection(i + 1, m_columns.at(i).width);
        setColumnHidden(i + 1, m_columns.at(i).hidden);
    }
}

int Grid::GridColumnOf(const QString &field) const
{
    const auto found = std::find_if(m_columns.begin(), m_columns.end(), [&](const GridColumn &column) {
        return column.field.compare(field, Qt::CaseInsensitive) == 0;
    });
    return found == m_columns.end() ? -1 : static_cast<int>(found - m_columns.begin());
}

void Grid::SetColumnCaption(const QString &field, const QString &caption)
{
    const int column = GridColumnOf(field);
    if (column < 0)
        return;
    m_columns[column].caption = caption;
    m_model->SetCaption(column, caption);
}

void Grid::SetSource(QAbstractItemModel *model, const QString &keyField)
{
    m_model->SetSource(model, keyField);
}

QAbstractItemModel *Grid::Source() const
{
    return m_model->Source();
}

int Grid::RowCount() const
{
    return m_model->rowCount();
}

QString Grid::CurrentKey() const
{
    return m_model->Key(currentIndex().row());
}

int Grid::CurrentSourceRow() const
{
    return m_model->SourceRow(currentIndex().row());
}

QVariant Grid::CurrentValue(const QString &field) const
{
    const int row = CurrentSourceRow();
    if (row < 0)
        return {};
    const int column = FieldColumn(*Source(), field);
    return column < 0 ? QVariant() : Source()->index(row, column).data(Qt::EditRole);
}

bool Grid::Locate(const QString &key)
{
    const QAbstractItemModel *source = Source();
    if (!source || key.isEmpty())
        return false;
    if (m_model->IsAwaitingOrder())
        FetchAll();
    // A search leaves few rows, mostly the one wanted.
    for (int shown = 0; !CurrentSearch().IsEmpty() && shown < std::min(RowCount(), 100); ++shown)
        if (m_model->Key(shown) == key) {
            StandOn(shown);
            return true;
        }
    for (int row = 0;; ++row) {
        if (row >= source->rowCount()) {
            if (m_model->IsComplete())
                return false;
            const int before = source->rowCount();
            m_model->fetchMore({});
            if (source->rowCount() == before)
                return false;
        }
        if (m_model->SourceKey(row) != key)
            continue;
        m_model->MatchUpTo(row);
        const int shown = m_model->ShownRow(row);
        if (shown < 0)
            return false;
        StandOn(shown);
        scrollTo(currentIndex(), QAbstractItemView::EnsureVisible);
        return true;
    }
}

void Grid::StandOn(int row)
{
    // QTableView::selectRow() takes the column at the edge of the viewport, which right to left is none.
    int column = currentIndex().column();
    const QHeaderView *header = horizontalHeader();
    for (int visual = 1; visual < header->count() && (column <= GridModel::MarkColumn || isColumnHidden(column));
         ++visual)
        column = header->logicalIndex(visual);
    setCurrentIndex(m_model->index(row, column));
}

Grid::Place Grid::CurrentPlace() const
{
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return {};
    const bool seen = viewport()->rect().intersects(visualRect(current));
    return {CurrentKey(), current.row(), seen ? current.row() - verticalScrollBar()->value() : -1,
            horizontalScrollBar()->value()};
}

void Grid::ReturnTo(const Place &place)
{
    if (IsEmpty() && IsComplete())
        return;
    if (!Locate(place.key) && !IsEmpty())
        StandOn(std::clamp(place.row, 0, RowCount() - 1));
    if (place.offset < 0 || !currentIndex().isValid())
        return;
    executeDelayedItemsLayout(); // the bar does not know the new rows before
    verticalScrollBar()->setValue(currentIndex().row() - place.offset);
    scrollTo(currentIndex(), QAbstractItemView::EnsureVisible);
    horizontalScrollBar()->setValue(place.sideways);
}

void Grid::SortBy(const QString &field, Qt::SortOrder order)
{
    const int column = GridColumnOf(field);
    QApplication::setOverrideCursor(Qt::WaitCursor); // a long list is fetched to its end
    m_model->Sort(column, order);
    QApplication::restoreOverrideCursor();
    horizontalHeader()->setSortIndicatorShown(column >= 0);
    horizontalHeader()->setSortIndicator(column + 1, order);
    viewport()->update();
}

QString Grid::SortedBy() const
{
    return m_model->IsSorted() ? m_columns.at(m_model->SortColumn()).field : QString();
}

void Grid::CaptionClicked(int section)
{
    if (!m_sortable || section <= GridModel::MarkColumn)
        return;
    const QString field = m_columns.at(section - 1).field;
    if (SortedBy() != field)
        SortBy(field, Qt::AscendingOrder);
    else if (m_model->SortOrder() == Qt::AscendingOrder) // the header has turned its own mark round by now
        SortBy(field, Qt::DescendingOrder);
    else
        SortBy({});
}

void Grid::SetMultiSelect(bool on)
{
    if (!on)
        m_model->ClearMarks();
    setColumnHidden(GridModel::MarkColumn, !on);
}

bool Grid::IsMultiSelect() const
{
    return !isColumnHidden(GridModel::MarkColumn);
}

QStringList Grid::MarkedKeys() const
{
    return m_model->Marked();
}

bool Grid::IsMarked(const QString &key) const
{
    return m_model->IsMarked(key);
}

void Grid::SetMarked(const QString &key, bool marked)
{
    m_model->SetMarked(key, marked);
}

void Grid::ToggleCurrentMark()
{
    const QString key = CurrentKey();
    m_model->SetMarked(key, !m_model->IsMarked(key));
}

void Grid::MarkAllShown(bool marked)
{
    if (FetchAll())
        m_model->MarkAllShown(marked);
}

void Grid::ClearMarks()
{
    m_model->ClearMarks();
}

QStringList Grid::ShownKeys()
{
    if (!FetchAll())
        return {};
    QStringList keys;
    keys.reserve(RowCount());
    for (int row = 0; row < RowCount(); ++row)
        keys << m_model->Key(row);
    return keys;
}

void Grid::Search(const SearchDescription &description)
{
    const int before = CurrentSourceRow();
    {
        const QScopedValueRollback applying(m_applying, true);
        m_model->Search(description);
    }
    // The row the user stood on stays current while it matches.
    const int shown = m_model->ShownRow(before);
    if (m_model->rowCount() > 0)
        StandOn(std::max(shown, 0));
    else
        currentChanged({}, {});
    scrollTo(currentIndex());
}

SearchDescription Grid::CurrentSearch() const
{
    return m_model->CurrentSearch();
}

void Grid::SetSearchFields(const QStringList &fields)
{
    m_model->SetSearchFields(fields);
}

void Grid::SetRowColor(RowColor color)
{
    m_model->rowColor = std::move(color);
    viewport()->update();
}

bool Grid::IsComplete() const
{
    return m_model->IsComplete();
}

bool Grid::HasAllRows() const
{
    return m_model->IsComplete() && !m_model->HasFailed();
}

bool Grid::FetchAll()
{
    return m_model->FetchAll();
}

void Grid::FetchFor(int milliseconds)
{
    m_model->FetchFor(milliseconds);
}

void Grid::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && event->modifiers() == Qt::NoModifier && state() != QAbstractItemView::EditingState) {
        if (currentIndex().isValid())
            emit RowActivated(CurrentKey());
        return;
    }
    // The captions are out of reach for the keyboard: Alt+Down opens their menu, as it opens any list.
    if (event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier) {
        ChooseColumns();
        return;
    }
    if (IsMultiSelect() && currentIndex().isValid()) {
        if (event->key() == Qt::Key_Insert || event->key() == Qt::Key_Space) {
            ToggleCurrentMark();
            if (event->key() == Qt::Key_Insert && currentIndex().row() + 1 < RowCount())
                StandOn(currentIndex().row() + 1);
            return;
        }
        if (event->matches(QKeySequence::SelectAll)) {
            MarkAllShown();
            return;
        }
    }
    QTableView::keyPressEvent(event);
}

QModelIndex Grid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    const bool ends = action == MoveHome || action == MoveEnd;
    const QModelIndex current = currentIndex();
    if (!ends || !current.isValid() || (editTriggers() != NoEditTriggers && !(modifiers & Qt::ControlModifier)))
        return QTableView::moveCursor(action, modifiers);
    if (action == MoveEnd)
        FetchAll(); // the last row, not the last one so far
    return m_model->index(action == MoveHome ? 0 : RowCount() - 1, current.column());
}

void Grid::CommitTyped()
{
    if (QWidget *editor = state() == EditingState ? indexWidget(currentIndex()) : nullptr)
        commitData(editor);
}

void Grid::mousePressEvent(QMouseEvent *event)
{
    const QModelIndex at = indexAt(event->position().toPoint());
    if (IsMultiSelect() && at.isValid() && event->button() == Qt::LeftButton &&
        (at.column() == GridModel::MarkColumn || event->modifiers().testFlag(Qt::ControlModifier))) {
        StandOn(at.row());
        ToggleCurrentMark();
        return;
    }
    QTableView::mousePressEvent(event);
}

void Grid::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QModelIndex at = indexAt(event->position().toPoint());
    if (at.isValid() && at.column() != GridModel::MarkColumn && event->button() == Qt::LeftButton)
        emit RowActivated(m_model->Key(at.row()));
    else if (at.isValid() && at.column() == GridModel::MarkColumn)
        mousePressEvent(event); // a quick second click marks or unmarks again
    else
        QTableView::mouseDoubleClickEvent(event);
}

void Grid::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTableView::currentChanged(current, previous);
    ReportCurrent(current);
}

void Grid::ReportCurrent(const QModelIndex &current)
{
    if (m_applying)
        return;
    const QString key = current.isValid() ? m_model->Key(current.row()) : QString();
    if (key == m_lastKey)
        return;
    m_lastKey = key;
    emit CurrentKeyChanged(key);
}

} // namespace host
