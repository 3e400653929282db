#include "screens/good_editor/discount_page.h"

#include "ui_discount_page.h"

DiscountPage::DiscountPage(QWidget *parent) : QWidget(parent), ui_(std::make_unique<Ui::DiscountPage>())
{
    ui_->setupUi(this);
    sell_ = std::make_unique<DiscountSide>(DiscountSide::Edits{ui_->Discount_Sell_1_EDT, ui_->Discount_Sell_2_EDT,
                                                               ui_->Discount_Sell_3_EDT, ui_->Discount_Sell_4_EDT},
                                           ui_->Default_Discount_Sell_CMB);
    buy_ = std::make_unique<DiscountSide>(DiscountSide::Edits{ui_->Discount_Buy_1_EDT, ui_->Discount_Buy_2_EDT,
                                                              ui_->Discount_Buy_3_EDT, ui_->Discount_Buy_4_EDT},
                                          ui_->Default_Discount_Buy_CMB);
    tax_ = new LevyChoice(ui_->TaxGlobalSetting_RB, ui_->TaxPercent_RB, ui_->TaxExempt_RB, ui_->TaxPercent_edt, this);
    toll_ = new LevyChoice(ui_->ChargeGlobalSetting_RB, ui_->ChargePercent_RB, ui_->ChargeExempt_RB,
                           ui_->ChargePercent_edt, this);
    for (LevyChoice *levy : {tax_, toll_})
        connect(levy, &LevyChoice::Changed, this, &DiscountPage::LevyChanged);
}

DiscountPage::~DiscountPage() = default;

void DiscountPage::Clear()
{
    Show(TGoodInfoRec());
}

void DiscountPage::Show(const TGoodInfoRec &rec)
{
    tax_->Show(goods::Loaded({rec.TaxExempt, rec.TaxPercent}));
    toll_->Show(goods::Loaded({rec.ChargeExempt, rec.ChargePercent}));
    ui_->GroupDiscount_CHK->setChecked(rec.GroupDiscount);
    sell_->Show(rec.Price.Discount_Sell, rec.Price.Default_Discount_Sell_Number);
    buy_->Show(rec.Price.Discount_Buy, rec.Price.Default_Discount_Buy_Number);
}

void DiscountPage::Store(TGoodInfoRec &rec) const
{
    const goods::StoredLevy tax = goods::Stored(tax_->Value());
    rec.TaxExempt = tax.exempt;
    rec.TaxPercent = tax.percent;
    const goods::StoredLevy toll = goods::Stored(toll_->Value());
    rec.ChargeExempt = toll.exempt;
    rec.ChargePercent = toll.percent;
    rec.GroupDiscount = ui_->GroupDiscount_CHK->isChecked();
    rec.Price.Discount_Sell = sell_->Values();
    rec.Price.Default_Discount_Sell_Number = sell_->DefaultNumber();
    rec.Price.Discount_Buy = buy_->Values();
    rec.Price.Default_Discount_Buy_Number = buy_->DefaultNumber();
}

bool DiscountPage::BothExempt() const
{
    return tax_->IsExempt() && toll_->IsExempt();
}

goods::Refused DiscountPage::CheckLevies() const
{
    if (goods::Refused refused = tax_->CheckPercent(QStringLiteral("درصد مالیات")))
        return refused;
    return toll_->CheckPercent(QStringLiteral("درصد عوارض"));
}

void DiscountPage::ZeroWhenEmpty()
{
    sell_->ZeroWhenEmpty();
    buy_->ZeroWhenEmpty();
}

goods::Refused DiscountPage::CheckRates() const
{
    const QString fourth = QStringLiteral("تخفیف نوع 4");
    goods::Refused refused = buy_->CheckRates(
        {QStringLiteral("تخفیف نوع 1"), QStringLiteral("تخفیف نوع 2"), QStringLiteral("تخفیف نوع 3"), fourth});
    if (refused)
        return refused;
    // Users know the refusal of any sale rate by the name of the fourth.
    return sell_->CheckRates({fourth, fourth, fourth, fourth});
}

goods::Refused DiscountPage::CheckDefaults() const
{
    if (goods::Refused refused = buy_->CheckDefault(QStringLiteral("تخفیف پیش فرض خرید")))
        return refused;
    return sell_->CheckDefault(QStringLiteral("تخفیف پیش فرض فروش"));
}
