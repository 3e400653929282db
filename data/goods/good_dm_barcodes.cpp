#include "data/goods/good_dm.h"
#include "host/data/sql_text.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

/// Characters that LIKE does not take for themselves.
bool HasPatternCharacters(const QString &barcode)
{
    return std::any_of(barcode.begin(), barcode.end(), [](QChar c) { return c == u'%' || c == u'_' || c == u'['; });
}

/// Goods that carry a barcode with such characters, compared as text: a pattern would find others too, or miss it.
QString LiteralLookup(const QString &barcode)
{
    return u"select Code from GoodInf where CHARINDEX("_s + host::QuotedStr(u'!' + barcode + u'!') +
           u", AbbName) > 0"_s;
}

} // namespace

bool TGood_DM::Good_ExistBarCode(int code, const QString &barcode)
{
    const QString other = u" AND Code <>"_s + QString::number(code);
    if (HasPatternCharacters(barcode)) {
        return host::Exists(main_, LiteralLookup(barcode) + other);
    }
    Temp_QRY.Open(u"select Code from GoodInf where AbbName LIKE "_s + host::QuotedStr(u"%!"_s + barcode + u"!%"_s) +
                  other);
    return !Temp_QRY.IsEmpty();
}

int TGood_DM::CheckBarcodeCode(const QString &barcode)
{
    if (HasPatternCharacters(barcode)) {
        return host::Scalar(main_, LiteralLookup(barcode)).toInt();
    }
    Temp_QRY.Open(u"select Code from goodinf where abbname like "_s + host::QuotedStr(u"%!"_s + barcode + u"!%"_s));
    return Temp_QRY.IsEmpty() ? 0 : Temp_QRY.Int(u"Code");
}

bool TGood_DM::BarcodeUsedInSetting(const QString &barcode) const
{
    const auto &reserved = settings_.SettingRecord().ReservedBarcodes;
    return !barcode.isEmpty() && std::find(std::begin(reserved), std::end(reserved), barcode) != std::end(reserved);
}
