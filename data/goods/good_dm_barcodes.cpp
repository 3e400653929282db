#include "data/goods/good_dm.h"
#include "host/data/sql_text.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace {

/// The characters of a barcode stand for themselves: "a_b" finds neither "axb" nor misses "a_b".
QString Pattern(const QString &barcode)
{
    return host::QuotedStr(u"%!"_s + host::LikeText(barcode) + u"!%"_s);
}

} // namespace

bool TGood_DM::Good_ExistBarCode(int code, const QString &barcode)
{
    Temp_QRY.Open(u"select Code from GoodInf where AbbName LIKE "_s + Pattern(barcode) + u" AND Code <>"_s +
                  QString::number(code));
    return !Temp_QRY.IsEmpty();
}

int TGood_DM::CheckBarcodeCode(const QString &barcode)
{
    Temp_QRY.Open(u"select Code from goodinf where abbname like "_s + Pattern(barcode));
    return Temp_QRY.IsEmpty() ? 0 : Temp_QRY.Int(u"Code");
}

bool TGood_DM::BarcodeUsedInSetting(const QString &barcode) const
{
    const auto &reserved = m_settings.SettingRecord().ReservedBarcodes;
    return !barcode.isEmpty() && std::find(std::begin(reserved), std::end(reserved), barcode) != std::end(reserved);
}
