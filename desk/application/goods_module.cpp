#include "desk/application/goods_module.h"

#include <QCoreApplication>
#include <QDir>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const char16_t *Utf16(const QString &text)
{
    return reinterpret_cast<const char16_t *>(text.utf16());
}

} // namespace

GoodsModule::GoodsModule(const QString &folder)
{
    const QDir place(folder.isEmpty() ? QCoreApplication::applicationDirPath() : folder);
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

QString GoodsModule::Select_DetailTypes_Multible(const host::MultibleParam &wanted) const
{
    return QString::fromUtf16(m_table.Select_DetailTypes_Multible(u"", wanted.PreviousCount, wanted.Categories ? 1 : 0,
                                                                  wanted.InList ? 1 : 0, Utf16(wanted.PreviousCodes)));
}

} // namespace desk
