#pragma once

#include "desk/application/database_creation.h"
#include "desk/documents/document_store.h"
#include "desk/documents/line_details.h"
#include "gooddetail/serial_dm.h"
#include "tests/desk/desk_fixture.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace test {

/// Stands in for the module's screens: enters or chooses a range of serials as they would, over the real services.
struct RangeScreens : desk::LineDetailScreens
{
    explicit RangeScreens(host::Host &used) : host(used), data(used) {}

    std::optional<host::TAmounts> EnterGoodDetail(const desk::LineDetailsOpening &opening) override
    {
        opened << opening;
        if (range.IsEmpty())
            return std::nullopt;
        host::TDetailValues details = host.detailValues.DetailsOf(opening.Line.GoodCode);
        details.Values[1] = colour;
        data.EnterGoodDetail_Open();
        const QString table = data.EnterGoodDetail_Table();
        host.detailMovements.EnterGoodDetails_Load(table, opening.Line);
        host.serialBatches.EnterSerials({table, opening.Line, details, {1, 0, 1}, range});
        host.detailMovements.EnterGoodDetails_Keep(table, opening.Line);
        return Amounts(opening.Line);
    }
    std::optional<host::TAmounts> ExitGoodDetail(const desk::LineDetailsOpening &opening) override
    {
        opened << opening;
        if (range.IsEmpty())
            return std::nullopt;
        host.detailMovements.ExitGoodDetails_Fill(opening.Line);
        host.serialBatches.ChooseSerials(opening.Line, range, {1, 0, 1});
        host.detailMovements.ExitGoodDetails_Keep(opening.Line);
        return Amounts(opening.Line);
    }
    host::TAmounts Amounts(const host::TDocumentLine &line) const
    {
        const host::Quantity rows = host.detailMovements.RowsOfLine(line);
        return {rows, 0, rows};
    }

    host::Host &host;
    TSerial_DM data;
    QString colour = u"سفید"_s;
    host::TSerialRange range{0, -1}; ///< empty: the user leaves without OK
    QList<desk::LineDetailsOpening> opened;
};

/// What goods-sql --check finds, a row for each fault.
inline QStringList Faults(const Database &database)
{
    QFile script(QString::fromUtf8(GOODS_SOURCES) + u"/desk/database/check.sql"_s);
    if (!script.open(QIODevice::ReadOnly))
        qFatal("no check.sql");
    QStringList faults;
    for (const QString &batch : desk::Batches(QString::fromUtf8(script.readAll())))
        faults += database.Rows(batch);
    return faults;
}

} // namespace test
