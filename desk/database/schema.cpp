#include "desk/database/schema.h"

#include "tsql/parse/parser.h"
#include "tsql/text/lexer.h"

#include <QDateTime>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

/// A database without one of these is not ours, whatever else it has.
constexpr const char16_t *Marks[] = {u"inf_co", u"Settings", u"GoodInf"};

QString Quoted(const QString &text)
{
    return u"N'"_s + QString(text).replace(u'\'', u"''"_s) + u'\'';
}

QString TypeNameOf(const tsql::SqlType &type)
{
    return type.kind == tsql::Kind::Decimal ? u"decimal"_s : tsql::KindName(type.kind);
}

/// The line of a column: its name and what follows, without the comma.
QString LineOf(const QString &table, const QString &column)
{
    const QRegularExpression line(u"^ +(\\[?%1\\]? .*?),?$"_s.arg(QRegularExpression::escape(column)),
                                  QRegularExpression::MultilineOption);
    return line.match(table).captured(1);
}

bool MayBeAdded(const tsql::ColumnDefinition &column, const std::vector<tsql::TableConstraint> &constraints)
{
    const bool filled =
        column.nullable || (column.defaultValue && column.defaultValue->kind == tsql::ExpressionKind::Literal);
    return filled && !column.identity &&
           std::none_of(constraints.begin(), constraints.end(), [&](const tsql::TableConstraint &constraint) {
               return std::find(constraint.columns.begin(), constraint.columns.end(), column.name) !=
                      constraint.columns.end();
           });
}

} // namespace

Schema::Schema(const QString &tables, const QString &procedures)
{
    static const QRegularExpression version(u"'DatabaseVersion', N'(\\d+)'"_s);
    m_version = version.match(tables).captured(1).toInt();
    Read(tables);
    Read(procedures);
}

void Schema::Read(const QString &script)
{
    for (const tsql::ScriptBatch &batch : tsql::SplitScript(script)) {
        const tsql::Batch parsed = tsql::ParseBatch(batch.text);
        for (const tsql::StatementPtr &statement : parsed.statements)
            Take(*statement);
    }
}

void Schema::Take(const tsql::Statement &statement)
{
    using Kind = tsql::StatementKind;
    const auto takeRoutine = [&](const tsql::ObjectName &name) {
        QString text = statement.text;
        text.insert(text.indexOf(u' '), u" OR ALTER"_s);
        m_routines.push_back({u"OBJECT_ID(%1)"_s.arg(Quoted(name.Display())), text});
    };
    if (statement.kind == Kind::CreateSchema) {
        const QString number = u"SCHEMA_ID(%1)"_s.arg(Quoted(tsql::As<tsql::CreateSchemaStatement>(statement).name));
        m_schemas.push_back({number, statement.text});
    } else if (statement.kind == Kind::CreateTable) {
        TakeTable(tsql::As<tsql::CreateTableStatement>(statement));
    } else if (statement.kind == Kind::CreateIndex) {
        const auto &index = tsql::As<tsql::CreateIndexStatement>(statement);
        m_indexes.push_back(
            {u"INDEXPROPERTY(OBJECT_ID(%1), %2, 'IndexID')"_s.arg(Quoted(index.table.Display()), Quoted(index.name)),
             statement.text});
    } else if (statement.kind == Kind::CreateProcedure) {
        takeRoutine(tsql::As<tsql::CreateProcedureStatement>(statement).name);
    } else if (statement.kind == Kind::CreateFunction) {
        takeRoutine(tsql::As<tsql::CreateFunctionStatement>(statement).name);
    } else if (statement.kind == Kind::Insert) {
        m_rows << statement.text;
    }
}

void Schema::TakeTable(const tsql::CreateTableStatement &statement)
{
    Table table{statement.table.Display(), statement.text, {}};
    for (const tsql::ColumnDefinition &column : statement.columns)
        table.columns.push_back(
            {column.name, column.type,
             MayBeAdded(column, statement.constraints) ? LineOf(statement.text, column.name) : QString()});
    m_tables.push_back(std::move(table));
}

Schema::FoundTables Schema::Found(const AskDatabase &ask)
{
    FoundTables found;
    const QList<QStringList> rows =
        ask(u"SELECT TABLE_SCHEMA, TABLE_NAME, COLUMN_NAME, DATA_TYPE, CHARACTER_MAXIMUM_LENGTH, NUMERIC_PRECISION, "
            "NUMERIC_SCALE FROM INFORMATION_SCHEMA.COLUMNS"_s);
    for (const QStringList &row : rows) {
        tsql::ObjectName table;
        table.schema = row.at(0);
        table.name = row.at(1);
        found[table.KeyText()].insert(row.at(2).toCaseFolded(),
                                      {row.at(3), row.at(4).toInt(), row.at(5).toInt(), row.at(6).toInt()});
    }
    return found;
}

bool Schema::Fits(const FoundColumn &found, const tsql::SqlType &wanted)
{
    if (found.type.compare(TypeNameOf(wanted), Qt::CaseInsensitive) != 0)
        return false;
    if (wanted.IsText() || wanted.IsBinary())
        return found.length == tsql::SqlType::Max ||
               (wanted.length != tsql::SqlType::Max && found.length >= wanted.length);
    return !wanted.IsDecimal() ||
           (found.scale >= wanted.scale && found.precision - found.scale >= wanted.precision - wanted.scale);
}

QStringList Schema::AddTables(const FoundTables &found, QStringList &strange) const
{
    QStringList steps;
    for (const Table &table : m_tables) {
        const auto there = found.constFind(table.name.toCaseFolded());
        if (there == found.cend()) {
            steps << table.text;
            continue;
        }
        for (const Column &column : table.columns) {
            const auto known = there->constFind(column.name.toCaseFolded());
            if (known != there->cend() && !Fits(*known, column.type))
                strange << u"%1.%2 (%3)"_s.arg(table.name, column.name, known->type);
            else if (known == there->cend() && column.added.isEmpty())
                strange << u"%1.%2"_s.arg(table.name, column.name);
            else if (known == there->cend())
                steps << u"ALTER TABLE %1 ADD %2"_s.arg(table.name, column.added);
        }
    }
    return steps;
}

Schema::MissingParts Schema::FindMissing(const AskDatabase &ask) const
{
    QStringList numbers;
    for (const auto *kind : {&m_schemas, &m_indexes, &m_routines})
        for (const Part &part : *kind)
            numbers << u"(%1, %2)"_s.arg(numbers.size()).arg(part.number);
    MissingParts missing;
    for (const QStringList &row : ask(u"SELECT p.Place FROM (VALUES %1) AS p (Place, Number) WHERE p.Number IS NULL "
                                      "ORDER BY p.Place"_s.arg(numbers.join(u", "_s)))) {
        const size_t place = row.constFirst().toUInt();
        if (place < m_schemas.size())
            missing.schemas << m_schemas[place].text;
        else if (place < m_schemas.size() + m_indexes.size())
            missing.indexes << m_indexes[place - m_schemas.size()].text;
        else
            missing.aRoutine = true;
    }
    return missing;
}

QStringList Schema::Steps(const MissingParts &missing, const QStringList &tables) const
{
    QStringList steps = missing.schemas + tables + missing.indexes;
    for (const Part &routine : m_routines)
        steps << routine.text;
    steps += m_rows;
    if (!tables.isEmpty())
        steps << u"EXEC UpdateMogodiKala"_s; // the tables of the stock may be among them
    steps << u"UPDATE Settings SET Value = N'%1' WHERE Name = 'DatabaseVersion'"_s.arg(m_version);
    return steps;
}

SchemaDifference Schema::Compare(const AskDatabase &ask) const
{
    SchemaDifference difference;
    QStringList &strange = difference.strange;
    const FoundTables found = Found(ask);
    for (const char16_t *mark : Marks) {
        if (const auto name = QString::fromUtf16(mark); !found.contains(name.toCaseFolded()))
            strange << name;
    }
    const QStringList tables = strange.isEmpty() ? AddTables(found, strange) : QStringList();
    int version = 0;
    if (strange.filter(QRegularExpression(u"^Settings\\b"_s)).isEmpty()) {
        const QList<QStringList> kept = ask(u"SELECT Value FROM Settings WHERE Name = 'DatabaseVersion'"_s);
        version = kept.isEmpty() ? 0 : kept.constFirst().constFirst().toInt();
    }
    if (version > m_version) {
        difference.standing = SchemaStanding::Later;
    } else if (!strange.isEmpty()) {
        difference.standing = SchemaStanding::Foreign;
    } else if (const MissingParts missing = FindMissing(ask);
               version < m_version || !tables.isEmpty() || !missing.IsNone()) {
        difference.standing = SchemaStanding::Earlier;
        difference.steps = Steps(missing, tables);
    }
    return difference;
}

QString CopyBeside(const QString &file)
{
    const QFileInfo place(file);
    return u"%1/%2-%3.%4"_s.arg(place.absolutePath(), place.completeBaseName(),
                                QDateTime::currentDateTime().toString(u"yyyyMMdd-HHmmss-zzz"), place.suffix());
}

} // namespace desk
