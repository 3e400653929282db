#include "detailtypes/detail_type_rules.h"

namespace detail_types {
namespace {

bool Blank(const QString &text)
{
    return text.trimmed().isEmpty();
}

bool Identifies(TDetailKind kind)
{
    return kind == TDetailKind::Serial || kind == TDetailKind::Barcode;
}

} // namespace

DetailTypeFault FirstFault(const DetailTypeDraft &draft, const DetailTypeFacts &facts)
{
    const KindLayout shown = LayoutOf(draft.kind);
    if (Blank(draft.title))
        return DetailTypeFault::TitleMissing;
    if (facts.sameTitles(draft.title) > (draft.isNew ? 0 : 1))
        return DetailTypeFault::TitleTaken;
    if (!draft.isNew && draft.kind == TDetailKind::Date && draft.reminder && facts.reminderTaken())
        return DetailTypeFault::ReminderTaken;
    if (!draft.isNew && Identifies(draft.kind) && !Identifies(draft.storedKind)) {
        if (facts.meetsIdentifying(false))
            return DetailTypeFault::IdentifyingOnGood;
        if (facts.meetsIdentifying(true))
            return DetailTypeFault::IdentifyingInList;
    }
    if (draft.kind == TDetailKind::None)
        return DetailTypeFault::KindMissing;
    if (shown.items && draft.items == 0)
        return DetailTypeFault::ItemsMissing;
    if (shown.date && !draft.calendarGiven)
        return DetailTypeFault::CalendarMissing;
    if (shown.toggle && Blank(draft.titleOn))
        return DetailTypeFault::OnTitleMissing;
    if (shown.toggle && Blank(draft.titleOff))
        return DetailTypeFault::OffTitleMissing;
    if (draft.kind == TDetailKind::List && draft.defaultItem < 0)
        return DetailTypeFault::DefaultMissing;
    if (shown.items && !Blank(draft.nextItem))
        return DetailTypeFault::ItemNotAdded;
    return DetailTypeFault::None;
}

} // namespace detail_types
