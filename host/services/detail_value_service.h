#pragma once

#include "host/services/good_detail_records.h"

namespace host {

/// Whose a serial or barcode is, in the order in which it matters.
enum class DetailOwner {
    Nobody,
    ThisGood,         ///< a detail value of the asking good carries it
    OtherGood,        ///< a detail value, or for a barcode the list of barcodes, of another good
    OperationBarcode, ///< it operates the sales screens
};

/// A detail value that is on record.
struct TKnownDetail
{
    int DetailValueID = 0;
    int GoodCode = 0;
    Quantity OnHand = 0; ///< in the main unit over all stores, out of saved documents
    TDetailValues Details;
};

/// The detail values of goods: one record for each combination of serial, colour and so on that a good has ever had.
/// Operations that write join the caller's transaction when there is one. All throw DatabaseError.
class DetailValueService
{
public:
    virtual ~DetailValueService() = default;

    /// The detail types of a good in their order, without values.
    virtual TDetailValues DetailsOf(int goodCode) = 0;
    /// The detail value with exactly these values; 0 when there is none.
    virtual int FindDetailValue(int goodCode, const TDetailValues &details) = 0;
    /// The same, made when there is none.
    virtual int ResolveDetailValue(int goodCode, const TDetailValues &details) = 0;
    /// Forgets a detail value that no document, saved or not, refers to. True when it went.
    virtual bool DeleteUnusedDetailValue(int detailValueId) = 0;
    /// The same for many, in blocks of a thousand: for rows of an enter screen that are given up.
    virtual void DeleteUnusedDetailValues(const QList<int> &detailValueIds) = 0;
    /// The detail value of the good that carries this serial or barcode, one on hand before one that is not.
    virtual std::optional<TKnownDetail> FindByText(int goodCode, const QString &serialOrBarcode) = 0;
    /// Other goods come before this good: a text may be found with both.
    virtual DetailOwner SerialOwner(int goodCode, const QString &serial) = 0;
    virtual DetailOwner BarcodeOwner(int goodCode, const QString &barcode) = 0;
};

} // namespace host
