// What a reply consists of: descriptions of columns, rows, counts, errors, changes of the session.
#pragma once

#include "tests/tds/wire.h"
#include "tsql/run/cursor.h"

using namespace Qt::StringLiterals;

namespace tds {

/** How the texts of plain varchar columns are written: by the collation of the database. */
struct Collation
{
    explicit Collation(const QString &name = u"Persian_100_CI_AI_SC_UTF8"_s);

    QByteArray bytes() const;
    /** The letters that the collation has; a question mark for each it has not. */
    QByteArray encoded(std::string_view utf8) const;

    bool isUtf8;
};

/** Bits of Done's `status`. */
enum DoneStatus : quint16 { DoneMore = 1, DoneError = 2, DoneCount = 0x10, DoneAttention = 0x20 };
enum class DoneKind : quint8 { Batch = 0xFD, Procedure = 0xFE, InProcedure = 0xFF };

void PutColumns(Wire &wire, const std::vector<tsql::ResultColumn> &columns, const Collation &collation);
void PutRow(Wire &wire, const tsql::Cursor &cursor, const Collation &collation);
void PutDone(Wire &wire, int status, qint64 rows = 0, DoneKind kind = DoneKind::Batch);
/** A `severity` below 11 is a message, anything else an error. */
void PutMessage(Wire &wire, int number, int severity, int state, int line, const QString &text);
void PutReturnStatus(Wire &wire, int value);

/** `version` is the protocol's as the client named it. */
void PutLoginAcknowledgement(Wire &wire, quint32 version);
void PutDatabaseChange(Wire &wire, const QString &from, const QString &to);
void PutCollationChange(Wire &wire, const Collation &collation);
void PutPacketSizeChange(Wire &wire, int size);
/** `type`: 8 begun, 9 committed, 10 rolled back. */
void PutTransactionChange(Wire &wire, quint8 type, quint64 transaction);

} // namespace tds
