#pragma once

#include <QList>
#include <QSqlDatabase>
#include <QString>

namespace desk {

/// Which levels are titled.
enum class LevelKind { Cost, Discount };

struct LevelTitle
{
    int code = 0;
    QString title; ///< empty: none was given
};

/// The titles of the levels of one kind. Price levels are rows of CostLevel, as many as the shop has; there are four
/// discount levels, and DiscountLevel has a row for those that were given a title.
class LevelStore
{
public:
    LevelStore(const QSqlDatabase &connection, LevelKind kind) : m_connection(connection), m_kind(kind) {}

    QList<LevelTitle> Titles() const;
    /// Writes these titles, in one transaction.
    void Save(const QList<LevelTitle> &changed);

private:
    QSqlDatabase m_connection;
    LevelKind m_kind;
};

} // namespace desk
