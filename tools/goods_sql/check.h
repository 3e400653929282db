// Whether documents, movements, stock and details of a database agree.
#pragma once

#include <QSqlDatabase>
#include <QTextStream>

/** Prints a line for each fault and gives their number. Reads only. Throws ScriptError. */
int CheckGoods(const QSqlDatabase &database, QTextStream &out);
