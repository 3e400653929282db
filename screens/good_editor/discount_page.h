#pragma once

#include "data/goods/good_records.h"
#include "screens/good_editor/levy_choice.h"
#include "screens/shared/discount_side.h"

#include <QWidget>

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

    /// The titles of the discount levels; a rate whose level has none keeps its number.
    void SetTitles(const QStringList &titles);

    void Clear();
    void Show(const TGoodInfoRec &rec);
    void Store(TGoodInfoRec &rec) const;

    /// The own percents of tax and toll.
    std::array<host::NumericEdit *, 2> PercentEdits() const { return {m_tax->Percent(), m_toll->Percent()}; }
    /// The good pays neither tax nor toll.
    bool BothExempt() const;

    host::Refused CheckLevies() const;
    void ZeroWhenEmpty();
    host::Refused CheckRates() const;
    host::Refused CheckDefaults() const;

signals:
    /// Tax or toll was set another way.
    void LevyChanged();

private:
    std::unique_ptr<Ui::DiscountPage> m_ui;
    QStringList m_captions; ///< of the four rates
    std::unique_ptr<DiscountSide> m_sell;
    std::unique_ptr<DiscountSide> m_buy;
    LevyChoice *m_tax;
    LevyChoice *m_toll;
};
