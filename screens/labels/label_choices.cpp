#include "screens/labels/label_choices.h"

#include <QDataStream>
#include <QIODevice>

namespace labels {

namespace {

constexpr quint8 Version = 1;
constexpr int Levels = 10;

} // namespace

QByteArray Kept(const Choices &choices)
{
    QByteArray kept;
    QDataStream stream(&kept, QIODevice::WriteOnly);
    stream << Version << static_cast<quint8>(choices.layout) << choices.priceLevel
           << static_cast<quint8>(choices.countBy) << choices.count << choices.dotsPerInch << choices.rows
           << choices.columns << choices.topMargin << choices.sideMargin;
    return kept;
}

Choices ChoicesOf(const QByteArray &kept)
{
    QDataStream stream(kept);
    quint8 version = 0;
    quint8 layout = 0;
    quint8 countBy = 0;
    Choices choices;
    stream >> version >> layout >> choices.priceLevel >> countBy >> choices.count >> choices.dotsPerInch >>
        choices.rows >> choices.columns >> choices.topMargin >> choices.sideMargin;
    const bool known = stream.status() == QDataStream::Ok && version == Version &&
                       layout <= static_cast<quint8>(Layout::Sheet) && countBy <= static_cast<quint8>(CountBy::Stock) &&
                       choices.priceLevel >= ConsumerPrice && choices.priceLevel <= Levels;
    if (!known)
        return {};
    choices.layout = static_cast<Layout>(layout);
    choices.countBy = static_cast<CountBy>(countBy);
    return choices;
}

} // namespace labels
