// Functions that refuse or test a value: what a statement checks while it runs.
#include "tsql/functions/call.h"
#include "tsql/values/convert.h"
#include "tsql/values/dates.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/** not_null(value, table, column, verb) */
void NotNull(Call &call)
{
    if (call.IsNull(0))
        throw Error(515, {call.String(2), call.String(1), call.String(3)});
    call.GiveArgument(0);
}

bool Converts(std::string_view text, const SqlType &type)
{
    try {
        const Value value = Value::OfText(QByteArray(text.data(), qsizetype(text.size())));
        Convert(value, SqlType::text(Kind::VarChar, SqlType::Max), {type, false, {}, {}});
        return true;
    } catch (const Error &) {
        return false;
    }
}

/** number_text(text, length, kind of the number, kind of the text) */
void NumberText(Call &call)
{
    const auto from = static_cast<Kind>(call.Number(2));
    const auto to = static_cast<Kind>(call.Number(3));
    const SqlType number{from};
    if (call.text(0).size() <= size_t(call.Number(1))) {
        call.GiveArgument(0);
        return;
    }
    if (number.IsInteger() && (to == Kind::VarChar || to == Kind::Char)) {
        call.Give(std::string_view("*"));
        return;
    }
    throw Error(8115, {number.IsInteger() ? u"expression"_s : KindName(from), KindName(to)});
}

/** can_convert(text, kind, precision, scale [, style of a date]) */
void CanConvert(Call &call)
{
    if (call.Count() > 4) {
        try {
            MomentFromText(call.text(0), Kind(call.Number(1)), call.Number(4));
            call.Give(qint64(1));
        } catch (const Error &error) {
            if (error.Number() == NotSupported({}).Number())
                throw;
            call.Give(qint64(0));
        }
        return;
    }
    const SqlType type{static_cast<Kind>(call.Number(1)), call.Number(2), call.Number(3), 0};
    call.Give(qint64(Converts(call.text(0), type)));
}

/** next_level(level, limit): the level of a row of a recursive table; a limit of 0 is none. */
void NextLevel(Call &call)
{
    const qint64 level = call.IntegerAt(0) + 1;
    if (call.IntegerAt(1) > 0 && level > call.IntegerAt(1))
        throw Error(530, {call.IntegerAt(1)});
    call.Give(level);
}

void IsDate(Call &call)
{
    call.Give(qint64(!call.IsNull(0) && Converts(call.text(0), {Kind::DateTime})));
}

constexpr Function guards[] = {
    {"not_null", NotNull, 4, true}, {"number_text", NumberText, 4}, {"can_convert", CanConvert, 4},
    {"can_convert", CanConvert, 5}, {"next_level", NextLevel, 2},   {"tsql_isdate", IsDate, 1, true},
};

/** The one value of a subquery that stands for a value. */
struct Single
{
    sqlite3_value *value;
    bool taken;
};

void AddSingle(sqlite3_context *context, int, sqlite3_value **values)
{
    auto *single = static_cast<Single *>(sqlite3_aggregate_context(context, sizeof(Single)));
    if (!single) {
        sqlite3_result_error_nomem(context);
        return;
    }
    if (single->taken) {
        RaiseError(context, Error(512));
        return;
    }
    single->taken = true;
    single->value = sqlite3_value_dup(values[0]);
}

void GiveSingle(sqlite3_context *context)
{
    auto *single = static_cast<Single *>(sqlite3_aggregate_context(context, 0));
    if (!single || !single->value)
        return;
    sqlite3_result_value(context, single->value);
    sqlite3_value_free(single->value);
    single->value = nullptr;
}

} // namespace

void AddGuards(sqlite3 *db)
{
    AddFunctions(db, guards);
    sqlite3_create_function_v2(db, "tsql_single", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                               nullptr, AddSingle, GiveSingle, nullptr);
}

} // namespace tsql
