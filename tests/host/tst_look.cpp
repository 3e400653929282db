// Whether what is written can be read, in the light look and in the dark one.

#include "host/look/palette.h"
#include "tests/support/test_main.h"

#include <QtTest>

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

} // namespace

class TestLook : public QObject
{
    Q_OBJECT

private slots:
    void wordsStandOut_data();
    void wordsStandOut();
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

REGISTER_TEST(TestLook)
#include "tst_look.moc"
