#pragma once

#include "gooddetail/detail_line_screen.h"
#include "gooddetail/enter_rows.h"

class QProgressDialog;

namespace Ui {
class TEnter_Serial_FRM;
}

/// The screen on which the details of a line that comes in are recorded: one serial or a range, a barcode, the other
/// details of the good and how much there is of each. Rows stand in the working table until OK keeps them for the
/// document.
class TEnter_Serial_FRM : public good_detail::TDetailLine_FRM
{
    Q_OBJECT

public:
    explicit TEnter_Serial_FRM(host::Host &host);
    ~TEnter_Serial_FRM() override;

protected:
    std::optional<good_detail::DetailLineOpening> ParseOpening(const QString &text) const override;
    void BeginLine() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    host::Grid *PrintedGrid() const override;
    void TakeScans(const QStringList &scans, const QString &begun) override;

private:
    void BindRows();
    void BindLeaving();
    void ShowColumns();
    void ProposeAmount();

    // Leaving a field
    host::Refused LeaveSerial();
    host::Refused LeaveBarcode();
    void ShowKnown(const QString &text);
    void ForgetKnown();

    // One row
    void StoreByKey();
    void SaveRow();
    void StoreRow();
    host::Refused CheckRow();
    host::Refused CheckSerial();
    host::Refused CheckBarcode();
    host::Refused CheckDetails();
    good_detail::EnterRow Typed();
    QString SerialTyped() const;
    void Told(const good_detail::EnterRefusal &refusal);
    void NextRow(const QString &stored);
    void ShowLeft(const QString &reason);

    // A range
    void StoreRange();
    host::Refused CheckRange(std::optional<host::TSerialRange> &range);
    host::TSerialBatchResult Generate(const good_detail::EnterRow &row, const host::TSerialRange &range);
    void TellRange(const QString &text, const QStringList &serials);

    // Rows
    void EditRow();
    /// Where something stands that no row has; null when there is none.
    QWidget *HalfTyped();
    /// The details and amounts as they were before a row was edited: they are those of what is scanned next.
    void GoBack();
    bool Shown(const std::function<bool()> &takeOut);
    void DeleteRows();
    void DeleteAll();
    void Cancel();
    /// `appended`: a row came behind those that were shown, which are as they were.
    void ShowRows(bool appended = false);
    void StandOnLast();
    void EndEditing();

    std::unique_ptr<Ui::TEnter_Serial_FRM> m_form;
    std::optional<good_detail::EnterRows> m_rows;
    int m_editedId = 0;                                 ///< the row that is edited; 0 while rows are added
    good_detail::EnterRow m_shown;                      ///< the edited row, as it was shown
    std::optional<good_detail::EnterRow> m_interrupted; ///< what was typed when its editing began
    bool m_kept = false;                                ///< closed by OK
    good_detail::DetailLineResult m_opened;             ///< what the rows came to on opening
    good_detail::AmountTotals m_totals{good_detail::OneUnit};
    QStringList m_left;                           ///< serials that were scanned and refused
    std::optional<host::TDetailValues> m_before;  ///< the details before those of a known serial took their place
    std::optional<host::TDetailValues> m_brought; ///< the details that a known serial brought
};

namespace good_detail {

/// Opens the enter screen on a line; what its rows come to when it closed with OK.
std::optional<DetailLineResult> OpenEnter(host::Host &host, const DetailLineOpening &opening);

} // namespace good_detail
