#include "host/data/persian_text.h"
#include "host/data/transaction.h"
#include "screens/bulk_changes/bulk_order.h"
#include "screens/good_editor/good_get.h"
#include "screens/goods_list/good_list.h"
#include "ui_good_list.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QProgressDialog>

#include <algorithm>

using namespace Qt::StringLiterals;

using host::TFormMode;
using host::TSoftwarePart;

// The commands of the goods list.

void TGood_List_FRM::BindCommands()
{
    Bind(m_ui->New_BTN, Qt::Key_F4, [this] { NewGood(); });
    Bind(m_ui->Edit_BTN, Qt::Key_F5, [this] { OpenGood(TFormMode::Edit); });
    Bind(m_ui->Review_BTN, Qt::Key_F6, [this] { OpenGood(TFormMode::Review); });
    Bind(m_ui->Del_BTN, Qt::Key_F7, [this] { DeleteGood(); });
    Bind(m_ui->PrintList_BTN, Qt::Key_F9, [this] { PreviewGrid(); });
    Bind(m_ui->UpdateAssets_BTN, {}, [this] { UpdateStock(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
    // Enter comes from the grid and from the search, not from the button alone.
    Bind(m_ui->Select_BTN, {}, [this] { Choose(); });
}

void TGood_List_FRM::BindGroups()
{
    goods_list::GroupPanel *groups = m_ui->Group_PNL;
    BindKey(Qt::CTRL | Qt::Key_F11, u"گروه"_s, [groups] { groups->FocusSearch(); });
    Bind(groups->GroupButton(), Qt::Key_F11, [this] {
        m_host.entities.Call_GroupList(TSoftwarePart::GoodsGroups);
        ReloadGroups();
    });
    connect(groups, &goods_list::GroupPanel::GroupChosen, this, [this] {
        Command(u"گروه"_s, [this] {
            Refresh();
            m_ui->GoodListDB_GRD->setFocus(Qt::OtherFocusReason);
        });
    });
    connect(groups, &goods_list::GroupPanel::LeaveRequested, this,
            [this] { m_ui->GoodListDB_GRD->setFocus(Qt::OtherFocusReason); });
    connect(groups, &goods_list::GroupPanel::NewRequested, this,
            [this] { EditGroups([this] { return m_host.entities.New_Group(TSoftwarePart::GoodsGroups) != 0; }); });
    connect(groups, &goods_list::GroupPanel::EditRequested, this, [this](int code) {
        EditGroups([this, code] { return m_host.entities.Edit_Group(TSoftwarePart::GoodsGroups, code); });
    });
    connect(groups, &goods_list::GroupPanel::DeleteRequested, this, [this](int code) {
        EditGroups(
            [this, code] { return m_host.entities.Delete_Entity(TSoftwarePart::GoodsGroups, code, false) == 0; });
    });
}

void TGood_List_FRM::EditGroups(const std::function<bool()> &change)
{
    Command(u"گروه"_s, [this, &change] {
        if (change())
            ReloadGroups();
    });
}

TGood_Get_FRM &TGood_List_FRM::Editor()
{
    if (!m_editor)
        m_editor = std::make_unique<TGood_Get_FRM>(m_host);
    m_editor->SetDetailEntry(m_detailEntry);
    m_editor->SetKeyboardLayoutName(KeyboardLayoutName());
    m_editor->SetFormTheme();
    return *m_editor;
}

int TGood_List_FRM::OpenEditor(const QVariant &key, TFormMode mode, const QString &group)
{
    TGood_Get_FRM &editor = Editor();
    const int result = editor.Open(key, mode, group);
    if (editor.PriceTitlesChanged())
        ShowPriceTitles();
    return result;
}

void TGood_List_FRM::NewGood()
{
    const int group = m_ui->Group_PNL->ChosenGroup();
    OpenEditor({}, TFormMode::New, group != 0 ? QString::number(group) : QString());
    const QString saved = m_editor->SavedKey().toString();
    if (saved.isEmpty())
        return;
    m_ui->TGeneral_Search_Frame1->Clear();
    RefreshAt(saved);
    if (Mode() == TFormMode::Selection)
        Uncover(saved); // the next Enter means the good that was just made
}

void TGood_List_FRM::OpenGood(TFormMode mode)
{
    host::Grid *grid = m_ui->GoodListDB_GRD;
    if (grid->IsEmpty())
        return;
    const QString key = grid->CurrentKey();
    const int result = OpenEditor(key.toInt(), mode);
    m_follow.start(); // photos are written at once, also where nothing is saved
    if (m_editor->RecordGone())
        TakeOut(key);
    else if (mode == TFormMode::Edit && result == QDialog::Accepted)
        Renew();
    else
        grid->Locate(key);
}

void TGood_List_FRM::TakeOut(const QString &key)
{
    host::Grid *grid = m_ui->GoodListDB_GRD;
    grid->SetMarked(key, false);
    if (grid->Locate(key)) {
        host::Grid::Place place = grid->CurrentPlace();
        place.key.clear();
        m_list.Data().ForgetRow(grid->CurrentSourceRow()); // the reading anew may take a moment
        grid->ReturnTo(place);
    }
    Renew();
}

void TGood_List_FRM::DeleteGood()
{
    host::Grid *grid = m_ui->GoodListDB_GRD;
    if (grid->IsEmpty())
        return;
    const QString key = grid->CurrentKey();
    if (!m_removal.Delete(key.toInt(), m_ui->Del_BTN))
        return;
    TakeOut(key);
}

void TGood_List_FRM::ActivateRow()
{
    if (Mode() == TFormMode::Selection)
        Command(m_ui->Select_BTN->text(), [this] { Choose(); });
    else
        Command(m_ui->Edit_BTN->text(), [this] { OpenGood(TFormMode::Edit); });
}

void TGood_List_FRM::Choose()
{
    host::Grid *grid = m_ui->GoodListDB_GRD;
    m_list.Finish();
    if (grid->IsEmpty())
        return;
    m_chosenCode = grid->CurrentKey().toInt();
    m_chosenName = grid->CurrentValue(u"Name"_s).toString();
    const QStringList marked = grid->MarkedKeys();
    m_chosenCodes = marked.isEmpty() ? grid->CurrentKey() : marked.join(u',');
    done(QDialog::Accepted);
}

/// Enter in the search: a scanned barcode finds its good, anything else has found it already.
void TGood_List_FRM::TakeTyped()
{
    if (TakeScanned())
        return;
    if (Mode() == TFormMode::Selection)
        Choose();
    else if (!m_ui->GoodListDB_GRD->IsEmpty())
        m_ui->GoodListDB_GRD->setFocus(Qt::OtherFocusReason);
}

bool TGood_List_FRM::TakeScanned()
{
    const host::SearchDescription typed = m_ui->TGeneral_Search_Frame1->Description();
    const QString barcode = host::FoldDigits(typed.text.isEmpty() ? typed.number : typed.text).trimmed();
    // Signs alone, as the mark between barcodes, would be found in goods that have none.
    const bool says = std::any_of(barcode.cbegin(), barcode.cend(), [](QChar c) { return c.isLetterOrNumber(); });
    // Who looks among the codes and stands on this one means it, whatever short name another good has.
    if (!says || (typed.field == "Code"_L1 && m_ui->GoodListDB_GRD->CurrentKey() == barcode))
        return false;
    const int code = m_goods.CheckBarcodeCode(barcode);
    if (code == 0)
        return false;
    const QString key = QString::number(code);
    if (!Uncover(key)) {
        m_host.messages.ShowMessage(u"کالای این بارکد در لیست شما نیست."_s, host::MessageIcon::Warning, Title());
    } else if (Mode() != TFormMode::Selection) {
        m_ui->GoodListDB_GRD->setFocus(Qt::OtherFocusReason);
    } else if (m_multiSelect) {
        m_ui->GoodListDB_GRD->SetMarked(key, true);
        m_ui->TGeneral_Search_Frame1->Clear(); // for the next scan; Enter without one takes them all
    } else {
        Choose();
    }
    return true;
}

bool TGood_List_FRM::eventFilter(QObject *watched, QEvent *event)
{
    const auto *key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event) : nullptr;
    bool taken = false;
    if (key && key->key() == Qt::Key_Tab && key->modifiers() == Qt::NoModifier) // some scanners end with it
        Command(Title(), [&] { taken = TakeScanned(); });
    return taken || TBaseDock_FRM::eventFilter(watched, event);
}

bool TGood_List_FRM::Uncover(const QString &key)
{
    host::Grid *grid = m_ui->GoodListDB_GRD;
    if (grid->Locate(key))
        return true;
    if (!m_goods.Good_IsShownTo(key.toInt(), bulk_changes::DeniedTo(m_host)))
        return false;
    m_ui->TGeneral_Search_Frame1->Clear();
    if (grid->Locate(key))
        return true;
    m_ui->Group_PNL->SetChosenGroup(0);
    if (!m_advancedParams.isEmpty())
        LeaveSearchOut();
    const QSignalBlocker quiet(m_ui->Search_TBC);
    m_ui->Search_TBC->setCurrentIndex(2);
    Refresh();
    return grid->Locate(key);
}

void TGood_List_FRM::UpdateStock()
{
    if (!m_host.settings.SettingRecord().StockOnGoodsList)
        return;
    const QList<int> kinds = {255, 254};
    QProgressDialog progress(u"بروزرسانی موجودی کالاها"_s, u"انصراف"_s, 0, static_cast<int>(kinds.size()), this);
    progress.setObjectName(u"UpdateAssets_PRG"_s);
    progress.setWindowTitle(u"بروزرسانی موجودی کالاها"_s);
    progress.setWindowModality(Qt::ApplicationModal);
    progress.show();
    // A step cannot be stopped half-way; the button counts once it is over. Stores and goods are renewed together.
    const auto canceled = [&progress] {
        QCoreApplication::processEvents();
        return progress.wasCanceled();
    };
    host::Transaction transaction(m_goods.Connection());
    for (int step = 0; step < kinds.size(); ++step) {
        progress.setValue(step);
        if (canceled())
            return;
        m_goods.UpdateMogodiKala(kinds.at(step));
    }
    if (canceled())
        return;
    transaction.Commit();
    progress.reset();
    Renew();
}
