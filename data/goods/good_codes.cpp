#include "data/goods/good_codes.h"

#include "host/data/database_error.h"
#include "host/data/sql_text.h"

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

/// The characters of a barcode stand for themselves: "a_b" finds neither "axb" nor misses "a_b".
QString Pattern(const QString &barcode)
{
    return host::QuotedStr(u"%!"_s + host::LikeText(barcode) + u"!%"_s);
}

} // namespace

Codes::Codes(const QSqlDatabase &main, const host::SettingsService &settings)
    : m_main(main), m_settings(settings), Temp_QRY(main)
{}

int Codes::Good_GetNewCode(const QString &grpCode)
{
    const QString group = host::CodeText(grpCode);
    Temp_QRY.Open(
        u"Select Case When Isnull((Select Code From (Select IsNull(Max(Code),0)+1 As Code From GoodInf Where GrpCode="_s +
        group +
        u")As T1 Where"
        " Code Not in(Select Code From GoodInf) And Code Not In(Select Code From CodeLock_TBL Where Status="
        "102"
        ")),0)"
        " <>0 Then"
        " (Select IsNull(Max(Code),0)+1 From GoodInf Where GrpCode="_s +
        group +
        u")"
        " Else"
        "(select Max(Code)+1 as NewCode From("
        " select ISNull(Max(Code),0) as Code from GoodINF"
        " union all"
        " select ISNull(Max(CAST(Code AS BIGINT)), 0) as Code from CodeLock_TBl where Status = "
        "102"
        " ) as t1 )"
        " End As NewCode"_s);
    return Temp_QRY.Int(u"NewCode");
}

int Codes::Good_GetNewCode_GrpCode(const QString &grpCode, const QString &codeLength)
{
    Temp_QRY.Open(u"EXEC GetGoodInfCode "_s + host::CodeText(grpCode) + u", "_s + host::CodeText(codeLength));
    return Temp_QRY.Int(0);
}

bool Codes::CodeIsTaken(int code)
{
    // The hints keep the answer true until the transaction ends: another desk asking for the same code waits here.
    return host::Exists(m_main,
                        u"select Code from GoodInf with (updlock, holdlock) where Code = "_s + QString::number(code));
}

int Codes::FreshCode(int grpCode, int codeLength)
{
    const QString group = QString::number(grpCode);
    const int prefixed = Good_GetNewCode_GrpCode(group, QString::number(codeLength));
    if (prefixed > 0 && !CodeIsTaken(prefixed)) {
        return prefixed;
    }
    const int next = Good_GetNewCode(group);
    if (CodeIsTaken(next)) {
        throw host::DatabaseError(u"کد آزادی برای این کالا پیدا نشد."_s);
    }
    return next;
}

int Codes::CountOthers(int code, const QString &column, const QString &value)
{
    Temp_QRY.Open(u"select Code from GoodInf where Code <> "_s + QString::number(code) + u" AND "_s + column +
                  u" = "_s + host::QuotedStr(value));
    return Temp_QRY.RecordCount();
}

int Codes::Good_ExistName(int code, const QString &name)
{
    return CountOthers(code, u"Name"_s, name);
}

int Codes::Good_ExistIndex(int code, const QString &index)
{
    return CountOthers(code, u"Kala_Index"_s, index);
}

int Codes::Good_ExistDetailUniqueCode(int code, const QString &uniqueCode)
{
    return CountOthers(code, u"DetailUniqueCode"_s, uniqueCode);
}

bool Codes::Good_IsExistSMSCode(int code, const QString &smsCode)
{
    Temp_QRY.Open(u"select SmsCode from GoodInf where code<>"_s + QString::number(code) + u" and SmsCode="_s +
                  host::CodeText(smsCode));
    return !Temp_QRY.IsEmpty();
}

bool Codes::Good_ExistBarCode(int code, const QString &barcode)
{
    Temp_QRY.Open(u"select Code from GoodInf where AbbName LIKE "_s + Pattern(barcode) + u" AND Code <>"_s +
                  QString::number(code));
    return !Temp_QRY.IsEmpty();
}

int Codes::CheckBarcodeCode(const QString &barcode)
{
    Temp_QRY.Open(u"select Code from goodinf where abbname like "_s + Pattern(barcode));
    return Temp_QRY.IsEmpty() ? 0 : Temp_QRY.Int(u"Code");
}

bool Codes::BarcodeUsedInSetting(const QString &barcode) const
{
    const auto &reserved = m_settings.SettingRecord().ReservedBarcodes;
    return !barcode.isEmpty() && std::find(std::begin(reserved), std::end(reserved), barcode) != std::end(reserved);
}

} // namespace goods
