#pragma once

#include "tsql/parse/ast.h"

#include <QHash>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace tsql {

struct Column
{
    QString name;
    SqlType type;
    bool nullable = true;
    bool identity = false;
    qint64 seed = 1;                                ///< the first value of an identity
    std::shared_ptr<const Expression> defaultValue; ///< null for none
};

/// A foreign key with the name that refusals give it.
struct Reference
{
    QString name;
    ForeignKey key;
};

/// A CHECK with the name that refusals give it.
struct Check
{
    QString name;
    QString column; ///< empty for a check of the whole row
};

struct Table
{
    ObjectName name;
    QString sqliteName; ///< quoted and qualified: "GoodInf", temp."#t"
    std::vector<Column> columns;
    std::vector<QString> primaryKey;
    std::vector<Reference> references;
    std::vector<Check> checks;
    QString rowidColumn; ///< the column that is SQLite's rowid: the identity, or a single integer primary key

    /// The index of a column by its name without regard to case, or -1.
    int IndexOf(QStringView name) const;
    const Column *IdentityColumn() const;
};

/// The table that the statement (or the declaration of a table variable) describes.
std::shared_ptr<Table> MakeTable(const CreateTableStatement &statement);

/// The name of a CHECK, which may have been given none.
QString CheckName(const ObjectName &table, const TableConstraint &constraint);

/// The name of an index in the file, where all tables share one room for them.
QString StoredIndexName(const ObjectName &table, const QString &index);

/// The names a database knows. A value: copying it is cheap and takes a picture that a rollback can restore.
class Catalogue
{
public:
    /// Replaces everything that is stored in the database file by the effect of these data definition texts, in the
    /// order they were carried out; temporary tables stay.
    void Load(const std::vector<QString> &definitions);

    /// Enters the effect of a data definition that SQLite has carried out. Throws Error as the server would when
    /// the object exists or does not exist.
    void Apply(const Statement &definition);
    void AddTable(const std::shared_ptr<const Table> &table);
    void RemoveTable(const ObjectName &name);

    std::shared_ptr<const Table> FindTable(const ObjectName &name) const;
    std::shared_ptr<const CreateViewStatement> FindView(const ObjectName &name) const;
    std::shared_ptr<const CreateFunctionStatement> FindFunction(const ObjectName &name) const;
    std::shared_ptr<const CreateProcedureStatement> FindProcedure(const ObjectName &name) const;
    bool HasSchema(const QString &name) const;

    /// A number that stands for an object of that name, NULL (nullopt) when there is none: OBJECT_ID. `kind` is
    /// "U", "V", "P", "IF", "FN" or empty for any.
    std::optional<int> ObjectId(const QString &name, const QString &kind) const;
    /// The table of such a number; nothing when there is none.
    std::optional<ObjectName> TableOf(int objectId) const;
    /// The same for a schema: SCHEMA_ID.
    std::optional<int> SchemaId(const QString &name) const;
    std::vector<ObjectName> TableNames() const;
    std::vector<ObjectName> ViewNames() const;
    std::vector<ObjectName> ProcedureNames() const;
    std::vector<ObjectName> FunctionNames() const;

    /// Counts every change; a compiled statement belongs to one version.
    quint64 Version() const { return m_version; }

private:
    void Alter(const AlterTableStatement &statement);
    void AddModule(const Statement &definition);
    void Drop(const DropStatement &statement);

    template <class T> using Map = QHash<QString, std::shared_ptr<const T>>;

    Map<Table> m_tables;
    Map<CreateViewStatement> m_views;
    Map<CreateFunctionStatement> m_functions;
    Map<CreateProcedureStatement> m_procedures;
    QHash<QString, QString> m_schemas;
    quint64 m_version = 0;
};

} // namespace tsql
