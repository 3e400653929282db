#pragma once

#include "gooddetail/amount_entry.h"

#include <QObject>
#include <QString>

#include <functional>

class QLabel;

namespace host {
class NumericEdit;
}

namespace good_detail {

/// An amount in its input, to be read as a person would write it: one that a ratio gave fills all nine decimals and is
/// shown with the four of the lists. Where that text stands it is the whole amount; any other is what was typed.
class ShownAmount
{
public:
    /// `edit` outlives the object.
    explicit ShownAmount(host::NumericEdit *edit = nullptr) : m_edit(edit) {}

    host::NumericEdit *Edit() const { return m_edit; }
    void Show(host::Quantity amount);
    host::Quantity Number() const;

private:
    host::NumericEdit *m_edit;
    QString m_text; ///< of `m_amount`, where that is not all of it
    host::Quantity m_amount = 0;
};

/// The four inputs in which amounts are typed: which of them a unit type uses, what they are called, and what leaving
/// one computes of the others. It owns none of them.
class TypedInputs : public QObject
{
    Q_OBJECT

public:
    struct Input
    {
        QLabel *Caption;
        host::NumericEdit *Edit;
    };
    /// What the inputs show after the one at `changed` was left with another number.
    using Arithmetic = std::function<TypedAmounts(const TypedAmounts &typed, int changed)>;

    TypedInputs(const std::array<Input, 4> &inputs, Arithmetic recomputed, QObject *parent);

    /// Shows the inputs of a layout; the others are hidden.
    void SetUp(const QList<AmountInput> &layout);
    const QList<AmountInput> &Layout() const { return m_layout; }

    /// As they stand, before what leaving an input would compute.
    TypedAmounts Typed() const;
    /// The amount of one part, as it stands; 0 when the layout has none.
    host::Quantity Number(AmountPart part) const;
    void Show(const TypedAmounts &typed);
    /// Computes what leaving the inputs would.
    void Take();

    /// The input that holds a part; null when the layout has none.
    host::NumericEdit *Edit(AmountPart part) const;
    /// Its caption for messages.
    QString Caption(AmountPart part) const;
    host::NumericEdit *First() const { return m_amounts.front().Edit(); }
    /// The last in the order of Tab.
    host::NumericEdit *Last() const;

signals:
    /// The user typed, or leaving an input computed another.
    void Edited();

private:
    std::array<QLabel *, 4> m_captions;
    std::array<ShownAmount, 4> m_amounts;
    Arithmetic m_recomputed;
    QList<AmountInput> m_layout;
};

} // namespace good_detail
