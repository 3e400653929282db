#include "host/controls/date_edit.h"

#include "host/data/persian_text.h"
#include "host/look/theme.h"

#include <QKeyEvent>

using namespace Qt::StringLiterals;

namespace host {
namespace {

QCalendar CalendarOf(DateType type)
{
    return QCalendar(type == DateType::Solar ? QCalendar::System::Jalali : QCalendar::System::Gregorian);
}

int FullYear(int year, qsizetype digits, DateType type)
{
    if (digits > 2)
        return year;
    if (type == DateType::Gregorian)
        return 2000 + year;
    return year < 50 ? 1400 + year : 1300 + year;
}

/// Year, month and day as typed, with "/" between them or eight digits in a row.
std::optional<QStringList> Parts(const QString &typed)
{
    QString text = FoldDigits(typed).trimmed();
    text.replace(u'-', u'/').replace(u'.', u'/').replace(u'٫', u'/');
    text.remove(u'\u200e').remove(u'\u200f');
    if (!text.contains(u'/') && text.size() == 8)
        text.insert(6, u'/').insert(4, u'/');
    QStringList parts = text.split(u'/');
    if (parts.size() != 3)
        return {};
    for (const QString &part : std::as_const(parts)) {
        if (part.isEmpty() || part.size() > 4)
            return {};
        for (const QChar c : part)
            if (c < u'0' || c > u'9')
                return {};
    }
    return parts;
}

} // namespace

QString DateText(QDate date, DateType type)
{
    if (!date.isValid())
        return {};
    const QCalendar::YearMonthDay parts = CalendarOf(type).partsFromDate(date);
    return u"%1/%2/%3"_s.arg(parts.year, 4, 10, QLatin1Char('0'))
        .arg(parts.month, 2, 10, QLatin1Char('0'))
        .arg(parts.day, 2, 10, QLatin1Char('0'));
}

std::optional<QDate> ParseDate(const QString &typed, DateType type)
{
    const auto parts = Parts(typed);
    if (!parts || parts->at(1).size() > 2 || parts->at(2).size() > 2)
        return {};
    const int year = FullYear(parts->at(0).toInt(), parts->at(0).size(), type);
    const int month = parts->at(1).toInt();
    const int day = parts->at(2).toInt();
    const QCalendar calendar = CalendarOf(type);
    if (!calendar.isDateValid(year, month, day))
        return {};
    return calendar.dateFromParts(year, month, day);
}

DateEdit::DateEdit(QWidget *parent) : DisplayEdit(parent)
{
    setMaxLength(10);
    connect(this, &QLineEdit::textEdited, this, [this] { MarkValidity(); });
}

void DateEdit::setSolar(bool solar)
{
    SetType(solar ? DateType::Solar : DateType::Gregorian);
}

void DateEdit::SetType(DateType type)
{
    const QDate date = Date();
    m_type = type;
    if (date.isValid())
        SetDate(date);
}

bool DateEdit::IsEmpty() const
{
    return text().trimmed().isEmpty();
}

bool DateEdit::IsValid() const
{
    return IsEmpty() || ParseDate(text(), m_type).has_value();
}

QDate DateEdit::Date() const
{
    return ParseDate(text(), m_type).value_or(QDate());
}

void DateEdit::SetDate(QDate date)
{
    setText(DateText(date, m_type));
    m_last = date;
    MarkValidity();
}

QString DateEdit::Text() const
{
    return DateText(Date(), m_type);
}

QSize DateEdit::sizeHint() const
{
    return {118, QLineEdit::sizeHint().height()};
}

void DateEdit::keyPressEvent(QKeyEvent *event)
{
    switch (event->key()) {
    case Qt::Key_Up:
        return Step(1, 0);
    case Qt::Key_Down:
        return Step(-1, 0);
    case Qt::Key_PageUp:
        return Step(0, 1);
    case Qt::Key_PageDown:
        return Step(0, -1);
    default:
        break;
    }
    const QString typed = FoldDigits(event->text());
    if (typed.size() == 1 && typed.at(0).isPrint() && !event->modifiers().testFlag(Qt::ControlModifier)) {
        if (isReadOnly() || !u"0123456789/-."_s.contains(typed.at(0)))
            return;
        insert(typed.at(0).isDigit() ? PersianDigits(typed) : u"/"_s);
        emit textEdited(text());
        return;
    }
    DisplayEdit::keyPressEvent(event);
}

void DateEdit::focusInEvent(QFocusEvent *event)
{
    QLineEdit::focusInEvent(event);
    if (event->reason() != Qt::MouseFocusReason && event->reason() != Qt::PopupFocusReason)
        selectAll();
}

void DateEdit::focusOutEvent(QFocusEvent *event)
{
    QLineEdit::focusOutEvent(event);
    if (!isReadOnly())
        Complete();
}

void DateEdit::Complete()
{
    const QDate date = Date();
    if (date.isValid())
        setText(DateText(date, m_type));
    MarkValidity();
    if (date != m_last && IsValid()) {
        m_last = date;
        emit DateChanged(date);
    }
}

void DateEdit::Step(int days, int months)
{
    if (isReadOnly())
        return;
    const QDate from = Date();
    if (!from.isValid())
        return;
    setText(DateText(months ? from.addMonths(months, CalendarOf(m_type)) : from.addDays(days), m_type));
    emit textEdited(text());
    Complete();
    selectAll();
}

void DateEdit::MarkValidity()
{
    // While typing the text is unfinished more often than wrong; it is marked when it could be complete.
    const bool fault = !IsValid() && (!hasFocus() || text().size() >= 8);
    if (property("fault").toBool() == fault)
        return;
    setProperty("fault", fault);
    theme::Repolish(this);
}

} // namespace host
