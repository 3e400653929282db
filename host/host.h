#pragma once

#include "host/host_export.h"
#include "host/services/barcode_service.h"
#include "host/services/category_service.h"
#include "host/services/clock_service.h"
#include "host/services/detail_division_service.h"
#include "host/services/detail_movement_service.h"
#include "host/services/detail_value_service.h"
#include "host/services/entity_service.h"
#include "host/services/finance_service.h"
#include "host/services/good_detail_service.h"
#include "host/services/help_service.h"
#include "host/services/keyboard_service.h"
#include "host/services/level_service.h"
#include "host/services/message_service.h"
#include "host/services/number_service.h"
#include "host/services/permission_service.h"
#include "host/services/photo_gallery_service.h"
#include "host/services/scale_service.h"
#include "host/services/selected_list_service.h"
#include "host/services/serial_batch_service.h"
#include "host/services/settings_service.h"
#include "host/services/stock_service.h"
#include "host/services/theme_service.h"
#include "host/services/voucher_service.h"

#include <QSqlDatabase>

class QMainWindow;
class QWidget;

namespace host {

/// The host's open connections. All may lead to one database; each carries one open result at a time, which is why the
/// goods list, that keeps its result open while it scrolls, has one of its own.
struct Connections
{
    QSqlDatabase ADOConnection1;  ///< the main database
    QSqlDatabase FDConnection1;   ///< the goods list
    QSqlDatabase DibalConnection; ///< the weighing scales
};

/// Everything that a host supplies to its modules: plain references, so that a test replaces one service and keeps the
/// rest. The host owns all of it and keeps it alive as long as the module is loaded.
struct Host
{
    Connections DM;
    PermissionService &permissions;
    MessageService &messages;
    SettingsService &settings;
    EntityService &entities;
    VoucherService &vouchers;
    StockService &stock;
    GoodDetailService &goodDetails;
    DetailValueService &detailValues;
    DetailMovementService &detailMovements;
    SerialBatchService &serialBatches;
    DetailDivisionService &detailDivisions;
    PhotoGalleryService &photos;
    CategoryService &categories;
    LevelService &levels;
    SelectedListService &selectedLists;
    ScaleService &scales;
    KeyboardService &keyboard;
    ClockService &clock;
    BarcodeService &barcodes;
    FinanceService &finance;
    ThemeService &theme;
    NumberService &numbers;
    HelpService &help;
    /// Where docked screens go and what modal screens are centred on; null in a host without a main window.
    QMainWindow *mainWindow = nullptr;
};

/// Makes `host` the one that modules of this process work with. A host calls it once, before the first export;
/// null is not possible, calling again replaces it (the screens already open keep theirs).
HOST_EXPORT void install(Host &host);

/// The installed host. Throws std::logic_error when none is installed. Only the exported functions ask: screens and
/// data modules are given what they need.
HOST_EXPORT Host &installed();

/// Whether the present user holds `permission` in `part`. When not, the permission service has told him and recorded
/// it.
HOST_EXPORT bool Granted(const Host &host, TSoftwarePart part, TPermission permission);

/// The same for the right that an editor opened in this mode needs: creating for a new record, changing otherwise.
HOST_EXPORT bool MayWrite(const Host &host, TSoftwarePart part, TFormMode mode);

} // namespace host
