#include "screens/opening_stock/first_asset_get.h"

#include "data/goods/stock_probe.h"
#include "host/controls/entity_picker.h"
#include "host/controls/numeric_edit.h"
#include "host/data/persian_text.h"
#include "host/look/theme.h"
#include "ui_first_asset_get.h"

#include <QPushButton>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

using host::Refused;

namespace {

constexpr QSize WindowSize(620, 240);
constexpr int MessageMilliseconds = 3000;

} // namespace

QString OpeningGoodTitle(const goods::OpeningGood &good)
{
    return u"%1  -  %2"_s.arg(host::PersianDigits(QString::number(good.code)), good.name);
}

bool OpeningPeriodClosed(host::Host &host, QWidget *beside)
{
    if (!host.vouchers.IsConstStartPeriod())
        return false;
    host.messages.ShowSmartMessage(host::message::OpeningPeriodClosed,
                                   {u"مقادير اول دوره"_s, u"تغيير مقادير اول دوره"_s}, MessageMilliseconds, beside);
    return true;
}

TFirstAsset_Get_FRM::TFirstAsset_Get_FRM(host::Host &host, OpeningRowsContext &context)
    : TBaseGet_FRM(host, host::TSoftwarePart::OpeningStock, host.mainWindow), m_context(context),
      m_ui(std::make_unique<Ui::FirstAssetGet>())
{
    setObjectName(u"TFirstAsset_Get_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"اطلاعات اول دوره"_s);
    resize(WindowSize);
    m_ui->Store_Entity->SetSource(m_host.entities, host::TSoftwarePart::Stores);
    m_ui->Store_Entity->SetChooseGuard(
        [this] { return host::Granted(m_host, host::TSoftwarePart::Stores, host::TPermission::OpenList); });
    connect(m_ui->Store_Entity, &host::EntityPicker::Changed, this,
            [this] { Command(Title(), [this] { StoreChanged(); }); });
    BindQuantities();
}

TFirstAsset_Get_FRM::~TFirstAsset_Get_FRM() = default;

void TFirstAsset_Get_FRM::BindQuantities()
{
    const goods::OpeningGood &good = m_context.good;
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    UnitQuantities &quantities = *m_ui->Quantities;
    const bool secondUnit = good.twoUnits || good.formula != 0;
    quantities.SetSettings({settings.TwoUnitGoods && secondUnit, settings.TwoUnitVariableRatio, settings.IntegerUnits});
    quantities.SetFormula([this]() -> std::optional<goods::Quantity> {
        const goods::Quantity formula = m_context.good.formula;
        return formula != 0 ? std::optional(formula) : std::nullopt;
    });
    quantities.SetReplaceQuestion([this] { return m_host.messages.Confirm(host::message::ReplaceTypedQuantity, {}); });
    quantities.SetUnitNames(good.unit1Name, good.unit2Name);
    quantities.SetTotalCaption(u"مقدار  :"_s);
    quantities.SetDetailButtons(m_context.details.Offered());
    connect(&quantities, &UnitQuantities::DetailsWanted, this,
            [this] { Command(Title(), [this] { EnterDetails(); }); });
    QWidget *before = m_ui->Store_Entity->Edit();
    for (host::NumericEdit *edit : quantities.Edits()) {
        QWidget::setTabOrder(before, edit);
        before = edit;
    }
    m_ui->Good_LBL->setText(OpeningGoodTitle(good));
    AlignLabels();
    m_ui->Good_LBL->setFont(m_host.theme.TitleFont());
    m_ui->Good_LBL->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_ui->Good_LBL->setToolTip(host::theme::PlainToolTip(good.name));
}

void TFirstAsset_Get_FRM::AlignLabels()
{
    const auto quantityLabels = m_ui->Quantities->findChildren<QLabel *>(QRegularExpression(u"^Meghdar(Kol)?_LBL$"_s));
    QList<QLabel *> labels{m_ui->Store_Entity_LBL, m_ui->Comment_LBL};
    labels << quantityLabels;
    int widest = 0;
    for (const QLabel *label : std::as_const(labels))
        widest = qMax(widest, label->sizeHint().width() + label->fontMetrics().averageCharWidth() * 2);
    for (QLabel *label : std::as_const(labels))
        label->setMinimumWidth(widest);
}

void TFirstAsset_Get_FRM::Prepare()
{
    m_row = {};
    m_row.Radif = m_context.copy.NewNumber();
    ShowRow();
    m_ui->Quantities->Clear();
}

void TFirstAsset_Get_FRM::Load()
{
    if (!m_context.data.GoodFirstAsset_GetByID(m_context.copy.Key(), m_context.row, m_row)) {
        SetRecordGone();
        RefuseOpening(host::RecordGone(u"سطر اول دوره"_s));
        return;
    }
    ShowRow();
}

void TFirstAsset_Get_FRM::ShowRow()
{
    m_saved = false;
    m_context.details.Forget();
    m_detailStore = m_row.StoreCode;
    m_ui->Store_Entity->SetCode(m_row.StoreCode);
    m_ui->Comment_EDT->setText(m_row.Comment);
    m_ui->Quantities->SetDetailsEntered(false);
    m_ui->Quantities->Show({m_row.Amount1, m_row.Amount2});
    if (m_context.details.Offered() && m_row.StoreCode != 0)
        m_ui->Quantities->SetDetailsEntered(m_context.details.Rows().contains(m_row.Radif));
}

void TFirstAsset_Get_FRM::StoreChanged()
{
    const int store = m_ui->Store_Entity->Code();
    if (!m_ui->Quantities->DetailsEntered() || store == m_detailStore)
        return;
    if (store == 0 || !m_context.details.AskStore()) {
        m_ui->Store_Entity->SetCode(m_detailStore);
        return;
    }
    m_context.details.Remember(m_row.Radif);
    m_context.details.ChangeStore(m_row.Radif, m_detailStore, store);
    m_detailStore = store;
}

void TFirstAsset_Get_FRM::EnterDetails()
{
    m_ui->Quantities->TakeTyped();
    m_ui->Store_Entity->Resolve();
    const int store = m_ui->Store_Entity->Code();
    if (Refuse(host::When(store == 0, host::Required(m_ui->Store_Entity, u"کد انبار"_s))))
        return;
    m_context.details.Remember(m_row.Radif);
    const auto entered = m_context.details.Enter(m_context.good, m_row.Radif, store, m_ui->Store_Entity->Name(),
                                                 m_ui->Quantities->Amounts());
    if (!entered)
        return;
    m_detailStore = store;
    m_ui->Quantities->Replace(*entered);
    m_ui->Quantities->SetDetailsEntered(entered->first > 0 || entered->second > 0);
    SetIsSaved(false);
}

Refused TFirstAsset_Get_FRM::MaySave()
{
    return host::CheckRight(m_host, SoftwarePart(), Mode());
}

void TFirstAsset_Get_FRM::BeforeChecks()
{
    m_ui->Quantities->TakeTyped();
    m_ui->Quantities->AdoptParts();
    m_ui->Quantities->ZeroWhenEmpty();
}

std::vector<host::Check> TFirstAsset_Get_FRM::Validate()
{
    const auto quantityGiven = [this] {
        const goods::UnitAmounts amounts = m_ui->Quantities->Amounts();
        return host::When(amounts.first == 0 && amounts.second == 0,
                          host::Required(m_ui->Quantities->QuantityEdit(), u"مقدار"_s));
    };
    return {
        {u"PeriodOpen"_s,
         [this] { return host::When(OpeningPeriodClosed(m_host, SaveButton()), host::ToldAlready()); }},
        {u"StoreGiven"_s, [this] { return StoreGiven(); }},
        {u"StoreUsedOnce"_s, [this] { return StoreUsedOnce(); }},
        {u"QuantityGiven"_s, quantityGiven},
        {u"SecondQuantityFollows"_s,
         [this] {
             return host::When(
                 !m_ui->Quantities->AgreesWithFormula(),
                 host::SmartMessage(m_ui->Quantities->SecondEdit(), host::message::SecondQuantityDiffers));
         }},
        {u"StockStaysPositive"_s, [this] { return StockStaysPositive(); }},
    };
}

Refused TFirstAsset_Get_FRM::StoreGiven() const
{
    if (!m_ui->Store_Entity->Resolve())
        return host::ToldAlready(m_ui->Store_Entity);
    return host::When(m_ui->Store_Entity->Code() == 0, host::Required(m_ui->Store_Entity, u"کد انبار"_s));
}

Refused TFirstAsset_Get_FRM::StoreUsedOnce()
{
    const bool used =
        m_context.data.ValidateGoodFirstAsset_Insert(m_context.copy.Key(), m_ui->Store_Entity->Code(), m_row.Radif);
    return host::When(used, host::Repeated(m_ui->Store_Entity, u"انبار"_s, u"موجودی اول دوره"_s));
}

Refused TFirstAsset_Get_FRM::StockStaysPositive() const
{
    if (!m_host.settings.SettingRecord().ControlNegativeStock)
        return {};
    // A store keeps what any row leaves in it. A row that moves leaves its store to another one, which may come yet, by
    // way of a third store when two are exchanged: the save of the good judges all rows as they stand then.
    const int movedFrom = m_row.StoreCode == m_ui->Store_Entity->Code() ? 0 : m_row.StoreCode;
    QHash<int, goods::Quantity> before;
    QHash<int, goods::Quantity> after{{m_ui->Store_Entity->Code(), m_ui->Quantities->Amounts().first}};
    for (const TGoodFirstAsset_Rec &row : m_context.copy.Rows()) {
        before[row.StoreCode] += row.Amount1;
        if (row.Radif != m_row.Radif)
            after[row.StoreCode] += row.Amount1;
    }
    for (const TGoodFirstAsset_Rec &saved : m_context.copy.Saved()) {
        const goods::Quantity left = after.value(saved.StoreCode);
        if (saved.StoreCode != movedFrom && left < saved.Amount1 && left < before.value(saved.StoreCode) &&
            !m_host.stock.Check_TockMinus(goods::NegativeStockProbe(m_context.good.code, saved.StoreCode, left),
                                          m_context.data.GetFirstPeriodVoucherDate()))
            return host::ToldAlready(m_ui->Quantities->QuantityEdit());
    }
    return {};
}

void TFirstAsset_Get_FRM::Write()
{
    const goods::UnitAmounts amounts = m_ui->Quantities->Amounts();
    m_row.StoreCode = m_ui->Store_Entity->Code();
    m_row.Amount1 = amounts.first;
    m_row.Amount2 = amounts.second;
    m_row.Comment = m_ui->Comment_EDT->text();
    if (Mode() == host::TFormMode::New)
        m_context.copy.Insert(m_row);
    else
        m_context.copy.Update(m_row);
    m_saved = true;
    SetKey(m_row.Radif);
}

void TFirstAsset_Get_FRM::FormClose()
{
    // What was entered for the row goes with the row that was not saved.
    if (!m_saved)
        m_context.details.Restore();
    m_context.details.Forget();
    TBaseGet_FRM::FormClose();
}

QString TFirstAsset_Get_FRM::PrepareRecoveryQuery() const
{
    return TGood_DM::FirstAsset_RecoveryText(m_row.ID);
}

QWidget *TFirstAsset_Get_FRM::FirstControl() const
{
    return m_ui->Store_Entity;
}
