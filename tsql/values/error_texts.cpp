// Every text that a statement can be refused with, by its number.
#include "tsql/values/error.h"

#include <algorithm>
#include <span>

namespace tsql {

namespace {

struct Row
{
    Wording wording;
    const char16_t *text;
};

// A number's usual text first, its further wordings behind it. Where the server's text falls into one of several words
// (the kind of operator, a quoted name), that word is an argument.
constexpr Row Texts[] = {
    {0, u"The database is not open."},
    {102, u"Incorrect syntax near '%1'."},
    {wording::BrokenDefinition, u"A definition of the catalogue is not one statement."},
    {104,
     u"ORDER BY items must appear in the select list if the statement contains a UNION, INTERSECT or EXCEPT operator."},
    {105, u"Unclosed quotation mark after the character string '%1'."},
    {107, u"The column prefix '%1' does not match with a table name or alias name used in the query."},
    {108, u"The ORDER BY position number %1 is out of range of the number of items in the select list."},
    {109, u"There are more columns in the INSERT statement than values specified in the VALUES clause. The number of "
          u"values in the VALUES clause must match the number of columns specified in the INSERT statement."},
    {110, u"There are fewer columns in the INSERT statement than values specified in the VALUES clause. The number of "
          u"values in the VALUES clause must match the number of columns specified in the INSERT statement."},
    {113, u"Missing end comment mark '*/'."},
    {116, u"Only one expression can be specified in the select list when the subquery is not introduced with EXISTS."},
    {120, u"The select list for the INSERT statement does not contain the same number of items as the insert list."},
    {121, u"The select list for the INSERT statement does not contain the same number of items as the insert list."},
    {131, u"The size (%1) given to the type '%2' exceeds the maximum allowed (%3)."},
    {137, u"Must declare the scalar variable \"%1\"."},
    {wording::VariableInDefinition, u"Variables are not allowed in this definition."},
    {141,
     u"A SELECT statement that assigns a value to a variable must not be combined with data-retrieval operations."},
    {145, u"ORDER BY items must appear in the select list if SELECT DISTINCT is specified."},
    {147, u"An aggregate may not appear in the WHERE clause, in the ON clause or inside another aggregate."},
    {155, u"'%1' is not a recognized datepart option."},
    {156, u"Incorrect syntax near the keyword '%1'."},
    {164, u"Each GROUP BY expression must contain at least one column that is not an outer reference."},
    {174, u"The %1 function requires %2 argument(s)."},
    {179, u"Cannot use the OUTPUT option when passing a constant to a stored procedure."},
    {183, u"The scale (%1) for the type must be within the range 0 to %2."},
    {191,
     u"Some part of your SQL statement is nested too deeply. Rewrite the query or break it up into smaller queries."},
    {195, u"'%1' is not a recognized built-in function name."},
    {201, u"Procedure or function '%1' expects parameter '%2', which was not supplied."},
    {205, u"All queries combined using a UNION, INTERSECT or EXCEPT operator must have an equal number of expressions "
          u"in their target lists."},
    {206, u"Operand type clash: %1 is incompatible with %2"},
    {207, u"Invalid column name '%1'."},
    {208, u"Invalid object name '%1'."},
    {209, u"Ambiguous column name '%1'."},
    {213, u"Column name or number of supplied values does not match table definition."},
    {217, u"Maximum stored procedure, function, trigger, or view nesting level exceeded (limit %1)."},
    {220, u"Arithmetic overflow error for data type %1, value = %2."},
    {232, u"Arithmetic overflow error for type %1, value = %2."},
    {241, u"Conversion failed when converting date and/or time from character string."},
    {242, u"The conversion of a varchar data type to a datetime data type resulted in an out-of-range value."},
    {244, u"The conversion of the %1 value '%2' overflowed an %3 column. Use a larger integer column."},
    {245, u"Conversion failed when converting the %1 value '%2' to data type %3."},
    {248, u"The conversion of the %1 value '%2' overflowed an int column."},
    {252, u"Recursive common table expression '%1' does not contain a top-level UNION ALL operator."},
    {257, u"Implicit conversion from data type %1 to %2 is not allowed. Use the CONVERT function to run this query."},
    {263, u"Must specify table to select from."},
    {264, u"The column name '%1' is specified more than once in the SET clause or column list of an INSERT. A column "
          u"cannot be assigned more than one value in the same clause. Modify the clause to make sure that a column is "
          u"updated only once. If this statement updates or inserts columns into a view, column aliasing can conceal "
          u"the duplication in your code."},
    {281, u"%1 is not a valid style number when converting from datetime to a character string."},
    {313, u"An insufficient number of arguments were supplied for the procedure or function %1."},
    {402, u"The data types %1 and %2 are incompatible in the %3 operator."},
    {408, u"A constant expression was encountered in the ORDER BY list, position %1."},
    {447, u"Expression type %1 is invalid for COLLATE clause."},
    {448, u"Invalid collation '%1'."},
    {506, u"The invalid escape character \"%1\" was specified in a LIKE predicate."},
    {512, u"Subquery returned more than 1 value. This is not permitted when the subquery follows =, !=, <, <= , >, >= "
          u"or when the subquery is used as an expression."},
    {515, u"Cannot insert the value NULL into column '%1', table '%2'; column does not allow nulls. %3 fails."},
    {517, u"Adding a value to a 'datetime' column caused an overflow."},
    {529, u"Explicit conversion from data type %1 to %2 is not allowed."},
    {530, u"The statement terminated. The maximum recursion %1 has been exhausted before statement completion."},
    {537, u"Invalid length parameter passed to the %1 function."},
    {544, u"Cannot insert explicit value for identity column in table '%1' when IDENTITY_INSERT is set to OFF."},
    {547, u"The %1 statement conflicted with a %2 constraint."},
    {wording::CheckConflict, u"The %1 statement conflicted with the CHECK constraint \"%2\"."},
    {wording::CheckConflictOfTable,
     u"The %1 statement conflicted with the CHECK constraint \"%2\". The conflict occurred in table \"%3\"."},
    {wording::CheckConflictOfColumn, u"The %1 statement conflicted with the CHECK constraint \"%2\". The conflict "
                                     u"occurred in table \"%3\", column '%4'."},
    {wording::KeyConflict,
     u"The %1 statement conflicted with the %2 constraint \"%3\". The conflict occurred in table \"%4\", column '%5'."},
    {628, u"Cannot issue SAVE TRANSACTION when there is no active transaction."},
    {701, u"There is insufficient system memory to run this query."},
    {823, u"The database file cannot be used: %1."},
    {wording::FileGone, u"The database file \"%1\" is no longer there."},
    {1007, u"The number '%1' is out of the range for numeric representation (maximum precision 38)."},
    {1008,
     u"The SELECT item identified by the ORDER BY number %1 contains a variable as part of the expression identifying "
     u"a column position. Variables are only allowed when ordering by an expression referencing a column name."},
    {1013, u"The objects \"%1\" and \"%2\" in the FROM clause have the same exposed names. Use correlation names to "
           u"distinguish them."},
    {1033, u"The ORDER BY clause is invalid in views, inline functions, derived tables, subqueries, and common table "
           u"expressions, unless TOP, OFFSET or FOR XML is also specified."},
    {1038, u"An object or column name is missing or empty. For SELECT INTO statements, verify each column has a name."},
    {1087, u"Must declare the table variable \"%1\"."},
    {1088, u"Cannot find the object \"%1\" because it does not exist or you do not have permissions."},
    {1105, u"Could not allocate space in the database because the disk is full."},
    {1222, u"Lock request time out period exceeded."},
    {1505,
     u"Cannot open database \"%1\": texts that are the same in the order of this version stand in a unique key (%2)."},
    {1767, u"Foreign key references invalid table '%1'."},
    {1911, u"Column name '%1' does not exist in the target table or view."},
    {2601, u"Cannot insert duplicate key row in object '%1' with a unique index on %2."},
    {wording::SecondNull,
     u"Cannot insert duplicate key row in object '%1' with unique index '%2'. The duplicate key value contains NULL."},
    {2627, u"Violation of PRIMARY KEY constraint. Cannot insert duplicate key in object '%1'."},
    {2628, u"String or binary data would be truncated in table '%1', column '%2'. Truncated value: '%3'."},
    {wording::BytesTruncated, u"String or binary data would be truncated in table '%1', column '%2'."},
    {2705, u"Column names in each table must be unique. Column name '%1' in table '%2' is specified more than once."},
    {2714, u"There is already an object named '%1' in the database."},
    {2715, u"Cannot find data type %1."},
    {2744, u"Multiple identity columns specified for table '%1'. Only one identity column per table is allowed."},
    {2750, u"Column or parameter: Specified column precision %1 is greater than the maximum precision of 38."},
    {2760, u"The specified schema name \"%1\" either does not exist or you do not have permission to use it."},
    {2812, u"Could not find stored procedure '%1'."},
    {3033, u"The file \"%1\" exists already."},
    {3623, u"An invalid floating point operation occurred."},
    {3701, u"Cannot drop '%1', because it does not exist or you do not have permission."},
    {wording::NoTableToDrop, u"Cannot drop the table '%1', because it does not exist or you do not have permission."},
    {3726, u"Could not drop object '%1' because it is referenced by a FOREIGN KEY constraint."},
    {3902, u"The COMMIT TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    {3903, u"The ROLLBACK TRANSACTION request has no corresponding BEGIN TRANSACTION."},
    {3906, u"Failed to update the database because it is read-only."},
    {4060, u"Cannot open database \"%1\": %2."},
    {4104, u"The multi-part identifier \"%1.%2\" could not be bound."},
    {4112, u"The function '%1' must have an OVER clause with ORDER BY."},
    {4113, u"The function '%1' is not a valid windowing function, and cannot be used with the OVER clause."},
    {4127, u"At least one of the arguments to COALESCE must be an expression that is not the NULL constant."},
    {4145, u"An expression of non-boolean type specified in a context where a condition is expected."},
    {wording::ConditionAsValue, u"A condition is not allowed where a value is expected."},
    {4151, u"The type of the first argument to NULLIF cannot be the NULL constant because the type of the first "
           u"argument has to be known."},
    {4403, u"Cannot update the view or function '%1'."},
    {4406, u"Update or insert of view or function '%1' failed because it contains a derived or constant field."},
    {4511, u"Create View or Function failed because no column name was specified for a column."},
    {4712, u"Cannot truncate table '%1' because it is being referenced by a FOREIGN KEY constraint."},
    {4901, u"ALTER TABLE only allows columns to be added that can contain nulls, or have a DEFAULT definition "
           u"specified. Column '%1' cannot be added to table '%2'."},
    {4902, u"Cannot find the object \"%1\" because it does not exist or you do not have permissions."},
    {6401, u"Cannot roll back %1. No transaction or savepoint of that name was found."},
    {8102, u"Cannot update identity column '%1'."},
    {8114, u"Error converting data type %1 to %2."},
    {8115, u"Arithmetic overflow error converting %1 to data type %2."},
    {8116, u"Argument data type %1 is invalid for argument 1 of %2 function."},
    {8117, u"Operand data type %1 is invalid for %2 operator."},
    {8120, u"Column '%1' is invalid in the select list because it is not contained in either an aggregate function or "
           u"the GROUP BY clause."},
    {8133, u"At least one of the result expressions in a CASE specification must be an expression other than the NULL "
           u"constant."},
    {8134, u"Divide by zero error encountered."},
    {8139, u"Number of referencing columns in foreign key differs from number of referenced columns, table '%1'."},
    {8144, u"Procedure or function %1 has too many arguments specified."},
    {8145, u"%1 is not a parameter for procedure %2."},
    {8154, u"The table '%1' is ambiguous."},
    {8155, u"No column name was specified for column %1 of '%2'."},
    {8156, u"The column '%1' was specified multiple times for '%2'."},
    {8158, u"'%1' has a different number of columns than were specified in the column list."},
    {8159, u"'%1' has a different number of columns than were specified in the column list."},
    {8162, u"The formal parameter \"%1\" was not declared as an OUTPUT parameter, but the actual parameter passed in "
           u"requested output."},
    {10704, u"To rethrow an error, a THROW statement must be used inside a CATCH block."},
    {10705, u"Subqueries are not allowed in the OUTPUT clause."},
    {10709, u"The number of columns for each row in a table value constructor must be the same."},
    {10738, u"The number of row value expressions in the INSERT statement exceeds the maximum allowed number of 1000 "
            u"row values."},
    {10752, u"The function '%1' may not have a window frame."},
    {40517, u"Keyword or statement option '%1' is not supported in this version of the database."},
    {wording::OwnTemporaryTable, u"A temporary table '%1' of its own for a procedure whose caller has one of that name "
                                 u"is not supported in this version of the database."},
    {wording::OutputOfExchange, u"OUTPUT of an UPDATE whose rows take unique values over from each other is not "
                                u"supported in this version of the database."},
    {wording::LowestNumbersExchanged,
     u"Exchanging the lowest numbers of bigint in '%1' is not supported in this version of the database."},
    {wording::ReferredExchange, u"An UPDATE that exchanges unique values of '%1', to which '%2' refers with ON UPDATE "
                                u"SET, is not supported in this version of the database."},
    {wording::AverageOfDistinct, u"AVG(DISTINCT …) of a decimal is not supported in this version of the database."},
    {wording::RunningAssignment,
     u"%1 in a SELECT that assigns row after row is not supported in this version of the database."},
    {wording::AddedConstraint,
     u"ALTER TABLE … ADD CHECK and FOREIGN KEY are not supported in this version of the database."},
    {wording::DroppedConstraint, u"ALTER TABLE … DROP CONSTRAINT is not supported in this version of the database."},
    {wording::AddedIdentity, u"ALTER TABLE … ADD IDENTITY is not supported in this version of the database."},
    {wording::InsertedProcedure, u"INSERT … EXEC is not supported in this version of the database."},
    {wording::OutputOfFormerValues,
     u"OUTPUT of the values before an UPDATE (deleted) is not supported in this version of the database."},
    {wording::TopPercent, u"TOP … PERCENT other than 100 is not supported in this version of the database."},
    {wording::XmlOfColumns,
     u"FOR XML PATH other than of one unnamed text with PATH('') is not supported in this version of the database."},
    {wording::ForeignToWriter, u"The statement '%1' does not belong to the writer."},
    {wording::ChangedQuery, u"Changing '%1', which is not a plain selection of the rows of one table, is not supported "
                            u"in this version of the database."},
    {wording::ChangedQueryInJoin,
     u"Changing '%1', which is a query, in a join is not supported in this version of the database."},
    {wording::ChangedRowsOf, u"Changing rows of '%1' is not supported in this version of the database."},
};

static_assert(std::ranges::is_sorted(Texts, {}, &Row::wording));

QString Filled(QStringView text, std::span<const ErrorArgument> arguments)
{
    QString whole;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'%' || i + 1 == text.size() || !text[i + 1].isDigit()) {
            whole += text[i];
            continue;
        }
        const auto place = std::size_t(text[++i].digitValue());
        Q_ASSERT_X(place >= 1 && place <= arguments.size(), "tsql::Error", "an argument is missing");
        whole += arguments[place - 1].text();
    }
    return whole;
}

} // namespace

QString ErrorText(Wording wording, std::initializer_list<ErrorArgument> arguments)
{
    const auto row = std::ranges::lower_bound(Texts, wording, {}, &Row::wording);
    if (row == std::end(Texts) || row->wording != wording)
        qFatal("tsql: error %d has no text %d", wording.number, wording.variant);
    return Filled(QStringView(row->text), {arguments.begin(), arguments.size()});
}

} // namespace tsql
