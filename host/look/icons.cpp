#include "host/look/icons.h"

#include "host/look/theme.h"

#include <QHash>
#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

namespace host {

namespace {

// Every glyph is drawn on a square of 24 units.
constexpr qreal Side = 24;

QPainterPath Lines(std::initializer_list<QPointF> points, bool closed = false)
{
    QPainterPath path;
    const QList<QPointF> list(points);
    path.addPolygon(QPolygonF(list));
    if (closed)
        path.closeSubpath();
    return path;
}

QPainterPath Circle(qreal x, qreal y, qreal radius)
{
    QPainterPath path;
    path.addEllipse(QPointF(x, y), radius, radius);
    return path;
}

QPainterPath Box(qreal x, qreal y, qreal width, qreal height, qreal radius = 1.5)
{
    QPainterPath path;
    path.addRoundedRect(QRectF(x, y, width, height), radius, radius);
    return path;
}

QPainterPath Carton()
{
    QPainterPath path = Lines({{12, 3}, {20.5, 7.3}, {20.5, 16.7}, {12, 21}, {3.5, 16.7}, {3.5, 7.3}}, true);
    path.addPath(Lines({{3.5, 7.3}, {12, 11.6}, {20.5, 7.3}}));
    path.addPath(Lines({{12, 11.6}, {12, 21}}));
    return path;
}

QPainterPath Plus(qreal x, qreal y, qreal half)
{
    QPainterPath path = Lines({{x - half, y}, {x + half, y}});
    path.addPath(Lines({{x, y - half}, {x, y + half}}));
    return path;
}

QPainterPath CartonPlus()
{
    QPainterPath path = Lines({{13, 20.5}, {12, 21}, {3.5, 16.7}, {3.5, 7.3}, {12, 3}, {20.5, 7.3}, {20.5, 12}});
    path.addPath(Lines({{3.5, 7.3}, {12, 11.6}, {20.5, 7.3}}));
    path.addPath(Plus(18.5, 18, 3.5));
    return path;
}

QPainterPath Tick()
{
    QPainterPath path = Box(3.5, 3.5, 17, 17, 3);
    path.addPath(Lines({{7.5, 12.5}, {10.8, 15.8}, {16.8, 8.8}}));
    return path;
}

QPainterPath Tags()
{
    QPainterPath path = Lines({{2.8, 11.5}, {10, 4.3}, {17, 4.3}, {17, 11.3}, {9.8, 18.5}}, true);
    path.addPath(Circle(13.4, 7.9, 1.3));
    path.addPath(Lines({{20.8, 7}, {20.8, 12.8}, {13.2, 20.4}}));
    return path;
}

/// A sheet and the cuts that make three of it.
QPainterPath CutSheet()
{
    QPainterPath path = Lines({{3, 5.5}, {21, 5.5}, {21, 18.5}, {3, 18.5}}, true);
    path.addPath(Lines({{12.5, 3.2}, {12.5, 20.8}}));
    path.addPath(Lines({{12.5, 11.5}, {23, 11.5}}));
    return path;
}

QPainterPath Sheet()
{
    QPainterPath path = Lines({{5, 3.5}, {15, 3.5}, {19, 7.5}, {19, 20.5}, {5, 20.5}}, true);
    for (const qreal y : {9.0, 12.7, 16.4})
        path.addPath(Lines({{8.5, y}, {15.5, y}}));
    return path;
}

QPainterPath Tree()
{
    QPainterPath path = Box(14, 3.5, 6.5, 5);
    path.addPath(Box(3.5, 10, 6.5, 5));
    path.addPath(Box(3.5, 17, 6.5, 4));
    path.addPath(Lines({{17, 8.5}, {17, 19}, {10, 19}}));
    path.addPath(Lines({{17, 12.5}, {10, 12.5}}));
    return path;
}

QPainterPath Store()
{
    QPainterPath path = Lines({{3.5, 20.5}, {3.5, 9}, {12, 3.5}, {20.5, 9}, {20.5, 20.5}}, true);
    path.addPath(Lines({{7.5, 20.5}, {7.5, 12}, {16.5, 12}, {16.5, 20.5}}));
    path.addPath(Lines({{7.5, 16}, {16.5, 16}}));
    return path;
}

QPainterPath Ruler()
{
    QPainterPath path = Box(2.5, 8, 19, 8);
    for (const qreal x : {6.5, 10.2, 13.9, 17.6})
        path.addPath(Lines({{x, 8}, {x, x == 10.2 || x == 17.6 ? 12.5 : 11}}));
    return path;
}

QPainterPath Shield()
{
    QPainterPath path;
    path.moveTo(12, 3);
    path.lineTo(19.5, 5.8);
    path.cubicTo(20, 13, 17.5, 18, 12, 21);
    path.cubicTo(6.5, 18, 4, 13, 4.5, 5.8);
    path.closeSubpath();
    path.addPath(Lines({{8.5, 11.8}, {11.2, 14.5}, {15.7, 9}}));
    return path;
}

QPainterPath Sliders()
{
    QPainterPath path;
    const QPointF knobs[] = {{15.5, 6}, {8.5, 12}, {13.5, 18}};
    for (const QPointF &knob : knobs) {
        path.addPath(Lines({{3.5, knob.y()}, {knob.x() - 2.2, knob.y()}}));
        path.addPath(Circle(knob.x(), knob.y(), 2.2));
        path.addPath(Lines({{knob.x() + 2.2, knob.y()}, {20.5, knob.y()}}));
    }
    return path;
}

QPainterPath Person()
{
    QPainterPath path = Circle(12, 8, 4);
    path.moveTo(4, 20.5);
    path.cubicTo(4.5, 12.5, 19.5, 12.5, 20, 20.5);
    return path;
}

QPainterPath Door()
{
    QPainterPath path = Lines({{13, 3.5}, {20, 3.5}, {20, 20.5}, {13, 20.5}});
    path.addPath(Lines({{15.5, 12}, {4, 12}}));
    path.addPath(Lines({{8, 8}, {4, 12}, {8, 16}}));
    return path;
}

QPainterPath Picture()
{
    QPainterPath path = Box(3, 4.5, 18, 15);
    path.addPath(Circle(8.3, 9.5, 1.7));
    path.addPath(Lines({{3.5, 18}, {9.5, 13}, {12.5, 15.5}, {16.5, 11}, {20.5, 15.5}}));
    return path;
}

QPainterPath Hook()
{
    QPainterPath path;
    path.moveTo(9, 9.3);
    path.cubicTo(9.2, 5.6, 15.2, 5.8, 15, 9.6);
    path.cubicTo(14.8, 12, 12, 11.6, 12, 14.2);
    return path;
}

QPainterPath Sign(QPainterPath frame, const QPainterPath &mark, qreal dot)
{
    frame.addPath(mark);
    frame.addPath(Circle(12, dot, 0.4));
    return frame;
}

QPainterPath Cross()
{
    QPainterPath path = Circle(12, 12, 9.3);
    path.addPath(Lines({{8.5, 8.5}, {15.5, 15.5}}));
    path.addPath(Lines({{15.5, 8.5}, {8.5, 15.5}}));
    return path;
}

QPainterPath PathOf(Glyph glyph)
{
    static const QHash<Glyph, QPainterPath> paths{
        {Glyph::Goods, Carton()},
        {Glyph::AddGood, CartonPlus()},
        {Glyph::Choose, Tick()},
        {Glyph::Details, Tags()},
        {Glyph::Divide, CutSheet()},
        {Glyph::Documents, Sheet()},
        {Glyph::Groups, Tree()},
        {Glyph::Stores, Store()},
        {Glyph::Units, Ruler()},
        {Glyph::Rights, Shield()},
        {Glyph::Settings, Sliders()},
        {Glyph::User, Person()},
        {Glyph::Exit, Door()},
        {Glyph::Photo, Picture()},
        {Glyph::Plus, Plus(12, 12, 7)},
        {Glyph::Information, Sign(Circle(12, 12, 9.3), Lines({{12, 11}, {12, 17}}), 7.6)},
        {Glyph::Warning, Sign(Lines({{12, 3}, {21.7, 20.5}, {2.3, 20.5}}, true), Lines({{12, 9.5}, {12, 14.5}}), 17.3)},
        {Glyph::Error, Cross()},
        {Glyph::Question, Sign(Circle(12, 12, 9.3), Hook(), 17.2)},
    };
    return paths.value(glyph);
}

class GlyphEngine : public QIconEngine
{
public:
    GlyphEngine(Glyph glyph, QColor (*color)()) : m_glyph(glyph), m_color(color) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        const qreal side = std::min(rect.width(), rect.height());
        painter->translate(rect.center() + QPointF(0.5, 0.5));
        painter->scale(side / Side, side / Side);
        painter->translate(-Side / 2, -Side / 2);
        QColor color = m_color();
        if (mode == QIcon::Disabled)
            color.setAlphaF(0.35F);
        painter->setPen(QPen(color, 1.7, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(PathOf(m_glyph));
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine *clone() const override { return new GlyphEngine(*this); }

private:
    Glyph m_glyph;
    QColor (*m_color)();
};

} // namespace

QIcon Icon(Glyph glyph, QColor (*color)())
{
    return QIcon(new GlyphEngine(glyph, color));
}

QIcon Icon(Glyph glyph)
{
    return Icon(glyph, theme::Ink);
}

} // namespace host
