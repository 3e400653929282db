#pragma once

namespace desk {

class TourScript;

/// Prints labels of some goods as far as the preview; the goods list is open before and after.
void LabelSteps(TourScript &script);

} // namespace desk
