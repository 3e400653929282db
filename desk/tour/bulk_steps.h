#pragma once

namespace desk {

class TourScript;

/// Raises the prices of three goods by the preview and takes the change back. The goods list stands open.
void BulkSteps(TourScript &script);

} // namespace desk
