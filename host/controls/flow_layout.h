#pragma once

#include "host/host_export.h"

#include <QLayout>

namespace host {

/// Items one beside the other from the leading edge, in as many lines as the width needs.
class HOST_EXPORT FlowLayout : public QLayout
{
public:
    explicit FlowLayout(QWidget *parent) : QLayout(parent) { setContentsMargins(0, 0, 0, 0); }
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override { m_items << item; }
    int count() const override { return static_cast<int>(m_items.size()); }
    QLayoutItem *itemAt(int index) const override { return m_items.value(index); }
    QLayoutItem *takeAt(int index) override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override { return Place(QRect(0, 0, width, 0), false); }
    QSize sizeHint() const override { return minimumSize(); }
    QSize minimumSize() const override;
    void setGeometry(const QRect &rect) override;

private:
    int Place(const QRect &rect, bool apply) const;

    QList<QLayoutItem *> m_items;
};

} // namespace host
