#pragma once

#include "host/controls/grid.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QtTest>

/// Rows that arrive in blocks, as those of a list procedure do.
class BlockModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    BlockModel(QStringList fields, QList<QStringList> rows, int block)
        : m_fields(std::move(fields)), m_rows(std::move(rows)), m_block(block)
    {
        m_there = static_cast<int>(std::min<qsizetype>(block, m_rows.size()));
    }
    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : m_there; }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_fields.size());
    }
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override
    {
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        return m_rows.at(index.row()).at(index.column());
    }
    QVariant headerData(int section, Qt::Orientation, int role) const override
    {
        return role == Qt::DisplayRole ? m_fields.value(section) : QVariant();
    }
    bool canFetchMore(const QModelIndex &) const override { return m_there < m_rows.size(); }
    void fetchMore(const QModelIndex &) override
    {
        if (refuse)
            throw std::runtime_error("connection lost");
        const int last = static_cast<int>(std::min<qsizetype>(m_there + m_block, m_rows.size())) - 1;
        beginInsertRows({}, m_there, last);
        m_there = last + 1;
        endInsertRows();
    }
    void Change(int row, int column, const QString &value)
    {
        m_rows[row][column] = value;
        emit dataChanged(index(row, column), index(row, column));
    }
    void RemoveRow(int row)
    {
        beginRemoveRows({}, row, row);
        m_rows.removeAt(row);
        --m_there;
        endRemoveRows();
    }
    void Requery()
    {
        beginResetModel();
        m_there = static_cast<int>(std::min<qsizetype>(m_block, m_rows.size()));
        endResetModel();
    }
    bool refuse = false;

private:
    QStringList m_fields;
    QList<QStringList> m_rows;
    int m_block;
    int m_there;
};

inline const QList<host::GridColumn> columns{
    {u"Code"_s, u"کد"_s, 70, false, host::ColumnFormat::Code},
    {u"AbbName"_s, u"بارکد "_s, 120, true},
    {u"Name"_s, u"نام کامل کالا"_s, 220},
    {u"Mogodi"_s, u"موجودی"_s, 80, false, host::ColumnFormat::Quantity},
    {u"Cost1"_s, u"فی فروش"_s, 90, false, host::ColumnFormat::Price},
};

inline QList<QStringList> SomeGoods()
{
    return {{u"101"_s, u"!6260000000011!"_s, u"چای كيسه‌ای احمد"_s, u"12.500000000"_s, u"1250000"_s},
            {u"102"_s, u"!6260000000028!"_s, u"چای شکسته"_s, u"0"_s, u"980000"_s},
            {u"115"_s, u"!626000000003!"_s, u"قند ۱ کیلویی"_s, u"-3"_s, u"450000"_s},
            {u"201"_s, u"!abc%_[x]!"_s, u"Nescafe Gold"_s, u"1500"_s, u"3100000"_s}};
}
