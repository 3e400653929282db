#pragma once

#include <QSqlDatabase>
#include <QTimer>

namespace desk {

/// The number by which the working rows of this desk are told from those of others; no two desks ever have the same.
///
/// A desk is heard of every minute. The rows of one that has been silent for ten (killed, or a computer asleep) are
/// parked: they keep no serial from others, their detail value is turned negative. The desk that wakes has them back.
/// Those of a desk that stayed away for days are gone.
class DetailDesk
{
public:
    explicit DetailDesk(const QSqlDatabase &connection);
    /// Gives the number and its rows back.
    ~DetailDesk();
    DetailDesk(const DetailDesk &) = delete;
    DetailDesk &operator=(const DetailDesk &) = delete;

    /// Taken at the first call. Throws host::DatabaseError.
    int Number();
    /// Before working rows are read or written: parks those of silent desks, and has its own back. Throws
    /// host::DatabaseError when they are gone; so it does until `Discarded`, so that nothing is saved without them.
    void Begin();
    /// Rows were kept under the number.
    void Kept() { m_kept = true; }
    /// The document whose rows are gone was given up.
    void Discarded();
    const QSqlDatabase &Connection() const { return m_connection; }

private:
    void Take();
    void Park();
    void Return();

    QSqlDatabase m_connection;
    QTimer m_heard;
    int m_number = 0;
    bool m_kept = false;
    bool m_lost = false;
};

} // namespace desk
