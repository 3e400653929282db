#include "data/goods/good_movements.h"

#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/services/types.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

struct DocumentKind
{
    int operation;
    const char16_t *name;
};

constexpr DocumentKind Kinds[] = {
    {static_cast<int>(host::TOperationType::Purchase), u"خرید"},
    {static_cast<int>(host::TOperationType::Sale), u"فروش"},
    {static_cast<int>(host::TOperationType::SaleReturn), u"برگشت از فروش"},
    {static_cast<int>(host::TOperationType::PurchaseReturn), u"برگشت از خرید"},
    {static_cast<int>(host::TOperationType::TransferOut), u"انتقال به انبار دیگر"},
    {static_cast<int>(host::TOperationType::TransferIn), u"انتقال از انبار دیگر"},
    {static_cast<int>(host::TOperationType::OpeningStock), u"موجودی اول دوره"},
    {static_cast<int>(host::TOperationType::DivisionExit), u"خروج برای تقسیم جزئیات"},
    {static_cast<int>(host::TOperationType::DivisionEntry), u"ورود از تقسیم جزئیات"},
};

/// Documents of other parts of the suite go by the number of their kind.
QString KindText()
{
    QString text = u"CASE m.OperationType"_s;
    for (const DocumentKind &kind : Kinds) {
        text += u" WHEN %1 THEN "_s.arg(kind.operation) + host::NQuotedStr(QString::fromUtf16(kind.name));
    }
    return text + u" ELSE N'سند نوع ' + CAST(m.OperationType AS nvarchar(3)) END"_s;
}

/// A date as it is stored, fit to be spliced; dates compare as texts.
QString DateLiteral(const QString &date)
{
    static const QRegularExpression stored(u"^\\d{4}/\\d{2}/\\d{2}$"_s);
    if (!stored.match(date).hasMatch()) {
        throw host::RefusedText(u"تاریخ"_s, date);
    }
    return host::QuotedStr(date);
}

/// What was there before the first movement shown, one row per store, above the movements.
QString BroughtForward(const MovementFilter &filter)
{
    const QString good = QString::number(filter.GoodCode);
    const bool opening = filter.FromDate.isEmpty();
    QString rows =
        u"SELECT StoreCode AS Anbar, Amount1, Amount2 FROM GoodFirstAsset WHERE tmp = 0 AND GoodCode = "_s + good;
    QString day = u"(SELECT TOP 1 [DATE] FROM inf_co)"_s;
    QString kind = u"موجودی اول دوره"_s;
    QString cost = u"(SELECT CostBgPrd FROM GoodInf WHERE Code = "_s + good + u')';
    if (!opening) {
        day = DateLiteral(filter.FromDate);
        kind = u"مانده از قبل"_s;
        cost = u"CAST(NULL AS decimal(28,9))"_s;
        rows +=
            u" UNION ALL SELECT Anbar, Amount1, Amount2 FROM Kardex WHERE Kala = "_s + good + u" AND [Date] < "_s + day;
    }
    return u"SELECT 0 AS Part, CAST(b.Anbar AS bigint) AS Code, b.Anbar, CAST("_s + day +
           u" AS varchar(10)) AS [Date], "_s + host::NQuotedStr(kind) +
           u" AS Kind, CAST(NULL AS int) AS Number, SUM(b.Amount1) AS Amount1, SUM(b.Amount2) AS Amount2, "_s + cost +
           u" AS Cost, CAST(NULL AS nvarchar(200)) AS Sharh FROM ("_s + rows + u") AS b"_s +
           (filter.Store == 0 ? QString() : u" WHERE b.Anbar = %1"_s.arg(filter.Store)) +
           u" GROUP BY b.Anbar HAVING SUM(b.Amount1) <> 0 OR SUM(b.Amount2) <> 0"_s;
}

/// The common table `m` that both statements read.
QString MovementRows(const MovementFilter &filter)
{
    QString where = u" WHERE m.Kala = "_s + QString::number(filter.GoodCode);
    if (filter.Store != 0) {
        where += u" AND m.Anbar = "_s + QString::number(filter.Store);
    }
    if (!filter.FromDate.isEmpty()) {
        where += u" AND m.[Date] >= "_s + DateLiteral(filter.FromDate);
    }
    if (!filter.ToDate.isEmpty()) {
        where += u" AND m.[Date] <= "_s + DateLiteral(filter.ToDate);
    }
    return u"WITH m AS ("_s + BroughtForward(filter) + u" UNION ALL SELECT 1, m.Code, m.Anbar, m.[Date], "_s +
           KindText() +
           u", m.OperationCode, m.Amount1, m.Amount2, CASE WHEN m.OperationType NOT IN (24, 25) THEN m.Cost END, "
           "m.Sharh FROM Kardex AS m"_s + // a division has no price
           where +
           u") "_s;
}

/// The running sum of an amount, over all rows or those of the row's store.
QString Running(const QString &amount, bool ofStore)
{
    return u"SUM(m."_s + amount + (ofStore ? u") OVER (PARTITION BY m.Anbar "_s : u") OVER ("_s) +
           u"ORDER BY m.Part, m.[Date], m.Code ROWS UNBOUNDED PRECEDING)"_s;
}

} // namespace

Movements::Movements(const QSqlDatabase &main) : Movements_QRY(main), m_main(main)
{
    Movements_QRY.ReadInBlocks();
}

bool Movements::Movements_GetGood(int goodCode, MovementGood &good)
{
    const host::Query row(m_main,
                          u"SELECT g.Name, u1.Name AS UnitName1, u2.Name AS UnitName2 FROM GoodInf AS g "
                          "LEFT JOIN Units AS u1 ON u1.Code = g.Unit LEFT JOIN Units AS u2 ON u2.Code = g.Unit2 "
                          "WHERE g.Code = "_s +
                              QString::number(goodCode));
    if (row.IsEmpty()) {
        return false;
    }
    good = {row.Text(u"Name").trimmed(), row.Text(u"UnitName1"), row.Text(u"UnitName2")};
    return true;
}

void Movements::Movements_GetAll(const MovementFilter &filter)
{
    QString amounts;
    for (const QString &unit : {u"1"_s, u"2"_s}) {
        const QString amount = u"Amount"_s + unit;
        amounts += u", CASE WHEN m.%1 > 0 THEN m.%1 END AS In%2, CASE WHEN m.%1 < 0 THEN -m.%1 END AS Out%2"_s.arg(
                       amount, unit) +
                   u", "_s + Running(amount, true) + u" AS StoreBalance"_s + unit + u", "_s + Running(amount, false) +
                   u" AS Balance"_s + unit;
    }
    Movements_QRY.Open(MovementRows(filter) +
                       u"SELECT ROW_NUMBER() OVER (ORDER BY m.Part, m.[Date], m.Code) AS Radif, m.[Date], m.Kind, "
                       "m.Number, s.Name AS StoreName, m.Cost, m.Sharh"_s +
                       amounts +
                       u" FROM m LEFT JOIN Stores AS s ON s.Code = m.Anbar ORDER BY m.Part, m.[Date], m.Code"_s);
}

std::array<MovementTotal, 2> Movements::Movements_GetTotals(const MovementFilter &filter)
{
    QStringList sums;
    for (const QString &unit : {u"1"_s, u"2"_s}) {
        sums += u"SUM(CASE WHEN Part = 0 THEN Amount%1 ELSE 0 END) AS Before%1, "
                "SUM(CASE WHEN Part = 1 AND Amount%1 > 0 THEN Amount%1 ELSE 0 END) AS In%1, "
                "SUM(CASE WHEN Part = 1 AND Amount%1 < 0 THEN -Amount%1 ELSE 0 END) AS Out%1"_s.arg(unit);
    }
    const host::Query row(m_main, MovementRows(filter) + u"SELECT "_s + sums.join(u", "_s) + u" FROM m"_s);
    std::array<MovementTotal, 2> totals;
    for (size_t unit = 0; unit < totals.size(); ++unit) {
        const QString number = QString::number(unit + 1);
        totals[unit] = {row.Number(u"Before"_s + number), row.Number(u"In"_s + number), row.Number(u"Out"_s + number)};
    }
    return totals;
}

} // namespace goods
