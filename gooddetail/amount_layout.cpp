#include "gooddetail/amount_layout.h"

using namespace Qt::StringLiterals;

namespace good_detail {

QList<AmountInput> AmountInputsOf(int unitType, const QString &unit2)
{
    const QString amount = u"&مقدار :"_s;
    const QString total = u"مقدار &کل :"_s;
    const QString count = u"&تعداد :"_s;
    switch (unitType) {
    case TwoUnits:
        return {{AmountPart::Amount1, amount}, {AmountPart::Amount2, u"م&قدار2 :"_s}};
    case Packed:
        // A name may hold the sign of a shortcut.
        return {{AmountPart::Amount3, u"&هر "_s + QString(unit2).replace(u'&', u"&&"_s) + u" :"_s},
                {AmountPart::Amount2, count},
                {AmountPart::Amount1, total}};
    case TotalAndPart:
        return {{AmountPart::Big, total}, {AmountPart::Small, u"مقدار &جزء :"_s}, {AmountPart::Amount1, amount}};
    case Area:
        return {{AmountPart::Length, u"&طول :"_s},
                {AmountPart::Width, u"&عرض :"_s},
                {AmountPart::Amount3, count},
                {AmountPart::Amount1, amount}};
    default:
        return {{AmountPart::Amount1, amount}};
    }
}

QList<AmountColumn> AmountColumnsOf(int unitType, const QString &unit, const QString &unit2)
{
    const auto of = [](const QString &title, const QString &name) { return title + u" ("_s + name + u')'; };
    const AmountColumn amount{u"Amount1"_s, of(u"مقدار"_s, unit)};
    switch (unitType) {
    case TwoUnits:
        return {amount, {u"Amount2"_s, of(u"مقدار 2"_s, unit2)}};
    case Packed:
        return {{u"Amount3"_s, of(u"هر "_s + unit2, unit)},
                {u"Amount2"_s, of(u"تعداد"_s, unit2)},
                {u"TotalAmount"_s, of(u"مقدار کل"_s, unit)}};
    case TotalAndPart:
        return {{u"TotalAmount"_s, of(u"مقدار کل"_s, unit2)}, {u"Amount1"_s, of(u"مقدار جزء"_s, unit)}};
    case Area:
        return {{u"Length"_s, u"طول"_s},
                {u"Width"_s, u"عرض"_s},
                {u"Amount3"_s, u"تعداد"_s},
                {u"TotalAmount"_s, of(u"مقدار"_s, unit)}};
    default:
        return {amount};
    }
}

const QStringList &AmountFields()
{
    static const QStringList fields{u"Amount1"_s, u"Amount2"_s, u"TotalAmount"_s,
                                    u"Length"_s,  u"Width"_s,   u"Amount3"_s};
    return fields;
}

QString PlainCaption(const QString &caption)
{
    QString plain = caption;
    plain.replace(u"&&"_s, u"\n"_s).remove(u'&').replace(u'\n', u'&');
    if (plain.endsWith(u':'))
        plain.chop(1);
    return plain.trimmed();
}

} // namespace good_detail
