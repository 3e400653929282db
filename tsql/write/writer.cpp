#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

QString QuotedName(const QString &name)
{
    QString doubled = name;
    doubled.replace(u'"', QLatin1String("\"\""));
    return u'"' + doubled + u'"';
}

QString QuotedText(const QString &text)
{
    QString doubled = text;
    doubled.replace(u'\'', QLatin1String("''"));
    return u'\'' + doubled + u'\'';
}

bool SameName(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

QString NameListText(const std::vector<QString> &names)
{
    QString list;
    for (const QString &name : names)
        list += (list.isEmpty() ? u""_s : u", "_s) + QuotedName(name);
    return list;
}

QString KindNumber(Kind kind)
{
    return QString::number(static_cast<int>(kind));
}

std::optional<SqlType> SystemType(const QString &name)
{
    static const SqlType integer{Kind::Int};
    static const SqlType moment{Kind::DateTime};
    static const SqlType identity = SqlType::DecimalOf(SqlType::MaxPrecision, 0);
    static const SqlType label = SqlType::text(Kind::NVarChar, 4000);
    static const QHash<QString, SqlType> types = {
        {u"@@rowcount"_s, integer},    {u"@@identity"_s, identity}, {u"scope_identity"_s, identity},
        {u"@@trancount"_s, integer},   {u"@@error"_s, integer},     {u"@@version"_s, label},
        {u"@@spid"_s, integer},        {u"@@servername"_s, label},  {u"@@nestlevel"_s, integer},
        {u"getdate"_s, moment},        {u"getutcdate"_s, moment},   {u"db_name"_s, label},
        {u"suser_sname"_s, label},     {u"host_name"_s, label},     {u"app_name"_s, label},
        {u"error_number"_s, integer},  {u"error_line"_s, integer},  {u"error_severity"_s, integer},
        {u"error_state"_s, integer},   {u"xact_state"_s, integer},  {u"error_message"_s, label},
        {u"error_procedure"_s, label},
    };
    const auto found = types.constFind(name);
    return found == types.cend() ? std::nullopt : std::optional(*found);
}

SqlType LiteralType(const Literal &literal)
{
    switch (literal.kind) {
    case LiteralKind::Integer:
        return {Kind::Int, static_cast<int>(qMax<qsizetype>(1, QString::number(literal.integer).size())), 0, 0};
    case LiteralKind::Decimal: {
        const qsizetype point = literal.text.indexOf(u'.');
        const qsizetype scale = point < 0 ? 0 : literal.text.size() - point - 1;
        QStringView whole = QStringView(literal.text).left(point < 0 ? literal.text.size() : point);
        while (whole.startsWith(u'0'))
            whole = whole.sliced(1);
        const qsizetype precision = qMax<qsizetype>(1, whole.size() + scale);
        if (precision > SqlType::MaxPrecision)
            throw Error(1007, {literal.text});
        return SqlType::DecimalOf(static_cast<int>(precision), static_cast<int>(scale));
    }
    case LiteralKind::Float:
        return {Kind::Float};
    case LiteralKind::Text:
    case LiteralKind::Unicode: {
        const bool unicode = literal.kind == LiteralKind::Unicode;
        const qsizetype limit = unicode ? 4000 : 8000;
        const qsizetype length = qMax<qsizetype>(1, literal.text.size());
        return SqlType::text(unicode ? Kind::NVarChar : Kind::VarChar,
                             length > limit ? SqlType::Max : static_cast<int>(length));
    }
    case LiteralKind::Binary:
        return SqlType::text(Kind::VarBinary, 8000);
    }
    return {};
}

Compiled Compile(const Statement &statement, const Catalogue &catalogue, const VariableTypes &variables,
                 const CompileOptions &options)
{
    try {
        return Writer(catalogue, variables, options).WriteStatement(statement);
    } catch (Error &error) {
        if (error.Line() == 0)
            error.setLine(statement.line);
        throw;
    }
}

Compiled CompileNewValues(const UpdateStatement &statement, const Catalogue &catalogue, const VariableTypes &variables,
                          const CompileOptions &options)
{
    return Writer(catalogue, variables, options).NewValues(statement);
}

Compiled CompileScalar(const Expression &value, const Catalogue &catalogue, const VariableTypes &variables,
                       const SqlType &target, const CompileOptions &options)
{
    try {
        return Writer(catalogue, variables, options).Scalar(value, target);
    } catch (Error &error) {
        if (error.Line() == 0)
            error.setLine(value.line);
        throw;
    }
}

Compiled CompileCondition(const Expression &condition, const Catalogue &catalogue, const VariableTypes &variables,
                          const CompileOptions &options)
{
    try {
        return Writer(catalogue, variables, options).Condition(condition);
    } catch (Error &error) {
        if (error.Line() == 0)
            error.setLine(condition.line);
        throw;
    }
}

Compiled Writer::WriteStatement(const Statement &statement)
{
    Q_ASSERT_X(m_out.sql.isEmpty() && m_aliases == 0, "Writer", "one object compiles one statement");
    m_maxRecursion = statement.maxRecursion;
    switch (statement.kind) {
    case StatementKind::Select:
        WriteSelect(As<SelectStatement>(statement));
        break;
    case StatementKind::Insert:
        WriteInsert(As<InsertStatement>(statement));
        break;
    case StatementKind::Update:
        WriteUpdate(As<UpdateStatement>(statement));
        break;
    case StatementKind::Delete:
        Remove(As<DeleteStatement>(statement));
        break;
    case StatementKind::Truncate:
        WriteTruncate(As<TruncateStatement>(statement));
        break;
    case StatementKind::CreateTable:
        WriteCreateTable(As<CreateTableStatement>(statement));
        break;
    case StatementKind::DeclareTable:
        WriteCreateTable(*As<DeclareTableStatement>(statement).table);
        break;
    case StatementKind::AlterTable:
        WriteAlterTable(As<AlterTableStatement>(statement));
        break;
    case StatementKind::CreateIndex:
        WriteCreateIndex(As<CreateIndexStatement>(statement));
        break;
    case StatementKind::CreateView:
    case StatementKind::CreateProcedure:
    case StatementKind::CreateFunction:
    case StatementKind::CreateSchema:
        Module(statement);
        break;
    case StatementKind::Drop:
        WriteDrop(As<DropStatement>(statement));
        break;
    case StatementKind::Declare:
    case StatementKind::SetVariable:
    case StatementKind::SetOption:
    case StatementKind::If:
    case StatementKind::While:
    case StatementKind::Block:
    case StatementKind::Break:
    case StatementKind::Continue:
    case StatementKind::Return:
    case StatementKind::Execute:
    case StatementKind::ExecuteText:
    case StatementKind::BeginTransaction:
    case StatementKind::Commit:
    case StatementKind::Rollback:
    case StatementKind::SaveTransaction:
    case StatementKind::TryCatch:
    case StatementKind::Throw:
    case StatementKind::RaiseError:
    case StatementKind::Print:
        throw Error(wording::ForeignToWriter, {statement.text.left(60)});
    }
    return std::move(m_out);
}

Compiled Writer::Scalar(const Expression &value, const SqlType &target)
{
    const Scope scope;
    Operand operand = this->WriteValue(value, scope);
    const SqlType type = target.kind == Kind::Null ? operand.type : target;
    m_out.sql = u"SELECT "_s + (target.kind == Kind::Null ? text(operand) : Convert(operand, {target, {}, {}, {}}));
    m_out.columns.push_back({{}, type, true, {}});
    return std::move(m_out);
}

Compiled Writer::Condition(const Expression &condition)
{
    const Scope scope;
    m_out.sql = u"SELECT CASE WHEN %1 THEN 1 ELSE 0 END"_s.arg(ConditionText(condition, scope));
    m_out.columns.push_back({{}, {Kind::Bit}, false, {}});
    return std::move(m_out);
}

void Writer::Need(const Parameter &parameter, bool value)
{
    if (parameter.source == Parameter::Source::Literal)
        m_out.needs.push_back({parameter.literal, value});
}

/// The literal as it stands in the text at hand.
const Literal &Writer::LiteralOf(const Expression &node) const
{
    const bool elsewhere = !m_constants && node.literal >= 0 && m_options.literals != nullptr;
    return elsewhere ? (*m_options.literals)[static_cast<std::size_t>(node.literal)] : node.value;
}

bool Writer::IsWhole(const Expression &node, qint64 value) const
{
    if (node.kind != ExpressionKind::Literal)
        return false;
    const Literal &literal = LiteralOf(node);
    return literal.kind == LiteralKind::Integer && literal.integer == value;
}

Operand Writer::WriteLiteral(const Expression &node)
{
    Operand operand;
    operand.type = LiteralType(LiteralOf(node));
    operand.nullable = false;
    Parameter parameter;
    parameter.source = m_constants || node.literal < 0 ? Parameter::Source::Constant : Parameter::Source::Literal;
    parameter.literal = node.literal;
    parameter.value = LiteralOf(node);
    // The length of a text literal is not part of the statement's shape.
    if (operand.type.IsText() && parameter.source == Parameter::Source::Literal && operand.type.length != SqlType::Max)
        operand.type.length = operand.type.IsUnicode() ? 4000 : 8000;
    operand.pending = parameter;
    return operand;
}

Operand Writer::System(const QString &name, const SqlType &type)
{
    Operand operand;
    operand.type = type;
    Parameter parameter;
    parameter.source = Parameter::Source::System;
    parameter.name = name;
    parameter.variableType = type;
    operand.pending = parameter;
    return operand;
}

Operand Writer::WriteVariable(const Expression &node)
{
    const QString name = node.name.toCaseFolded();
    if (name.startsWith(u"@@")) {
        const std::optional<SqlType> type = SystemType(name);
        if (!type)
            throw Error(137, {node.name}, node.line);
        return System(name, *type);
    }
    if (const auto found = m_substitutions.constFind(name); found != m_substitutions.cend()) {
        // A copy: the argument may itself mention a parameter of an enclosing function.
        const Substitution substitution = *found;
        const Constants constants(*this, substitution.constant);
        Operand operand = WriteValue(*substitution.argument, *substitution.scope);
        const QString sql = Convert(operand, {substitution.type, Conversion::Cast, {}, {}});
        return Made(sql, substitution.type);
    }
    const auto type = m_variables.constFind(name);
    if (type == m_variables.cend() || m_constants)
        throw Error(137, {node.name}, node.line);
    return VariableOf(name, *type);
}

Operand Writer::VariableOf(const QString &name, const SqlType &type) const
{
    Operand operand;
    operand.type = type;
    Parameter parameter;
    parameter.source = Parameter::Source::Variable;
    parameter.name = name;
    parameter.variableType = type;
    operand.pending = parameter;
    return operand;
}

QString Writer::AddParameter(Parameter parameter)
{
    if (m_inline)
        return ConstantText(parameter);
    m_out.parameters.push_back(std::move(parameter));
    return u"?%1"_s.arg(m_out.parameters.size());
}

} // namespace tsql
