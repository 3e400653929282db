#include "tests/support/printed_pages.h"

#include <algorithm>
#include <functional>
#include <map>

namespace test {

PrintedPages::PrintedPages()
{
    setEngines(&m_engine, &m_engine);
}

QList<QStringList> PrintedPages::Page::Rows() const
{
    // A row may have a frame of its own around those of its cells: the narrowest frame is the cell.
    std::map<double, std::map<double, QString, std::greater<>>> rows;
    for (const auto &[at, text] : runs) {
        const QRectF *cell = nullptr;
        for (const QRectF &frame : frames)
            if (frame.contains(at) && (!cell || frame.width() < cell->width()))
                cell = &frame;
        if (cell)
            rows[cell->top()][cell->left()] += text;
    }
    QList<QStringList> table;
    for (const auto &[top, cells] : rows) {
        table << QStringList();
        for (const auto &[left, text] : cells)
            table.last() << text;
    }
    return table;
}

QString PrintedPages::Page::Outside() const
{
    QStringList texts;
    for (const auto &[at, text] : runs)
        if (std::none_of(frames.begin(), frames.end(),
                         [&place = at](const QRectF &frame) { return frame.contains(place); }))
            texts << text;
    return texts.join(QString());
}

void PrintedPages::Engine::drawRects(const QRectF *rects, int count)
{
    for (int i = 0; i < count; ++i)
        pages.last().frames << rects[i];
}

void PrintedPages::Engine::drawTextItem(const QPointF &at, const QTextItem &item)
{
    auto &runs = pages.last().runs;
    const auto follows = [&at](const std::pair<QPointF, QString> &run) {
        return run.first.y() > at.y() || (run.first.y() == at.y() && run.first.x() < at.x());
    };
    runs.insert(std::find_if(runs.begin(), runs.end(), follows), {at, item.text()});
}

QVariant PrintedPages::Engine::property(PrintEnginePropertyKey key) const
{
    return key == PPK_QPageLayout ? QVariant::fromValue(m_layout) : key == PPK_Resolution ? QVariant(72) : QVariant();
}

bool PrintedPages::Engine::newPage()
{
    pages << Page();
    return true;
}

int PrintedPages::Engine::metric(QPaintDevice::PaintDeviceMetric metric) const
{
    switch (metric) {
    case QPaintDevice::PdmWidth:
        return m_layout.fullRectPoints().width();
    case QPaintDevice::PdmHeight:
        return m_layout.fullRectPoints().height();
    case QPaintDevice::PdmDevicePixelRatio:
        return 1;
    case QPaintDevice::PdmDevicePixelRatioScaled:
        return int(QPaintDevice::devicePixelRatioFScale());
    default:
        return 72;
    }
}

} // namespace test
