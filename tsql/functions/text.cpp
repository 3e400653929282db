#include "tsql/functions/call.h"
#include "tsql/values/convert.h"
#include "tsql/values/error.h"
#include "tsql/values/folding.h"
#include "tsql/values/like.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr qint64 LongestText = 100'000'000;

void textFit(Call &call)
{
    const std::string_view text = call.text(0);
    const std::string_view fit = fitText(text, call.number(1), call.text(2), call.text(3));
    if (fit.size() == text.size())
        call.giveArgument(0);
    else
        call.give(fit);
}

void textCut(Call &call)
{
    const std::string_view text = call.text(0);
    const std::string_view cut = cutText(text, call.number(1));
    if (cut.size() == text.size() && sqlite3_value_type(call.value(0)) == SQLITE_TEXT)
        call.giveArgument(0);
    else
        call.give(cut);
}

void textPad(Call &call)
{
    std::string text(cutText(call.text(0), call.number(1)));
    const size_t units = utf16Length(text);
    text.append(size_t(std::max(call.number(1), int(units))) - units, ' ');
    call.give(std::string_view(text));
}

void textOfInt(Call &call)
{
    call.give(std::string_view(std::to_string(call.integer(0))));
}

void textOfBinary(Call &call)
{
    call.give(call.blob(0));
}

void binaryOfText(Call &call)
{
    call.giveBlob(call.text(0));
}

void len(Call &call)
{
    call.give(qint64(utf16Length(withoutTrailingBlanks(call.text(0)))));
}

void dataLength(Call &call)
{
    const std::string_view bytes = call.blob(0);
    const bool binary = sqlite3_value_type(call.value(0)) == SQLITE_BLOB;
    call.give(binary ? qint64(bytes.size()) : qint64(utf16Length(bytes)) * call.integer(1));
}

qint64 checkedLength(const Call &call, int i, const char *function)
{
    const qint64 length = call.integer(i);
    if (length < 0)
        throw Error(537, {QLatin1String(function)});
    return length;
}

void substring(Call &call)
{
    const qint64 start = call.integer(1) - 1;
    const qint64 end = start + checkedLength(call, 2, "SUBSTRING");
    const QString text = call.string(0);
    const qint64 from = std::clamp<qint64>(start, 0, text.size());
    call.give(text.mid(from, std::clamp<qint64>(end, from, text.size()) - from));
}

void left(Call &call)
{
    call.give(utf16Prefix(call.text(0), size_t(checkedLength(call, 1, "LEFT"))));
}

void right(Call &call)
{
    call.give(call.string(0).right(qsizetype(checkedLength(call, 1, "RIGHT"))));
}

void charIndex(Call &call)
{
    const QString text = call.string(1);
    const qint64 start = call.count() > 2 ? std::max<qint64>(call.integer(2) - 1, 0) : 0;
    const QString needle = call.string(0);
    const bool found = !needle.isEmpty() && start < text.size();
    call.give(found ? qint64(text.indexOf(needle, start, Qt::CaseInsensitive) + 1) : qint64(0));
}

/** The pattern of a call; SQLite keeps it while the argument is the same constant for all rows. */
const LikePattern &patternOf(const Call &call, int i, char32_t escape, std::unique_ptr<LikePattern> &own)
{
    auto *kept = static_cast<LikePattern *>(sqlite3_get_auxdata(call.context(), i));
    if (kept)
        return *kept;
    own = std::make_unique<LikePattern>(call.text(i), escape);
    return *own;
}

/** Hands the pattern to SQLite, which may destroy it at once when the argument is not constant. */
void keepPattern(const Call &call, int i, std::unique_ptr<LikePattern> &own)
{
    if (own)
        sqlite3_set_auxdata(call.context(), i, own.release(),
                            [](void *pattern) { delete static_cast<LikePattern *>(pattern); });
}

/**
 * LIKE of texts in the database's own character set: blanks at the end of the value match what the pattern has for
 * them, or nothing.
 */
bool matchesPadded(const LikePattern &pattern, std::string_view text)
{
    bool matches = pattern.matches(text);
    while (!matches && text.ends_with(' ')) {
        text.remove_suffix(1);
        matches = pattern.matches(text);
    }
    return matches;
}

template <bool padded> void like(Call &call)
{
    char32_t escape = 0;
    if (call.count() > 2) {
        size_t at = 0;
        const std::string_view mark = call.text(2);
        escape = mark.empty() ? 0 : nextCodePoint(mark, at);
        if (at == 0 || at != mark.size())
            throw Error(506, {call.string(2)});
    }
    std::unique_ptr<LikePattern> own;
    const LikePattern &pattern = patternOf(call, 1, escape, own);
    call.give(qint64(padded ? matchesPadded(pattern, call.text(0)) : pattern.matches(call.text(0))));
    keepPattern(call, 1, own);
}

/** The first place at which the pattern, freed of its leading %, matches; 0 for none. */
void patIndex(Call &call)
{
    std::string_view pattern = call.text(0);
    const bool anywhere = pattern.starts_with('%');
    if (anywhere)
        pattern.remove_prefix(1);
    const LikePattern compiled(pattern);
    const std::string_view text = call.text(1);
    qint64 position = 1;
    for (size_t at = 0; at <= text.size();) {
        if (compiled.matches(text.substr(at)))
            return call.give(position);
        if (!anywhere || at == text.size())
            break;
        position += nextCodePoint(text, at) >= 0x10000 ? 2 : 1;
    }
    call.give(qint64(0));
}

void stuff(Call &call)
{
    if (call.isNull(0) || call.isNull(1) || call.isNull(2))
        return;
    const QString text = call.string(0);
    const qint64 start = call.integer(1);
    const qint64 length = call.integer(2);
    if (start < 1 || start > text.size() || length < 0)
        return;
    const QString with = call.isNull(3) ? QString() : call.string(3);
    call.give(text.left(start - 1) + with + text.mid(start - 1 + length));
}

void replace(Call &call)
{
    QString text = call.string(0);
    const QString from = call.string(1);
    if (!from.isEmpty())
        text.replace(from, call.string(2), Qt::CaseInsensitive);
    call.give(text);
}

std::string_view withoutLeadingBlanks(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

void ltrim(Call &call)
{
    call.give(withoutLeadingBlanks(call.text(0)));
}

void rtrim(Call &call)
{
    call.give(withoutTrailingBlanks(call.text(0)));
}

void trim(Call &call)
{
    call.give(withoutTrailingBlanks(withoutLeadingBlanks(call.text(0))));
}

void upper(Call &call)
{
    call.give(call.string(0).toUpper());
}

void lower(Call &call)
{
    call.give(call.string(0).toLower());
}

void reverse(Call &call)
{
    const std::u32string points = call.string(0).toStdU32String();
    const std::u32string turned(points.rbegin(), points.rend());
    call.give(QString::fromStdU32String(turned));
}

void replicate(Call &call)
{
    const qint64 times = call.integer(1);
    if (times < 0)
        return;
    const QString text = call.string(0);
    if (text.size() * times > LongestText)
        throw Error(701);
    call.give(text.repeated(qsizetype(times)));
}

void space(Call &call)
{
    if (call.integer(0) >= 0)
        call.give(QString(qsizetype(std::min<qint64>(call.integer(0), 8000)), u' '));
}

void codeOfFirst(Call &call)
{
    const std::string_view text = call.text(0);
    size_t at = 0;
    if (!text.empty())
        call.give(qint64(nextCodePoint(text, at)));
}

void nchar(Call &call)
{
    const qint64 code = call.integer(0);
    if (code > 0 && code <= 0x10FFFF && !QChar::isSurrogate(char32_t(code))) {
        const auto point = char32_t(code);
        call.give(QString::fromUcs4(&point, 1));
    }
}

void quoteName(Call &call)
{
    const QString mark = call.count() > 1 ? call.string(1) : u"["_s;
    const QString text = call.string(0);
    if (text.size() > 128)
        return;
    if (mark == u"'" || mark == u"\"")
        return call.give(mark + QString(text).replace(mark, mark + mark) + mark);
    if (mark == u"[" || mark == u"]")
        call.give(u'[' + QString(text).replace(u']', u"]]"_s) + u']');
}

constexpr Function textFunctions[] = {
    {"text_fit", textFit, 4},
    {"text_cut", textCut, 2},
    {"text_pad", textPad, 2},
    {"text_of_int", textOfInt, 1},
    {"text_of_binary", textOfBinary, 1},
    {"binary_of_text", binaryOfText, 1},
    {"tsql_len", len, 1},
    {"tsql_datalength", dataLength, 2},
    {"tsql_substring", substring, 3},
    {"tsql_left", left, 2},
    {"tsql_right", right, 2},
    {"tsql_charindex", charIndex, 2},
    {"tsql_charindex", charIndex, 3},
    {"tsql_patindex", patIndex, 2},
    {"tsql_stuff", stuff, 4, true},
    {"tsql_replace", replace, 3},
    {"tsql_ltrim", ltrim, 1},
    {"tsql_rtrim", rtrim, 1},
    {"tsql_trim", trim, 1},
    {"tsql_upper", upper, 1},
    {"tsql_lower", lower, 1},
    {"tsql_reverse", reverse, 1},
    {"tsql_replicate", replicate, 2},
    {"tsql_space", space, 1},
    {"tsql_ascii", codeOfFirst, 1},
    {"tsql_unicode", codeOfFirst, 1},
    {"tsql_nchar", nchar, 1},
    {"tsql_quotename", quoteName, 1},
    {"tsql_quotename", quoteName, 2},
    {"tsql_like", like<false>, 3},
    {"tsql_like_padded", like<true>, 3},
};

/** LIKE without ESCAPE runs over whole lists: with its pattern at hand it goes no detours. */
template <bool padded> void likeQuickly(sqlite3_context *context, int count, sqlite3_value **values)
{
    const auto *pattern = static_cast<const LikePattern *>(sqlite3_get_auxdata(context, 1));
    if (!pattern) {
        static constexpr Function general = {"", like<padded>, 2};
        callFunction(general, context, count, values);
        return;
    }
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(values[0]));
    if (!text)
        return;
    const std::string_view value(text, size_t(sqlite3_value_bytes(values[0])));
    sqlite3_result_int(context, padded ? matchesPadded(*pattern, value) : pattern->matches(value));
}

} // namespace

void addTextFunctions(sqlite3 *db)
{
    addFunctions(db, textFunctions);
    constexpr int Flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(db, "tsql_like", 2, Flags, nullptr, likeQuickly<false>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "tsql_like_padded", 2, Flags, nullptr, likeQuickly<true>, nullptr, nullptr, nullptr);
}

} // namespace tsql
