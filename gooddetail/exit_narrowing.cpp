#include "gooddetail/exit_narrowing.h"

#include "host/data/persian_text.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace good_detail {

namespace {

/// A pattern in which letters and digits that only keyboards keep apart find each other.
QString AnySpelling(const QString &pattern)
{
    static const QStringList spellings{u"یيى"_s, u"کك"_s};
    QString any;
    for (const QChar letter : pattern) {
        QString forms;
        for (const QString &same : spellings)
            if (same.contains(letter))
                forms = same;
        if (const QChar digit = host::FoldDigits(QString(letter)).front(); digit >= u'0' && digit <= u'9')
            forms = digit + host::PersianDigits(QString(digit)) + QChar(u'٠' + digit.digitValue());
        any += forms.isEmpty() ? QString(letter) : u'[' + forms + u']';
    }
    return any;
}

/// What is typed stands for itself, also where it holds a sign of a pattern.
QString Contains(int detail, const QString &text)
{
    return u"DetailTitle%1 Like N"_s.arg(detail) + host::QuotedStr(u'%' + host::LikeText(text) + u'%');
}

QString Is(int detail, const QString &text)
{
    return u"DetailTitle%1 Like N"_s.arg(detail) + host::QuotedStr(host::LikeText(text));
}

QString DetailCondition(int number, const TExitNarrowing::Detail &detail)
{
    if (detail.Value->isEmpty())
        return u"ISNULL(DetailTitle%1, N'') = N''"_s.arg(number);
    return detail.IsText ? u"DetailTitle%1 Like N"_s.arg(number) +
                               host::QuotedStr(u'%' + AnySpelling(host::LikeText(*detail.Value)) + u'%')
                         : Is(number, *detail.Value);
}

QString FirstCondition(const TExitNarrowing &typed)
{
    if (!typed.Serial.isEmpty())
        return Contains(1, host::SerialText(typed.Serial));
    if (typed.SerialFrom > 0 && typed.SerialTo > 0)
        return u"TRY_CAST(DetailTitle1 AS BIGINT) BETWEEN %1 AND %2"_s.arg(typed.SerialFrom).arg(typed.SerialTo);
    if (!typed.Barcode.isEmpty())
        return Contains(1, host::SerialText(typed.Barcode));
    return typed.Details[0].Value ? DetailCondition(1, typed.Details[0]) : QString();
}

} // namespace

QString NarrowingCondition(const TExitNarrowing &typed, int unitType)
{
    if (typed.OnlySelected)
        return u"Selected = 1"_s;
    QStringList conditions{FirstCondition(typed)};
    for (size_t i = 1; i < typed.Details.size(); ++i)
        if (typed.Details[i].Value)
            conditions << DetailCondition(static_cast<int>(i) + 1, typed.Details[i]);
    if (unitType == 3 && typed.Package > 0)
        conditions << u"Amount3 = "_s + host::DecimalLiteral(typed.Package);
    if (unitType == 5 && typed.Length > 0 && typed.Width > 0)
        conditions << u"Length = "_s + host::DecimalLiteral(typed.Length)
                   << u"Width = "_s + host::DecimalLiteral(typed.Width);
    conditions.removeAll(QString());
    return conditions.join(u" AND ");
}

} // namespace good_detail
