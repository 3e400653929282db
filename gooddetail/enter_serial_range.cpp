#include "gooddetail/detail_inputs.h"
#include "gooddetail/enter_serial.h"
#include "gooddetail/enter_texts.h"
#include "host/controls/display_edit.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "ui_detail_line_panel.h"
#include "ui_enter_serial.h"

#include <QProgressDialog>
#include <QPushButton>

using namespace Qt::StringLiterals;

// Serials of a range, as a set.

using host::Refused;
using host::TSerialBatchResult;
using host::TSerialFate;
using host::TSerialRange;
namespace texts = good_detail::texts;

namespace {

constexpr qsizetype MostListed = 200; ///< serials in a message; a box with thousands would be higher than the screen

QStringList Serials(const TSerialBatchResult &result, const QList<TSerialFate> &fates)
{
    QStringList serials;
    for (const TSerialBatchResult::Left &each : result.left)
        if (fates.contains(each.Fate))
            serials << each.Serial;
    return serials;
}

} // namespace

Refused TEnter_Serial_FRM::CheckRange(std::optional<TSerialRange> &range)
{
    range = host::SerialRange(Panel().SerialFrom_EDT->text(), Panel().SerialTo_EDT->text());
    if (!range)
        return host::Warning(Panel().SerialFrom_EDT, texts::RangeNoNumbers);
    if (range->From == 0 && range->To == 0)
        return host::Required(Panel().SerialFrom_EDT, u"از سریال"_s);
    return host::When(range->IsTooLong(), host::Warning(Panel().SerialTo_EDT, texts::RangeTooLong));
}

void TEnter_Serial_FRM::StoreRange()
{
    std::optional<TSerialRange> range;
    if (Tell(CheckRange(range)) || Tell(CheckBarcode()) || Tell(CheckDetails()))
        return;
    if (range->IsEmpty()) {
        ShowStatus(texts::RangeEmpty);
        return;
    }
    const good_detail::EnterRow row = Typed();
    TSerialBatchResult judged;
    if (!Line().IsReturn) {
        judged = m_host.serialBatches.JudgeSerials(m_rows->Batch(row, range));
        TellRange(texts::RangeTaken, Serials(judged, {TSerialFate::InLine, TSerialFate::InStock}));
    }
    const bool useless = !Line().IsReturn && judged.Written == 0;
    const TSerialBatchResult result = useless ? judged : Generate(row, *range);
    if (result.Cancelled) {
        ShowStatus(texts::RangeGivenUp);
        return;
    }
    if (result.Written > 0) {
        NextRow({});
        Panel().SerialFrom_EDT->setText(u"0"_s);
        Panel().SerialTo_EDT->setText(u"0"_s);
        FocusControl(FirstControl());
    }
    ShowStatus(u"%1 سریال اضافه شد"_s.arg(host::DisplayNumber(QString::number(result.Written))), false);
    if (Line().IsReturn) {
        TellRange(texts::RangeNotReturned,
                  Serials(result, {TSerialFate::InLine, TSerialFate::InStock, TSerialFate::OtherValues,
                                   TSerialFate::NotSold, TSerialFate::NotReturnable, TSerialFate::NothingOnHand,
                                   TSerialFate::NotSoldAmount, TSerialFate::MoreThanOnHand}));
        return;
    }
    TellRange(texts::RangeConflicts, Serials(result, {TSerialFate::OtherValues}));
}

/// Writes what may be written of the range, with the notice that lets the user give it up.
TSerialBatchResult TEnter_Serial_FRM::Generate(const good_detail::EnterRow &row, const TSerialRange &range)
{
    QProgressDialog notice(texts::Generating, {}, 0, 1, this);
    // Only Esc and the mouse give up: the Enter that began this may still be held.
    auto *cancel = new QPushButton(u"انصراف Esc"_s, &notice);
    cancel->setAutoDefault(false);
    cancel->setFocusPolicy(Qt::NoFocus);
    notice.setCancelButton(cancel);
    notice.setObjectName(u"Range_PRG"_s);
    notice.setWindowTitle(Title());
    notice.setWindowModality(Qt::ApplicationModal);
    notice.setMinimumDuration(0);
    notice.setAutoReset(false);
    notice.setAutoClose(false);
    notice.setValue(0);
    host::TSerialBatch batch = m_rows->Batch(row, range);
    batch.Progress = [&notice](int done, int steps) {
        notice.setMaximum(steps);
        notice.setValue(done);
        return !notice.wasCanceled();
    };
    host::Grid *grid = m_form->EnterSerialList_GRD;
    grid->setUpdatesEnabled(false);
    TSerialBatchResult result;
    try {
        result = m_host.serialBatches.EnterSerials(batch);
        if (result.Written > 0)
            m_data.EnterGoodDetail_Refresh();
    } catch (...) {
        grid->setUpdatesEnabled(true);
        throw;
    }
    grid->setUpdatesEnabled(true);
    notice.hide();
    activateWindow(); // some window managers leave the keys with the notice
    return result;
}

void TEnter_Serial_FRM::TellRange(const QString &text, const QStringList &serials)
{
    if (serials.isEmpty())
        return;
    QString list = serials.mid(0, MostListed).join(u',');
    if (serials.size() > MostListed)
        list += u" … (%1)"_s.arg(host::DisplayNumber(QString::number(serials.size())));
    Tell(host::Warning(Panel().SerialFrom_EDT, text + u'\n' + list));
}
