#include "screens/good_editor/cost_level_page.h"

#include "ui_cost_level_page.h"

CostLevelPage::CostLevelPage(host::Host &host, TGood_DM &data, const goods::Boundary &run, QWidget *parent)
    : QWidget(parent), host_(host), data_(data), ui_(std::make_unique<Ui::CostLevelPage>())
{
    ui_->setupUi(this);
    sell_ = new CostLevelSide(CostLevelSide::Sell(), data, ui_->SellDetails_GRD, ui_->SellDefault_CMB,
                              ui_->SellHint_LBL, run, this);
    buy_ = new CostLevelSide(CostLevelSide::Buy(), data, ui_->BuyDetails_GRD, ui_->BuyDefault_CMB, ui_->BuyHint_LBL,
                             run, this);
    for (CostLevelSide *side : {sell_, buy_})
        connect(side, &CostLevelSide::Changed, this, &CostLevelPage::Changed);
    sellFinal_ = new FinalPriceSwitch(ui_->Cost_with_Tax_Sell_CHK, ui_->Cost_with_Tax_Sell_LBL,
                                      ui_->Cost_with_Tax_Sell_ASB, this);
    buyFinal_ =
        new FinalPriceSwitch(ui_->Cost_with_Tax_Buy_CHK, ui_->Cost_with_Tax_Buy_LBL, ui_->Cost_with_Tax_Buy_ASB, this);
    connect(sellFinal_, &FinalPriceSwitch::TurnedOn, this, &CostLevelPage::WarnOfSettings);
}

CostLevelPage::~CostLevelPage() = default;

void CostLevelPage::Open(int goodCode, host::TFormMode mode)
{
    isNew_ = mode == host::TFormMode::New;
    if (mode != host::TFormMode::Review)
        data_.CostLevel_Prepare(goodCode, static_cast<int>(mode));
    sell_->Open(goodCode, mode);
    buy_->Open(goodCode, mode);
    for (FinalPriceSwitch *toggle : {sellFinal_, buyFinal_})
        toggle->SetVisible(host_.settings.SettingRecord().FinalPrices);
}

void CostLevelPage::MoveTo(int goodCode)
{
    sell_->MoveTo(goodCode);
    buy_->MoveTo(goodCode);
}

void CostLevelPage::Show(const TGoodInfoRec &rec)
{
    sellFinal_->Show(rec.Tax_In_SellCosts);
    buyFinal_->Show(rec.Tax_In_BuyCosts);
}

void CostLevelPage::Store(TGoodInfoRec &rec) const
{
    rec.Tax_In_SellCosts = sellFinal_->IsOn();
    rec.Tax_In_BuyCosts = buyFinal_->IsOn();
}

void CostLevelPage::SetBothExempt(bool exempt)
{
    sellFinal_->SetBothExempt(exempt, isNew_);
    buyFinal_->SetBothExempt(exempt, isNew_);
}

void CostLevelPage::SetReadOnly(bool readOnly)
{
    sell_->SetReadOnly(readOnly);
    buy_->SetReadOnly(readOnly);
}

void CostLevelPage::Post()
{
    sell_->Post();
    buy_->Post();
}

goods::Refused CostLevelPage::CheckDefaults()
{
    for (host::Grid *grid : {ui_->SellDetails_GRD, ui_->BuyDetails_GRD})
        // Leaving its editor hands the price that is being typed to the row.
        if (grid->hasFocus() || grid->isAncestorOf(QApplication::focusWidget()))
            grid->setFocus();
    Post();
    if (goods::Refused refused = sell_->CheckDefault())
        return refused;
    return buy_->CheckDefault();
}

void CostLevelPage::WarnOfSettings()
{
    const host::TSettingRecord &settings = host_.settings.SettingRecord();
    if (settings.RowDiscounts && settings.ValueAddedTax)
        return;
    host_.messages.ShowMessage(QStringLiteral("کاربر گرامی جهت استفاده درست از این قسمت باید از تنظیمات نرم افزار "
                                              "تخفیف سطری و عوارض و مالیات بر ارزش افزوده فعال باشند"),
                               host::MessageIcon::Warning);
}
