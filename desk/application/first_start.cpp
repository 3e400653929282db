#include "desk/application/first_start.h"

#include "desk/application/backup.h"
#include "desk/messages/message_box.h"
#include "host/data/database_error.h"
#include "host/look/icons.h"
#include "host/screens/documents_folder.h"
#include "ui_first_start.h"

#include <QDir>
#include <QFileDialog>

using namespace Qt::StringLiterals;

namespace desk {

QString ChooseBackup(QWidget *parent)
{
    QString file =
        QFileDialog::getOpenFileName(parent, u"نسخه‌ی پشتیبان"_s, host::DocumentsFolder(),
                                     u"پایگاه داده \u2066(*.db);;همه‌ی فایل‌ها (*)"_s);
    if (file.isEmpty())
        return {};
    try {
        CheckBackup(file);
        return file;
    } catch (const host::DatabaseError &error) {
        ShowBox(parent, error.Text(), host::MessageIcon::Warning);
        return {};
    }
}

std::optional<Beginning> AskForBeginning(const QString &file)
{
    QDialog dialog;
    Ui::FirstStart ui;
    ui.setupUi(&dialog);
    dialog.setObjectName(u"FirstStart_DLG"_s);
    ui.Empty_BTN->setIcon(host::Icon(host::Glyph::Stores));
    ui.Demo_BTN->setIcon(host::Icon(host::Glyph::Goods));
    ui.Backup_BTN->setIcon(host::Icon(host::Glyph::Documents));
    ui.Place_LBL->setProperty("soft", true);
    ui.Place_LBL->setText(
        u"پایگاه داده در این فایل خواهد بود:\n\u200F\u2066%1\u2069"_s.arg(QDir::toNativeSeparators(file)));
    Beginning beginning;
    QObject::connect(ui.Empty_BTN, &QAbstractButton::clicked, &dialog, &QDialog::accept);
    QObject::connect(ui.Demo_BTN, &QAbstractButton::clicked, &dialog, [&] {
        beginning.demo = true;
        dialog.accept();
    });
    QObject::connect(ui.Backup_BTN, &QAbstractButton::clicked, &dialog, [&] {
        beginning.backup = ChooseBackup(&dialog);
        if (!beginning.backup.isEmpty())
            dialog.accept();
    });
    QObject::connect(ui.Exit_BTN, &QAbstractButton::clicked, &dialog, &QDialog::reject);
    if (dialog.exec() != QDialog::Accepted)
        return std::nullopt;
    return beginning;
}

} // namespace desk
