#pragma once

#include "desk/application/desk_host.h"
#include "gooddetail/serial_dm.h"
#include "tests/support/database.h"
#include "tests/support/modal.h"
#include "tests/support/test_host.h"

using namespace Qt::StringLiterals;

namespace fixture {

/// Goods 5001 with serial (1), colour (2) and text (3), 5002 with a serial alone, 5003 with colour alone, 5004 with
/// barcode (4), number (5), date (6), toggle (7) and colour. Unit "عدد", second unit "کارتن", 12 in each. Stores 1, 2.
inline void Furnish(const test::Database &database)
{
    database.Exec(
        u"insert GoodGrpS(Code, Name) values (5, N'g') insert Units(Code, Name, [Type]) values (1, N'عدد', 0), (2, "
        "N'کارتن', 0) insert Stores(Code, Name) values (1, N'مرکزی'), (2, N'شعبه') insert GoodInf(Code, GrpCode, Name, "
        "Unit, Unit2, Meghdar_Formool, Store) values (5001, 5, N'گوشی', 1, 2, 12, 1), (5002, 5, N'مودم', 1, 2, 12, 1), "
        "(5003, 5, N'پارچه', 1, 2, 12, 1), (5004, 5, N'شیر', 1, 2, 12, 1) "
        "insert DetailTypes(Title, DetailType, IsRequired, DefaultValue, DateType, ToggleTitleTrue, ToggleTitleFalse) "
        "values (N'سریال', 3, 1, N'', 0, N'', N''), (N'رنگ', 1, 0, N'1', 0, N'', N''), (N'شرح', 2, 0, N'', 0, N'', N''), "
        "(N'بارکد', 6, 1, N'', 0, N'', N''), (N'وزن', 4, 0, N'', 0, N'', N''), (N'انقضا', 5, 0, N'', 1, N'', N''), "
        "(N'گارانتی', 7, 0, N'1', 0, N'دارد', N'ندارد') "
        "insert DetailTypesItems(DetailID, Row, [Value]) values (2, 1, N'قرمز'), (2, 2, N'آبی'), (3, 1, N'نو') "
        "insert GoodDetailRelation(GoodCode, DetailID) values (5001, 2), (5001, 3), (5001, 1), (5002, 1), (5003, 2), "
        "(5004, 2), (5004, 4), (5004, 5), (5004, 6), (5004, 7)"_s);
}

/// A shop with the services of a desk for details, and the test's own for everything that is said, set and typed.
struct Shop
{
    Shop()
    {
        Furnish(database);
        fakes.settings.record.GoodDetails = true;
    }

    test::Database database;
    test::TestHost fakes{{database.Main(), database.GoodsList(), database.Scales()}};
    desk::DeskHost desk{fakes.host.DM, &fakes.messages};
    host::Host host = Host(fakes.messages);

    /// The same with somebody else who talks to the user.
    host::Host Host(host::MessageService &messages)
    {
        return {.DM = fakes.host.DM,
                .permissions = fakes.permissions,
                .messages = messages,
                .settings = fakes.settings,
                .entities = desk.entities,
                .vouchers = fakes.vouchers,
                .stock = fakes.stock,
                .goodDetails = desk.goodDetails,
                .detailValues = desk.detailValues,
                .detailMovements = desk.detailMovements,
                .serialBatches = desk.serialBatches,
                .detailDivisions = desk.detailDivisions,
                .photos = fakes.photos,
                .categories = fakes.categories,
                .levels = fakes.levels,
                .selectedLists = fakes.selectedLists,
                .scales = fakes.scales,
                .keyboard = fakes.keyboard,
                .clock = fakes.clock,
                .barcodes = fakes.barcodes,
                .finance = fakes.finance,
                .theme = fakes.theme,
                .numbers = fakes.numbers,
                .help = fakes.help};
    }

    static host::TDocumentLine Line(int good, quint8 type, int code, quint8 unitType = 1, int foreign = 0)
    {
        return {good, 1, unitType, type, type == 4, code, 1, foreign};
    }
};

} // namespace fixture
