// The editor of divisions, by keys.

#include "host/controls/grid.h"
#include "tests/division/division_fixture.h"
#include "tests/support/printed_pages.h"
#include "tests/support/test_main.h"

#include <QLabel>
#include <QMenu>
#include <QtTest>

namespace {

using host::TFormMode;

/// An editor that is driven by keys; nested screens by what is given beside the key that opens them.
struct Editor : fixture::Divisions
{
    void Open(int code, const std::function<void(QWidget *screen)> &drive)
    {
        screen = std::make_unique<TGoodDetailDivision_Get_FRM>(desk.host, Picker());
        result = -1;
        test::Drive([&] { result = screen->Open(code, code == 0 ? TFormMode::New : TFormMode::Edit); }, drive);
    }
    /// Divides a unit that was scanned: `parts` are typed, the texts of a part's fields one after another.
    static void Scan(QWidget *editor, const QString &serial, const QList<QStringList> &parts,
                     Qt::Key leave = Qt::Key_F3)
    {
        test::Press(Qt::Key_F2);
        test::Type(serial);
        test::Drive([] { test::Press(Qt::Key_Return); }, [&](QWidget *items) { Type(items, parts, leave); });
        QVERIFY(editor->isVisible());
    }
    static void Type(QWidget *items, const QList<QStringList> &parts, Qt::Key leave)
    {
        for (const QStringList &part : parts) {
            for (int field = 0; field < part.size(); ++field)
                test::Enter(items, u"Amount%1_EDT"_s.arg(field + 1), part.at(field));
            test::Focus(items, u"SaveRow_BTN"_s);
            test::Press(Qt::Key_Space);
        }
        test::Press(leave);
    }
    static host::Grid &Rows(QWidget *editor)
    {
        return test::Find<host::Grid>(editor, u"GoodDetailDivisionDetail_GRD"_s);
    }
    static host::Grid &Items(QWidget *editor)
    {
        return test::Find<host::Grid>(editor, u"GoodDetailDivisionDetailItems_GRD"_s);
    }
    static QString Note(QWidget *editor) { return test::Find<QLabel>(editor, u"Note_LBL"_s).text(); }
    int Kept() const { return database.Scalar(u"SELECT COUNT(*) FROM GoodDetailKardexExit_Temp"_s).toInt(); }
    int Reserved() const { return database.Scalar(u"SELECT COUNT(*) FROM CodeLock_TBL WHERE Status = 314"_s).toInt(); }

    std::unique_ptr<TGoodDetailDivision_Get_FRM> screen;
    int result = -1;
};

const QList<QStringList> ThreeParts{{u"1.5"_s, u"1.5"_s, u"1"_s}, {u"0.5"_s, u"1.5"_s, u"2"_s}};

} // namespace

class TestDivisionGet : public QObject
{
    Q_OBJECT

private slots:
    void newDivisionByKeys();
    void withoutRows();
    void deletedRowComesBack();
    void usedPartsStay();
    void secondEditorIsTold();
    void scansAndPicks();
};

void TestDivisionGet::newDivisionByKeys()
{
    Editor shop;
    test::PrintedPages paper;
    shop.Open(0, [&](QWidget *screen) {
        QCOMPARE(screen->windowTitle(), u"تقسیم جزئیات"_s);
        QCOMPARE(test::Focused(), u"Scan_EDT"_s);
        QCOMPARE(shop.Reserved(), 1);
        Editor::Scan(screen, u"200034001"_s, ThreeParts);
        QCOMPARE(Editor::Rows(screen).VisibleCaptions(),
                 u"انبار,نام کالا,جزییات,طول,عرض,تعداد,مقدار2,مقدار,توضیحات"_s.split(u','));
        QCOMPARE(Editor::Rows(screen).VisibleTexts(0).mid(2, 6), u"200034001 سفید,۲٫۵,۱٫۵,۱,۰,۳٫۷۵"_s.split(u','));
        QCOMPARE(Editor::Items(screen).VisibleCaptions(), u"طول,عرض,تعداد,مقدار2,مقدار"_s.split(u','));
        QCOMPARE(Editor::Items(screen).VisibleTexts(1), u"۰٫۵,۱٫۵,۲,۰,۱٫۵"_s.split(u','));
        test::Enter(screen, u"Comment_EDT"_s, u"سفارش کابینت"_s);
        test::Picture(*screen, u"division-editor"_s);
        shop.screen->Print(paper);
        test::Press(Qt::Key_F3);
    });
    QCOMPARE(shop.result, 1);
    QCOMPARE(shop.messages.TakeAll(), QStringList{u"ShowFlashMessage(تقسیم جزئیات شماره ۱ ثبت شد.)"_s});
    const QString today = shop.desk.host.clock.NowShamsiDate();
    QCOMPARE(shop.Saved(), (QStringList{u"1|%1|سفارش کابینت"_s.arg(today), u"1|1|4|200034|3.75|"_s,
                                        u"1|1|1.5|1.5|1|2.25"_s, u"1|1|0.5|1.5|2|1.5"_s}));
    QCOMPARE(shop.Reserved() + shop.Kept(), 0);
    const QString outside = paper.Pages().constFirst().Outside();
    for (const QString &printed : {u"تقسیم جزئیات شماره"_s, u"200034001"_s, u"سفارش کابینت"_s, u"برداشت"_s})
        QVERIFY2(outside.contains(printed), qPrintable(outside));
    const QStringList part = paper.Pages().constFirst().Rows().mid(0, 3).constLast();
    QCOMPARE(part.size(), 5); // the second amount is nothing in each of them
    QCOMPARE(part.at(0) + part.at(3), u"۲۲"_s);
}

void TestDivisionGet::withoutRows()
{
    Editor shop;
    shop.Open(0, [&](QWidget *screen) {
        test::Press(Qt::Key_F3);
        QCOMPARE(shop.messages.TakeAll(),
                 QStringList{u"ShowMessage(کاربر گرامی هیچ سطری جهت تقسیم جزئیات ثبت نشده است)"_s});
        QVERIFY(screen->isVisible());
        // A unit that is looked at and left is no row.
        Editor::Scan(screen, u"200034001"_s, {}, Qt::Key_Escape);
        QVERIFY(Editor::Rows(screen).IsEmpty());
        // A scan that no Enter followed is not saved over; a scanner's Tab is as good.
        test::Type(u"200034002"_s);
        test::Press(Qt::Key_F3);
        QVERIFY(shop.messages.Take().contains(u"«200034002» هنوز سطری نشده است"_s));
        test::Drive([] { test::Press(Qt::Key_Tab); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
        test::Press(Qt::Key_Escape);
    });
    QCOMPARE(shop.result, 0);
    QCOMPARE(shop.Saved(), QStringList());
    QCOMPARE(shop.Reserved() + shop.Kept(), 0);
}

/// Until F3 nothing of the saved division changes; whoever leaves without it loses what was done.
void TestDivisionGet::deletedRowComesBack()
{
    Editor shop;
    const int code = shop.Divide(u"200034001"_s, u"1403/05/01"_s, u"الف"_s);
    const QStringList before = shop.Saved();
    shop.Open(code, [&](QWidget *screen) {
        QCOMPARE(test::Focused(), u"GoodDetailDivisionDetail_GRD"_s);
        QCOMPARE(Editor::Items(screen).RowCount(), 2);
        shop.messages.Answer(false);
        test::Press(Qt::Key_Delete);
        shop.messages.Answer(true);
        test::Press(Qt::Key_Delete);
        QCOMPARE(shop.messages.TakeAll(),
                 (QStringList{u"MsgDeleteItem(سطر)"_s, u"MsgDeleteItem(سطر)"_s,
                              u"ShowMessage(تا پیش از ثبت تقسیم جزئیات جاری مقادیر حذف شده در موجودی جزئیات کالاها "
                              "تاثیری نخواهد داشت)"_s}));
        QVERIFY(Editor::Rows(screen).IsEmpty() && Editor::Items(screen).IsEmpty());
        shop.messages.Answer(true);
        test::Press(Qt::Key_Escape);
        QVERIFY(shop.messages.Take().startsWith(u"Ask("));
    });
    QCOMPARE(shop.result, 0);
    QCOMPARE(shop.Saved(), before);
    QCOMPARE(shop.Reserved() + shop.Kept(), 0);
    QVERIFY(shop.database.Scalar(u"SELECT OBJECT_ID('tempdb..#GoodDetailDivisionDetailTemp')"_s).isNull());
}

/// A part was sold: its row stays, refused before any question; what else stands in the division may change.
void TestDivisionGet::usedPartsStay()
{
    Editor shop;
    const int code = shop.Divide(u"200034001"_s, u"1403/05/01"_s, u"الف"_s);
    shop.Sell(u"200034001/1"_s);
    QStringList expected = shop.Saved();
    shop.Open(code, [&](QWidget *screen) {
        test::Press(Qt::Key_Delete);
        QCOMPARE(shop.messages.TakeAll(), QStringList{u"ShowSmartMessage(10006, تقسیم جزئیات)"_s});
        QCOMPARE(Editor::Rows(screen).RowCount(), 1);
        test::Enter(screen, u"Comment_EDT"_s, u"ب"_s);
        test::Press(Qt::Key_F3);
    });
    QCOMPARE(shop.result, 1);
    shop.messages.TakeAll();
    expected.first().replace(u"الف"_s, u"ب"_s);
    QCOMPARE(shop.Saved(), expected);
}

void TestDivisionGet::secondEditorIsTold()
{
    Editor shop;
    const int code = shop.Divide(u"200034001"_s, u"1403/05/01"_s, u"الف"_s);
    const QSqlDatabase other = shop.database.AnotherConnection();
    desk::DeskHost second({other, shop.database.GoodsList(), shop.database.Scales()}, &shop.messages);
    second.settings.SignIn(1);
    shop.Open(code, [&](QWidget *screen) {
        TDivision_DM data(second.host);
        host::TDivisionHeader header = data.Load(code).value();
        header.Comment = u"دیگری"_s;
        division::Save(second.host, header, TFormMode::Edit);
        data.Leave(code);
        test::Enter(screen, u"Comment_EDT"_s, u"ب"_s);
        test::Press(Qt::Key_F3);
        QVERIFY(screen->isVisible());
        const QStringList said = shop.messages.TakeAll();
        QVERIFY2(said.size() == 1 && said.constFirst().startsWith(u"ShowMessage("), qPrintable(said.join(u'\n')));
        QCOMPARE(test::Find<QLineEdit>(screen, u"Comment_EDT"_s).text(), u"ب"_s);
        shop.messages.Answer(true);
        test::Press(Qt::Key_Escape);
        shop.messages.TakeAll();
    });
    QVERIFY(shop.Saved().constFirst().endsWith(u"|دیگری"));
}

/// What a scan finds: nothing, a unit, one that is a row already, several among which the user chooses.
void TestDivisionGet::scansAndPicks()
{
    Editor shop;
    shop.desk.settings.Save([&] {
        host::TSettingRecord record = shop.desk.settings.SettingRecord();
        record.TwoUnitVariableRatio = true;
        return record;
    }());
    shop.database.Exec(u"UPDATE GoodDetailValueDetails SET [Value] = N'200034002' WHERE [Value] = N'200034003'"_s);
    shop.Open(0, [&](QWidget *screen) {
        test::Type(u"۹۹۹۹"_s);
        test::Press(Qt::Key_Return);
        QVERIFY2(Editor::Note(screen).contains(u"«9999»"), qPrintable(Editor::Note(screen)));
        Editor::Scan(screen, u"۲۰۰۰۳۴۰۰۱"_s, ThreeParts);
        QCOMPARE(Editor::Note(screen), QString());
        // Taken whole it is in no store any more; its row is found all the same, with its parts.
        test::Type(u"200034001"_s);
        test::Drive([] { test::Press(Qt::Key_Return); },
                    [](QWidget *items) {
                        QCOMPARE(Editor::Items(items).RowCount(), 2);
                        test::Press(Qt::Key_Escape);
                    });
        QCOMPARE(Editor::Rows(screen).RowCount(), 1);

        for (const int mode : {1, 2}) {
            test::Press(Qt::Key_F4); // nothing is picked
            QCOMPARE(shop.modes.takeLast(), mode);
            host::TSettingRecord record = shop.desk.settings.SettingRecord();
            record.TwoUnitVariableRatio = false;
            shop.desk.settings.Save(record);
        }
        shop.pick = good_detail::ChosenDetail{shop.ValueOf(u"200034004"_s), 4, Editor::Sheets};
        test::Drive([] { test::Press(Qt::Key_F4); },
                    [](QWidget *items) {
                        Editor::Type(items, {{u"3"_s, u"2.5"_s, u"1"_s}}, Qt::Key_F3);
                    });
        QCOMPARE(Editor::Rows(screen).RowCount(), 2);
        QCOMPARE(Editor::Items(screen).RowCount(), 1); // those of the new row

        test::Enter(screen, u"Scan_EDT"_s, u"200034002"_s);
        QString offered;
        QTimer::singleShot(0, screen, [&] {
            const auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu);
            offered = QString::number(menu->actions().size());
            test::Press(Qt::Key_Escape);
        });
        test::Press(Qt::Key_Return);
        QCOMPARE(offered, u"2"_s);
        QCOMPARE(Editor::Rows(screen).RowCount(), 2);
        shop.messages.Answer(true);
        test::Press(Qt::Key_Escape);
        shop.messages.TakeAll();
    });
    QCOMPARE(shop.Saved(), QStringList());
    QCOMPARE(shop.Kept(), 0);
}

REGISTER_TEST(TestDivisionGet)
#include "tst_division_get.moc"
