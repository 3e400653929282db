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
    explicit TGood_Movements_FRM(host::Host &host);
    ~TGood_Movements_FRM() override;

    /// The good of the next opening, which begins with all its movements.
    void SetGood(int code) { m_code = code; }

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
    /// A first day after the last one: they change places.
    void OrderDays();

    std::unique_ptr<Ui::GoodMovements> m_ui;
    goods::Movements m_data;
    goods::MovementGood m_good;
    int m_code = 0;
};
