#include "host/controls/category_path.h"
#include "host/controls/tags_panel.h"
#include "tests/screens/goods_list/list_fixture.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>

/// The advanced search of the goods list, worked by keys.
class TestGoodSearch : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_screen.emplace();
        for (const QString &row : m_screen->database.Rows(u"select Code,isnull(ParentCode,0),Name from Categories"_s))
            m_screen->host.categories.all.append(
                {row.section(u'|', 0, 0).toInt(), row.section(u'|', 1, 1).toInt(), row.section(u'|', 2)});
        // A name that is no name.
        m_screen->database.Exec(u"update SelectedLists set Title=N'O''Neil'', @GrpCode = 1 <b>&ویژه' where Code=2 "
                                "update TagS set Name=N'''; drop table x--' where Code=2 "
                                "update GoodInf set tags=N'2,1' where Code in(110001,150001) "
                                "update GoodInf set tags=N'12,1' where Code=110002"_s);
        m_screen->Open();
    }
    void cleanup()
    {
        test::Press(Qt::Key_Escape);
        m_screen.reset();
    }

    void criteria_data()
    {
        // How many of the first tags; the category that is typed; the place of the list in the chooser, turned round.
        QTest::addColumn<QString>("asked");
        QTest::addColumn<QString>("where");
        QTest::addColumn<QString>("summary");
        const QString in = u"Code in (select Code from SelectedList_Detail where SL_Code=%1)"_s;
        const QString branch = u"Code in (select Kala_code from Kala_category k join Categories c on c.Code="
                               "k.Category_code where c.Path like '%,15,%')"_s;
        const QString tagged = u"','+tags+',' like '%,1,%' and ','+tags+',' like '%,2,%'"_s;
        QTest::newRow("nothing") << u"0||0|"_s << u"1=1"_s << u"بدون شرط"_s;
        QTest::newRow("tags") << u"2||0|"_s << tagged << u"; drop table"_s;
        QTest::newRow("category") << u"0|لبن|0|"_s << branch << u"دسته: "_s;
        QTest::newRow("list") << u"0||1|"_s << in.arg(1) << u"لیست «"_s;
        QTest::newRow("hostile list, left out")
            << u"0||2|x"_s << u"not "_s + in.arg(2) << u"بدون لیست «O'Neil', @GrpCode = 1 <b>&ویژه»"_s;
        QTest::newRow("its own setting") << u"0||3|"_s << u"not "_s + in.arg(3) << u"بدون لیست"_s;
        QTest::newRow("everything") << u"2|لبن|1|x"_s << tagged + u" and not "_s + in.arg(1) + u" and "_s + branch
                                    << u"برچسب: "_s;
    }
    void criteria()
    {
        QFETCH(QString, asked);
        const QStringList parts = asked.split(u'|');
        QFETCH(QString, where);
        test::Drive([] { test::Press(Qt::Key_F8); },
                    [&](QWidget *form) {
                        for (int i = 0; i < parts.at(0).toInt(); ++i) {
                            test::Focus(form, u"add_btn"_s);
                            m_screen->Press({Qt::Key_Space, Qt::Key_Down, Qt::Key_Return});
                        }
                        test::Focus(form, u"Editor"_s);
                        test::Type(parts.at(1));
                        test::Press(Qt::Key_Return);
                        QCOMPARE(test::Find<host::CategoryPath>(form, u"TCategorySearchFrame1"_s).Code(),
                                 parts.at(1).isEmpty() ? 0 : 15);
                        test::Focus(form, u"SelectList_CMB"_s);
                        for (int i = 0; i < parts.at(2).toInt(); ++i)
                            test::Press(Qt::Key_Down);
                        test::Focus(form, u"DisplayType_CHK"_s);
                        if (!parts.at(3).isEmpty())
                            test::Press(Qt::Key_Space);
                        test::Press(Qt::Key_F3);
                    });
        m_screen->Activate();
        QCOMPARE(m_screen->grid.ShownKeys(), m_screen->Codes(where));
        QFETCH(QString, summary);
        const QString shown = Summary();
        QVERIFY2(shown.contains(summary), qPrintable(shown));
        // The criteria stay and do not count while the box is not checked.
        test::Focus(&m_screen->list, u"ADVSearch_CHK"_s);
        test::Press(Qt::Key_Space);
        QCOMPARE(m_screen->grid.ShownKeys(), m_screen->Codes());
        QCOMPARE(Summary(), shown);
        test::Press(Qt::Key_Space);
        QCOMPARE(m_screen->grid.ShownKeys(), m_screen->Codes(where));
    }

    /// Esc leaves everything, F7 empties the form, each user has his own, and what is gone is dropped.
    void keptForTheUser()
    {
        const QStringList shown = m_screen->Codes(u"Code in (select Code from SelectedList_Detail where SL_Code=1)"_s);
        Choose({Qt::Key_Down, Qt::Key_F3});
        QCOMPARE(m_screen->grid.ShownKeys(), shown);
        Choose({Qt::Key_Down, Qt::Key_Escape});
        Choose({Qt::Key_F7, Qt::Key_Escape});
        QCOMPARE(m_screen->grid.ShownKeys(), shown);
        Reopen();
        QCOMPARE(m_screen->grid.ShownKeys(), shown);
        const auto mine = m_screen->host.settings.states;
        m_screen->host.settings.states.clear();
        m_screen->host.settings.user.Code = 8;
        Reopen();
        QCOMPARE(Summary(), u"بدون شرط"_s);
        QCOMPARE(m_screen->grid.ShownKeys(), m_screen->Codes());
        Choose({Qt::Key_Down, Qt::Key_Down, Qt::Key_F3});
        const auto others = m_screen->host.settings.states;
        m_screen->host.settings.states = mine;
        m_screen->host.settings.user.Code = 7;
        Reopen();
        QCOMPARE(m_screen->grid.ShownKeys(), shown);
        // Without the right the list is not offered, and not used.
        m_screen->host.permissions.Deny(TSoftwarePart::Goods, TPermission::SelectedLists);
        Reopen();
        QCOMPARE(m_screen->grid.ShownKeys(), m_screen->Codes());
        test::Drive([] { test::Press(Qt::Key_F8); },
                    [&](QWidget *form) {
                        QVERIFY(!test::Find(form, u"SelectList_CMB"_s).isVisible());
                        test::Press(Qt::Key_Escape);
                    });
        m_screen->host.permissions.denied.clear();
        m_screen->database.Exec(u"delete SelectedLists where Code=2"_s);
        m_screen->host.settings.states = others;
        m_screen->host.settings.user.Code = 8;
        Reopen();
        QCOMPARE(m_screen->grid.ShownKeys(), m_screen->Codes());
    }

    /// A scanned barcode is found whatever the search asks for; the way through the form by Tab and Enter.
    void keys()
    {
        test::Drive([] { test::Press(Qt::Key_F8); },
                    [&](QWidget *form) {
                        test::Focus(form, u"Editor"_s);
                        test::Type(u"نیست"_s);
                        test::Press(Qt::Key_F3);
                        QVERIFY(
                            m_screen->host.messages.Take().contains(u"دسته‌ای با این نام نیست"_s));
                        test::Press(Qt::Key_A, Qt::ControlModifier);
                        test::Type(u"لبن"_s);
                        test::Press(Qt::Key_F3);
                    });
        m_screen->Activate();
        QVERIFY2(Summary().contains(u"دسته: "_s), "what is typed counts");
        test::Drive([] { test::Press(Qt::Key_F8); },
                    [&](QWidget *form) {
                        test::Press(Qt::Key_F7);
                        QCOMPARE(test::TabRound().mid(0, 4),
                                 (QStringList{u"add_btn"_s, u"Editor"_s, u"SelectList_CMB"_s, u"SelectedLists_BTN"_s}));
                        test::Focus(form, u"SelectList_CMB"_s);
                        test::Press(Qt::Key_Down);
                        test::Find<QPushButton>(form, u"SelectedLists_BTN"_s).click();
                        QCOMPARE(m_screen->host.selectedLists.calls, QStringList{u"Call_SelectedLists(1)"_s});
                        test::Press(Qt::Key_F3);
                    });
        m_screen->Activate();
        m_screen->Press({Qt::Key_Insert, Qt::Key_Insert});
        test::Find<QPushButton>(&m_screen->list, u"SelectedList_BTN"_s).click();
        QVERIFY(m_screen->host.selectedLists.calls.last().startsWith(u"AddToSelectedList("_s));
        const QString good = m_screen->database
                                 .Scalar(u"select max(Code) from GoodInf where AbbName like '!%!' and Code not in "
                                         "(select Code from SelectedList_Detail where SL_Code=1)"_s)
                                 .toString();
        const QString barcode = m_screen->database.Scalar(u"select AbbName from GoodInf where Code="_s + good)
                                    .toString()
                                    .section(u'!', 1, 1);
        test::Focus(&m_screen->list, u"GoodListDB_GRD"_s);
        test::Type(barcode);
        test::Press(Qt::Key_Return);
        QCOMPARE(m_screen->grid.CurrentKey(), good);
        QVERIFY(!test::Find<QCheckBox>(&m_screen->list, u"ADVSearch_CHK"_s).isChecked());
    }

private:
    QString Summary() { return test::Find<QLabel>(&m_screen->list, u"ADVSearch_LBL"_s).text(); }
    void Choose(const Keys &keys)
    {
        test::Drive([] { test::Press(Qt::Key_F8); },
                    [&](QWidget *form) {
                        test::Focus(form, u"SelectList_CMB"_s);
                        m_screen->Press(keys);
                    });
        m_screen->Activate();
    }
    void Reopen()
    {
        test::Press(Qt::Key_Escape);
        m_screen->Open();
    }

    std::optional<Screen> m_screen;
};

REGISTER_TEST(TestGoodSearch)
#include "tst_search.moc"
