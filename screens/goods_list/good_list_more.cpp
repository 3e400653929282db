#include "screens/goods_import/goods_import.h"
#include "screens/goods_list/good_list.h"
#include "screens/goods_list/good_movements.h"
#include "screens/goods_list/scale_items.h"
#include "ui_good_list.h"

using namespace Qt::StringLiterals;

// Lists and devices around the goods: categories, titles of levels, movements, scales.

void TGood_List_FRM::BindTitleCommands()
{
    Bind(m_ui->CategoryList_BTN, {}, [this] {
        m_host.categories.Open_Categories();
        RenewSearched();
    });
    Bind(m_ui->CostList_BTN, {}, [this] {
        if (m_host.levels.Open_CostLevels())
            ShowPriceTitles();
    });
}

void TGood_List_FRM::BindMovements()
{
    Bind(m_ui->Show_BTN, Qt::Key_F2, [this] {
        if (m_ui->GoodListDB_GRD->IsEmpty())
            return;
        const QString key = m_ui->GoodListDB_GRD->CurrentKey();
        if (!m_movements)
            m_movements = std::make_unique<TGood_Movements_FRM>(m_host);
        m_movements->SetGood(key.toInt());
        m_movements->ShowModally();
        if (m_movements->Aborted())
            Renew(); // the good may be gone
    });
}

void TGood_List_FRM::BindScales()
{
    Bind(m_ui->SmartButton_VLK1, {}, [this] {
        if (!m_goods.HasScaleDatabase()) {
            m_host.messages.ShowMessage(
                u"پایگاه داده‌ی ترازو در دسترس نیست؛ تا برنامه به آن وصل نشود کالایی روی ترازو نمی‌رود."_s,
                host::MessageIcon::Warning, m_ui->SmartButton_VLK1->text());
            return;
        }
        QStringList chosen = m_ui->GoodListDB_GRD->MarkedKeys();
        if (chosen.isEmpty() && !m_ui->GoodListDB_GRD->IsEmpty())
            chosen << m_ui->GoodListDB_GRD->CurrentKey();
        TScale_Items_FRM(m_host, m_goods, chosen).ShowModally();
    });
}

void TGood_List_FRM::BindImport()
{
    Bind(m_ui->Import_BTN, {}, [this] {
        for (const host::TPermission right : {host::TPermission::Create, host::TPermission::Change})
            if (!host::Granted(m_host, SoftwarePart(), right))
                return;
        TGoods_Import_FRM import(m_host, m_goods);
        import.ShowModally();
        if (!import.Wrote())
            return;
        ReloadGroups();
        Renew();
    });
}
