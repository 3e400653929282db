#include "gooddetail/opening_texts.h"

#include "host/data/sql_text.h"

#include <QRegularExpression>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace good_detail {

namespace {

using host::Quantity;

// The formats, each told once: what a visitor does to a field is writing, naming its kind, or reading.

template <typename Visitor, typename... Fields> void All(Visitor &visit, Fields &...fields)
{
    (visit(fields), ...);
}

template <typename Visitor, typename Array> void Each(Visitor &visit, Array &fields)
{
    for (auto &field : fields)
        visit(field);
}

template <typename Visitor> void Visit(Visitor &visit, EnterOpening &o)
{
    Each(visit, o.Numbers);
    Each(visit, o.Texts);
    All(visit, o.Key, o.Last);
}

template <typename Visitor> void Visit(Visitor &visit, EnterLineOpening &o)
{
    Each(visit, o.Numbers);
    All(visit, o.Text13, o.Number14, o.Text15, o.Number16, o.Text17, o.Text18, o.Amount, o.Number20, o.Number21);
}

template <typename Visitor> void Visit(Visitor &visit, ExitOpening &o)
{
    Each(visit, o.Numbers);
    visit(o.Text);
}

template <typename Visitor> void Visit(Visitor &visit, SelectOpening &o)
{
    All(visit, o.Flag, o.Kind, o.Text, o.Number);
}

template <typename Visitor> void Visit(Visitor &visit, DivisionItemsOpening &o)
{
    Each(visit, o.Numbers);
    Each(visit, o.Amounts);
    Each(visit, o.Constants);
}

template <typename Visitor> void Visit(Visitor &visit, ChosenDetail &o)
{
    All(visit, o.DetailValueID, o.StoreCode, o.GoodCode, o.Amount1, o.Amount2, o.Length, o.Width, o.Amount3);
}

/// Two decimals, halves away from zero.
QString Fixed(Quantity amount)
{
    // Far beyond what the columns hold; a number that is none says nothing.
    constexpr Quantity Most = 9e16L;
    const Quantity hundredths = std::isnan(amount) ? 0 : std::round(std::clamp(amount, -Most, Most) * 100);
    const QString digits = QString::number(static_cast<qint64>(std::fabs(hundredths))).rightJustified(3, u'0');
    return (hundredths < 0 ? u"-"_s : QString()) + digits.chopped(2) + u'.' + digits.last(2);
}

struct Writer
{
    void operator()(const int &number) { fields << QString::number(number); }
    void operator()(const QString &text) { fields << text; }
    void operator()(const Quantity &amount) { fields << Fixed(amount); }
    QStringList fields;
};

enum class Kind { Number, Text, Amount };

struct Lister
{
    void operator()(const int &) { kinds << Kind::Number; }
    void operator()(const QString &) { kinds << Kind::Text; }
    void operator()(const Quantity &) { kinds << Kind::Amount; }
    QList<Kind> kinds;
};

struct Reader
{
    void operator()(int &number) { number = fields.takeFirst().toInt(); }
    void operator()(QString &text) { text = fields.takeFirst(); }
    void operator()(Quantity &amount) { amount = host::QuantityFromText(fields.takeFirst()); }
    QStringList fields;
};

bool Fits(const QString &field, Kind kind)
{
    static const QRegularExpression amount(u"^-?[0-9]{1,18}([.][0-9]{1,9})?$"_s);
    bool ok = kind == Kind::Text;
    if (kind == Kind::Number)
        field.toInt(&ok);
    return ok || (kind == Kind::Amount && amount.match(field).hasMatch());
}

/// The parts of a text joined again to fields of these kinds, texts as short as the fields behind them allow.
bool Join(const QStringList &parts, const QList<Kind> &kinds, QStringList &fields)
{
    const qsizetype at = fields.size();
    if (at == kinds.size())
        return parts.isEmpty();
    const qsizetype most = kinds[at] == Kind::Text ? parts.size() - (kinds.size() - at - 1) : 1;
    for (qsizetype taken = 1; taken <= qMin(most, parts.size()); ++taken) {
        fields << parts.first(taken).join(u';');
        if (Fits(fields.last(), kinds[at]) && Join(parts.sliced(taken), kinds, fields))
            return true;
        fields.resize(at);
    }
    return false;
}

template <typename Opening> QString PackAll(Opening opening)
{
    Writer writer;
    Visit(writer, opening);
    return writer.fields.join(u';');
}

template <typename Opening> std::optional<Opening> Parse(const QString &text)
{
    Opening opening;
    Lister lister;
    Visit(lister, opening);
    Reader reader;
    if (!Join(text.split(u';'), lister.kinds, reader.fields))
        return std::nullopt;
    Visit(reader, opening);
    return opening;
}

} // namespace

QString Pack(const EnterOpening &opening)
{
    return PackAll(opening);
}

QString Pack(const EnterLineOpening &opening)
{
    return PackAll(opening);
}

QString Pack(const ExitOpening &opening)
{
    return PackAll(opening);
}

QString Pack(const SelectOpening &opening)
{
    return PackAll(opening);
}

QString Pack(const DivisionItemsOpening &opening)
{
    return PackAll(opening);
}

QString Pack(const ChosenDetail &chosen)
{
    return PackAll(chosen) + u';';
}

std::optional<EnterOpening> ParseEnter(const QString &text)
{
    return Parse<EnterOpening>(text);
}

std::optional<EnterLineOpening> ParseEnterLine(const QString &text)
{
    return Parse<EnterLineOpening>(text);
}

std::optional<ExitOpening> ParseExit(const QString &text)
{
    return Parse<ExitOpening>(text);
}

std::optional<SelectOpening> ParseSelect(const QString &text)
{
    return Parse<SelectOpening>(text);
}

std::optional<DivisionItemsOpening> ParseDivisionItems(const QString &text)
{
    return Parse<DivisionItemsOpening>(text);
}

std::optional<ChosenDetail> ParseChosen(const QString &text)
{
    return text.endsWith(u';') ? Parse<ChosenDetail>(text.chopped(1)) : std::nullopt;
}

} // namespace good_detail
