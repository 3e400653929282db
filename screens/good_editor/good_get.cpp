#include "screens/good_editor/good_get.h"

#include "data/goods/good_fields.h"
#include "host/data/transaction.h"
#include "screens/good_editor/barcode_edit.h"
#include "screens/good_editor/barcode_fields.h"
#include "screens/good_editor/category_page.h"
#include "screens/good_editor/complete_page.h"
#include "screens/good_editor/cost_level_page.h"
#include "screens/good_editor/details_page.h"
#include "screens/good_editor/discount_page.h"
#include "screens/good_editor/general_page.h"
#include "screens/good_editor/good_save.h"
#include "screens/good_editor/leave_watch.h"
#include "ui_good_get.h"

#include <QtWidgets/QLayout>
#include <QtWidgets/QPushButton>

using host::TFormMode;
using host::TOperationType;
using host::TSoftwarePart;

namespace {

/// Wide enough for the captions of all tabs.
constexpr QSize WindowSize(720, 650);

} // namespace

TGood_Get_FRM::TGood_Get_FRM(host::Host &host)
    : TBaseGet_New_FRM(host, TSoftwarePart::Goods), ui_(std::make_unique<Ui::TGood_Get_FRM>()),
      data_(host.DM, host.settings, host.entities), code_(host, data_)
{
    setObjectName(QStringLiteral("TGood_Get_FRM"));
    SetTitle(QStringLiteral("اطلاعات کالا "));
    setMinimumSize(WindowSize);
    resize(WindowSize);
    ui_->setupUi(Content());
    BuildPages();
    BindPages();
    SetCodeEdit(general_->CodeEdit());
    picture_ = AddFooterButton(QStringLiteral("Picture_BTN"), QStringLiteral("ثب&ت عکس"));
    Bind(picture_, {}, [this] { OpenPhotos(); });
    // Shortcuts, because a chooser would take the digit for the beginning of an entry.
    for (int number = 1; number <= ui_->PageControl1->count(); ++number)
        BindKey(QKeySequence(QKeyCombination(Qt::ControlModifier, Qt::Key(Qt::Key_0 + number))), Title(),
                [this, number] { ShowTab(number); });
    // The way out stays at the end.
    ExitButton()->parentWidget()->layout()->addWidget(ExitButton());
    setTabOrder(SaveButton(), picture_);
    setTabOrder(picture_, ExitButton());
}

TGood_Get_FRM::~TGood_Get_FRM() = default;

void TGood_Get_FRM::BuildPages()
{
    const auto run = [this](const std::function<void()> &body) { Command(Title(), body); };
    const auto rule = [this](const std::function<goods::Refused()> &body) { RunRule(body); };
    general_ = new GeneralPage(m_host, data_, run, this);
    prices_ = new CostLevelPage(m_host, data_, run, this);
    details_ = new DetailsPage(data_, this);
    complete_ = new CompletePage(m_host, data_, rule, this);
    discounts_ = new DiscountPage(this);
    categories_ = new CategoryPage(m_host, data_, rule, this);
    for (QWidget *page :
         std::initializer_list<QWidget *>{general_, prices_, details_, complete_, discounts_, categories_})
        ui_->PageControl1->addTab(page, page->windowTitle());
    barcodes_ = new BarcodeFields(complete_->BarcodeEdits(general_->BarCode1()), complete_->BarcodesPanel(), m_host,
                                  data_, rule, this);
    validation_ = std::make_unique<GoodValidation>(
        m_host, data_, GoodValidation::Pages{*general_, *prices_, *details_, *complete_, *discounts_, *barcodes_});
}

void TGood_Get_FRM::BindPages()
{
    connect(general_, &GeneralPage::GroupPicked, this, [this](int group) {
        if (!IsLoading() && IsNew() && IsShowing())
            Command(Title(), [this, group] { ProposeCode(group); });
    });
    const auto rule = [this](const std::function<goods::Refused()> &body) { RunRule(body); };
    goods::OnChanged(general_->CodeEdit(), goods::RuleTime::Afterwards, rule, [this] { return TakeTypedCode(); });
    for (host::NumericEdit *percent : discounts_->PercentEdits())
        goods::OnChanged(percent, goods::RuleTime::Afterwards, rule, [this] { return complete_->LeaveOffPercent(); });
    connect(discounts_, &DiscountPage::LevyChanged, this, [this] {
        prices_->SetBothExempt(discounts_->BothExempt());
        if (!IsLoading())
            SetIsSaved(false);
    });
    const auto changed = [this] {
        if (!IsLoading())
            SetIsSaved(false);
    };
    connect(prices_, &CostLevelPage::Changed, this, changed);
    connect(categories_, &CategoryPage::Changed, this, changed);
    connect(complete_, &CompletePage::Changed, this, changed);
    connect(barcodes_, &BarcodeFields::Completed, this, [this](BarcodeEdit *edit) {
        SetIsSaved(false);
        // A click on the button leaves the focus where it was.
        edit->setFocus();
        NextControl();
    });
}

void TGood_Get_FRM::ShowTab(int number)
{
    for (int index = 0, shown = 0; index < ui_->PageControl1->count(); ++index)
        if (ui_->PageControl1->isTabVisible(index) && ++shown == number)
            ui_->PageControl1->setCurrentIndex(index);
}

void TGood_Get_FRM::MoveWorkingRows(int code)
{
    barcodes_->SetGood(code);
    prices_->MoveTo(code);
    categories_->MoveTo(code);
}

void TGood_Get_FRM::OpenPhotos()
{
    if (host::Granted(m_host, TSoftwarePart::Goods, host::TPermission::Photo))
        m_host.photos.Open_Gallery(TSoftwarePart::Goods, WorkingCode());
}

void TGood_Get_FRM::ProposeCode(int group)
{
    const int code = code_.ChangeGroup(group);
    general_->SetCode(code);
    MoveWorkingRows(code);
    SetIsSaved(false);
}

goods::Refused TGood_Get_FRM::TakeTypedCode()
{
    const int code = general_->Code();
    if (!IsNew() || code == 0 || code == code_.Current())
        return {};
    if (code_.TakeTyped(code)) {
        MoveWorkingRows(code);
        return {};
    }
    return host::Refusal{general_->CodeEdit(),
                         [](host::MessageService &messages) { messages.MsgRepeatedCode(QStringLiteral("کد")); }};
}

void TGood_Get_FRM::RunRule(const std::function<goods::Refused()> &rule)
{
    Command(Title(), [this, &rule] {
        goods::Refused refused = rule();
        if (!refused)
            return;
        if (refused->say)
            refused->say(m_host.messages);
        FocusControl(refused->control);
    });
}

void TGood_Get_FRM::Prepare()
{
    if (!IsShowing())
        data_.DeleteTmpCategory();
    loaded_ = TGoodInfoRec();
    const int group = ParameterText().toInt();
    general_->FillGroups();
    complete_->FillLists();
    general_->Clear(group);
    complete_->Clear();
    discounts_->Clear();
    barcodes_->Clear();
    const int code = code_.Begin(group);
    general_->SetCode(code);
    barcodes_->SetGood(code);
    prices_->Open(code, Mode());
    prices_->Show(loaded_);
    prices_->SetBothExempt(false);
    categories_->Open(code, true);
    details_->OpenNew(code);
    ApplyOpeningLock();
    // Each record begins at the first control of each tab, not where the last one was left.
    for (int index = 0; index < ui_->PageControl1->count(); ++index) {
        if (QWidget *last = ui_->PageControl1->widget(index)->focusWidget())
            last->clearFocus();
    }
}

void TGood_Get_FRM::Load()
{
    const int code = Key().toInt();
    if (!data_.Good_GetByID(code, loaded_)) {
        m_host.messages.ShowMessage(QStringLiteral("این کالا دیگر وجود ندارد."), host::MessageIcon::Warning);
        SetRecordGone();
        AbortOpening();
        return;
    }
    if (Mode() == TFormMode::Edit)
        data_.DeleteTmpCategory();
    general_->FillGroups();
    complete_->FillLists();
    details_->OpenExisting(code);
    general_->Show(loaded_);
    barcodes_->SetGood(code);
    barcodes_->Show(loaded_.AbbName);
    complete_->Show(loaded_);
    prices_->Open(code, Mode());
    prices_->Show(loaded_);
    discounts_->Show(loaded_);
    prices_->SetBothExempt(discounts_->BothExempt());
    if (Mode() == TFormMode::Edit)
        data_.FirstAsset_FillTemp(code);
    ApplyOpeningLock();
    general_->Opening().SetDetailsEntered(m_host.goodDetails.EnterGoodDetails_Get(code, TOperationType::OpeningStock));
    categories_->Open(code, Mode() == TFormMode::Edit);
    untouched_ = Entered();
}

void TGood_Get_FRM::ApplyOpeningLock()
{
    const int code = general_->Code();
    OpeningFields &opening = general_->Opening();
    int rowStore = 0;
    const bool severalStores = Mode() != TFormMode::Review && !data_.FirstAsset_NotIsMultiStore(code, rowStore);
    opening.SetLoadedRowStore(rowStore);
    if (severalStores) {
        goods::Quantity first = 0;
        goods::Quantity second = 0;
        data_.GoodFirstAsset_GetAmount(code, first, second);
        opening.ShowTotals(first, second);
    }
    const bool locked = m_host.vouchers.IsConstStartPeriod() || (!IsNew() && data_.Good_HasSanadDetail(code));
    opening.SetLocked(locked, severalStores);
    general_->CodeEdit()->setReadOnly(!IsNew());
}

void TGood_Get_FRM::SetReadOnly(bool readOnly)
{
    TBaseGet_New_FRM::SetReadOnly(readOnly);
    prices_->SetReadOnly(readOnly);
    picture_->setVisible(!readOnly);
    complete_->SetReadOnly(readOnly);
}

std::vector<host::Check> TGood_Get_FRM::Validate()
{
    return validation_->Checks({Mode(), loaded_.VoucherCode, [this] { return TakeTypedCode(); }});
}

TGoodInfoRec TGood_Get_FRM::Entered() const
{
    TGoodInfoRec good = loaded_;
    general_->Store(good);
    good.AbbName = barcodes_->Text();
    prices_->Store(good);
    complete_->Store(good);
    discounts_->Store(good);
    return good;
}

void TGood_Get_FRM::Write()
{
    GoodSave::Request request;
    request.good = Entered();
    request.isNew = IsNew();
    if (!request.isNew)
        goods::KeepUntouched(request.good, untouched_, loaded_);
    const OpeningFields &opening = general_->Opening();
    request.loaded = opening.Loaded();
    request.entered = opening.Values();
    request.rowChanged = opening.RowChanged();
    request.loadedRowStore = opening.LoadedRowStore();
    request.rowStore = opening.RowStore();
    request.loadedDetails = details_->Loaded();

    const int code = GoodSave(m_host, data_).Run(request);
    replacedCode_ = code == request.good.Code ? 0 : request.good.Code;
    if (IsNew())
        code_.Moved(code);
    general_->SetCode(code);
    SetKey(code);
}

void TGood_Get_FRM::AfterWrite()
{
    m_host.messages.MSGCompeletedSuccessfully(QStringLiteral("ذخيره سازي کالا"));
    if (replacedCode_ != 0)
        m_host.messages.ShowMessage(
            QStringLiteral("کد %1 در این میان به کالای دیگری داده شد؛ این کالا با کد %2 ذخیره شد.")
                .arg(replacedCode_)
                .arg(Key().toInt()),
            host::MessageIcon::Information);
    replacedCode_ = 0;
}

QWidget *TGood_Get_FRM::FirstControl() const
{
    return openingPage_ == 0 ? general_->NameEdit() : nullptr;
}

QString TGood_Get_FRM::PrepareRecoveryQuery() const
{
    return QStringLiteral("select Code from GoodInf where Code = %1").arg(Key().toInt());
}

void TGood_Get_FRM::FormShow()
{
    ui_->PageControl1->setTabVisible(ui_->PageControl1->indexOf(details_), m_host.settings.SettingRecord().GoodDetails);
    if (openingPage_ < 0 || openingPage_ >= ui_->PageControl1->count())
        openingPage_ = 0;
    ui_->PageControl1->setCurrentIndex(openingPage_);
    TBaseGet_New_FRM::FormShow();
}

void TGood_Get_FRM::FormShown()
{
    // On another page than the first the focus is left to the page.
    TBaseGet_New_FRM::FormShown();
    openingPage_ = 0;
}

void TGood_Get_FRM::FormClose()
{
    barcodes_->GiveKeyboardBack();
    complete_->GiveKeyboardBack();
    if (Mode() != TFormMode::Review)
        DiscardWorkingRows();
    TBaseGet_New_FRM::FormClose();
}

void TGood_Get_FRM::DiscardWorkingRows()
{
    const int code = WorkingCode();
    host::Transaction transaction(data_.Connection());
    data_.undodelete_category(code);
    data_.FirstAsset_DeleteTemp(code);
    data_.DeleteTmpCategory();
    data_.DeleteTmpphoto(code);
    data_.CostLevel_DeleteTemp(code);
    transaction.Commit();
    code_.End();
}
