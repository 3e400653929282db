#include "desk/help/guide_view.h"

#include "desk/help/guide.h"
#include "host/look/theme.h"

#include <QTextBlock>
#include <QTextTable>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int Margin = 18;
constexpr int PictureHeight = 320; // the keys below it are what is looked for
constexpr int CellPadding = 5;
constexpr int TableMargin = 10;
constexpr int LineHeight = 135; // percent: texts are read here, not entered

void ArrangeTables(QTextFrame *root)
{
    const auto frames = root->childFrames();
    for (QTextFrame *frame : frames) {
        auto *table = qobject_cast<QTextTable *>(frame);
        if (!table)
            continue;
        QTextTableFormat format = table->format();
        format.setWidth(QTextLength(QTextLength::PercentageLength, 100));
        format.setCellPadding(CellPadding);
        format.setCellSpacing(0);
        format.setBorder(1);
        format.setBorderBrush(host::theme::Line());
        format.setTopMargin(TableMargin);
        format.setBottomMargin(TableMargin);
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
    setStyleSheet(u"QTextEdit, QTextEdit:focus { border: none; }"_s);
    // A bar that came with the page would take room from its picture.
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
}

QVariant GuideView::loadResource(int type, const QUrl &name)
{
    if (type == QTextDocument::MarkdownResource)
        return guide::TextOf(name);
    if (type != QTextDocument::ImageResource)
        return {};
    const QImage picture = guide::Picture(name.path());
    const QSize room(viewport()->width() - 2 * Margin, PictureHeight);
    if (picture.isNull() || QRect({}, room).contains(picture.rect()))
        return picture;
    const qreal ratio = devicePixelRatioF();
    QImage fitting = picture.scaled(room * ratio, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    fitting.setDevicePixelRatio(ratio);
    return fitting;
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
    for (QTextBlock block = document()->begin(); block.isValid(); block = block.next()) {
        QTextBlockFormat format;
        format.setLayoutDirection(Qt::RightToLeft);
        if (!block.text().contains(QChar::ObjectReplacementCharacter)) // a picture is a line of its own
            format.setLineHeight(LineHeight, QTextBlockFormat::ProportionalHeight);
        QTextCursor(block).mergeBlockFormat(format);
    }
    ArrangeTables(document()->rootFrame());
}

} // namespace desk
