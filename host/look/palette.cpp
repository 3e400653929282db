#include "host/look/palette.h"

namespace host {

const Palette &Palette::Light()
{
    static const Palette palette{
        .Ground = QColor(QRgb(0xfff1f4f6)),
        .Surface = QColor(QRgb(0xffffffff)),
        .Panel = QColor(QRgb(0xfffafbfc)),
        .Footer = QColor(QRgb(0xffe7ecf0)),
        .Head = QColor(QRgb(0xffe4eaee)),
        .Stripe = QColor(QRgb(0xfff7f9fa)),
        .ReadOnly = QColor(QRgb(0xffecf0f3)),
        .Current = QColor(QRgb(0xffb5dddc)),
        .AccentSoft = QColor(QRgb(0xffddefef)),
        .Fill = QColor(QRgb(0xff0b6b74)),
        .Bar = QColor(QRgb(0xff182430)),
        .Line = QColor(QRgb(0xffcfd7de)),
        .GridLine = QColor(QRgb(0xffe6ebef)),
        .Border = QColor(QRgb(0xffa9b5c0)),
        .Handle = QColor(QRgb(0xffb4bfc8)),
        .Ink = QColor(QRgb(0xff182430)),
        .InkSoft = QColor(QRgb(0xff526170)),
        .Placeholder = QColor(QRgb(0xff5f6d79)),
        .Disabled = QColor(QRgb(0xff5e6b77)),
        .Accent = QColor(QRgb(0xff0b6b74)),
        .AccentInk = QColor(QRgb(0xff074f57)),
        .Danger = QColor(QRgb(0xffb3261e)),
    };
    return palette;
}

const Palette &Palette::Dark()
{
    static const Palette palette{
        .Ground = QColor(QRgb(0xff1b2229)),
        .Surface = QColor(QRgb(0xff232c34)),
        .Panel = QColor(QRgb(0xff1f272e)),
        .Footer = QColor(QRgb(0xff252e36)),
        .Head = QColor(QRgb(0xff2d3842)),
        .Stripe = QColor(QRgb(0xff273139)),
        .ReadOnly = QColor(QRgb(0xff2a343c)),
        .Current = QColor(QRgb(0xff1d5a61)),
        .AccentSoft = QColor(QRgb(0xff1c444b)),
        .Fill = QColor(QRgb(0xff0f7580)),
        .Bar = QColor(QRgb(0xff0d1216)),
        .Line = QColor(QRgb(0xff3a4651)),
        .GridLine = QColor(QRgb(0xff313c46)),
        .Border = QColor(QRgb(0xff5a6874)),
        .Handle = QColor(QRgb(0xff5a6874)),
        .Ink = QColor(QRgb(0xffe8edf1)),
        .InkSoft = QColor(QRgb(0xffb0bcc6)),
        .Placeholder = QColor(QRgb(0xff9caab5)),
        .Disabled = QColor(QRgb(0xff94a2ad)),
        .Accent = QColor(QRgb(0xff5bbfc7)),
        .AccentInk = QColor(QRgb(0xff7fd4da)),
        .Danger = QColor(QRgb(0xffff9d94)),
    };
    return palette;
}

} // namespace host
