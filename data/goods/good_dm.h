#pragma once

#include "data/goods/good_bulk.h"
#include "data/goods/good_categories.h"
#include "data/goods/good_codes.h"
#include "data/goods/good_detail_types.h"
#include "data/goods/good_lookups.h"
#include "data/goods/good_opening_stock.h"
#include "data/goods/good_prices.h"
#include "data/goods/good_record_store.h"
#include "data/goods/good_scales.h"

/// The goods data module: every statement of the goods screens on a good. It is the sum of its parts, one per topic,
/// each with its datasets, which grids show; a screen that needs one topic asks for that part alone.
///
/// It shows no messages. Checks answer a boolean or a count. Database errors (`host::DatabaseError`) and values that
/// may not be spliced into a statement (`host::RefusedText`) are thrown to the screen that called. Operations of
/// several statements are one transaction, the caller's when it has one open on the main connection.
///
/// The working rows of an open editor (prices, categories, photo) stand in tables that all desks share, keyed by the
/// good's code; those of its opening stock have a key of their own (OpeningCopy). An editor of a new good therefore
/// reserves its proposed code before it makes working rows, and calls Good_ChangeCode() when the code changes.
class TGood_DM : public goods::RecordStore,
                 public goods::Codes,
                 public goods::Prices,
                 public goods::GoodDetailTypes,
                 public goods::OpeningStock,
                 public goods::Categories,
                 public goods::Lookups,
                 public goods::Scales,
                 public goods::BulkChanges
{
public:
    /// Keeps references to the services; the connections are the host's open ones.
    TGood_DM(const host::Connections &connections, const host::SettingsService &settings,
             host::EntityService &entities);
    TGood_DM(const TGood_DM &) = delete;
    TGood_DM &operator=(const TGood_DM &) = delete;

    /// The main connection, for the transaction around a save.
    const QSqlDatabase &Connection() const { return m_main; }

    /// For the start of a save of a new good, inside its transaction and before anything is written: when another desk
    /// took the code meanwhile, a new one of the group is taken, the working rows go over to it, `code` is changed and
    /// the answer is true, so that the screen tells the user. On SQL Server the code stays locked until the end of the
    /// transaction; on the embedded database the transaction holds the write lock anyway.
    bool Good_TakeCode(int &code, int grpCode, int codeLength);
    /// Moves all working rows (prices, opening stock, categories, photo, detail types) from one code to another.
    void Good_ChangeCode(int newCode, int oldCode);

private:
    QSqlDatabase m_main;
};
