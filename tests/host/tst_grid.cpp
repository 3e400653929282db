#include "tests/host/block_model.h"

#include <QHeaderView>
#include <QScrollBar>

using namespace Qt::StringLiterals;

/// Rows, marks and columns of a grid.
class TestGrid : public QObject
{
    Q_OBJECT

private slots:
    void changes_and_removals_are_found();
    void marks_keep_their_order();
    void marks_by_mouse();
    void standing_row();
    void keys_to_the_ends_data();
    void keys_to_the_ends();
    void place_is_kept();
    void cells_as_they_are_read();
    void layout_is_kept();
    void lost_source_is_reported_once();
    void first_column_is_on_the_right();
};

void TestGrid::changes_and_removals_are_found()
{
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s}, SomeGoods(), 10);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.FetchAll();
    grid.Search({u"Name"_s, false, u"چای"_s, {}});
    grid.Search({});
    model.Change(2, 2, u"چای سبز با نامی بلندتر از پیش"_s);
    grid.Search({u"Name"_s, false, u"چای"_s, {}});
    QCOMPARE(grid.ShownKeys(), (QStringList{u"101"_s, u"102"_s, u"115"_s}));
    model.RemoveRow(0);
    QCOMPARE(grid.ShownKeys(), (QStringList{u"102"_s, u"115"_s}));
    grid.Search({u"Name"_s, false, u"gold"_s, {}});
    QCOMPARE(grid.ShownKeys(), QStringList{u"201"_s});
}

void TestGrid::marks_keep_their_order()
{
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s}, SomeGoods(), 10);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.SetMultiSelect(true);
    test::Show(grid);
    grid.setFocus();
    QVERIFY(grid.Locate(u"115"_s));
    test::Press(Qt::Key_Insert); // marks and goes down
    QCOMPARE(grid.CurrentKey(), u"201"_s);
    test::Press(Qt::Key_Home, Qt::ControlModifier);
    test::Press(Qt::Key_Space);
    QCOMPARE(grid.MarkedKeys(), (QStringList{u"115"_s, u"101"_s}));
    model.Requery();
    grid.Search({u"Name"_s, false, u"gold"_s, {}});
    test::Press(Qt::Key_Space);
    QCOMPARE(grid.MarkedKeys().join(u','), u"115,101,201"_s);
    grid.Search({});
    QVERIFY(grid.Locate(u"115"_s));
    test::Press(Qt::Key_Space); // and off again
    QCOMPARE(grid.MarkedKeys(), (QStringList{u"101"_s, u"201"_s}));
    test::Press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(grid.MarkedKeys(), (QStringList{u"101"_s, u"201"_s, u"102"_s, u"115"_s}));
    grid.SetMultiSelect(false);
    test::Press(Qt::Key_Space);
    QCOMPARE(grid.MarkedKeys(), QStringList());
}

void TestGrid::marks_by_mouse()
{
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s}, SomeGoods(), 10);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.SetMultiSelect(true);
    grid.resize(500, 300);
    test::Show(grid);
    QSignalSpy activated(&grid, &host::Grid::RowActivated);
    const auto at = [&](int row, int column) { return grid.visualRect(grid.model()->index(row, column)).center(); };
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, at(1, 0));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::ControlModifier, at(3, 3));
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, at(2, 3));
    QCOMPARE(grid.MarkedKeys(), (QStringList{u"102"_s, u"201"_s}));
    QCOMPARE(grid.CurrentKey(), u"115"_s);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, at(2, 3));
    QCOMPARE(activated.value(0).value(0).toString(), u"115"_s);
}

void TestGrid::standing_row()
{
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s}, SomeGoods(), 1);
    host::Grid grid;
    QSignalSpy current(&grid, &host::Grid::CurrentKeyChanged);
    grid.SetColumns(columns);
    grid.SetSource(&model);
    QCOMPARE(current.last().value(0).toString(), u"101"_s);
    QVERIFY(grid.Locate(u"201"_s)); // three blocks further
    QCOMPARE(grid.CurrentValue(u"name"_s).toString(), u"Nescafe Gold"_s);
    QVERIFY(!grid.CurrentValue(u"nothing"_s).isValid());
    QVERIFY(!grid.Locate(u"999"_s));
    QCOMPARE(grid.CurrentKey(), u"201"_s);
    grid.Search({u"Name"_s, false, u"هیچ"_s, {}});
    QCOMPARE(current.last().value(0).toString(), QString());
    QCOMPARE(grid.CurrentKey(), QString());
    grid.SetSource(nullptr);
    QVERIFY(grid.IsEmpty());
}

void TestGrid::keys_to_the_ends_data()
{
    QTest::addColumn<Qt::KeyboardModifiers>("modifiers");
    QTest::newRow("plain") << Qt::KeyboardModifiers(Qt::NoModifier);
    QTest::newRow("with Ctrl") << Qt::KeyboardModifiers(Qt::ControlModifier);
}

/// To the last row of all, also of those that have not arrived yet, without leaving the columns in sight.
void TestGrid::keys_to_the_ends()
{
    QFETCH(Qt::KeyboardModifiers, modifiers);
    QList<QStringList> rows;
    for (int code = 1; code <= 500; ++code)
        rows << QStringList{QString::number(code), {}, u"کالا"_s};
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s, u"Mogodi"_s, u"Cost1"_s}, rows, 100);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.resize(200, 300);
    test::Show(grid);
    grid.SetSource(&model);
    grid.setFocus();
    const int sideways = grid.horizontalScrollBar()->value();
    QVERIFY(!grid.IsComplete());
    test::Press(Qt::Key_End, modifiers);
    QCOMPARE(grid.CurrentKey(), u"500"_s);
    test::Press(Qt::Key_Home, modifiers);
    QCOMPARE(grid.CurrentKey(), u"1"_s);
    QCOMPARE(grid.horizontalScrollBar()->value(), sideways);
}

/// Rows that are read anew, and one that goes, leave the user where he was.
void TestGrid::place_is_kept()
{
    QList<QStringList> rows;
    for (int code = 1; code <= 300; ++code)
        rows << QStringList{QString::number(code), {}, u"کالای %1"_s.arg(code)};
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s}, rows, 50);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.resize(400, 300);
    test::Show(grid);
    QSignalSpy current(&grid, &host::Grid::CurrentKeyChanged);
    for (const QString &ordered : {u""_s, u"Name"_s}) {
        grid.SortBy(ordered);
        QVERIFY(grid.Locate(u"150"_s));
        grid.setFocus();
        test::Press(Qt::Key_PageDown);
        test::Press(Qt::Key_Up);
        test::Press(Qt::Key_Up);
        const host::Grid::Place place = grid.CurrentPlace();
        QVERIFY(place.offset > 0);
        model.Requery();
        grid.ReturnTo(place);
        QCOMPARE(grid.CurrentKey(), place.key);
        QCOMPARE(grid.CurrentPlace().offset, place.offset);
        const QString next = grid.ShownKeys().at(place.row + 1);
        model.RemoveRow(grid.CurrentSourceRow());
        grid.ReturnTo({{}, place.row, place.offset, 0});
        QCOMPARE(grid.CurrentKey(), next);
        QCOMPARE(current.last().value(0).toString(), next);
        QCOMPARE(grid.CurrentPlace().offset, place.offset);
    }
}

void TestGrid::cells_as_they_are_read()
{
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s, u"Mogodi"_s, u"Cost1"_s}, SomeGoods(), 10);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    QCOMPARE(grid.VisibleTexts(0),
             (QStringList{u"۱۰۱"_s, u"چای كيسه‌ای احمد"_s, u"۱۲٫۵"_s, u"۱٬۲۵۰٬۰۰۰"_s}));
    QCOMPARE(grid.VisibleTexts(2).at(2), u"\u200e-۳"_s);
}

void TestGrid::layout_is_kept()
{
    host::Grid grid;
    grid.SetColumns(columns);
    QSignalSpy changed(&grid, &host::Grid::VisibleFieldsChanged);
    grid.SetColumnVisible(u"AbbName"_s, true);
    grid.SetColumnVisible(u"Mogodi"_s, false);
    grid.horizontalHeader()->moveSection(grid.horizontalHeader()->visualIndex(3), 1); // the name to the front
    grid.setColumnWidth(3, 333);
    QCOMPARE(changed.size(), 3);

    QList<host::GridColumn> next = columns; // a later version: one column more, one gone
    next.removeLast();
    next.append({u"t1"_s, u"سفارش"_s, 55});
    host::Grid other;
    other.SetColumns(next);
    other.RestoreLayout(grid.SaveLayout());
    QCOMPARE(other.VisibleFields(), (QStringList{u"Name"_s, u"Code"_s, u"AbbName"_s, u"t1"_s}));
    QCOMPARE(other.Columns().first().width, 333);
    other.RestoreLayout("not a layout");
    QCOMPARE(other.VisibleFields().size(), 4);
    other.ResetLayout();
    QCOMPARE(other.VisibleFields(), (QStringList{u"Code"_s, u"Name"_s, u"Mogodi"_s, u"t1"_s}));
    QCOMPARE(other.Columns().at(2).width, 220);
}

void TestGrid::lost_source_is_reported_once()
{
    BlockModel model({u"Code"_s, u"AbbName"_s, u"Name"_s}, SomeGoods(), 2);
    model.refuse = true;
    host::Grid grid;
    QSignalSpy failed(&grid, &host::Grid::FetchFailed);
    grid.SetColumns(columns);
    grid.SetSource(&model);
    QTRY_COMPARE(failed.size(), 1);
    QTest::qWait(20);
    QVERIFY(!grid.Locate(u"201"_s));
    QCOMPARE(failed.size(), 1);
    QCOMPARE(grid.RowCount(), 2); // what is there stays
    // Who means all rows is told again, and does not get a part of them.
    grid.SetMultiSelect(true);
    grid.MarkAllShown();
    QVERIFY(grid.MarkedKeys().isEmpty() && grid.ShownKeys().isEmpty() && !grid.HasAllRows());
    QCOMPARE(failed.size(), 3);
    model.refuse = false;
    model.Requery();
    QTRY_COMPARE(grid.RowCount(), 4);
}

void TestGrid::first_column_is_on_the_right()
{
    host::Grid grid;
    grid.SetColumns(columns);
    grid.resize(600, 200);
    test::Show(grid);
    QVERIFY(grid.columnViewportPosition(1) > grid.columnViewportPosition(3));
}

REGISTER_TEST(TestGrid)
#include "tst_grid.moc"
