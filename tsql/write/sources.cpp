#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr int MaxModuleDepth = 32;
constexpr char LevelColumn[] = "lvl";

/// The columns of a derived or common table can be told apart.
void RequireNames(const std::vector<ResultColumn> &columns, const QString &owner, int line)
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name.isEmpty())
            throw Error(8155, {i + 1, owner}, line);
        for (std::size_t j = 0; j < i; ++j) {
            if (SameName(columns[i].name, columns[j].name))
                throw Error(8156, {columns[i].name, owner}, line);
        }
    }
}

} // namespace

Source ShapeSource(const std::vector<ResultColumn> &columns, const QString &alias, const QString &name)
{
    Source source;
    source.name = name;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        SourceColumn column;
        column.name = columns[i].name;
        column.type = columns[i].type;
        column.nullable = columns[i].nullable;
        column.table = columns[i].table;
        column.sql = u"%1.\"c%2\""_s.arg(alias).arg(i + 1);
        source.columns.push_back(std::move(column));
    }
    return source;
}

void RenameColumns(std::vector<ResultColumn> &columns, const std::vector<QString> &names, const QString &owner,
                   int line)
{
    if (names.empty())
        return;
    if (names.size() != columns.size())
        throw Error(names.size() < columns.size() ? 8158 : 8159, {owner}, line);
    for (std::size_t i = 0; i < names.size(); ++i)
        columns[i].name = names[i];
}

Source Writer::SourceOf(const Table &table, const QString &alias, const QString &qualifier)
{
    Source source;
    source.name = alias.isEmpty() ? table.name.name : alias;
    for (const Column &definition : table.columns) {
        SourceColumn column;
        column.name = definition.name;
        column.type = definition.type;
        column.nullable = definition.nullable;
        column.table = table.name.Display();
        column.sql = (qualifier.isEmpty() ? QString() : qualifier + u'.') + QuotedName(definition.name);
        source.columns.push_back(std::move(column));
    }
    return source;
}

void Writer::AddSource(Scope &scope, Source source, int line) const
{
    for (const Source &other : scope.sources) {
        if (SameName(other.name, source.name))
            throw Error(1013, {other.name, source.name}, line);
    }
    scope.sources.push_back(std::move(source));
}

QString Writer::WriteSource(const TableSource &source, Scope &scope, const Scope *outer)
{
    switch (source.kind) {
    case TableSource::Kind::Named:
        return WriteNamed(source, scope);
    case TableSource::Kind::Function:
        return TableFunction(source, scope, outer);
    case TableSource::Kind::Derived:
        return WriteDerived(source, scope, outer);
    case TableSource::Kind::Values:
        return WriteValues(source, scope, outer);
    case TableSource::Kind::Join:
        return WriteJoin(source, scope, outer);
    }
    return {};
}

const CommonShape *Writer::FindCommon(const QString &name, const Scope &scope) const
{
    for (const Scope *level = &scope; level != nullptr; level = level->outer) {
        const auto found = level->commons.constFind(name.toCaseFolded());
        if (found != level->commons.cend())
            return &*found;
    }
    return nullptr;
}

QString Writer::WriteNamed(const TableSource &source, Scope &scope)
{
    const QString alias = NextAlias();
    const QString name = source.alias.isEmpty() ? source.name.name : source.alias;
    if (source.name.schema.isEmpty()) {
        if (const CommonShape *common = FindCommon(source.name.name, scope)) {
            AddSource(scope, ShapeSource(common->columns, alias, name), source.line);
            return u"%1 AS %2"_s.arg(common->sqliteName, alias);
        }
    }
    if (const std::shared_ptr<const Table> table = m_catalogue.FindTable(source.name)) {
        m_read.push_back(table);
        AddSource(scope, SourceOf(*table, source.alias, alias), source.line);
        return u"%1 AS %2"_s.arg(table->sqliteName, alias);
    }
    if (SameName(source.name.schema, u"INFORMATION_SCHEMA")) {
        const QueryText text = SchemaView(source.name.name);
        if (!text.columns.empty()) {
            AddSource(scope, ShapeSource(text.columns, alias, name), source.line);
            return u"(%1) AS %2"_s.arg(text.sql, alias);
        }
    }
    const std::shared_ptr<const CreateViewStatement> view = m_catalogue.FindView(source.name);
    if (!view) {
        if (source.name.name.startsWith(u'@'))
            throw Error(1087, {source.name.name}, source.line);
        throw Error(208, {source.name.Display()}, source.line);
    }
    const QHash<QString, Substitution> before = std::exchange(m_substitutions, {});
    const QueryText text = ModuleQuery(view->query, view->columns);
    m_substitutions = before;
    AddSource(scope, ShapeSource(text.columns, alias, name), source.line);
    return u"(%1) AS %2"_s.arg(text.sql, alias);
}

/// The query of a view or a function: its literals are its own and it sees no names from outside.
QueryText Writer::ModuleQuery(const Query &query, const std::vector<QString> &columns)
{
    if (++m_moduleDepth > MaxModuleDepth)
        throw Error(217, {MaxModuleDepth});
    const Constants constants(*this, true);
    QueryText text = this->WriteQuery(query, nullptr);
    RenameColumns(text.columns, columns, u"view"_s, 0);
    --m_moduleDepth;
    return text;
}

QString Writer::TableFunction(const TableSource &source, Scope &scope, const Scope *outer)
{
    const std::shared_ptr<const CreateFunctionStatement> function = m_catalogue.FindFunction(source.name);
    if (!function)
        throw Error(208, {source.name.Display()}, source.line);
    if (source.args.size() != function->parameters.size())
        throw Error(source.args.size() < function->parameters.size() ? 313 : 8144, {source.name.Display()},
                    source.line);
    static const Scope nowhere;
    QHash<QString, Substitution> substitutions;
    for (std::size_t i = 0; i < source.args.size(); ++i) {
        const ParameterDefinition &parameter = function->parameters[i];
        Substitution substitution{source.args[i].get(), parameter.type, outer != nullptr ? outer : &nowhere,
                                  m_constants};
        if (source.args[i]->kind == ExpressionKind::Default) {
            if (!parameter.defaultValue)
                throw Error(201, {source.name.Display(), parameter.name}, source.line);
            substitution = {parameter.defaultValue.get(), parameter.type, &nowhere, true};
        }
        substitutions.insert(parameter.name.toCaseFolded(), substitution);
    }
    // The arguments of the enclosing function stay reachable for arguments that mention its parameters.
    for (auto it = m_substitutions.cbegin(); it != m_substitutions.cend(); ++it) {
        if (!substitutions.contains(it.key()))
            substitutions.insert(it.key(), it.value());
    }
    const QHash<QString, Substitution> before = std::exchange(m_substitutions, substitutions);
    const QueryText text = ModuleQuery(function->query, {});
    m_substitutions = before;
    const QString alias = NextAlias();
    AddSource(scope, ShapeSource(text.columns, alias, source.alias.isEmpty() ? source.name.name : source.alias),
              source.line);
    return u"(%1) AS %2"_s.arg(text.sql, alias);
}

QString Writer::WriteDerived(const TableSource &source, Scope &scope, const Scope *outer)
{
    RefuseOrder(*source.query);
    QueryText text = WriteQuery(*source.query, outer);
    RenameColumns(text.columns, source.columnAliases, source.alias, source.line);
    RequireNames(text.columns, source.alias, source.line);
    const QString alias = NextAlias();
    AddSource(scope, ShapeSource(text.columns, alias, source.alias), source.line);
    return u"(%1) AS %2"_s.arg(text.sql, alias);
}

QString Writer::WriteValues(const TableSource &source, Scope &scope, const Scope *outer)
{
    static const Scope nowhere;
    const Scope &outside = outer != nullptr ? *outer : nowhere;
    std::vector<std::vector<Operand>> rows;
    std::vector<ResultColumn> columns(source.rows.front().size());
    for (const std::vector<ExpressionPtr> &row : source.rows) {
        std::vector<Operand> operands;
        for (std::size_t i = 0; i < row.size(); ++i) {
            operands.push_back(WriteValue(*row[i], outside));
            if (operands.back().pending && operands.back().type.IsDecimal())
                Need(*operands.back().pending, false);
            columns[i].type = CommonType(columns[i].type, operands.back().type);
        }
        rows.push_back(std::move(operands));
    }
    QStringList lines;
    for (std::vector<Operand> &row : rows) {
        QStringList cells;
        for (std::size_t i = 0; i < row.size(); ++i)
            cells += Convert(row[i], {columns[i].type, {}, {}, {}});
        lines += u"(%1)"_s.arg(cells.join(u", "_s));
    }
    QStringList outputs;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const QString collation = columns[i].type.IsText() ? u" COLLATE TSQL_CI"_s : QString();
        outputs += u"column%1%2 AS \"c%3\""_s.arg(QString::number(i + 1), collation, QString::number(i + 1));
    }
    RenameColumns(columns, source.columnAliases, source.alias, source.line);
    const QString alias = NextAlias();
    AddSource(scope, ShapeSource(columns, alias, source.alias), source.line);
    return u"(SELECT %1 FROM (VALUES %2)) AS %3"_s.arg(outputs.join(u", "_s), lines.join(u", "_s), alias);
}

QString Writer::WriteJoin(const TableSource &source, Scope &scope, const Scope *outer)
{
    const QString left = this->WriteSource(*source.left, scope, outer);
    QString right = this->WriteSource(*source.right, scope, outer);
    if (source.right->kind == TableSource::Kind::Join)
        right = u"(%1)"_s.arg(right);
    QString word;
    switch (source.join) {
    case JoinKind::Inner:
    case JoinKind::Cross: // SQLite's own CROSS JOIN would fix the order of the loops
        word = u" JOIN "_s;
        break;
    case JoinKind::Left:
        word = u" LEFT JOIN "_s;
        break;
    case JoinKind::Right:
        word = u" RIGHT JOIN "_s;
        break;
    case JoinKind::Full:
        word = u" FULL JOIN "_s;
        break;
    }
    QString text = left + word + right;
    if (source.on)
        text += u" ON "_s + ConditionText(*source.on, scope);
    return text;
}

bool Writer::RefersTo(const TableSource &source, const QString &name)
{
    switch (source.kind) {
    case TableSource::Kind::Named:
        return source.name.schema.isEmpty() && SameName(source.name.name, name);
    case TableSource::Kind::Join:
        return RefersTo(*source.left, name) || RefersTo(*source.right, name);
    case TableSource::Kind::Derived:
        return RefersTo(*source.query->body, name);
    case TableSource::Kind::Function:
    case TableSource::Kind::Values:
        return false;
    }
    Q_UNREACHABLE();
}

bool Writer::RefersTo(const QueryBody &body, const QString &name)
{
    if (body.core)
        return body.core->from && RefersTo(*body.core->from, name);
    return RefersTo(*body.left, name) || RefersTo(*body.right, name);
}

/// A common table that reads itself: the types of its first part hold for all of it.
QueryText Writer::RecursiveText(const CommonTable &table, const Scope &scope)
{
    const Compiled before = m_out;
    std::vector<CorePlan> plans;
    PlanBody(*table.query->body->left, &scope, plans);
    std::vector<Target> targets = OutputTargets(plans, nullptr, table.query->line);
    std::vector<ResultColumn> columns;
    for (std::size_t i = 0; i < targets.size(); ++i)
        columns.push_back({plans.front().names[i], targets[i].type, true, {}});
    RenameColumns(columns, table.columns, table.name, table.query->line);
    m_out = before;
    Scope inner = scope;
    inner.commons.insert(table.name.toCaseFolded(), {QuotedName(table.name.toCaseFolded()), columns});
    std::vector<CorePlan> all;
    PlanBody(*table.query->body, &inner, all);
    OutputTargets(all, &targets, table.query->line);
    for (CorePlan &plan : all)
        plan.level = u"0"_s;
    all.back().level = LevelText(table, all.back());
    std::size_t next = 0;
    return {BodyText(*table.query->body, all, next, targets), columns};
}

/// The level of a row that follows from one of the step before; too deep a one is refused.
QString Writer::LevelText(const CommonTable &table, const CorePlan &plan) const
{
    const QString common = QuotedName(table.name.toCaseFolded()) + u" AS "_s;
    const qsizetype at = plan.from.indexOf(common);
    if (at < 0)
        throw NotSupported(u"a recursive reference to '%1' inside a subquery"_s.arg(table.name), table.query->line);
    static const QRegularExpression alias(u"t\\d+"_s);
    const QString source = alias.match(plan.from, at + common.size()).captured();
    return u"next_level(%1.%2, %3)"_s.arg(source, QLatin1String(LevelColumn), QString::number(m_maxRecursion));
}

QString Writer::CommonTables(const std::vector<CommonTable> &tables, Scope &scope)
{
    if (tables.empty())
        return {};
    QStringList parts;
    bool recursive = false;
    for (const CommonTable &table : tables) {
        RefuseOrder(*table.query);
        const bool self = !table.query->body->core && RefersTo(*table.query->body, table.name);
        if (self && table.query->body->op != SetOperator::UnionAll)
            throw Error(252, {table.name});
        recursive = recursive || self;
        QueryText text = self ? RecursiveText(table, scope) : WriteQuery(*table.query, &scope);
        RenameColumns(text.columns, table.columns, table.name, table.query->line);
        CommonShape shape{QuotedName(table.name.toCaseFolded()), text.columns};
        QStringList columns;
        for (std::size_t i = 0; i < text.columns.size(); ++i)
            columns += u"\"c%1\""_s.arg(i + 1);
        if (self)
            columns += QLatin1String(LevelColumn);
        RequireNames(text.columns, table.name, table.query->line);
        parts += u"%1(%2) AS (%3)"_s.arg(shape.sqliteName, columns.join(u", "_s), text.sql);
        scope.commons.insert(table.name.toCaseFolded(), shape);
    }
    return (recursive ? u"WITH RECURSIVE "_s : u"WITH "_s) + parts.join(u", "_s) + u' ';
}

} // namespace tsql
