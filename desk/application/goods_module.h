#pragma once

#include "desk/documents/line_details.h"
#include "entry/exports.h"
#include "host/services/entity_service.h"

#include <QLibrary>
#include <QString>

#include <array>
#include <cstdint>

namespace desk {

/// The goods module, loaded at run time: its exported functions resolved by name, with texts as QString.
/// Load it after host::install(). Every function opens a screen and returns when a modal one has closed.
class GoodsModule : public LineDetailScreens
{
public:
    /// `folder` is where Goods_VLK lies, the program's own by default.
    explicit GoodsModule(const QString &folder = {});

    /// Loads the library and resolves every function. False when the library or one of its functions is missing;
    /// ErrorText() then says which.
    bool Load();
    bool IsLoaded() const { return m_complete; }
    const QString &ErrorText() const { return m_error; }
    /// Lets the library go, and with it the screens that it keeps. No function may be called afterwards.
    void Unload();

    void Open_GoodList() const { m_table.Open_GoodList(); }
    int Select_Good(const QString &param) const;
    QString Select_Good_Multible(const QString &param) const;
    void Call_GoodGet(int goodId, std::uint8_t kind) const { m_table.Call_GoodGet(goodId, kind); }
    int Edit_Good(int value) const { return m_table.Edit_Good(value); }
    void Select_GoodGroup() const { m_table.Select_GoodGroup(); }
    void Edit_GoodGroup(int groupId) const { m_table.Edit_GoodGroup(groupId); }
    int Open_StoreList() const { return m_table.Open_StoreList(); }
    int Select_Store(const QString &param) const;
    void Edit_Store(int storeId) const { m_table.Edit_Store(storeId); }
    int Open_Units() const { return m_table.Open_Units(); }
    int Select_Unit() const { return m_table.Select_Unit(); }
    void Call_DetailTypes_List() const { m_table.Call_DetailTypes_List(); }
    QString Select_DetailTypes_Multible(const host::MultibleParam &wanted) const;
    void Open_GoodDetailDivision() const { m_table.Open_GoodDetailDivision(); }
    /// `Open_Enter_GoodDetail` and `Open_Exit_GoodDetail`; nothing when the screen did not close with OK.
    std::optional<host::TAmounts> EnterGoodDetail(const LineDetailsOpening &opening) override;
    std::optional<host::TAmounts> ExitGoodDetail(const LineDetailsOpening &opening) override;

private:
    struct Table
    {
        decltype(&::Open_GoodList) Open_GoodList = nullptr;
        decltype(&::Select_Good) Select_Good = nullptr;
        decltype(&::Select_Good_Multible) Select_Good_Multible = nullptr;
        decltype(&::Call_GoodGet) Call_GoodGet = nullptr;
        decltype(&::Edit_Good) Edit_Good = nullptr;
        decltype(&::Select_GoodGroup) Select_GoodGroup = nullptr;
        decltype(&::Edit_GoodGroup) Edit_GoodGroup = nullptr;
        decltype(&::Open_StoreList) Open_StoreList = nullptr;
        decltype(&::Select_Store) Select_Store = nullptr;
        decltype(&::Edit_Store) Edit_Store = nullptr;
        decltype(&::Open_Units) Open_Units = nullptr;
        decltype(&::Select_Unit) Select_Unit = nullptr;
        decltype(&::Call_DetailTypes_List) Call_DetailTypes_List = nullptr;
        decltype(&::Select_DetailTypes_Multible) Select_DetailTypes_Multible = nullptr;
        decltype(&::Open_GoodDetailDivision) Open_GoodDetailDivision = nullptr;
        decltype(&::Open_Enter_GoodDetail) Open_Enter_GoodDetail = nullptr;
        decltype(&::Open_Exit_GoodDetail) Open_Exit_GoodDetail = nullptr;
    };

    template <typename Function> void Resolve(Function &target, const char *name);

    QLibrary m_library;
    Table m_table;
    QString m_error;
    bool m_complete = false;
};

} // namespace desk
