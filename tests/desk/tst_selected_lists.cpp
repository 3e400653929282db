// The selected lists: made, filled, ordered and deleted by keys.

#include "desk/selected/selected_lists_data.h"
#include "host/controls/grid.h"
#include "host/data/sql_text.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QCheckBox>
#include <QPushButton>
#include <QtTest>

class TestSelectedLists : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_desk.emplace(); }
    void cleanup() { m_desk.reset(); }

    void madeFilledAndOrdered()
    {
        const QString title = u"O'Neil'; delete SelectedLists--"_s;
        m_desk->desk.selectedLists.SetGoodsChooser([] { return u"110003,110001,110002,110001,77,"_s; });
        test::Drive([&] { m_desk->desk.selectedLists.Call_SelectedLists(0); },
                    [&](QWidget *lists) {
                        Edit(Qt::Key_F4, u" "_s, u"MsgRequiredField(عنوان ليست انتخابي)"_s);
                        Edit(Qt::Key_F4, u"سبد ماه رمضان"_s, u"MsgRepeatedField(عنوان, ليست انتخابي)"_s);
                        Edit(Qt::Key_F4, title, {});
                        test::Find<QPushButton>(lists, u"NewDetail_BTN"_s).click();
                        test::Focus(lists, u"Lists_GRD"_s); // the keys of the goods are not for the lists
                        test::Press(Qt::Key_Delete);
                        test::Press(Qt::Key_Down, Qt::ControlModifier);
                        QVERIFY(m_desk->messages.TakeAll().isEmpty());
                        // A good deleted since is no neighbour.
                        m_desk->database.Exec(
                            u"insert into SelectedList_Detail (SL_Code, Code, Radif) values (5, 77, 2)"_s);
                        test::Focus(lists, u"Goods_GRD"_s);
                        QCOMPARE(Goods(), (QStringList{u"110003"_s, u"110001"_s, u"110002"_s}));
                        test::Press(Qt::Key_Up, Qt::ControlModifier); // the first stays
                        test::Press(Qt::Key_Down, Qt::ControlModifier);
                        QCOMPARE(Goods(), (QStringList{u"110001"_s, u"110003"_s, u"110002"_s}));
                        // Places that stand twice are put right.
                        m_desk->database.Exec(u"update SelectedList_Detail set Radif=1 where SL_Code=5"_s);
                        test::Press(Qt::Key_Down, Qt::ControlModifier);
                        test::Press(Qt::Key_Home, Qt::ControlModifier);
                        test::Press(Qt::Key_Insert);
                        test::Press(Qt::Key_Down, Qt::ControlModifier); // the mark stays with its good
                        m_desk->messages.Answer(true);
                        test::Press(Qt::Key_Delete);
                        QCOMPARE(m_desk->messages.Take(), u"MsgDeleteRow()"_s);
                        QCOMPARE(Goods(), (QStringList{u"110003"_s, u"110002"_s}));
                        Edit(Qt::Key_F5, u"بهاره"_s, {}, true);
                        test::Press(Qt::Key_Escape);
                    });
        QCOMPARE(m_desk->database.Rows(u"select Title,Enable,DisplayType from SelectedLists where Code=5"_s),
                 QStringList{u"بهاره|true|true"_s});
    }

    /// The marked goods of the list: those that are there already keep their place.
    void addedFromTheList()
    {
        test::Drive([&] { QCOMPARE(m_desk->desk.selectedLists.AddToSelectedList(u"110005,110001,110006"_s), 1); },
                    [](QWidget *) { test::Press(Qt::Key_Return); });
        QCOMPARE(m_desk->messages.Take(), u"ShowFlashMessage(۲ کالا به لیست افزوده شد)"_s);
        QCOMPARE(m_desk->database.Rows(u"select Code,Radif from SelectedList_Detail where SL_Code=1 and Radif>21 or "
                                       "SL_Code=1 and Code=110001 order by Radif"_s),
                 (QStringList{u"110001|1"_s, u"110005|22"_s, u"110006|24"_s}));
        test::Drive([&] { QCOMPARE(m_desk->desk.selectedLists.AddToSelectedList(u"110007"_s), 0); },
                    [](QWidget *) { test::Press(Qt::Key_Escape); });
        m_desk->database.Exec(u"delete UserRights where SoftwarePart=102 and Permission=34"_s);
        QVERIFY(m_desk->desk.settings.SignIn(2));
        QCOMPARE(m_desk->desk.selectedLists.AddToSelectedList(u"110007"_s), 0);
        m_desk->desk.selectedLists.Call_SelectedLists(1);
        QCOMPARE(m_desk->messages.TakeAll().size(), 2);
        desk::SelectedListsData data(m_desk->database.Main());
        QVERIFY_THROWS_EXCEPTION(host::RefusedText, data.Add(1, u"1) delete TagS--"_s));
    }

    void deletedWithItsGoods()
    {
        test::Drive([&] { m_desk->desk.selectedLists.Call_SelectedLists(2); },
                    [&](QWidget *lists) {
                        m_desk->messages.Answer(true);
                        test::Press(Qt::Key_F7);
                        QCOMPARE(m_desk->messages.Take(), u"MsgDeleteItem(لیست «کالاهای جشنواره پاییز»)"_s);
                        QCOMPARE(test::Find<host::Grid>(lists, u"Lists_GRD"_s).CurrentKey(), u"3"_s);
                        test::Press(Qt::Key_Escape);
                    });
        QVERIFY(m_desk->database.Rows(u"select Code from SelectedList_Detail where SL_Code=2"_s).isEmpty());
    }

private:
    QStringList Goods() const
    {
        return m_desk->database.Rows(
            u"select Code from SelectedList_Detail where SL_Code=5 and Code <> 77 order by Radif, Code"_s);
    }
    void Edit(Qt::Key key, const QString &title, const QString &refusal, bool leftOut = false)
    {
        test::Drive([key] { test::Press(key); },
                    [&](QWidget *editor) {
                        test::Enter(editor, u"Title_EDT"_s, title);
                        test::Find<QCheckBox>(editor, u"DisplayType_CHK"_s).setChecked(leftOut);
                        test::Press(Qt::Key_F3);
                        QCOMPARE(m_desk->messages.Take(), refusal);
                        if (refusal.isEmpty())
                            return;
                        m_desk->messages.Answer(true);
                        test::Press(Qt::Key_Escape);
                        m_desk->messages.TakeAll();
                    });
    }

    std::optional<test::QuietDesk> m_desk;
};

REGISTER_TEST(TestSelectedLists)
#include "tst_selected_lists.moc"
