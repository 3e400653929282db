#pragma once

#include "host/data/dataset.h"

#include <QList>

namespace desk {

/// Which documents a list shows.
struct DocumentFilter
{
    QList<int> Kinds; ///< none: no document
    QString FromDate; ///< as the suite writes dates; empty: no beginning
    QString ToDate;   ///< the last day; empty: no end
};

/// The rows of the list of documents, the newest first: DocumentKey ("2-17"), Kind, KindName, Code, Date, StoreName,
/// ToStoreName, Answers, Lines, Amount1, Total, Comment, UserCreated, UserModified.
class DocumentListData
{
public:
    explicit DocumentListData(const QSqlDatabase &connection);

    host::Dataset Documents_QRY;

    /// Of all documents that the filter finds, read yet or not; of a list that came in one block nothing is reckoned
    /// beside its rows.
    int Count = 0;
    host::Quantity Total = 0;

    /// Throws host::DatabaseError, host::RefusedText for a date that is none.
    void Open(const DocumentFilter &filter);
};

/// A date as it is stored, in quotes. Throws host::RefusedText when it is none.
QString DateLiteral(const QString &date);

} // namespace desk
