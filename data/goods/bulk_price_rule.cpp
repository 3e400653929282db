#include "data/goods/bulk_price_rule.h"

#include "host/data/sql_text.h"

#include <cmath>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr int Levels = 10;
/// Digits of a price before the point: decimal(28,9).
constexpr int PriceDigits = 19;

[[noreturn]] void Refuse(const QString &expected, host::Quantity value)
{
    throw host::RefusedText(expected, QString::number(static_cast<double>(value)));
}

void Check(const PriceInstruction &asked)
{
    const bool consumer = asked.kind == PriceKind::Consumer;
    if (!consumer && (asked.level < 1 || asked.level > Levels)) {
        Refuse(u"سطح قیمتی ۱ تا ۱۰"_s, asked.level);
    }
    if (asked.option < 1 || asked.option > 3) {
        Refuse(u"روش تغییر ۱ تا ۳"_s, asked.option);
    }
    if (asked.option == 1 && asked.value != 0 && asked.value != 1 && asked.value != 2 && asked.value != 3) {
        Refuse(u"قیمت مبنا ۰ تا ۳"_s, asked.value);
    }
    if (asked.option == 2 && !(asked.value >= 0 && asked.value < PercentLimit)) {
        Refuse(u"درصدی از صفر تا ۱۳ رقم"_s, asked.value);
    }
    if (asked.option == 3 && !(asked.value >= 0 && asked.value < AmountLimit)) {
        Refuse(u"مبلغی از صفر تا ۱۵ رقم"_s, asked.value);
    }
    if (asked.option != 1 && asked.direction != 1 && asked.direction != -1) {
        Refuse(u"اضافه یا کسر"_s, asked.direction);
    }
    if (asked.rounding != 0 && asked.rounding != 10 && asked.rounding != 100 && asked.rounding != 1000 &&
        asked.rounding != 10000) {
        Refuse(u"گرد کردن به ۱۰، ۱۰۰، ۱٬۰۰۰ یا ۱۰٬۰۰۰"_s, asked.rounding);
    }
}

QString Level(const QString &side, int number)
{
    return u"CostLevel_"_s + side + u'_' + QString::number(number);
}

/// The price on the good's default level of a side.
QString DefaultPrice(const QString &side)
{
    QString cases;
    for (int level = 1; level <= Levels; ++level) {
        cases += u" WHEN "_s + QString::number(level) + u" THEN c."_s + Level(side, level);
    }
    return u"CASE c.Default_CostLevel_"_s + side + u"_Number"_s + cases + u" END"_s;
}

/// The highest price of a side, of all its levels: each but the last where none behind it is higher.
QString HighestPrice(const QString &side)
{
    QString cases;
    for (int level = 1; level < Levels; ++level) {
        QStringList others;
        for (int behind = level + 1; behind <= Levels; ++behind) {
            others += u"c."_s + Level(side, level) + u" >= c."_s + Level(side, behind);
        }
        cases += u" WHEN "_s + others.join(u" AND "_s) + u" THEN c."_s + Level(side, level);
    }
    return u"CASE"_s + cases + u" ELSE c."_s + Level(side, Levels) + u" END"_s;
}

/// Option 1. A return is no price that was paid or asked, so only the two kinds of document count, in their direction.
void TakeOther(PriceRule &rule, int source)
{
    const bool sale = source == 1 || source == 3;
    const bool last = source < 2;
    const QString side = sale ? u"Sell"_s : u"Buy"_s;
    const QString documents = u" FROM Kardex WHERE OperationType = "_s +
                              (sale ? u"2 AND Amount1 < 0"_s : u"1 AND Amount1 > 0"_s) +
                              u" AND Cost > 0 AND Kala IN (SELECT Code FROM #BulkGoods)"_s;
    const QString moves = last ? u"SELECT k.Kala, k.Cost FROM (SELECT Kala, Cost, ROW_NUMBER() OVER (PARTITION BY Kala "
                                 "ORDER BY [Date] DESC, Code DESC) AS Place"_s +
                                     documents + u") AS k WHERE k.Place = 1"_s
                               : u"SELECT Kala, MAX(Cost)"_s + documents + u" GROUP BY Kala"_s;
    rule.sources = u"INSERT INTO #BulkMoves (Code, Price) "_s + moves +
                   u" INSERT INTO #BulkSource (Code, Price) SELECT c.GoodCode, "_s +
                   (last ? DefaultPrice(side) : HighestPrice(side)) +
                   u" FROM #BulkGoods s INNER JOIN GoodCostDiscount c ON c.GoodCode = s.Code UPDATE s SET s.Price = "
                   "m.Price FROM #BulkSource s INNER JOIN #BulkMoves m ON m.Code = s.Code"_s +
                   (last ? QString() : u" WHERE m.Price > s.Price"_s) +
                   u" INSERT INTO #BulkSource (Code, Price) SELECT m.Code, m.Price FROM #BulkMoves m WHERE NOT EXISTS "
                   "(SELECT 1 FROM #BulkSource s WHERE s.Code = m.Code) DELETE FROM #BulkSource WHERE Price = 0"_s;
    rule.noSource = u"Source IS NULL"_s;
    rule.belowZero = u"Source < 0"_s;
    rule.above = u"1 = 1"_s;
    // Room for the digit that rounding may add.
    rule.result = u"CAST(Source AS decimal(38,9))"_s;
}

/// Option 2. The old price times a factor: in decimals, which keep their digits only while the types have room, so a
/// price that the factor makes too large is not multiplied at all.
void TakePercent(PriceRule &rule, const PriceInstruction &asked)
{
    const host::Quantity factor = 1 + asked.direction * asked.value / 100;
    const QString text = host::QuantityToText(factor, host::QuantityDecimals + 2);
    const qsizetype digits = QString(text).remove(u'-').section(u'.', 0, 0).size();
    rule.belowZero = factor < 0 ? u"OldPrice > 0"_s : u"OldPrice < 0"_s;
    rule.above = factor > 0 ? u"1 = 1"_s : u"1 = 0"_s;
    if (digits == 1) {
        rule.result = u"OldPrice * "_s + text;
        return;
    }
    const qsizetype most = PriceDigits + 2 - digits;
    rule.result = u"CASE WHEN OldPrice < 1"_s + QString(most, u'0') + u" THEN CAST(OldPrice AS decimal("_s +
                  QString::number(most + host::QuantityDecimals) + u",9)) * "_s + text + u" END"_s;
}

void TakeAmount(PriceRule &rule, const PriceInstruction &asked)
{
    const QString amount = host::DecimalLiteral(asked.value);
    rule.belowZero = asked.direction < 0 ? u"OldPrice < "_s + amount : u"OldPrice < -"_s + amount;
    rule.above = asked.direction < 0 ? u"OldPrice > "_s + amount : u"1 = 1"_s;
    rule.result = u"CAST(OldPrice AS decimal(38,9)) "_s + (asked.direction < 0 ? u"- "_s : u"+ "_s) + amount;
}

} // namespace

PriceRule RuleOf(const PriceInstruction &asked)
{
    Check(asked);
    PriceRule rule;
    const bool consumer = asked.kind == PriceKind::Consumer;
    rule.ofPriceRow = consumer ? u"g"_s : u"c"_s;
    rule.column =
        consumer ? u"ConsumerPrice"_s : Level(asked.kind == PriceKind::Sale ? u"Sell"_s : u"Buy"_s, asked.level);
    rule.old = consumer ? u"g.ConsumerPrice"_s : u"ISNULL(c."_s + rule.column + u", 0)"_s;
    rule.noSource = u"OldPrice = 0"_s;
    switch (asked.option) {
    case 1:
        TakeOther(rule, static_cast<int>(asked.value));
        break;
    case 2:
        TakePercent(rule, asked);
        break;
    default:
        TakeAmount(rule, asked);
        break;
    }
    if (asked.rounding > 0) {
        // Half goes away from zero, as every rounding of decimals.
        const auto zeros = static_cast<int>(std::lround(std::log10(asked.rounding)));
        rule.result = u"ROUND("_s + rule.result + u", -"_s + QString::number(zeros) + u')';
    }
    rule.result = u"CAST("_s + rule.result + u" AS decimal(38,9))"_s;
    return rule;
}

} // namespace goods
