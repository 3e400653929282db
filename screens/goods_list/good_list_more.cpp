#include "screens/goods_list/good_list.h"
#include "ui_good_list.h"

// Lists and devices around the goods: categories, titles of levels, movements, scales.

void TGood_List_FRM::BindTitleCommands()
{
    m_ui->CategoryList_BTN->hide();
    m_ui->CostList_BTN->hide();
}

void TGood_List_FRM::BindMovements()
{
    m_ui->Show_BTN->hide();
}

void TGood_List_FRM::BindScales()
{
    m_ui->SmartButton_VLK1->hide();
}
