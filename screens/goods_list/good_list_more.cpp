#include "screens/goods_list/good_list.h"
#include "screens/goods_list/good_movements.h"
#include "ui_good_list.h"

// Lists and devices around the goods: categories, titles of levels, movements, scales.

void TGood_List_FRM::BindTitleCommands()
{
    Bind(m_ui->CategoryList_BTN, {}, [this] { m_host.categories.Open_Categories(); });
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
        TGood_Movements_FRM movements(m_host, key.toInt());
        movements.ShowModally();
        if (movements.Aborted())
            Renew(); // the good may be gone
    });
}

void TGood_List_FRM::BindScales()
{
    m_ui->SmartButton_VLK1->hide();
}
