#pragma once

class QString;

namespace host {

/// The guide that the host keeps for its users; F1 on every screen asks for it.
class HelpService
{
public:
    virtual ~HelpService() = default;

    /// Opens the page of a screen, named by its class without a namespace ("TGood_List_FRM"), over the window that is
    /// active, which may be modal; returns at once. A screen that has no page gets the table of contents, as an empty
    /// name does.
    virtual void Show(const QString &screen) = 0;
};

} // namespace host
