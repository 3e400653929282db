#include "detailtypes/detail_types_list.h"

#include "ui_detail_types_list.h"

#include <QHeaderView>
#include <QMenu>
#include <QTabBar>

using namespace Qt::StringLiterals;

using host::ColumnFormat;
using host::TFormMode;

// The frame of the list: grids, keys, menus and what both tabs share.

TDetailTypes_List_FRM::TDetailTypes_List_FRM(host::Host &host, TFormMode mode, const QString &openingText)
    : TBaseDock_FRM(host, host::TSoftwarePart::DetailTypes, mode), m_ui(std::make_unique<Ui::TDetailTypes_List_FRM>()),
      m_data(host.DM)
{
    m_ui->setupUi(Content());
    AdoptFooter(m_ui->CategoryCommands_PNL);
    AdoptFooter(m_ui->TypeCommands_PNL);
    SetParameterText(openingText);
    SetTitle(u"جزئیات کالاها"_s);
    resize(860, 640);
    BuildGrids();
    BindCommands();
    BindMenus();
    BindKeys();
    OrderTabs();
}

TDetailTypes_List_FRM::~TDetailTypes_List_FRM()
{
    for (host::Grid *grid : {m_ui->DetailTypes_List_GRD, m_ui->SelectedList_List_DBTableView1, m_ui->DetailList_GRD})
        grid->SetSource(nullptr);
}

void TDetailTypes_List_FRM::BuildGrids()
{
    m_data.DetailTypes_SelectedList_GetAll();
    m_ui->DetailTypes_List_GRD->SetColumns(
        {{u"Title"_s, u"عنوان"_s, 210}, {u"DetailTypeName"_s, u"نوع"_s, 150}, {u"Comment"_s, u"توضیحات"_s, 380}});
    m_ui->DetailTypes_List_GRD->SetSource(&m_data.DetailTypes_QRY, u"ID"_s);
    m_ui->SelectedList_List_DBTableView1->SetColumns({{u"Code"_s, u"کد"_s, 70, false, ColumnFormat::Code},
                                                      {u"Title"_s, u"عنوان دسته بندی"_s, 230},
                                                      {u"Defaulted"_s, u"پیش فرض"_s, 90},
                                                      {u"Comment"_s, u"توضیحات"_s, 340}});
    m_ui->SelectedList_List_DBTableView1->SetSource(&m_data.DetailTypes_SelectedList_QRY);
    m_ui->DetailList_GRD->SetColumns(
        {{u"Code"_s, u"کد"_s, 70, false, ColumnFormat::Code}, {u"Name"_s, u"عنوان جزییات"_s, 420}});
    m_ui->DetailList_GRD->SetSource(&m_data.DetailTypes_DetailList_QRY);
    m_ui->DetailList_GRD->SetMultiSelect(true);
    for (host::Grid *grid : {m_ui->DetailTypes_List_GRD, m_ui->SelectedList_List_DBTableView1, m_ui->DetailList_GRD}) {
        grid->horizontalHeader()->setStretchLastSection(true);
        RememberLayout(grid);
    }
    m_ui->TGeneral_Search_Frame1->SetGrid(m_ui->DetailTypes_List_GRD);
    m_ui->Categories_SPL->setSizes({300, 240});

    for (host::Grid *grid : {m_ui->DetailTypes_List_GRD, m_ui->SelectedList_List_DBTableView1}) {
        grid->SetSortable(true);
        connect(grid, &host::Grid::RowActivated, this, &TDetailTypes_List_FRM::Activate);
    }
    connect(m_ui->TGeneral_Search_Frame1, &host::SearchFrame::Accepted, this, [this] {
        if (Chooses())
            Activate();
        else
            m_ui->DetailTypes_List_GRD->setFocus(Qt::OtherFocusReason);
    });
    connect(m_ui->SelectedList_List_DBTableView1, &host::Grid::CurrentKeyChanged, this, [this] {
        if (IsShowing())
            Command(Title(), [this] { FollowCategory(); });
    });
    connect(m_ui->DetailTypes_PGC, &QTabWidget::currentChanged, this, &TDetailTypes_List_FRM::ShowTab);
}

void TDetailTypes_List_FRM::BindCommands()
{
    Bind(m_ui->New_BTN, {}, [this] { EditType(TFormMode::New); });
    Bind(m_ui->Edit_BTN, {}, [this] { EditType(TFormMode::Edit); });
    Bind(m_ui->Delete_BTN, {}, [this] { DeleteType(); });
    Bind(m_ui->Select_BTN, {}, [this] { ChooseTypes(); });
    Bind(m_ui->New_SelectedList_BTN, {}, [this] { EditCategory(TFormMode::New); });
    Bind(m_ui->Edit_SelectedList_BTN, {}, [this] { EditCategory(TFormMode::Edit); });
    Bind(m_ui->Delete_SelectedList_BTN, {}, [this] { DeleteCategory(); });
    Bind(m_ui->Default_BTN, {}, [this] { SwitchDefault(); });
    Bind(m_ui->DetailTypeSelectedListSelect_BTN, {}, [this] { ChooseCategory(); });
    Bind(m_ui->NewDetail_BTN, {}, [this] { AddMembers(); });
    Bind(m_ui->DeleteDetail_BTN, {}, [this] { DeleteMembers(); });
    Bind(m_ui->DeleteAllDetail_BTN, {}, [this] { DeleteAllMembers(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

void TDetailTypes_List_FRM::BindKeys()
{
    // One key serves both tabs: it presses the button that is shown.
    const auto bind = [this](Qt::Key key, QPushButton *types, QPushButton *categories) {
        BindKey(key, types->text(), [this, types, categories] { (OnTypes() ? types : categories)->click(); });
    };
    bind(Qt::Key_F4, m_ui->New_BTN, m_ui->New_SelectedList_BTN);
    bind(Qt::Key_F5, m_ui->Edit_BTN, m_ui->Edit_SelectedList_BTN);
    bind(Qt::Key_F7, m_ui->Delete_BTN, m_ui->Delete_SelectedList_BTN);
}

void TDetailTypes_List_FRM::OrderTabs()
{
    QList<QWidget *> stops = m_ui->TGeneral_Search_Frame1->TabStops();
    stops << m_ui->DetailTypes_List_GRD << m_ui->Select_BTN << m_ui->New_BTN << m_ui->Edit_BTN << m_ui->Delete_BTN
          << m_ui->SelectedList_List_DBTableView1 << m_ui->DetailList_GRD << m_ui->NewDetail_BTN
          << m_ui->DeleteDetail_BTN << m_ui->DeleteAllDetail_BTN << m_ui->DetailTypeSelectedListSelect_BTN
          << m_ui->New_SelectedList_BTN << m_ui->Edit_SelectedList_BTN << m_ui->Delete_SelectedList_BTN
          << m_ui->Default_BTN << findChild<QPushButton *>(u"EXit_BTN"_s);
    host::ChainTabs(stops);
    m_ui->DetailTypes_PGC->setFocusPolicy(Qt::NoFocus); // Ctrl+Tab turns the pages; Tab stays on the one shown
}

void TDetailTypes_List_FRM::BindMenus()
{
    struct Item
    {
        QString caption;
        QPushButton *button;
    };
    const auto menu = [this](host::Grid *grid, const QList<Item> &items) {
        grid->setContextMenuPolicy(Qt::CustomContextMenu);
        connect(grid, &QWidget::customContextMenuRequested, this, [this, grid, items](const QPoint &at) {
            QMenu popup(this);
            popup.setObjectName(grid->objectName() + u"_PMN"_s);
            for (const Item &item : items) {
                QAction *action = popup.addAction(item.caption);
                action->setEnabled(item.button->isEnabled());
                connect(action, &QAction::triggered, item.button, &QPushButton::click, Qt::QueuedConnection);
            }
            popup.exec(grid->viewport()->mapToGlobal(at));
        });
    };
    menu(m_ui->DetailTypes_List_GRD, {{u"جدید"_s, m_ui->New_BTN},
                                      {u"ویرایش"_s, m_ui->Edit_BTN},
                                      {u"حذف"_s, m_ui->Delete_BTN},
                                      {u"انتخاب"_s, m_ui->Select_BTN}});
    menu(m_ui->DetailList_GRD, {{u"سطر جدید"_s, m_ui->NewDetail_BTN},
                                {u"حذف سطر"_s, m_ui->DeleteDetail_BTN},
                                {u"حذف همه"_s, m_ui->DeleteAllDetail_BTN}});
}

bool TDetailTypes_List_FRM::OnTypes() const
{
    return m_ui->DetailTypes_PGC->currentWidget() == m_ui->Types_TBS;
}

host::Grid *TDetailTypes_List_FRM::PrintedGrid() const
{
    return OnTypes() ? m_ui->DetailTypes_List_GRD : m_ui->SelectedList_List_DBTableView1;
}

void TDetailTypes_List_FRM::Warn(const QString &text)
{
    m_host.messages.ShowMessage(text, host::MessageIcon::Warning);
}

void TDetailTypes_List_FRM::FormShow()
{
    m_selectedCodes.clear();
    m_ui->DetailTypes_PGC->setCurrentWidget(m_ui->Types_TBS);
    const bool categories = !Chooses() || m_choice.Categories;
    m_ui->DetailTypes_PGC->setTabEnabled(m_ui->DetailTypes_PGC->indexOf(m_ui->SelectedLists_TBS), categories);
    m_ui->DetailTypes_PGC->tabBar()->setVisible(categories);
    m_ui->SelectedList_List_DBTableView1->SetMultiSelect(false);
    m_ui->DetailTypes_List_GRD->SetMultiSelect(Chooses());
    m_ui->DetailTypes_List_GRD->ClearMarks();
    m_ui->DetailList_GRD->ClearMarks();
    m_data.DetailTypes_GetAll();
    m_data.DetailTypes_SelectedList_QRY.Open();
    FollowCategory();
    ShowTab();
}

void TDetailTypes_List_FRM::FormClose()
{
    m_ui->TGeneral_Search_Frame1->Clear();
    for (host::Dataset *rows :
         {&m_data.DetailTypes_QRY, &m_data.DetailTypes_SelectedList_QRY, &m_data.DetailTypes_DetailList_QRY})
        rows->Close();
}

void TDetailTypes_List_FRM::ShowTab()
{
    m_ui->TypeCommands_PNL->setVisible(OnTypes());
    m_ui->CategoryCommands_PNL->setVisible(!OnTypes());
    PrintedGrid()->setFocus(Qt::OtherFocusReason);
}

void TDetailTypes_List_FRM::RefreshButtons()
{
    const bool types = !m_data.DetailTypes_QRY.IsEmpty();
    const bool categories = !m_data.DetailTypes_SelectedList_QRY.IsEmpty();
    const bool members = !m_data.DetailTypes_DetailList_QRY.IsEmpty();
    m_ui->Edit_BTN->setEnabled(types);
    m_ui->Delete_BTN->setEnabled(types);
    m_ui->Select_BTN->setEnabled(Chooses() && types);
    m_ui->Edit_SelectedList_BTN->setEnabled(categories);
    m_ui->Delete_SelectedList_BTN->setEnabled(categories);
    m_ui->Default_BTN->setEnabled(categories);
    m_ui->DetailTypeSelectedListSelect_BTN->setEnabled(Chooses() && m_choice.Categories && categories);
    m_ui->NewDetail_BTN->setEnabled(categories);
    m_ui->DeleteDetail_BTN->setEnabled(members);
    m_ui->DeleteAllDetail_BTN->setEnabled(members);
    m_ui->Hint_LBL->setVisible(!categories);
}

void TDetailTypes_List_FRM::Activate()
{
    if (OnTypes())
        (Chooses() ? m_ui->Select_BTN : m_ui->Edit_BTN)->click();
    else
        (Chooses() ? m_ui->DetailTypeSelectedListSelect_BTN : m_ui->Edit_SelectedList_BTN)->click();
}

void TDetailTypes_List_FRM::CloseWith(const QString &codes)
{
    m_selectedCodes = codes;
    done(QDialog::Accepted);
}

host::SearchFrame *TDetailTypes_List_FRM::ListSearch() const
{
    return OnTypes() ? m_ui->TGeneral_Search_Frame1 : nullptr;
}
