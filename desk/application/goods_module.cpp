#include "desk/application/goods_module.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

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
    library_.setFileName(place.absoluteFilePath(u"Goods_VLK"_qs));
}

bool GoodsModule::Load()
{
    error_.clear();
    if (!library_.load()) {
        error_ = library_.errorString();
        return false;
    }
    Resolve(table_.Open_GoodList, "Open_GoodList");
    Resolve(table_.Select_Good, "Select_Good");
    Resolve(table_.Select_Good_Multible, "Select_Good_Multible");
    Resolve(table_.Call_GoodGet, "Call_GoodGet");
    Resolve(table_.Edit_Good, "Edit_Good");
    Resolve(table_.Select_GoodGroup, "Select_GoodGroup");
    Resolve(table_.Edit_GoodGroup, "Edit_GoodGroup");
    Resolve(table_.Open_StoreList, "Open_StoreList");
    Resolve(table_.Select_Store, "Select_Store");
    Resolve(table_.Edit_Store, "Edit_Store");
    Resolve(table_.Open_Units, "Open_Units");
    Resolve(table_.Select_Unit, "Select_Unit");
    Resolve(table_.Call_DetailTypes_List, "Call_DetailTypes_List");
    Resolve(table_.Select_DetailTypes_Multible, "Select_DetailTypes_Multible");
    complete_ = error_.isEmpty();
    return complete_;
}

void GoodsModule::Unload()
{
    complete_ = false;
    table_ = {};
    if (library_.isLoaded())
        library_.unload();
}

template <typename Function> void GoodsModule::Resolve(Function &target, const char *name)
{
    target = reinterpret_cast<Function>(library_.resolve(name));
    if (!target && error_.isEmpty())
        error_ = library_.errorString();
}

int GoodsModule::Select_Good(const QString &param) const
{
    return table_.Select_Good(Utf16(param));
}

QString GoodsModule::Select_Good_Multible(const QString &param) const
{
    return QString::fromUtf16(table_.Select_Good_Multible(Utf16(param)));
}

int GoodsModule::Select_Store(const QString &param) const
{
    return table_.Select_Store(Utf16(param));
}

QString GoodsModule::Select_DetailTypes_Multible(const host::MultibleParam &wanted) const
{
    return QString::fromUtf16(table_.Select_DetailTypes_Multible(u"", wanted.PreviousCount, wanted.Categories ? 1 : 0,
                                                                 wanted.InList ? 1 : 0, Utf16(wanted.PreviousCodes)));
}

} // namespace desk
