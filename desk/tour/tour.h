#pragma once

#include <QString>

class QApplication;

namespace desk {

struct DeskHost;
class MainWindow;

/// Works through the main job by itself with real key presses (the goods list, searching, adding a good, correcting
/// it, deleting it, choosing one and several) and leaves a picture of each screen in `folder`.
/// The exit code: 0 when every step came out as it should.
int RunTour(QApplication &application, MainWindow &window, DeskHost &desk, const QString &folder);

} // namespace desk
