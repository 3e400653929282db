#pragma once

#include "division/part_amounts.h"
#include "gooddetail/typed_inputs.h"

namespace division {

/// The inputs in which a part is typed, as the fields of a part.
class PartEntry : public QObject
{
    Q_OBJECT

public:
    PartEntry(const std::array<good_detail::TypedInputs::Input, 4> &inputs, QObject *parent);

    /// Shows the inputs of a unit type, empty.
    void SetUp(int unitType, const QString &unit2, const good_detail::UnitRatio &ratio);
    void Show(const goods::DividedPieces &pieces);
    /// Nothing of one piece.
    void Clear() { Show({}); }

    /// As it stands, before what leaving the input would compute.
    goods::DividedPieces Pieces() const;
    /// Computes what leaving the inputs would.
    void Take() { m_inputs.Take(); }
    /// The first field without which there is no part; call Take() before.
    std::optional<goods::PartField> Empty() const;
    /// Something was typed that is not stored.
    bool IsTyped() const;

    host::NumericEdit *Edit(goods::PartField field) const;
    /// For messages.
    QString Caption(goods::PartField field) const;
    host::NumericEdit *First() const { return m_inputs.First(); }
    host::NumericEdit *Last() const { return m_inputs.Last(); }

signals:
    /// The user typed, or leaving an input computed another.
    void Edited();

private:
    good_detail::TypedInputs m_inputs;
    int m_unitType = good_detail::OneUnit;
    good_detail::UnitRatio m_ratio;
};

} // namespace division
