#pragma once

#include "host/host_export.h"
#include "host/services/category_service.h"

#include <QHash>
#include <QWidget>

class QCompleter;
class QLineEdit;
class QMenu;
class QStringListModel;
class QToolButton;

namespace host {

class FlowLayout;

/// Chooses one branch of the tree of categories and shows the way to it as bubbles, from the root on.
///
/// A part of a name typed into `Editor` offers every way that contains it; Enter takes the first, and so does the
/// screen (TakePending) before it reads the code. F2, Alt+Down, Down and `select_BTN` open a menu of the branches below
/// the chosen one. Backspace in the empty edit, and a click on a bubble, cut the way short.
class HOST_EXPORT CategoryPath : public QWidget
{
    Q_OBJECT

public:
    explicit CategoryPath(QWidget *parent = nullptr);

    /// Every branch that there is. The chosen one stays while it exists.
    void SetTree(const QList<Category> &tree);
    /// The last branch of the way, 0 for none.
    int Code() const { return m_code; }
    /// Shows the way to a branch and forgets what is typed; an unknown code chooses none. Emits nothing.
    void SetCode(int code);
    /// Something is typed that chose nothing yet.
    bool IsPending() const;
    /// Chooses the first way that what is typed fits, as Enter does. False when it fits none; it stays in the edit
    /// then.
    bool TakePending();
    /// The names along the way, joined by " / ".
    QString Text() const { return Way(m_code); }

signals:
    /// The user chose another branch.
    void Changed();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void Take(int code);
    void Rebuild();
    void Offer(const QString &typed);
    bool TakeTyped();
    void OpenMenu();
    void FillMenu(QMenu *menu, int parent);
    QList<int> Codes(int code) const;
    QString Way(int code) const;

    QHash<int, Category> m_nodes;
    QHash<int, QList<int>> m_branches;     ///< by their parent, in order
    QList<std::pair<QString, int>> m_ways; ///< every way, folded, for typing
    QList<int> m_offered;                  ///< what the open list of ways leads to
    int m_code = 0;
    FlowLayout *m_flow;
    QLineEdit *m_edit;
    QToolButton *m_choose;
    QStringListModel *m_found;
    QCompleter *m_completer;
};

} // namespace host
