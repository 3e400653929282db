#pragma once

#include "host/data/quantity.h"
#include "host/data/row_store.h"
#include "host/host_export.h"

#include <QAbstractTableModel>
#include <QSqlDatabase>

#include <memory>

class QSqlQuery;

namespace host {

/// A client-side row set that a grid shows directly: a text to open, a current row, and single rows appended and edited
/// through Append() / Edit() … Post().
///
/// Everything that sends a statement throws DatabaseError. When Post() throws, the dataset stays in its state with what
/// was typed, so that the user can try again.
class HOST_EXPORT Dataset : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum class State { Closed, Browse, Edit, Insert };

    /// Runs on `connection`, which the caller keeps open.
    explicit Dataset(const QSqlDatabase &connection, QObject *parent = nullptr);
    ~Dataset() override;

    void SetText(const QString &text) { m_text = text; }
    const QString &Text() const { return m_text; }
    /// The table that Post() writes and its key column (an identity, or a code that the row brings along).
    void SetTable(const QString &table, const QString &key);
    /// 0 reads the whole result on Open(). Otherwise Open() reads that many rows and fetchMore() as many again, on a
    /// connection of the dataset's own (a copy of the given one, so the text may not use its #tables). A connection
    /// made with a driver object instead of a driver's name cannot be copied and is read itself: its driver must be
    /// able to keep a result open while other statements run.
    void SetBlockSize(int rows) { m_blockSize = rows; }
    /// Blocks that nobody notices: 1000 rows, 200 from a server, whose driver takes many times as long for each.
    void ReadInBlocks();

    /// The rows of every opening stand in the order of this field's numbers, whatever order the database gives them
    /// in: for a text that promises none. The result is read whole.
    void SetOrder(const QString &field) { m_order = field; }

    /// Runs the text; stands on the first row.
    void Open();
    void Open(const QString &text);
    /// Runs the last text again; stands on the first row.
    void Requery() { Open(); }
    void Close();
    bool IsOpen() const { return m_state != State::Closed; }
    State CurrentState() const { return m_state; }
    bool IsEditing() const { return m_state == State::Edit || m_state == State::Insert; }

    /// Rows read so far.
    int RecordCount() const { return m_rows.RowCount(); }
    bool IsEmpty() const { return m_rows.RowCount() == 0; }
    /// Whether every row has been read.
    bool FetchedAll() const { return m_cursor == nullptr; }
    void FetchAll();
    /// Forgets the rows without a statement; the columns stay, ready for Append().
    void ClearRows();
    /// Takes over the text and all rows of another dataset, in one step that views see as opening anew; reads what the
    /// other one has left, and closes it.
    void TakeRows(Dataset &other);
    /// Forgets a row that is known to be gone from the database, without a statement.
    void ForgetRow(int row);

    /// -1 when there is no row.
    int CurrentRow() const { return m_current; }
    /// Moves to a row that has been read; -1 for none. Changes not posted are posted first.
    void SetCurrentRow(int row);
    /// Moves to the first row whose field equals the value (numbers as numbers, texts without regard to case), reading
    /// further blocks as needed. False, without moving, when there is none.
    bool Locate(QStringView field, const QVariant &value);

    /// A field of the current row, or as it is being edited; by name, case-insensitive. An invalid variant when there
    /// is no current row; DatabaseError when there is no such field.
    QVariant Field(QStringView field) const;
    QString TextField(QStringView field) const { return Field(field).toString(); }
    int IntField(QStringView field) const { return Field(field).toInt(); }
    Quantity QuantityField(QStringView field) const;
    /// A field of any row that has been read.
    QVariant FieldAt(int row, QStringView field) const;

    /// Begins a new row; nothing is sent before Post(). Fields that are not set get the table's defaults.
    void Append();
    /// Begins changing the current row. Throws DatabaseError when there is none.
    void Edit();
    /// Sets a field of the row being appended or edited. An invalid or null variant is NULL.
    void SetField(QStringView field, const QVariant &value);
    void SetQuantity(QStringView field, Quantity value) { SetField(field, QuantityToText(value)); }
    /// Writes the row: one INSERT … OUTPUT INSERTED.*, from which identity and defaults are read back, or one
    /// UPDATE … WHERE key with the fields that were set. Throws DatabaseError, also when the row to change is gone.
    void Post();
    /// Drops what was typed.
    void Cancel();

    /// Fields that a grid may edit in place (none by default). Typing in a grid calls Edit() and SetField(); moving to
    /// another row posts.
    void SetEditableFields(const QStringList &fields) { m_editable = fields; }

    const RowStore &Rows() const { return m_rows; }
    int ColumnIndex(QStringView field) const { return m_rows.ColumnIndex(field); }
    const QSqlDatabase &Connection() const { return m_connection; }

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    bool canFetchMore(const QModelIndex &parent) const override;
    void fetchMore(const QModelIndex &parent) override;

signals:
    /// Another row is current, or none.
    void CurrentChanged();
    void StateChanged();
    /// A field of the row being edited was set.
    void FieldChanged(int column);
    /// An error met where a view asked for rows or took what was typed into a cell, so that nobody could catch it.
    void Failed(const QString &text);

private:
    int RequiredColumn(QStringView field) const;
    QSqlDatabase ReadingConnection();
    void DropOwnConnection();
    void StopReading();
    void ShowRows(RowStore &&rows, std::unique_ptr<QSqlQuery> cursor);
    int ReadBlock();
    bool Matches(int row, int column, const QVariant &value) const;
    void SetState(State state);
    void MoveTo(int row);
    void PostInsert();
    void ReadInserted(const QString &text);
    void PostUpdate();

    QSqlDatabase m_connection;
    QString m_ownConnection;
    QString m_text;
    QString m_table;
    QString m_key;
    QString m_order;
    QStringList m_editable;
    int m_blockSize = 0;
    std::unique_ptr<QSqlQuery> m_cursor;
    RowStore m_rows;
    State m_state = State::Closed;
    int m_current = -1;
    std::vector<QVariant> m_buffer;
    std::vector<bool> m_set;
    std::vector<int> m_insertedTo; ///< where the columns of INSERTED.* go; -1: nowhere
};

/// The value as a literal of a statement: N'…', a number, 0 or 1, 0x…, NULL. Throws RefusedText when a numeric column
/// is given something that is no number.
HOST_EXPORT QString Literal(const QVariant &value, ColumnKind kind);

} // namespace host
