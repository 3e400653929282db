// Every function that a text may call: one row each.
#include "tsql/write/writer_impl.h"

using namespace Qt::StringLiterals;

namespace tsql {

const FunctionRow *Writer::FunctionNamed(const QString &name)
{
    using Gives = FunctionRow::Gives;
    constexpr auto Aggregate = FunctionRow::Role::Aggregate;
    constexpr auto Ranking = FunctionRow::Role::Ranking;
    // Name, least and most arguments, what they are (the last letter holds for the rest), what comes back, SQLite's
    // text. Where a body stands instead, it decides what the row leaves open.
    static constexpr FunctionRow Rows[] = {
        // Texts
        {u"LEN", 1, 1, "t", Gives::Int, u"tsql_len(%*)"},
        {u"DATALENGTH", 1, 1, "e", Gives::Int, u"", &Writer::DataLength},
        {u"SUBSTRING", 3, 3, "tii", Gives::OfFirst, u"tsql_substring(%*)"},
        {u"LEFT", 2, 2, "ti", Gives::OfFirst, u"tsql_left(%*)"},
        {u"RIGHT", 2, 2, "ti", Gives::OfFirst, u"tsql_right(%*)"},
        {u"CHARINDEX", 2, 3, "tti", Gives::Int, u"tsql_charindex(%*)"},
        {u"PATINDEX", 2, 2, "tt", Gives::Int, u"tsql_patindex(%*)"},
        {u"STUFF", 4, 4, "tiit", Gives::Text, u"tsql_stuff(%*)"},
        {u"REPLACE", 3, 3, "ttt", Gives::Text, u"tsql_replace(%*)"},
        {u"LTRIM", 1, 1, "t", Gives::OfFirst, u"tsql_ltrim(%*)"},
        {u"RTRIM", 1, 1, "t", Gives::OfFirst, u"tsql_rtrim(%*)"},
        {u"TRIM", 1, 1, "t", Gives::OfFirst, u"tsql_trim(%*)"},
        {u"UPPER", 1, 1, "t", Gives::OfFirst, u"tsql_upper(%*)"},
        {u"LOWER", 1, 1, "t", Gives::OfFirst, u"tsql_lower(%*)"},
        {u"REVERSE", 1, 1, "t", Gives::OfFirst, u"tsql_reverse(%*)"},
        {u"REPLICATE", 2, 2, "ti", Gives::Text, u"tsql_replicate(%*)"},
        {u"SPACE", 1, 1, "i", Gives::Text, u"tsql_space(%*)"},
        {u"ASCII", 1, 1, "t", Gives::Int, u"tsql_ascii(%*)"},
        {u"UNICODE", 1, 1, "t", Gives::Int, u"tsql_unicode(%*)"},
        {u"CHAR", 1, 1, "i", Gives::Letter, u"tsql_nchar(%*)"},
        {u"NCHAR", 1, 1, "i", Gives::UnicodeLetter, u"tsql_nchar(%*)"},
        {u"QUOTENAME", 1, 2, "tt", Gives::UnicodeText, u"tsql_quotename(%*)"},
        {u"CONCAT", 2, 250, "e", Gives::Text, u"", &Writer::Concat},
        {u"STR", 1, 3, "fii", Gives::Text, u"", &Writer::Str},
        {u"ISNUMERIC", 1, 1, "t", Gives::Int, u"tsql_isnumeric(%*)"},
        {u"ISDATE", 1, 1, "t", Gives::Int, u"tsql_isdate(%*)"},
        // Numbers
        {u"ABS", 1, 1, "e", Gives::OfFirst, u"", &Writer::MathFunction},
        {u"SIGN", 1, 1, "e", Gives::OfFirst, u"", &Writer::MathFunction},
        {u"ROUND", 2, 3, "ei", Gives::OfFirst, u"", &Writer::MathFunction},
        {u"FLOOR", 1, 1, "e", Gives::OfFirst, u"", &Writer::MathFunction},
        {u"CEILING", 1, 1, "e", Gives::OfFirst, u"", &Writer::MathFunction},
        {u"SQRT", 1, 1, "f", Gives::Float, u"real_sqrt(%*)"},
        {u"EXP", 1, 1, "f", Gives::Float, u"real_exp(%*)"},
        {u"LOG", 1, 2, "ff", Gives::Float, u"real_log(%*)"},
        {u"POWER", 2, 2, "ef", Gives::OfFirst, u"", &Writer::Power},
        {u"SQUARE", 1, 1, "f", Gives::Float, u"real_fit(%1 * %1)"},
        {u"PI", 0, 0, "", Gives::Float, u"pi()"},
        // Dates
        {u"DATEADD", 3, 3, "pid", Gives::Own, u"", &Writer::DateAdd},
        {u"DATEDIFF", 3, 3, "pdd", Gives::Int, u"date_diff(%*)"},
        {u"DATEPART", 2, 2, "pd", Gives::Int, u"date_part(%*)"},
        {u"YEAR", 1, 1, "d", Gives::Int, u"date_part('year', %1)"},
        {u"MONTH", 1, 1, "d", Gives::Int, u"date_part('month', %1)"},
        {u"DAY", 1, 1, "d", Gives::Int, u"date_part('day', %1)"},
        // Choices
        {u"ISNULL", 2, 2, "ee", Gives::OfFirst, u"", &Writer::IsNullFunction},
        {u"COALESCE", 2, 100, "e", Gives::Own, u"", &Writer::Coalesce},
        {u"NULLIF", 2, 2, "ee", Gives::OfFirst, u"", &Writer::NullIf},
        {u"IIF", 3, 3, "cee", Gives::Own, u"", &Writer::Iif},
        // Over rows
        {u"COUNT", 1, 1, "e", Gives::Int, u"", &Writer::WriteAggregate, Aggregate},
        {u"COUNT_BIG", 1, 1, "e", Gives::Own, u"", &Writer::WriteAggregate, Aggregate},
        {u"SUM", 1, 1, "e", Gives::Own, u"", &Writer::WriteAggregate, Aggregate},
        {u"AVG", 1, 1, "e", Gives::Own, u"", &Writer::WriteAggregate, Aggregate},
        {u"MIN", 1, 1, "e", Gives::OfFirst, u"", &Writer::WriteAggregate, Aggregate},
        {u"MAX", 1, 1, "e", Gives::OfFirst, u"", &Writer::WriteAggregate, Aggregate},
        {u"STRING_AGG", 2, 2, "ew", Gives::Text, u"", &Writer::WriteAggregate, Aggregate},
        {u"ROW_NUMBER", 0, 0, "", Gives::Own, u"", &Writer::WriteRanking, Ranking},
        {u"RANK", 0, 0, "", Gives::Own, u"", &Writer::WriteRanking, Ranking},
        {u"DENSE_RANK", 0, 0, "", Gives::Own, u"", &Writer::WriteRanking, Ranking},
        // The session's values: the text names the one to be bound
        {u"GETDATE", 0, 0, "", Gives::Own, u"getdate", &Writer::SystemFunction},
        {u"SYSDATETIME", 0, 0, "", Gives::Own, u"getdate", &Writer::SystemFunction},
        {u"CURRENT_TIMESTAMP", 0, 0, "", Gives::Own, u"getdate", &Writer::SystemFunction},
        {u"GETUTCDATE", 0, 0, "", Gives::Own, u"getutcdate", &Writer::SystemFunction},
        {u"SCOPE_IDENTITY", 0, 0, "", Gives::Own, u"scope_identity", &Writer::SystemFunction},
        {u"DB_NAME", 0, 0, "", Gives::Own, u"db_name", &Writer::SystemFunction},
        {u"SUSER_SNAME", 0, 0, "", Gives::Own, u"suser_sname", &Writer::SystemFunction},
        {u"HOST_NAME", 0, 0, "", Gives::Own, u"host_name", &Writer::SystemFunction},
        {u"APP_NAME", 0, 0, "", Gives::Own, u"app_name", &Writer::SystemFunction},
        {u"ERROR_NUMBER", 0, 0, "", Gives::Own, u"error_number", &Writer::SystemFunction},
        {u"ERROR_LINE", 0, 0, "", Gives::Own, u"error_line", &Writer::SystemFunction},
        {u"ERROR_SEVERITY", 0, 0, "", Gives::Own, u"error_severity", &Writer::SystemFunction},
        {u"ERROR_STATE", 0, 0, "", Gives::Own, u"error_state", &Writer::SystemFunction},
        {u"ERROR_MESSAGE", 0, 0, "", Gives::Own, u"error_message", &Writer::SystemFunction},
        {u"ERROR_PROCEDURE", 0, 0, "", Gives::Own, u"error_procedure", &Writer::SystemFunction},
        {u"XACT_STATE", 0, 0, "", Gives::Own, u"xact_state", &Writer::SystemFunction},
        // Others
        {u"NEWID", 0, 0, "", Gives::Identifier, u"tsql_newid()"},
        {u"OBJECT_ID", 1, 2, "ww", Gives::Int, u"object_id(%*)"},
        {u"SCHEMA_ID", 1, 1, "w", Gives::Int, u"schema_id(%*)"},
        {u"INDEXPROPERTY", 3, 3, "iww", Gives::Int, u"index_property(%*)"},
    };
    static const QHash<QStringView, const FunctionRow *> byName = [] {
        QHash<QStringView, const FunctionRow *> rows;
        for (const FunctionRow &row : Rows)
            rows.insert(row.name, &row);
        return rows;
    }();
    return byName.value(name);
}

bool IsAggregate(const Expression &node)
{
    if (node.kind != ExpressionKind::Function || node.over)
        return false;
    const FunctionRow *row = Writer::FunctionNamed(node.name);
    return row && row->role == FunctionRow::Role::Aggregate;
}

} // namespace tsql
