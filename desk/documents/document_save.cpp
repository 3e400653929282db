#include "desk/documents/document_save.h"

#include "desk/documents/document_kinds.h"
#include "desk/documents/document_refusals.h"
#include "desk/messages/catalogue.h"
#include "desk/services/stock.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "rules/stamp.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::DecimalLiteral;
using host::NQuotedStr;
using host::QuotedStr;
using host::TOperationType;

/// Lines in one statement; servers take a thousand.
constexpr int BlockLines = 500;

constexpr int TransferIn = static_cast<int>(TOperationType::TransferIn);

QString CodeOrNull(int code)
{
    return code == 0 ? u"NULL"_s : QString::number(code);
}

/// One run of writing a document, inside a transaction.
class Writer
{
public:
    Writer(host::Host &host, const Document &document)
        : m_host(host), m_connection(host.DM.ADOConnection1), m_document(document),
          m_kind(DocumentKindOf(document.Kind))
    {}

    void Save();
    void Delete();

private:
    void Run(const QString &text) { host::Run(m_connection, text); }
    /// The document, in a table with these columns.
    QString Mine(const QString &prefix = {}) const
    {
        return u"%1Kind = %2 AND %1Code = %3"_s.arg(prefix).arg(m_document.Kind).arg(m_document.Code);
    }
    /// Nobody has saved it since, and it is no other one with its number.
    QString AsRead() const { return u" AND Revision = %1 AND ID = %2"_s.arg(m_document.Revision).arg(m_document.ID); }
    /// Its movements.
    QString Moves(const QString &prefix = {}) const
    {
        const QString types =
            m_kind.IsTransfer() ? u"%1, %2"_s.arg(m_document.Kind).arg(TransferIn) : QString::number(m_document.Kind);
        return u"%1OperationType IN (%2) AND %1OperationCode = %3"_s.arg(prefix, types).arg(m_document.Code);
    }
    void NoteBefore();
    void WriteHeader();
    void WriteLines();
    void WriteMovements();
    void WriteDetails();
    void Judge();

    host::Host &m_host;
    QSqlDatabase m_connection;
    const Document &m_document;
    const DocumentKind &m_kind;
};

/// What the document moved until now, and the lines that it is to have. Whoever moves one of its goods waits.
void Writer::NoteBefore()
{
    for (const QString &table : {u"#DocumentBefore"_s, u"#DocumentLines"_s, u"#DocumentGoods"_s})
        Run(u"IF OBJECT_ID('tempdb..%1') IS NOT NULL DROP TABLE %1"_s.arg(table));
    Run(u"CREATE TABLE #DocumentBefore (OperationRow int NOT NULL, GoodCode int NOT NULL, StoreCode int NOT NULL, Day "
        "varchar(10) COLLATE DATABASE_DEFAULT NOT NULL, Amount1 decimal(23,9) NOT NULL)"_s);
    Run(u"INSERT INTO #DocumentBefore (OperationRow, GoodCode, StoreCode, Day, Amount1) SELECT OperationRow, Kala, Anbar, "
        "[Date], Amount1 FROM Kardex WHERE "_s +
        Moves());
    Run(u"CREATE TABLE #DocumentLines (OperationRow int NOT NULL PRIMARY KEY, GoodCode int NOT NULL, StoreCode smallint "
        "NOT NULL, Amount1 decimal(23,9) NOT NULL, Amount2 decimal(23,9) NOT NULL, Price decimal(28,9) NOT NULL)"_s);
    QStringList rows;
    const auto send = [&] {
        if (!rows.isEmpty())
            Run(u"INSERT INTO #DocumentLines (OperationRow, GoodCode, StoreCode, Amount1, Amount2, Price) VALUES "_s +
                rows.join(u", "));
        rows.clear();
    };
    for (const DocumentLine &line : m_document.Lines) {
        rows << u"(%1, %2, %3, "_s.arg(line.OperationRow).arg(line.Good.Code).arg(line.StoreCode) +
                    QStringList{DecimalLiteral(line.Amount1), DecimalLiteral(line.Amount2), DecimalLiteral(line.Price)}
                        .join(u", ") +
                    u')';
        if (rows.size() == BlockLines)
            send();
    }
    send();
    Run(u"CREATE TABLE #DocumentGoods (GoodCode int NOT NULL PRIMARY KEY)"_s);
    Run(u"INSERT INTO #DocumentGoods (GoodCode) SELECT g.Code FROM GoodInf AS g WITH (UPDLOCK, HOLDLOCK) WHERE g.Code IN "
        "(SELECT GoodCode FROM #DocumentBefore UNION SELECT GoodCode FROM #DocumentLines)"_s);
}

void Writer::WriteHeader()
{
    const host::TUserInfo &user = m_host.settings.UserInfo();
    const QStringList stamp{QuotedStr(m_host.clock.NowTime()), QuotedStr(m_host.clock.NowShamsiDate()),
                            NQuotedStr(goods::StampUser(user.Name, user.Code))};
    if (m_document.Revision == 0) {
        if (host::Exists(m_connection, u"SELECT Code FROM Documents WHERE "_s + Mine()))
            throw DocumentRefused(MessageText(message::RepeatedCode, {u"شماره سند"_s}));
        Run(u"INSERT INTO Documents (Kind, Code, [Date], StoreCode, ToStoreCode, AnswersCode, Comment, CreatedTime, "
            "CreatedDate, UserCreated) VALUES (%1, %2, "_s.arg(m_document.Kind)
                .arg(m_document.Code) +
            QStringList{QuotedStr(m_document.Date), QString::number(m_document.StoreCode),
                        CodeOrNull(m_document.ToStoreCode), QString::number(m_document.AnswersCode),
                        NQuotedStr(m_document.Comment), stamp.join(u", ")}
                .join(u", ") +
            u')');
        return;
    }
    const int written =
        host::Exec(m_connection,
                   u"UPDATE Documents SET Revision = Revision + 1, [Date] = "_s + QuotedStr(m_document.Date) +
                       u", StoreCode = %1, ToStoreCode = %2, AnswersCode = %3, Comment = "_s.arg(m_document.StoreCode)
                           .arg(CodeOrNull(m_document.ToStoreCode))
                           .arg(m_document.AnswersCode) +
                       NQuotedStr(m_document.Comment) + u", ModifiedTime = "_s + stamp[0] + u", ModifiedDate = "_s +
                       stamp[1] + u", UserModified = "_s + stamp[2] + u" WHERE "_s + Mine() + AsRead());
    if (written == 0)
        throw DocumentRefused(MessageText(message::DocumentChanged, {m_kind.Title(m_document.Code)}));
}

void Writer::WriteLines()
{
    const QString set =
        u"GoodCode = n.GoodCode, StoreCode = n.StoreCode, Amount1 = n.Amount1, Amount2 = n.Amount2, Price "
        "= n.Price"_s;
    const QString columns = u"OperationRow, GoodCode, StoreCode, Amount1, Amount2, Price"_s;
    Run(u"DELETE FROM DocumentLines WHERE %1 AND OperationRow NOT IN (SELECT OperationRow FROM #DocumentLines)"_s.arg(
        Mine()));
    Run(u"UPDATE l SET %1 FROM DocumentLines AS l INNER JOIN #DocumentLines AS n ON n.OperationRow = l.OperationRow WHERE "
        "%2 AND (l.GoodCode <> n.GoodCode OR l.StoreCode <> n.StoreCode OR l.Amount1 <> n.Amount1 OR l.Amount2 <> "
        "n.Amount2 OR l.Price <> n.Price)"_s.arg(set, Mine(u"l."_s)));
    Run(u"INSERT INTO DocumentLines (Kind, Code, %1) SELECT %2, %3, %1 FROM #DocumentLines WHERE OperationRow NOT IN "
        "(SELECT OperationRow FROM DocumentLines WHERE %4) ORDER BY OperationRow"_s.arg(
            columns, QString::number(m_document.Kind), QString::number(m_document.Code), Mine()));
}

/// A movement keeps its place among those of the day as long as its line stays.
void Writer::WriteMovements()
{
    Run(u"DELETE FROM Kardex WHERE %1 AND OperationRow NOT IN (SELECT OperationRow FROM #DocumentLines)"_s.arg(
        Moves()));
    const auto write = [this](int type, int direction, const QString &store) {
        const QString sign = direction < 0 ? u"-"_s : QString();
        const QString date = QuotedStr(m_document.Date);
        const QString own = u"OperationType = %1 AND OperationCode = %2"_s.arg(type).arg(m_document.Code);
        Run(u"UPDATE k SET Kala = l.GoodCode, Anbar = %1, [Date] = %2, Amount1 = %3l.Amount1, Amount2 = %3l.Amount2, Cost "
            "= l.Price FROM Kardex AS k INNER JOIN #DocumentLines AS l ON l.OperationRow = k.OperationRow WHERE "
            "k.OperationType = %4 AND k.OperationCode = %5 AND (k.Kala <> l.GoodCode OR k.Anbar <> %1 OR k.[Date] <> %2 "
            "OR k.Amount1 <> %3l.Amount1 OR k.Amount2 <> %3l.Amount2 OR k.Cost <> l.Price)"_s.arg(
                store, date, sign, QString::number(type), QString::number(m_document.Code)));
        Run(u"INSERT INTO Kardex (Kala, Anbar, OperationType, OperationCode, OperationRow, [Date], Amount1, Amount2, Cost) "
            "SELECT l.GoodCode, %1, %2, %3, l.OperationRow, %4, %5l.Amount1, %5l.Amount2, l.Price FROM #DocumentLines AS "
            "l WHERE l.OperationRow NOT IN (SELECT OperationRow FROM Kardex WHERE %6) ORDER BY l.OperationRow"_s.arg(
                store, QString::number(type), QString::number(m_document.Code), date, sign, own));
    };
    write(m_document.Kind, m_kind.direction, u"l.StoreCode"_s);
    if (m_kind.IsTransfer())
        write(TransferIn, 1, QString::number(m_document.ToStoreCode));
}

void Writer::WriteDetails()
{
    const auto type = static_cast<quint8>(m_document.Kind);
    const auto judge = [](const QList<host::TDetailRefusal> &refusals) {
        if (!refusals.isEmpty())
            throw DetailsRefused{refusals};
    };
    host::DetailMovementService &details = m_host.detailMovements;
    details.GoodDetailsOperation_KeepLines(type, m_document.Code,
                                           u"SELECT OperationRow, GoodCode FROM #DocumentLines"_s);
    judge(details.GoodDetailsOperation_Save(type, m_document.Code));
    if (m_kind.IsTransfer())
        judge(details.GoodDetailsOperation_Transfer(type, TransferIn, m_document.Code, m_document.ToStoreCode));
}

/// What can be told only of what is written.
void Writer::Judge()
{
    const DocumentRefusals refusals(m_host, m_document);
    refusals.ReturnsFit();
    if (m_host.settings.SettingRecord().ControlNegativeStock)
        refusals.StockLasts(Moves());
    refusals.DetailsFitLines();
}

void Writer::Save()
{
    WriteHeader();
    NoteBefore();
    WriteLines();
    WriteMovements();
    WriteDetails();
    ReckonStock(m_connection, u"SELECT GoodCode FROM #DocumentGoods"_s);
    Judge();
}

void Writer::Delete()
{
    DocumentRefusals(m_host, m_document).NothingAnswers();
    const int found =
        host::Exec(m_connection, u"UPDATE Documents SET Revision = Revision + 1 WHERE "_s + Mine() + AsRead());
    if (found == 0)
        throw DocumentRefused(MessageText(message::DocumentChanged, {m_kind.Title(m_document.Code)}));
    NoteBefore(); // without lines: everything goes
    WriteLines();
    WriteMovements();
    WriteDetails();
    ReckonStock(m_connection, u"SELECT GoodCode FROM #DocumentGoods"_s);
    Judge();
    Run(u"DELETE FROM Documents WHERE "_s + Mine());
}

void InTransaction(host::Host &host, const Document &document, void (Writer::*step)())
{
    try {
        host::Transaction transaction(host.DM.ADOConnection1);
        Writer writer(host, document);
        (writer.*step)();
        transaction.Commit();
    } catch (const DetailsRefused &refused) {
        // Rolled back by now: who has the details is read from what is saved.
        throw DocumentRefused(DetailRefusalText(host, document, refused.refusals));
    }
}

} // namespace

void SaveDocument(host::Host &host, const Document &document)
{
    InTransaction(host, document, &Writer::Save);
}

void DeleteDocument(host::Host &host, const Document &document)
{
    InTransaction(host, document, &Writer::Delete);
}

} // namespace desk
