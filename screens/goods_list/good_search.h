#pragma once

#include "data/goods/good_dm.h"
#include "data/goods/good_list_query.h"
#include "host/screens/base_search.h"

#include <memory>

namespace Ui {
class Tgoodlist_search_Frm;
}

/// The advanced search of the goods list: tags that the goods carry, the category they stand in, a selected list that
/// they belong to, or do not. What the user selected is kept for him; what cannot be chosen any more (a tag, a list, a
/// category that is gone, a right that was taken) is dropped from it.
// NOLINTNEXTLINE(readability-identifier-naming): the business calls it so
class Tgoodlist_search_Frm : public host::TBaseSearch_FRM
{
    Q_OBJECT

public:
    /// Both outlive the dialog.
    Tgoodlist_search_Frm(host::Host &host, TGood_DM &data, QWidget *parent = nullptr);
    ~Tgoodlist_search_Frm() override;

    /// What the list shows at the moment: its group, its stock tab, its columns.
    void SetList(const goods::ListCriteria &list) { m_list = list; }
    /// The user may use selected lists. Asks silently: without the right they are not offered.
    bool HaveSelectedListPermission() const;
    /// Anything is chosen.
    bool HaveAdvFilter() const { return goods::HaveAdvFilter(Criteria()); }
    QString GetSelectedListProcParams() const;
    /// The selected lists were worked on since the dialog was opened.
    bool ListsOpened() const { return m_listsOpened; }
    /// What is chosen, as the user reads it: "برچسب: تازه، پرفروش  ·  دسته: خوراکی / لبنیات". Empty for nothing.
    QString Summary() const;

protected:
    void Select() override;
    void FormShow() override;

private:
    goods::SearchCriteria Criteria() const;
    void FillSelectedLists();
    void OpenSelectedLists();
    void FollowSelectedList();

    TGood_DM &m_data;
    std::unique_ptr<Ui::Tgoodlist_search_Frm> m_ui;
    goods::ListCriteria m_list;
    bool m_listsOpened = false;
};
