#include "screens/labels/label_print.h"

#include "data/goods/good_labels.h"
#include "host/controls/number_text.h"
#include "screens/good_editor/price_delegate.h"
#include "screens/labels/label_output.h"
#include "screens/shared/leave_watch.h"
#include "ui_label_print.h"

#include <QFileDialog>
#include <QHeaderView>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

using host::TFormMode;
using host::TSoftwarePart;
using labels::CountBy;
using labels::Layout;

namespace {

/// More labels are a slip of the hand; a preview of them would also fill the memory.
constexpr int MostLabels = 10'000;
constexpr int CountLength = 4;
constexpr int CountColumn = labels::LabelRows::Count + 1; // behind the grid's column of marks
constexpr int FlashMilliseconds = 2000;

/// A number of labels is typed in its cell as a price is, but whole.
class CountDelegate : public PriceDelegate
{
public:
    using PriceDelegate::PriceDelegate;

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        auto *edit = static_cast<host::NumericEdit *>(PriceDelegate::createEditor(parent, option, index));
        edit->setObjectName(u"RowCount_EDT"_s);
        edit->setDecimals(0);
        edit->setMaxLength(CountLength);
        return edit;
    }
};

QString Shown(qint64 number)
{
    return host::DisplayNumber(QString::number(number));
}

host::Check Range(const QString &name, QWidget *control, qint64 value, int from, int to)
{
    return {name, [=] {
                return host::When(
                    value < from || value > to,
                    host::Warning(control, u"%1 باید از %2 تا %3 باشد."_s.arg(name, Shown(from), Shown(to))));
            }};
}

} // namespace

TGood_Label_FRM::TGood_Label_FRM(host::Host &host, goods::Prices &prices)
    : TBaseDock_FRM(host, TSoftwarePart::Goods, TFormMode::Selection), m_ui(std::make_unique<Ui::TGood_Label_FRM>()),
      m_prices(prices)
{
    m_ui->setupUi(Content());
    SetTitle(u"چاپ لیبل و بارکد"_s);
    resize(1180, 720);
    BuildChoices();
    BuildGrid();
    ShowChoices({});
    Bind(AddFooterCommand(u"Print_BTN"_s, u"چاپ F3"_s), Qt::Key_F3, [this] { Print(); });
    Bind(AddFooterCommand(u"Pdf_BTN"_s, u"فایل PDF F8"_s), Qt::Key_F8, [this] { WritePdf(); });
    Bind(AddFooterCommand(u"Preview_BTN"_s, u"پیش نمایش F9"_s), Qt::Key_F9, [this] { Preview(); });
    Bind(AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s), {}, [this] { reject(); });
    findChild<QPushButton *>(u"Print_BTN"_s)->setProperty("primary", true);
}

TGood_Label_FRM::~TGood_Label_FRM()
{
    m_ui->LabelGoods_GRD->SetSource(nullptr);
}

void TGood_Label_FRM::BuildChoices()
{
    m_ui->Layout_CMB->addItem(u"لیبل قفسه با قیمت (۸۰ × ۴۰)"_s, int(Layout::Shelf));
    m_ui->Layout_CMB->addItem(u"برچسب بارکد (۵۰ × ۳۰)"_s, int(Layout::Sticker));
    m_ui->Layout_CMB->addItem(u"برگه A4"_s, int(Layout::Sheet));
    m_ui->CountBy_CMB->addItem(u"یکسان برای همه"_s, int(CountBy::Same));
    m_ui->CountBy_CMB->addItem(u"جداگانه، در جدول"_s, int(CountBy::Typed));
    m_ui->CountBy_CMB->addItem(u"به تعداد موجودی"_s, int(CountBy::Stock));
    for (const int dots : {203, 300, 600})
        m_ui->Dpi_CMB->addItem(u"%1 نقطه در اینچ"_s.arg(host::DisplayNumber(QString::number(dots))), dots);
    for (QComboBox *box : Content()->findChildren<QComboBox *>())
        connect(box, &QComboBox::currentIndexChanged, this, &TGood_Label_FRM::Follow);
    for (host::NumericEdit *edit : Content()->findChildren<host::NumericEdit *>())
        connect(edit, &QLineEdit::textChanged, this, &TGood_Label_FRM::Follow);
}

void TGood_Label_FRM::BuildGrid()
{
    using host::ColumnFormat;
    host::Grid *grid = m_ui->LabelGoods_GRD;
    grid->SetColumns({{u"Code"_s, u"کد"_s, 70, false, ColumnFormat::Code},
                      {u"Name"_s, u"نام کالا"_s, 235},
                      {u"Barcode"_s, u"بارکد"_s, 140},
                      {u"Price"_s, u"قیمت"_s, 95, false, ColumnFormat::Price},
                      {u"Mogodi"_s, u"موجودی"_s, 65, false, ColumnFormat::Quantity},
                      {u"Count"_s, u"تعداد لیبل"_s, 80, false, ColumnFormat::Quantity},
                      {u"Note"_s, u"توضیح"_s, 110}});
    grid->horizontalHeader()->setStretchLastSection(true);
    grid->SetMultiSelect(false);
    grid->SetSource(&m_rows);
    RememberLayout(grid);
    auto *counts = new CountDelegate(grid);
    grid->setItemDelegateForColumn(CountColumn, counts);
    connect(counts, &PriceDelegate::Entered, this, [this, grid] { EditCount(grid->currentIndex().row() + 1); });
    connect(grid, &host::Grid::RowActivated, this, [this, grid] { EditCount(grid->currentIndex().row()); });
    connect(grid, &host::Grid::CurrentKeyChanged, this, &TGood_Label_FRM::ShowPreview);
    connect(&m_rows, &labels::LabelRows::Typed, this, [this] {
        ShowTotals();
        ShowPreview();
    });
    goods::OnEnter(grid, [this, grid] {
        if (ChosenNow().countBy == CountBy::Typed && !grid->IsEmpty())
            grid->setCurrentIndex(grid->model()->index(qMax(grid->currentIndex().row(), 0), CountColumn));
    });
}

void TGood_Label_FRM::FormShow()
{
    if (m_codes.size() > MostLabels) {
        m_host.messages.ShowMessage(
            u"برای بیش از %1 کالا با هم لیبل چاپ نمی‌شود."_s.arg(Shown(MostLabels)),
            host::MessageIcon::Warning, Title());
        return AbortOpening();
    }
    ShowLevels();
    m_rows.SetGoods(goods::ReadLabelGoods(m_host.DM.ADOConnection1, m_codes));
    m_ui->LabelGoods_GRD->StandOn(0);
    m_ui->Start_EDT->setText(u"1"_s);
    Follow();
    m_ui->Layout_CMB->setFocus(Qt::OtherFocusReason);
}

void TGood_Label_FRM::FormClose()
{
    m_rows.SetGoods({});
}

void TGood_Label_FRM::ShowLevels()
{
    const QScopedValueRollback filling(m_filling, true);
    QList<host::Entity> levels;
    m_prices.CostLevel_Sell_Fill(levels, 0);
    QComboBox *box = m_ui->PriceLevel_CMB;
    box->clear();
    for (const host::Entity &level : std::as_const(levels))
        box->addItem(level.Name, level.Code);
    box->addItem(u"فی مصرف کننده"_s, labels::ConsumerPrice);
    box->setCurrentIndex(qMax(0, box->findData(m_wantedLevel)));
}

void TGood_Label_FRM::ShowChoices(const labels::Choices &choices)
{
    const QScopedValueRollback filling(m_filling, true);
    m_wantedLevel = choices.priceLevel;
    m_ui->Layout_CMB->setCurrentIndex(m_ui->Layout_CMB->findData(int(choices.layout)));
    m_ui->CountBy_CMB->setCurrentIndex(m_ui->CountBy_CMB->findData(int(choices.countBy)));
    m_ui->Dpi_CMB->setCurrentIndex(qMax(0, m_ui->Dpi_CMB->findData(choices.dotsPerInch)));
    m_ui->Count_EDT->setText(QString::number(choices.count));
    m_ui->Rows_EDT->setText(QString::number(choices.rows));
    m_ui->Columns_EDT->setText(QString::number(choices.columns));
    m_ui->Start_EDT->setText(QString::number(choices.start));
    m_ui->TopMargin_EDT->setText(QString::number(choices.topMargin));
    m_ui->SideMargin_EDT->setText(QString::number(choices.sideMargin));
}

labels::Choices TGood_Label_FRM::ChosenNow() const
{
    labels::Choices choices;
    choices.layout = static_cast<Layout>(m_ui->Layout_CMB->currentData().toInt());
    choices.priceLevel = m_ui->PriceLevel_CMB->count() ? m_ui->PriceLevel_CMB->currentData().toInt() : m_wantedLevel;
    choices.countBy = static_cast<CountBy>(m_ui->CountBy_CMB->currentData().toInt());
    choices.count = static_cast<int>(m_ui->Count_EDT->Integer());
    choices.dotsPerInch = m_ui->Dpi_CMB->currentData().toInt();
    choices.rows = static_cast<int>(m_ui->Rows_EDT->Integer());
    choices.columns = static_cast<int>(m_ui->Columns_EDT->Integer());
    choices.topMargin = static_cast<double>(m_ui->TopMargin_EDT->Number());
    choices.sideMargin = static_cast<double>(m_ui->SideMargin_EDT->Number());
    choices.start = static_cast<int>(m_ui->Start_EDT->Integer());
    return choices;
}

void TGood_Label_FRM::Follow()
{
    if (m_filling)
        return;
    m_rows.SetChoices(ChosenNow());
    ShowFields();
    ShowTotals();
    ShowPreview();
}

void TGood_Label_FRM::ShowFields()
{
    const labels::Choices &choices = m_rows.CurrentChoices();
    const bool sheet = choices.layout == Layout::Sheet;
    m_ui->Form_LAY->setRowVisible(m_ui->Places_LAY, sheet);
    m_ui->Form_LAY->setRowVisible(m_ui->Start_EDT, sheet);
    m_ui->Form_LAY->setRowVisible(m_ui->Margins_LAY, sheet);
    m_ui->Form_LAY->setRowVisible(m_ui->Count_EDT, choices.countBy == CountBy::Same);
    m_ui->LabelGoods_GRD->setEditTriggers(choices.countBy == CountBy::Typed
                                              ? QAbstractItemView::DoubleClicked | QAbstractItemView::AnyKeyPressed |
                                                    QAbstractItemView::EditKeyPressed
                                              : QAbstractItemView::NoEditTriggers);
}

void TGood_Label_FRM::ShowTotals()
{
    const labels::Choices &choices = m_rows.CurrentChoices();
    const qint64 total = m_rows.Total();
    QString text = u"%1 لیبل از %2 کالا"_s.arg(Shown(total), Shown(m_rows.rowCount()));
    if (total > 0 && total <= MostLabels && choices.layout == Layout::Sheet)
        text += u" در %1 برگه"_s.arg(
            Shown(labels::PagesFor(labels::PaperOf(choices), choices.start, static_cast<int>(total))));
    m_ui->Total_LBL->setText(text);
    const int without = m_rows.WithoutBars();
    m_ui->Warning_LBL->setText(
        u"لیبل %1 کالا بدون خطوط بارکد چاپ می‌شود"_s.arg(Shown(without)));
    m_ui->Warning_LBL->setVisible(without > 0);
}

/// A sheet is shown as it will come out, of a roll the label of the current good.
void TGood_Label_FRM::ShowPreview()
{
    const int row = m_ui->LabelGoods_GRD->CurrentSourceRow();
    const labels::Choices &choices = m_rows.CurrentChoices();
    if (choices.layout != Layout::Sheet)
        m_ui->Preview_PNL->SetJob(row < 0 ? labels::Job{choices, {}, {}} : m_rows.JobOf(row));
    else
        m_ui->Preview_PNL->SetJob(m_rows.MakeJob(qint64(labels::MostRows) * labels::MostColumns)); // the first sheet
}

void TGood_Label_FRM::EditCount(int row)
{
    host::Grid *grid = m_ui->LabelGoods_GRD;
    if (grid->editTriggers() == QAbstractItemView::NoEditTriggers || row >= grid->RowCount())
        return;
    grid->setCurrentIndex(grid->model()->index(row, CountColumn));
    grid->edit(grid->currentIndex());
}

bool TGood_Label_FRM::FormKeyDown(QKeyEvent *event)
{
    return TBaseDock_FRM::FormKeyDown(event) || GoOnByEnter(event);
}

QByteArray TGood_Label_FRM::SaveState() const
{
    return labels::Kept(ChosenNow());
}

void TGood_Label_FRM::RestoreState(const QByteArray &state)
{
    ShowChoices(labels::ChoicesOf(state));
}

std::vector<host::Check> TGood_Label_FRM::Checks() const
{
    const labels::Choices choices = m_rows.CurrentChoices();
    std::vector<host::Check> checks;
    if (choices.layout == Layout::Sheet) {
        checks.push_back(Range(u"ردیف"_s, m_ui->Rows_EDT, choices.rows, 1, labels::MostRows));
        checks.push_back(Range(u"ستون"_s, m_ui->Columns_EDT, choices.columns, 1, labels::MostColumns));
        const labels::Paper paper = labels::PaperOf(choices);
        checks.push_back(Range(u"شروع از خانه"_s, m_ui->Start_EDT, choices.start, 1, paper.PerPage()));
        checks.push_back({u"size of the labels"_s, [this, usable = labels::IsUsable(paper)] {
                              return host::When(!usable,
                                                host::Warning(m_ui->Rows_EDT,
                                                              u"با این ردیف و ستون و حاشیه، لیبل ها کوچک تر از آن "
                                                              "می شوند که نام و بارکد در آن جا شود."_s));
                          }});
    }
    checks.push_back(
        Range(u"تعداد کل لیبل ها"_s,
              choices.countBy == CountBy::Same ? static_cast<QWidget *>(m_ui->Count_EDT) : m_ui->LabelGoods_GRD,
              m_rows.Total(), 1, MostLabels));
    return checks;
}

bool TGood_Label_FRM::MayPrint()
{
    m_ui->LabelGoods_GRD->CommitTyped();
    for (const host::Check &check : Checks())
        if (const host::Refused refused = check.run()) {
            refused->say(m_host.messages);
            refused->control->setFocus(Qt::TabFocusReason);
            return false;
        }
    return true;
}

void TGood_Label_FRM::Preview()
{
    if (!MayPrint())
        return;
    const labels::Job job = m_rows.MakeJob();
    labels::LabelOutput(job, Title(), this).Preview();
}

void TGood_Label_FRM::Print()
{
    if (!MayPrint())
        return;
    const labels::Job job = m_rows.MakeJob();
    labels::LabelOutput(job, Title(), this).Print();
}

void TGood_Label_FRM::WritePdf()
{
    if (!MayPrint())
        return;
    QFileDialog dialog(this, u"فایل PDF"_s, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
                       u"PDF (*.pdf)"_s);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setDefaultSuffix(u"pdf"_s); // before it asks whether a file of that name is to be replaced
    dialog.selectFile(u"لیبل"_s);
    if (dialog.exec() != QDialog::Accepted)
        return;
    const labels::Job job = m_rows.MakeJob();
    if (labels::LabelOutput(job, Title(), this).WritePdf(dialog.selectedFiles().constFirst()))
        m_host.messages.ShowFlashMessage(u"فایل نوشته شد"_s, FlashMilliseconds);
}
