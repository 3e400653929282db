#include "desk/application/goods_module.h"

#include <QCoreApplication>
#include <QDir>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

/// How a line's screen is opened: rows are new, or the line's own are opened again.
constexpr std::int32_t NewRows = 2;
constexpr std::int32_t RowsAgain = 3;

/// Results 1 to 7 of the screens.
using Results = std::array<long double, 7>;

std::optional<host::TAmounts> AmountsOf(bool ok, const Results &results)
{
    if (!ok)
        return std::nullopt;
    return host::TAmounts{results[0], results[1], results[2], results[3], results[4], results[5]};
}

const char16_t *Utf16(const QString &text)
{
    return reinterpret_cast<const char16_t *>(text.utf16());
}

} // namespace

GoodsModule::GoodsModule(const QString &folder)
{
    QDir place(folder.isEmpty() ? QCoreApplication::applicationDirPath() : folder);
    // Built, it lies beside the program; installed, in a folder of its own.
    if (folder.isEmpty() && !place.exists(u"Goods_VLK.so"_s))
        place.cd(QString::fromLatin1(GOODS_MODULE_PLACE));
    m_library.setFileName(place.absoluteFilePath(u"Goods_VLK"_s));
}

bool GoodsModule::Load()
{
    m_error.clear();
    if (!m_library.load()) {
        m_error = m_library.errorString();
        return false;
    }
    Resolve(m_table.Open_GoodList, "Open_GoodList");
    Resolve(m_table.Select_Good, "Select_Good");
    Resolve(m_table.Select_Good_Multible, "Select_Good_Multible");
    Resolve(m_table.Call_GoodGet, "Call_GoodGet");
    Resolve(m_table.Edit_Good, "Edit_Good");
    Resolve(m_table.Select_GoodGroup, "Select_GoodGroup");
    Resolve(m_table.Edit_GoodGroup, "Edit_GoodGroup");
    Resolve(m_table.Open_StoreList, "Open_StoreList");
    Resolve(m_table.Select_Store, "Select_Store");
    Resolve(m_table.Edit_Store, "Edit_Store");
    Resolve(m_table.Open_Units, "Open_Units");
    Resolve(m_table.Select_Unit, "Select_Unit");
    Resolve(m_table.Call_DetailTypes_List, "Call_DetailTypes_List");
    Resolve(m_table.Select_DetailTypes_Multible, "Select_DetailTypes_Multible");
    Resolve(m_table.Open_GoodDetailDivision, "Open_GoodDetailDivision");
    Resolve(m_table.Open_Enter_GoodDetail, "Open_Enter_GoodDetail");
    Resolve(m_table.Open_Exit_GoodDetail, "Open_Exit_GoodDetail");
    m_complete = m_error.isEmpty();
    return m_complete;
}

void GoodsModule::Unload()
{
    m_complete = false;
    m_table = {};
    if (m_library.isLoaded())
        m_library.unload();
}

template <typename Function> void GoodsModule::Resolve(Function &target, const char *name)
{
    target = reinterpret_cast<Function>(m_library.resolve(name));
    if (!target && m_error.isEmpty())
        m_error = m_library.errorString();
}

int GoodsModule::Select_Good(const QString &param) const
{
    return m_table.Select_Good(Utf16(param));
}

QString GoodsModule::Select_Good_Multible(const QString &param) const
{
    return QString::fromUtf16(m_table.Select_Good_Multible(Utf16(param)));
}

int GoodsModule::Select_Store(const QString &param) const
{
    return m_table.Select_Store(Utf16(param));
}

std::optional<host::TAmounts> GoodsModule::EnterGoodDetail(const LineDetailsOpening &opening)
{
    const host::TDocumentLine &line = opening.Line;
    Results r{};
    const std::uint8_t ok = m_table.Open_Enter_GoodDetail(
        opening.HasRows ? RowsAgain : NewRows, line.OperationType, line.GoodCode, 0, 0, opening.Wanted,
        Utf16(opening.StoreName), Utf16(opening.UnitName2), 0, Utf16(opening.UnitName1), 0, Utf16(opening.GoodName), 0,
        0, 0, 0, line.IsReturn ? 1 : 0, &r[6], &r[5], &r[4], &r[3], &r[2], &r[1], &r[0], line.UnitType,
        line.ForeignOperationCode, line.OperationRow, line.OperationCode, line.StoreCode);
    return AmountsOf(ok == 1, r);
}

std::optional<host::TAmounts> GoodsModule::ExitGoodDetail(const LineDetailsOpening &opening)
{
    const host::TDocumentLine &line = opening.Line;
    Results r{};
    const std::uint8_t ok = m_table.Open_Exit_GoodDetail(
        opening.HasRows ? RowsAgain : NewRows, line.OperationType, line.GoodCode, Utf16(opening.StoreName), 0, 0,
        line.IsReturn ? 1 : 0, &r[6], &r[5], &r[4], &r[3], &r[2], &r[1], &r[0], line.UnitType,
        line.ForeignOperationCode, line.OperationRow, line.OperationCode, line.StoreCode);
    return AmountsOf(ok == 1, r);
}

QString GoodsModule::Select_DetailTypes_Multible(const host::MultibleParam &wanted) const
{
    return QString::fromUtf16(m_table.Select_DetailTypes_Multible(u"", wanted.PreviousCount, wanted.Categories ? 1 : 0,
                                                                  wanted.InList ? 1 : 0, Utf16(wanted.PreviousCodes)));
}

} // namespace desk
