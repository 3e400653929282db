#pragma once

#include "data/goods/good_records.h"

#include <QLatin1String>
#include <QSqlDatabase>
#include <QVariant>

#include <span>
#include <variant>

namespace goods {

/// When a column of `GoodInf` is written.
enum class Written { Always, Insert, Update };

/// How an empty value is written: as it is, or as NULL because it refers to nothing.
enum class Empty { AsIs, AsNull };

/// Columns that mean something only together: when one of them was changed, all of them are written.
enum class Together { Alone, Name, Opening, Units, Toll, Tax, Created, Modified };

/// One column of `GoodInf` and the member of the record that carries it.
struct GoodField
{
    using Member = std::variant<int TGoodInfoRec::*, qint16 TGoodInfoRec::*, bool TGoodInfoRec::*,
                                QString TGoodInfoRec::*, host::Quantity TGoodInfoRec::*>;

    QLatin1String column;
    Member member;
    Together together = Together::Alone;
    Written written = Written::Always;
    Empty empty = Empty::AsIs;

    QVariant Get(const TGoodInfoRec &rec) const;
    void Set(TGoodInfoRec &rec, const QVariant &value) const;
};

/// All columns, in the order in which they are written.
std::span<const GoodField> GoodFields();

/// Whether the field, or one that belongs to it, differs in the two records.
bool Differs(const GoodField &field, const TGoodInfoRec &one, const TGoodInfoRec &other);

/// Takes back what nobody changed: where `rec` says the same as `untouched`, what an editor gives back of `stored` when
/// nothing is entered, it gets what is stored. An editor need not be able to show everything that a column holds.
void KeepUntouched(TGoodInfoRec &rec, const TGoodInfoRec &untouched, const TGoodInfoRec &stored);

} // namespace goods
