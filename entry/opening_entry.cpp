#include "entry/opening_entry.h"

#include "gooddetail/enter_serial.h"

namespace entry {

DetailEntry OpeningDetailEntry(host::Host &host)
{
    return [&host](const DetailEntryRequest &request) -> std::optional<host::TAmounts> {
        const good_detail::DetailLineOpening opening{request.line,        request.goodName,  request.storeName,
                                                     request.unit1Name,   request.unit2Name, request.wanted,
                                                     host::TFormMode::New};
        const auto result = good_detail::OpenEnter(host, opening);
        if (!result)
            return std::nullopt;
        return result->Amounts;
    };
}

} // namespace entry
