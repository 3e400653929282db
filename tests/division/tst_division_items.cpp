// A unit on hand is divided into parts, by keys.

#include "division/cut_view.h"
#include "division/division_items.h"
#include "gooddetail/opening_texts.h"
#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "tests/division/yard_fixture.h"
#include "tests/support/test_main.h"

#include <QLabel>
#include <QToolTip>
#include <QtTest>

namespace {

const QString Over =
    u"ShowMessage(کاربر گرامی مقدار وارد شده به علاوه جمع مقادیر ثبت شده از مقدار کل قابل تقسیم بیشتر می باشد)"_s;
const QString Less = u"ShowMessage(کاربر گرامی مقدار وارد شده از جمع مقادیر تقسیم شده کمتر می باشد)"_s;
const QString HalfTyped = u"ShowMessage(کاربر گرامی سطر وارد شده هنوز ثبت نشده است.)"_s;
const QString InStock = u"tip(کاربر گرامی مقدار وارد شده جهت انجام تقسیم جزئیات از موجودی بیشتر می باشد)"_s;
const QString Zero = u"tip(کاربر گرامی مقدار وارد شده جهت تقسیم جزئیات نمی تواند صفر باشد)"_s;
const QString Parts = u"tip(کاربر گرامی مقدار وارد شده از جمع مقادیر تقسیم شده بیشتر می باشد)"_s;
const QString Question = u"Ask(قطعه های وارد شده نگهداری نمی شود. آیا بدون ذخیره خارج می شوید؟)"_s;

struct Screen : fixture::Yard
{
    using Yard::Yard;

    /// Presses what a script says, its words parted by blanks: "E" Enter, "T" Tab, "Sp" Space, F2 to F6, "Del", "Esc",
    /// "@Name" goes to a control, "G" to the list, "?1" answers the next question; anything else is typed.
    void Run(QWidget *screen, const QString &script)
    {
        static const QHash<QString, Qt::Key> keys{
            {u"E"_s, Qt::Key_Return},   {u"T"_s, Qt::Key_Tab},      {u"F2"_s, Qt::Key_F2},
            {u"F3"_s, Qt::Key_F3},      {u"F4"_s, Qt::Key_F4},      {u"F6"_s, Qt::Key_F6},
            {u"Del"_s, Qt::Key_Delete}, {u"Esc"_s, Qt::Key_Escape}, {u"Sp"_s, Qt::Key_Space}};
        for (const QString &word : script.split(u' ', Qt::SkipEmptyParts)) {
            if (!screen->isVisible())
                throw std::runtime_error("the screen has closed before " + word.toStdString());
            if (word.startsWith(u'@') || word == u"G")
                test::Focus(screen, word == u"G" ? u"GoodDetailDivisionDetailItems_GRD"_s : word.mid(1));
            else if (word.startsWith(u'?'))
                fakes.messages.Answer(word == u"?1");
            else if (keys.contains(word))
                test::Press(keys.value(word));
            else
                test::Type(word);
            QCoreApplication::processEvents(); // what is checked behind the focus
            if (const QString tip = QToolTip::text(); !tip.isEmpty()) {
                m_said << u"tip("_s + tip + u')';
                QToolTip::hideText();
                QTRY_VERIFY(QToolTip::text().isEmpty());
            }
            m_said << fakes.messages.TakeAll();
        }
    }
    /// Runs a script on the screen, which is left by Esc when the script does not close it. Everything said.
    QStringList Divide(int unitType, const QString &script, const std::function<void(QWidget *screen)> &look = {},
                       int row = 1, host::TFormMode mode = host::TFormMode::New)
    {
        m_said.clear();
        test::Drive(
            [&] {
                m_result = m_screen.OpenRow({m_code, row, unitType, 1, 6000 + unitType, mode});
            },
            [&](QWidget *screen) {
                Run(screen, script);
                if (look)
                    look(screen);
                if (!screen->isVisible())
                    return;
                if (test::Find<QLabel>(screen, u"Unsaved_LBL"_s).isVisible())
                    fakes.messages.Answer(true);
                test::Press(Qt::Key_Escape);
                fakes.messages.TakeAll();
            });
        return m_said;
    }
    /// The same on its own, on the sheets.
    void OpenAlone(const QString &script, const std::function<void(QWidget *screen)> &then = {})
    {
        m_said.clear();
        const QString text = Pack(good_detail::DivisionItemsOpening{{5, 1, 6005}, {30, 0, 3, 2, 5}});
        test::Drive([&] { m_result = m_screen.OpenText(text); },
                    [&](QWidget *screen) {
                        Run(screen, script);
                        if (then)
                            then(screen);
                    });
        host.detailDivisions.CreateGoodDetailDivisionDetailTempTable();
        host.detailDivisions.CreateGoodDetailDivisionDetailItemsTempTable();
    }
    /// The parts of a state: length, width, count, amount 2, amount.
    QStringList PartsOf(int tmp, int row = 1) const
    {
        return database.Rows(u"select [Length], Width, Amount3, Amount2, Amount1 from "
                             "#GoodDetailDivisionDetailItemsTemp where Tmp = %1 and DivisionRow = %2 order by "
                             "OperationRow"_s.arg(tmp)
                                 .arg(row));
    }
    static QString Totals(QWidget *screen) { return test::Find<QLabel>(screen, u"Totals_LBL"_s).text(); }

    QStringList m_said;
    int m_result = 0;
    int m_code = 7;
    TGoodDetailDivision_DetailItems_Get_FRM m_screen{host};
};

} // namespace

class TestDivisionItems : public QObject
{
    Q_OBJECT

private slots:
    void divides_data();
    void divides();
    void showsWhatAKindNeeds_data();
    void showsWhatAKindNeeds();
    void drawsWhatIsTyped();
    void escGivesTheFormerPartsBack();
    void rowsDoNotMeet();
    void usedPartsStay();
    void savesOnItsOwn();
};

void TestDivisionItems::divides_data()
{
    QTest::addColumn<int>("unitType");
    QTest::addColumn<QString>("script");
    QTest::addColumn<QStringList>("said");
    QTest::addColumn<QString>("focus"); // empty: accepted
    QTest::addColumn<QStringList>("parts");
    const auto row = [](const char *name, int unitType, const QString &script, const QStringList &said,
                        const QString &focus, const QStringList &parts) {
        QTest::newRow(name) << unitType << script << said << focus << parts;
    };
    const QString count = u"Amount_3_EDT"_s;
    const QString first = u"Amount1_EDT"_s;
    const QString list = u"GoodDetailDivisionDetailItems_GRD"_s;
    row("no sheet", 5, u"0 E"_s, {Zero}, count, {});
    row("no sheet, by F3", 5, u"0 F3"_s, {Zero}, count, {});
    row("more sheets than there are", 5, u"6 T"_s, {InStock}, count, {});
    row("nothing divided", 5, u"F3"_s, {Less}, first, {});
    row("Persian digits, and the rest by one key", 5, u"۲ E ۳ E ۱٫۵ E E E F6 E E"_s, {}, {},
        {u"3|1.5|1|0|4.5"_s, u"3|1.25|2|0|7.5"_s});
    row("equal rectangles become one part", 5, u"E 1 E 2 E E E 1 E 2 E 2 E E F3"_s, {}, {}, {u"1|2|3|0|6"_s});
    row("less than all", 5, u"E 1 E 2 E E E F3"_s, {Less}, first, {u"1|2|1|0|2"_s});
    row("more than all", 5, u"E 1 E 2 E 4 E E"_s, {Over}, first, {});
    row("the second of two is too much", 5, u"E 1 E 2 E 2 E E 2 E 1.000000001 E E E"_s, {Over}, first,
        {u"1|2|2|0|4"_s});
    row("no length", 5, u"E F4"_s, {u"NotZeroValue(طول)"_s}, first, {});
    row("no width", 5, u"E 1 F4"_s, {u"NotZeroValue(عرض)"_s}, u"Amount2_EDT"_s, {});
    row("no count", 5, u"E 1 E 1 E 0 F4"_s, {u"NotZeroValue(تعداد)"_s}, u"Amount3_EDT"_s, {});
    row("a changed part counts once", 5, u"E 3 E 2 E E E G F2 1 E 2 E 3 E E F3"_s, {}, {}, {u"1|2|3|0|6"_s});
    row("a changed part grows too much", 5, u"E 3 E 2 E E E G F2 3.1 E E E E"_s, {Over}, first, {u"3|2|1|0|6"_s});
    row("a changed part joins its equal", 5, u"E 1 E 2 E E E 2 E 2 E E E G F2 1 E 2 E 2 E E F3"_s, {}, {},
        {u"1|2|3|0|6"_s});
    row("fewer sheets than are divided", 5, u"2 E 3 E 2 E 2 E E @Amount_3_EDT 1 T F3"_s, {Parts, Parts}, count,
        {u"3|2|2|0|12"_s});
    row("a part is given up", 5, u"E 1 E 2 E @Cancel_BTN E F3"_s, {Less}, first, {});
    row("half typed", 5, u"E 3 E 2 E E E @Amount1_EDT 1 F3"_s, {HalfTyped}, first, {u"3|2|1|0|6"_s});
    row("a typed part is not replaced", 5, u"E 3 E 2 E E E @Amount1_EDT 1 G F2 F3"_s, {HalfTyped, HalfTyped}, first,
        {u"3|2|1|0|6"_s});
    row("parts go", 5, u"E 1 E 2 E E E 2 E 1 E E E G ?1 Del ?0 Del"_s, {u"MsgDeleteRow()"_s, u"MsgDeleteRow()"_s}, list,
        {u"1|2|1|0|2"_s});
    row("all parts go", 5, u"E 1 E 2 E E E 2 E 1 E E E ?1 @DeleteAllDetail_BTN E"_s, {u"MsgDeleteItem(همه سطرهاي)"_s},
        first, {});
    row("a roll in three, one twice", 3, u"E 20 E 2 E E F6 E F3"_s, {}, {}, {u"0|0|20|2|40"_s, u"0|0|10|1|10"_s});
    row("equal rolls become one part", 3, u"2 E 50 E E E 50 E E E F3"_s, {}, {}, {u"0|0|50|2|100"_s});
    row("a roll without length", 3, u"E F4"_s, {u"NotZeroValue(هر رول)"_s}, first, {});
    row("more than the roll", 3, u"E 25 E 3 E E"_s, {Over}, first, {});
    row("the total tells the count", 3, u"E 25 E T 50 E F3"_s, {}, {}, {u"0|0|25|2|50"_s});
    row("cheese", 1, u"12 E 4 E 2 E F6 E F3"_s, {}, {}, {u"0|0|3|0|12"_s});
    row("all the cheese there is", 1, u"E 0.1 E 125 E F3"_s, {}, {}, {u"0|0|125|0|12.5"_s});
    row("both units are divided", 2, u"E E 6 E E E 6 E 0.4 E E F3"_s, {Less}, first,
        {u"0|0|1|0.5|6"_s, u"0|0|1|0.4|6"_s});
    row("the rest in both units", 2, u"6 E E 2 E 0.1 E E F6 E F3"_s, {}, {}, {u"0|0|1|0.1|2"_s, u"0|0|1|0.4|4"_s});
    row("more of the second unit than there is", 2, u"6 E 1.1 E"_s, {InStock}, count, {});
    row("boxes and pieces", 4, u"E 2 E E E E F6 E F3"_s, {}, {}, {u"0|0|1|0|24"_s, u"0|0|1|0|6"_s});
}

void TestDivisionItems::divides()
{
    QFETCH(int, unitType);
    QFETCH(QString, script);
    QFETCH(QString, focus);
    QFETCH(QStringList, parts);
    Screen yard(unitType != 4);
    const QStringList said = yard.Divide(unitType, script, [&](QWidget *screen) {
        QCOMPARE(screen->isVisible(), !focus.isEmpty());
        if (focus.isEmpty())
            return;
        QCOMPARE(test::Focused(), focus);
        QCOMPARE(yard.PartsOf(1), parts);
    });
    QTEST(said, "said");
    QCOMPARE(yard.m_result == QDialog::Accepted, focus.isEmpty());
    QCOMPARE(yard.PartsOf(1), QStringList());
    QCOMPARE(yard.PartsOf(0), focus.isEmpty() ? parts : QStringList());
    QCOMPARE(yard.database.Rows(u"select GoodCode, DetailValueID, OperationType, OperationCode, OperationRow from "
                                "#GoodDetailDivisionDetailTemp"_s),
             focus.isEmpty() ? QStringList{u"%1|%2|24|7|1"_s.arg(6000 + unitType).arg(unitType)} : QStringList());
}

void TestDivisionItems::showsWhatAKindNeeds_data()
{
    QTest::addColumn<int>("unitType");
    QTest::addColumn<QStringList>("captions");
    QTest::addColumn<QStringList>("columns");
    QTest::newRow("amount") << 1 << QStringList{u"مقدار &کل :"_s, u"&مقدار :"_s, u"&تعداد :"_s}
                            << QStringList{u"تعداد"_s, u"مقدار"_s};
    QTest::newRow("two units") << 2
                               << QStringList{u"مقدار &کل :"_s, u"م&قدار2 :"_s, u"&مقدار :"_s, u"م&قدار2 :"_s,
                                              u"&تعداد :"_s}
                               << QStringList{u"تعداد"_s, u"مقدار2"_s, u"مقدار"_s};
    QTest::newRow("packed") << 3 << QStringList{u"هر رول (متر) :"_s, u"تعداد (رول) :"_s, u"مقدار کل (متر) :"_s,
                                                u"&هر رول :"_s,      u"&تعداد :"_s,      u"مقدار &کل :"_s}
                            << QStringList{u"هر رول (متر)"_s, u"تعداد (رول)"_s, u"مقدار (متر)"_s};
    QTest::newRow("total and part") << 4 << QStringList{u"مقدار &کل :"_s,  u"مقدار کل (کارتن) :"_s, u"مقدار کل :"_s,
                                                        u"مقدار &جزء :"_s, u"&مقدار :"_s,           u"&تعداد :"_s}
                                    << QStringList{u"تعداد"_s, u"مقدار"_s};
    QTest::newRow("area") << 5 << QStringList{u"طول :"_s,   u"تعداد :"_s, u"مقدار کل (متر مربع) :"_s,
                                              u"&طول :"_s,  u"&عرض :"_s,  u"&تعداد :"_s,
                                              u"&مقدار :"_s}
                          << QStringList{u"طول"_s, u"عرض"_s, u"تعداد"_s, u"مقدار"_s};
}

void TestDivisionItems::showsWhatAKindNeeds()
{
    QFETCH(int, unitType);
    Screen yard(unitType != 4);
    yard.fakes.settings.record.DivisionWaste = true;
    yard.Divide(unitType, u"E"_s, [&](QWidget *screen) {
        QStringList captions;
        for (const QString &name :
             {u"MeasureCaption_LBL"_s, u"Amount_3_LBL"_s, u"Amount_5_LBL"_s, u"TotalCaption_LBL"_s, u"Amount1_LBL"_s,
              u"Amount2_LBL"_s, u"Amount3_LBL"_s, u"Amount4_LBL"_s})
            if (const auto &label = test::Find<QLabel>(screen, name); label.isVisible() && !label.text().isEmpty())
                captions << label.text();
        QTEST(captions, "captions");
        auto &grid = test::Find<host::Grid>(screen, u"GoodDetailDivisionDetailItems_GRD"_s);
        QFETCH(QStringList, columns);
        QCOMPARE(grid.VisibleCaptions(), columns + QStringList(u"ضایعات"_s));
        QVERIFY(test::RightOf(test::Find(screen, u"Amount1_EDT"_s), test::Find(screen, u"Amount2_EDT"_s)));
        test::Picture(*screen, u"division-items-%1"_s.arg(unitType));
    });
}

void TestDivisionItems::drawsWhatIsTyped()
{
    Screen yard;
    yard.Divide(5, u"2 E 1 E 2 E 2 E E 2 E 1.5"_s, [&](QWidget *screen) {
        const auto &view = test::Find<division::CutView>(screen, u"Cut_VIEW"_s);
        const auto rows = [&] {
            QString text;
            for (const auto &pieces : view.Plan().Sheets)
                for (const auto &piece : pieces)
                    text += QString::number(piece.Row);
            return text;
        };
        QCOMPARE(view.Plan().Sheet.Count, 2);
        QCOMPARE(rows(), u"011"_s); // what is typed is there already, the largest first
        QCOMPARE(view.Remark(), QString());
        yard.Run(screen, u"@Amount1_EDT 4"_s); // 4 by 1.5 are 6 of 8 square metres, but no sheet is as long
        QCOMPARE(rows(), u"11"_s);
        QCOMPARE(view.Remark(), u"با این برش جا نمی شود: ۱ قطعه ۴ × ۱٫۵"_s);
        QCOMPARE(Screen::Totals(screen), u"کل: ۱۲ متر مربع    تقسیم شده: ۴ متر مربع    مانده: ۸ متر مربع"_s);
        yard.Run(screen, u"E E E E"_s); // and nobody refuses it
        QCOMPARE(yard.PartsOf(1).size(), 2);
    });
}

void TestDivisionItems::escGivesTheFormerPartsBack()
{
    Screen yard;
    yard.Divide(5, u"2 E 3 E 2 E 2 E E @Comment_EDT بریده F3"_s);
    const QStringList before = yard.PartsOf(0);
    QCOMPARE(before, QStringList{u"3|2|2|0|12"_s});
    const auto edit = [&](const QString &script) { return yard.Divide(5, script, {}, 1, host::TFormMode::Edit); };
    QCOMPARE(edit(u"T T T F3"_s), QStringList()); // passing through changes nothing
    QCOMPARE(yard.PartsOf(0), before);
    QCOMPARE(edit(u"@Amount_3_EDT 3 E F6 E ?1 Esc"_s), QStringList{Question});
    QCOMPARE(yard.PartsOf(0), before);
    QCOMPARE(yard.PartsOf(1), QStringList());
    QCOMPARE(edit(u"@Amount_3_EDT 3 E 1 E 2 E 3 E E F3"_s), QStringList());
    QCOMPARE(yard.PartsOf(0), before + QStringList{u"1|2|3|0|6"_s});
    QCOMPARE(yard.database.Rows(u"select Amount3, Amount1, Comment from #GoodDetailDivisionDetailTemp"_s),
             QStringList{u"3|18|بریده"_s});
}

void TestDivisionItems::rowsDoNotMeet()
{
    Screen yard;
    yard.Divide(5, u"2 E 3 E 2 E 2 E E @Comment_EDT بریده F3"_s);
    yard.Divide(3, u"E 50 E E E F3"_s, {}, 2);
    yard.Divide(5, u"6 E"_s, {}, 3); // left with a fault in the count
    yard.Divide(
        1, {},
        [&](QWidget *screen) {
            QCOMPARE(test::Find<host::NumericEdit>(screen, u"Amount_3_EDT"_s).text(), u"12.5"_s);
            QCOMPARE(test::Find<QLineEdit>(screen, u"Comment_EDT"_s).text(), QString());
            QVERIFY(!test::Find(screen, u"Amount_3_EDT"_s).property("fault").toBool());
            QVERIFY(test::Find<host::Grid>(screen, u"GoodDetailDivisionDetailItems_GRD"_s).IsEmpty());
            QVERIFY(Screen::Totals(screen).contains(u"مانده: ۱۲٫۵ عدد"_s));
        },
        4);
    QCOMPARE(yard.PartsOf(0), QStringList{u"3|2|2|0|12"_s});
    QCOMPARE(yard.PartsOf(0, 2), QStringList{u"0|0|50|1|50"_s});
    // Of the five sheets the first row keeps two for itself.
    QCOMPARE(yard.Divide(5, u"4 E"_s, {}, 5), QStringList{InStock});
}

void TestDivisionItems::savesOnItsOwn()
{
    Screen yard;
    yard.OpenAlone(u"2 E ?1 Esc"_s);
    QCOMPARE(yard.m_result, int(QDialog::Rejected));
    QCOMPARE(yard.database.Rows(u"select Code from GoodDetailDivision union all select Code from CodeLock_TBL"_s),
             QStringList());
    yard.fakes.settings.record.DivisionWaste = true;
    // Waste is a part of its own, and the mark holds for that part alone. Another desk has taken the code meanwhile.
    yard.OpenAlone(u"2 E 1.5 E 2 E 1 E T Sp E 1.5 E 2 E 3 E E"_s, [&](QWidget *screen) {
        auto &grid = test::Find<host::Grid>(screen, u"GoodDetailDivisionDetailItems_GRD"_s);
        QCOMPARE(grid.RowCount(), 2);
        for (const bool waste : {true, false}) {
            grid.StandOn(waste ? 0 : 1);
            QCOMPARE(grid.CurrentValue(u"Waste"_s).toBool(), waste);
        }
        yard.database.Exec(u"insert GoodDetailDivision(Code, [Date]) values (1, '1403/05/01')"_s);
        yard.Run(screen, u"F3"_s);
        QCOMPARE(
            yard.m_said,
            QStringList{
                u"ShowMessage(کاربر گرامی، کد ۱ را رایانه‌ی دیگری به کار برده است. کد دیگری وارد کنید.)"_s});
        QVERIFY(screen->isVisible() && grid.RowCount() == 2);
        yard.database.Exec(u"delete GoodDetailDivision"_s);
        yard.m_said.clear();
        yard.Run(screen, u"F3"_s);
    });
    QCOMPARE(yard.m_said, QStringList());
    QCOMPARE(yard.database.Rows(u"select Amount3, Waste from GoodDetailDivisionDetailItems order by OperationRow"_s),
             (QStringList{u"1|true"_s, u"3|false"_s}));
    QCOMPARE(yard.m_result, int(QDialog::Accepted));
    QCOMPARE(yard.database.Rows(u"select Code, [Date] from GoodDetailDivision"_s), QStringList{u"1|1403/05/09"_s});
    QCOMPARE(yard.database.Rows(u"select OperationType, SUM(Amount1), SUM(Amount3) from GoodDetailKardex where "
                                "OperationType > 20 group by OperationType order by OperationType"_s),
             (QStringList{u"24|-12|-2"_s, u"25|12|4"_s}));
    QCOMPARE(yard.database.Rows(u"select Code from CodeLock_TBL"_s), QStringList());
}

void TestDivisionItems::usedPartsStay()
{
    Screen yard;
    yard.OpenAlone(u"E 1 E 2 E 2 E E 2 E 1 E E E F3"_s);
    yard.m_code = 1;
    yard.host.detailDivisions.GoodDetailDivisionDetailTempInsert_Rows(1);
    yard.host.detailDivisions.GoodDetailDivisionDetailItemsTempInsert_Rows(1);
    yard.database.Exec(u"insert GoodDetailKardex(DetailValueID, StoreCode, GoodCode, OperationType, OperationCode, "
                       "Amount1, TotalAmount, Amount3) select DetailValueID, StoreCode, GoodCode, 2, 900, -2, -2, -1 "
                       "from GoodDetailKardex where OperationType = 25 and OperationRow = 1"_s);
    const QString used = u"ShowSmartMessage(10006, تقسیم جزئیات)"_s;
    QCOMPARE(yard.Divide(5, u"G F2 Del @DeleteAllDetail_BTN E"_s, {}, 1, host::TFormMode::Edit),
             (QStringList{used, used, used}));
    QCOMPARE(yard.PartsOf(0), (QStringList{u"1|2|2|0|4"_s, u"2|1|1|0|2"_s}));
}

REGISTER_TEST(TestDivisionItems)
#include "tst_division_items.moc"
