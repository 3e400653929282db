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

    /// What the four rates are called: the titles of their levels, or for a level without one `fallback` with its
    /// number for %1.
    static QStringList Captions(const QStringList &titles, const QString &fallback);
    /// The rates by these names where the default is chosen.
    void SetCaptions(const QStringList &captions);

    /// `defaultNumber` 1 to 4; anything else chooses nothing.
    void Show(const Rates &rates, int defaultNumber);
    Rates Values() const;
    int DefaultNumber() const;

    void ZeroWhenEmpty();
    /// Rates outside 0 … 100, those of purchases before those of sales; disabled ones do not count.
    static host::Refused CheckRates(const DiscountSide &sell, const DiscountSide &buy);
    host::Refused CheckDefault(const QString &caption) const;

private:
    host::Refused CheckRates(const QStringList &captions) const;

    Edits m_edits;
    QComboBox *m_default;
};
