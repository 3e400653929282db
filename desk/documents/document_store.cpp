#include "desk/documents/document_store.h"

#include "desk/documents/document_save.h"
#include "desk/messages/catalogue.h"
#include "host/data/query.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

/// Lines in one statement; servers take a thousand.
constexpr int BlockLines = 500;

QString Where(int kind, int code, const QString &prefix = {})
{
    return u" WHERE %1Kind = %2 AND %1Code = %3"_s.arg(prefix).arg(kind).arg(code);
}

} // namespace

int DocumentStore::NewCode(const DocumentKind &kind)
{
    host::Transaction transaction(m_connection);
    m_host.entities.ReleaseCodes(kind.part); // and those of desks that are gone
    int code = host::Scalar(
                   m_connection,
                   u"SELECT ISNULL(MAX(u.Code), 0) + 1 FROM (SELECT MAX(Code) AS Code FROM Documents WHERE "
                   "Kind = %1 UNION ALL SELECT MAX(Code) FROM CodeLock_TBL WHERE Status = %2) AS u"_s.arg(kind.Number())
                       .arg(static_cast<int>(kind.part)))
                   .toInt();
    while (!m_host.entities.ReserveCode(kind.part, code))
        ++code;
    transaction.Commit();
    return code;
}

void DocumentStore::ReleaseCodes(const DocumentKind &kind)
{
    m_host.entities.ReleaseCodes(kind.part);
}

QString DocumentStore::RowText(int kind, int code)
{
    return u"SELECT Kind, Code, [Date], StoreCode, ISNULL(ToStoreCode, 0) AS ToStoreCode, AnswersCode, Comment, Revision, "
           "ID FROM Documents"_s +
           Where(kind, code);
}

std::optional<Document> DocumentStore::Get(int kind, int code) const
{
    const host::Query row(m_connection, RowText(kind, code));
    if (row.IsEmpty())
        return std::nullopt;
    return Document{kind,
                    code,
                    row.Text(u"Date"),
                    row.Int(u"StoreCode"),
                    row.Int(u"ToStoreCode"),
                    row.Int(u"AnswersCode"),
                    row.Text(u"Comment"),
                    row.Int(u"Revision"),
                    ReadDocumentLines(m_connection, Where(kind, code, u"l."_s)),
                    row.Int(u"ID")};
}

void DocumentStore::Save(const Document &document)
{
    SaveDocument(m_host, document);
}

void DocumentStore::Delete(const Document &read)
{
    Document document; // without lines, and answering nothing
    document.Kind = read.Kind;
    document.Code = read.Code;
    document.Revision = read.Revision;
    document.ID = read.ID;
    DeleteDocument(m_host, document);
}

void DocumentStore::KeepLines(int kind, int code, const QList<DocumentLine> &lines)
{
    host::Transaction transaction(m_connection);
    host::Run(m_connection, u"IF OBJECT_ID('tempdb..#KeptLines') IS NOT NULL DROP TABLE #KeptLines"_s);
    host::Run(m_connection,
              u"CREATE TABLE #KeptLines (OperationRow int NOT NULL PRIMARY KEY, GoodCode int NOT NULL)"_s);
    for (qsizetype first = 0; first < lines.size(); first += BlockLines) {
        QStringList rows;
        for (const DocumentLine &line : lines.mid(first, BlockLines))
            rows << u"(%1, %2)"_s.arg(line.OperationRow).arg(line.Good.Code);
        host::Run(m_connection, u"INSERT INTO #KeptLines (OperationRow, GoodCode) VALUES "_s + rows.join(u", "));
    }
    m_host.detailMovements.GoodDetailsOperation_KeepLines(static_cast<quint8>(kind), code,
                                                          u"SELECT OperationRow, GoodCode FROM #KeptLines"_s);
    transaction.Commit();
}

QString DocumentGoodText()
{
    return u"g.Code AS GoodCode, g.Name AS GoodName, g.Meghdar_Formool AS Formula, ISNULL(g.Store, 0) AS GoodStore, "
           "u1.Name AS UnitName1, u2.Name AS UnitName2, CASE WHEN EXISTS (SELECT 1 FROM GoodDetailRelation AS r WHERE "
           "r.GoodCode = g.Code) THEN 1 ELSE 0 END AS HasDetails"_s;
}

DocumentGood DocumentGoodOf(const host::Query &row)
{
    return {row.Int(u"GoodCode"),   row.Text(u"GoodName").trimmed(), row.Text(u"UnitName1"),    row.Text(u"UnitName2"),
            row.Number(u"Formula"), row.Int(u"GoodStore"),           row.Int(u"HasDetails") > 0};
}

QList<DocumentLine> ReadDocumentLines(const QSqlDatabase &connection, const QString &where)
{
    QList<DocumentLine> lines;
    for (host::Query rows(connection,
                          u"SELECT l.OperationRow, l.StoreCode, s.Name AS StoreName, l.Amount1, l.Amount2, "
                          "l.Price, "_s +
                              DocumentGoodText() +
                              u" FROM DocumentLines AS l INNER JOIN GoodInf AS g ON g.Code = l.GoodCode "
                              "LEFT JOIN Units AS u1 ON u1.Code = g.Unit LEFT JOIN Units AS u2 ON u2.Code = "
                              "g.Unit2 INNER JOIN Stores AS s ON s.Code = l.StoreCode"_s +
                              where + u" ORDER BY l.OperationRow"_s);
         !rows.Eof(); rows.Next())
        lines << DocumentLine{rows.Int(u"OperationRow"), DocumentGoodOf(rows),    rows.Int(u"StoreCode"),
                              rows.Text(u"StoreName"),   rows.Number(u"Amount1"), rows.Number(u"Amount2"),
                              rows.Number(u"Price")};
    return lines;
}

} // namespace desk
