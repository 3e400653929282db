#pragma once

#include "gooddetail/detail_line_screen.h"

#include <QTimer>

namespace Ui {
class TExit_Serial_FRM;
}

/// What leaves a store with one line of a document: the detail values on hand are listed, narrowed by what is typed,
/// and of each as much as wanted is chosen. Nothing is created here.
///
/// A scanned serial goes out at Enter and the next one can be scanned. OK keeps what was chosen for the document's
/// save; leaving forgets it.
class TExit_Serial_FRM : public good_detail::TDetailLine_FRM
{
    Q_OBJECT

public:
    explicit TExit_Serial_FRM(host::Host &host);
    ~TExit_Serial_FRM() override;

    void reject() override;

protected:
    std::optional<good_detail::DetailLineOpening> ParseOpening(const QString &text) const override;
    void BeginLine() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void FormClose() override;
    /// What is typed only looks for something; what has to be saved is a choice.
    void ShowSaved(bool saved) override;
    bool FormKeyDown(QKeyEvent *event) override;
    /// In review the inputs still narrow the list; nothing can be chosen.
    void SetReadOnly(bool readOnly) override;
    host::Grid *PrintedGrid() const override;
    void TakeScans(const QStringList &scans, const QString &begun) override;

private:
    void BuildGrid();
    void BindCommands();
    void BindInputs();
    void OrderTabs();

    // The list.
    TExitNarrowing Typed() const;
    /// Narrows the list soon: letters that follow each other fast are one search.
    void InputChanged();
    void Narrow();
    /// Reads the list and the totals again: another choice.
    void Renew();
    /// Reads the list and the totals again, standing on the row with this ID.
    void Reload(int id);
    void TakeOnlyRow();
    int CurrentRow() const;
    bool IsFetched(const QString &key) const;
    /// An input of measures: what is typed there looks for rows, it takes nothing out by itself.
    bool Narrows(const host::NumericEdit *edit) const;
    /// The user has typed an amount; `withMeasures`: or a measure.
    bool HasAmounts(bool withMeasures) const;

    // Choosing.
    bool MayChoose() const { return Mode() != host::TFormMode::Review; }
    /// What becomes of a scan.
    enum class Scanned { Out, Asks, Left };
    Scanned Scan(QLineEdit *edit, const QString &typed);
    QString WhyNot(const QString &serial);
    /// Takes a scan; false when it waits for its amount.
    bool TakeScan(QLineEdit *edit);
    /// Says something, and what was scanned before and did not go out.
    void Say(const QString &text, bool fault = false);
    void SaveRow();
    void ChooseRange();
    /// Takes so much of the row out, or says why not. True when it went.
    bool Choose(const TExitGoodDetail_Rec &row, const host::TAmounts &amounts);
    host::Refused MoreThanOnHand(const host::TAmounts &typed, const host::TAmounts &onHand) const;
    void EditRow();
    void DeleteRow();
    void DeleteAll();
    void Cancel();
    void ClearTyped();
    void ForgetDetails();
    void NotSaved();
    host::Refused AmountsLeftOver();

    std::unique_ptr<Ui::TExit_Serial_FRM> m_ui;
    QTimer m_narrow;
    QStringList m_left;       ///< serials that were scanned and could not go out
    int m_last = 0;           ///< the row that was current before what is typed left none
    bool m_filled = false;    ///< there are working rows of the line
    bool m_chosen = false;    ///< another choice than when the screen was opened
    bool m_takenOver = false; ///< the amounts shown are those of the only row, nobody typed them
    bool m_edited = false;    ///< the details shown are those of a row that was taken up
    bool m_filling = false;   ///< the screen writes into its inputs
};

namespace good_detail {

/// Opens the exit screen on a line; what was chosen, nothing when it was left.
std::optional<DetailLineResult> OpenExit(host::Host &host, const DetailLineOpening &opening);

} // namespace good_detail
