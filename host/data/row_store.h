#pragma once

#include "host/data/quantity.h"
#include "host/host_export.h"

#include <QSqlRecord>
#include <QString>
#include <QStringView>
#include <QVariant>

#include <memory>
#include <optional>
#include <utility>
#include <vector>

class QSqlQuery;

namespace host {

class RowFeed;

/// What a column holds, as far as reading and writing literals is concerned.
enum class ColumnKind { Text, Integer, Decimal, Boolean, Moment, Bytes };

struct HOST_EXPORT Column
{
    QString name;
    ColumnKind kind = ColumnKind::Text;
};

/// The rows of one result in little memory: nine bytes a cell, all texts of a thousand rows in one buffer. Numbers with
/// decimals are kept as their digits, or as their decimal text.
class HOST_EXPORT RowStore
{
public:
    RowStore();
    ~RowStore();
    RowStore(RowStore &&) noexcept;
    RowStore &operator=(RowStore &&) noexcept;

    /// Forgets everything and takes the columns of a result.
    void SetColumns(const QSqlRecord &record);
    /// Forgets rows and columns.
    void Clear();
    /// Forgets the rows, keeps the columns.
    void ClearRows();

    int ColumnCount() const { return static_cast<int>(m_columns.size()); }
    int RowCount() const { return static_cast<int>(m_rows.size()); }
    const Column &ColumnAt(int column) const { return m_columns[static_cast<size_t>(column)]; }
    /// Index of a column by name (case-insensitive), -1 when there is none.
    int ColumnIndex(QStringView name) const;

    /// Whether both have the same columns in the same order.
    bool HasColumnsOf(const RowStore &other) const;

    /// Reads up to `limit` rows (-1: all) of a running query; returns how many there were.
    int Read(QSqlQuery &query, int limit = -1);
    void Append(const std::vector<QVariant> &values);
    void Replace(int row, int column, const QVariant &value);
    void Remove(int row);
    /// Puts the rows in the order of a column's numbers, those without one first; equal ones stay as they were.
    void OrderBy(int column);

    bool IsNull(int row, int column) const;
    /// Null variants keep no type.
    QVariant Value(int row, int column) const;
    /// The cell as text; empty for NULL.
    QString Text(int row, int column) const;
    /// The cell as a number, without a text in between where the store has one; nothing for NULL and other texts.
    std::optional<Quantity> Number(int row, int column) const;
    /// The characters of a text cell without a copy, valid until the store changes; empty for cells of other kinds.
    QStringView TextView(int row, int column) const;

private:
    struct Block;
    struct Place
    {
        quint32 block;
        quint32 row;
    };

    Block &WritableBlock();
    std::pair<const Block *, size_t> Cell(int row, int column) const;
    int Read(QSqlQuery &query, RowFeed &feed, int limit);
    void Write(Block &block, size_t cell, int column, const QVariant &value);

    std::vector<Column> m_columns;
    std::vector<std::unique_ptr<Block>> m_blocks;
    std::vector<Place> m_rows;
};

} // namespace host
