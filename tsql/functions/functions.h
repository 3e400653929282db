// The SQL functions, aggregates and the collation that compiled statements call.
#pragma once

struct sqlite3;

namespace tsql {

class Catalogue;

/**
 * Registers on one SQLite handle everything that a compiled statement may name. Values have the storage form
 * of their type: int kinds INTEGER, float REAL, texts TEXT (collation TSQL_CI), dates TEXT, binary BLOB, decimals
 * the order-preserving BLOB of Decimal::toBlob. A decimal does not carry its scale: the writer passes it.
 * NULL in gives NULL out unless told otherwise. `kind` is int(Kind) of types.h; `p`, `s` precision and scale.
 *
 * Decimals
 *   dec_of_int(i, p, s)   dec_of_real(r, p, s)   dec_of_text(t, p, s, sourceKind)
 *   dec_rescale(d, s0, p, s)        rounds half away from zero; 8115 when it does not fit p
 *   dec_text(d, s)   dec_to_int(d, s, kind) (truncates)   dec_to_real(d, s)   dec_to_bit(d)
 *   dec_add|dec_sub|dec_mul|dec_div|dec_mod(a, sa, b, sb, p, s)     p, s: type of the result
 *   dec_neg(d)   dec_abs(d)   dec_sign(d) (int)   dec_round(d, s, digits [, truncate])
 *   dec_floor(d, s)   dec_ceiling(d, s)     scale of the result is 0
 *   dec_sum(d) aggregate and window, the scale of d; dec_avg(d, s) aggregate and window, scale max(s, 6)
 *
 * Whole numbers
 *   int_of_text(t, kind, sourceKind)   int_of_real(r, kind) (truncates)   int_fit(i, kind) (8115 out of range)
 *   int_div(a, b)   int_mod(a, b)      8134 on zero
 *   int_sum(i, kind), int_avg(i) aggregates (avg truncates); int_sum refuses what does not fit kind
 *   bit_of(x) any number to 0/1   bit_of_text(t, sourceKind) also takes 'true' and 'false'
 *
 * Floating point
 *   real_of_text(t, sourceKind)   real_div(a, b)   text_of_real(r)   round_real(r, digits [, truncate])
 *   real_fit(r)   real_sqrt(r)   real_exp(r)   real_log(r [, base])   real_pow(a, b)   3623 without a value, 8115
 *   when infinite;   int_of_power(r, kind)   232 out of range
 *
 * Texts (lengths and positions are UTF-16 units, as nvarchar counts them; positions start at 1)
 *   text_fit(t, n, 'table', 'column')   2628 when longer than n without its trailing blanks
 *   text_cut(t, n)    CAST to a shorter text   text_pad(t, n)    char(n): cut or padded with blanks
 *   text_of_int(i)    text_of_binary(b)   binary_of_text(t)
 *   tsql_len(t)   tsql_datalength(t, bytesPerUnit)   tsql_substring(t, start, n)   tsql_left(t, n)   tsql_right(t, n)
 *   tsql_charindex(needle, t [, start])   tsql_patindex(pattern, t)   tsql_stuff(t, start, n, with)
 *   tsql_replace(t, from, to)   tsql_ltrim(t)   tsql_rtrim(t)   tsql_trim(t)   tsql_upper(t)   tsql_lower(t)
 *   tsql_reverse(t)   tsql_replicate(t, n)   tsql_space(n)   tsql_ascii(t)   tsql_unicode(t)   tsql_nchar(i)
 *   tsql_quotename(t [, quote])   tsql_isnumeric(t)   tsql_str(r, length, decimals)
 *   tsql_like(t, pattern [, escape])    %, _, [..], [^..]; 1, 0 or NULL;   tsql_like_padded: blanks at the end of t
 *   may go unmatched
 *   tsql_xml_agg(t)    aggregate of FOR XML PATH(''): escaped pieces joined, NULL pieces skipped, NULL for no rows
 *   tsql_string_agg(t, separator)
 *
 * Dates ('YYYY-MM-DD', 'YYYY-MM-DD hh:mm:ss.mmm')
 *   date_of_text(t, kind, sourceKind [, style])   date_fit(d, kind) from one date type to another
 *   date_text(d, kind, style)   date_add('part', n, d, kind)   date_diff('part', a, b)   date_part('part', d)
 *   The present moment is the parameter @@GETDATE, one value for a whole statement.
 *
 * Others
 *   next_level(level, limit)    530 beyond the limit
 *   object_id(name [, type])   schema_id(name)   index_property(table, index, property)   only 'IndexID', the number of
 *   the index, NULL when the table has none of that name
 *   tsql_newid()   tsql_error(number, message)   raises that error
 *
 * Collations: TSQL_CI, the database's own; TSQL_CI_AS, TSQL_CS_AI, TSQL_CS_AS and TSQL_BIN for COLLATE. See
 * collation.h.
 */
void RegisterFunctions(sqlite3 *db, Catalogue *catalogue);

} // namespace tsql
