#pragma once

#include <QString>

/// The kind of a detail type: it decides which columns of its row mean anything. The numbers are stored.
enum class TDetailKind : int {
    None = 0,    ///< nothing chosen yet
    List = 1,    ///< one of a fixed list of items; the default is an item's position, from 1
    Text = 2,    ///< free text; the items are suggestions, the default is a text
    Serial = 3,  ///< never more than one unit with the same value
    Number = 4,  ///< a number
    Date = 5,    ///< a date, in the calendar of the type, with or without reminder when it is due
    Barcode = 6, ///< identifies a kind of good by a combination of details
    Toggle = 7,  ///< on or off; the default is "0" or "1"
};

/// The calendar of a date type, as stored in `DateType`.
enum class TDetailCalendar : int { Gregorian = 0, Solar = 1 };

namespace detail_types {

/// Detail types that a good, and a category, may hold.
inline constexpr int Most = 5;

} // namespace detail_types

/// One detail type: the row of `DetailTypes`, in the order of its columns.
struct TDetailType_Rec
{
    int ID = 0; ///< the code by which everything else names the type
    QString Title;
    TDetailKind DetailType = TDetailKind::None;
    bool IsRequired = false;  ///< a value must be entered when goods come in
    QString ToggleTitleTrue;  ///< captions of the two states of a toggle
    QString ToggleTitleFalse; ///< at most 50 characters, as ToggleTitleTrue
    QString DefaultValue;     ///< by kind; at most 50 characters
    TDetailCalendar DateType = TDetailCalendar::Gregorian;
    bool DateAlarm = false; ///< remind when the date is due
    QString Comment;
    QString CreatedTime;  ///< with ":"; written by insert only, like the next two
    QString CreatedDate;  ///< with "/"
    QString ModifiedTime; ///< written by update only, like the next
    QString ModifiedDate;
    QString UserCreated;  ///< name (code)
    QString UserModified; ///< written by update only
};

/// One category of detail types: a named group that is given to a good in one step.
struct TDetailTypes_SelectedList_Rec
{
    int ID = 0;
    int Code = 0; ///< at most six digits
    QString Title;
    QString Comment;
};
