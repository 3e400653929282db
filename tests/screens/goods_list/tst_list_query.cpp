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

    /// What the search form makes of its criteria, and what of it the list takes over.
    void searchParameters_data()
    {
        QTest::addColumn<goods::SearchCriteria>("criteria");
        QTest::addColumn<int>("group");
        QTest::addColumn<int>("stockTab"); // -1: stock is not kept
        QTest::addColumn<QString>("form");
        QTest::addColumn<QString>("list");
        const QString user = u"@ManageType = 1,@UserCode = 7,@Cost_Flag = 1,"_s;
        const QString none = u"@SL_Code = 0,@DisplayType = 1"_s;
        using Criteria = goods::SearchCriteria;
        QTest::newRow("nothing") << Criteria{} << 0 << -1 << user + none << none;
        QTest::newRow("tags") << Criteria{u"2,5"_s, 0, 0, false} << 0 << 0
                              << u"@Tags = '2,5',"_s + user + none + u",@GoodExistType = 1"_s
                              << u"@Tags = '2,5',"_s + none;
        QTest::newRow("category") << Criteria{{}, 12, 0, false} << 4 << -1
                                  << u"@Category = ',12,',"_s + user + none + u",@GrpCode = 4"_s
                                  << u"@Category = ',12,',"_s + none;
        QTest::newRow("list shown") << Criteria{{}, 0, 3, false} << 0 << 1
                                    << user + u"@SL_Code = 3,@DisplayType = 1,@GoodExistType = 0"_s
                                    << u"@SL_Code = 3,@DisplayType = 1"_s;
        QTest::newRow("everything") << Criteria{u"2"_s, 12, 3, true} << 4 << 2
                                    << u"@Tags = '2',@Category = ',12,',"_s + user +
                                           u"@SL_Code = 3,@DisplayType = 0,@GrpCode = 4,@GoodExistType = -1"_s
                                    << u"@Tags = '2',@Category = ',12,',@SL_Code = 3,@DisplayType = 0"_s;
    }
    void searchParameters()
    {
        QFETCH(goods::SearchCriteria, criteria);
        QFETCH(int, group);
        QFETCH(int, stockTab);
        ListCriteria list{group, 1, 7, u"Code,Name"_s, stockTab >= 0, stockTab, true, {}};
        QStringList form{goods::TagsParam(criteria.Tags), goods::CategoryParam(criteria.Category),
                         goods::SearchParams(list, criteria)};
        form.removeAll(QString());
        QTEST(form.join(u','), "form");
        // The form adds the columns when the user selects; a procedure takes each parameter once.
        list.AdvancedParams = form.join(u',') + u",@RequestedCol='Code,Name'"_s;
        QTEST(goods::AdvancedParamsFor(list), "list");
        QCOMPARE(goods::ListFilter(list).join(u',').count(u"@RequestedCol"_s), 1);
        QVERIFY_THROWS_EXCEPTION(host::RefusedText, goods::TagsParam(u"2'; DROP TABLE TagS --"_s));
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
