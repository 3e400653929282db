#include "screens/bulk_changes/group_discount.h"

#include "host/controls/number_text.h"
#include "screens/bulk_changes/bulk_order.h"
#include "ui_group_discount.h"

#include <QScopedValueRollback>

using namespace Qt::StringLiterals;

using goods::GroupDiscount;

bool TDiscount_Edit_Group_FRM::Ticked::Any() const
{
    return defaultRate->isChecked() ||
           std::any_of(rates.cbegin(), rates.cend(), [](const QCheckBox *rate) { return rate->isChecked(); });
}

QStringList TDiscount_Edit_Group_FRM::Ticked::Text(const QString &side) const
{
    QStringList text;
    const DiscountSide::Rates typed = values.Values();
    for (size_t i = 0; i < rates.size(); ++i)
        if (rates[i]->isChecked())
            text << u"%1 «%2»: %3٪"_s.arg(side, captions.at(static_cast<qsizetype>(i)),
                                          host::DisplayNumber(host::QuantityToText(typed[i])));
    if (defaultRate->isChecked())
        text << u"پیش فرض %1: «%2»"_s.arg(side, captions.at(values.DefaultNumber() - 1));
    return text;
}

TDiscount_Edit_Group_FRM::TDiscount_Edit_Group_FRM(host::Host &host, goods::BulkValues &changes)
    : TBaseGet_FRM(host, host::TSoftwarePart::Goods), m_ui(std::make_unique<Ui::TDiscount_Edit_Group_FRM>()),
      m_changes(changes)
{
    m_ui->setupUi(Content());
    SetTitle(u"تنظیم گروهی تخفیف های کالا"_s);
    const DiscountSide::Edits sell{m_ui->Discount_Sell_1_EDT, m_ui->Discount_Sell_2_EDT, m_ui->Discount_Sell_3_EDT,
                                   m_ui->Discount_Sell_4_EDT};
    const DiscountSide::Edits buy{m_ui->Discount_Buy_1_EDT, m_ui->Discount_Buy_2_EDT, m_ui->Discount_Buy_3_EDT,
                                  m_ui->Discount_Buy_4_EDT};
    m_sell = std::make_unique<Ticked>(Ticked{
        {m_ui->Discount_Sell_1_Chk, m_ui->Discount_Sell_2_Chk, m_ui->Discount_Sell_3_Chk, m_ui->Discount_Sell_4_Chk},
        m_ui->Default_Sell_Chk,
        DiscountSide(sell, m_ui->Default_Discount_Sell_CMB)});
    m_buy = std::make_unique<Ticked>(
        Ticked{{m_ui->Discount_Buy_1_Chk, m_ui->Discount_Buy_2_Chk, m_ui->Discount_Buy_3_Chk, m_ui->Discount_Buy_4_Chk},
               m_ui->Default_Buy_Chk,
               DiscountSide(buy, m_ui->Default_Discount_Buy_CMB)});
    BindSide(*m_sell, sell, m_ui->Default_Discount_Sell_CMB);
    BindSide(*m_buy, buy, m_ui->Default_Discount_Buy_CMB);
}

TDiscount_Edit_Group_FRM::~TDiscount_Edit_Group_FRM() = default;

void TDiscount_Edit_Group_FRM::BindSide(const Ticked &side, const DiscountSide::Edits &edits, QComboBox *defaultRate)
{
    for (size_t i = 0; i < edits.size(); ++i)
        connect(side.rates[i], &QCheckBox::toggled, edits[i], &QWidget::setEnabled);
    connect(side.defaultRate, &QCheckBox::toggled, defaultRate, &QWidget::setEnabled);
}

bool TDiscount_Edit_Group_FRM::Change(const goods::GoodsScope &scope, int count)
{
    const QScopedValueRollback during(m_scope, &scope);
    m_ui->Count_LBL->setText(
        u"اعمال تخفیف گروهی بر روی [%1] کالای انتخاب شده"_s.arg(host::DisplayNumber(QString::number(count))));
    return Open({}, host::TFormMode::Edit) == QDialog::Accepted;
}

void TDiscount_Edit_Group_FRM::Load()
{
    m_result = {};
    const QStringList boxes = DiscountSide::Captions(m_host.levels.DiscountLevels(), u"سطح تخفیف %1"_s);
    for (Ticked *side : {m_sell.get(), m_buy.get()}) {
        for (size_t i = 0; i < side->rates.size(); ++i) {
            side->rates[i]->setChecked(false);
            side->rates[i]->setText(QString(boxes.at(static_cast<qsizetype>(i))).replace(u'&', u"&&"_s));
        }
        side->captions = boxes;
        side->values.SetCaptions(boxes);
        side->defaultRate->setChecked(false);
        side->values.Show({}, 0);
    }
}

QWidget *TDiscount_Edit_Group_FRM::FirstControl() const
{
    return m_ui->Discount_Sell_1_Chk;
}

void TDiscount_Edit_Group_FRM::BeforeChecks()
{
    m_sell->values.ZeroWhenEmpty();
    m_buy->values.ZeroWhenEmpty();
}

std::vector<host::Check> TDiscount_Edit_Group_FRM::Validate()
{
    const auto defaultChosen = [](const Ticked &side, const QString &caption) {
        return side.defaultRate->isChecked() ? side.values.CheckDefault(caption) : host::Refused();
    };
    return {
        {u"RatesInRange"_s, [this] { return DiscountSide::CheckRates(m_sell->values, m_buy->values); }},
        {u"DefaultBuyChosen"_s, [this, defaultChosen] { return defaultChosen(*m_buy, u"تخفیف پیش فرض خرید"_s); }},
        {u"DefaultSellChosen"_s, [this, defaultChosen] { return defaultChosen(*m_sell, u"تخفیف پیش فرض فروش"_s); }},
        {u"AnythingTicked"_s,
         [this] {
             return host::When(
                 !m_sell->Any() && !m_buy->Any(),
                 host::Required(m_ui->Discount_Sell_1_Chk, u"حداقل یکی از گزینه ها را برای اصلاح انتخاب نمایید"_s));
         }},
    };
}

GroupDiscount TDiscount_Edit_Group_FRM::Chosen() const
{
    GroupDiscount chosen;
    for (size_t i = 0; i < chosen.sell.size(); ++i) {
        chosen.sellTicked[i] = m_sell->rates[i]->isChecked();
        chosen.buyTicked[i] = m_buy->rates[i]->isChecked();
    }
    chosen.defaultSellTicked = m_sell->defaultRate->isChecked();
    chosen.defaultBuyTicked = m_buy->defaultRate->isChecked();
    chosen.sell = m_sell->values.Values();
    chosen.buy = m_buy->values.Values();
    chosen.defaultSell = m_sell->values.DefaultNumber();
    chosen.defaultBuy = m_buy->values.DefaultNumber();
    return chosen;
}

void TDiscount_Edit_Group_FRM::Write()
{
    bulk_changes::ProgressWindow progress(Title(), this);
    const QString title = (m_sell->Text(u"فروش"_s) + m_buy->Text(u"خرید"_s)).join(u"، "_s);
    m_result =
        m_changes.ApplyGroupDiscount(*m_scope, Chosen(), bulk_changes::Order(m_host, title, progress.Callback()));
}

void TDiscount_Edit_Group_FRM::Proceed()
{
    if (m_result.outcome == goods::BulkResult::Outcome::Cancelled)
        SetIsSaved(false);
    else
        TBaseGet_FRM::Proceed();
}
