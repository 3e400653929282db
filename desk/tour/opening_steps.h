#pragma once

namespace desk {

class TourScript;

/// The opening stock of a good in several stores; the goods list is open before and after. Nothing is saved.
void OpeningRowSteps(TourScript &script);
/// The list of all opening stock.
void OpeningListSteps(TourScript &script);

} // namespace desk
