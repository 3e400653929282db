#include "tools/goods_sql/table_printer.h"

#include <QDate>
#include <QSqlField>
#include <QSqlRecord>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace {

/** Columns on the screen: marks that sit on the letter before take none. */
qsizetype Width(const QString &text)
{
    qsizetype columns = 0;
    for (const char32_t c : text.toUcs4()) {
        const QChar::Category category = QChar::category(c);
        columns +=
            category != QChar::Mark_NonSpacing && category != QChar::Mark_Enclosing && category != QChar::Other_Format;
    }
    return columns;
}

QString QuotedForCsv(QString text)
{
    const bool special = text.contains(u',') || text.contains(u'"') || text.contains(u'\n') || text.contains(u'\r');
    return special ? u'"' + text.replace(u'"', u"\"\""_s) + u'"' : text;
}

bool IsNumber(const QSqlField &field)
{
    switch (field.metaType().id()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
    case QMetaType::Bool:
        return true;
    default:
        return field.precision() >= 0; // decimals come as text
    }
}

/**
 * Whether a server's column is asked for as text. Qt reads texts in pieces that lose letters, decimals as floating
 * point, and knows nothing of the server's own kinds (time, datetimeoffset): those it hands on as bytes.
 */
bool IsReadAsText(const QSqlField &field)
{
    constexpr std::array BytesOfOdbc = {-2, -3, -4}; // SQL_BINARY, SQL_VARBINARY, SQL_LONGVARBINARY
    switch (field.metaType().id()) {
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Bool:
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        return false;
    case QMetaType::QByteArray:
        return std::find(BytesOfOdbc.begin(), BytesOfOdbc.end(), field.typeID()) == BytesOfOdbc.end();
    default:
        return true;
    }
}

} // namespace

QString Printed(const QVariant &value, const QString &null)
{
    if (value.isNull())
        return null;
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"1"_s : u"0"_s;
    case QMetaType::QByteArray:
        return u"0x"_s + QString::fromLatin1(value.toByteArray().toHex().toUpper());
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(u"yyyy-MM-dd hh:mm:ss.zzz"_s);
    default:
        return value.toString();
    }
}

int TablePrinter::Print(QSqlQuery &query)
{
    Rows rows = RowsOf(query);
    return m_csv ? PrintCsv(rows) : PrintTable(rows);
}

void TablePrinter::Say(const QString &message)
{
    if (m_csv)
        QTextStream(stderr) << message << u'\n';
    else
        m_out << message << u'\n';
}

TablePrinter::Rows TablePrinter::RowsOf(QSqlQuery &query)
{
    const QSqlRecord record = query.record(); // before the first row: a record of a row reads its values
    Rows rows{query, host::OdbcText(query), {}, {}, {}};
    for (int i = 0; i < record.count(); ++i) {
        const QSqlField field = record.field(i);
        rows.names += field.name();
        rows.numbers += IsNumber(field);
        rows.asText += rows.texts.IsNeeded() && IsReadAsText(field);
    }
    return rows;
}

QStringList TablePrinter::Fields(const Rows &rows, const QString &null)
{
    QStringList all;
    for (int i = 0; i < rows.names.size(); ++i)
        all += Printed(rows.asText[i] ? rows.texts.Read(i) : rows.query.value(i), null);
    return all;
}

int TablePrinter::PrintCsv(Rows &rows)
{
    QStringList line = rows.names;
    int count = -1;
    do {
        for (QString &field : line)
            field = QuotedForCsv(field);
        m_out << line.join(u',') << u"\r\n"_s;
        ++count;
        if (!rows.query.next())
            return count;
        line = Fields(rows, QString());
    } while (true);
}

int TablePrinter::PrintTable(Rows &rows)
{
    QList<qsizetype> widths;
    for (const QString &name : std::as_const(rows.names))
        widths += Width(name);
    QList<QStringList> first;
    while (first.size() < MeasuredRows && rows.query.next()) {
        first += Fields(rows, u"NULL"_s);
        for (int i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], Width(first.last()[i]));
    }
    PrintLine(rows.names, widths, rows.numbers);
    QStringList rule;
    for (const qsizetype columns : std::as_const(widths))
        rule += QString(columns, u'-');
    m_out << rule.join(u' ') << u'\n';
    for (const QStringList &row : std::as_const(first))
        PrintLine(row, widths, rows.numbers);
    auto count = int(first.size());
    for (; rows.query.next(); ++count)
        PrintLine(Fields(rows, u"NULL"_s), widths, rows.numbers);
    return count;
}

void TablePrinter::PrintLine(const QStringList &fields, const QList<qsizetype> &widths, const QList<bool> &right)
{
    for (int i = 0; i < fields.size(); ++i) {
        const QString padding(std::max<qsizetype>(widths[i] - Width(fields[i]), 0), u' ');
        const bool last = i + 1 == fields.size();
        m_out << (i > 0 ? u" "_s : QString())
              << (right[i] ? padding + fields[i] : fields[i] + (last ? QString() : padding));
    }
    m_out << u'\n';
}
