#pragma once

#include "host/controls/display_edit.h"
#include "host/data/quantity.h"
#include "host/host_export.h"

#include <optional>

class QToolButton;

namespace host {

/// A line edit for one number.
///
/// People type as they are used to: Persian and Arabic digits, '٫' or '/' before decimals, grouping marks in pasted
/// amounts. `text()` is the plain form at all times (ASCII digits, '.', leading '-'), so it may be spliced as a number
/// when it is not empty; without the focus the edit shows it grouped. What would make it no number is not accepted at
/// the key; "+" is left to the screen. Entering selects everything. `maxLength` counts the plain text; what does not
/// fit is refused whole, however it comes in, for a pasted amount without its last digits would be another amount.
///
/// A whole number is held to 64 bits, one with decimals to `wholeDigits` before the point.
class HOST_EXPORT NumericEdit : public DisplayEdit
{
    Q_OBJECT
    /// Decimals accepted; 0 takes whole numbers only. Default 9, the scale of quantities.
    Q_PROPERTY(int decimals READ decimals WRITE setDecimals)
    /// Digits accepted before the point where there are decimals. Default 14, as many as quantities have; prices have
    /// 19.
    Q_PROPERTY(int wholeDigits READ wholeDigits WRITE setWholeDigits)
    /// A leading '-' is accepted. Default false.
    Q_PROPERTY(bool negative READ isNegative WRITE setNegative)
    /// Thousands are set apart while the edit has no focus; switch off for codes. Default true.
    Q_PROPERTY(bool grouped READ isGrouped WRITE setGrouped)
    /// Characters of the plain text that may be typed or pasted. Default 32767.
    Q_PROPERTY(int maxLength READ maxLength WRITE setMaxLength)
    /// Text of the button inside the edit ("+", "…"); empty for none.
    Q_PROPERTY(QString buttonText READ buttonText WRITE setButtonText)

public:
    explicit NumericEdit(QWidget *parent = nullptr);

    int decimals() const { return m_decimals; }
    void setDecimals(int decimals);
    int wholeDigits() const { return m_wholeDigits; }
    void setWholeDigits(int digits) { m_wholeDigits = digits; }
    bool isNegative() const { return m_negative; }
    void setNegative(bool negative);
    bool isGrouped() const { return m_grouped; }
    void setGrouped(bool grouped);
    int maxLength() const { return m_maxLength; }
    void setMaxLength(int length) { m_maxLength = length; }
    QString buttonText() const { return m_buttonText; }
    void setButtonText(const QString &text);

    void setText(const QString &text);
    void clear();

    /// Nothing typed (or only a sign).
    bool IsEmpty() const;
    /// The number, nothing when the edit is empty.
    std::optional<Quantity> Value() const;
    /// The number, 0 when the edit is empty.
    Quantity Number() const;
    /// The number as a whole, 0 when the edit is empty; decimals are cut, and what is beyond 64 bits is the nearest
    /// number within.
    qint64 Integer() const;
    /// Shows a number without noise ("0.3", not "0.30000000000000000001").
    void SetNumber(Quantity number);
    /// Shows a stored number, in ASCII digits, whole: one that is longer than may be typed widens the edit as long as
    /// it is shown, for a stored digit is never cut off.
    void SetStored(const QString &number);
    /// An empty edit becomes "0"; what screens do before they compute.
    void ZeroWhenEmpty();

    QString DisplayText() const override;
    QSize sizeHint() const override;

signals:
    /// The button inside was pressed.
    void ButtonClicked();
    /// The focus left the edit and its number is another one than on entering.
    void NumberChanged();

protected:
    QString Plain(const QString &shown) const override;
    QString Shown(const QString &plain) const override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    friend class NumberValidator;

    bool Fits(const QString &plain) const;
    void PlaceButton();

    int m_decimals = 9;
    int m_wholeDigits = 14;
    int m_maxLength = 32767;
    bool m_negative = false;
    bool m_grouped = true;
    bool m_selectOnRelease = false;
    QString m_buttonText;
    QString m_entered;
    QString m_stored; ///< what SetStored shows, longer than may be typed or not
    QToolButton *m_button = nullptr;
};

} // namespace host
