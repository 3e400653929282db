#pragma once

#include "data/goods/goods_import_fields.h"
#include "data/goods/goods_import_table.h"
#include "host/services/entity_service.h"

#include <QSet>
#include <QSqlDatabase>

namespace goods {

/// What the database has when a file is judged, in little memory: every good with the fields that the file speaks of,
/// and who owns which name and barcode.
struct ImportKnown
{
    QList<ImportField> fields; ///< the columns of `goods`
    ImportTable goods;
    QHash<int, int> rowOf;             ///< of a code in `goods`
    QHash<QString, int> codeOfName;    ///< by ImportNameKey()
    QHash<QString, int> codeOfBarcode; ///< in lower case
    QHash<QString, int> groups;        ///< codes by folded name
    QHash<QString, int> units;
    QHash<int, QString> groupNames;
    QHash<int, QString> unitNames;
    QSet<int> deniedGroups;      ///< of the user
    QSet<int> reservedCodes;     ///< by open editors
    QSet<QString> otherBarcodes; ///< of good details and of operations, in lower case

    /// The stored text of a field; empty for one that was not read.
    QStringView Stored(int row, ImportField field) const;
    QStringView Stored(int row, qsizetype column) const { return goods.Cell(row, static_cast<int>(column)); }
};

/// Names are compared as the database does: without regard to case and blanks at the end.
QString ImportNameKey(QStringView name);

/// Reads it, in blocks of ten thousand goods. `mapped` are the fields that are compared; `deniedTo` is the user from
/// whom groups may be withheld, 0 for a manager; `operations` the barcodes that operate the sales screens.
ImportKnown ReadImportKnown(const QSqlDatabase &main, const QList<ImportFieldInfo> &mapped, int deniedTo,
                            const QStringList &operations);

/// The units, by code.
QList<host::Entity> ImportUnits(const QSqlDatabase &main);

/// The titles of the price levels 1, 2, … in their order.
QStringList ImportLevelTitles(const QSqlDatabase &main);

} // namespace goods
