#pragma once

#include <QList>
#include <QString>

namespace host {

/// One node of the tree of goods categories.
struct Category
{
    int Code = 0;
    int Parent = 0; ///< 0 at the root
    QString Name;
};

/// The tree of goods categories; the host keeps it.
class CategoryService
{
public:
    virtual ~CategoryService() = default;

    /// Every node; those of one parent in their order.
    virtual QList<Category> Tree() = 0;
    /// The path from the root to a node.
    virtual QList<Category> Path(int code) = 0;
    /// Opens the tree for working on it (new, rename, move, delete) and returns when it is closed. Asks for the rights
    /// itself, and tells the user what it refuses.
    virtual void Open_Categories() = 0;
};

} // namespace host
