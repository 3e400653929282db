#include "desk/settings/rights.h"

#include "desk/settings/check_delegate.h"
#include "host/data/query.h"
#include "ui_rights.h"

#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QInputDialog>
#include <QtWidgets/QLineEdit>

#include <functional>

namespace desk {

namespace {

using Rights = QList<std::pair<host::TSoftwarePart, host::TPermission>>;

constexpr int RowHeight = 34;

/// Asks for a name and stays open until it can be used.
class NameDialog : public QInputDialog
{
public:
    NameDialog(QWidget *parent, std::function<bool(const QString &)> usable)
        : QInputDialog(parent), usable_(std::move(usable))
    {
        setObjectName(u"UserName_DLG"_qs);
        setLabelText(u"نام کاربر :"_qs);
        setOkButtonText(u"تأیید"_qs);
        setCancelButtonText(u"انصراف"_qs);
    }
    QString Name() const { return textValue().simplified(); }
    void done(int result) override
    {
        if (result != Accepted || usable_(Name()))
            QInputDialog::done(result);
    }

private:
    std::function<bool(const QString &)> usable_;
};

} // namespace

TRights_FRM::TRights_FRM(host::Host &host, Permissions &permissions)
    : TSaveScreen_FRM(host, host::TSoftwarePart::Goods), permissions_(permissions), users_(host.DM.ADOConnection1),
      ui_(std::make_unique<Ui::Rights>())
{
    setObjectName(u"TRights_FRM"_qs);
    ui_->setupUi(Content());
    SetTitle(u"دسترسی کاربران"_qs);
    BuildGrid();
    connect(ui_->User_CMB, &QComboBox::currentIndexChanged, this,
            [this](int index) { Command(Title(), [this, index] { ChooseUser(index); }); });
    connect(ui_->Rights_GRD, &QTableWidget::itemChanged, this, [this] {
        if (!loading_)
            SetIsSaved(false);
    });
    Bind(ui_->NewUser_BTN, Qt::Key_F4, [this] { AddUser(); });
    Bind(ui_->RenameUser_BTN, Qt::Key_F2, [this] { RenameUser(); });
    connect(ui_->All_BTN, &QPushButton::clicked, this, [this] { SetAll(true); });
    connect(ui_->None_BTN, &QPushButton::clicked, this, [this] { SetAll(false); });
}

TRights_FRM::~TRights_FRM() = default;

void TRights_FRM::BuildGrid()
{
    QTableWidget *grid = ui_->Rights_GRD;
    QStringList rows;
    QStringList columns;
    for (const NamedPart &part : AllParts())
        rows << part.name;
    for (const NamedPermission &permission : AllPermissions())
        columns << permission.name;
    grid->setRowCount(static_cast<int>(rows.size()));
    grid->setColumnCount(static_cast<int>(columns.size()));
    grid->setVerticalHeaderLabels(rows);
    grid->setHorizontalHeaderLabels(columns);
    grid->setItemDelegate(new CheckDelegate(grid));
    grid->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    grid->horizontalHeader()->setHighlightSections(false);
    grid->verticalHeader()->setHighlightSections(false);
    grid->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    grid->verticalHeader()->setDefaultSectionSize(RowHeight);
    for (int row = 0; row < grid->rowCount(); ++row) {
        for (int column = 0; column < grid->columnCount(); ++column) {
            auto *item = new QTableWidgetItem;
            const bool means = AllParts().at(row).permissions.contains(AllPermissions().at(column).permission);
            item->setFlags(means ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable
                                 : Qt::NoItemFlags);
            if (means)
                item->setCheckState(Qt::Unchecked);
            grid->setItem(row, column, item);
        }
    }
}

void TRights_FRM::FormShow()
{
    TSaveScreen_FRM::FormShow();
    ListUsers(m_host.settings.UserInfo().Code);
    LoadRights();
    ui_->Rights_GRD->setCurrentCell(0, 0);
    ui_->Rights_GRD->setFocus();
}

void TRights_FRM::ListUsers(int standOn)
{
    const QSignalBlocker quiet(ui_->User_CMB);
    ui_->User_CMB->clear();
    for (const host::Entity &user : users_.All())
        ui_->User_CMB->addItem(u"%1 (%2)"_qs.arg(user.Name).arg(user.Code), user.Code);
    ui_->User_CMB->setCurrentIndex(std::max(0, ui_->User_CMB->findData(standOn)));
    shownUser_ = ui_->User_CMB->currentIndex();
}

std::optional<QString> TRights_FRM::AskName(const QString &title, const QString &name, int code)
{
    NameDialog dialog(this, [&](const QString &typed) {
        bool usable = false;
        Command(title, [&] {
            if (typed.isEmpty())
                m_host.messages.MsgRequiredField(u"نام کاربر"_qs);
            else if (users_.NameTaken(typed, code))
                m_host.messages.MsgRepeatedField(u"نام کاربر"_qs, u"کاربر"_qs);
            else
                usable = true;
        });
        return usable;
    });
    dialog.setWindowTitle(title);
    dialog.setTextValue(name);
    dialog.resize(360, dialog.sizeHint().height());
    dialog.findChild<QLineEdit *>()->setMaxLength(Users::NameLength);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    return dialog.Name();
}

void TRights_FRM::AddUser()
{
    if (!MayDiscard())
        return;
    if (const auto name = AskName(u"کاربر جدید"_qs, {}, 0)) {
        ListUsers(users_.Add(*name));
        LoadRights();
        ui_->Rights_GRD->setFocus();
    }
}

void TRights_FRM::RenameUser()
{
    const int user = User();
    const QString caption = ui_->User_CMB->currentText();
    const auto name = AskName(u"تغییر نام کاربر"_qs, caption.left(caption.lastIndexOf(u" ("_qs)), user);
    if (!name)
        return;
    users_.Rename(user, *name);
    ListUsers(user);
}

int TRights_FRM::User() const
{
    return ui_->User_CMB->itemData(shownUser_).toInt();
}

void TRights_FRM::ChooseUser(int index)
{
    if (index == shownUser_)
        return;
    if (!MayDiscard()) {
        const QSignalBlocker quiet(ui_->User_CMB);
        ui_->User_CMB->setCurrentIndex(shownUser_);
        return;
    }
    shownUser_ = index;
    LoadRights();
}

void TRights_FRM::LoadRights()
{
    const QScopedValueRollback loading(loading_, true);
    QSet<std::pair<int, int>> granted;
    for (host::Query rights(m_host.DM.ADOConnection1,
                            u"SELECT SoftwarePart, Permission FROM UserRights WHERE UserCode = %1"_qs.arg(User()));
         !rights.Eof(); rights.Next())
        granted << std::pair(rights.Int(u"SoftwarePart"), rights.Int(u"Permission"));
    for (int row = 0; row < ui_->Rights_GRD->rowCount(); ++row) {
        for (int column = 0; column < ui_->Rights_GRD->columnCount(); ++column) {
            QTableWidgetItem *item = ui_->Rights_GRD->item(row, column);
            if (item->flags().testFlag(Qt::ItemIsUserCheckable))
                item->setCheckState(granted.contains({static_cast<int>(AllParts().at(row).part),
                                                      static_cast<int>(AllPermissions().at(column).permission)})
                                        ? Qt::Checked
                                        : Qt::Unchecked);
        }
    }
    SetIsSaved(true);
}

void TRights_FRM::SetAll(bool granted)
{
    for (int row = 0; row < ui_->Rights_GRD->rowCount(); ++row) {
        for (int column = 0; column < ui_->Rights_GRD->columnCount(); ++column) {
            QTableWidgetItem *item = ui_->Rights_GRD->item(row, column);
            if (item->flags().testFlag(Qt::ItemIsUserCheckable))
                item->setCheckState(granted ? Qt::Checked : Qt::Unchecked);
        }
    }
}

bool TRights_FRM::Write()
{
    Rights rights;
    for (int row = 0; row < ui_->Rights_GRD->rowCount(); ++row) {
        for (int column = 0; column < ui_->Rights_GRD->columnCount(); ++column) {
            if (ui_->Rights_GRD->item(row, column)->checkState() == Qt::Checked)
                rights << std::pair(AllParts().at(row).part, AllPermissions().at(column).permission);
        }
    }
    permissions_.Replace(User(), rights);
    return true;
}

} // namespace desk
