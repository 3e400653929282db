#include "desk/help/guide.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace desk::guide {

namespace {

QString FileOf(const QUrl &page)
{
    return u':' + page.path();
}

QString PictureFile(const QString &name)
{
    QDir place(QCoreApplication::applicationDirPath());
    if (!place.cd(QString::fromLatin1(GOODS_PICTURES_PLACE))) // not installed
        place.setPath(QString::fromUtf8(GOODS_PICTURES_BUILT));
    return place.absoluteFilePath(name.section(u'/', -1));
}

/// A document lays its tables out from left to right, whatever its direction.
QString Mirrored(const QString &row)
{
    QStringList cells = row.trimmed().split(u'|');
    std::reverse(cells.begin(), cells.end());
    return cells.join(u'|');
}

} // namespace

QUrl PageOf(const QString &screen)
{
    const QUrl page(u"qrc:/desk/guide/%1.md"_s.arg(screen));
    return QFile::exists(FileOf(page)) ? page : QUrl(u"qrc:/desk/guide/index.md"_s);
}

QString TextOf(const QUrl &page)
{
    QFile file(FileOf(page));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines;
    static const QRegularExpression picture(u"^!\\[[^\\]]*\\]\\(([^)]+)\\)$"_s);
    for (const QString &line : QString::fromUtf8(file.readAll()).split(u'\n')) {
        const QRegularExpressionMatch named = picture.match(line.trimmed());
        if (line.startsWith(u'|'))
            lines << Mirrored(line);
        else if (!named.hasMatch() || QFile::exists(PictureFile(named.captured(1))))
            lines << line;
    }
    return lines.join(u'\n');
}

QImage Picture(const QString &name)
{
    return QImage(PictureFile(name));
}

} // namespace desk::guide
