#pragma once

#include "host/data/quantity.h"

#include <QList>
#include <QSqlDatabase>
#include <QString>

namespace goods {

/// What the printed labels of a good say.
struct LabelGood
{
    int code = 0;
    QString name;
    QString barcodes;                 ///< as stored, between "!" marks
    host::Quantity consumerPrice = 0; ///< 0 for none
    int defaultLevel = 0;             ///< of its sale prices, 1 … 10; 0 for none
    QList<host::Quantity> prices;     ///< sale prices of the levels 1 … 10; empty without a price row
    host::Quantity stock = 0;         ///< on hand, may be negative
};

/// Reads the goods, in the order of `codes`; those that are gone are left out. One statement for each thousand codes,
/// with the prices of all levels, so that another level needs no reading. Throws host::DatabaseError.
QList<LabelGood> ReadLabelGoods(const QSqlDatabase &main, const QList<int> &codes);

} // namespace goods
