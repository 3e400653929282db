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

} // namespace

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

} // namespace desk
