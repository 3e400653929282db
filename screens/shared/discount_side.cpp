#include "screens/shared/discount_side.h"

#include <QComboBox>

using namespace Qt::StringLiterals;

DiscountSide::DiscountSide(const Edits &edits, QComboBox *defaultRate) : m_edits(edits), m_default(defaultRate)
{
    for (size_t number = 1; number <= m_edits.size(); ++number)
        m_default->addItem(QString());
}

QStringList DiscountSide::Captions(const QStringList &titles, const QString &fallback)
{
    QStringList captions;
    for (int i = 0; i < static_cast<int>(Edits().size()); ++i) {
        const QString title = titles.value(i).trimmed();
        captions << (title.isEmpty() ? fallback.arg(i + 1) : title);
    }
    return captions;
}

void DiscountSide::SetCaptions(const QStringList &captions)
{
    for (int i = 0; i < m_default->count(); ++i)
        m_default->setItemText(i, captions.at(i));
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

host::Refused DiscountSide::CheckRates(const DiscountSide &sell, const DiscountSide &buy)
{
    // A refused rate goes by its number, whatever title it has.
    const QStringList captions = Captions({}, u"تخفیف نوع %1"_s);
    if (host::Refused refused = buy.CheckRates(captions))
        return refused;
    const QString &fourth = captions.constLast();
    // Users know the refusal of any sale rate by the name of the fourth.
    return sell.CheckRates({fourth, fourth, fourth, fourth});
}

host::Refused DiscountSide::CheckDefault(const QString &caption) const
{
    if (m_default->currentIndex() >= 0)
        return {};
    return host::Required(m_default, caption);
}
