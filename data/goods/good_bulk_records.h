#pragma once

#include "host/data/quantity.h"

#include <QList>
#include <QString>

#include <array>
#include <functional>

namespace goods {

/// Which goods of the list a change of many goods is for.
enum class ScopeKind : quint8 {
    Marked,    ///< those marked, or the current one when none is
    NotMarked, ///< those listed but not marked
    Listed,    ///< all in the list as it is filtered and searched
    All,       ///< every good that the user may see
    File,      ///< the rows of a file; nothing that a user chooses
};

/// The goods that a change is for. The codes are taken once, when the user chooses: what the list shows afterwards does
/// not change which goods are written.
struct GoodsScope
{
    ScopeKind kind = ScopeKind::Marked;
    QList<int> codes; ///< empty for ScopeKind::All
    /// ScopeKind::All: the user from whom groups of goods may be withheld (`UserDeniedGroups`); 0 for a manager.
    int deniedTo = 0;
};

/// Which price of a good is changed.
enum class PriceKind : quint8 { Sale = 0, Purchase = 1, Consumer = 2 };

/// The price level of an instruction on consumer prices, which have none.
inline constexpr int NoPriceLevel = -1000;

/// What the user asked to be done to one price of many goods.
struct PriceInstruction
{
    PriceKind kind = PriceKind::Sale;
    int level = NoPriceLevel; ///< 1 … 10; NoPriceLevel for the consumer price
    int option = 1;           ///< 1 take another price, 2 a percent, 3 an amount
    host::Quantity value = 0; ///< option 1: 0 last purchase, 1 last sale, 2 highest purchase, 3 highest sale price;
                              ///< option 2: the percent; option 3: the amount
    int direction = 1;        ///< +1 adds, -1 takes off (options 2 and 3)
    int rounding = 0;         ///< 0 not at all, else to 10, 100, 1,000 or 10,000
};

/// The values of options 2 and 3 are below these: what their edits take, and what leaves room for decimals.
inline constexpr host::Quantity PercentLimit = 1e13L;
inline constexpr host::Quantity AmountLimit = 1e15L;

/// What the group discount dialog hands over: only what is ticked is written.
struct GroupDiscount
{
    std::array<bool, 4> sellTicked{};
    std::array<bool, 4> buyTicked{};
    bool defaultSellTicked = false;
    bool defaultBuyTicked = false;
    std::array<host::Quantity, 4> sell{}; ///< percent
    std::array<host::Quantity, 4> buy{};
    int defaultSell = 0; ///< 1 … 4
    int defaultBuy = 0;
};

/// Asked between the steps of a change of many goods, `done` of `total`; false gives up, and nothing is written then.
/// Without one a step is never given up.
using BulkProgress = std::function<bool(int done, int total)>;

/// Who changes many goods and when, as the list of the last changes shows it.
struct BulkOrder
{
    QString title; ///< what was asked, in the user's words; what is longer than 300 characters is cut
    QString user;  ///< StampUser()
    QString date;
    QString time;
    BulkProgress progress;
};

/// What became of a change of many goods.
struct BulkResult
{
    enum class Outcome : quint8 {
        Done,      ///< written, also when no good was left to be written
        Cancelled, ///< given up, nothing was written
        Refused,   ///< the change to be taken back is gone, or was taken back by another desk
    };
    Outcome outcome = Outcome::Done;
    int change = 0;  ///< its number in the list of the last changes; 0 when no good was written
    int written = 0; ///< goods
    int left = 0;    ///< goods that stay as they are although they were to change: changed, used or deleted meanwhile
    int removed = 0; ///< of `written`, goods that were deleted because the change taken back had made them
};

/// What a change will do to the goods of its scope.
struct BulkForecast
{
    int goods = 0;       ///< that the scope names, each once
    int changing = 0;    ///< will be written
    int same = 0;        ///< have the values already; to be taken back: were changed since
    int protectedOf = 0; ///< may not be changed: quantities are recorded for their details, or an old value is gone
    int gone = 0;        ///< are no goods any more
    int used = 0;        ///< to be taken back: were made by the change and are in use by now
    int removing = 0;    ///< of `changing`: were made by the change and will be deleted
};

/// What is to become of one good's price.
enum class PriceFate : quint8 {
    Changes = 0,
    SamePrice = 1, ///< the new price is the old one
    NoSource = 2,  ///< the good has no price that is to be changed or taken over
    BelowZero = 3,
    TooLarge = 4,         ///< beyond what the column holds
    GoodGone = 5,         ///< deleted
    ChangedMeanwhile = 6, ///< found while writing: the stored price is no longer the old one of the preview
    RoundedAway = 7,      ///< the new price is above 0, and rounding leaves nothing of it
};
inline constexpr int PriceFates = 8;

/// What a change of many goods was about.
enum class BulkKind : quint8 { Prices = 1, Discounts = 2, AssetType = 3, DetailTypes = 4, Import = 5 };

/// Why taking a change back leaves a good as it is.
enum class LeftReason : quint8 {
    None = 0,
    Changed = 1, ///< it has other values than were written
    Gone = 2,    ///< it was deleted; a good that has its code now is another one
    Stuck =
        3, ///< its old type or group is gone, another good has its old name, or quantities are recorded for its details
    Used = 4, ///< it was made by the change and is in use
};

} // namespace goods
