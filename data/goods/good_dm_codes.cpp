#include "data/goods/good_dm.h"
#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

int TGood_DM::Good_GetNewCode(const QString &grpCode)
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

int TGood_DM::Good_GetNewCode_GrpCode(const QString &grpCode, const QString &codeLength)
{
    Temp_QRY.Open(u"EXEC GetGoodInfCode "_s + host::CodeText(grpCode) + u", "_s + host::CodeText(codeLength));
    return Temp_QRY.Int(0);
}

bool TGood_DM::CodeIsTaken(int code)
{
    // The hints keep the answer true until the transaction ends: another desk asking for the same code waits here.
    return host::Exists(m_main,
                        u"select Code from GoodInf with (updlock, holdlock) where Code = "_s + QString::number(code));
}

int TGood_DM::FreshCode(int grpCode, int codeLength)
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

bool TGood_DM::Good_TakeCode(int &code, int grpCode, int codeLength)
{
    if (!CodeIsTaken(code)) {
        return false;
    }
    const int fresh = FreshCode(grpCode, codeLength);
    Good_ChangeCode(fresh, code);
    code = fresh;
    return true;
}

void TGood_DM::Good_ChangeCode(int newCode, int oldCode)
{
    if (newCode == oldCode) {
        return;
    }
    const QString to = QString::number(newCode);
    const QString from = QString::number(oldCode);
    host::Transaction transaction(m_main);
    host::Run(m_main, u"Update tmpCostList set TypeCode="_s + to + u" where Type=3 and TypeCode="_s + from);
    GoodFirstAsset_UpdateAllGoodCodes(newCode, oldCode);
    host::Run(m_main, u"Update Kala_category set kala_code="_s + to + u" where tmp>0 and kala_code="_s + from);
    host::Run(m_main, u"Update PhotoGallery set Id_pic="_s + to + u" where tmp>0 and GRPCode=102 and Id_pic="_s + from);
    host::Run(m_main, u"IF OBJECT_ID('tempdb..#GoodDetails') IS NOT NULL UPDATE #GoodDetails SET GoodCode = "_s + to +
                          u" WHERE GoodCode = "_s + from);
    const auto move = [this](int former, int later) {
        for (auto &[good, category] : m_attached) {
            good = good == former ? later : good;
        }
    };
    move(oldCode, newCode);
    host::Transaction::WhenEnded(m_main, [move, newCode, oldCode](bool committed) {
        if (!committed) {
            move(newCode, oldCode);
        }
    });
    transaction.Commit();
}

host::Quantity TGood_DM::GoodDefaultCost(int code)
{
    Temp_QRY.Open(u"exec GetDefaultCostLevel 0,"_s + QString::number(code) + u",0"_s);
    return Temp_QRY.IsEmpty() ? 0 : Temp_QRY.Number(u"cost");
}

QStringList TGood_DM::Good_NameParts(NamePart part, const QString &beginning)
{
    const QString column = part == NamePart::Name   ? u"kala_name"_s
                           : part == NamePart::Type ? u"kala_type"_s
                                                    : u"kala_index"_s;
    // What a pattern would read as a sign stands for itself.
    QString pattern;
    for (const QChar c : beginning)
        pattern += c == u'%' || c == u'_' || c == u'[' ? QString(u'[') + c + u']' : QString(c);
    Temp_QRY.Open(u"select distinct top 50 "_s + column + u" from GoodInf where "_s + column + u"<>'' and "_s + column +
                  u" like "_s + host::NQuotedStr(QString(pattern + u'%')) + u" order by "_s + column);
    QStringList texts;
    for (; !Temp_QRY.Eof(); Temp_QRY.Next())
        texts += Temp_QRY.Text(column);
    return texts;
}

int TGood_DM::CountOthers(int code, const QString &column, const QString &value)
{
    Temp_QRY.Open(u"select Code from GoodInf where Code <> "_s + QString::number(code) + u" AND "_s + column +
                  u" = "_s + host::QuotedStr(value));
    return Temp_QRY.RecordCount();
}

int TGood_DM::Good_ExistName(int code, const QString &name)
{
    return CountOthers(code, u"Name"_s, name);
}

int TGood_DM::Good_ExistIndex(int code, const QString &index)
{
    return CountOthers(code, u"Kala_Index"_s, index);
}

int TGood_DM::Good_ExistDetailUniqueCode(int code, const QString &uniqueCode)
{
    return CountOthers(code, u"DetailUniqueCode"_s, uniqueCode);
}

bool TGood_DM::Good_IsExistSMSCode(int code, const QString &smsCode)
{
    Temp_QRY.Open(u"select SmsCode from GoodInf where code<>"_s + QString::number(code) + u" and SmsCode="_s +
                  host::CodeText(smsCode));
    return !Temp_QRY.IsEmpty();
}
