#include "desk/lists/entity_get.h"

#include "desk/messages/catalogue.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "ui_entity_get.h"

namespace desk {

using host::MessageService;
using host::Refusal;
using host::TFormMode;

TEntity_Get_FRM::TEntity_Get_FRM(host::Host &host, const EntityKind &kind)
    : TBaseGet_New_FRM(host, kind.part, host.mainWindow), kind_(kind), ui_(std::make_unique<Ui::EntityGet>()),
      row_(host.DM.ADOConnection1)
{
    setObjectName(u"TEntity_Get_FRM_%1"_qs.arg(static_cast<int>(kind.part)));
    ui_->setupUi(Content());
    ui_->Type_LBL->setVisible(kind.hasType);
    ui_->Type_CMB->setVisible(kind.hasType);
    row_.SetTable(kind.table, kind.codeColumn);
    SetCodeEdit(ui_->Code_EDT);
    SetCloseAfterNew(true);
}

TEntity_Get_FRM::~TEntity_Get_FRM() = default;

QString TEntity_Get_FRM::RowText(int code) const
{
    return u"SELECT * FROM %1 WHERE %2 = %3"_qs.arg(kind_.table, kind_.codeColumn).arg(code);
}

void TEntity_Get_FRM::Prepare()
{
    SetTitle(u"%1 جدید"_qs.arg(kind_.singular));
    const QVariant code = host::Scalar(m_host.DM.ADOConnection1,
                                       u"SELECT ISNULL(MAX(%1), 0) + 1 FROM %2"_qs.arg(kind_.codeColumn, kind_.table));
    ui_->Code_EDT->setText(code.toString());
    ui_->Code_EDT->setReadOnly(false);
    ui_->Name_EDT->clear();
    ui_->Comment_EDT->clear();
    ui_->Type_CMB->setCurrentIndex(0);
}

void TEntity_Get_FRM::Load()
{
    row_.Open(RowText(Key().toInt()));
    if (row_.IsEmpty()) {
        m_host.messages.ShowMessage(MessageText(message::EntityGone, {kind_.singular}), host::MessageIcon::Warning);
        AbortOpening();
        return;
    }
    SetTitle(u"%1 «%2»"_qs.arg(kind_.singular, row_.TextField(u"Name")));
    ui_->Code_EDT->setText(Key().toString());
    ui_->Code_EDT->setReadOnly(true);
    ui_->Name_EDT->setText(row_.TextField(u"Name"));
    ui_->Comment_EDT->setText(row_.TextField(u"Comment"));
    if (kind_.hasType)
        ui_->Type_CMB->setCurrentIndex(row_.IntField(u"Type"));
}

std::vector<host::Check> TEntity_Get_FRM::Validate()
{
    return {
        {u"code fits"_qs, [this] { return CodeFits(); }},
        {u"code is free"_qs, [this] { return CodeIsFree(); }},
        {u"name is given"_qs, [this] { return NameIsGiven(); }},
        {u"name is free"_qs, [this] { return NameIsFree(); }},
    };
}

std::optional<Refusal> TEntity_Get_FRM::CodeFits() const
{
    const qint64 code = ui_->Code_EDT->Integer();
    if (Mode() != TFormMode::New || (code >= LeastEntityCode && code <= GreatestEntityCode))
        return std::nullopt;
    return Refusal{ui_->Code_EDT, [](MessageService &messages) {
                       messages.ShowMessage(MessageText(message::CodeOutOfRange, {QString::number(LeastEntityCode),
                                                                                  QString::number(GreatestEntityCode)}),
                                            host::MessageIcon::Warning);
                   }};
}

std::optional<Refusal> TEntity_Get_FRM::CodeIsFree() const
{
    if (Mode() != TFormMode::New ||
        !host::Exists(m_host.DM.ADOConnection1, RowText(static_cast<int>(ui_->Code_EDT->Integer()))))
        return std::nullopt;
    return Refusal{ui_->Code_EDT, [](MessageService &messages) { messages.MsgRepeatedCode(u"کد"_qs); }};
}

std::optional<Refusal> TEntity_Get_FRM::NameIsGiven() const
{
    if (!ui_->Name_EDT->text().trimmed().isEmpty())
        return std::nullopt;
    return Refusal{ui_->Name_EDT, [](MessageService &messages) { messages.MsgRequiredField(u"نام"_qs); }};
}

std::optional<Refusal> TEntity_Get_FRM::NameIsFree() const
{
    const QString text = u"SELECT %1 FROM %2 WHERE %1 <> %3 AND %4 = "_qs.arg(kind_.codeColumn, kind_.table)
                             .arg(ui_->Code_EDT->Integer())
                             .arg(kind_.nameColumn) +
                         host::NQuotedStr(ui_->Name_EDT->text().trimmed());
    if (!host::Exists(m_host.DM.ADOConnection1, text))
        return std::nullopt;
    return Refusal{ui_->Name_EDT,
                   [this](MessageService &messages) { messages.MsgRepeatedField(u"نام"_qs, kind_.plural); }};
}

void TEntity_Get_FRM::Write()
{
    const int code = static_cast<int>(ui_->Code_EDT->Integer());
    host::Transaction transaction(m_host.DM.ADOConnection1);
    row_.Open(RowText(code));
    if (Mode() == TFormMode::New) {
        row_.Append();
        row_.SetField(kind_.codeColumn, code);
    } else {
        row_.Edit();
    }
    row_.SetField(kind_.nameColumn, ui_->Name_EDT->text().trimmed());
    row_.SetField(u"Comment", ui_->Comment_EDT->text());
    if (kind_.hasType)
        row_.SetField(u"Type", ui_->Type_CMB->currentIndex());
    row_.Post();
    transaction.Commit();
    SetKey(code);
}

void TEntity_Get_FRM::AfterWrite()
{
    m_host.messages.MSGCompeletedSuccessfully(u"ذخیره‌سازی %1"_qs.arg(kind_.singular));
}

QString TEntity_Get_FRM::PrepareRecoveryQuery() const
{
    return RowText(Key().toInt());
}

QWidget *TEntity_Get_FRM::FirstControl() const
{
    return ui_->Name_EDT;
}

} // namespace desk
