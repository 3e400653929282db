#include "desk/gallery/photo_gallery.h"
#include "host/data/query.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QClipboard>
#include <QFileDialog>
#include <QImage>
#include <QListWidget>
#include <QMessageBox>
#include <QMimeData>
#include <QtTest>

using host::TSoftwarePart;

/// The photos of a good, worked by keys.
class TestGallery : public QObject
{
    Q_OBJECT

private slots:
    void photosAreAddedOrderedAndDeleted_data();
    void photosAreAddedOrderedAndDeleted();
    void onlyPicturesAreTaken();
    void clipboardAndCameras();
    void needsTheRight();

private:
    static constexpr int Good = 110001;
    static constexpr int NewGood = 110999; ///< not saved yet

    struct Fixture : test::Desk
    {
        QTemporaryDir folder;

        explicit Fixture(int good = Good) : code(good)
        {
            database.Exec(u"delete from PhotoGallery where Id_pic = %1 and GRPCode = 102"_s.arg(code));
        }
        int code;
        /// A file with a picture of one colour.
        QString File(const QString &name, const QSize &size, const QColor &color) const
        {
            QImage image(size, QImage::Format_RGB32);
            image.fill(color);
            QString path = folder.filePath(name);
            if (!image.save(path))
                qFatal("%s cannot be written", qPrintable(path));
            return path;
        }
        void Open() { desk.photos.Open_Gallery(TSoftwarePart::Goods, code); }
        /// F4, and the name of a file in the dialog that opens.
        static void Add(QWidget *gallery, const QString &path)
        {
            test::Focus(gallery, u"Photos_LST"_s);
            test::Drive([] { test::Press(Qt::Key_F4); },
                        [&](QWidget *dialog) {
                            QVERIFY(qobject_cast<QFileDialog *>(dialog));
                            test::Type(path);
                            test::Press(Qt::Key_Return);
                        });
        }
        /// The colours of the stored pictures, in their order.
        QStringList Colors(int temporary) const
        {
            QStringList colors;
            for (host::Query rows(database.Main(), u"select Picture from PhotoGallery where Id_pic = %1 and tmp = %2 "
                                                   "order by Radif"_s.arg(code)
                                                       .arg(temporary));
                 !rows.Eof(); rows.Next()) {
                const QImage image = QImage::fromData(rows.Value(u"Picture").toByteArray());
                const QColor color = image.pixelColor(image.rect().center());
                colors << (color.red() > 128    ? u"red"_s
                           : color.green() > 96 ? u"green"_s
                                                : u"blue"_s) +
                              u" %1x%2"_s.arg(image.width()).arg(image.height());
            }
            return colors;
        }
    };
};

void TestGallery::photosAreAddedOrderedAndDeleted_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("temporary");
    QTest::newRow("of a saved good: at once") << Good << 0;
    QTest::newRow("of a new good: with its save") << NewGood << 1;
}

void TestGallery::photosAreAddedOrderedAndDeleted()
{
    QFETCH(int, code);
    QFETCH(int, temporary);
    Fixture t(code);
    const QStringList other(temporary == 0 ? 1 : 0, u"green 30x40"_s);
    const QString red = t.File(u"red.png"_s, {40, 30}, Qt::red);
    const QString green = t.File(u"a 'green' one.jpg"_s, {30, 40}, QColor(0, 200, 0));
    const QString blue = t.File(u"آبی.bmp"_s, {3200, 800}, Qt::blue);
    test::Drive(
        [&] { t.Open(); },
        [&](QWidget *gallery) {
            for (const QString &file : {red, green, blue})
                Fixture::Add(gallery, file);
            test::Picture(*gallery, u"gallery"_s);
            auto &photos = test::Find<QListWidget>(gallery, u"Photos_LST"_s);
            QCOMPARE(photos.count(), 3);
            QCOMPARE(photos.currentRow(), 2); // the one that came last
            // Too large a picture is made smaller.
            QCOMPARE(t.Colors(temporary), (QStringList{u"red 40x30"_s, u"green 30x40"_s, u"blue 1600x400"_s}));
            QCOMPARE(t.desk.photos.Photos(TSoftwarePart::Goods, code).size(), temporary == 0 ? 3 : 0);
            // Another desk with the same good adds one, and leaves its editor without saving.
            if (temporary == 0)
                t.database.Exec(u"insert PhotoGallery(GRPCode,Id_pic,Radif,Picture) select 102,%1,9,Picture "
                                "from PhotoGallery where Id_pic=%1 and Radif=2 delete from PhotoGallery where "
                                "tmp>0 and id_pic=%1"_s.arg(code));

            test::Press(Qt::Key_Up, Qt::ControlModifier);
            test::Press(Qt::Key_Up, Qt::ControlModifier);
            test::Press(Qt::Key_Up, Qt::ControlModifier); // it is the first already
            QCOMPARE(photos.currentRow(), 0);
            test::Press(Qt::Key_Down, Qt::ControlModifier);
            QCOMPARE(t.Colors(temporary), (QStringList{u"red 40x30"_s, u"blue 1600x400"_s, u"green 30x40"_s} + other));

            const auto remove = [&](const QList<Qt::Key> &answer) {
                test::Drive([] { test::Press(Qt::Key_F7); },
                            [&](QWidget *question) {
                                QVERIFY(qobject_cast<QMessageBox *>(question));
                                for (const Qt::Key key : answer)
                                    test::Press(key);
                            });
            };
            remove({Qt::Key_Escape});
            QCOMPARE(photos.count(), 3 + other.size());
            remove({Qt::Key_Tab, Qt::Key_Space});
            QCOMPARE(t.Colors(temporary), (QStringList{u"red 40x30"_s, u"green 30x40"_s} + other));
            QCOMPARE(photos.currentRow(), 1);
            test::Press(Qt::Key_Escape);
        });
    t.database.Exec(u"update PhotoGallery set tmp = 0 where Id_pic = %1"_s.arg(code));
    QCOMPARE(t.desk.photos.Photos(TSoftwarePart::Goods, code).size(), 2 + other.size());
    QCOMPARE(t.desk.photos.Photos(TSoftwarePart::Units, code).size(), 0);
}

void TestGallery::onlyPicturesAreTaken()
{
    Fixture t;
    const QString path = t.folder.filePath(u"قیمت.png"_s);
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("no picture at all") > 0);
    file.close();
    test::Drive([&] { t.Open(); },
                [&](QWidget *gallery) {
                    auto *photos = qobject_cast<desk::TPhotoGallery_FRM *>(gallery);
                    QVERIFY(photos);
                    test::Drive([&] { photos->AddFiles({path}); },
                                [](QWidget *box) {
                                    const auto *message = qobject_cast<QMessageBox *>(box);
                                    QVERIFY(message && message->text().contains(u"قیمت.png"));
                                    test::Press(Qt::Key_Return);
                                });
                    QCOMPARE(test::Find<QListWidget>(gallery, u"Photos_LST"_s).count(), 0);
                    // Nothing to delete, nothing to move.
                    test::Press(Qt::Key_F7);
                    test::Press(Qt::Key_Up, Qt::ControlModifier);
                    test::Press(Qt::Key_Escape);
                });
    QCOMPARE(t.Colors(0), QStringList());
}

/// What was copied is pasted; a camera that was held upright gives an upright picture.
void TestGallery::clipboardAndCameras()
{
    Fixture t;
    QImage red(3000, 1500, QImage::Format_RGB32);
    red.fill(Qt::red);
    // A JPEG turned by a quarter (orientation 6), as a telephone writes it: 40 wide and 30 high, seen 30 by 40.
    const QString camera = t.File(u"IMG_1.jpg"_s, {40, 30}, QColor(0, 200, 0));
    QFile file(camera);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QByteArray bytes = file.readAll();
    bytes.insert(2, QByteArray::fromHex("ffe100224578696600004d4d002a00000008000101120003000000010006000000000000"));
    QVERIFY(file.seek(0) && file.write(bytes) == bytes.size());
    file.close();
    test::Drive([&] { t.Open(); },
                [&](QWidget *gallery) {
                    test::Focus(gallery, u"Photos_LST"_s);
                    QGuiApplication::clipboard()->setImage(red);
                    test::Press(Qt::Key_V, Qt::ControlModifier);
                    auto *files = new QMimeData;
                    files->setUrls({QUrl::fromLocalFile(camera)});
                    QGuiApplication::clipboard()->setMimeData(files);
                    test::Press(Qt::Key_V, Qt::ControlModifier);
                    QCOMPARE(t.Colors(0), (QStringList{u"red 1600x800"_s, u"green 30x40"_s}));
                    auto *page = new QMimeData; // a picture copied from a page on the web
                    page->setUrls({QUrl(u"https://example.com/a.png"_s)});
                    page->setImageData(red.scaled(8, 8));
                    QGuiApplication::clipboard()->setMimeData(page);
                    test::Press(Qt::Key_V, Qt::ControlModifier);
                    QCOMPARE(t.Colors(0).constLast(), u"red 8x8"_s);
                    QGuiApplication::clipboard()->setText(u"متن"_s);
                    test::Drive([] { test::Press(Qt::Key_V, Qt::ControlModifier); },
                                [](QWidget *box) {
                                    QVERIFY(qobject_cast<QMessageBox *>(box));
                                    test::Press(Qt::Key_Return);
                                });
                    QCOMPARE(t.Colors(0).size(), 3);
                    test::Press(Qt::Key_Escape);
                });
}

void TestGallery::needsTheRight()
{
    Fixture t;
    t.database.Exec(u"delete from UserRights where SoftwarePart = 102 and Permission = 10"_s);
    QVERIFY(t.desk.settings.SignIn(2));
    test::Drive([&] { t.Open(); },
                [](QWidget *message) {
                    QVERIFY(qobject_cast<QMessageBox *>(message));
                    test::Press(Qt::Key_Escape);
                });
}

REGISTER_TEST(TestGallery)
#include "tst_gallery.moc"
