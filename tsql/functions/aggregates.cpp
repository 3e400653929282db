#include "tsql/functions/call.h"
#include "tsql/values/convert.h"
#include "tsql/values/error.h"

#include <cstring>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

/** A running sum. SQLite aligns it to 8 bytes only, so the 128 bits are kept as bytes. */
struct Sum
{
    unsigned char units[sizeof(Decimal::Int)];
    qint64 count;

    Decimal::Int Total() const
    {
        Decimal::Int result;
        std::memcpy(&result, units, sizeof result);
        return result;
    }

    /** False when 128 bits do not hold it; the sum stays then. */
    [[nodiscard]] bool Add(Decimal::Int term, qint64 terms)
    {
        Decimal::Int result = 0;
        if (__builtin_add_overflow(Total(), term, &result))
            return false;
        std::memcpy(units, &result, sizeof result);
        count += terms;
        return true;
    }
};

Sum *SumOf(sqlite3_context *context)
{
    auto *sum = static_cast<Sum *>(sqlite3_aggregate_context(context, sizeof(Sum)));
    if (!sum)
        sqlite3_result_error_nomem(context);
    return sum;
}

/** Decimals come as blobs, whole numbers as integers. */
Decimal::Int TermOf(sqlite3_value *value)
{
    if (sqlite3_value_type(value) != SQLITE_BLOB)
        return sqlite3_value_int64(value);
    return Decimal::FromBlob(sqlite3_value_blob(value), sqlite3_value_bytes(value), 0).units;
}

template <int sign> void AddTerm(sqlite3_context *context, int, sqlite3_value **values)
{
    if (sqlite3_value_type(values[0]) == SQLITE_NULL)
        return;
    Sum *sum = SumOf(context);
    if (!sum)
        return;
    const Decimal::Int limit = Decimal::Power10(Decimal::MaxPrecision);
    if (!sum->Add(sign * TermOf(values[0]), sign) || sum->Total() >= limit || sum->Total() <= -limit) {
        RaiseError(context, Error(8115, {u"expression"_s, u"numeric"_s}));
        *sum = {};
    }
}

/** The other arguments (scale, kind) are the same in each row: the first row's are kept behind the sum. */
struct TypedSum
{
    Sum sum;
    int type;
    bool seen;
};

template <int sign> void AddTypedTerm(sqlite3_context *context, int count, sqlite3_value **values)
{
    auto *typed = static_cast<TypedSum *>(sqlite3_aggregate_context(context, sizeof(TypedSum)));
    if (!typed)
        return sqlite3_result_error_nomem(context);
    if (!typed->seen) {
        typed->type = count > 1 ? sqlite3_value_int(values[1]) : 0;
        typed->seen = true;
    }
    if (sqlite3_value_type(values[0]) != SQLITE_NULL && !typed->sum.Add(sign * TermOf(values[0]), sign))
        RaiseError(context, Error(8115, {u"expression"_s, u"numeric"_s}));
}

void GiveSum(sqlite3_context *context)
{
    const auto *sum = static_cast<Sum *>(sqlite3_aggregate_context(context, 0));
    if (sum && sum->count > 0)
        Call(context, 0, nullptr).Give(Decimal{sum->Total(), 0});
}

template <void (*give)(const Call &, const TypedSum &)> void GiveTyped(sqlite3_context *context)
{
    const auto *typed = static_cast<TypedSum *>(sqlite3_aggregate_context(context, 0));
    if (!typed || typed->sum.count == 0)
        return;
    try {
        give(Call(context, 0, nullptr), *typed);
    } catch (const Error &error) {
        RaiseError(context, error);
    }
}

void GiveDecimalAverage(const Call &call, const TypedSum &typed)
{
    const int scale = std::max(typed.type, 6);
    call.Give(Divide({typed.sum.Total(), typed.type}, Decimal::FromInt(typed.sum.count), Decimal::MaxPrecision, scale));
}

void GiveIntegerSum(const Call &call, const TypedSum &typed)
{
    const Decimal::Int total = typed.sum.Total();
    const auto whole = qint64(total);
    call.Give(whole == total ? FitInteger(whole, Kind(typed.type)) : IntegerFromDecimal({total, 0}, Kind(typed.type)));
}

void GiveIntegerAverage(const Call &call, const TypedSum &typed)
{
    call.Give(qint64(typed.sum.Total() / typed.sum.count));
}

/** The text under construction, owned by the aggregate until its end. */
std::string *&TextOf(sqlite3_context *context)
{
    static std::string *none = nullptr;
    auto *slot = static_cast<std::string **>(sqlite3_aggregate_context(context, sizeof(std::string *)));
    if (!slot) {
        sqlite3_result_error_nomem(context);
        return none;
    }
    if (!*slot)
        *slot = new std::string;
    return *slot;
}

void AppendEscaped(std::string &text, std::string_view piece)
{
    for (const char c : piece) {
        switch (c) {
        case '&':
            text += "&amp;";
            break;
        case '<':
            text += "&lt;";
            break;
        case '>':
            text += "&gt;";
            break;
        case '\r':
            text += "&#x0D;";
            break;
        default:
            text += c;
        }
    }
}

void AddXmlPiece(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (sqlite3_value_type(values[0]) == SQLITE_NULL)
        return;
    if (std::string *text = TextOf(context))
        AppendEscaped(*text, Call(context, count, values).text(0));
}

void AddPiece(sqlite3_context *context, int count, sqlite3_value **values)
{
    if (sqlite3_value_type(values[0]) == SQLITE_NULL)
        return;
    const Call call(context, count, values);
    auto *slot = static_cast<std::string **>(sqlite3_aggregate_context(context, sizeof(std::string *)));
    const bool first = !slot || !*slot;
    if (std::string *text = TextOf(context)) {
        if (!first && !call.IsNull(1))
            text->append(call.text(1));
        text->append(call.text(0));
    }
}

void GiveText(sqlite3_context *context)
{
    auto *slot = static_cast<std::string **>(sqlite3_aggregate_context(context, 0));
    if (!slot || !*slot)
        return;
    Call(context, 0, nullptr).Give(std::string_view(**slot));
    delete *slot;
    *slot = nullptr;
}

using Step = void (*)(sqlite3_context *, int, sqlite3_value **);
using Final = void (*)(sqlite3_context *);

void AddWindow(sqlite3 *db, const char *name, int args, Step step, Step inverse, Final give)
{
    sqlite3_create_window_function(db, name, args, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr, step,
                                   give, give, inverse, nullptr);
}

void AddAggregate(sqlite3 *db, const char *name, int args, Step step)
{
    sqlite3_create_function_v2(db, name, args, SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr, nullptr,
                               step, GiveText, nullptr);
}

} // namespace

void AddAggregates(sqlite3 *db)
{
    AddWindow(db, "dec_sum", 1, AddTerm<1>, AddTerm<-1>, GiveSum);
    AddWindow(db, "dec_avg", 2, AddTypedTerm<1>, AddTypedTerm<-1>, GiveTyped<GiveDecimalAverage>);
    AddWindow(db, "int_sum", 2, AddTypedTerm<1>, AddTypedTerm<-1>, GiveTyped<GiveIntegerSum>);
    AddWindow(db, "int_avg", 1, AddTypedTerm<1>, AddTypedTerm<-1>, GiveTyped<GiveIntegerAverage>);
    AddAggregate(db, "tsql_xml_agg", 1, AddXmlPiece);
    AddAggregate(db, "tsql_string_agg", 2, AddPiece);
}

} // namespace tsql
