#pragma once

#include <QString>

#include <vector>

namespace tsql {

/// The kinds of constant a text can spell.
enum class LiteralKind : quint8 {
    Integer, ///< fits 32 bits
    Decimal, ///< 12.5, and whole numbers beyond 32 bits
    Float,   ///< 1e5
    Text,    ///< '…'
    Unicode, ///< N'…'
    Binary,  ///< 0x…
};

/// A constant as it was written. Numbers and binaries keep their digits, texts are without quotes.
struct Literal
{
    LiteralKind kind = LiteralKind::Integer;
    QString text;
    qint64 integer = 0; ///< the value of an Integer
};

enum class TokenKind : quint8 { Word, Quoted, Variable, Literal, Symbol, End };

/// One token. Quoted is a [bracketed] or "double-quoted" name without its marks.
struct Token
{
    TokenKind kind = TokenKind::End;
    QString text;
    int literal = -1;     ///< index into the literals of the text
    int line = 1;         ///< from 1
    qsizetype offset = 0; ///< of the first character
    qsizetype end = 0;    ///< behind the last character
};

/// All tokens of a text, the last of them End, and its literals in the order of their appearance.
struct Tokens
{
    std::vector<Token> tokens;
    std::vector<Literal> literals;
};

/// Splits a text into tokens. Throws Error for an unclosed quote or comment and for a character of no meaning.
Tokens Tokenize(QStringView text);

/// What the statement cache looks up: the text with each literal replaced by the mark of its kind.
/// Two texts of one key differ in nothing but the values of their literals.
struct Shape
{
    QString key;
    std::vector<Literal> literals; ///< in the same order as Tokens::literals
};

/// The shape of a text in a single pass without building tokens; `into` may hold an earlier shape whose memory is
/// used again.
/// A text that does not lex gives an empty key: Tokenize() then says why.
void TakeShape(QStringView text, Shape &into);
/// The same for any text; TakeShape() is the quick way through the usual ones.
void ScannedShape(QStringView text, Shape &into);
/// What stands for a literal in a key: a character that no token begins with.
inline char16_t LiteralMark(LiteralKind kind)
{
    return static_cast<char16_t>(1 + static_cast<int>(kind));
}

/// One batch of a script and the line of the script on which it starts (from 1).
struct ScriptBatch
{
    QString text;
    int firstLine = 1;
};

/// Splits a script at the lines that hold nothing but GO. Quotes and comments are respected.
std::vector<ScriptBatch> SplitScript(QStringView script);

} // namespace tsql
