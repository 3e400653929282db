#include "desk/tour/tour_steps.h"

#include "desk/tour/bulk_steps.h"
#include "desk/tour/detail_type_steps.h"
#include "desk/tour/division_steps.h"
#include "desk/tour/document_steps.h"
#include "desk/tour/label_steps.h"
#include "desk/tour/list_command_steps.h"
#include "desk/tour/opening_steps.h"
#include "desk/tour/tour_script.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

// The good that the tour adds, corrects and deletes.
const QString NewName = u"چای"_s;
const QString NewType = u"کیسه‌ای گشت‌وگذار"_s;
const QString NewIndex = u"۲۵ عددی ویژه"_s;
const QString Corrected = u"۵۰ عددی ویژه"_s;
const QString SmsCode = u"987654321"_s;

QString NewGood(const QString &index)
{
    return u"SELECT Code FROM GoodInf WHERE kala_name = "_s + host::NQuotedStr(NewName) + u" AND kala_type = "_s +
           host::NQuotedStr(NewType) + u" AND kala_index = "_s + host::NQuotedStr(index);
}

void GoodsList(TourScript &script)
{
    script.Command(u"open the goods list"_s, u"GoodsList_ACT"_s);
    script.Focus(u"GoodListDB_GRD"_s);
    script.Shot(u"goods-list"_s, u"GoodListDB_GRD"_s);
    script.When(u"search"_s, u"GoodListDB_GRD"_s, [] { Type(u"شیر"_s); });
    script.Shot(u"goods-list-search"_s, u"GoodListDB_GRD"_s);
    script.Key(u"clear the search"_s, u"GoodListDB_GRD"_s, Qt::Key_Escape);
}

// Dairy goods, by the category that is typed; the criteria are taken back in the end.
void AdvancedSearch(TourScript &script)
{
    script.Focus(u"GoodListDB_GRD"_s);
    script.Key(u"advanced search"_s, u"GoodListDB_GRD"_s, Qt::Key_F8);
    script.Fill(u"Editor"_s, u"لبن"_s);
    script.Key(u"take the category"_s, u"Editor"_s, Qt::Key_Return);
    script.Focus(u"SelectList_CMB"_s);
    script.Key(u"choose a list"_s, u"SelectList_CMB"_s, Qt::Key_Down);
    script.Focus(u"DisplayType_CHK"_s);
    script.Key(u"leave its goods out"_s, u"DisplayType_CHK"_s, Qt::Key_Space);
    script.Shot(u"goods-search"_s, u"SelectList_CMB"_s);
    script.Focus(u"SelectedLists_BTN"_s);
    script.Key(u"the lists"_s, u"SelectedLists_BTN"_s, Qt::Key_Space);
    script.Shot(u"selected-lists"_s, u"Lists_GRD"_s);
    script.Key(u"edit the list"_s, u"Lists_GRD"_s, Qt::Key_F5);
    script.Shot(u"selected-list"_s, u"Title_EDT"_s);
    script.Key(u"leave the list"_s, u"Title_EDT"_s, Qt::Key_Escape);
    script.Key(u"leave the lists"_s, u"Lists_GRD"_s, Qt::Key_Escape);
    script.Key(u"select"_s, u"SelectList_CMB"_s, Qt::Key_F3);
    script.ExpectText(u"ADVSearch_LBL"_s, u"لبنیات"_s);
    script.Shot(u"goods-list-searched"_s, u"GoodListDB_GRD"_s);
    script.Key(u"advanced search again"_s, u"GoodListDB_GRD"_s, Qt::Key_F8);
    script.Key(u"empty it"_s, u"SelectList_CMB"_s, Qt::Key_F7);
    script.Key(u"select nothing"_s, u"SelectList_CMB"_s, Qt::Key_F3);
}

// Every tab of the first good, which is left as it is.
void EditorTabs(TourScript &script)
{
    script.Focus(u"GoodListDB_GRD"_s);
    script.Key(u"edit"_s, u"GoodListDB_GRD"_s, Qt::Key_F5);
    for (const int tab : {1, 2, 3, 4, 5, 6}) {
        script.Key(u"next tab"_s, u"PageControl1"_s, static_cast<Qt::Key>(Qt::Key_0 + tab), Qt::ControlModifier);
        script.Shot(u"good-editor-%1"_s.arg(tab), u"PageControl1"_s);
    }
    script.Key(u"the detail types"_s, u"PageControl1"_s, Qt::Key_3, Qt::ControlModifier);
    script.Focus(u"GoodDetails_GRD"_s);
    script.Key(u"another one"_s, u"GoodDetails_GRD"_s, Qt::Key_F4);
    script.Focus(u"DetailTypes_List_GRD"_s);
    for (int mark = 0; mark < 3; ++mark)
        script.Key(u"mark a type"_s, u"DetailTypes_List_GRD"_s, Qt::Key_Insert);
    script.Shot(u"good-editor-detail-choice"_s, u"DetailTypes_List_GRD"_s);
    script.Key(u"take them"_s, u"DetailTypes_List_GRD"_s, Qt::Key_Return);
    script.Shot(u"good-editor-details"_s, u"GoodDetails_GRD"_s);
    script.Key(u"leave the editor"_s, u"GoodDetails_GRD"_s, Qt::Key_Escape);
    script.AnswerYes();
}

void AddGood(TourScript &script)
{
    script.Focus(u"GoodListDB_GRD"_s);
    script.Key(u"new good"_s, u"GoodListDB_GRD"_s, Qt::Key_F4);
    script.Focus(u"Group_CMB"_s);
    script.Key(u"choose a group"_s, u"Group_CMB"_s, Qt::Key_Down);
    script.Fill(u"Name_EDT"_s, NewName);
    script.Fill(u"Kala_Type_EDT"_s, NewType);
    script.Fill(u"Kala_Index_EDT"_s, NewIndex);
    script.Fill(u"Unit_Entity1"_s, u"1"_s);
    script.Fill(u"Store_Entity"_s, u"1"_s);
    script.Fill(u"BarCode1_EDT"_s, u"6260998877665"_s);
    script.Key(u"leave the barcode"_s, u"BarCode1_EDT"_s, Qt::Key_Return);
    script.Shot(u"good-editor-new"_s, u"Name_EDT"_s);
    script.Key(u"complete tab"_s, u"Name_EDT"_s, Qt::Key_4, Qt::ControlModifier);
    script.Fill(u"SmsCode_EDT"_s, SmsCode);
    script.Key(u"save"_s, u"SmsCode_EDT"_s, Qt::Key_F3);
    script.Key(u"leave the editor"_s, u"Name_EDT"_s, Qt::Key_Escape);
    script.Expect(u"the good is there"_s, NewGood(NewIndex), 1);
}

void CorrectGood(TourScript &script)
{
    script.Focus(u"GoodListDB_GRD"_s);
    script.When(u"search the new good"_s, u"GoodListDB_GRD"_s, [] { Type(u"گشت"_s); });
    script.Key(u"into the rows"_s, u"GoodListDB_GRD"_s, Qt::Key_Down);
    script.Key(u"edit"_s, u"GoodListDB_GRD"_s, Qt::Key_F5);
    script.Fill(u"Kala_Index_EDT"_s, Corrected);
    script.Key(u"save"_s, u"PageControl1"_s, Qt::Key_F3);
    script.Expect(u"the good is corrected"_s, NewGood(Corrected), 1);
}

void DeleteGood(TourScript &script)
{
    script.Focus(u"GoodListDB_GRD"_s);
    script.Key(u"delete"_s, u"GoodListDB_GRD"_s, Qt::Key_F7);
    script.AnswerYes(u"question"_s);
    script.Expect(u"the good is gone"_s, NewGood(Corrected), 0);
    script.Key(u"clear the search"_s, u"GoodListDB_GRD"_s, Qt::Key_Escape);
}

void ChooseGoods(TourScript &script)
{
    script.Command(u"open the choose page"_s, u"Choose_ACT"_s);
    script.Fill(u"LocateCode_EDT"_s, QString());
    script.Key(u"choose one"_s, u"LocateCode_EDT"_s, Qt::Key_F2);
    script.Focus(u"GoodListDB_GRD"_s);
    script.Key(u"another row"_s, u"GoodListDB_GRD"_s, Qt::Key_Down);
    script.Shot(u"chooser"_s, u"GoodListDB_GRD"_s);
    script.Key(u"take it"_s, u"GoodListDB_GRD"_s, Qt::Key_Return);
    script.ExpectText(u"Call_LBL"_s, u"Select_Good("_s);
    script.Shot(u"chosen-one"_s, u"ResultDB_GRD"_s);
    script.Key(u"choose several"_s, u"ResultDB_GRD"_s, Qt::Key_F3);
    script.Focus(u"GoodListDB_GRD"_s);
    for (int mark = 0; mark < 3; ++mark)
        script.Key(u"mark"_s, u"GoodListDB_GRD"_s, Qt::Key_Insert);
    script.Shot(u"chooser-several"_s, u"GoodListDB_GRD"_s);
    script.Key(u"take them"_s, u"GoodListDB_GRD"_s, Qt::Key_Return);
    script.ExpectText(u"Call_LBL"_s, u",\""_s);
    script.Shot(u"chosen-several"_s, u"ResultDB_GRD"_s);
}

void SmallLists(TourScript &script)
{
    script.Command(u"open groups"_s, u"Groups_ACT"_s);
    script.Shot(u"groups"_s, u"ListDB_GRD"_s);
    script.Key(u"new group"_s, u"ListDB_GRD"_s, Qt::Key_F4);
    script.Shot(u"group-editor"_s, u"Name_EDT"_s);
    script.Key(u"leave the group editor"_s, u"Name_EDT"_s, Qt::Key_Escape);
    script.Key(u"leave groups"_s, u"ListDB_GRD"_s, Qt::Key_Escape);
}

void System(TourScript &script)
{
    script.Command(u"open rights"_s, u"Rights_ACT"_s);
    script.Shot(u"rights"_s, u"Rights_GRD"_s);
    script.Key(u"leave rights"_s, u"Rights_GRD"_s, Qt::Key_Escape);
    script.Command(u"open settings"_s, u"Settings_ACT"_s);
    script.Shot(u"settings"_s, u"Barcode1_EDT"_s);
    script.Key(u"leave settings"_s, u"Barcode1_EDT"_s, Qt::Key_Escape);
}

} // namespace

QList<TourStep> TourSteps(MainWindow &window, DeskHost &desk, const TakePicture &picture, const ReportFault &fail)
{
    const auto script = std::make_shared<TourScript>(window, desk, picture, fail);
    script->Shot(u"desk"_s, u"HomePage"_s);
    SmallLists(*script);
    System(*script);
    DetailTypeSteps(*script);
    OpeningListSteps(*script);
    GoodsList(*script);
    LabelSteps(*script);
    ListCommandSteps(*script);
    AdvancedSearch(*script);
    BulkSteps(*script);
    EditorTabs(*script);
    OpeningRowSteps(*script);
    DocumentSteps(*script);
    DivisionSteps(*script);
    AddGood(*script);
    CorrectGood(*script);
    DeleteGood(*script);
    ChooseGoods(*script);
    return script->TakeSteps();
}

} // namespace desk
