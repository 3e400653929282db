#include "bench/round_trips.h"

#include "bench/shop.h"
#include "host/data/statement.h"
#include "screens/good_editor/good_get.h"
#include "screens/goods_list/good_list.h"

#include <QLineEdit>
#include <QScopeGuard>
#include <QTest>
#include <QTimer>

#include <cstdio>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace bench {

std::vector<RoundTrips> WatchRoundTrips(Shop &shop, int good)
{
    QStringList texts;
    host::WatchStatements([&texts](const QString &text) { texts << text; });
    const auto stop = qScopeGuard([] { host::WatchStatements({}); });
    std::vector<RoundTrips> trips;
    const auto take = [&](const char *what, int most) { trips.push_back({what, most, std::exchange(texts, {})}); };

    TGood_Get_FRM editor(shop.Host());
    bool saved = false;
    QTimer::singleShot(300, &editor, [&] {
        take("open a good", 30);
        editor.findChild<QLineEdit *>(u"MinAva_EDT"_s)->setText(u"7"_s);
        saved = editor.Save();
        if (!saved)
            editor.done(0);
    });
    editor.Open(good, host::TFormMode::Edit);
    take("save it and close", 15);
    if (!saved)
        throw std::runtime_error("the good could not be saved");

    TGood_List_FRM list(shop.Host(), host::TFormMode::DockedList);
    texts.clear();
    if (!list.ShowDocked())
        throw std::runtime_error("the goods list did not open");
    QTest::qWait(300);
    take("open the goods list", 10);
    list.done(0);
    return trips;
}

bool PrintRoundTrips(const std::vector<RoundTrips> &trips, bool all)
{
    bool within = true;
    std::printf("\n%-58s %11s %8s\n", "command, transactions aside", "statements", "limit");
    for (const RoundTrips &each : trips) {
        const auto sent = static_cast<int>(each.texts.size());
        within = within && sent <= each.most;
        std::printf("%-58s %11d %8d%s\n", each.what, sent, each.most, sent > each.most ? "  over" : "");
    }
    for (const RoundTrips &each : trips) {
        if (!all)
            break;
        std::printf("\n== %s\n", each.what);
        for (qsizetype i = 0; i < each.texts.size(); ++i)
            std::printf("%lld: %s\n", static_cast<long long>(i + 1), qPrintable(each.texts.at(i)));
    }
    return within;
}

} // namespace bench
