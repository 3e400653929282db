#include "host/data/dataset.h"

#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/statement.h"

#include <QSqlError>
#include <QUuid>

#include <utility>

namespace host {

Dataset::Dataset(const QSqlDatabase &connection, QObject *parent) : QAbstractTableModel(parent), connection_(connection)
{}

Dataset::~Dataset()
{
    StopReading();
    DropOwnConnection();
}

void Dataset::SetTable(const QString &table, const QString &key)
{
    table_ = table;
    key_ = key;
    insertedTo_.clear();
}

QSqlDatabase Dataset::ReadingConnection()
{
    if (blockSize_ <= 0 || connection_.driverName().isEmpty()) {
        return connection_;
    }
    if (ownConnection_.isEmpty()) {
        const QString name = QUuid::createUuid().toString();
        QSqlDatabase own = QSqlDatabase::cloneDatabase(connection_, name);
        ownConnection_ = name;
        if (!own.open()) {
            const DatabaseError error(own.lastError(), text_);
            own = QSqlDatabase();
            DropOwnConnection();
            throw error;
        }
    }
    return QSqlDatabase::database(ownConnection_, false);
}

void Dataset::DropOwnConnection()
{
    if (!ownConnection_.isEmpty()) {
        QSqlDatabase::removeDatabase(std::exchange(ownConnection_, {}));
    }
}

void Dataset::StopReading()
{
    cursor_.reset();
}

void Dataset::Open(const QString &text)
{
    text_ = text;
    Open();
}

void Dataset::Open()
{
    if (IsEditing()) {
        Cancel();
    }
    StopReading();
    RowStore rows;
    std::unique_ptr<QSqlQuery> cursor;
    try {
        const QSqlDatabase connection = ReadingConnection();
        cursor = std::make_unique<QSqlQuery>(connection);
        Send(*cursor, connection, text_);
        if (SkipToRows(*cursor, text_)) {
            rows.SetColumns(cursor->record());
            const int limit = blockSize_ > 0 ? blockSize_ : -1;
            const int count = rows.Read(*cursor, limit);
            CheckRead(*cursor, text_);
            if (count != limit) {
                Finish(*cursor, text_);
                cursor.reset();
            }
        } else {
            cursor.reset();
        }
    } catch (const DatabaseError &error) {
        cursor.reset();
        if (error.ConnectionLost()) {
            DropOwnConnection();
        }
        throw;
    }
    ShowRows(std::move(rows), std::move(cursor));
}

void Dataset::ShowRows(RowStore &&rows, std::unique_ptr<QSqlQuery> cursor)
{
    beginResetModel();
    if (!rows.HasColumnsOf(rows_)) {
        insertedTo_.clear();
    }
    rows_ = std::move(rows);
    cursor_ = std::move(cursor);
    current_ = rows_.RowCount() > 0 ? 0 : -1;
    state_ = State::Browse;
    endResetModel();
    Q_EMIT StateChanged();
    Q_EMIT CurrentChanged();
}

void Dataset::TakeRows(Dataset &other)
{
    other.FetchAll();
    if (IsEditing()) {
        Cancel();
    }
    StopReading();
    text_ = other.text_;
    RowStore rows = std::move(other.rows_);
    other.Close();
    ShowRows(std::move(rows), nullptr);
}

void Dataset::ForgetRow(int row)
{
    if (IsEditing()) {
        Cancel();
    }
    beginRemoveRows({}, row, row);
    rows_.Remove(row);
    const bool moves = current_ >= row;
    if (current_ > row || current_ == rows_.RowCount()) {
        --current_;
    }
    endRemoveRows();
    if (moves) {
        Q_EMIT CurrentChanged();
    }
}

void Dataset::Close()
{
    StopReading();
    beginResetModel();
    rows_.Clear();
    buffer_.clear();
    current_ = -1;
    state_ = State::Closed;
    endResetModel();
    Q_EMIT StateChanged();
    Q_EMIT CurrentChanged();
}

void Dataset::ClearRows()
{
    StopReading();
    beginResetModel();
    rows_.ClearRows();
    current_ = -1;
    endResetModel();
    Q_EMIT CurrentChanged();
}

int Dataset::ReadBlock()
{
    const int before = rows_.RowCount();
    // The rows are read before they are announced: how many there are is known only then.
    const int count = rows_.Read(*cursor_, blockSize_);
    while (count < blockSize_ && !cursor_->lastError().isValid() && cursor_->nextResult()) {
        // Nobody wants further results, but an error among them counts.
    }
    const QSqlError error = cursor_->lastError();
    if (count < blockSize_) {
        StopReading();
    }
    if (count > 0) {
        beginInsertRows({}, before, before + count - 1);
        endInsertRows();
    }
    if (error.isValid()) {
        throw DatabaseError(error, text_);
    }
    return count;
}

void Dataset::FetchAll()
{
    while (cursor_) {
        ReadBlock();
    }
}

bool Dataset::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && cursor_ != nullptr;
}

void Dataset::fetchMore(const QModelIndex &parent)
{
    if (!canFetchMore(parent)) {
        return;
    }
    try {
        ReadBlock();
    } catch (const DatabaseError &error) {
        Q_EMIT Failed(error.Text());
    }
}

void Dataset::SetState(State state)
{
    if (state_ != state) {
        state_ = state;
        Q_EMIT StateChanged();
    }
}

void Dataset::SetCurrentRow(int row)
{
    if (row == current_ || row >= rows_.RowCount()) {
        return;
    }
    if (IsEditing()) {
        Post();
    }
    MoveTo(row);
}

void Dataset::MoveTo(int row)
{
    if (current_ != row) {
        current_ = row;
        Q_EMIT CurrentChanged();
    }
}

bool Dataset::Locate(QStringView field, const QVariant &value)
{
    const int column = RequiredColumn(field);
    for (int row = 0; row < rows_.RowCount() || cursor_; ++row) {
        if (row >= rows_.RowCount() && ReadBlock() == 0) {
            return false;
        }
        if (Matches(row, column, value)) {
            SetCurrentRow(row);
            return true;
        }
    }
    return false;
}

bool Dataset::Matches(int row, int column, const QVariant &value) const
{
    if (value.isNull() || rows_.IsNull(row, column)) {
        return value.isNull() && rows_.IsNull(row, column);
    }
    switch (rows_.ColumnAt(column).kind) {
    case ColumnKind::Integer:
    case ColumnKind::Boolean: {
        bool isNumber = false;
        const qlonglong number = value.toLongLong(&isNumber);
        return isNumber && rows_.Value(row, column).toLongLong() == number;
    }
    case ColumnKind::Decimal: {
        const std::optional<Quantity> number = ParseQuantity(value.toString());
        return number && QuantityFromText(rows_.Text(row, column)) == *number;
    }
    default:
        return rows_.Text(row, column).compare(value.toString(), Qt::CaseInsensitive) == 0;
    }
}

int Dataset::RequiredColumn(QStringView field) const
{
    const int column = rows_.ColumnIndex(field);
    if (column < 0) {
        throw DatabaseError(QStringLiteral("ستون %1 در نتیجه نیست.").arg(field), text_);
    }
    return column;
}

QVariant Dataset::Field(QStringView field) const
{
    const int column = RequiredColumn(field);
    if (IsEditing()) {
        return buffer_[static_cast<size_t>(column)];
    }
    return current_ < 0 ? QVariant() : rows_.Value(current_, column);
}

Quantity Dataset::QuantityField(QStringView field) const
{
    return QuantityFromText(Field(field).toString());
}

QVariant Dataset::FieldAt(int row, QStringView field) const
{
    if (row == current_ && state_ == State::Edit) {
        return Field(field);
    }
    return rows_.Value(row, RequiredColumn(field));
}

int Dataset::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : rows_.RowCount();
}

int Dataset::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : rows_.ColumnCount();
}

QVariant Dataset::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) {
        return {};
    }
    if (index.row() == current_ && state_ == State::Edit) {
        return buffer_[static_cast<size_t>(index.column())];
    }
    return rows_.Value(index.row(), index.column());
}

QVariant Dataset::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < rows_.ColumnCount()) {
        return rows_.ColumnAt(section).name;
    }
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags Dataset::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && editable_.contains(rows_.ColumnAt(index.column()).name, Qt::CaseInsensitive)) {
        flags |= Qt::ItemIsEditable;
    }
    return flags;
}

} // namespace host
