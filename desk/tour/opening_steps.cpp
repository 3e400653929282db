#include "desk/tour/opening_steps.h"

#include "desk/tour/tour_script.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString Goods = u"GoodListDB_GRD"_s;
const QString RowsButton = u"GoodFirstAsset_BTN"_s;
const QString Rows = u"FirstAssetList_GRD"_s;
const QString Report = u"Opening_GRD"_s;

} // namespace

void OpeningRowSteps(TourScript &script)
{
    script.Focus(Goods);
    script.Key(u"to the first good"_s, Goods, Qt::Key_Home, Qt::ControlModifier);
    script.Key(u"edit"_s, Goods, Qt::Key_F5);
    script.Focus(RowsButton);
    script.Key(u"the opening rows"_s, RowsButton, Qt::Key_Space);
    script.Focus(Rows);
    script.Key(u"a new row"_s, Rows, Qt::Key_F4);
    script.Fill(u"Store_Entity"_s, u"4"_s);
    script.Focus(u"Comment_EDT"_s);
    script.Shot(u"opening-row"_s, u"Comment_EDT"_s);
    script.Key(u"leave the row"_s, u"Comment_EDT"_s, Qt::Key_Escape);
    script.AnswerYes();
    script.Shot(u"opening-rows"_s, Rows);
    script.Key(u"leave the rows"_s, Rows, Qt::Key_Escape);
    script.Key(u"leave the editor"_s, u"PageControl1"_s, Qt::Key_Escape);
}

void OpeningListSteps(TourScript &script)
{
    script.Command(u"open the opening stock"_s, u"OpeningStock_ACT"_s);
    script.Focus(Report);
    script.Shot(u"opening-stock"_s, Report);
    script.Key(u"leave the opening stock"_s, Report, Qt::Key_Escape);
}

} // namespace desk
