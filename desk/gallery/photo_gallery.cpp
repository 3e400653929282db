#include "desk/gallery/photo_gallery.h"

#include "desk/messages/catalogue.h"
#include "host/data/dataset.h"
#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "host/look/icons.h"
#include "ui_photo_gallery.h"

#include <QBuffer>
#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImageReader>
#include <QMimeData>
#include <QPainter>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int LongestSide = 1600; // pixels; larger images are made smaller before they are stored
constexpr int JpegQuality = 88;
constexpr int IdRole = Qt::UserRole;

QByteArray Encoded(QImage image)
{
    if (std::max(image.width(), image.height()) > LongestSide)
        image = image.scaled(LongestSide, LongestSide, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    const bool written = image.hasAlphaChannel() ? image.save(&buffer, "PNG") : image.save(&buffer, "JPG", JpegQuality);
    return written ? bytes : QByteArray();
}

// The picture in a file, upright as the camera was held; nothing for a file that is no picture.
QImage ReadFile(const QString &path)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true); // a phone's picture may carry another ending
    reader.setAutoTransform(true);
    // Decoded small at once: a camera's picture takes hundreds of megabytes otherwise.
    if (const QSize size = reader.size(); std::max(size.width(), size.height()) > LongestSide)
        reader.setScaledSize(size.scaled(LongestSide, LongestSide, Qt::KeepAspectRatio));
    return reader.read();
}

// Thumbnails of one size with the picture in the middle, so that the rows line up.
QIcon Thumbnail(const QByteArray &picture, const QSize &size, qreal ratio)
{
    QPixmap frame(size * ratio);
    frame.setDevicePixelRatio(ratio);
    frame.fill(Qt::transparent);
    QPixmap pixmap;
    if (!pixmap.loadFromData(picture))
        return host::Icon(host::Glyph::Photo);
    pixmap = pixmap.scaled(frame.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
    pixmap.setDevicePixelRatio(ratio);
    QPainter painter(&frame);
    const QSizeF shown = pixmap.deviceIndependentSize();
    painter.drawPixmap(QPointF((size.width() - shown.width()) / 2, (size.height() - shown.height()) / 2), pixmap);
    return QIcon(frame);
}

} // namespace

TPhotoGallery_FRM::TPhotoGallery_FRM(host::Host &host, host::TSoftwarePart part, int code)
    : TBaseDock_FRM(host, part, host::TFormMode::Edit, host.mainWindow), m_code(code),
      m_ui(std::make_unique<Ui::PhotoGallery>())
{
    setObjectName(u"TPhotoGallery_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(u"عکس‌ها"_s);
    Bind(AddFooterCommand(u"Add_BTN"_s, u"افزودن F4"_s), Qt::Key_F4, [this] { AddFromFiles(); });
    Bind(AddFooterCommand(u"Paste_BTN"_s, u"چسباندن Ctrl+V"_s), QKeySequence::Paste, [this] { AddFromClipboard(); });
    Bind(AddFooterCommand(u"Del_BTN"_s, u"حذف F7"_s), Qt::Key_F7, [this] { DeletePhoto(); });
    Bind(AddFooterCommand(u"Earlier_BTN"_s, u"جلوتر"_s), Qt::CTRL | Qt::Key_Up, [this] { Move(-1); });
    Bind(AddFooterCommand(u"Later_BTN"_s, u"عقب‌تر"_s), Qt::CTRL | Qt::Key_Down, [this] { Move(1); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

TPhotoGallery_FRM::~TPhotoGallery_FRM() = default;

QString TPhotoGallery_FRM::Where() const
{
    return u" WHERE Id_pic = %1 AND GRPCode = %2"_s.arg(m_code).arg(static_cast<int>(SoftwarePart()));
}

void TPhotoGallery_FRM::FormShow()
{
    TBaseDock_FRM::FormShow();
    m_isSaved = SoftwarePart() == host::TSoftwarePart::Goods &&
                host::Exists(m_host.DM.ADOConnection1, u"SELECT Code FROM GoodInf WHERE Code = %1"_s.arg(m_code));
    m_ui->Hint_LBL->setText(
        u"عکس اول در لیست کالاها نشان داده می‌شود. "_s +
        (m_isSaved
             ? u"هر تغییر همان لحظه ثبت می‌شود و با انصراف از ویرایش کالا برنمی‌گردد."_s
             : u"عکس‌ها با ذخیره‌ی کالا ماندگار می‌شوند."_s));
    Fill(0);
}

void TPhotoGallery_FRM::Fill(int row)
{
    m_ui->Photos_LST->clear();
    host::Query query(m_host.DM.ADOConnection1,
                      u"SELECT Id, Picture FROM PhotoGallery"_s + Where() + u" ORDER BY Radif, Id"_s);
    for (int number = 1; !query.Eof(); query.Next(), ++number) {
        auto *item = new QListWidgetItem(
            Thumbnail(query.Value(u"Picture").toByteArray(), m_ui->Photos_LST->iconSize(), devicePixelRatioF()),
            host::PersianDigits(QString::number(number)), m_ui->Photos_LST);
        item->setData(IdRole, query.Int(u"Id"));
    }
    m_ui->Photos_LST->setCurrentRow(std::min(row, m_ui->Photos_LST->count() - 1));
}

void TPhotoGallery_FRM::AddFromFiles()
{
    const QStringList files = QFileDialog::getOpenFileNames(this, u"افزودن عکس"_s, {},
                                                            u"عکس‌ها (*.png *.jpg *.jpeg *.bmp *.webp *.gif)"_s);
    AddFiles(files);
}

void TPhotoGallery_FRM::AddFiles(const QStringList &paths)
{
    QList<QByteArray> pictures;
    for (const QString &path : paths)
        if (const QByteArray picture = Checked(ReadFile(path), QFileInfo(path).fileName()); !picture.isEmpty())
            pictures << picture;
    Store(pictures);
}

void TPhotoGallery_FRM::AddFromClipboard()
{
    const QMimeData *clipboard = QGuiApplication::clipboard()->mimeData();
    // A copied file brings its icon along as a picture: the file counts. Of a picture in a page on the web the address
    // comes along, and the picture counts.
    QStringList files;
    for (const QUrl &url : clipboard->urls())
        if (url.isLocalFile())
            files << url.toLocalFile();
    if (!files.isEmpty())
        return AddFiles(files);
    const QByteArray picture = Checked(qvariant_cast<QImage>(clipboard->imageData()), u"آنچه کپی شده"_s);
    if (!picture.isEmpty())
        Store({picture});
}

QByteArray TPhotoGallery_FRM::Checked(const QImage &image, const QString &name)
{
    QByteArray picture = Encoded(image);
    if (picture.isEmpty())
        m_host.messages.ShowMessage(MessageText(message::NotAPicture, {name}), host::MessageIcon::Warning);
    return picture;
}

void TPhotoGallery_FRM::Store(const QList<QByteArray> &pictures)
{
    if (pictures.isEmpty())
        return;
    host::Transaction transaction(m_host.DM.ADOConnection1);
    const QString number = u"(SELECT ISNULL(MAX(Radif), 0) + 1 FROM PhotoGallery"_s + Where() + u')';
    for (const QByteArray &picture : pictures)
        host::Exec(m_host.DM.ADOConnection1,
                   u"INSERT INTO PhotoGallery (GRPCode, Id_pic, Radif, Picture, tmp) SELECT %1, %2, "_s
                           .arg(static_cast<int>(SoftwarePart()))
                           .arg(m_code) +
                       number + u", "_s + host::Literal(picture, host::ColumnKind::Bytes) +
                       (m_isSaved ? u", 0"_s : u", 1"_s));
    transaction.Commit();
    Fill(m_ui->Photos_LST->count() + static_cast<int>(pictures.size())); // on the last
}

void TPhotoGallery_FRM::DeletePhoto()
{
    const QListWidgetItem *item = m_ui->Photos_LST->currentItem();
    if (!item || !m_host.messages.MsgDeleteItem(u"این عکس"_s))
        return;
    const int row = m_ui->Photos_LST->currentRow();
    host::Exec(m_host.DM.ADOConnection1, u"DELETE FROM PhotoGallery WHERE Id = %1"_s.arg(item->data(IdRole).toInt()));
    Fill(row);
}

void TPhotoGallery_FRM::Move(int step)
{
    const int from = m_ui->Photos_LST->currentRow();
    const int to = from + step;
    if (from < 0 || to < 0 || to >= m_ui->Photos_LST->count())
        return;
    QList<int> ids;
    for (int row = 0; row < m_ui->Photos_LST->count(); ++row)
        ids << m_ui->Photos_LST->item(row)->data(IdRole).toInt();
    ids.move(from, to);
    // All places anew: photos that were never ordered have none.
    QString places;
    for (qsizetype i = 0; i < ids.size(); ++i)
        places += u" WHEN %1 THEN %2"_s.arg(ids.at(i)).arg(i + 1);
    host::Exec(m_host.DM.ADOConnection1,
               u"UPDATE PhotoGallery SET Radif = CASE Id"_s + places + u" ELSE Radif END"_s + Where());
    Fill(to);
}

} // namespace desk
