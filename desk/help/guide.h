#pragma once

#include <QImage>
#include <QString>
#include <QUrl>

/// The guide as it travels with the program: pages in Markdown inside it, pictures of the screens beside it.
namespace desk::guide {

/// The page of a screen, or the table of contents when there is none.
QUrl PageOf(const QString &screen);

/// A page's text, without the pictures that this desk does not have; empty when there is no such page.
QString TextOf(const QUrl &page);

/// The picture that a page calls `name`; null when this desk does not have it.
QImage Picture(const QString &name);

} // namespace desk::guide
