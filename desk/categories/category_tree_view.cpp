#include "desk/categories/category_tree_view.h"

#include "host/data/persian_text.h"
#include "host/look/theme.h"

#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QStyledItemDelegate>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int CodeRole = Qt::UserRole;
constexpr int NameColumn = 0;
constexpr int GoodsColumn = 1;
constexpr int GoodsWidth = 90;
constexpr int RowHeight = 28; // room for the edit of a name
/// The width of Categories.Name.
constexpr int LongestName = 100;

/// Names only are edited, up to the width of their column.
class NameDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        if (index.column() != NameColumn)
            return nullptr;
        auto *edit = qobject_cast<QLineEdit *>(QStyledItemDelegate::createEditor(parent, option, index));
        if (edit) {
            edit->setObjectName(u"CategoryName_EDT"_s);
            edit->setMaxLength(LongestName);
        }
        return edit;
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return QStyledItemDelegate::sizeHint(option, index).expandedTo({0, RowHeight});
    }
};

int CodeOf(const QTreeWidgetItem *item)
{
    return item ? item->data(NameColumn, CodeRole).toInt() : 0;
}

} // namespace

CategoryTreeView::CategoryTreeView(QWidget *parent) : QTreeWidget(parent)
{
    setColumnCount(2);
    setHeaderLabels({u"دسته"_s, u"کالا"_s});
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    header()->setSectionResizeMode(GoodsColumn, QHeaderView::Fixed);
    header()->resizeSection(GoodsColumn, GoodsWidth);
    setEditTriggers(NoEditTriggers);
    setDragDropMode(InternalMove);
    setDefaultDropAction(Qt::MoveAction);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);
    auto *names = new NameDelegate(this);
    setItemDelegate(names);
    // Later, because what follows fills the tree anew, and the editor is still closing.
    connect(names, &QStyledItemDelegate::commitData, this, [this] {
        if (QTreeWidgetItem *item = m_edited)
            QMetaObject::invokeMethod(
                this, [this, item] { TakeName(item); }, Qt::QueuedConnection);
    });
    connect(names, &QStyledItemDelegate::closeEditor, this, [this](QWidget *, QAbstractItemDelegate::EndEditHint hint) {
        if (hint == QAbstractItemDelegate::RevertModelCache && m_edited)
            QMetaObject::invokeMethod(this, &CategoryTreeView::GivenUp, Qt::QueuedConnection);
    });
}

QTreeWidgetItem *CategoryTreeView::MakeItem(QTreeWidgetItem *parent, int row, const QString &name, int code)
{
    auto *item = new QTreeWidgetItem;
    item->setText(NameColumn, name);
    item->setData(NameColumn, CodeRole, code);
    item->setFlags(item->flags() | Qt::ItemIsEditable);
    item->setTextAlignment(GoodsColumn, Qt::AlignCenter);
    parent->insertChild(row, item);
    return item;
}

void CategoryTreeView::Fill(const QList<host::Category> &nodes, const QHash<int, int> &goods)
{
    QSet<int> closed;
    for (const auto &[code, item] : m_items.asKeyValueRange())
        if (item->childCount() > 0 && !item->isExpanded())
            closed << code;
    m_edited = nullptr;
    m_items.clear();
    clear();
    QHash<int, QList<host::Category>> branches;
    for (const host::Category &node : nodes)
        branches[node.Parent] << node;
    QList<int> open = {0};
    while (!open.isEmpty()) {
        const int parent = open.takeFirst();
        QTreeWidgetItem *above = m_items.value(parent, invisibleRootItem());
        for (const host::Category &node : branches.value(parent)) {
            m_items.insert(node.Code, MakeItem(above, above->childCount(), node.Name, node.Code));
            open << node.Code;
        }
    }
    for (const auto &[code, item] : m_items.asKeyValueRange()) {
        item->setExpanded(!closed.contains(code));
        if (goods.contains(code))
            item->setText(GoodsColumn, host::PersianDigits(QString::number(goods.value(code))));
    }
    setCurrentItem(topLevelItem(0));
    MarkCut(m_cut);
}

void CategoryTreeView::StandOn(int code)
{
    QTreeWidgetItem *item = m_items.value(code);
    if (item && !item->isHidden())
        setCurrentItem(item);
}

bool CategoryTreeView::ShowMatches(QTreeWidgetItem *item, const QString &folded, bool all)
{
    const bool own = all || host::Fold(item->text(NameColumn)).contains(folded);
    bool any = own;
    for (int row = 0; row < item->childCount(); ++row)
        any = ShowMatches(item->child(row), folded, own) || any;
    item->setHidden(!any);
    return any;
}

void CategoryTreeView::Search(const QString &text)
{
    const QString folded = host::Fold(text.simplified());
    for (int row = 0; row < topLevelItemCount(); ++row)
        ShowMatches(topLevelItem(row), folded, folded.isEmpty());
    if (folded.isEmpty())
        return;
    expandAll();
    const auto matches = [&folded](const QTreeWidgetItem *item) {
        return !item->isHidden() && host::Fold(item->text(NameColumn)).contains(folded);
    };
    if (currentItem() && matches(currentItem()))
        return;
    for (QTreeWidgetItem *item = topLevelItem(0); item; item = itemBelow(item)) {
        if (matches(item)) {
            setCurrentItem(item);
            return;
        }
    }
}

int CategoryTreeView::Current() const
{
    return currentItem() && !currentItem()->isHidden() ? CodeOf(currentItem()) : 0;
}

QString CategoryTreeView::CurrentName() const
{
    return currentItem() ? currentItem()->text(NameColumn) : QString();
}

int CategoryTreeView::ParentOf(int code) const
{
    const QTreeWidgetItem *item = m_items.value(code);
    return item ? CodeOf(item->parent()) : 0;
}

QList<int> CategoryTreeView::Branches(int parent) const
{
    const QTreeWidgetItem *above = m_items.value(parent, invisibleRootItem());
    QList<int> codes;
    for (int row = 0; row < above->childCount(); ++row)
        codes << CodeOf(above->child(row));
    return codes;
}

void CategoryTreeView::EditNew(const CategoryStore::Place &place)
{
    QTreeWidgetItem *above = m_items.value(place.parent, invisibleRootItem());
    QTreeWidgetItem *next = m_items.value(place.next);
    m_newPlace = place;
    m_edited = MakeItem(above, next ? above->indexOfChild(next) : above->childCount(), QString(), 0);
    above->setExpanded(true);
    setCurrentItem(m_edited);
    editItem(m_edited, NameColumn);
}

void CategoryTreeView::EditCurrent()
{
    if (Current() == 0)
        return;
    m_edited = currentItem();
    editItem(m_edited, NameColumn);
}

void CategoryTreeView::EditAgain()
{
    if (!m_edited)
        return;
    setCurrentItem(m_edited);
    editItem(m_edited, NameColumn);
}

void CategoryTreeView::TakeName(QTreeWidgetItem *item)
{
    if (item != m_edited)
        return; // filled anew meanwhile
    const QString name = item->text(NameColumn).simplified();
    if (name.isEmpty())
        emit GivenUp();
    else if (CodeOf(item) == 0)
        emit NewNamed(name, m_newPlace);
    else
        emit Renamed(CodeOf(item), name);
}

void CategoryTreeView::MarkCut(int code)
{
    m_cut = code;
    for (const auto &[each, item] : m_items.asKeyValueRange())
        item->setData(NameColumn, Qt::ForegroundRole,
                      each == code ? QVariant(QBrush(host::theme::InkSoft())) : QVariant());
}

void CategoryTreeView::keyboardSearch(const QString &search)
{
    emit Typed(search);
}

void CategoryTreeView::keyPressEvent(QKeyEvent *event)
{
    // Keys with Ctrl are the screen's: here they would scroll.
    if (event->modifiers() & Qt::ControlModifier)
        event->ignore();
    else
        QTreeWidget::keyPressEvent(event);
}

void CategoryTreeView::dropEvent(QDropEvent *event)
{
    const int code = Current();
    QTreeWidgetItem *target = itemAt(event->position().toPoint());
    CategoryStore::Place place;
    if (target && dropIndicatorPosition() == OnItem) {
        place.parent = CodeOf(target);
    } else if (target) {
        QTreeWidgetItem *above = target->parent() ? target->parent() : invisibleRootItem();
        const int row = above->indexOfChild(target) + (dropIndicatorPosition() == BelowItem ? 1 : 0);
        place = {CodeOf(target->parent()), CodeOf(above->child(row))};
    }
    // The tree is filled from the database when the move is done; until then nothing leaves its place.
    event->setDropAction(Qt::IgnoreAction);
    event->accept();
    setState(NoState);
    if (code != 0 && place.next != code)
        QMetaObject::invokeMethod(
            this, [this, code, place] { emit Dropped(code, place); }, Qt::QueuedConnection);
}

} // namespace desk
