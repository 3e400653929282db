#include "tests/screens/goods_list/list_fixture.h"

#include <QProgressDialog>
#include <QPushButton>

namespace {

void DeleteGood(const test::Database &database, const QString &code)
{
    database.Exec(u"delete from GoodCostDiscount where GoodCode=%1 delete from Kardex where Kala=%1 "
                  "delete from DocumentLines where GoodCode=%1 delete from Kala_category where Kala_code=%1 "
                  "delete from GoodFirstAsset where GoodCode=%1 "
                  "delete from GoodInf where Code=%1"_s.arg(code));
}

} // namespace

/// Commands that change goods, and where the list stands afterwards.
class TestChanging : public QObject
{
    Q_OBJECT

private slots:
    void deletionRefused_data();
    void deletionRefused();
    void deletion();
    void editingKeepsThePlace();
    void aGoodThatIsGoneLeavesTheList();
    void stockUpdate_data();
    void stockUpdate();
};

void TestChanging::deletionRefused_data()
{
    QTest::addColumn<QString>("obstacle");
    QTest::addColumn<QStringList>("messages");
    QTest::addColumn<QStringList>("asked");
    const QString voucher = u"IsVoucherApproved(12, 1, حذف کالا, اول دوره)"_s;
    QTest::newRow("right") << u"right"_s << QStringList() << QStringList();
    QTest::newRow("voucher") << u"voucher"_s << QStringList() << QStringList{voucher};
    QTest::newRow("detail code") << u"detail"_s << QStringList() << QStringList{voucher};
    const QStringList shop{u"ShowSmartMessage(10030, کالای مورد نظر به دلیل استفاده در سفارشگیر همراه یا نیلارا ، )"_s};
    QTest::newRow("web shop") << u"online"_s << shop << QStringList{voucher};
    QTest::newRow("market") << u"market"_s << shop << QStringList{voucher};
    QTest::newRow("rules of the host") << u"host"_s << QStringList() << QStringList{voucher};
    QTest::newRow("error") << u"error"_s << QStringList{u"ShowMessage(عمليات با اشکال مواجه شد.)"_s}
                           << QStringList{voucher};
}

void TestChanging::deletionRefused()
{
    QFETCH(QString, obstacle);
    Screen screen;
    screen.database.Exec(u"update GoodInf set VoucherCode=12 where Code=110001 "
                         "insert into Items (Code, ScaleType, ChangeType) values (110001, 1, 0) "
                         "delete from OnlineProduct delete from Market.Product"_s);
    screen.host.scales.enabled = true;
    if (obstacle == u"right")
        screen.host.permissions.Deny(TSoftwarePart::Goods, TPermission::Delete);
    screen.host.vouchers.approved = obstacle == u"voucher";
    screen.host.goodDetails.uniqueCodeInUse = obstacle == u"detail";
    if (obstacle == u"online")
        screen.database.Exec(u"insert into OnlineProduct (Masterid) values (110001)"_s);
    if (obstacle == u"market")
        screen.database.Exec(u"insert into Market.Product (VelakProductCode) values (110001)"_s);
    screen.host.entities.refuseDelete = obstacle == u"host" ? 1 : 0;
    if (obstacle == u"error")
        screen.database.Exec(u"drop table Market.Product"_s);
    screen.Open();
    test::Press(Qt::Key_F7);
    QTEST(screen.host.messages.TakeAll(), "messages");
    QTEST(screen.host.vouchers.calls, "asked");
    QCOMPARE(!screen.host.entities.calls.isEmpty(), obstacle == u"host");
    QCOMPARE(screen.grid.CurrentKey(), u"110001"_s);
    QCOMPARE(screen.Codes(u"Code=110001"_s).size(), 1);
    QCOMPARE(screen.database.Scalar(u"select ChangeType from Items where Code=110001"_s).toInt(), 0);
    test::Press(Qt::Key_Escape);
}

void TestChanging::deletion()
{
    Screen screen;
    screen.database.Exec(u"insert into Items (Code, ScaleType, ChangeType) values (110002, 1, 0)"_s);
    screen.host.scales.enabled = true;
    bool fails = false;
    screen.host.entities.deleting = [&](int code) {
        if (fails)
            throw std::runtime_error("gone");
        DeleteGood(screen.database, QString::number(code));
    };
    screen.Open();
    screen.Press({Qt::Key_Down, Qt::Key_F7});
    QCOMPARE(screen.host.entities.calls, QStringList{u"Delete_Entity(102, 110002, 0)"_s});
    QCOMPARE(screen.Codes(u"Code=110002"_s), QStringList());
    QCOMPARE(screen.database.Scalar(u"select ChangeType from Items where Code=110002"_s).toInt(), 3);
    QCOMPARE(screen.grid.CurrentKey(), u"110003"_s); // the next one moved up
    fails = true;
    test::Press(Qt::Key_F7);
    QCOMPARE(screen.host.messages.TakeAll(), QStringList{u"ShowMessage(عمليات با اشکال مواجه شد.)"_s});
    QCOMPARE(screen.grid.CurrentKey(), u"110003"_s);
    test::Press(Qt::Key_Escape);
}

void TestChanging::editingKeepsThePlace()
{
    Screen screen;
    screen.Open();
    test::Type(u"سیاه"_s);
    screen.Press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Down});
    screen.grid.SortBy(u"Cost1"_s); // the order is kept as well
    const QString code = screen.grid.CurrentKey();
    const int row = screen.grid.currentIndex().row();
    test::Drive([&] { test::Press(Qt::Key_F6); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
    screen.Activate();
    QCOMPARE(screen.grid.CurrentKey(), code);
    screen.host.messages.Answer(true);
    screen.host.levels.changing = [&] {
        screen.database.Exec(u"update CostLevel set Name = N'همکار' where Code = 2"_s);
        return true;
    };
    test::Drive([&] { test::Press(Qt::Key_F5); },
                [&](QWidget *editor) {
                    test::Find<QPushButton>(editor, u"CostLevel_BTN"_s).click();
                    test::Enter(editor, u"Kala_Type_EDT"_s, u"بهار ۱۴۰۵"_s);
                    test::Press(Qt::Key_F3);
                });
    QVERIFY(screen.host.messages.TakeAll().contains(u"ContinueWithRepeatedField(شاخص کالا)"_s));
    screen.Activate();
    QVERIFY(
        screen.database.Scalar(u"select Name from GoodInf where Code="_s + code).toString().contains(u"بهار ۱۴۰۵"_s));
    QCOMPARE(screen.grid.CurrentKey(), code);
    QCOMPARE(screen.grid.currentIndex().row(), row);
    QVERIFY(screen.Shown(u"Name"_s).contains(u"بهار ۱۴۰۵"_s));
    QVERIFY(screen.grid.VisibleCaptions().contains(u"همکار"_s));
    screen.Press({Qt::Key_Escape, Qt::Key_Escape});
}

void TestChanging::aGoodThatIsGoneLeavesTheList()
{
    Screen screen;
    screen.Open();
    screen.Press({Qt::Key_Down});
    const QString gone = screen.grid.CurrentKey();
    DeleteGood(screen.database, gone);
    test::Press(Qt::Key_F5);
    QCOMPARE(screen.host.messages.TakeAll(), QStringList{u"ShowMessage(این کالا دیگر وجود ندارد.)"_s});
    QVERIFY(screen.grid.CurrentKey() > gone);
    QVERIFY(!screen.grid.ShownKeys().contains(gone));
    test::Press(Qt::Key_Escape);
}

void TestChanging::stockUpdate_data()
{
    QTest::addColumn<bool>("cancelled");
    QTest::newRow("to its end") << false;
    QTest::newRow("cancelled between stores and goods") << true;
}

void TestChanging::stockUpdate()
{
    QFETCH(bool, cancelled);
    Screen screen;
    const auto stock = [&] {
        return screen.database.Rows(u"select Amount1 from GoodStock where GoodCode=110001 union all "
                                    "select sum(Amount1) from GoodStoreStock where GoodCode=110001"_s);
    };
    const QStringList right = stock();
    screen.database.Exec(u"update GoodStock set Amount1 = 98765 where GoodCode = 110001 "
                         "update GoodStoreStock set Amount1 = 98765 where GoodCode = 110001"_s);
    const QStringList wrong = stock();
    screen.Open();
    QTimer press;
    connect(&press, &QTimer::timeout, this, [&] {
        auto *progress = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
        if (cancelled && progress && progress->value() == 1)
            QTest::keyClick(progress, Qt::Key_Escape);
    });
    press.start(0);
    test::Find<QPushButton>(&screen.list, u"UpdateAssets_BTN"_s).click();
    press.stop();
    QCOMPARE(stock(), cancelled ? wrong : right);
    QCOMPARE(screen.Shown(u"Mogodi"_s) == u"۹۸٬۷۶۵"_s, cancelled);
    screen.Activate();
    screen.grid.setFocus();
    test::Press(Qt::Key_Escape);
}

REGISTER_TEST(TestChanging)
#include "tst_changing.moc"
