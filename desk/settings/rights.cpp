#include "desk/settings/rights.h"

#include "desk/messages/catalogue.h"
#include "desk/settings/check_delegate.h"
#include "host/data/query.h"
#include "ui_rights.h"

#include <QHeaderView>
#include <QInputDialog>
#include <QLineEdit>
#include <QScopeGuard>
#include <QSignalBlocker>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using Rights = QList<std::pair<host::TSoftwarePart, host::TPermission>>;

constexpr int RowHeight = 34;

constexpr int NameRole = Qt::UserRole + 1;

/// Asks for a name and stays open until it is taken.
class NameDialog : public QInputDialog
{
public:
    NameDialog(QWidget *parent, std::function<bool(const QString &)> take)
        : QInputDialog(parent), m_take(std::move(take))
    {
        setObjectName(u"UserName_DLG"_s);
        setLabelText(u"نام کاربر :"_s);
        setOkButtonText(u"تأیید"_s);
        setCancelButtonText(u"انصراف"_s);
    }
    void done(int result) override
    {
        if (result != Accepted || m_take(textValue().simplified()))
            QInputDialog::done(result);
    }

private:
    std::function<bool(const QString &)> m_take;
};

} // namespace

TRights_FRM::TRights_FRM(host::Host &host, Permissions &permissions)
    : TBaseSave_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::Edit, host.mainWindow),
      m_permissions(permissions), m_users(host.DM.ADOConnection1), m_ui(std::make_unique<Ui::Rights>())
{
    setObjectName(u"TRights_FRM"_s);
    m_ui->setupUi(Content());
    m_ui->Rights_GRD->setCornerButtonEnabled(false);
    SetTitle(u"دسترسی کاربران"_s);
    SetDiscardQuestion(MessageText(message::DiscardChanges));
    BuildGrid();
    connect(m_ui->User_CMB, &QComboBox::currentIndexChanged, this,
            [this] { Command(Title(), [this] { ChooseUser(m_ui->User_CMB->currentData().toInt()); }); });
    connect(m_ui->Rights_GRD, &QTableWidget::itemChanged, this, [this] {
        if (!IsLoading())
            SetIsSaved(false);
    });
    Bind(m_ui->NewUser_BTN, Qt::Key_F4, [this] { AddUser(); });
    Bind(m_ui->RenameUser_BTN, Qt::Key_F2, [this] { RenameUser(); });
    connect(m_ui->All_BTN, &QPushButton::clicked, this, [this] { SetAll(true); });
    connect(m_ui->None_BTN, &QPushButton::clicked, this, [this] { SetAll(false); });
}

TRights_FRM::~TRights_FRM() = default;

void TRights_FRM::BuildGrid()
{
    QTableWidget *grid = m_ui->Rights_GRD;
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
    grid->setTabKeyNavigation(false); // the arrows go from cell to cell, Tab on to the buttons
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
    TBaseSave_FRM::FormShow();
    ListUsers();
    ShowUser(m_host.settings.UserInfo().Code);
    m_ui->Rights_GRD->setCurrentCell(0, 0);
    m_ui->Rights_GRD->setFocus();
}

void TRights_FRM::ListUsers()
{
    const QList<host::Entity> users = m_users.All();
    const QSignalBlocker quiet(m_ui->User_CMB);
    m_ui->User_CMB->clear();
    for (const host::Entity &user : users) {
        m_ui->User_CMB->addItem(UserCaption(user), user.Code);
        m_ui->User_CMB->setItemData(m_ui->User_CMB->count() - 1, user.Name, NameRole);
    }
    StandOnUser();
}

bool TRights_FRM::AskName(const QString &title, const QString &name, int code,
                          const std::function<void(const QString &)> &write)
{
    // The name is written while the dialog still stands: what could not be written stays typed.
    NameDialog dialog(this, [&](const QString &typed) {
        bool written = false;
        Command(title, [&] {
            if (Refuse(CheckName(typed, code)))
                return;
            write(typed);
            written = true;
        });
        return written;
    });
    dialog.setWindowTitle(title);
    dialog.setTextValue(name);
    dialog.resize(360, dialog.sizeHint().height());
    dialog.findChild<QLineEdit *>()->setMaxLength(Users::NameLength);
    return dialog.exec() == QDialog::Accepted;
}

host::Refused TRights_FRM::CheckName(const QString &typed, int code) const
{
    const QString caption = u"نام کاربر"_s;
    if (typed.isEmpty())
        return host::Required(nullptr, caption);
    return host::When(m_users.NameTaken(typed, code), host::Repeated(nullptr, caption, u"کاربر"_s));
}

void TRights_FRM::AddUser()
{
    if (!MayDiscard())
        return;
    int added = 0;
    if (!AskName(u"کاربر جدید"_s, {}, 0, [&](const QString &name) { added = m_users.Add(name); }))
        return;
    ListUsers();
    ShowUser(added);
    m_ui->Rights_GRD->setFocus();
}

void TRights_FRM::RenameUser()
{
    const QString name = m_ui->User_CMB->currentData(NameRole).toString();
    if (AskName(u"تغییر نام کاربر"_s, name, m_user, [&](const QString &typed) { m_users.Rename(m_user, typed); }))
        ListUsers();
}

void TRights_FRM::ChooseUser(int user)
{
    // Whether they were kept or could not be read: the name above stays that of the rights below.
    const auto agree = qScopeGuard([this] { StandOnUser(); });
    if (user != m_user && MayDiscard())
        ShowUser(user);
}

void TRights_FRM::StandOnUser()
{
    const QSignalBlocker quiet(m_ui->User_CMB);
    m_ui->User_CMB->setCurrentIndex(m_ui->User_CMB->findData(m_user));
}

void TRights_FRM::ShowUser(int user)
{
    QSet<std::pair<int, int>> granted;
    for (host::Query rights(m_host.DM.ADOConnection1,
                            u"SELECT SoftwarePart, Permission FROM UserRights WHERE UserCode = %1"_s.arg(user));
         !rights.Eof(); rights.Next())
        granted << std::pair(rights.Int(u"SoftwarePart"), rights.Int(u"Permission"));
    m_user = user;
    StandOnUser();
    const Loading quiet(*this);
    for (int row = 0; row < m_ui->Rights_GRD->rowCount(); ++row) {
        for (int column = 0; column < m_ui->Rights_GRD->columnCount(); ++column) {
            QTableWidgetItem *item = m_ui->Rights_GRD->item(row, column);
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
    for (int row = 0; row < m_ui->Rights_GRD->rowCount(); ++row) {
        for (int column = 0; column < m_ui->Rights_GRD->columnCount(); ++column) {
            QTableWidgetItem *item = m_ui->Rights_GRD->item(row, column);
            if (item->flags().testFlag(Qt::ItemIsUserCheckable))
                item->setCheckState(granted ? Qt::Checked : Qt::Unchecked);
        }
    }
}

void TRights_FRM::Write()
{
    Rights rights;
    for (int row = 0; row < m_ui->Rights_GRD->rowCount(); ++row) {
        for (int column = 0; column < m_ui->Rights_GRD->columnCount(); ++column) {
            if (m_ui->Rights_GRD->item(row, column)->checkState() == Qt::Checked)
                rights << std::pair(AllParts().at(row).part, AllPermissions().at(column).permission);
        }
    }
    m_permissions.Replace(m_user, rights);
}

} // namespace desk
