#pragma once

#include "host/services/help_service.h"

#include <QPointer>

namespace desk {

class GuideWindow;

/// One window of the guide, which moves to the screen that asks for it.
class Help : public host::HelpService
{
public:
    Help();
    ~Help() override;
    Help(const Help &) = delete;
    Help &operator=(const Help &) = delete;

    void Show(const QString &screen) override;

private:
    QPointer<GuideWindow> m_window;
};

} // namespace desk
