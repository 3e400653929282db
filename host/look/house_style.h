#pragma once

#include <QProxyStyle>
#include <QStringView>

namespace host {

/// The widget style under the style sheet. It draws captions with an access key itself: the toolkit splits a word at
/// the underlined letter, which tears joined Persian letters apart and loses some of them.
class HouseStyle : public QProxyStyle
{
    Q_OBJECT

public:
    HouseStyle();

    void drawItemText(QPainter *painter, const QRect &rect, int flags, const QPalette &palette, bool enabled,
                      const QString &text, QPalette::ColorRole role = QPalette::NoRole) const override;
    /// The buttons of the toolkit's own dialogs carry no icons, like all others.
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget = nullptr) const override;
    /// Bars of progress count in Persian digits.
    void polish(QWidget *widget) override;
    using QProxyStyle::polish;
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returned) const override;
};

} // namespace host
