#include "desk/categories/category_tree_view.h"
#include "host/data/query.h"
#include "tests/desk/desk_fixture.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QLineEdit>
#include <QtTest>

using host::TPermission;
using host::TSoftwarePart;

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
    /// One press, or a text for the name that is open.
    struct Step
    {
        Qt::Key key = Qt::Key_unknown;
        Qt::KeyboardModifiers modifiers = Qt::NoModifier;
        QString text = {};
    };
    using Steps = QList<Step>;
    static void Play(const Steps &steps)
    {
        for (const Step &step : steps) {
            if (step.text.isEmpty())
                test::Press(step.key, step.modifiers);
            else
                test::Type(step.text);
            for (int round = 0; round < 3; ++round) // the name is taken when its edit has closed
                QCoreApplication::processEvents();
        }
    }
};

void TestCategories::Changes_data()
{
    QTest::addColumn<QString>("at");
    QTest::addColumn<Steps>("steps");
    QTest::addColumn<QList<bool>>("answers");
    QTest::addColumn<QString>("says"); // part of each message, joined by "|"
    QTest::addColumn<QStringList>("gone");
    QTest::addColumn<QStringList>("come");
    const Step enter{Qt::Key_Return};
    const Step escape{Qt::Key_Escape};
    const auto name = [](const QString &text) { return Step{Qt::Key_unknown, Qt::NoModifier, text}; };
    const auto ctrl = [](Qt::Key key) { return Step{key, Qt::ControlModifier}; };
    using Texts = QStringList;
    const QString chay = u"11|1|چای|,1,11,"_s;
    const QString siah = u"111|11|سیاه|,1,11,111,"_s;
    const QString qand = u"12|1|قند|,1,12,"_s;

    QTest::newRow("neighbour") << u"چای"_s << Steps{{Qt::Key_F4}, name(u"  قهوه  ترک "_s), enter} << QList<bool>{}
                               << QString() << Texts{} << Texts{u"112|1|قهوه ترک|,1,112,"_s};
    QTest::newRow("branch, hostile name") << u"چای"_s << Steps{{Qt::Key_Insert}, name(Hostile), enter} << QList<bool>{}
                                          << QString() << Texts{} << Texts{u"112|11|%1|,1,11,112,"_s.arg(Hostile)};
    QTest::newRow("no name") << u"چای"_s << Steps{{Qt::Key_F4}, name(u"  "_s), enter} << QList<bool>{} << QString()
                             << Texts{} << Texts{};
    QTest::newRow("given up") << u"چای"_s << Steps{{Qt::Key_F4}, name(u"قهوه"_s), escape} << QList<bool>{} << QString()
                              << Texts{} << Texts{};
    QTest::newRow("a name twice, spelt otherwise; then another")
        << u"چای"_s << Steps{{Qt::Key_F4}, name(u"چاي"_s), enter, ctrl(Qt::Key_A), name(u"قهوه"_s), enter}
        << QList<bool>{} << u"«نام دسته» تکراری"_s << Texts{} << Texts{u"112|1|قهوه|,1,112,"_s};
    QTest::newRow("rename") << u"سیاه"_s << Steps{{Qt::Key_F2}, name(u"سبز"_s), enter} << QList<bool>{} << QString()
                            << Texts{siah} << Texts{u"111|11|سبز|,1,11,111,"_s};
    QTest::newRow("rename to a neighbour's name, given up")
        << u"چای"_s << Steps{enter, name(u"قند"_s), enter, escape} << QList<bool>{} << u"«نام دسته» تکراری"_s << Texts{}
        << Texts{};
    QTest::newRow("delete the end of a branch")
        << u"سیاه"_s << Steps{{Qt::Key_F7}} << QList<bool>{true} << u"MsgDeleteItem(دسته‌ی «سیاه»)"_s
        << Texts{siah} << Texts{};
    QTest::newRow("delete a branch") << u"چای"_s << Steps{{Qt::Key_F7}} << QList<bool>{} << u"«چای» قابل حذف نیست"_s
                                     << Texts{} << Texts{};
    QTest::newRow("delete with goods") << u"قند"_s << Steps{{Qt::Key_F7}} << QList<bool>{} << u"۱ کالا در آن"_s
                                       << Texts{} << Texts{};
    QTest::newRow("higher") << u"چای"_s << Steps{ctrl(Qt::Key_Right)} << QList<bool>{} << QString() << Texts{chay, siah}
                            << Texts{u"11|NULL|چای|,11,"_s, u"111|11|سیاه|,11,111,"_s};
    QTest::newRow("deeper") << u"قند"_s << Steps{ctrl(Qt::Key_Left)} << QList<bool>{} << QString() << Texts{qand}
                            << Texts{u"12|11|قند|,1,11,12,"_s};
    QTest::newRow("cut and put elsewhere")
        << u"چای"_s << Steps{ctrl(Qt::Key_X), {Qt::Key_End}, ctrl(Qt::Key_V)} << QList<bool>{} << QString()
        << Texts{chay, siah} << Texts{u"11|2|چای|,2,11,"_s, u"111|11|سیاه|,2,11,111,"_s};
    QTest::newRow("into its own branch") << u"چای"_s << Steps{ctrl(Qt::Key_X), {Qt::Key_Down}, ctrl(Qt::Key_V)}
                                         << QList<bool>{}
                                         << u"«چای» نمی‌تواند زیرشاخه‌ی خودش"_s << Texts{}
                                         << Texts{};
    QTest::newRow("under goods") << u"سیاه"_s << Steps{ctrl(Qt::Key_X), {Qt::Key_Down}, ctrl(Qt::Key_V)}
                                 << QList<bool>{} << u"در دسته‌ی «قند» ۱ کالا"_s << Texts{}
                                 << Texts{};
    QTest::newRow("the first branch takes the goods")
        << u"قند"_s << Steps{{Qt::Key_Insert}, name(u"حبه"_s), enter} << QList<bool>{true}
        << u"در دسته‌ی «قند» ۱ کالا"_s << Texts{} << Texts{u"112|12|حبه|,1,12,112,"_s};
    QTest::newRow("or is not made") << u"قند"_s << Steps{{Qt::Key_Insert}, name(u"حبه"_s), enter} << QList<bool>{false}
                                    << u"در دسته‌ی «قند» ۱ کالا"_s << Texts{} << Texts{};
}

void TestCategories::Changes()
{
    QFETCH(QString, at);
    QFETCH(Steps, steps);
    QFETCH(QList<bool>, answers);
    QFETCH(QString, says);
    QFETCH(QStringList, gone);
    QFETCH(QStringList, come);
    Fixture t;
    QStringList expected = t.Tree();
    for (const bool answer : std::as_const(answers))
        t.messages.Answer(answer);
    t.Work(at, [&](desk::CategoryTreeView &) { Play(steps); });
    const QStringList said = t.messages.TakeAll();
    QCOMPARE(said.size(), says.isEmpty() ? 0 : 1);
    QVERIFY2(said.join(u'|').contains(says), qPrintable(said.join(u'|')));
    for (const QString &row : std::as_const(gone))
        expected.removeOne(row);
    expected += come;
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
        Play({{Qt::Key_X, Qt::ControlModifier}, {Qt::Key_Up}, {Qt::Key_V, Qt::ControlModifier}});
        QVERIFY(t.messages.Take().contains(u"زیرشاخه‌ی خودش"_s));
        QVERIFY(!other.Delete(11));
        Play({{Qt::Key_F2}, {Qt::Key_unknown, {}, u"کهنه"_s}, {Qt::Key_Return}});
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
        Play({{Qt::Key_F4}, {Qt::Key_unknown, {}, u"قهوه"_s}, {Qt::Key_Return}});
        QCOMPARE(names(1), (QStringList{u"چای"_s, u"قهوه"_s, u"قند"_s}));
        Play({{Qt::Key_Up, Qt::ControlModifier}, {Qt::Key_Up, Qt::ControlModifier}});
        QCOMPARE(names(1), (QStringList{u"قهوه"_s, u"چای"_s, u"قند"_s}));
        Play({{Qt::Key_Down, Qt::ControlModifier}, {Qt::Key_Down, Qt::ControlModifier}});
        QCOMPARE(names(1), (QStringList{u"چای"_s, u"قند"_s, u"قهوه"_s}));
        test::Type(u"سيا"_s); // the search takes what is typed on the tree
        test::Press(Qt::Key_Return);
        test::Press(Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(names(1), (QStringList{u"چای"_s, u"سیاه"_s, u"قند"_s, u"قهوه"_s}));
    });
    QCOMPARE(t.desk.categories.Path(111).size(), 2);
}

void TestCategories::NeedsTheRight()
{
    Fixture t;
    t.database.Exec(u"delete from UserRights where UserCode = 1 and SoftwarePart = 102 and Permission = 2"_s);
    const QStringList before = t.Tree();
    t.Work(u"قند"_s, [&](desk::CategoryTreeView &) {
        for (const Step &step : Steps{{Qt::Key_F4},
                                      {Qt::Key_Insert},
                                      {Qt::Key_F2},
                                      {Qt::Key_F7},
                                      {Qt::Key_Up, Qt::ControlModifier},
                                      {Qt::Key_Right, Qt::ControlModifier}}) {
            Play({step});
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
