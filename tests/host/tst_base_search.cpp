#include "host/controls/numeric_edit.h"
#include "host/controls/tags_panel.h"
#include "host/data/sql_text.h"
#include "host/screens/base_search.h"
#include "host/screens/search_manager.h"
#include "tests/support/modal.h"
#include "tests/support/test_host.h"
#include "tests/support/test_main.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QtTest>

namespace {

/// A search with one criterion of each kind, and one of its own: how often "+" was pressed.
class TinySearch : public host::TBaseSearch_FRM
{
    Q_OBJECT

public:
    explicit TinySearch(host::Host &host) : TBaseSearch_FRM(host, host::TSoftwarePart::Goods)
    {
        SetTitle(u"جستجوی پیشرفته"_s);
        auto *form = new QFormLayout(Content());
        Add(form, &name, u"Name_EDT"_s, u"نام :"_s);
        Add(form, &kind, u"Kind_CMB"_s, u"نوع :"_s);
        Add(form, &price, u"Price_EDT"_s, u"قیمت از :"_s);
        Add(form, &hidden, u"Hidden_CHK"_s, {});
        Add(form, &tags, u"Tags"_s, u"برچسب ها :"_s);
        hidden->setText(u"نمایش داده نشوند"_s);
        tags->SetAvailable({{1, u"تازه"_s, Qt::green}, {2, u"حراج"_s, Qt::red}});
        BindKey(Qt::Key_F8, u"+"_s, [this] { ++pressed; });
        SearchManager().SetCustomFilter([this] {
            QStringList parameters{u"@Name = "_s + host::QuotedStr(name->text()),
                                   u"@Kind = "_s + kind->currentData().toString()};
            if (hidden->isChecked())
                parameters << u"@DisplayType = 0"_s;
            if (pressed > 0)
                parameters << u"@Pressed = %1"_s.arg(pressed);
            return parameters;
        });
    }

    template <typename Input>
    void Add(QFormLayout *form, Input **input, const QString &objectName, const QString &caption)
    {
        *input = new Input(Content());
        (*input)->setObjectName(objectName);
        form->addRow(caption, *input);
    }

    bool broken = false;
    int pressed = 0;
    QLineEdit *name;
    QComboBox *kind;
    host::NumericEdit *price;
    QCheckBox *hidden;
    host::TagsPanel *tags;

protected:
    void FormShow() override
    {
        kind->clear();
        kind->addItem(u"هيچکدام"_s, 0);
        kind->addItem(u"مواد"_s, 7);
        kind->addItem(u"ساخته"_s, 3);
        TBaseSearch_FRM::FormShow();
    }
    void Select() override
    {
        if (broken)
            throw host::RefusedText(u"نام"_s, name->text());
        SetGeneralFilter(host::DeleteParam(GeneralFilter(), u"@RequestedCol"));
        SetGeneralFilter(host::ADDParam(GeneralFilter(), u"@RequestedCol="_s + host::QuotedStr(u"Code,Name")));
        if (name->text() != u"؟")
            TBaseSearch_FRM::Select();
    }
    void SaveChoices(QJsonObject &choices) const override { choices.insert(u"pressed"_s, pressed); }
    void RestoreChoices(const QJsonObject &choices) override { pressed = choices.value(u"pressed").toInt(); }
    void ClearChoices() override { pressed = 0; }
};

/// What the criteria are at the moment.
QString Shown(const TinySearch &search)
{
    return QStringList{search.name->text(),      search.kind->currentText(),
                       search.price->text(),     search.hidden->isChecked() ? u"x"_s : u""_s,
                       search.tags->CodesText(), QString::number(search.pressed)}
        .join(u'|');
}

const QString Nothing = u"|هيچکدام|||"_s + u"|0"_s;

} // namespace

/// The base of search dialogs, driven by keys.
class TestBaseSearch : public QObject
{
    Q_OBJECT

private slots:
    void selects();
    void remembersPerUser();
    void emptiesAndGivesUp();
    void staysWhenRefused();

private:
    /// Opens, does `keys` and gives the modal result.
    static int Open(TinySearch &search, const std::function<void()> &keys)
    {
        int result = -1;
        test::Drive([&] { result = search.ShowModally(); }, [&](QWidget *) { keys(); });
        return result;
    }
    static void Choose(TinySearch &search)
    {
        test::Type(u"چای 'سبز'"_s);
        test::Press(Qt::Key_Return);
        test::Press(Qt::Key_Down);
        test::Press(Qt::Key_Return);
        test::Type(u"۱۲۵۰"_s);
        test::Press(Qt::Key_Enter);
        test::Press(Qt::Key_Space);
        test::Press(Qt::Key_F8);
        search.tags->SetCodes({2});
    }
    const QString m_chosen = u"چای 'سبز'|مواد|"_s;
};

void TestBaseSearch::selects()
{
    test::TestHost host;
    TinySearch search(host);
    const QString expected = u"@Name = 'چای ''سبز''',@Kind = 7,@DisplayType = 0,@Pressed = 1,"
                             "@RequestedCol='Code,Name'"_s;
    QCOMPARE(Open(search,
                  [&] {
                      QCOMPARE(test::Focused(), u"Name_EDT"_s);
                      Choose(search);
                      QVERIFY(test::RightOf(test::Find(&search, u"Select_BTN"_s), test::Find(&search, u"EXit_BTN"_s)));
                      test::Picture(search, u"search"_s);
                      test::Press(Qt::Key_F3);
                  }),
             1);
    QCOMPARE(search.GeneralFilter(), expected);
    // Selecting again, by Enter on the button, adds nothing twice.
    QCOMPARE(Open(search,
                  [&] {
                      test::Focus(&search, u"Select_BTN"_s);
                      test::Press(Qt::Key_Return);
                  }),
             1);
    QCOMPARE(search.GeneralFilter(), expected);
}

void TestBaseSearch::remembersPerUser()
{
    test::TestHost host;
    QString chosen;
    {
        TinySearch search(host);
        Open(search, [&] {
            Choose(search);
            chosen = Shown(search);
            test::Press(Qt::Key_F3);
        });
        QVERIFY(chosen.startsWith(m_chosen) && chosen.endsWith(u"|x|2|1"));
        Open(search, [] {
            test::Type(u"قند"_s); // given up: nothing of it is kept
            test::Press(Qt::Key_Escape);
        });
    }
    TinySearch search(host); // on the next day
    const auto shown = [&](int user) {
        QString criteria;
        host.settings.user.Code = user;
        Open(search, [&] {
            criteria = Shown(search);
            test::Press(Qt::Key_Escape);
        });
        return criteria;
    };
    QCOMPARE(shown(7), chosen);
    // States are the user's own: the host gives those of the one who is signed in.
    const auto states = std::exchange(host.settings.states, {});
    QCOMPARE(shown(8), Nothing);
    host.settings.states = states;
    QCOMPARE(shown(7), chosen);
}

void TestBaseSearch::emptiesAndGivesUp()
{
    test::TestHost host;
    TinySearch search(host);
    Open(search, [&] {
        Choose(search);
        test::Press(Qt::Key_F3);
    });
    const QString filter = search.GeneralFilter();
    QCOMPARE(Open(search,
                  [&] {
                      test::Focus(&search, u"Price_EDT"_s);
                      test::Press(Qt::Key_F7);
                      QCOMPARE(Shown(search), Nothing);
                      QCOMPARE(test::Focused(), u"Name_EDT"_s);
                      test::Press(Qt::Key_Escape);
                  }),
             0);
    QCOMPARE(search.GeneralFilter(), filter);
    Open(search, [&] {
        QVERIFY(Shown(search).startsWith(m_chosen));
        test::Press(Qt::Key_F7);
        test::Press(Qt::Key_F3);
    });
    QCOMPARE(search.GeneralFilter(), u"@Name = '',@Kind = 0,@RequestedCol='Code,Name'"_s);
    Open(search, [&] {
        QCOMPARE(Shown(search), Nothing);
        test::Press(Qt::Key_Escape);
    });
}

void TestBaseSearch::staysWhenRefused()
{
    test::TestHost host;
    TinySearch search(host);
    Open(search, [&] {
        test::Type(u"قند"_s);
        search.broken = true;
        test::Press(Qt::Key_F3);
        QCOMPARE(host.messages.TakeAll().size(), 1);
        search.broken = false;
        QTest::keyClick(search.name, Qt::Key_Home);
        search.name->setText(u"؟"_s);
        search.activateWindow();
        test::Press(Qt::Key_F3);
        QVERIFY(search.IsShowing());
        QCOMPARE(Shown(search).section(u'|', 0, 0), u"؟"_s);
        QCOMPARE(search.GeneralFilter(), QString());
        test::Press(Qt::Key_Escape);
    });
}

REGISTER_TEST(TestBaseSearch)
#include "tst_base_search.moc"
