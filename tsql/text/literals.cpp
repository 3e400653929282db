#include "tsql/text/literals.h"

#include "tsql/values/decimal.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

Value LiteralValue(const Literal &literal, bool negate)
{
    switch (literal.kind) {
    case LiteralKind::Integer:
        return Value::OfInteger(negate ? -literal.integer : literal.integer);
    case LiteralKind::Decimal: {
        bool ok = false;
        Decimal number = Decimal::FromText(literal.text.toLatin1().toStdString(), ok);
        if (!ok)
            throw Error(102, {literal.text});
        if (negate)
            number.units = -number.units;
        return Value::OfBlob(number.ToBlob());
    }
    case LiteralKind::Float: {
        const double number = literal.text.toDouble();
        if (qIsInf(number))
            throw Error(8115, {u"expression"_s, u"float"_s});
        return Value::OfReal(negate ? -number : number);
    }
    case LiteralKind::Text:
    case LiteralKind::Unicode:
        return Value::OfText(literal.text);
    case LiteralKind::Binary: {
        QByteArray digits = literal.text.sliced(2).toLatin1();
        if (digits.size() % 2 != 0)
            digits.prepend('0');
        return Value::OfBlob(QByteArray::fromHex(digits));
    }
    }
    return {};
}

} // namespace tsql
