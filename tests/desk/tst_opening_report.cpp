#include "host/controls/grid.h"
#include "tests/desk/window_fixture.h"
#include "tests/support/test_main.h"

#include <QComboBox>
#include <QLabel>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTemporaryDir>

/// The opening stock of all goods by store, from its command to the print preview.
class TestOpeningReport : public QObject
{
    Q_OBJECT

private slots:
    void valuesByStore()
    {
        test::DeskWindow w;
        w.t.database.Exec(
            u"delete from GoodFirstAsset insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Radif) values"
            "(110001,1,0,2.5,1),(110002,1,0,3,1),(110001,2,0,4,2),(-1,2,1,99,1) update GoodInf set CostBgPrd=1000"_s);
        w.Run(u"OpeningStock_ACT"_s);
        QWidget *page = w.pages->currentWidget();
        auto &grid = test::Find<host::Grid>(page, u"Opening_GRD"_s);
        QTRY_COMPARE(grid.RowCount(), 3);
        const auto total = [&] { return test::Find<QLabel>(page, u"Total_LBL"_s).text(); };
        QCOMPARE(total(), u"۳ ردیف   ·   ارزش : ۹٬۵۰۰"_s);
        QCOMPARE(grid.VisibleTexts(0).last(), u"۲٬۵۰۰"_s);
        test::Picture(*page, u"opening_report"_s);
        auto &stores = test::Find<QComboBox>(page, u"Store_CMB"_s);
        stores.setFocus();
        test::Press(Qt::Key_End);
        QTRY_COMPARE(grid.RowCount(), 1);
        QCOMPARE(total(), u"۱ ردیف   ·   ارزش : ۴٬۰۰۰"_s);
        const QTemporaryDir folder;
        QFile paper(folder.filePath(u"opening.pdf"_s));
        test::Drive([] { test::Press(Qt::Key_F9); },
                    [&](QWidget *preview) {
                        QVERIFY(preview->windowTitle().contains(u"۴٬۰۰۰"_s));
                        auto *printer = static_cast<QPrintPreviewDialog *>(preview)->printer();
                        printer->setOutputFileName(paper.fileName()); // whatever stands beside the machine
                        test::Drive([] { test::Press(Qt::Key_P, Qt::ControlModifier); },
                                    [](QWidget *) { test::Press(Qt::Key_Return); });
                    });
        QVERIFY(paper.open(QIODevice::ReadOnly) && paper.readAll().startsWith("%PDF"));
        test::Press(Qt::Key_Escape);
    }
};

REGISTER_TEST(TestOpeningReport)
#include "tst_opening_report.moc"
