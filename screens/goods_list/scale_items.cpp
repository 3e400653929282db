#include "screens/goods_list/scale_items.h"

#include "host/controls/number_text.h"
#include "ui_scale_items.h"

#include <QHeaderView>
#include <QPushButton>

using namespace Qt::StringLiterals;

using host::ColumnFormat;

namespace {

constexpr QSize WindowSize(880, 560);

QString Counted(int number)
{
    return host::DisplayNumber(QString::number(number));
}

} // namespace

TScale_Items_FRM::TScale_Items_FRM(host::Host &host, TGood_DM &goods, const QStringList &chosen)
    : TBaseDock_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::Edit, host.mainWindow),
      m_ui(std::make_unique<Ui::ScaleItems>()), m_goods(goods), m_chosen(chosen)
{
    setObjectName(u"TScale_Items_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"ترازوی دیبال"_s);
    resize(WindowSize);
    host::Grid *grid = m_ui->Items_GRD;
    grid->SetColumns({{u"Code"_s, u"کد"_s, 80, false, ColumnFormat::Code},
                      {u"Name1"_s, u"نام کالا"_s, 260},
                      {u"Price"_s, u"قیمت"_s, 110, false, ColumnFormat::Price},
                      {u"BarCode"_s, u"بارکد"_s, 130},
                      {u"TypeName"_s, u"فروش"_s, 80},
                      {u"State"_s, u"وضعیت"_s, 150}});
    grid->SetMultiSelect(true);
    grid->SetSortable(true);
    grid->horizontalHeader()->setStretchLastSection(true);
    grid->SetSource(&m_goods.Items_QRY);
    RememberLayout(grid);
    BindCommands();
}

TScale_Items_FRM::~TScale_Items_FRM()
{
    m_ui->Items_GRD->SetSource(nullptr);
}

void TScale_Items_FRM::BindCommands()
{
    QPushButton *putOn = AddFooterCommand(u"PutOn_BTN"_s, u"گذاشتن روی ترازو F4"_s);
    putOn->setEnabled(!m_chosen.isEmpty());
    Bind(putOn, Qt::Key_F4, [this] { PutOn(); });
    Bind(AddFooterCommand(u"TakeOff_BTN"_s, u"برداشتن از ترازو F7"_s), Qt::Key_F7, [this] { TakeOff(); });
    Bind(AddFooterCommand(u"Send_BTN"_s, u"ارسال تغییرها F8"_s), Qt::Key_F8, [this] { SendChanges(); });
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش ليست F9"_s), Qt::Key_F9, [this] { PreviewGrid(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
    connect(m_ui->Waiting_CHK, &QCheckBox::toggled, this, [this] {
        if (!IsShowing())
            return;
        m_ui->Items_GRD->ClearMarks(); // hidden ones would be taken off, too
        Command(Title(), [this] { Refresh(); });
    });
}

void TScale_Items_FRM::FormShow()
{
    QList<host::Entity> levels;
    m_goods.CostLevel_Sell_Fill(levels, 0);
    for (const host::Entity &level : levels)
        if (level.Code != 0)
            m_ui->Level_CMB->addItem(level.Name, level.Code);
    m_ui->Level_CMB->setCurrentIndex(qMax(0, m_ui->Level_CMB->findData(m_storedLevel)));
    m_ui->Chosen_LBL->setText(
        m_chosen.isEmpty()
            ? u"کالایی در لیست انتخاب نشده است."_s
            : u"%1 کالای انتخاب‌شده در لیست را می‌توان روی ترازو گذاشت."_s
                  .arg(Counted(static_cast<int>(m_chosen.size()))));
    Refresh();
    m_ui->Items_GRD->setFocus();
}

void TScale_Items_FRM::FormClose()
{
    m_goods.Items_QRY.Close();
}

QByteArray TScale_Items_FRM::SaveState() const
{
    return QByteArray::number(Level());
}

void TScale_Items_FRM::RestoreState(const QByteArray &state)
{
    m_storedLevel = state.toInt();
}

int TScale_Items_FRM::Level() const
{
    return m_ui->Level_CMB->count() == 0 ? m_storedLevel : m_ui->Level_CMB->currentData().toInt();
}

void TScale_Items_FRM::Refresh()
{
    const host::Grid::Place place = m_ui->Items_GRD->CurrentPlace();
    m_goods.ScaleItems_GetAll(m_ui->Waiting_CHK->isChecked());
    m_ui->Items_GRD->ReturnTo(place);
    if (m_ui->Items_GRD->CurrentKey().isEmpty() && !m_ui->Items_GRD->IsEmpty())
        m_ui->Items_GRD->StandOn(0);
    int waiting = 0;
    for (int row = 0; row < m_goods.Items_QRY.RecordCount(); ++row)
        waiting += m_goods.Items_QRY.FieldAt(row, u"ChangeType").toInt() != 0;
    m_ui->Count_LBL->setText(
        u"%1 ردیف   ·   %2 در انتظار ترازو"_s.arg(Counted(m_goods.Items_QRY.RecordCount()), Counted(waiting)));
}

bool TScale_Items_FRM::Allowed()
{
    return host::Granted(m_host, SoftwarePart(), host::TPermission::Change);
}

void TScale_Items_FRM::Tell(const goods::ScaleResult &result)
{
    QStringList lines = {u"%1 کالای تازه و %2 کالای تغییریافته در انتظار ترازو قرار گرفت."_s.arg(
        Counted(result.added), Counted(result.changed))};
    if (result.unpriced > 0)
        lines << u"%1 کالا در این سطح قیمت ندارد و فرستاده نشد."_s.arg(Counted(result.unpriced));
    if (result.strangers > 0)
        lines << u"کد %1 کالا روی ترازو از آن ردیف دیگری است و فرستاده نشد."_s.arg(Counted(result.strangers));
    const bool all = lines.size() == 1;
    m_host.messages.ShowMessage(lines.join(u'\n'), all ? host::MessageIcon::Information : host::MessageIcon::Warning,
                                Title());
}

void TScale_Items_FRM::PutOn()
{
    if (!Allowed())
        return;
    const goods::ScaleResult result = m_goods.PutGoodsOnScale(m_chosen.join(u','), Level());
    Refresh();
    Tell(result);
}

void TScale_Items_FRM::SendChanges()
{
    if (!Allowed())
        return;
    const goods::ScaleResult result = m_goods.SendChangesToScale(Level());
    Refresh();
    Tell(result);
}

void TScale_Items_FRM::TakeOff()
{
    host::Grid *grid = m_ui->Items_GRD;
    QStringList keys = grid->MarkedKeys();
    if (keys.isEmpty() && !grid->CurrentKey().isEmpty())
        keys << grid->CurrentKey();
    if (keys.isEmpty() || !Allowed() ||
        !m_host.messages.MsgDeleteItem(u"%1 کالا از ترازو"_s.arg(Counted(static_cast<int>(keys.size())))))
        return;
    m_goods.TakeGoodsOffScale(keys.join(u','));
    grid->ClearMarks();
    Refresh();
}

bool TScale_Items_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
}

host::Grid *TScale_Items_FRM::PrintedGrid() const
{
    return m_ui->Items_GRD;
}
