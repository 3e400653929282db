#pragma once

namespace desk {

class TourScript;

/// Details come in and go out of goods of each kind of units: by area, packed, with two units and with one. The shop is
/// switched meanwhile.
void UnitTypeSteps(TourScript &script);

} // namespace desk
