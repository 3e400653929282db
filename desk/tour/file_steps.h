#pragma once

namespace desk {

class TourScript;

/// Goods come in from copied rows, some of them with faults, and are taken back; the list goes out to a file.
void FileSteps(TourScript &script);

} // namespace desk
