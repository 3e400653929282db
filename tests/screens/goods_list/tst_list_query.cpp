#include "data/goods/good_list_query.h"
#include "tests/support/test_main.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using goods::ListCriteria;
/// The statement of the goods list for each way of limiting it.
class TestListQuery : public QObject
{
    Q_OBJECT

private slots:
    void statement_data();
    void statement();
    void advancedParamsKept();
};

void TestListQuery::statement_data()
{
    QTest::addColumn<ListCriteria>("criteria");
    QTest::addColumn<QString>("expected");

    const ListCriteria base{0, 1, 7, u"Code,Name"_s, false, 2, false, {}};
    const QString all = u"Exec GoodInf_List_SP @GrpCode = NULL,@ManageType   = 1,@UserCode  = 7, "
                        "@RequestedCol='Code,Name'"_s;
    const QString group = u"Exec GoodInf_List_SP @GrpCode = 12,@ManageType   = 1,@UserCode  = 7, "
                          "@RequestedCol='Code,Name'"_s;
    QTest::newRow("all goods") << base << all;

    ListCriteria criteria = base;
    criteria.GrpCode = 12;
    QTest::newRow("a group") << criteria << group;

    criteria = base;
    criteria.RequestedCol = u"O'Neil"_s;
    QTest::newRow("a quote in the columns")
        << criteria
        << u"Exec GoodInf_List_SP @GrpCode = NULL,@ManageType   = 1,@UserCode  = 7, @RequestedCol='O''Neil'"_s;

    const int types[] = {1, 0, -1};
    for (int tab = 0; tab < 3; ++tab) {
        criteria = base;
        criteria.StockTabs = true;
        criteria.StockTab = tab;
        QTest::addRow("stock tab %d", tab) << criteria << all + u",@GoodExistType = %1"_s.arg(types[tab]);
    }

    criteria = base;
    criteria.AdvancedParams = u"@Tags = '2,5'"_s;
    QTest::newRow("advanced search not in use") << criteria << all;
    criteria.Advanced = true;
    QTest::newRow("advanced search") << criteria << all + u",@Tags = '2,5'"_s;
    criteria.StockTabs = true;
    QTest::newRow("advanced search after the stock tab") << criteria << all + u",@GoodExistType = -1,@Tags = '2,5'"_s;

    criteria = base;
    criteria.Advanced = true;
    criteria.AdvancedParams = u"@ManageType = 9,@UserCode = 9,@Cost_Flag = 1,@GoodExistType = 0,@SL_Code = 3"_s;
    QTest::newRow("what the list decides is not taken twice") << criteria << all + u",@SL_Code = 3"_s;
    criteria.AdvancedParams = u"@GrpCode = 4,@SL_Code = 3"_s;
    QTest::newRow("no group left over from the advanced search") << criteria << all + u",@SL_Code = 3"_s;
    criteria.GrpCode = 12;
    QTest::newRow("the group beside the list wins") << criteria << group + u",@SL_Code = 3"_s;
    criteria.AdvancedParams = u"@GrpCode = 4"_s;
    QTest::newRow("nothing left of the advanced search") << criteria << group;
    criteria.AdvancedParams = u"@Name = 'a,@GrpCode = 1'"_s;
    QTest::newRow("a name inside a quoted value is no parameter") << criteria << group + u",@Name = 'a,@GrpCode = 1'"_s;
}

void TestListQuery::statement()
{
    QFETCH(ListCriteria, criteria);
    QFETCH(QString, expected);
    QCOMPARE(goods::ListScript() + goods::ListFilter(criteria).join(u','), expected);
}

/// A group of the advanced search is only forgotten when the list has the last word on groups.
void TestListQuery::advancedParamsKept()
{
    ListCriteria criteria{12, 1, 7, {}, false, 2, false, u"@GrpCode = 4,@SL_Code = 3"_s};
    QCOMPARE(goods::AdvancedParamsFor(criteria), u"@GrpCode = 4,@SL_Code = 3"_s);
    criteria.Advanced = true;
    QCOMPARE(goods::AdvancedParamsFor(criteria), u"@SL_Code = 3"_s);
}

REGISTER_TEST(TestListQuery)
#include "tst_list_query.moc"
