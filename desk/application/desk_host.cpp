#include "desk/application/desk_host.h"

#include <QMainWindow>

namespace desk {

DeskHost::DeskHost(const host::Connections &connections, host::MessageService *speaker)
    : said(speaker ? *speaker : messages), settings(connections.ADOConnection1),
      permissions(connections.ADOConnection1, said), stock(connections.ADOConnection1, said, settings),
      entities(connections.ADOConnection1, said, settings, stock), vouchers(connections.ADOConnection1, said),
      detailDesk(connections.ADOConnection1), detailValues(connections.ADOConnection1, settings),
      detailMovements(detailDesk, detailValues), goodDetails(connections.ADOConnection1, said, detailMovements),
      serialBatches(detailDesk, detailMovements), detailDivisions(detailDesk, detailMovements),
      photos(connections.ADOConnection1), categories(connections.ADOConnection1), levels(connections.ADOConnection1),
      selectedLists(connections.ADOConnection1), scales(connections.DibalConnection),
      finance(connections.ADOConnection1), numbers(connections.ADOConnection1), host{.DM = connections,
                                                                                     .permissions = permissions,
                                                                                     .messages = said,
                                                                                     .settings = settings,
                                                                                     .entities = entities,
                                                                                     .vouchers = vouchers,
                                                                                     .stock = stock,
                                                                                     .goodDetails = goodDetails,
                                                                                     .detailValues = detailValues,
                                                                                     .detailMovements = detailMovements,
                                                                                     .serialBatches = serialBatches,
                                                                                     .detailDivisions = detailDivisions,
                                                                                     .photos = photos,
                                                                                     .categories = categories,
                                                                                     .levels = levels,
                                                                                     .selectedLists = selectedLists,
                                                                                     .scales = scales,
                                                                                     .keyboard = keyboard,
                                                                                     .clock = clock,
                                                                                     .barcodes = barcodes,
                                                                                     .finance = finance,
                                                                                     .theme = theme,
                                                                                     .numbers = numbers,
                                                                                     .help = help}
{
    entities.SetHost(host);
    photos.SetHost(host);
    categories.SetHost(host);
    levels.SetHost(host);
    selectedLists.SetHost(host);
}

void DeskHost::SetMainWindow(QMainWindow *window)
{
    messages.SetMainWindow(window);
    host.mainWindow = window;
}

} // namespace desk
