#include "desk/lists/entity_list.h"

#include "host/controls/grid.h"
#include "host/data/persian_text.h"
#include "host/data/sql_text.h"
#include "ui_entity_list.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QPushButton>

namespace desk {

using host::TFormMode;
using host::TPermission;

TEntity_List_FRM::TEntity_List_FRM(host::Host &host, const EntityKind &kind, TFormMode mode)
    : TBaseDock_FRM(host, kind.part, mode, host.mainWindow), kind_(kind), ui_(std::make_unique<Ui::EntityList>()),
      rows_(host.DM.ADOConnection1)
{
    // Layouts are remembered by the object name: each kind has its own.
    setObjectName(u"TEntity_List_FRM_%1"_qs.arg(static_cast<int>(kind.part)));
    ui_->setupUi(Content());
    SetTitle(mode == TFormMode::Selection ? u"انتخاب "_qs + kind.singular : kind.plural);
    ui_->ListDB_GRD->SetColumns({{u"Code"_qs, u"کد"_qs, 80, false, host::ColumnFormat::Code},
                                 {u"Name"_qs, u"نام"_qs, 230},
                                 {u"Comment"_qs, u"توضیحات"_qs, 250, !kind.editable}});
    ui_->ListDB_GRD->SetSortable(true);
    ui_->ListDB_GRD->horizontalHeader()->setStretchLastSection(true);
    RememberLayout(ui_->ListDB_GRD);
    ui_->Search_EDT->installEventFilter(this);
    AddCommands();
    connect(ui_->Search_EDT, &QLineEdit::textChanged, this, [this](const QString &text) {
        host::SearchDescription wanted;
        wanted.text = text;
        ui_->ListDB_GRD->Search(wanted);
    });
    connect(ui_->ListDB_GRD, &host::Grid::RowActivated, this, [this] { Command(Title(), [this] { TakeRow(); }); });
    connect(ui_->ListDB_GRD, &host::Grid::RowCountChanged, this, [this] { ShowCount(); });
}

TEntity_List_FRM::~TEntity_List_FRM()
{
    ui_->ListDB_GRD->SetSource(nullptr);
}

void TEntity_List_FRM::AddCommands()
{
    if (Mode() == TFormMode::Selection)
        AddCommand(u"Select_BTN", u"انتخاب Enter", Qt::Key_unknown, &TEntity_List_FRM::ChooseRow);
    if (kind_.editable) {
        AddCommand(u"New_BTN", u"جدید F4", Qt::Key_F4, &TEntity_List_FRM::NewRow);
        AddCommand(u"Edit_BTN", u"ویرایش F5", Qt::Key_F5, &TEntity_List_FRM::EditRow);
        AddCommand(u"Del_BTN", u"حذف F7", Qt::Key_F7, &TEntity_List_FRM::DeleteRow);
    }
    AddCommand(u"PrintList_BTN", u"پیش نمایش ليست F9", Qt::Key_F9, &TEntity_List_FRM::PreviewGrid);
    Bind(AddFooterButton(u"EXit_BTN"_qs, u"خروج Esc"_qs), {}, [this] { reject(); });
}

void TEntity_List_FRM::AddCommand(const char16_t *objectName, const char16_t *caption, Qt::Key key,
                                  void (TEntity_List_FRM::*run)())
{
    QPushButton *button = AddFooterCommand(QString::fromUtf16(objectName), QString::fromUtf16(caption));
    Bind(button, key == Qt::Key_unknown ? QKeySequence() : QKeySequence(key), [this, run] { (this->*run)(); });
}

void TEntity_List_FRM::SetMultiSelect(bool several)
{
    ui_->ListDB_GRD->SetMultiSelect(several);
}

host::Grid *TEntity_List_FRM::PrintedGrid() const
{
    return ui_->ListDB_GRD;
}

void TEntity_List_FRM::FormShow()
{
    TBaseDock_FRM::FormShow();
    chosen_ = 0;
    chosenCodes_.clear();
    ui_->ListDB_GRD->ClearMarks();
    ui_->Search_EDT->clear();
    rows_.Open(ListText());
    ui_->ListDB_GRD->SetSource(&rows_);
    Stand();
    ShowCount();
    ui_->Search_EDT->setFocus();
}

QString TEntity_List_FRM::ListText() const
{
    QStringList conditions;
    // Nothing belongs to the root group, so it is not offered.
    if (kind_.part == host::TSoftwarePart::GoodsGroups && Mode() == TFormMode::Selection)
        conditions << u"Code <> %1"_qs.arg(RootGroup);
    if (!excluded_.isEmpty())
        conditions << u"%1 NOT IN (%2)"_qs.arg(kind_.codeColumn, host::CodeList(excluded_));
    QString text =
        u"SELECT %1 AS Code, %2 AS Name, Comment FROM %3"_qs.arg(kind_.codeColumn, kind_.nameColumn, kind_.table);
    if (!conditions.isEmpty())
        text += u" WHERE "_qs + conditions.join(u" AND ");
    return text + u" ORDER BY "_qs + kind_.codeColumn;
}

// The opening text is a code or a part of a name.
void TEntity_List_FRM::Stand()
{
    const QString text = host::FoldDigits(ParameterText()).trimmed();
    if (text.isEmpty() || ui_->ListDB_GRD->Locate(text))
        return;
    ui_->Search_EDT->setText(text);
}

void TEntity_List_FRM::ShowCount()
{
    ui_->Count_LBL->setText(u"%1 مورد"_qs.arg(host::PersianDigits(QString::number(ui_->ListDB_GRD->RowCount()))));
}

void TEntity_List_FRM::Refresh(int code)
{
    rows_.Requery();
    ui_->ListDB_GRD->SetSource(&rows_);
    if (code != 0 && !ui_->ListDB_GRD->Locate(QString::number(code))) {
        ui_->Search_EDT->clear();
        ui_->ListDB_GRD->Locate(QString::number(code));
    }
    ShowCount();
}

bool TEntity_List_FRM::Allowed(TPermission permission)
{
    return host::Granted(m_host, kind_.part, permission);
}

void TEntity_List_FRM::NewRow()
{
    if (!Allowed(TPermission::Create))
        return;
    if (const int code = m_host.entities.New_Group(kind_.part))
        Refresh(code);
}

void TEntity_List_FRM::EditRow()
{
    if (ui_->ListDB_GRD->IsEmpty() || !Allowed(TPermission::Change))
        return;
    const int code = ui_->ListDB_GRD->CurrentKey().toInt();
    if (m_host.entities.Edit_Group(kind_.part, code))
        Refresh(code);
}

void TEntity_List_FRM::DeleteRow()
{
    if (ui_->ListDB_GRD->IsEmpty() || !Allowed(TPermission::Delete))
        return;
    if (m_host.entities.Delete_Entity(kind_.part, ui_->ListDB_GRD->CurrentKey().toInt(), false) == 0)
        Refresh(0);
}

void TEntity_List_FRM::ChooseRow()
{
    host::Grid *grid = ui_->ListDB_GRD;
    if (grid->CurrentKey().isEmpty())
        return;
    if (grid->IsMultiSelect() && grid->MarkedKeys().isEmpty())
        grid->ToggleCurrentMark();
    chosen_ = grid->CurrentKey().toInt();
    const QStringList marked = grid->MarkedKeys();
    for (const QString &key : marked)
        chosenCodes_ += key + u',';
    done(Accepted);
}

void TEntity_List_FRM::TakeRow()
{
    if (Mode() == TFormMode::Selection)
        ChooseRow();
    else if (kind_.editable)
        EditRow();
}

bool TEntity_List_FRM::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != ui_->Search_EDT || event->type() != QEvent::KeyPress)
        return TBaseDock_FRM::eventFilter(watched, event);
    switch (static_cast<QKeyEvent *>(event)->key()) {
    case Qt::Key_Down:
        ui_->ListDB_GRD->setFocus();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Command(Title(), [this] { TakeRow(); });
        return true;
    case Qt::Key_Escape:
        if (ui_->Search_EDT->text().isEmpty())
            break;
        ui_->Search_EDT->clear();
        return true;
    default:
        break;
    }
    return TBaseDock_FRM::eventFilter(watched, event);
}

} // namespace desk
