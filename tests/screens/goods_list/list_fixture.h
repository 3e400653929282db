#pragma once

#include "host/controls/grid.h"
#include "screens/goods_list/good_list.h"
#include "tests/support/database.h"
#include "tests/support/modal.h"
#include "tests/support/test_host.h"
#include "tests/support/test_main.h"

#include <QtTest>

using host::TFormMode;
using host::TPermission;
using host::TSoftwarePart;
using Keys = QList<Qt::Key>;

/// A goods list on the demo data.
struct Screen
{
    test::Database database{test::Database::Content::Demo};
    test::TestHost host{{database.Main(), database.GoodsList(), database.Scales()}};
    TGood_List_FRM list{host, TFormMode::DockedList};
    host::Grid &grid = test::Find<host::Grid>(&list, u"GoodListDB_GRD"_s);

    Screen()
    {
        // What the editor resolves codes by.
        for (const auto &[part, table] :
             {std::pair(TSoftwarePart::Units, u"Units"_s), {TSoftwarePart::Stores, u"Stores"_s}})
            for (const QString &row : database.Rows(u"select Code, Name from "_s + table))
                host.entities.lists[int(part)].append({row.section(u'|', 0, 0).toInt(), row.section(u'|', 1)});
    }
    void Open(TFormMode mode = TFormMode::DockedList)
    {
        list.SetFormMode(mode);
        QVERIFY(list.ShowDocked());
        Activate();
    }
    /// No window manager gives the keyboard back after a modal screen.
    void Activate()
    {
        QCoreApplication::processEvents();
        list.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&list));
    }
    QStringList Codes(const QString &where = u"1=1"_s) const
    {
        return database.Rows(u"select Code from GoodInf g where "_s + where + u" order by Code"_s);
    }
    void Press(const Keys &keys) const
    {
        for (const Qt::Key key : keys)
            test::Press(key);
    }
    /// The cell of the current row as it is shown.
    QString Shown(const QString &field) const
    {
        for (int column = 0; column < grid.Columns().size(); ++column)
            if (grid.Columns().at(column).field == field)
                return grid.currentIndex().siblingAtColumn(column + 1).data().toString();
        return {};
    }
};
