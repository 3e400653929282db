#pragma once

#include "detailtypes/detail_types_list.h"
#include "host/controls/grid.h"
#include "tests/support/database.h"
#include "tests/support/modal.h"
#include "tests/support/test_host.h"

#include <QtTest>

using namespace Qt::StringLiterals;

using detail_types::Choice;
using host::TFormMode;
using host::TPermission;
using host::TSoftwarePart;

namespace fixture {

/// A list over nine types and four categories; type 9 is carried by a good.
struct Screen
{
    test::Database database;
    test::TestHost fakes{{database.Main(), database.GoodsList(), database.Scales()}};
    test::FakeEntities &entities = fakes.entities;
    TDetailTypes_List_FRM list;

    explicit Screen(TFormMode mode = TFormMode::DockedList, bool furnished = true) : list(fakes, mode)
    {
        // On a second list, as a host does through the module's export.
        entities.choosing = [this](const host::MultibleParam &param) {
            TDetailTypes_List_FRM second(fakes, TFormMode::Selection);
            second.SetChoice({param.PreviousCount, param.PreviousCodes, param.InList, param.Categories});
            return second.ShowModally() == QDialog::Accepted ? second.SelectedCodes() + u',' : QString();
        };
        if (!furnished)
            return;
        database.Exec(
            u"insert DetailTypes(Title, DetailType, DateAlarm, Comment) values (N'سریال', 3, 0, NULL), "
            "(N'بارکد', 6, 0, NULL), (N'رنگ', 1, 0, N'رنگ بدنه'), (N'انقضا', 5, 1, NULL), (N'سررسید', 5, 1, NULL), "
            "(N'تولید', 5, 0, NULL), (N'گارانتی', 7, 0, NULL), (N'جنس', 2, 0, NULL), (N'وزن', 4, 0, NULL) "
            "insert DetailTypesItems(DetailID, Row, [Value]) values (3, 1, N'قرمز'), (8, 1, N'نخ') "
            "insert DetailTypes_SelectedLists(Code, Title) values (1, N'پوشاک'), (2, N'خوراک'), (3, N'پر'), (4, "
            "N'خالی') "
            "insert DetailTypes_SelectedList_Detail(SL_Code, Code, Radif) values (1, 3, 1), (1, 1, 2), (2, 4, 1), "
            "(2, 6, 2), (3, 1, 1), (3, 3, 2), (3, 6, 3), (3, 7, 4), (3, 4, 5) "
            "insert GoodGrpS(Code, Name) values (5, N'گروه') insert Units(Code, Name, [Type]) values (1, N'عدد', 0) "
            "insert Stores(Code, Name) values (1, N'انبار') insert GoodInf(Code, GrpCode, Name, Unit, Store) values "
            "(5001, 5, N'کالا', 1, 1) insert GoodDetailRelation(GoodCode, DetailID) values (5001, 9)"_s);
    }
    int Open(const std::function<void()> &drive)
    {
        int result = -1;
        test::Drive([&] { result = list.ShowModally(); },
                    [&](QWidget *) {
                        drive();
                        if (list.isVisible() && !QTest::currentTestFailed())
                            test::Press(Qt::Key_Escape);
                    });
        return result;
    }
    template <typename Control = QWidget> Control &Find(const QString &name)
    {
        return test::Find<Control>(&list, name);
    }
    host::Grid &Types() { return Find<host::Grid>(u"DetailTypes_List_GRD"_s); }
    host::Grid &Members() { return Find<host::Grid>(u"DetailList_GRD"_s); }
    /// The offscreen platform does not give the keys back when a nested screen closes.
    void Regain(const QString &focus)
    {
        list.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&list));
        test::Focus(&list, focus);
    }
    /// The second tab, standing on a category.
    void GoToCategory(int row = 0)
    {
        test::Press(Qt::Key_Tab, Qt::ControlModifier);
        test::Press(Qt::Key_Home, Qt::ControlModifier);
        for (int i = 0; i < row; ++i)
            test::Press(Qt::Key_Down);
    }
    /// Stands on a row of the types by its place.
    static void GoToType(int id)
    {
        test::Press(Qt::Key_Home, Qt::ControlModifier);
        for (int i = 1; i < id; ++i)
            test::Press(Qt::Key_Down);
    }
    static void Mark(const QList<int> &ids)
    {
        for (const int id : ids) {
            GoToType(id);
            test::Press(Qt::Key_Space);
        }
    }
    QStringList Stored(const QString &category) const
    {
        return database.Rows(
            u"select Code, Radif from DetailTypes_SelectedList_Detail where SL_Code = %1 order by Radif"_s.arg(
                category));
    }
    QStringList Defaults() const
    {
        return database.Rows(
            u"select Code from DetailTypes_SelectedLists where DefaultSelectedList = 1 order by Code"_s);
    }
    void Click(const QString &button) { QTest::mouseClick(&Find(button), Qt::LeftButton); }
};

/// A plain message box as the record of messages has it.
inline QString Say(const QString &text)
{
    return u"ShowMessage("_s + text + u')';
}

// What an owner takes once only.
inline const QString TwoForList = Say(
    u"کاربر گرامی در یک لیست امکان وجود چند جزییات بارکدی و یا سریالی و یا وجود از هر دونوع همزمان امکان پذیر نمی باشد"_s);
inline const QString TwoForGood = Say(
    u"کاربر گرامی برای یک کالا امکان وجود چند جزییات بارکدی و یا سریالی و یا وجود از هر دونوع همزمان امکان پذیر نمی باشد"_s);
inline const QString DatesForList =
    Say(u"کاربر گرامی در یک لیست امکان انتخاب چند جزییات تاریخی دارای تیک یادآوری سررسید تاریخ امکان پذیر نمی باشد"_s);
inline const QString DatesForGood = Say(
    u"کاربر گرامی برای یک کالا امکان انتخاب چند جزییات تاریخی دارای تیک یادآوری سررسید تاریخ امکان پذیر نمی باشد"_s);

} // namespace fixture
