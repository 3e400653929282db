// The rules of the house that no compiler keeps: which folder may include which, what a form may say, and what the
// built module shows to the outside.

#include <QDirIterator>
#include <QDomDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

#include "tests/support/test_main.h"

namespace {

const QString Root = QStringLiteral(GOODS_SOURCES);

QString contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

QStringList filesUnder(const QString &folder, const QStringList &names)
{
    QStringList found;
    QDirIterator files(Root + u'/' + folder, names, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        found << files.next();
    found.sort();
    return found;
}

} // namespace

class TestHouse : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void arrowsRunOneWay_data();
    void arrowsRunOneWay();
    void formsKeepTheRules();
    void moduleShowsItsExportsOnly();
};

void TestHouse::arrowsRunOneWay_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QStringList>("allowed");
    QTest::newRow("host") << u"host"_qs << QStringList{u"host/"_qs};
    QTest::newRow("host data") << u"host/data"_qs << QStringList{u"host/data/"_qs, u"host/host_export.h"_qs};
    QTest::newRow("tsql") << u"tsql"_qs << QStringList{u"tsql/"_qs, u"host/data/row_feed.h"_qs};
    QTest::newRow("data") << u"data"_qs
                          << QStringList{u"data/"_qs, u"host/data/"_qs, u"host/services/"_qs, u"host/host"_qs};
    QTest::newRow("screens") << u"screens"_qs << QStringList{u"screens/"_qs, u"data/"_qs, u"host/"_qs};
    QTest::newRow("goods-sql") << u"tools"_qs << QStringList{u"tools/"_qs, u"tsql/"_qs, u"host/data/odbc_text.h"_qs};
    QTest::newRow("detail types") << u"detailtypes"_qs << QStringList{u"detailtypes/"_qs, u"host/"_qs};
    QTest::newRow("entry") << u"entry"_qs
                           << QStringList{u"entry/"_qs, u"screens/"_qs, u"detailtypes/"_qs, u"data/"_qs, u"host/"_qs};
    QTest::newRow("desk") << u"desk"_qs << QStringList{u"desk/"_qs, u"host/"_qs, u"tsql/"_qs, u"entry/exports.h"_qs};
    QTest::newRow("outside host") << u"tests/outside_host"_qs
                                  << QStringList{u"tests/outside_host/"_qs, u"host/"_qs, u"entry/exports.h"_qs};
}

void TestHouse::arrowsRunOneWay()
{
    QFETCH(QString, folder);
    QFETCH(QStringList, allowed);
    static const QRegularExpression include(QStringLiteral("^\\s*#include \"([^\"]+/[^\"]+)\""),
                                            QRegularExpression::MultilineOption);
    const QStringList files = filesUnder(folder, {u"*.h"_qs, u"*.cpp"_qs});
    QVERIFY2(!files.isEmpty(), qPrintable(folder));
    QStringList wrong;
    for (const QString &file : files) {
        auto matches = include.globalMatch(contents(file));
        while (matches.hasNext()) {
            const QString target = matches.next().captured(1);
            const bool known = QFileInfo::exists(Root + u'/' + target);
            const bool fine = std::any_of(allowed.cbegin(), allowed.cend(),
                                          [&](const QString &prefix) { return target.startsWith(prefix); });
            if (known && !fine)
                wrong << file.mid(Root.size() + 1) + u" includes "_qs + target;
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
}

void TestHouse::formsKeepTheRules()
{
    QStringList wrong;
    int forms = 0;
    for (const QString &folder : {u"host"_qs, u"screens"_qs, u"detailtypes"_qs, u"desk"_qs}) {
        for (const QString &file : filesUnder(folder, {u"*.ui"_qs})) {
            ++forms;
            const QString name = file.mid(Root.size() + 1);
            const QString text = contents(file);
            if (text.contains(u"layoutDirection"))
                wrong << name + u": the direction is the application's, not a form's"_qs;
            if (text.contains(u"<connections>") && !text.contains(u"<connections/>"))
                wrong << name + u": connections belong in the class"_qs;

            QDomDocument document;
            QVERIFY2(document.setContent(text), qPrintable(name));
            QSet<QString> widgets;
            const QDomNodeList all = document.elementsByTagName(u"widget"_qs);
            for (int i = 0; i < all.size(); ++i)
                widgets << all.at(i).toElement().attribute(u"name"_qs);
            const QDomNodeList stops = document.elementsByTagName(u"tabstop"_qs);
            for (int i = 0; i < stops.size(); ++i) {
                if (!widgets.contains(stops.at(i).toElement().text()))
                    wrong << name + u": tab stop without a control: "_qs + stops.at(i).toElement().text();
            }
            if (stops.isEmpty() && text.count(u"_EDT\"") > 1)
                wrong << name + u": has edits but no tab order"_qs;
            for (int i = 0; i < all.size(); ++i) {
                const QDomElement widget = all.at(i).toElement();
                if (widget.attribute(u"class"_qs) != u"QLabel")
                    continue;
                QString caption;
                QString buddy;
                for (QDomElement p = widget.firstChildElement(u"property"_qs); !p.isNull();
                     p = p.nextSiblingElement(u"property"_qs)) {
                    if (p.attribute(u"name"_qs) == u"text")
                        caption = p.text();
                    if (p.attribute(u"name"_qs) == u"buddy")
                        buddy = p.text().trimmed();
                }
                if (caption.contains(u'&') && buddy.isEmpty())
                    wrong << name + u": label with a shortcut but no buddy: "_qs + caption;
                if (!buddy.isEmpty() && !widgets.contains(buddy))
                    wrong << name + u": buddy that is no control: "_qs + buddy;
            }
        }
    }
    QVERIFY(forms > 0);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
}

void TestHouse::moduleShowsItsExportsOnly()
{
    QSet<QString> declared;
    static const QRegularExpression function(QStringLiteral("^GOODS_EXPORT [^(]*?(\\w+)\\("),
                                             QRegularExpression::MultilineOption);
    auto matches = function.globalMatch(contents(Root + u"/entry/exports.h"_qs));
    while (matches.hasNext())
        declared << matches.next().captured(1);
    QVERIFY(declared.size() >= 14);

    QProcess nm;
    nm.start(u"nm"_qs, {u"-D"_qs, u"--defined-only"_qs, u"--format=posix"_qs, QStringLiteral(GOODS_MODULE)});
    QVERIFY2(nm.waitForFinished(), "nm");
    QCOMPARE(nm.exitCode(), 0);
    QSet<QString> visible;
    for (const QString &line : QString::fromUtf8(nm.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts))
        visible << line.section(u' ', 0, 0).section(u'@', 0, 0);
    QCOMPARE(visible, declared);
}

REGISTER_TEST(TestHouse)
#include "tst_house.moc"
