#include "desk/services/selected_list_store.h"

#include "desk/selected/selected_lists.h"
#include "host/data/persian_text.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int FlashTime = 2000; // milliseconds

QString Counted(qsizetype goods)
{
    return u"%1 کالا"_s.arg(host::PersianDigits(QString::number(goods)));
}

} // namespace

bool SelectedListStore::Granted() const
{
    return host::Granted(*m_host, host::TSoftwarePart::Goods, host::TPermission::SelectedLists);
}

void SelectedListStore::Call_SelectedLists(int code)
{
    if (!Granted())
        return;
    TSelectedLists_FRM lists(*m_host, host::TFormMode::DockedList, m_chooseGoods);
    lists.StandOn(code);
    lists.ShowModally();
}

int SelectedListStore::AddToSelectedList(const QString &goodCodes)
{
    if (!Granted())
        return 0;
    TSelectedLists_FRM lists(*m_host, host::TFormMode::Selection, m_chooseGoods);
    lists.SetPrompt(Counted(host::Codes(goodCodes).size()) + u" به کدام لیست افزوده شود؟"_s);
    if (lists.ShowModally() != QDialog::Accepted)
        return 0;
    const int added = SelectedListsData(m_connection).Add(lists.ChosenCode(), goodCodes);
    m_host->messages.ShowFlashMessage(Counted(added) + u" به لیست افزوده شد"_s, FlashTime);
    return lists.ChosenCode();
}

} // namespace desk
