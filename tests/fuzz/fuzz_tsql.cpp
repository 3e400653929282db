// Feeds arbitrary texts to the lexer, the parser and the writer, over the catalogue of the goods database.
//
// What must hold for every text: nothing crashes or hangs; the statement cache's view of a text agrees with the
// lexer's; a refusal has a number and a message; and whatever the writer makes of a statement is SQL that SQLite
// accepts, with every parameter that it mentions.

#include "tsql/functions/functions.h"
#include "tsql/parse/parser.h"
#include "tsql/run/sqlite.h"
#include "tsql/values/error.h"
#include "tsql/write/storage.h"
#include "tsql/write/writer.h"

#include <QFile>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

using namespace tsql;

[[noreturn]] void Fail(const char *what, const QString &detail)
{
    std::fprintf(stderr, "%s: %s\n", what, qUtf8Printable(detail));
    std::abort();
}

/// The goods database, empty, in memory.
class Database
{
public:
    Database()
    {
        m_handle.Open(u":memory:"_s, false);
        RegisterFunctions(m_handle.Get(), &m_catalogue);
        m_handle.Execute(QByteArray("ATTACH ':memory:' AS ") + GlobalSchema);
        for (const char *script : {"schema.sql", "procedures.sql"})
            run(QString::fromUtf8(GOODS_SOURCES "/desk/database/") + QLatin1String(script));
        run(u"CREATE TABLE #t (a int IDENTITY(1,1), b nvarchar(10), c decimal(9,2), d datetime, e bit)"_s, true);
    }

    const Catalogue &catalogue() const { return m_catalogue; }
    sqlite3 *get() const { return m_handle.Get(); }

private:
    void run(const QString &pathOrText, bool isText = false)
    {
        QFile file(pathOrText);
        if (!isText && !file.open(QIODevice::ReadOnly))
            Fail("unreadable", pathOrText);
        for (const ScriptBatch &batch : SplitScript(isText ? pathOrText : QString::fromUtf8(file.readAll()))) {
            const Batch parsed = ParseBatch(batch.text);
            for (const StatementPtr &statement : parsed.statements)
                define(*statement);
        }
    }

    void define(const Statement &statement)
    {
        const Compiled compiled = Compile(statement, m_catalogue, {});
        if (!compiled.definition)
            return;
        if (!compiled.sql.isEmpty())
            m_handle.Execute(compiled.sql.toUtf8());
        for (const QString &sql : compiled.then)
            m_handle.Execute(sql.toUtf8());
        m_catalogue.Apply(statement);
    }

    SqliteHandle m_handle;
    Catalogue m_catalogue;
};

const VariableTypes &Variables()
{
    static const VariableTypes types = {
        {u"@goodcode"_s, {Kind::Int}},
        {u"@x"_s, SqlType::DecimalOf(23, 9)},
        {u"@s"_s, SqlType::text(Kind::NVarChar, 50)},
        {u"@d"_s, {Kind::DateTime}},
    };
    return types;
}

/// SQLite may refuse what only it can know (a name that a definition made twice), never the grammar.
void Prepare(const Database &database, const Compiled &compiled, const QString &sql)
{
    const QByteArray text = sql.toUtf8();
    sqlite3_stmt *statement = nullptr;
    const int code = sqlite3_prepare_v2(database.get(), text.constData(), int(text.size()), &statement, nullptr);
    const QString message = QString::fromUtf8(sqlite3_errmsg(database.get()));
    const int mentioned = statement ? sqlite3_bind_parameter_count(statement) : 0;
    const int columns = statement ? sqlite3_column_count(statement) : 0;
    sqlite3_finalize(statement);
    const bool limit = message.startsWith(u"too many") || message.contains(u"parser stack overflow") ||
                       message.contains(u"Expression tree is too large") || message.contains(u"already exists") ||
                       message.contains(u"string or blob too big") || message.contains(u"no such index") ||
                       message.contains(u"at most") || message.contains(u"recursive");
    if (code != SQLITE_OK && !limit)
        Fail("SQLite refuses", message + QLatin1Char('\n') + sql);
    if (code != SQLITE_OK)
        return;
    if (mentioned > int(compiled.parameters.size()))
        Fail("parameters without values", sql);
    if (!compiled.columns.empty() && !compiled.into && columns != int(compiled.columns.size()))
        Fail("columns differ", sql);
}

bool Writes(StatementKind kind)
{
    return kind <= StatementKind::CreateSchema || kind == StatementKind::Drop;
}

void CompileAll(const Database &database, const std::vector<StatementPtr> &statements)
{
    for (const StatementPtr &statement : statements) {
        if (!Writes(statement->kind) || statement->kind == StatementKind::CreateProcedure)
            continue;
        try {
            const Compiled compiled = Compile(*statement, database.catalogue(), Variables());
            if (compiled.sql.isEmpty() || statement->kind == StatementKind::AlterTable)
                continue;
            Prepare(database, compiled, compiled.sql);
            for (const Compiled &value : compiled.inTurn)
                Prepare(database, value, value.sql);
        } catch (const Error &error) {
            if (error.Number() == 0 || error.Text().isEmpty())
                Fail("a refusal without words", statement->text);
        }
    }
}

void CompareShapes(const QString &text)
{
    Shape seen;
    TakeShape(text, seen);
    try {
        const Tokens tokens = Tokenize(text);
        if (seen.key.isEmpty() && tokens.tokens.size() > 1)
            Fail("tokens without a shape", text);
        if (tokens.literals.size() != seen.literals.size())
            Fail("shape and tokens differ", text);
        for (size_t i = 0; i < seen.literals.size(); ++i) {
            if (seen.literals[i].text != tokens.literals[i].text || seen.literals[i].kind != tokens.literals[i].kind)
                Fail("literals differ", text);
        }
    } catch (const Error &) {
        // Such a text is refused when it is parsed: its shape is never kept.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size);

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static const Database database;
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    CompareShapes(text);
    try {
        CompileAll(database, ParseBatch(text).statements);
    } catch (const Error &error) {
        if (error.Number() == 0 || error.Text().isEmpty() || error.Line() < 1)
            Fail("a refusal without words or line", text);
    }
    return 0;
}
