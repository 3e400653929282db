#pragma once

#include "gooddetail/amount_entry.h"
#include "gooddetail/detail_inputs.h"
#include "gooddetail/detail_line.h"
#include "gooddetail/serial_dm.h"
#include "host/controls/grid_column.h"
#include "host/screens/base_get.h"

class QLabel;
class QLineEdit;

namespace host {
class DisplayEdit;
class Grid;
class NumericEdit;
} // namespace host
namespace Ui {
class DetailLinePanel;
}

namespace good_detail {

class TypedInputs;

/// The base of the screens on which the details of one document line come in and go out: header, serial, range and
/// barcode inputs, the inputs of the other details, the amounts with their arithmetic, running totals.
///
/// A derived screen sets up its form, gives the panel of inputs a place in it (`SetUpPanel`), and says in `BeginLine`
/// what opening means once the line is known. It reports its rows by `ShowTotals`. Saving (F3) is OK: `Write` keeps
/// the rows for the document; leaving by Esc keeps nothing.
class TDetailLine_FRM : public host::TBaseGet_FRM
{
    Q_OBJECT

public:
    TDetailLine_FRM(host::Host &host, InputMode mode);
    ~TDetailLine_FRM() override;

    /// Opens on a line and shows the screen; the modal result, 0 when it gave up while opening.
    int OpenLine(const DetailLineOpening &opening);
    /// The same from the opening text of an export: `key` and `mode` as the host asked for.
    int OpenText(const QVariant &key, host::TFormMode mode, const QString &text);

    /// The quantity of the document's line, for an opening text that keeps but two decimals of it. Counts for the next
    /// opening.
    void SetWanted(host::Quantity amount) { m_wanted = amount; }

    /// What the rows that are kept for the line come to.
    const DetailLineResult &Result() const { return m_result; }

protected:
    /// The line that an opening text tells of; nothing when it does not have the format.
    virtual std::optional<DetailLineOpening> ParseOpening(const QString &text) const = 0;
    /// Reads the rows of the line; header and inputs stand.
    virtual void BeginLine() = 0;

    /// Makes the panel in `place`, which has a layout.
    void SetUpPanel(QWidget *place);
    /// Gives the list of rows a notice for the time when it is empty.
    void SetUpList(host::Grid *grid);
    void ShowListEmpty(bool empty);
    /// The columns differ by unit type: each has a layout of its own, of `PrintedGrid`.
    QByteArray SaveState() const override;
    void RestoreState(const QByteArray &state) override;
    void Prepare() override;
    void Load() override;
    void FormClose() override;
    QWidget *FirstControl() const override;

    const host::TDocumentLine &Line() const { return m_line; }
    int UnitTypeNow() const { return m_line.UnitType; }
    const UnitRatio &Ratio() const { return m_ratio; }
    QString UnitName() const;
    QString Unit2Name() const;
    Ui::DetailLinePanel &Panel() { return *m_panel; }
    const Ui::DetailLinePanel &Panel() const { return *m_panel; }
    DetailInputs &Inputs() const;
    /// The good has a serial; its inputs are shown.
    bool HasSerial() const;
    bool HasBarcode() const;
    /// The range is chosen, not the single serial.
    bool IsRange() const;

    // Amounts ------------------------------------------------------------------------------------------------------

    /// As typed, with what leaving the focused field would compute.
    host::TAmounts Amounts();
    void ShowAmounts(const host::TAmounts &amounts);
    /// Back to "0".
    void ClearAmounts();
    /// Their inputs.
    const TypedInputs &AmountInputs() const { return *m_amounts; }
    /// The first input without which there is no amount: not the two parts of a total, of which one may be 0, nor the
    /// second amount of two units, which rounds to 0 when there is less than one of them.
    host::Refused AmountMissing();

    // Rows ---------------------------------------------------------------------------------------------------------

    /// The columns of the details (serial "سریال", barcode "بارکد", others their titles).
    QList<host::GridColumn> DetailColumns() const;
    /// The columns of the amounts by unit type. `suffix` goes behind the fields, `ending` behind the titles.
    QList<host::GridColumn> AmountColumns(const QString &suffix = {}, const QString &ending = {}) const;
    /// The amounts of the current row of a row set; `suffix` as above.
    static host::TAmounts AmountsAt(const host::Dataset &rows, const QString &suffix = {});
    /// The result of the screen and the line of totals below.
    void ShowTotals(const DetailLineResult &result);
    /// The result alone: of a screen that closes without keeping its rows it is what was kept before.
    void SetResult(const DetailLineResult &result) { m_result = result; }
    /// Says something beside the inputs that needs no answer; `fault` in the colour of refusals.
    void ShowStatus(const QString &text, bool fault = true);
    /// Serials in a line of status, the last of many.
    static QString Listed(const QStringList &serials);
    /// Says why something is refused; scans that come meanwhile are taken afterwards. False when nothing is.
    bool Tell(const host::Refused &refused);
    void ShowError(const QString &text, const QString &caption) override;
    /// What was scanned while a message stood over the screen, and what was begun behind it; may be called when the
    /// screen has closed.
    virtual void TakeScans(const QStringList &scans, const QString &begun) = 0;
    /// Types the beginning of a scan into an input, where the scanner goes on.
    static void GoOn(QLineEdit *edit, const QString &begun);

    TSerial_DM m_data;

private:
    void KeepScans(const std::function<void()> &message);
    void Begin();
    void ForgetGiven();
    bool FindGood();
    bool FindStore();
    void ShowHeader();
    void AlignCaptions();
    int TitleWidth(const QString &title, int least) const;
    void BindKeyboard();
    void ShowSerialChoice();

    InputMode m_mode;
    std::unique_ptr<Ui::DetailLinePanel> m_panel;
    TypedInputs *m_amounts = nullptr;
    QLabel *m_totals;
    QLabel *m_status;
    QLabel *m_empty;
    QHash<int, QString> m_layouts;            ///< of the list, by unit type
    std::optional<DetailLineOpening> m_given; ///< by OpenLine, until it was taken
    std::optional<host::Quantity> m_wanted;
    DetailLineOpening m_opening;
    host::TDocumentLine m_line;
    UnitRatio m_ratio;
    DetailLineResult m_result;
};

} // namespace good_detail
