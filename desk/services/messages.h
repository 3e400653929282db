#pragma once

#include "host/services/message_service.h"

#include <QPointer>
#include <QWidget>

namespace desk {

/// Messages over the window that is active: boxes with Persian buttons, balloons, texts that flash. Every text comes
/// out of the catalogue.
class Messages : public host::MessageService
{
public:
    /// Where texts flash, and what boxes stand over when no other window of the desk is active.
    void SetMainWindow(QWidget *window) { m_window = window; }

    void MsgRequiredField(const QString &caption) override;
    void MsgRepeatedField(const QString &field, const QString &entity) override;
    void MsgRepeatedCode(const QString &caption) override;
    void NotZeroValue(const QString &caption) override;
    void MsgPercent(const QString &caption) override;
    void NotSaveable(const QString &parent, const QString &child) override;
    void MsgHasSubRecordsAnother(const QString &what, const QString &where) override;
    bool MsgDeleteRow() override;
    bool MsgDeleteItem(const QString &what) override;
    bool ContinueWithRepeatedField(const QString &caption) override;
    /// Flashes: whoever saved goes on typing at once.
    void MSGCompeletedSuccessfully(const QString &what) override;

    void ShowSmartMessage(int number, const QStringList &parameters, int milliseconds, QWidget *anchor) override;
    bool Confirm(int number, const QStringList &parameters) override;
    QString TextOf(int number, const QStringList &parameters) override;
    void ShowFlashMessage(const QString &text, int milliseconds) override;
    void ShowMessage(const QString &text, host::MessageIcon icon, const QString &caption) override;
    bool Ask(const QString &text, bool defaultYes) override;

private:
    QWidget *Owner() const;
    void Warn(int number, const QStringList &parameters = {});

    QPointer<QWidget> m_window;
};

} // namespace desk
