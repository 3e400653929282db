#include "data/goods/good_list_query.h"
#include "host/data/sql_text.h"
#include "tests/support/test_main.h"

#include <QtTest>

using goods::ListCriteria;

/// What the list decides itself and what the advanced search adds, in one call.
class TestListQuery : public QObject
{
    Q_OBJECT

private slots:
    void parameters_data()
    {
        QTest::addColumn<ListCriteria>("criteria");
        QTest::addColumn<QString>("given"); // beside the user and the columns
        const auto row = [](const char *name, int group, int stockTab, const QString &advanced, const QString &given) {
            QTest::newRow(name) << ListCriteria{group, 1, 7, u"O'Neil"_s, stockTab >= 0, stockTab, true, advanced}
                                << given;
        };
        const QString all = u"@GrpCode=NULL"_s;
        row("all goods", 0, -1, {}, all);
        row("after the group and the stock tab", 12, 1, u"@Tags = '2,5'"_s,
            u"@GrpCode=12,@GoodExistType=0,@Tags='2,5'"_s);
        row("what the list decides is not taken twice", 0, -1,
            u"@ManageType = 9,@UserCode = 9,@Cost_Flag = 1,@GoodExistType = 0,@SL_Code = 3"_s, all + u",@SL_Code=3"_s);
        row("no group left over from the advanced search", 0, -1, u"@GrpCode = 4"_s, all);
        row("a name inside a quoted value is no parameter", 12, -1, u"@Name = 'a,@GrpCode = 1'"_s,
            u"@GrpCode=12,@Name='a,@GrpCode=1'"_s);
    }
    void parameters()
    {
        QFETCH(ListCriteria, criteria);
        const QString call = goods::ListScript() + goods::ListFilter(criteria).join(u',');
        const QString name = u"Exec GoodInf_List_SP"_s;
        QVERIFY(call.startsWith(name));
        QStringList parameters = host::SplitParams(call.mid(name.size()).remove(u' '));
        for (const QString &own : {u"@ManageType=1"_s, u"@UserCode=7"_s, u"@RequestedCol='O''Neil'"_s})
            QVERIFY2(parameters.removeAll(own) == 1, qPrintable(call));
        QTEST(parameters.join(u','), "given");
    }

    /// The advanced search counts while it is in use, and forgets its group when the list has the last word on groups.
    void advancedParamsKept()
    {
        ListCriteria criteria{12, 1, 7, {}, false, 2, false, u"@GrpCode = 4,@SL_Code = 3"_s};
        QVERIFY(!goods::ListFilter(criteria).join(u',').contains(u"SL_Code"));
        QCOMPARE(goods::AdvancedParamsFor(criteria), u"@GrpCode = 4,@SL_Code = 3"_s);
        criteria.Advanced = true;
        QCOMPARE(goods::AdvancedParamsFor(criteria), u"@SL_Code = 3"_s);
    }
};

REGISTER_TEST(TestListQuery)
#include "tst_list_query.moc"
