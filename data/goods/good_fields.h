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

/// One column of `GoodInf` and the member of the record that carries it.
struct GoodField
{
    using Member = std::variant<int TGoodInfoRec::*, qint16 TGoodInfoRec::*, bool TGoodInfoRec::*,
                                QString TGoodInfoRec::*, host::Quantity TGoodInfoRec::*>;

    QLatin1String column;
    Member member;
    Written written = Written::Always;
    Empty empty = Empty::AsIs;

    QVariant Get(const TGoodInfoRec &rec) const;
    void Set(TGoodInfoRec &rec, const QVariant &value) const;
};

/// All columns, in the order in which they are written.
std::span<const GoodField> GoodFields();

} // namespace goods
