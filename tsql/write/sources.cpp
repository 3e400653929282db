#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr int MaxModuleDepth = 32;
constexpr char LevelColumn[] = "lvl";

/// The columns of a derived or common table can be told apart.
void requireNames(const std::vector<ResultColumn> &columns, const QString &owner, int line)
{
    for (std::size_t i = 0; i < columns.size(); ++i) {
        if (columns[i].name.isEmpty())
            throw Error(8155, {i + 1, owner}, line);
        for (std::size_t j = 0; j < i; ++j) {
            if (sameName(columns[i].name, columns[j].name))
                throw Error(8156, {columns[i].name, owner}, line);
        }
    }
}

} // namespace

Source shapeSource(const std::vector<ResultColumn> &columns, const QString &alias, const QString &name)
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

void renameColumns(std::vector<ResultColumn> &columns, const std::vector<QString> &names, const QString &owner,
                   int line)
{
    if (names.empty())
        return;
    if (names.size() != columns.size())
        throw Error(names.size() < columns.size() ? 8158 : 8159, {owner}, line);
    for (std::size_t i = 0; i < names.size(); ++i)
        columns[i].name = names[i];
}

Source Writer::tableSource(const Table &table, const QString &alias, const QString &qualifier)
{
    Source source;
    source.name = alias.isEmpty() ? table.name.name : alias;
    for (const Column &definition : table.columns) {
        SourceColumn column;
        column.name = definition.name;
        column.type = definition.type;
        column.nullable = definition.nullable;
        column.table = table.name.display();
        column.sql = (qualifier.isEmpty() ? QString() : qualifier + u'.') + quotedName(definition.name);
        source.columns.push_back(std::move(column));
    }
    return source;
}

void Writer::addSource(Scope &scope, Source source, int line) const
{
    for (const Source &other : scope.sources) {
        if (sameName(other.name, source.name))
            throw Error(1013, {other.name, source.name}, line);
    }
    scope.sources.push_back(std::move(source));
}

QString Writer::source(const TableSource &source, Scope &scope, const Scope *outer)
{
    switch (source.kind) {
    case TableSource::Kind::Named:
        return named(source, scope);
    case TableSource::Kind::Function:
        return tableFunction(source, scope, outer);
    case TableSource::Kind::Derived:
        return derived(source, scope, outer);
    case TableSource::Kind::Values:
        return values(source, scope, outer);
    case TableSource::Kind::Join:
        return join(source, scope, outer);
    }
    return {};
}

const CommonShape *Writer::findCommon(const QString &name, const Scope &scope) const
{
    for (const Scope *level = &scope; level != nullptr; level = level->outer) {
        const auto found = level->commons.constFind(name.toCaseFolded());
        if (found != level->commons.cend())
            return &*found;
    }
    return nullptr;
}

QString Writer::named(const TableSource &source, Scope &scope)
{
    const QString alias = nextAlias();
    const QString name = source.alias.isEmpty() ? source.name.name : source.alias;
    if (source.name.schema.isEmpty()) {
        if (const CommonShape *common = findCommon(source.name.name, scope)) {
            addSource(scope, shapeSource(common->columns, alias, name), source.line);
            return u"%1 AS %2"_s.arg(common->sqliteName, alias);
        }
    }
    if (const std::shared_ptr<const Table> table = m_catalogue.table(source.name)) {
        m_read.push_back(table);
        addSource(scope, tableSource(*table, source.alias, alias), source.line);
        return u"%1 AS %2"_s.arg(table->sqliteName, alias);
    }
    if (sameName(source.name.schema, u"INFORMATION_SCHEMA")) {
        const QueryText text = schemaView(source.name.name);
        if (!text.columns.empty()) {
            addSource(scope, shapeSource(text.columns, alias, name), source.line);
            return u"(%1) AS %2"_s.arg(text.sql, alias);
        }
    }
    const std::shared_ptr<const CreateViewStatement> view = m_catalogue.view(source.name);
    if (!view) {
        if (source.name.name.startsWith(u'@'))
            throw Error(1087, {source.name.name}, source.line);
        throw Error(208, {source.name.display()}, source.line);
    }
    const QHash<QString, Substitution> before = std::exchange(m_substitutions, {});
    const QueryText text = moduleQuery(view->query, view->columns);
    m_substitutions = before;
    addSource(scope, shapeSource(text.columns, alias, name), source.line);
    return u"(%1) AS %2"_s.arg(text.sql, alias);
}

/// The query of a view or a function: its literals are its own and it sees no names from outside.
QueryText Writer::moduleQuery(const Query &query, const std::vector<QString> &columns)
{
    if (++m_moduleDepth > MaxModuleDepth)
        throw Error(217, {MaxModuleDepth});
    const Constants constants(*this, true);
    QueryText text = this->query(query, nullptr);
    renameColumns(text.columns, columns, u"view"_s, 0);
    --m_moduleDepth;
    return text;
}

QString Writer::tableFunction(const TableSource &source, Scope &scope, const Scope *outer)
{
    const std::shared_ptr<const CreateFunctionStatement> function = m_catalogue.function(source.name);
    if (!function)
        throw Error(208, {source.name.display()}, source.line);
    if (source.args.size() != function->parameters.size())
        throw Error(source.args.size() < function->parameters.size() ? 313 : 8144, {source.name.display()},
                    source.line);
    static const Scope nowhere;
    QHash<QString, Substitution> substitutions;
    for (std::size_t i = 0; i < source.args.size(); ++i) {
        const ParameterDefinition &parameter = function->parameters[i];
        Substitution substitution{source.args[i].get(), parameter.type, outer != nullptr ? outer : &nowhere,
                                  m_constants};
        if (source.args[i]->kind == ExpressionKind::Default) {
            if (!parameter.defaultValue)
                throw Error(201, {source.name.display(), parameter.name}, source.line);
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
    const QueryText text = moduleQuery(function->query, {});
    m_substitutions = before;
    const QString alias = nextAlias();
    addSource(scope, shapeSource(text.columns, alias, source.alias.isEmpty() ? source.name.name : source.alias),
              source.line);
    return u"(%1) AS %2"_s.arg(text.sql, alias);
}

QString Writer::derived(const TableSource &source, Scope &scope, const Scope *outer)
{
    refuseOrder(*source.query);
    QueryText text = query(*source.query, outer);
    renameColumns(text.columns, source.columnAliases, source.alias, source.line);
    requireNames(text.columns, source.alias, source.line);
    const QString alias = nextAlias();
    addSource(scope, shapeSource(text.columns, alias, source.alias), source.line);
    return u"(%1) AS %2"_s.arg(text.sql, alias);
}

QString Writer::values(const TableSource &source, Scope &scope, const Scope *outer)
{
    static const Scope nowhere;
    const Scope &outside = outer != nullptr ? *outer : nowhere;
    std::vector<std::vector<Operand>> rows;
    std::vector<ResultColumn> columns(source.rows.front().size());
    for (const std::vector<ExpressionPtr> &row : source.rows) {
        std::vector<Operand> operands;
        for (std::size_t i = 0; i < row.size(); ++i) {
            operands.push_back(value(*row[i], outside));
            if (operands.back().pending && operands.back().type.isDecimal())
                need(*operands.back().pending, false);
            columns[i].type = commonType(columns[i].type, operands.back().type);
        }
        rows.push_back(std::move(operands));
    }
    QStringList lines;
    for (std::vector<Operand> &row : rows) {
        QStringList cells;
        for (std::size_t i = 0; i < row.size(); ++i)
            cells += convert(row[i], {columns[i].type, {}, {}, {}});
        lines += u"(%1)"_s.arg(cells.join(u", "_s));
    }
    QStringList outputs;
    for (std::size_t i = 0; i < columns.size(); ++i) {
        const QString collation = columns[i].type.isText() ? u" COLLATE TSQL_CI"_s : QString();
        outputs += u"column%1%2 AS \"c%3\""_s.arg(QString::number(i + 1), collation, QString::number(i + 1));
    }
    renameColumns(columns, source.columnAliases, source.alias, source.line);
    const QString alias = nextAlias();
    addSource(scope, shapeSource(columns, alias, source.alias), source.line);
    return u"(SELECT %1 FROM (VALUES %2)) AS %3"_s.arg(outputs.join(u", "_s), lines.join(u", "_s), alias);
}

QString Writer::join(const TableSource &source, Scope &scope, const Scope *outer)
{
    const QString left = this->source(*source.left, scope, outer);
    QString right = this->source(*source.right, scope, outer);
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
        text += u" ON "_s + conditionText(*source.on, scope);
    return text;
}

bool Writer::refersTo(const TableSource &source, const QString &name)
{
    switch (source.kind) {
    case TableSource::Kind::Named:
        return source.name.schema.isEmpty() && sameName(source.name.name, name);
    case TableSource::Kind::Join:
        return refersTo(*source.left, name) || refersTo(*source.right, name);
    case TableSource::Kind::Derived:
        return refersTo(*source.query->body, name);
    case TableSource::Kind::Function:
    case TableSource::Kind::Values:
        return false;
    }
    Q_UNREACHABLE();
}

bool Writer::refersTo(const QueryBody &body, const QString &name)
{
    if (body.core)
        return body.core->from && refersTo(*body.core->from, name);
    return refersTo(*body.left, name) || refersTo(*body.right, name);
}

/// A common table that reads itself: the types of its first part hold for all of it.
QueryText Writer::recursiveText(const CommonTable &table, const Scope &scope)
{
    const Compiled before = m_out;
    std::vector<CorePlan> plans;
    planBody(*table.query->body->left, &scope, plans);
    std::vector<Target> targets = outputTargets(plans, nullptr, table.query->line);
    std::vector<ResultColumn> columns;
    for (std::size_t i = 0; i < targets.size(); ++i)
        columns.push_back({plans.front().names[i], targets[i].type, true, {}});
    renameColumns(columns, table.columns, table.name, table.query->line);
    m_out = before;
    Scope inner = scope;
    inner.commons.insert(table.name.toCaseFolded(), {quotedName(table.name.toCaseFolded()), columns});
    std::vector<CorePlan> all;
    planBody(*table.query->body, &inner, all);
    outputTargets(all, &targets, table.query->line);
    for (CorePlan &plan : all)
        plan.level = u"0"_s;
    all.back().level = levelText(table, all.back());
    std::size_t next = 0;
    return {bodyText(*table.query->body, all, next, targets), columns};
}

/// The level of a row that follows from one of the step before; too deep a one is refused.
QString Writer::levelText(const CommonTable &table, const CorePlan &plan) const
{
    const QString common = quotedName(table.name.toCaseFolded()) + u" AS "_s;
    const qsizetype at = plan.from.indexOf(common);
    if (at < 0)
        throw notSupported(u"a recursive reference to '%1' inside a subquery"_s.arg(table.name), table.query->line);
    static const QRegularExpression alias(u"t\\d+"_s);
    const QString source = alias.match(plan.from, at + common.size()).captured();
    return u"next_level(%1.%2, %3)"_s.arg(source, QLatin1String(LevelColumn), QString::number(m_maxRecursion));
}

QString Writer::commonTables(const std::vector<CommonTable> &tables, Scope &scope)
{
    if (tables.empty())
        return {};
    QStringList parts;
    bool recursive = false;
    for (const CommonTable &table : tables) {
        refuseOrder(*table.query);
        const bool self = !table.query->body->core && refersTo(*table.query->body, table.name);
        if (self && table.query->body->op != SetOperator::UnionAll)
            throw Error(252, {table.name});
        recursive = recursive || self;
        QueryText text = self ? recursiveText(table, scope) : query(*table.query, &scope);
        renameColumns(text.columns, table.columns, table.name, table.query->line);
        CommonShape shape{quotedName(table.name.toCaseFolded()), text.columns};
        QStringList columns;
        for (std::size_t i = 0; i < text.columns.size(); ++i)
            columns += u"\"c%1\""_s.arg(i + 1);
        if (self)
            columns += QLatin1String(LevelColumn);
        requireNames(text.columns, table.name, table.query->line);
        parts += u"%1(%2) AS (%3)"_s.arg(shape.sqliteName, columns.join(u", "_s), text.sql);
        scope.commons.insert(table.name.toCaseFolded(), shape);
    }
    return (recursive ? u"WITH RECURSIVE "_s : u"WITH "_s) + parts.join(u", "_s) + u' ';
}

} // namespace tsql
