#include "tsql/values/types.h"

#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

QString KindName(Kind kind)
{
    switch (kind) {
    case Kind::Null:
        return u"NULL"_s;
    case Kind::Bit:
        return u"bit"_s;
    case Kind::TinyInt:
        return u"tinyint"_s;
    case Kind::SmallInt:
        return u"smallint"_s;
    case Kind::Int:
        return u"int"_s;
    case Kind::BigInt:
        return u"bigint"_s;
    case Kind::Decimal:
        return u"numeric"_s;
    case Kind::Money:
        return u"money"_s;
    case Kind::Real:
        return u"real"_s;
    case Kind::Float:
        return u"float"_s;
    case Kind::Char:
        return u"char"_s;
    case Kind::VarChar:
        return u"varchar"_s;
    case Kind::NChar:
        return u"nchar"_s;
    case Kind::NVarChar:
        return u"nvarchar"_s;
    case Kind::Date:
        return u"date"_s;
    case Kind::Time:
        return u"time"_s;
    case Kind::SmallDateTime:
        return u"smalldatetime"_s;
    case Kind::DateTime:
        return u"datetime"_s;
    case Kind::Binary:
        return u"binary"_s;
    case Kind::VarBinary:
        return u"varbinary"_s;
    case Kind::UniqueIdentifier:
        return u"uniqueidentifier"_s;
    case Kind::Condition:
        return u"condition"_s;
    }
    return {};
}

QString TypeName(const SqlType &type)
{
    if (type.kind == Kind::Decimal)
        return u"decimal(%1,%2)"_s.arg(type.precision).arg(type.scale);
    if (type.IsText() || type.IsBinary()) {
        const QString length = type.length == SqlType::Max ? u"max"_s : QString::number(type.length);
        return u"%1(%2)"_s.arg(KindName(type.kind), length);
    }
    return KindName(type.kind);
}

QString StorageName(const SqlType &type)
{
    if (type.IsInteger())
        return u"INTEGER"_s;
    if (type.IsReal())
        return u"REAL"_s;
    if (type.IsText() || type.kind == Kind::UniqueIdentifier)
        return u"TEXT COLLATE TSQL_CI"_s;
    if (type.IsDate())
        return u"TEXT"_s;
    return u"BLOB"_s;
}

SqlType AsDecimal(const SqlType &type)
{
    switch (type.kind) {
    case Kind::Bit:
        return SqlType::DecimalOf(1, 0);
    case Kind::TinyInt:
        return SqlType::DecimalOf(3, 0);
    case Kind::SmallInt:
        return SqlType::DecimalOf(5, 0);
    case Kind::Int:
        return SqlType::DecimalOf(10, 0);
    case Kind::BigInt:
        return SqlType::DecimalOf(19, 0);
    case Kind::Money:
        return SqlType::DecimalOf(19, 4);
    case Kind::Decimal:
        return type;
    default:
        return SqlType::DecimalOf(SqlType::MaxPrecision, 0);
    }
}

namespace {

/// Brings a result of more than 38 digits back to 38. Sums give up digits behind the point only as far as the
/// whole part needs them; products and quotients keep six behind the point when there are that many.
SqlType Cut(QChar op, int precision, int scale, int wholeOfSum)
{
    constexpr int Max = SqlType::MaxPrecision;
    constexpr int KeptScale = 6;
    if (precision <= Max)
        return SqlType::DecimalOf(precision, scale);
    if (op == u'+' || op == u'-')
        return SqlType::DecimalOf(Max, qMin(scale, Max - wholeOfSum));
    const int whole = precision - scale;
    if (whole < Max - KeptScale)
        return SqlType::DecimalOf(Max, qMin(scale, Max - whole));
    return SqlType::DecimalOf(Max, qMin(scale, KeptScale));
}

/// Kinds that meet in an expression become the one that stands higher here.
int Rank(Kind kind)
{
    switch (kind) {
    case Kind::Null:
        return 0;
    case Kind::Binary:
        return 1;
    case Kind::VarBinary:
        return 2;
    case Kind::Char:
        return 3;
    case Kind::VarChar:
        return 4;
    case Kind::NChar:
        return 5;
    case Kind::NVarChar:
        return 6;
    case Kind::UniqueIdentifier:
        return 7;
    case Kind::Bit:
        return 8;
    case Kind::TinyInt:
        return 9;
    case Kind::SmallInt:
        return 10;
    case Kind::Int:
        return 11;
    case Kind::BigInt:
        return 12;
    case Kind::Money:
        return 13;
    case Kind::Decimal:
        return 14;
    case Kind::Real:
        return 15;
    case Kind::Float:
        return 16;
    case Kind::Time:
        return 17;
    case Kind::Date:
        return 18;
    case Kind::SmallDateTime:
        return 19;
    case Kind::DateTime:
        return 20;
    case Kind::Condition:
        break;
    }
    return -1;
}

int Longer(int a, int b)
{
    return a == SqlType::Max || b == SqlType::Max ? SqlType::Max : qMax(a, b);
}

[[noreturn]] void Clash(const SqlType &left, const SqlType &right)
{
    throw Error(206, {KindName(left.kind), KindName(right.kind)});
}

} // namespace

SqlType DecimalResult(QChar op, const SqlType &left, const SqlType &right)
{
    const int wholeLeft = left.precision - left.scale;
    const int wholeRight = right.precision - right.scale;
    const int scale = qMax(left.scale, right.scale);
    const int whole = qMax(wholeLeft, wholeRight);
    switch (op.unicode()) {
    case u'*':
        return Cut(op, left.precision + right.precision + 1, left.scale + right.scale, whole);
    case u'/': {
        const int quotientScale = qMax(6, left.scale + right.precision + 1);
        return Cut(op, wholeLeft + right.scale + quotientScale, quotientScale, whole);
    }
    case u'%':
        return Cut(op, qMax(1, qMin(wholeLeft, wholeRight) + scale), scale, whole);
    default:
        return Cut(op, scale + whole + 1, scale, whole);
    }
}

SqlType CommonType(const SqlType &left, const SqlType &right)
{
    if (left.kind == Kind::Condition || right.kind == Kind::Condition)
        Clash(left, right);
    const bool rightWins = Rank(right.kind) > Rank(left.kind);
    const SqlType &high = rightWins ? right : left;
    const SqlType &low = rightWins ? left : right;
    if (low.kind == Kind::Null)
        return high;
    if (high.IsDate() && low.IsDate()) {
        const bool timeOnly = (high.kind == Kind::Time) != (low.kind == Kind::Time);
        return timeOnly && high.kind == Kind::Date ? throw Error(206, {u"date"_s, u"time"_s}) : high;
    }
    if (high.IsDate() && !low.IsText() && !(high.kind == Kind::DateTime || high.kind == Kind::SmallDateTime))
        Clash(left, right);
    if (low.IsBinary() && !high.IsBinary() && !high.IsInteger())
        Clash(left, right);
    if (high.kind == Kind::Decimal && low.IsNumber()) {
        const SqlType other = AsDecimal(low);
        const int scale = qMax(high.scale, other.scale);
        const int whole = qMax(high.precision - high.scale, other.precision - other.scale);
        return SqlType::DecimalOf(qMin(SqlType::MaxPrecision, whole + scale), scale);
    }
    if (high.kind == Kind::Decimal && low.IsText())
        return high;
    if ((high.IsText() && low.IsText()) || (high.IsBinary() && low.IsBinary())) {
        const bool variable = high.kind == Kind::VarChar || high.kind == Kind::NVarChar ||
                              high.kind == Kind::VarBinary || high.kind == low.kind || low.IsFixedText();
        SqlType result = high;
        if (!variable)
            result.kind = high.kind == Kind::NChar ? Kind::NVarChar : high.kind;
        result.length = Longer(left.length, right.length);
        return result;
    }
    return high;
}

} // namespace tsql
