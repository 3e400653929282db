#include "tsql/functions/functions.h"

#include "tsql/functions/call.h"
#include "tsql/values/collation.h"
#include "tsql/values/error.h"
#include "tsql/write/catalogue.h"

#include <QUuid>

namespace tsql {

namespace {

void callRegistered(sqlite3_context *context, int count, sqlite3_value **values)
{
    callFunction(*static_cast<const Function *>(sqlite3_user_data(context)), context, count, values);
}

void objectId(sqlite3_context *context, int count, sqlite3_value **values)
{
    const auto *catalogue = static_cast<const Catalogue *>(sqlite3_user_data(context));
    const Call call(context, count, values);
    if (call.isNull(0))
        return;
    const QString kind = count > 1 && !call.isNull(1) ? call.string(1) : QString();
    if (const auto id = catalogue->objectId(call.string(0), kind))
        call.give(qint64(*id));
}

void newId(Call &call)
{
    call.give(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
}

void refuse(Call &call)
{
    throw Error::Worded(call.number(0), call.string(1));
}

constexpr Function systemFunctions[] = {
    {"tsql_newid", newId, 0, false, false},
    {"tsql_error", refuse, 2, true, false},
};

template <Collation collation> int collate(void *, int lengthA, const void *a, int lengthB, const void *b)
{
    const std::string_view left(static_cast<const char *>(a), size_t(lengthA));
    const std::string_view right(static_cast<const char *>(b), size_t(lengthB));
    if constexpr (collation == Collation::Plain)
        return compareTexts(left, right);
    else
        return compareTexts(left, right, collation);
}

template <Collation collation> void addCollation(sqlite3 *db)
{
    sqlite3_create_collation_v2(db, collationName(collation), SQLITE_UTF8, nullptr, collate<collation>, nullptr);
}

} // namespace

void callFunction(const Function &function, sqlite3_context *context, int count, sqlite3_value **values)
{
    if (!function.takesNull) {
        for (int i = 0; i < count; ++i) {
            if (sqlite3_value_type(values[i]) == SQLITE_NULL)
                return;
        }
    }
    try {
        Call call(context, count, values);
        function.body(call);
    } catch (const Error &error) {
        raiseError(context, error);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

void addFunctions(sqlite3 *db, std::span<const Function> functions)
{
    for (const Function &function : functions) {
        const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (function.steady ? SQLITE_DETERMINISTIC : 0);
        sqlite3_create_function_v2(db, function.name, function.args, flags, const_cast<Function *>(&function),
                                   callRegistered, nullptr, nullptr, nullptr);
    }
}

void raiseError(sqlite3_context *context, const Error &error)
{
    const QByteArray packed = '\x01' + QByteArray::number(error.number()) + ':' + error.message().toUtf8();
    sqlite3_result_error(context, packed.constData(), int(packed.size()));
}

void registerFunctions(sqlite3 *db, Catalogue *catalogue)
{
    addCollation<Collation::Plain>(db);
    addCollation<Collation::Accents>(db);
    addCollation<Collation::Case>(db);
    addCollation<Collation::AccentsAndCase>(db);
    addCollation<Collation::CodePoints>(db);
    addDecimalFunctions(db);
    addNumberFunctions(db);
    addAggregates(db);
    addTextFunctions(db);
    addDateFunctions(db);
    addGuards(db);
    addFunctions(db, systemFunctions);
    for (const int args : {1, 2})
        sqlite3_create_function_v2(db, "object_id", args, SQLITE_UTF8, catalogue, objectId, nullptr, nullptr, nullptr);
}

} // namespace tsql
