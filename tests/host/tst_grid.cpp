#include "host/controls/grid.h"
#include "host/controls/search_frame.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QtTest/QtTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLineEdit>
#include <QtWidgets/QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

/// Rows that arrive in blocks, as those of a list procedure do.
class BlockModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    BlockModel(QStringList fields, QList<QStringList> rows, int block)
        : m_fields(std::move(fields)), m_rows(std::move(rows)), m_block(block)
    {
        m_there = static_cast<int>(std::min<qsizetype>(block, m_rows.size()));
    }
    int rowCount(const QModelIndex &parent = {}) const override { return parent.isValid() ? 0 : m_there; }
    int columnCount(const QModelIndex &parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(m_fields.size());
    }
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override
    {
        if (role != Qt::DisplayRole && role != Qt::EditRole)
            return {};
        return m_rows.at(index.row()).at(index.column());
    }
    QVariant headerData(int section, Qt::Orientation, int role) const override
    {
        return role == Qt::DisplayRole ? m_fields.value(section) : QVariant();
    }
    bool canFetchMore(const QModelIndex &) const override { return m_there < m_rows.size(); }
    void fetchMore(const QModelIndex &) override
    {
        if (refuse)
            throw std::runtime_error("connection lost");
        const int last = static_cast<int>(std::min<qsizetype>(m_there + m_block, m_rows.size())) - 1;
        beginInsertRows({}, m_there, last);
        m_there = last + 1;
        endInsertRows();
    }
    void Change(int row, int column, const QString &value)
    {
        m_rows[row][column] = value;
        emit dataChanged(index(row, column), index(row, column));
    }
    void RemoveRow(int row)
    {
        beginRemoveRows({}, row, row);
        m_rows.removeAt(row);
        --m_there;
        endRemoveRows();
    }
    void Requery()
    {
        beginResetModel();
        m_there = static_cast<int>(std::min<qsizetype>(m_block, m_rows.size()));
        endResetModel();
    }
    bool refuse = false;

private:
    QStringList m_fields;
    QList<QStringList> m_rows;
    int m_block;
    int m_there;
};

const QList<host::GridColumn> columns{
    {u"Code"_qs, u"کد"_qs, 70, false, host::ColumnFormat::Code},
    {u"AbbName"_qs, u"بارکد "_qs, 120, true},
    {u"Name"_qs, u"نام کامل کالا"_qs, 220},
    {u"Mogodi"_qs, u"موجودی"_qs, 80, false, host::ColumnFormat::Quantity},
    {u"Cost1"_qs, u"فی فروش"_qs, 90, false, host::ColumnFormat::Price},
};

QList<QStringList> SomeGoods()
{
    return {
        {u"101"_qs, u"!6260000000011!"_qs, u"چای كيسه‌ای احمد"_qs, u"12.500000000"_qs, u"1250000"_qs},
        {u"102"_qs, u"!6260000000028!"_qs, u"چای شکسته"_qs, u"0"_qs, u"980000"_qs},
        {u"115"_qs, u"!626000000003!"_qs, u"قند ۱ کیلویی"_qs, u"-3"_qs, u"450000"_qs},
        {u"201"_qs, u"!abc%_[x]!"_qs, u"Nescafe Gold"_qs, u"1500"_qs, u"3100000"_qs}};
}

} // namespace

class TestGrid : public QObject
{
    Q_OBJECT

private slots:
    void search_data();
    void search();
    void search_goes_on_as_rows_arrive();
    void changes_and_removals_are_found();
    void marks_keep_their_order();
    void marks_by_mouse();
    void standing_row();
    void cells_as_they_are_read();
    void layout_is_kept();
    void search_frame_offers_the_right_edit();
    void lost_source_is_reported_once();
    void first_column_is_on_the_right();
    void caption_orders_the_rows_data();
    void caption_orders_the_rows();
    void order_outlives_search_and_requery();
    void hundred_thousand_rows_answer_a_key();

private:
    static QStringList Keys(host::Grid &grid) { return grid.ShownKeys(); }
};

void TestGrid::search_data()
{
    QTest::addColumn<host::SearchDescription>("description");
    QTest::addColumn<QStringList>("found");
    const auto row = [](const char *name, const host::SearchDescription &what, const QStringList &found) {
        QTest::newRow(name) << what << found;
    };
    row("arabic letters and half-space", {u""_qs, false, u"کیسهای"_qs, {}}, {u"101"_qs});
    row("words in any order", {u""_qs, false, u"احمد چای"_qs, {}}, {u"101"_qs});
    row("persian digits", {u"Name"_qs, false, u"1 کیلو"_qs, {}}, {u"115"_qs});
    row("case", {u"Name"_qs, false, u"nesCAFE"_qs, {}}, {u"201"_qs});
    row("reverse", {u"Name"_qs, true, u"چای"_qs, {}}, {u"115"_qs, u"201"_qs});
    row("reverse of nothing is everything", {u"Name"_qs, true, u" "_qs, {}},
        {u"101"_qs, u"102"_qs, u"115"_qs, u"201"_qs});
    row("a scanned barcode", {u""_qs, false, u"6260000000028"_qs, {}}, {u"102"_qs});
    row("signs are letters", {u"AbbName"_qs, false, u"%_["_qs, {}}, {u"201"_qs});
    row("first digits of a code", {u"Code"_qs, false, {}, u"1"_qs}, {u"101"_qs, u"102"_qs, u"115"_qs});
    row("digits inside a code do not count", {u"Code"_qs, false, {}, u"15"_qs}, {});
    row("price", {u"Cost1"_qs, false, {}, u"98"_qs}, {u"102"_qs});
    row("quantity without its zeros", {u"Mogodi"_qs, false, {}, u"12.5"_qs}, {u"101"_qs});
    row("amounts are no part of a general search", {u""_qs, false, u"450000"_qs, {}}, {});
    row("nowhere", {u""_qs, false, u"قهوه"_qs, {}}, {});
}

void TestGrid::search()
{
    QFETCH(host::SearchDescription, description);
    BlockModel model({u"Code"_qs, u"abbname"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs}, SomeGoods(), 2);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.Search(description);
    QTEST(Keys(grid), "found");
    grid.Search({});
    QCOMPARE(grid.RowCount(), 4);
}

void TestGrid::search_goes_on_as_rows_arrive()
{
    QList<QStringList> rows;
    for (int code = 1; code <= 3000; ++code)
        rows << QStringList{QString::number(code), code % 1000 == 0 ? u"نادر"_qs : u"کالا"_qs};
    BlockModel model({u"Code"_qs, u"Name"_qs}, rows, 100);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.Search({u"Name"_qs, false, u"نادر"_qs, {}});
    QCOMPARE(grid.RowCount(), 0);
    QTRY_COMPARE(grid.RowCount(), 3);
    QVERIFY(grid.Locate(u"2000"_qs));
    QCOMPARE(grid.CurrentSourceRow(), 1999);
    QVERIFY(!grid.Locate(u"1999"_qs)); // there, but not shown
    grid.Search({});
    QTRY_COMPARE(grid.RowCount(), 3000);
    QCOMPARE(grid.CurrentKey(), u"2000"_qs);
}

void TestGrid::changes_and_removals_are_found()
{
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs}, SomeGoods(), 10);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.FetchAll();
    grid.Search({u"Name"_qs, false, u"چای"_qs, {}});
    grid.Search({});
    model.Change(2, 2, u"چای سبز با نامی بلندتر از پیش"_qs);
    grid.Search({u"Name"_qs, false, u"چای"_qs, {}});
    QCOMPARE(Keys(grid), (QStringList{u"101"_qs, u"102"_qs, u"115"_qs}));
    model.RemoveRow(0);
    QCOMPARE(Keys(grid), (QStringList{u"102"_qs, u"115"_qs}));
    grid.Search({u"Name"_qs, false, u"gold"_qs, {}});
    QCOMPARE(Keys(grid), QStringList{u"201"_qs});
}

void TestGrid::marks_keep_their_order()
{
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs}, SomeGoods(), 10);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.SetMultiSelect(true);
    test::Show(grid);
    grid.setFocus();
    QVERIFY(grid.Locate(u"115"_qs));
    test::Press(Qt::Key_Insert); // marks and goes down
    QCOMPARE(grid.CurrentKey(), u"201"_qs);
    test::Press(Qt::Key_Home, Qt::ControlModifier);
    test::Press(Qt::Key_Space);
    QCOMPARE(grid.MarkedKeys(), (QStringList{u"115"_qs, u"101"_qs}));
    model.Requery();
    grid.Search({u"Name"_qs, false, u"gold"_qs, {}});
    test::Press(Qt::Key_Space);
    QCOMPARE(grid.MarkedKeys().join(u','), u"115,101,201"_qs);
    grid.Search({});
    QVERIFY(grid.Locate(u"115"_qs));
    test::Press(Qt::Key_Space); // and off again
    QCOMPARE(grid.MarkedKeys(), (QStringList{u"101"_qs, u"201"_qs}));
    test::Press(Qt::Key_A, Qt::ControlModifier);
    QCOMPARE(grid.MarkedKeys(), (QStringList{u"101"_qs, u"201"_qs, u"102"_qs, u"115"_qs}));
    grid.SetMultiSelect(false);
    test::Press(Qt::Key_Space);
    QCOMPARE(grid.MarkedKeys(), QStringList());
}

void TestGrid::marks_by_mouse()
{
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs}, SomeGoods(), 10);
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
    QCOMPARE(grid.MarkedKeys(), (QStringList{u"102"_qs, u"201"_qs}));
    QCOMPARE(grid.CurrentKey(), u"115"_qs);
    QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, at(2, 3));
    QCOMPARE(activated.value(0).value(0).toString(), u"115"_qs);
}

void TestGrid::standing_row()
{
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs}, SomeGoods(), 1);
    host::Grid grid;
    QSignalSpy current(&grid, &host::Grid::CurrentKeyChanged);
    grid.SetColumns(columns);
    grid.SetSource(&model);
    QCOMPARE(current.last().value(0).toString(), u"101"_qs);
    QVERIFY(grid.Locate(u"201"_qs)); // three blocks further
    QCOMPARE(grid.CurrentValue(u"name"_qs).toString(), u"Nescafe Gold"_qs);
    QVERIFY(!grid.CurrentValue(u"nothing"_qs).isValid());
    QVERIFY(!grid.Locate(u"999"_qs));
    QCOMPARE(grid.CurrentKey(), u"201"_qs);
    grid.Search({u"Name"_qs, false, u"هیچ"_qs, {}});
    QCOMPARE(current.last().value(0).toString(), QString());
    QCOMPARE(grid.CurrentKey(), QString());
    grid.SetSource(nullptr);
    QVERIFY(grid.IsEmpty());
}

void TestGrid::cells_as_they_are_read()
{
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs}, SomeGoods(), 10);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    QCOMPARE(grid.VisibleTexts(0),
             (QStringList{u"۱۰۱"_qs, u"چای كيسه‌ای احمد"_qs, u"۱۲٫۵"_qs, u"۱٬۲۵۰٬۰۰۰"_qs}));
    QCOMPARE(grid.VisibleTexts(2).at(2), u"\u200e-۳"_qs);
}

void TestGrid::layout_is_kept()
{
    host::Grid grid;
    grid.SetColumns(columns);
    QSignalSpy changed(&grid, &host::Grid::VisibleFieldsChanged);
    grid.SetColumnVisible(u"AbbName"_qs, true);
    grid.SetColumnVisible(u"Mogodi"_qs, false);
    grid.horizontalHeader()->moveSection(grid.horizontalHeader()->visualIndex(3), 1); // the name to the front
    grid.setColumnWidth(3, 333);
    QCOMPARE(changed.size(), 3);

    QList<host::GridColumn> next = columns; // a later version: one column more, one gone
    next.removeLast();
    next.append({u"t1"_qs, u"سفارش"_qs, 55});
    host::Grid other;
    other.SetColumns(next);
    other.RestoreLayout(grid.SaveLayout());
    QCOMPARE(other.VisibleFields(), (QStringList{u"Name"_qs, u"Code"_qs, u"AbbName"_qs, u"t1"_qs}));
    QCOMPARE(other.Columns().first().width, 333);
    other.RestoreLayout("not a layout");
    QCOMPARE(other.VisibleFields().size(), 4);
}

void TestGrid::search_frame_offers_the_right_edit()
{
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs}, SomeGoods(), 10);
    QWidget window;
    auto *column = new QVBoxLayout(&window);
    auto *frame = new host::SearchFrame(&window);
    auto *grid = new host::Grid(&window);
    grid->setObjectName(u"Grid"_qs);
    column->addWidget(frame);
    column->addWidget(grid);
    grid->SetColumns(columns);
    grid->SetSource(&model);
    frame->SetGrid(grid);
    test::Show(window);

    frame->Focus();
    QCOMPARE(test::Focused(), u"Text_EDT"_qs);
    test::Type(u"چای"_qs);
    QCOMPARE(Keys(*grid), (QStringList{u"101"_qs, u"102"_qs}));
    test::Find<QCheckBox>(frame, u"Reverse_CHK"_qs).click();
    QCOMPARE(Keys(*grid), (QStringList{u"115"_qs, u"201"_qs}));
    test::Press(Qt::Key_Escape); // empties the search before it closes anything
    QCOMPARE(grid->RowCount(), 4);

    auto &chooser = test::Find<QComboBox>(frame, u"Column_CMB"_qs);
    test::Find<QCheckBox>(frame, u"Reverse_CHK"_qs).click();
    chooser.setCurrentIndex(chooser.findText(u"فی فروش"_qs));
    QCOMPARE(test::Focused(), u"Price_EDT"_qs);
    test::Type(u"۹۸"_qs);
    QCOMPARE(Keys(*grid), QStringList{u"102"_qs});
    test::Press(Qt::Key_Down);
    QCOMPARE(test::Focused(), u"Grid"_qs);
    chooser.setCurrentIndex(chooser.findText(u"کد"_qs));
    QCOMPARE(grid->RowCount(), 4); // its own edit is empty
    frame->Clear();
    QCOMPARE(grid->RowCount(), 4);
}

void TestGrid::lost_source_is_reported_once()
{
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs}, SomeGoods(), 2);
    model.refuse = true;
    host::Grid grid;
    QSignalSpy failed(&grid, &host::Grid::FetchFailed);
    grid.SetColumns(columns);
    grid.SetSource(&model);
    QTRY_COMPARE(failed.size(), 1);
    QTest::qWait(20);
    QVERIFY(!grid.Locate(u"201"_qs));
    QCOMPARE(failed.size(), 1);
    QCOMPARE(grid.RowCount(), 2); // what is there stays
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

void TestGrid::caption_orders_the_rows_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<QStringList>("values"); // in the order wanted
    QTest::newRow("letters of Persian") << u"Name"_qs
                                        << QStringList{u""_qs,    u"آلو"_qs, u"برنج"_qs, u"پنیر"_qs, u"جو"_qs,
                                                       u"چای"_qs, u"کره"_qs, u"گردو"_qs, u"نان"_qs,  u"یخ"_qs};
    QTest::newRow("spellings of a letter") << u"Name"_qs << QStringList{u"شیر الف"_qs, u"شير ب"_qs, u"شیر پ"_qs};
    QTest::newRow("numbers in a text") << u"Name"_qs << QStringList{u"قند ۲ کیلو"_qs, u"قند 10 کیلو"_qs};
    QTest::newRow("prices") << u"Cost1"_qs << QStringList{u"95000"_qs, u"450000.500000000"_qs, u"1250000"_qs};
    QTest::newRow("quantities") << u"Mogodi"_qs << QStringList{u""_qs, u"-12"_qs, u"-3"_qs, u"0"_qs, u"0.25"_qs};
    QTest::newRow("codes") << u"Code"_qs << QStringList{u"9"_qs, u"12"_qs, u"100"_qs};
}

/// First click ascending, second descending, third the list's own order; rows that have not arrived yet take part.
void TestGrid::caption_orders_the_rows()
{
    QFETCH(QString, field);
    QFETCH(QStringList, values);
    const QStringList fields{u"Code"_qs, u"AbbName"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs};
    const auto column = static_cast<int>(fields.indexOf(field));
    QList<QStringList> rows;
    QStringList listed; // the odd places first, so that nothing is in order
    for (const int odd : {1, 0})
        for (qsizetype place = odd; place < values.size(); place += 2) {
            rows << QStringList{QString::number(50 + place), {}, {}, {}, {}};
            rows.last()[column] = values.at(place);
            listed << values.at(place);
        }
    BlockModel model(fields, rows, 2);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetColumnVisible(u"AbbName"_qs, true);
    grid.SetSource(&model);
    grid.SetSortable(true);
    grid.resize(700, 300);
    test::Show(grid);
    const auto shown = [&] {
        QStringList texts;
        for (int row = 0; row < grid.RowCount(); ++row)
            texts << grid.model()->index(row, column + 1).data(Qt::EditRole).toString();
        return texts;
    };
    const auto click = [&] {
        const QHeaderView *header = grid.horizontalHeader();
        const int at = header->sectionViewportPosition(column + 1) + header->sectionSize(column + 1) / 2;
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, {at, header->height() / 2});
    };
    const QString key = grid.CurrentKey();
    click();
    QCOMPARE(shown(), values);
    QCOMPARE(grid.CurrentKey(), key);
    click();
    QStringList backwards = values;
    std::reverse(backwards.begin(), backwards.end());
    QCOMPARE(shown(), backwards);
    click();
    QCOMPARE(shown(), listed);
    QCOMPARE(grid.CurrentKey(), key);
}

void TestGrid::order_outlives_search_and_requery()
{
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs}, SomeGoods(), 1);
    host::Grid grid;
    grid.SetColumns(columns);
    grid.SetSource(&model);
    grid.SortBy(u"Cost1"_qs);
    const QStringList byPrice{u"115"_qs, u"102"_qs, u"101"_qs, u"201"_qs};
    QCOMPARE(Keys(grid), byPrice);
    grid.Search({u"Name"_qs, false, u"چای"_qs, {}});
    QCOMPARE(Keys(grid), (QStringList{u"102"_qs, u"101"_qs}));
    QVERIFY(grid.Locate(u"101"_qs));
    QCOMPARE(grid.currentIndex().row(), 1);
    grid.Search({u"Name"_qs, true, u"چای"_qs, {}});
    QCOMPARE(Keys(grid), (QStringList{u"115"_qs, u"201"_qs}));
    model.Requery();
    QTRY_COMPARE(Keys(grid), (QStringList{u"115"_qs, u"201"_qs}));
    grid.Search({});
    QVERIFY(grid.Locate(u"102"_qs));
    QCOMPARE(grid.currentIndex().row(), 1);
    model.Requery();
    grid.FetchFor(0);
    QCOMPARE(grid.RowCount(), 1);
    QTRY_COMPARE(grid.RowCount(), 4); // the others come in idle time, and are put in order then
    QTRY_COMPARE(grid.currentIndex().row(), 2);
    QCOMPARE(grid.CurrentKey(), u"101"_qs);
    QVERIFY(grid.Locate(u"102"_qs));
    model.RemoveRow(0);
    QCOMPARE(Keys(grid), (QStringList{u"115"_qs, u"102"_qs, u"201"_qs}));
    grid.SetColumnVisible(u"Cost1"_qs, false); // what is not shown orders nothing
    QCOMPARE(Keys(grid), (QStringList{u"102"_qs, u"115"_qs, u"201"_qs}));

    // A source that gives out leaves what came, in order, and is not asked over and over.
    grid.SetColumnVisible(u"Cost1"_qs, true);
    model.Requery();
    model.refuse = true;
    QSignalSpy failed(&grid, &host::Grid::FetchFailed);
    grid.SortBy(u"Cost1"_qs);
    QTest::qWait(30);
    QCOMPARE(failed.size(), 1);
    QCOMPARE(grid.RowCount(), 1);
}

void TestGrid::hundred_thousand_rows_answer_a_key()
{
    const QStringList words{u"چای"_qs, u"قند"_qs, u"برنج"_qs, u"روغن"_qs, u"شکر"_qs, u"ماکارونی"_qs, u"پنیر"_qs};
    QList<QStringList> rows;
    rows.reserve(100'000);
    for (int code = 1; code <= 100'000; ++code)
        rows << QStringList{
            QString::number(code), u"!62600%1!"_qs.arg(code, 8, 10, QChar(u'0')),
            u"%1 %2 بسته %3 گرمی درجه یک"_qs.arg(words.at(code % 7), words.at(code % 5)).arg(code % 900), u"15"_qs,
            QString::number(code * 10)};
    BlockModel model({u"Code"_qs, u"AbbName"_qs, u"Name"_qs, u"Mogodi"_qs, u"Cost1"_qs}, rows, 1000);
    host::Grid grid;
    grid.SetColumns(columns);
    test::Show(grid);
    grid.SetSource(&model);

    // Rows and their texts arrive in idle time; no turn of the event loop may be felt.
    qint64 longest = 0;
    QElapsedTimer turn;
    while (!grid.IsComplete()) {
        turn.start();
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
        longest = std::max(longest, turn.elapsed());
    }
    QTest::qWait(200);
    qint64 slowest = 0;
    const QString phrase = u"روغن ۸۹۹ گرمی"_qs;
    for (int length = 1; length <= phrase.size(); ++length) {
        turn.start();
        grid.Search({u"Name"_qs, false, phrase.left(length), {}});
        slowest = std::max(slowest, turn.elapsed());
    }
    qInfo("longest idle turn %lld ms, slowest key %lld ms", longest, slowest);
    const QStringList found = Keys(grid);
    QVERIFY(!found.isEmpty());
    for (const QString &key : found)
        QVERIFY(key.toInt() % 900 == 899 && (key.toInt() % 7 == 3 || key.toInt() % 5 == 3));
}

REGISTER_TEST(TestGrid)
#include "tst_grid.moc"
