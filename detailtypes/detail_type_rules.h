#pragma once

#include "detailtypes/kind_layout.h"

#include <functional>

namespace detail_types {

/// What the editor holds when it is asked to save.
struct DetailTypeDraft
{
    bool isNew = false;
    QString title; ///< as typed, blanks included
    TDetailKind kind = TDetailKind::None;
    TDetailKind storedKind = TDetailKind::None; ///< of a type that is changed
    int items = 0;                              ///< of the item list
    int defaultItem = -1;                       ///< position in the list, -1 for none
    bool calendarGiven = true;                  ///< solar or Gregorian is chosen
    bool reminder = false;
    QString titleOn;
    QString titleOff;
    QString nextItem; ///< typed, but not added to the list
};

/// What only the database knows; asked when its turn comes and not before.
struct DetailTypeFacts
{
    /// Types with exactly this title, the edited one included.
    std::function<int(const QString &title)> sameTitles;
    /// Some good already has values of this type and of another one with reminder.
    std::function<bool()> reminderTaken;
    /// Some good (or some category) has another serial or barcode beside this type.
    std::function<bool(bool inList)> meetsIdentifying;
};

/// Why a detail type may not be saved, in the order in which the user is told.
enum class DetailTypeFault {
    None,
    TitleMissing,
    TitleTaken,
    ReminderTaken,
    IdentifyingOnGood,
    IdentifyingInList,
    KindMissing,
    ItemsMissing,
    CalendarMissing,
    OnTitleMissing,
    OffTitleMissing,
    DefaultMissing,
    ItemNotAdded,
};

/// The first fault of a draft. A renamed type may take the title of one other type: its own stored row counts as one.
DetailTypeFault FirstFault(const DetailTypeDraft &draft, const DetailTypeFacts &facts);

} // namespace detail_types
