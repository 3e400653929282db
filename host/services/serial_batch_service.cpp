#include "host/services/serial_batch_service.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {

namespace {

std::optional<qint64> Number(QStringView typed)
{
    bool ok = false;
    const qint64 number = SerialText(typed).toLongLong(&ok);
    return ok ? std::optional(number) : std::nullopt;
}

/// 0, 1, 2 … in column N: as many as `digits` digits count.
QString Counting(int digits)
{
    QStringList terms;
    QStringList tables;
    qint64 weight = 1;
    for (int i = 0; i < digits; ++i, weight *= 10) {
        terms << u"d%1.D * %2"_s.arg(i).arg(weight);
        tables
            << u"(SELECT 0 AS D UNION ALL SELECT 1 UNION ALL SELECT 2 UNION ALL SELECT 3 UNION ALL SELECT 4 UNION ALL "
               "SELECT 5 UNION ALL SELECT 6 UNION ALL SELECT 7 UNION ALL SELECT 8 UNION ALL SELECT 9) AS d%1"_s.arg(i);
    }
    return u"SELECT "_s + terms.join(u" + ") + u" AS N FROM "_s + tables.join(u" CROSS JOIN ");
}

} // namespace

QString TSerialBatchResult::Listed(std::initializer_list<TSerialFate> fates) const
{
    QStringList serials;
    for (const Left &each : left)
        if (std::find(fates.begin(), fates.end(), each.Fate) != fates.end())
            serials << each.Serial;
    return serials.join(u',');
}

std::optional<TSerialRange> SerialRange(QStringView from, QStringView to)
{
    const auto first = Number(from);
    const auto last = Number(to);
    if (!first || !last)
        return std::nullopt;
    return TSerialRange{*first, *last};
}

QString CountedText(const TSerialRange &range)
{
    // Numbers behind the last one may be more than 64 bits hold: they are not even added up.
    const QString last = QString::number(range.Distance());
    return u"SELECT n.N AS Place, CASE WHEN n.N <= %1 THEN CAST(%2 AS bigint) + n.N END AS N FROM (%3) AS n WHERE n.N <= %1"_s
        .arg(last, QString::number(range.From), Counting(static_cast<int>(last.size())));
}

} // namespace host
