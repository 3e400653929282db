#pragma once

#include "desk/documents/document_records.h"
#include "host/host.h"

namespace desk {

/// Details that may not move as the document says; becomes a DocumentRefused once all is rolled back.
struct DetailsRefused
{
    QList<host::TDetailRefusal> refusals;
};

/// What a document that is written, but not committed, must not have brought about. Each throws DocumentRefused.
class DocumentRefusals
{
public:
    DocumentRefusals(host::Host &host, const Document &document)
        : m_host(host), m_connection(host.DM.ADOConnection1), m_document(document)
    {}

    /// Before deleting: no return answers the document.
    void NothingAnswers() const;
    /// The document that is answered exists, and nothing of it comes back before it moved or more than it moved.
    void ReturnsFit() const;
    /// On no day is there less than nothing of a good in a store, as far as this document made it less. `moves` is the
    /// condition of its movements, the former ones stand in #DocumentBefore.
    void StockLasts(const QString &moves) const;
    /// Changed lines of goods with details have their quantity in the ledger, in their store. With details switched off
    /// that is asked of lines that have some from before.
    void DetailsFitLines() const;

private:
    void MovedCovers(int kind, int code) const;
    void NotAfterReturns() const;
    /// Those that answer it; with `before`, a day, only earlier ones.
    QString AnsweringTitles(int kind, int code, const QString &before = {}) const;

    host::Host &m_host;
    QSqlDatabase m_connection;
    const Document &m_document;
};

/// Why details are refused, with the documents that have them, for the user.
QString DetailRefusalText(host::Host &host, const Document &document, const QList<host::TDetailRefusal> &refusals);

} // namespace desk
