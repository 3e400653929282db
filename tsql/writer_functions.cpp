#include "tsql/error.h"
#include "tsql/writer_impl.h"

namespace tsql {

namespace {

const SqlType Integer{Kind::Int};
const SqlType WideText = SqlType::text(Kind::NVarChar, SqlType::Max);

QString joined(const QStringList &parts)
{
    return parts.join(u", "_qs);
}

/// A text that grew beyond what its type holds loses its end.
QString limited(const QString &sql, const SqlType &type)
{
    return type.length == SqlType::Max ? sql : u"text_cut(%1, %2)"_qs.arg(sql, QString::number(type.length));
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
        throw Error(174, u"The %1 function requires %2 argument(s)."_qs.arg(node.name.toLower()).arg(least), node.line);
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
            {u"ISNULL"_qs, &Writer::isNullFunction}, {u"COALESCE"_qs, &Writer::coalesce},
            {u"NULLIF"_qs, &Writer::nullIf},         {u"IIF"_qs, &Writer::iif},
            {u"CONCAT"_qs, &Writer::concat},         {u"DATEADD"_qs, &Writer::dateAdd},
            {u"OBJECT_ID"_qs, &Writer::objectId},
        };
        for (const QString &name : {u"LEN"_qs,       u"DATALENGTH"_qs, u"SUBSTRING"_qs, u"LEFT"_qs,    u"RIGHT"_qs,
                                    u"CHARINDEX"_qs, u"PATINDEX"_qs,   u"STUFF"_qs,     u"REPLACE"_qs, u"LTRIM"_qs,
                                    u"RTRIM"_qs,     u"TRIM"_qs,       u"UPPER"_qs,     u"LOWER"_qs,   u"REVERSE"_qs,
                                    u"REPLICATE"_qs, u"SPACE"_qs,      u"ASCII"_qs,     u"UNICODE"_qs, u"CHAR"_qs,
                                    u"NCHAR"_qs,     u"QUOTENAME"_qs,  u"ISNUMERIC"_qs, u"ISDATE"_qs,  u"STR"_qs})
            functions.insert(name, &Writer::textFunction);
        for (const QString &name : {u"ABS"_qs, u"SIGN"_qs, u"ROUND"_qs, u"FLOOR"_qs, u"CEILING"_qs})
            functions.insert(name, &Writer::mathFunction);
        for (const QString &name : {u"SQRT"_qs, u"EXP"_qs, u"LOG"_qs, u"POWER"_qs, u"PI"_qs, u"SQUARE"_qs})
            functions.insert(name, &Writer::realFunction);
        for (const QString &name : {u"DATEDIFF"_qs, u"DATEPART"_qs, u"YEAR"_qs, u"MONTH"_qs, u"DAY"_qs})
            functions.insert(name, &Writer::dateFunction);
        for (const QString &name :
             {u"COUNT"_qs, u"COUNT_BIG"_qs, u"SUM"_qs, u"AVG"_qs, u"MIN"_qs, u"MAX"_qs, u"STRING_AGG"_qs})
            functions.insert(name, &Writer::aggregate);
        for (const QString &name : {u"ROW_NUMBER"_qs, u"RANK"_qs, u"DENSE_RANK"_qs})
            functions.insert(name, &Writer::ranking);
        for (const QString &name :
             {u"GETDATE"_qs, u"SYSDATETIME"_qs, u"CURRENT_TIMESTAMP"_qs, u"GETUTCDATE"_qs, u"SCOPE_IDENTITY"_qs,
              u"DB_NAME"_qs, u"SUSER_SNAME"_qs, u"HOST_NAME"_qs, u"APP_NAME"_qs, u"ERROR_NUMBER"_qs, u"ERROR_LINE"_qs,
              u"ERROR_SEVERITY"_qs, u"ERROR_STATE"_qs, u"ERROR_MESSAGE"_qs, u"ERROR_PROCEDURE"_qs, u"XACT_STATE"_qs,
              u"NEWID"_qs})
            functions.insert(name, &Writer::systemFunction);
        return functions;
    }();
    const auto found = table.constFind(node.name);
    if (found == table.cend())
        throw Error(195, u"'%1' is not a recognized built-in function name."_qs.arg(node.name), node.line);
    const bool windowed = *found == &Writer::aggregate || *found == &Writer::ranking;
    if (node.over && !windowed)
        throw Error(
            4113,
            u"The function '%1' is not a valid windowing function, and cannot be used with the OVER clause."_qs.arg(
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
    Operand result = made(u"ifnull(%1, %2)"_qs.arg(text(first), b), type);
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
        throw Error(
            4127, u"At least one of the arguments to COALESCE must be an expression that is not the NULL constant."_qs,
            node.line);
    QStringList parts;
    for (Operand &operand : operands)
        parts += convert(operand, {type, {}, {}, {}});
    return made(u"coalesce(%1)"_qs.arg(joined(parts)), type);
}

Operand Writer::nullIf(const Expression &node, const Scope &scope)
{
    arguments(node, 2, 2);
    Operand first = value(*node.args[0], scope);
    if (first.isNull())
        throw Error(
            4151,
            u"The type of the first argument to NULLIF cannot be the NULL constant because the type of the first "
            "argument has to be known."_qs,
            node.line);
    Operand again = repeated(*node.args[0], scope);
    Operand second = value(*node.args[1], scope);
    const SqlType type = first.type;
    const QString equal = compare(u"="_qs, first, second);
    return made(u"CASE WHEN %1 THEN NULL ELSE %2 END"_qs.arg(equal, text(again)), type);
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
    return made(u"CASE WHEN %1 THEN %2 ELSE %3 END"_qs.arg(condition, a, b), type);
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
        parts += u"ifnull(%1, '')"_qs.arg(textual ? operand.sql : convert(operand, {WideText, {}, {}, {}}));
    }
    const SqlType type = unlimited ? SqlType::text(unicode ? Kind::NVarChar : Kind::VarChar, SqlType::Max)
                                   : SqlType::text(unicode ? Kind::NVarChar : Kind::VarChar, unicode ? 4000 : 8000);
    return made(limited(u"(%1)"_qs.arg(parts.join(u" || "_qs)), type), type);
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
        {u"LEN"_qs, {QLatin1String("tsql_len"), QLatin1String("t"), TextShape::Number}},
        {u"SUBSTRING"_qs, {QLatin1String("tsql_substring"), QLatin1String("tii"), TextShape::OfFirst}},
        {u"LEFT"_qs, {QLatin1String("tsql_left"), QLatin1String("ti"), TextShape::OfFirst}},
        {u"RIGHT"_qs, {QLatin1String("tsql_right"), QLatin1String("ti"), TextShape::OfFirst}},
        {u"CHARINDEX"_qs, {QLatin1String("tsql_charindex"), QLatin1String("ttoi"), TextShape::Number}},
        {u"PATINDEX"_qs, {QLatin1String("tsql_patindex"), QLatin1String("tt"), TextShape::Number}},
        {u"STUFF"_qs, {QLatin1String("tsql_stuff"), QLatin1String("tiit"), TextShape::Wide}},
        {u"REPLACE"_qs, {QLatin1String("tsql_replace"), QLatin1String("ttt"), TextShape::Wide}},
        {u"LTRIM"_qs, {QLatin1String("tsql_ltrim"), QLatin1String("t"), TextShape::OfFirst}},
        {u"RTRIM"_qs, {QLatin1String("tsql_rtrim"), QLatin1String("t"), TextShape::OfFirst}},
        {u"TRIM"_qs, {QLatin1String("tsql_trim"), QLatin1String("t"), TextShape::OfFirst}},
        {u"UPPER"_qs, {QLatin1String("tsql_upper"), QLatin1String("t"), TextShape::OfFirst}},
        {u"LOWER"_qs, {QLatin1String("tsql_lower"), QLatin1String("t"), TextShape::OfFirst}},
        {u"REVERSE"_qs, {QLatin1String("tsql_reverse"), QLatin1String("t"), TextShape::OfFirst}},
        {u"REPLICATE"_qs, {QLatin1String("tsql_replicate"), QLatin1String("ti"), TextShape::Wide}},
        {u"SPACE"_qs, {QLatin1String("tsql_space"), QLatin1String("i"), TextShape::Wide}},
        {u"ASCII"_qs, {QLatin1String("tsql_ascii"), QLatin1String("t"), TextShape::Number}},
        {u"UNICODE"_qs, {QLatin1String("tsql_unicode"), QLatin1String("t"), TextShape::Number}},
        {u"CHAR"_qs, {QLatin1String("tsql_nchar"), QLatin1String("i"), TextShape::One}},
        {u"NCHAR"_qs, {QLatin1String("tsql_nchar"), QLatin1String("i"), TextShape::One}},
        {u"QUOTENAME"_qs, {QLatin1String("tsql_quotename"), QLatin1String("tot"), TextShape::Wide}},
        {u"ISNUMERIC"_qs, {QLatin1String("tsql_isnumeric"), QLatin1String("t"), TextShape::Number}},
        {u"ISDATE"_qs, {QLatin1String("tsql_isdate"), QLatin1String("t"), TextShape::Number}},
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
            return made(u"CASE WHEN %1 IS NOT NULL THEN %2 END"_qs.arg(text(operand), QString::number(bytes)), Integer);
        return made(u"tsql_datalength(%1, %2)"_qs.arg(text(operand), QString::number(unit)), Integer);
    }
    if (node.name == u"STR") {
        arguments(node, 1, 3);
        QStringList parts{argumentAs(*node.args[0], scope, {Kind::Float})};
        parts += node.args.size() > 1 ? argumentAs(*node.args[1], scope, Integer) : u"10"_qs;
        parts += node.args.size() > 2 ? argumentAs(*node.args[2], scope, Integer) : u"0"_qs;
        return made(u"tsql_str(%1)"_qs.arg(joined(parts)), SqlType::text(Kind::VarChar, 255));
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
    const QString call = u"%1(%2)"_qs.arg(QString(shape.name), joined(parts));
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
        throw Error(8116, u"Argument data type %1 is invalid for argument 1 of %2 function."_qs.arg(
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
            return made(u"dec_abs(%1)"_qs.arg(sql), type);
        return made(type.isReal() ? u"abs(%1)"_qs.arg(sql) : u"int_fit(abs(%1), %2)"_qs.arg(sql, whole), type);
    }
    if (node.name == u"SIGN") {
        if (type.isDecimal())
            return made(u"dec_of_int(dec_sign(%1), %2, %3)"_qs.arg(sql, QString::number(type.precision), scale), type);
        return made(type.isReal() ? u"CAST(sign(%1) AS REAL)"_qs.arg(sql) : u"sign(%1)"_qs.arg(sql), type);
    }
    if (round) {
        if (type.isDecimal())
            return made(u"dec_round(%1, %2, %3)"_qs.arg(sql, scale, joined(digits)), type);
        if (type.isReal())
            return made(u"round_real(%1, %2)"_qs.arg(sql, joined(digits)), type);
        return made(u"int_fit(dec_to_int(dec_round(dec_of_int(%1, 38, 0), 0, %2), 0, 4), %3)"_qs.arg(
                        sql, joined(digits), whole),
                    type);
    }
    const QString name = node.name.toLower();
    if (type.isDecimal()) {
        const SqlType result = SqlType::decimal(type.precision, 0);
        return made(u"dec_%1(%2, %3)"_qs.arg(name, sql, scale), result);
    }
    return made(type.isReal() ? u"%1(%2)"_qs.arg(name == u"floor" ? u"floor"_qs : u"ceil"_qs, sql) : sql, type);
}

Operand Writer::realFunction(const Expression &node, const Scope &scope)
{
    const bool two = node.name == u"POWER";
    const bool none = node.name == u"PI";
    arguments(node, none ? 0 : two ? 2 : 1, none ? 0 : two || node.name == u"LOG" ? 2 : 1);
    const SqlType real{Kind::Float};
    if (none)
        return made(u"pi()"_qs, real);
    if (two) {
        // POWER keeps the type of its base.
        Operand base = value(*node.args[0], scope);
        const SqlType type = base.type.isInteger() || base.type.isDecimal() ? base.type : real;
        if (base.pending && type.isDecimal())
            need(*base.pending, false);
        const QString a = convert(base, {real, {}, {}, {}});
        const QString b = argumentAs(*node.args[1], scope, real);
        const QString sql = u"real_pow(%1, %2)"_qs.arg(a, b);
        if (type.isInteger())
            return made(u"int_of_power(%1, %2)"_qs.arg(sql, kindNumber(type.kind)), {type.kind});
        Operand power = made(sql, real);
        return type.isReal()
                   ? power
                   : made(convert(power, {SqlType{type.kind, type.isDecimal() ? 38 : 0, type.scale, 0}, {}, {}, {}}),
                          type.isDecimal() ? SqlType::decimal(38, type.scale) : SqlType{type.kind});
    }
    const QString argument = argumentAs(*node.args[0], scope, real);
    if (node.name == u"SQUARE")
        return made(u"real_fit(%1 * %1)"_qs.arg(argument), real);
    if (node.name == u"LOG" && node.args.size() == 2)
        return made(u"real_log(%1, %2)"_qs.arg(argument, argumentAs(*node.args[1], scope, real)), real);
    return made(u"real_%1(%2)"_qs.arg(node.name.toLower(), argument), real);
}

QString Writer::datePart(const Expression &node) const
{
    static const QHash<QString, QString> parts = {
        {u"year"_qs, u"year"_qs},
        {u"yy"_qs, u"year"_qs},
        {u"yyyy"_qs, u"year"_qs},
        {u"quarter"_qs, u"quarter"_qs},
        {u"qq"_qs, u"quarter"_qs},
        {u"q"_qs, u"quarter"_qs},
        {u"month"_qs, u"month"_qs},
        {u"mm"_qs, u"month"_qs},
        {u"m"_qs, u"month"_qs},
        {u"day"_qs, u"day"_qs},
        {u"dd"_qs, u"day"_qs},
        {u"d"_qs, u"day"_qs},
        {u"dayofyear"_qs, u"dayofyear"_qs},
        {u"dy"_qs, u"dayofyear"_qs},
        {u"weekday"_qs, u"weekday"_qs},
        {u"dw"_qs, u"weekday"_qs},
        {u"week"_qs, u"week"_qs},
        {u"ww"_qs, u"week"_qs},
        {u"wk"_qs, u"week"_qs},
        {u"hour"_qs, u"hour"_qs},
        {u"hh"_qs, u"hour"_qs},
        {u"minute"_qs, u"minute"_qs},
        {u"mi"_qs, u"minute"_qs},
        {u"n"_qs, u"minute"_qs},
        {u"second"_qs, u"second"_qs},
        {u"ss"_qs, u"second"_qs},
        {u"s"_qs, u"second"_qs},
        {u"millisecond"_qs, u"millisecond"_qs},
        {u"ms"_qs, u"millisecond"_qs},
    };
    const QString part = node.kind == ExpressionKind::Column ? parts.value(node.name.toLower()) : QString();
    if (part.isEmpty())
        throw Error(155, u"'%1' is not a recognized datepart option."_qs.arg(node.name), node.line);
    return quotedText(part);
}

Operand Writer::dateFunction(const Expression &node, const Scope &scope)
{
    const SqlType moment{Kind::DateTime};
    if (node.name == u"DATEDIFF") {
        arguments(node, 3, 3);
        return made(u"date_diff(%1, %2, %3)"_qs.arg(datePart(*node.args[0]), argumentAs(*node.args[1], scope, moment),
                                                    argumentAs(*node.args[2], scope, moment)),
                    Integer);
    }
    if (node.name == u"DATEPART") {
        arguments(node, 2, 2);
        return made(u"date_part(%1, %2)"_qs.arg(datePart(*node.args[0]), argumentAs(*node.args[1], scope, moment)),
                    Integer);
    }
    arguments(node, 1, 1);
    return made(u"date_part(%1, %2)"_qs.arg(quotedText(node.name.toLower()), argumentAs(*node.args[0], scope, moment)),
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
        u"date_add(%1, %2, %3, %4)"_qs.arg(part, count, convert(date, {type, {}, {}, {}}), kindNumber(type.kind)),
        type);
}

Operand Writer::systemFunction(const Expression &node, const Scope &)
{
    arguments(node, 0, 0);
    if (node.name == u"NEWID")
        return made(u"tsql_newid()"_qs, {Kind::UniqueIdentifier});
    QString name = node.name.toLower();
    if (name == u"sysdatetime" || name == u"current_timestamp")
        name = u"getdate"_qs;
    return system(name, *systemType(name));
}

Operand Writer::objectId(const Expression &node, const Scope &scope)
{
    arguments(node, 1, 2);
    QStringList parts;
    for (const ExpressionPtr &argument : node.args)
        parts += argumentAs(*argument, scope, WideText);
    return made(u"object_id(%1)"_qs.arg(joined(parts)), Integer);
}

} // namespace tsql
