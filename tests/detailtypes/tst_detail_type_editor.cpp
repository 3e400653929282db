#include "detailtypes/detail_type_get.h"
#include "host/controls/toggle_switch.h"
#include "tests/support/database.h"
#include "tests/support/modal.h"
#include "tests/support/test_host.h"
#include "tests/support/test_main.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QtTest>

namespace {

using Drive = std::function<void(QWidget *)>;

/// The editor on an empty database.
struct Editor
{
    Editor() : host({database.Main(), database.GoodsList(), database.Scales()}) {}

    void New(const Drive &drive) { Open({}, host::TFormMode::New, drive); }
    void Edit(int id, const Drive &drive) { Open(id, host::TFormMode::Edit, drive); }
    /// The screen is kept for the next record.
    void Open(const QVariant &key, host::TFormMode mode, const Drive &drive)
    {
        if (!screen)
            screen = std::make_unique<TDetailTypes_Get_FRM>(host);
        test::Drive([&] { result = screen->Open(key, mode); }, drive);
    }
    /// What it shows of a record, 0 for a new one.
    QStringList State(int id)
    {
        QStringList state;
        Open(id, id == 0 ? host::TFormMode::New : host::TFormMode::Edit, [&](QWidget *shown) {
            state = test::State(shown);
            test::Press(Qt::Key_Escape);
        });
        return state;
    }
    QStringList Types(const QString &columns) const
    {
        return database.Rows(u"select "_s + columns + u" from DetailTypes order by ID"_s);
    }
    QStringList Items() const
    {
        return database.Rows(u"select DetailID,Row,[Value] from DetailTypesItems order by DetailID,Row"_s);
    }
    void Leave()
    {
        host.messages.Answer(true);
        test::Press(Qt::Key_Escape);
        host.messages.Take();
    }

    test::Database database;
    test::TestHost host;
    int result = -1;
    std::unique_ptr<TDetailTypes_Get_FRM> screen;
};

void ChooseKind(QWidget *screen, int kind)
{
    test::Focus(screen, u"Type_CMB"_s);
    test::Press(Qt::Key_Home);
    for (int i = 0; i < kind; ++i)
        test::Press(Qt::Key_Down);
}

/// Types items as a clerk does: a text and Enter.
void AddItems(QWidget *screen, const QStringList &items)
{
    test::Focus(screen, u"RecommendValues_EDT"_s);
    for (const QString &item : items) {
        test::Type(item);
        test::Press(Qt::Key_Return);
    }
}

void ChooseDefault(QWidget *screen, int position)
{
    test::Focus(screen, u"DefaultValue_CMB"_s);
    test::Press(Qt::Key_Home);
    for (int i = 0; i < position; ++i)
        test::Press(Qt::Key_Down);
}

void Toggle(QWidget *screen, const QString &name)
{
    test::Focus(screen, name);
    test::Press(Qt::Key_Space);
}

QStringList Shown(QWidget *screen)
{
    QStringList items;
    const auto &list = test::Find<QListWidget>(screen, u"RecommendList_LST"_s);
    for (int row = 0; row < list.count(); ++row)
        items << list.item(row)->text();
    return items;
}

QString Default(QWidget *screen)
{
    return test::Find<QComboBox>(screen, u"DefaultValue_CMB"_s).currentText();
}

const QString Columns =
    u"Title,DetailType,IsRequired,ToggleTitleTrue,ToggleTitleFalse,DefaultValue,DateType,DateAlarm"_s;

} // namespace

/// The editor of one detail type.
class TestDetailTypeEditor : public QObject
{
    Q_OBJECT

private slots:
    void eachKindComesBack_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<Drive>("fill");
        QTest::addColumn<QString>("row");
        QTest::addColumn<QStringList>("items");
        const Drive nothing = [](QWidget *) {};
        const QStringList colours{u"سفید"_s, u"مشکی"_s, u"قرمز"_s};
        const QStringList stored{u"1|1|سفید"_s, u"1|2|مشکی"_s, u"1|3|قرمز"_s};
        QTest::newRow("list, third item") << 1 << Drive([=](QWidget *screen) {
            AddItems(screen, colours);
            ChooseDefault(screen, 2);
        }) << u"1|true|||3|0|false"_s << stored;
        QTest::newRow("text, own default") << 2 << Drive([=](QWidget *screen) {
            AddItems(screen, colours);
            test::Enter(screen, u"DefaultValue_CMB"_s, u"آبی 'نفتی'"_s);
            Toggle(screen, u"IsRequired_CHB"_s);
        }) << u"2|false|||آبی 'نفتی'|0|false"_s
                                           << stored;
        QTest::newRow("text without default")
            << 2 << Drive([=](QWidget *screen) { AddItems(screen, colours); }) << u"2|true||||0|false"_s << stored;
        QTest::newRow("serial") << 3 << nothing << u"3|true||||0|false"_s << QStringList();
        QTest::newRow("number") << 4 << nothing << u"4|true||||0|false"_s << QStringList();
        QTest::newRow("solar date") << 5 << nothing << u"5|true||||1|false"_s << QStringList();
        QTest::newRow("Gregorian date with reminder") << 5 << Drive([](QWidget *screen) {
            Toggle(screen, u"GregorianDate_RDB"_s);
            Toggle(screen, u"DateAlarm_CHB"_s);
        }) << u"5|true||||0|true"_s << QStringList();
        QTest::newRow("barcode") << 6 << nothing << u"6|true||||0|false"_s << QStringList();
        QTest::newRow("on") << 7 << nothing << u"7|true|فعال|غیرفعال|1|0|false"_s << QStringList();
        QTest::newRow("off, own titles") << 7 << Drive([](QWidget *screen) {
            test::Enter(screen, u"ToggleTitleTrue_EDT"_s, u" R&D "_s);
            test::Enter(screen, u"ToggleTitleFalse_EDT"_s, u"ندارد"_s);
            Toggle(screen, u"ToggleSwitchTitle_TSW"_s);
            QCOMPARE(test::Find<host::ToggleSwitch>(screen, u"ToggleSwitchTitle_TSW"_s).text(), u"ندارد"_s);
        }) << u"7|true| R&D |ندارد|0|0|false"_s
                                         << QStringList();
    }
    void eachKindComesBack()
    {
        QFETCH(int, kind);
        QFETCH(Drive, fill);
        QFETCH(QString, row);
        QFETCH(QStringList, items);
        const QString title = u"رنگ 'ها' [a_%] 🎨"_s;
        Editor e;
        e.New([&](QWidget *screen) {
            QCOMPARE(test::Focused(), u"DetailTitle_EDT"_s);
            test::Type(title);
            ChooseKind(screen, kind);
            fill(screen);
            test::Enter(screen, u"Comment_EDT"_s, u"توضیح"_s);
            test::Press(Qt::Key_F3);
        });
        QCOMPARE(e.result, 1);
        const QString audit = u"Comment,CreatedTime,CreatedDate,UserCreated,ModifiedTime,ModifiedDate,UserModified"_s;
        const QString created = u"|10:20:30|2024/07/30|مریم احمدی (7)"_s;
        QCOMPARE(e.Types(Columns), QStringList{title + u'|' + row});
        QCOMPARE(e.Types(audit), QStringList{u"توضیح"_s + created + u"|NULL|NULL|NULL"_s});
        QCOMPARE(e.Items(), items);

        e.host.clock.time = u"11:00:00"_s;
        e.host.settings.user = {8, u"علی"_s, 0};
        e.Edit(1, [&](QWidget *screen) {
            QVERIFY(qobject_cast<host::TBaseGet_FRM *>(screen)->IsSaved());
            test::Enter(screen, u"Comment_EDT"_s, u"دیگر"_s);
            // Another desk is faster: what was not changed here stays as it is by now.
            e.database.Exec(u"update DetailTypes set Title = N'نو' where ID = 1"_s);
            if (!items.isEmpty())
                e.database.Exec(u"update DetailTypesItems set [Value] = N'بنفش' where [Value] = N'مشکی'"_s);
            test::Press(Qt::Key_F3);
        });
        items.replaceInStrings(u"مشکی"_s, u"بنفش"_s);
        QCOMPARE(e.Types(Columns), QStringList{u"نو|"_s + row});
        QCOMPARE(e.Types(audit), QStringList{u"دیگر"_s + created + u"|11:00:00|2024/07/30|علی (8)"_s});
        QCOMPARE(e.Items(), items);
    }

    void aSecondRecordInTheSameScreen()
    {
        Editor e;
        e.database.Exec(
            u"insert into DetailTypes(Title,DetailType,IsRequired,ToggleTitleTrue,ToggleTitleFalse,DefaultValue,"
            "DateType,DateAlarm,Comment) values(N'رنگ و رنگ و رنگ و رنگ و رنگ',1,1,'','','2',0,0,N'شرح'),(N'جنس',2,0,"
            "'','',N'نخ',0,0,NULL),(N'سریال',3,1,'','','',0,0,NULL),(N'وزن',4,0,'','','',0,0,NULL),(N'انقضا',5,0,'',"
            "'','',0,1,NULL),(N'بارکد',6,1,'','','',0,0,NULL),(N'گارانتی',7,0,N'دارد',N'ندارد','0',0,0,NULL)\n"
            "insert into DetailTypesItems(DetailID,Row,[Value]) values(1,1,N'الف'),(1,2,N'ب'),(2,1,N'نخ')"_s);
        QList<QStringList> fresh;
        for (int id = 0; id <= 7; ++id) {
            e.screen.reset();
            fresh << e.State(id);
        }
        for (int first = 1; first <= 7; ++first)
            for (int second = 0; second <= 7; ++second) {
                e.Edit(first, [&](QWidget *screen) {
                    test::Type(u"x"_s);
                    test::Enter(screen, u"Comment_EDT"_s, u"دیگر"_s);
                    if (first <= 2) {
                        AddItems(screen, {u"ج"_s});
                        test::Type(u"د"_s);
                    }
                    e.Leave();
                });
                QCOMPARE(e.State(second), fresh.at(second));
            }
    }

    void refusesInOrder_data()
    {
        QTest::addColumn<bool>("existing");
        QTest::addColumn<Drive>("fill");
        QTest::addColumn<QString>("message");
        QTest::addColumn<QString>("focus");
        const auto titled = [](const QString &title, int kind, const Drive &more = {}) {
            return Drive([=](QWidget *screen) {
                test::Enter(screen, u"DetailTitle_EDT"_s, title);
                ChooseKind(screen, kind);
                if (more)
                    more(screen);
            });
        };
        const auto blank = [](const QString &edit) {
            return Drive([=](QWidget *screen) { test::Enter(screen, edit, u"  "_s); });
        };
        const auto required = [](const QString &caption) { return u"MsgRequiredField(%1)"_s.arg(caption); };
        const QString repeated = u"MsgRepeatedField(عنوان جزئیات, جزئیات کالا)"_s;
        QTest::newRow("title before kind")
            << false << titled(u"  "_s, 0) << required(u"عنوان گزارش"_s) << u"DetailTitle_EDT"_s;
        QTest::newRow("new title taken") << false << titled(u"انقضا"_s, 0) << repeated << u"DetailTitle_EDT"_s;
        QTest::newRow("title taken twice") << true << titled(u"دوتا"_s, 5) << repeated << u"DetailTitle_EDT"_s;
        QTest::newRow("title of one other") << true << titled(u"انقضا"_s, 5) << QString() << QString();
        QTest::newRow("other blanks") << false << titled(u" انقضا"_s, 4) << QString() << QString();
        QTest::newRow("two reminders on one good")
            << true << Drive([](QWidget *screen) { Toggle(screen, u"DateAlarm_CHB"_s); })
            << u"ShowMessage(کاربر گرامی تعدادی کالا ثبت شده اند که دارای جزئیات تاریخی با قابلیت یادآوری سررسید می "
               u"باشندکه "
               "این جزئیات هم در لیست جزئیات کالاهای فوق ثبت شده است و در صورتی که تیک یادآوری سررسید این جزئیات را هم "
               "بزنید  کالاهای فوق دارای دو جزئیات تاریخی با تیک یادآوری سررسید می شوند که همین امر مشکل ساز خواهد شد "
               "و به "
               "همین دلیل  افزودن تیک یادآوری سررسید برای این جزئیات امکان پذیر نمی باشد)"_s
            << u"DateAlarm_CHB"_s;
        for (const int kind : {3, 6})
            QTest::addRow("kind %d beside a serial", kind)
                << true << titled(u"ساخت"_s, kind)
                << u"ShowMessage(کاربر گرامی برای یک کالا امکان وجود چند جزییات بارکدی و یا سریالی و یا وجود از هر دونوع همزمان امکان پذیر نمی باشد)"_s
                << u"Type_CMB"_s;
        QTest::newRow("kind") << false << titled(u"رنگ"_s, 0) << required(u"نوع جزئیات"_s) << u"Type_CMB"_s;
        QTest::newRow("items of a list") << false << titled(u"رنگ"_s, 1) << required(u"مقادیر پیشنهادی"_s)
                                         << u"RecommendValues_EDT"_s;
        QTest::newRow("items of a text") << false << titled(u"رنگ"_s, 2) << required(u"مقادیر پیشنهادی"_s)
                                         << u"RecommendValues_EDT"_s;
        QTest::newRow("calendar") << true << Drive() << required(u"نوع تاریخ"_s) << u"SolarDate_RDB"_s;
        QTest::newRow("title of on") << false << titled(u"رنگ"_s, 7, blank(u"ToggleTitleTrue_EDT"_s))
                                     << required(u"عنوان فعال"_s) << u"ToggleTitleTrue_EDT"_s;
        QTest::newRow("title of off") << false << titled(u"رنگ"_s, 7, blank(u"ToggleTitleFalse_EDT"_s))
                                      << required(u"عنوان غیر فعال"_s) << u"ToggleTitleFalse_EDT"_s;
        QTest::newRow("item not added")
            << false
            << titled(u"رنگ"_s, 2,
                      [](QWidget *screen) {
                          AddItems(screen, {u"سفید"_s});
                          test::Type(u"مشکی"_s);
                      })
            << u"ShowMessage(کاربر گرامی مقدار پیشنهادی نوشته شده هنوز به لیست افزوده نشده است، لطفا آن را با Enter "
               u"بیفزایید و یا پاک نمایید)"_s
            << u"RecommendValues_EDT"_s;
        QTest::newRow("default too long")
            << false
            << titled(u"رنگ"_s, 2,
                      [](QWidget *screen) {
                          AddItems(screen, {u"سفید"_s});
                          test::Enter(screen, u"DefaultValue_CMB"_s, QString(51, u'ش'));
                      })
            << u"ShowMessage(کاربر گرامی مقدار پیش فرض حداکثر 50 حرف می تواند داشته باشد)"_s << u"DefaultValue_CMB"_s;
        QTest::newRow("default of a list")
            << false << titled(u"رنگ"_s, 1, [](QWidget *screen) { AddItems(screen, {u"سفید"_s}); })
            << required(u"مقدار پیش فرض"_s) << u"DefaultValue_CMB"_s;
    }
    void refusesInOrder()
    {
        QFETCH(bool, existing);
        QFETCH(Drive, fill);
        QFETCH(QString, message);
        QFETCH(QString, focus);
        Editor e;
        e.database.Exec(
            u"insert into DetailTypes(Title,DetailType,DateType,DateAlarm) values(N'ساخت',5,1,0),(N'انقضا',5,1,1),"
            "(N'دوتا',4,0,0),(N'دوتا',4,0,0)\n"
            "insert into GoodGrpS(Code,Name) values(5,N'لبنیات')\n"
            "insert into GoodInf(Code,GrpCode,Name) values(1,5,N'شیر')\n"
            "insert into GoodDetailValues(GoodCode) values(1)\n"
            "insert into GoodDetailValueDetails(DetailValueID,DetailID,[Value]) values(1,1,'x'),(1,2,'y')\n"
            "insert into DetailTypes(Title,DetailType) values(N'سریال',3)\n"
            "insert into GoodDetailRelation(GoodCode,DetailID) values(1,1),(1,5)"_s);
        if (!fill) // a calendar that only another program can have stored
            e.database.Exec(u"update DetailTypes set DateType=9 where ID=1"_s);
        const QStringList before = e.Types(Columns);
        const auto drive = [&](QWidget *screen) {
            if (fill)
                fill(screen);
            test::Press(Qt::Key_F3);
            QCOMPARE(e.host.messages.Take(), message);
            if (message.isEmpty())
                return;
            QCOMPARE(test::Focused(), focus);
            QCOMPARE(e.Types(Columns), before);
            if (qobject_cast<host::TBaseGet_FRM *>(screen)->IsSaved())
                test::Press(Qt::Key_Escape);
            else
                e.Leave();
        };
        existing ? e.Edit(1, drive) : e.New(drive);
        QCOMPARE(e.result, message.isEmpty() ? 1 : 0);
    }

    void itemsAreArrangedByKeys()
    {
        Editor e;
        e.New([&](QWidget *screen) {
            test::Type(u"اندازه"_s);
            ChooseKind(screen, 1);
            AddItems(screen, {u"بزرگ"_s, u"['a'] 📏"_s, u" بزرگ"_s, u"بزرگ"_s});
            QCOMPARE(e.host.messages.Take(),
                     u"ShowMessage(کاربر گرامی مقدار پیشنهادی وارد شده تکراری می باشد، لطفا مقدار "
                     "پیشنهادی جدید وارد نمایید)"_s);
            QCOMPARE(test::Find<QLineEdit>(screen, u"RecommendValues_EDT"_s).selectedText(), u"بزرگ"_s);
            test::Type(u"  "_s);
            test::Find(screen, u"AddToList_BTN"_s).setFocus();
            test::Press(Qt::Key_Return);
            QCOMPARE(Shown(screen), (QStringList{u"بزرگ"_s, u"['a'] 📏"_s, u" بزرگ"_s}));

            ChooseDefault(screen, 1);
            test::Focus(screen, u"RecommendList_LST"_s);
            test::Press(Qt::Key_End);
            for (int presses = 0; presses < 3; ++presses) // once more than there are places
                Toggle(screen, u"Up_BTN"_s);
            QCOMPARE(Shown(screen), (QStringList{u" بزرگ"_s, u"بزرگ"_s, u"['a'] 📏"_s}));
            QCOMPARE(Default(screen), u"['a'] 📏"_s);
            Toggle(screen, u"Down_BTN"_s);
            QCOMPARE(Shown(screen).indexOf(u" بزرگ"_s), 1);
            Toggle(screen, u"Delrow_BTN"_s);
            test::Press(Qt::Key_F3);
        });
        QCOMPARE(e.Items(), (QStringList{u"1|1|بزرگ"_s, u"1|2|['a'] 📏"_s}));
        QCOMPARE(e.Types(u"DefaultValue"_s), QStringList{u"2"_s});
        // A default that is taken off is none; the same item as free text stays.
        e.Edit(1, [&](QWidget *screen) {
            ChooseKind(screen, 2);
            QCOMPARE(Default(screen), u"['a'] 📏"_s);
            test::Focus(screen, u"RecommendList_LST"_s);
            test::Press(Qt::Key_End);
            Toggle(screen, u"Delrow_BTN"_s);
            QCOMPARE(Default(screen), u"['a'] 📏"_s);
            ChooseKind(screen, 1);
            QCOMPARE(Default(screen), QString());
            e.Leave();
        });
        QCOMPARE(e.Items().size(), 2);
    }

    void aListBecomesASerial()
    {
        Editor e;
        e.database.Exec(u"insert into DetailTypes(Title,DetailType,DefaultValue) values(N'رنگ',1,'2')\n"
                        "insert into DetailTypesItems(DetailID,Row,[Value]) values(1,1,N'الف'),(1,2,N'ب')"_s);
        e.Edit(1, [&](QWidget *screen) {
            QCOMPARE(Default(screen), u"ب"_s);
            ChooseKind(screen, 3);
            QVERIFY(!test::Find(screen, u"IsRequired_CHB"_s).isEnabled());
            test::Press(Qt::Key_F3);
        });
        QCOMPARE(e.Types(Columns), QStringList{u"رنگ|3|true|||2|0|false"_s});
        QCOMPARE(e.Items(), QStringList());
    }

    void formFollowsTheKind_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("panels");
        QTest::addColumn<int>("height");
        QTest::addColumn<QString>("description");
        QTest::newRow("none") << 0 << QString() << 260 << QString();
        QTest::newRow("list") << 1 << u"items"_s << 530 << u"مقادیر ثابتی"_s;
        QTest::newRow("text") << 2 << u"items"_s << 530 << u"حالت متنی"_s;
        QTest::newRow("serial") << 3 << QString() << 340 << u"منحصر به فرد"_s;
        QTest::newRow("number") << 4 << QString() << 340 << u"ماهیت عددی"_s;
        QTest::newRow("date") << 5 << u"date"_s << 380 << u"ماهیت تاریخی"_s;
        QTest::newRow("barcode") << 6 << QString() << 340 << u"بارکدهای تکراری"_s;
        QTest::newRow("two states") << 7 << u"toggle"_s << 420 << u"(فعال / غیرفعال)"_s;
    }
    void formFollowsTheKind()
    {
        QFETCH(int, kind);
        QFETCH(QString, panels);
        QFETCH(int, height);
        QFETCH(QString, description);
        Editor e;
        e.New([&](QWidget *screen) {
            auto &required = test::Find<QCheckBox>(screen, u"IsRequired_CHB"_s);
            ChooseKind(screen, 7);
            Toggle(screen, u"IsRequired_CHB"_s); // the user wants it off
            ChooseKind(screen, kind);
            const bool identifying = kind == 3 || kind == 6;
            QCOMPARE(required.isChecked(), identifying);
            QCOMPARE(required.isEnabled(), !identifying);
            QCOMPARE(screen->height(), height);
            const std::pair<const char16_t *, QString> all[] = {{u"RecommendedValues_PNL", u"items"_s},
                                                                {u"DateType_PNL", u"date"_s},
                                                                {u"ToggleTitle_PNL", u"toggle"_s}};
            for (const auto &[panel, name] : all)
                QCOMPARE(test::Find(screen, QString::fromUtf16(panel)).isVisible(), panels == name);
            const auto &words = test::Find<QLabel>(screen, u"TypeDescription_LBL"_s);
            QCOMPARE(words.isVisible(), kind != 0);
            QVERIFY(words.text().contains(description));
            QVERIFY(panels != u"items" || screen->y() <= 150);
            QVERIFY(test::RightOf(test::Find(screen, u"Type_LBL"_s), test::Find(screen, u"Type_CMB"_s)));
            test::Picture(*screen, u"detail-type-%1"_s.arg(kind));
            e.Leave();
        });
    }

    void whatIsEnteredStays_data()
    {
        using Act = std::function<void(Editor &, QWidget *)>;
        QTest::addColumn<Act>("act");
        QTest::newRow("Esc, answered no") << Act([](Editor &e, QWidget *) {
            e.host.messages.Answer(false);
            test::Press(Qt::Key_Escape);
        });
        QTest::newRow("button, answered no") << Act([](Editor &e, QWidget *screen) {
            e.host.messages.Answer(false);
            Toggle(screen, u"Exit_BTN"_s);
        });
        QTest::newRow("window closed, answered no") << Act([](Editor &e, QWidget *screen) {
            e.host.messages.Answer(false);
            screen->close();
        });
        QTest::newRow("refused") << Act([](Editor &e, QWidget *screen) {
            e.database.Exec(u"insert into DetailTypes(Title,DetailType) values(N'رنگ بدنه',4)"_s);
            test::Press(Qt::Key_F3);
            e.database.Exec(u"delete from DetailTypes"_s);
            test::Focus(screen, u"Comment_EDT"_s);
        });
        QTest::newRow("connection lost") << Act([](Editor &e, QWidget *) {
            QSqlDatabase main = e.database.Main();
            main.close();
            test::Press(Qt::Key_F3);
            QVERIFY(main.open());
        });
    }
    void whatIsEnteredStays()
    {
        using Act = std::function<void(Editor &, QWidget *)>;
        QFETCH(Act, act);
        Editor e;
        e.New([&](QWidget *screen) {
            QGuiApplication::clipboard()->setText(u"رنگ\tبدنه\r\n"_s); // a cell of a sheet
            test::Press(Qt::Key_V, Qt::ControlModifier);
            ChooseKind(screen, 1);
            AddItems(screen, {u" سفید "_s, u"مشکی"_s});
            ChooseDefault(screen, 1);
            act(e, screen);
            QCOMPARE(e.host.messages.TakeAll().size(), 1);
            test::Press(Qt::Key_F3);
        });
        QCOMPARE(e.Types(u"Title,DefaultValue"_s), QStringList{u"رنگ بدنه|2"_s});
        QCOMPARE(e.database.Rows(u"select [Value] from DetailTypesItems order by Row"_s),
                 (QStringList{u" سفید "_s, u"مشکی"_s}));
    }

    void whatCannotBeWrittenStays()
    {
        Editor e;
        e.host.permissions.Deny(host::TSoftwarePart::DetailTypes, host::TPermission::Create);
        TDetailTypes_Get_FRM screen(e.host);
        QCOMPARE(screen.Open({}, host::TFormMode::New), 0);
        QCOMPARE(screen.Open(5, host::TFormMode::Edit), 0); // there is none
        QCOMPARE(e.host.messages.Take(), u"ShowMessage(این نوع جزئیات دیگر وجود ندارد.)"_s);

        e.database.Exec(u"insert into DetailTypes(Title,DetailType,DefaultValue) values(N'رنگ',1,'1')\n"
                        "insert into DetailTypesItems(DetailID,Row,[Value]) values(1,1,N'الف')"_s);
        e.Edit(1, [&](QWidget *open) {
            AddItems(open, {u"ب"_s});
            e.database.Exec(u"alter table DetailTypesItems add Broken int not null default 0\n"
                            "create unique index UQ_Broken on DetailTypesItems(Broken)"_s);
            test::Press(Qt::Key_F3);
            QVERIFY(e.host.messages.Take().contains(u"تکراری"_s));
            QCOMPARE(Shown(open), (QStringList{u"الف"_s, u"ب"_s}));
            QCOMPARE(e.Items(), QStringList{u"1|1|الف"_s});
            QCOMPARE(e.Types(u"ModifiedTime"_s), QStringList{u"NULL"_s});
            e.database.Exec(u"delete from DetailTypesItems\ndelete from DetailTypes"_s);
            test::Press(Qt::Key_F3);
            QVERIFY(e.host.messages.Take().contains(u"توسط کاربر دیگری حذف شده است"_s));
            e.Leave();
        });
        QCOMPARE(e.result, 0);
        QCOMPARE(e.Types(u"ID"_s), QStringList());
    }
};

REGISTER_TEST(TestDetailTypeEditor)
#include "tst_detail_type_editor.moc"
