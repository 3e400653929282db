#pragma once

#include "screens/good_editor/good_get.h"
#include "tests/support/database.h"
#include "tests/support/modal.h"
#include "tests/support/test_host.h"

#include <QApplication>
#include <QTabWidget>

using namespace Qt::StringLiterals;

/// What is said of a good that was saved.
inline const QString Saved = u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s;

/// The good editor on a database of its own with two groups, three units, two stores and no good.
class EditorFixture
{
public:
    EditorFixture() : host({database.Main(), database.GoodsList(), database.Scales()})
    {
        database.Exec(u"insert into GoodGrpS(Code,Name) values(5,N'لبنیات'),(6,N'نوشیدنی')"_s);
        database.Exec(u"insert into Units(Code,Name) values(1,N'عدد'),(2,N'کارتن'),(3,N'کیلوگرم')"_s);
        database.Exec(u"insert into Stores(Code,Name) values(1,N'انبار مرکزی'),(2,N'فروشگاه')"_s);
        host.entities.lists[104] = {{1, u"عدد"_s}, {2, u"کارتن"_s}, {3, u"کیلوگرم"_s}};
        host.entities.lists[105] = {{1, u"انبار مرکزی"_s}, {2, u"فروشگاه"_s}};
    }

    /// Opens the editor and drives it. The screen is gone afterwards, unless it is kept for the next record.
    void OpenNew(const QString &group, const std::function<void(QWidget *)> &drive)
    {
        Open(0, host::TFormMode::New, group, drive);
    }
    void OpenGood(int code, const std::function<void(QWidget *)> &drive)
    {
        Open(code, host::TFormMode::Edit, {}, drive);
    }
    void Open(int code, host::TFormMode mode, const QString &text, const std::function<void(QWidget *)> &drive)
    {
        if (!kept)
            kept = std::make_unique<TGood_Get_FRM>(host);
        test::Drive([&] { result = kept->Open(code, mode, text); }, drive);
        if (!keepsScreen)
            kept.reset();
    }

    /// Fills what a good cannot be saved without.
    static void FillRequired(QWidget *screen, const QString &name = u"شیر"_s, const QString &smsCode = u"101"_s)
    {
        test::Enter(screen, u"Name_EDT"_s, name);
        test::Enter(screen, u"Unit_Entity1"_s, u"1"_s);
        test::Enter(screen, u"Store_Entity"_s, u"1"_s);
        ShowTab(screen, u"Complete_TPC"_s);
        test::Enter(screen, u"SmsCode_EDT"_s, smsCode);
        ShowTab(screen, u"General_TPC"_s);
    }

    /// A good as another screen left it: priced, without barcodes.
    void InsertGood(int code, const QString &name, int smsCode) const
    {
        database.Exec(
            u"insert into GoodInf(Code,GrpCode,Name,kala_name,Unit,Store,SMSCode) values(%1,5,N'%2  ',N'%2',1,1,%3)"_s
                .arg(code)
                .arg(name)
                .arg(smsCode));
        database.Exec(
            u"insert into GoodCostDiscount(GoodCode,CostLevel_Sell_1,CostLevel_Buy_1) values(%1,100,90)"_s.arg(code));
    }

    static QString CurrentTab(QWidget *screen)
    {
        return test::Find<QTabWidget>(screen, u"PageControl1"_s).currentWidget()->objectName();
    }
    static void ShowTab(QWidget *screen, const QString &name)
    {
        test::Find<QTabWidget>(screen, u"PageControl1"_s).setCurrentWidget(&test::Find(screen, name));
    }
    /// Leaves without saving, whatever was typed.
    void Leave()
    {
        const auto *screen = qobject_cast<host::TBaseGet_FRM *>(QApplication::activeModalWidget());
        const bool asks = screen != nullptr && !screen->IsSaved();
        if (asks)
            host.messages.Answer(true);
        test::Press(Qt::Key_Escape);
        if (asks)
            host.messages.Take();
    }

    test::Database database;
    test::TestHost host;
    int result = -1;
    bool keepsScreen = false; ///< a second record is opened in the same screen, as callers do
    std::unique_ptr<TGood_Get_FRM> kept;
};
