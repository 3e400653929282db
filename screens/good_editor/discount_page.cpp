#include "screens/good_editor/discount_page.h"

#include "host/look/theme.h"
#include "ui_discount_page.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

/// Pixels; longer titles are cut, and whole in the tool tip.
constexpr int WidestCaption = 150;

} // namespace

DiscountPage::DiscountPage(QWidget *parent) : QWidget(parent), m_ui(std::make_unique<Ui::DiscountPage>())
{
    m_ui->setupUi(this);
    m_sell = std::make_unique<DiscountSide>(DiscountSide::Edits{m_ui->Discount_Sell_1_EDT, m_ui->Discount_Sell_2_EDT,
                                                                m_ui->Discount_Sell_3_EDT, m_ui->Discount_Sell_4_EDT},
                                            m_ui->Default_Discount_Sell_CMB);
    m_buy = std::make_unique<DiscountSide>(DiscountSide::Edits{m_ui->Discount_Buy_1_EDT, m_ui->Discount_Buy_2_EDT,
                                                               m_ui->Discount_Buy_3_EDT, m_ui->Discount_Buy_4_EDT},
                                           m_ui->Default_Discount_Buy_CMB);
    m_tax =
        new LevyChoice(m_ui->TaxGlobalSetting_RB, m_ui->TaxPercent_RB, m_ui->TaxExempt_RB, m_ui->TaxPercent_edt, this);
    m_toll = new LevyChoice(m_ui->ChargeGlobalSetting_RB, m_ui->ChargePercent_RB, m_ui->ChargeExempt_RB,
                            m_ui->ChargePercent_edt, this);
    for (LevyChoice *levy : {m_tax, m_toll})
        connect(levy, &LevyChoice::Changed, this, &DiscountPage::LevyChanged);
    SetTitles({});
}

DiscountPage::~DiscountPage() = default;

void DiscountPage::SetTitles(const QStringList &titles)
{
    m_captions = DiscountSide::Captions(titles, u"تخفیف نوع %1"_s);
    for (int number = 1; number <= m_captions.size(); ++number) {
        const QString &caption = m_captions.at(number - 1);
        for (const QString &side : {u"Sell"_s, u"Buy"_s}) {
            auto *label = findChild<QLabel *>(u"Discount_%1_%2_LBL"_s.arg(side).arg(number));
            label->setTextFormat(Qt::PlainText);
            QString shown = label->fontMetrics().elidedText(caption, Qt::ElideRight, WidestCaption);
            label->setText(shown.replace(u'&', u"&&"_s) + u" :"_s);
            label->setToolTip(shown == caption ? QString() : host::theme::PlainToolTip(caption));
        }
    }
    m_sell->SetCaptions(m_captions);
    m_buy->SetCaptions(m_captions);
}

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
