#pragma once

#include "host/controls/grid_column.h"
#include "host/screens/base_dock.h"

#include <memory>

namespace Ui {
class TBulk_Report_FRM;
}

/// What became of a change of many goods, and the goods that were left as they were. F9 prints them.
class TBulk_Report_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `left` are the goods, with the key field `Code`; it outlives the screen.
    TBulk_Report_FRM(host::Host &host, const QString &title, const QString &text, QAbstractItemModel &left,
                     const QList<host::GridColumn> &columns);
    ~TBulk_Report_FRM() override;

protected:
    void FormShown() override;
    bool FormKeyDown(QKeyEvent *event) override;
    host::Grid *PrintedGrid() const override;

private:
    std::unique_ptr<Ui::TBulk_Report_FRM> m_ui;
};
