#include "screens/bulk_changes/update_price.h"

#include "data/goods/good_prices.h"
#include "host/controls/number_text.h"
#include "ui_update_price.h"

#include <QEvent>

#include <utility>

using namespace Qt::StringLiterals;

using goods::PriceKind;

namespace {

constexpr int LastLevel = 10; // "default" (0) is no level of its own
constexpr std::array Roundings = {0, 10, 100, 1000, 10000};
constexpr std::array Directions = {+1, -1}; // in the order of the choosers

} // namespace

TGood_UpdatePrice_FRM::TGood_UpdatePrice_FRM(host::Host &host, goods::Prices &prices)
    : TAsk_FRM(host, u"تغییر قیمت کالاها"_s), m_ui(std::make_unique<Ui::TGood_UpdatePrice_FRM>()), m_prices(prices)
{
    m_ui->setupUi(Content());
    for (const int rounding : Roundings)
        m_ui->Rounding_CMB->addItem(
            rounding == 0 ? u"گرد نشود"_s
                          : u"به نزدیک‌ترین %1"_s.arg(host::DisplayNumber(QString::number(rounding))),
            rounding);
    connect(m_ui->CostType_CMD, &QComboBox::currentIndexChanged, this, &TGood_UpdatePrice_FRM::ShowKind);
    for (const auto &[option, label] : {std::pair(m_ui->Option1_RB, m_ui->Option1_LBL),
                                        {m_ui->Option1_RB, m_ui->Option1_End_LBL},
                                        {m_ui->Option2_RB, m_ui->Option2_LBL},
                                        {m_ui->Option2_RB, m_ui->Option2_End_LBL},
                                        {m_ui->Option3_RB, m_ui->Option3_LBL},
                                        {m_ui->Option3_RB, m_ui->Option3_Middle_LBL},
                                        {m_ui->Option3_RB, m_ui->Option3_End_LBL}}) {
        label->installEventFilter(this);
        label->setProperty("option", QVariant::fromValue(static_cast<QObject *>(option)));
    }
    // The buttons stand in one box each with its sentence, and choose among each other.
    for (QRadioButton *option : {m_ui->Option1_RB, m_ui->Option2_RB, m_ui->Option3_RB})
        connect(option, &QRadioButton::toggled, this, &TGood_UpdatePrice_FRM::ShowOption);
}

TGood_UpdatePrice_FRM::~TGood_UpdatePrice_FRM() = default;

void TGood_UpdatePrice_FRM::FormShow()
{
    m_instruction = {};
    QList<host::Entity> levels;
    m_prices.CostLevel_Sell_Fill(levels, 0);
    levels.removeIf([](const host::Entity &level) { return level.Code < 1 || level.Code > LastLevel; });
    m_ui->CostColumnSelect_SEF->SetItems(levels);
    for (QComboBox *choice : {m_ui->CostType_CMD, m_ui->Type_Option1_CMB, m_ui->Type_Option2_CMB,
                              m_ui->Type_Option3_CMB, m_ui->Rounding_CMB})
        choice->setCurrentIndex(0);
    m_ui->Percent_Option2_EDT->setText(u"0"_s);
    m_ui->Price_Option3_EDT->setText(u"0"_s);
    m_ui->Option1_RB->setChecked(true);
    m_ui->CostColumnSelect_SEF->Clear();
    ShowKind();
    ShowOption();
}

QWidget *TGood_UpdatePrice_FRM::FirstControl() const
{
    return m_ui->CostType_CMD;
}

bool TGood_UpdatePrice_FRM::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress)
        if (auto *option = qobject_cast<QRadioButton *>(watched->property("option").value<QObject *>()))
            option->setChecked(true);
    return TAsk_FRM::eventFilter(watched, event);
}

/// The consumer price has no levels.
void TGood_UpdatePrice_FRM::ShowKind()
{
    host::EntityPicker *level = m_ui->CostColumnSelect_SEF;
    const bool consumer = m_ui->CostType_CMD->currentIndex() == static_cast<int>(PriceKind::Consumer);
    if (consumer)
        level->ShowInstead(u"قیمت مصرف کننده"_s);
    else if (!level->isAncestorOf(focusWidget()))
        level->Clear();
    level->setEnabled(!consumer);
}

int TGood_UpdatePrice_FRM::Option() const
{
    if (m_ui->Option2_RB->isChecked())
        return 2;
    return m_ui->Option3_RB->isChecked() ? 3 : 1;
}

void TGood_UpdatePrice_FRM::ShowOption()
{
    const int option = Option();
    m_ui->Type_Option1_CMB->setEnabled(option == 1);
    m_ui->Percent_Option2_EDT->setEnabled(option == 2);
    m_ui->Type_Option2_CMB->setEnabled(option == 2);
    m_ui->Price_Option3_EDT->setEnabled(option == 3);
    m_ui->Type_Option3_CMB->setEnabled(option == 3);
}

void TGood_UpdatePrice_FRM::BeforeChecks()
{
    m_ui->CostColumnSelect_SEF->Resolve(true);
    m_ui->Percent_Option2_EDT->ZeroWhenEmpty();
    m_ui->Price_Option3_EDT->ZeroWhenEmpty();
}

std::vector<host::Check> TGood_UpdatePrice_FRM::Validate()
{
    const bool consumer = m_ui->CostType_CMD->currentIndex() == static_cast<int>(PriceKind::Consumer);
    const auto below = [](host::NumericEdit *edit, host::Quantity limit) {
        return host::When(edit->isEnabled() && edit->Number() >= limit,
                          host::Warning(edit, u"عدد وارد شده بزرگتر از حد مجاز است."_s));
    };
    return {{u"LevelChosen"_s,
             [this, consumer] {
                 return host::When(!consumer && m_ui->CostColumnSelect_SEF->Code() == 0,
                                   host::Required(m_ui->CostColumnSelect_SEF, u"سطح قیمتی"_s));
             }},
            {u"PercentInRange"_s, [this, below] { return below(m_ui->Percent_Option2_EDT, goods::PercentLimit); }},
            {u"AmountInRange"_s, [this, below] { return below(m_ui->Price_Option3_EDT, goods::AmountLimit); }}};
}

void TGood_UpdatePrice_FRM::Write()
{
    m_instruction = {};
    m_instruction.kind = static_cast<PriceKind>(m_ui->CostType_CMD->currentIndex());
    if (m_instruction.kind != PriceKind::Consumer)
        m_instruction.level = m_ui->CostColumnSelect_SEF->Code();
    m_instruction.option = Option();
    m_instruction.rounding = m_ui->Rounding_CMB->currentData().toInt();
    const auto direction = [](const QComboBox *choice) {
        return Directions.at(static_cast<size_t>(choice->currentIndex()));
    };
    switch (m_instruction.option) {
    case 2:
        m_instruction.value = m_ui->Percent_Option2_EDT->Number();
        m_instruction.direction = direction(m_ui->Type_Option2_CMB);
        break;
    case 3:
        m_instruction.value = m_ui->Price_Option3_EDT->Number();
        m_instruction.direction = direction(m_ui->Type_Option3_CMB);
        break;
    default:
        m_instruction.value = m_ui->Type_Option1_CMB->currentIndex();
    }
    m_text = Text();
}

QString TGood_UpdatePrice_FRM::Text() const
{
    QString text = m_ui->CostType_CMD->currentText();
    if (m_instruction.kind != PriceKind::Consumer)
        text += u" «%1»"_s.arg(m_ui->CostColumnSelect_SEF->Name());
    const auto number = [this] { return host::DisplayNumber(host::QuantityToText(m_instruction.value)); };
    const QString change[] = {
        m_ui->Type_Option1_CMB->currentText(),
        number() + u"٪ "_s + m_ui->Type_Option2_CMB->currentText(),
        number() + u' ' + m_ui->Type_Option3_CMB->currentText(),
    };
    text += u": "_s + change[m_instruction.option - 1];
    if (m_instruction.rounding > 0)
        text += u"، گرد "_s + m_ui->Rounding_CMB->currentText();
    return text;
}
