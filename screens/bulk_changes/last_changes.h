#pragma once

#include "data/goods/good_bulk.h"
#include "data/goods/goods_import_known.h"
#include "host/screens/base_dock.h"
#include "screens/bulk_changes/computed_rows.h"

#include <QTimer>

#include <memory>

class QPushButton;

namespace Ui {
class TBulk_Changes_FRM;
}

/// The last changes of many goods, newest first, with the goods of the one that is current; F8 takes it back. Goods
/// that were changed since stay as they are and are listed.
class TBulk_Changes_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `changes` outlives the screen.
    TBulk_Changes_FRM(host::Host &host, goods::BulkJournal &changes);
    ~TBulk_Changes_FRM() override;

    /// Goods were written while the screen was open: lists that show them are old.
    bool Wrote() const { return m_wrote; }

protected:
    void FormShow() override;
    void FormShown() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    host::Grid *PrintedGrid() const override;
    host::SearchFrame *ListSearch() const override;

private:
    void BuildGrids();
    QList<bulk_changes::ComputedRows::Column> ChangeFields() const;
    QList<bulk_changes::ComputedRows::Column> GoodFields(const host::Dataset &goods) const;
    goods::BulkKind Kind() const;
    int Change() const;
    void FollowCurrent();
    void ShowGoods();
    void TakeBack();
    bool Stands(int change);
    bool MayTakeBack(int change);
    void Reload();
    void ShowLeft(int change, const goods::BulkResult &result);

    std::unique_ptr<Ui::TBulk_Changes_FRM> m_ui;
    goods::BulkJournal &m_changes;
    bulk_changes::ComputedRows m_rows;
    bulk_changes::ComputedRows m_goods;
    QPushButton *m_takeBack;
    QList<goods::ImportFieldInfo> m_fields; ///< by which the columns of a file are called
    QTimer m_follow;                        ///< the goods follow the current change when the cursor rests
    int m_shownWidth = 0;                   ///< of the first value's column, as it was last set for a kind of change
    bool m_wrote = false;
};
