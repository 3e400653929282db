#include "host/data/database_error.h"
#include "host/data/dataset.h"
#include "host/data/odbc_text.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/statement.h"

#include <QDateTime>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

QString Bracketed(QString name)
{
    return u'[' + name.replace(u']', QLatin1String("]]")) + u']';
}

QString MomentText(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDateTime:
        return value.toDateTime().toString(u"yyyy-MM-ddTHH:mm:ss.zzz"_s);
    case QMetaType::QDate:
        return value.toDate().toString(u"yyyy-MM-dd"_s);
    default:
        return value.toString();
    }
}

QString NumberLiteral(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? u"1"_s : u"0"_s;
    case QMetaType::Double:
    case QMetaType::Float:
        return DecimalLiteral(static_cast<Quantity>(value.toDouble()));
    default:
        return DecimalLiteral(QStringView(value.toString()));
    }
}

} // namespace

QString Literal(const QVariant &value, ColumnKind kind)
{
    if (value.isNull()) {
        return u"NULL"_s;
    }
    switch (kind) {
    case ColumnKind::Boolean:
        return value.toBool() ? u"1"_s : u"0"_s;
    case ColumnKind::Integer:
    case ColumnKind::Decimal:
        return NumberLiteral(value);
    case ColumnKind::Moment:
        return NQuotedStr(MomentText(value));
    case ColumnKind::Bytes:
        return u"0x"_s + QString::fromLatin1(value.toByteArray().toHex());
    case ColumnKind::Text:
        break;
    }
    return NQuotedStr(value.toString());
}

void Dataset::Append()
{
    if (IsEditing()) {
        Post();
    }
    if (!IsOpen()) {
        throw DatabaseError(u"مجموعه سطرها باز نیست."_s, m_text);
    }
    m_buffer.assign(static_cast<size_t>(m_rows.ColumnCount()), QVariant());
    m_set.assign(m_buffer.size(), false);
    SetState(State::Insert);
}

void Dataset::Edit()
{
    if (IsEditing()) {
        return;
    }
    if (m_current < 0) {
        throw DatabaseError(u"سطری برای تغییر نیست."_s, m_text);
    }
    m_buffer.clear();
    for (int column = 0; column < m_rows.ColumnCount(); ++column) {
        m_buffer.push_back(m_rows.Value(m_current, column));
    }
    m_set.assign(m_buffer.size(), false);
    SetState(State::Edit);
}

void Dataset::SetField(QStringView field, const QVariant &value)
{
    if (!IsEditing()) {
        throw DatabaseError(u"سطر در حال تغییر نیست."_s, m_text);
    }
    const int column = RequiredColumn(field);
    m_buffer[static_cast<size_t>(column)] = value;
    m_set[static_cast<size_t>(column)] = true;
    if (m_state == State::Edit) {
        const QModelIndex cell = index(m_current, column);
        emit dataChanged(cell, cell);
    }
    emit FieldChanged(column);
}

void Dataset::Post()
{
    if (m_state == State::Insert) {
        PostInsert();
    } else if (m_state == State::Edit) {
        PostUpdate();
    }
}

void Dataset::PostInsert()
{
    QString names;
    QString values;
    for (size_t i = 0; i < m_set.size(); ++i) {
        if (m_set[i]) {
            const Column &column = m_rows.ColumnAt(static_cast<int>(i));
            const QLatin1String comma(names.isEmpty() ? "" : ", ");
            names += comma + Bracketed(column.name);
            values += comma + Literal(m_buffer[i], column.kind);
        }
    }
    const QString text = names.isEmpty() ? u"INSERT INTO %1 OUTPUT INSERTED.* DEFAULT VALUES"_s.arg(m_table)
                                         : u"INSERT INTO "_s + m_table + u" ("_s + names +
                                               u") OUTPUT INSERTED.* VALUES ("_s + values + u')';
    ReadInserted(text);
    const int row = m_rows.RowCount();
    beginInsertRows({}, row, row);
    m_rows.Append(m_buffer);
    endInsertRows();
    SetState(State::Browse);
    MoveTo(row);
}

void Dataset::ReadInserted(const QString &text)
{
    QSqlQuery query(m_connection);
    Send(query, m_connection, text);
    if (!SkipToRows(query, text)) {
        return;
    }
    if (m_insertedTo.empty()) {
        // Asked for before the row: a record of a row holds its values, and they can be read once.
        const QSqlRecord record = query.record();
        for (int i = 0; i < record.count(); ++i) {
            m_insertedTo.push_back(m_rows.ColumnIndex(record.fieldName(i)));
        }
    }
    if (!query.next()) {
        CheckRead(query, text);
        return;
    }
    const OdbcText texts(query);
    for (size_t i = 0; i < m_insertedTo.size(); ++i) {
        if (m_insertedTo[i] >= 0) {
            const ColumnKind kind = m_rows.ColumnAt(m_insertedTo[i]).kind;
            const bool isText = texts.IsNeeded() && (kind == ColumnKind::Text || kind == ColumnKind::Decimal);
            const auto column = static_cast<int>(i);
            m_buffer[static_cast<size_t>(m_insertedTo[i])] = isText ? texts.Read(column) : query.value(column);
        }
    }
}

void Dataset::PostUpdate()
{
    QString assignments;
    for (size_t i = 0; i < m_set.size(); ++i) {
        if (m_set[i]) {
            const Column &column = m_rows.ColumnAt(static_cast<int>(i));
            assignments += (assignments.isEmpty() ? QString() : u", "_s) + Bracketed(column.name) +
                           QLatin1String(" = ") + Literal(m_buffer[i], column.kind);
        }
    }
    if (!assignments.isEmpty()) {
        const int key = RequiredColumn(m_key);
        const QString text = u"UPDATE "_s + m_table + u" SET "_s + assignments + u" WHERE "_s + Bracketed(m_key) +
                             u" = "_s + Literal(m_rows.Value(m_current, key), m_rows.ColumnAt(key).kind);
        if (Exec(m_connection, text) == 0) {
            throw RowGone(u"سطر"_s, text);
        }
        for (size_t i = 0; i < m_set.size(); ++i) {
            if (m_set[i]) {
                m_rows.Replace(m_current, static_cast<int>(i), m_buffer[i]);
            }
        }
    }
    SetState(State::Browse);
    emit dataChanged(index(m_current, 0), index(m_current, m_rows.ColumnCount() - 1));
}

void Dataset::Cancel()
{
    if (!IsEditing()) {
        return;
    }
    const bool shown = m_state == State::Edit;
    SetState(State::Browse);
    if (shown) {
        emit dataChanged(index(m_current, 0), index(m_current, m_rows.ColumnCount() - 1));
    }
}

bool Dataset::setData(const QModelIndex &cell, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !(flags(cell) & Qt::ItemIsEditable)) {
        return false;
    }
    const Column &column = m_rows.ColumnAt(cell.column());
    QVariant typed = value;
    if (column.kind == ColumnKind::Decimal || column.kind == ColumnKind::Integer) {
        const std::optional<QString> number = NormalizeDecimal(value.toString());
        if (!number || (column.kind == ColumnKind::Integer && number->contains(u'.'))) {
            return false;
        }
        typed = *number;
    }
    try {
        SetCurrentRow(cell.row());
        Edit();
        SetField(column.name, typed);
    } catch (const std::exception &error) {
        const auto *refused = dynamic_cast<const RefusedText *>(&error);
        const auto *database = dynamic_cast<const DatabaseError *>(&error);
        emit Failed(refused ? refused->Text() : database ? database->Text() : QString::fromUtf8(error.what()));
        return false;
    }
    return true;
}

} // namespace host
