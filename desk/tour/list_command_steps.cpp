#include "desk/tour/list_command_steps.h"

#include "desk/tour/tour_script.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString Goods = u"GoodListDB_GRD"_s;

void Press(TourScript &script, const QString &button)
{
    script.Focus(button);
    script.Key(u"press "_s + button, button, Qt::Key_Space);
}

void Movements(TourScript &script)
{
    const QString rows = u"Movements_GRD"_s;
    script.Focus(Goods);
    script.Key(u"movements"_s, Goods, Qt::Key_F2);
    script.Shot(u"good-movements"_s, rows);
    script.Fill(u"FromDate_EDT"_s, u"1405/04/01"_s);
    script.Key(u"leave the date"_s, u"FromDate_EDT"_s, Qt::Key_Return);
    script.Shot(u"good-movements-range"_s, rows);
    script.Key(u"leave the movements"_s, rows, Qt::Key_Escape);
}

void Categories(TourScript &script)
{
    const QString tree = u"Categories_TRE"_s;
    Press(script, u"CategoryList_BTN"_s);
    script.Shot(u"categories"_s, tree);
    script.Key(u"new category"_s, tree, Qt::Key_F4);
    script.Fill(u"CategoryName_EDT"_s, u"کالای دیجیتال"_s);
    script.Shot(u"category-new"_s, u"CategoryName_EDT"_s);
    script.Key(u"give it up"_s, u"CategoryName_EDT"_s, Qt::Key_Escape);
    script.Focus(tree);
    script.Key(u"leave the categories"_s, tree, Qt::Key_Escape);
}

/// Titles of discounts and photos are reached from the editor of a good.
void EditorCommands(TourScript &script)
{
    const QString photos = u"Photos_LST"_s;
    script.Focus(Goods);
    script.Key(u"to the first good"_s, Goods, Qt::Key_Home, Qt::ControlModifier);
    script.Key(u"edit"_s, Goods, Qt::Key_F5);
    Press(script, u"DiscountLevel_BTN"_s);
    script.Shot(u"discount-level-titles"_s, u"Title1_EDT"_s);
    script.Key(u"leave the titles"_s, u"Title1_EDT"_s, Qt::Key_Escape);
    Press(script, u"Picture_BTN"_s);
    script.Shot(u"photos"_s, photos);
    script.Key(u"leave the photos"_s, photos, Qt::Key_Escape);
    script.Key(u"leave the editor"_s, u"PageControl1"_s, Qt::Key_Escape);
}

} // namespace

void ListCommandSteps(TourScript &script)
{
    Movements(script);
    Categories(script);
    EditorCommands(script);
    Press(script, u"CostList_BTN"_s);
    script.Shot(u"price-level-titles"_s, u"Title1_EDT"_s);
    script.Key(u"leave the titles"_s, u"Title1_EDT"_s, Qt::Key_Escape);
    Press(script, u"SmartButton_VLK1"_s);
    script.Shot(u"scales"_s, u"Items_GRD"_s);
    script.Key(u"leave the scales"_s, u"Items_GRD"_s, Qt::Key_Escape);
}

} // namespace desk
