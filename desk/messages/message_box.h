#pragma once

#include "host/services/message_service.h"

class QWidget;

namespace desk {

/// A modal box with one button, "تأیید"; Enter and Esc press it. `caption` empty gives the house's caption.
void ShowBox(QWidget *parent, const QString &text, host::MessageIcon icon, const QString &caption = {});

/// A modal question with "بله" and "خیر". Enter presses the default, Esc always answers No.
bool AskBox(QWidget *parent, const QString &text, bool defaultYes, const QString &caption = {});

} // namespace desk
