#pragma once

#include "data/goods/good_labels.h"
#include "screens/labels/label_painter.h"

#include <QAbstractTableModel>

#include <limits>

namespace labels {

/// The goods whose labels are printed, a row each: price, barcode and number of labels as they follow from the choices,
/// and what is wrong with the label. The number can be typed while the choices say so.
class LabelRows : public QAbstractTableModel
{
    Q_OBJECT

public:
    /// The columns, in their order.
    enum Column { Code, Name, Barcode, Price, Mogodi, Count, Note, ColumnCount };

    using QAbstractTableModel::QAbstractTableModel;

    /// Each good begins with one typed label.
    void SetGoods(const QList<goods::LabelGood> &goods);
    void SetChoices(const Choices &choices);

    const Choices &CurrentChoices() const { return m_choices; }
    qint64 Total() const;
    /// Goods that get labels without bars: they have no barcode, or it has no room.
    int WithoutBars() const;
    /// What is to be printed, at most so many labels of it.
    Job MakeJob(qint64 most = std::numeric_limits<qint64>::max()) const;
    /// One label of one row.
    Job JobOf(int row) const;

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : ColumnCount; }
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;

signals:
    /// A number was typed.
    void Typed();

private:
    struct Row
    {
        goods::LabelGood good;
        Label label;
        int typed = 1;
        bool bars = false; ///< the label has some, and room for them
    };

    void SetPrices();
    void FitBars();
    host::Quantity PriceOf(const goods::LabelGood &good) const;
    int CountOf(const Row &row) const;
    QString NoteOf(const Row &row) const;

    QList<Row> m_rows;
    Choices m_choices;
};

} // namespace labels
