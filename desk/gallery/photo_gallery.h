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
/// What is added is temporary (tmp 1) until the editor that opened the gallery saves its record; deleting and ordering
/// take effect at once.
class TPhotoGallery_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    TPhotoGallery_FRM(host::Host &host, host::TSoftwarePart part, int code);
    ~TPhotoGallery_FRM() override;

    /// Adds an image file at the end; a file that is no image is refused with a message.
    void AddFile(const QString &path);

protected:
    void FormShow() override;

private:
    void AddFromFiles();
    void AddFromClipboard();
    void Add(const QImage &image, const QString &name);
    void DeletePhoto();
    void Move(int step);
    void Fill(int row);
    QString Where() const;

    int m_code;
    std::unique_ptr<Ui::PhotoGallery> m_ui;
};

} // namespace desk
