#pragma once

namespace desk {

class TourScript;

/// Divides a sheet and a roll of the demo shop, which is switched to rolls that differ meanwhile.
void DivisionSteps(TourScript &script);

} // namespace desk
