#include "host/screens/refusals.h"

using namespace Qt::StringLiterals;

namespace host {

namespace {

constexpr int ReadingMilliseconds = 3000;

} // namespace

Refusal Required(QWidget *control, const QString &caption)
{
    return {control, [=](MessageService &messages) { messages.MsgRequiredField(caption); }};
}

Refusal Repeated(QWidget *control, const QString &field, const QString &entity)
{
    return {control, [=](MessageService &messages) { messages.MsgRepeatedField(field, entity); }};
}

Refusal RepeatedCode(QWidget *control, const QString &caption)
{
    return {control, [=](MessageService &messages) { messages.MsgRepeatedCode(caption); }};
}

Refusal SmartMessage(QWidget *control, int number, const QStringList &parameters)
{
    return {control, [=](MessageService &messages) {
                messages.ShowSmartMessage(number, parameters, ReadingMilliseconds, control);
            }};
}

Refusal Warning(QWidget *control, const QString &text)
{
    return {control, [=](MessageService &messages) { messages.ShowMessage(text, MessageIcon::Warning); }};
}

Refusal RecordGone(const QString &kind)
{
    return Warning(nullptr, u"این %1 دیگر وجود ندارد."_s.arg(kind));
}

Refusal ToldAlready(QWidget *control)
{
    return {control, {}};
}

Refused CheckRight(const Host &host, TSoftwarePart part, TFormMode mode)
{
    return When(!MayWrite(host, part, mode), ToldAlready());
}

} // namespace host
