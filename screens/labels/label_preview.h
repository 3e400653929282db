#pragma once

#include "screens/labels/label_painter.h"

#include <QWidget>

namespace labels {

/// Shows the first page of a job as it will be printed, as large as there is room: the paper with its labels, on a
/// sheet the edges of the labels and the places that are used up.
class LabelPreview : public QWidget
{
    Q_OBJECT

public:
    explicit LabelPreview(QWidget *parent = nullptr);

    void SetJob(const Job &job);

    QSize sizeHint() const override { return {300, 220}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void PaintPlaces(QPainter &painter, const Paper &paper) const;

    Job m_job;
};

} // namespace labels
