#include "desk/application/desk_host.h"
#include "entry/opening_entry.h"
#include "tests/screens/opening_stock/opening_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>

using test::OpeningFixture;

namespace {

/// The good with a serial, on the services of a desk: what is said and set is the test's.
struct Fixture : OpeningFixture
{
    Fixture()
    {
        host.settings.record.GoodDetails = true;
        database.Exec(u"insert into DetailTypes(Title,DetailType) values(N'سریال',3) insert into "
                      "GoodDetailRelation(GoodCode,DetailID) select 500009,ID from DetailTypes update GoodInf set "
                      "Unit2=null,VoucherCode=0"_s);
        desk = std::make_unique<desk::DeskHost>(host.host.DM, &host.messages);
        keepsScreen = true;
        Use(host.host);
    }
    ~Fixture() { kept.reset(); }
    void Use(::host::Host &fakes)
    {
        whole = std::make_unique<::host::Host>(::host::Host{.DM = fakes.DM,
                                                            .permissions = fakes.permissions,
                                                            .messages = fakes.messages,
                                                            .settings = fakes.settings,
                                                            .entities = desk->entities,
                                                            .vouchers = fakes.vouchers,
                                                            .stock = desk->stock,
                                                            .goodDetails = desk->goodDetails,
                                                            .detailValues = desk->detailValues,
                                                            .detailMovements = desk->detailMovements,
                                                            .serialBatches = desk->serialBatches,
                                                            .detailDivisions = desk->detailDivisions,
                                                            .photos = fakes.photos,
                                                            .categories = fakes.categories,
                                                            .levels = fakes.levels,
                                                            .selectedLists = fakes.selectedLists,
                                                            .scales = fakes.scales,
                                                            .keyboard = fakes.keyboard,
                                                            .clock = fakes.clock,
                                                            .barcodes = fakes.barcodes,
                                                            .finance = fakes.finance,
                                                            .theme = fakes.theme,
                                                            .numbers = fakes.numbers});
        kept = std::make_unique<TGood_Get_FRM>(*whole);
        kept->SetDetailEntry(entry::OpeningDetailEntry(*whole));
    }
    /// In a row's editor: enters serials and closes their screen with OK.
    static void Enter(QWidget *row, const QStringList &serials)
    {
        test::Focus(row, u"Meghdar_EDT"_s);
        test::Drive([] { test::Press(Qt::Key_Plus, Qt::KeypadModifier); },
                    [&](QWidget *entry) {
                        for (const QString &serial : serials) {
                            test::Enter(entry, u"Serial_EDT"_s, serial);
                            test::Press(Qt::Key_F4);
                        }
                        test::Picture(*entry, u"opening_serials"_s);
                        test::Press(Qt::Key_F3);
                    });
    }
    /// Opens the good, its list and the editor of the row by this key.
    void EditRow(Qt::Key key, const Drive &drive, const std::function<void()> &end)
    {
        OpenGood(500009, [&](QWidget *screen) {
            List(screen, [&](QWidget *) {
                Row(key, drive);
                test::Press(Qt::Key_Escape);
            });
            end();
        });
    }
    QStringList Ledger() const
    {
        return database.Rows(
            u"select k.OperationType,k.OperationCode,k.OperationRow,k.StoreCode,d.[Value],k.Amount1 from "
            "GoodDetailKardex k join GoodDetailValueDetails d on d.DetailValueID=k.DetailValueID order "
            "by k.OperationRow,d.[Value]"_s);
    }

    std::unique_ptr<desk::DeskHost> desk;
    std::unique_ptr<::host::Host> whole;
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
        const auto save = [&f] { f.Save(); };
        const auto leave = [&f] { f.Leave(); };
        const auto fill = [&](QWidget *row) {
            test::Enter(row, u"Store_Entity"_s, u"3"_s);
            Fixture::Enter(row, {u"A1"_s, u"A2"_s});
            QCOMPARE(test::Find<host::NumericEdit>(row, u"Meghdar_EDT"_s).Number(), 2.0L);
            test::Press(Qt::Key_F3);
        };
        f.EditRow(Qt::Key_F4, fill, leave);
        QVERIFY(f.Ledger().isEmpty());
        QCOMPARE(f.database.Scalar(u"select count(*) from GoodDetailKardexEnter_Temp"_s).toInt(), 0);

        f.EditRow(Qt::Key_F4, fill, save);
        const QStringList entered{u"3|500009|3|3|A1|1"_s, u"3|500009|3|3|A2|1"_s};
        QCOMPARE(f.Ledger(), entered);
        QCOMPARE(f.Saved().last(), u"3|2|0||3"_s);

        // One more is given up, behind one that the row keeps.
        f.OpenGood(500009, [&](QWidget *screen) {
            OpeningFixture::List(screen, [&](QWidget *) {
                for (const QString &serial : {u"A3"_s, u"B1"_s}) {
                    test::Press(Qt::Key_End);
                    OpeningFixture::Row(Qt::Key_F5, [&](QWidget *row) {
                        Fixture::Enter(row, {serial});
                        if (serial == u"A3")
                            test::Press(Qt::Key_F3);
                        else
                            f.Leave();
                    });
                }
                test::Press(Qt::Key_Escape);
            });
            f.Save();
        });
        QCOMPARE(f.Ledger(), entered + QStringList{u"3|500009|3|3|A3|1"_s});
        f.database.Exec(u"delete k from GoodDetailKardex k join GoodDetailValueDetails d on d.DetailValueID="
                        "k.DetailValueID where d.[Value]=N'A3'"_s);

        // To another store, with the serials.
        f.database.Exec(u"delete from GoodFirstAsset where Radif<>3"_s);
        f.EditRow(
            Qt::Key_F5,
            [&](QWidget *row) {
                f.host.messages.Answer(true);
                test::Enter(row, u"Store_Entity"_s, u"2"_s);
                test::Press(Qt::Key_Return);
                f.host.messages.Take();
                test::Press(Qt::Key_F3);
            },
            save);
        QCOMPARE(f.Ledger(), QStringList({u"3|500009|3|2|A1|1"_s, u"3|500009|3|2|A2|1"_s}));
        QCOMPARE(f.Saved(), QStringList{u"2|2|0||3"_s});

        f.OpenGood(500009, [&](QWidget *screen) {
            OpeningFixture::List(screen, [&](QWidget *) {
                f.host.messages.Answer(true);
                test::Press(Qt::Key_F7);
                f.host.messages.Take();
                test::Press(Qt::Key_Escape);
            });
            f.Save();
        });
        QVERIFY(f.Ledger().isEmpty());
    }
};

REGISTER_TEST(TestOpeningLedger)
#include "tst_opening_ledger.moc"
