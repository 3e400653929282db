#pragma once

#include "host/data/quantity.h"

#include <QList>
#include <QString>

#include <array>

namespace goods {

/// Which goods of the list a change of many goods is for.
enum class ScopeKind : quint8 {
    Marked,    ///< those marked, or the current one when none is
    NotMarked, ///< those listed but not marked
    Listed,    ///< all in the list as it is filtered and searched
    All,       ///< every good of the database
};

/// The goods that a change is for. The codes are taken once, when the user chooses: what the list shows afterwards does
/// not change which goods are written.
struct GoodsScope
{
    ScopeKind kind = ScopeKind::Marked;
    QList<int> codes; ///< empty for ScopeKind::All
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

} // namespace goods
