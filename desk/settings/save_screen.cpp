#include "desk/settings/save_screen.h"

#include "desk/messages/catalogue.h"

#include <QPushButton>

using namespace Qt::StringLiterals;

namespace desk {

TSaveScreen_FRM::TSaveScreen_FRM(host::Host &host, host::TSoftwarePart part)
    : TBaseDock_FRM(host, part, host::TFormMode::Edit, host.mainWindow)
{
    m_save = AddFooterButton(u"Save_BTN"_s, u"ذخيره F3"_s);
    Bind(m_save, Qt::Key_F3, [this] { Save(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
    SetIsSaved(true);
}

void TSaveScreen_FRM::SetIsSaved(bool saved)
{
    m_saved = saved;
    m_save->setEnabled(!saved);
}

void TSaveScreen_FRM::Save()
{
    if (!Write())
        return;
    SetIsSaved(true);
    m_host.messages.MSGCompeletedSuccessfully(u"ذخیره‌سازی "_s + Title());
}

bool TSaveScreen_FRM::MayDiscard()
{
    return m_saved || m_host.messages.Ask(MessageText(message::DiscardChanges), false);
}

void TSaveScreen_FRM::reject()
{
    if (!MayDiscard())
        return;
    SetIsSaved(true);
    TBaseDock_FRM::reject();
}

} // namespace desk
