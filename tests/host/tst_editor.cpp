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
#include <QFormLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSqlError>
#include <QToolButton>
#include <QtTest>

#include <memory>
#include <optional>

namespace {

/// Items that are out of reach.
struct LostEntities : test::FakeEntities
{
    [[noreturn]] static void Fail() { throw host::DatabaseError(QSqlError({}, {}, QSqlError::ConnectionError), {}); }
    int Select_GroupList(host::TSoftwarePart, const QString &) override { Fail(); }
    std::optional<host::Entity> Find(host::TSoftwarePart, int) override { Fail(); }
    QList<host::Entity> List(host::TSoftwarePart, const QString &) override { Fail(); }
};

/// The smallest editor: its rows are a list, and writing them may fail.
class TinyEditor : public host::TBaseGet_New_FRM
{
    Q_OBJECT

public:
    explicit TinyEditor(host::Host &host) : TBaseGet_New_FRM(host, host::TSoftwarePart::Units)
    {
        SetTitle(u"واحد"_s);
        auto *form = new QFormLayout(Content());
        Add(form, &name, u"Name_EDT"_s);
        Add(form, &unit, u"Unit_Entity"_s);
        Add(form, &comment, u"Comment_EDT"_s);
        Add(form, &weight, u"Weight_EDT"_s);
        unit->SetSource(host.entities, host::TSoftwarePart::Units);
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
        comment->clear();
        unit->Clear();
    }
    void Load() override { name->setText(rows.at(Key().toInt())); }
    std::vector<host::Check> Validate() override { return {}; }
    void Write() override
    {
        if (refusal)
            throw *refusal;
        rows << name->text();
        SetKey(int(rows.size()) - 1);
    }
    QWidget *FirstControl() const override { return name; }

    QStringList rows{u"عدد"_s, u"کارتن"_s};
    std::optional<host::DatabaseError> refusal;
    QLineEdit *name;
    host::EntityPicker *unit;
    QPlainTextEdit *comment;
    host::NumericEdit *weight;
};

} // namespace

class TestEditor : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void database_error_leaves_the_input_data();
    void database_error_leaves_the_input();
    void picker_out_of_reach_data();
    void picker_out_of_reach();
    void pasted_beyond_the_limit();

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

REGISTER_TEST(TestEditor)
#include "tst_editor.moc"
