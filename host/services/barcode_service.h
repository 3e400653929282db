#pragma once

#include <QString>

namespace host {

/// The host's barcode library. It may be missing, wholly or in part: screens tell the two apart.
class BarcodeService
{
public:
    virtual ~BarcodeService() = default;

    /// The library is there.
    virtual bool LibraryFound() const = 0;
    /// The library offers the completion.
    virtual bool CompletionFound() const = 0;
    /// A 7-digit text completed to EAN-8, a 12-digit one to EAN-13; empty when it cannot be completed.
    virtual QString Complete_Barcode(const QString &digits) = 0;
};

} // namespace host
