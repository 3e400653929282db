#include "tests/screens/opening_stock/opening_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>

using test::OpeningFixture;

namespace {

/// The same with details on: what would be entered is `given`, what was asked for is noted.
struct Fixture : OpeningFixture
{
    Fixture()
    {
        host.settings.record.GoodDetails = true;
        database.Exec(u"insert into DetailTypes(Title,DetailType) values(N'سریال',3) insert into "
                      "GoodDetailRelation(GoodCode,DetailID) select 500009,ID from DetailTypes"_s);
        host.detailValues.details.DetailIDs[0] = 1;
        kept = std::make_unique<TGood_Get_FRM>(host);
        keepsScreen = true;
        kept->SetDetailEntry([this](const DetailEntryRequest &request) {
            const ::host::TDocumentLine &line = request.line;
            asked << u"%1/%2/%3/%4/%5 %6 %7"_s.arg(line.OperationType)
                         .arg(line.OperationCode)
                         .arg(line.GoodCode)
                         .arg(line.OperationRow)
                         .arg(line.StoreCode)
                         .arg(request.storeName,
                              request.wanted ? ::host::QuantityToText(request.wanted->Amount1) : u"-"_s);
            if (given)
                host.detailMovements.totals.insert(line.OperationRow, *given);
            return given;
        });
    }
    std::optional<::host::TAmounts> given;
    QStringList asked;
};

const QString NoTypes = u"ShowMessage(کاربر گرامی برای این کالا هیچ جزییات انتخاب نشده است)"_s;

} // namespace

/// The details of opening rows: entered per row and store, kept with the good.
class TestOpeningDetails : public QObject
{
    Q_OBJECT

private slots:
    void quantitiesComeFromDetails()
    {
        Fixture f;
        f.OpenGood(500009, [&](QWidget *screen) {
            OpeningFixture::List(screen, [&](QWidget *) {
                OpeningFixture::Row(Qt::Key_F4, [&](QWidget *row) {
                    auto &quantity = test::Find<host::NumericEdit>(row, u"Meghdar_EDT"_s);
                    test::Focus(row, u"Meghdar_EDT"_s);
                    test::Press(Qt::Key_Plus, Qt::KeypadModifier);
                    QCOMPARE(f.host.messages.Take(), u"MsgRequiredField(کد انبار)"_s);
                    OpeningFixture::Fill(row, u"3"_s, u"4"_s);
                    test::Press(Qt::Key_Plus, Qt::KeypadModifier); // left without OK
                    QVERIFY(!quantity.isReadOnly());
                    f.given = host::TAmounts{7};
                    test::Press(Qt::Key_Plus, Qt::KeypadModifier);
                    QVERIFY(quantity.isReadOnly());
                    test::Picture(*row, u"opening_row_details"_s);
                    f.given->Amount1 = 9;
                    test::Press(Qt::Key_Plus, Qt::KeypadModifier); // also where nothing can be typed
                    QCOMPARE(quantity.Number(), 9.0L);
                    test::Press(Qt::Key_F3);
                });
                test::Press(Qt::Key_Escape);
            });
            f.Save();
        });
        QCOMPARE(f.asked, (QStringList{u"3/500009/500009/3/3 سردخانه 4"_s, u"3/500009/500009/3/3 سردخانه 4"_s,
                                       u"3/500009/500009/3/3 سردخانه 7"_s}));
        QCOMPARE(f.Saved().last(), u"3|9|0||3"_s);
        QCOMPARE(f.host.goodDetails.calls, QStringList{u"EnterGoodDetailSave(500009, 3)"_s});
        QVERIFY(!f.host.detailMovements.calls.contains(u"Restore(3)"_s));
    }

    void detailsStayWithTheirStore()
    {
        Fixture f;
        f.host.detailMovements.totals.insert(1, {10});
        f.OpenGood(500009, [&](QWidget *screen) {
            OpeningFixture::List(screen, [&](QWidget *) {
                OpeningFixture::Row(Qt::Key_F5, [&](QWidget *row) {
                    QVERIFY(test::Find<host::NumericEdit>(row, u"Meghdar_EDT"_s).isReadOnly());
                    f.host.messages.Answer(false);
                    test::Enter(row, u"Store_Entity"_s, u"3"_s);
                    test::Press(Qt::Key_Return);
                    QCOMPARE(f.host.messages.Take(), u"Confirm(22205)"_s);
                    test::Press(Qt::Key_F3);
                });
                test::Press(Qt::Key_Escape);
            });
            test::Press(Qt::Key_Escape);
        });
        QVERIFY(f.host.detailMovements.calls.isEmpty());
    }

    void deletedRowsTakeTheirDetailsAlong()
    {
        Fixture f;
        f.host.settings.record.GoodDetails = false; // kept once, not any more
        f.host.goodDetails.refusal = u"س۱"_s;
        f.OpenGood(500009, [&](QWidget *screen) {
            f.DeleteCurrent(screen);
            test::Press(Qt::Key_F3);
            QVERIFY(f.host.messages.Take().endsWith(u"س۱)"_s));
            QCOMPARE(f.Saved().size(), 2);
            f.host.goodDetails.refusal.clear();
            f.Save();
        });
        QCOMPARE(f.Saved(), QStringList{u"2|5|0||2"_s});
        QCOMPARE(f.host.detailMovements.calls.filter(u"Keep"_s),
                 QStringList({u"KeepLines(3, 500009)"_s, u"KeepLines(3, 500009)"_s}));
    }

    void theOnlyRowOfTheEditor()
    {
        Fixture f;
        f.Stock(u"(1,0,10,0,N'قفسه',4)"_s);
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Focus(screen, u"AvaBgPrd_EDT"_s);
            f.host.detailValues.details = {};
            test::Press(Qt::Key_Plus, Qt::KeypadModifier);
            QCOMPARE(f.host.messages.Take(), NoTypes);
            f.host.detailValues.details.DetailIDs[0] = 1;
            f.given = host::TAmounts{12};
            test::Press(Qt::Key_Plus, Qt::KeypadModifier);
            test::Picture(*screen, u"opening_editor_details"_s);
            f.host.messages.Answer(true);
            test::Enter(screen, u"Store_Entity"_s, u"2"_s);
            test::Press(Qt::Key_Return);
            QCOMPARE(f.host.messages.Take(), u"Confirm(22205)"_s);
            f.Save();
        });
        QCOMPARE(f.asked, QStringList{u"3/500009/500009/4/1 انبار مرکزی 10"_s});
        QCOMPARE(f.Saved(), QStringList{u"2|12|0|قفسه|4"_s});
    }

    void aNewGoodIsSavedFirst()
    {
        Fixture f;
        f.OpenNew(u"5"_s, [&](QWidget *screen) {
            f.FillRequired(screen);
            test::Focus(screen, u"AvaBgPrd_EDT"_s);
            test::Press(Qt::Key_Plus, Qt::KeypadModifier);
            QVERIFY(f.host.messages.Take().contains(u"نخست کالا را ذخیره کنید"_s));
            f.Leave();
        });
        QVERIFY(f.asked.isEmpty());
    }

    void everyRowNeedsItsDetails()
    {
        Fixture f;
        f.host.settings.record.GoodDetailsForOpening = f.host.goodDetails.entered = true;
        f.host.detailMovements.totals.insert(1, {10});
        f.OpenGood(500009, [&](QWidget *screen) {
            test::Enter(screen, u"MinAva_EDT"_s, u"1"_s);
            test::Press(Qt::Key_F3);
            QCOMPARE(f.host.messages.Take(), u"ShowSmartMessage(10376)"_s);
            f.host.detailMovements.totals.insert(2, {5});
            f.Save();
        });
    }
};

REGISTER_TEST(TestOpeningDetails)
#include "tst_opening_details.moc"
