#pragma once

#include "host/host_export.h"

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QString>

#include <functional>

namespace host {

/// The one way a statement goes to the database: forward only, decimals as text, counted; throws DatabaseError.
/// `query` runs on `connection` and stands before the first row of its first result.
void Send(QSqlQuery &query, const QSqlDatabase &connection, const QString &text);

/// A text with what waits in the connection's transaction before it (see Run()); nothing waits then any more.
QString WithWaiting(const QSqlDatabase &connection, const QString &text);

/// Goes on to the first result that has columns; false when there is none. Throws DatabaseError.
bool SkipToRows(QSqlQuery &query, const QString &text);

/// Throws the error that a query met while rows were read, if any.
void CheckRead(const QSqlQuery &query, const QString &text);

/// Goes through what is left of a batch whose rows have been read: an error in a later statement shows only when its
/// result is asked for. Throws DatabaseError.
void Finish(QSqlQuery &query, const QString &text);

/// Who is told the text of every statement that is counted, before it is sent; nobody when the function is empty.
HOST_EXPORT void WatchStatements(std::function<void(const QString &text)> watch);

} // namespace host
