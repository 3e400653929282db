#pragma once

namespace desk {

class TourScript;

/// What stands around the goods on their list: movements, the tree of categories, titles of levels, scales. Nothing is
/// changed. The goods list is open.
void ListCommandSteps(TourScript &script);

} // namespace desk
