#include "tsql/values/dates.h"

#include "tsql/functions/call.h"

namespace tsql {

namespace {

void DateOfText(Call &call)
{
    const auto kind = Kind(call.Number(1));
    const int style = call.Count() > 3 ? call.Number(3) : 0;
    call.Give(std::string_view(StorageText(MomentFromText(call.text(0), kind, style), kind)));
}

void DateFit(Call &call)
{
    call.Give(std::string_view(StorageText(MomentFromStorage(call.text(0)), Kind(call.Number(1)))));
}

void DateText(Call &call)
{
    call.Give(std::string_view(StyledText(call.text(0), Kind(call.Number(1)), call.Number(2))));
}

void DateAdd(Call &call)
{
    const Moment moment = AddPart(call.text(0), call.IntegerAt(1), MomentFromStorage(call.text(2)));
    call.Give(std::string_view(StorageText(moment, Kind(call.Number(3)))));
}

void DateDiff(Call &call)
{
    call.Give(DifferenceOfParts(call.text(0), MomentFromStorage(call.text(1)), MomentFromStorage(call.text(2))));
}

void DatePart(Call &call)
{
    call.Give(PartOf(call.text(0), MomentFromStorage(call.text(1))));
}

constexpr Function dateFunctions[] = {
    {"date_of_text", DateOfText, 3}, {"date_of_text", DateOfText, 4}, {"date_fit", DateFit, 2},
    {"date_text", DateText, 3},      {"date_add", DateAdd, 4},        {"date_diff", DateDiff, 3},
    {"date_part", DatePart, 2},
};

} // namespace

void AddDateFunctions(sqlite3 *db)
{
    AddFunctions(db, dateFunctions);
}

} // namespace tsql
