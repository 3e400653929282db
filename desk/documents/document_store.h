#pragma once

#include "desk/documents/document_kinds.h"
#include "desk/documents/document_records.h"
#include "host/data/query.h"
#include "host/host.h"

#include <optional>

namespace desk {

/// Documents in the database. Saving one writes its lines, the movements of goods, the ledger of their details and the
/// stock on hand in one transaction, in a number of statements that does not grow with the goods or the details; only
/// the lines travel in blocks.
///
/// All throw host::DatabaseError; what writes throws DocumentRefused as well, and has written nothing then.
class DocumentStore
{
public:
    /// `host` outlives the store.
    explicit DocumentStore(host::Host &host) : m_host(host), m_connection(host.DM.ADOConnection1) {}

    /// The next code of a kind, reserved for this desk until ReleaseCodes().
    int NewCode(const DocumentKind &kind);
    void ReleaseCodes(const DocumentKind &kind);

    std::optional<Document> Get(int kind, int code) const;
    /// The statement that finds the row of a document.
    static QString RowText(int kind, int code);

    /// Writes a new document (Revision 0), or one over the revision that was read. The details are those that this desk
    /// keeps for its lines.
    void Save(const Document &document);
    /// Deletes what was read.
    void Delete(const Document &read);
    /// The document in its editor has only these lines left: details kept for others are forgotten.
    void KeepLines(int kind, int code, const QList<DocumentLine> &lines);

private:
    host::Host &m_host;
    QSqlDatabase m_connection;
};

/// The columns of DocumentLines with the names that belong to them, of one document.
QList<DocumentLine> ReadDocumentLines(const QSqlDatabase &connection, const QString &where);
/// The SELECT … FROM of a good as lines need it, g being GoodInf; and what one of its rows says.
QString DocumentGoodText();
DocumentGood DocumentGoodOf(const host::Query &row);

} // namespace desk
