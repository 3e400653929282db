#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr int MaxDepth = 400;
constexpr int MaxChain = 2000;

const QSet<QString> &reservedWords()
{
    static const QSet<QString> words = [] {
        const QString all =
            u"ADD ALL ALTER AND ANY AS ASC AUTHORIZATION BEGIN BETWEEN BREAK BY CASCADE CASE CHECK CLUSTERED COALESCE "
            "COLLATE COLUMN COMMIT CONSTRAINT CONTINUE CONVERT CREATE CROSS CURRENT_TIMESTAMP CURSOR DECLARE DEFAULT "
            "DELETE DESC DISTINCT DROP ELSE END ESCAPE EXCEPT EXEC EXECUTE EXISTS FETCH FOR FOREIGN FROM FULL FUNCTION "
            "GOTO GRANT GROUP HAVING IDENTITY IF IN INDEX INNER INSERT INTERSECT INTO IS JOIN KEY LEFT LIKE MERGE "
            "NONCLUSTERED NOT NULL NULLIF OF OFF ON OPEN OPTION OR ORDER OUTER OVER PERCENT PIVOT PRIMARY PRINT PROC "
            "PROCEDURE RAISERROR READ REFERENCES RETURN REVERT RIGHT ROLLBACK SAVE SCHEMA SELECT SET SOME TABLE THEN "
            "TO TOP TRAN TRANSACTION TRIGGER TRUNCATE TRY_CONVERT UNION UNIQUE UNPIVOT UPDATE USE USER VALUES VIEW "
            "WAITFOR WHEN WHERE WHILE WITH"_s;
        const QStringList list = all.split(u' ');
        return QSet<QString>(list.begin(), list.end());
    }();
    return words;
}

} // namespace

bool isReserved(const QString &word)
{
    return reservedWords().contains(word.toUpper());
}

Batch parse(const QString &text)
{
    return Parser(text).batch();
}

StatementPtr parseDefinition(const QString &text)
{
    Batch batch = parse(text);
    if (batch.statements.size() != 1)
        throw Error(wording::BrokenDefinition, {}, 1);
    return std::move(batch.statements.front());
}

Parser::Parser(const QString &text) : m_text(text), m_tokens(tokenize(text))
{}

Batch Parser::batch()
{
    Batch batch;
    while (acceptSymbol(QLatin1String(";"))) {
    }
    // The first statement of a batch may call a procedure by its bare name.
    if (peek().kind == TokenKind::Word && !isReserved(peek().text) && !at(QLatin1String("THROW"))) {
        if (peek(1).kind == TokenKind::Word)
            refuseUnsupported();
        batch.statements.push_back(executeStatement(false));
    }
    while (!atEnd())
        batch.statements.push_back(statement());
    batch.text = m_text;
    batch.literals = std::move(m_tokens.literals);
    batch.fixedLiterals = std::move(m_fixed);
    return batch;
}

Parser::Depth::Depth(Parser &parser) : m_parser(parser)
{
    if (++m_parser.m_depth > MaxDepth) {
        --m_parser.m_depth;
        throw nestedTooDeeply(parser.peek().line);
    }
}

void Parser::chain(int &length) const
{
    if (++length > MaxChain)
        throw nestedTooDeeply(peek().line);
}

const Token &Parser::peek(std::size_t ahead) const
{
    return m_tokens.tokens[qMin(m_pos + ahead, m_tokens.tokens.size() - 1)];
}

const Token &Parser::take()
{
    const Token &token = peek();
    if (m_pos + 1 < m_tokens.tokens.size())
        ++m_pos;
    return token;
}

bool Parser::at(QLatin1String word, std::size_t ahead) const
{
    const Token &token = peek(ahead);
    return token.kind == TokenKind::Word && token.text.compare(word, Qt::CaseInsensitive) == 0;
}

bool Parser::atSymbol(QLatin1String symbol, std::size_t ahead) const
{
    const Token &token = peek(ahead);
    return token.kind == TokenKind::Symbol && token.text == symbol;
}

bool Parser::accept(QLatin1String word)
{
    if (!at(word))
        return false;
    take();
    return true;
}

bool Parser::acceptSymbol(QLatin1String symbol)
{
    if (!atSymbol(symbol))
        return false;
    take();
    return true;
}

void Parser::expect(QLatin1String word)
{
    if (!accept(word))
        refuse();
}

void Parser::expectSymbol(QLatin1String symbol)
{
    if (!acceptSymbol(symbol))
        refuse();
}

bool Parser::atName(std::size_t ahead) const
{
    const Token &token = peek(ahead);
    return token.kind == TokenKind::Quoted || (token.kind == TokenKind::Word && !isReserved(token.text));
}

void Parser::refuse() const
{
    const Token &token = peek();
    if (token.kind == TokenKind::End) {
        const Token &last = m_tokens.tokens[m_tokens.tokens.size() > 1 ? m_tokens.tokens.size() - 2 : 0];
        throw Error(102, {last.text}, last.line);
    }
    if (token.kind == TokenKind::Word && isReserved(token.text))
        throw Error(156, {token.text}, token.line);
    throw Error(102, {token.text.left(60)}, token.line);
}

void Parser::unsupported(const QString &what) const
{
    throw Error(40517, {what}, peek().line);
}

QString Parser::textBetween(std::size_t firstToken) const
{
    const qsizetype from = m_tokens.tokens[firstToken].offset;
    const qsizetype until = m_pos > firstToken ? m_tokens.tokens[m_pos - 1].end : from;
    return m_text.sliced(from, until - from);
}

QString Parser::name()
{
    if (!atName())
        refuse();
    return take().text;
}

ObjectName Parser::objectName()
{
    // Up to database.schema.name; "database..name" leaves the schema out.
    std::vector<QString> parts{name()};
    while (acceptSymbol(QLatin1String("."))) {
        if (atSymbol(QLatin1String("."))) {
            parts.emplace_back();
            continue;
        }
        parts.push_back(name());
    }
    if (parts.size() > 3)
        unsupported(u"linked server"_s);
    ObjectName result;
    result.name = parts.back();
    if (parts.size() > 1)
        result.schema = parts[parts.size() - 2];
    if (parts.size() > 2)
        result.database = parts[0];
    return result;
}

std::vector<QString> Parser::nameList()
{
    std::vector<QString> names;
    expectSymbol(QLatin1String("("));
    do {
        names.push_back(name());
    } while (acceptSymbol(QLatin1String(",")));
    expectSymbol(QLatin1String(")"));
    return names;
}

QString Parser::acceptAlias()
{
    if (accept(QLatin1String("AS"))) {
        if (peek().kind == TokenKind::Literal)
            return fixedText();
        return name();
    }
    const bool quotedText = peek().kind == TokenKind::Literal &&
                            m_tokens.literals[static_cast<std::size_t>(peek().literal)].kind == LiteralKind::Text;
    if (quotedText)
        return fixedText();
    return atName() ? take().text : QString();
}

qint64 Parser::fixedInteger()
{
    const bool minus = acceptSymbol(QLatin1String("-"));
    const Token &token = peek();
    if (token.kind != TokenKind::Literal)
        refuse();
    const Literal &value = m_tokens.literals[static_cast<std::size_t>(token.literal)];
    bool ok = value.kind == LiteralKind::Integer;
    const qint64 number = ok ? value.integer : value.text.toLongLong(&ok);
    if (!ok)
        refuse();
    m_fixed.push_back(take().literal);
    return minus ? -number : number;
}

QString Parser::fixedText()
{
    const Token &token = peek();
    if (token.kind != TokenKind::Literal)
        refuse();
    const Literal &value = m_tokens.literals[static_cast<std::size_t>(token.literal)];
    if (value.kind != LiteralKind::Text && value.kind != LiteralKind::Unicode)
        refuse();
    m_fixed.push_back(take().literal);
    return value.text;
}

SqlType Parser::sizedText(Kind kind)
{
    const bool unicode = kind == Kind::NChar || kind == Kind::NVarChar;
    const qint64 limit = unicode ? 4000 : 8000;
    if (!acceptSymbol(QLatin1String("(")))
        return SqlType::text(kind, 0); // the place decides: 1 in a definition, 30 in a CAST
    if (accept(QLatin1String("MAX"))) {
        expectSymbol(QLatin1String(")"));
        return SqlType::text(kind, SqlType::Max);
    }
    const int line = peek().line;
    const qint64 length = fixedInteger();
    expectSymbol(QLatin1String(")"));
    if (length < 1 || length > limit)
        throw Error(131, {length, kindName(kind), limit}, line);
    return SqlType::text(kind, static_cast<int>(length));
}

SqlType Parser::decimalType()
{
    qint64 precision = 18;
    qint64 scale = 0;
    const int line = peek().line;
    if (acceptSymbol(QLatin1String("("))) {
        precision = fixedInteger();
        if (acceptSymbol(QLatin1String(",")))
            scale = fixedInteger();
        expectSymbol(QLatin1String(")"));
    }
    if (precision < 1 || precision > SqlType::MaxPrecision)
        throw Error(2750, {precision}, line);
    if (scale < 0 || scale > precision)
        throw Error(183, {scale, precision}, line);
    return SqlType::decimal(static_cast<int>(precision), static_cast<int>(scale));
}

namespace {

const QHash<QString, SqlType> &plainTypes()
{
    static const QHash<QString, SqlType> plain = {
        {u"BIT"_s, {Kind::Bit}},
        {u"TINYINT"_s, {Kind::TinyInt}},
        {u"SMALLINT"_s, {Kind::SmallInt}},
        {u"INT"_s, {Kind::Int}},
        {u"INTEGER"_s, {Kind::Int}},
        {u"BIGINT"_s, {Kind::BigInt}},
        {u"MONEY"_s, SqlType::money()},
        {u"SMALLMONEY"_s, SqlType::money()},
        {u"REAL"_s, {Kind::Real}},
        {u"DATE"_s, {Kind::Date}},
        {u"TIME"_s, {Kind::Time}},
        {u"SMALLDATETIME"_s, {Kind::SmallDateTime}},
        {u"DATETIME"_s, {Kind::DateTime}},
        {u"DATETIME2"_s, {Kind::DateTime}},
        {u"TEXT"_s, SqlType::text(Kind::VarChar, SqlType::Max)},
        {u"NTEXT"_s, SqlType::text(Kind::NVarChar, SqlType::Max)},
        {u"XML"_s, SqlType::text(Kind::NVarChar, SqlType::Max)},
        {u"SYSNAME"_s, SqlType::text(Kind::NVarChar, 128)},
        {u"IMAGE"_s, SqlType::text(Kind::VarBinary, SqlType::Max)},
        {u"UNIQUEIDENTIFIER"_s, {Kind::UniqueIdentifier}},
    };
    return plain;
}

const QHash<QString, Kind> &sizedTypes()
{
    static const QHash<QString, Kind> sized = {
        {u"CHAR"_s, Kind::Char},     {u"VARCHAR"_s, Kind::VarChar},   {u"NCHAR"_s, Kind::NChar},
        {u"BINARY"_s, Kind::Binary}, {u"NVARCHAR"_s, Kind::NVarChar}, {u"VARBINARY"_s, Kind::VarBinary},
    };
    return sized;
}

} // namespace

SqlType Parser::type()
{
    const Token &token = peek();
    if (token.kind != TokenKind::Word && token.kind != TokenKind::Quoted)
        refuse();
    const QString word = token.text.toUpper();
    const int line = token.line;
    take();
    if (const auto found = plainTypes().constFind(word); found != plainTypes().cend()) {
        const bool fraction = found->kind == Kind::Time || word == u"DATETIME2";
        if (fraction && acceptSymbol(QLatin1String("("))) {
            fixedInteger();
            expectSymbol(QLatin1String(")"));
        }
        return *found;
    }
    if (const auto found = sizedTypes().constFind(word); found != sizedTypes().cend())
        return sizedText(*found);
    if (word == u"DECIMAL" || word == u"NUMERIC" || word == u"DEC")
        return decimalType();
    if (word == u"DOUBLE") {
        expect(QLatin1String("PRECISION"));
        return {Kind::Float};
    }
    if (word == u"FLOAT") {
        if (!acceptSymbol(QLatin1String("(")))
            return {Kind::Float};
        const qint64 bits = fixedInteger();
        expectSymbol(QLatin1String(")"));
        return {bits <= 24 ? Kind::Real : Kind::Float};
    }
    throw Error(2715, {token.text}, line);
}

} // namespace tsql
