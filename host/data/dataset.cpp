#include "host/data/dataset.h"

#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/statement.h"

#include <QSqlError>
#include <QUuid>

#include <utility>

using namespace Qt::StringLiterals;

namespace host {

Dataset::Dataset(const QSqlDatabase &connection, QObject *parent)
    : QAbstractTableModel(parent), m_connection(connection)
{}

Dataset::~Dataset()
{
    StopReading();
    DropOwnConnection();
}

void Dataset::SetTable(const QString &table, const QString &key)
{
    m_table = table;
    m_key = key;
    m_insertedTo.clear();
}

void Dataset::ReadInBlocks()
{
    constexpr int Embedded = 1000;
    constexpr int OfServer = 200;
    SetBlockSize(m_connection.driverName().isEmpty() ? Embedded : OfServer);
}

QSqlDatabase Dataset::ReadingConnection()
{
    if (m_blockSize <= 0 || m_connection.driverName().isEmpty()) {
        return m_connection;
    }
    if (m_ownConnection.isEmpty()) {
        const QString name = QUuid::createUuid().toString();
        QSqlDatabase own = QSqlDatabase::cloneDatabase(m_connection, name);
        m_ownConnection = name;
        if (!own.open()) {
            const DatabaseError error(own.lastError(), m_text);
            own = QSqlDatabase();
            DropOwnConnection();
            throw error;
        }
    }
    return QSqlDatabase::database(m_ownConnection, false);
}

void Dataset::DropOwnConnection()
{
    if (!m_ownConnection.isEmpty()) {
        QSqlDatabase::removeDatabase(std::exchange(m_ownConnection, {}));
    }
}

void Dataset::StopReading()
{
    m_cursor.reset();
}

void Dataset::Open(const QString &text)
{
    m_text = text;
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
        Send(*cursor, connection, m_text);
        if (SkipToRows(*cursor, m_text)) {
            rows.SetColumns(cursor->record());
            const int limit = m_blockSize > 0 ? m_blockSize : -1;
            const int count = rows.Read(*cursor, limit);
            CheckRead(*cursor, m_text);
            if (count != limit) {
                Finish(*cursor, m_text);
                cursor.reset();
            }
            if (!m_order.isEmpty()) {
                rows.OrderBy(rows.ColumnIndex(m_order));
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
    if (!rows.HasColumnsOf(m_rows)) {
        m_insertedTo.clear();
    }
    m_rows = std::move(rows);
    m_cursor = std::move(cursor);
    m_current = m_rows.RowCount() > 0 ? 0 : -1;
    m_state = State::Browse;
    endResetModel();
    emit StateChanged();
    emit CurrentChanged();
}

void Dataset::TakeRows(Dataset &other)
{
    other.FetchAll();
    if (IsEditing()) {
        Cancel();
    }
    StopReading();
    m_text = other.m_text;
    RowStore rows = std::move(other.m_rows);
    other.Close();
    ShowRows(std::move(rows), nullptr);
}

void Dataset::ForgetRow(int row)
{
    if (IsEditing()) {
        Cancel();
    }
    beginRemoveRows({}, row, row);
    m_rows.Remove(row);
    const bool moves = m_current >= row;
    if (m_current > row || m_current == m_rows.RowCount()) {
        --m_current;
    }
    endRemoveRows();
    if (moves) {
        emit CurrentChanged();
    }
}

void Dataset::Close()
{
    StopReading();
    beginResetModel();
    m_rows.Clear();
    m_buffer.clear();
    m_current = -1;
    m_state = State::Closed;
    endResetModel();
    emit StateChanged();
    emit CurrentChanged();
}

void Dataset::ClearRows()
{
    StopReading();
    beginResetModel();
    m_rows.ClearRows();
    m_current = -1;
    endResetModel();
    emit CurrentChanged();
}

int Dataset::ReadBlock()
{
    const int before = m_rows.RowCount();
    // The rows are read before they are announced: how many there are is known only then.
    const int count = m_rows.Read(*m_cursor, m_blockSize);
    while (count < m_blockSize && !m_cursor->lastError().isValid() && m_cursor->nextResult()) {
        // Nobody wants further results, but an error among them counts.
    }
    const QSqlError error = m_cursor->lastError();
    if (count < m_blockSize) {
        StopReading();
    }
    if (count > 0) {
        beginInsertRows({}, before, before + count - 1);
        endInsertRows();
    }
    if (error.isValid()) {
        throw DatabaseError(error, m_text);
    }
    return count;
}

void Dataset::FetchAll()
{
    while (m_cursor) {
        ReadBlock();
    }
}

bool Dataset::canFetchMore(const QModelIndex &parent) const
{
    return !parent.isValid() && m_cursor != nullptr;
}

void Dataset::fetchMore(const QModelIndex &parent)
{
    if (!canFetchMore(parent)) {
        return;
    }
    try {
        ReadBlock();
    } catch (const DatabaseError &error) {
        emit Failed(error.Text());
    }
}

void Dataset::SetState(State state)
{
    if (m_state != state) {
        m_state = state;
        emit StateChanged();
    }
}

void Dataset::SetCurrentRow(int row)
{
    if (row == m_current || row >= m_rows.RowCount()) {
        return;
    }
    if (IsEditing()) {
        Post();
    }
    MoveTo(row);
}

void Dataset::MoveTo(int row)
{
    if (m_current != row) {
        m_current = row;
        emit CurrentChanged();
    }
}

bool Dataset::Locate(QStringView field, const QVariant &value)
{
    const int column = RequiredColumn(field);
    for (int row = 0; row < m_rows.RowCount() || m_cursor; ++row) {
        if (row >= m_rows.RowCount() && ReadBlock() == 0) {
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
    if (value.isNull() || m_rows.IsNull(row, column)) {
        return value.isNull() && m_rows.IsNull(row, column);
    }
    switch (m_rows.ColumnAt(column).kind) {
    case ColumnKind::Integer:
    case ColumnKind::Boolean: {
        bool isNumber = false;
        const qlonglong number = value.toLongLong(&isNumber);
        return isNumber && m_rows.Value(row, column).toLongLong() == number;
    }
    case ColumnKind::Decimal: {
        const std::optional<Quantity> number = ParseQuantity(value.toString());
        return number && QuantityFromText(m_rows.Text(row, column)) == *number;
    }
    default:
        return m_rows.Text(row, column).compare(value.toString(), Qt::CaseInsensitive) == 0;
    }
}

int Dataset::RequiredColumn(QStringView field) const
{
    const int column = m_rows.ColumnIndex(field);
    if (column < 0) {
        throw DatabaseError(u"ستون %1 در نتیجه نیست."_s.arg(field), m_text);
    }
    return column;
}

QVariant Dataset::Field(QStringView field) const
{
    const int column = RequiredColumn(field);
    if (IsEditing()) {
        return m_buffer[static_cast<size_t>(column)];
    }
    return m_current < 0 ? QVariant() : m_rows.Value(m_current, column);
}

Quantity Dataset::QuantityField(QStringView field) const
{
    return QuantityFromText(Field(field).toString());
}

QVariant Dataset::FieldAt(int row, QStringView field) const
{
    if (row == m_current && m_state == State::Edit) {
        return Field(field);
    }
    return m_rows.Value(row, RequiredColumn(field));
}

int Dataset::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.RowCount();
}

int Dataset::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_rows.ColumnCount();
}

QVariant Dataset::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole)) {
        return {};
    }
    if (index.row() == m_current && m_state == State::Edit) {
        return m_buffer[static_cast<size_t>(index.column())];
    }
    return m_rows.Value(index.row(), index.column());
}

QVariant Dataset::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::DisplayRole && section < m_rows.ColumnCount()) {
        return m_rows.ColumnAt(section).name;
    }
    return QAbstractTableModel::headerData(section, orientation, role);
}

Qt::ItemFlags Dataset::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && m_editable.contains(m_rows.ColumnAt(index.column()).name, Qt::CaseInsensitive)) {
        flags |= Qt::ItemIsEditable;
    }
    return flags;
}

} // namespace host
