#pragma once

#include "desk/tour/tour_player.h"

namespace desk {

struct DeskHost;
class MainWindow;

using TakePicture = std::function<void(QWidget *, const QString &)>;
using ReportFault = std::function<void(const QString &)>;

/// What the tour does, in order. `window` and `desk` outlive the steps.
QList<TourStep> TourSteps(MainWindow &window, DeskHost &desk, const TakePicture &picture, const ReportFault &fail);

} // namespace desk
