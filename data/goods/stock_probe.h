#pragma once

#include "host/data/quantity.h"

#include <QString>

namespace goods {

/// A SELECT of what the new opening quantity does to the stock of the good in the store, for the negative-stock check:
/// all of the saved row when nothing is left of it, otherwise the difference.
QString NegativeStockProbe(int goodCode, int storeCode, host::Quantity newQuantity);
/// The same for a row that is deleted on the list of opening rows.
QString DeletedRowProbe(int goodCode, int storeCode);
/// The same for all opening rows of the good at once: what its working rows, which stand under `workingCode`, leave of
/// the saved ones where that is less.
QString LoweredRowsProbe(int goodCode, int workingCode);

} // namespace goods
