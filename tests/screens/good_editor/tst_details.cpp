#include "host/controls/grid.h"
#include "tests/screens/good_editor/editor_fixture.h"
#include "tests/support/test_main.h"

#include <QPushButton>
#include <QtTest>

#include <optional>

/// The detail types of a good, worked by keys.
class TestGoodDetailTypes : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_editor.emplace();
        m_editor->host.settings.record.GoodDetails = true;
        m_editor->database.Exec(
            u"set identity_insert DetailTypes on insert DetailTypes(ID,Title,DetailType) values"
            "(2,N'رنگ',1),(3,N'طرح',2),(4,N'O''سریال',3),(5,N'تاریخ',5),(6,N'بارکد',6),(7,N'وزن',4) "
            "set identity_insert DetailTypes off"_s);
        m_editor->database.Exec(
            u"insert DetailTypes_SelectedLists(Code,Title,DefaultSelectedList) values(1,N'پیش فرض',1)"_s);
        m_editor->database.Exec(u"insert DetailTypes_SelectedList_Detail(SL_Code,Code,Radif) values(1,2,1),(1,5,2)"_s);
        m_editor->InsertGood(500009, u"دوغ"_s, 909);
    }
    void cleanup() { m_editor.reset(); }

    /// What is done to a good with some types, and which it has in the end.
    void changing_data()
    {
        // The types of the good before; A add, D delete, L delete all, M mark and go down, R another desk records
        // quantities, U they are entered on a document, F save, E leave; what the chooser gives; the types in the end.
        QTest::addColumn<QString>("story");
        QTest::addColumn<QStringList>("said"); // in order, without the success
        const QString row = u"MsgDeleteRow()"_s;
        const QString all = u"MsgDeleteItem(همه سطرهاي)"_s;
        const QString box = u"ShowMessage(کاربر گرامی %1)"_s;
        const QString recorded = box.arg(u"به دلیل ثبت مقدار برای %1 مقدور نمی باشد"_s);
        const QString kept = recorded.arg(u"این جزییات حذف آن"_s);
        const auto test = [](const char *name, const QString &story, const QStringList &said = {}) {
            QTest::newRow(name) << story << said;
        };
        test("added", u"2|AF|6,4,|2,4,6"_s);
        test("added and left", u"2|AE|6,|2"_s);
        test("nothing chosen", u"2|AF||2"_s);
        test("no more than five", u"2,3,5|AF|4,3,6,7,|2,3,4,5,6"_s);
        test("a sixth", u"2,3,4,5,7|AF|6,|2,3,4,5,7"_s,
             {box.arg(u"برای هر کالا می توان حداکثر 5 نوع جزییات تخصیص داد"_s)});
        test("the current row", u"2,3,5|DF||3,5"_s, {row});
        test("the marked rows", u"2,3,5|MMDF||5"_s, {row});
        test("all of them", u"2,3,5|LF||"_s, {all});
        test("deleted and left", u"2,3|LE||2,3"_s, {all});
        test("nothing to delete", u"0|DLF||"_s);
        test("recorded", u"2,3|RADLF|6,|2,3"_s,
             {recorded.arg(u"جزییات تعریف شده در لیست امکان تعریف جزییات جدید برای کالا"_s), kept,
              recorded.arg(u"جزییات امکان حذف جزییات"_s)});
        test("entered with the new type, for this save", u"2|AUF|6,|2,6"_s);
        test("recorded meanwhile", u"2,3|DRFE||2,3"_s, {row, kept});
    }
    void changing()
    {
        QFETCH(QString, story);
        QFETCH(QStringList, said);
        const QStringList told = story.split(u'|');
        m_editor->database.Exec(u"insert GoodDetailRelation(GoodCode,DetailID) select 500009,ID from DetailTypes "
                                "where ID in (%1)"_s.arg(told.at(0)));
        m_editor->host.entities.multipleChoice = told.at(2);
        m_editor->OpenGood(500009, [&](QWidget *screen) {
            test::Press(Qt::Key_3, Qt::ControlModifier);
            test::Focus(screen, m_grid);
            QStringList heard;
            for (const QChar key : told.at(1)) {
                Do(screen, key);
                heard += m_editor->host.messages.TakeAll();
            }
            heard.removeAll(u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s);
            QCOMPARE(heard, said);
        });
        QCOMPARE(Types(500009), told.at(3));
    }

    /// The default types of a new good follow its code; the second record does not show the marks of the first.
    void newGoodBeginsWithTheDefaults()
    {
        m_editor->keepsScreen = true;
        m_editor->host.entities.multipleChoice = u"4,"_s;
        m_editor->OpenNew(u"5"_s, [&](QWidget *screen) {
            m_editor->FillRequired(screen);
            test::Enter(screen, u"Code_EDT"_s, u"500077"_s);
            test::Press(Qt::Key_3, Qt::ControlModifier);
            test::Focus(screen, m_grid);
            test::Press(Qt::Key_F4);
            QCOMPARE(m_editor->host.entities.wanted.ExcludedCodes, u"2,5"_s);
            QCOMPARE(m_editor->host.entities.wanted.PreviousCount, 2);
            test::Press(Qt::Key_Insert);
            test::Press(Qt::Key_F3);
            m_editor->host.messages.TakeAll();
            test::Press(Qt::Key_Escape); // the next new good
        });
        QCOMPARE(Types(500077), u"2,4,5"_s);
        m_editor->OpenGood(500077, [&](QWidget *screen) {
            auto &grid = test::Find<host::Grid>(screen, m_grid);
            QCOMPARE(grid.RowCount(), 3);
            QVERIFY(grid.MarkedKeys().isEmpty());
            test::Press(Qt::Key_3, Qt::ControlModifier);
            test::Press(Qt::Key_Escape);
        });
        m_editor->Open(500077, host::TFormMode::Review, {}, [&](QWidget *screen) {
            test::Press(Qt::Key_3, Qt::ControlModifier);
            test::Focus(screen, m_grid);
            m_editor->host.entities.calls.clear();
            test::Press(Qt::Key_F4);
            test::Press(Qt::Key_F7);
            QVERIFY(!test::Find(screen, u"NewDetail_BTN"_s).isVisible() && m_editor->host.entities.calls.isEmpty());
            test::Press(Qt::Key_Escape);
        });
    }

private:
    QString Types(int good) const
    {
        return m_editor->database
            .Rows(u"select DetailID from GoodDetailRelation where GoodCode=%1 order by DetailID"_s.arg(good))
            .join(u',');
    }
    void Do(QWidget *screen, QChar key)
    {
        if (key == u'R') {
            m_editor->host.goodDetails.recorded << 500009;
            return;
        }
        if (key == u'U')
            return void(m_editor->host.goodDetails.unsaved << 500009);
        if (key == u'E')
            return m_editor->Leave();
        const bool deletes = key == u'D' || key == u'L';
        if (deletes && m_editor->host.goodDetails.recorded.isEmpty() &&
            !test::Find<host::Grid>(screen, m_grid).IsEmpty())
            m_editor->host.messages.Answer(true);
        if (key == u'L')
            test::Find<QPushButton>(screen, u"DeleteAllDetail_BTN"_s).click();
        else
            test::Press(QHash<QChar, Qt::Key>{
                {u'A', Qt::Key_F4}, {u'D', Qt::Key_F7}, {u'M', Qt::Key_Insert}, {u'F', Qt::Key_F3}}[key]);
    }

    const QString m_grid = u"GoodDetails_GRD"_s;
    std::optional<EditorFixture> m_editor;
};

REGISTER_TEST(TestGoodDetailTypes)
#include "tst_details.moc"
