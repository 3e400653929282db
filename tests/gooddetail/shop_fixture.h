#pragma once

#include "desk/application/desk_host.h"
#include "gooddetail/serial_dm.h"
#include "tests/support/database.h"
#include "tests/support/fake_messages.h"

using namespace Qt::StringLiterals;

namespace fixture {

/// Goods 5001 and 5002 with a serial (1), a colour (2) and a text (3), 5003 with a colour alone; stores 1 and 2.
inline void Furnish(const test::Database &database)
{
    database.Exec(
        u"insert GoodGrpS(Code, Name) values (5, N'g') insert Units(Code, Name, [Type]) values (1, N'u', 0) "
        "insert Stores(Code, Name) values (1, N'a'), (2, N'b') insert GoodInf(Code, GrpCode, Name, Unit, Store) values "
        "(5001, 5, N'x', 1, 1), (5002, 5, N'y', 1, 1), (5003, 5, N'z', 1, 1) "
        "insert DetailTypes(Title, DetailType) values (N'سریال', 3), (N'رنگ', 1), (N'متن', 2) "
        "insert GoodDetailRelation(GoodCode, DetailID) values (5001, 3), (5001, 2), (5001, 1), (5002, 1), (5003, 2)"_s);
}

/// One desk with its services and a data module.
struct Desk
{
    explicit Desk(const test::Database &database) : Desk(database, database.Main()) {}
    Desk(const test::Database &database, const QSqlDatabase &main)
        : connection(main), desk({main, database.GoodsList(), database.Scales()}, &messages), serials(desk.host)
    {}

    static host::TDocumentLine Line(quint8 type, int code, int row = 1, int store = 1, int foreign = 0)
    {
        return {5001, store, 1, type, type == 4, code, row, foreign};
    }
    host::TDetailValues Details(const QString &serial, const QString &colour = u"red"_s)
    {
        return {{1, 3, 2}, {serial, {}, colour}};
    }
    host::TSerialBatch Batch(const host::TDocumentLine &line, const QString &serial, const QString &colour = u"red"_s)
    {
        return {serials.EnterGoodDetail_Table(), line, Details(serial, colour), {1, 0, 1}, {}};
    }
    host::TSerialBatch Range(const host::TDocumentLine &line, host::TSerialRange range,
                             const QString &colour = u"red"_s)
    {
        return {serials.EnterGoodDetail_Table(), line, Details({}, colour), {1, 0, 1}, range};
    }
    /// Enters a batch on the line of a document and saves it; what was left out as "serial:fate".
    QStringList Enter(const host::TDocumentLine &line, const host::TSerialBatch &batch)
    {
        serials.EnterGoodDetail_Open();
        desk.detailMovements.EnterGoodDetails_Load(serials.EnterGoodDetail_Table(), line);
        host::TSerialBatch ready = batch;
        ready.WorkingTable = serials.EnterGoodDetail_Table();
        const QStringList left = Left(desk.serialBatches.EnterSerials(ready));
        desk.detailMovements.EnterGoodDetails_Keep(serials.EnterGoodDetail_Table(), line);
        return left + Save(line);
    }
    QStringList Exit(const host::TDocumentLine &line, host::TSerialRange range)
    {
        desk.detailMovements.ExitGoodDetails_Fill(line);
        desk.serialBatches.ChooseSerials(line, range, {1});
        desk.detailMovements.ExitGoodDetails_Keep(line);
        return Save(line);
    }
    QStringList Save(const host::TDocumentLine &line)
    {
        return Told(desk.detailMovements.GoodDetailsOperation_Save(line.OperationType, line.OperationCode));
    }
    QStringList Delete(const host::TDocumentLine &line)
    {
        return Told(desk.detailMovements.GoodDetailsOperation_Delete(line.OperationType, line.OperationCode, 0));
    }
    static QStringList Told(const QList<host::TDetailRefusal> &refusals)
    {
        QStringList told;
        for (const auto &each : refusals)
            told << QStringList{u"gone "_s, u"repeated "_s, u"not of it "_s, u"returned "_s}.at(
                        static_cast<int>(each.reason)) +
                        each.Text;
        return told;
    }
    static QStringList Left(const host::TSerialBatchResult &result)
    {
        QStringList left;
        for (const auto &each : result.left)
            left << each.Serial + u':' + QString::number(static_cast<int>(each.Fate));
        return left;
    }

    test::FakeMessages messages;
    QSqlDatabase connection;
    desk::DeskHost desk;
    TSerial_DM serials;
};

} // namespace fixture
