#include "gooddetail/typed_inputs.h"

#include "host/controls/numeric_edit.h"
#include "rules/unit_arithmetic.h"
#include "screens/shared/leave_watch.h"

#include <QLabel>

using namespace Qt::StringLiterals;

namespace good_detail {

namespace {

constexpr int ListDecimals = 4;
/// Nobody measures closer than that.
constexpr qsizetype MostTypedDecimals = 6;

} // namespace

void ShownAmount::Show(host::Quantity amount)
{
    m_text.clear();
    m_amount = amount;
    const QString whole = host::QuantityToText(amount);
    const qsizetype point = whole.indexOf(u'.');
    const QString brief = host::QuantityToText(amount, ListDecimals);
    if (point < 0 || whole.size() - point - 1 <= MostTypedDecimals || brief == u"0") {
        m_edit->SetStored(whole);
        return;
    }
    m_text = brief;
    m_edit->SetStored(brief);
}

host::Quantity ShownAmount::Number() const
{
    return !m_text.isEmpty() && m_edit->text() == m_text ? m_amount : m_edit->Number();
}

TypedInputs::TypedInputs(const std::array<Input, 4> &inputs, Arithmetic recomputed, QObject *parent)
    : QObject(parent), m_captions{inputs[0].Caption, inputs[1].Caption, inputs[2].Caption, inputs[3].Caption},
      m_amounts{ShownAmount(inputs[0].Edit), ShownAmount(inputs[1].Edit), ShownAmount(inputs[2].Edit),
                ShownAmount(inputs[3].Edit)},
      m_recomputed(std::move(recomputed))
{
    for (size_t i = 0; i < m_amounts.size(); ++i) {
        goods::OnChanged(m_amounts[i].Edit(), goods::RuleTime::AtOnce, [this, i] {
            Show(m_recomputed(Typed(), static_cast<int>(i)));
            emit Edited();
        });
        connect(m_amounts[i].Edit(), &QLineEdit::textEdited, this, &TypedInputs::Edited);
    }
}

void TypedInputs::SetUp(const QList<AmountInput> &layout)
{
    m_layout = layout;
    for (size_t i = 0; i < m_amounts.size(); ++i) {
        const bool used = i < static_cast<size_t>(m_layout.size());
        m_captions[i]->setVisible(used);
        m_amounts[i].Edit()->setVisible(used);
        if (used)
            m_captions[i]->setText(m_layout[static_cast<qsizetype>(i)].Caption);
    }
}

TypedAmounts TypedInputs::Typed() const
{
    TypedAmounts typed{};
    for (size_t i = 0; i < static_cast<size_t>(m_layout.size()); ++i)
        typed[i] = m_amounts[i].Number();
    return typed;
}

host::Quantity TypedInputs::Number(AmountPart part) const
{
    for (qsizetype i = 0; i < m_layout.size(); ++i)
        if (m_layout[i].Part == part)
            return m_amounts[static_cast<size_t>(i)].Number();
    return 0;
}

void TypedInputs::Show(const TypedAmounts &typed)
{
    for (size_t i = 0; i < m_amounts.size(); ++i) {
        ShownAmount &amount = m_amounts[i];
        if (amount.Edit()->IsEmpty() || !goods::SameQuantity(amount.Number(), typed[i]))
            amount.Show(typed[i]);
        amount.Edit()->setModified(false);
    }
}

void TypedInputs::Take()
{
    for (const ShownAmount &amount : m_amounts)
        goods::LeaveNow(amount.Edit());
}

host::NumericEdit *TypedInputs::Edit(AmountPart part) const
{
    for (qsizetype i = 0; i < m_layout.size(); ++i)
        if (m_layout[i].Part == part)
            return m_amounts[static_cast<size_t>(i)].Edit();
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
    return m_amounts[static_cast<size_t>(m_layout.size()) - 1].Edit();
}

} // namespace good_detail
