#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "rules/opening_row_text.h"
#include "tests/screens/opening_stock/opening_fixture.h"
#include "tests/support/test_main.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QtTest>

using test::OpeningFixture;

namespace {

const QString Closed = u"ShowSmartMessage(10020, مقادير اول دوره, تغيير مقادير اول دوره)"_s;

} // namespace

/// The opening rows of a good in several stores, from the editor of the good.
class TestOpeningRows : public QObject
{
    Q_OBJECT

private slots:
    void rowText()
    {
        const goods::OpeningGood good{7, u"شیر;1;کم چرب"_s, 1, 2, 12.504L, true, u"عدد"_s, u"کارتن"_s};
        QCOMPARE(goods::PackOpeningRow({good, 3}), u"7;شیر;1;کم چرب;1;2;12.50;1;3;عدد;کارتن"_s);
    }

    void rowsOfASavedGood()
    {
        OpeningFixture f;
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Picture(*screen, u"opening_editor"_s);
            OpeningFixture::List(screen, [&](QWidget *list) {
                QCOMPARE(f.Columns(list), (QStringList{u"انبار"_s, u"موجودي"_s, u"واحد"_s, u"م کل"_s, u"توضیحات"_s}));
                OpeningFixture::Row(Qt::Key_F4, [&](QWidget *row) {
                    QCOMPARE(test::Focused(), u"Store_Entity"_s);
                    OpeningFixture::Fill(row, u"۳"_s, u"۷/۵"_s);
                    test::Enter(row, u"Comment_EDT"_s, u"کنار در"_s);
                    test::Picture(*row, u"opening_row"_s);
                    QVERIFY(test::RightOf(test::Find(row, u"Store_Entity_LBL"_s), test::Find(row, u"Store_Entity"_s)));
                    test::Press(Qt::Key_F3);
                });
                test::Press(Qt::Key_Home);
                OpeningFixture::Row(Qt::Key_Return, [&](QWidget *row) {
                    QCOMPARE(test::Find<QLineEdit>(row, u"Comment_EDT"_s).text(), u"قفسه"_s);
                    test::Enter(row, u"Meghdar_EDT"_s, u"12"_s);
                    test::Press(Qt::Key_F3);
                });
                test::Press(Qt::Key_Down);
                f.host.messages.Answer(true);
                test::Press(Qt::Key_F7);
                QCOMPARE(f.host.messages.Take(), u"MsgDeleteRow()"_s);
                QCOMPARE(test::Find<QLabel>(list, u"Total_LBL"_s).text(), u"جمع :  ۱۹٫۵ عدد"_s);
                test::Picture(*list, u"opening_list"_s);
                test::Press(Qt::Key_Escape);
            });
            QCOMPARE(test::Find<host::NumericEdit>(screen, u"AvaBgPrd_EDT"_s).text(), u"19.5"_s);
            QVERIFY(!test::Find(screen, u"AvaBgPrd_EDT"_s).isEnabled());
            QCOMPARE(f.Saved().size(), 2);
            f.Save();
        });
        QCOMPARE(f.Saved(), QStringList({u"1|12|0|قفسه|1"_s, u"3|7.5|0|کنار در|3"_s}));
        QCOMPARE(f.database.Rows(u"select AvaBgPrd,(select count(*) from GoodFirstAsset where tmp<>0) from GoodInf"_s),
                 QStringList{u"19.5|0"_s});
        QCOMPARE(f.host.vouchers.calls.last(), u"SaveInLineAutoVoucher(500009)"_s);
        QVERIFY(f.host.stock.calls.contains(u"SaveStorageAutoOperation(102, 500009)"_s));
    }

    void rowsOfANewGood()
    {
        OpeningFixture f;
        f.keepsScreen = true;
        int code = 0;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            test::Enter(screen, u"Name_EDT"_s, u"شیر"_s);
            test::Focus(screen, u"GoodFirstAsset_BTN"_s);
            test::Press(Qt::Key_Space);
            QCOMPARE(f.host.messages.Take(), u"MsgRequiredField(کد واحد)"_s);
            f.FillRequired(screen);
            test::Enter(screen, u"AvaBgPrd_EDT"_s, u"4"_s);
            // The price is typed after the list as well: elsewhere it could not be given.
            OpeningFixture::List(screen, [&](QWidget *list) {
                QCOMPARE(test::Find<host::Grid>(list, u"FirstAssetList_GRD"_s).VisibleTexts(0).mid(1, 2),
                         (QStringList{u"انبار مرکزی"_s, u"۴"_s}));
                OpeningFixture::Row(Qt::Key_F4, [&](QWidget *row) {
                    OpeningFixture::Fill(row, u"2"_s, u"6"_s);
                    test::Press(Qt::Key_F3);
                });
                test::Press(Qt::Key_Escape);
            });
            // A code of another group, while the rows wait.
            test::Find<QComboBox>(screen, u"Group_CMB"_s).setCurrentIndex(2);
            code = int(test::Find<host::NumericEdit>(screen, u"Code_EDT"_s).Integer());
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.Take(), u"MsgRequiredField(قيمت)"_s);
            test::Enter(screen, u"CostBgPrd_EDT"_s, u"100"_s);
            f.Save();
            // The next record knows nothing of these rows.
            test::Enter(screen, u"Unit_Entity1"_s, u"1"_s);
            OpeningFixture::List(screen, [&](QWidget *list) {
                QCOMPARE(test::Find<host::Grid>(list, u"FirstAssetList_GRD"_s).RowCount(), 0);
                QVERIFY(!test::Find(list, u"Edit_BTN"_s).isEnabled());
                test::Press(Qt::Key_Escape);
            });
            f.Leave();
        });
        QCOMPARE(f.database.Rows(u"select StoreCode,Amount1,tmp,AvaBgPrd,Store from GoodFirstAsset,GoodInf where "
                                 "GoodCode=%1 and Code=GoodCode order by Radif"_s.arg(code)),
                 QStringList({u"1|4|0|10|1"_s, u"2|6|0|10|1"_s}));
    }

    void rowRefused_data()
    {
        using Way = std::function<void(OpeningFixture &)>;
        QTest::addColumn<Way>("way");
        QTest::addColumn<QString>("store");
        QTest::addColumn<QString>("amount");
        QTest::addColumn<QString>("said");
        const Way none = [](OpeningFixture &) {};
        QTest::newRow("no store") << none << QString() << u"1"_s << u"MsgRequiredField(کد انبار)"_s;
        QTest::newRow("a store twice") << none << u"2"_s << u"1"_s << u"MsgRepeatedField(انبار, موجودی اول دوره)"_s;
        QTest::newRow("no quantity") << none << u"3"_s << u"0"_s << u"MsgRequiredField(مقدار)"_s;
        QTest::newRow("no right") << Way([](OpeningFixture &f) {
            f.host.permissions.Deny(host::TSoftwarePart::OpeningStock, host::TPermission::Create);
        }) << u"3"_s << u"1"_s << QString();
        QTest::newRow("closed meanwhile")
            << Way([](OpeningFixture &f) { f.host.vouchers.constStartPeriod = true; }) << u"3"_s << u"1"_s << Closed;
    }
    void rowRefused()
    {
        QFETCH(std::function<void(OpeningFixture &)>, way);
        QFETCH(QString, store);
        QFETCH(QString, amount);
        QFETCH(QString, said);
        OpeningFixture f;
        f.OpenGood(500009, [&](QWidget *screen) {
            OpeningFixture::List(screen, [&](QWidget *list) {
                OpeningFixture::Row(Qt::Key_F4, [&](QWidget *row) {
                    OpeningFixture::Fill(row, store, amount);
                    way(f);
                    QCOMPARE(f.Refused(), said);
                });
                QCOMPARE(test::Find<host::Grid>(list, u"FirstAssetList_GRD"_s).RowCount(), 2);
                test::Press(Qt::Key_Escape);
            });
            test::Press(Qt::Key_Escape); // nothing was changed, nothing is asked
        });
    }

    void commandsRefused()
    {
        const QString fixed =
            u"ShowMessage(کاربر گرامی برای این کالا سند ثبت شده است و موجودی اول دوره آن قابل تغییر نیست)"_s;
        OpeningFixture f;
        f.keepsScreen = true;
        f.database.Exec(u"insert into Vouchers(Code,Kind,[Date]) values(1,2,'1405/01/01') insert into "
                        "VoucherLines(VoucherCode,GoodCode,Sharh) values(1,500009,N'x')"_s);
        for (const QString &said : {fixed, Closed}) {
            f.host.vouchers.constStartPeriod = said == Closed;
            f.OpenGood(500009, [&](QWidget *screen) {
                OpeningFixture::List(screen, [&](QWidget *) {
                    for (const Qt::Key key : {Qt::Key_F4, Qt::Key_F5, Qt::Key_F7})
                        test::Press(key);
                    QCOMPARE(f.host.messages.TakeAll(), (QStringList{said, said, said}));
                    test::Press(Qt::Key_Escape);
                });
                test::Press(Qt::Key_Escape);
            });
        }
    }

    /// Two stores that have sold, by way of a third one: judged once, as the good is saved.
    void storesAreExchanged()
    {
        OpeningFixture f;
        f.host.settings.record.ControlNegativeStock = true;
        f.host.stock.enough = false;
        f.OpenGood(500009, [&](QWidget *screen) {
            OpeningFixture::List(screen, [&](QWidget *list) {
                for (const auto &[row, store] : {std::pair(u"1"_s, u"3"_s), {u"2"_s, u"1"_s}, {u"1"_s, u"2"_s}}) {
                    test::Find<host::Grid>(list, u"FirstAssetList_GRD"_s).Locate(row);
                    OpeningFixture::Row(Qt::Key_F5, [&, store = store](QWidget *editor) {
                        test::Enter(editor, u"Store_Entity"_s, store);
                        test::Press(Qt::Key_F3);
                    });
                }
                test::Press(Qt::Key_Escape);
            });
            const QStringList before = f.Saved();
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.stock.calls.filter(u"Check_TockMinus"_s).size(), 1);
            QCOMPARE(f.Saved(), before);
            f.host.stock.enough = true;
            f.Save();
        });
        QCOMPARE(f.Saved(), QStringList({u"2|10|0|قفسه|1"_s, u"1|5|0||2"_s}));
    }

    /// As many for two rows as for a hundred: opening the list, saving a row, saving the good.
    void statementsDoNotGrow()
    {
        QList<quint64> counts[2];
        for (const int rows : {2, 100}) {
            OpeningFixture f;
            QStringList values;
            for (int row = 1; row <= rows; ++row)
                values << u"(%1,0,5,0,null,%1)"_s.arg(row);
            for (int row = 4; row <= rows; ++row)
                f.database.Exec(u"insert into Stores(Code,Name) values(%1,N's%1')"_s.arg(row));
            f.Stock(values.join(u','));
            QList<quint64> &sent = counts[rows == 2 ? 0 : 1];
            const auto begin = [&] { sent << host::StatementsSent(); };
            const auto end = [&] { sent.last() = host::StatementsSent() - sent.last(); };
            f.OpenGood(500009, [&](QWidget *screen) {
                begin();
                OpeningFixture::List(screen, [&](QWidget *) {
                    end();
                    OpeningFixture::Row(Qt::Key_F5, [&](QWidget *editor) {
                        test::Enter(editor, u"Meghdar_EDT"_s, u"6"_s);
                        begin();
                        test::Press(Qt::Key_F3);
                        end();
                    });
                    test::Press(Qt::Key_Escape);
                });
                begin();
                f.Save();
                end();
            });
        }
        QCOMPARE(counts[1], counts[0]);
        QCOMPARE(counts[0].size(), 3);
        const QList<quint64> most{6, 8, 40};
        for (int i = 0; i < 3; ++i)
            QVERIFY2(counts[0][i] <= most[i], qPrintable(u"%1: %2"_s.arg(i).arg(counts[0][i])));
    }

    void deletingNeedsRightAndStock()
    {
        OpeningFixture f;
        f.host.settings.record.ControlNegativeStock = true;
        f.OpenGood(500009, [&](QWidget *screen) {
            OpeningFixture::List(screen, [&](QWidget *list) {
                auto &grid = test::Find<host::Grid>(list, u"FirstAssetList_GRD"_s);
                f.host.permissions.Deny(host::TSoftwarePart::OpeningStock, host::TPermission::Delete);
                test::Press(Qt::Key_F7);
                f.host.permissions.denied.clear();
                f.host.messages.Answer(false);
                test::Press(Qt::Key_F7);
                f.host.stock.enough = false;
                f.host.messages.Answer(true);
                test::Press(Qt::Key_F7);
                QCOMPARE(grid.RowCount(), 2);
                QCOMPARE(f.host.stock.calls,
                         QStringList{u"Check_TockMinus(SELECT GoodCode AS Code, StoreCode AS Anbar, Amount1 * -1 AS "
                                     "Mogodi FROM GoodFirstAsset  WHERE tmp = 0 AND GoodCode = 500009 AND  StoreCode "
                                     "= 1, 1405/01/01)"_s});
                f.host.stock.enough = true;
                for (const int left : {1, 0}) {
                    f.host.messages.Answer(true);
                    test::Press(Qt::Key_F7);
                    QCOMPARE(grid.RowCount(), left);
                }
                f.host.messages.TakeAll();
                test::Press(Qt::Key_Escape);
            });
            QVERIFY(test::Find(screen, u"AvaBgPrd_EDT"_s).isEnabled());
            f.Save();
        });
        QCOMPARE(f.database.Rows(u"select AvaBgPrd,(select count(*) from GoodFirstAsset) from GoodInf"_s),
                 QStringList{u"0|0"_s});
    }

    void unitsOfRows_data()
    {
        QTest::addColumn<bool>("variable");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QStringList>("rows");
        QTest::addColumn<QString>("totals");
        QTest::newRow("big and small") << false << u"MeghdarKol_EDT"_s << u"3"_s
                                       << QStringList{u"1|30|2||1"_s, u"2|30|2||2"_s, u"3|36.000000012|3||3"_s}
                                       << u"96.000000012|7"_s;
        QTest::newRow("two units, the second typed")
            << true << u"Meghdar2_EDT"_s << u"3"_s
            << QStringList{u"1|30|2||1"_s, u"2|30|2||2"_s, u"3|36.000000012|3||3"_s} << u"96.000000012|7"_s;
        QTest::newRow("two units, the first typed")
            << true << u"Meghdar_EDT"_s << u"24.000000008"_s
            << QStringList{u"1|30|2||1"_s, u"2|30|2||2"_s, u"3|24.000000008|2||3"_s} << u"84.000000008|6"_s;
    }
    void unitsOfRows()
    {
        QFETCH(bool, variable);
        QFETCH(QString, field);
        QFETCH(QString, typed);
        OpeningFixture f;
        f.host.settings.record.TwoUnitVariableRatio = variable;
        f.Stock(u"(1,0,30,2,null,1),(2,0,30,2,null,2)"_s);
        // More decimals than a text of the opening keeps.
        f.database.Exec(u"update GoodInf set Unit2=2,Meghdar_Formool=12.000000004"_s);
        f.OpenGood(500009, [&](QWidget *screen) {
            OpeningFixture::List(screen, [&](QWidget *list) {
                QCOMPARE(f.Columns(list).contains(u"موجودي 2"_s), variable);
                QCOMPARE(f.Columns(list).contains(u"م کل"_s), !variable);
                OpeningFixture::Row(Qt::Key_F4, [&](QWidget *row) {
                    test::Enter(row, u"Store_Entity"_s, u"3"_s);
                    test::Enter(row, field, typed);
                    test::Focus(row, u"Comment_EDT"_s);
                    QCoreApplication::processEvents(); // a rule that may ask waits for the focus to arrive
                    test::Picture(*row, variable ? u"opening_row_two_units"_s : u"opening_row_parts"_s);
                    test::Press(Qt::Key_F3);
                });
                test::Picture(*list, variable ? u"opening_list_two_units"_s : u"opening_list_parts"_s);
                test::Press(Qt::Key_Escape);
            });
            f.Save();
        });
        QTEST(f.Saved(), "rows");
        QTEST(f.database.Rows(u"select AvaBgPrd,AvaBgPrd2 from GoodInf"_s).join(u';'), "totals");
    }

    void twoDesksOnOneGood()
    {
        OpeningFixture f;
        const QString mine = u"1|10|0|قفسه|1"_s;
        f.OpenGood(500009, [&](QWidget *screen) {
            OpeningFixture::List(screen, [&](QWidget *) {
                OpeningFixture::Row(Qt::Key_F4, [&](QWidget *row) {
                    OpeningFixture::Fill(row, u"3"_s, u"7"_s);
                    test::Press(Qt::Key_F3);
                });
                test::Press(Qt::Key_Escape);
            });
            test::TestHost other({f.database.AnotherConnection(), f.database.GoodsList(), f.database.Scales()});
            other.entities.lists = f.host.entities.lists;
            TGood_Get_FRM second(other);
            test::Drive([&] { second.Open(500009, host::TFormMode::Edit); },
                        [&](QWidget *editor) {
                            OpeningFixture::List(editor, [&](QWidget *) {
                                test::Press(Qt::Key_Down);
                                other.messages.Answer(true);
                                test::Press(Qt::Key_F7);
                                test::Press(Qt::Key_Escape);
                            });
                            test::Press(Qt::Key_F3);
                            QCOMPARE(other.messages.TakeAll().last(), OpeningFixture::Told);
                        });
            screen->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(screen));
            test::Press(Qt::Key_F3);
            QVERIFY(f.host.messages.Take().contains(u"انبار مرکزی: ۱۰"_s));
            // What was entered is still there to be looked at.
            OpeningFixture::List(screen, [&](QWidget *list) {
                QCOMPARE(test::Find<host::Grid>(list, u"FirstAssetList_GRD"_s).RowCount(), 3);
                test::Press(Qt::Key_Escape);
            });
            f.Leave();
        });
        QCOMPARE(f.Saved(), QStringList{mine});
        QCOMPARE(f.database.Scalar(u"select count(*) from GoodFirstAsset"_s).toInt(), 1);
    }
};

REGISTER_TEST(TestOpeningRows)
#include "tst_opening_rows.moc"
