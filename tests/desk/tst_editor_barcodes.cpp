// Barcodes completed in the good editor by the desk's own service.

#include "screens/good_editor/good_get.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QAction>
#include <QLineEdit>
#include <QTabWidget>
#include <QTest>

using namespace Qt::StringLiterals;

class TestEditorBarcodes : public QObject
{
    Q_OBJECT

private slots:
    void publishedNumbers();
};

/// Six published examples, one in each edit: what is typed without its check digit is saved with it.
void TestEditorBarcodes::publishedNumbers()
{
    const QStringList published{u"9780143007234"_s, u"4006381333931"_s, u"5901234123457"_s,
                                u"96385074"_s,      u"73513537"_s,      u"9780201379624"_s};
    test::Desk fixture;
    test::FakeMessages messages;
    host::Host &desk = fixture.desk.host;
    host::Host host{desk.DM,    desk.permissions, messages,     desk.settings,   desk.entities, desk.vouchers,
                    desk.stock, desk.goodDetails, desk.photos,  desk.categories, desk.scales,   desk.keyboard,
                    desk.clock, desk.barcodes,    desk.finance, desk.theme,      desk.numbers};
    const int code = fixture.database.Scalar(u"select min(Code) from GoodInf"_s).toInt();
    TGood_Get_FRM editor(host);
    test::Drive([&] { editor.Open(code, host::TFormMode::Edit, {}); },
                [&](QWidget *screen) {
                    auto &pages = test::Find<QTabWidget>(screen, u"PageControl1"_s);
                    for (int number = 1; number <= published.size(); ++number) {
                        const QString name = u"BarCode%1_EDT"_s.arg(number);
                        auto &edit = test::Find<QLineEdit>(screen, name);
                        pages.setCurrentWidget(&test::Find(screen, number == 1 ? u"General_TPC"_s : u"Complete_TPC"_s));
                        test::Enter(screen, name, published.at(number - 1).chopped(1));
                        test::Find<QAction>(&edit, u"complete"_s).trigger();
                        QCoreApplication::processEvents();
                        QCOMPARE(edit.text(), published.at(number - 1));
                    }
                    // Other goods of the shop come in the same measure.
                    messages.Answer(true);
                    test::Press(Qt::Key_F3);
                    QCOMPARE(messages.TakeAll(), (QStringList{u"ContinueWithRepeatedField(شاخص کالا)"_s,
                                                              u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s}));
                });
    QCOMPARE(fixture.database.Scalar(u"select AbbName from GoodInf where Code = %1"_s.arg(code)).toString(),
             u'!' + published.join(u'!') + u'!');
}

REGISTER_TEST(TestEditorBarcodes)
#include "tst_editor_barcodes.moc"
