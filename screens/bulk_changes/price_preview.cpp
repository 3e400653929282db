#include "screens/bulk_changes/price_preview.h"

#include "host/controls/number_text.h"
#include "screens/bulk_changes/bulk_order.h"
#include "screens/bulk_changes/price_rows.h"
#include "ui_price_preview.h"

using namespace Qt::StringLiterals;

using bulk_changes::FateAt;
using bulk_changes::GoodsText;
using goods::PriceFate;

namespace {

constexpr int ReckonMilliseconds = 60;

QString Shown(host::Quantity number)
{
    return host::DisplayNumber(host::QuantityToText(number));
}

} // namespace

TPrice_Preview_FRM::TPrice_Preview_FRM(host::Host &host, goods::BulkPrices &changes, const QString &title)
    : TAsk_FRM(host, u"پیش‌نمایش تغییر قیمت کالاها"_s),
      m_ui(std::make_unique<Ui::TPrice_Preview_FRM>()), m_changes(changes), m_title(title),
      m_changing(changes.BulkPrices_QRY, bulk_changes::PriceFields(changes.BulkPrices_QRY),
                 [this](int row) { return FateAt(m_changes.BulkPrices_QRY, row) == PriceFate::Changes; }),
      m_staying(changes.BulkPrices_QRY, bulk_changes::PriceFields(changes.BulkPrices_QRY),
                [this](int row) { return FateAt(m_changes.BulkPrices_QRY, row) != PriceFate::Changes; })
{
    m_ui->setupUi(Content());
    SetSubject(title);
    resize(920, 640);
    BuildGrids();
    Bind(m_ui->MarkAll_BTN, {}, [this] { MarkShown(true); });
    Bind(m_ui->MarkNone_BTN, {}, [this] { MarkShown(false); });
    m_reckon.setSingleShot(true);
    m_reckon.setInterval(ReckonMilliseconds);
    connect(&m_reckon, &QTimer::timeout, this, &TPrice_Preview_FRM::ShowTotals);
    connect(m_ui->Changing_GRD, &host::Grid::MarksChanged, &m_reckon, qOverload<>(&QTimer::start));
    connect(m_ui->Preview_PGC, &QTabWidget::currentChanged, this, [this] { FirstControl()->setFocus(); });
}

TPrice_Preview_FRM::~TPrice_Preview_FRM()
{
    m_ui->Changing_GRD->SetSource(nullptr);
    m_ui->Staying_GRD->SetSource(nullptr);
}

void TPrice_Preview_FRM::BuildGrids()
{
    m_ui->Changing_GRD->SetColumns(bulk_changes::ChangingColumns());
    m_ui->Changing_GRD->SetMultiSelect(true);
    m_ui->Staying_GRD->SetColumns(bulk_changes::StayingColumns());
    m_ui->TGeneral_Search_Frame1->SetGrid(m_ui->Changing_GRD);
    m_ui->TGeneral_Search_Frame2->SetGrid(m_ui->Staying_GRD);
    for (host::Grid *grid : {m_ui->Changing_GRD, m_ui->Staying_GRD}) {
        grid->SetSortable(true);
        RememberLayout(grid);
    }
}

void TPrice_Preview_FRM::FormShow()
{
    m_result = {};
    m_changes.BulkPrices_GetAll();
    m_ui->Changing_GRD->SetSource(&m_changing);
    m_ui->Staying_GRD->SetSource(&m_staying);
    m_ui->Changing_GRD->MarkAllShown();
    ReadPrices();
    m_ui->Preview_PGC->setTabText(0, u"تغییر می‌کند: "_s + GoodsText(m_changing.rowCount()));
    m_ui->Preview_PGC->setTabText(1, u"بدون تغییر می‌ماند: "_s + GoodsText(m_staying.rowCount()));
    m_ui->Preview_PGC->setCurrentIndex(m_changing.rowCount() == 0 ? 1 : 0);
    m_ui->Staying_LBL->setText(StayingText());
    ShowTotals();
}

/// Texts become numbers once: the totals are reckoned anew with every mark.
void TPrice_Preview_FRM::ReadPrices()
{
    const host::Dataset &rows = m_changes.BulkPrices_QRY;
    m_prices.clear();
    m_prices.reserve(static_cast<size_t>(m_changing.rowCount()));
    for (int row = 0; row < m_changing.rowCount(); ++row) {
        const int source = m_changing.SourceRow(row);
        m_prices.push_back({rows.FieldAt(source, u"Code").toString(),
                            host::QuantityFromText(rows.FieldAt(source, u"OldPrice").toString()),
                            host::QuantityFromText(rows.FieldAt(source, u"NewPrice").toString())});
    }
}

void TPrice_Preview_FRM::ShowTotals()
{
    int rising = 0;
    int falling = 0;
    host::Quantity before = 0;
    host::Quantity after = 0;
    for (const Price &price : m_prices) {
        if (!m_ui->Changing_GRD->IsMarked(price.key))
            continue;
        ++(price.after > price.before ? rising : falling);
        before += price.before;
        after += price.after;
    }
    m_ui->Picked_LBL->setText(u"<b>%1</b> تغییر می‌کند: %2 گران‌تر، %3 ارزان‌تر"_s.arg(
        GoodsText(rising + falling), Shown(rising), Shown(falling)));
    m_ui->Sums_LBL->setText(u"جمع قیمت‌ها: از %1 به <b>%2</b>"_s.arg(Shown(before), Shown(after)));
}

QString TPrice_Preview_FRM::StayingText() const
{
    std::array<int, goods::PriceFates> counts{};
    for (int row = 0; row < m_staying.rowCount(); ++row)
        ++counts.at(static_cast<size_t>(FateAt(m_changes.BulkPrices_QRY, m_staying.SourceRow(row))));
    QStringList texts;
    for (size_t fate = 0; fate < counts.size(); ++fate)
        if (counts.at(fate) > 0)
            texts << bulk_changes::FateText(static_cast<PriceFate>(fate)) + u": "_s + GoodsText(counts.at(fate));
    return texts.join(u"، "_s);
}

bool TPrice_Preview_FRM::IsStaying() const
{
    return m_ui->Preview_PGC->currentIndex() == 1;
}

QWidget *TPrice_Preview_FRM::FirstControl() const
{
    return PrintedGrid();
}

host::Grid *TPrice_Preview_FRM::PrintedGrid() const
{
    return IsStaying() ? m_ui->Staying_GRD : m_ui->Changing_GRD;
}

host::SearchFrame *TPrice_Preview_FRM::ListSearch() const
{
    return IsStaying() ? m_ui->TGeneral_Search_Frame2 : m_ui->TGeneral_Search_Frame1;
}

void TPrice_Preview_FRM::reject()
{
    if (!ListSearch()->GiveUp())
        TAsk_FRM::reject();
}

void TPrice_Preview_FRM::MarkShown(bool marked)
{
    m_ui->Changing_GRD->MarkAllShown(marked);
    m_ui->Changing_GRD->setFocus();
}

std::vector<host::Check> TPrice_Preview_FRM::Validate()
{
    return {{u"AnyGoodMarked"_s, [this] {
                 return host::When(
                     m_ui->Changing_GRD->MarkedKeys().isEmpty(),
                     host::Warning(m_ui->Changing_GRD, u"هیچ کالایی برای تغییر قیمت علامت نخورده است."_s));
             }}};
}

/// What is sent grows with the shorter list: goods left out, or goods left in.
void TPrice_Preview_FRM::Pick()
{
    QList<int> in;
    QList<int> out;
    for (const Price &price : m_prices)
        (m_ui->Changing_GRD->IsMarked(price.key) ? in : out) << price.key.toInt();
    m_picked = QSet<int>(in.cbegin(), in.cend());
    if (in.size() < out.size()) {
        m_changes.BulkPrices_PickOnly(in);
        return;
    }
    m_changes.BulkPrices_PickAll(true); // a writing that was given up may have left others
    if (!out.isEmpty())
        m_changes.BulkPrices_Pick(out, false);
}

void TPrice_Preview_FRM::Write()
{
    bulk_changes::ProgressWindow progress(Title(), this);
    Pick();
    m_result = m_changes.BulkPrices_Apply(bulk_changes::Order(m_host, m_title, progress.Callback()));
}

void TPrice_Preview_FRM::Proceed()
{
    if (m_result.outcome != goods::BulkResult::Outcome::Cancelled)
        TAsk_FRM::Proceed();
}
