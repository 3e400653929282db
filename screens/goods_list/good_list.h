#pragma once

#include "data/goods/good_dm.h"
#include "data/goods/good_list_query.h"
#include "host/controls/grid.h"
#include "host/screens/base_dock.h"
#include "host/screens/search_manager.h"
#include "screens/bulk_changes/bulk_commands.h"
#include "screens/goods_list/good_removal.h"
#include "screens/goods_list/good_tags.h"
#include "screens/opening_stock/opening_details.h"

#include <QTimer>

#include <memory>
#include <optional>

class QLabel;
class QMenu;
class TGood_Get_FRM;
class TGood_Movements_FRM;
class Tgoodlist_search_Frm;

namespace goods_list {
class TagMarks;
}

namespace Ui {
class TGood_List_FRM;
}

/// The goods list: groups beside the goods, search above, commands below. Docked it browses and maintains goods
/// (mode 1); modal it lets the user choose one or several for another part of the suite (mode 5).
///
/// The keyboard belongs to the grid: what is typed there goes to the search, Down comes back from it, Esc first empties
/// the search and then closes the screen, Enter takes the current good. A scanned barcode is found whatever the search
/// is set to and whatever the group and stock tab leave out.
///
/// A list may be opened again after it was closed; it keeps its group, its search column and its layout, for the same
/// user. The caller
/// sets locate code, parameter text and mode before each opening.
class TGood_List_FRM : public host::TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `host` outlives the screen. `openingText` is what the caller handed over, as the base keeps it.
    explicit TGood_List_FRM(host::Host &host, host::TFormMode mode, const QString &openingText = {});
    ~TGood_List_FRM() override;

    /// The next opening in mode 5 stands on the good with this code when it is a whole number. Without such a good, a
    /// single choice begins with the parameter text as its search.
    void SetLocateCode(const QString &code) { m_locateCode = code; }
    /// For the editor that the list opens.
    void SetDetailEntry(DetailEntry entry) { m_detailEntry = std::move(entry); }
    /// Several goods may be marked and are chosen together (mode 5). Browsing can always mark.
    void SetMultiSelect(bool on);

    /// The good that was current when the list closed with OK; 0 otherwise.
    int ChosenCode() const { return m_chosenCode; }
    QString ChosenName() const { return m_chosenName; }
    /// The codes of the marked goods in the order in which they were marked, joined by ","; the current one when none
    /// was marked; empty unless the list closed with OK.
    QString ChosenCodes() const { return m_chosenCodes; }

    void SetFormMode(host::TFormMode mode) override;
    void SetFormTheme() override;

protected:
    void FormShow() override;
    void FormClose() override;
    host::SearchFrame *ListSearch() const override;
    void UserChanged() override;
    host::Grid *PrintedGrid() const override;
    QByteArray SaveState() const override;
    void RestoreState(const QByteArray &state) override;

private:
    // Building.
    void BuildGrid();
    void BuildStockTabs();
    void BuildPanels();
    void BindCommands();
    void BindBulkCommands();
    void BindTitleCommands();
    void BindMovements();
    void BindScales();
    void BindLabels();
    void BindImport();
    void BindGroups();
    void BindSearch();
    void OrderTabs();

    // The rows.
    goods::ListCriteria Criteria() const;
    QStringList FieldsToRequest() const;
    /// Runs the list for what is chosen now.
    void Refresh();
    /// Runs the list again behind the rows shown; the current good stays where it is.
    void Renew();
    /// Runs the list again and stands on the good; on the row that was current when it is not listed.
    void RefreshAt(const QString &key);
    void FollowRenewal();
    void StandOnOpeningGood();
    void OpenGroups();
    /// After the groups were worked on: the one that is shown may be gone, and all goods are shown instead.
    void ReloadGroups();
    void ShowPriceTitles();
    void LoadTags();
    void ShowCounts();

    // The advanced search.
    Tgoodlist_search_Frm &SearchForm();
    void RecallSearch();
    void TakeSearch();
    void OpenSearch();
    /// The criteria beside their check box.
    void ShowSearch();
    /// The criteria are kept, and do not count.
    void LeaveSearchOut();
    void AddToSelectedList();
    /// Runs the list again when it is limited by the advanced search: what that goes by has changed.
    void RenewSearched();

    // The commands.
    void NewGood();
    void OpenGood(host::TFormMode mode);
    void DeleteGood();
    /// The good is gone from the database: its row goes at once.
    void TakeOut(const QString &key);
    void Choose();
    void TakeTyped();
    /// Takes what is typed in the search as a barcode; false when it is none.
    bool TakeScanned();
    bool eventFilter(QObject *watched, QEvent *event) override;
    /// Stands on a good, whatever search, group, criteria or stock tab leave it out. False, leaving them alone, when
    /// the user may not see it.
    bool Uncover(const QString &key);
    void UpdateStock();
    void ActivateRow();
    void PrintLabels();
    void EditGroups(const std::function<bool()> &change);
    TGood_Get_FRM &Editor();
    /// Opens the editor on a good; its result.
    int OpenEditor(const QVariant &key, host::TFormMode mode, const QString &group = {});

    // The changes of many goods.
    using BulkChange = bool (bulk_changes::Commands::*)(const goods::GoodsScope &);
    /// Gives a button a menu of the goods that its change may be for.
    void BindScopes(QPushButton *button, const QString &menuName, const QList<goods::ScopeKind> &scopes,
                    BulkChange change);
    void ShowScopeCounts(const QMenu &menu);
    std::optional<QStringList> KeysOf(goods::ScopeKind kind);
    void ChangeMany(goods::ScopeKind kind, BulkChange change);
    void ShowLastChanges();

    // The panels that follow the current good.
    void FollowCurrent();
    void ShowPanels();
    void ShowTags();
    QList<goods_list::GoodTags> TaggedGoods(const QStringList &keys);
    void StoreTags(int code, const QString &tags);
    void ShowPictures();

    std::unique_ptr<Ui::TGood_List_FRM> m_ui;
    TGood_DM m_goods;
    host::TVelakSearchManager m_list;
    goods_list::GoodRemoval m_removal;
    bulk_changes::Commands m_bulk;
    std::unique_ptr<TGood_Get_FRM> m_editor;
    DetailEntry m_detailEntry;
    std::unique_ptr<Tgoodlist_search_Frm> m_search;
    std::unique_ptr<TGood_Movements_FRM> m_movements;
    QString m_advancedParams; ///< of the advanced search, empty without criteria
    QString m_searchSummary;
    QLabel *m_counts = nullptr;
    QLabel *m_empty = nullptr;
    goods_list::TagMarks *m_marks = nullptr;
    QTimer m_follow;
    std::optional<host::Grid::Place> m_place; ///< while the rows are being replaced

    QString m_locateCode;
    QString m_lastKey;
    bool m_multiSelect = false;
    int m_chosenCode = 0;
    QString m_chosenName;
    QString m_chosenCodes;
};
