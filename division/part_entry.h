#pragma once

#include "division/part_amounts.h"

#include <QObject>

class QLabel;

namespace host {
class NumericEdit;
}

namespace division {

/// The four inputs in which a part is typed: which of them are used, what they are called, and what leaving one
/// computes of the others.
class PartEntry : public QObject
{
    Q_OBJECT

public:
    struct Input
    {
        QLabel *Caption;
        host::NumericEdit *Edit;
    };

    PartEntry(const std::array<Input, 4> &inputs, QObject *parent);

    /// Shows the inputs of a unit type, empty.
    void SetUp(int unitType, const QString &unit2, const good_detail::UnitRatio &ratio);
    void Show(const goods::DividedPieces &pieces);
    /// Nothing of one piece.
    void Clear() { Show({}); }

    /// As it stands, before what leaving the input would compute.
    goods::DividedPieces Pieces() const;
    /// Computes what leaving the inputs would.
    void Take();
    /// The first field without which there is no part; call Take() before.
    std::optional<goods::PartField> Empty() const;
    /// Something was typed that is not stored.
    bool IsTyped() const;

    host::NumericEdit *Edit(goods::PartField field) const;
    /// For messages.
    QString Caption(goods::PartField field) const;
    host::NumericEdit *First() const { return m_inputs.front().Edit; }
    host::NumericEdit *Last() const;

signals:
    /// The user typed, or leaving an input computed another.
    void Edited();

private:
    good_detail::TypedAmounts Typed() const;
    void ShowTyped(const good_detail::TypedAmounts &typed);
    size_t PlaceOf(goods::PartField field) const;

    std::array<Input, 4> m_inputs;
    QList<good_detail::AmountInput> m_layout;
    int m_unitType = good_detail::OneUnit;
    good_detail::UnitRatio m_ratio;
};

} // namespace division
