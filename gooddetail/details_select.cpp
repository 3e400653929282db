#include "gooddetail/details_select.h"

#include "gooddetail/amount_entry.h"
#include "host/controls/number_text.h"
#include "ui_details_select.h"

#include <QDataStream>
#include <QHeaderView>
#include <QIODevice>
#include <QPushButton>

using namespace Qt::StringLiterals;

using host::ColumnFormat;
using host::GridColumn;

namespace {

constexpr int FollowMilliseconds = 120;
constexpr quint8 Several = 0;

QList<GridColumn> StockColumns(int unitType, const TLineGood_Rec &good)
{
    QList<GridColumn> columns;
    for (const good_detail::AmountColumn &column :
         good_detail::AmountColumnsOf(unitType, good.UnitName, good.Unit2Name))
        columns << GridColumn{column.Field, column.Title, 120, false, ColumnFormat::Amount};
    return columns;
}

} // namespace

TGoodDetails_Select_FRM::TGoodDetails_Select_FRM(host::Host &host, const QString &key, const QString &caption,
                                                 TSerial_DM *data)
    : TBaseDock_FRM(host, host::TSoftwarePart::GoodDetails, host::TFormMode::Selection),
      m_ui(std::make_unique<Ui::TGoodDetails_Select_FRM>()), m_own(data ? nullptr : std::make_unique<TSerial_DM>(host)),
      m_data(data ? *data : *m_own), m_opening(good_detail::ParseSelect(key).value_or(good_detail::SelectOpening{}))
{
    m_ui->setupUi(Content());
    SetParameterText(caption);
    SetTitle(caption.isEmpty() ? u"انتخاب جزئیات کالا"_s : caption);
    resize(900, 680);
    QPushButton *select = AddFooterCommand(u"Select_BTN"_s, u"انتخاب Enter"_s);
    select->setProperty("primary", true);
    Bind(select, {}, [this] { Choose(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
    BuildGrids();
    QList<QWidget *> stops = m_ui->TGeneral_Search_Frame1->TabStops();
    stops << m_ui->SelectedList_CMB << m_ui->Goods_List_GRD << m_ui->Details_List_GRD << select
          << findChild<QPushButton *>(u"EXit_BTN"_s);
    host::ChainTabs(stops);
}

TGoodDetails_Select_FRM::~TGoodDetails_Select_FRM()
{
    for (host::Grid *grid : {m_ui->Goods_List_GRD, m_ui->Details_List_GRD})
        grid->SetSource(nullptr);
}

void TGoodDetails_Select_FRM::BuildGrids()
{
    host::Grid *goods = m_ui->Goods_List_GRD;
    goods->SetColumns({{u"Code"_s, u"کد"_s, 90, false, ColumnFormat::Code},
                       {u"Name"_s, u"نام کالا"_s, 400},
                       {u"Unit1"_s, u"واحد"_s, 110},
                       {u"Unit2"_s, u"واحد 2"_s, 110},
                       {u"Radif"_s, u"ردیف"_s, 90, true, ColumnFormat::Code}});
    goods->SetSource(&m_data.Exist_QRY);
    goods->SetSortable(true);
    goods->horizontalHeader()->setStretchLastSection(true);
    RememberLayout(goods);
    m_ui->TGeneral_Search_Frame1->SetGrid(goods);
    host::Grid *details = m_ui->Details_List_GRD;
    details->SetSource(&m_data.Exist_Detail_QRY, u"DetailValueID"_s);
    details->SetSortable(true);
    details->horizontalHeader()->setStretchLastSection(true);
    details->SetMultiSelect(m_opening.Flag == Several);
    m_ui->Select_SPL->setSizes({300, 260});

    m_follow.setSingleShot(true);
    m_follow.setInterval(FollowMilliseconds);
    connect(&m_follow, &QTimer::timeout, this, [this] { Command(Title(), [this] { ShowDetails(); }); });
    connect(goods, &host::Grid::CurrentKeyChanged, this, &TGoodDetails_Select_FRM::FollowGood);
    const auto descend = [this] {
        Command(Title(), [this] { CatchUp(); });
        m_ui->Details_List_GRD->setFocus(Qt::OtherFocusReason);
    };
    connect(goods, &host::Grid::RowActivated, this, descend);
    connect(m_ui->TGeneral_Search_Frame1, &host::SearchFrame::Accepted, this, descend);
    connect(details, &host::Grid::RowActivated, this, [this] { Command(Title(), [this] { Choose(); }); });
    connect(details, &host::Grid::MarksChanged, this, &TGoodDetails_Select_FRM::ShowMarks);
    connect(m_ui->SelectedList_CMB, &QComboBox::activated, this,
            [this] { Command(Title(), [this] { ReloadGoods(); }); });
}

void TGoodDetails_Select_FRM::FormShow()
{
    m_chosen.clear();
    m_ui->Details_List_GRD->ClearMarks();
    OfferLists();
    ReloadGoods();
    m_ui->Goods_List_GRD->setFocus(Qt::OtherFocusReason);
}

void TGoodDetails_Select_FRM::FormClose()
{
    m_follow.stop();
    m_ui->TGeneral_Search_Frame1->Clear();
    m_data.Exist_QRY.Close();
    m_data.Exist_Detail_QRY.Close();
}

void TGoodDetails_Select_FRM::OfferLists()
{
    QComboBox *box = m_ui->SelectedList_CMB;
    box->clear();
    box->addItem(u"هيچکدام"_s, 0);
    for (const TSelectedList_Rec &list : m_data.SelectedLists_Get())
        box->addItem(list.Title, list.Code);
}

void TGoodDetails_Select_FRM::ReloadGoods()
{
    const QString key = m_ui->Goods_List_GRD->CurrentKey();
    m_data.GoodDetail_SelectGood_Open(m_ui->SelectedList_CMB->currentData().toInt(), quint8(m_opening.Flag),
                                      m_forDivision);
    if ((key.isEmpty() || !m_ui->Goods_List_GRD->Locate(key)) && !m_ui->Goods_List_GRD->IsEmpty())
        m_ui->Goods_List_GRD->StandOn(0);
    ShowDetails();
}

void TGoodDetails_Select_FRM::FollowGood()
{
    if (IsShowing())
        m_follow.start();
}

void TGoodDetails_Select_FRM::CatchUp()
{
    if (m_follow.isActive())
        ShowDetails();
}

void TGoodDetails_Select_FRM::ShowDetails()
{
    m_follow.stop();
    const int good = m_ui->Goods_List_GRD->CurrentKey().toInt();
    m_ui->Good_LBL->setText(u"جزئیات کالا : "_s + m_ui->Goods_List_GRD->CurrentValue(u"Name"_s).toString());
    if (good == 0) {
        m_data.Exist_Detail_QRY.ClearRows();
    } else {
        const TLineGood_Rec row = m_data.GetLineGood(good);
        const int unitType = good_detail::UnitTypeOf(row, m_host.settings.SettingRecord());
        ShowColumns(good, row, unitType);
        m_data.GoodDetail_Select(good, m_opening.Number, unitType);
        if (!m_ui->Details_List_GRD->IsEmpty())
            m_ui->Details_List_GRD->StandOn(0);
    }
    ShowMarks();
}

void TGoodDetails_Select_FRM::ShowColumns(int good, const TLineGood_Rec &row, int unitType)
{
    host::Grid *grid = m_ui->Details_List_GRD;
    QList<GridColumn> columns{{u"StoreName"_s, u"انبار"_s, 130}};
    const QStringList titles = m_data.GetGoodDetailTitles(good);
    for (int i = 0; i < titles.size(); ++i)
        columns << GridColumn{u"D%1Value"_s.arg(i + 1), titles.at(i), 130};
    columns << StockColumns(unitType, row);
    if (m_unitType != 0)
        m_layouts[m_unitType] = grid->SaveLayout();
    m_unitType = unitType;
    grid->SetColumns(columns);
    grid->RestoreLayout(m_layouts.value(unitType));
}

void TGoodDetails_Select_FRM::ShowMarks()
{
    const qsizetype marked = m_ui->Details_List_GRD->MarkedKeys().size();
    QString text;
    if (m_ui->Goods_List_GRD->IsEmpty())
        text = u"کالایی برای انتخاب نیست"_s;
    else if (m_ui->Details_List_GRD->IsEmpty())
        text = u"از جزئیات این کالا چیزی موجود نیست"_s;
    if (marked > 0)
        text = (text.isEmpty() ? QString() : text + u"، "_s) +
               u"%1 مورد علامت خورده"_s.arg(host::DisplayNumber(QString::number(marked)));
    m_ui->State_LBL->setText(text);
}

QString TGoodDetails_Select_FRM::MarkedValues() const
{
    const host::Grid *grid = m_ui->Details_List_GRD;
    const QStringList marked = grid->MarkedKeys();
    return marked.isEmpty() ? grid->CurrentKey() : marked.join(u',');
}

QString TGoodDetails_Select_FRM::CurrentValue() const
{
    const int row = m_ui->Details_List_GRD->CurrentSourceRow();
    if (row < 0)
        return {};
    const auto field = [this, row](QStringView name) { return m_data.Exist_Detail_QRY.FieldAt(row, name); };
    const auto amount = [&field](QStringView name) { return host::QuantityFromText(field(name).toString()); };
    return good_detail::Pack(good_detail::ChosenDetail{
        field(u"DetailValueID").toInt(), field(u"StoreCode").toInt(), field(u"GoodCode").toInt(), amount(u"Amount1"),
        amount(u"Amount2"), amount(u"Length"), amount(u"Width"), amount(u"Amount3")});
}

void TGoodDetails_Select_FRM::Choose()
{
    CatchUp();
    m_chosen = m_opening.Flag == Several ? MarkedValues() : CurrentValue();
    if (!m_chosen.isEmpty())
        done(QDialog::Accepted);
}

host::SearchFrame *TGoodDetails_Select_FRM::ListSearch() const
{
    return m_ui->TGeneral_Search_Frame1;
}

host::Grid *TGoodDetails_Select_FRM::PrintedGrid() const
{
    return m_ui->Details_List_GRD;
}

QByteArray TGoodDetails_Select_FRM::SaveState() const
{
    QMap<int, QByteArray> layouts = m_layouts;
    if (m_unitType != 0)
        layouts[m_unitType] = m_ui->Details_List_GRD->SaveLayout();
    QByteArray state;
    QDataStream stream(&state, QIODevice::WriteOnly);
    stream << layouts;
    return state;
}

void TGoodDetails_Select_FRM::RestoreState(const QByteArray &state)
{
    m_unitType = 0; // what is shown was the former user's
    m_layouts.clear();
    QDataStream stream(state);
    stream >> m_layouts;
}
