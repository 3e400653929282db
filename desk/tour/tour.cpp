#include "desk/tour/tour.h"

#include "desk/tour/tour_player.h"
#include "desk/tour/tour_steps.h"
#include "desk/window/main_window.h"

#include <QtWidgets/QApplication>

#include <cstdio>

namespace desk {

int RunTour(QApplication &application, MainWindow &window, DeskHost &desk, const QString &folder)
{
    TourPlayer *player = nullptr;
    const auto fail = [&player](const QString &what) { player->Fail(what); };
    const auto picture = [&player](QWidget *widget, const QString &name) { player->Picture(widget, name); };
    TourPlayer tour(window, TourSteps(window, desk, picture, fail), folder);
    player = &tour;
    tour.Start();
    application.exec();
    if (tour.Trouble().isEmpty() && tour.Finished())
        return 0;
    std::fprintf(stderr, "tour: %s\n", tour.Finished() ? qUtf8Printable(tour.Trouble()) : "it was interrupted");
    return 1;
}

} // namespace desk
