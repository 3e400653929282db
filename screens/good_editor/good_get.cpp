#include "screens/good_editor/good_get.h"

#include "data/goods/good_fields.h"
#include "host/controls/search_frame.h"
#include "host/data/persian_text.h"
#include "host/data/transaction.h"
#include "screens/bulk_changes/bulk_order.h"
#include "screens/good_editor/barcode_edit.h"
#include "screens/good_editor/barcode_fields.h"
#include "screens/good_editor/category_page.h"
#include "screens/good_editor/complete_page.h"
#include "screens/good_editor/cost_level_page.h"
#include "screens/good_editor/details_page.h"
#include "screens/good_editor/discount_page.h"
#include "screens/good_editor/general_page.h"
#include "screens/good_editor/good_save.h"
#include "screens/shared/leave_watch.h"
#include "ui_good_get.h"

#include <QLayout>
#include <QPushButton>

using namespace Qt::StringLiterals;

using host::TFormMode;
using host::TSoftwarePart;

namespace {

/// Wide enough for the captions of all tabs.
constexpr QSize WindowSize(720, 650);

} // namespace

TGood_Get_FRM::TGood_Get_FRM(host::Host &host)
    : TBaseGet_New_FRM(host, TSoftwarePart::Goods), m_ui(std::make_unique<Ui::TGood_Get_FRM>()),
      m_data(host.DM, host.settings, host.entities), m_code(host, m_data), m_openingRows(m_data, host.entities),
      m_openingDetails(host)
{
    setObjectName(u"TGood_Get_FRM"_s);
    SetTitle(u"اطلاعات کالا "_s);
    setMinimumSize(WindowSize);
    resize(WindowSize);
    m_ui->setupUi(Content());
    BuildPages();
    BindPages();
    BindOpening();
    SetCodeEdit(m_general->CodeEdit());
    BindLevelTitles();
    m_picture = AddFooterButton(u"Picture_BTN"_s, u"ثب&ت عکس"_s);
    Bind(m_picture, {}, [this] { OpenPhotos(); });
    // Shortcuts, because a chooser would take the digit for the beginning of an entry.
    for (int number = 1; number <= m_ui->PageControl1->count(); ++number)
        BindKey(QKeySequence(QKeyCombination(Qt::ControlModifier, Qt::Key(Qt::Key_0 + number))), Title(),
                [this, number] { ShowTab(number); });
    // The way out stays at the end.
    ExitButton()->parentWidget()->layout()->addWidget(ExitButton());
    setTabOrder(SaveButton(), m_picture);
    host::ChainTabs({m_picture, m_discountTitles, m_priceTitles, ExitButton()});
}

TGood_Get_FRM::~TGood_Get_FRM() = default;

void TGood_Get_FRM::BuildPages()
{
    const auto run = [this](const std::function<void()> &body) { Command(Title(), body); };
    const auto rule = [this](const std::function<host::Refused()> &body) { RunRule(body); };
    m_general = new GeneralPage(m_host, m_data, run, this);
    m_prices = new CostLevelPage(m_host, m_data, run, this);
    m_details = new DetailsPage(m_host, m_data, rule, this);
    m_complete = new CompletePage(m_host, m_data, rule, this);
    m_discounts = new DiscountPage(this);
    m_categories = new CategoryPage(m_host, m_data, rule, this);
    for (QWidget *page :
         std::initializer_list<QWidget *>{m_general, m_prices, m_details, m_complete, m_discounts, m_categories})
        m_ui->PageControl1->addTab(page, page->windowTitle());
    m_barcodes = new BarcodeFields(m_complete->BarcodeEdits(m_general->BarCode1()), m_complete->BarcodesPanel(), m_host,
                                   m_data, rule, this);
    m_validation =
        std::make_unique<GoodValidation>(m_host, m_data, m_openingRows, m_openingDetails,
                                         GoodValidation::Pages{*m_general, *m_prices, *m_details, *m_complete,
                                                               *m_discounts, *m_barcodes, *m_categories});
}

void TGood_Get_FRM::BindPages()
{
    connect(m_general, &GeneralPage::GroupPicked, this, [this](int group) {
        if (!IsLoading() && IsNew() && IsShowing())
            Command(Title(), [this, group] { ProposeCode(group); });
    });
    const auto rule = [this](const std::function<host::Refused()> &body) { RunRule(body); };
    goods::OnChanged(m_general->CodeEdit(), goods::RuleTime::Afterwards, rule, [this] { return TakeTypedCode(); });
    for (host::NumericEdit *percent : m_discounts->PercentEdits())
        goods::OnChanged(percent, goods::RuleTime::Afterwards, rule, [this] { return m_complete->LeaveOffPercent(); });
    connect(m_discounts, &DiscountPage::LevyChanged, this, [this] {
        m_prices->SetBothExempt(m_discounts->BothExempt());
        if (!IsLoading())
            SetIsSaved(false);
    });
    const auto changed = [this] {
        if (!IsLoading())
            SetIsSaved(false);
    };
    connect(m_general, &GeneralPage::Changed, this, changed);
    connect(m_prices, &CostLevelPage::Changed, this, changed);
    connect(m_details, &DetailsPage::Changed, this, changed);
    connect(m_categories, &CategoryPage::Changed, this, changed);
    connect(m_complete, &CompletePage::Changed, this, changed);
    connect(m_barcodes, &BarcodeFields::Completed, this, [this](BarcodeEdit *edit) {
        SetIsSaved(false);
        // A click on the button leaves the focus where it was.
        edit->setFocus();
        NextControl();
    });
}

void TGood_Get_FRM::BindLevelTitles()
{
    m_discountTitles = AddFooterCommand(u"DiscountLevel_BTN"_s, u"&عناوین سطوح تخفیف"_s);
    m_priceTitles = AddFooterCommand(u"CostLevel_BTN"_s, u"&عناوین سطوح قیمتی"_s);
    Bind(m_discountTitles, {}, [this] {
        if (m_host.levels.Open_DiscountLevels())
            m_discounts->SetTitles(m_host.levels.DiscountLevels());
    });
    Bind(m_priceTitles, {}, [this] {
        if (!m_host.levels.Open_CostLevels())
            return;
        m_priceTitlesChanged = true;
        m_prices->ReloadTitles();
    });
}

void TGood_Get_FRM::ShowTab(int number)
{
    for (int index = 0, shown = 0; index < m_ui->PageControl1->count(); ++index)
        if (m_ui->PageControl1->isTabVisible(index) && ++shown == number)
            m_ui->PageControl1->setCurrentIndex(index);
}

void TGood_Get_FRM::MoveWorkingRows(int code)
{
    m_barcodes->SetGood(code);
    m_prices->MoveTo(code);
    m_details->MoveTo(code);
    m_categories->MoveTo(code);
}

void TGood_Get_FRM::OpenPhotos()
{
    if (!host::Granted(m_host, TSoftwarePart::Goods, host::TPermission::Photo))
        return;
    m_host.photos.Open_Gallery(TSoftwarePart::Goods, WorkingCode());
    // Those of a saved good are written already.
    if (IsNew() && m_data.ExistTmpphoto(WorkingCode()))
        SetIsSaved(false);
}

void TGood_Get_FRM::ProposeCode(int group)
{
    const int code = m_code.ChangeGroup(group);
    m_general->SetCode(code);
    MoveWorkingRows(code);
    SetIsSaved(false);
}

host::Refused TGood_Get_FRM::TakeTypedCode()
{
    const int code = m_general->Code();
    if (!IsNew() || code == 0 || code == m_code.Current())
        return {};
    if (m_code.TakeTyped(code)) {
        MoveWorkingRows(code);
        return {};
    }
    return host::RepeatedCode(m_general->CodeEdit(), u"کد"_s);
}

void TGood_Get_FRM::RunRule(const std::function<host::Refused()> &rule)
{
    Command(Title(), [this, &rule] { Refuse(rule()); });
}

void TGood_Get_FRM::Prepare()
{
    if (!IsShowing())
        m_data.DeleteTmpCategory();
    m_loaded = TGoodInfoRec();
    const int group = ParameterText().toInt();
    m_general->FillGroups();
    m_complete->FillLists();
    m_general->Clear(group);
    m_complete->Clear();
    m_discounts->Clear();
    m_barcodes->Clear();
    const int code = m_code.Begin(group);
    m_general->SetCode(code);
    m_barcodes->SetGood(code);
    m_prices->Open(code, Mode());
    m_prices->Show(m_loaded);
    m_prices->SetBothExempt(false);
    m_categories->Open(code, true);
    m_details->OpenNew(code);
    BeginOpening(0);
    // Each record begins at the first control of each tab, not where the last one was left.
    for (int index = 0; index < m_ui->PageControl1->count(); ++index) {
        if (QWidget *last = m_ui->PageControl1->widget(index)->focusWidget())
            last->clearFocus();
    }
}

void TGood_Get_FRM::Load()
{
    const int code = Key().toInt();
    if (!m_data.Good_GetByID(code, m_loaded)) {
        SetRecordGone();
        RefuseOpening(host::RecordGone(u"کالا"_s));
        return;
    }
    if (Mode() == TFormMode::Edit)
        m_data.DeleteTmpCategory();
    m_general->FillGroups();
    m_complete->FillLists();
    m_details->OpenExisting(code, Mode() == TFormMode::Edit);
    m_general->Show(m_loaded);
    m_barcodes->SetGood(code);
    m_barcodes->Show(m_loaded.AbbName);
    m_complete->Show(m_loaded);
    m_prices->Open(code, Mode());
    m_prices->Show(m_loaded);
    m_discounts->Show(m_loaded);
    m_prices->SetBothExempt(m_discounts->BothExempt());
    BeginOpening(code);
    m_categories->Open(code, Mode() == TFormMode::Edit);
    m_untouched = Entered();
}

void TGood_Get_FRM::SetReadOnly(bool readOnly)
{
    TBaseGet_New_FRM::SetReadOnly(readOnly);
    m_prices->SetReadOnly(readOnly);
    for (QPushButton *command : {m_picture, m_discountTitles, m_priceTitles, m_general->OpeningRowsButton()})
        command->setVisible(!readOnly);
    m_complete->SetReadOnly(readOnly);
}

host::Refused TGood_Get_FRM::MaySave()
{
    return host::CheckRight(m_host, SoftwarePart(), Mode());
}

void TGood_Get_FRM::BeforeChecks()
{
    m_validation->BeforeChecks();
}

std::vector<host::Check> TGood_Get_FRM::Validate()
{
    return m_validation->Checks({Mode(), m_loaded.VoucherCode, [this] { return TakeTypedCode(); }});
}

TGoodInfoRec TGood_Get_FRM::Entered() const
{
    TGoodInfoRec good = m_loaded;
    m_general->Store(good);
    good.AbbName = m_barcodes->Text();
    m_prices->Store(good);
    m_complete->Store(good);
    m_discounts->Store(good);
    return good;
}

void TGood_Get_FRM::Write()
{
    GoodSave::Request request;
    request.good = Entered();
    request.isNew = IsNew();
    if (!request.isNew)
        goods::KeepUntouched(request.good, m_untouched, m_loaded);
    const OpeningFields &opening = m_general->Opening();
    request.loaded = opening.Loaded();
    request.entered = opening.Values();
    request.rowTyped = !opening.SeveralStores() && opening.RowChanged();
    request.rowStore = opening.RowStore();
    request.loadedDetails = m_details->Loaded();

    const int code = GoodSave(m_host, m_data, m_openingRows, m_openingDetails).Run(request);
    m_replacedCode = code == request.good.Code ? 0 : request.good.Code;
    if (IsNew())
        m_code.Moved(code);
    m_general->SetCode(code);
    SetKey(code);
}

void TGood_Get_FRM::AfterWrite()
{
    m_host.messages.MSGCompeletedSuccessfully(u"ذخيره سازي کالا"_s);
    if (m_replacedCode != 0)
        m_host.messages.ShowMessage(
            host::PersianDigits(
                u"کد %1 در این میان به کالای دیگری داده شد؛ این کالا با کد %2 ذخیره شد."_s.arg(m_replacedCode)
                    .arg(Key().toInt())),
            host::MessageIcon::Information);
    m_replacedCode = 0;
    // A new good is on no scales.
    if (const int level = m_data.CostLevel_ChangedDefault(goods::Prices::Side::Sell); !IsNew() && level != 0)
        bulk_changes::SendToScales(m_host, static_cast<goods::Scales &>(m_data), Key().toInt(), level);
}

QWidget *TGood_Get_FRM::FirstControl() const
{
    return m_openingPage == 0 ? m_general->NameEdit() : nullptr;
}

QString TGood_Get_FRM::PrepareRecoveryQuery() const
{
    return TGood_DM::Good_RecoveryText(Key().toInt());
}

void TGood_Get_FRM::FormShow()
{
    m_priceTitlesChanged = false;
    m_ui->PageControl1->setTabVisible(m_ui->PageControl1->indexOf(m_details),
                                      m_host.settings.SettingRecord().GoodDetails);
    if (m_openingPage < 0 || m_openingPage >= m_ui->PageControl1->count())
        m_openingPage = 0;
    m_ui->PageControl1->setCurrentIndex(m_openingPage);
    m_discounts->SetTitles(m_host.levels.DiscountLevels());
    TBaseGet_New_FRM::FormShow();
}

void TGood_Get_FRM::FormShown()
{
    // On another page than the first the focus is left to the page.
    TBaseGet_New_FRM::FormShown();
    m_openingPage = 0;
}

void TGood_Get_FRM::FormClose()
{
    m_barcodes->GiveKeyboardBack();
    m_complete->GiveKeyboardBack();
    if (Mode() != TFormMode::Review)
        DiscardWorkingRows();
    TBaseGet_New_FRM::FormClose();
}

void TGood_Get_FRM::DiscardWorkingRows()
{
    const int code = WorkingCode();
    m_data.undodelete_category(code); // also when the database cannot be reached
    host::Transaction transaction(m_data.Connection());
    m_openingRows.End();
    m_openingDetails.End();
    m_data.DeleteTmpCategory();
    m_data.DeleteTmpphoto(code);
    m_data.CostLevel_DeleteTemp(code);
    transaction.Commit();
    m_code.End();
}
