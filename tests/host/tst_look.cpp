// Whether what is written can be read, in the light look and in the dark one.

#include "host/look/icons.h"
#include "host/look/palette.h"
#include "host/look/theme.h"
#include "tests/support/test_main.h"

#include <QtTest>
#include <QtWidgets>

#include <cmath>

using host::Palette;

namespace {

double Luminance(const QColor &color)
{
    const auto linear = [](float channel) {
        return channel <= 0.03928F ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

double Contrast(const QColor &a, const QColor &b)
{
    const auto [darker, lighter] = std::minmax({Luminance(a), Luminance(b)});
    return (lighter + 0.05) / (darker + 0.05);
}

/// The ground that most of a widget is drawn in, and what stands out from it most.
std::pair<QColor, QColor> Drawn(QWidget &widget)
{
    constexpr int border = 8;
    constexpr int least = 20; // pixels: what is drawn, not how its edges are smoothed
    const QImage image = widget.grab(widget.rect().marginsRemoved({border, border, border, border})).toImage();
    QHash<QRgb, int> counts;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            ++counts[image.pixel(x, y)];
    const auto most = std::max_element(counts.cbegin(), counts.cend());
    QColor words = most.key();
    for (const auto &[color, count] : counts.asKeyValueRange())
        if (count >= least && Contrast(color, most.key()) > Contrast(words, most.key()))
            words = color;
    return {QColor(most.key()), words};
}

} // namespace

class TestLook : public QObject
{
    Q_OBJECT

private slots:
    void wordsStandOut_data();
    void wordsStandOut();
    void controlsCanBeRead_data();
    void controlsCanBeRead();
    void lookChangesWhileWindowsAreOpen();
    void cleanup();
};

void TestLook::wordsStandOut_data()
{
    QTest::addColumn<QColor>("words");
    QTest::addColumn<QColor>("ground");
    for (const bool dark : {false, true}) {
        const Palette &look = dark ? Palette::Dark() : Palette::Light();
        const auto add = [&](const char *name, const QColor &words, std::initializer_list<QColor> grounds) {
            for (const QColor &ground : grounds)
                QTest::addRow("%s, %s on %s", dark ? "dark" : "light", name, qPrintable(ground.name()))
                    << words << ground;
        };
        add("text", look.Ink,
            {look.Ground, look.Surface, look.Panel, look.Footer, look.Head, look.Stripe, look.ReadOnly, look.Current,
             look.AccentSoft});
        add("captions", look.InkSoft, {look.Ground, look.Surface, look.Panel, look.Footer, look.ReadOnly});
        add("active", look.AccentInk, {look.Ground, look.Panel, look.AccentSoft});
        add("refusals", look.Danger, {look.Ground, look.Surface, look.Panel, look.Footer});
        add("hints", look.Placeholder, {look.Surface, look.ReadOnly});
        add("disabled", look.Disabled, {look.Ground, look.Surface, look.Panel, look.Footer, look.ReadOnly});
        add("white", Qt::white, {look.Fill, look.Bar});
    }
}

void TestLook::wordsStandOut()
{
    QFETCH(QColor, words);
    QFETCH(QColor, ground);
    const double contrast = Contrast(words, ground);
    QVERIFY2(contrast >= 4.5, qPrintable(QString::number(contrast)));
}

void TestLook::controlsCanBeRead_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<std::function<QWidget *()>>("make");
    const QString words = u"کالا"_s;
    const auto made = [](QWidget *widget, const char *property, bool enabled = true) {
        widget->setProperty(property, true);
        widget->setEnabled(enabled);
        return widget;
    };
    const auto edit = [words](bool readOnly, bool hint) {
        auto *field = new QLineEdit(hint ? QString() : words);
        field->setPlaceholderText(words);
        field->setReadOnly(readOnly);
        return field;
    };
    const std::pair<const char *, std::function<QWidget *()>> controls[] = {
        {"hint of an edit", [=] { return edit(false, true); }},
        {"hint of a locked edit", [=] { return edit(true, true); }},
        {"locked edit", [=] { return edit(true, false); }},
        {"disabled edit", [=] { return made(edit(false, false), "", false); }},
        {"disabled caption", [=] { return made(new QLabel(words), "", false); }},
        {"soft caption", [=] { return made(new QLabel(words), "soft"); }},
        {"refusal", [=] { return made(new QLabel(words), "fault"); }},
        {"figure", [=] { return made(new QLabel(words), "accent"); }},
        {"button", [=] { return new QPushButton(words); }},
        {"disabled button", [=] { return made(new QPushButton(words), "", false); }},
        {"main button", [=] { return made(new QPushButton(words), "primary"); }},
        {"disabled main button", [=] { return made(new QPushButton(words), "primary", false); }},
        {"disabled check box", [=] { return made(new QCheckBox(words), "", false); }},
        {"bubble",
         [=] {
             auto *bubble = new QToolButton;
             bubble->setText(words);
             return made(bubble, "bubble");
         }},
        {"disabled command of a menu",
         [=] {
             auto *menu = new QMenu;
             menu->addAction(words)->setEnabled(false);
             return menu;
         }},
    };
    for (const bool dark : {false, true})
        for (const auto &[name, make] : controls)
            QTest::addRow("%s, %s", dark ? "dark" : "light", name) << dark << make;
}

/// What the style sheet and the palette make of real controls.
void TestLook::controlsCanBeRead()
{
    QFETCH(bool, dark);
    QFETCH(std::function<QWidget *()>, make);
    host::theme::Apply(*qApp, dark ? host::theme::Look::Dark : host::theme::Look::Light);
    const std::unique_ptr<QWidget> control(make());
    control->setFont(host::theme::InterfaceFont(40));
    control->resize(control->sizeHint().expandedTo({160, 0}));
    const auto [ground, words] = Drawn(*control);
    QVERIFY2(Contrast(ground, words) >= 4.5, qPrintable(ground.name() + u' ' + words.name()));
    QCOMPARE(ground.lightnessF() < 0.5F, dark || (control->property("primary").toBool() && control->isEnabled()));
}

void TestLook::lookChangesWhileWindowsAreOpen()
{
    QWidget window;
    window.resize(100, 100);
    QToolButton button(&window);
    button.setGeometry(10, 10, 80, 80);
    button.setIcon(host::Icon(host::Glyph::Goods));
    button.setIconSize({60, 60});
    for (const bool dark : {false, true, false}) {
        host::theme::Apply(*qApp, dark ? host::theme::Look::Dark : host::theme::Look::Light);
        const Palette &look = dark ? Palette::Dark() : Palette::Light();
        QCOMPARE(Drawn(window), std::pair(look.Ground, look.Ink));
    }
}

/// The other tests of this program stand in the toolkit's own style.
void TestLook::cleanup()
{
    qApp->setStyleSheet({});
    QApplication::setPalette(QPalette());
    QApplication::setStyle(u"fusion"_s);
    QApplication::setFont(QFont());
}

REGISTER_TEST(TestLook)
#include "tst_look.moc"
