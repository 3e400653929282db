#pragma once

#include "data/goods/good_movements.h"
#include "host/screens/base_dock.h"

#include <memory>

namespace Ui {
class GoodMovements;
}

/// The movements of one good, opening stock first, with the balance per store and over all stores; a range of days and
/// a store narrow them. Looking only: documents belong to other parts of the suite.
class TGood_Movements_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `host` outlives the screen.
    TGood_Movements_FRM(host::Host &host, int goodCode);
    ~TGood_Movements_FRM() override;

protected:
    void FormShow() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    host::Grid *PrintedGrid() const override;
    host::SearchFrame *ListSearch() const override;

private:
    void BuildGrid();
    void BindFilter();
    void Refresh();
    void ShowTotals();
    goods::MovementFilter Filter() const;

    std::unique_ptr<Ui::GoodMovements> m_ui;
    goods::Movements m_data;
    goods::MovementGood m_good;
    int m_code;
};
