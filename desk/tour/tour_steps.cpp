#include "desk/tour/tour_steps.h"

#include "desk/tour/detail_type_steps.h"
#include "desk/tour/tour_script.h"
#include "host/data/sql_text.h"

namespace desk {

namespace {

// The good that the tour adds, corrects and deletes.
const QString NewName = QStringLiteral("چای");
const QString NewType = QStringLiteral("کیسه‌ای گشت‌وگذار");
const QString NewIndex = QStringLiteral("۲۵ عددی ویژه");
const QString Corrected = QStringLiteral("۵۰ عددی ویژه");
const QString SmsCode = QStringLiteral("987654321");

QString NewGood(const QString &index)
{
    return u"SELECT Code FROM GoodInf WHERE kala_name = "_qs + host::NQuotedStr(NewName) + u" AND kala_type = "_qs +
           host::NQuotedStr(NewType) + u" AND kala_index = "_qs + host::NQuotedStr(index);
}

void GoodsList(TourScript &script)
{
    script.Command(u"open the goods list"_qs, u"GoodsList_ACT"_qs);
    script.Focus(u"GoodListDB_GRD"_qs);
    script.Shot(u"goods-list"_qs, u"GoodListDB_GRD"_qs);
    script.When(u"search"_qs, u"GoodListDB_GRD"_qs, [] { Type(u"شیر"_qs); });
    script.Shot(u"goods-list-search"_qs, u"GoodListDB_GRD"_qs);
    script.Key(u"clear the search"_qs, u"GoodListDB_GRD"_qs, Qt::Key_Escape);
}

// Every tab of the first good, which is left as it is.
void EditorTabs(TourScript &script)
{
    script.Focus(u"GoodListDB_GRD"_qs);
    script.Key(u"edit"_qs, u"GoodListDB_GRD"_qs, Qt::Key_F5);
    for (const int tab : {1, 2, 3, 4, 5, 6}) {
        script.Key(u"next tab"_qs, u"PageControl1"_qs, static_cast<Qt::Key>(Qt::Key_0 + tab), Qt::ControlModifier);
        script.Shot(u"good-editor-%1"_qs.arg(tab), u"PageControl1"_qs);
    }
    script.Key(u"leave the editor"_qs, u"PageControl1"_qs, Qt::Key_Escape);
}

void AddGood(TourScript &script)
{
    script.Focus(u"GoodListDB_GRD"_qs);
    script.Key(u"new good"_qs, u"GoodListDB_GRD"_qs, Qt::Key_F4);
    script.Focus(u"Group_CMB"_qs);
    script.Key(u"choose a group"_qs, u"Group_CMB"_qs, Qt::Key_Down);
    script.Fill(u"Name_EDT"_qs, NewName);
    script.Fill(u"Kala_Type_EDT"_qs, NewType);
    script.Fill(u"Kala_Index_EDT"_qs, NewIndex);
    script.Fill(u"Unit_Entity1"_qs, u"1"_qs);
    script.Fill(u"Store_Entity"_qs, u"1"_qs);
    script.Fill(u"BarCode1_EDT"_qs, u"6260998877665"_qs);
    script.Key(u"leave the barcode"_qs, u"BarCode1_EDT"_qs, Qt::Key_Return);
    script.Shot(u"good-editor-new"_qs, u"Name_EDT"_qs);
    script.Key(u"complete tab"_qs, u"Name_EDT"_qs, Qt::Key_4, Qt::ControlModifier);
    script.Fill(u"SmsCode_EDT"_qs, SmsCode);
    script.Key(u"save"_qs, u"SmsCode_EDT"_qs, Qt::Key_F3);
    script.Key(u"leave the editor"_qs, u"Name_EDT"_qs, Qt::Key_Escape);
    script.Expect(u"the good is there"_qs, NewGood(NewIndex), 1);
}

void CorrectGood(TourScript &script)
{
    script.Focus(u"GoodListDB_GRD"_qs);
    script.When(u"search the new good"_qs, u"GoodListDB_GRD"_qs, [] { Type(u"گشت"_qs); });
    script.Key(u"into the rows"_qs, u"GoodListDB_GRD"_qs, Qt::Key_Down);
    script.Key(u"edit"_qs, u"GoodListDB_GRD"_qs, Qt::Key_F5);
    script.Fill(u"Kala_Index_EDT"_qs, Corrected);
    script.Key(u"save"_qs, u"PageControl1"_qs, Qt::Key_F3);
    script.Expect(u"the good is corrected"_qs, NewGood(Corrected), 1);
}

void DeleteGood(TourScript &script)
{
    script.Focus(u"GoodListDB_GRD"_qs);
    script.Key(u"delete"_qs, u"GoodListDB_GRD"_qs, Qt::Key_F7);
    script.AnswerYes(u"question"_qs);
    script.Expect(u"the good is gone"_qs, NewGood(Corrected), 0);
    script.Key(u"clear the search"_qs, u"GoodListDB_GRD"_qs, Qt::Key_Escape);
}

void ChooseGoods(TourScript &script)
{
    script.Command(u"open the choose page"_qs, u"Choose_ACT"_qs);
    script.Fill(u"LocateCode_EDT"_qs, QString());
    script.Key(u"choose one"_qs, u"LocateCode_EDT"_qs, Qt::Key_F2);
    script.Focus(u"GoodListDB_GRD"_qs);
    script.Key(u"another row"_qs, u"GoodListDB_GRD"_qs, Qt::Key_Down);
    script.Shot(u"chooser"_qs, u"GoodListDB_GRD"_qs);
    script.Key(u"take it"_qs, u"GoodListDB_GRD"_qs, Qt::Key_Return);
    script.ExpectText(u"Call_LBL"_qs, u"Select_Good("_qs);
    script.Shot(u"chosen-one"_qs, u"ResultDB_GRD"_qs);
    script.Key(u"choose several"_qs, u"ResultDB_GRD"_qs, Qt::Key_F3);
    script.Focus(u"GoodListDB_GRD"_qs);
    for (int mark = 0; mark < 3; ++mark)
        script.Key(u"mark"_qs, u"GoodListDB_GRD"_qs, Qt::Key_Insert);
    script.Shot(u"chooser-several"_qs, u"GoodListDB_GRD"_qs);
    script.Key(u"take them"_qs, u"GoodListDB_GRD"_qs, Qt::Key_Return);
    script.ExpectText(u"Call_LBL"_qs, u",\""_qs);
    script.Shot(u"chosen-several"_qs, u"ResultDB_GRD"_qs);
}

void SmallLists(TourScript &script)
{
    script.Command(u"open groups"_qs, u"Groups_ACT"_qs);
    script.Shot(u"groups"_qs, u"ListDB_GRD"_qs);
    script.Key(u"new group"_qs, u"ListDB_GRD"_qs, Qt::Key_F4);
    script.Shot(u"group-editor"_qs, u"Name_EDT"_qs);
    script.Key(u"leave the group editor"_qs, u"Name_EDT"_qs, Qt::Key_Escape);
    script.Key(u"leave groups"_qs, u"ListDB_GRD"_qs, Qt::Key_Escape);
}

void System(TourScript &script)
{
    script.Command(u"open rights"_qs, u"Rights_ACT"_qs);
    script.Shot(u"rights"_qs, u"Rights_GRD"_qs);
    script.Key(u"leave rights"_qs, u"Rights_GRD"_qs, Qt::Key_Escape);
    script.Command(u"open settings"_qs, u"Settings_ACT"_qs);
    script.Shot(u"settings"_qs, u"Barcode1_EDT"_qs);
    script.Key(u"leave settings"_qs, u"Barcode1_EDT"_qs, Qt::Key_Escape);
}

} // namespace

QList<TourStep> TourSteps(MainWindow &window, DeskHost &desk, const TakePicture &picture, const ReportFault &fail)
{
    const auto script = std::make_shared<TourScript>(window, desk, picture, fail);
    script->Shot(u"desk"_qs, u"HomePage"_qs);
    SmallLists(*script);
    System(*script);
    DetailTypeSteps(*script);
    GoodsList(*script);
    EditorTabs(*script);
    AddGood(*script);
    CorrectGood(*script);
    DeleteGood(*script);
    ChooseGoods(*script);
    return script->TakeSteps();
}

} // namespace desk
