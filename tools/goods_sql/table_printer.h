// Result sets as text.
#pragma once

#include "host/data/odbc_text.h"

#include <QSqlQuery>
#include <QTextStream>

/** Prints the current result set of a query: an aligned table with its column names, or comma-separated values. */
class TablePrinter
{
public:
    TablePrinter(QTextStream &out, bool csv) : m_out(out), m_csv(csv) {}

    /** Returns the number of rows. */
    int Print(QSqlQuery &query);
    /** A line of the script's own. Among comma-separated values it goes to the standard error. */
    void Say(const QString &message);

private:
    /** The query's rows, with the columns that a server's driver has to be asked for as text. */
    struct Rows
    {
        QSqlQuery &query;
        host::OdbcText texts;
        QStringList names;
        QList<bool> numbers;
        QList<bool> asText;
    };

    static Rows RowsOf(QSqlQuery &query);
    int PrintCsv(Rows &rows);
    int PrintTable(Rows &rows);
    static QStringList Fields(const Rows &rows, const QString &null);
    void PrintLine(const QStringList &fields, const QList<qsizetype> &widths, const QList<bool> &right);

    // Widths are measured on this many rows, so that a long list begins to come at once.
    static constexpr int MeasuredRows = 500;

    QTextStream &m_out;
    bool m_csv;
};

/** How a value is printed: ISO dates, 0x and digits for binaries, `null` for NULL. */
QString Printed(const QVariant &value, const QString &null);
