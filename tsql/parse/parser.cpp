#include "tsql/parse/parser_impl.h"
#include "tsql/values/error.h"

#include <QHash>
#include <QSet>

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr int MaxDepth = 400;
constexpr int MaxChain = 2000;

const QSet<QString> &ReservedWords()
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

bool IsReserved(const QString &word)
{
    return ReservedWords().contains(word.toUpper());
}

Batch ParseBatch(const QString &text)
{
    return Parser(text).ParseBatch();
}

StatementPtr ParseDefinition(const QString &text)
{
    Batch batch = ParseBatch(text);
    if (batch.statements.size() != 1)
        throw Error(wording::BrokenDefinition, {}, 1);
    return std::move(batch.statements.front());
}

Parser::Parser(const QString &text) : m_text(text), m_tokens(Tokenize(text))
{}

Batch Parser::ParseBatch()
{
    Batch batch;
    while (AcceptSymbol(QLatin1String(";"))) {
    }
    // The first statement of a batch may call a procedure by its bare name.
    if (Peek().kind == TokenKind::Word && !IsReserved(Peek().text) && !At(QLatin1String("THROW"))) {
        if (Peek(1).kind == TokenKind::Word)
            RefuseUnsupported();
        batch.statements.push_back(ParseExecuteStatement(false));
    }
    while (!AtEnd())
        batch.statements.push_back(ParseStatement());
    batch.text = m_text;
    batch.literals = std::move(m_tokens.literals);
    batch.fixedLiterals = std::move(m_fixed);
    return batch;
}

Parser::Depth::Depth(Parser &parser) : m_parser(parser)
{
    if (++m_parser.m_depth > MaxDepth) {
        --m_parser.m_depth;
        throw NestedTooDeeply(parser.Peek().line);
    }
}

void Parser::CheckChain(int &length) const
{
    if (++length > MaxChain)
        throw NestedTooDeeply(Peek().line);
}

const Token &Parser::Peek(std::size_t ahead) const
{
    return m_tokens.tokens[qMin(m_pos + ahead, m_tokens.tokens.size() - 1)];
}

const Token &Parser::Take()
{
    const Token &token = Peek();
    if (m_pos + 1 < m_tokens.tokens.size())
        ++m_pos;
    return token;
}

bool Parser::At(QLatin1String word, std::size_t ahead) const
{
    const Token &token = Peek(ahead);
    return token.kind == TokenKind::Word && token.text.compare(word, Qt::CaseInsensitive) == 0;
}

bool Parser::AtSymbol(QLatin1String symbol, std::size_t ahead) const
{
    const Token &token = Peek(ahead);
    return token.kind == TokenKind::Symbol && token.text == symbol;
}

bool Parser::Accept(QLatin1String word)
{
    if (!At(word))
        return false;
    Take();
    return true;
}

bool Parser::AcceptSymbol(QLatin1String symbol)
{
    if (!AtSymbol(symbol))
        return false;
    Take();
    return true;
}

void Parser::Expect(QLatin1String word)
{
    if (!Accept(word))
        Refuse();
}

void Parser::ExpectSymbol(QLatin1String symbol)
{
    if (!AcceptSymbol(symbol))
        Refuse();
}

bool Parser::AtName(std::size_t ahead) const
{
    const Token &token = Peek(ahead);
    return token.kind == TokenKind::Quoted || (token.kind == TokenKind::Word && !IsReserved(token.text));
}

void Parser::Refuse() const
{
    const Token &token = Peek();
    if (token.kind == TokenKind::End) {
        const Token &last = m_tokens.tokens[m_tokens.tokens.size() > 1 ? m_tokens.tokens.size() - 2 : 0];
        throw Error(102, {last.text}, last.line);
    }
    if (token.kind == TokenKind::Word && IsReserved(token.text))
        throw Error(156, {token.text}, token.line);
    throw Error(102, {token.text.left(60)}, token.line);
}

void Parser::Unsupported(const QString &what) const
{
    throw Error(40517, {what}, Peek().line);
}

QString Parser::TextBetween(std::size_t firstToken) const
{
    const qsizetype from = m_tokens.tokens[firstToken].offset;
    const qsizetype until = m_pos > firstToken ? m_tokens.tokens[m_pos - 1].end : from;
    return m_text.sliced(from, until - from);
}

QString Parser::Name()
{
    if (!AtName())
        Refuse();
    return Take().text;
}

ObjectName Parser::ParseObjectName()
{
    // Up to database.schema.name; "database..name" leaves the schema out.
    std::vector<QString> parts{Name()};
    while (AcceptSymbol(QLatin1String("."))) {
        if (AtSymbol(QLatin1String("."))) {
            parts.emplace_back();
            continue;
        }
        parts.push_back(Name());
    }
    if (parts.size() > 3)
        Unsupported(u"linked server"_s);
    ObjectName result;
    result.name = parts.back();
    if (parts.size() > 1)
        result.schema = parts[parts.size() - 2];
    if (parts.size() > 2)
        result.database = parts[0];
    return result;
}

std::vector<QString> Parser::NameList()
{
    std::vector<QString> names;
    ExpectSymbol(QLatin1String("("));
    do {
        names.push_back(Name());
    } while (AcceptSymbol(QLatin1String(",")));
    ExpectSymbol(QLatin1String(")"));
    return names;
}

QString Parser::AcceptAlias()
{
    if (Accept(QLatin1String("AS"))) {
        if (Peek().kind == TokenKind::Literal)
            return FixedText();
        return Name();
    }
    const bool quotedText = Peek().kind == TokenKind::Literal &&
                            m_tokens.literals[static_cast<std::size_t>(Peek().literal)].kind == LiteralKind::Text;
    if (quotedText)
        return FixedText();
    return AtName() ? Take().text : QString();
}

qint64 Parser::FixedInteger()
{
    const bool minus = AcceptSymbol(QLatin1String("-"));
    const Token &token = Peek();
    if (token.kind != TokenKind::Literal)
        Refuse();
    const Literal &value = m_tokens.literals[static_cast<std::size_t>(token.literal)];
    bool ok = value.kind == LiteralKind::Integer;
    const qint64 number = ok ? value.integer : value.text.toLongLong(&ok);
    if (!ok)
        Refuse();
    m_fixed.push_back(Take().literal);
    return minus ? -number : number;
}

QString Parser::FixedText()
{
    const Token &token = Peek();
    if (token.kind != TokenKind::Literal)
        Refuse();
    const Literal &value = m_tokens.literals[static_cast<std::size_t>(token.literal)];
    if (value.kind != LiteralKind::Text && value.kind != LiteralKind::Unicode)
        Refuse();
    m_fixed.push_back(Take().literal);
    return value.text;
}

SqlType Parser::SizedText(Kind kind)
{
    const bool unicode = kind == Kind::NChar || kind == Kind::NVarChar;
    const qint64 limit = unicode ? 4000 : 8000;
    if (!AcceptSymbol(QLatin1String("(")))
        return SqlType::text(kind, 0); // the place decides: 1 in a definition, 30 in a CAST
    if (Accept(QLatin1String("MAX"))) {
        ExpectSymbol(QLatin1String(")"));
        return SqlType::text(kind, SqlType::Max);
    }
    const int line = Peek().line;
    const qint64 length = FixedInteger();
    ExpectSymbol(QLatin1String(")"));
    if (length < 1 || length > limit)
        throw Error(131, {length, KindName(kind), limit}, line);
    return SqlType::text(kind, static_cast<int>(length));
}

SqlType Parser::DecimalType()
{
    qint64 precision = 18;
    qint64 scale = 0;
    const int line = Peek().line;
    if (AcceptSymbol(QLatin1String("("))) {
        precision = FixedInteger();
        if (AcceptSymbol(QLatin1String(",")))
            scale = FixedInteger();
        ExpectSymbol(QLatin1String(")"));
    }
    if (precision < 1 || precision > SqlType::MaxPrecision)
        throw Error(2750, {precision}, line);
    if (scale < 0 || scale > precision)
        throw Error(183, {scale, precision}, line);
    return SqlType::DecimalOf(static_cast<int>(precision), static_cast<int>(scale));
}

namespace {

const QHash<QString, SqlType> &PlainTypes()
{
    static const QHash<QString, SqlType> plain = {
        {u"BIT"_s, {Kind::Bit}},
        {u"TINYINT"_s, {Kind::TinyInt}},
        {u"SMALLINT"_s, {Kind::SmallInt}},
        {u"INT"_s, {Kind::Int}},
        {u"INTEGER"_s, {Kind::Int}},
        {u"BIGINT"_s, {Kind::BigInt}},
        {u"MONEY"_s, SqlType::Money()},
        {u"SMALLMONEY"_s, SqlType::Money()},
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

const QHash<QString, Kind> &SizedTypes()
{
    static const QHash<QString, Kind> sized = {
        {u"CHAR"_s, Kind::Char},     {u"VARCHAR"_s, Kind::VarChar},   {u"NCHAR"_s, Kind::NChar},
        {u"BINARY"_s, Kind::Binary}, {u"NVARCHAR"_s, Kind::NVarChar}, {u"VARBINARY"_s, Kind::VarBinary},
    };
    return sized;
}

} // namespace

SqlType Parser::Type()
{
    const Token &token = Peek();
    if (token.kind != TokenKind::Word && token.kind != TokenKind::Quoted)
        Refuse();
    const QString word = token.text.toUpper();
    const int line = token.line;
    Take();
    if (const auto found = PlainTypes().constFind(word); found != PlainTypes().cend()) {
        const bool fraction = found->kind == Kind::Time || word == u"DATETIME2";
        if (fraction && AcceptSymbol(QLatin1String("("))) {
            FixedInteger();
            ExpectSymbol(QLatin1String(")"));
        }
        return *found;
    }
    if (const auto found = SizedTypes().constFind(word); found != SizedTypes().cend())
        return SizedText(*found);
    if (word == u"DECIMAL" || word == u"NUMERIC" || word == u"DEC")
        return DecimalType();
    if (word == u"DOUBLE") {
        Expect(QLatin1String("PRECISION"));
        return {Kind::Float};
    }
    if (word == u"FLOAT") {
        if (!AcceptSymbol(QLatin1String("(")))
            return {Kind::Float};
        const qint64 bits = FixedInteger();
        ExpectSymbol(QLatin1String(")"));
        return {bits <= 24 ? Kind::Real : Kind::Float};
    }
    throw Error(2715, {token.text}, line);
}

} // namespace tsql
