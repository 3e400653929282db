#include "screens/good_editor/discount_side.h"

#include <QComboBox>

using namespace Qt::StringLiterals;

DiscountSide::DiscountSide(const Edits &edits, QComboBox *defaultRate) : m_edits(edits), m_default(defaultRate)
{
    for (size_t number = 1; number <= m_edits.size(); ++number)
        m_default->addItem(u"تخفیف نوع %1"_s.arg(number));
}

void DiscountSide::Show(const Rates &rates, int defaultNumber)
{
    for (size_t i = 0; i < m_edits.size(); ++i)
        m_edits[i]->SetNumber(rates[i]);
    const bool known = defaultNumber >= 1 && defaultNumber <= m_default->count();
    m_default->setCurrentIndex(known ? defaultNumber - 1 : -1);
}

DiscountSide::Rates DiscountSide::Values() const
{
    Rates rates;
    for (size_t i = 0; i < m_edits.size(); ++i)
        rates[i] = m_edits[i]->Number();
    return rates;
}

int DiscountSide::DefaultNumber() const
{
    return m_default->currentIndex() + 1;
}

void DiscountSide::ZeroWhenEmpty()
{
    for (host::NumericEdit *edit : m_edits)
        edit->ZeroWhenEmpty();
}

host::Refused DiscountSide::CheckRates(const QStringList &captions) const
{
    for (size_t i = 0; i < m_edits.size(); ++i) {
        const host::Quantity rate = m_edits[i]->Number();
        if (!m_edits[i]->isEnabled() || (rate >= 0 && rate <= 100))
            continue;
        return host::Refusal{m_edits[i], [caption = captions.at(static_cast<qsizetype>(i))](
                                             host::MessageService &messages) { messages.MsgPercent(caption); }};
    }
    return {};
}

host::Refused DiscountSide::CheckDefault(const QString &caption) const
{
    if (m_default->currentIndex() >= 0)
        return {};
    return host::Required(m_default, caption);
}
