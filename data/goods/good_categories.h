#pragma once

#include "host/data/dataset.h"
#include "host/data/query.h"

#include <QList>
#include <QPair>
#include <QString>

namespace goods {

/// What is attached to a good: its categories, tags and photos.
class Categories
{
public:
    explicit Categories(const QSqlDatabase &main);

    /// The categories of the good being edited: Id, Kala_code, Category_code, tmp, NAME.
    host::Dataset KalaCategory_Qry;
    host::Dataset Tags_qry;   ///< all tags with their colours
    host::Dataset colors_qry; ///< all colours; the caller opens it

    // Categories

    /// Kind 1 attaches a category for the time of editing, kind 2 makes it last.
    void InsertUpdateToKalaCategory(int goodCode, int categoryCode, int kind);
    /// True when the category may hold goods (has no branches) and the good, as this desk shows it, lacks it.
    bool cat_checker(int goodCode, int categoryCode);
    /// Takes off the categories attached here that cannot hold goods any more: another desk has deleted them or given
    /// them branches. True when there were any. At most two statements.
    bool DropUnfit(int goodCode);
    /// Kind 2 takes the row of `KalaCategory_Qry` with this Id off the good until the save decides; kind 1 puts it
    /// back.
    void GoodCatToTemp(int id, int kind);
    /// Opens `KalaCategory_Qry` on the good's categories as this desk has them: what other desks have attached or taken
    /// off and not saved is not seen.
    void Fill_grid(int goodCode);
    /// On save: categories attached on this desk last, those taken off here are gone.
    void TempToGoodCat(int goodCode);
    /// Drops the categories attached but not saved, of all desks; TempToGoodCat() restores this module's own.
    void DeleteTmpCategory();
    /// Forgets the categories taken off the good but not saved.
    void undodelete_category(int goodCode);

    // Tags

    bool ExistTag();
    /// Opens `Tags_qry`.
    void GetAllTagsWithColor();
    struct Tag
    {
        int Code = 0;
        int ColorCode = 0;
        QString Name;
        QByteArray Image;
    };
    /// The tag of this code; Code is 0 when there is none.
    Tag GetTagsByColorCode(int code);
    /// The tag codes of several goods, as stored: pairs of good and tags. `codes` is a code list.
    QList<QPair<int, QString>> GetTagsOfGoods(const QString &codes);
    /// Gives the good these tags and no others: tag codes joined by ",".
    void SetTagsOfGood(int goodCode, const QString &tags);

    // Photos

    void TmpToMainPhoto(int goodCode);
    void DeleteTmpphoto(int goodCode);
    /// True when photos were added to the good that are not saved.
    bool ExistTmpphoto(int goodCode);

protected:
    /// The categories and photos that are not saved go over to another code.
    void Category_ChangeCode(int newCode, int oldCode);

private:
    void RestoreAttached(int goodCode);

    QSqlDatabase m_main;
    host::Query Temp_QRY;
    /// Pairs of good and category attached, and taken off, by this module since the last save or clearing. Other desks
    /// clear the marks in the table.
    QList<QPair<int, int>> m_attached;
    QList<QPair<int, int>> m_takenOff;
};

} // namespace goods
