#include "tsql/text/literals.h"

#include "tsql/values/decimal.h"
#include "tsql/values/error.h"

using namespace Qt::StringLiterals;

namespace tsql {

Value literalValue(const Literal &literal, bool negate)
{
    switch (literal.kind) {
    case LiteralKind::Integer:
        return Value::ofInteger(negate ? -literal.integer : literal.integer);
    case LiteralKind::Decimal: {
        bool ok = false;
        Decimal number = Decimal::fromText(literal.text.toLatin1().toStdString(), ok);
        if (!ok)
            throw Error(102, {literal.text});
        if (negate)
            number.units = -number.units;
        return Value::ofBlob(number.toBlob());
    }
    case LiteralKind::Float: {
        const double number = literal.text.toDouble();
        if (qIsInf(number))
            throw Error(8115, {u"expression"_s, u"float"_s});
        return Value::ofReal(negate ? -number : number);
    }
    case LiteralKind::Text:
    case LiteralKind::Unicode:
        return Value::ofText(literal.text);
    case LiteralKind::Binary: {
        QByteArray digits = literal.text.sliced(2).toLatin1();
        if (digits.size() % 2 != 0)
            digits.prepend('0');
        return Value::ofBlob(QByteArray::fromHex(digits));
    }
    }
    return {};
}

} // namespace tsql
