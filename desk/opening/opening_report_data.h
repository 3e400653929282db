#pragma once

#include "host/data/dataset.h"

#include <QList>
#include <QString>

namespace desk {

/// The saved opening stock of all goods, store by store, with its value at the goods' opening prices.
class OpeningReportData
{
public:
    explicit OpeningReportData(const QSqlDatabase &connection);

    /// The rows in the order of stores and goods, read in blocks.
    host::Dataset Rows_QRY;

    struct StoreTotal
    {
        int Store = 0;
        QString Name;
        int Rows = 0;
        host::Quantity Value = 0;
    };

    /// Opens the rows of one store, 0 for all.
    void Open(int store);
    /// Each store with opening stock.
    QList<StoreTotal> Totals() const;

private:
    QSqlDatabase m_connection;
};

} // namespace desk
