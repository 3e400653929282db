#include "screens/good_editor/discount_side.h"

#include <QtWidgets/QComboBox>

DiscountSide::DiscountSide(const Edits &edits, QComboBox *defaultRate) : edits_(edits), default_(defaultRate)
{
    for (size_t number = 1; number <= edits_.size(); ++number)
        default_->addItem(QStringLiteral("تخفیف نوع %1").arg(number));
}

void DiscountSide::Show(const Rates &rates, int defaultNumber)
{
    for (size_t i = 0; i < edits_.size(); ++i)
        edits_[i]->SetNumber(rates[i]);
    const bool known = defaultNumber >= 1 && defaultNumber <= default_->count();
    default_->setCurrentIndex(known ? defaultNumber - 1 : -1);
}

DiscountSide::Rates DiscountSide::Values() const
{
    Rates rates;
    for (size_t i = 0; i < edits_.size(); ++i)
        rates[i] = edits_[i]->Number();
    return rates;
}

int DiscountSide::DefaultNumber() const
{
    return default_->currentIndex() + 1;
}

void DiscountSide::ZeroWhenEmpty()
{
    for (host::NumericEdit *edit : edits_)
        edit->ZeroWhenEmpty();
}

goods::Refused DiscountSide::CheckRates(const QStringList &captions) const
{
    for (size_t i = 0; i < edits_.size(); ++i) {
        const host::Quantity rate = edits_[i]->Number();
        if (!edits_[i]->isEnabled() || (rate >= 0 && rate <= 100))
            continue;
        return host::Refusal{edits_[i], [caption = captions.at(static_cast<qsizetype>(i))](
                                            host::MessageService &messages) { messages.MsgPercent(caption); }};
    }
    return {};
}

goods::Refused DiscountSide::CheckDefault(const QString &caption) const
{
    if (default_->currentIndex() >= 0)
        return {};
    return goods::RequiredField(default_, caption);
}
