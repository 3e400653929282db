#pragma once

#include "desk/documents/document_records.h"
#include "host/services/good_detail_records.h"

#include <QSqlDatabase>

#include <optional>

namespace desk {

/// What a scanned or typed text means on a document.
struct GoodScan
{
    enum class How {
        Code,    ///< the good's code, or its name as far as only one good has it
        Barcode, ///< one of the good's barcodes
        Serial,  ///< the serial of one unit
        Detail,  ///< the barcode of a kind of units
    };
    How how = How::Code;
    DocumentGood Good;
    int DetailValueID = 0; ///< for a serial and a detail
    Quantity Count = 1;    ///< "3*code": how many
};

/// The good that a text names: its code, one of its barcodes, the serial or barcode of one of its details (one on hand
/// before one that is gone), at last a part of its name that no other good has. Nothing when there is none.
/// Throws host::DatabaseError.
std::optional<GoodScan> ResolveScan(const QSqlDatabase &connection, const QString &typed);

/// Whether the details of a line, a SELECT of their DetailValueID, have this one.
bool LineHasDetail(const QSqlDatabase &connection, const QString &details, int detailValueId);

/// The price that a new line proposes: the default level of the side, 0 sale and 1 purchase.
Quantity ProposedPrice(const QSqlDatabase &connection, int side, int goodCode);

} // namespace desk
