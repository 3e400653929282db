#pragma once

#include <QString>

class QAccessibleInterface;
class QObject;

namespace host {

/// A factory for QAccessible::installFactory: shows a ToggleSwitch to screen readers as the check box that it is, null
/// for every other class. The toolkit owns the interface.
QAccessibleInterface *SwitchInterfaceFor(const QString &className, QObject *object);

} // namespace host
