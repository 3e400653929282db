#include "gooddetail/detail_inputs.h"
#include "gooddetail/enter_serial.h"
#include "gooddetail/enter_texts.h"
#include "host/controls/display_edit.h"
#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"
#include "ui_detail_line_panel.h"
#include "ui_enter_serial.h"

using namespace Qt::StringLiterals;

// The rows that were entered: shown, edited, taken out.

namespace texts = good_detail::texts;

void TEnter_Serial_FRM::ShowRows(bool appended)
{
    const host::Dataset &rows = m_data.EnterGoodDetail_QRY;
    // A serial more is added to the totals: a clerk may be scanning behind a range of ten thousand.
    if (!appended || rows.RecordCount() != m_totals.Rows() + 1)
        m_totals = good_detail::AmountTotals(UnitTypeNow());
    for (int i = m_totals.Rows(); i < rows.RecordCount(); ++i)
        m_totals.Add(good_detail::RowAmounts(rows, i));
    ShowTotals({m_totals.Sum(), m_totals.Rows()});
    ShowListEmpty(rows.IsEmpty());
}

void TEnter_Serial_FRM::StandOnLast()
{
    host::Grid *grid = m_form->EnterSerialList_GRD;
    if (!grid->IsEmpty())
        grid->StandOn(grid->RowCount() - 1);
}

void TEnter_Serial_FRM::EndEditing()
{
    m_editedId = 0;
    Panel().MultiSerial_RD->setEnabled(true);
    m_form->SaveRow_BTN->setText(u"&ثبت"_s);
}

void TEnter_Serial_FRM::EditRow()
{
    const int id = m_form->EnterSerialList_GRD->CurrentKey().toInt();
    const std::optional<TEnterGoodDetail_Rec> row = id == 0 ? std::nullopt : m_rows->Row(id);
    if (!row || Mode() == host::TFormMode::Review)
        return;
    if (m_rows->IsReturned(id)) {
        Tell(host::Warning(m_form->EnterSerialList_GRD, texts::ReturnedNotEdited));
        return;
    }
    QWidget *typed = HalfTyped();
    if (Tell(host::When(typed, host::Warning(typed, texts::RowNotStored))))
        return;
    const Loading quiet(*this);
    ForgetKnown();
    if (m_editedId == 0)
        m_interrupted = Typed();
    m_editedId = id;
    Panel().Serial_RD->setChecked(true);
    Panel().MultiSerial_RD->setEnabled(false);
    Inputs().SetValues({Inputs().DetailIDs(), row->DetailTitle});
    if (HasSerial())
        Panel().Serial_EDT->setText(row->DetailTitle[static_cast<size_t>(Inputs().SerialPlace())]);
    if (HasBarcode())
        Panel().Barcode_EDT->setText(row->DetailTitle[static_cast<size_t>(Inputs().BarcodePlace())]);
    ShowAmounts(row->Amounts);
    m_shown = Typed();
    ShowStatus(u"سطر انتخاب شده ویرایش می شود"_s, false);
    FocusControl(FirstControl());
}

void TEnter_Serial_FRM::GoBack()
{
    if (const auto before = std::exchange(m_interrupted, {})) {
        const Loading quiet(*this);
        Inputs().SetValues(before->Details);
        ShowAmounts(before->Amounts);
    }
}

/// Takes rows out and shows those that are left, also after an error, when they were read again.
bool TEnter_Serial_FRM::Shown(const std::function<bool()> &takeOut)
{
    const auto show = qScopeGuard([this] { ShowRows(); });
    return takeOut();
}

void TEnter_Serial_FRM::DeleteRows()
{
    host::Grid *grid = m_form->EnterSerialList_GRD;
    QList<int> ids;
    for (const QString &key : grid->MarkedKeys())
        ids << key.toInt();
    if (ids.isEmpty() && !grid->CurrentKey().isEmpty())
        ids << grid->CurrentKey().toInt();
    if (ids.isEmpty() || Mode() == host::TFormMode::Review || !m_host.messages.MsgDeleteRow())
        return;
    const host::Grid::Place place = grid->CurrentPlace();
    const bool all = Shown([&] { return m_rows->Remove(ids); });
    grid->ClearMarks();
    if (ids.contains(m_editedId))
        Cancel();
    grid->ReturnTo(place);
    SetIsSaved(false);
    if (!all)
        Tell(host::Warning(grid, ids.size() == 1 ? texts::ReturnedNotDeleted : texts::LeftAreReturned));
}

void TEnter_Serial_FRM::DeleteAll()
{
    if (m_data.EnterGoodDetail_QRY.IsEmpty() || Mode() == host::TFormMode::Review ||
        !m_host.messages.MsgDeleteItem(texts::AllRows))
        return;
    const bool all = Shown([this] { return m_rows->RemoveAll(); });
    m_form->EnterSerialList_GRD->ClearMarks();
    if (m_editedId != 0)
        Cancel();
    SetIsSaved(false);
    if (!all)
        Tell(host::Warning(m_form->EnterSerialList_GRD, texts::LeftAreReturned));
}

void TEnter_Serial_FRM::Cancel()
{
    const bool saved = IsSaved();
    {
        const Loading quiet(*this);
        const bool edited = m_editedId != 0;
        EndEditing();
        m_left.clear();
        ShowStatus({});
        ForgetKnown();
        Panel().Serial_EDT->setText({});
        Panel().SerialFrom_EDT->setText(u"0"_s);
        Panel().SerialTo_EDT->setText(u"0"_s);
        Panel().Barcode_EDT->setText({});
        if (edited) {
            GoBack();
        } else {
            Inputs().Clear();
            ClearAmounts();
            ProposeAmount();
        }
        m_data.EnterGoodDetail_Refresh();
    }
    ShowRows();
    SetIsSaved(saved);
    FocusControl(FirstControl());
}
