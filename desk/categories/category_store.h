#pragma once

#include "host/services/category_service.h"

#include <QHash>
#include <QSqlDatabase>

#include <optional>

namespace desk {

/// The statements on the tree of goods categories.
///
/// Every change is one transaction and looks at the tree anew inside it: another desk may have moved or deleted what
/// this one still shows. What a rule refuses is answered with the words for the user, and nothing is written. Database
/// errors are thrown.
class CategoryStore
{
public:
    /// Why a change is refused; nothing when it is done.
    using Refusal = std::optional<QString>;

    explicit CategoryStore(const QSqlDatabase &connection) : m_connection(connection) {}

    /// Every node, those of one parent in their order.
    QList<host::Category> All() const;
    /// From the root to the node; empty for a node that does not exist.
    QList<host::Category> Path(int code) const;
    /// How many goods stand in each category itself.
    QHash<int, int> GoodsCounts() const;

    /// Where a node stands: below `parent` (0: at the root), before its branch `next` (0, or one that is elsewhere by
    /// now: behind the last one).
    struct Place
    {
        int parent = 0;
        int next = 0;
    };
    /// Adds a node and sets its code. A parent that holds goods hands them to the new node when `takeGoods`, and
    /// refuses otherwise: goods stand in the ends of branches.
    Refusal Add(const QString &name, const Place &place, bool takeGoods, int &code);
    Refusal Rename(int code, const QString &name);
    /// Puts a node, and its branch with it, somewhere else, also among its neighbours.
    Refusal Move(int code, const Place &place);
    /// Deletes a node that has neither branches nor goods.
    Refusal Delete(int code);
    /// What Delete() would refuse, for asking before the user is asked.
    Refusal ReasonToKeep(int code) const;

private:
    struct Node
    {
        int parent = 0;
        QString name;
        QString path; ///< "," above the root
    };
    void Lock();
    std::optional<Node> Find(int code) const;
    bool NameTaken(const QString &name, int parent, int except) const;
    int GoodsIn(int code) const;
    /// Makes room in front of `place.next` and gives the place in the order that is free there.
    QString FreeRadif(const Place &place, int except);

    QSqlDatabase m_connection;
};

} // namespace desk
