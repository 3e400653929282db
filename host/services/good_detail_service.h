#pragma once

#include "host/services/types.h"

namespace host {

/// What goods screens ask about the details (serials, colours …) entered for a good.
class GoodDetailService
{
public:
    virtual ~GoodDetailService() = default;

    /// True when details were entered for this good on an operation of this type.
    virtual bool ExistsGoodDetailInsertedForOperation(int goodCode, TOperationType operation) = 0;
    /// Writes the details entered by this desk while the editor was open. Runs inside the caller's transaction, which
    /// it throws out of when the details cannot be so.
    virtual void EnterGoodDetailSave(int goodCode, TOperationType operation) = 0;
    /// True when details exist already, so that the quantity comes from them and is not typed.
    virtual bool EnterGoodDetails_Get(int goodCode, TOperationType operation) = 0;
    /// True when quantities are recorded for the details of this good, on any operation: its detail types can neither
    /// be added to nor taken off, because what is recorded is told apart by them. What is being entered on another
    /// document counts; what is entered for the good's own opening row follows its editor and does not.
    virtual bool CheckGoodDetailKardexExists(int goodCode) = 0;
    /// True when saved documents record quantities for the details of this good.
    virtual bool GoodDetailsSaved(int goodCode) = 0;
    /// True when `barcode` is the value of a barcode detail of any good.
    virtual bool CheckBarcodeInGoodDetail(const QString &barcode) = 0;
    /// True, having told the user, when the good's unique detail code is in use and the good cannot be deleted.
    virtual bool UniqueDetailCodeInUse(int goodCode) = 0;
};

} // namespace host
