#pragma once

#include "host/services/good_detail_records.h"

#include <optional>

namespace desk {

/// What the screens for the details of a document's line are opened with. Names that are empty are looked up.
struct LineDetailsOpening
{
    host::TDocumentLine Line;
    QString GoodName;
    QString StoreName;
    QString UnitName1;
    QString UnitName2;
    host::Quantity Wanted = 0; ///< the quantity that the line already has; 0: not told
    bool HasRows = false;      ///< the line's rows are opened again
};

/// The screens for the details of a line. They belong to the goods module; the document's editor reaches them through
/// this. Each keeps what was entered for the line and answers its amounts; nothing when it was left or did not open.
class LineDetailScreens
{
public:
    virtual ~LineDetailScreens() = default;
    virtual std::optional<host::TAmounts> EnterGoodDetail(const LineDetailsOpening &opening) = 0;
    virtual std::optional<host::TAmounts> ExitGoodDetail(const LineDetailsOpening &opening) = 0;
};

} // namespace desk
