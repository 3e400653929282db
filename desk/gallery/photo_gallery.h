#pragma once

#include "host/screens/base_dock.h"

#include <memory>

namespace Ui {
class PhotoGallery;
}

namespace desk {

/// The photos of one entity as thumbnails: add from files or from the clipboard, delete, put in
/// order.
///
/// Of a saved record everything takes effect at once, so that two desks with one record lose nothing of each other's.
/// What is added to a new one is temporary (tmp 1) until its editor saves it.
class TPhotoGallery_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    TPhotoGallery_FRM(host::Host &host, host::TSoftwarePart part, int code);
    ~TPhotoGallery_FRM() override;

    /// Adds image files at the end, all of them or none; a file that is no image is left out with a message.
    void AddFiles(const QStringList &paths);

protected:
    void FormShow() override;

private:
    void AddFromFiles();
    void AddFromClipboard();
    /// The picture as it is stored; empty, having told so, for what is none.
    QByteArray Checked(const QImage &image, const QString &name);
    void Store(const QList<QByteArray> &pictures);
    void DeletePhoto();
    void Move(int step);
    void Fill(int row);
    QString Where() const;

    int m_code;
    bool m_isSaved = false;
    std::unique_ptr<Ui::PhotoGallery> m_ui;
};

} // namespace desk
