#pragma once

#include "host/screens/base_get.h"

namespace Ui {
class TGoodDetailDivision_DetailItems_Get_FRM;
}

/// The source row of a division that is to be divided, or the one that was.
struct DivisionRowOpening
{
    int DivisionCode = 0;
    int DivisionRow = 0;
    int DetailValueID = 0;
    int StoreCode = 0;
    int GoodCode = 0;
    host::TFormMode Mode = host::TFormMode::New; ///< Edit: the accepted row and its parts are loaded
};

/// The screen that divides one unit on hand into parts: how much of it is taken, and the parts one by one, until all
/// that is taken is divided. Parts stand in the working table of the connection as they are typed; OK accepts them, Esc
/// gives the former ones back.
class TGoodDetailDivision_DetailItems_Get_FRM : public host::TBaseGet_FRM
{
    Q_OBJECT

public:
    explicit TGoodDetailDivision_DetailItems_Get_FRM(host::Host &host);
    ~TGoodDetailDivision_DetailItems_Get_FRM() override;

    /// Inside the editor: OK leaves the row and its parts in the working tables. The modal result.
    int OpenRow(const DivisionRowOpening &opening);
    /// On its own, with the packed `good_detail::DivisionItemsOpening`: OK saves the whole division under a new code
    /// and today's date. The working tables exist and are empty.
    int OpenText(const QString &text);

protected:
    void Prepare() override;
    void Load() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void FormClose() override;

private:
    void Begin();

    std::unique_ptr<Ui::TGoodDetailDivision_DetailItems_Get_FRM> m_form;
    DivisionRowOpening m_opening;
};
