#pragma once

#include "data/goods/good_bulk.h"
#include "host/screens/base_get.h"
#include "screens/shared/discount_side.h"

#include <memory>

class QCheckBox;

namespace Ui {
class TDiscount_Edit_Group_FRM;
}

/// Sets chosen discount rates and default discounts on many goods at once. What is ticked is written, every other
/// value of each good stays as it was.
class TDiscount_Edit_Group_FRM : public host::TBaseGet_FRM
{
    Q_OBJECT

public:
    /// `changes` writes and outlives the screen.
    TDiscount_Edit_Group_FRM(host::Host &host, goods::BulkValues &changes);
    ~TDiscount_Edit_Group_FRM() override;

    /// Asks and writes for the goods of the scope, `count` of them. True when it was written; what became of it is told
    /// by Result().
    bool Change(const goods::GoodsScope &scope, int count);
    const goods::BulkResult &Result() const { return m_result; }

protected:
    void Prepare() override {}
    void Load() override;
    void BeforeChecks() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void Proceed() override;
    QWidget *FirstControl() const override;

private:
    /// One side, sale or purchase: what is ticked and the values beside.
    struct Ticked
    {
        std::array<QCheckBox *, 4> rates;
        QCheckBox *defaultRate;
        DiscountSide values;
        QStringList captions = {}; ///< of the boxes

        bool Any() const;
        QStringList Text(const QString &side) const;
    };
    void BindSide(const Ticked &side, const DiscountSide::Edits &edits, QComboBox *defaultRate);
    goods::GroupDiscount Chosen() const;

    std::unique_ptr<Ui::TDiscount_Edit_Group_FRM> m_ui;
    goods::BulkValues &m_changes;
    std::unique_ptr<Ticked> m_sell;
    std::unique_ptr<Ticked> m_buy;
    const goods::GoodsScope *m_scope = nullptr; ///< while the screen is open
    goods::BulkResult m_result;
};
