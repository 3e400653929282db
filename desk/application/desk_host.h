#pragma once

#include "desk/application/connections.h"
#include "desk/help/help.h"
#include "desk/services/categories.h"
#include "desk/services/detail_divisions.h"
#include "desk/services/detail_movements.h"
#include "desk/services/detail_values.h"
#include "desk/services/entities.h"
#include "desk/services/good_details.h"
#include "desk/services/levels.h"
#include "desk/services/messages.h"
#include "desk/services/permissions.h"
#include "desk/services/photos.h"
#include "desk/services/selected_list_store.h"
#include "desk/services/serial_batches.h"
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
    /// `speaker` talks to the user instead of the desk's own boxes; where nobody sits there, those would wait for ever.
    explicit DeskHost(const host::Connections &connections, host::MessageService *speaker = nullptr);
    DeskHost(const DeskHost &) = delete;
    DeskHost &operator=(const DeskHost &) = delete;

    /// The window that docked screens go to and that messages stand over.
    void SetMainWindow(QMainWindow *window);

    Messages messages;
    host::MessageService &said; ///< who talks to the user: `messages`, unless told otherwise
    Settings settings;
    Permissions permissions;
    Stock stock;
    Entities entities;
    Vouchers vouchers;
    DetailDesk detailDesk;
    DetailValues detailValues;
    DetailMovements detailMovements;
    GoodDetails goodDetails;
    SerialBatches serialBatches;
    DetailDivisions detailDivisions;
    PhotoStore photos;
    CategoryTree categories;
    Levels levels;
    SelectedListStore selectedLists;
    Scales scales;
    Keyboard keyboard;
    Clock clock;
    Barcodes barcodes;
    Finance finance;
    Theme theme;
    Numbers numbers;
    Help help;
    host::Host host;
};

} // namespace desk
