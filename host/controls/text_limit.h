#pragma once

#include "host/host_export.h"

class QPlainTextEdit;

namespace host {

/// Keeps the text of an edit to `length` UTF-16 units, as columns count them: what is typed or pasted beyond goes, at
/// the end of what came in, and never half of a character.
HOST_EXPORT void LimitLength(QPlainTextEdit &edit, int length);

} // namespace host
