#pragma once

#include <QString>

namespace tsql {

/// The kinds of value a column, a variable or an expression can have.
enum class Kind : quint8 {
    Null, ///< the bare word NULL: converts to anything
    Bit,
    TinyInt,
    SmallInt,
    Int,
    BigInt,
    Decimal, ///< decimal and numeric
    Money,   ///< money and smallmoney: a decimal(19,4) that prints as such
    Real,
    Float,
    Char,
    VarChar,
    NChar,
    NVarChar,
    Date,
    Time,
    SmallDateTime,
    DateTime,
    Binary,
    VarBinary,
    UniqueIdentifier,
    Condition, ///< the outcome of a comparison: allowed where a condition is asked for, nowhere else
};

/// The static type of a value.
///
/// Storage in SQLite: Bit..BigInt INTEGER; Real and Float REAL; texts, dates and unique identifiers TEXT; binaries
/// BLOB; Decimal and Money an order-preserving BLOB of the integer scaled by `scale`, so that two values of equal scale
/// compare, group and sort natively.
struct SqlType
{
    static constexpr int Max = -1; ///< the length of varchar(max) and its like
    static constexpr int MaxPrecision = 38;

    Kind kind = Kind::Null;
    int precision = 0; ///< digits of a Decimal, both sides of the point
    int scale = 0;     ///< digits of a Decimal behind the point
    int length = 0;    ///< characters (UTF-16 units) of a text, bytes of a binary; Max for no limit

    static SqlType DecimalOf(int precision, int scale) { return {Kind::Decimal, precision, scale, 0}; }
    static SqlType Money() { return {Kind::Money, 19, 4, 0}; }
    static SqlType text(Kind kind, int length) { return {kind, 0, 0, length}; }

    bool IsInteger() const { return kind >= Kind::Bit && kind <= Kind::BigInt; }
    bool IsDecimal() const { return kind == Kind::Decimal || kind == Kind::Money; }
    bool IsReal() const { return kind == Kind::Real || kind == Kind::Float; }
    bool IsNumber() const { return kind >= Kind::Bit && kind <= Kind::Float; }
    bool IsText() const { return kind >= Kind::Char && kind <= Kind::NVarChar; }
    bool IsUnicode() const { return kind == Kind::NChar || kind == Kind::NVarChar; }
    bool IsFixedText() const { return kind == Kind::Char || kind == Kind::NChar; }
    bool IsDate() const { return kind >= Kind::Date && kind <= Kind::DateTime; }
    bool IsBinary() const { return kind == Kind::Binary || kind == Kind::VarBinary; }

    bool operator==(const SqlType &) const = default;
};

/// The name of a kind as error texts write it: "int", "nvarchar", "numeric".
QString KindName(Kind kind);
/// The whole type as a definition writes it: "decimal(23,9)", "nvarchar(max)".
QString TypeName(const SqlType &type);
/// The declared type of a SQLite column that stores this type: INTEGER, REAL, TEXT COLLATE TSQL_CI, TEXT or BLOB.
QString StorageName(const SqlType &type);
/// The precision and scale an integer kind has when it meets a decimal: int is decimal(10,0).
SqlType AsDecimal(const SqlType &type);

/// The type of `left op right` for two decimals, op one of + - * / %, with the scale cut as the server cuts it
/// when 38 digits are not enough.
SqlType DecimalResult(QChar op, const SqlType &left, const SqlType &right);
/// The type both sides of a comparison, a CASE or a UNION are brought to. Throws Error when there is none.
SqlType CommonType(const SqlType &left, const SqlType &right);

} // namespace tsql
