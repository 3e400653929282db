#pragma once

#include <QString>

namespace tsql {

/** What a batch says to people. */
struct Message
{
    QString text;
    size_t resultsBefore = 0; ///< result sets of the batch that came before it
};

} // namespace tsql
