#pragma once

#include "gooddetail/opening_texts.h"
#include "gooddetail/serial_dm.h"
#include "host/screens/base_dock.h"

#include <QTimer>

#include <memory>

namespace Ui {
class TGoodDetails_Select_FRM;
}

/// Lets a caller pick detail values, of goods without serials unless it is for a division, to add lines to a document
/// in one step: the goods, and for the current one what is on hand of its detail values in each store.
///
/// In mode 0 several may be marked, of one good or of many; in modes 1 (goods without a quantity formula) and 2 (goods
/// in square metres) one is chosen.
class TGoodDetails_Select_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `key` is the packed `good_detail::SelectOpening`: its flag is the mode, its number the company whose stock is
    /// asked for. `caption` becomes the screen's title, empty for its own. `data` is the caller's and outlives the
    /// screen; without it the screen has one of its own.
    TGoodDetails_Select_FRM(host::Host &host, const QString &key, const QString &caption = {},
                            TSerial_DM *data = nullptr);
    ~TGoodDetails_Select_FRM() override;

    /// The unit is to be divided: goods with serials are offered as well.
    void SetForDivision(bool forDivision) { m_forDivision = forDivision; }

    /// Mode 0: the marked detail values, joined by ","; otherwise the packed `good_detail::ChosenDetail`. Empty unless
    /// the screen closed with OK.
    const QString &Chosen() const { return m_chosen; }

protected:
    void FormShow() override;
    void FormClose() override;
    host::SearchFrame *ListSearch() const override;
    host::Grid *PrintedGrid() const override;
    QByteArray SaveState() const override;
    void RestoreState(const QByteArray &state) override;

private:
    void BuildGrids();
    void OfferLists();
    void ReloadGoods();
    /// Shows the details of the current good soon: a clerk who runs down the list waits for none on the way.
    void FollowGood();
    void ShowDetails();
    /// What is waited for is shown now.
    void CatchUp();
    void ShowColumns(int good, const TLineGood_Rec &row, int unitType);
    void ShowMarks();
    void Choose();
    QString MarkedValues() const;
    QString CurrentValue() const;

    std::unique_ptr<Ui::TGoodDetails_Select_FRM> m_ui;
    std::unique_ptr<TSerial_DM> m_own;
    TSerial_DM &m_data;
    good_detail::SelectOpening m_opening;
    QTimer m_follow;
    int m_unitType = 0;
    bool m_forDivision = false;
    QMap<int, QByteArray> m_layouts; ///< of the details, by unit type
    QString m_chosen;
};
