#pragma once

#include "desk/application/connections.h"
#include "desk/services/entities.h"
#include "desk/services/good_details.h"
#include "desk/services/messages.h"
#include "desk/services/permissions.h"
#include "desk/services/photos.h"
#include "desk/services/settings.h"
#include "desk/services/small_services.h"
#include "desk/services/stock.h"
#include "desk/services/vouchers.h"
#include "host/host.h"

namespace desk {

/// Every service of the desk over one set of connections, and the host made of them. Lives as long as the module and
/// the screens.
struct DeskHost
{
    /// The connections are open and stay so. Throws host::DatabaseError when the settings cannot be read.
    explicit DeskHost(const host::Connections &connections);
    DeskHost(const DeskHost &) = delete;
    DeskHost &operator=(const DeskHost &) = delete;

    /// The window that docked screens go to and that messages stand over.
    void SetMainWindow(QMainWindow *window);

    Messages messages;
    Settings settings;
    Permissions permissions;
    Stock stock;
    Entities entities;
    Vouchers vouchers;
    GoodDetails goodDetails;
    PhotoStore photos;
    CategoryTree categories;
    Scales scales;
    Keyboard keyboard;
    Clock clock;
    Barcodes barcodes;
    Finance finance;
    Theme theme;
    Numbers numbers;
    host::Host host;
};

} // namespace desk
