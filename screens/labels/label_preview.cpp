#include "screens/labels/label_preview.h"

#include "host/look/theme.h"

#include <QPainter>

#include <algorithm>

namespace labels {

LabelPreview::LabelPreview(QWidget *parent) : QWidget(parent)
{}

void LabelPreview::SetJob(const Job &job)
{
    m_job = job;
    update();
}

void LabelPreview::paintEvent(QPaintEvent *)
{
    const Paper paper = PaperOf(m_job.choices);
    const int dots = m_job.choices.dotsPerInch;
    const QSizeF page(Dots(paper.page.width(), dots), Dots(paper.page.height(), dots));
    const QRectF room = QRectF(rect()).adjusted(2, 2, -2, -2);
    const double scale = std::min(room.width() / page.width(), room.height() / page.height());
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.translate(room.center().x() - page.width() * scale / 2, room.top());
    painter.scale(scale, scale);
    QPen edge(host::theme::PaperLine());
    edge.setCosmetic(true);
    painter.setPen(edge);
    painter.setBrush(Qt::white);
    painter.drawRect(QRectF(QPointF(), page));
    painter.setClipRect(QRectF(QPointF(), page));
    if (m_job.choices.layout == Layout::Sheet)
        PaintPlaces(painter, paper);
    PaintPage(painter, m_job, 0, dots);
}

void LabelPreview::PaintPlaces(QPainter &painter, const Paper &paper) const
{
    const double perMillimetre = Dots(1000, m_job.choices.dotsPerInch) / 1000.0;
    const int used = std::clamp(m_job.choices.start, 1, paper.PerPage()) - 1;
    for (int place = 0; place < paper.PerPage(); ++place) {
        const QRectF at = SpotOf(paper, 1, place).at;
        painter.setBrush(place < used ? host::theme::PaperLine() : QColor(Qt::white));
        painter.drawRect(QRectF(at.topLeft() * perMillimetre, at.size() * perMillimetre));
    }
}

} // namespace labels
