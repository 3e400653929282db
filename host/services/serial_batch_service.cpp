#include "host/services/serial_batch_service.h"

#include <algorithm>

namespace host {

namespace {

std::optional<qint64> Number(QStringView typed)
{
    bool ok = false;
    const qint64 number = SerialText(typed).toLongLong(&ok);
    return ok ? std::optional(number) : std::nullopt;
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

} // namespace host
