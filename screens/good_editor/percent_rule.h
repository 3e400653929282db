#pragma once

#include "host/controls/numeric_edit.h"
#include "host/screens/refusals.h"

namespace goods {

/// A percent above 100 becomes 100, and the user is told.
inline host::Refused LimitPercent(host::NumericEdit *edit)
{
    if (edit->Number() <= 100)
        return {};
    edit->SetNumber(100);
    return host::Required(edit, QString::fromUtf16(u"درصد کمتر از 100 "));
}

} // namespace goods
