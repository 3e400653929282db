#pragma once

#include "host/data/query.h"
#include "host/host.h"

#include <QString>

namespace goods {

/// The codes of goods: new ones, what must be unique, and barcodes.
class Codes
{
public:
    Codes(const QSqlDatabase &main, const host::SettingsService &settings);

    /// The next code of a group, or beyond all codes when that one is taken or reserved. `grpCode` is digits.
    int Good_GetNewCode(const QString &grpCode);
    /// The next code in the group-prefixed numbering; both texts are digits.
    int Good_GetNewCode_GrpCode(const QString &grpCode, const QString &codeLength);

    // Uniqueness; `code` is the good being edited, whose own row does not count.

    int Good_ExistName(int code, const QString &name);
    int Good_ExistIndex(int code, const QString &index);
    int Good_ExistDetailUniqueCode(int code, const QString &uniqueCode);
    bool Good_ExistBarCode(int code, const QString &barcode);
    /// `smsCode` is digits; throws RefusedText otherwise.
    bool Good_IsExistSMSCode(int code, const QString &smsCode);

    /// The good that carries the barcode, 0 when none does.
    int CheckBarcodeCode(const QString &barcode);
    /// True for the barcodes that operate the sales screens.
    bool BarcodeUsedInSetting(const QString &barcode) const;

protected:
    /// Keeps the answer true until the end of the transaction.
    bool CodeIsTaken(int code);
    /// A code that no good of this group, nor any other, has; throws when none is found.
    int FreshCode(int grpCode, int codeLength);

private:
    /// How many other goods have the value in this column.
    int CountOthers(int code, const QString &column, const QString &value);

    QSqlDatabase m_main;
    const host::SettingsService &m_settings;
    host::Query Temp_QRY;
};

} // namespace goods
