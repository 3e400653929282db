#include "desk/lists/entity_kind.h"

#include <QtCore/QList>

namespace desk {

const EntityKind &KindOf(host::TSoftwarePart part)
{
    using host::TSoftwarePart;
    static const QList<EntityKind> kinds{
        {TSoftwarePart::GoodsGroups, u"GoodGrpS"_qs, u"Code"_qs, u"Name"_qs, u"گروه کالا"_qs,
         u"گروه‌های کالا"_qs, true, false},
        {TSoftwarePart::Stores, u"Stores"_qs, u"Code"_qs, u"Name"_qs, u"انبار"_qs, u"انبارها"_qs, true, false},
        {TSoftwarePart::Units, u"Units"_qs, u"Code"_qs, u"Name"_qs, u"واحد سنجش"_qs, u"واحدهای سنجش"_qs, true, true},
        {TSoftwarePart::Goods, u"GoodInf"_qs, u"Code"_qs, u"Name"_qs, u"کالا"_qs, u"کالاها"_qs, false, false},
        {TSoftwarePart::DetailTypes, u"DetailTypes"_qs, u"ID"_qs, u"Title"_qs, u"نوع جزئیات"_qs, u"انواع جزئیات"_qs,
         false, false},
    };
    for (const EntityKind &kind : kinds) {
        if (kind.part == part)
            return kind;
    }
    throw std::invalid_argument("no list of this software part: " + std::to_string(static_cast<int>(part)));
}

} // namespace desk
