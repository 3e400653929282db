#pragma once

#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "tests/screens/good_editor/editor_fixture.h"

#include <QtTest>

namespace test {

/// A good in two stores, its editor with the list of opening rows above it.
struct OpeningFixture : EditorFixture
{
    OpeningFixture()
    {
        host.entities.lists[105] << ::host::Entity{3, u"سردخانه"_s};
        database.Exec(u"insert into Stores(Code,Name) values(3,N'سردخانه')"_s);
        InsertGood(500009, u"دوغ; کفیر"_s, 909);
        Stock(u"(1,0,10,0,N'قفسه',1),(2,0,5,0,null,2)"_s);
    }
    void Stock(const QString &rows) const
    {
        database.Exec(
            u"delete from GoodFirstAsset insert into GoodFirstAsset(GoodCode,StoreCode,tmp,Amount1,Amount2,Comment,"
            "Radif) values%1 update GoodInf set CostBgPrd=1,AvaBgPrd=(select sum(Amount1) from GoodFirstAsset),"
            "AvaBgPrd2=(select sum(Amount2) from GoodFirstAsset)"_s.arg(QString(rows).replace(u"("_s, u"(500009,"_s)));
    }
    static inline const QString Told = u"MSGCompeletedSuccessfully(ذخيره سازي کالا)"_s;
    using Drive = std::function<void(QWidget *)>;
    static void List(QWidget *editor, const Drive &drive)
    {
        test::Focus(editor, u"GoodFirstAsset_BTN"_s);
        test::Drive([] { test::Press(Qt::Key_Space); }, drive);
    }
    static void Row(Qt::Key key, const Drive &drive)
    {
        test::Drive([key] { test::Press(key); }, drive);
    }
    static void Fill(QWidget *row, const QString &store, const QString &amount)
    {
        test::Enter(row, u"Store_Entity"_s, store);
        test::Enter(row, u"Meghdar_EDT"_s, amount);
    }
    /// On the list of the editor: deletes its first row.
    void DeleteCurrent(QWidget *editor)
    {
        List(editor, [this](QWidget *) {
            host.messages.Answer(true);
            test::Press(Qt::Key_F7);
            host.messages.Take();
            test::Press(Qt::Key_Escape);
        });
    }
    void Save()
    {
        test::Press(Qt::Key_F3);
        QCOMPARE(host.messages.TakeAll(), QStringList{Told});
    }
    QStringList Saved() const
    {
        return database.Rows(
            u"select StoreCode,Amount1,Amount2,ISNULL(Comment,N''),Radif from GoodFirstAsset where tmp=0 "
            "and GoodCode=500009 order by Radif"_s);
    }
    /// What the row editor says to a save, which it refuses; it is left then.
    QString Refused()
    {
        test::Press(Qt::Key_F3);
        QString said = host.messages.TakeAll().join(u';');
        Leave();
        return said;
    }
    QStringList Columns(QWidget *list) const
    {
        QStringList captions = test::Find<::host::Grid>(list, u"FirstAssetList_GRD"_s).VisibleCaptions();
        return captions.mid(1);
    }
};

} // namespace test
