#pragma once

namespace desk {

class TourScript;

/// Buys 50 serials as a range, sells three of them and takes one back; the list of documents and the road of the serial
/// that came back. Needs the module's screens for details. Ends on the page where it began.
void DocumentSteps(TourScript &script);

} // namespace desk
