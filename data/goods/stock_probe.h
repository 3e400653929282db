#pragma once

#include "host/data/quantity.h"

#include <QString>

namespace goods {

/// A SELECT of what the new opening quantity does to the stock of the good in the store, for the negative-stock check:
/// all of the saved row when nothing is left of it, otherwise the difference.
QString NegativeStockProbe(int goodCode, int storeCode, host::Quantity newQuantity);

} // namespace goods
