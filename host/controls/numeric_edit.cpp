#include "host/controls/numeric_edit.h"

#include "host/controls/number_text.h"
#include "host/data/persian_text.h"

#include <QKeyEvent>
#include <QToolButton>
#include <QValidator>

#include <limits>

using namespace Qt::StringLiterals;

namespace host {
namespace {

constexpr int buttonWidth = 22;

/// The digits before the point.
qsizetype WholeDigits(const QString &plain)
{
    const qsizetype point = plain.indexOf(u'.');
    return (point < 0 ? plain.size() : point) - plain.startsWith(u'-');
}

} // namespace

/// Turns what is typed into what is shown on the way in, and lets nothing in that cannot become a number.
class NumberValidator : public QValidator
{
public:
    explicit NumberValidator(NumericEdit *edit) : QValidator(edit), m_edit(*edit) {}

    State validate(QString &input, int &position) const override
    {
        const QString before = PlainNumber(input.left(position));
        // A copied cell brings the end of its line along.
        const QString plain = PlainNumber(input.trimmed());
        position = static_cast<int>(qMin(before.size(), plain.size()));
        input = m_edit.Shown(plain);
        if (!m_edit.Fits(plain))
            return Invalid;
        if (plain.isEmpty() || plain == u"." || (m_edit.isNegative() && (plain == u"-" || plain == u"-.")))
            return m_edit.decimals() == 0 && plain.endsWith(u'.') ? Invalid : Intermediate;
        return IsNumber(plain, m_edit.decimals(), m_edit.isNegative()) ? Acceptable : Invalid;
    }

private:
    const NumericEdit &m_edit;
};

NumericEdit::NumericEdit(QWidget *parent) : DisplayEdit(parent)
{
    setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    QLineEdit::setMaxLength(std::numeric_limits<int>::max()); // cuts; the validator refuses
    setValidator(new NumberValidator(this));
    // The plain form that the validator sets counts as the user's text.
    connect(this, &QLineEdit::textEdited, this, [this] { setModified(true); });
}

QString NumericEdit::Plain(const QString &shown) const
{
    return PlainNumber(shown);
}

QString NumericEdit::Shown(const QString &plain) const
{
    return PersianDigits(plain).replace(u'.', u'٫');
}

bool NumericEdit::Fits(const QString &plain) const
{
    if (plain.size() > qMax<qsizetype>(m_maxLength, m_stored.size()))
        return false;
    if (m_decimals > 0)
        return WholeDigits(plain) <= qMax<qsizetype>(m_wholeDigits, WholeDigits(m_stored));
    bool fits = plain.isEmpty() || plain == u"-" || plain == m_stored;
    if (!fits)
        plain.toLongLong(&fits);
    return fits;
}

void NumericEdit::setText(const QString &text)
{
    m_stored.clear();
    DisplayEdit::setText(text);
}

void NumericEdit::clear()
{
    setText({});
}

void NumericEdit::setDecimals(int decimals)
{
    m_decimals = decimals;
}

void NumericEdit::setNegative(bool negative)
{
    m_negative = negative;
}

void NumericEdit::setGrouped(bool grouped)
{
    m_grouped = grouped;
    update();
}

void NumericEdit::setButtonText(const QString &text)
{
    m_buttonText = text;
    if (text.isEmpty()) {
        delete m_button;
        m_button = nullptr;
        setTextMargins(0, 0, 0, 0);
        return;
    }
    if (!m_button) {
        m_button = new QToolButton(this);
        m_button->setObjectName(u"Inner_BTN"_s);
        m_button->setFocusPolicy(Qt::NoFocus);
        m_button->setCursor(Qt::ArrowCursor);
        connect(m_button, &QToolButton::clicked, this, &NumericEdit::ButtonClicked);
        setTextMargins(buttonWidth, 0, 0, 0);
    }
    m_button->setText(text);
    m_button->show();
    PlaceButton();
}

void NumericEdit::PlaceButton()
{
    if (m_button)
        m_button->setGeometry(2, 2, buttonWidth, height() - 4);
}

bool NumericEdit::IsEmpty() const
{
    return !IsNumber(text(), INT_MAX, true);
}

std::optional<Quantity> NumericEdit::Value() const
{
    if (IsEmpty())
        return {};
    return ParseQuantity(text());
}

Quantity NumericEdit::Number() const
{
    return Value().value_or(0);
}

qint64 NumericEdit::Integer() const
{
    constexpr qint64 least = std::numeric_limits<qint64>::min();
    constexpr qint64 greatest = std::numeric_limits<qint64>::max();
    const Quantity number = Number();
    if (number >= static_cast<Quantity>(greatest))
        return greatest;
    return number <= static_cast<Quantity>(least) ? least : static_cast<qint64>(number);
}

void NumericEdit::SetNumber(Quantity number)
{
    SetStored(QuantityToText(number, m_decimals));
}

void NumericEdit::SetStored(const QString &number)
{
    m_stored = number;
    DisplayEdit::setText(number);
}

void NumericEdit::ZeroWhenEmpty()
{
    if (IsEmpty())
        setText(u"0"_s);
}

QSize NumericEdit::sizeHint() const
{
    return {110 + (m_button ? buttonWidth : 0), QLineEdit::sizeHint().height()};
}

void NumericEdit::focusInEvent(QFocusEvent *event)
{
    m_entered = text();
    QLineEdit::focusInEvent(event);
    m_selectOnRelease = event->reason() == Qt::MouseFocusReason;
    if (!m_selectOnRelease && event->reason() != Qt::PopupFocusReason)
        selectAll();
}

void NumericEdit::focusOutEvent(QFocusEvent *event)
{
    // "-", "5." and "007" are how numbers begin, not what they are.
    if (!text().isEmpty() && text() != m_entered && !isReadOnly()) {
        const QString whole = NormalizeDecimal(text()).value_or(QString());
        if (whole != text()) {
            // Whether the user's entry is still to be acted upon is for the screen to say.
            const bool modified = isModified();
            DisplayEdit::setText(whole);
            setModified(modified);
        }
    }
    QLineEdit::focusOutEvent(event);
    if (event->reason() != Qt::PopupFocusReason && text() != m_entered) {
        m_entered = text();
        emit NumberChanged();
    }
}

void NumericEdit::keyPressEvent(QKeyEvent *event)
{
    if (event->text() == u"+") {
        event->ignore();
        return;
    }
    DisplayEdit::keyPressEvent(event);
}

void NumericEdit::mouseReleaseEvent(QMouseEvent *event)
{
    QLineEdit::mouseReleaseEvent(event);
    if (m_selectOnRelease && !hasSelectedText())
        selectAll();
    m_selectOnRelease = false;
}

QString NumericEdit::DisplayText() const
{
    return DisplayNumber(text(), m_grouped);
}

void NumericEdit::resizeEvent(QResizeEvent *event)
{
    QLineEdit::resizeEvent(event);
    PlaceButton();
}

} // namespace host
