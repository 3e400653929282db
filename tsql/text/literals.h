#pragma once

#include "tsql/text/lexer.h"
#include "tsql/values/value.h"

namespace tsql {

/// The value of a literal in the storage form of its own type (literalType), with a minus in front if asked.
Value LiteralValue(const Literal &literal, bool negate = false);

} // namespace tsql
