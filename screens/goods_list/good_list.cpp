#include "screens/goods_list/good_list.h"

#include "host/controls/flow_layout.h"
#include "host/controls/number_text.h"
#include "host/data/persian_text.h"
#include "host/look/icons.h"
#include "screens/good_editor/good_get.h"
#include "screens/goods_list/good_list_columns.h"
#include "screens/goods_list/good_movements.h"
#include "screens/goods_list/good_search.h"
#include "screens/goods_list/tag_marks.h"
#include "ui_good_list.h"

#include <QDataStream>
#include <QIODevice>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

using host::TFormMode;

namespace {

/// The panels follow the current good when the cursor rests, not while it runs through the rows.
constexpr int FollowMilliseconds = 120;

} // namespace

TGood_List_FRM::TGood_List_FRM(host::Host &host, TFormMode mode, const QString &openingText)
    : TBaseDock_FRM(host, host::TSoftwarePart::Goods, mode), m_ui(std::make_unique<Ui::TGood_List_FRM>()),
      m_goods(host.DM, host.settings, host.entities), m_list(host.DM.FDConnection1, this), m_removal(host, m_goods),
      m_bulk(host, m_goods, *this)
{
    m_ui->setupUi(Content());
    AdoptFooter(m_ui->Footer_PNL);
    auto *more = new host::FlowLayout(m_ui->More_PNL); // as many lines as the window's width needs
    for (QPushButton *command : m_ui->More_PNL->findChildren<QPushButton *>())
        more->addWidget(command);
    SetParameterText(openingText);
    SetTitle(u"لیست کالاها"_s);
    resize(1320, 780);
    m_list.setObjectName(u"VelakSearchManager1"_s);
    m_list.SetScript(goods::ListScript());
    m_list.SetCustomFilter([this] { return goods::ListFilter(Criteria()); });
    BuildGrid();
    FollowRenewal();
    BuildStockTabs();
    BuildPanels();
    BindCommands();
    BindBulkCommands();
    BindTitleCommands();
    BindMovements();
    BindScales();
    BindLabels();
    BindImport();
    BindGroups();
    BindSearch();
    OrderTabs();
    TGood_List_FRM::SetFormMode(mode);
}

TGood_List_FRM::~TGood_List_FRM()
{
    m_ui->GoodListDB_GRD->SetSource(nullptr);
    m_ui->Group_PNL->SetGroups(nullptr);
}

void TGood_List_FRM::BuildGrid()
{
    host::Grid *grid = m_ui->GoodListDB_GRD;
    grid->SetColumns(goods_list::GoodColumns({}));
    grid->SetSearchFields({u"Code"_s, u"AbbName"_s, u"Name"_s, u"SMSCode"_s});
    grid->SetSortable(true);
    m_list.Data().setObjectName(u"Good_List_QRY"_s);
    grid->SetSource(&m_list.Data());
    m_marks = new goods_list::TagMarks(this);
    for (int column = 0; column < grid->Columns().size(); ++column)
        if (const QString field = grid->Columns().at(column).field; field.size() == 2 && field.startsWith(u't'))
            grid->setItemDelegateForColumn(column + 1, m_marks); // the mark column comes first
    RememberLayout(grid);
    m_ui->TGeneral_Search_Frame1->SetGrid(grid);

    m_counts = new QLabel(this);
    m_counts->setObjectName(u"Counts_LBL"_s);
    AddToHeader(m_counts);
    m_empty = new QLabel(grid->viewport());
    m_empty->setObjectName(u"Empty_LBL"_s);
    m_empty->setProperty("soft", true);
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setAttribute(Qt::WA_TransparentForMouseEvents);
    (new QVBoxLayout(grid->viewport()))->addWidget(m_empty);

    connect(grid, &host::Grid::RowActivated, this, &TGood_List_FRM::ActivateRow);
    connect(grid, &host::Grid::CurrentKeyChanged, this, &TGood_List_FRM::FollowCurrent);
    connect(grid, &host::Grid::MarksChanged, this, [this] {
        ShowCounts();
        m_follow.start();
    });
    connect(grid, &host::Grid::RowCountChanged, this, &TGood_List_FRM::ShowCounts);
    connect(grid, &host::Grid::VisibleFieldsChanged, this, [this] {
        if (IsShowing())
            Command(Title(), [this] { m_list.SetRequestedColumns(FieldsToRequest()); });
    });
    connect(m_ui->TGeneral_Search_Frame1, &host::SearchFrame::Accepted, this,
            [this] { Command(Title(), [this] { TakeTyped(); }); });
    for (QLineEdit *edit : m_ui->TGeneral_Search_Frame1->findChildren<QLineEdit *>())
        edit->installEventFilter(this);
}

/// The form orders its own widgets only: those inside the search and the groups, and the base's buttons, join here.
void TGood_List_FRM::OrderTabs()
{
    QList<QWidget *> stops = m_ui->TGeneral_Search_Frame1->TabStops();
    stops << m_ui->GoodListDB_GRD << m_ui->Group_PNL->TabStops() << m_ui->Search_TBC << m_ui->ADVSearch_CHK
          << m_ui->ADVSearch_BTN;
    stops << m_ui->Select_BTN << m_ui->New_BTN << m_ui->Edit_BTN << m_ui->Review_BTN << m_ui->Del_BTN << m_ui->Show_BTN
          << m_ui->PrintList_BTN << m_ui->Tags_btn << m_ui->ShowPicture_BTN << findChild<QPushButton *>(u"EXit_BTN"_s);
    for (QPushButton *command : m_ui->More_PNL->findChildren<QPushButton *>())
        stops << command;
    host::ChainTabs(stops);
}

void TGood_List_FRM::BuildStockTabs()
{
    // The positions are those that the list procedure is asked by.
    m_ui->Search_TBC->addTab(u"موجود"_s);
    m_ui->Search_TBC->addTab(u"ناموجود"_s);
    m_ui->Search_TBC->addTab(u"همه"_s);
    m_ui->Search_TBC->setCurrentIndex(2);
    m_ui->Search_TBC->setDrawBase(false);
    m_ui->Search_TBC->setExpanding(false);
    connect(m_ui->Search_TBC, &QTabBar::currentChanged, this, [this] {
        if (IsShowing())
            Command(Title(), [this] { Refresh(); });
    });
}

void TGood_List_FRM::BuildPanels()
{
    m_follow.setSingleShot(true);
    m_follow.setInterval(FollowMilliseconds);
    connect(&m_follow, &QTimer::timeout, this, [this] { Command(Title(), [this] { ShowPanels(); }); });
    m_ui->Tags_pnl->hide();
    m_ui->Pic_Show->hide();
    m_ui->ShowPicture_BTN->setIcon(host::Icon(host::Glyph::Photo));
    m_ui->ShowPicture_BTN->setToolTip(u"نمايش تصوير"_s);
    m_ui->Main_SPL->setSizes({190, 800, 240});
    m_ui->Main_SPL->setStretchFactor(0, 0);
    m_ui->Main_SPL->setStretchFactor(1, 1);
    m_ui->Main_SPL->setStretchFactor(2, 0);
    connect(m_ui->Tags_btn, &QPushButton::toggled, this, [this](bool on) {
        m_ui->Tags_pnl->setVisible(on);
        m_follow.start();
    });
    connect(m_ui->ShowPicture_BTN, &QPushButton::toggled, this, [this](bool on) {
        m_ui->Pic_Show->setVisible(on);
        m_ui->ShowPicture_BTN->setToolTip(on ? u"عدم نمايش تصوير"_s : u"نمايش تصوير"_s);
        m_follow.start();
    });
    connect(m_ui->Pic_Show, &host::PicturePanel::CloseRequested, this,
            [this] { m_ui->ShowPicture_BTN->setChecked(false); });
    connect(m_ui->Tags1, &goods_list::GoodTagsView::Changed, this, [this](int code, const QString &tags) {
        Command(m_ui->Tags_btn->text(), [this, code, tags] { StoreTags(code, tags); });
    });
}

void TGood_List_FRM::SetMultiSelect(bool on)
{
    m_multiSelect = on;
    m_ui->GoodListDB_GRD->SetMultiSelect(on || Mode() != TFormMode::Selection);
}

void TGood_List_FRM::SetFormMode(TFormMode mode)
{
    TBaseDock_FRM::SetFormMode(mode);
    m_ui->Select_BTN->setVisible(mode == TFormMode::Selection);
    SetMultiSelect(m_multiSelect);
}

void TGood_List_FRM::SetFormTheme()
{
    TBaseDock_FRM::SetFormTheme();
    m_ui->TListDetail_FRAME1->SetTitleFont(m_host.theme.TitleFont());
}

host::Grid *TGood_List_FRM::PrintedGrid() const
{
    return m_ui->GoodListDB_GRD;
}

QByteArray TGood_List_FRM::SaveState() const
{
    QByteArray state;
    QDataStream stream(&state, QIODevice::WriteOnly);
    stream << m_ui->Search_TBC->currentIndex() << m_ui->Tags_btn->isChecked() << m_ui->ShowPicture_BTN->isChecked()
           << m_ui->Main_SPL->saveState() << m_ui->ADVSearch_CHK->isChecked();
    return state;
}

void TGood_List_FRM::RestoreState(const QByteArray &state)
{
    QDataStream stream(state);
    int tab = 2;
    bool tags = false;
    bool picture = false;
    QByteArray splitter;
    stream >> tab >> tags >> picture >> splitter;
    if (stream.status() != QDataStream::Ok)
        return;
    {
        const QSignalBlocker quiet(m_ui->Search_TBC); // the rows are not open yet
        m_ui->Search_TBC->setCurrentIndex(tab);
    }
    m_ui->Tags_btn->setChecked(tags);
    m_ui->ShowPicture_BTN->setChecked(picture);
    m_ui->Main_SPL->restoreState(splitter);
    bool searched = true;
    stream >> searched; // a state of before knows nothing of it
    const QSignalBlocker quiet(m_ui->ADVSearch_CHK);
    m_ui->ADVSearch_CHK->setChecked(searched || stream.status() != QDataStream::Ok);
}

void TGood_List_FRM::FormShow()
{
    m_chosenCode = 0;
    m_chosenName.clear();
    m_chosenCodes.clear();
    m_ui->GoodListDB_GRD->ClearMarks();
    const bool stock = m_host.settings.SettingRecord().StockOnGoodsList;
    m_ui->TabSearch_FRAME->setVisible(stock);
    m_ui->UpdateAssets_BTN->setVisible(stock);
    m_ui->UpdateGoodDetailTypes_BTN->setVisible(m_host.settings.SettingRecord().GoodDetails);
    ShowPriceTitles();
    LoadTags();
    OpenGroups();
    m_list.SetRequestedColumns(FieldsToRequest());
    RecallSearch();
    Refresh();
    StandOnOpeningGood();
    m_ui->GoodListDB_GRD->setFocus(Qt::OtherFocusReason);
}

void TGood_List_FRM::FormClose()
{
    m_lastKey = m_ui->GoodListDB_GRD->CurrentKey();
    m_ui->TGeneral_Search_Frame1->Clear();
    m_list.Close();
    m_ui->GoodListDB_GRD->SortBy({}); // each opening begins with the list's own order
    m_follow.stop();
}

void TGood_List_FRM::StandOnOpeningGood()
{
    host::Grid *grid = m_ui->GoodListDB_GRD;
    if (Mode() != TFormMode::Selection) {
        grid->Locate(m_lastKey);
        return;
    }
    bool whole = false;
    const int code = host::FoldDigits(m_locateCode.trimmed()).toInt(&whole);
    const bool found = grid->Locate(whole ? QString::number(code) : m_lastKey) && whole;
    // What the caller's user typed instead of a code is what the search begins with.
    if (!found && !m_multiSelect && !ParameterText().trimmed().isEmpty())
        m_ui->TGeneral_Search_Frame1->SetText(ParameterText().trimmed());
}

host::SearchFrame *TGood_List_FRM::ListSearch() const
{
    return m_ui->TGeneral_Search_Frame1;
}

void TGood_List_FRM::UserChanged()
{
    m_ui->TGeneral_Search_Frame1->Reset();
    m_ui->Group_PNL->SetChosenGroup(0);
    m_lastKey.clear();
    m_advancedParams.clear();
    m_searchSummary.clear();
}
