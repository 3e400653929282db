#include "desk/tour/tour.h"

#include "desk/tour/tour_player.h"
#include "desk/tour/tour_steps.h"
#include "desk/window/main_window.h"

#include <QApplication>
#include <QScopeGuard>

#include <cstdio>

namespace desk {

namespace {

QtMessageHandler former = nullptr;

// The offscreen platform says of every window what it cannot do with it; that is of no use to whoever reads along.
void WithoutPlatformNotes(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (!text.startsWith(u"This plugin does not support"))
        former(type, context, text);
}

} // namespace

int RunTour(QApplication &application, MainWindow &window, DeskHost &desk, const QString &folder)
{
    TourPlayer *player = nullptr;
    const auto fail = [&player](const QString &what) { player->Fail(what); };
    const auto picture = [&player](QWidget *widget, const QString &name) { player->Picture(widget, name); };
    TourPlayer tour(window, TourSteps(window, desk, picture, fail), folder);
    player = &tour;
    former = qInstallMessageHandler(WithoutPlatformNotes);
    const auto restore = qScopeGuard([] { qInstallMessageHandler(former); });
    tour.Start();
    application.exec();
    if (tour.Trouble().isEmpty() && tour.Finished())
        return 0;
    std::fprintf(stderr, "tour: %s\n", tour.Finished() ? qUtf8Printable(tour.Trouble()) : "it was interrupted");
    return 1;
}

} // namespace desk
