// What a script becomes, instead of running it.
#pragma once

#include "tsql/run/explain.h"

#include <QSqlDatabase>
#include <QTextStream>

/** Prints the SQLite texts of a script's statements. For the embedded database only. */
class Explanation
{
public:
    /** Throws ScriptError for a server. */
    Explanation(const QSqlDatabase &database, QTextStream &out);

    /** `name` is the file as messages call it. Throws ScriptError. */
    void Run(const QString &script, const QString &name);

private:
    tsql::Explainer m_explainer;
    QTextStream &m_out;
};
