#include "desk/lists/entity_kind.h"

#include <QList>

using namespace Qt::StringLiterals;

namespace desk {

const EntityKind &KindOf(host::TSoftwarePart part)
{
    using host::TSoftwarePart;
    static const QList<EntityKind> kinds{
        {TSoftwarePart::GoodsGroups, u"GoodGrpS"_s, u"Code"_s, u"Name"_s, u"گروه کالا"_s,
         u"گروه‌های کالا"_s, true, false},
        {TSoftwarePart::Stores, u"Stores"_s, u"Code"_s, u"Name"_s, u"انبار"_s, u"انبارها"_s, true, false},
        {TSoftwarePart::Units, u"Units"_s, u"Code"_s, u"Name"_s, u"واحد سنجش"_s, u"واحدهای سنجش"_s, true, true},
        {TSoftwarePart::Goods, u"GoodInf"_s, u"Code"_s, u"Name"_s, u"کالا"_s, u"کالاها"_s, false, false},
        {TSoftwarePart::DetailTypes, u"DetailTypes"_s, u"ID"_s, u"Title"_s, u"نوع جزئیات"_s, u"انواع جزئیات"_s, false,
         false},
    };
    for (const EntityKind &kind : kinds) {
        if (kind.part == part)
            return kind;
    }
    throw std::invalid_argument("no list of this software part: " + std::to_string(static_cast<int>(part)));
}

} // namespace desk
