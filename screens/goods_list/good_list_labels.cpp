#include "screens/goods_list/good_list.h"
#include "ui_good_list.h"

// Labels and barcodes of the marked goods.

void TGood_List_FRM::BindLabels()
{
    m_ui->Barcode_BTN->hide();
}
