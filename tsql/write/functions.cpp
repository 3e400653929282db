#include "tsql/values/error.h"
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

const SqlType Integer{Kind::Int};
const SqlType WideText = SqlType::text(Kind::NVarChar, SqlType::Max);

QString Joined(const QStringList &parts)
{
    return parts.join(u", "_s);
}

/// A text that grew beyond what its type holds loses its end.
QString Limited(const QString &sql, const SqlType &type)
{
    return type.length == SqlType::Max ? sql : u"text_cut(%1, %2)"_s.arg(sql, QString::number(type.length));
}

/// The bytes of a value whose type alone decides them; 0 for the others.
int StoredBytes(const SqlType &type)
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

QString Writer::ArgumentAs(const Expression &node, const Scope &scope, const SqlType &type)
{
    Operand operand = WriteValue(node, scope);
    const bool textual = type.IsText() && operand.type.IsText() && !operand.pending;
    return textual ? operand.sql : Convert(operand, {type, {}, {}, {}});
}

Operand Writer::WriteFunction(const Expression &node, const Scope &scope)
{
    const FunctionRow *row = FunctionNamed(node.name);
    if (!row)
        throw Error(195, {node.name}, node.line);
    if (node.over && row->role == FunctionRow::Role::Value)
        throw Error(4113, {node.name}, node.line);
    if (node.args.size() < row->least || node.args.size() > row->most)
        throw Error(174, {node.name.toLower(), row->least}, node.line);
    return row->body ? (this->*row->body)(node, scope) : Called(*row, node, scope);
}

namespace {

SqlType ResultOf(const FunctionRow &row, bool unicode, bool unlimited, int firstLength)
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
Operand Writer::Called(const FunctionRow &row, const Expression &node, const Scope &scope)
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
            RefuseCollation(argument, node.name);
            Operand operand = WriteValue(argument, scope);
            unicode = unicode || operand.type.IsUnicode();
            unlimited = unlimited || (operand.type.IsText() && operand.type.length == SqlType::Max);
            if (i == 0 && operand.type.IsText())
                length = operand.type.length;
            const bool textual = operand.type.IsText() && !operand.pending;
            parts += textual ? operand.sql : Convert(operand, {WideText, {}, {}, {}});
        } else if (letter == 'p') {
            parts += DatePart(argument);
        } else {
            Q_ASSERT(QLatin1String("wifd").contains(QLatin1Char(letter)));
            parts += ArgumentAs(argument, scope,
                                letter == 'w'   ? WideText
                                : letter == 'i' ? Integer
                                : letter == 'f' ? SqlType{Kind::Float}
                                                : SqlType{Kind::DateTime});
        }
    }
    QString sql = QString::fromUtf16(row.sql);
    if (sql.contains(u"%*"_s))
        sql.replace(u"%*"_s, Joined(parts));
    else if (!parts.isEmpty())
        sql = sql.arg(parts.front());
    const SqlType type = ResultOf(row, unicode, unlimited, length);
    const bool wide = row.gives == FunctionRow::Gives::Text || row.gives == FunctionRow::Gives::UnicodeText;
    return Made(wide ? Limited(sql, type) : sql, type);
}

Operand Writer::IsNullFunction(const Expression &node, const Scope &scope)
{
    Operand first = WriteValue(*node.args[0], scope);
    Operand second = WriteValue(*node.args[1], scope);
    if (first.IsNull())
        return second;
    // The result has the type of the first argument, whatever stands second.
    SqlType type = first.type;
    if (first.pending && type.IsDecimal())
        Need(*first.pending, false);
    if (second.IsNull())
        return first;
    if (type.IsDate() && second.type.IsInteger())
        type.precision = 0;
    const QString b = Convert(second, {type, Conversion::Cast, {}, {}});
    Operand result = Made(u"ifnull(%1, %2)"_s.arg(text(first), b), type);
    result.nullable = second.nullable;
    return result;
}

Operand Writer::Coalesce(const Expression &node, const Scope &scope)
{
    std::vector<Operand> operands;
    SqlType type;
    for (const ExpressionPtr &argument : node.args) {
        operands.push_back(WriteValue(*argument, scope));
        if (operands.back().pending && operands.back().type.IsDecimal())
            Need(*operands.back().pending, false);
        type = CommonType(type, operands.back().type);
    }
    if (type.kind == Kind::Null)
        throw Error(4127, {}, node.line);
    QStringList parts;
    for (Operand &operand : operands)
        parts += Convert(operand, {type, {}, {}, {}});
    return Made(u"coalesce(%1)"_s.arg(Joined(parts)), type);
}

Operand Writer::NullIf(const Expression &node, const Scope &scope)
{
    Operand first = WriteValue(*node.args[0], scope);
    if (first.IsNull())
        throw Error(4151, {}, node.line);
    Operand again = Repeated(*node.args[0], scope);
    Operand second = WriteValue(*node.args[1], scope);
    const SqlType type = first.type;
    const QString equal = Compare(u"="_s, first, second);
    return Made(u"CASE WHEN %1 THEN NULL ELSE %2 END"_s.arg(equal, text(again)), type);
}

Operand Writer::Iif(const Expression &node, const Scope &scope)
{
    const QString condition = ConditionText(*node.args[0], scope);
    Operand yes = WriteValue(*node.args[1], scope);
    Operand no = WriteValue(*node.args[2], scope);
    const SqlType type = CommonType(yes.type, no.type);
    const QString a = Convert(yes, {type, {}, {}, {}});
    const QString b = Convert(no, {type, {}, {}, {}});
    return Made(u"CASE WHEN %1 THEN %2 ELSE %3 END"_s.arg(condition, a, b), type);
}

Operand Writer::Concat(const Expression &node, const Scope &scope)
{
    bool unicode = false;
    bool unlimited = false;
    QStringList parts;
    for (const ExpressionPtr &argument : node.args) {
        Operand operand = WriteValue(*argument, scope);
        unicode = unicode || operand.type.IsUnicode();
        unlimited = unlimited || (operand.type.IsText() && operand.type.length == SqlType::Max);
        const bool textual = operand.type.IsText() && !operand.pending;
        parts += u"ifnull(%1, '')"_s.arg(textual ? operand.sql : Convert(operand, {WideText, {}, {}, {}}));
    }
    const SqlType type = unlimited ? SqlType::text(unicode ? Kind::NVarChar : Kind::VarChar, SqlType::Max)
                                   : SqlType::text(unicode ? Kind::NVarChar : Kind::VarChar, unicode ? 4000 : 8000);
    return Made(Limited(u"(%1)"_s.arg(parts.join(u" || "_s)), type), type);
}

Operand Writer::DataLength(const Expression &node, const Scope &scope)
{
    Operand operand = WriteValue(*node.args[0], scope);
    const int unit = operand.type.IsUnicode() ? 2 : 1;
    if (const int bytes = StoredBytes(operand.type))
        return Made(u"CASE WHEN %1 IS NOT NULL THEN %2 END"_s.arg(text(operand), QString::number(bytes)), Integer);
    return Made(u"tsql_datalength(%1, %2)"_s.arg(text(operand), QString::number(unit)), Integer);
}

Operand Writer::Str(const Expression &node, const Scope &scope)
{
    QStringList parts{ArgumentAs(*node.args[0], scope, {Kind::Float})};
    parts += node.args.size() > 1 ? ArgumentAs(*node.args[1], scope, Integer) : u"10"_s;
    parts += node.args.size() > 2 ? ArgumentAs(*node.args[2], scope, Integer) : u"0"_s;
    return Made(u"tsql_str(%1)"_s.arg(Joined(parts)), SqlType::text(Kind::VarChar, 255));
}

Operand Writer::MathFunction(const Expression &node, const Scope &scope)
{
    const bool round = node.name == u"ROUND";
    Operand operand = WriteValue(*node.args[0], scope);
    if (operand.type.IsText() || operand.IsNull()) {
        const QString sql = Convert(operand, {{Kind::Float}, {}, {}, {}});
        operand = Made(sql, {Kind::Float});
    }
    if (!operand.type.IsNumber())
        throw Error(8116, {KindName(operand.type.kind), node.name.toLower()});
    const SqlType type = operand.type;
    const QString sql = text(operand);
    QStringList digits;
    for (std::size_t i = 1; i < node.args.size(); ++i)
        digits += ArgumentAs(*node.args[i], scope, Integer);
    const QString scale = QString::number(type.scale);
    const QString whole = KindNumber(type.kind);
    if (node.name == u"ABS") {
        if (type.IsDecimal())
            return Made(u"dec_abs(%1)"_s.arg(sql), type);
        return Made(type.IsReal() ? u"abs(%1)"_s.arg(sql) : u"int_fit(abs(%1), %2)"_s.arg(sql, whole), type);
    }
    if (node.name == u"SIGN") {
        if (type.IsDecimal())
            return Made(u"dec_of_int(dec_sign(%1), %2, %3)"_s.arg(sql, QString::number(type.precision), scale), type);
        return Made(type.IsReal() ? u"CAST(sign(%1) AS REAL)"_s.arg(sql) : u"sign(%1)"_s.arg(sql), type);
    }
    if (round) {
        if (type.IsDecimal())
            return Made(u"dec_round(%1, %2, %3)"_s.arg(sql, scale, Joined(digits)), type);
        if (type.IsReal())
            return Made(u"round_real(%1, %2)"_s.arg(sql, Joined(digits)), type);
        return Made(
            u"int_fit(dec_to_int(dec_round(dec_of_int(%1, 38, 0), 0, %2), 0, 4), %3)"_s.arg(sql, Joined(digits), whole),
            type);
    }
    const QString name = node.name.toLower();
    if (type.IsDecimal()) {
        const SqlType result = SqlType::DecimalOf(type.precision, 0);
        return Made(u"dec_%1(%2, %3)"_s.arg(name, sql, scale), result);
    }
    return Made(type.IsReal() ? u"%1(%2)"_s.arg(name == u"floor" ? u"floor"_s : u"ceil"_s, sql) : sql, type);
}

/// POWER keeps the type of its base.
Operand Writer::Power(const Expression &node, const Scope &scope)
{
    const SqlType real{Kind::Float};
    Operand base = WriteValue(*node.args[0], scope);
    const SqlType type = base.type.IsInteger() || base.type.IsDecimal() ? base.type : real;
    if (base.pending && type.IsDecimal())
        Need(*base.pending, false);
    const QString a = Convert(base, {real, {}, {}, {}});
    const QString b = ArgumentAs(*node.args[1], scope, real);
    const QString sql = u"real_pow(%1, %2)"_s.arg(a, b);
    if (type.IsInteger())
        return Made(u"int_of_power(%1, %2)"_s.arg(sql, KindNumber(type.kind)), {type.kind});
    Operand power = Made(sql, real);
    return type.IsReal()
               ? power
               : Made(Convert(power, {SqlType{type.kind, type.IsDecimal() ? 38 : 0, type.scale, 0}, {}, {}, {}}),
                      type.IsDecimal() ? SqlType::DecimalOf(38, type.scale) : SqlType{type.kind});
}

QString Writer::DatePart(const Expression &node) const
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
    return QuotedText(part);
}

Operand Writer::DateAdd(const Expression &node, const Scope &scope)
{
    const QString part = DatePart(*node.args[0]);
    const QString count = ArgumentAs(*node.args[1], scope, Integer);
    Operand date = WriteValue(*node.args[2], scope);
    const SqlType type = date.type.IsDate() ? date.type : SqlType{Kind::DateTime};
    return Made(
        u"date_add(%1, %2, %3, %4)"_s.arg(part, count, Convert(date, {type, {}, {}, {}}), KindNumber(type.kind)), type);
}

Operand Writer::SystemFunction(const Expression &node, const Scope &)
{
    const QString name = QString::fromUtf16(FunctionNamed(node.name)->sql);
    return System(name, *SystemType(name));
}

} // namespace tsql
