#include "screens/good_editor/discount_page.h"

#include "ui_discount_page.h"

using namespace Qt::StringLiterals;

DiscountPage::DiscountPage(QWidget *parent) : QWidget(parent), m_ui(std::make_unique<Ui::DiscountPage>())
{
    m_ui->setupUi(this);
    const QStringList titles{u"تخفیف نوع 1"_s, u"تخفیف نوع 2"_s, u"تخفیف نوع 3"_s, u"تخفیف نوع 4"_s};
    m_sell = std::make_unique<DiscountSide>(DiscountSide::Edits{m_ui->Discount_Sell_1_EDT, m_ui->Discount_Sell_2_EDT,
                                                                m_ui->Discount_Sell_3_EDT, m_ui->Discount_Sell_4_EDT},
                                            m_ui->Default_Discount_Sell_CMB, titles);
    m_buy = std::make_unique<DiscountSide>(DiscountSide::Edits{m_ui->Discount_Buy_1_EDT, m_ui->Discount_Buy_2_EDT,
                                                               m_ui->Discount_Buy_3_EDT, m_ui->Discount_Buy_4_EDT},
                                           m_ui->Default_Discount_Buy_CMB, titles);
    m_tax =
        new LevyChoice(m_ui->TaxGlobalSetting_RB, m_ui->TaxPercent_RB, m_ui->TaxExempt_RB, m_ui->TaxPercent_edt, this);
    m_toll = new LevyChoice(m_ui->ChargeGlobalSetting_RB, m_ui->ChargePercent_RB, m_ui->ChargeExempt_RB,
                            m_ui->ChargePercent_edt, this);
    for (LevyChoice *levy : {m_tax, m_toll})
        connect(levy, &LevyChoice::Changed, this, &DiscountPage::LevyChanged);
}

DiscountPage::~DiscountPage() = default;

void DiscountPage::Clear()
{
    Show(TGoodInfoRec());
}

void DiscountPage::Show(const TGoodInfoRec &rec)
{
    m_tax->Show(goods::Loaded({rec.TaxExempt, rec.TaxPercent}));
    m_toll->Show(goods::Loaded({rec.ChargeExempt, rec.ChargePercent}));
    m_ui->GroupDiscount_CHK->setChecked(rec.GroupDiscount);
    m_sell->Show(rec.Price.Discount_Sell, rec.Price.Default_Discount_Sell_Number);
    m_buy->Show(rec.Price.Discount_Buy, rec.Price.Default_Discount_Buy_Number);
}

void DiscountPage::Store(TGoodInfoRec &rec) const
{
    const goods::StoredLevy tax = goods::Stored(m_tax->Value());
    rec.TaxExempt = tax.exempt;
    rec.TaxPercent = tax.percent;
    const goods::StoredLevy toll = goods::Stored(m_toll->Value());
    rec.ChargeExempt = toll.exempt;
    rec.ChargePercent = toll.percent;
    rec.GroupDiscount = m_ui->GroupDiscount_CHK->isChecked();
    rec.Price.Discount_Sell = m_sell->Values();
    rec.Price.Default_Discount_Sell_Number = m_sell->DefaultNumber();
    rec.Price.Discount_Buy = m_buy->Values();
    rec.Price.Default_Discount_Buy_Number = m_buy->DefaultNumber();
}

bool DiscountPage::BothExempt() const
{
    return m_tax->IsExempt() && m_toll->IsExempt();
}

host::Refused DiscountPage::CheckLevies() const
{
    if (host::Refused refused = m_tax->CheckPercent(u"درصد مالیات"_s))
        return refused;
    return m_toll->CheckPercent(u"درصد عوارض"_s);
}

void DiscountPage::ZeroWhenEmpty()
{
    m_sell->ZeroWhenEmpty();
    m_buy->ZeroWhenEmpty();
}

host::Refused DiscountPage::CheckRates() const
{
    return DiscountSide::CheckRates(*m_sell, *m_buy);
}

host::Refused DiscountPage::CheckDefaults() const
{
    if (host::Refused refused = m_buy->CheckDefault(u"تخفیف پیش فرض خرید"_s))
        return refused;
    return m_sell->CheckDefault(u"تخفیف پیش فرض فروش"_s);
}
