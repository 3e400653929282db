#pragma once

#include "data/goods/good_records.h"
#include "screens/good_editor/discount_side.h"
#include "screens/good_editor/levy_choice.h"

#include <QtWidgets/QWidget>

#include <memory>

namespace Ui {
class DiscountPage;
}

/// The tab of discount rates, tax and toll.
class DiscountPage : public QWidget
{
    Q_OBJECT

public:
    explicit DiscountPage(QWidget *parent = nullptr);
    ~DiscountPage() override;

    void Clear();
    void Show(const TGoodInfoRec &rec);
    void Store(TGoodInfoRec &rec) const;

    /// The own percents of tax and toll.
    std::array<host::NumericEdit *, 2> PercentEdits() const { return {tax_->Percent(), toll_->Percent()}; }
    /// The good pays neither tax nor toll.
    bool BothExempt() const;

    goods::Refused CheckLevies() const;
    void ZeroWhenEmpty();
    goods::Refused CheckRates() const;
    goods::Refused CheckDefaults() const;

signals:
    /// Tax or toll was set another way.
    void LevyChanged();

private:
    std::unique_ptr<Ui::DiscountPage> ui_;
    std::unique_ptr<DiscountSide> sell_;
    std::unique_ptr<DiscountSide> buy_;
    LevyChoice *tax_;
    LevyChoice *toll_;
};
