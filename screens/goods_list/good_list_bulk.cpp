#include "screens/goods_list/good_list.h"
#include "ui_good_list.h"

// The changes of many goods at once.

void TGood_List_FRM::BindBulkCommands()
{
    m_ui->UpdatePrice_BTN->hide();
    m_ui->Discount_BTN->hide();
    m_ui->SaveGroupGoodType_BTN->hide();
    m_ui->UpdateGoodDetailTypes_BTN->hide();
}
