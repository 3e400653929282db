#include "desk/tour/label_steps.h"

#include "desk/tour/tour_script.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString Goods = u"GoodListDB_GRD"_s;
const QString LayoutBox = u"Layout_CMB"_s;
const QString Rows = u"LabelGoods_GRD"_s;
constexpr int MarkedGoods = 5;

/// Marks the first goods, or takes the marks away again.
void MarkGoods(TourScript &script)
{
    script.Focus(Goods);
    script.Key(u"to the first good"_s, Goods, Qt::Key_Home, Qt::ControlModifier);
    for (int good = 0; good < MarkedGoods; ++good)
        script.Key(u"mark"_s, Goods, Qt::Key_Insert);
}

} // namespace

void LabelSteps(TourScript &script)
{
    MarkGoods(script);
    script.Focus(u"Barcode_BTN"_s);
    script.Key(u"labels"_s, u"Barcode_BTN"_s, Qt::Key_Space);
    script.Shot(u"labels-shelf"_s, Rows);
    script.Focus(LayoutBox);
    script.Key(u"the sticker"_s, LayoutBox, Qt::Key_Down);
    script.Shot(u"labels-sticker"_s, Rows);
    script.Focus(LayoutBox);
    script.Key(u"the sheet"_s, LayoutBox, Qt::Key_Down);
    script.Fill(u"Count_EDT"_s, u"5"_s);
    script.Fill(u"Start_EDT"_s, u"4"_s);
    script.Shot(u"labels-sheet"_s, Rows);
    script.Key(u"preview"_s, Rows, Qt::Key_F9);
    script.Shot(u"labels-preview"_s, u"LabelPages_PRV"_s);
    script.Key(u"leave the preview"_s, u"LabelPages_PRV"_s, Qt::Key_Escape);
    script.Key(u"leave the labels"_s, Rows, Qt::Key_Escape);
    MarkGoods(script);
}

} // namespace desk
