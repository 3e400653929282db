#include "screens/goods_import/goods_import.h"

#include "host/controls/number_text.h"
#include "host/controls/search_frame.h"
#include "host/data/persian_text.h"
#include "host/look/theme.h"
#include "screens/bulk_changes/bulk_order.h"
#include "screens/bulk_changes/bulk_report.h"
#include "screens/goods_import/sheet_book.h"
#include "screens/goods_import/sheet_text.h"
#include "ui_goods_import.h"

#include <QClipboard>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScopeGuard>
#include <QStandardPaths>

using namespace Qt::StringLiterals;

using goods::ImportField;
using goods::ImportVerdict;
using goods_import::ImportRows;
using host::ColumnFormat;
using host::TSoftwarePart;

namespace {

constexpr int MostColumns = 60;
constexpr int FirstFileSection = 4; ///< behind marks, row, state and note
constexpr int FlashMilliseconds = 3000;

QString Number(int number)
{
    return host::DisplayNumber(QString::number(number));
}

QStringList Operations(const host::Host &host)
{
    const auto &reserved = host.settings.SettingRecord().ReservedBarcodes;
    return {reserved.cbegin(), reserved.cend()};
}

} // namespace

TGoods_Import_FRM::TGoods_Import_FRM(host::Host &host, TGood_DM &data)
    : TAsk_FRM(host, u"ورود کالا از فایل"_s), m_ui(std::make_unique<Ui::TGoods_Import_FRM>()), m_data(data)
{
    m_ui->setupUi(Content());
    resize(1120, 700);
    m_ui->Columns_PNL->SetGrid(m_ui->Rows_GRD, FirstFileSection);
    m_ui->Rows_GRD->SetRowColor(
        [this](int row) { return m_rows.VerdictAt(row) == ImportVerdict::Faulty ? host::theme::Danger() : QColor(); });
    Bind(m_ui->Open_BTN, Qt::Key_F4, [this] { AskFile(); });
    Bind(m_ui->Paste_BTN, QKeySequence::Paste, [this] { Paste(); });
    BindChoices();
}

TGoods_Import_FRM::~TGoods_Import_FRM()
{
    m_ui->Rows_GRD->SetSource(nullptr);
}

void TGoods_Import_FRM::BindChoices()
{
    const auto judge = [this] { Command(Title(), [this] { Judge(); }); };
    for (QCheckBox *tick : {m_ui->NewGroups_CHK, m_ui->NewUnits_CHK})
        connect(tick, &QCheckBox::clicked, this, judge);
    for (QComboBox *choice : {m_ui->Group_CMB, m_ui->Unit_CMB})
        connect(choice, &QComboBox::activated, this, judge);
    connect(m_ui->Captions_CHK, &QCheckBox::clicked, this, [this] { Command(Title(), [this] { ShowColumns(); }); });
    connect(m_ui->OnlyFaults_CHK, &QCheckBox::clicked, this, [this] { ShowRows(); });
    connect(m_ui->Columns_PNL, &goods_import::ColumnChoices::Chose, this, [this, judge] {
        const QStringList captions = Captions();
        const QList<ImportField> chosen = m_ui->Columns_PNL->Chosen();
        for (int i = 0; m_ui->Captions_CHK->isChecked() && i < captions.size(); ++i)
            if (const QString key = goods::ImportCaptionKey(captions.at(i)); !key.isEmpty())
                m_remembered.insert(key, chosen.at(i));
        judge();
    });
}

void TGoods_Import_FRM::FormShow()
{
    m_wrote = false;
    m_fields = goods::ImportFields(goods::ImportLevelTitles(m_data.Connection()),
                                   m_host.settings.SettingRecord().TwoUnitGoods);
    m_knownFields.clear();
    FillDefaults();
    Take({}, {});
}

void TGoods_Import_FRM::FillDefaults()
{
    const QString none = u"— ندارد —"_s;
    const auto fill = [&none](QComboBox *choice, const QList<host::Entity> &entities, int chosen) {
        choice->clear();
        choice->addItem(none, 0);
        for (const host::Entity &entity : entities)
            if (entity.Code != 0)
                choice->addItem(entity.Name, entity.Code);
        choice->setCurrentIndex(qMax(0, choice->findData(chosen)));
    };
    QList<host::Entity> groups;
    m_data.GoodGroup_Fill(groups);
    fill(m_ui->Group_CMB, groups, m_defaultGroup);
    fill(m_ui->Unit_CMB, goods::ImportUnits(m_data.Connection()), m_defaultUnit);
}

QWidget *TGoods_Import_FRM::FirstControl() const
{
    return m_ui->Open_BTN;
}

host::Grid *TGoods_Import_FRM::PrintedGrid() const
{
    return m_ui->Rows_GRD;
}

// What is brought in -------------------------------------------------------------------------------------------------

void TGoods_Import_FRM::AskFile()
{
    QFileDialog dialog(
        this, u"باز کردن فایل کالا"_s, QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
        u"فایل‌های کالا (*.csv *.txt *.tsv *.xlsx *.ods);;همه‌ی فایل‌ها (*)"_s);
    dialog.setObjectName(u"Import_DLG"_s);
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() == QDialog::Accepted)
        OpenFile(dialog.selectedFiles().constFirst());
}

void TGoods_Import_FRM::OpenFile(const QString &file)
{
    Take(goods_import::ReadSheetFile(file), QFileInfo(file).fileName());
}

void TGoods_Import_FRM::Paste()
{
    const QString text = QGuiApplication::clipboard()->text();
    if (text.trimmed().isEmpty()) {
        m_host.messages.ShowMessage(
            u"حافظه خالی است. در برنامه‌ی صفحه‌گسترده سطرها را برگزینید و کپی کنید."_s,
            host::MessageIcon::Information, Title());
        return;
    }
    Take(goods_import::ReadSeparated(text), u"حافظه"_s);
}

void TGoods_Import_FRM::Take(goods::ImportTable &&table, const QString &name)
{
    m_ui->Rows_GRD->SetSource(nullptr);
    m_rows.Show({}, ImportRows::Shown::All);
    m_table = std::move(table);
    m_name = name;
    m_ui->File_LBL->setText(name.isEmpty() ? u"فایل CSV، XLSX یا ODS را باز کنید یا سطرهای کپی شده را بچسبانید."_s
                                           : name);
    m_ui->Captions_CHK->setChecked(true);
    const QList<ImportField> matched = goods::MatchImportFields(Captions(), m_fields, m_remembered);
    m_ui->Captions_CHK->setChecked(
        std::any_of(matched.cbegin(), matched.cend(), [](ImportField field) { return field != ImportField::None; }));
    m_ui->OnlyFaults_CHK->setChecked(false);
    ShowColumns();
    if (m_table.RowCount() > 0)
        m_ui->Rows_GRD->setFocus();
}

QStringList TGoods_Import_FRM::Captions() const
{
    QStringList captions;
    for (int column = 0; column < qMin(m_table.ColumnCount(), MostColumns); ++column) {
        const QString caption =
            m_ui->Captions_CHK->isChecked() ? m_table.Cell(0, column).toString().simplified().left(60) : QString();
        captions << (caption.isEmpty() ? u"ستون %1"_s.arg(Number(column + 1)) : caption);
    }
    return captions;
}

void TGoods_Import_FRM::ShowColumns()
{
    const QStringList captions = Captions();
    QList<host::GridColumn> columns{{u"Line"_s, u"ردیف"_s, 60, false, ColumnFormat::Code},
                                    {u"State"_s, u"وضعیت"_s, 90, false, ColumnFormat::Text},
                                    {u"Note"_s, u"ایراد یا تغییر"_s, 330, false, ColumnFormat::Text}};
    for (int i = 0; i < captions.size(); ++i)
        columns.append({u"C%1"_s.arg(i), captions.at(i), 130, false, ColumnFormat::Text});
    m_ui->Rows_GRD->SetColumns(columns);
    m_ui->Columns_PNL->SetColumns(captions, m_fields, goods::MatchImportFields(captions, m_fields, m_remembered));
    host::ChainTabs(QList<QWidget *>{m_ui->NewUnits_CHK} + m_ui->Columns_PNL->TabStops() +
                    QList<QWidget *>{m_ui->Rows_GRD, m_ui->OnlyFaults_CHK});
    Judge();
}

void TGoods_Import_FRM::Judge()
{
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    const auto restore = qScopeGuard([] { QGuiApplication::restoreOverrideCursor(); });
    m_ui->Rows_GRD->SetSource(nullptr);
    m_rows.Show({}, ImportRows::Shown::All);
    m_options = {m_ui->Columns_PNL->Chosen(),
                 m_ui->Captions_CHK->isChecked() ? 1 : 0,
                 m_ui->NewGroups_CHK->isChecked(),
                 m_ui->NewUnits_CHK->isChecked(),
                 m_ui->Group_CMB->currentData().toInt(),
                 m_ui->Unit_CMB->currentData().toInt()};
    m_plan = {};
    if (m_table.RowCount() > 0) {
        const QSet<ImportField> mapped(m_options.columns.cbegin(), m_options.columns.cend());
        if (m_knownFields.isEmpty() || !m_knownFields.contains(mapped)) {
            QList<goods::ImportFieldInfo> read = m_fields;
            read.removeIf([&mapped](const goods::ImportFieldInfo &info) { return !mapped.contains(info.field); });
            m_known =
                goods::ReadImportKnown(m_data.Connection(), read, bulk_changes::DeniedTo(m_host), Operations(m_host));
            m_knownFields = mapped;
        }
        m_reader.emplace(m_table, m_known, m_options, m_fields);
        m_plan = goods::JudgeImport(m_table, *m_reader, m_options);
    }
    m_ui->Counts_LBL->setText(u"<b>%1</b> جدید، <b>%2</b> تغییر، %3 بدون تغییر، <b>%4</b> دارای ایراد"_s.arg(
        Number(m_plan.Count(ImportVerdict::New)), Number(m_plan.Count(ImportVerdict::Changed)),
        Number(m_plan.Count(ImportVerdict::Unchanged)), Number(m_plan.Count(ImportVerdict::Faulty))));
    ShowRows();
}

void TGoods_Import_FRM::ShowRows()
{
    if (m_table.RowCount() == 0)
        return;
    m_rows.Show({&m_table, &m_plan, &*m_reader, &m_known, &m_fields},
                m_ui->OnlyFaults_CHK->isChecked() ? ImportRows::Shown::Faulty : ImportRows::Shown::All);
    if (m_ui->Rows_GRD->Source() != &m_rows)
        m_ui->Rows_GRD->SetSource(&m_rows, u"Line"_s);
}

// Writing ------------------------------------------------------------------------------------------------------------

host::Refused TGoods_Import_FRM::MaySave()
{
    for (const host::TFormMode mode : {host::TFormMode::New, host::TFormMode::Edit})
        if (host::Refused refused = host::CheckRight(m_host, SoftwarePart(), mode))
            return refused;
    if (!m_plan.newGroups.isEmpty())
        if (host::Refused refused = host::CheckRight(m_host, TSoftwarePart::GoodsGroups, host::TFormMode::New))
            return refused;
    return m_plan.newUnits.isEmpty() ? host::Refused()
                                     : host::CheckRight(m_host, TSoftwarePart::Units, host::TFormMode::New);
}

std::vector<host::Check> TGoods_Import_FRM::Validate()
{
    return {{u"AnythingRead"_s,
             [this] {
                 return host::When(m_table.RowCount() == 0,
                                   host::Warning(m_ui->Open_BTN, u"هنوز فایلی باز نشده است."_s));
             }},
            {u"AnythingToWrite"_s, [this] {
                 const bool none = m_plan.Count(ImportVerdict::New) + m_plan.Count(ImportVerdict::Changed) == 0;
                 return host::When(
                     none, host::Warning(m_ui->Rows_GRD, u"ردیفی برای نوشتن نیست: همه بدون تغییرند یا ایراد دارند."_s));
             }}};
}

void TGoods_Import_FRM::Write()
{
    bulk_changes::ProgressWindow progress(Title(), this);
    goods::ImportOrder order;
    order.order = bulk_changes::Order(m_host, u"ورود از "_s + m_name, progress.Callback());
    order.asWhole = m_ui->Whole_CHK->isChecked();
    order.deniedTo = bulk_changes::DeniedTo(m_host);
    order.operations = Operations(m_host);
    order.codeLength = m_host.settings.SettingRecord().GoodCodeLength;
    m_result =
        goods::ImportWriter(m_data.Connection(), m_host.entities, m_table, m_fields, m_options).Write(m_plan, order);
    m_wrote = m_wrote || !(m_result.cancelled && order.asWhole);
}

void TGoods_Import_FRM::Proceed()
{
    if (m_result.cancelled && m_result.added + m_result.changed == 0) {
        m_host.messages.ShowFlashMessage(u"عملیات متوقف شد و کالایی نوشته نشد"_s, FlashMilliseconds);
        return;
    }
    bulk_changes::SendToScales(m_host, m_data, m_result.change);
    Report();
    TAsk_FRM::Proceed();
}

void TGoods_Import_FRM::Report()
{
    ImportRows rows;
    rows.Show({&m_table, &m_result.plan, &*m_reader, &m_known, &m_fields}, ImportRows::Shown::NotSame);
    QString text = u"%1 کالا افزوده شد، %2 کالا تغییر کرد، %3 ردیف بدون تغییر بود و %4 ردیف وارد نشد."_s.arg(
        Number(m_result.added), Number(m_result.changed), Number(m_result.plan.Count(ImportVerdict::Unchanged)),
        Number(m_result.plan.Count(ImportVerdict::Faulty)));
    if (m_result.cancelled)
        text += u"\nعملیات پیش از پایان متوقف شد؛ آنچه نوشته شده بود ماند."_s;
    if (!m_result.failure.isEmpty())
        text += u"\nپایگاه داده ادامه را نپذیرفت: "_s + m_result.failure;
    if (m_result.change != 0)
        text +=
            u"\nهمه‌ی آنچه وارد شد از «آخرین تغییرات گروهی» (Ctrl+F8) به حالت پیشین برمی‌گردد."_s;
    TBulk_Report_FRM report(m_host, u"گزارش ورود کالا"_s, text, rows,
                            {{u"Line"_s, u"ردیف"_s, 60, false, ColumnFormat::Code},
                             {u"State"_s, u"وضعیت"_s, 90, false, ColumnFormat::Text},
                             {u"Code"_s, u"کد"_s, 80, false, ColumnFormat::Code},
                             {u"Name"_s, u"نام کامل کالا"_s, 240, false, ColumnFormat::Text},
                             {u"Note"_s, u"ایراد یا تغییر"_s, 380, false, ColumnFormat::Text}});
    report.ShowModally();
}

// What is remembered -------------------------------------------------------------------------------------------------

QByteArray TGoods_Import_FRM::SaveState() const
{
    QJsonObject columns;
    for (auto known = m_remembered.cbegin(); known != m_remembered.cend(); ++known)
        columns.insert(known.key(), static_cast<int>(known.value()));
    return QJsonDocument(QJsonObject{{u"columns"_s, columns},
                                     {u"group"_s, m_ui->Group_CMB->currentData().toInt()},
                                     {u"unit"_s, m_ui->Unit_CMB->currentData().toInt()},
                                     {u"newGroups"_s, m_ui->NewGroups_CHK->isChecked()},
                                     {u"newUnits"_s, m_ui->NewUnits_CHK->isChecked()},
                                     {u"whole"_s, m_ui->Whole_CHK->isChecked()}})
        .toJson(QJsonDocument::Compact);
}

void TGoods_Import_FRM::RestoreState(const QByteArray &state)
{
    const QJsonObject kept = QJsonDocument::fromJson(state).object();
    m_remembered.clear();
    const QJsonObject columns = kept.value(u"columns"_s).toObject();
    for (auto column = columns.begin(); column != columns.end(); ++column)
        m_remembered.insert(column.key(), static_cast<ImportField>(column.value().toInt()));
    m_defaultGroup = kept.value(u"group"_s).toInt();
    m_defaultUnit = kept.value(u"unit"_s).toInt();
    m_ui->NewGroups_CHK->setChecked(kept.value(u"newGroups"_s).toBool());
    m_ui->NewUnits_CHK->setChecked(kept.value(u"newUnits"_s).toBool());
    m_ui->Whole_CHK->setChecked(kept.value(u"whole"_s).toBool());
}
