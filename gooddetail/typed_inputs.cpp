#include "gooddetail/typed_inputs.h"

#include "host/controls/numeric_edit.h"
#include "rules/unit_arithmetic.h"
#include "screens/shared/leave_watch.h"

#include <QLabel>

namespace good_detail {

TypedInputs::TypedInputs(const std::array<Input, 4> &inputs, Arithmetic recomputed, QObject *parent)
    : QObject(parent), m_inputs(inputs), m_recomputed(std::move(recomputed))
{
    for (size_t i = 0; i < m_inputs.size(); ++i) {
        goods::OnChanged(m_inputs[i].Edit, goods::RuleTime::AtOnce, [this, i] {
            Show(m_recomputed(Typed(), static_cast<int>(i)));
            emit Edited();
        });
        connect(m_inputs[i].Edit, &QLineEdit::textEdited, this, &TypedInputs::Edited);
    }
}

void TypedInputs::SetUp(const QList<AmountInput> &layout)
{
    m_layout = layout;
    for (size_t i = 0; i < m_inputs.size(); ++i) {
        const bool used = i < static_cast<size_t>(m_layout.size());
        m_inputs[i].Caption->setVisible(used);
        m_inputs[i].Edit->setVisible(used);
        if (used)
            m_inputs[i].Caption->setText(m_layout[static_cast<qsizetype>(i)].Caption);
    }
}

TypedAmounts TypedInputs::Typed() const
{
    TypedAmounts typed{};
    for (size_t i = 0; i < static_cast<size_t>(m_layout.size()); ++i)
        typed[i] = m_inputs[i].Edit->Number();
    return typed;
}

void TypedInputs::Show(const TypedAmounts &typed)
{
    for (size_t i = 0; i < m_inputs.size(); ++i) {
        host::NumericEdit *edit = m_inputs[i].Edit;
        if (edit->IsEmpty() || !goods::SameQuantity(edit->Number(), typed[i]))
            edit->SetNumber(typed[i]);
        edit->setModified(false);
    }
}

void TypedInputs::Take()
{
    for (const Input &input : m_inputs)
        goods::LeaveNow(input.Edit);
}

host::NumericEdit *TypedInputs::Edit(AmountPart part) const
{
    for (qsizetype i = 0; i < m_layout.size(); ++i)
        if (m_layout[i].Part == part)
            return m_inputs[static_cast<size_t>(i)].Edit;
    return nullptr;
}

QString TypedInputs::Caption(AmountPart part) const
{
    for (const AmountInput &input : m_layout)
        if (input.Part == part)
            return PlainCaption(input.Caption);
    return {};
}

host::NumericEdit *TypedInputs::Last() const
{
    return m_inputs[static_cast<size_t>(m_layout.size()) - 1].Edit;
}

} // namespace good_detail
