#pragma once

#include "host/host_export.h"

#include <QString>

namespace host {

/// Where a chooser of files begins: the user's documents, or their home where there is no folder for documents.
HOST_EXPORT QString DocumentsFolder();

} // namespace host
