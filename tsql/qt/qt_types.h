// How types, values and errors look to Qt.
#pragma once

#include "host/data/row_feed.h"
#include "tsql/run/cursor.h"

#include <QSqlError>
#include <QSqlField>

namespace tsql {

class Error;

QMetaType MetaType(const SqlType &type);
QSqlField SqlField(const ResultColumn &column);
/** `policy` decides how a decimal comes: as its text, or as a number that may be less exact. */
QVariant VariantOf(const Cell &cell, const SqlType &type, QSql::NumericalPrecisionPolicy policy);
/** The same value, with decimals as their digits, as far as a feed can carry it. */
host::FedCell FedCell(const Cell &cell, const SqlType &type);
/** `type` is what it is unless the file itself failed: that is a ConnectionError. */
QSqlError SqlError(const Error &error, QSqlError::ErrorType type);

} // namespace tsql
