#pragma once

#include "division/divided_row.h"
#include "gooddetail/typed_inputs.h"
#include "host/screens/base_get.h"

#include <memory>

class TDivision_DM;

namespace Ui {
class TGoodDetailDivision_DetailItems_Get_FRM;
}
namespace division {
class PartEntry;
}

/// The screen that divides one unit on hand into parts: how much of it is taken, and the parts one by one, until all
/// that is taken is divided. Parts stand in the working table of the connection as they are typed; OK accepts them, Esc
/// gives the former ones back. Beside the list the sheets are drawn as they may be cut.
///
/// Enter walks the inputs and stores the part at the last one, F6 proposes what is left as the last part, F2 changes a
/// part, Del removes it, F3 accepts.
class TGoodDetailDivision_DetailItems_Get_FRM : public host::TBaseGet_FRM
{
    Q_OBJECT

public:
    /// `host` outlives the screen.
    explicit TGoodDetailDivision_DetailItems_Get_FRM(host::Host &host);
    ~TGoodDetailDivision_DetailItems_Get_FRM() override;

    /// Inside the editor: OK leaves the row and its parts in the working tables. The modal result.
    int OpenRow(const DivisionRowOpening &opening);
    /// On its own, with the packed `good_detail::DivisionItemsOpening`: OK saves the whole division under a new code
    /// and today's date. The working tables exist and are empty; they are dropped on closing.
    int OpenText(const QString &text);

protected:
    void Prepare() override;
    void Load() override;
    void BeforeChecks() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void FormClose() override;
    bool FormKeyDown(QKeyEvent *event) override;
    QWidget *FirstControl() const override;
    host::Grid *PrintedGrid() const override;

private:
    void BindParts();
    void BindCount();
    std::optional<DivisionRowOpening> OnItsOwn();
    void Begin(const DivisionRowOpening &opening);
    void ShowSource();
    void ShowCaptions();
    void ShowColumns();
    void ProposeCount();

    // What is taken
    goods::UnitAmounts CountTyped() const;
    goods::UnitAmounts Total() const;
    void ComputeSecond();
    host::Refused CheckCount(bool goBack);
    host::Refused TellCount(goods::CountFault fault, bool goBack);

    // Parts
    host::Refused CheckPart() const;
    void SavePart();
    void NextPart();
    void EditPart();
    /// A part is typed, or one that is changed differs from what it was.
    bool IsHalfTyped() const;
    host::Refusal HalfTyped() const;
    host::TAmounts TypedPart() const;
    void Cancel();
    void ProposeRest();
    bool MayRemove(int operationRow);
    void DeletePart();
    void DeleteAll();
    int CurrentPart() const;
    void ShowEdited(int operationRow);
    void ShowParts(int standOn = 0);
    void ShowTotals();
    void ShowCut();
    void ShowTip(QWidget *control, const QString &text) const;

    std::unique_ptr<Ui::TGoodDetailDivision_DetailItems_Get_FRM> m_form;
    division::DividedRow m_row;
    good_detail::ShownAmount m_first;  ///< what is taken: a count, or an amount in the first unit
    good_detail::ShownAmount m_second; ///< of goods in two units
    division::PartEntry *m_entry = nullptr;
    QLabel *m_totals = nullptr;
    std::optional<DivisionRowOpening> m_given; ///< by OpenRow, until it was taken
    std::unique_ptr<TDivision_DM> m_own;       ///< of a division that this screen saves itself
    int m_ownCode = 0;
    host::TDivisionPart m_shown; ///< the part that is changed, as it was shown
    int m_edited = 0;            ///< row number of the part that is changed; 0 while parts are added
    bool m_countError = false;
};
