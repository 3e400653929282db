#include "desk/application/desk_host.h"

#include <QMainWindow>

namespace desk {

DeskHost::DeskHost(const host::Connections &connections)
    : settings(connections.ADOConnection1), permissions(connections.ADOConnection1, messages),
      stock(connections.ADOConnection1, messages, settings),
      entities(connections.ADOConnection1, messages, settings, stock), vouchers(connections.ADOConnection1, messages),
      goodDetails(connections.ADOConnection1, messages), photos(connections.ADOConnection1),
      categories(connections.ADOConnection1), scales(connections.DibalConnection), finance(connections.ADOConnection1),
      numbers(connections.ADOConnection1), host{connections, permissions, messages, settings,   entities, vouchers,
                                                stock,       goodDetails, photos,   categories, scales,   keyboard,
                                                clock,       barcodes,    finance,  theme,      numbers}
{
    entities.SetHost(host);
    photos.SetHost(host);
}

void DeskHost::SetMainWindow(QMainWindow *window)
{
    messages.SetMainWindow(window);
    host.mainWindow = window;
}

} // namespace desk
