#include "desk/tour/detail_type_steps.h"

#include "desk/tour/tour_script.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString Types = u"DetailTypes_List_GRD"_s;
const QString Categories = u"SelectedList_List_DBTableView1"_s;
const QString Editor = u"DetailTitle_EDT"_s;
const QString NewTitle = u"جنس رویه"_s;
constexpr int ListKind = 1; // the place in the kind chooser

// The demo data begins with a type of each kind, in this order. Each is left as it is.
void EachKind(TourScript &script)
{
    for (const QString &kind :
         {u"serial"_s, u"list"_s, u"date"_s, u"text"_s, u"number"_s, u"barcode"_s, u"two-state"_s}) {
        script.Focus(Types);
        script.Key(u"edit"_s, Types, Qt::Key_F5);
        script.Shot(u"detail-type-"_s + kind, Editor);
        script.Key(u"leave the editor"_s, Editor, Qt::Key_Escape);
        script.Focus(Types);
        script.Key(u"next row"_s, Types, Qt::Key_Down);
    }
}

void AddType(TourScript &script)
{
    script.Focus(Types);
    script.Key(u"new type"_s, Types, Qt::Key_F4);
    script.Shot(u"detail-type-new"_s, Editor);
    script.Fill(Editor, NewTitle);
    script.Focus(u"Type_CMB"_s);
    for (int step = 0; step < ListKind; ++step)
        script.Key(u"choose the kind"_s, u"Type_CMB"_s, Qt::Key_Down);
    for (const QString &item : {u"چرم طبیعی"_s, u"جیر"_s, u"پارچه"_s}) {
        script.Fill(u"RecommendValues_EDT"_s, item);
        script.Key(u"add the item"_s, u"RecommendValues_EDT"_s, Qt::Key_Return);
    }
    script.Focus(u"DefaultValue_CMB"_s);
    script.Key(u"choose the default"_s, u"DefaultValue_CMB"_s, Qt::Key_Home);
    script.Key(u"save"_s, Editor, Qt::Key_F3);
}

void CategoryTab(TourScript &script)
{
    script.Focus(Types);
    script.Key(u"the other tab"_s, Types, Qt::Key_Tab, Qt::ControlModifier);
    script.Focus(Categories);
    script.Shot(u"detail-categories"_s, Categories);
    script.Key(u"edit the category"_s, Categories, Qt::Key_F5);
    script.Shot(u"detail-category"_s, u"Title_EDT"_s);
    script.Key(u"leave the editor"_s, u"Title_EDT"_s, Qt::Key_Escape);
}

QString NewType()
{
    return u"SELECT i.Row FROM DetailTypes d INNER JOIN DetailTypesItems i ON i.DetailID = d.ID "
           "WHERE d.DefaultValue = '1' AND d.Title = "_s +
           host::NQuotedStr(NewTitle);
}

void DeleteType(TourScript &script)
{
    script.Command(u"open the detail types again"_s, u"DetailTypes_ACT"_s);
    script.Focus(Types);
    script.When(u"search the new type"_s, Types, [] { Type(NewTitle); });
    script.Key(u"delete it"_s, Types, Qt::Key_F7);
    script.AnswerYes();
    script.Key(u"clear the search of types"_s, Types, Qt::Key_Escape);
    script.Key(u"leave the list of types"_s, Types, Qt::Key_Escape);
    script.Expect(u"the type is gone"_s, NewType(), 0);
}

} // namespace

void DetailTypeSteps(TourScript &script)
{
    script.Command(u"open the detail types"_s, u"DetailTypes_ACT"_s);
    script.Focus(Types);
    script.Shot(u"detail-types"_s, Types);
    EachKind(script);
    AddType(script);
    CategoryTab(script);
    script.Key(u"leave the list"_s, Categories, Qt::Key_Escape);
    script.Expect(u"the type and its items are there"_s, NewType(), 3);
    DeleteType(script);
}

} // namespace desk
