// Goods from files and the clipboard: what is said of their rows, what is written, and how it goes back.

#include "data/goods/goods_import_codes.h"
#include "data/goods/goods_import_fields.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/screens/grid_export.h"
#include "screens/goods_import/goods_import.h"
#include "tests/screens/goods_list/list_fixture.h"

#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QProgressDialog>

namespace {

constexpr char16_t Import = u'و';
constexpr int ManyRows = 12000; // longer than a progress window waits to be shown
const QString Files = QStringLiteral(GOODS_SOURCES "/tests/screens/goods_import/files/");

QString FileOf(const QTemporaryDir &folder, const QString &text)
{
    QFile file(folder.filePath(u"goods.csv"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0)
        qFatal("cannot write");
    return file.fileName();
}

/// Opens the screen from the list by its key, gives `file` to it, and drives it.
void Open(Screen &screen, const QString &file, const std::function<void(QWidget *)> &drive)
{
    if (screen.list.IsShowing())
        screen.Activate();
    else
        screen.Open();
    screen.grid.setFocus();
    test::Drive(
        [] {
            QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key(Import), QString(Import),
                                Qt::AltModifier);
            QTest::qWait(150);
        },
        [&](QWidget *dialog) {
            QVERIFY(qobject_cast<TGoods_Import_FRM *>(dialog));
            if (!file.isEmpty())
                test::Drive([] { test::Press(Qt::Key_F4); },
                            [&](QWidget *) {
                                test::Type(file);
                                test::Press(Qt::Key_Return);
                            });
            drive(dialog);
        });
}

/// What the preview says: "state: note" by row.
QStringList Said(QWidget *dialog)
{
    const auto &rows = test::Find<host::Grid>(dialog, u"Rows_GRD"_s);
    QStringList said;
    for (int row = 0; row < rows.RowCount(); ++row)
        said << rows.VisiblePlainTexts(row).mid(1, 2).join(u": "_s);
    return said;
}

QString Counts(QWidget *dialog)
{
    QString text = test::Find<QLabel>(dialog, u"Counts_LBL"_s).text();
    return text.remove(u"<b>"_s).remove(u"</b>"_s);
}

} // namespace

class TestGoodsImport : public QObject
{
    Q_OBJECT

private slots:
    void captions_data();
    void captions();
    void codes();
    void rows_data();
    void rows();
    void throughTheScreen();
    void takenBack_data();
    void takenBack();
    void pasteAndChoose();
    void ownListComesBack_data();
    void ownListComesBack();
    void givenUp_data();
    void givenUp();
    void officeFiles_data();
    void officeFiles();
    void brokenFiles();
    void anotherDesk();
    void rights();

private:
    QTemporaryDir m_folder;
};

void TestGoodsImport::captions_data()
{
    QTest::addColumn<QString>("captions");
    QTest::addColumn<QString>("fields"); ///< numbers of ImportField
    QTest::newRow("the list's") << u"کد,نام کامل کالا,واحد,واحد,عمده,فی 2,فی مصرف کننده"_s << u"1,2,8,9,20,21,11"_s;
    QTest::newRow("arabic letters and digits") << u"كد كالا,بارکد ,قيمت ٢,شاخص كالا"_s << u"1,6,21,5"_s;
    QTest::newRow("english") << u"EAN13,Product Name,Unit_Price,Category,Stock"_s << u"6,3,20,7,0"_s;
    QTest::newRow("each once") << u"قیمت,قیمت فروش,قیمت خرید"_s << u"20,0,40"_s;
    QTest::newRow("remembered") << u"شناسه,کد"_s << u"1,0"_s;
}

void TestGoodsImport::captions()
{
    QFETCH(QString, captions);
    const auto fields = goods::ImportFields({u"عمده"_s}, true);
    const QHash<QString, goods::ImportField> remembered{{u"شناسه"_s, goods::ImportField::Code}};
    QStringList found;
    for (const goods::ImportField field : goods::MatchImportFields(captions.split(u','), fields, remembered))
        found << QString::number(int(field));
    QTEST(found.join(u','), "fields");
}

/// As the procedure proposes them for one good.
void TestGoodsImport::codes()
{
    const test::Database database{test::Database::Content::Demo};
    for (const int length : {3, 4, 6}) {
        goods::ImportCodes codes(length);
        for (const QString &row : database.Rows(u"select Code, GrpCode from GoodInf"_s))
            codes.Take(row.section(u'|', 0, 0).toInt(), row.section(u'|', 1).toInt());
        for (const int group : {11, 12, 99, 130})
            QCOMPARE(codes.Give(group),
                     database.Scalar(u"exec GetGoodInfCode %1, %2"_s.arg(group).arg(length)).toInt());
    }
    goods::ImportCodes few(3);
    QList<int> given;
    for (int i = 0; i < 11; ++i)
        given << few.Give(12);
    QCOMPARE(given.mid(0, 9), (QList<int>{121, 122, 123, 124, 125, 126, 127, 128, 129}));
    QCOMPARE(given.mid(9), (QList<int>{130, 131}));
}

void TestGoodsImport::rows_data()
{
    QTest::addColumn<QString>("row"); ///< code, barcode, name, group, unit, price
    QTest::addColumn<QString>("said");
    const auto row = [](const char *name, const QString &cells, const QString &said) {
        QTest::newRow(name) << cells << said;
    };
    row("new", u",6260000000002,چای تازه,11,عدد,۱۲٬۵۰۰"_s, u"جدید: "_s);
    row("group by name, arabic letters", u",,چای تازه,لبنيات,عدد,"_s, u"جدید: "_s);
    row("no name", u",6260000000002,,11,عدد,1"_s, u"نام کالا خالی است"_s);
    row("long name", u",,"_s + QString(51, u'ا') + u",11,عدد,1"_s, u"بیش از ۵۰ حرف"_s);
    row("no group", u",,چای تازه,,عدد,1"_s, u"گروه کالا خالی"_s);
    row("unknown group", u",,چای تازه,گیاهان,عدد,1"_s, u"گروه «گیاهان» شناخته نیست"_s);
    row("root group", u",,چای تازه,0,عدد,1"_s, u"شناخته نیست"_s);
    row("unknown unit", u",,چای تازه,11,لنگه,1"_s, u"واحد «لنگه» شناخته نیست"_s);
    row("check digit", u",6260000000001,چای تازه,11,عدد,1"_s, u"رقم کنترل"_s);
    row("short check digit", u",12345678,چای تازه,11,عدد,1"_s, u"رقم کنترل"_s);
    row("exponent", u",6.26E+12,چای تازه,11,عدد,1"_s, u"نمایی"_s);
    row("exponent as code", u"1.1E+05,,چای تازه,11,عدد,1"_s, u"نمایی"_s);
    row("long code", u"1234567,,چای تازه,11,عدد,1"_s, u"کد باید"_s);
    row("price no number", u",,چای تازه,11,عدد,گران"_s, u"عدد درستی نیست"_s);
    row("negative price", u",,چای تازه,11,عدد,'-5"_s, u"عدد درستی نیست"_s);
    row("huge price", u",,چای تازه,11,عدد,1234567890123456"_s, u"عدد درستی نیست"_s);
    row("guarded name", u",,'=1+1,11,عدد,1"_s, u"جدید: "_s);
    row("other's barcode", u"999,6261100011011,چای تازه,11,عدد,1"_s, u"از آن کالای ۱۱۰۰۰۱"_s);
    row("taken name", u",,برنج ایرانی طارم هاشمی ۵ کیلویی,11,عدد,1"_s, u"تکراری است (کالای ۱۱۰۰۰۱)"_s);
    row("operation barcode", u",7777,چای تازه,11,عدد,1"_s, u"عملیاتی"_s);
    row("known by barcode", u",6261100011011,,,,12"_s, u"تغییر: فروش: خرده‌فروشی: از "_s);
    row("known by code, arabic digits", u"١١٠٠٠١,,,,,"_s, u"بدون تغییر: "_s);
    row("another barcode", u"110001,6260000000002,,,,"_s, u"بارکد تازه: ۶۲۶۰۰۰۰۰۰۰۰۰۲"_s);
    row("same name, arabic letters", u"110001,,برنج ايراني,,,"_s, u"بدون تغییر: "_s);
    row("other unit", u"110001,,,,متر,"_s, u"واحد کالای موجود"_s);
    row("renamed", u"110001,,برنج شمال,,,"_s, u"نام کالا: از برنج ایرانی به برنج شمال"_s);
    row("moved", u"110001,,,لبنیات,,"_s, u"گروه: از خواربار و غلات به لبنیات"_s);
    row("twice", u"110001,,,,,77\n110001,,,,,78"_s, u"در ردیف ۲ تکرار"_s);
    row("name twice", u",,چای تازه,11,عدد,\n,,چای تازه,11,عدد,"_s, u"نام کالا در ردیف ۲ تکرار"_s);
    row("barcode twice", u",4444,چای تازه,11,عدد,\n,4444,چای دیگر,11,عدد,"_s, u"بارکد ۴۴۴۴ در ردیف ۲ تکرار"_s);
    row("seven barcodes", u",1!2!3!4!5!6,چای تازه,11,عدد,\n,1|2|3|4|5|7|9,چای,11,عدد,"_s, u"شش بارکد"_s);
}

/// What the preview says of the last row.
void TestGoodsImport::rows()
{
    QFETCH(QString, row);
    QFETCH(QString, said);
    Screen screen;
    screen.host.settings.record.ReservedBarcodes[0] = u"7777"_s;
    const QString file = FileOf(m_folder, u"کد,بارکد,نام کالا,گروه,واحد,فی 1\n"_s + row);
    Open(screen, file, [&](QWidget *dialog) {
        const QString last = Said(dialog).constLast();
        QVERIFY2(last.contains(said) && last.startsWith(u"جدید") == said.startsWith(u"جدید"), qPrintable(last));
        test::Press(Qt::Key_Escape);
    });
}

void TestGoodsImport::throughTheScreen()
{
    Screen screen;
    const QString file = FileOf(m_folder, u"کد,بارکد,نام کالا,گروه,واحد,فی 1,فی 2,توضیحات\n"
                                          ",6260000000002;4444,چاي تازه,دمنوش,لنگه,12500,۹/۵,'=کم\n"
                                          "110002,,,,,77,,تازه\n"
                                          ",,بی‌گروه,,عدد,5,,\n"_s);
    Open(screen, file, [&](QWidget *dialog) {
        test::Picture(*dialog, u"goods_import"_s);
        QCOMPARE(Counts(dialog), u"۰ جدید، ۱ تغییر، ۰ بدون تغییر، ۲ دارای ایراد"_s);
        for (const QString &tick : {u"NewGroups_CHK"_s, u"NewUnits_CHK"_s, u"OnlyFaults_CHK"_s}) {
            test::Focus(dialog, tick);
            test::Press(Qt::Key_Space);
        }
        QCOMPARE(Counts(dialog), u"۱ جدید، ۱ تغییر، ۰ بدون تغییر، ۱ دارای ایراد"_s);
        QCOMPARE(Said(dialog), QStringList{u"ایراد دارد: گروه کالا خالی است"_s});
        test::Drive([] { test::Press(Qt::Key_F3); },
                    [](QWidget *report) {
                        test::Picture(*report, u"goods_import_report"_s);
                        const QString text = test::Find<QLabel>(report, u"Report_LBL"_s).text();
                        QVERIFY2(text.startsWith(u"۱ کالا افزوده شد، ۱ کالا تغییر کرد، ۰ ردیف بدون تغییر بود و ۱ "
                                                 "ردیف وارد نشد."_s),
                                 qPrintable(text));
                        QCOMPARE(test::Find<host::Grid>(report, u"Left_GRD"_s).RowCount(), 3);
                        test::Press(Qt::Key_Escape);
                    });
    });
    const test::Database &db = screen.database;
    QCOMPARE(db.Rows(u"select g.Name, g.AbbName, r.Name, u.Name, g.Comment, c.CostLevel_Sell_1, c.CostLevel_Sell_2, "
                     "c.Default_CostLevel_Sell_Number, g.UserCreated, CASE WHEN g.SMSCode = g.Code THEN 1 END from "
                     "GoodInf g, GoodGrpS r, Units u, GoodCostDiscount c where g.kala_name = N'چای تازه' and r.Code = "
                     "g.GrpCode and u.Code = g.Unit and c.GoodCode = g.Code"_s),
             QStringList{u"چای تازه  |!6260000000002!4444!!!!!|دمنوش|لنگه|=کم|12500|9.5|1|مریم احمدی (7)|1"_s});
    QCOMPARE(db.Rows(u"select c.CostLevel_Sell_1, g.Comment, g.UserModified from GoodInf g, GoodCostDiscount c where "
                     "g.Code = 110002 and c.GoodCode = g.Code"_s),
             QStringList{u"77|تازه|مریم احمدی (7)"_s});
    QCOMPARE(db.Rows(u"select Kind, Title, Goods from BulkChanges"_s), QStringList{u"5|ورود از goods.csv|2"_s});
}

void TestGoodsImport::takenBack_data()
{
    QTest::addColumn<QString>("meanwhile"); ///< what another desk does
    QTest::addColumn<QStringList>("asked"); ///< of the question
    QTest::addColumn<QStringList>("left");  ///< of the report: code and reason
    QTest::addColumn<QStringList>("other"); ///< rows that are not as they were
    QTest::newRow("nothing happened since")
        << QString() << QStringList{u"مقدار پیشین ۴ کالا"_s, u"۲ کالا که با این تغییر افزوده شده بود"_s}
        << QStringList() << QStringList();
    QTest::newRow("one sold, one changed, one gone")
        << u"insert into Kardex (Kala, Anbar, OperationType, OperationCode, [Date]) select Code, 1, 2, 900, '1405/08/30' "
           "from GoodInf where kala_name = N'چای تازه' update GoodCostDiscount set CostLevel_Sell_1 = 98 where GoodCode "
           "= 110002 exec GoodInf_Delete 500"_s
        << QStringList{u"مقدار پیشین ۳ کالا"_s, u"۱ کالا که پس از آن تغییر کرده"_s, u"۱ کالا تازه که به کار"_s,
                       u"۱ کالا حذف شده"_s}
        << QStringList{u"500|کالا حذف شده است"_s, u"110002|پس از آن تغییر کرده"_s, u"tea|کالای تازه به کار رفته است"_s}
        << QStringList{u"GoodCostDiscount|110002"_s, u"GoodCostDiscount|tea"_s, u"GoodGrpS|new"_s, u"GoodInf|tea"_s,
                       u"Units|new"_s};
    QTest::newRow("new goods were worked on, an old one as well")
        << u"update GoodInf set tags = '1' where Code = 500 insert into GoodFirstAsset (GoodCode, StoreCode, tmp) select "
           "Code, 1, 0 from GoodInf where kala_name = N'چای تازه' update GoodInf set Weight = "
           "3 where Code = 110003"_s
        << QStringList{u"مقدار پیشین ۴ کالا"_s, u"۲ کالا که پس از آن تغییر کرده"_s}
        << QStringList{u"500|پس از آن تغییر کرده"_s, u"tea|پس از آن تغییر کرده"_s}
        << QStringList{u"GoodCostDiscount|500"_s, u"GoodCostDiscount|tea"_s, u"GoodFirstAsset|new"_s, u"GoodGrpS|new"_s,
                       u"GoodInf|110003"_s,       u"GoodInf|500"_s,          u"GoodInf|tea"_s,        u"Units|new"_s};
}

/// Every row of every table that a file writes is as it was, but for what others did since.
void TestGoodsImport::takenBack()
{
    QFETCH(QString, meanwhile);
    QFETCH(QStringList, asked);
    QFETCH(QStringList, left);
    QFETCH(QStringList, other);
    Screen screen;
    const test::Database &db = screen.database;
    db.Exec(u"delete from GoodCostDiscount where GoodCode = 110004 delete from Items insert into Items (Code) values "
            "(500), (110001)"_s);
    screen.host.scales.enabled = true;
    const auto stored = [&db] {
        QStringList rows;
        for (const QString &table :
             {u"GoodInf"_s, u"GoodCostDiscount"_s, u"GoodGrpS"_s, u"Units"_s, u"GoodFirstAsset"_s})
            for (const QString &row : db.Rows(u"select * from "_s + table))
                rows << table + u'|' + row;
        return rows;
    };
    const QStringList before = stored();
    const QString file = FileOf(
        m_folder,
        u"کد,بارکد,نام کالا,گروه,واحد,فی 1,فی مصرف کننده,توضیحات,حداقل موجودی\n"
        ",6260000000002,چای تازه,دمنوش,لنگه,12500,1,,\n500,,قند تازه,11,عدد,,,,\n"
        "110001,4444,برنج شمال,لبنیات,,77,88,=کم,3.5\n110002,,,,,99,,,\n110003,,,,,,,تازه,\n110004,,,,,5,,,\n"_s);
    Open(screen, file, [&](QWidget *dialog) {
        for (const QString &tick : {u"NewGroups_CHK"_s, u"NewUnits_CHK"_s}) {
            test::Focus(dialog, tick);
            test::Press(Qt::Key_Space);
        }
        QCOMPARE(Counts(dialog), u"۲ جدید، ۴ تغییر، ۰ بدون تغییر، ۰ دارای ایراد"_s);
        test::Drive([] { test::Press(Qt::Key_F3); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
    });
    const QString tea = db.Scalar(u"select Code from GoodInf where kala_name = N'چای تازه'"_s).toString();
    host::Exec(screen.database.AnotherConnection(), u"declare @none int "_s + meanwhile);
    screen.Activate();
    const auto takeBack = [&](QWidget *changes) {
        screen.host.permissions.Deny(TSoftwarePart::Goods, left.isEmpty() ? TPermission::Delete : TPermission::Change);
        test::Press(Qt::Key_F8);
        QCOMPARE(db.Scalar(u"select count(*) from BulkChanges where GoodsTakenBack is null"_s).toInt(), 1);
        screen.host.permissions.denied.clear();
        screen.host.messages.Answer(true);
        if (left.isEmpty())
            test::Press(Qt::Key_F8);
        else
            test::Drive([] { test::Press(Qt::Key_F8); },
                        [&](QWidget *report) {
                            const auto &rows = test::Find<host::Grid>(report, u"Left_GRD"_s);
                            QStringList said;
                            for (int row = 0; row < rows.RowCount(); ++row)
                                said << QString(rows.VisiblePlainTexts(row).constFirst() + u'|' +
                                                rows.VisiblePlainTexts(row).constLast())
                                            .replace(tea, u"tea"_s);
                            QCOMPARE(said, left);
                            test::Press(Qt::Key_Escape);
                        });
        const QString question = screen.host.messages.TakeAll().join(u' ');
        for (const QString &part : asked)
            QVERIFY2(question.contains(part), qPrintable(question));
        QTest::qWait(200);
        test::Picture(*changes, u"import-taken-back"_s);
        test::Press(Qt::Key_Escape);
    };
    test::Drive([] { test::Press(Qt::Key_F8, Qt::ControlModifier); }, takeBack);
    const QStringList after = stored();
    QSet<QString> differing;
    for (const auto &[rows, others] : {std::pair(before, after), {after, before}})
        for (const QString &row : rows)
            if (!others.contains(row)) {
                const QString code = row.section(u'|', 1, 1);
                const bool good = code == tea || code.toInt() >= 500;
                differing << row.section(u'|', 0, 0) + u'|' + (code == tea ? u"tea"_s : good ? code : u"new"_s);
            }
    QStringList found = differing.values();
    found.sort();
    QCOMPARE(found, other);
    if (left.isEmpty()) // the scales show the old price, and the new good no more
        QCOMPARE(
            db.Rows(u"select i.Code, i.ChangeType from Items i left join GoodCostDiscount c on c.GoodCode = i.Code "
                    "where ISNULL(c.CostLevel_Sell_1, 0) = i.Price"_s),
            (QStringList{u"500|3"_s, u"110001|2"_s}));
}

/// Without captions the columns are chosen by hand; with some, the choice is remembered.
void TestGoodsImport::pasteAndChoose()
{
    Screen screen;
    const auto paste = [&screen](const QString &text, const std::function<void(QWidget *)> &drive) {
        QGuiApplication::clipboard()->setText(text);
        Open(screen, {}, [&](QWidget *dialog) {
            test::Press(Qt::Key_V, Qt::ControlModifier);
            drive(dialog);
            test::Press(Qt::Key_Escape);
        });
    };
    const auto choose = [](QWidget *dialog) {
        QVERIFY(Counts(dialog).startsWith(u"۰ جدید، ۰ تغییر"_s));
        test::Focus(dialog, u"Column1_CMB"_s);
        test::Press(Qt::Key_Down);
        QCOMPARE(Counts(dialog), u"۰ جدید، ۰ تغییر، ۲ بدون تغییر، ۰ دارای ایراد"_s);
    };
    paste(u"110001\t5\n110002\t6\n"_s, choose);
    paste(u"شناسه\tx\n110001\t5\n110002\t6\n"_s, [&](QWidget *dialog) {
        test::Focus(dialog, u"Captions_CHK"_s);
        test::Press(Qt::Key_Space);
        choose(dialog);
    });
    paste(u"شناسه\tx\n110001\t5\n110002\t6\n"_s,
          [](QWidget *dialog) { QCOMPARE(Counts(dialog), u"۰ جدید، ۰ تغییر، ۲ بدون تغییر، ۰ دارای ایراد"_s); });
}

void TestGoodsImport::ownListComesBack_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("csv") << u"csv"_s;
    QTest::newRow("xlsx") << u"xlsx"_s;
}

/// Every column of the list, with cells that are after a sheet.
void TestGoodsImport::ownListComesBack()
{
    QFETCH(QString, ending);
    Screen screen;
    screen.database.Exec(u"update GoodInf set kala_name = N'=1+1, \"x\"', Name = N'=1+1, \"x\"  ', kala_type = '', "
                         "kala_index = '', Comment = N'-5', AbbName = '!0012!' where Code = 110003 "
                         "update GoodInf set Position = N'يك كاف', Comment = N'''=1;@a,\"b\"\tc' where Code = 110004 "
                         "update GoodInf set AbbName = '!00123456789012345678!6.5!1e5!', Comment = N'+98 😀', "
                         "MinAva = 0.000000001 where Code = 110005 update GoodCostDiscount set CostLevel_Sell_1 = "
                         "123456789012345.123456789 where GoodCode = 110005"_s);
    screen.Open();
    for (const host::GridColumn &column : screen.grid.Columns())
        screen.grid.SetColumnVisible(column.field, true);
    const QString file = m_folder.filePath(u"list."_s + ending);
    QVERIFY(host::GridExport(screen.grid, u"کالا"_s, {}).Write(file, nullptr));
    const int goods = screen.grid.RowCount();
    Open(screen, file, [&](QWidget *dialog) {
        const QStringList said = Said(dialog);
        QCOMPARE(said.size(), goods);
        for (const QString &row : said)
            QCOMPARE(row, u"بدون تغییر: "_s);
        test::Press(Qt::Key_Escape);
    });
}

void TestGoodsImport::givenUp_data()
{
    QTest::addColumn<bool>("whole");
    QTest::newRow("in blocks: what was written stays") << false;
    QTest::newRow("as a whole: nothing stays") << true;
}

/// Esc in the window of progress.
void TestGoodsImport::givenUp()
{
    QFETCH(bool, whole);
    Screen screen;
    const test::Database &db = screen.database;
    const auto count = [&db](const QString &table) { return db.Scalar(u"select count(*) from "_s + table).toInt(); };
    const int goods = count(u"GoodInf"_s);
    const int groups = count(u"GoodGrpS"_s);
    QString text = u"نام کالا,گروه,واحد\n"_s;
    for (int row = 1; row <= ManyRows; ++row)
        text += u"کالای %1,%2,1\n"_s.arg(row).arg(row < ManyRows ? u"11"_s : u"گروه آخر"_s);
    QTimer esc;
    connect(&esc, &QTimer::timeout, this, [] {
        auto *front = qobject_cast<QProgressDialog *>(QApplication::activeModalWidget());
        if (front && front->value() >= 1000)
            QTest::keyClick(front, Qt::Key_Escape);
    });
    Open(screen, FileOf(m_folder, text), [&](QWidget *dialog) {
        for (const QString &tick : {u"NewGroups_CHK"_s, whole ? u"Whole_CHK"_s : QString()})
            if (!tick.isEmpty()) {
                test::Focus(dialog, tick);
                test::Press(Qt::Key_Space);
            }
        esc.start(1);
        if (whole) {
            test::Press(Qt::Key_F3);
            QVERIFY(dialog->isVisible());
            test::Press(Qt::Key_Escape);
            return;
        }
        test::Drive([] { test::Press(Qt::Key_F3); },
                    [&](QWidget *report) {
                        const QString said = test::Find<QLabel>(report, u"Report_LBL"_s).text();
                        const QString written = host::DisplayNumber(QString::number(count(u"GoodInf"_s) - goods));
                        QVERIFY2(said.startsWith(written + u" کالا افزوده شد"_s) && said.contains(u"متوقف شد"),
                                 qPrintable(said));
                        test::Press(Qt::Key_Escape);
                    });
    });
    const int written = count(u"GoodInf"_s) - goods;
    QVERIFY2(whole ? written == 0 : written >= 1000 && written < ManyRows && written % 1000 == 0,
             qPrintable(QString::number(written)));
    QCOMPARE(count(u"GoodGrpS"_s), groups); // its rows were not reached
    QCOMPARE(db.Rows(u"select Goods from BulkChanges"_s),
             whole ? QStringList() : QStringList{QString::number(written)});
    QCOMPARE(screen.host.messages.TakeAll(),
             whole ? QStringList{u"ShowFlashMessage(عملیات متوقف شد و کالایی نوشته نشد)"_s} : QStringList());
}

void TestGoodsImport::officeFiles_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<bool>("csv"); ///< in which numbers stand as the office showed them
    QTest::newRow("xlsx") << u"office.xlsx"_s << false;
    QTest::newRow("ods") << u"office.ods"_s << false;
    QTest::newRow("csv, utf-8") << u"office-utf-8.csv"_s << true;
    QTest::newRow("csv, windows-1256") << u"office-windows-1256.csv"_s << true;
}

/// Texts, barcodes as text, number and number with an exponent, a formula, a date and decimals.
void TestGoodsImport::officeFiles()
{
    QFETCH(QString, file);
    QFETCH(bool, csv);
    Screen screen;
    const QString exponent =
        u"ایراد دارد: بارکد به شکل نمایی است و رقم‌های آن کامل نیست"_s;
    Open(screen, Files + file, [&](QWidget *dialog) {
        QCOMPARE(Said(dialog), (QStringList{u"جدید: "_s, u"جدید: "_s, csv ? exponent : u"جدید: "_s, exponent}));
        test::Drive([] { test::Press(Qt::Key_F3); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
    });
    QStringList rows{u"چای کیسه‌ای «ویژه»|!0012345678905!|لبنیات|12500.75|2023-03-15"_s,
                     u"کیک یزدی; \"۵ عددی\", تازه|!6260000000019!|خواربار و غلات|25001.5|سطر یک"_s,
                     u"قند شکسته|!6260000000026!|خواربار و غلات|0|"_s};
    if (csv) {
        rows.removeLast();
        rows.replaceInStrings(u"2023-03-15"_s, u"2023/03/15"_s);
    }
    if (file.contains(u"1256"))
        rows.replaceInStrings(u"۵"_s, u"5"_s); // that code page has no Persian digits
    QCOMPARE(
        screen.database.Rows(u"select g.kala_name, g.AbbName, r.Name, c.CostLevel_Sell_1, g.Comment from GoodInf g, "
                             "GoodGrpS r, GoodCostDiscount c where r.Code = g.GrpCode and c.GoodCode = g.Code and "
                             "g.UserCreated = N'مریم احمدی (7)' order by g.AbbName"_s),
        rows);
}

/// The half of a workbook is refused with a message; what was open stays.
void TestGoodsImport::brokenFiles()
{
    Screen screen;
    Open(screen, FileOf(m_folder, u"نام کالا,گروه,واحد\nیک,11,1\n"_s), [&](QWidget *dialog) {
        for (const QString &name : {u"office.xlsx"_s, u"office.ods"_s})
            for (const int part : {2, 3, 20}) {
                QFile whole(Files + name);
                QFile half(m_folder.filePath(name));
                QVERIFY(whole.open(QIODevice::ReadOnly) && half.open(QIODevice::WriteOnly));
                half.write(whole.readAll().chopped(whole.size() / part));
                half.close();
                test::Drive([] { test::Press(Qt::Key_F4); },
                            [&](QWidget *) {
                                test::Type(half.fileName());
                                test::Press(Qt::Key_Return);
                            });
                const QString said = screen.host.messages.TakeAll().join(u' ');
                QVERIFY2(said.contains(u"فایل خراب"), qPrintable(said));
            }
        QCOMPARE(Said(dialog), QStringList{u"جدید: "_s});
        test::Press(Qt::Key_Escape);
    });
}

/// A good and a barcode that were taken between preview and writing are left out, the rest is written.
void TestGoodsImport::anotherDesk()
{
    Screen screen;
    const QString file = FileOf(m_folder, u"کد,بارکد,نام کالا,گروه,واحد\n500,,یک,11,عدد\n501,4444,دو,11,عدد\n"
                                          "502,,سه,11,عدد\n"_s);
    Open(screen, file, [&](QWidget *dialog) {
        screen.database.Exec(u"update GoodInf set AbbName = '!4444!' where Code = 110001 insert into GoodInf (Code, "
                             "GrpCode, Name) values (500, 11, N'دیگر')"_s);
        test::Drive([] { test::Press(Qt::Key_F3); },
                    [](QWidget *report) {
                        QVERIFY(test::Find<QLabel>(report, u"Report_LBL"_s)
                                    .text()
                                    .startsWith(u"۱ کالا افزوده شد، ۰ کالا تغییر کرد، ۰ ردیف بدون تغییر بود و ۲"_s));
                        test::Press(Qt::Key_Escape);
                    });
        Q_UNUSED(dialog)
    });
    QCOMPARE(screen.database.Rows(u"select Code, Name from GoodInf where Code between 500 and 502"_s),
             (QStringList{u"500|دیگر"_s, u"502|سه  "_s}));
}

/// Who may not make groups may not make them by the way.
void TestGoodsImport::rights()
{
    Screen screen;
    screen.host.permissions.Deny(TSoftwarePart::GoodsGroups, TPermission::Create);
    const QString file = FileOf(m_folder, u"نام کالا,گروه,واحد\nیک,دمنوش,عدد\n"_s);
    Open(screen, file, [&](QWidget *dialog) {
        test::Focus(dialog, u"NewGroups_CHK"_s);
        test::Press(Qt::Key_Space);
        test::Press(Qt::Key_F3);
        QVERIFY(dialog->isVisible());
        test::Press(Qt::Key_Escape);
    });
    QCOMPARE(screen.Codes(u"kala_name = N'یک'"_s), QStringList());
    screen.host.permissions.Deny(TSoftwarePart::Goods, TPermission::Change);
    screen.Activate();
    screen.grid.setFocus();
    QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key(Import), QString(Import), Qt::AltModifier);
    QTest::qWait(150);
    QVERIFY(!QApplication::activeModalWidget());
}

REGISTER_TEST(TestGoodsImport)
#include "tst_goods_import.moc"
