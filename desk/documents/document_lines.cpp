#include "desk/documents/document_lines.h"

#include "desk/documents/document_store.h"
#include "desk/messages/catalogue.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/look/theme.h"
#include "rules/quantity_entry.h"
#include "rules/unit_arithmetic.h"
#include "ui_document_lines.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::ColumnFormat;

QString UnitCaption(const QString &caption, const QString &unit)
{
    return unit.isEmpty() ? caption + u" :"_s : u"%1 (%2) :"_s.arg(caption, unit);
}

QString Shown(Quantity quantity)
{
    return host::DisplayNumber(host::QuantityToText(quantity));
}

} // namespace

DocumentLinesPage::DocumentLinesPage(host::Host &host, LineDetailScreens &screens, DocumentStore &store, Boundary run,
                                     QWidget *parent)
    : QWidget(parent), m_host(host), m_screens(screens), m_store(store), m_run(std::move(run)),
      m_ui(std::make_unique<Ui::DocumentLines>())
{
    m_ui->setupUi(this);
    BuildGrid();
    BindInputs();
}

DocumentLinesPage::~DocumentLinesPage()
{
    m_ui->Lines_GRD->SetSource(nullptr);
}

void DocumentLinesPage::BuildGrid()
{
    host::Grid *grid = m_ui->Lines_GRD;
    grid->SetColumns({{u"Radif"_s, u"ردیف"_s, 44, false, ColumnFormat::Code},
                      {u"GoodCode"_s, u"کد کالا"_s, 70, false, ColumnFormat::Code},
                      {u"GoodName"_s, u"کالا"_s, 240},
                      {u"StoreName"_s, u"انبار"_s, 110},
                      {u"Amount1"_s, u"مقدار"_s, 70, false, ColumnFormat::Quantity},
                      {u"UnitName1"_s, u"واحد"_s, 54},
                      {u"Amount2"_s, u"مقدار 2"_s, 68, false, ColumnFormat::Quantity},
                      {u"UnitName2"_s, u"واحد 2"_s, 54},
                      {u"HasDetails"_s, u"جزئیات"_s, 52, false, ColumnFormat::Flag},
                      {u"Price"_s, u"فی"_s, 90, false, ColumnFormat::Price},
                      {u"Sum"_s, u"مبلغ"_s, 100, false, ColumnFormat::Price}});
    grid->horizontalHeader()->setStretchLastSection(true);
    grid->SetSource(&m_lines, u"OperationRow"_s);
    grid->installEventFilter(this);
    connect(grid, &host::Grid::CurrentKeyChanged, this, [this] { ShowLine(); });
    connect(grid, &host::Grid::RowActivated, this, [this] {
        if (m_ui->Amount1_EDT->isReadOnly())
            m_run([this] { OpenDetails(); });
        else
            m_ui->Amount1_EDT->setFocus();
    });
}

void DocumentLinesPage::BindInputs()
{
    // The editor watches its inputs for changes; these tell by themselves, because they show another line at each step.
    for (QWidget *input : {static_cast<QWidget *>(m_ui->Scan_EDT), static_cast<QWidget *>(m_ui->Amount1_EDT),
                           static_cast<QWidget *>(m_ui->Amount2_EDT), static_cast<QWidget *>(m_ui->Price_EDT),
                           static_cast<QWidget *>(m_ui->LineStore_Entity)}) {
        input->setProperty("watched", true);
        input->installEventFilter(this);
    }
    connect(m_ui->Scan_EDT, &QLineEdit::textEdited, this, [this] {
        m_refusedScan.clear();
        m_waits = false;
    });
    for (host::NumericEdit *edit : {m_ui->Amount1_EDT, m_ui->Amount2_EDT, m_ui->Price_EDT})
        connect(edit, &QLineEdit::textChanged, this, [this, edit] { Typed(edit); });
    m_ui->LineStore_Entity->SetSource(m_host.entities, host::TSoftwarePart::Stores);
    m_ui->LineStore_Entity->SetBoundary(m_run);
    connect(m_ui->LineStore_Entity, &host::EntityPicker::Changed, this, [this](int code) {
        m_run([this, code] {
            if (Current() >= 0 && code != 0)
                MoveLine(Current(), code, m_ui->LineStore_Entity->Name());
        });
    });
}

host::Grid *DocumentLinesPage::LinesGrid() const
{
    return m_ui->Lines_GRD;
}

void DocumentLinesPage::Show(const Document &document, const std::optional<Document> &answered)
{
    m_kind = &DocumentKindOf(document.Kind);
    m_code = document.Code;
    m_answersCode = document.AnswersCode;
    m_linesStore = 0;
    m_answered = answered;
    m_lines.SetLines(document.Lines);
    const bool priced = m_kind->priceSide >= 0;
    for (const QString &field : {u"Price"_s, u"Sum"_s})
        m_ui->Lines_GRD->SetColumnVisible(field, priced);
    m_ui->Price_LBL->setVisible(priced);
    m_ui->Price_EDT->setVisible(priced);
    m_ui->Scan_EDT->clear();
    Tell({});
    m_ui->Lines_GRD->StandOn(0);
    ShowLine();
    ShowTotal();
}

void DocumentLinesPage::SetAnswered(const std::optional<Document> &answered, int code)
{
    m_answered = answered;
    m_answersCode = code;
}

bool DocumentLinesPage::SetStore(int code, const QString &name)
{
    const int former = m_linesStore;
    const bool moves = former != 0 && code != 0 && former != code;
    if (moves &&
        std::any_of(Lines().cbegin(), Lines().cend(),
                    [&](const DocumentLine &line) { return line.StoreCode == former && HasChosen(line); }) &&
        !m_host.messages.Confirm(message::GiveUpDetails, {}))
        return false;
    m_storeCode = code;
    m_storeName = name;
    if (code != 0) // a mistyped one: the lines wait for the next
        m_linesStore = code;
    if (!moves)
        return true;
    for (int row = 0; row < m_lines.rowCount(); ++row) {
        if (m_lines.At(row).StoreCode == former)
            MoveToStore(row, code, name);
    }
    return true;
}

bool DocumentLinesPage::HasChosen(const DocumentLine &line) const
{
    return m_kind->direction < 0 && line.Amount1 != 0 && TracksDetails(line.Good);
}

void DocumentLinesPage::MoveLine(int row, int store, const QString &name)
{
    const DocumentLine &line = m_lines.At(row);
    if (line.StoreCode == store || !HasChosen(line) || m_host.messages.Confirm(message::GiveUpDetails, {}))
        MoveToStore(row, store, name);
    else
        ShowLine();
}

void DocumentLinesPage::MoveToStore(int row, int store, const QString &name)
{
    DocumentLine line = m_lines.At(row);
    if (line.StoreCode == store)
        return;
    // What was chosen in the former store is not in this one.
    if (TracksDetails(line.Good) && m_host.detailMovements.ChangeStore(DetailsOf(line), store)) {
        line.Amount1 = 0;
        line.Amount2 = 0;
    }
    line.StoreCode = store;
    line.StoreName = name;
    Replace(row, line);
}

int DocumentLinesPage::Current() const
{
    // While lines come and go the grid may still stand where one was.
    const int row = m_ui->Lines_GRD->CurrentSourceRow();
    return row < m_lines.rowCount() ? row : -1;
}

QWidget *DocumentLinesPage::StandOn(int row)
{
    m_ui->Lines_GRD->StandOn(row);
    return m_ui->Amount1_EDT->isReadOnly() ? static_cast<QWidget *>(m_ui->Lines_GRD) : m_ui->Amount1_EDT;
}

void DocumentLinesPage::FocusScan()
{
    m_ui->Scan_EDT->setFocus(Qt::OtherFocusReason);
    m_ui->Scan_EDT->selectAll();
}

bool DocumentLinesPage::TracksDetails(const DocumentGood &good) const
{
    return good.HasDetails && m_host.settings.SettingRecord().GoodDetails;
}

host::TDocumentLine DocumentLinesPage::DetailsOf(const DocumentLine &line) const
{
    return {line.Good.Code,
            line.StoreCode,
            0, // found from the good
            static_cast<quint8>(m_kind->Number()),
            m_kind->answers != 0,
            m_code,
            line.OperationRow,
            m_answersCode};
}

std::optional<host::TDocumentLine> DocumentLinesPage::CurrentDetails() const
{
    if (Current() < 0)
        return std::nullopt;
    return DetailsOf(m_lines.At(Current()));
}

void DocumentLinesPage::Tell(const QString &text)
{
    m_ui->Note_LBL->setProperty("fault", true);
    // The text may begin with what was scanned: the mark keeps it a sentence from the right.
    m_ui->Note_LBL->setText(text.isEmpty() ? text : u"\u200F"_s + text);
    m_ui->Note_LBL->setVisible(!text.isEmpty());
    if (!text.isEmpty())
        QApplication::beep(); // who scans looks at the goods
    m_ui->Scan_EDT->selectAll();
    m_refusedScan = text.isEmpty() ? QString() : Scanned();
    m_waits = false;
}

QString DocumentLinesPage::Scanned() const
{
    return m_ui->Scan_EDT->text().trimmed();
}

bool DocumentLinesPage::ScanPending() const
{
    const QString scanned = Scanned();
    return !scanned.isEmpty() && scanned != m_refusedScan;
}

void DocumentLinesPage::Resolve()
{
    if (Current() >= 0)
        m_ui->LineStore_Entity->Resolve();
}

host::Refused DocumentLinesPage::Unfinished() const
{
    if (ScanPending() || (m_waits && !Scanned().isEmpty()))
        return host::Warning(m_ui->Scan_EDT, MessageText(message::ScanPending, {Scanned()}));
    return host::When(Current() >= 0 && m_ui->LineStore_Entity->Code() == 0,
                      host::Required(m_ui->LineStore_Entity, u"انبار"_s));
}

void DocumentLinesPage::ShowLine()
{
    const int row = Current();
    const bool none = row < 0;
    const DocumentLine line = none ? DocumentLine() : m_lines.At(row);
    const bool details = TracksDetails(line.Good);
    m_showing = true;
    m_ui->Good_LBL->setText(none ? QString() : u"%1 - %2"_s.arg(Shown(row + 1), line.Good.Name));
    m_ui->LineStore_Entity->SetItem(line.StoreCode, line.StoreName);
    m_ui->Amount1_EDT->SetNumber(line.Amount1);
    m_ui->Amount2_EDT->SetNumber(line.Amount2);
    m_ui->Price_EDT->SetNumber(line.Price);
    m_ui->Amount1_LBL->setText(UnitCaption(u"مقد&ار"_s, line.Good.UnitName1));
    m_ui->Amount2_LBL->setText(UnitCaption(u"مقدار &2"_s, line.Good.UnitName2));
    for (QWidget *input : {static_cast<QWidget *>(m_ui->Amount1_EDT), static_cast<QWidget *>(m_ui->Price_EDT),
                           static_cast<QWidget *>(m_ui->LineStore_Entity)})
        input->setEnabled(!none);
    m_ui->Amount1_EDT->setReadOnly(details);
    m_ui->Amount2_EDT->setReadOnly(details);
    m_ui->Amount1_EDT->setToolTip(details ? MessageText(message::DetailsDecide) : QString());
    const bool second = !line.Good.UnitName2.isEmpty() && m_host.settings.SettingRecord().TwoUnitGoods;
    m_ui->Amount2_LBL->setVisible(second);
    m_ui->Amount2_EDT->setVisible(second);
    m_showing = false;
}

void DocumentLinesPage::ShowTotal()
{
    QString text = u"%1 سطر"_s.arg(Shown(m_lines.rowCount()));
    if (m_kind && m_kind->priceSide >= 0)
        text += u"   ·   جمع مبلغ: %1"_s.arg(Shown(m_lines.Total()));
    m_ui->Total_LBL->setText(text);
}

void DocumentLinesPage::Replace(int row, const DocumentLine &line)
{
    m_lines.Replace(row, line);
    if (row == Current() && !m_showing)
        ShowLine();
    ShowTotal();
    emit Changed();
}

/// Quantity 2 follows quantity 1, or the other way round, where a ratio leads from one to the other.
void DocumentLinesPage::Follow(DocumentLine &line, bool firstTyped) const
{
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    if (line.Good.UnitName2.isEmpty())
        line.Amount2 = 0;
    if (line.Good.UnitName2.isEmpty() || !settings.TwoUnitGoods)
        return; // switched off, a second quantity stays as it was written
    if (goods::QuantityEntryFor(settings.TwoUnitGoods, settings.TwoUnitVariableRatio, line.Good.Formula > 0) !=
        goods::QuantityEntry::BigAndSmall)
        return;
    if (firstTyped)
        line.Amount2 = goods::SecondQuantity(line.Amount1, line.Good.Formula, settings.IntegerUnits);
    else
        line.Amount1 = goods::FirstQuantity(line.Amount2, line.Good.Formula);
}

void DocumentLinesPage::Typed(host::NumericEdit *edit)
{
    const int row = Current();
    if (m_showing || row < 0)
        return;
    DocumentLine line = m_lines.At(row);
    Quantity &value = edit == m_ui->Price_EDT ? line.Price : edit == m_ui->Amount1_EDT ? line.Amount1 : line.Amount2;
    if (goods::SameQuantity(value, edit->Number()))
        return; // shown in another way, with the focus or without
    value = edit->Number();
    if (edit != m_ui->Price_EDT)
        Follow(line, edit == m_ui->Amount1_EDT);
    // The edit under the fingers keeps what is in it; only the other quantity is shown anew.
    m_showing = true;
    if (edit == m_ui->Amount1_EDT)
        m_ui->Amount2_EDT->SetNumber(line.Amount2);
    else if (edit == m_ui->Amount2_EDT)
        m_ui->Amount1_EDT->SetNumber(line.Amount1);
    Replace(row, line);
    m_showing = false;
}

void DocumentLinesPage::DeleteLine()
{
    const int row = Current();
    if (row < 0 || !m_host.messages.MsgDeleteRow())
        return;
    const bool details = TracksDetails(m_lines.At(row).Good);
    m_lines.Remove(row);
    if (details)
        m_store.KeepLines(m_kind->Number(), m_code, m_lines.Lines());
    m_ui->Lines_GRD->StandOn(std::min(row, m_lines.rowCount() - 1));
    ShowLine();
    ShowTotal();
    emit Changed();
}

bool DocumentLinesPage::EnterPressed(QObject *watched)
{
    if (watched == m_ui->Scan_EDT) {
        m_run([this] { TakeScan(); });
        return true;
    }
    const QList<QWidget *> order{m_ui->Amount1_EDT, m_ui->Amount2_EDT, m_ui->Price_EDT};
    const qsizetype place = order.indexOf(qobject_cast<QWidget *>(watched));
    if (place < 0)
        return false;
    for (qsizetype next = place + 1; next < order.size(); ++next) {
        if (order[next]->isVisibleTo(this)) {
            order[next]->setFocus(Qt::TabFocusReason);
            return true;
        }
    }
    if (!ScanPending() && !m_waits)
        m_ui->Scan_EDT->clear();
    FocusScan();
    return true;
}

bool DocumentLinesPage::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return EnterPressed(watched) || QWidget::eventFilter(watched, event);
    case Qt::Key_Tab: // some scanners end with it
        if (watched != m_ui->Scan_EDT || !ScanPending())
            break;
        m_run([this] { TakeScan(); });
        return true;
    case Qt::Key_Down:
        if (watched != m_ui->Scan_EDT || m_lines.IsEmpty())
            break;
        m_ui->Lines_GRD->setFocus();
        return true;
    case Qt::Key_Delete:
        if (watched != m_ui->Lines_GRD)
            break;
        m_run([this] { DeleteLine(); });
        return true;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace desk
