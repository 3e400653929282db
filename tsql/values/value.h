// A value in its storage form, outside of SQLite.
#pragma once

#include <QByteArray>
#include <QString>

namespace tsql {

/** What a variable holds and a parameter is bound to; `bytes` is UTF-8 for a Text. */
struct Value
{
    enum class Form : quint8 { Null, Integer, Real, Text, Blob };

    Form form = Form::Null;
    qint64 integer = 0;
    double real = 0;
    QByteArray bytes;

    bool IsNull() const { return form == Form::Null; }

    static Value OfInteger(qint64 value) { return {Form::Integer, value, 0, {}}; }
    static Value OfReal(double value) { return {Form::Real, 0, value, {}}; }
    static Value OfText(QByteArray utf8) { return {Form::Text, 0, 0, std::move(utf8)}; }
    static Value OfText(const QString &text) { return {Form::Text, 0, 0, text.toUtf8()}; }
    static Value OfBlob(QByteArray bytes) { return {Form::Blob, 0, 0, std::move(bytes)}; }
};

} // namespace tsql
