#include "screens/goods_list/good_tags.h"

#include "host/controls/number_text.h"
#include "host/data/dataset.h"
#include "host/look/theme.h"

#include <QGridLayout>
#include <QImage>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace goods_list {

namespace {

/// Room for a few goods; more are scrolled to.
constexpr int MaximumHeight = 96;

/// A swatch is one colour all over; a tag without one gets a quiet colour of the house.
QColor SwatchColor(const QByteArray &image)
{
    const QImage swatch = QImage::fromData(image);
    return swatch.isNull() ? host::theme::Line() : swatch.pixelColor(swatch.rect().center());
}

} // namespace

QList<host::Tag> ReadTags(const host::Dataset &tags)
{
    QList<host::Tag> all;
    for (int row = 0; row < tags.RecordCount(); ++row)
        all.append({tags.FieldAt(row, u"ID").toInt(), tags.FieldAt(row, u"Name").toString(),
                    SwatchColor(tags.FieldAt(row, u"image").toByteArray())});
    return all;
}

GoodTagsView::GoodTagsView(QWidget *parent) : QScrollArea(parent)
{
    setFrameShape(QFrame::NoFrame);
    viewport()->setAutoFillBackground(false);
    setStyleSheet(u"background: transparent; border: none;"_s);
    setWidgetResizable(true);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void GoodTagsView::Show(const QList<GoodTags> &goods, bool editable, int more)
{
    auto *lines = new QWidget(this);
    auto *grid = new QGridLayout(lines);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(12);
    grid->setVerticalSpacing(4);
    grid->setColumnStretch(1, 1);
    for (const GoodTags &good : goods) {
        const int row = grid->rowCount();
        auto *panel = new host::TagsPanel(lines);
        panel->setReadOnly(!editable || goods.size() > 1);
        panel->SetAvailable(m_available);
        panel->ShowStored(good.Tags);
        connect(panel, &host::TagsPanel::Changed, this,
                [this, panel, code = good.Code] { emit Changed(code, panel->CodesText()); });
        auto *name = new QLabel(good.Name, lines);
        name->setTextFormat(Qt::PlainText);
        grid->addWidget(name, row, 0);
        grid->addWidget(panel, row, 1);
    }
    if (more > 0)
        grid->addWidget(new QLabel(u"و %1 کالای دیگر"_s.arg(host::DisplayNumber(QString::number(more))), lines),
                        grid->rowCount(), 0);
    grid->setRowStretch(grid->rowCount(), 1);
    setWidget(lines);
    setFixedHeight(qMin(lines->sizeHint().height(), MaximumHeight));
}

} // namespace goods_list
