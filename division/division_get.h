#pragma once

#include "division/division_dm.h"
#include "gooddetail/opening_texts.h"
#include "host/screens/base_get.h"

#include <functional>
#include <memory>

class QPrinter;
class TGoodDetailDivision_DetailItems_Get_FRM;
struct DivisionRowOpening;

namespace Ui {
class TGoodDetailDivision_Get_FRM;
}

namespace division {

/// Lets the user pick a unit on hand: mode 1 of goods without a formula, 2 of goods in square metres.
using UnitPicker = std::function<std::optional<good_detail::ChosenDetail>(int mode)>;

} // namespace division

/// The editor of one division: its source rows, and below them the parts of the current one. Everything stands in
/// working tables until F3; who leaves without saving leaves the saved division as it was.
///
/// F2 goes to the field that takes a serial or a barcode, F4 picks a unit, F5 opens the row, Del removes it, F9 prints
/// the division.
class TGoodDetailDivision_Get_FRM : public host::TBaseGet_FRM
{
    Q_OBJECT

public:
    /// `host` outlives the screen.
    TGoodDetailDivision_Get_FRM(host::Host &host, division::UnitPicker picker);
    ~TGoodDetailDivision_Get_FRM() override;

    /// Paints the division as it stands on the screen.
    void Print(QPrinter &printer);

protected:
    void Prepare() override;
    void Load() override;
    host::Refused MaySave() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void AfterWrite() override;
    QString PrepareRecoveryQuery() const override;
    QWidget *FirstControl() const override;
    void SetReadOnly(bool readOnly) override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    /// A unit that may become a row, or one that is a row already.
    struct Unit
    {
        int DetailValueID = 0;
        int StoreCode = 0;
        int GoodCode = 0;
        int Row = 0; ///< 0: none yet
        QString Text = {};
        bool Exact = false; ///< one of its values is what was typed
    };

    void BuildGrids();
    void BindCommands();
    void Show(const host::TDivisionHeader &header);
    void ShowRows(int row = 0);
    void ShowItems();
    void ShowState();
    QString Pieces() const;
    void Tell(const QString &note);

    int CurrentRow() const;
    Unit RowAt(int place) const;
    /// The row that takes of this unit already; 0 when there is none.
    int RowOf(int detailValueId, int storeCode) const;

    void NewRow();
    void EditRow();
    void DeleteRow();
    void TakeScan();
    /// What stands in the field was not answered yet.
    bool ScanPending() const;
    QList<Unit> UnitsOf(const QString &text) const;
    /// Which of several the user means; -1 for none.
    int ChooseUnit(const QList<Unit> &units);
    /// Opens the unit's row, or a new one for it.
    void OpenUnit(const Unit &unit);
    void OpenItems(const DivisionRowOpening &opening);
    void Preview();

    division::UnitPicker m_picker;
    TDivision_DM m_data;
    std::unique_ptr<Ui::TGoodDetailDivision_Get_FRM> m_ui;
    std::unique_ptr<TGoodDetailDivision_DetailItems_Get_FRM> m_items; ///< made on first use
    host::TDivisionHeader m_header;                                   ///< as it was read, or as a new one begins
    QString m_answered; ///< what was scanned last, while it stands in the field as it was
};
