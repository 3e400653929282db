#include "tsql/values/dates.h"

#include "tsql/functions/call.h"

namespace tsql {

namespace {

void dateOfText(Call &call)
{
    const auto kind = Kind(call.number(1));
    const int style = call.count() > 3 ? call.number(3) : 0;
    call.give(std::string_view(storageText(momentFromText(call.text(0), kind, style), kind)));
}

void dateFit(Call &call)
{
    call.give(std::string_view(storageText(momentFromStorage(call.text(0)), Kind(call.number(1)))));
}

void dateText(Call &call)
{
    call.give(std::string_view(styledText(call.text(0), Kind(call.number(1)), call.number(2))));
}

void dateAdd(Call &call)
{
    const Moment moment = addPart(call.text(0), call.integer(1), momentFromStorage(call.text(2)));
    call.give(std::string_view(storageText(moment, Kind(call.number(3)))));
}

void dateDiff(Call &call)
{
    call.give(differenceOfParts(call.text(0), momentFromStorage(call.text(1)), momentFromStorage(call.text(2))));
}

void datePart(Call &call)
{
    call.give(partOf(call.text(0), momentFromStorage(call.text(1))));
}

constexpr Function dateFunctions[] = {
    {"date_of_text", dateOfText, 3}, {"date_of_text", dateOfText, 4}, {"date_fit", dateFit, 2},
    {"date_text", dateText, 3},      {"date_add", dateAdd, 4},        {"date_diff", dateDiff, 3},
    {"date_part", datePart, 2},
};

} // namespace

void addDateFunctions(sqlite3 *db)
{
    addFunctions(db, dateFunctions);
}

} // namespace tsql
