#include "desk/settings/save_screen.h"

#include "desk/messages/catalogue.h"

#include <QtWidgets/QPushButton>

namespace desk {

TSaveScreen_FRM::TSaveScreen_FRM(host::Host &host, host::TSoftwarePart part)
    : TBaseDock_FRM(host, part, host::TFormMode::Edit, host.mainWindow)
{
    save_ = AddFooterButton(u"Save_BTN"_qs, u"ذخيره F3"_qs);
    Bind(save_, Qt::Key_F3, [this] { Save(); });
    Bind(AddFooterButton(u"EXit_BTN"_qs, u"خروج Esc"_qs), {}, [this] { reject(); });
    SetIsSaved(true);
}

void TSaveScreen_FRM::SetIsSaved(bool saved)
{
    saved_ = saved;
    save_->setEnabled(!saved);
}

void TSaveScreen_FRM::Save()
{
    if (!Write())
        return;
    SetIsSaved(true);
    m_host.messages.MSGCompeletedSuccessfully(u"ذخیره‌سازی "_qs + Title());
}

bool TSaveScreen_FRM::MayDiscard()
{
    return saved_ || m_host.messages.Ask(MessageText(message::DiscardChanges), false);
}

void TSaveScreen_FRM::reject()
{
    if (!MayDiscard())
        return;
    SetIsSaved(true);
    TBaseDock_FRM::reject();
}

} // namespace desk
