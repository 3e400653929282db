// The rules of the house that no compiler keeps: which folder may include which, what a form may say, and what the
// built module shows to the outside.

#include "tests/support/test_main.h"

#include <QDirIterator>
#include <QDomDocument>
#include <QProcess>
#include <QRegularExpression>
#include <QTest>

namespace {

const QString Root = QString::fromUtf8(GOODS_SOURCES);

QString Contents(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("cannot read %s", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

QStringList FilesUnder(const QString &folder, const QStringList &names)
{
    QStringList found;
    QDirIterator files(Root + u'/' + folder, names, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext())
        found << files.next();
    found.sort();
    return found;
}

QStringList Captured(const QString &pattern, const QString &text)
{
    QStringList found;
    for (auto matches = QRegularExpression(pattern).globalMatch(text); matches.hasNext();)
        found << matches.next().captured(1);
    return found;
}

QString Page(const QString &name)
{
    return Root + u"/docs/guide/"_s + name + u".md"_s;
}

/// All that the program may say, each literal in one piece.
QString Sources(const QStringList &folders)
{
    QString text;
    for (const QString &folder : folders)
        for (const QString &file : FilesUnder(folder, {u"*.h"_s, u"*.cpp"_s}))
            text += Contents(file);
    return text.replace(QRegularExpression(u"\"(_s)?\\s*\n\\s*u?\""_s), {}).simplified();
}

const QStringList Rooms{u"screens"_s, u"detailtypes"_s, u"gooddetail"_s, u"division"_s, u"desk"_s};

} // namespace

class TestHouse : public QObject
{
    Q_OBJECT

private slots:
    void arrowsRunOneWay_data();
    void arrowsRunOneWay();
    void screensBuildNoStatement();
    void everyErrorHasItsText();
    void formsKeepTheRules();
    void guideKnowsEveryScreen();
    void guideLeadsSomewhere();
    void guideQuotesWhatIsSaid();
    void moduleShowsItsExportsOnly();
};

void TestHouse::arrowsRunOneWay_data()
{
    QTest::addColumn<QStringList>("allowed");
    const std::pair<const char *, const char16_t *> arrows[] = {
        {"host", u"host/"},
        {"host/data", u"host/data/ host/host_export.h"},
        {"host/services", u"host/services/ host/data/ host/host_export.h"},
        {"host/look", u"host/look/ host/host_export.h"},
        {"host/controls", u"host/controls/ host/look/ host/data/ host/services/ host/host"},
        {"tsql", u"tsql/ host/data/row_feed.h"},
        {"tsql/values", u"tsql/values/"},
        {"tsql/text", u"tsql/text/ tsql/values/"},
        {"tsql/parse", u"tsql/parse/ tsql/text/ tsql/values/"},
        {"tsql/write", u"tsql/write/ tsql/parse/ tsql/text/ tsql/values/"},
        {"tsql/functions", u"tsql/functions/ tsql/write/catalogue.h tsql/values/"},
        {"tsql/run", u"tsql/run/ tsql/functions/ tsql/write/ tsql/parse/ tsql/text/ tsql/values/"},
        {"tsql/qt", u"tsql/qt/ tsql/run/ tsql/values/ host/data/row_feed.h"},
        {"tools", u"tools/ tsql/ desk/database/ host/data/odbc_text.h"},
        {"rules", u"rules/ host/data/"},
        {"data", u"data/ rules/ host/data/ host/services/ host/host"},
        {"screens", u"screens/ gooddetail/ data/ rules/ host/"},
        {"detailtypes", u"detailtypes/ rules/ host/"},
        {"gooddetail", u"gooddetail/ rules/ host/ screens/shared/leave_watch.h"},
        {"division",
         u"division/ gooddetail/serial_dm.h gooddetail/amount_ gooddetail/typed_inputs.h gooddetail/opening_texts.h "
         "gooddetail/good_detail_records.h rules/ host/ screens/shared/leave_watch.h"},
        {"entry", u"entry/ screens/ detailtypes/ gooddetail/ division/ data/ rules/ host/"},
        {"desk/database", u"desk/database/ tsql/"},
        {"desk", u"desk/ rules/ host/ tsql/ entry/exports.h"},
        {"tests/outside_host", u"tests/outside_host/ tests/support/test_host.h host/ entry/exports.h"},
    };
    for (const auto &[folder, allowed] : arrows)
        QTest::newRow(folder) << QString::fromUtf16(allowed).split(u' ');
}

void TestHouse::arrowsRunOneWay()
{
    QFETCH(QStringList, allowed);
    const QString folder = QString::fromUtf8(QTest::currentDataTag());
    static const QRegularExpression include(u"^\\s*#include \"([^\"]+/[^\"]+)\""_s,
                                            QRegularExpression::MultilineOption);
    const QStringList files = FilesUnder(folder, {u"*.h"_s, u"*.cpp"_s});
    QVERIFY2(!files.isEmpty(), qPrintable(folder));
    QStringList wrong;
    for (const QString &file : files) {
        auto matches = include.globalMatch(Contents(file));
        while (matches.hasNext()) {
            const QString target = matches.next().captured(1);
            const bool known = QFileInfo::exists(Root + u'/' + target);
            const bool fine = std::any_of(allowed.cbegin(), allowed.cend(),
                                          [&](const QString &prefix) { return target.startsWith(prefix); });
            if (known && !fine)
                wrong << file.mid(Root.size() + 1) + u" includes "_s + target;
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
}

void TestHouse::screensBuildNoStatement()
{
    static const QRegularExpression literal(u"\"(\\\\.|[^\"\\\\\n])*\""_s);
    static const QRegularExpression statement(u"\\b(select|insert|update|delete|exec)\\b"_s,
                                              QRegularExpression::CaseInsensitiveOption);
    QStringList wrong;
    for (const QString &folder :
         {u"screens"_s, u"detailtypes"_s, u"gooddetail"_s, u"division"_s, u"desk/documents"_s}) {
        for (const QString &file : FilesUnder(folder, {u"*.h"_s, u"*.cpp"_s})) {
            if (file.contains(u"/detail_types_dm") || file.contains(u"/serial_dm") || file.contains(u"/division_dm") ||
                file.contains(u"/division_save") || (folder == u"desk/documents" && !Contents(file).contains(u"_FRM")))
                continue;
            auto texts = literal.globalMatch(Contents(file));
            while (texts.hasNext()) {
                const QString text = texts.next().captured();
                if (text.contains(statement))
                    wrong << file.mid(Root.size() + 1) + u": "_s + text;
            }
        }
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
}

/// An error without a text would end the program at the moment of its first refusal.
void TestHouse::everyErrorHasItsText()
{
    const QString texts = Contents(Root + u"/tsql/values/error_texts.cpp"_s);
    static const QRegularExpression thrown(u"(?:Error\\(|refusal\\(|refusal = \\{|return \\{|bad\\(\\{)(?:[^;\"]*\\? )?"
                                           "(\\d{3,5}|wording::\\w+)(?: : (\\d{3,5}))?[,)}]"_s);
    QSet<QString> named;
    for (const QString &file : FilesUnder(u"tsql"_s, {u"*.h"_s, u"*.cpp"_s})) {
        for (auto matches = thrown.globalMatch(Contents(file)); matches.hasNext();) {
            const QStringList found = matches.next().capturedTexts().mid(1);
            named += QSet<QString>(found.cbegin(), found.cend());
        }
    }
    named.remove({});
    QVERIFY2(named.size() > 100, qPrintable(QStringList(named.values()).join(u' ')));
    for (const QString &name : std::as_const(named))
        QVERIFY2(texts.contains(QRegularExpression(u"\\{%1,\\s+u\""_s.arg(name))), qPrintable(name));
}

void TestHouse::formsKeepTheRules()
{
    QStringList wrong;
    int forms = 0;
    for (const QString &folder :
         {u"host"_s, u"screens"_s, u"detailtypes"_s, u"gooddetail"_s, u"division"_s, u"desk"_s}) {
        for (const QString &file : FilesUnder(folder, {u"*.ui"_s})) {
            ++forms;
            const QString name = file.mid(Root.size() + 1);
            const QString text = Contents(file);
            if (text.contains(u"layoutDirection"))
                wrong << name + u": the direction is the application's, not a form's"_s;
            if (text.contains(u"<connections>") && !text.contains(u"<connections/>"))
                wrong << name + u": connections belong in the class"_s;

            QDomDocument document;
            QVERIFY2(document.setContent(text), qPrintable(name));
            QSet<QString> widgets;
            const QDomNodeList all = document.elementsByTagName(u"widget"_s);
            for (int i = 0; i < all.size(); ++i)
                widgets << all.at(i).toElement().attribute(u"name"_s);
            const QDomNodeList stops = document.elementsByTagName(u"tabstop"_s);
            for (int i = 0; i < stops.size(); ++i) {
                if (!widgets.contains(stops.at(i).toElement().text()))
                    wrong << name + u": tab stop without a control: "_s + stops.at(i).toElement().text();
            }
            if (stops.isEmpty() && text.count(u"_EDT\"") > 1)
                wrong << name + u": has edits but no tab order"_s;
            for (int i = 0; i < all.size(); ++i) {
                const QDomElement widget = all.at(i).toElement();
                if (widget.attribute(u"class"_s) != u"QLabel")
                    continue;
                QString caption;
                QString buddy;
                for (QDomElement p = widget.firstChildElement(u"property"_s); !p.isNull();
                     p = p.nextSiblingElement(u"property"_s)) {
                    if (p.attribute(u"name"_s) == u"text")
                        caption = p.text();
                    if (p.attribute(u"name"_s) == u"buddy")
                        buddy = p.text().trimmed();
                }
                if (caption.contains(u'&') && buddy.isEmpty())
                    wrong << name + u": label with a shortcut but no buddy: "_s + caption;
                if (!buddy.isEmpty() && !widgets.contains(buddy))
                    wrong << name + u": buddy that is no control: "_s + buddy;
            }
        }
    }
    QVERIFY(forms > 0);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(u'\n')));
}

/// F1 names a screen by its class.
void TestHouse::guideKnowsEveryScreen()
{
    QStringList bases;
    QStringList screens;
    static const QRegularExpression derived(u"class (T\\w+_F(?:RM|rm)) : public (?:\\w+::)?(\\w+)"_s);
    for (auto matches = derived.globalMatch(Sources(Rooms)); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        screens << match.captured(1);
        bases << match.captured(2);
    }
    QVERIFY(screens.size() > 30);
    for (const QString &screen : std::as_const(screens))
        QVERIFY2(bases.contains(screen) || QFileInfo::exists(Page(screen)), qPrintable(screen));
}

/// Links and pictures of the guide exist, and whoever begins at the contents finds every page.
void TestHouse::guideLeadsSomewhere()
{
    QStringList reached{Page(u"index"_s)};
    for (qsizetype at = 0; at < reached.size(); ++at) {
        const QStringList targets = Captured(u"\\]\\(([^)]+)\\)"_s, Contents(reached.at(at)));
        for (const QString &target : targets) {
            const QString file = QDir::cleanPath(Root + u"/docs/guide/"_s + target);
            QVERIFY2(QFileInfo::exists(file), qPrintable(reached.at(at) + u": "_s + target));
            if (file.endsWith(u".md") && !reached.contains(file))
                reached << file;
        }
    }
    reached.sort();
    QCOMPARE(reached, FilesUnder(u"docs/guide"_s, {u"*.md"_s}));
}

/// A message that a page explains is one of the program's, letter by letter; "…" stands for what changes.
void TestHouse::guideQuotesWhatIsSaid()
{
    const QString said = Sources(Rooms + QStringList{u"data"_s, u"host"_s, u"entry"_s});
    int quoted = 0;
    for (const QString &page : FilesUnder(u"docs/guide"_s, {u"*.md"_s})) {
        const QString name = QFileInfo(page).baseName();
        if (name.startsWith(u'T') && !said.contains(u"class "_s + name))
            continue;
        for (QString message : Captured(u"\\*\\*«(.+?)»\\*\\*"_s, Contents(page))) {
            ++quoted;
            QStringList pieces = Captured(u"«([^«»]*)»"_s, message);
            pieces += message.replace(QRegularExpression(u"«[^«»]*»"_s), u"«…»"_s).split(u'…');
            for (const QString &piece : std::as_const(pieces))
                QVERIFY2(piece == u"…" || said.contains(piece.trimmed()), qPrintable(name + u": "_s + piece));
        }
    }
    QVERIFY(quoted > 100);
}

void TestHouse::moduleShowsItsExportsOnly()
{
    QSet<QString> declared;
    static const QRegularExpression function(u"^GOODS_EXPORT [^(]*?(\\w+)\\("_s, QRegularExpression::MultilineOption);
    auto matches = function.globalMatch(Contents(Root + u"/entry/exports.h"_s));
    while (matches.hasNext())
        declared << matches.next().captured(1);
    QCOMPARE(declared.size(), 22);

    QProcess nm;
    nm.start(u"nm"_s, {u"-D"_s, u"--defined-only"_s, u"--format=posix"_s, QString::fromUtf8(GOODS_MODULE)});
    QVERIFY2(nm.waitForFinished(), "nm");
    QCOMPARE(nm.exitCode(), 0);
    QSet<QString> visible;
    for (const QString &line : QString::fromUtf8(nm.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts))
        visible << line.section(u' ', 0, 0).section(u'@', 0, 0);
    QCOMPARE(visible, declared);
}

REGISTER_TEST(TestHouse)
#include "tst_house.moc"
