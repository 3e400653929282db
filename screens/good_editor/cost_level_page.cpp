#include "screens/good_editor/cost_level_page.h"

#include "ui_cost_level_page.h"

using namespace Qt::StringLiterals;

CostLevelPage::CostLevelPage(host::Host &host, goods::Prices &data, const host::Boundary &run, QWidget *parent)
    : QWidget(parent), m_host(host), m_data(data), m_ui(std::make_unique<Ui::CostLevelPage>())
{
    m_ui->setupUi(this);
    m_sell = new CostLevelSide(goods::Prices::Side::Sell, data, m_ui->SellDetails_GRD, m_ui->SellDefault_CMB,
                               m_ui->SellHint_LBL, run, this);
    m_buy = new CostLevelSide(goods::Prices::Side::Buy, data, m_ui->BuyDetails_GRD, m_ui->BuyDefault_CMB,
                              m_ui->BuyHint_LBL, run, this);
    for (CostLevelSide *side : {m_sell, m_buy})
        connect(side, &CostLevelSide::Changed, this, &CostLevelPage::Changed);
    m_sellFinal = new FinalPriceSwitch(m_ui->Cost_with_Tax_Sell_CHK, m_ui->Cost_with_Tax_Sell_LBL,
                                       m_ui->Cost_with_Tax_Sell_ASB, this);
    m_buyFinal = new FinalPriceSwitch(m_ui->Cost_with_Tax_Buy_CHK, m_ui->Cost_with_Tax_Buy_LBL,
                                      m_ui->Cost_with_Tax_Buy_ASB, this);
    connect(m_sellFinal, &FinalPriceSwitch::TurnedOn, this, &CostLevelPage::WarnOfSettings);
}

CostLevelPage::~CostLevelPage() = default;

void CostLevelPage::Open(int goodCode, host::TFormMode mode)
{
    m_isNew = mode == host::TFormMode::New;
    if (mode != host::TFormMode::Review)
        m_data.CostLevel_Prepare(goodCode, static_cast<int>(mode));
    m_sell->Open(goodCode, mode);
    m_buy->Open(goodCode, mode);
    for (FinalPriceSwitch *toggle : {m_sellFinal, m_buyFinal})
        toggle->SetVisible(m_host.settings.SettingRecord().FinalPrices);
}

void CostLevelPage::MoveTo(int goodCode)
{
    m_sell->MoveTo(goodCode);
    m_buy->MoveTo(goodCode);
}

void CostLevelPage::ReloadTitles()
{
    m_sell->ReloadTitles();
    m_buy->ReloadTitles();
}

void CostLevelPage::Show(const TGoodInfoRec &rec)
{
    m_sellFinal->Show(rec.Tax_In_SellCosts);
    m_buyFinal->Show(rec.Tax_In_BuyCosts);
}

void CostLevelPage::Store(TGoodInfoRec &rec) const
{
    rec.Tax_In_SellCosts = m_sellFinal->IsOn();
    rec.Tax_In_BuyCosts = m_buyFinal->IsOn();
}

void CostLevelPage::SetBothExempt(bool exempt)
{
    m_sellFinal->SetBothExempt(exempt, m_isNew);
    m_buyFinal->SetBothExempt(exempt, m_isNew);
}

void CostLevelPage::SetReadOnly(bool readOnly)
{
    m_sell->SetReadOnly(readOnly);
    m_buy->SetReadOnly(readOnly);
}

void CostLevelPage::Post()
{
    m_sell->Post();
    m_buy->Post();
}

host::Refused CostLevelPage::CheckDefaults()
{
    for (host::Grid *grid : {m_ui->SellDetails_GRD, m_ui->BuyDetails_GRD})
        // Leaving its editor hands the price that is being typed to the row.
        if (grid->hasFocus() || grid->isAncestorOf(QApplication::focusWidget()))
            grid->setFocus();
    Post();
    if (host::Refused refused = m_sell->CheckDefault())
        return refused;
    return m_buy->CheckDefault();
}

void CostLevelPage::WarnOfSettings()
{
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    if (settings.RowDiscounts && settings.ValueAddedTax)
        return;
    m_host.messages.ShowMessage(
        u"کاربر گرامی جهت استفاده درست از این قسمت باید از تنظیمات نرم افزار تخفیف سطری و عوارض و مالیات بر ارزش افزوده فعال باشند"_s,
        host::MessageIcon::Warning);
}
