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

void Writer::arguments(const Expression &node, std::size_t least, std::size_t most) const
{
    if (node.args.size() < least || node.args.size() > most)
        throw Error(174, u"The %1 function requires %2 argument(s)."_s.arg(node.name.toLower()).arg(least), node.line);
}

QString Writer::argumentAs(const Expression &node, const Scope &scope, const SqlType &type)
{
    Operand operand = value(node, scope);
    const bool textual = type.isText() && operand.type.isText() && !operand.pending;
    return textual ? operand.sql : convert(operand, {type, {}, {}, {}});
}

Operand Writer::function(const Expression &node, const Scope &scope)
{
    static const QHash<QString, Function> table = [] {
        QHash<QString, Function> functions = {
            {u"ISNULL"_s, &Writer::isNullFunction}, {u"COALESCE"_s, &Writer::coalesce},
            {u"NULLIF"_s, &Writer::nullIf},         {u"IIF"_s, &Writer::iif},
            {u"CONCAT"_s, &Writer::concat},         {u"DATEADD"_s, &Writer::dateAdd},
            {u"OBJECT_ID"_s, &Writer::objectId},
        };
        for (const QString &name :
             {u"LEN"_s,       u"DATALENGTH"_s, u"SUBSTRING"_s, u"LEFT"_s,  u"RIGHT"_s,   u"CHARINDEX"_s, u"PATINDEX"_s,
              u"STUFF"_s,     u"REPLACE"_s,    u"LTRIM"_s,     u"RTRIM"_s, u"TRIM"_s,    u"UPPER"_s,     u"LOWER"_s,
              u"REVERSE"_s,   u"REPLICATE"_s,  u"SPACE"_s,     u"ASCII"_s, u"UNICODE"_s, u"CHAR"_s,      u"NCHAR"_s,
              u"QUOTENAME"_s, u"ISNUMERIC"_s,  u"ISDATE"_s,    u"STR"_s})
            functions.insert(name, &Writer::textFunction);
        for (const QString &name : {u"ABS"_s, u"SIGN"_s, u"ROUND"_s, u"FLOOR"_s, u"CEILING"_s})
            functions.insert(name, &Writer::mathFunction);
        for (const QString &name : {u"SQRT"_s, u"EXP"_s, u"LOG"_s, u"POWER"_s, u"PI"_s, u"SQUARE"_s})
            functions.insert(name, &Writer::realFunction);
        for (const QString &name : {u"DATEDIFF"_s, u"DATEPART"_s, u"YEAR"_s, u"MONTH"_s, u"DAY"_s})
            functions.insert(name, &Writer::dateFunction);
        for (const QString &name :
             {u"COUNT"_s, u"COUNT_BIG"_s, u"SUM"_s, u"AVG"_s, u"MIN"_s, u"MAX"_s, u"STRING_AGG"_s})
            functions.insert(name, &Writer::aggregate);
        for (const QString &name : {u"ROW_NUMBER"_s, u"RANK"_s, u"DENSE_RANK"_s})
            functions.insert(name, &Writer::ranking);
        for (const QString &name : {u"GETDATE"_s, u"SYSDATETIME"_s, u"CURRENT_TIMESTAMP"_s, u"GETUTCDATE"_s,
                                    u"SCOPE_IDENTITY"_s, u"DB_NAME"_s, u"SUSER_SNAME"_s, u"HOST_NAME"_s, u"APP_NAME"_s,
                                    u"ERROR_NUMBER"_s, u"ERROR_LINE"_s, u"ERROR_SEVERITY"_s, u"ERROR_STATE"_s,
                                    u"ERROR_MESSAGE"_s, u"ERROR_PROCEDURE"_s, u"XACT_STATE"_s, u"NEWID"_s})
            functions.insert(name, &Writer::systemFunction);
        return functions;
    }();
    const auto found = table.constFind(node.name);
    if (found == table.cend())
        throw Error(195, u"'%1' is not a recognized built-in function name."_s.arg(node.name), node.line);
    const bool windowed = *found == &Writer::aggregate || *found == &Writer::ranking;
    if (node.over && !windowed)
        throw Error(
            4113,
            u"The function '%1' is not a valid windowing function, and cannot be used with the OVER clause."_s.arg(
                node.name),
            node.line);
    return (this->*(*found))(node, scope);
}

Operand Writer::isNullFunction(const Expression &node, const Scope &scope)
{
    arguments(node, 2, 2);
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
    arguments(node, 2, 100);
    std::vector<Operand> operands;
    SqlType type;
    for (const ExpressionPtr &argument : node.args) {
        operands.push_back(value(*argument, scope));
        if (operands.back().pending && operands.back().type.isDecimal())
            need(*operands.back().pending, false);
        type = commonType(type, operands.back().type);
    }
    if (type.kind == Kind::Null)
        throw Error(4127,
                    u"At least one of the arguments to COALESCE must be an expression that is not the NULL constant."_s,
                    node.line);
    QStringList parts;
    for (Operand &operand : operands)
        parts += convert(operand, {type, {}, {}, {}});
    return made(u"coalesce(%1)"_s.arg(joined(parts)), type);
}

Operand Writer::nullIf(const Expression &node, const Scope &scope)
{
    arguments(node, 2, 2);
    Operand first = value(*node.args[0], scope);
    if (first.isNull())
        throw Error(
            4151,
            u"The type of the first argument to NULLIF cannot be the NULL constant because the type of the first "
            "argument has to be known."_s,
            node.line);
    Operand again = repeated(*node.args[0], scope);
    Operand second = value(*node.args[1], scope);
    const SqlType type = first.type;
    const QString equal = compare(u"="_s, first, second);
    return made(u"CASE WHEN %1 THEN NULL ELSE %2 END"_s.arg(equal, text(again)), type);
}

Operand Writer::iif(const Expression &node, const Scope &scope)
{
    arguments(node, 3, 3);
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
    arguments(node, 2, 250);
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

namespace {

/// How a text function is called: which arguments are texts and what comes back.
struct TextShape
{
    QLatin1String name; ///< in SQLite
    QLatin1String args; ///< t text, i whole number, f floating point; small o starts the optional ones
    enum Result { OfFirst, Number, One, Wide, Bytes } result;
};

const QHash<QString, TextShape> &textShapes()
{
    static const QHash<QString, TextShape> shapes = {
        {u"LEN"_s, {QLatin1String("tsql_len"), QLatin1String("t"), TextShape::Number}},
        {u"SUBSTRING"_s, {QLatin1String("tsql_substring"), QLatin1String("tii"), TextShape::OfFirst}},
        {u"LEFT"_s, {QLatin1String("tsql_left"), QLatin1String("ti"), TextShape::OfFirst}},
        {u"RIGHT"_s, {QLatin1String("tsql_right"), QLatin1String("ti"), TextShape::OfFirst}},
        {u"CHARINDEX"_s, {QLatin1String("tsql_charindex"), QLatin1String("ttoi"), TextShape::Number}},
        {u"PATINDEX"_s, {QLatin1String("tsql_patindex"), QLatin1String("tt"), TextShape::Number}},
        {u"STUFF"_s, {QLatin1String("tsql_stuff"), QLatin1String("tiit"), TextShape::Wide}},
        {u"REPLACE"_s, {QLatin1String("tsql_replace"), QLatin1String("ttt"), TextShape::Wide}},
        {u"LTRIM"_s, {QLatin1String("tsql_ltrim"), QLatin1String("t"), TextShape::OfFirst}},
        {u"RTRIM"_s, {QLatin1String("tsql_rtrim"), QLatin1String("t"), TextShape::OfFirst}},
        {u"TRIM"_s, {QLatin1String("tsql_trim"), QLatin1String("t"), TextShape::OfFirst}},
        {u"UPPER"_s, {QLatin1String("tsql_upper"), QLatin1String("t"), TextShape::OfFirst}},
        {u"LOWER"_s, {QLatin1String("tsql_lower"), QLatin1String("t"), TextShape::OfFirst}},
        {u"REVERSE"_s, {QLatin1String("tsql_reverse"), QLatin1String("t"), TextShape::OfFirst}},
        {u"REPLICATE"_s, {QLatin1String("tsql_replicate"), QLatin1String("ti"), TextShape::Wide}},
        {u"SPACE"_s, {QLatin1String("tsql_space"), QLatin1String("i"), TextShape::Wide}},
        {u"ASCII"_s, {QLatin1String("tsql_ascii"), QLatin1String("t"), TextShape::Number}},
        {u"UNICODE"_s, {QLatin1String("tsql_unicode"), QLatin1String("t"), TextShape::Number}},
        {u"CHAR"_s, {QLatin1String("tsql_nchar"), QLatin1String("i"), TextShape::One}},
        {u"NCHAR"_s, {QLatin1String("tsql_nchar"), QLatin1String("i"), TextShape::One}},
        {u"QUOTENAME"_s, {QLatin1String("tsql_quotename"), QLatin1String("tot"), TextShape::Wide}},
        {u"ISNUMERIC"_s, {QLatin1String("tsql_isnumeric"), QLatin1String("t"), TextShape::Number}},
        {u"ISDATE"_s, {QLatin1String("tsql_isdate"), QLatin1String("t"), TextShape::Number}},
    };
    return shapes;
}

} // namespace

Operand Writer::textFunction(const Expression &node, const Scope &scope)
{
    if (node.name == u"DATALENGTH") {
        arguments(node, 1, 1);
        Operand operand = value(*node.args[0], scope);
        const int unit = operand.type.isUnicode() ? 2 : 1;
        if (const int bytes = storedBytes(operand.type))
            return made(u"CASE WHEN %1 IS NOT NULL THEN %2 END"_s.arg(text(operand), QString::number(bytes)), Integer);
        return made(u"tsql_datalength(%1, %2)"_s.arg(text(operand), QString::number(unit)), Integer);
    }
    if (node.name == u"STR") {
        arguments(node, 1, 3);
        QStringList parts{argumentAs(*node.args[0], scope, {Kind::Float})};
        parts += node.args.size() > 1 ? argumentAs(*node.args[1], scope, Integer) : u"10"_s;
        parts += node.args.size() > 2 ? argumentAs(*node.args[2], scope, Integer) : u"0"_s;
        return made(u"tsql_str(%1)"_s.arg(joined(parts)), SqlType::text(Kind::VarChar, 255));
    }
    const TextShape shape = textShapes().value(node.name);
    const QString letters = QString(shape.args).remove(u'o');
    const qsizetype optional = QString(shape.args).indexOf(u'o');
    arguments(node, static_cast<std::size_t>(optional < 0 ? letters.size() : optional),
              static_cast<std::size_t>(letters.size()));
    SqlType type = Integer;
    QStringList parts;
    bool unicode = node.name == u"NCHAR" || node.name == u"QUOTENAME";
    bool unlimited = false;
    int length = 4000;
    for (std::size_t i = 0; i < node.args.size(); ++i) {
        if (letters[static_cast<qsizetype>(i)] != u't') {
            parts += argumentAs(*node.args[i], scope, Integer);
            continue;
        }
        refuseCollation(*node.args[i], node.name);
        Operand operand = value(*node.args[i], scope);
        unicode = unicode || operand.type.isUnicode();
        unlimited = unlimited || (operand.type.isText() && operand.type.length == SqlType::Max);
        if (i == 0 && operand.type.isText())
            length = operand.type.length;
        const bool textual = operand.type.isText() && !operand.pending;
        parts += textual ? operand.sql : convert(operand, {WideText, {}, {}, {}});
    }
    const Kind kind = unicode ? Kind::NVarChar : Kind::VarChar;
    const int limit = unlimited ? SqlType::Max : unicode ? 4000 : 8000;
    if (shape.result == TextShape::OfFirst)
        type = SqlType::text(kind, unlimited ? SqlType::Max : length);
    else if (shape.result == TextShape::Wide)
        type = SqlType::text(kind, limit);
    else if (shape.result == TextShape::One)
        type = SqlType::text(kind, 1);
    const QString call = u"%1(%2)"_s.arg(QString(shape.name), joined(parts));
    return made(shape.result == TextShape::Wide ? limited(call, type) : call, type);
}

Operand Writer::mathFunction(const Expression &node, const Scope &scope)
{
    const bool round = node.name == u"ROUND";
    arguments(node, round ? 2 : 1, round ? 3 : 1);
    Operand operand = value(*node.args[0], scope);
    if (operand.type.isText() || operand.isNull()) {
        const QString sql = convert(operand, {{Kind::Float}, {}, {}, {}});
        operand = made(sql, {Kind::Float});
    }
    if (!operand.type.isNumber())
        throw Error(8116, u"Argument data type %1 is invalid for argument 1 of %2 function."_s.arg(
                              kindName(operand.type.kind), node.name.toLower()));
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

Operand Writer::realFunction(const Expression &node, const Scope &scope)
{
    const bool two = node.name == u"POWER";
    const bool none = node.name == u"PI";
    arguments(node, none ? 0 : two ? 2 : 1, none ? 0 : two || node.name == u"LOG" ? 2 : 1);
    const SqlType real{Kind::Float};
    if (none)
        return made(u"pi()"_s, real);
    if (two) {
        // POWER keeps the type of its base.
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
    const QString argument = argumentAs(*node.args[0], scope, real);
    if (node.name == u"SQUARE")
        return made(u"real_fit(%1 * %1)"_s.arg(argument), real);
    if (node.name == u"LOG" && node.args.size() == 2)
        return made(u"real_log(%1, %2)"_s.arg(argument, argumentAs(*node.args[1], scope, real)), real);
    return made(u"real_%1(%2)"_s.arg(node.name.toLower(), argument), real);
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
        throw Error(155, u"'%1' is not a recognized datepart option."_s.arg(node.name), node.line);
    return quotedText(part);
}

Operand Writer::dateFunction(const Expression &node, const Scope &scope)
{
    const SqlType moment{Kind::DateTime};
    if (node.name == u"DATEDIFF") {
        arguments(node, 3, 3);
        return made(u"date_diff(%1, %2, %3)"_s.arg(datePart(*node.args[0]), argumentAs(*node.args[1], scope, moment),
                                                   argumentAs(*node.args[2], scope, moment)),
                    Integer);
    }
    if (node.name == u"DATEPART") {
        arguments(node, 2, 2);
        return made(u"date_part(%1, %2)"_s.arg(datePart(*node.args[0]), argumentAs(*node.args[1], scope, moment)),
                    Integer);
    }
    arguments(node, 1, 1);
    return made(u"date_part(%1, %2)"_s.arg(quotedText(node.name.toLower()), argumentAs(*node.args[0], scope, moment)),
                Integer);
}

Operand Writer::dateAdd(const Expression &node, const Scope &scope)
{
    arguments(node, 3, 3);
    const QString part = datePart(*node.args[0]);
    const QString count = argumentAs(*node.args[1], scope, Integer);
    Operand date = value(*node.args[2], scope);
    const SqlType type = date.type.isDate() ? date.type : SqlType{Kind::DateTime};
    return made(
        u"date_add(%1, %2, %3, %4)"_s.arg(part, count, convert(date, {type, {}, {}, {}}), kindNumber(type.kind)), type);
}

Operand Writer::systemFunction(const Expression &node, const Scope &)
{
    arguments(node, 0, 0);
    if (node.name == u"NEWID")
        return made(u"tsql_newid()"_s, {Kind::UniqueIdentifier});
    QString name = node.name.toLower();
    if (name == u"sysdatetime" || name == u"current_timestamp")
        name = u"getdate"_s;
    return system(name, *systemType(name));
}

Operand Writer::objectId(const Expression &node, const Scope &scope)
{
    arguments(node, 1, 2);
    QStringList parts;
    for (const ExpressionPtr &argument : node.args)
        parts += argumentAs(*argument, scope, WideText);
    return made(u"object_id(%1)"_s.arg(joined(parts)), Integer);
}

} // namespace tsql
