#include "desk/services/stock.h"

#include "desk/messages/catalogue.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::Quantity;
using host::Run;

QString Shown(Quantity quantity)
{
    return host::GroupDigits(host::QuantityToText(quantity));
}

constexpr int OpeningOperation = static_cast<int>(host::TOperationType::OpeningStock);

/// What a division moves under an operation type: OperationRow, GoodCode, StoreCode, Day, Amount1, Amount2.
QString DivisionRows(host::TOperationType type, int code)
{
    const QString header =
        u" INNER JOIN GoodDetailDivision AS h ON h.Code = s.DivisionCode WHERE h.Code = %1"_s.arg(code);
    if (type == host::TOperationType::DivisionExit)
        return u"SELECT s.OperationRow, s.GoodCode, s.StoreCode, h.[Date] AS Day, -s.Amount1 AS Amount1, -s.Amount2 AS "
               "Amount2 FROM GoodDetailDivisionDetail AS s"_s +
               header;
    return u"SELECT p.OperationRow, s.GoodCode, s.StoreCode, h.[Date] AS Day, p.Amount1, p.Amount2 FROM "
           "GoodDetailDivisionDetailItems AS p INNER JOIN GoodDetailDivisionDetail AS s ON s.DivisionCode = "
           "p.DivisionCode AND s.OperationRow = p.DivisionRow"_s +
           header;
}

QString OfOperation(host::TOperationType type, int code)
{
    return u" WHERE OperationType = %1 AND OperationCode = %2"_s.arg(static_cast<int>(type)).arg(code);
}

} // namespace

void ReckonStock(const QSqlDatabase &connection, const QString &goods)
{
    const QString these = u" IN (%1)"_s.arg(goods);
    Run(connection, u"DELETE FROM GoodStoreStock WHERE GoodCode"_s + these);
    Run(connection,
        u"INSERT INTO GoodStoreStock (GoodCode, StoreCode, Amount1, Amount2) SELECT m.GoodCode, m.StoreCode, "
        "SUM(m.Amount1), SUM(m.Amount2) FROM (SELECT Kala AS GoodCode, Anbar AS StoreCode, Amount1, Amount2 FROM Kardex "
        "WHERE Kala%1 UNION ALL SELECT GoodCode, StoreCode, Amount1, Amount2 FROM GoodFirstAsset WHERE tmp = 0 AND "
        "GoodCode%1) AS m GROUP BY m.GoodCode, m.StoreCode"_s.arg(these));
    Run(connection, u"DELETE FROM GoodStock WHERE GoodCode"_s + these);
    Run(connection,
        u"INSERT INTO GoodStock (GoodCode, Amount1, Amount2) SELECT GoodCode, SUM(Amount1), SUM(Amount2) FROM "
        "GoodStoreStock WHERE GoodCode%1 GROUP BY GoodCode"_s.arg(these));
}

Stock::Stock(const QSqlDatabase &connection, host::MessageService &messages, const host::SettingsService &settings)
    : m_connection(connection), m_messages(messages), m_settings(settings)
{}

bool Stock::Check_TockMinus(const QString &probe, const QString &date)
{
    const QString shortage = StockShortage(probe, date);
    if (!shortage.isEmpty())
        m_messages.ShowMessage(shortage, host::MessageIcon::Warning);
    return shortage.isEmpty();
}

QString Stock::StockShortage(const QString &probe, const QString &date)
{
    host::Query changes(m_connection,
                        u"SELECT p.Code, p.Anbar, p.Mogodi, g.Name AS GoodName, s.Name AS StoreName FROM ("_s + probe +
                            u") AS p LEFT JOIN GoodInf g ON g.Code = p.Code LEFT JOIN Stores s ON "_s
                            "s.Code = p.Anbar");
    for (; !changes.Eof(); changes.Next()) {
        const Quantity change = changes.Number(u"Mogodi");
        if (change >= 0)
            continue;
        const Quantity lowest = LowestFrom(changes.Int(u"Code"), changes.Int(u"Anbar"), date);
        if (lowest + change >= 0)
            continue;
        return MessageText(message::StockWouldBeMinus, {changes.Text(u"GoodName").trimmed(), changes.Text(u"StoreName"),
                                                        Shown(lowest), Shown(change)});
    }
    return {};
}

Quantity Stock::LowestFrom(int good, int store, const QString &date) const
{
    const QString place = u" AND Anbar = %1"_s.arg(store);
    const host::Query opening(m_connection,
                              u"SELECT ISNULL(SUM(Amount1), 0) AS Amount1 FROM GoodFirstAsset WHERE tmp = 0 "
                              "AND GoodCode = %1 AND StoreCode = %2"_s.arg(good)
                                  .arg(store));
    Quantity balance = opening.Number(u"Amount1");
    host::Query days(m_connection, u"SELECT [Date] AS Day, SUM(Amount1) AS Amount1 FROM Kardex WHERE Kala = "_s +
                                       QString::number(good) + place + u" GROUP BY [Date] ORDER BY [Date]"_s);
    for (; !days.Eof() && days.Text(u"Day") <= date; days.Next())
        balance += days.Number(u"Amount1");
    Quantity lowest = balance;
    for (; !days.Eof(); days.Next()) {
        balance += days.Number(u"Amount1");
        lowest = std::min(lowest, balance);
    }
    return lowest;
}

void Stock::SaveStorageAutoOperation(host::TSoftwarePart part, int code)
{
    host::Transaction transaction(m_connection);
    DeleteStorageAutoOperation(part, code);
    const QString good = QString::number(code);
    const QString rows = u" FROM GoodFirstAsset WHERE tmp = 0 AND GoodCode = "_s + good;
    Run(m_connection,
        u"INSERT INTO StorageAutoOperation (OperationType, OperationCode, [Date], UserCode) "
        "SELECT %1, %2, (SELECT TOP 1 [Date] FROM inf_co), %3 WHERE EXISTS (SELECT ID"_s.arg(OpeningOperation)
                .arg(code)
                .arg(m_settings.UserInfo().Code) +
            rows + u')');
    Run(m_connection,
        u"INSERT INTO StorageAutoOperationDetail (OperationID, OperationRow, GoodCode, StoreCode, Amount1, Amount2) "
        "SELECT (SELECT ID FROM StorageAutoOperation WHERE OperationType = %1 AND OperationCode = %2), Radif, "
        "GoodCode, StoreCode, Amount1, Amount2"_s.arg(OpeningOperation)
                .arg(code) +
            rows);
    Run(m_connection, u"Exec UpdateMogodiKala @GoodCode = "_s + good);
    transaction.Commit();
}

void Stock::DeleteStorageAutoOperation(host::TSoftwarePart, int code)
{
    Run(m_connection,
        u"DELETE FROM StorageAutoOperation WHERE OperationType = %1 AND OperationCode = %2"_s.arg(OpeningOperation)
            .arg(code));
}

void Stock::SaveStorageAutoOperation(host::TOperationType type, int code)
{
    host::Transaction transaction(m_connection);
    WriteMovements(type, code, DivisionRows(type, code));
    const QString number = QString::number(static_cast<int>(type));
    Run(m_connection,
        u"INSERT INTO StorageAutoOperation (OperationType, OperationCode, [Date], UserCode) SELECT %1, Code, "
        "[Date], %2 FROM GoodDetailDivision WHERE Code = %3"_s.arg(number)
            .arg(m_settings.UserInfo().Code)
            .arg(code));
    Run(m_connection,
        u"INSERT INTO StorageAutoOperationDetail (OperationID, OperationRow, GoodCode, StoreCode, Amount1, Amount2) SELECT "
        "(SELECT ID FROM StorageAutoOperation%1), r.OperationRow, r.GoodCode, r.StoreCode, ABS(r.Amount1), "
        "ABS(r.Amount2) FROM (%2) AS r"_s.arg(OfOperation(type, code), DivisionRows(type, code)));
    transaction.Commit();
}

void Stock::DeleteStorageAutoOperation(host::TOperationType type, int code)
{
    host::Transaction transaction(m_connection);
    WriteMovements(type, code, DivisionRows(type, code) + u" AND 1 = 0"_s);
    transaction.Commit();
}

/// Movements in place of those that the operation had, and the stock of all goods among them. A movement keeps its
/// place among those of the day as long as its row stays.
void Stock::WriteMovements(host::TOperationType type, int code, const QString &rows)
{
    const QString own = OfOperation(type, code);
    // Both types go to the server in one text, in which a table is made once.
    const QString goods = u"#StorageGoods%1"_s.arg(static_cast<int>(type));
    Run(m_connection, u"IF OBJECT_ID('tempdb..%1') IS NOT NULL DROP TABLE %1"_s.arg(goods));
    Run(m_connection, u"CREATE TABLE %1 (GoodCode int NOT NULL PRIMARY KEY)"_s.arg(goods));
    Run(m_connection,
        u"INSERT INTO %1 (GoodCode) SELECT Kala FROM Kardex%2 UNION SELECT r.GoodCode FROM (%3) AS r"_s.arg(goods, own,
                                                                                                            rows));
    Run(m_connection, u"DELETE FROM StorageAutoOperation"_s + own);
    Run(m_connection,
        u"DELETE FROM Kardex%1 AND OperationRow NOT IN (SELECT r.OperationRow FROM (%2) AS r)"_s.arg(own, rows));
    Run(m_connection,
        u"UPDATE k SET Kala = r.GoodCode, Anbar = r.StoreCode, [Date] = r.Day, Amount1 = r.Amount1, Amount2 = r.Amount2 "
        "FROM Kardex AS k INNER JOIN (%1) AS r ON r.OperationRow = k.OperationRow WHERE k.OperationType = %2 AND "
        "k.OperationCode = %3"_s.arg(rows)
            .arg(static_cast<int>(type))
            .arg(code));
    Run(m_connection,
        u"INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, OperationRow, [Date], Amount1, Amount2, Cost) "
        "SELECT r.GoodCode, r.StoreCode, %1, %2, r.OperationRow, r.Day, r.Amount1, r.Amount2, 0 FROM (%3) AS r WHERE "
        "r.OperationRow NOT IN (SELECT OperationRow FROM Kardex%4) ORDER BY r.OperationRow"_s
            .arg(static_cast<int>(type))
            .arg(code)
            .arg(rows, own));
    ReckonStock(m_connection, u"SELECT GoodCode FROM "_s + goods);
}

} // namespace desk
