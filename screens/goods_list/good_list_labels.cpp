#include "host/data/sql_text.h"
#include "screens/goods_list/good_list.h"
#include "screens/labels/label_print.h"
#include "ui_good_list.h"

using namespace Qt::StringLiterals;

// Labels and barcodes of the marked goods.

void TGood_List_FRM::BindLabels()
{
    Bind(m_ui->Barcode_BTN, {}, [this] { PrintLabels(); });
}

void TGood_List_FRM::PrintLabels()
{
    host::Grid *grid = m_ui->GoodListDB_GRD;
    QStringList keys = grid->MarkedKeys();
    if (keys.isEmpty() && !grid->IsEmpty())
        keys = QStringList{grid->CurrentKey()};
    if (keys.isEmpty())
        return;
    TGood_Label_FRM labels(m_host, m_goods);
    labels.SetGoods(host::Codes(keys.join(u',')));
    labels.ShowModally();
}
