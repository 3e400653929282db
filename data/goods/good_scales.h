#pragma once

#include "host/data/dataset.h"
#include "host/data/query.h"

#include <QList>

namespace goods {

/// What became of goods that were to go to the scales.
struct ScaleResult
{
    int added = 0;     ///< new on the scales
    int changed = 0;   ///< there already, sent again because something is another
    int unpriced = 0;  ///< without a price at the level: left out
    int strangers = 0; ///< another kind of item has their code: left out
};

/// `Items.ChangeType`: what the scales still have to be told of an item.
enum class ScaleChange : int { None = 0, New = 1, Changed = 2, Removed = 3 };

/// The items of the scales, in a database of their own: no transaction spans both. Goods are read first, then the items
/// are written in one transaction there; when that fails the scales are as they were, and goods are never touched.
class Scales
{
public:
    Scales(const QSqlDatabase &main, const QSqlDatabase &scale);

    bool CheckGoodInScale(int code);
    /// Marks the scale item for deletion at the next synchronisation.
    void DeleteGoodInScale(int code);
    /// Brings name, price of the level (1 to 10), first barcode and unit type of the scale item in step with the good
    /// and marks it as changed. Nothing happens for a good that no scale has.
    void Change_Price_Scale(int code, int costLevel);

    /// Items of goods: Code, Name1, Price, BarCode, Type, TypeName, ChangeType, State (both in words).
    host::Dataset Items_QRY;

    /// Whether the scale database is there and has the table of items.
    bool HasScaleDatabase() const;
    /// Opens `Items_QRY`; `waiting`: only what the scales have not been told yet.
    void ScaleItems_GetAll(bool waiting);
    /// Puts goods on the scales with their price on this level (1 to 10): new ones, changed ones, and those that were
    /// to be taken off. `codes` is a code list.
    ScaleResult PutGoodsOnScale(const QString &codes, int costLevel);
    /// Sends what has changed since of the goods on the scales: names, prices of the level, barcodes, units.
    ScaleResult SendChangesToScale(int costLevel);
    /// The same of these goods alone. Of one that is not on the scales, or is to be taken off, nothing is sent.
    ScaleResult SendChangesToScale(const QList<int> &codes, int costLevel);
    /// The goods on the scales that are not to be taken off.
    QList<int> CodesOnScale() const;
    /// Marks items to be taken off; how many were not marked yet. `codes` is a code list.
    int TakeGoodsOffScale(const QString &codes);

private:
    struct Item;
    QList<Item> GoodsOf(const QList<int> &codes, int costLevel) const;
    QList<Item> ItemsOf(const QList<int> &codes) const;
    ScaleResult Send(const QList<int> &codes, int costLevel, bool add);
    void InsertItems(const QList<Item> &items);
    void UpdateItems(const QList<Item> &items);

    QSqlDatabase m_main;
    QSqlDatabase m_scale;
    host::Query Temp_QRY;
    host::Query TMP_OnLine_QRY; ///< on the scale database
};

} // namespace goods
