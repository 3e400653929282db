#include "host/data/dataset.h"

#include "host/data/database_error.h"
#include "host/data/odbc_text.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/statement.h"

#include <QDateTime>
#include <QSqlQuery>
#include <QSqlRecord>

#include <algorithm>

namespace host {

using namespace Qt::StringLiterals;

namespace {

QString Bracketed(QString name)
{
    return u'[' + name.replace(u']', QLatin1String("]]")) + u']';
}

QString MomentText(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::QDateTime:
        return value.toDateTime().toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss.zzz"));
    case QMetaType::QDate:
        return value.toDate().toString(QStringLiteral("yyyy-MM-dd"));
    default:
        return value.toString();
    }
}

QString NumberLiteral(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
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
        return QStringLiteral("NULL");
    }
    switch (kind) {
    case ColumnKind::Boolean:
        return value.toBool() ? QStringLiteral("1") : QStringLiteral("0");
    case ColumnKind::Integer:
    case ColumnKind::Decimal:
        return NumberLiteral(value);
    case ColumnKind::Moment:
        return NQuotedStr(MomentText(value));
    case ColumnKind::Bytes:
        return QStringLiteral("0x") + QString::fromLatin1(value.toByteArray().toHex());
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
        throw DatabaseError(QStringLiteral("مجموعه سطرها باز نیست."), text_);
    }
    buffer_.assign(static_cast<size_t>(rows_.ColumnCount()), QVariant());
    set_.assign(buffer_.size(), false);
    SetState(State::Insert);
}

void Dataset::Edit()
{
    if (IsEditing()) {
        return;
    }
    if (current_ < 0) {
        throw DatabaseError(QStringLiteral("سطری برای تغییر نیست."), text_);
    }
    buffer_.clear();
    for (int column = 0; column < rows_.ColumnCount(); ++column) {
        buffer_.push_back(rows_.Value(current_, column));
    }
    set_.assign(buffer_.size(), false);
    SetState(State::Edit);
}

void Dataset::SetField(QStringView field, const QVariant &value)
{
    if (!IsEditing()) {
        throw DatabaseError(QStringLiteral("سطر در حال تغییر نیست."), text_);
    }
    const int column = RequiredColumn(field);
    buffer_[static_cast<size_t>(column)] = value;
    set_[static_cast<size_t>(column)] = true;
    if (state_ == State::Edit) {
        const QModelIndex cell = index(current_, column);
        Q_EMIT dataChanged(cell, cell);
    }
    Q_EMIT FieldChanged(column);
}

void Dataset::Post()
{
    if (state_ == State::Insert) {
        PostInsert();
    } else if (state_ == State::Edit) {
        PostUpdate();
    }
}

void Dataset::PostInsert()
{
    QString names;
    QString values;
    for (size_t i = 0; i < set_.size(); ++i) {
        if (set_[i]) {
            const Column &column = rows_.ColumnAt(static_cast<int>(i));
            const QLatin1String comma(names.isEmpty() ? "" : ", ");
            names += comma + Bracketed(column.name);
            values += comma + Literal(buffer_[i], column.kind);
        }
    }
    const QString text = names.isEmpty() ? QStringLiteral("INSERT INTO %1 OUTPUT INSERTED.* DEFAULT VALUES").arg(table_)
                                         : u"INSERT INTO "_s + table_ + u" ("_s + names +
                                               u") OUTPUT INSERTED.* VALUES ("_s + values + u')';
    ReadInserted(text);
    const int row = rows_.RowCount();
    beginInsertRows({}, row, row);
    rows_.Append(buffer_);
    endInsertRows();
    SetState(State::Browse);
    MoveTo(row);
}

void Dataset::ReadInserted(const QString &text)
{
    QSqlQuery query(connection_);
    Send(query, connection_, text);
    if (!SkipToRows(query, text)) {
        return;
    }
    if (insertedTo_.empty()) {
        // Asked for before the row: a record of a row holds its values, and they can be read once.
        const QSqlRecord record = query.record();
        for (int i = 0; i < record.count(); ++i) {
            insertedTo_.push_back(rows_.ColumnIndex(record.fieldName(i)));
        }
    }
    if (!query.next()) {
        CheckRead(query, text);
        return;
    }
    const OdbcText texts(query);
    for (size_t i = 0; i < insertedTo_.size(); ++i) {
        if (insertedTo_[i] >= 0) {
            const ColumnKind kind = rows_.ColumnAt(insertedTo_[i]).kind;
            const bool isText = texts.IsNeeded() && (kind == ColumnKind::Text || kind == ColumnKind::Decimal);
            const auto column = static_cast<int>(i);
            buffer_[static_cast<size_t>(insertedTo_[i])] = isText ? texts.Read(column) : query.value(column);
        }
    }
}

void Dataset::PostUpdate()
{
    QString assignments;
    for (size_t i = 0; i < set_.size(); ++i) {
        if (set_[i]) {
            const Column &column = rows_.ColumnAt(static_cast<int>(i));
            assignments += (assignments.isEmpty() ? QString() : QStringLiteral(", ")) + Bracketed(column.name) +
                           QLatin1String(" = ") + Literal(buffer_[i], column.kind);
        }
    }
    if (!assignments.isEmpty()) {
        const int key = RequiredColumn(key_);
        const QString text = u"UPDATE "_s + table_ + u" SET "_s + assignments + u" WHERE "_s + Bracketed(key_) +
                             u" = "_s + Literal(rows_.Value(current_, key), rows_.ColumnAt(key).kind);
        if (Exec(connection_, text) == 0) {
            throw DatabaseError(QStringLiteral("این سطر دیگر در بانک اطلاعاتی وجود ندارد."), text);
        }
        for (size_t i = 0; i < set_.size(); ++i) {
            if (set_[i]) {
                rows_.Replace(current_, static_cast<int>(i), buffer_[i]);
            }
        }
    }
    SetState(State::Browse);
    Q_EMIT dataChanged(index(current_, 0), index(current_, rows_.ColumnCount() - 1));
}

void Dataset::Cancel()
{
    if (!IsEditing()) {
        return;
    }
    const bool shown = state_ == State::Edit;
    SetState(State::Browse);
    if (shown) {
        Q_EMIT dataChanged(index(current_, 0), index(current_, rows_.ColumnCount() - 1));
    }
}

bool Dataset::setData(const QModelIndex &cell, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !(flags(cell) & Qt::ItemIsEditable)) {
        return false;
    }
    const Column &column = rows_.ColumnAt(cell.column());
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
        Q_EMIT Failed(refused ? refused->Text() : database ? database->Text() : QString::fromUtf8(error.what()));
        return false;
    }
    return true;
}

} // namespace host
