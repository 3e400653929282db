#include "desk/settings/rights.h"

#include "desk/settings/check_delegate.h"
#include "host/data/query.h"
#include "ui_rights.h"

#include <QtCore/QScopedValueRollback>
#include <QtCore/QSignalBlocker>
#include <QtWidgets/QHeaderView>

namespace desk {

namespace {

using Rights = QList<std::pair<host::TSoftwarePart, host::TPermission>>;

constexpr int RowHeight = 34;

} // namespace

TRights_FRM::TRights_FRM(host::Host &host, Permissions &permissions)
    : TSaveScreen_FRM(host, host::TSoftwarePart::Goods), permissions_(permissions), ui_(std::make_unique<Ui::Rights>())
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
    const QSignalBlocker quiet(ui_->User_CMB);
    ui_->User_CMB->clear();
    for (host::Query users(m_host.DM.ADOConnection1, u"SELECT Code, Name FROM Users ORDER BY Code"_qs); !users.Eof();
         users.Next())
        ui_->User_CMB->addItem(u"%1 (%2)"_qs.arg(users.Text(u"Name")).arg(users.Int(u"Code")), users.Int(u"Code"));
    ui_->User_CMB->setCurrentIndex(std::max(0, ui_->User_CMB->findData(m_host.settings.UserInfo().Code)));
    shownUser_ = ui_->User_CMB->currentIndex();
    LoadRights();
    ui_->Rights_GRD->setCurrentCell(0, 0);
    ui_->Rights_GRD->setFocus();
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
