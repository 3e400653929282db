#pragma once

namespace desk {

class TourScript;

/// The list of detail types, its editor in each kind, a new type, and the categories.
void DetailTypeSteps(TourScript &script);

} // namespace desk
