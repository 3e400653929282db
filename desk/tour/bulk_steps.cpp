#include "desk/tour/bulk_steps.h"

#include "desk/tour/tour_script.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString List = u"GoodListDB_GRD"_s;
constexpr int Goods = 3;

/// Marks the first goods, or takes their marks off again.
void MarkFirst(TourScript &script)
{
    script.Focus(List);
    script.Key(u"to the first good"_s, List, Qt::Key_Home);
    for (int good = 0; good < Goods; ++good)
        script.Key(u"mark"_s, List, Qt::Key_Insert);
}

/// The command of a button for the marked goods, the first entry of its menu.
void ForMarked(TourScript &script, const QString &button)
{
    script.Focus(button);
    script.Key(u"open the menu"_s, button, Qt::Key_Space);
    script.Key(u"the marked goods"_s, button, Qt::Key_Down);
    script.Key(u"take them"_s, button, Qt::Key_Return);
}

void RaisePrices(TourScript &script)
{
    ForMarked(script, u"UpdatePrice_BTN"_s);
    script.Fill(u"CostColumnSelect_SEF"_s, u"1"_s);
    script.Focus(u"Option2_RB"_s);
    script.Key(u"by a percent"_s, u"Option2_RB"_s, Qt::Key_Space);
    script.Fill(u"Percent_Option2_EDT"_s, u"5"_s);
    script.Shot(u"price-change"_s, u"Percent_Option2_EDT"_s);
    script.Key(u"preview"_s, u"Percent_Option2_EDT"_s, Qt::Key_F3);
    script.Shot(u"price-preview"_s, u"Changing_GRD"_s);
    script.Key(u"write"_s, u"Changing_GRD"_s, Qt::Key_F3);
    script.Expect(u"the prices are written"_s,
                  u"SELECT GoodCode FROM BulkChangeGoods WHERE ChangeID = (SELECT MAX(ID) FROM BulkChanges)"_s, Goods);
}

void TakeBack(TourScript &script)
{
    const QString changes = u"Changes_GRD"_s;
    script.Focus(List);
    script.Key(u"open the last changes"_s, List, Qt::Key_F8, Qt::ControlModifier);
    script.Shot(u"last-changes"_s, changes);
    script.Key(u"take the last one back"_s, changes, Qt::Key_F8);
    script.AnswerYes(u"take-back"_s);
    script.Shot(u"last-changes-taken-back"_s, changes);
    script.Key(u"leave the last changes"_s, changes, Qt::Key_Escape);
    script.Expect(u"the prices are back"_s,
                  u"SELECT ID FROM BulkChanges WHERE ID = (SELECT MAX(ID) FROM BulkChanges) AND GoodsTakenBack = 3"_s,
                  1);
}

} // namespace

void BulkSteps(TourScript &script)
{
    MarkFirst(script);
    RaisePrices(script);
    TakeBack(script);
    script.Focus(List);
    ForMarked(script, u"Discount_BTN"_s);
    script.Shot(u"group-discount"_s, u"Discount_Sell_1_Chk"_s);
    script.Key(u"leave the discounts"_s, u"Discount_Sell_1_Chk"_s, Qt::Key_Escape);
    script.Focus(List);
    ForMarked(script, u"SaveGroupGoodType_BTN"_s);
    script.Key(u"choose a type"_s, u"DaraiGoodType_CMB"_s, Qt::Key_Down);
    script.Shot(u"asset-type"_s, u"DaraiGoodType_CMB"_s);
    script.Key(u"leave the type"_s, u"DaraiGoodType_CMB"_s, Qt::Key_Escape);
    script.Focus(List);
    MarkFirst(script);
}

} // namespace desk
