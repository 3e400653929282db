#pragma once

#include "desk/application/desk_host.h"
#include "tests/support/database.h"
#include "tests/support/fake_messages.h"

namespace test {

inline host::Connections ConnectionsOf(const Database &database)
{
    return {database.Main(), database.GoodsList(), database.Scales()};
}

/// The desk's own services on the demo data, with the first user signed in.
struct Desk
{
    Desk() : desk(ConnectionsOf(database)) { desk.settings.SignIn(1); }

    Database database{Database::Content::Demo};
    desk::DeskHost desk;
};

/// The same with messages that are recorded instead of shown.
struct QuietDesk
{
    QuietDesk() : desk(ConnectionsOf(database), &messages) { desk.settings.SignIn(1); }

    Database database{Database::Content::Demo};
    FakeMessages messages;
    desk::DeskHost desk;
};

/// The desk's entities with messages that are recorded instead of shown.
struct QuietEntities
{
    Database database{Database::Content::Demo};
    FakeMessages messages;
    desk::Settings settings{database.Main()};
    desk::Stock stock{database.Main(), messages, settings};
    desk::Entities entities{database.Main(), messages, settings, stock};
};

} // namespace test
