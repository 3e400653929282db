#pragma once

#include <QPageLayout>
#include <QPaintEngine>
#include <QPrintEngine>
#include <QPrinter>

namespace test {

/// A printer that keeps what is printed: per page the rows of a table, their cells from right to left, and the texts
/// outside it.
class PrintedPages : public QPrinter
{
public:
    struct Page
    {
        QList<QRectF> frames;
        QList<std::pair<QPointF, QString>> runs; ///< downwards, and in a line from right to left

        QList<QStringList> Rows() const;
        QString Outside() const;
    };

    PrintedPages();

    const QList<Page> &Pages() const { return m_engine.pages; }

private:
    class Engine : public QPrintEngine, public QPaintEngine
    {
    public:
        Engine() : QPaintEngine(AllFeatures) {}

        bool begin(QPaintDevice *) override { return newPage(); }
        bool end() override { return true; }
        void updateState(const QPaintEngineState &) override {}
        void drawPixmap(const QRectF &, const QPixmap &, const QRectF &) override {}
        using QPaintEngine::drawRects;
        void drawRects(const QRectF *rects, int count) override;
        void drawTextItem(const QPointF &at, const QTextItem &item) override;
        Type type() const override { return User; }

        void setProperty(PrintEnginePropertyKey, const QVariant &) override {}
        QVariant property(PrintEnginePropertyKey key) const override;
        bool newPage() override;
        bool abort() override { return false; }
        int metric(QPaintDevice::PaintDeviceMetric metric) const override;
        QPrinter::PrinterState printerState() const override { return QPrinter::Active; }

        QList<Page> pages;

    private:
        const QPageLayout m_layout{QPageSize(QPageSize::A4), QPageLayout::Landscape, QMarginsF(28, 28, 28, 28)};
    };

    Engine m_engine;
};

} // namespace test
