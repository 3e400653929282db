#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

const SqlType Integer{Kind::Int};
const SqlType WideText = SqlType::text(Kind::NVarChar, SqlType::Max);

QString joined(const QStringList &parts)
{
    return parts.join(u", "_s);
}

/// A text that grew beyond what its type holds loses its end.
QString limited(const QString &sql, const SqlType &type)
{
    return type.length == SqlType::Max ? sql : u"text_cut(%1, %2)"_s.arg(sql, QString::number(type.length));
}

/// The bytes of a value whose type alone decides them; 0 for the others.
int storedBytes(const SqlType &type)
{
    switch (type.kind) {
    case Kind::Bit:
    case Kind::TinyInt:
        return 1;
    case Kind::SmallInt:
        return 2;
    case Kind::Date:
        return 3;
    case Kind::Int:
    case Kind::Real:
    case Kind::SmallDateTime:
        return 4;
    case Kind::Time:
        return 5;
    case Kind::BigInt:
    case Kind::Money:
    case Kind::Float:
    case Kind::DateTime:
        return 8;
    case Kind::UniqueIdentifier:
        return 16;
    case Kind::Decimal:
        return type.precision < 10 ? 5 : type.precision < 20 ? 9 : type.precision < 29 ? 13 : 17;
    default:
        return 0;
    }
}

} // namespace

QString Writer::argumentAs(const Expression &node, const Scope &scope, const SqlType &type)
{
    Operand operand = value(node, scope);
    const bool textual = type.isText() && operand.type.isText() && !operand.pending;
    return textual ? operand.sql : convert(operand, {type, {}, {}, {}});
}

Operand Writer::function(const Expression &node, const Scope &scope)
{
    const FunctionRow *row = functionNamed(node.name);
    if (!row)
        throw Error(195, {node.name}, node.line);
    if (node.over && row->role == FunctionRow::Role::Value)
        throw Error(4113, {node.name}, node.line);
    if (node.args.size() < row->least || node.args.size() > row->most)
        throw Error(174, {node.name.toLower(), row->least}, node.line);
    return row->body ? (this->*row->body)(node, scope) : called(*row, node, scope);
}

namespace {

SqlType resultOf(const FunctionRow &row, bool unicode, bool unlimited, int firstLength)
{
    using Gives = FunctionRow::Gives;
    const Kind kind = unicode ? Kind::NVarChar : Kind::VarChar;
    switch (row.gives) {
    case Gives::Int:
        return Integer;
    case Gives::Float:
        return {Kind::Float};
    case Gives::OfFirst:
        return SqlType::text(kind, unlimited ? SqlType::Max : firstLength);
    case Gives::Text:
        return SqlType::text(kind, unlimited ? SqlType::Max : unicode ? 4000 : 8000);
    case Gives::UnicodeText:
        return SqlType::text(Kind::NVarChar, unlimited ? SqlType::Max : 4000);
    case Gives::Letter:
        return SqlType::text(Kind::VarChar, 1);
    case Gives::UnicodeLetter:
        return SqlType::text(Kind::NVarChar, 1);
    case Gives::Identifier:
        return {Kind::UniqueIdentifier};
    case Gives::Own:
        break;
    }
    Q_UNREACHABLE();
}

} // namespace

/// A function without a body of its own: its arguments, each as its letter says, in the text of its row.
Operand Writer::called(const FunctionRow &row, const Expression &node, const Scope &scope)
{
    const QLatin1String letters(row.arguments);
    QStringList parts;
    bool unicode = false;
    bool unlimited = false;
    int length = 4000;
    for (std::size_t i = 0; i < node.args.size(); ++i) {
        const Expression &argument = *node.args[i];
        const char letter = letters[static_cast<qsizetype>(i)].toLatin1();
        if (letter == 't') {
            refuseCollation(argument, node.name);
            Operand operand = value(argument, scope);
            unicode = unicode || operand.type.isUnicode();
            unlimited = unlimited || (operand.type.isText() && operand.type.length == SqlType::Max);
            if (i == 0 && operand.type.isText())
                length = operand.type.length;
            const bool textual = operand.type.isText() && !operand.pending;
            parts += textual ? operand.sql : convert(operand, {WideText, {}, {}, {}});
        } else if (letter == 'p') {
            parts += datePart(argument);
        } else {
            Q_ASSERT(QLatin1String("wifd").contains(QLatin1Char(letter)));
            parts += argumentAs(argument, scope,
                                letter == 'w'   ? WideText
                                : letter == 'i' ? Integer
                                : letter == 'f' ? SqlType{Kind::Float}
                                                : SqlType{Kind::DateTime});
        }
    }
    QString sql = QString::fromUtf16(row.sql);
    if (sql.contains(u"%*"_s))
        sql.replace(u"%*"_s, joined(parts));
    else if (!parts.isEmpty())
        sql = sql.arg(parts.front());
    const SqlType type = resultOf(row, unicode, unlimited, length);
    const bool wide = row.gives == FunctionRow::Gives::Text || row.gives == FunctionRow::Gives::UnicodeText;
    return made(wide ? limited(sql, type) : sql, type);
}

Operand Writer::isNullFunction(const Expression &node, const Scope &scope)
{
    Operand first = value(*node.args[0], scope);
    Operand second = value(*node.args[1], scope);
    if (first.isNull())
        return second;
    // The result has the type of the first argument, whatever stands second.
    SqlType type = first.type;
    if (first.pending && type.isDecimal())
        need(*first.pending, false);
    if (second.isNull())
        return first;
    if (type.isDate() && second.type.isInteger())
        type.precision = 0;
    const QString b = convert(second, {type, Conversion::Cast, {}, {}});
    Operand result = made(u"ifnull(%1, %2)"_s.arg(text(first), b), type);
    result.nullable = second.nullable;
    return result;
}

Operand Writer::coalesce(const Expression &node, const Scope &scope)
{
    std::vector<Operand> operands;
    SqlType type;
    for (const ExpressionPtr &argument : node.args) {
        operands.push_back(value(*argument, scope));
        if (operands.back().pending && operands.back().type.isDecimal())
            need(*operands.back().pending, false);
        type = commonType(type, operands.back().type);
    }
    if (type.kind == Kind::Null)
        throw Error(4127, {}, node.line);
    QStringList parts;
    for (Operand &operand : operands)
        parts += convert(operand, {type, {}, {}, {}});
    return made(u"coalesce(%1)"_s.arg(joined(parts)), type);
}

Operand Writer::nullIf(const Expression &node, const Scope &scope)
{
    Operand first = value(*node.args[0], scope);
    if (first.isNull())
        throw Error(4151, {}, node.line);
    Operand again = repeated(*node.args[0], scope);
    Operand second = value(*node.args[1], scope);
    const SqlType type = first.type;
    const QString equal = compare(u"="_s, first, second);
    return made(u"CASE WHEN %1 THEN NULL ELSE %2 END"_s.arg(equal, text(again)), type);
}

Operand Writer::iif(const Expression &node, const Scope &scope)
{
    const QString condition = conditionText(*node.args[0], scope);
    Operand yes = value(*node.args[1], scope);
    Operand no = value(*node.args[2], scope);
    const SqlType type = commonType(yes.type, no.type);
    const QString a = convert(yes, {type, {}, {}, {}});
    const QString b = convert(no, {type, {}, {}, {}});
    return made(u"CASE WHEN %1 THEN %2 ELSE %3 END"_s.arg(condition, a, b), type);
}

Operand Writer::concat(const Expression &node, const Scope &scope)
{
    bool unicode = false;
    bool unlimited = false;
    QStringList parts;
    for (const ExpressionPtr &argument : node.args) {
        Operand operand = value(*argument, scope);
        unicode = unicode || operand.type.isUnicode();
        unlimited = unlimited || (operand.type.isText() && operand.type.length == SqlType::Max);
        const bool textual = operand.type.isText() && !operand.pending;
        parts += u"ifnull(%1, '')"_s.arg(textual ? operand.sql : convert(operand, {WideText, {}, {}, {}}));
    }
    const SqlType type = unlimited ? SqlType::text(unicode ? Kind::NVarChar : Kind::VarChar, SqlType::Max)
                                   : SqlType::text(unicode ? Kind::NVarChar : Kind::VarChar, unicode ? 4000 : 8000);
    return made(limited(u"(%1)"_s.arg(parts.join(u" || "_s)), type), type);
}

Operand Writer::dataLength(const Expression &node, const Scope &scope)
{
    Operand operand = value(*node.args[0], scope);
    const int unit = operand.type.isUnicode() ? 2 : 1;
    if (const int bytes = storedBytes(operand.type))
        return made(u"CASE WHEN %1 IS NOT NULL THEN %2 END"_s.arg(text(operand), QString::number(bytes)), Integer);
    return made(u"tsql_datalength(%1, %2)"_s.arg(text(operand), QString::number(unit)), Integer);
}

Operand Writer::str(const Expression &node, const Scope &scope)
{
    QStringList parts{argumentAs(*node.args[0], scope, {Kind::Float})};
    parts += node.args.size() > 1 ? argumentAs(*node.args[1], scope, Integer) : u"10"_s;
    parts += node.args.size() > 2 ? argumentAs(*node.args[2], scope, Integer) : u"0"_s;
    return made(u"tsql_str(%1)"_s.arg(joined(parts)), SqlType::text(Kind::VarChar, 255));
}

Operand Writer::mathFunction(const Expression &node, const Scope &scope)
{
    const bool round = node.name == u"ROUND";
    Operand operand = value(*node.args[0], scope);
    if (operand.type.isText() || operand.isNull()) {
        const QString sql = convert(operand, {{Kind::Float}, {}, {}, {}});
        operand = made(sql, {Kind::Float});
    }
    if (!operand.type.isNumber())
        throw Error(8116, {kindName(operand.type.kind), node.name.toLower()});
    const SqlType type = operand.type;
    const QString sql = text(operand);
    QStringList digits;
    for (std::size_t i = 1; i < node.args.size(); ++i)
        digits += argumentAs(*node.args[i], scope, Integer);
    const QString scale = QString::number(type.scale);
    const QString whole = kindNumber(type.kind);
    if (node.name == u"ABS") {
        if (type.isDecimal())
            return made(u"dec_abs(%1)"_s.arg(sql), type);
        return made(type.isReal() ? u"abs(%1)"_s.arg(sql) : u"int_fit(abs(%1), %2)"_s.arg(sql, whole), type);
    }
    if (node.name == u"SIGN") {
        if (type.isDecimal())
            return made(u"dec_of_int(dec_sign(%1), %2, %3)"_s.arg(sql, QString::number(type.precision), scale), type);
        return made(type.isReal() ? u"CAST(sign(%1) AS REAL)"_s.arg(sql) : u"sign(%1)"_s.arg(sql), type);
    }
    if (round) {
        if (type.isDecimal())
            return made(u"dec_round(%1, %2, %3)"_s.arg(sql, scale, joined(digits)), type);
        if (type.isReal())
            return made(u"round_real(%1, %2)"_s.arg(sql, joined(digits)), type);
        return made(
            u"int_fit(dec_to_int(dec_round(dec_of_int(%1, 38, 0), 0, %2), 0, 4), %3)"_s.arg(sql, joined(digits), whole),
            type);
    }
    const QString name = node.name.toLower();
    if (type.isDecimal()) {
        const SqlType result = SqlType::decimal(type.precision, 0);
        return made(u"dec_%1(%2, %3)"_s.arg(name, sql, scale), result);
    }
    return made(type.isReal() ? u"%1(%2)"_s.arg(name == u"floor" ? u"floor"_s : u"ceil"_s, sql) : sql, type);
}

/// POWER keeps the type of its base.
Operand Writer::power(const Expression &node, const Scope &scope)
{
    const SqlType real{Kind::Float};
    Operand base = value(*node.args[0], scope);
    const SqlType type = base.type.isInteger() || base.type.isDecimal() ? base.type : real;
    if (base.pending && type.isDecimal())
        need(*base.pending, false);
    const QString a = convert(base, {real, {}, {}, {}});
    const QString b = argumentAs(*node.args[1], scope, real);
    const QString sql = u"real_pow(%1, %2)"_s.arg(a, b);
    if (type.isInteger())
        return made(u"int_of_power(%1, %2)"_s.arg(sql, kindNumber(type.kind)), {type.kind});
    Operand power = made(sql, real);
    return type.isReal()
               ? power
               : made(convert(power, {SqlType{type.kind, type.isDecimal() ? 38 : 0, type.scale, 0}, {}, {}, {}}),
                      type.isDecimal() ? SqlType::decimal(38, type.scale) : SqlType{type.kind});
}

QString Writer::datePart(const Expression &node) const
{
    static const QHash<QString, QString> parts = {
        {u"year"_s, u"year"_s},
        {u"yy"_s, u"year"_s},
        {u"yyyy"_s, u"year"_s},
        {u"quarter"_s, u"quarter"_s},
        {u"qq"_s, u"quarter"_s},
        {u"q"_s, u"quarter"_s},
        {u"month"_s, u"month"_s},
        {u"mm"_s, u"month"_s},
        {u"m"_s, u"month"_s},
        {u"day"_s, u"day"_s},
        {u"dd"_s, u"day"_s},
        {u"d"_s, u"day"_s},
        {u"dayofyear"_s, u"dayofyear"_s},
        {u"dy"_s, u"dayofyear"_s},
        {u"weekday"_s, u"weekday"_s},
        {u"dw"_s, u"weekday"_s},
        {u"week"_s, u"week"_s},
        {u"ww"_s, u"week"_s},
        {u"wk"_s, u"week"_s},
        {u"hour"_s, u"hour"_s},
        {u"hh"_s, u"hour"_s},
        {u"minute"_s, u"minute"_s},
        {u"mi"_s, u"minute"_s},
        {u"n"_s, u"minute"_s},
        {u"second"_s, u"second"_s},
        {u"ss"_s, u"second"_s},
        {u"s"_s, u"second"_s},
        {u"millisecond"_s, u"millisecond"_s},
        {u"ms"_s, u"millisecond"_s},
    };
    const QString part = node.kind == ExpressionKind::Column ? parts.value(node.name.toLower()) : QString();
    if (part.isEmpty())
        throw Error(155, {node.name}, node.line);
    return quotedText(part);
}

Operand Writer::dateAdd(const Expression &node, const Scope &scope)
{
    const QString part = datePart(*node.args[0]);
    const QString count = argumentAs(*node.args[1], scope, Integer);
    Operand date = value(*node.args[2], scope);
    const SqlType type = date.type.isDate() ? date.type : SqlType{Kind::DateTime};
    return made(
        u"date_add(%1, %2, %3, %4)"_s.arg(part, count, convert(date, {type, {}, {}, {}}), kindNumber(type.kind)), type);
}

Operand Writer::systemFunction(const Expression &node, const Scope &)
{
    const QString name = QString::fromUtf16(functionNamed(node.name)->sql);
    return system(name, *systemType(name));
}

} // namespace tsql
