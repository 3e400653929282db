#pragma once

#include "host/data/quantity.h"
#include "host/host_export.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <stdexcept>

/// Making and reading SQL text. Statements are fixed literals with values spliced in; a value gets into a statement
/// only through one of these functions or as a formatted integer.
namespace host {

/// A value that may not be spliced into a statement because it is not what its place demands.
class HOST_EXPORT RefusedText : public std::invalid_argument
{
public:
    /// `what` says what was expected; `value` is the text that was refused (for the user, not for a log).
    RefusedText(const QString &what, const QString &value);
    /// What was expected, without the refused value.
    const QString &Expected() const { return m_expected; }
    const QString &Value() const { return m_value; }
    /// Both, as one sentence for the user.
    QString Text() const;

private:
    QString m_expected;
    QString m_value;
};

/// The text in single quotes, inner single quotes doubled, without halves of characters.
HOST_EXPORT QString QuotedStr(QStringView text);
/// The same with the N prefix of a Unicode literal.
HOST_EXPORT QString NQuotedStr(QStringView text);
/// The text as a LIKE pattern that matches nothing but itself: %, _ and [ in brackets. Not quoted yet.
HOST_EXPORT QString LikeText(QStringView text);
/// A quantity as the decimal text of a statement.
HOST_EXPORT QString DecimalLiteral(Quantity value);
/// A decimal text checked to be a plain number ("-12.5"), as it may be spliced. Throws RefusedText otherwise.
HOST_EXPORT QString DecimalLiteral(QStringView text);

/// A list of codes joined by ",", as it may be spliced into IN (…): digits and commas only, otherwise RefusedText.
/// Empty items (the trailing "," of a multi-select result) are dropped; no code at all gives "0".
HOST_EXPORT QString CodeList(QStringView codes);
/// The codes of such a list, in their order, as numbers. Throws RefusedText like CodeList() and for codes beyond int.
HOST_EXPORT QList<int> Codes(QStringView codes);
/// One code of digits only, at least one; leading zeros stay. Throws RefusedText otherwise.
HOST_EXPORT QString CodeText(QStringView code);

/// `item` ("@Name = value") appended to a procedure's parameter text; a comma joins it to what is there.
HOST_EXPORT QString ADDParam(const QString &params, QStringView item);
/// "@Name = value" appended to a procedure's parameter text. `value` is spliced as it is: quote texts with QuotedStr().
HOST_EXPORT QString ADDParam(const QString &params, QStringView name, QStringView value);
/// The parameter text without the parameter of that name ("@Name", case-insensitive, every occurrence). Names and
/// commas inside quoted values are left alone. Blanks around the remaining items are trimmed.
HOST_EXPORT QString DeleteParam(const QString &params, QStringView name);
/// The items of a parameter text, trimmed, without empty ones; commas inside quotes or parentheses do not split.
HOST_EXPORT QStringList SplitParams(QStringView params);

/// The statement with every literal, text or number, replaced by "?", fit for a log.
HOST_EXPORT QString MaskLiterals(QStringView statement);

} // namespace host
