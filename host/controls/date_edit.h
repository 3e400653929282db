#pragma once

#include "host/controls/display_edit.h"
#include "host/host_export.h"

#include <QCalendar>
#include <QDate>

#include <optional>

namespace host {

/// The calendar in which a date is written. The numbers are stored.
enum class DateType : int {
    Gregorian = 0,
    Solar = 1, ///< solar Hijri
};

/// A date as the suite writes it, "1403/05/09"; empty for an invalid date.
HOST_EXPORT QString DateText(QDate date, DateType type);

/// Reads a date as people type it: Persian or ASCII digits, '/', '-' or '.' between the parts or eight digits without
/// any, one-digit months and days, two-digit years (solar: 00–49 are 14xx, others 13xx; Gregorian: 20xx). Nothing when
/// there is no such day.
HOST_EXPORT std::optional<QDate> ParseDate(const QString &typed, DateType type);

/// A line edit for one date, solar Hijri unless set otherwise. Leaving it completes what was typed; a text that is no
/// date stays, is marked, and `IsValid()` says so. Up and Down go a day on or back, Page Up and Page Down a month.
class HOST_EXPORT DateEdit : public DisplayEdit
{
    Q_OBJECT
    Q_PROPERTY(bool solar READ isSolar WRITE setSolar)

public:
    explicit DateEdit(QWidget *parent = nullptr);

    bool isSolar() const { return m_type == DateType::Solar; }
    void setSolar(bool solar);
    void SetType(DateType type);
    DateType Type() const { return m_type; }

    bool IsEmpty() const;
    /// Empty, or a day that exists.
    bool IsValid() const;
    /// The day, invalid when the edit is empty or holds no date.
    QDate Date() const;
    void SetDate(QDate date);
    /// The date as the suite writes it in this edit's calendar; empty when there is none.
    QString Text() const;

    QSize sizeHint() const override;

signals:
    /// The day is another one (typed and left, or stepped).
    void DateChanged(QDate date);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;

private:
    void Complete();
    void Step(int days, int months);
    void MarkValidity();

    DateType m_type = DateType::Solar;
    QDate m_last;
};

} // namespace host
