#include "host/look/theme.h"
#include "screens/goods_list/good_list.h"
#include "screens/goods_list/good_search.h"
#include "ui_good_list.h"

#include <QSignalBlocker>

using namespace Qt::StringLiterals;

// The advanced search of the goods list, and selected lists of goods.

void TGood_List_FRM::BindSearch()
{
    Bind(m_ui->ADVSearch_BTN, Qt::Key_F8, [this] { OpenSearch(); });
    connect(m_ui->ADVSearch_CHK, &QCheckBox::toggled, this, [this] {
        ShowSearch();
        if (IsShowing() && !m_advancedParams.isEmpty())
            Command(m_ui->ADVSearch_CHK->text(), [this] { Refresh(); });
    });
    Bind(m_ui->SelectedList_BTN, {}, [this] { AddToSelectedList(); });
}

Tgoodlist_search_Frm &TGood_List_FRM::SearchForm()
{
    if (!m_search)
        m_search = std::make_unique<Tgoodlist_search_Frm>(m_host, m_goods);
    m_search->SetList(Criteria());
    return *m_search;
}

/// What the user selected the last time, here or in another goods list.
void TGood_List_FRM::RecallSearch()
{
    SearchForm().Recall();
    TakeSearch();
}

void TGood_List_FRM::TakeSearch()
{
    const bool any = !m_search->GeneralFilter().isEmpty() && m_search->HaveAdvFilter();
    m_advancedParams = any ? m_search->GeneralFilter() : QString();
    m_searchSummary = any ? m_search->Summary() : QString();
    ShowSearch();
}

void TGood_List_FRM::OpenSearch()
{
    const QString before = m_advancedParams;
    if (SearchForm().ShowModally() != QDialog::Accepted) {
        if (m_search->ListsOpened())
            RenewSearched();
        return;
    }
    TakeSearch();
    const QSignalBlocker quiet(m_ui->ADVSearch_CHK);
    m_ui->ADVSearch_CHK->setChecked(true); // who asks for something wants to see it
    ShowSearch();
    if (!before.isEmpty() || !m_advancedParams.isEmpty())
        Refresh();
    m_ui->GoodListDB_GRD->setFocus(Qt::OtherFocusReason);
}

void TGood_List_FRM::ShowSearch()
{
    m_ui->ADVSearch_LBL->setText(m_searchSummary.isEmpty() ? u"بدون شرط"_s : m_searchSummary);
    m_ui->ADVSearch_LBL->setEnabled(m_ui->ADVSearch_CHK->isChecked() && !m_searchSummary.isEmpty());
    // As rich text: the names in it are the user's.
    m_ui->ADVSearch_LBL->setToolTip(host::theme::PlainToolTip(m_searchSummary));
}

void TGood_List_FRM::LeaveSearchOut()
{
    const QSignalBlocker quiet(m_ui->ADVSearch_CHK);
    m_ui->ADVSearch_CHK->setChecked(false);
    ShowSearch();
}

/// Puts the marked goods, or the current one, into a selected list.
void TGood_List_FRM::AddToSelectedList()
{
    QStringList codes = m_ui->GoodListDB_GRD->MarkedKeys();
    if (codes.isEmpty() && !m_ui->GoodListDB_GRD->IsEmpty())
        codes << m_ui->GoodListDB_GRD->CurrentKey();
    // The service asks for the right.
    if (!codes.isEmpty() && m_host.selectedLists.AddToSelectedList(codes.join(u',')) != 0)
        RenewSearched();
}

void TGood_List_FRM::RenewSearched()
{
    if (m_ui->ADVSearch_CHK->isChecked() && !m_advancedParams.isEmpty())
        Renew();
}
