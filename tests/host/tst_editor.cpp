#include "host/controls/display_edit.h"
#include "host/controls/entity_picker.h"
#include "host/controls/numeric_edit.h"
#include "host/controls/text_limit.h"
#include "host/data/database_error.h"
#include "host/screens/base_get_new.h"
#include "tests/support/modal.h"
#include "tests/support/test_host.h"
#include "tests/support/test_main.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSqlError>
#include <QTabWidget>
#include <QToolButton>
#include <QtTest>

#include <memory>
#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Items that are out of reach.
struct LostEntities : test::FakeEntities
{
    [[noreturn]] static void Fail() { throw host::DatabaseError(QSqlError({}, {}, QSqlError::ConnectionError), {}); }
    int Select_GroupList(host::TSoftwarePart, const QString &) override { Fail(); }
    std::optional<host::Entity> Find(host::TSoftwarePart, int) override { Fail(); }
    QList<host::Entity> List(host::TSoftwarePart, const QString &) override { Fail(); }
};

/// The smallest editor that has all kinds of inputs, on two pages, and keeps its rows in a list.
class TinyEditor : public host::TBaseGet_New_FRM
{
    Q_OBJECT

public:
    explicit TinyEditor(host::Host &host) : TBaseGet_New_FRM(host, host::TSoftwarePart::Units)
    {
        SetTitle(u"واحد"_s);
        auto *pages = new QTabWidget(Content());
        pages->setObjectName(u"Pages"_s);
        auto *column = new QVBoxLayout(Content());
        column->addWidget(pages);
        QFormLayout *first = Page(pages, u"عمومی"_s);
        QFormLayout *second = Page(pages, u"تکمیلی"_s);
        Add(first, &name, u"Name_EDT"_s);
        Add(first, &kind, u"Kind_CMB"_s);
        Add(first, &unit, u"Unit_Entity"_s);
        Add(first, &comment, u"Comment_EDT"_s);
        Add(second, &weight, u"Weight_EDT"_s);
        Add(second, &total, u"Total_EDT"_s);
        total->setReadOnly(true);
        kind->addItems({u"ساده"_s, u"مرکب"_s});
        unit->SetSource(host.entities, host::TSoftwarePart::Units);
    }

    static QFormLayout *Page(QTabWidget *pages, const QString &caption)
    {
        auto *page = new QWidget;
        pages->addTab(page, caption);
        return new QFormLayout(page);
    }
    template <typename Input> void Add(QFormLayout *form, Input **input, const QString &objectName)
    {
        *input = new Input(Content());
        (*input)->setObjectName(objectName);
        form->addRow(objectName, *input);
    }

    void Prepare() override
    {
        name->clear();
        weight->setText(u"0"_s);
        comment->clear();
        kind->setCurrentIndex(0);
        unit->Clear();
    }
    void Load() override
    {
        if (Key().toInt() >= rows.size()) {
            RefuseOpening(host::RecordGone(u"واحد"_s));
            return;
        }
        name->setText(rows.at(Key().toInt()));
        weight->setText(u"3"_s);
    }
    std::vector<host::Check> Validate() override
    {
        return {{u"name"_s, [this] { return When(name->text().isEmpty(), host::Required(name, u"نام"_s)); }},
                {u"weight"_s, [this] { return When(weight->Number() == 0, host::Required(weight, u"وزن"_s)); }}};
    }
    void Write() override
    {
        if (refusal)
            throw *refusal;
        if (Mode() == host::TFormMode::New) {
            rows << name->text();
            SetKey(int(rows.size()) - 1);
        } else {
            rows[Key().toInt()] = name->text();
        }
    }
    QWidget *FirstControl() const override { return name; }
    void FormClose() override { ++closings; }

    QStringList rows{u"عدد"_s, u"کارتن"_s};
    std::optional<host::DatabaseError> refusal;
    int closings = 0;
    QLineEdit *name;
    QComboBox *kind;
    host::EntityPicker *unit;
    QPlainTextEdit *comment;
    host::NumericEdit *weight;
    QLineEdit *total;
};

} // namespace

class TestEditor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void enter_walks_the_inputs();
    void refusal_brings_its_page_to_front();
    void new_records_follow_each_other();
    void opener_may_want_one_record_only();
    void existing_record_closes_with_ok();
    void database_error_leaves_the_input_data();
    void database_error_leaves_the_input();
    void picker_out_of_reach_data();
    void picker_out_of_reach();
    void pasted_beyond_the_limit();
    void leaving_asks_before_it_loses_changes();
    void review_changes_nothing();
    void record_that_is_gone_does_not_open();
    void stands_right_to_left();

private:
    std::unique_ptr<test::TestHost> m_host;
    std::unique_ptr<TinyEditor> m_editor;
};

void TestEditor::init()
{
    m_host = std::make_unique<test::TestHost>();
    m_host->entities.lists[104] = {{1, u"عدد"_s}, {2, u"کیلوگرم"_s}, {3, u"کیلومتر"_s}};
    m_editor = std::make_unique<TinyEditor>(m_host->host);
}

void TestEditor::cleanup()
{
    m_editor.reset();
    m_host.reset();
}

void TestEditor::enter_walks_the_inputs()
{
    test::Drive([&] { m_editor->Open({}, host::TFormMode::New); },
                [&](QWidget *screen) {
                    QCOMPARE(test::Focused(), u"Name_EDT"_s);
                    test::Press(Qt::Key_Return);
                    QCOMPARE(test::Focused(), u"Kind_CMB"_s);
                    test::Press(Qt::Key_Enter, Qt::KeypadModifier);
                    QCOMPARE(test::Focused(), u"Unit_Entity"_s);
                    test::Type(u"۲"_s);
                    test::Press(Qt::Key_Return);
                    QCOMPARE(m_editor->unit->Code(), 2);
                    QCOMPARE(m_editor->unit->Name(), u"کیلوگرم"_s);
                    QCOMPARE(test::Focused(), u"Comment_EDT"_s);
                    test::Press(Qt::Key_Return); // a line of its own, not the next control
                    QCOMPARE(m_editor->comment->toPlainText(), u"\n"_s);
                    test::Find<QTabWidget>(screen, u"Pages"_s).setCurrentIndex(1);
                    test::Focus(screen, u"Weight_EDT"_s);
                    test::Press(Qt::Key_Return); // the read-only total is passed over
                    QCOMPARE(test::Focused(), u"Save_BTN"_s);
                    m_host->messages.Answer(true);
                    test::Press(Qt::Key_Escape);
                });
    m_host->messages.TakeAll();
}

void TestEditor::refusal_brings_its_page_to_front()
{
    test::Drive([&] { m_editor->Open({}, host::TFormMode::New); },
                [&](QWidget *screen) {
                    test::Press(Qt::Key_F3);
                    QCOMPARE(m_host->messages.Take(), u"MsgRequiredField(نام)"_s);
                    QCOMPARE(test::Focused(), u"Name_EDT"_s);
                    test::Type(u"جعبه"_s);
                    test::Press(Qt::Key_F3);
                    QCOMPARE(m_host->messages.Take(), u"MsgRequiredField(وزن)"_s);
                    QCOMPARE(test::Find<QTabWidget>(screen, u"Pages"_s).currentIndex(), 1);
                    QCOMPARE(test::Focused(), u"Weight_EDT"_s);
                    QCOMPARE(m_editor->weight->selectedText(), u"۰"_s);
                    QCOMPARE(m_editor->rows.size(), 2);
                    QCOMPARE(m_editor->name->text(), u"جعبه"_s);
                    m_host->messages.Answer(true);
                    test::Press(Qt::Key_Escape);
                });
    QCOMPARE(m_host->messages.TakeAll().size(), 1);
    QCOMPARE(m_editor->closings, 1);
}

void TestEditor::new_records_follow_each_other()
{
    int result = -1;
    test::Drive([&] { result = m_editor->Open({}, host::TFormMode::New); },
                [&](QWidget *screen) {
                    for (const QString &unit : {u"بسته"_s, u"حلقه"_s}) {
                        test::Enter(screen, u"Name_EDT"_s, unit);
                        m_editor->weight->setText(u"1"_s);
                        test::Press(Qt::Key_F3);
                        QVERIFY(m_editor->isVisible());
                        QCOMPARE(m_editor->name->text(), QString());
                        QCOMPARE(test::Focused(), u"Name_EDT"_s);
                        QVERIFY(m_editor->IsSaved());
                    }
                    test::Press(Qt::Key_Escape); // nothing to lose, nothing asked
                });
    QCOMPARE(m_editor->rows.mid(2), (QStringList{u"بسته"_s, u"حلقه"_s}));
    QCOMPARE(m_editor->SavedKey(), QVariant(3));
    QCOMPARE(result, 0);
}

void TestEditor::opener_may_want_one_record_only()
{
    m_editor->SetCloseAfterNew(true);
    int result = -1;
    test::Drive([&] { result = m_editor->Open({}, host::TFormMode::New); },
                [&](QWidget *) {
                    test::Type(u"بسته"_s);
                    m_editor->weight->setText(u"1"_s);
                    test::Press(Qt::Key_F3);
                });
    QCOMPARE(result, 1);
    QCOMPARE(m_editor->SavedKey(), QVariant(2));
}

void TestEditor::existing_record_closes_with_ok()
{
    int result = -1;
    test::Drive([&] { result = m_editor->Open(1, host::TFormMode::Edit); },
                [&](QWidget *screen) {
                    QCOMPARE(m_editor->name->text(), u"کارتن"_s);
                    QVERIFY(m_editor->IsSaved()); // loading is no change
                    test::Enter(screen, u"Name_EDT"_s, u"کارتن بزرگ"_s);
                    QVERIFY(!m_editor->IsSaved());
                    test::Press(Qt::Key_F3);
                });
    QCOMPARE(result, 1);
    QCOMPARE(m_editor->rows.at(1), u"کارتن بزرگ"_s);
}

void TestEditor::database_error_leaves_the_input_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("words");
    QTest::addColumn<QString>("said");
    QTest::newRow("unknown") << u"50000"_s << u"Out of order."_s << u"Out of order."_s;
    QTest::newRow("too long") << u"2628"_s
                              << u"String or binary data would be truncated in table 'T', column 'weight'."_s
                              << u"«Weight_EDT» بلندتر از اندازه ای است که ثبت می شود."_s;
    QTest::newRow("repeated") << u"2601"_s
                              << u"Cannot insert duplicate key row in object 'dbo.T' with unique index 'UX_T_Name'."_s
                              << u"«Name_EDT» تکراری است و پیش از این ثبت شده است."_s;
    QTest::newRow("out of range") << u"8115"_s
                                  << u"Arithmetic overflow error converting numeric to data type numeric."_s
                                  << u"یکی از عددها از محدوده ای که ثبت می شود بیرون است."_s;
    QTest::newRow("deadlock")
        << u"1205;3621"_s << u"Transaction (Process ID 52) was deadlocked."_s
        << u"کار هم‌زمان کاربر دیگری با این کار برخورد کرد. چیزی ثبت نشد؛ دوباره تلاش کنید."_s;
}

void TestEditor::database_error_leaves_the_input()
{
    QFETCH(QString, number);
    QFETCH(QString, words);
    QFETCH(QString, said);
    test::Drive([&] { m_editor->Open({}, host::TFormMode::New); },
                [&](QWidget *) {
                    m_editor->refusal.emplace(QSqlError({}, words, QSqlError::StatementError, number), QString());
                    test::Type(u"بسته"_s);
                    m_editor->weight->setText(u"1"_s);
                    test::Press(Qt::Key_F3);
                    QCOMPARE(m_host->messages.Take(), u"ShowMessage(%1)"_s.arg(said));
                    QVERIFY(m_editor->isVisible());
                    QVERIFY(!m_editor->IsSaved());
                    QCOMPARE(m_editor->name->text(), u"بسته"_s);
                    QCOMPARE(m_editor->SavedKey(), QVariant());
                    m_editor->refusal.reset();
                    test::Press(Qt::Key_F3); // the same input goes through afterwards
                    QCOMPARE(m_editor->rows.last(), u"بسته"_s);
                    test::Press(Qt::Key_Escape);
                });
}

void TestEditor::picker_out_of_reach_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("leaving") << Qt::Key_Tab;
    QTest::newRow("enter") << Qt::Key_Return;
    QTest::newRow("the list by key") << Qt::Key_F2;
    QTest::newRow("the list by the button") << Qt::Key_unknown;
}

/// The user is told, what he typed stays, and the editor closes and opens as ever.
void TestEditor::picker_out_of_reach()
{
    QFETCH(Qt::Key, key);
    LostEntities lost;
    m_editor->unit->SetSource(lost, host::TSoftwarePart::Units);
    test::Drive([&] { m_editor->Open(0, host::TFormMode::Edit); },
                [&](QWidget *screen) {
                    test::Focus(screen, u"Unit_Entity"_s);
                    test::Type(u"2"_s);
                    if (key == Qt::Key_unknown)
                        test::Find<QToolButton>(screen, u"Picker_BTN"_s).click();
                    else
                        test::Press(key);
                    const QStringList said = m_host->messages.TakeAll();
                    QCOMPARE(said.size(), 1);
                    QVERIFY2(said.first().contains(u"ارتباط با پایگاه داده قطع شد"), qPrintable(said.first()));
                    QCOMPARE(m_editor->unit->Edit()->text(), u"2"_s);
                    m_host->messages.Answer(true);
                    test::Press(Qt::Key_Escape);
                });
    QVERIFY(!m_editor->IsShowing());
    m_host->messages.TakeAll();
    m_editor->unit->SetSource(m_host->entities, host::TSoftwarePart::Units);
    test::Drive([&] { m_editor->Open(0, host::TFormMode::Edit); }, [](QWidget *) { test::Press(Qt::Key_Escape); });
}

/// What does not fit goes, and no half of a character stays.
void TestEditor::pasted_beyond_the_limit()
{
    m_editor->name->setMaxLength(5);
    host::LimitLength(*m_editor->comment, 5);
    QApplication::clipboard()->setText(u"abcd😀"_s);
    test::Drive([&] { m_editor->Open({}, host::TFormMode::New); },
                [&](QWidget *screen) {
                    test::Press(Qt::Key_V, Qt::ControlModifier);
                    QCOMPARE(m_editor->name->text(), u"abcd"_s);
                    test::Focus(screen, u"Comment_EDT"_s);
                    test::Press(Qt::Key_V, Qt::ControlModifier);
                    QCOMPARE(m_editor->comment->toPlainText(), u"abcd"_s);
                    test::Type(u"e😀f"_s);
                    QCOMPARE(m_editor->comment->toPlainText(), u"abcde"_s);
                    m_host->messages.Answer(true);
                    test::Press(Qt::Key_Escape);
                });
    m_host->messages.TakeAll();
}

void TestEditor::leaving_asks_before_it_loses_changes()
{
    test::Drive([&] { m_editor->Open(0, host::TFormMode::Edit); },
                [&](QWidget *) {
                    test::Type(u"چیز دیگر"_s);
                    m_host->messages.Answer(false);
                    test::Press(Qt::Key_Escape);
                    QVERIFY(m_host->messages.Take().startsWith(u"Ask("));
                    QVERIFY(m_editor->isVisible());
                    QCOMPARE(m_editor->name->text(), u"چیز دیگر"_s);
                    m_host->messages.Answer(true);
                    m_editor->close();
                    QVERIFY(m_host->messages.Take().startsWith(u"Ask("));
                });
    QCOMPARE(m_editor->rows.at(0), u"عدد"_s);
}

void TestEditor::review_changes_nothing()
{
    test::Drive([&] { m_editor->Open(0, host::TFormMode::Review); },
                [&](QWidget *screen) {
                    test::Type(u"x"_s);
                    QCOMPARE(m_editor->name->text(), u"عدد"_s);
                    QVERIFY(!m_editor->kind->isEnabled());
                    QVERIFY(!test::Find<QPushButton>(screen, u"Save_BTN"_s).isVisible());
                    test::Press(Qt::Key_F3);
                    test::Press(Qt::Key_Escape);
                });
    test::Drive([&] { m_editor->Open(0, host::TFormMode::Edit); },
                [&](QWidget *) {
                    QVERIFY(!m_editor->name->isReadOnly());
                    QVERIFY(m_editor->kind->isEnabled());
                    QVERIFY(m_editor->total->isReadOnly()); // it was before the review
                    test::Press(Qt::Key_Escape);
                });
}

void TestEditor::record_that_is_gone_does_not_open()
{
    QCOMPARE(m_editor->Open(99, host::TFormMode::Edit), 0);
    QVERIFY(m_editor->Aborted());
    QVERIFY(!m_editor->isVisible());
    QCOMPARE(m_host->messages.Take(), u"ShowMessage(این واحد دیگر وجود ندارد.)"_s);
}

void TestEditor::stands_right_to_left()
{
    test::Drive(
        [&] { m_editor->Open(0, host::TFormMode::Edit); },
        [&](QWidget *screen) {
            QVERIFY(test::RightOf(test::Find(screen, u"PickerCode_EDT"_s), test::Find(screen, u"PickerName_LBL"_s)));
            QVERIFY(test::RightOf(test::Find(screen, u"Save_BTN"_s), test::Find(screen, u"Exit_BTN"_s)));
            test::Picture(*screen, u"tiny_editor"_s);
            test::Press(Qt::Key_Escape);
        });
}

REGISTER_TEST(TestEditor)
#include "tst_editor.moc"
