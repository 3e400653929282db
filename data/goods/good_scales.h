#pragma once

#include "host/data/query.h"

namespace goods {

/// The items of the scales, in a database of their own.
class Scales
{
public:
    Scales(const QSqlDatabase &main, const QSqlDatabase &scale);

    bool CheckGoodInScale(int code);
    /// Marks the scale item for deletion at the next synchronisation.
    void DeleteGoodInScale(int code);
    /// Brings name, price of the level (1 to 10), first barcode and unit type of the scale item in step with the good
    /// and marks it as changed. Nothing happens for a good that no scale has.
    void Change_Price_Scale(int code, int costLevel);

private:
    QSqlDatabase m_scale;
    host::Query Temp_QRY;
    host::Query TMP_OnLine_QRY; ///< on the scale database
};

} // namespace goods
