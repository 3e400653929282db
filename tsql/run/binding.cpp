#include "tsql/run/binding.h"

#include "tsql/text/literals.h"
#include "tsql/values/convert.h"
#include "tsql/values/decimal.h"

namespace tsql {

namespace {

// Longer texts are converted on the heap.
constexpr qsizetype ShortText = 200;
constexpr qsizetype ShortNumber = 60;

/** UTF-8 of a short text; a lone surrogate is written as it stands. Returns the length. */
int Encode(QStringView text, char *out)
{
    char *at = out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t c = text[i].unicode();
        if (c < 0x80) {
            *at++ = char(c);
            continue;
        }
        if (c < 0x800) {
            *at++ = char(0xC0 | c >> 6);
        } else {
            if (QChar::isHighSurrogate(c) && i + 1 < text.size() && text[i + 1].isLowSurrogate())
                c = QChar::surrogateToUcs4(char16_t(c), text[++i].unicode());
            if (c < 0x10000) {
                *at++ = char(0xE0 | c >> 12);
            } else {
                *at++ = char(0xF0 | c >> 18);
                *at++ = char(0x80 | (c >> 12 & 0x3F));
            }
            *at++ = char(0x80 | (c >> 6 & 0x3F));
        }
        *at++ = char(0x80 | (c & 0x3F));
    }
    return int(at - out);
}

bool BindShortText(sqlite3_stmt *statement, int index, const Literal &literal, const SqlType &type, BoundBytes *bytes)
{
    const bool isText = literal.kind == LiteralKind::Text || literal.kind == LiteralKind::Unicode;
    if (!isText || !type.IsText() || type.IsFixedText() || literal.text.size() > ShortText ||
        (type.length != SqlType::Max && literal.text.size() > type.length))
        return false;
    if (char *kept = bytes ? bytes->Take(literal.text.size() * 3) : nullptr) {
        sqlite3_bind_text(statement, index, kept, Encode(literal.text, kept), SQLITE_STATIC);
        return true;
    }
    char utf8[ShortText * 3];
    sqlite3_bind_text(statement, index, utf8, Encode(literal.text, utf8), SQLITE_TRANSIENT);
    return true;
}

bool BindDecimal(sqlite3_stmt *statement, int index, const Literal &literal, const Parameter &parameter,
                 BoundBytes *bytes)
{
    const bool isNumber = literal.kind == LiteralKind::Integer || literal.kind == LiteralKind::Decimal;
    if (!isNumber || !parameter.type.IsDecimal() || literal.text.size() > ShortNumber)
        return false;
    char digits[ShortNumber];
    for (qsizetype i = 0; i < literal.text.size(); ++i)
        digits[i] = char(literal.text[i].unicode());
    bool ok = false;
    Decimal value = Decimal::FromText(std::string_view(digits, size_t(literal.text.size())), ok);
    if (literal.text.size() - value.scale > parameter.type.precision - parameter.type.scale)
        return false; // may not fit: the general way finds the words for it
    if (parameter.negate)
        value.units = -value.units;
    unsigned char blob[17];
    char *kept = bytes ? bytes->Take(sizeof blob) : nullptr;
    auto *out = kept ? reinterpret_cast<unsigned char *>(kept) : blob;
    const int length = value.Rescaled(parameter.type.precision, parameter.type.scale).ToBlob(out);
    sqlite3_bind_blob(statement, index, out, length, kept ? SQLITE_STATIC : SQLITE_TRANSIENT);
    return true;
}

} // namespace

void BindLiteral(sqlite3_stmt *statement, int index, const Literal &literal, const Parameter &parameter,
                 BoundBytes *bytes)
{
    const Kind kind = parameter.type.kind;
    if (literal.kind == LiteralKind::Integer && (kind == Kind::Int || kind == Kind::BigInt)) {
        sqlite3_bind_int64(statement, index, parameter.negate ? -literal.integer : literal.integer);
        return;
    }
    if (BindShortText(statement, index, literal, parameter.type, bytes) ||
        BindDecimal(statement, index, literal, parameter, bytes))
        return;
    BindConverted(statement, index, LiteralValue(literal, parameter.negate), LiteralType(literal), parameter);
}

void BindConverted(sqlite3_stmt *statement, int index, const Value &value, const SqlType &type,
                   const Parameter &parameter)
{
    if (type == parameter.type || value.IsNull()) {
        BindValue(statement, index, value);
        return;
    }
    BindValue(statement, index,
              Convert(value, type,
                      {parameter.type, parameter.conversion == Conversion::Assign, parameter.table, parameter.column}));
}

} // namespace tsql
