#pragma once

#include "desk/categories/category_store.h"

#include <QTreeWidget>

namespace desk {

/// The tree of categories as a control: names edited in place, branches dragged. It changes nothing by itself; what the
/// user wants is told by signals, and shown when the tree is filled anew.
class CategoryTreeView : public QTreeWidget
{
    Q_OBJECT

public:
    explicit CategoryTreeView(QWidget *parent = nullptr);

    /// Shows the tree. Branches stay open or closed as they were.
    void Fill(const QList<host::Category> &nodes, const QHash<int, int> &goods);
    /// Shows the branches with names that contain the text, and what is above and below them; empty shows all. Stands
    /// on the first of them unless the current one is among them.
    void Search(const QString &text);
    /// Stands on the node with this code when it is shown.
    void StandOn(int code);

    /// The code of the current node, 0 when there is none.
    int Current() const;
    QString CurrentName() const;
    int ParentOf(int code) const;
    /// The branches of a node in their order; those at the root for 0.
    QList<int> Branches(int parent) const;
    int Count() const { return static_cast<int>(m_items.size()); }

    /// Begins a new node at the place; its name is told by `NewNamed`.
    void EditNew(const CategoryStore::Place &place);
    /// Opens the name of the current node.
    void EditCurrent();
    bool IsEditing() const { return state() == EditingState; }
    /// Goes on typing the name that was told last: it was refused.
    void EditAgain();
    /// The node that is about to be moved is shown paler; 0 for none.
    void MarkCut(int code);

signals:
    void NewNamed(const QString &name, const desk::CategoryStore::Place &place);
    void Renamed(int code, const QString &name);
    /// Editing ended without a name.
    void GivenUp();
    void Dropped(int code, const desk::CategoryStore::Place &place);
    /// A letter typed on the tree, for the search.
    void Typed(const QString &text);

protected:
    void keyboardSearch(const QString &search) override;
    void keyPressEvent(QKeyEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    QTreeWidgetItem *MakeItem(QTreeWidgetItem *parent, int row, const QString &name, int code);
    void TakeName(QTreeWidgetItem *item);
    bool ShowMatches(QTreeWidgetItem *item, const QString &folded, bool all);

    QHash<int, QTreeWidgetItem *> m_items;
    QTreeWidgetItem *m_edited = nullptr;
    CategoryStore::Place m_newPlace;
    int m_cut = 0;
};

} // namespace desk
