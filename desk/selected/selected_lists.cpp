#include "desk/selected/selected_lists.h"

#include "desk/selected/selected_list_get.h"
#include "host/controls/grid.h"
#include "host/controls/search_frame.h"
#include "ui_selected_lists.h"

#include <QHeaderView>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QShortcut>

using namespace Qt::StringLiterals;

namespace desk {

using host::ColumnFormat;
using host::TFormMode;

TSelectedLists_FRM::TSelectedLists_FRM(host::Host &host, TFormMode mode, GoodsChooser chooseGoods)
    : TBaseDock_FRM(host, host::TSoftwarePart::Goods, mode, host.mainWindow), m_chooseGoods(std::move(chooseGoods)),
      m_ui(std::make_unique<Ui::SelectedLists>()), m_data(host.DM.ADOConnection1)
{
    setObjectName(u"TSelectedLists_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(mode == TFormMode::Selection ? u"افزودن به لیست انتخابی"_s : u"لیست‌های انتخابی"_s);
    resize(900, 560);
    m_ui->Prompt_LBL->hide();
    m_ui->Main_SPL->setSizes({440, 460});
    m_ui->Lists_GRD->SetColumns({{u"Title"_s, u"عنوان"_s, 190},
                                 {u"Goods"_s, u"کالا"_s, 50, false, ColumnFormat::Code},
                                 {u"Use"_s, u"کالاها"_s, 90},
                                 {u"State"_s, u"وضعیت"_s, 70}});
    m_ui->Goods_GRD->SetColumns({{u"Place"_s, u"ردیف"_s, 50, false, ColumnFormat::Code},
                                 {u"Code"_s, u"کد"_s, 70, false, ColumnFormat::Code},
                                 {u"Name"_s, u"نام کالا"_s, 230}});
    m_ui->Goods_GRD->SetMultiSelect(true);
    for (host::Grid *grid : {m_ui->Lists_GRD, m_ui->Goods_GRD}) {
        grid->horizontalHeader()->setStretchLastSection(true);
        RememberLayout(grid);
    }
    m_ui->Lists_GRD->SetSource(&m_data.Lists);
    m_ui->Goods_GRD->SetSource(&m_data.Goods);
    connect(m_ui->Lists_GRD, &host::Grid::CurrentKeyChanged, this, [this] {
        if (IsShowing() && !m_refreshing)
            Command(Title(), [this] { FollowList(); });
    });
    connect(m_ui->Lists_GRD, &host::Grid::RowActivated, this, [this] {
        Command(Title(), [this] { Mode() == TFormMode::Selection ? Choose() : EditList(TFormMode::Edit); });
    });
    BindCommands();
    OrderTabs();
}

TSelectedLists_FRM::~TSelectedLists_FRM()
{
    m_ui->Lists_GRD->SetSource(nullptr);
    m_ui->Goods_GRD->SetSource(nullptr);
}

void TSelectedLists_FRM::BindCommands()
{
    if (Mode() == TFormMode::Selection) {
        QPushButton *select = AddFooterCommand(u"Select_BTN"_s, u"افزودن Enter"_s);
        select->setProperty("primary", true);
        Bind(select, {}, [this] { Choose(); });
    }
    Bind(AddFooterCommand(u"New_BTN"_s, u"لیست جدید F4"_s), Qt::Key_F4, [this] { EditList(TFormMode::New); });
    Bind(AddFooterCommand(u"Edit_BTN"_s, u"ویرایش F5"_s), Qt::Key_F5, [this] { EditList(TFormMode::Edit); });
    Bind(AddFooterCommand(u"Del_BTN"_s, u"حذف لیست F7"_s), Qt::Key_F7, [this] { DeleteList(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
    m_ui->NewDetail_BTN->setVisible(m_chooseGoods != nullptr);
    Bind(m_ui->NewDetail_BTN, {}, [this] { AddGoods(); });
    Bind(m_ui->DeleteDetail_BTN, {}, [this] { RemoveGoods(); });
    Bind(m_ui->DeleteAllDetail_BTN, {}, [this] { RemoveAllGoods(); });
    Bind(m_ui->Earlier_BTN, {}, [this] { MoveGood(-1); });
    Bind(m_ui->Later_BTN, {}, [this] { MoveGood(1); });
    // In the lists beside them these keys would be for goods that nobody looks at.
    for (const auto &[button, key] : {std::pair(m_ui->DeleteDetail_BTN, QKeySequence(Qt::Key_Delete)),
                                      std::pair(m_ui->Earlier_BTN, QKeySequence(Qt::CTRL | Qt::Key_Up)),
                                      std::pair(m_ui->Later_BTN, QKeySequence(Qt::CTRL | Qt::Key_Down))}) {
        auto *shortcut = new QShortcut(key, m_ui->Goods_GRD);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        connect(shortcut, &QShortcut::activated, button, &QPushButton::click);
    }
}

void TSelectedLists_FRM::OrderTabs()
{
    QList<QWidget *> stops{m_ui->Lists_GRD,           m_ui->Goods_GRD,   m_ui->NewDetail_BTN, m_ui->DeleteDetail_BTN,
                           m_ui->DeleteAllDetail_BTN, m_ui->Earlier_BTN, m_ui->Later_BTN};
    for (const QString &name : {u"Select_BTN"_s, u"New_BTN"_s, u"Edit_BTN"_s, u"Del_BTN"_s, u"EXit_BTN"_s})
        if (auto *button = findChild<QPushButton *>(name))
            stops << button;
    host::ChainTabs(stops);
}

void TSelectedLists_FRM::SetPrompt(const QString &prompt)
{
    m_ui->Prompt_LBL->setText(prompt);
    m_ui->Prompt_LBL->show();
}

void TSelectedLists_FRM::FormShow()
{
    m_chosen = 0;
    RefreshLists(m_current);
    m_ui->Lists_GRD->setFocus();
}

int TSelectedLists_FRM::List() const
{
    return m_ui->Lists_GRD->CurrentKey().toInt();
}

void TSelectedLists_FRM::RefreshLists(int list)
{
    host::Grid::Place place = m_ui->Lists_GRD->CurrentPlace();
    place.key = QString::number(list);
    {
        const QScopedValueRollback refreshing(m_refreshing, true); // the goods are read once, of the list that is found
        m_data.OpenLists();
        m_ui->Lists_GRD->ReturnTo(place);
    }
    FollowList();
}

void TSelectedLists_FRM::FollowList()
{
    m_ui->Goods_GRD->ClearMarks();
    m_data.OpenGoods(List());
    ShowState();
}

/// After a change of the goods: their number stands in the row of the list.
void TSelectedLists_FRM::RefreshGoods()
{
    const host::Grid::Place place = m_ui->Goods_GRD->CurrentPlace();
    RefreshLists(List());
    m_ui->Goods_GRD->ReturnTo(place);
}

void TSelectedLists_FRM::ShowState()
{
    const bool lists = !m_ui->Lists_GRD->IsEmpty();
    const bool goods = !m_ui->Goods_GRD->IsEmpty();
    for (const QString &name : {u"Select_BTN"_s, u"Edit_BTN"_s, u"Del_BTN"_s})
        if (auto *button = findChild<QPushButton *>(name))
            button->setEnabled(lists);
    m_ui->NewDetail_BTN->setEnabled(lists);
    for (QPushButton *button : {m_ui->DeleteDetail_BTN, m_ui->DeleteAllDetail_BTN, m_ui->Earlier_BTN, m_ui->Later_BTN})
        button->setEnabled(goods);
    m_ui->Hint_LBL->setText(lists ? u"این لیست کالایی ندارد."_s : u"هنوز لیستی نیست؛ با F4 یکی بسازید."_s);
    m_ui->Hint_LBL->setVisible(!goods);
}

void TSelectedLists_FRM::EditList(TFormMode mode)
{
    if (mode == TFormMode::Edit && List() == 0)
        return;
    TSelectedList_Get_FRM editor(m_host, m_data);
    editor.Open(mode == TFormMode::New ? QVariant() : List(), mode);
    if (const int saved = editor.SavedKey().toInt(); saved != 0 || editor.RecordGone())
        RefreshLists(saved);
}

void TSelectedLists_FRM::DeleteList()
{
    const int list = List();
    if (list == 0 ||
        !m_host.messages.MsgDeleteItem(u"لیست «%1»"_s.arg(m_ui->Lists_GRD->CurrentValue(u"Title"_s).toString())))
        return;
    m_data.Delete(list);
    RefreshLists(list);
}

void TSelectedLists_FRM::Choose()
{
    m_chosen = List();
    if (m_chosen != 0)
        done(Accepted);
}

void TSelectedLists_FRM::AddGoods()
{
    const int list = List();
    if (list == 0)
        return;
    if (const QString goods = m_chooseGoods(); !goods.isEmpty())
        m_data.Add(list, goods);
    RefreshGoods();
}

void TSelectedLists_FRM::RemoveGoods()
{
    QStringList goods = m_ui->Goods_GRD->MarkedKeys();
    if (goods.isEmpty() && !m_ui->Goods_GRD->IsEmpty())
        goods << m_ui->Goods_GRD->CurrentKey();
    if (goods.isEmpty() || !m_host.messages.MsgDeleteRow())
        return;
    m_data.Remove(List(), goods.join(u','));
    RefreshGoods();
}

void TSelectedLists_FRM::RemoveAllGoods()
{
    if (m_ui->Goods_GRD->IsEmpty() || !m_host.messages.MsgDeleteItem(u"همه سطرهاي"_s))
        return;
    m_data.RemoveAll(List());
    RefreshGoods();
}

void TSelectedLists_FRM::MoveGood(int step)
{
    const int good = m_ui->Goods_GRD->CurrentKey().toInt();
    if (good == 0)
        return;
    m_data.Move(List(), good, step);
    const host::Grid::Place place = m_ui->Goods_GRD->CurrentPlace();
    m_data.OpenGoods(List()); // the marks stay: none of them went
    ShowState();
    m_ui->Goods_GRD->ReturnTo(place);
}

} // namespace desk
