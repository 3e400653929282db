#pragma once

#include "host/controls/numeric_edit.h"
#include "host/screens/refusals.h"

#include <QStringList>

#include <array>

class QComboBox;

/// The four discount rates of one side, sale or purchase, and the one that documents take by default.
class DiscountSide
{
public:
    using Edits = std::array<host::NumericEdit *, 4>;
    using Rates = std::array<host::Quantity, 4>;

    /// The controls belong to the page.
    DiscountSide(const Edits &edits, QComboBox *defaultRate);

    /// `defaultNumber` 1 to 4; anything else chooses nothing.
    void Show(const Rates &rates, int defaultNumber);
    Rates Values() const;
    int DefaultNumber() const;

    void ZeroWhenEmpty();
    /// `captions`: what the message calls each rate.
    host::Refused CheckRates(const QStringList &captions) const;
    host::Refused CheckDefault(const QString &caption) const;

private:
    Edits m_edits;
    QComboBox *m_default;
};
