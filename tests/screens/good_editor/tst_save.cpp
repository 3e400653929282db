#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>

/// Saving a good: what is typed becomes rows, all of them or none.
class TestGoodSave : public QObject
{
    Q_OBJECT

private slots:
    void aNewGoodByKeysAlone()
    {
        EditorFixture f;
        f.OpenNew(u"5"_qs, [&](QWidget *screen) {
            QCOMPARE(test::Focused(), u"Name_EDT"_qs);
            test::Type(u"شیر"_qs);
            test::Press(Qt::Key_Return);
            QCOMPARE(test::Focused(), u"Kala_Type_EDT"_qs);
            test::Type(u"پرچرب"_qs);
            test::Press(Qt::Key_Return);
            test::Type(u"یک لیتری"_qs);
            test::Picture(*screen, u"general"_qs);
            test::Press(Qt::Key_Return);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.TakeAll(), QStringList{u"x"_qs});
            f.Leave();
        });
    }
};

REGISTER_TEST(TestGoodSave)
#include "tst_save.moc"
