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
        f.emplace();
        f->host.settings.record.GoodDetails = true;
        f->database.Exec(u"set identity_insert DetailTypes on insert DetailTypes(ID,Title,DetailType) values"
                         "(2,N'رنگ',1),(3,N'طرح',2),(4,N'O''سریال',3),(5,N'تاریخ',5),(6,N'بارکد',6),(7,N'وزن',4) "
                         "set identity_insert DetailTypes off"_s);
        f->database.Exec(u"insert DetailTypes_SelectedLists(Code,Title,DefaultSelectedList) values(1,N'پیش فرض',1)"_s);
        f->database.Exec(u"insert DetailTypes_SelectedList_Detail(SL_Code,Code,Radif) values(1,2,1),(1,5,2)"_s);
        f->InsertGood(500009, u"دوغ"_s, 909);
    }
    void cleanup() { f.reset(); }

    /// What is done to a good with some types, and which it has in the end.
    void changing_data()
    {
        QTest::addColumn<QString>("types");    // of the good before
        QTest::addColumn<bool>("recorded");    // quantities of its details
        QTest::addColumn<QString>("keys");     // A add, D delete, M mark and go down, L delete all, F save, E leave
        QTest::addColumn<QString>("chosen");   // what the chooser gives
        QTest::addColumn<QStringList>("said"); // in order, without the success
        QTest::addColumn<QString>("after");
        const QString row = u"MsgDeleteRow()"_s;
        const QString all = u"MsgDeleteItem(همه سطرهاي)"_s;
        const auto box = [](const QString &text) { return QStringList{text}; };
        QTest::newRow("added") << u"2"_s << false << u"AF"_s << u"6,4,"_s << QStringList() << u"2,4,6"_s;
        QTest::newRow("added and left") << u"2"_s << false << u"AE"_s << u"6,"_s << QStringList() << u"2"_s;
        QTest::newRow("nothing chosen") << u"2"_s << false << u"AF"_s << QString() << QStringList() << u"2"_s;
        QTest::newRow("no more than five")
            << u"2,3,5"_s << false << u"AF"_s << u"4,3,6,7,"_s << QStringList() << u"2,3,4,5,6"_s;
        QTest::newRow("a sixth")
            << u"2,3,4,5,7"_s << false << u"AF"_s << u"6,"_s
            << box(u"ShowMessage(کاربر گرامی برای هر کالا می توان حداکثر 5 نوع جزییات تخصیص داد)"_s) << u"2,3,4,5,7"_s;
        QTest::newRow("the current row") << u"2,3,5"_s << false << u"DF"_s << QString() << box(row) << u"3,5"_s;
        QTest::newRow("the marked rows") << u"2,3,5"_s << false << u"MMDF"_s << QString() << box(row) << u"5"_s;
        QTest::newRow("all of them") << u"2,3,5"_s << false << u"LF"_s << QString() << box(all) << QString();
        QTest::newRow("deleted and left") << u"2,3"_s << false << u"LE"_s << QString() << box(all) << u"2,3"_s;
        QTest::newRow("nothing to delete") << QString() << false << u"DLF"_s << QString() << QStringList() << QString();
        const QString recorded = u"ShowMessage(کاربر گرامی به دلیل ثبت مقدار برای "_s;
        QTest::newRow("recorded")
            << u"2,3"_s << true << u"ADLF"_s << u"6,"_s
            << QStringList{recorded + u"جزییات تعریف شده در لیست امکان تعریف جزییات جدید برای کالا مقدور نمی باشد)"_s,
                           recorded + u"این جزییات حذف آن مقدور نمی باشد)"_s,
                           recorded + u"جزییات امکان حذف جزییات مقدور نمی باشد)"_s}
            << u"2,3"_s;
        // Another desk records quantities while the editor is open.
        QTest::newRow("recorded meanwhile")
            << u"2,3"_s << false << u"DRFE"_s << QString()
            << QStringList{row, recorded + u"این جزییات حذف آن مقدور نمی باشد)"_s} << u"2,3"_s;
    }
    void changing()
    {
        QFETCH(QString, types);
        QFETCH(bool, recorded);
        QFETCH(QString, keys);
        QFETCH(QStringList, said);
        if (!types.isEmpty())
            f->database.Exec(u"insert GoodDetailRelation(GoodCode,DetailID) select 500009,ID from DetailTypes "
                             "where ID in (%1)"_s.arg(types));
        if (recorded)
            f->host.goodDetails.recorded << 500009;
        QFETCH(QString, chosen);
        f->host.entities.multipleChoice = chosen;
        f->OpenGood(500009, [&](QWidget *screen) {
            test::Press(Qt::Key_3, Qt::ControlModifier);
            test::Focus(screen, Grid);
            QStringList heard;
            for (const QChar key : keys) {
                Do(screen, key);
                heard += f->host.messages.TakeAll();
            }
            heard.removeAll(u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s);
            QCOMPARE(heard, said);
        });
        QTEST(Types(500009), "after");
    }

    /// The default types of a new good follow its code; the second record does not show the marks of the first.
    void newGoodBeginsWithTheDefaults()
    {
        f->keepsScreen = true;
        f->host.entities.multipleChoice = u"4,"_s;
        f->OpenNew(u"5"_s, [&](QWidget *screen) {
            f->FillRequired(screen);
            test::Enter(screen, u"Code_EDT"_s, u"500077"_s);
            test::Press(Qt::Key_3, Qt::ControlModifier);
            test::Focus(screen, Grid);
            test::Press(Qt::Key_F4);
            QCOMPARE(f->host.entities.wanted.ExcludedCodes, u"2,5"_s);
            QCOMPARE(f->host.entities.wanted.PreviousCount, 2);
            test::Press(Qt::Key_Insert);
            test::Press(Qt::Key_F3);
            f->host.messages.TakeAll();
            test::Press(Qt::Key_Escape); // the next new good
        });
        QCOMPARE(Types(500077), u"2,4,5"_s);
        f->OpenGood(500077, [&](QWidget *screen) {
            auto &grid = test::Find<host::Grid>(screen, Grid);
            QCOMPARE(grid.RowCount(), 3);
            QVERIFY(grid.MarkedKeys().isEmpty());
            test::Press(Qt::Key_3, Qt::ControlModifier);
            test::Picture(*screen, u"good-editor-details"_s);
            test::Press(Qt::Key_Escape);
        });
        f->Open(500077, host::TFormMode::Review, {}, [&](QWidget *screen) {
            test::Press(Qt::Key_3, Qt::ControlModifier);
            test::Focus(screen, Grid);
            f->host.entities.calls.clear();
            for (const QChar key : u"AD"_s)
                test::Press(key == u'A' ? Qt::Key_F4 : Qt::Key_F7);
            QVERIFY(!test::Find(screen, u"NewDetail_BTN"_s).isVisible() && f->host.entities.calls.isEmpty());
            test::Press(Qt::Key_Escape);
        });
    }

private:
    QString Types(int good) const
    {
        return f->database
            .Rows(u"select DetailID from GoodDetailRelation where GoodCode=%1 order by DetailID"_s.arg(good))
            .join(u',');
    }
    void Do(QWidget *screen, QChar key)
    {
        if (key == u'R') {
            f->host.goodDetails.recorded << 500009;
            return;
        }
        if (key == u'E')
            return f->Leave();
        const bool deletes = key == u'D' || key == u'L';
        if (deletes && f->host.goodDetails.recorded.isEmpty() && !test::Find<host::Grid>(screen, Grid).IsEmpty())
            f->host.messages.Answer(true);
        if (key == u'L')
            test::Find<QPushButton>(screen, u"DeleteAllDetail_BTN"_s).click();
        else
            test::Press(QHash<QChar, Qt::Key>{
                {u'A', Qt::Key_F4}, {u'D', Qt::Key_F7}, {u'M', Qt::Key_Insert}, {u'F', Qt::Key_F3}}[key]);
    }

    const QString Grid = u"GoodDetails_GRD"_s;
    std::optional<EditorFixture> f;
};

REGISTER_TEST(TestGoodDetailTypes)
#include "tst_details.moc"
