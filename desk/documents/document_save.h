#pragma once

#include "desk/documents/document_records.h"
#include "host/host.h"

namespace desk {

/// One transaction each; both throw host::DatabaseError and DocumentRefused, having written nothing.
void SaveDocument(host::Host &host, const Document &document);
void DeleteDocument(host::Host &host, const Document &document);

} // namespace desk
