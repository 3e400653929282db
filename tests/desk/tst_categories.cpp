#include "desk/categories/category_tree_view.h"
#include "host/data/query.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QLineEdit>
#include <QtTest>

namespace {

const QString Hostile = u"x'); DELETE FROM Goods --<b>%1&[_%"_s;

} // namespace

/// The tree of categories and the titles of levels, worked by keys.
class TestCategories : public QObject
{
    Q_OBJECT

private slots:
    void Changes_data();
    void Changes();
    void AnotherDesk();
    void Order();
    void NeedsTheRight();
    void LevelTitles_data();
    void LevelTitles();

private:
    struct Fixture : test::QuietDesk
    {
        /// A small tree: 1 (11 (111), 12 with a good), 2.
        Fixture()
        {
            database.Exec(u"delete from Kala_category delete from Categories "
                          "insert into Categories (Code, ParentCode, Name, Path) values (1, null, N'خوراکی', ',1,'), "
                          "(2, null, N'پوشاک', ',2,'), (11, 1, N'چای', ',1,11,'), (12, 1, N'قند', ',1,12,'), "
                          "(111, 11, N'سیاه', ',1,11,111,') "
                          "insert into Kala_category (Kala_code, Category_code) values (110001, 12)"_s);
        }
        QStringList Tree() const
        {
            return database.Rows(u"select Code, ParentCode, Name, Path from Categories order by Radif, Code"_s);
        }
        /// Opens the screen on a node and works it.
        void Work(const QString &name, const std::function<void(desk::CategoryTreeView &)> &drive)
        {
            test::Drive([this] { desk.categories.Open_Categories(); },
                        [&](QWidget *screen) {
                            auto &tree = test::Find<desk::CategoryTreeView>(screen, u"Categories_TRE"_s);
                            const auto found = tree.findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
                            QCOMPARE(found.size(), 1);
                            tree.setCurrentItem(found.constFirst());
                            drive(tree);
                            test::Picture(*screen, u"categories"_s);
                            test::Focus(screen, u"Categories_TRE"_s);
                            test::Press(Qt::Key_Escape);
                        });
        }
    };
    /// Keys by their names, one a line; a text for the name that is open begins with "=".
    static void Play(const QString &keys)
    {
        for (const QString &each : keys.split(u'\n')) {
            const QKeyCombination key = QKeySequence::fromString(each)[0];
            if (each.startsWith(u'='))
                test::Type(each.mid(1));
            else
                test::Press(key.key(), key.keyboardModifiers());
            for (int round = 0; round < 3; ++round) // the name is taken when its edit has closed
                QCoreApplication::processEvents();
        }
    }
};

void TestCategories::Changes_data()
{
    QTest::addColumn<QStringList>("row");
    // Where, which keys, the answer, part of the message, rows that go and rows that come.
    const QString chay = u"11|1|چای|,1,11,"_s;
    const QString siah = u"111|11|سیاه|,1,11,111,"_s;
    const QString repeated = u"«نام دسته» تکراری"_s;
    const std::pair<const char *, QStringList> rows[] = {
        {"neighbour", {u"چای"_s, u"F4\n=  قهوه  ترک \nReturn"_s, {}, {}, {}, u"112|1|قهوه ترک|,1,112,"_s}},
        {"branch, hostile",
         {u"چای"_s, u"Ins\n="_s + Hostile + u"\nReturn"_s, {}, {}, {}, u"112|11|"_s + Hostile + u"|,1,11,112,"_s}},
        {"no name", {u"چای"_s, u"F4\n=  \nReturn"_s, {}, {}, {}, {}}},
        {"given up", {u"چای"_s, u"F4\n=قهوه\nEscape"_s, {}, {}, {}, {}}},
        {"twice, then another",
         {u"چای"_s, u"F4\n=چاي\nReturn\nCtrl+A\n=قهوه\nReturn"_s, {}, repeated, {}, u"112|1|قهوه|,1,112,"_s}},
        {"rename", {u"سیاه"_s, u"F2\n=سبز\nReturn"_s, {}, {}, siah, u"111|11|سبز|,1,11,111,"_s}},
        {"moved before its name was taken", {u"چای"_s, u"F4\n=قهوه\nCtrl+Up"_s, {}, {}, {}, u"112|1|قهوه|,1,112,"_s}},
        {"to a neighbour's name", {u"چای"_s, u"Return\n=قند\nReturn\nEscape"_s, {}, repeated, {}, {}}},
        {"delete", {u"سیاه"_s, u"F7"_s, u"yes"_s, u"MsgDeleteItem(دسته‌ی «سیاه»)"_s, siah, {}}},
        {"delete a branch", {u"چای"_s, u"F7"_s, {}, u"«چای» قابل حذف نیست"_s, {}, {}}},
        {"delete with goods", {u"قند"_s, u"F7"_s, {}, u"۱ کالا در آن"_s, {}, {}}},
        {"higher",
         {u"چای"_s, u"Ctrl+Right"_s, {}, {}, chay + u'\n' + siah, u"11|NULL|چای|,11,\n111|11|سیاه|,11,111,"_s}},
        {"deeper", {u"قند"_s, u"Ctrl+Left"_s, {}, {}, u"12|1|قند|,1,12,"_s, u"12|11|قند|,1,11,12,"_s}},
        {"elsewhere",
         {u"چای"_s,
          u"Ctrl+X\nEnd\nCtrl+V"_s,
          {},
          {},
          chay + u'\n' + siah,
          u"11|2|چای|,2,11,\n111|11|سیاه|,2,11,111,"_s}},
        {"into itself", {u"چای"_s, u"Ctrl+X\nDown\nCtrl+V"_s, {}, u"زیرشاخه‌ی خودش"_s, {}, {}}},
        {"under goods",
         {u"سیاه"_s, u"Ctrl+X\nDown\nCtrl+V"_s, {}, u"در دسته‌ی «قند» ۱ کالا"_s, {}, {}}},
        {"first branch",
         {u"قند"_s,
          u"Ins\n=حبه\nReturn"_s,
          u"yes"_s,
          u"در دسته‌ی «قند» ۱ کالا"_s,
          {},
          u"112|12|حبه|,1,12,112,"_s}},
        {"or none",
         {u"قند"_s, u"Ins\n=حبه\nReturn"_s, u"no"_s, u"در دسته‌ی «قند» ۱ کالا"_s, {}, {}}},
    };
    for (const auto &[name, row] : rows)
        QTest::newRow(name) << row;
}

void TestCategories::Changes()
{
    QFETCH(QStringList, row);
    Fixture t;
    QStringList expected = t.Tree();
    if (!row.at(2).isEmpty())
        t.messages.Answer(row.at(2) == u"yes");
    t.Work(row.at(0), [&](desk::CategoryTreeView &) { Play(row.at(1)); });
    const QStringList said = t.messages.TakeAll();
    QCOMPARE(said.size(), row.at(3).isEmpty() ? 0 : 1);
    QVERIFY2(said.join(u'|').contains(row.at(3)), qPrintable(said.join(u'|')));
    for (const QString &gone : row.at(4).split(u'\n'))
        expected.removeOne(gone);
    expected += row.at(5).split(u'\n', Qt::SkipEmptyParts);
    expected.sort();
    QStringList tree = t.Tree();
    tree.sort();
    QCOMPARE(tree, expected);
    // A good stands in the end of a branch, whatever was done.
    QCOMPARE(t.database.Rows(u"select k.Kala_code from Kala_category k where not exists (select 1 from Categories c "
                             "where c.ParentCode = k.Category_code)"_s),
             QStringList{u"110001"_s});
}

void TestCategories::AnotherDesk()
{
    Fixture t;
    desk::CategoryStore other(t.database.AnotherConnection());
    int code = 0;
    t.Work(u"سیاه"_s, [&](desk::CategoryTreeView &tree) {
        // The other desk turns the branch round: what this one shows would make a circle.
        QVERIFY(!other.Move(111, {2, 0}));
        QVERIFY(!other.Move(11, {111, 0}));
        tree.setCurrentItem(tree.findItems(u"سیاه"_s, Qt::MatchExactly | Qt::MatchRecursive).constFirst());
        Play(u"Ctrl+X\nUp\nCtrl+V"_s);
        QVERIFY(t.messages.Take().contains(u"زیرشاخه‌ی خودش"_s));
        QVERIFY(!other.Delete(11));
        Play(u"F2\n=کهنه\nReturn"_s);
    });
    QCOMPARE(t.database.Rows(u"select Code, Path from Categories where Name = N'کهنه'"_s),
             QStringList{u"111|,2,111,"_s});
    QVERIFY(!other.Add(u"تازه"_s, {111, 0}, false, code));
    QVERIFY(other.Move(code, {11, 0})); // gone
    for (int deep = 0; !other.Add(u"ژرف"_s, {code, 0}, false, code); ++deep)
        QVERIFY2(deep < 200, "a path has an end");
    QVERIFY(t.database.Scalar(u"select max(len(Path)) from Categories"_s).toInt() <= 400);
}

void TestCategories::Order()
{
    Fixture t;
    const auto names = [&t](int parent) {
        QStringList found;
        for (const host::Category &node : t.desk.categories.Tree())
            if (node.Parent == parent)
                found << node.Name;
        return found;
    };
    t.Work(u"چای"_s, [&](desk::CategoryTreeView &) {
        Play(u"F4\n=قهوه\nReturn"_s);
        QCOMPARE(names(1), (QStringList{u"چای"_s, u"قهوه"_s, u"قند"_s}));
        Play(u"Ctrl+Up\nCtrl+Up"_s);
        QCOMPARE(names(1), (QStringList{u"قهوه"_s, u"چای"_s, u"قند"_s}));
        Play(u"Ctrl+Down\nCtrl+Down"_s);
        QCOMPARE(names(1), (QStringList{u"چای"_s, u"قند"_s, u"قهوه"_s}));
        test::Type(u"سيا"_s); // the search takes what is typed on the tree
        test::Press(Qt::Key_Return);
        test::Press(Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(names(1), (QStringList{u"چای"_s, u"سیاه"_s, u"قند"_s, u"قهوه"_s}));
        test::Type(u"ق"_s); // finds two: each key is for the one that was moved
        test::Press(Qt::Key_Return);
        Play(u"Ctrl+Down\nCtrl+Down"_s);
        QCOMPARE(names(1), (QStringList{u"چای"_s, u"سیاه"_s, u"قهوه"_s, u"قند"_s}));
    });
    QCOMPARE(t.desk.categories.Path(111).size(), 2);
}

void TestCategories::NeedsTheRight()
{
    Fixture t;
    t.database.Exec(u"delete from UserRights where UserCode = 1 and SoftwarePart = 102 and Permission = 2"_s);
    const QStringList before = t.Tree();
    t.Work(u"قند"_s, [&](desk::CategoryTreeView &) {
        for (const QString &key : {u"F4"_s, u"Ins"_s, u"F2"_s, u"F7"_s, u"Ctrl+Up"_s, u"Ctrl+Right"_s}) {
            Play(key);
            QVERIFY(t.messages.Take().contains(u"اجازه"_s));
        }
    });
    QVERIFY(!t.desk.levels.Open_CostLevels());
    QVERIFY(t.messages.Take().contains(u"اجازه"_s));
    QCOMPARE(t.Tree(), before);
}

void TestCategories::LevelTitles_data()
{
    QTest::addColumn<bool>("cost");
    QTest::addColumn<int>("level");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("says");
    QTest::addColumn<QString>("stored"); // null: as before
    QTest::newRow("price") << true << 2 << u"  همکار  ویژه "_s << u"MSGComp"_s << u"همکار ویژه"_s;
    QTest::newRow("hostile") << true << 1 << Hostile << u"MSGComp"_s << Hostile;
    QTest::newRow("empty price level") << true << 3 << u" "_s << u"MsgRequiredField(سطح قیمتی 3)"_s << QString();
    QTest::newRow("twice, spelt otherwise") << true << 1 << u"سطح  قيمتي ۲"_s << u"MsgRepeatedField"_s << QString();
    QTest::newRow("the choosers' own entry") << true << 1 << u"پیش فرض"_s << u"MsgRepeatedField"_s << QString();
    QTest::newRow("as another desk has named one") << true << 1 << u"نقدی"_s << u"MsgRepeatedField"_s << QString();
    QTest::newRow("too long") << true << 1 << QString(60, u'ب') << u"MSGComp"_s << QString(50, u'ب');
    QTest::newRow("discount") << false << 4 << u"جشنواره"_s << u"MSGComp"_s << u"جشنواره"_s;
    QTest::newRow("another's number") << false << 1 << u"سطح تخفیف 2"_s << u"MsgRepeatedField"_s << QString();
}

void TestCategories::LevelTitles()
{
    QFETCH(bool, cost);
    QFETCH(int, level);
    QFETCH(QString, typed);
    QFETCH(QString, says);
    QFETCH(QString, stored);
    Fixture t;
    t.database.Exec(u"delete from CostLevel insert into CostLevel (Code, Name) values (1, N'سطح قیمتی 1'), "
                    "(2, N'سطح قیمتی 2'), (3, N'الف  ب')"_s);
    const QString rows = cost ? u"select Code, Name from CostLevel order by Code"_s
                              : u"select Code, Name from DiscountLevel order by Code"_s;
    QStringList expected = t.database.Rows(rows);
    bool changed = false;
    test::Drive([&] { changed = cost ? t.desk.levels.Open_CostLevels() : t.desk.levels.Open_DiscountLevels(); },
                [&](QWidget *screen) {
                    t.database.Exec(u"update CostLevel set Name = N'نقدی' where Code = 3"_s);
                    test::Enter(screen, u"Title%1_EDT"_s.arg(level), typed);
                    test::Picture(*screen, u"level-titles"_s);
                    test::Press(Qt::Key_F3);
                    QVERIFY2(t.messages.Take().contains(says), qPrintable(says));
                    if (stored.isNull()) {
                        QCOMPARE(test::Focused(), u"Title%1_EDT"_s.arg(level));
                        t.messages.Answer(true);
                        test::Press(Qt::Key_Escape);
                        t.messages.Take();
                    }
                });
    QCOMPARE(changed, !stored.isNull());
    if (cost)
        expected[2] = u"3|نقدی"_s; // what another desk wrote stays
    if (!stored.isNull() && cost)
        expected[level - 1] = u"%1|"_s.arg(level) + stored;
    else if (!stored.isNull())
        expected << u"%1|"_s.arg(level) + stored;
    QCOMPARE(t.database.Rows(rows), expected);
    if (!cost)
        QCOMPARE(t.desk.levels.DiscountLevels().value(3), stored.isNull() ? QString() : stored);
}

REGISTER_TEST(TestCategories)
#include "tst_categories.moc"
