#pragma once

#include "data/goods/good_dm.h"
#include "data/goods/opening_copy.h"
#include "host/screens/base_get.h"
#include "screens/opening_stock/opening_details.h"

#include <memory>

namespace Ui {
class FirstAssetGet;
}

/// What the screens of opening rows work on; all of it belongs to the editor of the good.
struct OpeningRowsContext
{
    TGood_DM &data;
    goods::OpeningCopy &copy;
    OpeningDetails &details;
    goods::OpeningGood good;
    /// Documents rest on the opening stock: its rows are looked at only.
    bool fixed = false;
    /// The row whose editor opens; 0 for a new one.
    int row = 0;
};

/// The editor of one opening row: how much of the good a store begins with. What it saves goes into the working copy of
/// the good's editor and lasts when the good is saved.
class TFirstAsset_Get_FRM : public host::TBaseGet_FRM
{
    Q_OBJECT

public:
    /// `context` outlives the screen. The opening text is that of `goods::PackOpeningRow`; the good and the row are
    /// taken from the context, because the text knows two decimals of the formula and names hold any mark.
    TFirstAsset_Get_FRM(host::Host &host, OpeningRowsContext &context);
    ~TFirstAsset_Get_FRM() override;

    /// The number of the row; of a new one once it is saved.
    int Row() const { return m_row.Radif; }

protected:
    void Prepare() override;
    void Load() override;
    host::Refused MaySave() override;
    void BeforeChecks() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void FormClose() override;
    QString PrepareRecoveryQuery() const override;
    QWidget *FirstControl() const override;

private:
    void BindQuantities();
    void AlignLabels();
    void ShowRow();
    void EnterDetails();
    void StoreChanged();
    host::Refused StoreGiven() const;
    host::Refused StoreUsedOnce();
    host::Refused StockStaysPositive() const;

    OpeningRowsContext &m_context;
    std::unique_ptr<Ui::FirstAssetGet> m_ui;
    TGoodFirstAsset_Rec m_row;
    int m_detailStore = 0; ///< where the entered details stand
    bool m_saved = false;
};

/// The good above its rows.
QString OpeningGoodTitle(const goods::OpeningGood &good);
/// Tells that the opening amounts are closed; true when they are.
bool OpeningPeriodClosed(host::Host &host, QWidget *beside);
