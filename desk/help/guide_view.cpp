#include "desk/help/guide_view.h"

#include "desk/help/guide.h"
#include "host/look/theme.h"

#include <QTextBlock>
#include <QTextTable>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int Margin = 18;
constexpr int CellPadding = 5;
constexpr int LineHeight = 135; // percent: texts are read here, not entered

void ArrangeTables(QTextFrame *root)
{
    const auto frames = root->childFrames();
    for (QTextFrame *frame : frames) {
        auto *table = qobject_cast<QTextTable *>(frame);
        if (!table)
            continue;
        QTextTableFormat format = table->format();
        format.setLayoutDirection(Qt::RightToLeft);
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        format.setCellPadding(CellPadding);
        format.setCellSpacing(0);
        format.setBorder(1);
        format.setBorderCollapse(true);
        format.setBorderStyle(QTextFrameFormat::BorderStyle_Solid);
        table->setFormat(format);
    }
}

} // namespace

GuideView::GuideView(QWidget *parent) : QTextBrowser(parent)
{
    setObjectName(u"Guide_TXT"_s);
    setAccessibleName(u"متن راهنما"_s);
    setOpenExternalLinks(false);
    setFrameShape(QFrame::NoFrame);
}

QVariant GuideView::loadResource(int type, const QUrl &name)
{
    if (type == QTextDocument::MarkdownResource)
        return guide::TextOf(name);
    if (type != QTextDocument::ImageResource)
        return {};
    QImage picture = guide::Picture(name.path());
    const int room = viewport()->width() - 2 * Margin;
    if (!picture.isNull() && picture.width() > room) {
        const qreal ratio = devicePixelRatioF();
        picture = picture.scaledToWidth(qMin(picture.width(), qRound(room * ratio)), Qt::SmoothTransformation);
        picture.setDevicePixelRatio(picture.width() / qreal(room));
    }
    return picture;
}

void GuideView::doSetSource(const QUrl &page, QTextDocument::ResourceType type)
{
    document()->setDocumentMargin(Margin);
    QTextBrowser::doSetSource(page, type);
    Arrange();
}

/// Markdown knows no direction, and a line that begins with a key would run from left to right.
void GuideView::Arrange()
{
    QTextCursor all(document());
    all.select(QTextCursor::Document);
    QTextBlockFormat direction;
    direction.setLayoutDirection(Qt::RightToLeft);
    direction.setLineHeight(LineHeight, QTextBlockFormat::ProportionalHeight);
    all.mergeBlockFormat(direction);
    ArrangeTables(document()->rootFrame());
}

} // namespace desk
