// A desk that buys serials, sells some of them, moves and returns others, and deletes documents, as fast as it can.
// Prints a line once the first one is saved.

#include "desk/application/connections.h"
#include "tests/desk/document_fixture.h"

#include <QCoreApplication>

#include <cstdio>

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

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    const QString file = application.arguments().value(1);
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
    for (bool first = true;; first = false, next += Pieces) {
        Save(desk, screens, 1, {next, next + Pieces - 1});
        if (first) {
            std::puts("saved");
            std::fflush(stdout);
        }
        const int sold = Save(desk, screens, 2, {next, next + 5});
        Save(desk, screens, 4, {next, next + 1}, sold);
        Save(desk, screens, 6, {next + 8, next + 10});
        const int second = Save(desk, screens, 2, {next + 6, next + 7});
        desk::DocumentStore store(desk.host);
        store.Delete(*store.Get(2, second));
    }
}
