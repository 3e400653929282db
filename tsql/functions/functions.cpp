#include "tsql/functions/functions.h"

#include "tsql/functions/call.h"
#include "tsql/values/collation.h"
#include "tsql/values/error.h"
#include "tsql/write/catalogue.h"

#include <QUuid>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

void CallRegistered(sqlite3_context *context, int count, sqlite3_value **values)
{
    CallFunction(*static_cast<const Function *>(sqlite3_user_data(context)), context, count, values);
}

void ObjectId(sqlite3_context *context, int count, sqlite3_value **values)
{
    const auto *catalogue = static_cast<const Catalogue *>(sqlite3_user_data(context));
    const Call call(context, count, values);
    if (call.IsNull(0))
        return;
    const QString kind = count > 1 && !call.IsNull(1) ? call.String(1) : QString();
    if (const auto id = catalogue->ObjectId(call.String(0), kind))
        call.Give(qint64(*id));
}

void SchemaId(sqlite3_context *context, int count, sqlite3_value **values)
{
    const Call call(context, count, values);
    if (call.IsNull(0))
        return;
    if (const auto id = static_cast<const Catalogue *>(sqlite3_user_data(context))->SchemaId(call.String(0)))
        call.Give(qint64(*id));
}

/** The number of an index in the file; NULL when the table has no index of that name. */
void IndexProperty(sqlite3_context *context, int count, sqlite3_value **values)
{
    const Call call(context, count, values);
    if (call.IsNull(0) || call.IsNull(1) || call.IsNull(2))
        return;
    const auto table = static_cast<const Catalogue *>(sqlite3_user_data(context))->TableOf(call.Number(0));
    if (call.String(2).compare(u"IndexID", Qt::CaseInsensitive) != 0)
        return RaiseError(context, NotSupported(u"INDEXPROPERTY of "_s + call.String(2)));
    if (!table)
        return;
    const QByteArray name = StoredIndexName(*table, call.String(1)).toUtf8();
    sqlite3_stmt *found = nullptr;
    const char *text = "SELECT rowid FROM main.sqlite_master WHERE type = 'index' AND name = ?1";
    if (const int code = sqlite3_prepare_v2(sqlite3_context_db_handle(context), text, -1, &found, nullptr);
        code != SQLITE_OK)
        return sqlite3_result_error_code(context, code);
    sqlite3_bind_text(found, 1, name.constData(), int(name.size()), SQLITE_TRANSIENT);
    if (sqlite3_step(found) == SQLITE_ROW)
        call.Give(qint64(sqlite3_column_int64(found, 0)));
    if (const int code = sqlite3_finalize(found); code != SQLITE_OK)
        sqlite3_result_error_code(context, code);
}

void NewId(Call &call)
{
    call.Give(QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper());
}

void Refuse(Call &call)
{
    throw Error::Worded(call.Number(0), call.String(1));
}

constexpr Function systemFunctions[] = {
    {"tsql_newid", NewId, 0, false, false},
    {"tsql_error", Refuse, 2, true, false},
};

template <Collation collation> int Collate(void *, int lengthA, const void *a, int lengthB, const void *b)
{
    const std::string_view left(static_cast<const char *>(a), size_t(lengthA));
    const std::string_view right(static_cast<const char *>(b), size_t(lengthB));
    if constexpr (collation == Collation::Plain)
        return CompareTexts(left, right);
    else
        return CompareTexts(left, right, collation);
}

template <Collation collation> void AddCollation(sqlite3 *db)
{
    sqlite3_create_collation_v2(db, CollationName(collation), SQLITE_UTF8, nullptr, Collate<collation>, nullptr);
}

} // namespace

void CallFunction(const Function &function, sqlite3_context *context, int count, sqlite3_value **values)
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
        RaiseError(context, error);
    } catch (const std::bad_alloc &) {
        sqlite3_result_error_nomem(context);
    }
}

void AddFunctions(sqlite3 *db, std::span<const Function> functions)
{
    for (const Function &function : functions) {
        const int flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | (function.steady ? SQLITE_DETERMINISTIC : 0);
        sqlite3_create_function_v2(db, function.name, function.args, flags, const_cast<Function *>(&function),
                                   CallRegistered, nullptr, nullptr, nullptr);
    }
}

void RaiseError(sqlite3_context *context, const Error &error)
{
    const QByteArray packed = '\x01' + QByteArray::number(error.Number()) + ':' + error.Text().toUtf8();
    sqlite3_result_error(context, packed.constData(), int(packed.size()));
}

void RegisterFunctions(sqlite3 *db, Catalogue *catalogue)
{
    AddCollation<Collation::Plain>(db);
    AddCollation<Collation::Accents>(db);
    AddCollation<Collation::Case>(db);
    AddCollation<Collation::AccentsAndCase>(db);
    AddCollation<Collation::CodePoints>(db);
    AddDecimalFunctions(db);
    AddNumberFunctions(db);
    AddAggregates(db);
    AddTextFunctions(db);
    AddDateFunctions(db);
    AddGuards(db);
    AddFunctions(db, systemFunctions);
    for (const int args : {1, 2})
        sqlite3_create_function_v2(db, "object_id", args, SQLITE_UTF8, catalogue, ObjectId, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "schema_id", 1, SQLITE_UTF8, catalogue, SchemaId, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "index_property", 3, SQLITE_UTF8, catalogue, IndexProperty, nullptr, nullptr,
                               nullptr);
}

} // namespace tsql
