#pragma once

#include "data/goods/good_bulk_records.h"
#include "host/controls/reading_pause.h"

#include <QProgressDialog>

namespace goods {
class BulkJournal;
class Scales;
} // namespace goods

namespace host {
struct Host;
}

namespace bulk_changes {

/// The window of a change of many goods that takes longer than half a second. Given up, nothing is written.
class ProgressWindow
{
public:
    ProgressWindow(const QString &title, QWidget *parent);

    /// Valid as long as the window lives.
    goods::BulkProgress Callback();

private:
    host::ReadingPause m_pause;
    QProgressDialog m_window;
};

/// Runs what follows a change that is stored. An error of the database is told after `failed`, which says what did not
/// work although the change stands: nobody is to repeat a change that was made. Answers whether it worked.
bool AfterWriting(const host::Host &host, const QString &failed, const std::function<void()> &body);
/// The prices of a change to the scales of shops that have some; nothing for change 0.
void SendToScales(const host::Host &host, goods::BulkJournal &changes, int change);
/// The price of one good on this level.
void SendToScales(const host::Host &host, goods::Scales &scales, int good, int level);

/// The user from whom groups may be withheld; 0 for a manager, who sees all goods.
int DeniedTo(const host::Host &host);

/// What is asked by the signed-in user now.
goods::BulkOrder Order(const host::Host &host, const QString &title, const goods::BulkProgress &progress);

// How the screens name things to the user.

/// "۳ کالا"
QString GoodsText(int goods);
/// As the menus of the list name it.
QString ScopeText(goods::ScopeKind kind);
QString KindText(goods::BulkKind kind);
/// Why the price of a good stays as it is; empty for one that changes.
QString FateText(goods::PriceFate fate);

} // namespace bulk_changes
