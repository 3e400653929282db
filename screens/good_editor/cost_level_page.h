#pragma once

#include "data/goods/good_records.h"
#include "screens/good_editor/cost_level_side.h"
#include "screens/good_editor/final_price_switch.h"

#include <QWidget>

#include <memory>

namespace Ui {
class CostLevelPage;
}

/// The tab of prices by level.
class CostLevelPage : public QWidget
{
    Q_OBJECT

public:
    /// `run` is the boundary of errors for what happens at once.
    CostLevelPage(host::Host &host, goods::Prices &data, const host::Boundary &run, QWidget *parent = nullptr);
    ~CostLevelPage() override;

    /// Makes the working prices of a good and shows them.
    void Open(int goodCode, host::TFormMode mode);
    /// The good got another code, and its working rows with it.
    void MoveTo(int goodCode);
    void Show(const TGoodInfoRec &rec);
    void Store(TGoodInfoRec &rec) const;

    /// The levels have other titles; what is typed stays.
    void ReloadTitles();

    void SetBothExempt(bool exempt);
    void SetReadOnly(bool readOnly);
    /// Writes a price that is still being typed to its working row.
    void Post();
    /// Moves the focus out of a grid first, so that its price counts.
    host::Refused CheckDefaults();

signals:
    void Changed();

private:
    void WarnOfSettings();

    host::Host &m_host;
    goods::Prices &m_data;
    std::unique_ptr<Ui::CostLevelPage> m_ui;
    CostLevelSide *m_sell;
    CostLevelSide *m_buy;
    FinalPriceSwitch *m_sellFinal;
    FinalPriceSwitch *m_buyFinal;
    bool m_isNew = true;
};
