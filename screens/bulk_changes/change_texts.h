#pragma once

#include "data/goods/good_bulk_records.h"
#include "data/goods/goods_import_fields.h"

#include <QVariant>

namespace bulk_changes {

// How the list of the last changes tells what a change wrote and what taking it back does.

/// The values of one good, OldText or NewText of BulkJournal::BulkGoods_QRY: discounts and the columns of a file by
/// their names, titles of types as they are. `fields` are those that a file may have.
QString ShownValues(const QVariant &values, goods::BulkKind kind, const QList<goods::ImportFieldInfo> &fields);
/// Why taking a change back left a good as it is; empty when it did not.
QString LeftText(goods::LeftReason reason);
/// What taking a change back will do.
QString Foretold(const goods::BulkForecast &forecast);
/// What it did, above the list of what it left.
QString TakenBack(const goods::BulkResult &result);

} // namespace bulk_changes
