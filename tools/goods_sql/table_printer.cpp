#include "tools/goods_sql/table_printer.h"

#include <QDate>
#include <QSqlField>
#include <QSqlRecord>

namespace {

/** Columns on the screen: marks that sit on the letter before take none. */
qsizetype width(const QString &text)
{
    qsizetype columns = 0;
    for (const char32_t c : text.toUcs4()) {
        const QChar::Category category = QChar::category(c);
        columns +=
            category != QChar::Mark_NonSpacing && category != QChar::Mark_Enclosing && category != QChar::Other_Format;
    }
    return columns;
}

QString quotedForCsv(QString text)
{
    const bool special = text.contains(u',') || text.contains(u'"') || text.contains(u'\n') || text.contains(u'\r');
    return special ? u'"' + text.replace(u'"', u"\"\""_qs) + u'"' : text;
}

QStringList names(const QSqlRecord &record)
{
    QStringList all;
    for (int i = 0; i < record.count(); ++i)
        all += record.fieldName(i);
    return all;
}

QStringList fields(const QSqlQuery &query, int count, const QString &null)
{
    QStringList all;
    for (int i = 0; i < count; ++i)
        all += printed(query.value(i), null);
    return all;
}

bool isNumber(const QSqlField &field)
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

} // namespace

QString printed(const QVariant &value, const QString &null)
{
    if (value.isNull())
        return null;
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"1"_qs : u"0"_qs;
    case QMetaType::QByteArray:
        return u"0x"_qs + QString::fromLatin1(value.toByteArray().toHex().toUpper());
    case QMetaType::QDate:
        return value.toDate().toString(Qt::ISODate);
    case QMetaType::QDateTime:
        return value.toDateTime().toString(u"yyyy-MM-dd hh:mm:ss.zzz"_qs);
    default:
        return value.toString();
    }
}

int TablePrinter::print(QSqlQuery &query)
{
    return m_csv ? printCsv(query) : printTable(query);
}

int TablePrinter::printCsv(QSqlQuery &query)
{
    QStringList line = names(query.record());
    const auto count = int(line.size());
    int rows = -1;
    do {
        for (QString &field : line)
            field = quotedForCsv(field);
        m_out << line.join(u',') << u"\r\n"_qs;
        ++rows;
        if (!query.next())
            return rows;
        line = fields(query, count, QString());
    } while (true);
}

int TablePrinter::printTable(QSqlQuery &query)
{
    const QSqlRecord record = query.record();
    const QStringList header = names(record);
    const auto count = int(header.size());
    QList<qsizetype> widths;
    QList<bool> right;
    for (int i = 0; i < count; ++i) {
        widths += width(header[i]);
        right += isNumber(record.field(i));
    }
    QList<QStringList> first;
    while (first.size() < MeasuredRows && query.next()) {
        first += fields(query, count, u"NULL"_qs);
        for (int i = 0; i < count; ++i)
            widths[i] = std::max(widths[i], width(first.last()[i]));
    }
    printLine(header, widths, right);
    QStringList rule;
    for (const qsizetype columns : std::as_const(widths))
        rule += QString(columns, u'-');
    m_out << rule.join(u' ') << u'\n';
    for (const QStringList &row : std::as_const(first))
        printLine(row, widths, right);
    auto rows = int(first.size());
    for (; query.next(); ++rows)
        printLine(fields(query, count, u"NULL"_qs), widths, right);
    return rows;
}

void TablePrinter::printLine(const QStringList &fields, const QList<qsizetype> &widths, const QList<bool> &right)
{
    for (int i = 0; i < fields.size(); ++i) {
        const QString padding(std::max<qsizetype>(widths[i] - width(fields[i]), 0), u' ');
        const bool last = i + 1 == fields.size();
        m_out << (i > 0 ? u" "_qs : QString())
              << (right[i] ? padding + fields[i] : fields[i] + (last ? QString() : padding));
    }
    m_out << u'\n';
}
