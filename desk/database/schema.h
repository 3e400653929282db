// What the scripts of this folder make, and what an older database lacks of it.
#pragma once

#include "tsql/values/types.h"

#include <QHash>
#include <QStringList>

#include <functional>
#include <vector>

namespace tsql {
struct Statement;
struct CreateTableStatement;
} // namespace tsql

namespace desk {

/// Sends a text to a database and gives the rows of its result, each value as text, NULL as an empty one.
using AskDatabase = std::function<QList<QStringList>(const QString &text)>;

/// How a database stands to the scripts.
enum class SchemaStanding {
    Current,
    Earlier, ///< made by an earlier version: `steps` bring it to this one
    Later,   ///< made by a later version
    Foreign, ///< of something else, or changed in a way that no step makes good
};

struct SchemaDifference
{
    SchemaStanding standing = SchemaStanding::Current;
    QStringList strange; ///< of a foreign one: tables and columns that are not as they must be, "GoodInf.tags (int)"
    QStringList steps;   ///< of an earlier one: texts, to be run one by one in one transaction
};

/// The tables, indexes, procedures and first rows of the scripts, which are their single source.
///
/// Only what can be added to a database with rows is added: whole tables, indexes, procedures, and columns that may be
/// NULL or have a literal default and that no key is made of. Procedures are made anew, and the statements of the first
/// rows, which add what is missing, run again. Columns that are wider than the script's are as good, and what a shop
/// has added of its own stays.
class Schema
{
public:
    /// The texts of schema.sql and procedures.sql. Throws tsql::Error for a text that is none.
    Schema(const QString &tables, const QString &procedures);

    /// Asks a database for what it holds, in three texts at most. Throws what `ask` throws.
    SchemaDifference Compare(const AskDatabase &ask) const;

private:
    struct Column
    {
        QString name;
        tsql::SqlType type;
        QString added; ///< as ALTER TABLE adds it; empty when it cannot be added
    };
    struct Table
    {
        QString name; ///< "Market.Product"
        QString text;
        std::vector<Column> columns;
    };
    /// What has a number in a database that has it.
    struct Part
    {
        QString number; ///< the expression for it
        QString text;   ///< makes it
    };
    struct FoundColumn
    {
        QString type;
        int length = 0;
        int precision = 0;
        int scale = 0;
    };
    /// Columns by the name of their table and their own, both folded.
    using FoundTables = QHash<QString, QHash<QString, FoundColumn>>;

    void Read(const QString &script);
    void Take(const tsql::Statement &statement);
    void TakeTable(const tsql::CreateTableStatement &statement);
    /// What has no number in a database.
    struct MissingParts
    {
        QStringList schemas;
        QStringList indexes;
        bool aRoutine = false;

        bool IsNone() const { return schemas.isEmpty() && indexes.isEmpty() && !aRoutine; }
    };

    static FoundTables Found(const AskDatabase &ask);
    static bool Fits(const FoundColumn &found, const tsql::SqlType &wanted);
    QStringList AddTables(const FoundTables &found, QStringList &strange) const;
    MissingParts FindMissing(const AskDatabase &ask) const;
    QStringList Steps(const MissingParts &missing, const QStringList &tables) const;

    int m_version = 0;
    std::vector<Table> m_tables;
    std::vector<Part> m_schemas;
    std::vector<Part> m_indexes;
    std::vector<Part> m_routines;
    QStringList m_rows;
};

/// A name beside a database file for a copy of it, with the time in it.
QString CopyBeside(const QString &file);

} // namespace desk
