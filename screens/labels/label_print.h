#pragma once

#include "data/goods/good_prices.h"
#include "host/screens/base_dock.h"
#include "host/screens/refusals.h"
#include "screens/labels/label_rows.h"

#include <memory>
#include <vector>

namespace Ui {
class TGood_Label_FRM;
}

/// Labels with barcodes of some goods: layout, price and numbers are chosen beside a preview, then shown page by page
/// (F9), printed (F3) or written to a PDF file (F8). What is chosen is kept per user, the goods are not.
class TGood_Label_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `host` and `prices` outlive the screen.
    TGood_Label_FRM(host::Host &host, goods::Prices &prices);
    ~TGood_Label_FRM() override;

    /// The goods of the next opening, in the order of their labels.
    void SetGoods(const QList<int> &codes) { m_codes = codes; }

protected:
    void FormShow() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    QByteArray SaveState() const override;
    void RestoreState(const QByteArray &state) override;

private:
    void BuildChoices();
    void BuildGrid();
    void ShowLevels();
    void ShowChoices(const labels::Choices &choices);
    labels::Choices ChosenNow() const;
    /// What was chosen or typed counts at once: rows, totals and preview follow.
    void Follow();
    void ShowFields();
    void ShowTotals();
    void ShowPreview();
    void EditCount(int row);

    std::vector<host::Check> Checks() const;
    /// Says what is wrong with the choices and goes there; true when nothing is.
    bool MayPrint();
    void Preview();
    void Print();
    void WritePdf();

    std::unique_ptr<Ui::TGood_Label_FRM> m_ui;
    goods::Prices &m_prices;
    labels::LabelRows m_rows;
    QList<int> m_codes;
    int m_wantedLevel = labels::OwnDefaultLevel; ///< kept, until the levels are read
    bool m_filling = false;
};
