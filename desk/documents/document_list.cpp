#include "desk/documents/document_list.h"

#include "desk/documents/detail_history.h"
#include "desk/documents/document_get.h"
#include "desk/messages/catalogue.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/data/persian_text.h"
#include "ui_document_list.h"

#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QSet>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::ColumnFormat;
using host::TFormMode;
using host::TPermission;

constexpr QSize WindowSize(1000, 560);

} // namespace

TDocument_List_FRM::TDocument_List_FRM(host::Host &host, LineDetailScreens &screens, TFormMode mode, int kind)
    : TBaseDock_FRM(host, kind == 0 ? host::TSoftwarePart::Sales : DocumentKindOf(kind).part, mode, host.mainWindow),
      m_screens(screens), m_onlyKind(kind), m_store(host), m_data(host.DM.ADOConnection1),
      m_ui(std::make_unique<Ui::DocumentList>())
{
    setObjectName(u"TDocument_List_FRM"_s);
    m_ui->setupUi(Content());
    SetTitle(kind == 0 ? u"اسناد"_s : u"انتخاب سند %1"_s.arg(DocumentKindOf(kind).name));
    resize(WindowSize);
    BuildGrid();
    AddCommands();
    const auto refresh = [this] { Command(Title(), [this] { Refresh(); }); };
    connect(m_ui->Kind_CMB, &QComboBox::activated, this, refresh);
    for (host::DateEdit *date : {m_ui->FromDate_EDT, m_ui->ToDate_EDT})
        connect(date, &host::DateEdit::DateChanged, this, refresh);
    BindSearch(m_ui->Search_EDT, m_ui->DocumentsDB_GRD, [this] { TakeRow(); });
    connect(m_ui->Search_EDT, &QLineEdit::textChanged, this, [this](const QString &text) {
        host::SearchDescription wanted;
        wanted.text = text;
        m_ui->DocumentsDB_GRD->Search(wanted);
        ShowCount();
    });
}

TDocument_List_FRM::~TDocument_List_FRM()
{
    m_ui->DocumentsDB_GRD->SetSource(nullptr);
}

void TDocument_List_FRM::BuildGrid()
{
    host::Grid *grid = m_ui->DocumentsDB_GRD;
    grid->SetColumns({{u"KindName"_s, u"نوع سند"_s, 120},
                      {u"Code"_s, u"شماره"_s, 70, false, ColumnFormat::Code},
                      {u"Date"_s, u"تاریخ"_s, 90, false, ColumnFormat::Date},
                      {u"StoreName"_s, u"انبار"_s, 130},
                      {u"ToStoreName"_s, u"به انبار"_s, 100},
                      {u"Answers"_s, u"برگشت از"_s, 90},
                      {u"Lines"_s, u"سطرها"_s, 60, false, ColumnFormat::Quantity},
                      {u"Amount1"_s, u"جمع مقدار"_s, 90, true, ColumnFormat::Quantity},
                      {u"Total"_s, u"جمع مبلغ"_s, 130, false, ColumnFormat::Price},
                      {u"Comment"_s, u"شرح"_s, 160},
                      {u"UserCreated"_s, u"ثبت کننده"_s, 120, true},
                      {u"UserModified"_s, u"ویرایش کننده"_s, 120, true}});
    grid->SetSortable(true);
    grid->horizontalHeader()->setStretchLastSection(true);
    RememberLayout(grid);
    connect(grid, &host::Grid::RowActivated, this, [this] { Command(Title(), [this] { TakeRow(); }); });
    connect(grid, &host::Grid::RowCountChanged, this, [this] { ShowCount(); });
}

void TDocument_List_FRM::AddCommands()
{
    const auto add = [this](const char16_t *name, const char16_t *caption, Qt::Key key,
                            void (TDocument_List_FRM::*run)()) {
        QPushButton *button = AddFooterCommand(QString::fromUtf16(name), QString::fromUtf16(caption));
        Bind(button, key == Qt::Key_unknown ? QKeySequence() : QKeySequence(key), [this, run] { (this->*run)(); });
    };
    if (Mode() == TFormMode::Selection) {
        add(u"Select_BTN", u"انتخاب Enter", Qt::Key_unknown, &TDocument_List_FRM::TakeRow);
    } else {
        add(u"New_BTN", u"جدید F4", Qt::Key_F4, &TDocument_List_FRM::NewRow);
        add(u"Edit_BTN", u"ویرایش F5", Qt::Key_F5, &TDocument_List_FRM::EditRow);
        add(u"Del_BTN", u"حذف F7", Qt::Key_F7, &TDocument_List_FRM::DeleteRow);
        add(u"History_BTN", u"تاریخچه سریال F8", Qt::Key_F8, &TDocument_List_FRM::ShowHistory);
    }
    add(u"PrintList_BTN", u"پیش نمایش ليست F9", Qt::Key_F9, &TDocument_List_FRM::PreviewGrid);
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

/// The kinds that the user may see; first of all of them together.
void TDocument_List_FRM::FillKinds()
{
    const int former = m_ui->Kind_CMB->currentData().toInt();
    m_ui->Kind_CMB->clear();
    if (m_onlyKind == 0)
        m_ui->Kind_CMB->addItem(u"همه‌ی اسناد"_s, 0);
    for (const DocumentKind &kind : AllDocumentKinds()) {
        if ((m_onlyKind == 0 || m_onlyKind == kind.Number()) &&
            m_host.permissions.HavePermission(m_host.settings.UserInfo(), kind.part, TPermission::OpenList, false,
                                              false, {}))
            m_ui->Kind_CMB->addItem(kind.name, kind.Number());
    }
    m_ui->Kind_CMB->setCurrentIndex(std::max(0, m_ui->Kind_CMB->findData(former)));
}

void TDocument_List_FRM::FormShow()
{
    TBaseDock_FRM::FormShow();
    m_chosen = 0;
    FillKinds();
    if (m_ui->Kind_CMB->count() < (m_onlyKind == 0 ? 2 : 1)) {
        m_host.messages.ShowMessage(MessageText(message::NoRightTo, {u"مشاهده‌ی اسناد"_s}),
                                    host::MessageIcon::Warning);
        AbortOpening();
        return;
    }
    m_ui->Search_EDT->clear();
    Refresh();
    m_ui->DocumentsDB_GRD->StandOn(0);
    m_ui->Search_EDT->setFocus();
}

void TDocument_List_FRM::FormClose()
{
    m_ui->DocumentsDB_GRD->SetSource(nullptr);
    m_data.Documents_QRY.Close();
}

DocumentFilter TDocument_List_FRM::Filter() const
{
    DocumentFilter filter;
    const int chosen = m_ui->Kind_CMB->currentData().toInt();
    for (int i = 0; i < m_ui->Kind_CMB->count(); ++i) {
        const int kind = m_ui->Kind_CMB->itemData(i).toInt();
        if (kind != 0 && (chosen == 0 || chosen == kind))
            filter.Kinds << kind;
    }
    filter.FromDate = m_ui->FromDate_EDT->Text();
    filter.ToDate = m_ui->ToDate_EDT->Text();
    return filter;
}

void TDocument_List_FRM::Refresh(const QString &key)
{
    host::Grid *grid = m_ui->DocumentsDB_GRD;
    host::Grid::Place place = grid->CurrentPlace();
    if (!key.isEmpty())
        place.key = key;
    m_data.Open(Filter());
    grid->SetSource(&m_data.Documents_QRY, u"DocumentKey"_s);
    grid->ReturnTo(place);
    ShowCount();
}

/// Sums of what is shown; of what is searched in a long list as far as it has arrived.
void TDocument_List_FRM::ShowCount()
{
    const host::Dataset &rows = m_data.Documents_QRY;
    const host::Grid *grid = m_ui->DocumentsDB_GRD;
    const bool all = grid->CurrentSearch().IsEmpty();
    int count = grid->RowCount();
    Quantity total = 0;
    if (all && !rows.FetchedAll()) {
        count = m_data.Count;
        total = m_data.Total;
    } else if (rows.IsOpen() && count > 0) {
        QSet<QString> shown;
        if (!all) {
            const QStringList keys = m_ui->DocumentsDB_GRD->ShownKeys();
            shown = QSet<QString>(keys.cbegin(), keys.cend());
        }
        for (int row = 0; row < rows.RecordCount(); ++row) {
            if (all || shown.contains(rows.FieldAt(row, u"DocumentKey").toString()))
                total += host::QuantityFromText(rows.FieldAt(row, u"Total").toString());
        }
    }
    m_ui->Count_LBL->setText(u"%1 سند   ·   جمع مبلغ: %2"_s.arg(host::DisplayNumber(QString::number(count)),
                                                                host::DisplayNumber(host::QuantityToText(total))));
}

std::pair<const DocumentKind *, int> TDocument_List_FRM::Current() const
{
    const QString key = m_ui->DocumentsDB_GRD->CurrentKey();
    return {FindDocumentKind(key.section(u'-', 0, 0).toInt()), key.section(u'-', 1).toInt()};
}

bool TDocument_List_FRM::OpenEditor(const DocumentKind &kind, int code)
{
    TDocument_Get_FRM editor(m_host, kind, m_screens);
    editor.SetChooser([this](const DocumentKind &answered) {
        TDocument_List_FRM list(m_host, m_screens, TFormMode::Selection, answered.Number());
        return list.ShowModally() == Accepted ? list.ChosenCode() : 0;
    });
    editor.Open(code == 0 ? QVariant() : QVariant(code), code == 0 ? TFormMode::New : TFormMode::Edit);
    if (!IsShowing() || (editor.SavedKey().isNull() && !editor.RecordGone()))
        return false;
    Refresh(editor.RecordGone() ? QString() : u"%1-%2"_s.arg(kind.Number()).arg(editor.SavedKey().toInt()));
    return true;
}

void TDocument_List_FRM::NewDocument(const DocumentKind &kind)
{
    if (host::Granted(m_host, kind.part, TPermission::Create))
        OpenEditor(kind, 0);
}

/// Of the kind that is shown; of all of them, the user says which.
void TDocument_List_FRM::NewRow()
{
    if (const DocumentKind *kind = FindDocumentKind(m_ui->Kind_CMB->currentData().toInt()))
        return NewDocument(*kind);
    QMenu menu(this);
    menu.setObjectName(u"NewDocument_MNU"_s);
    for (const DocumentKind &kind : AllDocumentKinds()) {
        QAction *action = menu.addAction(
            u"&%1 - %2"_s.arg(host::PersianDigits(QString::number(menu.actions().size() + 1)), kind.name));
        action->setData(kind.Number());
    }
    menu.setActiveAction(menu.actions().constFirst());
    const QWidget *button = findChild<QWidget *>(u"New_BTN"_s);
    const QAction *chosen = menu.exec(button->mapToGlobal(QPoint(0, -menu.sizeHint().height())));
    if (chosen)
        NewDocument(DocumentKindOf(chosen->data().toInt()));
}

void TDocument_List_FRM::EditRow()
{
    const auto [kind, code] = Current();
    if (kind && host::Granted(m_host, kind->part, TPermission::Change))
        OpenEditor(*kind, code);
}

void TDocument_List_FRM::DeleteRow()
{
    const auto [kind, code] = Current();
    if (!kind || !host::Granted(m_host, kind->part, TPermission::Delete))
        return;
    const auto document = m_store.Get(kind->Number(), code);
    if (!document) {
        m_host.messages.ShowMessage(MessageText(message::EntityGone, {kind->Title(code)}), host::MessageIcon::Warning);
    } else {
        if (!m_host.messages.MsgDeleteItem(kind->Title(code)))
            return;
        m_store.Delete(*document);
    }
    Refresh();
}

void TDocument_List_FRM::TakeRow()
{
    if (Mode() != TFormMode::Selection)
        return EditRow();
    m_chosen = Current().second;
    if (m_chosen != 0)
        done(Accepted);
}

void TDocument_List_FRM::ShowHistory()
{
    TDetailHistory_FRM(m_host).ShowModally();
}

host::Grid *TDocument_List_FRM::PrintedGrid() const
{
    return m_ui->DocumentsDB_GRD;
}

} // namespace desk
