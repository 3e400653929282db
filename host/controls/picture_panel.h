#pragma once

#include "host/host_export.h"

#include <QByteArray>
#include <QList>
#include <QPixmap>
#include <QWidget>

class QLabel;
class QToolButton;

namespace host {

/// The pictures of one record, one at a time, with first / previous / next / last / close.
class HOST_EXPORT PicturePanel : public QWidget
{
    Q_OBJECT

public:
    explicit PicturePanel(QWidget *parent = nullptr);

    /// Encoded images in their order; an image that cannot be decoded shows as such and keeps its place.
    void SetPictures(const QList<QByteArray> &pictures);
    int Count() const { return static_cast<int>(m_pictures.size()); }
    /// The picture shown, -1 when there is none.
    int Current() const { return m_current; }

public slots:
    void First();
    void Previous();
    void Next();
    void Last();

signals:
    /// The close button was pressed; the owner hides the panel.
    void CloseRequested();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void Show(int index);
    void Fit();

    QList<QByteArray> m_pictures;
    int m_current = -1;
    QPixmap m_pixmap;
    QLabel *m_picture;
    QLabel *m_position;
    QToolButton *m_first;
    QToolButton *m_previous;
    QToolButton *m_next;
    QToolButton *m_last;
};

} // namespace host
