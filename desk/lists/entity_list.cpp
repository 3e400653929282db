#include "desk/lists/entity_list.h"

#include "host/controls/grid.h"
#include "host/data/persian_text.h"
#include "host/data/sql_text.h"
#include "ui_entity_list.h"

#include <QHeaderView>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace desk {

using host::TFormMode;
using host::TPermission;

TEntity_List_FRM::TEntity_List_FRM(host::Host &host, const EntityKind &kind, TFormMode mode)
    : TBaseDock_FRM(host, kind.part, mode, host.mainWindow), m_kind(kind), m_ui(std::make_unique<Ui::EntityList>()),
      m_rows(host.DM.ADOConnection1)
{
    // Layouts are remembered by the object name: each kind has its own.
    setObjectName(u"TEntity_List_FRM_%1"_s.arg(static_cast<int>(kind.part)));
    m_ui->setupUi(Content());
    SetTitle(mode == TFormMode::Selection ? u"انتخاب "_s + kind.singular : kind.plural);
    m_ui->ListDB_GRD->SetColumns({{u"Code"_s, u"کد"_s, 80, false, host::ColumnFormat::Code},
                                  {u"Name"_s, u"نام"_s, 230},
                                  {u"Comment"_s, u"توضیحات"_s, 250, !kind.editable}});
    m_ui->ListDB_GRD->SetSortable(true);
    m_ui->ListDB_GRD->horizontalHeader()->setStretchLastSection(true);
    RememberLayout(m_ui->ListDB_GRD);
    BindSearch(m_ui->Search_EDT, m_ui->ListDB_GRD, [this] { TakeRow(); });
    AddCommands();
    connect(m_ui->Search_EDT, &QLineEdit::textChanged, this, [this](const QString &text) {
        host::SearchDescription wanted;
        wanted.text = text;
        m_ui->ListDB_GRD->Search(wanted);
    });
    connect(m_ui->ListDB_GRD, &host::Grid::RowActivated, this, [this] { Command(Title(), [this] { TakeRow(); }); });
    connect(m_ui->ListDB_GRD, &host::Grid::RowCountChanged, this, [this] { ShowCount(); });
}

TEntity_List_FRM::~TEntity_List_FRM()
{
    m_ui->ListDB_GRD->SetSource(nullptr);
}

void TEntity_List_FRM::AddCommands()
{
    if (Mode() == TFormMode::Selection)
        AddCommand(u"Select_BTN", u"انتخاب Enter", Qt::Key_unknown, &TEntity_List_FRM::ChooseRow);
    if (m_kind.editable) {
        AddCommand(u"New_BTN", u"جدید F4", Qt::Key_F4, &TEntity_List_FRM::NewRow);
        AddCommand(u"Edit_BTN", u"ویرایش F5", Qt::Key_F5, &TEntity_List_FRM::EditRow);
        AddCommand(u"Del_BTN", u"حذف F7", Qt::Key_F7, &TEntity_List_FRM::DeleteRow);
    }
    AddCommand(u"PrintList_BTN", u"پیش نمایش ليست F9", Qt::Key_F9, &TEntity_List_FRM::PreviewGrid);
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
}

void TEntity_List_FRM::AddCommand(const char16_t *objectName, const char16_t *caption, Qt::Key key,
                                  void (TEntity_List_FRM::*run)())
{
    QPushButton *button = AddFooterCommand(QString::fromUtf16(objectName), QString::fromUtf16(caption));
    Bind(button, key == Qt::Key_unknown ? QKeySequence() : QKeySequence(key), [this, run] { (this->*run)(); });
}

void TEntity_List_FRM::SetMultiSelect(bool several)
{
    m_ui->ListDB_GRD->SetMultiSelect(several);
}

host::Grid *TEntity_List_FRM::PrintedGrid() const
{
    return m_ui->ListDB_GRD;
}

void TEntity_List_FRM::FormShow()
{
    TBaseDock_FRM::FormShow();
    m_chosen = 0;
    m_chosenCodes.clear();
    m_ui->ListDB_GRD->ClearMarks();
    m_ui->Search_EDT->clear();
    m_rows.Open(ListText());
    m_ui->ListDB_GRD->SetSource(&m_rows);
    Stand();
    ShowCount();
    m_ui->Search_EDT->setFocus();
}

QString TEntity_List_FRM::ListText() const
{
    QStringList conditions;
    // Nothing belongs to the root group, so it is not offered.
    if (m_kind.part == host::TSoftwarePart::GoodsGroups && Mode() == TFormMode::Selection)
        conditions << u"Code <> %1"_s.arg(RootGroup);
    if (!m_excluded.isEmpty())
        conditions << u"%1 NOT IN (%2)"_s.arg(m_kind.codeColumn, host::CodeList(m_excluded));
    QString text =
        u"SELECT %1 AS Code, %2 AS Name, Comment FROM %3"_s.arg(m_kind.codeColumn, m_kind.nameColumn, m_kind.table);
    if (!conditions.isEmpty())
        text += u" WHERE "_s + conditions.join(u" AND ");
    return text + u" ORDER BY "_s + m_kind.codeColumn;
}

// The opening text is a code or a part of a name.
void TEntity_List_FRM::Stand()
{
    const QString text = host::FoldDigits(ParameterText()).trimmed();
    if (text.isEmpty() || m_ui->ListDB_GRD->Locate(text))
        return;
    m_ui->Search_EDT->setText(text);
}

void TEntity_List_FRM::ShowCount()
{
    m_ui->Count_LBL->setText(u"%1 مورد"_s.arg(host::PersianDigits(QString::number(m_ui->ListDB_GRD->RowCount()))));
}

void TEntity_List_FRM::Refresh(int code)
{
    m_rows.Requery();
    m_ui->ListDB_GRD->SetSource(&m_rows);
    if (code != 0 && !m_ui->ListDB_GRD->Locate(QString::number(code))) {
        m_ui->Search_EDT->clear();
        m_ui->ListDB_GRD->Locate(QString::number(code));
    }
    ShowCount();
}

bool TEntity_List_FRM::Allowed(TPermission permission)
{
    return host::Granted(m_host, m_kind.part, permission);
}

void TEntity_List_FRM::NewRow()
{
    if (!Allowed(TPermission::Create))
        return;
    if (const int code = m_host.entities.New_Group(m_kind.part))
        Refresh(code);
}

void TEntity_List_FRM::EditRow()
{
    if (m_ui->ListDB_GRD->IsEmpty() || !Allowed(TPermission::Change))
        return;
    const int code = m_ui->ListDB_GRD->CurrentKey().toInt();
    if (m_host.entities.Edit_Group(m_kind.part, code))
        Refresh(code);
}

void TEntity_List_FRM::DeleteRow()
{
    if (m_ui->ListDB_GRD->IsEmpty() || !Allowed(TPermission::Delete))
        return;
    if (m_host.entities.Delete_Entity(m_kind.part, m_ui->ListDB_GRD->CurrentKey().toInt(), false) == 0)
        Refresh(0);
}

void TEntity_List_FRM::ChooseRow()
{
    host::Grid *grid = m_ui->ListDB_GRD;
    if (grid->CurrentKey().isEmpty())
        return;
    if (grid->IsMultiSelect() && grid->MarkedKeys().isEmpty())
        grid->ToggleCurrentMark();
    m_chosen = grid->CurrentKey().toInt();
    const QStringList marked = grid->MarkedKeys();
    for (const QString &key : marked)
        m_chosenCodes += key + u',';
    done(Accepted);
}

void TEntity_List_FRM::TakeRow()
{
    if (Mode() == TFormMode::Selection)
        ChooseRow();
    else if (m_kind.editable)
        EditRow();
}

} // namespace desk
