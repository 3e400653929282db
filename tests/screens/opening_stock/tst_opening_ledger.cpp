#include "entry/opening_entry.h"
#include "tests/screens/good_details/details_fixture.h"
#include "tests/screens/opening_stock/opening_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>

using test::OpeningFixture;

namespace {

/// A good with serials in one unit, on the services of a desk.
struct Fixture : fixture::Shop
{
    Fixture()
    {
        database.Exec(u"update GoodInf set Unit2=null,Meghdar_Formool=0,kala_name=Name,SMSCode=Code,CostBgPrd=1 insert "
                      "into GoodCostDiscount(GoodCode,CostLevel_Sell_1,CostLevel_Buy_1) values(5002,1,1)"_s);
        editor.SetDetailEntry(entry::OpeningDetailEntry(host));
    }
    /// Opens the good and its list, does this there, and saves or leaves.
    void Open(bool save, const std::function<void()> &onList)
    {
        test::Drive([this] { editor.Open(5002, ::host::TFormMode::Edit); },
                    [&](QWidget *screen) {
                        OpeningFixture::List(screen, [&](QWidget *) {
                            onList();
                            test::Press(Qt::Key_Escape);
                        });
                        if (!save)
                            return Leave();
                        test::Press(Qt::Key_F3);
                        QCOMPARE(fakes.messages.TakeAll(), QStringList{OpeningFixture::Told});
                    });
    }
    void Leave()
    {
        fakes.messages.Answer(true);
        test::Press(Qt::Key_Escape);
        fakes.messages.Take();
    }
    /// In a row's editor: enters a serial and closes its screen with OK.
    static void Enter(QWidget *row, const QString &serial)
    {
        test::Focus(row, u"Meghdar_EDT"_s);
        test::Drive([] { test::Press(Qt::Key_Plus, Qt::KeypadModifier); },
                    [&](QWidget *entry) {
                        test::Enter(entry, u"Serial_EDT"_s, serial);
                        test::Press(Qt::Key_F4);
                        test::Picture(*entry, u"opening_serials"_s);
                        test::Press(Qt::Key_F3);
                    });
    }
    QStringList Ledger() const
    {
        return database.Rows(u"select k.OperationType,k.OperationCode,k.OperationRow,k.StoreCode,d.[Value],a.StoreCode,"
                             "a.Amount1 from GoodDetailKardex k join GoodDetailValueDetails d on d.DetailValueID="
                             "k.DetailValueID join GoodFirstAsset a on a.GoodCode=k.GoodCode order by d.[Value]"_s);
    }

    TGood_Get_FRM editor{host};
};

} // namespace

/// Serials of opening rows, from the keys to the ledger.
class TestOpeningLedger : public QObject
{
    Q_OBJECT

private slots:
    void serialsGoWithTheGood()
    {
        Fixture f;
        const auto fill = [] {
            OpeningFixture::Row(Qt::Key_F4, [](QWidget *row) {
                test::Enter(row, u"Store_Entity"_s, u"1"_s);
                Fixture::Enter(row, u"A1"_s);
                test::Press(Qt::Key_F3);
            });
        };
        f.Open(false, fill);
        QCOMPARE(f.database
                     .Scalar(u"select (select count(*) from GoodDetailKardex)+(select count(*) from "
                             "GoodDetailKardexEnter_Temp)+(select count(*) from GoodFirstAsset)"_s)
                     .toInt(),
                 0);
        f.Open(true, fill);
        QCOMPARE(f.Ledger(), QStringList{u"3|5002|1|1|A1|1|1"_s});
        // Another one is kept, and one behind it given up.
        f.Open(true, [&] {
            for (const QString &serial : {u"A2"_s, u"B1"_s})
                OpeningFixture::Row(Qt::Key_F5, [&](QWidget *row) {
                    Fixture::Enter(row, serial);
                    if (serial == u"B1")
                        f.Leave();
                    else
                        test::Press(Qt::Key_F3);
                });
        });
        QCOMPARE(f.Ledger(), QStringList({u"3|5002|1|1|A1|1|2"_s, u"3|5002|1|1|A2|1|2"_s}));
        f.Open(true, [&] {
            OpeningFixture::Row(Qt::Key_F5, [&](QWidget *row) {
                f.fakes.messages.Answer(true);
                test::Enter(row, u"Store_Entity"_s, u"2"_s);
                test::Press(Qt::Key_Return);
                QCOMPARE(f.fakes.messages.Take(), u"Confirm(22205)"_s);
                test::Press(Qt::Key_F3);
            });
        });
        QCOMPARE(f.Ledger(), QStringList({u"3|5002|1|2|A1|2|2"_s, u"3|5002|1|2|A2|2|2"_s}));
        f.Open(true, [&] {
            f.fakes.messages.Answer(true);
            test::Press(Qt::Key_F7);
            f.fakes.messages.Take();
        });
        QVERIFY(f.database.Rows(u"select ID from GoodDetailKardex"_s).isEmpty());
    }
};

REGISTER_TEST(TestOpeningLedger)
#include "tst_opening_ledger.moc"
