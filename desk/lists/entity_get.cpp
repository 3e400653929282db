#include "desk/lists/entity_get.h"

#include "desk/messages/catalogue.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "ui_entity_get.h"

using namespace Qt::StringLiterals;

namespace desk {

using host::When;

TEntity_Get_FRM::TEntity_Get_FRM(host::Host &host, const EntityKind &kind)
    : TBaseGet_New_FRM(host, kind.part, host.mainWindow), m_kind(kind), m_ui(std::make_unique<Ui::EntityGet>()),
      m_row(host.DM.ADOConnection1)
{
    setObjectName(u"TEntity_Get_FRM_%1"_s.arg(static_cast<int>(kind.part)));
    m_ui->setupUi(Content());
    m_ui->Type_LBL->setVisible(kind.hasType);
    m_ui->Type_CMB->setVisible(kind.hasType);
    m_row.SetTable(kind.table, kind.codeColumn);
    SetCodeEdit(m_ui->Code_EDT);
    SetCloseAfterNew(true);
}

TEntity_Get_FRM::~TEntity_Get_FRM() = default;

QString TEntity_Get_FRM::RowText(int code) const
{
    return u"SELECT * FROM %1 WHERE %2 = %3"_s.arg(m_kind.table, m_kind.codeColumn).arg(code);
}

void TEntity_Get_FRM::Prepare()
{
    SetTitle(u"%1 جدید"_s.arg(m_kind.singular));
    const QVariant code = host::Scalar(m_host.DM.ADOConnection1,
                                       u"SELECT ISNULL(MAX(%1), 0) + 1 FROM %2"_s.arg(m_kind.codeColumn, m_kind.table));
    m_ui->Code_EDT->setText(code.toString());
    m_ui->Code_EDT->setReadOnly(false);
    m_ui->Name_EDT->clear();
    m_ui->Comment_EDT->clear();
    m_ui->Type_CMB->setCurrentIndex(0);
}

void TEntity_Get_FRM::Load()
{
    m_row.Open(RowText(Key().toInt()));
    if (m_row.IsEmpty()) {
        RefuseOpening(host::Warning(nullptr, MessageText(message::EntityGone, {m_kind.singular})));
        return;
    }
    SetTitle(u"%1 «%2»"_s.arg(m_kind.singular, m_row.TextField(u"Name")));
    m_ui->Code_EDT->setText(Key().toString());
    m_ui->Code_EDT->setReadOnly(true);
    m_ui->Name_EDT->setText(m_row.TextField(u"Name"));
    m_ui->Comment_EDT->setText(m_row.TextField(u"Comment"));
    if (m_kind.hasType)
        m_ui->Type_CMB->setCurrentIndex(m_row.IntField(u"Type"));
}

int TEntity_Get_FRM::Code() const
{
    return static_cast<int>(m_ui->Code_EDT->Integer());
}

QString TEntity_Get_FRM::Name() const
{
    return m_ui->Name_EDT->text().trimmed();
}

std::vector<host::Check> TEntity_Get_FRM::Validate()
{
    return {
        {u"CodeFits"_s,
         [this] {
             const qint64 code = m_ui->Code_EDT->Integer();
             const QString text = MessageText(message::CodeOutOfRange,
                                              {QString::number(LeastEntityCode), QString::number(GreatestEntityCode)});
             return When(IsNew() && (code < LeastEntityCode || code > GreatestEntityCode),
                         host::Warning(m_ui->Code_EDT, text));
         }},
        {u"CodeFree"_s,
         [this] {
             return When(IsNew() && host::Exists(m_host.DM.ADOConnection1, RowText(Code())),
                         host::RepeatedCode(m_ui->Code_EDT, u"کد"_s));
         }},
        {u"NameGiven"_s, [this] { return When(Name().isEmpty(), host::Required(m_ui->Name_EDT, u"نام"_s)); }},
        {u"NameFree"_s, [this] { return When(NameTaken(), host::Repeated(m_ui->Name_EDT, u"نام"_s, m_kind.plural)); }},
    };
}

bool TEntity_Get_FRM::NameTaken() const
{
    const QString text = u"SELECT %1 FROM %2 WHERE %1 <> %3 AND %4 = "_s.arg(m_kind.codeColumn, m_kind.table)
                             .arg(m_ui->Code_EDT->Integer())
                             .arg(m_kind.nameColumn) +
                         host::NQuotedStr(Name());
    return host::Exists(m_host.DM.ADOConnection1, text);
}

void TEntity_Get_FRM::Write()
{
    const int code = Code();
    host::Transaction transaction(m_host.DM.ADOConnection1);
    m_row.Open(RowText(code));
    if (IsNew()) {
        m_row.Append();
        m_row.SetField(m_kind.codeColumn, code);
    } else {
        m_row.Edit();
    }
    m_row.SetField(m_kind.nameColumn, Name());
    m_row.SetField(u"Comment", m_ui->Comment_EDT->text());
    if (m_kind.hasType)
        m_row.SetField(u"Type", m_ui->Type_CMB->currentIndex());
    m_row.Post();
    transaction.Commit();
    SetKey(code);
}

void TEntity_Get_FRM::AfterWrite()
{
    m_host.messages.MSGCompeletedSuccessfully(u"ذخیره‌سازی %1"_s.arg(m_kind.singular));
}

QString TEntity_Get_FRM::PrepareRecoveryQuery() const
{
    return RowText(Key().toInt());
}

QWidget *TEntity_Get_FRM::FirstControl() const
{
    return m_ui->Name_EDT;
}

} // namespace desk
