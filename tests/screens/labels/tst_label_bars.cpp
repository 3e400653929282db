#include "screens/labels/label_output.h"
#include "tests/support/test_main.h"

#include <QPainter>
#include <QPrinter>
#include <QProcess>
#include <QtTest>

#include <csignal>
#include <sys/resource.h>

#define ZX_USE_UTF8
#include <ZXing/ReadBarcode.h>

using namespace labels;

namespace {

constexpr int Thermal = 203;

/// What a scanner reads in the picture, with the kind of barcode; empty when it reads nothing.
QString Scanned(const QImage &picture)
{
    const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
    using ZXing::BarcodeFormat;
    const ZXing::Result read = ZXing::ReadBarcode(
        {grey.constBits(), grey.width(), grey.height(), ZXing::ImageFormat::Lum, int(grey.bytesPerLine())},
        ZXing::DecodeHints().setFormats(BarcodeFormat::EAN13 | BarcodeFormat::EAN8 | BarcodeFormat::Code128));
    return read.isValid() ? QString::fromStdString(ZXing::ToString(read.format()) + (" " + read.text())) : QString();
}

Job JobFor(const Choices &choices, const QString &barcode, int count = 1)
{
    return {choices,
            {{u"شیر کم‌چرب یک لیتری"_s, u"۱۲۵٬۰۰۰"_s, barcode, Encode(barcode)}},
            QList<int>(count, 0)};
}

QImage PageOf(const Job &job, int page = 0)
{
    const Paper paper = PaperOf(job.choices);
    const int dots = job.choices.dotsPerInch;
    QImage image(Dots(paper.page.width(), dots), Dots(paper.page.height(), dots), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    PaintPage(painter, job, page, dots);
    return image;
}

/// The label with this number on its page, cut out.
QImage CutOut(const QImage &page, const Job &job, int number)
{
    const QRectF at = SpotOf(PaperOf(job.choices), job.choices.start, number).at;
    const int dots = job.choices.dotsPerInch;
    return page.copy(Dots(at.left(), dots), Dots(at.top(), dots), Dots(at.width(), dots), Dots(at.height(), dots));
}

const QString Longest = u"Ab-Cd.Ef/Gh_Ij Kl+Mn:Op#Q"_s; // 25 characters, letters without pairs of digits

} // namespace

/// The bars as a scanner reads them in the printed picture.
class TestLabelBars : public QObject
{
    Q_OBJECT

private slots:
    void Scanners_data()
    {
        QTest::addColumn<int>("layout");
        QTest::addColumn<QString>("barcode");
        QTest::addColumn<int>("dots");
        QTest::addColumn<QString>("read");
        const std::pair<const char *, int> layouts[] = {
            {"shelf", int(Layout::Shelf)}, {"sticker", int(Layout::Sticker)}, {"sheet", int(Layout::Sheet)}};
        for (const auto &[name, layout] : layouts)
            for (const int dots : {Thermal, 300, 600})
                for (const QString &read :
                     {u"EAN-13 6260998877662"_s, u"EAN-13 0001234567895"_s, u"EAN-8 12345670"_s, u"EAN-8 00000017"_s,
                      u"Code128 ABC-abc 12"_s, u"Code128 00012345"_s, u"Code128 1234567890123456789012345"_s,
                      u"Code128 \"%_[!~"_s, u"Code128 "_s + Longest})
                    QTest::addRow("%s, %d dpi, %s", name, dots, qPrintable(read))
                        << layout << read.section(u' ', 1)
                        << dots
                        // A module of one dot is too narrow at 300 dpi, one of two too wide for the sticker.
                        << (layout == int(Layout::Sticker) && dots == 300 && read.contains(Longest) ? QString() : read);
        QTest::newRow("too long for bars") << int(Layout::Sticker) << QString(40, u'a') << Thermal << QString();
        QTest::newRow("no bars, no scan") << int(Layout::Sticker) << QString() << Thermal << QString();
    }

    void Scanners()
    {
        QFETCH(int, layout);
        QFETCH(QString, barcode);
        QFETCH(int, dots);
        QFETCH(QString, read);
        Choices choices{static_cast<Layout>(layout)};
        choices.dotsPerInch = dots;
        const Job job = JobFor(choices, barcode);
        QCOMPARE(BarsFit(job.labels.first(), choices), !read.isEmpty() || barcode.isEmpty());
        QCOMPARE(Scanned(CutOut(PageOf(job), job, 0)), read);
    }

    /// A used sheet goes on at its place, the next page begins at the first; nothing is printed in the used places.
    void SheetGoesOn()
    {
        Choices choices{Layout::Sheet};
        choices.start = 23;
        const Job job = JobFor(choices, u"6260998877662"_s, 3);
        QCOMPARE(job.Pages(), 2);
        const QImage first = PageOf(job);
        const QImage second = PageOf(job, 1);
        const QString read = u"EAN-13 6260998877662"_s;
        QCOMPARE(Scanned(CutOut(first, job, 0)), read);
        QCOMPARE(Scanned(CutOut(first, job, 1)), read);
        QCOMPARE(Scanned(CutOut(second, job, 2)), read);
        QImage left = first;
        QPainter(&left).fillRect(0, Dots(297.0 * 7 / 8, Thermal), Dots(140, Thermal), 999, Qt::white);
        QImage blank = left;
        blank.fill(Qt::white);
        QCOMPARE(left, blank);
    }

    /// The file has a page for each label of a roll, and its bars are read as they come out of a 203 dpi printer.
    void PdfPages()
    {
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"لیبل.pdf"_s);
        const Job job = JobFor({Layout::Sticker}, Longest, 3);
        QVERIFY(LabelOutput(job, u"لیبل"_s, nullptr).WritePdf(path));
        const QString picture = folder.filePath(u"page"_s);
        QCOMPARE(QProcess::execute(u"pdftoppm"_s, {u"-r"_s, u"203"_s, u"-mono"_s, path, picture}), 0);
        for (const int page : {1, 2, 3})
            QCOMPARE(Scanned(QImage(u"%1-%2.pbm"_s.arg(picture).arg(page))), u"Code128 "_s + Longest);
        QVERIFY(!QFile::exists(picture + u"-4.pbm"_s));
        // The disk is full half-way: what was there before stays, and nothing beside it.
        const auto files = [&folder] { return QDir(folder.path()).entryList(QDir::Files); };
        const qint64 size = QFileInfo(path).size();
        const QStringList before = files();
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit room{};
        getrlimit(RLIMIT_FSIZE, &room);
        const rlimit little{2000, room.rlim_max};
        setrlimit(RLIMIT_FSIZE, &little);
        bool failed = false;
        try {
            LabelOutput(JobFor({}, Longest, 9), u"لیبل"_s, nullptr).WritePdf(path);
        } catch (const std::runtime_error &) {
            failed = true;
        }
        setrlimit(RLIMIT_FSIZE, &room);
        QVERIFY(failed);
        QCOMPARE(QFileInfo(path).size(), size);
        QCOMPARE(files(), before);
        QVERIFY_THROWS_EXCEPTION(std::runtime_error,
                                 LabelOutput(job, u"لیبل"_s, nullptr).WritePdf(folder.filePath(u"no/such.pdf"_s)));
    }
};

REGISTER_TEST(TestLabelBars)
#include "tst_label_bars.moc"
