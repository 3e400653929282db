// The two kinds of database behind one name.
#pragma once

#include <QSqlDatabase>

/** What the command line names: a file of the embedded database, or an ODBC connection string ("Driver=…;Server=…"). */
class Target
{
public:
    explicit Target(QString name) : m_name(std::move(name)) {}

    bool IsServer() const { return m_name.contains(u'='); }
    const QString &Name() const { return m_name; }

    /** Opens it; what is not there is made if `create`, refused otherwise. Throws ScriptError. */
    QSqlDatabase Open(bool create, const QString &connectionName) const;
    /** Opens it as it is. Throws ScriptError. */
    QSqlDatabase Connect(const QString &connectionName) const;
    /** Makes the database of a server when it does not exist, with a collation that keeps every letter. */
    void CreateOnServer() const;
    /** Removes the database of a server; nobody may be in it. Throws ScriptError. */
    void DropOnServer() const;

private:
    void RunOnServer(const QString &format) const;
    QString Part(const QString &key) const;
    QString Without(const QString &key) const;

    QString m_name;
};

/** A script of desk/database, by its name; they travel inside the program. Throws ScriptError. */
QString EmbeddedScript(const QString &name);
/** Writes the schema, the procedures and (`demo`) the demo data into an empty database, all or nothing. Throws
 * ScriptError. */
void Initialise(QSqlDatabase database, bool demo);
/** Copies the open embedded database to a new file. Throws ScriptError. */
void Backup(const QSqlDatabase &database, const QString &file);
