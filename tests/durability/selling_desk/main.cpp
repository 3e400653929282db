// A desk that buys serials, sells some of them, moves, returns and divides others, and deletes documents, as fast as it
// can; told "divide", one that does little but divide.
// Prints a line once the first one is saved.

#include "desk/application/connections.h"
#include "tests/desk/document_fixture.h"
#include "tests/gooddetail/division_fixture.h"

#include <QCoreApplication>

#include <cstdio>
#include <utility>

namespace {

constexpr int Good = 200001;
constexpr int Store = 4;
constexpr int Pieces = 12;

/// Saves a document of one line whose details are the range; its code.
int Save(desk::DeskHost &desk, test::RangeScreens &screens, int kind, host::TSerialRange range, int answers = 0)
{
    const desk::DocumentKind &of = desk::DocumentKindOf(kind);
    desk::DocumentStore store(desk.host);
    desk::Document document;
    document.Kind = kind;
    document.Code = store.NewCode(of);
    document.Date = u"1405/09/01"_s;
    document.StoreCode = Store;
    document.ToStoreCode = of.IsTransfer() ? 1 : 0;
    document.AnswersCode = answers;
    desk::DocumentLine line;
    line.OperationRow = 1;
    line.Good.Code = Good;
    line.StoreCode = Store;
    screens.range = range;
    desk::LineDetailsOpening opening{};
    opening.Line = {Good, Store, 1, static_cast<quint8>(kind), of.answers != 0, document.Code, 1, answers};
    line.Amount1 =
        (of.direction < 0 ? screens.ExitGoodDetail(opening) : screens.EnterGoodDetail(opening)).value().Amount1;
    document.Lines << line;
    store.Save(document);
    return document.Code;
}

/// Divides a serial in three, one of the parts again, changes the first division, and takes the second one back.
void Divide(host::Host &host, qint64 serial)
{
    test::Divider divider(host);
    divider.store = Store;
    const auto save = [&](const QString &unit, host::Quantity amount, int pieces) {
        divider.header.Date = u"1405/09/01"_s; // it was bought on that day
        divider.Retake(1, Good, unit, {amount}, {{amount, 0, 0, 0, 0, host::Quantity(pieces)}});
        if (const QString refused = divider.Save(); !refused.isEmpty())
            qFatal("%s", qPrintable(refused));
        return divider.header.Code;
    };
    const QString text = QString::number(serial);
    divider.Open();
    const int first = save(text, 1, 3);
    divider.Open();
    const int second = save(text + u"/2"_s, 0.3L, 2);
    if (!divider.Delete(second).isEmpty())
        qFatal("the second division stays");
    divider.Open(first, host::TFormMode::Edit);
    save(text, 1, 4);
}

/** Until it is killed. */
void Sell(const QString &file, const QString &how)
{
    const host::Connections connections{desk::OpenEmbedded(file, u"main"_s), desk::OpenEmbedded(file, u"list"_s),
                                        desk::OpenEmbedded(file, u"scales"_s)};
    test::FakeMessages messages;
    desk::DeskHost desk(connections, &messages);
    desk.settings.SignIn(1);
    test::RangeScreens screens(desk.host);
    // Behind every serial of the desks that were killed.
    qint64 next = host::Scalar(connections.ADOConnection1,
                               u"SELECT ISNULL(MAX(TRY_CAST([Value] AS bigint)), 0) FROM GoodDetailValueDetails"_s)
                      .toLongLong() +
                  1;
    for (bool first = true;; next += Pieces) {
        Save(desk, screens, 1, {next, next + Pieces - 1});
        const auto tell = [&first] {
            if (!std::exchange(first, false))
                return;
            std::puts("saved");
            std::fflush(stdout);
        };
        if (how == u"divide") {
            for (qint64 serial = next; serial < next + Pieces; ++serial) {
                Divide(desk.host, serial);
                tell();
            }
            continue;
        }
        tell();
        const int sold = Save(desk, screens, 2, {next, next + 5});
        Save(desk, screens, 4, {next, next + 1}, sold);
        Save(desk, screens, 6, {next + 8, next + 10});
        const int second = Save(desk, screens, 2, {next + 6, next + 7});
        desk::DocumentStore store(desk.host);
        store.Delete(*store.Get(2, second));
    }
}

} // namespace

int main(int argc, char *argv[])
{
    try {
        const QCoreApplication application(argc, argv);
        Sell(QCoreApplication::arguments().value(1), QCoreApplication::arguments().value(2));
    } catch (const std::exception &error) {
        std::fputs(error.what(), stderr);
    }
    return 1;
}
