#include "host/screens/documents_folder.h"

#include <QDir>
#include <QStandardPaths>

namespace host {

QString DocumentsFolder()
{
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    return QDir(documents).exists() ? documents : QDir::homePath();
}

} // namespace host
