#include "desk/documents/document_get.h"

#include "desk/documents/detail_history.h"
#include "desk/messages/catalogue.h"
#include "host/controls/grid.h"
#include "host/data/persian_text.h"
#include "ui_document_get.h"

#include <QPushButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace desk {

using host::When;

TDocument_Get_FRM::TDocument_Get_FRM(host::Host &host, const DocumentKind &kind, LineDetailScreens &screens)
    : TBaseGet_New_FRM(host, kind.part, host.mainWindow), m_kind(kind), m_store(host),
      m_ui(std::make_unique<Ui::DocumentGet>())
{
    setObjectName(u"TDocument_Get_FRM_%1"_s.arg(kind.Number()));
    m_ui->setupUi(Content());
    m_lines = new DocumentLinesPage(
        host, screens, m_store, [this](const std::function<void()> &body) { return Command(Title(), body); },
        m_ui->Lines_PNL);
    auto *column = new QVBoxLayout(m_ui->Lines_PNL);
    column->setContentsMargins(0, 0, 0, 0);
    column->addWidget(m_lines);
    m_ui->Store_LBL->setText(kind.IsTransfer() ? u"ا&ز انبار :"_s : u"&انبار :"_s);
    m_ui->ToStore_LBL->setVisible(kind.IsTransfer());
    m_ui->ToStore_Entity->setVisible(kind.IsTransfer());
    for (QWidget *widget : {static_cast<QWidget *>(m_ui->Answers_LBL), static_cast<QWidget *>(m_ui->Answers_EDT),
                            static_cast<QWidget *>(m_ui->AnswersName_LBL)})
        widget->setVisible(kind.answers != 0);
    if (kind.answers == 0) { // nothing stands before the remark
        m_ui->Header->addWidget(m_ui->Comment_LBL, 1, 0);
        m_ui->Header->addWidget(m_ui->Comment_EDT, 1, 1, 1, -1);
    } else {
        m_ui->Answers_LBL->setText(kind.answers == static_cast<int>(host::TOperationType::Sale) ? u"سند فر&وش :"_s
                                                                                                : u"سند خر&ید :"_s);
    }
    for (host::EntityPicker *picker : {m_ui->Store_Entity, m_ui->ToStore_Entity})
        picker->SetSource(m_host.entities, host::TSoftwarePart::Stores);
    connect(m_ui->Store_Entity, &host::EntityPicker::Changed, this,
            [this](int code) { Command(Title(), [this, code] { TakeStore(code); }); });
    connect(m_ui->Answers_EDT, &host::NumericEdit::NumberChanged, this,
            [this] { Command(Title(), [this] { TakeAnswers(); }); });
    connect(m_ui->Answers_EDT, &host::NumericEdit::ButtonClicked, this,
            [this] { Command(Title(), [this] { ChooseAnswers(); }); });
    connect(m_lines, &DocumentLinesPage::Changed, this, [this] {
        if (!IsLoading())
            SetIsSaved(false);
        LockHeader();
    });
    RememberLayout(m_lines->LinesGrid());
    AddCommands();
}

TDocument_Get_FRM::~TDocument_Get_FRM() = default;

void TDocument_Get_FRM::AddCommands()
{
    Bind(AddFooterCommand(u"Details_BTN"_s, u"جزئیات F6"_s), Qt::Key_F6, [this] { m_lines->OpenDetails(); });
    Bind(AddFooterCommand(u"History_BTN"_s, u"تاریخچه F8"_s), Qt::Key_F8, [this] { ShowHistory(); });
    Bind(AddFooterCommand(u"DelLine_BTN"_s, u"حذف سطر F7"_s), Qt::Key_F7, [this] { m_lines->DeleteLine(); });
    Bind(AddFooterCommand(u"PrintList_BTN"_s, u"پیش نمایش F9"_s), Qt::Key_F9, [this] { PreviewGrid(); });
    BindKey(Qt::Key_F2, u"کالا"_s, [this] { m_lines->FocusScan(); });
}

void TDocument_Get_FRM::Prepare()
{
    Forget();
    Document document;
    document.Kind = m_kind.Number();
    document.Code = m_store.NewCode(m_kind);
    document.Date = m_host.clock.NowShamsiDate();
    document.StoreCode = m_kind.mustAnswer ? 0 : m_read.StoreCode; // of the document before; a sale brings its own
    m_answered.reset();
    SetTitle(u"%1 جدید"_s.arg(m_kind.name));
    Show(document);
}

void TDocument_Get_FRM::Load()
{
    const auto document = m_store.Get(m_kind.Number(), Key().toInt());
    if (!document) {
        SetRecordGone();
        RefuseOpening(host::Warning(nullptr, MessageText(message::EntityGone, {m_kind.Title(Key().toInt())})));
        return;
    }
    m_answered = document->AnswersCode == 0 ? std::nullopt : m_store.Get(m_kind.answers, document->AnswersCode);
    SetTitle(m_kind.Title(document->Code));
    Show(*document);
}

void TDocument_Get_FRM::Show(const Document &document)
{
    m_read = document;
    m_host.detailMovements.GoodDetailsOperation_Discard(static_cast<quint8>(m_kind.Number()), document.Code);
    m_ui->Code_EDT->setText(QString::number(document.Code));
    m_ui->Date_EDT->SetDate(host::ParseDate(document.Date, host::DateType::Solar).value_or(QDate()));
    m_ui->Store_Entity->SetCode(document.StoreCode);
    m_ui->ToStore_Entity->SetCode(document.ToStoreCode);
    m_ui->Answers_EDT->setText(document.AnswersCode == 0 ? QString() : QString::number(document.AnswersCode));
    m_ui->Comment_EDT->setText(document.Comment);
    m_lines->SetStore(0, {});
    m_lines->Show(document, m_answered);
    m_lines->SetStore(document.StoreCode, m_ui->Store_Entity->Name());
    ShowAnswers();
    LockHeader();
}

void TDocument_Get_FRM::TakeStore(int code)
{
    if (m_lines->SetStore(code, m_ui->Store_Entity->Name()))
        return;
    m_ui->Store_Entity->SetCode(m_lines->LinesStore());
    m_lines->SetStore(m_ui->Store_Entity->Code(), m_ui->Store_Entity->Name());
}

/// What the lines stand on does not change under them.
void TDocument_Get_FRM::LockHeader()
{
    m_ui->Answers_EDT->setReadOnly(!m_lines->IsEmpty());
}

void TDocument_Get_FRM::ShowAnswers()
{
    const int code = static_cast<int>(m_ui->Answers_EDT->Integer());
    m_ui->AnswersName_LBL->setText(m_answered  ? host::PersianDigits(m_answered->Date)
                                   : code == 0 ? QString()
                                               : u"یافت نشد"_s);
}

void TDocument_Get_FRM::TakeAnswers()
{
    if (IsLoading() || !m_lines->IsEmpty())
        return;
    const int code = static_cast<int>(m_ui->Answers_EDT->Integer());
    m_answered = code == 0 ? std::nullopt : m_store.Get(m_kind.answers, code);
    m_lines->SetAnswered(m_answered, m_answered ? code : 0);
    if (m_answered && m_ui->Store_Entity->IsEmpty()) {
        m_ui->Store_Entity->SetCode(m_answered->StoreCode);
        m_lines->SetStore(m_answered->StoreCode, m_ui->Store_Entity->Name());
    }
    ShowAnswers();
}

void TDocument_Get_FRM::ChooseAnswers()
{
    if (!m_choose || m_ui->Answers_EDT->isReadOnly())
        return;
    const int code = m_choose(DocumentKindOf(m_kind.answers));
    if (code == 0)
        return;
    m_ui->Answers_EDT->setText(QString::number(code));
    TakeAnswers();
    SetIsSaved(false);
}

Document TDocument_Get_FRM::Entered() const
{
    Document document = m_read;
    document.Date = m_ui->Date_EDT->Text();
    document.StoreCode = m_ui->Store_Entity->Code();
    document.ToStoreCode = m_kind.IsTransfer() ? m_ui->ToStore_Entity->Code() : 0;
    document.AnswersCode = m_answered ? m_answered->Code : 0;
    document.Comment = m_ui->Comment_EDT->text().trimmed();
    document.Lines = m_lines->Lines();
    return document;
}

host::Refused TDocument_Get_FRM::MaySave()
{
    return host::CheckRight(m_host, SoftwarePart(), Mode());
}

void TDocument_Get_FRM::BeforeChecks()
{
    m_ui->Store_Entity->Resolve();
    m_ui->ToStore_Entity->Resolve();
    m_lines->Resolve();
    TakeAnswers();
}

std::vector<host::Check> TDocument_Get_FRM::Validate()
{
    return {
        {u"DateGiven"_s,
         [this] { return When(!m_ui->Date_EDT->Date().isValid(), host::Required(m_ui->Date_EDT, u"تاریخ"_s)); }},
        {u"StoreGiven"_s,
         [this] { return When(m_ui->Store_Entity->Code() == 0, host::Required(m_ui->Store_Entity, u"انبار"_s)); }},
        {u"SecondStoreGiven"_s,
         [this] {
             return When(m_kind.IsTransfer() && m_ui->ToStore_Entity->Code() == 0,
                         host::Required(m_ui->ToStore_Entity, u"به انبار"_s));
         }},
        {u"AnsweredDocument"_s, [this] { return AnswersFault(); }},
        {u"NothingPending"_s, [this] { return m_lines->Unfinished(); }},
        {u"Lines"_s, [this] { return LinesFault(); }},
    };
}

host::Refused TDocument_Get_FRM::AnswersFault() const
{
    if (m_kind.answers == 0)
        return {};
    const DocumentKind &answered = DocumentKindOf(m_kind.answers);
    const int code = static_cast<int>(m_ui->Answers_EDT->Integer());
    if (code == 0)
        return When(m_kind.mustAnswer, host::Required(m_ui->Answers_EDT, u"سند "_s + answered.name));
    if (!m_answered)
        return host::Warning(m_ui->Answers_EDT, MessageText(message::NoSuchDocument, {answered.Title(code)}));
    return When(
        m_ui->Date_EDT->Text() < m_answered->Date,
        host::Warning(m_ui->Date_EDT, MessageText(message::BeforeAnswered,
                                                  {answered.Title(code), host::PersianDigits(m_answered->Date)})));
}

host::Refused TDocument_Get_FRM::LinesFault()
{
    const QList<DocumentLine> &lines = m_lines->Lines();
    if (lines.isEmpty())
        return host::Warning(nullptr, MessageText(message::DocumentWithoutLines));
    for (int row = 0; row < lines.size(); ++row) {
        if (lines[row].Amount1 <= 0)
            return host::Warning(m_lines->StandOn(row),
                                 MessageText(message::LineWithoutAmount, {lines[row].Good.Name}));
        if (m_kind.IsTransfer() && lines[row].StoreCode == m_ui->ToStore_Entity->Code())
            return host::Warning(m_ui->ToStore_Entity, MessageText(message::SameStores));
    }
    return {};
}

void TDocument_Get_FRM::Write()
{
    const Document document = Entered();
    m_store.Save(document);
    m_read = document; // its store is where the next one begins
    SetKey(m_read.Code);
}

void TDocument_Get_FRM::AfterWrite()
{
    m_host.messages.ShowFlashMessage(u"%1 ثبت شد."_s.arg(m_kind.Title(m_read.Code)), 1500);
}

QString TDocument_Get_FRM::PrepareRecoveryQuery() const
{
    return DocumentStore::RowText(m_kind.Number(), Key().toInt());
}

QWidget *TDocument_Get_FRM::FirstControl() const
{
    if (m_ui->Store_Entity->Code() == 0)
        return m_ui->Store_Entity->Edit();
    if (m_kind.mustAnswer && !m_answered)
        return m_ui->Answers_EDT;
    return m_lines->findChild<QWidget *>(u"Scan_EDT"_s);
}

host::Grid *TDocument_Get_FRM::PrintedGrid() const
{
    return m_lines->LinesGrid();
}

void TDocument_Get_FRM::ShowHistory()
{
    const auto line = m_lines->CurrentDetails();
    TDetailHistory_FRM history(m_host);
    if (line)
        history.SetLine(*line);
    history.ShowModally();
}

void TDocument_Get_FRM::Forget()
{
    if (m_read.Code != 0)
        m_host.detailMovements.GoodDetailsOperation_Discard(static_cast<quint8>(m_kind.Number()), m_read.Code);
}

void TDocument_Get_FRM::FormClose()
{
    Forget();
    m_store.ReleaseCodes(m_kind);
    m_read = {};
    TBaseGet_New_FRM::FormClose();
}

} // namespace desk
