#pragma once

#include "data/goods/good_dm.h"
#include "desk/application/connections.h"
#include "desk/application/desk_host.h"

#include <QTemporaryDir>

namespace bench {

/// A desk on a demo shop: in an embedded database of its own, gone with the object, or in one of a server.
class Shop
{
public:
    /// Of so many goods, once Grow() has been called; with a connection string in the database that it names, which has
    /// the demo's content.
    explicit Shop(int size, const QString &connection = {});

    /// The embedded database.
    const QString &File() const { return m_options.databaseFile; }
    host::Host &Host() { return m_desk->host; }
    TGood_DM &Data() { return *m_data; }
    int Goods();
    int size() const { return m_size; }

    /// Adds goods through the data module's own insert, `batch` a transaction, until there are size().
    void Grow(int batch);
    /// The barcode of the n-th good added.
    static QString Barcode(int number);
    /// A good ready to be inserted.
    static TGoodInfoRec Good(int code, int number);

private:
    int m_size;
    QTemporaryDir m_folder;
    desk::Options m_options;
    std::unique_ptr<desk::OpenConnections> m_connections;
    std::unique_ptr<desk::DeskHost> m_desk;
    std::unique_ptr<TGood_DM> m_data;
};

} // namespace bench
