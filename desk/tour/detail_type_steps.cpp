#include "desk/tour/detail_type_steps.h"

#include "desk/tour/tour_script.h"
#include "host/data/sql_text.h"

namespace desk {

namespace {

const QString Types = QStringLiteral("DetailTypes_List_GRD");
const QString Categories = QStringLiteral("SelectedList_List_DBTableView1");
const QString Editor = QStringLiteral("DetailTitle_EDT");
const QString NewTitle = QStringLiteral("جنس رویه");
constexpr int ListKind = 1; // the place in the kind chooser

// The demo data begins with a type of each kind, in this order. Each is left as it is.
void EachKind(TourScript &script)
{
    for (const QString &kind :
         {u"serial"_qs, u"list"_qs, u"date"_qs, u"text"_qs, u"number"_qs, u"barcode"_qs, u"two-state"_qs}) {
        script.Focus(Types);
        script.Key(u"edit"_qs, Types, Qt::Key_F5);
        script.Shot(u"detail-type-"_qs + kind, Editor);
        script.Key(u"leave the editor"_qs, Editor, Qt::Key_Escape);
        script.Focus(Types);
        script.Key(u"next row"_qs, Types, Qt::Key_Down);
    }
}

void AddType(TourScript &script)
{
    script.Focus(Types);
    script.Key(u"new type"_qs, Types, Qt::Key_F4);
    script.Shot(u"detail-type-new"_qs, Editor);
    script.Fill(Editor, NewTitle);
    script.Focus(u"Type_CMB"_qs);
    for (int step = 0; step < ListKind; ++step)
        script.Key(u"choose the kind"_qs, u"Type_CMB"_qs, Qt::Key_Down);
    for (const QString &item : {u"چرم طبیعی"_qs, u"جیر"_qs, u"پارچه"_qs}) {
        script.Fill(u"RecommendValues_EDT"_qs, item);
        script.Key(u"add the item"_qs, u"RecommendValues_EDT"_qs, Qt::Key_Return);
    }
    script.Focus(u"DefaultValue_CMB"_qs);
    script.Key(u"choose the default"_qs, u"DefaultValue_CMB"_qs, Qt::Key_Home);
    script.Key(u"save"_qs, Editor, Qt::Key_F3);
}

void CategoryTab(TourScript &script)
{
    script.Focus(Types);
    script.Key(u"the other tab"_qs, Types, Qt::Key_Tab, Qt::ControlModifier);
    script.Focus(Categories);
    script.Shot(u"detail-categories"_qs, Categories);
    script.Key(u"edit the category"_qs, Categories, Qt::Key_F5);
    script.Shot(u"detail-category"_qs, u"Title_EDT"_qs);
    script.Key(u"leave the editor"_qs, u"Title_EDT"_qs, Qt::Key_Escape);
}

QString NewType()
{
    return u"SELECT i.Row FROM DetailTypes d INNER JOIN DetailTypesItems i ON i.DetailID = d.ID "
           "WHERE d.DefaultValue = '1' AND d.Title = "_qs +
           host::NQuotedStr(NewTitle);
}

void DeleteType(TourScript &script)
{
    script.Command(u"open the detail types again"_qs, u"DetailTypes_ACT"_qs);
    script.Focus(Types);
    script.When(u"search the new type"_qs, Types, [] { Type(NewTitle); });
    script.Key(u"delete it"_qs, Types, Qt::Key_F7);
    script.AnswerYes();
    script.Key(u"clear the search of types"_qs, Types, Qt::Key_Escape);
    script.Key(u"leave the list of types"_qs, Types, Qt::Key_Escape);
    script.Expect(u"the type is gone"_qs, NewType(), 0);
}

} // namespace

void DetailTypeSteps(TourScript &script)
{
    script.Command(u"open the detail types"_qs, u"DetailTypes_ACT"_qs);
    script.Focus(Types);
    script.Shot(u"detail-types"_qs, Types);
    EachKind(script);
    AddType(script);
    CategoryTab(script);
    script.Key(u"leave the list"_qs, Categories, Qt::Key_Escape);
    script.Expect(u"the type and its items are there"_qs, NewType(), 3);
    DeleteType(script);
}

} // namespace desk
