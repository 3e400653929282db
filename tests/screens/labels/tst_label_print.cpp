#include "data/goods/good_labels.h"
#include "host/controls/numeric_edit.h"
#include "host/data/query.h"
#include "tests/screens/goods_list/list_fixture.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>

namespace {

void Choose(QWidget *dialog, const QString &box, Qt::Key key, int steps = 1)
{
    test::Focus(dialog, box);
    test::Press(Qt::Key_Home);
    for (int step = 0; step < steps; ++step)
        test::Press(key);
}

QString Total(QWidget *dialog)
{
    return test::Find<QLabel>(dialog, u"Total_LBL"_s).text();
}

/// The mnemonic of the button, from the goods list.
void OpenLabels()
{
    test::Focus(QApplication::activeWindow(), u"Barcode_BTN"_s);
    test::Press(Qt::Key_Space);
}

QStringList Column(const host::Grid &grid, const QString &field)
{
    QStringList texts;
    for (int row = 0; row < grid.RowCount(); ++row)
        texts << grid.VisibleTexts(row).value(grid.VisibleFields().indexOf(field));
    return texts;
}

} // namespace

/// The dialog over the goods list, by keys.
class TestLabelPrint : public QObject
{
    Q_OBJECT

private slots:
    /// Three marked goods, two sheets of four with one place used: the file has two pages.
    void MarkedGoodsToPdf()
    {
        Screen screen;
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"لیبل ها"_s);
        screen.database.Exec(u"update GoodInf set Name = N'\"«شیر»' + NCHAR(8238) + N'<b>''--' where Code = "_s +
                             screen.Codes().first());
        screen.Open();
        screen.Press({Qt::Key_Insert, Qt::Key_Insert, Qt::Key_Insert});
        const QStringList marked = screen.grid.MarkedKeys();
        test::Drive(OpenLabels, [&](QWidget *dialog) {
            QCOMPARE(test::Focused(), u"Layout_CMB"_s);
            QCOMPARE(Column(test::Find<host::Grid>(dialog, u"LabelGoods_GRD"_s), u"Code"_s).size(), marked.size());
            Choose(dialog, u"Layout_CMB"_s, Qt::Key_Down);
            Choose(dialog, u"Layout_CMB"_s, Qt::Key_Down, 2);
            test::Enter(dialog, u"Count_EDT"_s, u"۲"_s);
            test::Enter(dialog, u"Rows_EDT"_s, u"2"_s);
            test::Enter(dialog, u"Columns_EDT"_s, u"2"_s);
            test::Enter(dialog, u"Start_EDT"_s, u"2"_s);
            QCOMPARE(Total(dialog), u"۶ لیبل از ۳ کالا در ۲ برگه"_s);
            test::Drive([] { test::Press(Qt::Key_F9); },
                        [](QWidget *preview) {
                            static_cast<QPrintPreviewDialog *>(preview)->printer()->setOutputFileName(u"/no/no.pdf"_s);
                            preview->findChild<QPrintPreviewWidget *>()->print();
                        });
            QVERIFY(screen.host.messages.Take().contains(u"آماده نوشتن نیست"_s));
            test::Drive([] { test::Press(Qt::Key_F8); },
                        [&](QWidget *files) {
                            test::Enter(files, u"fileNameEdit"_s, path);
                            test::Press(Qt::Key_Return);
                        });
            QCOMPARE(screen.host.messages.TakeAll(), QStringList{u"ShowFlashMessage(فایل نوشته شد)"_s});
            test::Press(Qt::Key_Escape);
        });
        QProcess info;
        info.start(u"pdfinfo"_s, {path + u".pdf"_s});
        QVERIFY(info.waitForFinished());
        const QString said = QString::fromUtf8(info.readAllStandardOutput()).simplified();
        QVERIFY2(said.contains(u"Pages: 2 "_s) && said.contains(u"(A4)"_s), qPrintable(said));
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files), QStringList{u"لیبل ها.pdf"_s});
        screen.list.done(0);
    }

    void CountsAndPrices()
    {
        Screen screen;
        const QStringList codes = screen.Codes();
        screen.database.Exec(u"update GoodStock set Amount1 = -4 where GoodCode = %1"_s.arg(codes[0]));
        screen.database.Exec(u"update GoodStock set Amount1 = 2.25 where GoodCode = %1"_s.arg(codes[1]));
        screen.database.Exec(
            u"update GoodInf set AbbName = N'!شیر!', ConsumerPrice = 1234567.5 where Code = %1"_s.arg(codes[0]));
        screen.database.Exec(u"update GoodInf set AbbName = N'!%2!', ConsumerPrice = 0 where Code = %1"_s.arg(
            codes[1], QString(55, u'x')));
        screen.Open();
        screen.Press({Qt::Key_Insert, Qt::Key_Insert});
        test::Drive(OpenLabels, [&](QWidget *dialog) {
            auto &grid = test::Find<host::Grid>(dialog, u"LabelGoods_GRD"_s);
            QCOMPARE(Total(dialog), u"۲ لیبل از ۲ کالا"_s);
            Choose(dialog, u"PriceLevel_CMB"_s, Qt::Key_End);
            QCOMPARE(Column(grid, u"Price"_s), (QStringList{u"۱٬۲۳۴٬۵۶۷٫۵"_s, u"۰"_s}));
            QCOMPARE(Column(grid, u"Note"_s),
                     (QStringList{u"بارکد ندارد"_s, u"بارکد جا نمی‌شود، بی‌قیمت"_s}));
            QCOMPARE(test::Find<QLabel>(dialog, u"Warning_LBL"_s).text(),
                     u"لیبل ۲ کالا بدون خطوط بارکد چاپ می‌شود"_s);
            Choose(dialog, u"CountBy_CMB"_s, Qt::Key_Down, 2);
            QCOMPARE(Column(grid, u"Count"_s), (QStringList{u"۰"_s, u"۳"_s}));
            Choose(dialog, u"CountBy_CMB"_s, Qt::Key_Down, 1);
            test::Focus(dialog, u"LabelGoods_GRD"_s);
            test::Type(u"۱۲"_s);
            test::Press(Qt::Key_Return);
            test::Type(u"0"_s);
            test::Press(Qt::Key_Return);
            QCOMPARE(Column(grid, u"Count"_s), (QStringList{u"۱۲"_s, u"۰"_s}));
            QCOMPARE(Total(dialog), u"۱۲ لیبل از ۲ کالا"_s);
            test::Press(Qt::Key_Escape);
        });
        screen.list.done(0);
    }

    /// What cannot be printed is refused at its control; what was chosen comes back, the used sheet does not.
    void RefusesAndKeeps()
    {
        Screen screen;
        screen.Open();
        test::Drive(OpenLabels, [&](QWidget *dialog) {
            Choose(dialog, u"Layout_CMB"_s, Qt::Key_End);
            for (const auto &[control, wrong, right] : {std::tuple(u"Rows_EDT"_s, u"0"_s, u"5"_s),
                                                        {u"Columns_EDT"_s, u"9"_s, u"2"_s},
                                                        {u"Start_EDT"_s, u"11"_s, u"10"_s},
                                                        {u"Count_EDT"_s, u""_s, u"3"_s}}) {
                test::Enter(dialog, control, wrong);
                for (const Qt::Key key : {Qt::Key_F3, Qt::Key_F8, Qt::Key_F9}) {
                    test::Press(key);
                    QCOMPARE(screen.host.messages.TakeAll().size(), 1);
                    QCOMPARE(test::Focused(), control);
                }
                test::Enter(dialog, control, right);
            }
            QCOMPARE(Total(dialog), u"۳ لیبل از ۱ کالا در ۲ برگه"_s);
            test::Enter(dialog, u"TopMargin_EDT"_s, u"۱۲۰"_s);
            test::Press(Qt::Key_F8);
            QVERIFY(screen.host.messages.TakeAll().join(QString()).contains(u"کوچک تر"));
            test::Enter(dialog, u"TopMargin_EDT"_s, u"۷٫۵"_s);
            test::Press(Qt::Key_Escape);
        });
        test::Drive(OpenLabels, [&](QWidget *dialog) {
            QCOMPARE(test::Find<QComboBox>(dialog, u"Layout_CMB"_s).currentIndex(), 2);
            for (const auto &[control, text] : {std::pair(u"Rows_EDT"_s, u"5"_s),
                                                {u"Columns_EDT"_s, u"2"_s},
                                                {u"Start_EDT"_s, u"1"_s},
                                                {u"Count_EDT"_s, u"3"_s},
                                                {u"TopMargin_EDT"_s, u"7.5"_s}})
                QCOMPARE(test::Find<host::NumericEdit>(dialog, control).text(), text);
            test::Press(Qt::Key_Escape);
        });
        screen.list.done(0);
    }

    void StatementsDoNotGrow()
    {
        test::Database database(test::Database::Content::Demo);
        QList<int> codes;
        for (const QString &code : database.Rows(u"select Code from GoodInf"_s))
            codes.prepend(code.toInt());
        codes << 999'999; // gone meanwhile
        const quint64 before = host::StatementsSent();
        const QList<goods::LabelGood> read = goods::ReadLabelGoods(database.Main(), codes);
        QCOMPARE(host::StatementsSent() - before, quint64(codes.size() + 999) / 1000);
        QCOMPARE(read.size(), codes.size() - 1);
        QCOMPARE(read.first().code, codes.first());
    }
};

REGISTER_TEST(TestLabelPrint)
#include "tst_label_print.moc"
