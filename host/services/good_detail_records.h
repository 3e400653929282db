#pragma once

#include "host/data/quantity.h"
#include "host/host_export.h"
#include "host/services/types.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <array>
#include <optional>

namespace host {

/// Details that a good may carry.
inline constexpr int MostDetails = 5;

/// One line of a document as the details of goods know it. The four of operation type, code, row and store are its key.
struct TDocumentLine
{
    int GoodCode = 0;
    int StoreCode = 0;
    quint8 UnitType = 1;      ///< 1 one unit, 2 two units, 3 packed, 4 total and part, 5 area
    quint8 OperationType = 0; ///< the host's kind of document, see TOperationType
    bool IsReturn = false;    ///< with the operation type of returned sales: what is entered was sold before
    int OperationCode = 0;
    int OperationRow = 0;
    int ForeignOperationCode = 0; ///< the document that this one answers, for a return the sale; 0: none
};

/// The amounts of a detail row. What each means follows from the unit type; the ones that it does not use are 0.
struct TAmounts
{
    Quantity Amount1 = 0;     ///< in the main unit
    Quantity Amount2 = 0;     ///< in the second unit
    Quantity TotalAmount = 0; ///< all together
    Quantity Length = 0;      ///< of one piece of a good measured by area
    Quantity Width = 0;
    Quantity Amount3 = 0; ///< how many pieces; of packed goods what one package holds, which is never added up

    bool operator==(const TAmounts &) const = default;
};

/// The details of one unit of a good, in the good's order: serial, barcode, the others. An empty value is none.
struct TDetailValues
{
    std::array<int, MostDetails> DetailIDs{}; ///< DetailTypes.ID; 0: the good has no such detail
    std::array<QString, MostDetails> Values;  ///< as the user sees them
};

/// A serial as it is kept: without blanks around it and direction marks, and in ASCII digits, as a scanner reads it.
HOST_EXPORT QString SerialText(QStringView typed);

} // namespace host
