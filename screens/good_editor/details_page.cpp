#include "screens/good_editor/details_page.h"

#include "screens/good_editor/page_command.h"
#include "ui_details_page.h"

#include <QAction>
#include <QHeaderView>

#include <algorithm>

using namespace Qt::StringLiterals;

using host::TSoftwarePart;

namespace {

/// Detail types a good may carry.
constexpr int MostDetailTypes = 5;

const QString NoNewTypes =
    u"کاربر گرامی به دلیل ثبت مقدار برای جزییات تعریف شده در لیست امکان تعریف جزییات جدید برای کالا مقدور نمی باشد"_s;
const QString NoDeletion = u"کاربر گرامی به دلیل ثبت مقدار برای این جزییات حذف آن مقدور نمی باشد"_s;
const QString NoDeletionOfAll = u"کاربر گرامی به دلیل ثبت مقدار برای جزییات امکان حذف جزییات مقدور نمی باشد"_s;

} // namespace

DetailsPage::DetailsPage(host::Host &host, goods::GoodDetailTypes &data, const host::RuleRunner &run, QWidget *parent)
    : QWidget(parent), m_host(host), m_data(data), m_ui(std::make_unique<Ui::DetailsPage>())
{
    m_ui->setupUi(this);
    m_ui->GoodDetails_GRD->SetColumns({{u"GoodDetailTitle"_s, u"عنوان جزئیات"_s, 360}});
    m_ui->GoodDetails_GRD->SetSource(&m_data.GoodDetails_QRY, u"ID"_s);
    m_ui->GoodDetails_GRD->horizontalHeader()->setStretchLastSection(true);
    using Action = host::Refused (DetailsPage::*)();
    const auto command = [this, run](QPushButton *button, const QKeySequence &key, const QString &caption,
                                     Action action) {
        return AddPageCommand(this, m_ui->GoodDetails_GRD, {button, key, caption, [this, run, action] {
                                                                run([this, action] { return (this->*action)(); });
                                                            }});
    };
    command(m_ui->NewDetail_BTN, Qt::Key_F4, u"سطر جدید"_s, &DetailsPage::Add);
    m_onRows << command(m_ui->DeleteDetail_BTN, Qt::Key_F7, u"حذف سطر"_s, &DetailsPage::Delete)
             << command(m_ui->DeleteAllDetail_BTN, {}, u"حذف همه"_s, &DetailsPage::DeleteAll);
}

DetailsPage::~DetailsPage() = default;

void DetailsPage::OpenNew(int goodCode)
{
    m_data.CreateGoodDetailTempTable();
    m_data.InsertDefaultDetailTypesSelectedListInNewGood(QString::number(goodCode));
    m_loaded = {};
    m_new = true;
    Open(goodCode, true);
}

void DetailsPage::OpenExisting(int goodCode, bool mayChange)
{
    m_data.FillGoodDetails(goodCode);
    m_new = false;
    Open(goodCode, mayChange);
    m_loaded = {};
    const int known = qMin(m_data.GoodDetails_QRY.RecordCount(), static_cast<int>(m_loaded.size()));
    for (int row = 0; row < known; ++row)
        m_loaded[static_cast<size_t>(row)] = m_data.GoodDetails_QRY.FieldAt(row, u"GoodDetailID").toInt();
}

void DetailsPage::Open(int goodCode, bool mayChange)
{
    m_good = goodCode;
    m_ui->GoodDetails_GRD->ClearMarks();
    m_ui->GoodDetails_GRD->SetMultiSelect(mayChange);
    m_ui->DetailCommands_PNL->setVisible(mayChange);
    for (QAction *action : actions())
        action->setVisible(mayChange);
    Refresh();
}

void DetailsPage::Refresh()
{
    const host::Grid::Place place = m_ui->GoodDetails_GRD->CurrentPlace();
    m_data.GoodDetailTemp_GetAll();
    m_ui->GoodDetails_GRD->ReturnTo(place);
    const bool any = HasRows();
    m_ui->DetailHint_LBL->setVisible(!any);
    m_ui->DeleteDetail_BTN->setEnabled(any);
    m_ui->DeleteAllDetail_BTN->setEnabled(any);
    for (QAction *action : m_onRows)
        action->setEnabled(any);
}

host::Refused DetailsPage::RefuseRecorded(const QString &text) const
{
    return RefuseWhen(m_host.goodDetails.CheckGoodDetailKardexExists(m_good), text);
}

host::Refused DetailsPage::RefuseWhen(bool recorded, const QString &text) const
{
    return host::When(recorded, host::Warning(m_ui->GoodDetails_GRD, text));
}

std::array<int, MostDetailTypes> DetailsPage::Now() const
{
    std::array<int, MostDetailTypes> now{};
    const int rows = qMin(m_data.GoodDetails_QRY.RecordCount(), MostDetailTypes);
    for (int row = 0; row < rows; ++row)
        now[static_cast<size_t>(row)] = m_data.GoodDetails_QRY.FieldAt(row, u"GoodDetailID").toInt();
    return now;
}

bool DetailsPage::IsAsLoaded() const
{
    const auto now = Now();
    return std::is_permutation(now.begin(), now.end(), m_loaded.begin());
}

host::Refused DetailsPage::CheckStillFree() const
{
    if (m_new || IsAsLoaded())
        return {};
    const auto now = Now();
    const bool lost = std::any_of(m_loaded.begin(), m_loaded.end(),
                                  [&now](int type) { return std::find(now.begin(), now.end(), type) == now.end(); });
    // The quantities entered with the new types go into the ledger with this very save.
    return RefuseWhen(m_host.goodDetails.GoodDetailsSaved(m_good), lost ? NoDeletion : NoNewTypes);
}

host::Refused DetailsPage::Add()
{
    const int rows = m_data.GoodDetails_QRY.RecordCount();
    if (rows >= MostDetailTypes)
        return host::Refusal{m_ui->GoodDetails_GRD, [](host::MessageService &messages) {
                                 messages.ShowMessage(
                                     u"کاربر گرامی برای هر کالا می توان حداکثر 5 نوع جزییات تخصیص داد"_s,
                                     host::MessageIcon::Information);
                             }};
    if (host::Refused refused = RefuseRecorded(NoNewTypes))
        return refused;
    host::MultibleParam wanted;
    wanted.ExcludedCodes = m_data.DetailTypesTmp_GetCode();
    wanted.PreviousCount = rows;
    wanted.PreviousCodes = wanted.ExcludedCodes;
    wanted.Categories = true;
    const QString chosen = m_host.entities.Select_Entity_Multible_Param(TSoftwarePart::DetailTypes, wanted);
    if (chosen.isEmpty())
        return {};
    m_data.GoodDetailTemp_Insert(chosen, m_good);
    Refresh();
    m_ui->GoodDetails_GRD->StandOn(m_ui->GoodDetails_GRD->RowCount() - 1);
    emit Changed();
    return {};
}

host::Refused DetailsPage::Delete()
{
    if (!HasRows())
        return {};
    if (host::Refused refused = RefuseRecorded(NoDeletion))
        return refused;
    QStringList rows = m_ui->GoodDetails_GRD->MarkedKeys();
    if (rows.isEmpty())
        rows << m_ui->GoodDetails_GRD->CurrentKey();
    if (!m_host.messages.MsgDeleteRow())
        return {};
    m_data.GoodDetailTemp_Delete(rows.join(u','));
    AfterDeletion();
    return {};
}

host::Refused DetailsPage::DeleteAll()
{
    if (!HasRows())
        return {};
    if (host::Refused refused = RefuseRecorded(NoDeletionOfAll))
        return refused;
    if (!m_host.messages.MsgDeleteItem(u"همه سطرهاي"_s))
        return {};
    m_data.GoodDetailTemp_DeleteAll();
    AfterDeletion();
    return {};
}

void DetailsPage::AfterDeletion()
{
    m_ui->GoodDetails_GRD->ClearMarks();
    Refresh();
    emit Changed();
}
