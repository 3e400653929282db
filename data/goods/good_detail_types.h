#pragma once

#include "host/data/dataset.h"
#include "host/data/query.h"
#include "host/host.h"

#include <QString>

#include <array>

namespace goods {

/// The detail types of a good (serial, colour …), of which it carries at most five: the working list of an open editor,
/// a table of the connection, and the relations that are saved from it.
class GoodDetailTypes
{
public:
    GoodDetailTypes(const QSqlDatabase &main, const host::SettingsService &settings);

    host::Dataset GoodDetails_QRY; ///< working detail types of the good being edited

    /// Makes the empty working list of the connection.
    void CreateGoodDetailTempTable();
    /// Fills a fresh working list from the good's relations, serial first, barcode next, the others after.
    void FillGoodDetails(int goodCode);
    void InsertDefaultDetailTypesSelectedListInNewGood(const QString &goodCode);
    /// Opens `GoodDetails_QRY`.
    void GoodDetailTemp_GetAll();
    bool GoodDetailTemp_CheckExists();
    /// Adds detail types; `idList` has a "," after every id. Types already there and beyond the fifth are skipped.
    void GoodDetailTemp_Insert(QString idList, int goodCode);
    /// `ids` is a code list of row ids of the working list.
    void GoodDetailTemp_Delete(const QString &ids);
    void GoodDetailTemp_DeleteAll();
    /// The detail types of the working list as a code list, "0" when it is empty.
    QString DetailTypesTmp_GetCode();
    QString GetDetailTypeTitle(int id);
    /// The detail types of the working list in detail order, 0 for none. False when it is empty or good details are
    /// switched off.
    bool GetGoodDetailTempID(int &d1, int &d2, int &d3, int &d4, int &d5);

    bool InsertGoodDetailRelation(int goodCode, int d1, int d2, int d3, int d4, int d5);
    bool UpdateGoodDetailRelation(int goodCode, int d1, int d2, int d3, int d4, int d5);
    /// Gives goods exactly these detail types; scope below 2: the goods of the code list, 2: all goods.
    bool InsertGoodDetailTypesForGoods(const QString &goodCodes, const QString &detailIds, int scope);

protected:
    /// The working list, if there is one, goes over to another code.
    void GoodDetailTemp_ChangeCode(int newCode, int oldCode);

private:
    void InsertRelations(int goodCode, const std::array<int, 5> &details);

    QSqlDatabase m_main;
    const host::SettingsService &m_settings;
    host::Query Temp_QRY;
};

} // namespace goods
