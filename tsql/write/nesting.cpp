#include "tsql/write/nesting.h"

#include <QByteArrayList>

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace tsql {

namespace {

using View = std::string_view;

// In entries of the parser's stack, of which SQLite has 100; each cost is the most that the form can take.
constexpr int Deepest = 80;     ///< a text up to here is left as it is
constexpr int ChunkDepth = 30;  ///< an expression that is deeper moves out of the one around it
constexpr int CommonDepth = 15; ///< where the text of a common table begins
constexpr int WrapFrom = 15;    ///< expressions above stay open to the planner, which uses indexes for them

enum class Form : quint8 { Root, Parentheses, Call, Aggregate, Case, Cast, List, Join, Query, Source };

int CostOf(Form form)
{
    static constexpr std::array<int, 10> costs = {0, 4, 7, 7, 8, 5, 5, 4, 10, 9};
    return costs[size_t(form)];
}

/** A bracketed part of the text, or CASE … END. */
struct Group
{
    Form form = Form::Root;
    size_t begin = 0;
    size_t end = 0;
    int height = 0;          ///< what its inner groups cost at most
    bool aggregates = false; ///< holds an aggregate of the query it stands in
    bool collates = false;   ///< COLLATE stands in it …
    bool compares = false;   ///< … for its own comparison
    bool values = false;     ///< the last keyword was VALUES: rows follow
    std::vector<Group> groups;

    bool Movable() const
    {
        const bool value = form == Form::Parentheses || form == Form::Call || form == Form::Case || form == Form::Cast;
        return value && !aggregates && (compares || !collates);
    }
};

bool IsWordCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' || c == '?' ||
           static_cast<unsigned char>(c) >= 0x80;
}

/** The next token of the writer's text from `at` on: a word, a quoted name or text, a character; empty at the end. */
View TokenAt(View text, size_t at)
{
    at = text.find_first_not_of(" \n", at);
    if (at == View::npos)
        return {};
    const char first = text[at];
    size_t end = at + 1;
    if (first == '\'' || first == '"') {
        // A doubled quote is two texts side by side here, which comes to the same.
        end = text.find(first, end) + 1;
    } else if (IsWordCharacter(first)) {
        while (end < text.size() && IsWordCharacter(text[end]))
            ++end;
    }
    return text.substr(at, end - at);
}

bool OneOf(View word, std::initializer_list<View> words)
{
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool IsAggregateName(View name)
{
    return OneOf(name, {"count", "min", "max", "sum", "total", "avg", "dec_sum", "dec_avg", "int_sum", "int_avg",
                        "tsql_single", "tsql_xml_agg", "tsql_string_agg"});
}

/** Keywords are written in capitals, functions in small letters. */
bool IsFunctionName(View word)
{
    return !word.empty() && word[0] >= 'a' && word[0] <= 'z';
}

Form FormOf(View before, View next, const Group &around)
{
    if (OneOf(next, {"SELECT", "WITH"}))
        return OneOf(before, {"FROM", "JOIN"}) ? Form::Source : Form::Query;
    if (IsFunctionName(before))
        return IsAggregateName(before) ? Form::Aggregate : Form::Call;
    if (before == "CAST")
        return Form::Cast;
    if (OneOf(before, {"FROM", "JOIN"}))
        return Form::Join;
    const bool list = OneOf(before, {"IN", "VALUES", "OVER"}) || (before == "," && around.values) ||
                      (!before.empty() && before[0] == '"');
    return list ? Form::List : Form::Parentheses;
}

/** Reads the text into its groups. */
class Reader
{
public:
    explicit Reader(View text) : m_text(text) {}

    Group Read()
    {
        Group root;
        root.end = m_text.size();
        WriteInner(root);
        return root;
    }

private:
    void WriteInner(Group &group)
    {
        View before;
        for (View token = TokenAt(m_text, m_at); !token.empty(); token = TokenAt(m_text, m_at)) {
            const auto begin = size_t(token.data() - m_text.data());
            m_at = begin + token.size();
            const bool call = token == "(" && (IsFunctionName(before) || before == "CAST");
            if (token == ")" || token == "END") {
                group.end = m_at;
                return;
            }
            if (token == "(" || token == "CASE") {
                Group one;
                one.form = token == "CASE" ? Form::Case : FormOf(before, TokenAt(m_text, m_at), group);
                one.begin = call ? size_t(before.data() - m_text.data()) : begin;
                WriteInner(one);
                Add(group, std::move(one));
            } else if (token == "COLLATE") {
                group.collates = true;
            } else if (OneOf(token, {"=", "<", ">", "IS"})) {
                group.compares = true;
            } else if (OneOf(token, {"VALUES", "SELECT"})) {
                group.values = token == "VALUES";
            }
            before = token;
        }
    }

    void Add(Group &group, Group one) const
    {
        if (one.form == Form::Call && TokenAt(m_text, m_at) == "OVER")
            one.form = Form::Aggregate;
        const bool own = one.form != Form::Query && one.form != Form::Source;
        group.aggregates = group.aggregates || one.form == Form::Aggregate || (own && one.aggregates);
        group.height = std::max(group.height, CostOf(one.form) + one.height);
        group.groups.push_back(std::move(one));
    }

    View m_text;
    size_t m_at = 0;
};

/** Writes the groups again. */
class Flattener
{
public:
    explicit Flattener(const QByteArray &sql) : m_sql(sql) {}

    QByteArray text()
    {
        const Group root = Reader({m_sql.constData(), size_t(m_sql.size())}).Read();
        QByteArrayList tables;
        const bool definition = m_sql.startsWith("CREATE") || m_sql.startsWith("ALTER");
        const Piece piece = WriteInner(root, 0, nullptr, definition ? nullptr : &tables);
        return WithTables(piece.text, tables);
    }

private:
    struct Piece
    {
        QByteArray text;
        int height = 0;
    };

    QByteArray Name() { return "\"deep " + QByteArray::number(++m_names) + '"'; }

    static QByteArray WithTables(const QByteArray &query, const QByteArrayList &tables)
    {
        if (tables.isEmpty())
            return query;
        for (const char *word : {"WITH RECURSIVE ", "WITH "}) {
            if (query.startsWith(word))
                return word + tables.join(", ") + ", " + query.mid(qsizetype(qstrlen(word)));
        }
        return "WITH " + tables.join(", ") + ' ' + query;
    }

    /**
     * The text of a group with its inner groups, from `depth` entries on. `values` takes expressions out of the one
     * around them, `tables` derived tables out of their query; each is null where there is no such place.
     */
    Piece WriteInner(const Group &group, int depth, QByteArrayList *values, QByteArrayList *tables)
    {
        Piece whole;
        size_t at = group.begin;
        for (const Group &one : group.groups) {
            whole.text += m_sql.mid(qsizetype(at), qsizetype(one.begin - at));
            const Piece piece = Moved(one, depth, values, tables);
            whole.text += piece.text;
            whole.height = std::max(whole.height, piece.height);
            at = one.end;
        }
        whole.text += m_sql.mid(qsizetype(at), qsizetype(group.end - at));
        return whole;
    }

    /** A group as it stands for itself in the text around it; its height counts what it costs. */
    Piece Moved(const Group &group, int depth, QByteArrayList *values, QByteArrayList *tables)
    {
        const int cost = CostOf(group.form);
        if (depth + cost + group.height <= Deepest && !values)
            return {m_sql.mid(qsizetype(group.begin), qsizetype(group.end - group.begin)), cost + group.height};
        if (group.form == Form::Query || (group.form == Form::Source && !tables))
            return WriteQuery(group, depth);
        if (group.form == Form::Source) {
            const QByteArray table = Name();
            // Common tables of its own are known to its inner ones only.
            const bool closed = m_sql.mid(qsizetype(group.begin), 5) == "(WITH";
            const Piece piece =
                closed ? WriteQuery(group, CommonDepth) : WriteInner(group, CommonDepth, nullptr, tables);
            tables->append(table + " AS " + piece.text);
            return {table, 1};
        }
        if (group.Movable() && values)
            return WriteValue(group, depth, *values, tables);
        if (group.Movable() && depth >= WrapFrom)
            return Wrapped(group, depth, tables);
        Piece piece = WriteInner(group, depth + cost, group.form == Form::Aggregate ? nullptr : values, tables);
        piece.height += cost;
        return piece;
    }

    Piece WriteQuery(const Group &group, int depth)
    {
        const int cost = CostOf(group.form);
        QByteArrayList tables;
        const Piece piece = WriteInner(group, depth + cost, nullptr, &tables);
        const QByteArray text = piece.text.mid(1, piece.text.size() - 2);
        return {'(' + WithTables(text, tables) + ')', piece.height + cost};
    }

    Piece WriteValue(const Group &group, int depth, QByteArrayList &values, QByteArrayList *tables)
    {
        const int cost = CostOf(group.form);
        Piece piece = WriteInner(group, depth + cost, &values, tables);
        piece.height += cost;
        if (piece.height <= ChunkDepth)
            return piece;
        const QByteArray table = Name();
        values.append(table + "(v) AS (SELECT " + piece.text + ')');
        return {"(SELECT v FROM " + table + ')', CostOf(Form::Query)};
    }

    /** An expression with the ones in it that are too deep in front of it. */
    Piece Wrapped(const Group &group, int depth, QByteArrayList *tables)
    {
        const int cost = CostOf(group.form);
        QByteArrayList values;
        Piece piece = WriteInner(group, depth + cost, &values, tables);
        piece.height += cost;
        if (values.isEmpty())
            return piece;
        return {'(' + WithTables("SELECT " + piece.text, values) + ')', piece.height + CostOf(Form::Query)};
    }

    QByteArray m_sql;
    int m_names = 0;
};

} // namespace

QByteArray Flattened(const QByteArray &sql)
{
    return Flattener(sql).text();
}

} // namespace tsql
