#include "host/controls/number_text.h"
#include "screens/bulk_changes/bulk_order.h"
#include "screens/goods_list/good_list.h"
#include "ui_good_list.h"

#include <QMenu>

using namespace Qt::StringLiterals;

using bulk_changes::Commands;
using goods::ScopeKind;

// The changes of many goods at once.

void TGood_List_FRM::BindBulkCommands()
{
    const QList<ScopeKind> listed{ScopeKind::Marked, ScopeKind::NotMarked, ScopeKind::Listed, ScopeKind::All};
    BindScopes(m_ui->UpdatePrice_BTN, u"ChangePrice_PM"_s, listed, &Commands::ChangePrices);
    BindScopes(m_ui->Discount_BTN, u"Discount_PM"_s, listed, &Commands::ChangeDiscounts);
    BindScopes(m_ui->UpdateGoodDetailTypes_BTN, u"DetailTypes_PM"_s, {ScopeKind::Marked, ScopeKind::All},
               &Commands::ChangeDetailTypes);
    BindScopes(m_ui->SaveGroupGoodType_BTN, u"GoodType_PM"_s, listed, &Commands::ChangeAssetType);
    BindKey(Qt::CTRL | Qt::Key_F8, u"آخرین تغییرات گروهی"_s, [this] { ShowLastChanges(); });
}

void TGood_List_FRM::BindScopes(QPushButton *button, const QString &menuName, const QList<ScopeKind> &scopes,
                                BulkChange change)
{
    auto *menu = new QMenu(button);
    menu->setObjectName(menuName);
    for (const ScopeKind kind : scopes) {
        QAction *action = menu->addAction(bulk_changes::ScopeText(kind));
        action->setData(static_cast<int>(kind));
        connect(action, &QAction::triggered, this, [this, button, kind, change] {
            Command(button->text(), [this, kind, change] { ChangeMany(kind, change); });
        });
    }
    menu->addSeparator();
    connect(menu->addAction(u"آخرین تغییرات گروهی ...\tCtrl+F8"_s), &QAction::triggered, this,
            [this, button] { Command(button->text(), [this] { ShowLastChanges(); }); });
    connect(menu, &QMenu::aboutToShow, this,
            [this, button, menu] { Command(button->text(), [this, menu] { ShowScopeCounts(*menu); }); });
    button->setMenu(menu);
}

/// How many goods each entry is for stands at its end, where it is known without waiting.
void TGood_List_FRM::ShowScopeCounts(const QMenu &menu)
{
    for (QAction *action : menu.actions()) {
        if (!action->data().isValid())
            continue;
        const auto kind = static_cast<ScopeKind>(action->data().toInt());
        const bool known = kind == ScopeKind::Marked ||
                           (kind != ScopeKind::All && !m_list.IsRunningBehind() && m_ui->GoodListDB_GRD->HasAllRows());
        QString text = bulk_changes::ScopeText(kind);
        const auto keys = known ? KeysOf(kind) : std::nullopt;
        if (keys)
            text += u'\t' + host::DisplayNumber(QString::number(keys->size()));
        action->setText(text);
        action->setEnabled(!keys || !keys->isEmpty());
    }
}

/// The goods as the list shows them now: all its rows are read before all of them are meant. Nothing when that fails,
/// of which the grid has told.
std::optional<QStringList> TGood_List_FRM::KeysOf(ScopeKind kind)
{
    host::Grid *grid = m_ui->GoodListDB_GRD;
    if (kind == ScopeKind::Marked) {
        const QStringList marked = grid->MarkedKeys();
        return marked.isEmpty() && !grid->IsEmpty() ? QStringList{grid->CurrentKey()} : marked;
    }
    m_list.Finish();
    if (!grid->FetchAll())
        return std::nullopt;
    QStringList keys = grid->ShownKeys();
    if (kind == ScopeKind::NotMarked)
        keys.removeIf([grid](const QString &key) { return grid->IsMarked(key); });
    return keys;
}

void TGood_List_FRM::ChangeMany(ScopeKind kind, BulkChange change)
{
    if (!host::Granted(m_host, SoftwarePart(), host::TPermission::Change))
        return;
    goods::GoodsScope scope{kind, {}, bulk_changes::DeniedTo(m_host)};
    if (kind != ScopeKind::All) {
        const auto keys = KeysOf(kind);
        if (!keys)
            return;
        for (const QString &key : *keys)
            scope.codes << key.toInt();
        if (scope.codes.isEmpty()) {
            m_host.messages.ShowMessage(u"کالایی برای تغییر در لیست نیست."_s, host::MessageIcon::Information);
            return;
        }
    }
    if ((m_bulk.*change)(scope))
        Renew();
}

void TGood_List_FRM::ShowLastChanges()
{
    if (m_bulk.ShowLastChanges())
        Renew();
}
