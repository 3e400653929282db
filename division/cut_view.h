#pragma once

#include "division/sheet_layout.h"

#include <QWidget>

namespace division {

/// The drawing of a plan beside the list of parts, with what does not fit below it.
class CutView : public QWidget
{
    Q_OBJECT

public:
    explicit CutView(QWidget *parent = nullptr);

    void SetPlan(const SheetPlan &plan);
    const SheetPlan &Plan() const { return m_plan; }
    /// The pieces of this part stand out; -1 for none.
    void SetCurrent(int row);
    /// What is written below the drawing.
    const QString &Remark() const { return m_remark; }

    QSize sizeHint() const override { return {300, 240}; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    SheetPlan m_plan;
    QString m_remark;
    int m_current = -1;
};

} // namespace division
