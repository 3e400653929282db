#include "tsql/functions/call.h"
#include "tsql/values/convert.h"
#include "tsql/values/error.h"
#include "tsql/values/folding.h"
#include "tsql/values/like.h"

using namespace Qt::StringLiterals;

namespace tsql {

namespace {

constexpr qint64 LongestText = 100'000'000;

void TextFit(Call &call)
{
    const std::string_view text = call.text(0);
    const std::string_view fit = FitText(text, call.Number(1), call.text(2), call.text(3));
    if (fit.size() == text.size())
        call.GiveArgument(0);
    else
        call.Give(fit);
}

void TextCut(Call &call)
{
    const std::string_view text = call.text(0);
    const std::string_view cut = CutText(text, call.Number(1));
    if (cut.size() == text.size() && sqlite3_value_type(call.ValueAt(0)) == SQLITE_TEXT)
        call.GiveArgument(0);
    else
        call.Give(cut);
}

void TextPad(Call &call)
{
    std::string text(CutText(call.text(0), call.Number(1)));
    const size_t units = Utf16Length(text);
    text.append(size_t(std::max(call.Number(1), int(units))) - units, ' ');
    call.Give(std::string_view(text));
}

void TextOfInt(Call &call)
{
    call.Give(std::string_view(std::to_string(call.IntegerAt(0))));
}

void TextOfBinary(Call &call)
{
    call.Give(call.BlobAt(0));
}

void BinaryOfText(Call &call)
{
    call.GiveBlob(call.text(0));
}

void Len(Call &call)
{
    call.Give(qint64(Utf16Length(WithoutTrailingBlanks(call.text(0)))));
}

void DataLength(Call &call)
{
    const std::string_view bytes = call.BlobAt(0);
    const bool binary = sqlite3_value_type(call.ValueAt(0)) == SQLITE_BLOB;
    call.Give(binary ? qint64(bytes.size()) : qint64(Utf16Length(bytes)) * call.IntegerAt(1));
}

qint64 CheckedLength(const Call &call, int i, const char *function)
{
    const qint64 length = call.IntegerAt(i);
    if (length < 0)
        throw Error(537, {QLatin1String(function)});
    return length;
}

void Substring(Call &call)
{
    const qint64 start = call.IntegerAt(1) - 1;
    const qint64 end = start + CheckedLength(call, 2, "SUBSTRING");
    const QString text = call.String(0);
    const qint64 from = std::clamp<qint64>(start, 0, text.size());
    call.Give(text.mid(from, std::clamp<qint64>(end, from, text.size()) - from));
}

void Left(Call &call)
{
    call.Give(Utf16Prefix(call.text(0), size_t(CheckedLength(call, 1, "LEFT"))));
}

void Right(Call &call)
{
    call.Give(call.String(0).right(qsizetype(CheckedLength(call, 1, "RIGHT"))));
}

void CharIndex(Call &call)
{
    const std::string_view text = call.text(1);
    const qint64 start = call.Count() > 2 ? std::max<qint64>(call.IntegerAt(2) - 1, 0) : 0;
    const size_t from = Utf16Prefix(text, size_t(start)).size();
    const auto place = from < text.size() ? SoughtText(call.text(0)).In(text, from) : std::nullopt;
    call.Give(place ? qint64(Utf16Length(text.substr(0, place->begin))) + 1 : qint64(0));
}

/** The pattern of a call; SQLite keeps it while the argument is the same constant for all rows. */
const LikePattern &PatternOf(const Call &call, int i, char32_t escape, std::unique_ptr<LikePattern> &own)
{
    auto *kept = static_cast<LikePattern *>(sqlite3_get_auxdata(call.Context(), i));
    if (kept)
        return *kept;
    own = std::make_unique<LikePattern>(call.text(i), escape);
    return *own;
}

/** Hands the pattern to SQLite, which may destroy it at once when the argument is not constant. */
void KeepPattern(const Call &call, int i, std::unique_ptr<LikePattern> &own)
{
    if (own)
        sqlite3_set_auxdata(call.Context(), i, own.release(),
                            [](void *pattern) { delete static_cast<LikePattern *>(pattern); });
}

/**
 * LIKE of texts in the database's own character set: blanks at the end of the value match what the pattern has for
 * them, or nothing.
 */
bool MatchesPadded(const LikePattern &pattern, std::string_view text)
{
    bool matches = pattern.Matches(text);
    while (!matches && text.ends_with(' ')) {
        text.remove_suffix(1);
        matches = pattern.Matches(text);
    }
    return matches;
}

template <bool padded> void Like(Call &call)
{
    char32_t escape = 0;
    if (call.Count() > 2) {
        size_t at = 0;
        const std::string_view mark = call.text(2);
        escape = mark.empty() ? 0 : NextCodePoint(mark, at);
        if (at == 0 || at != mark.size())
            throw Error(506, {call.String(2)});
    }
    std::unique_ptr<LikePattern> own;
    const LikePattern &pattern = PatternOf(call, 1, escape, own);
    call.Give(qint64(padded ? MatchesPadded(pattern, call.text(0)) : pattern.Matches(call.text(0))));
    KeepPattern(call, 1, own);
}

/** The first place at which the pattern, freed of its leading %, matches; 0 for none. */
void PatIndex(Call &call)
{
    std::string_view pattern = call.text(0);
    const bool anywhere = pattern.starts_with('%');
    if (anywhere)
        pattern.remove_prefix(1);
    const LikePattern compiled(pattern);
    const std::string_view text = call.text(1);
    qint64 position = 1;
    for (size_t at = 0; at <= text.size();) {
        if (compiled.Matches(text.substr(at)))
            return call.Give(position);
        if (!anywhere || at == text.size())
            break;
        position += NextCodePoint(text, at) >= 0x10000 ? 2 : 1;
    }
    call.Give(qint64(0));
}

void Stuff(Call &call)
{
    if (call.IsNull(0) || call.IsNull(1) || call.IsNull(2))
        return;
    const QString text = call.String(0);
    const qint64 start = call.IntegerAt(1);
    const qint64 length = call.IntegerAt(2);
    if (start < 1 || start > text.size() || length < 0)
        return;
    const QString with = call.IsNull(3) ? QString() : call.String(3);
    call.Give(text.left(start - 1) + with + text.mid(start - 1 + length));
}

void Replace(Call &call)
{
    const std::string_view text = call.text(0);
    const std::string_view with = call.text(2);
    const SoughtText sought(call.text(1));
    std::string made;
    size_t at = 0;
    while (const auto place = sought.In(text, at)) {
        made += text.substr(at, place->begin - at);
        made += with;
        at = place->end;
    }
    made += text.substr(at);
    call.Give(std::string_view(made));
}

std::string_view WithoutLeadingBlanks(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    return text;
}

void Ltrim(Call &call)
{
    call.Give(WithoutLeadingBlanks(call.text(0)));
}

void Rtrim(Call &call)
{
    call.Give(WithoutTrailingBlanks(call.text(0)));
}

void Trim(Call &call)
{
    call.Give(WithoutTrailingBlanks(WithoutLeadingBlanks(call.text(0))));
}

void Upper(Call &call)
{
    call.Give(call.String(0).toUpper());
}

void Lower(Call &call)
{
    call.Give(call.String(0).toLower());
}

void Reverse(Call &call)
{
    const std::u32string points = call.String(0).toStdU32String();
    const std::u32string turned(points.rbegin(), points.rend());
    call.Give(QString::fromStdU32String(turned));
}

void Replicate(Call &call)
{
    const qint64 times = call.IntegerAt(1);
    if (times < 0)
        return;
    const QString text = call.String(0);
    if (text.size() * times > LongestText)
        throw Error(701);
    call.Give(text.repeated(qsizetype(times)));
}

void Space(Call &call)
{
    if (call.IntegerAt(0) >= 0)
        call.Give(QString(qsizetype(std::min<qint64>(call.IntegerAt(0), 8000)), u' '));
}

void CodeOfFirst(Call &call)
{
    const std::string_view text = call.text(0);
    size_t at = 0;
    if (!text.empty())
        call.Give(qint64(NextCodePoint(text, at)));
}

void Nchar(Call &call)
{
    const qint64 code = call.IntegerAt(0);
    if (code > 0 && code <= 0x10FFFF && !QChar::isSurrogate(char32_t(code))) {
        const auto point = char32_t(code);
        call.Give(QString::fromUcs4(&point, 1));
    }
}

void QuoteName(Call &call)
{
    const QString mark = call.Count() > 1 ? call.String(1) : u"["_s;
    const QString text = call.String(0);
    if (text.size() > 128)
        return;
    if (mark == u"'" || mark == u"\"")
        return call.Give(mark + QString(text).replace(mark, mark + mark) + mark);
    if (mark == u"[" || mark == u"]")
        call.Give(u'[' + QString(text).replace(u']', u"]]"_s) + u']');
}

constexpr Function textFunctions[] = {
    {"text_fit", TextFit, 4},
    {"text_cut", TextCut, 2},
    {"text_pad", TextPad, 2},
    {"text_of_int", TextOfInt, 1},
    {"text_of_binary", TextOfBinary, 1},
    {"binary_of_text", BinaryOfText, 1},
    {"tsql_len", Len, 1},
    {"tsql_datalength", DataLength, 2},
    {"tsql_substring", Substring, 3},
    {"tsql_left", Left, 2},
    {"tsql_right", Right, 2},
    {"tsql_charindex", CharIndex, 2},
    {"tsql_charindex", CharIndex, 3},
    {"tsql_patindex", PatIndex, 2},
    {"tsql_stuff", Stuff, 4, true},
    {"tsql_replace", Replace, 3},
    {"tsql_ltrim", Ltrim, 1},
    {"tsql_rtrim", Rtrim, 1},
    {"tsql_trim", Trim, 1},
    {"tsql_upper", Upper, 1},
    {"tsql_lower", Lower, 1},
    {"tsql_reverse", Reverse, 1},
    {"tsql_replicate", Replicate, 2},
    {"tsql_space", Space, 1},
    {"tsql_ascii", CodeOfFirst, 1},
    {"tsql_unicode", CodeOfFirst, 1},
    {"tsql_nchar", Nchar, 1},
    {"tsql_quotename", QuoteName, 1},
    {"tsql_quotename", QuoteName, 2},
    {"tsql_like", Like<false>, 3},
    {"tsql_like_padded", Like<true>, 3},
};

/** LIKE without ESCAPE runs over whole lists: with its pattern at hand it goes no detours. */
template <bool padded> void LikeQuickly(sqlite3_context *context, int count, sqlite3_value **values)
{
    const auto *pattern = static_cast<const LikePattern *>(sqlite3_get_auxdata(context, 1));
    if (!pattern) {
        static constexpr Function general = {"", Like<padded>, 2};
        CallFunction(general, context, count, values);
        return;
    }
    const auto *text = reinterpret_cast<const char *>(sqlite3_value_text(values[0]));
    if (!text)
        return;
    const std::string_view value(text, size_t(sqlite3_value_bytes(values[0])));
    sqlite3_result_int(context, padded ? MatchesPadded(*pattern, value) : pattern->Matches(value));
}

} // namespace

void AddTextFunctions(sqlite3 *db)
{
    AddFunctions(db, textFunctions);
    constexpr int Flags = SQLITE_UTF8 | SQLITE_INNOCUOUS | SQLITE_DETERMINISTIC;
    sqlite3_create_function_v2(db, "tsql_like", 2, Flags, nullptr, LikeQuickly<false>, nullptr, nullptr, nullptr);
    sqlite3_create_function_v2(db, "tsql_like_padded", 2, Flags, nullptr, LikeQuickly<true>, nullptr, nullptr, nullptr);
}

} // namespace tsql
