#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace tsql {

StatementPtr Parser::createStatement()
{
    expect(QLatin1String("CREATE"));
    bool replace = false;
    if (accept(QLatin1String("OR"))) {
        expect(QLatin1String("ALTER"));
        replace = true;
    }
    if (at(QLatin1String("VIEW")))
        return createView(replace);
    if (at(QLatin1String("PROCEDURE")) || at(QLatin1String("PROC")))
        return createProcedure(replace);
    if (at(QLatin1String("FUNCTION")))
        return createFunction(replace);
    if (replace)
        refuse();
    if (at(QLatin1String("TABLE")))
        return createTable();
    if (at(QLatin1String("INDEX")) || at(QLatin1String("UNIQUE")) || at(QLatin1String("CLUSTERED")) ||
        at(QLatin1String("NONCLUSTERED")))
        return createIndex();
    if (accept(QLatin1String("SCHEMA"))) {
        auto result = std::make_unique<CreateSchemaStatement>();
        result->name = name();
        return result;
    }
    unsupported(u"CREATE "_s + peek().text.toUpper());
}

StatementPtr Parser::alterStatement()
{
    expect(QLatin1String("ALTER"));
    if (at(QLatin1String("TABLE")))
        return alterTable();
    if (at(QLatin1String("VIEW")))
        return createView(true);
    if (at(QLatin1String("PROCEDURE")) || at(QLatin1String("PROC")))
        return createProcedure(true);
    if (at(QLatin1String("FUNCTION")))
        return createFunction(true);
    unsupported(u"ALTER "_s + peek().text.toUpper());
}

StatementPtr Parser::createTable()
{
    take();
    auto result = std::make_unique<CreateTableStatement>();
    result->table = objectName();
    tableElements(*result);
    if (accept(QLatin1String("ON"))) {
        name(); // a file group
        if (at(QLatin1String("TEXTIMAGE_ON"))) {
            take();
            name();
        }
    }
    return result;
}

void Parser::tableElements(CreateTableStatement &table)
{
    expectSymbol(QLatin1String("("));
    do {
        if (atSymbol(QLatin1String(")")))
            break; // a comma may end the list
        tableElement(table.columns, table.constraints);
    } while (acceptSymbol(QLatin1String(",")));
    expectSymbol(QLatin1String(")"));
    if (table.columns.empty())
        refuse();
}

bool Parser::atConstraint() const
{
    return at(QLatin1String("CONSTRAINT")) || at(QLatin1String("PRIMARY")) || at(QLatin1String("UNIQUE")) ||
           at(QLatin1String("CHECK")) || at(QLatin1String("FOREIGN"));
}

void Parser::tableElement(std::vector<ColumnDefinition> &columns, std::vector<TableConstraint> &constraints)
{
    if (at(QLatin1String("INDEX")))
        unsupported(u"INDEX inside CREATE TABLE"_s);
    if (atConstraint())
        constraints.push_back(constraint({}));
    else
        columnDefinition(columns, constraints);
}

void Parser::identity(ColumnDefinition &column)
{
    column.identity = true;
    column.nullable = false;
    if (!acceptSymbol(QLatin1String("(")))
        return;
    column.seed = fixedInteger();
    expectSymbol(QLatin1String(","));
    column.increment = fixedInteger();
    expectSymbol(QLatin1String(")"));
    if (column.seed < 1 || column.increment != 1)
        unsupported(u"IDENTITY with a seed below 1 or an increment other than 1"_s);
}

void Parser::columnDefinition(std::vector<ColumnDefinition> &columns, std::vector<TableConstraint> &constraints)
{
    ColumnDefinition column;
    column.name = name();
    if (at(QLatin1String("AS")))
        unsupported(u"computed columns"_s);
    column.type = type();
    if ((column.type.isText() || column.type.isBinary()) && column.type.length == 0)
        column.type.length = 1;
    for (;;) {
        if (accept(QLatin1String("NULL"))) {
            column.nullable = true;
        } else if (at(QLatin1String("NOT")) && at(QLatin1String("NULL"), 1)) {
            m_pos += 2;
            column.nullable = false;
        } else if (accept(QLatin1String("IDENTITY"))) {
            identity(column);
        } else if (accept(QLatin1String("COLLATE"))) {
            column.collation = name();
        } else if (at(QLatin1String("ROWGUIDCOL"))) {
            take();
        } else if (at(QLatin1String("CONSTRAINT")) && at(QLatin1String("DEFAULT"), 2)) {
            take();
            name();
        } else if (accept(QLatin1String("DEFAULT"))) {
            column.defaultValue = value();
        } else if (atConstraint() || at(QLatin1String("REFERENCES"))) {
            constraints.push_back(constraint(column.name));
            if (constraints.back().kind == TableConstraint::Kind::PrimaryKey)
                column.nullable = false;
        } else {
            break;
        }
    }
    columns.push_back(std::move(column));
}

void Parser::keyColumns(TableConstraint &constraint)
{
    if (!accept(QLatin1String("CLUSTERED")))
        accept(QLatin1String("NONCLUSTERED"));
    if (acceptSymbol(QLatin1String("("))) {
        constraint.columns.clear();
        do {
            constraint.columns.push_back(name());
            if (!accept(QLatin1String("ASC")))
                accept(QLatin1String("DESC"));
        } while (acceptSymbol(QLatin1String(",")));
        expectSymbol(QLatin1String(")"));
    }
    if (constraint.columns.empty())
        refuse();
    skipIndexOptions();
}

KeyAction Parser::keyAction()
{
    if (accept(QLatin1String("CASCADE")))
        return KeyAction::Cascade;
    if (accept(QLatin1String("SET"))) {
        if (accept(QLatin1String("NULL")))
            return KeyAction::SetNull;
        expect(QLatin1String("DEFAULT"));
        return KeyAction::SetDefault;
    }
    if (!at(QLatin1String("NO")))
        refuse();
    take();
    if (!at(QLatin1String("ACTION")))
        refuse();
    take();
    return KeyAction::NoAction;
}

void Parser::foreignKey(TableConstraint &constraint)
{
    constraint.kind = TableConstraint::Kind::ForeignKey;
    constraint.foreignKey.columns = constraint.columns;
    expect(QLatin1String("REFERENCES"));
    constraint.foreignKey.table = objectName();
    if (atSymbol(QLatin1String("(")))
        constraint.foreignKey.targets = nameList();
    while (accept(QLatin1String("ON"))) {
        const bool onDelete = at(QLatin1String("DELETE"));
        if (!onDelete && !at(QLatin1String("UPDATE")))
            refuse();
        take();
        (onDelete ? constraint.foreignKey.onDelete : constraint.foreignKey.onUpdate) = keyAction();
    }
}

TableConstraint Parser::constraint(const QString &forColumn)
{
    TableConstraint result;
    if (accept(QLatin1String("CONSTRAINT")))
        result.name = name();
    if (!forColumn.isEmpty())
        result.columns = {forColumn};
    if (accept(QLatin1String("PRIMARY"))) {
        expect(QLatin1String("KEY"));
        result.kind = TableConstraint::Kind::PrimaryKey;
        keyColumns(result);
    } else if (accept(QLatin1String("UNIQUE"))) {
        result.kind = TableConstraint::Kind::Unique;
        keyColumns(result);
    } else if (accept(QLatin1String("CHECK"))) {
        result.kind = TableConstraint::Kind::Check;
        expectSymbol(QLatin1String("("));
        result.value = condition();
        expectSymbol(QLatin1String(")"));
    } else if (accept(QLatin1String("FOREIGN"))) {
        expect(QLatin1String("KEY"));
        if (atSymbol(QLatin1String("(")))
            result.columns = nameList();
        foreignKey(result);
    } else if (at(QLatin1String("REFERENCES"))) {
        foreignKey(result);
    } else if (accept(QLatin1String("DEFAULT"))) {
        result.kind = TableConstraint::Kind::Default;
        result.value = value();
        expect(QLatin1String("FOR"));
        result.columns = {name()};
    } else {
        refuse();
    }
    return result;
}

/// WITH (PAD_INDEX = OFF, …) ON [PRIMARY]: how the server would store it.
void Parser::skipIndexOptions()
{
    if (at(QLatin1String("WITH")) && atSymbol(QLatin1String("("), 1)) {
        while (!atSymbol(QLatin1String(")"))) {
            if (atEnd())
                refuse();
            take();
        }
        take();
    }
    if (at(QLatin1String("ON")) && atName(1)) {
        take();
        name();
    }
}

StatementPtr Parser::createIndex()
{
    auto result = std::make_unique<CreateIndexStatement>();
    result->unique = accept(QLatin1String("UNIQUE"));
    if (!accept(QLatin1String("CLUSTERED")))
        accept(QLatin1String("NONCLUSTERED"));
    expect(QLatin1String("INDEX"));
    result->name = name();
    expect(QLatin1String("ON"));
    result->table = objectName();
    expectSymbol(QLatin1String("("));
    result->columns = orderItems();
    expectSymbol(QLatin1String(")"));
    for (const OrderItem &item : result->columns) {
        if (item.value->kind != ExpressionKind::Column)
            refuse();
    }
    if (at(QLatin1String("INCLUDE"))) {
        take();
        result->include = nameList();
    }
    if (accept(QLatin1String("WHERE")))
        result->where = condition();
    skipIndexOptions();
    return result;
}

StatementPtr Parser::createView(bool replace)
{
    take();
    auto result = std::make_unique<CreateViewStatement>();
    result->replace = replace;
    result->name = objectName();
    if (atSymbol(QLatin1String("(")))
        result->columns = nameList();
    skipModuleOptions();
    expect(QLatin1String("AS"));
    result->query = query();
    if (at(QLatin1String("WITH")))
        unsupported(u"WITH CHECK OPTION"_s);
    if (acceptSymbol(QLatin1String(";")) || atEnd())
        return result;
    refuse();
}

/// WITH SCHEMABINDING, RECOMPILE …
void Parser::skipModuleOptions()
{
    if (!accept(QLatin1String("WITH")))
        return;
    do {
        if (!at(QLatin1String("SCHEMABINDING")) && !at(QLatin1String("RECOMPILE")))
            unsupported(u"WITH "_s + peek().text);
        take();
    } while (acceptSymbol(QLatin1String(",")));
}

std::vector<ParameterDefinition> Parser::parameters()
{
    std::vector<ParameterDefinition> result;
    if (peek().kind != TokenKind::Variable)
        return result;
    do {
        ParameterDefinition parameter;
        if (peek().kind != TokenKind::Variable)
            refuse();
        parameter.name = take().text;
        accept(QLatin1String("AS"));
        parameter.type = type();
        if ((parameter.type.isText() || parameter.type.isBinary()) && parameter.type.length == 0)
            parameter.type.length = 1;
        if (acceptSymbol(QLatin1String("=")))
            parameter.defaultValue = unary();
        parameter.output = accept(QLatin1String("OUTPUT")) || accept(QLatin1String("OUT"));
        result.push_back(std::move(parameter));
    } while (acceptSymbol(QLatin1String(",")));
    return result;
}

StatementPtr Parser::createProcedure(bool replace)
{
    take();
    auto result = std::make_unique<CreateProcedureStatement>();
    result->replace = replace;
    result->name = objectName();
    if (acceptSymbol(QLatin1String("("))) {
        result->parameters = parameters();
        expectSymbol(QLatin1String(")"));
    } else {
        result->parameters = parameters();
    }
    skipModuleOptions();
    expect(QLatin1String("AS"));
    while (!atEnd())
        result->body.push_back(statement());
    if (result->body.empty())
        refuse();
    return result;
}

StatementPtr Parser::createFunction(bool replace)
{
    take();
    auto result = std::make_unique<CreateFunctionStatement>();
    result->replace = replace;
    result->name = objectName();
    expectSymbol(QLatin1String("("));
    result->parameters = parameters();
    expectSymbol(QLatin1String(")"));
    if (!at(QLatin1String("RETURNS")))
        refuse();
    take();
    if (!at(QLatin1String("TABLE")))
        unsupported(u"functions other than RETURNS TABLE AS RETURN"_s);
    take();
    skipModuleOptions();
    accept(QLatin1String("AS"));
    expect(QLatin1String("RETURN"));
    if (atSymbol(QLatin1String("(")))
        result->query = std::move(*subquery());
    else
        result->query = query();
    return result;
}

StatementPtr Parser::alterTable()
{
    take();
    auto result = std::make_unique<AlterTableStatement>();
    result->table = objectName();
    if (accept(QLatin1String("ADD"))) {
        do {
            tableElement(result->columns, result->constraints);
        } while (acceptSymbol(QLatin1String(",")));
        return result;
    }
    if (accept(QLatin1String("DROP"))) {
        const bool column = accept(QLatin1String("COLUMN"));
        if (!column)
            accept(QLatin1String("CONSTRAINT"));
        result->action = column ? AlterTableStatement::Action::DropColumn : AlterTableStatement::Action::DropConstraint;
        do {
            result->names.push_back(name());
        } while (acceptSymbol(QLatin1String(",")));
        return result;
    }
    unsupported(u"ALTER TABLE … "_s + peek().text.toUpper());
}

StatementPtr Parser::dropStatement()
{
    using What = DropStatement::What;
    static const QHash<QString, What> kinds = {
        {u"TABLE"_s, What::Table},    {u"VIEW"_s, What::View},   {u"PROCEDURE"_s, What::Procedure},
        {u"PROC"_s, What::Procedure}, {u"INDEX"_s, What::Index}, {u"FUNCTION"_s, What::Function},
        {u"SCHEMA"_s, What::Schema},
    };
    take();
    auto result = std::make_unique<DropStatement>();
    const auto found = kinds.constFind(peek().text.toUpper());
    if (found == kinds.cend())
        unsupported(u"DROP "_s + peek().text.toUpper());
    take();
    result->what = *found;
    if (at(QLatin1String("IF"))) {
        take();
        expect(QLatin1String("EXISTS"));
        result->ifExists = true;
    }
    do {
        result->names.push_back(objectName());
    } while (acceptSymbol(QLatin1String(",")));
    if (result->what == What::Index) {
        if (accept(QLatin1String("ON"))) {
            result->onTable = objectName();
        } else {
            // the old form: DROP INDEX table.index
            ObjectName &index = result->names.front();
            if (index.schema.isEmpty())
                refuse();
            result->onTable.name = index.schema;
            index.schema.clear();
        }
    }
    return result;
}

} // namespace tsql
