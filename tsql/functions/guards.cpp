// Functions that refuse or test a value: what a statement checks while it runs.
#include "tsql/functions/call.h"
#include "tsql/values/convert.h"
#include "tsql/values/dates.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/** not_null(value, table, column, verb) */
void notNull(Call &call)
{
    if (call.isNull(0))
        throw Error(515, {call.string(2), call.string(1), call.string(3)});
    call.giveArgument(0);
}

bool converts(std::string_view text, const SqlType &type)
{
    try {
        const Value value = Value::ofText(QByteArray(text.data(), qsizetype(text.size())));
        convert(value, SqlType::text(Kind::VarChar, SqlType::Max), {type, false, {}, {}});
        return true;
    } catch (const Error &) {
        return false;
    }
}

/** number_text(text, length, kind of the number, kind of the text) */
void numberText(Call &call)
{
    const auto from = static_cast<Kind>(call.number(2));
    const auto to = static_cast<Kind>(call.number(3));
    const SqlType number{from};
    if (call.text(0).size() <= size_t(call.number(1))) {
        call.giveArgument(0);
        return;
    }
    if (number.isInteger() && (to == Kind::VarChar || to == Kind::Char)) {
        call.give(std::string_view("*"));
        return;
    }
    throw Error(8115, {number.isInteger() ? u"expression"_s : kindName(from), kindName(to)});
}

/** can_convert(text, kind, precision, scale [, style of a date]) */
void canConvert(Call &call)
{
    if (call.count() > 4) {
        try {
            momentFromText(call.text(0), Kind(call.number(1)), call.number(4));
            call.give(qint64(1));
        } catch (const Error &error) {
            if (error.number() == notSupported({}).number())
                throw;
            call.give(qint64(0));
        }
        return;
    }
    const SqlType type{static_cast<Kind>(call.number(1)), call.number(2), call.number(3), 0};
    call.give(qint64(converts(call.text(0), type)));
}

/** next_level(level, limit): the level of a row of a recursive table; a limit of 0 is none. */
void nextLevel(Call &call)
{
    const qint64 level = call.integer(0) + 1;
    if (call.integer(1) > 0 && level > call.integer(1))
        throw Error(530, {call.integer(1)});
    call.give(level);
}

void isDate(Call &call)
{
    call.give(qint64(!call.isNull(0) && converts(call.text(0), {Kind::DateTime})));
}

constexpr Function guards[] = {
    {"not_null", notNull, 4, true}, {"number_text", numberText, 4}, {"can_convert", canConvert, 4},
    {"can_convert", canConvert, 5}, {"next_level", nextLevel, 2},   {"tsql_isdate", isDate, 1, true},
};

/** The one value of a subquery that stands for a value. */
struct Single
{
    sqlite3_value *value;
    bool taken;
};

void addSingle(sqlite3_context *context, int, sqlite3_value **values)
{
    auto *single = static_cast<Single *>(sqlite3_aggregate_context(context, sizeof(Single)));
    if (!single) {
        sqlite3_result_error_nomem(context);
        return;
    }
    if (single->taken) {
        raiseError(context, Error(512));
        return;
    }
    single->taken = true;
    single->value = sqlite3_value_dup(values[0]);
}

void giveSingle(sqlite3_context *context)
{
    auto *single = static_cast<Single *>(sqlite3_aggregate_context(context, 0));
    if (!single || !single->value)
        return;
    sqlite3_result_value(context, single->value);
    sqlite3_value_free(single->value);
    single->value = nullptr;
}

} // namespace

void addGuards(sqlite3 *db)
{
    addFunctions(db, guards);
    sqlite3_create_function_v2(db, "tsql_single", 1, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr,
                               nullptr, addSingle, giveSingle, nullptr);
}

} // namespace tsql
