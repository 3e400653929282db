#include "division/division_save.h"

#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace division {

namespace {

using host::TDetailRefusal;
using host::TFormMode;
using host::TOperationType;
using host::TSoftwarePart;
using Refusals = QList<TDetailRefusal>;

constexpr auto Part = TSoftwarePart::GoodDetailDivision;

/// As many as a message shows; the others are counted.
constexpr qsizetype ShownRefusals = 5;

/// What the services refuse; thrown so that the transaction goes.
struct DetailsRefused
{
    Refusals refusals;
};

void Judge(const Refusals &refusals)
{
    if (!refusals.isEmpty())
        throw DetailsRefused{refusals};
}

QString Title(int code)
{
    return u"تقسیم جزئیات شماره %1"_s.arg(host::PersianDigits(QString::number(code)));
}

/// Names of goods, and under negative codes of stores.
QHash<int, QString> Names(const QSqlDatabase &connection, const Refusals &refusals)
{
    QStringList goods;
    QStringList stores;
    for (const TDetailRefusal &refusal : refusals) {
        goods << QString::number(refusal.GoodCode);
        stores << QString::number(refusal.StoreCode);
    }
    QHash<int, QString> names;
    for (host::Query rows(connection,
                          u"SELECT Code, Name FROM GoodInf WHERE Code IN (%1) UNION ALL SELECT -Code, Name FROM Stores "
                          "WHERE Code IN (%2)"_s.arg(goods.join(u','), stores.join(u',')));
         !rows.Eof(); rows.Next())
        names[rows.Int(u"Code")] = rows.Text(u"Name").trimmed();
    return names;
}

QString RefusalLine(const TDetailRefusal &refusal, const QString &good, const QString &store)
{
    switch (refusal.reason) {
    case TDetailRefusal::Reason::Gone:
        return u"از «%1» (%2) در انبار «%3» کمتر از مقدار تقسیم مانده است. رایانه‌ی دیگری آن را فروخته یا تقسیم کرده است."_s
            .arg(refusal.Text, good, store);
    case TDetailRefusal::Reason::Repeated:
        return u"«%1» (%2) هم‌اکنون موجود است و دوباره نمی‌تواند وارد شود."_s
            .arg(refusal.Text, good);
    case TDetailRefusal::Reason::Used:
        return u"%1 (%2)"_s.arg(refusal.Text, good);
    case TDetailRefusal::Reason::NotOfDocument:
    case TDetailRefusal::Reason::Returned:
        break; // of returns, which a division is not
    }
    return u"«%1» (%2)"_s.arg(refusal.Text, good);
}

QString RefusalText(host::Host &host, const Refusals &refusals)
{
    const Refusals shown = refusals.first(qMin(ShownRefusals, refusals.size()));
    const QHash<int, QString> names = Names(host.DM.ADOConnection1, shown);
    QStringList lines;
    if (shown.first().reason == TDetailRefusal::Reason::Used)
        lines << host.messages.TextOf(host::message::ItemInUse, {u"تقسیم جزئیات"_s});
    for (const TDetailRefusal &refusal : shown)
        lines << RefusalLine(refusal, names.value(refusal.GoodCode), names.value(-refusal.StoreCode));
    if (refusals.size() > shown.size())
        lines << u"و %1 مورد دیگر"_s.arg(host::PersianDigits(QString::number(refusals.size() - shown.size())));
    return lines.join(u'\n');
}

/// Whoever moves one of the goods waits: goods before detail values, as documents take them.
void HoldGoods(const QSqlDatabase &connection, int code, const QString &others = {})
{
    host::Exec(connection, u"SELECT COUNT(*) FROM GoodInf WITH (UPDLOCK, HOLDLOCK) WHERE Code IN (SELECT GoodCode FROM "
                           "GoodDetailDivisionDetail WHERE DivisionCode = %1%2)"_s.arg(QString::number(code), others));
}

/// The division is as it was read.
void StillTheSame(host::Host &host, const host::TDivisionHeader &header)
{
    const auto saved = host.detailDivisions.GoodDetailDivision_Header(header.Code);
    if (!saved || saved->Revision != header.Revision)
        throw DivisionRefused(
            u"کاربر گرامی، %1 را رایانه‌ی دیگری تغییر داده یا حذف کرده است. آن را دوباره باز کنید."_s
                .arg(Title(header.Code)));
}

void CodeIsFree(host::Host &host, int code)
{
    if (host.detailDivisions.GoodDetailDivision_Header(code))
        throw DivisionRefused(
            u"کاربر گرامی، کد %1 را رایانه‌ی دیگری به کار برده است. کد دیگری وارد کنید."_s
                .arg(host::PersianDigits(QString::number(code))));
}

/// Nothing is made and nothing gets lost: row by row the parts come to what was taken. A second amount counts where it
/// is one, not the number of packages.
void PartsFitRows(host::Host &host, int code)
{
    const QString second = u"CASE WHEN k.Amount3 = 0 THEN k.Amount2 ELSE 0 END AS Amount2"_s;
    const host::Query fault(
        host.DM.ADOConnection1,
        u"SELECT TOP 1 m.DivisionRow, SUM(m.Amount1) AS Amount1, SUM(m.Amount2) AS Amount2 FROM (SELECT k.OperationRow AS "
        "DivisionRow, k.Amount1, %1 FROM GoodDetailKardex AS k WHERE k.OperationType = 24 AND k.OperationCode = %2 UNION "
        "ALL SELECT p.DivisionRow, k.Amount1, %1 FROM GoodDetailKardex AS k INNER JOIN GoodDetailDivisionDetailItems AS p "
        "ON p.DivisionCode = k.OperationCode AND p.OperationRow = k.OperationRow WHERE k.OperationType = 25 AND "
        "k.OperationCode = %2) AS m GROUP BY m.DivisionRow HAVING SUM(m.Amount1) <> 0 OR SUM(m.Amount2) <> 0 ORDER BY "
        "m.DivisionRow"_s.arg(second, QString::number(code)));
    if (fault.IsEmpty())
        return;
    const host::Quantity first = fault.Number(u"Amount1");
    throw DivisionRefused(
        u"کاربر گرامی، جمع قسمت‌های سطر %1 با مقداری که تقسیم می‌شود یکی نیست (اختلاف %2)."_s
            .arg(host::PersianDigits(fault.Text(u"DivisionRow")),
                 host::PersianDigits(host::QuantityToText(first != 0 ? first : fault.Number(u"Amount2")))));
}

/// Day of a row of the ledger, `k`: that of its movement. The opening stock has none, it was there from the beginning.
QString Day()
{
    return u"ISNULL((SELECT MIN(m.[Date]) FROM Kardex AS m WHERE m.OperationType = k.OperationType AND m.OperationCode = "
           "k.OperationCode AND m.OperationRow = k.OperationRow), N'')"_s;
}

/// Rows that do not go with the division's day: of the unit there was too little by then (Used 0, OtherDay when the
/// last of it came), or a part was used before (Used 1, OtherDay when first).
QString OutOfTimeText(const host::TDivisionHeader &header, TFormMode mode, qsizetype most)
{
    const QString code = QString::number(header.Code);
    const QString date = host::QuotedStr(header.Date);
    const QString names = u"s.OperationRow, s.GoodDetail, s.GoodName, s.StoreName"_s;
    QString rows =
        u"SELECT 0 AS Used, %1, MAX(CASE WHEN d.Amount1 > 0 THEN d.Day END) AS OtherDay FROM "
        "#GoodDetailDivisionDetailTemp AS s INNER JOIN (SELECT k.DetailValueID, k.StoreCode, k.Amount1, %2 AS Day FROM "
        "GoodDetailKardex AS k WHERE k.DetailValueID IN (SELECT DetailValueID FROM #GoodDetailDivisionDetailTemp WHERE "
        "Tmp = 0)) AS d ON d.DetailValueID = s.DetailValueID AND d.StoreCode = s.StoreCode WHERE s.Tmp = 0 GROUP BY %1 "
        "HAVING SUM(CASE WHEN d.Day <= %3 THEN d.Amount1 ELSE 0 END) < 0"_s.arg(names, Day(), date);
    if (mode == TFormMode::Edit)
        rows +=
            u" UNION ALL SELECT 1, %1, MIN(m.[Date]) FROM #GoodDetailDivisionDetailTemp AS s INNER JOIN "
            "GoodDetailDivisionDetailItems AS p ON p.DivisionCode = %2 AND p.DivisionRow = s.OperationRow INNER JOIN "
            "GoodDetailKardex AS e ON e.OperationType = 25 AND e.OperationCode = %2 AND e.OperationRow = "
            "p.OperationRow INNER JOIN GoodDetailKardex AS k ON k.DetailValueID = e.DetailValueID AND NOT "
            "(k.OperationType = 25 AND k.OperationCode = %2) INNER JOIN Kardex AS m ON m.OperationType = "
            "k.OperationType AND m.OperationCode = k.OperationCode AND m.OperationRow = k.OperationRow AND m.[Date] < "
            "%3 WHERE s.Tmp = 0 GROUP BY %1"_s.arg(names, code, date);
    return u"SELECT TOP %1 r.Used, r.GoodDetail, r.GoodName, r.StoreName, r.OtherDay FROM (%2) AS r ORDER BY r.Used, "
           "r.OperationRow"_s.arg(most)
               .arg(rows);
}

/// Nothing is divided before it came, nor after its parts were used: the history would show less than nothing.
void DayFitsRows(host::Host &host, const host::TDivisionHeader &header, TFormMode mode)
{
    host::Query faults(host.DM.ADOConnection1, OutOfTimeText(header, mode, ShownRefusals));
    if (faults.IsEmpty())
        return;
    const bool used = faults.Int(u"Used") != 0;
    QStringList lines{
        (used
             ? u"کاربر گرامی، تاریخ تقسیم (%1) پس از آن است که قطعه‌های این اقلام به کار رفته‌اند. تاریخ را اصلاح کنید."_s
             : u"کاربر گرامی، این اقلام در تاریخ تقسیم (%1) به این مقدار در انبار نبوده‌اند. تاریخ را اصلاح کنید."_s)
            .arg(host::PersianDigits(header.Date))};
    for (; !faults.Eof() && (faults.Int(u"Used") != 0) == used; faults.Next())
        lines << u"«%1» (%2، انبار «%3»): %4 %5"_s.arg(
            faults.Text(u"GoodDetail"), faults.Text(u"GoodName"), faults.Text(u"StoreName"),
            used ? u"نخستین بار در"_s : u"آخرین ورود در"_s, host::PersianDigits(faults.Text(u"OtherDay")));
    throw DivisionRefused(lines.join(u'\n'));
}

template <typename Steps> void InTransaction(host::Host &host, const Steps &steps)
{
    try {
        host::Transaction transaction(host.DM.ADOConnection1);
        steps();
        transaction.Commit();
    } catch (const DetailsRefused &refused) {
        // Rolled back by now: the names are read from what is saved.
        throw DivisionRefused(RefusalText(host, refused.refusals));
    }
}

} // namespace

int NewCode(host::Host &host)
{
    return host::Scalar(
               host.DM.ADOConnection1,
               u" SELECT ISNULL(MAX(Code), 0) + 1      FROM (                                       SELECT "
               "MAX(Code) AS Code             FROM GoodDetailDivision              UNION ALL               "
               "             SELECT CAST(Code AS BIGINT)          FROM CodeLock_TBL                    "
               "WHERE Status = %1                 ) AS T1                        "_s.arg(static_cast<int>(Part)))
        .toInt();
}

void Save(host::Host &host, const host::TDivisionHeader &header, TFormMode mode)
{
    const int code = header.Code;
    host::DetailDivisionService &divisions = host.detailDivisions;
    InTransaction(host, [&] {
        HoldGoods(host.DM.ADOConnection1, code, u" UNION ALL SELECT GoodCode FROM #GoodDetailDivisionDetailTemp"_s);
        if (mode == TFormMode::Edit) {
            StillTheSame(host, header);
            host.numbers.Delete_Global_ID(Part, code);
            host.numbers.Save_Global_ID(Part, code);
            divisions.DeleteGoodDetailDivision(code);
        } else {
            CodeIsFree(host, code);
            host.numbers.Save_Global_ID(Part, code);
        }
        divisions.InsertGoodDetailDivision(header, static_cast<int>(mode));
        Judge(divisions.InsertGoodDetailDivisionDetail(code));
        Judge(divisions.InsertGoodDetailDivisionDetailItems(code));
        PartsFitRows(host, code);
        host.stock.SaveStorageAutoOperation(TOperationType::DivisionExit, code);
        host.stock.SaveStorageAutoOperation(TOperationType::DivisionEntry, code);
        DayFitsRows(host, header, mode);
        host.detailMovements.ExitGoodDetails_DeleteAll(quint8(TOperationType::DivisionExit), code);
    });
}

void Delete(host::Host &host, int code)
{
    host::DetailMovementService &details = host.detailMovements;
    InTransaction(host, [&] {
        HoldGoods(host.DM.ADOConnection1, code);
        if (!host.detailDivisions.GoodDetailDivision_Header(code))
            throw DivisionRefused(
                u"کاربر گرامی، %1 را رایانه‌ی دیگری حذف کرده است."_s.arg(
                    Title(code)));
        Judge(host.detailDivisions.GoodDetailDivision_UsedParts(code, 0, 0));
        Judge(details.GoodDetailsOperation_Delete(quint8(TOperationType::DivisionExit), code));
        Judge(details.GoodDetailsOperation_Delete(quint8(TOperationType::DivisionEntry), code));
        host.stock.DeleteStorageAutoOperation(TOperationType::DivisionExit, code);
        host.stock.DeleteStorageAutoOperation(TOperationType::DivisionEntry, code);
        host.detailDivisions.DeleteGoodDetailDivision(code);
        host.numbers.Delete_Global_ID(Part, code);
    });
}

QString UsedText(host::Host &host, int code, int operationRow, int part)
{
    const Refusals used = host.detailDivisions.GoodDetailDivision_UsedParts(code, operationRow, part);
    return used.isEmpty() ? QString() : RefusalText(host, used);
}

} // namespace division
