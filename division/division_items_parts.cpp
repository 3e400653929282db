#include "division/cut_view.h"
#include "division/division_dm.h"
#include "division/division_items.h"
#include "division/part_entry.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/controls/numeric_edit.h"
#include "host/look/theme.h"
#include "rules/unit_arithmetic.h"
#include "ui_division_items.h"

#include <QLabel>
#include <QPushButton>
#include <QToolTip>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

// What is taken of the unit, and its parts: typed, changed, taken out.

using goods::CountFault;
using host::Refused;

namespace {

constexpr int TipMilliseconds = 3000;
constexpr int MostSheets = 100000;
const QString Document = u"تقسیم جزئیات"_s;
const QString MoreThanStock = u"کاربر گرامی مقدار وارد شده جهت انجام تقسیم جزئیات از موجودی بیشتر می باشد"_s;
const QString NoCount = u"کاربر گرامی مقدار وارد شده جهت تقسیم جزئیات نمی تواند صفر باشد"_s;
const QString LessThanParts = u"کاربر گرامی مقدار وارد شده از جمع مقادیر تقسیم شده بیشتر می باشد"_s;
const QString OverTotal =
    u"کاربر گرامی مقدار وارد شده به علاوه جمع مقادیر ثبت شده از مقدار کل قابل تقسیم بیشتر می باشد"_s;
const QString NoRest = u"آنچه مانده است به صورت یک قطعه در نمی آید"_s;

/// Half a roll is drawn as one.
int WholePieces(goods::Quantity count)
{
    return static_cast<int>(std::clamp<goods::Quantity>(std::ceil(count), 0, MostSheets));
}

} // namespace

// What is taken -----------------------------------------------------------------------------------------------------

goods::UnitAmounts TGoodDetailDivision_DetailItems_Get_FRM::CountTyped() const
{
    const bool second = m_row.UnitType() == good_detail::TwoUnits;
    return {m_first.Number(), second ? m_second.Number() : 0};
}

goods::UnitAmounts TGoodDetailDivision_DetailItems_Get_FRM::Total() const
{
    return goods::TotalToDivide(m_row.Stock(), CountTyped());
}

/// All of the first unit is all of the second; less of it goes by the formula.
void TGoodDetailDivision_DetailItems_Get_FRM::ComputeSecond()
{
    if (m_row.UnitType() != good_detail::TwoUnits)
        return;
    const goods::UnitAmounts onHand = m_row.Stock().onHand;
    const goods::Quantity first = m_first.Number();
    if (goods::SameQuantity(first, onHand.first))
        m_second.Show(onHand.second);
    else if (m_row.Ratio().Formula > 0)
        m_second.Show(goods::SecondQuantity(first, m_row.Ratio().Formula, m_row.Ratio().WholeUnits));
    m_form->Amount_3_EDT->setModified(false);
    if (m_form->Amount_5_EDT->hasFocus())
        m_form->Amount_5_EDT->selectAll(); // the user is there by now
}

Refused TGoodDetailDivision_DetailItems_Get_FRM::CheckCount(bool goBack)
{
    const CountFault fault = goods::CountFaultOf(m_row.Stock(), CountTyped(), m_row.Sum());
    m_countError = fault != CountFault::None;
    m_form->Amount_3_EDT->setProperty("fault", m_countError);
    host::theme::Repolish(m_form->Amount_3_EDT);
    ShowTotals();
    ShowCut();
    return m_countError ? TellCount(fault, goBack) : Refused();
}

/// The tip comes behind the focus, which would hide it.
Refused TGoodDetailDivision_DetailItems_Get_FRM::TellCount(CountFault fault, bool goBack)
{
    const QString text = fault == CountFault::MoreThanStock ? MoreThanStock
                         : fault == CountFault::Zero        ? NoCount
                                                            : LessThanParts;
    host::NumericEdit *edit = m_form->Amount_3_EDT;
    return host::Refusal{nullptr, [this, edit, text, goBack](host::MessageService &) {
                             if (goBack)
                                 FocusControl(edit);
                             ShowTip(edit, text);
                         }};
}

void TGoodDetailDivision_DetailItems_Get_FRM::ShowTip(QWidget *control, const QString &text) const
{
    QToolTip::showText(control->mapToGlobal(QPoint(0, control->height())), text, control, {}, TipMilliseconds);
}

// Parts -------------------------------------------------------------------------------------------------------------

int TGoodDetailDivision_DetailItems_Get_FRM::CurrentPart() const
{
    return m_form->GoodDetailDivisionDetailItems_GRD->CurrentKey().toInt();
}

Refused TGoodDetailDivision_DetailItems_Get_FRM::CheckPart() const
{
    if (const auto empty = m_entry->Empty())
        return host::Refusal{
            m_entry->Edit(*empty),
            [caption = m_entry->Caption(*empty)](host::MessageService &messages) { messages.NotZeroValue(caption); }};
    const auto amounts = division::AmountsIn(m_row.UnitType(), TypedPart());
    return host::When(goods::OverLimit(Total(), m_row.Sum(m_edited), amounts),
                      host::Warning(m_entry->First(), OverTotal));
}

void TGoodDetailDivision_DetailItems_Get_FRM::SavePart()
{
    m_entry->Take();
    if (Refuse(CheckPart()))
        return;
    const int stored = m_row.Store(m_entry->Pieces(), m_form->Waste_CHK->isChecked(), m_edited);
    SetIsSaved(false);
    ShowEdited(0);
    ShowParts(stored);
    NextPart();
}

/// The next part; when all is divided, what accepts it.
void TGoodDetailDivision_DetailItems_Get_FRM::NextPart()
{
    m_entry->Clear();
    m_form->Waste_CHK->setChecked(false);
    ShowCut();
    const bool done = goods::IsDivided(Total(), m_row.Sum());
    FocusControl(done ? static_cast<QWidget *>(SaveButton()) : m_entry->First());
}

void TGoodDetailDivision_DetailItems_Get_FRM::EditPart()
{
    const auto part = m_row.Part(CurrentPart());
    if (!part || !MayRemove(part->OperationRow) || Refuse(host::When(IsHalfTyped(), HalfTyped())))
        return;
    const Loading quiet(*this);
    ShowEdited(part->OperationRow);
    m_entry->Show(division::PiecesOf(m_row.UnitType(), part->Amounts));
    m_form->Waste_CHK->setChecked(part->Waste);
    m_shown = *part;
    m_shown.Amounts = TypedPart();
    ShowCut();
    FocusControl(m_entry->First());
}

bool TGoodDetailDivision_DetailItems_Get_FRM::IsHalfTyped() const
{
    if (m_edited == 0)
        return m_entry->IsTyped();
    return TypedPart() != m_shown.Amounts || m_form->Waste_CHK->isChecked() != m_shown.Waste;
}

host::TAmounts TGoodDetailDivision_DetailItems_Get_FRM::TypedPart() const
{
    return division::AmountsOfPart(m_row.UnitType(), m_entry->Pieces(), m_row.Ratio());
}

host::Refusal TGoodDetailDivision_DetailItems_Get_FRM::HalfTyped() const
{
    return host::Warning(m_entry->First(), u"کاربر گرامی سطر وارد شده هنوز ثبت نشده است."_s);
}

void TGoodDetailDivision_DetailItems_Get_FRM::Cancel()
{
    const Loading quiet(*this);
    ShowEdited(0);
    m_entry->Clear();
    m_form->Waste_CHK->setChecked(false);
    ShowCut();
    FocusControl(m_entry->First());
}

void TGoodDetailDivision_DetailItems_Get_FRM::ProposeRest()
{
    m_entry->Take();
    const goods::UnitAmounts left = goods::LeftToDivide(Total(), m_row.Sum(m_edited));
    const auto rest = goods::RestAsPart(m_row.Stock(), left, m_entry->Pieces());
    if (!rest) {
        ShowTip(m_form->Rest_BTN, NoRest);
        return;
    }
    m_entry->Show(*rest);
    ShowCut();
    FocusControl(m_entry->Last());
}

/// False, and told, when something was done since with the part; 0: with any of them.
bool TGoodDetailDivision_DetailItems_Get_FRM::MayRemove(int operationRow)
{
    if (m_row.MayChange(operationRow))
        return true;
    Refuse(host::SmartMessage(m_form->GoodDetailDivisionDetailItems_GRD, host::message::ItemInUse, {Document}));
    return false;
}

void TGoodDetailDivision_DetailItems_Get_FRM::DeletePart()
{
    const int part = CurrentPart();
    if (part == 0 || !MayRemove(part) || !m_host.messages.MsgDeleteRow())
        return;
    const host::Grid::Place place = m_form->GoodDetailDivisionDetailItems_GRD->CurrentPlace();
    m_row.Remove(part);
    SetIsSaved(false);
    if (part == m_edited)
        Cancel();
    ShowParts();
    m_form->GoodDetailDivisionDetailItems_GRD->ReturnTo(place);
}

void TGoodDetailDivision_DetailItems_Get_FRM::DeleteAll()
{
    if (m_row.Parts_QRY.IsEmpty() || !MayRemove(0) || !m_host.messages.MsgDeleteItem(u"همه سطرهاي"_s))
        return;
    m_row.RemoveAll();
    SetIsSaved(false);
    Cancel();
    ShowParts();
}

void TGoodDetailDivision_DetailItems_Get_FRM::ShowEdited(int operationRow)
{
    m_edited = operationRow;
    m_form->Part_BOX->setTitle(operationRow == 0 ? u"قطعه جدید"_s : u"ویرایش قطعه"_s);
}

void TGoodDetailDivision_DetailItems_Get_FRM::ShowParts(int standOn)
{
    host::Grid *grid = m_form->GoodDetailDivisionDetailItems_GRD;
    bool waste = m_host.settings.SettingRecord().DivisionWaste;
    for (int place = 0; place < m_row.Parts_QRY.RecordCount(); ++place)
        waste = waste || m_row.PartAt(place).Waste;
    grid->SetColumnVisible(u"Waste"_s, waste);
    if (standOn != 0)
        grid->Locate(QString::number(standOn));
    const bool any = !m_row.Parts_QRY.IsEmpty();
    for (QPushButton *button : {m_form->EditDetail_BTN, m_form->DeleteDetail_BTN, m_form->DeleteAllDetail_BTN})
        button->setEnabled(any);
    ShowTotals();
    ShowCut();
}

void TGoodDetailDivision_DetailItems_Get_FRM::ShowTotals()
{
    const goods::UnitAmounts total = Total();
    const goods::UnitAmounts sum = m_row.Sum();
    const goods::UnitAmounts left = goods::LeftToDivide(total, sum);
    const bool second = m_row.UnitType() == good_detail::TwoUnits;
    const auto amounts = [&](const QString &caption, const goods::UnitAmounts &of) {
        QString text = caption + u": "_s + host::DisplayAmount(of.first) + u' ' + m_row.Good().UnitName;
        if (second)
            text += u"، "_s + host::DisplayAmount(of.second) + u' ' + m_row.Good().Unit2Name;
        return text;
    };
    m_totals->setText(amounts(u"کل"_s, total) + u"    "_s + amounts(u"تقسیم شده"_s, sum) + u"    "_s +
                      amounts(u"مانده"_s, left));
    m_totals->setProperty("fault", left.first < 0 || left.second < 0);
    host::theme::Repolish(m_totals);
    const bool parts = m_row.UnitType() == good_detail::TotalAndPart && m_row.Ratio().Formula > 0;
    m_form->Amount_4_LBL->setText(
        host::DisplayAmount(parts ? goods::RoundedQuantity(total.first / m_row.Ratio().Formula) : total.first));
}

/// The part that is typed stands among the others, in place of the one that is changed.
void TGoodDetailDivision_DetailItems_Get_FRM::ShowCut()
{
    const goods::DividedStock stock = m_row.Stock();
    const goods::UnitAmounts count = CountTyped();
    const bool area = stock.by == goods::DividedBy::Area;
    const bool rolls = stock.by == goods::DividedBy::Packages;
    division::SheetStock sheet{area    ? stock.piece.length
                               : rolls ? stock.piece.amount
                                       : count.first,
                               area ? stock.piece.width : 0, area || rolls ? WholePieces(count.first) : 1};
    QList<division::SheetPart> parts;
    const auto add = [&](const goods::DividedPieces &pieces, int row, bool waste) {
        const goods::Quantity length = area ? pieces.length : pieces.amount;
        if (length > 0 && (!area || pieces.width > 0))
            parts << division::SheetPart{length, pieces.width, WholePieces(pieces.count), row, waste};
    };
    for (int place = 0; place < m_row.Parts_QRY.RecordCount(); ++place) {
        const host::TDivisionPart part = m_row.PartAt(place);
        if (part.OperationRow != m_edited)
            add(division::PiecesOf(m_row.UnitType(), part.Amounts), part.OperationRow, part.Waste);
    }
    add(m_entry->Pieces(), 0, m_form->Waste_CHK->isChecked());
    m_form->Cut_VIEW->SetPlan(division::PlanSheets(sheet, parts));
    m_form->Cut_VIEW->SetCurrent(CurrentPart() == 0 ? -1 : CurrentPart());
}
