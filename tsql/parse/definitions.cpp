#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

#include <QHash>

using namespace Qt::StringLiterals;

namespace tsql {

StatementPtr Parser::CreateStatement()
{
    Expect(QLatin1String("CREATE"));
    bool replace = false;
    if (Accept(QLatin1String("OR"))) {
        Expect(QLatin1String("ALTER"));
        replace = true;
    }
    if (At(QLatin1String("VIEW")))
        return ParseCreateView(replace);
    if (At(QLatin1String("PROCEDURE")) || At(QLatin1String("PROC")))
        return ParseCreateProcedure(replace);
    if (At(QLatin1String("FUNCTION")))
        return ParseCreateFunction(replace);
    if (replace)
        Refuse();
    if (At(QLatin1String("TABLE")))
        return ParseCreateTable();
    if (At(QLatin1String("INDEX")) || At(QLatin1String("UNIQUE")) || At(QLatin1String("CLUSTERED")) ||
        At(QLatin1String("NONCLUSTERED")))
        return ParseCreateIndex();
    if (Accept(QLatin1String("SCHEMA"))) {
        auto result = std::make_unique<CreateSchemaStatement>();
        result->name = Name();
        return result;
    }
    Unsupported(u"CREATE "_s + Peek().text.toUpper());
}

StatementPtr Parser::AlterStatement()
{
    Expect(QLatin1String("ALTER"));
    if (At(QLatin1String("TABLE")))
        return ParseAlterTable();
    if (At(QLatin1String("VIEW")))
        return ParseCreateView(true);
    if (At(QLatin1String("PROCEDURE")) || At(QLatin1String("PROC")))
        return ParseCreateProcedure(true);
    if (At(QLatin1String("FUNCTION")))
        return ParseCreateFunction(true);
    Unsupported(u"ALTER "_s + Peek().text.toUpper());
}

StatementPtr Parser::ParseCreateTable()
{
    Take();
    auto result = std::make_unique<CreateTableStatement>();
    result->table = ParseObjectName();
    TableElements(*result);
    if (Accept(QLatin1String("ON"))) {
        Name(); // a file group
        if (At(QLatin1String("TEXTIMAGE_ON"))) {
            Take();
            Name();
        }
    }
    return result;
}

void Parser::TableElements(CreateTableStatement &table)
{
    ExpectSymbol(QLatin1String("("));
    do {
        if (AtSymbol(QLatin1String(")")))
            break; // a comma may end the list
        TableElement(table.columns, table.constraints);
    } while (AcceptSymbol(QLatin1String(",")));
    ExpectSymbol(QLatin1String(")"));
    if (table.columns.empty())
        Refuse();
}

bool Parser::AtConstraint() const
{
    return At(QLatin1String("CONSTRAINT")) || At(QLatin1String("PRIMARY")) || At(QLatin1String("UNIQUE")) ||
           At(QLatin1String("CHECK")) || At(QLatin1String("FOREIGN"));
}

void Parser::TableElement(std::vector<ColumnDefinition> &columns, std::vector<TableConstraint> &constraints)
{
    if (At(QLatin1String("INDEX")))
        Unsupported(u"INDEX inside CREATE TABLE"_s);
    if (AtConstraint())
        constraints.push_back(Constraint({}));
    else
        ParseColumnDefinition(columns, constraints);
}

void Parser::Identity(ColumnDefinition &column)
{
    column.identity = true;
    column.nullable = false;
    if (!AcceptSymbol(QLatin1String("(")))
        return;
    column.seed = FixedInteger();
    ExpectSymbol(QLatin1String(","));
    column.increment = FixedInteger();
    ExpectSymbol(QLatin1String(")"));
    if (column.seed < 1 || column.increment != 1)
        Unsupported(u"IDENTITY with a seed below 1 or an increment other than 1"_s);
}

void Parser::ParseColumnDefinition(std::vector<ColumnDefinition> &columns, std::vector<TableConstraint> &constraints)
{
    ColumnDefinition column;
    column.name = Name();
    if (At(QLatin1String("AS")))
        Unsupported(u"computed columns"_s);
    column.type = Type();
    if ((column.type.IsText() || column.type.IsBinary()) && column.type.length == 0)
        column.type.length = 1;
    for (;;) {
        if (Accept(QLatin1String("NULL"))) {
            column.nullable = true;
        } else if (At(QLatin1String("NOT")) && At(QLatin1String("NULL"), 1)) {
            m_pos += 2;
            column.nullable = false;
        } else if (Accept(QLatin1String("IDENTITY"))) {
            Identity(column);
        } else if (Accept(QLatin1String("COLLATE"))) {
            column.collation = Name();
        } else if (At(QLatin1String("ROWGUIDCOL"))) {
            Take();
        } else if (At(QLatin1String("CONSTRAINT")) && At(QLatin1String("DEFAULT"), 2)) {
            Take();
            Name();
        } else if (Accept(QLatin1String("DEFAULT"))) {
            column.defaultValue = ParseValue();
        } else if (AtConstraint() || At(QLatin1String("REFERENCES"))) {
            constraints.push_back(Constraint(column.name));
            if (constraints.back().kind == TableConstraint::Kind::PrimaryKey)
                column.nullable = false;
        } else {
            break;
        }
    }
    columns.push_back(std::move(column));
}

void Parser::KeyColumns(TableConstraint &constraint)
{
    if (!Accept(QLatin1String("CLUSTERED")))
        Accept(QLatin1String("NONCLUSTERED"));
    if (AcceptSymbol(QLatin1String("("))) {
        constraint.columns.clear();
        do {
            constraint.columns.push_back(Name());
            if (!Accept(QLatin1String("ASC")))
                Accept(QLatin1String("DESC"));
        } while (AcceptSymbol(QLatin1String(",")));
        ExpectSymbol(QLatin1String(")"));
    }
    if (constraint.columns.empty())
        Refuse();
    SkipIndexOptions();
}

KeyAction Parser::ParseKeyAction()
{
    if (Accept(QLatin1String("CASCADE")))
        return KeyAction::Cascade;
    if (Accept(QLatin1String("SET"))) {
        if (Accept(QLatin1String("NULL")))
            return KeyAction::SetNull;
        Expect(QLatin1String("DEFAULT"));
        return KeyAction::SetDefault;
    }
    if (!At(QLatin1String("NO")))
        Refuse();
    Take();
    if (!At(QLatin1String("ACTION")))
        Refuse();
    Take();
    return KeyAction::NoAction;
}

void Parser::ParseForeignKey(TableConstraint &constraint)
{
    constraint.kind = TableConstraint::Kind::ForeignKey;
    constraint.foreignKey.columns = constraint.columns;
    Expect(QLatin1String("REFERENCES"));
    constraint.foreignKey.table = ParseObjectName();
    if (AtSymbol(QLatin1String("(")))
        constraint.foreignKey.targets = NameList();
    while (Accept(QLatin1String("ON"))) {
        const bool onDelete = At(QLatin1String("DELETE"));
        if (!onDelete && !At(QLatin1String("UPDATE")))
            Refuse();
        Take();
        (onDelete ? constraint.foreignKey.onDelete : constraint.foreignKey.onUpdate) = ParseKeyAction();
    }
}

TableConstraint Parser::Constraint(const QString &forColumn)
{
    TableConstraint result;
    if (Accept(QLatin1String("CONSTRAINT")))
        result.name = Name();
    if (!forColumn.isEmpty())
        result.columns = {forColumn};
    if (Accept(QLatin1String("PRIMARY"))) {
        Expect(QLatin1String("KEY"));
        result.kind = TableConstraint::Kind::PrimaryKey;
        KeyColumns(result);
    } else if (Accept(QLatin1String("UNIQUE"))) {
        result.kind = TableConstraint::Kind::Unique;
        KeyColumns(result);
    } else if (Accept(QLatin1String("CHECK"))) {
        result.kind = TableConstraint::Kind::Check;
        ExpectSymbol(QLatin1String("("));
        result.value = Condition();
        ExpectSymbol(QLatin1String(")"));
    } else if (Accept(QLatin1String("FOREIGN"))) {
        Expect(QLatin1String("KEY"));
        if (AtSymbol(QLatin1String("(")))
            result.columns = NameList();
        ParseForeignKey(result);
    } else if (At(QLatin1String("REFERENCES"))) {
        ParseForeignKey(result);
    } else if (Accept(QLatin1String("DEFAULT"))) {
        result.kind = TableConstraint::Kind::Default;
        result.value = ParseValue();
        Expect(QLatin1String("FOR"));
        result.columns = {Name()};
    } else {
        Refuse();
    }
    return result;
}

/// WITH (PAD_INDEX = OFF, …) ON [PRIMARY]: how the server would store it.
void Parser::SkipIndexOptions()
{
    if (At(QLatin1String("WITH")) && AtSymbol(QLatin1String("("), 1)) {
        while (!AtSymbol(QLatin1String(")"))) {
            if (AtEnd())
                Refuse();
            Take();
        }
        Take();
    }
    if (At(QLatin1String("ON")) && AtName(1)) {
        Take();
        Name();
    }
}

StatementPtr Parser::ParseCreateIndex()
{
    auto result = std::make_unique<CreateIndexStatement>();
    result->unique = Accept(QLatin1String("UNIQUE"));
    if (!Accept(QLatin1String("CLUSTERED")))
        Accept(QLatin1String("NONCLUSTERED"));
    Expect(QLatin1String("INDEX"));
    result->name = Name();
    Expect(QLatin1String("ON"));
    result->table = ParseObjectName();
    ExpectSymbol(QLatin1String("("));
    result->columns = OrderItems();
    ExpectSymbol(QLatin1String(")"));
    for (const OrderItem &item : result->columns) {
        if (item.value->kind != ExpressionKind::Column)
            Refuse();
    }
    if (At(QLatin1String("INCLUDE"))) {
        Take();
        result->include = NameList();
    }
    if (Accept(QLatin1String("WHERE")))
        result->where = Condition();
    SkipIndexOptions();
    return result;
}

StatementPtr Parser::ParseCreateView(bool replace)
{
    Take();
    auto result = std::make_unique<CreateViewStatement>();
    result->replace = replace;
    result->name = ParseObjectName();
    if (AtSymbol(QLatin1String("(")))
        result->columns = NameList();
    SkipModuleOptions();
    Expect(QLatin1String("AS"));
    result->query = ParseQuery();
    if (At(QLatin1String("WITH")))
        Unsupported(u"WITH CHECK OPTION"_s);
    if (AcceptSymbol(QLatin1String(";")) || AtEnd())
        return result;
    Refuse();
}

/// WITH SCHEMABINDING, RECOMPILE …
void Parser::SkipModuleOptions()
{
    if (!Accept(QLatin1String("WITH")))
        return;
    do {
        if (!At(QLatin1String("SCHEMABINDING")) && !At(QLatin1String("RECOMPILE")))
            Unsupported(u"WITH "_s + Peek().text);
        Take();
    } while (AcceptSymbol(QLatin1String(",")));
}

std::vector<ParameterDefinition> Parser::Parameters()
{
    std::vector<ParameterDefinition> result;
    if (Peek().kind != TokenKind::Variable)
        return result;
    do {
        ParameterDefinition parameter;
        if (Peek().kind != TokenKind::Variable)
            Refuse();
        parameter.name = Take().text;
        Accept(QLatin1String("AS"));
        parameter.type = Type();
        if ((parameter.type.IsText() || parameter.type.IsBinary()) && parameter.type.length == 0)
            parameter.type.length = 1;
        if (AcceptSymbol(QLatin1String("=")))
            parameter.defaultValue = Unary();
        parameter.output = Accept(QLatin1String("OUTPUT")) || Accept(QLatin1String("OUT"));
        result.push_back(std::move(parameter));
    } while (AcceptSymbol(QLatin1String(",")));
    return result;
}

StatementPtr Parser::ParseCreateProcedure(bool replace)
{
    Take();
    auto result = std::make_unique<CreateProcedureStatement>();
    result->replace = replace;
    result->name = ParseObjectName();
    if (AcceptSymbol(QLatin1String("("))) {
        result->parameters = Parameters();
        ExpectSymbol(QLatin1String(")"));
    } else {
        result->parameters = Parameters();
    }
    SkipModuleOptions();
    Expect(QLatin1String("AS"));
    while (!AtEnd())
        result->body.push_back(ParseStatement());
    if (result->body.empty())
        Refuse();
    return result;
}

StatementPtr Parser::ParseCreateFunction(bool replace)
{
    Take();
    auto result = std::make_unique<CreateFunctionStatement>();
    result->replace = replace;
    result->name = ParseObjectName();
    ExpectSymbol(QLatin1String("("));
    result->parameters = Parameters();
    ExpectSymbol(QLatin1String(")"));
    if (!At(QLatin1String("RETURNS")))
        Refuse();
    Take();
    if (!At(QLatin1String("TABLE")))
        Unsupported(u"functions other than RETURNS TABLE AS RETURN"_s);
    Take();
    SkipModuleOptions();
    Accept(QLatin1String("AS"));
    Expect(QLatin1String("RETURN"));
    if (AtSymbol(QLatin1String("(")))
        result->query = std::move(*Subquery());
    else
        result->query = ParseQuery();
    return result;
}

StatementPtr Parser::ParseAlterTable()
{
    Take();
    auto result = std::make_unique<AlterTableStatement>();
    result->table = ParseObjectName();
    if (Accept(QLatin1String("ADD"))) {
        do {
            TableElement(result->columns, result->constraints);
        } while (AcceptSymbol(QLatin1String(",")));
        return result;
    }
    if (Accept(QLatin1String("DROP"))) {
        const bool column = Accept(QLatin1String("COLUMN"));
        if (!column)
            Accept(QLatin1String("CONSTRAINT"));
        result->action = column ? AlterTableStatement::Action::DropColumn : AlterTableStatement::Action::DropConstraint;
        do {
            result->names.push_back(Name());
        } while (AcceptSymbol(QLatin1String(",")));
        return result;
    }
    Unsupported(u"ALTER TABLE … "_s + Peek().text.toUpper());
}

StatementPtr Parser::ParseDropStatement()
{
    using What = DropStatement::What;
    static const QHash<QString, What> kinds = {
        {u"TABLE"_s, What::Table},    {u"VIEW"_s, What::View},   {u"PROCEDURE"_s, What::Procedure},
        {u"PROC"_s, What::Procedure}, {u"INDEX"_s, What::Index}, {u"FUNCTION"_s, What::Function},
        {u"SCHEMA"_s, What::Schema},
    };
    Take();
    auto result = std::make_unique<DropStatement>();
    const auto found = kinds.constFind(Peek().text.toUpper());
    if (found == kinds.cend())
        Unsupported(u"DROP "_s + Peek().text.toUpper());
    Take();
    result->what = *found;
    if (At(QLatin1String("IF"))) {
        Take();
        Expect(QLatin1String("EXISTS"));
        result->ifExists = true;
    }
    do {
        result->names.push_back(ParseObjectName());
    } while (AcceptSymbol(QLatin1String(",")));
    if (result->what == What::Index) {
        if (Accept(QLatin1String("ON"))) {
            result->onTable = ParseObjectName();
        } else {
            // the old form: DROP INDEX table.index
            ObjectName &index = result->names.front();
            if (index.schema.isEmpty())
                Refuse();
            result->onTable.name = index.schema;
            index.schema.clear();
        }
    }
    return result;
}

} // namespace tsql
