#include "detailtypes/detail_type_get.h"

#include "detailtypes/detail_items.h"
#include "detailtypes/detail_type_choice.h"
#include "host/host.h"
#include "host/screens/theme.h"
#include "ui_detail_type_get.h"

#include <QtGui/QPainter>

using detail_types::DetailTypeFault;
using detail_types::KindLayout;
using host::MessageService;
using host::Refusal;
using host::TSoftwarePart;

namespace {

constexpr int LongestTitle = 20; // as typed; what is stored may be longer
constexpr int HighestTop = 150;  // a tall form must not begin lower, in pixels
const QColor OnKnob(0x00, 0x80, 0x00);
const QColor OffKnob(0xff, 0x00, 0x00);

QString RepeatedItemText()
{
    return u"کاربر گرامی مقدار پیشنهادی وارد شده تکراری می باشد، لطفا مقدار پیشنهادی جدید وارد نمایید"_qs;
}

QString ItemNotAddedText()
{
    return u"کاربر گرامی مقدار پیشنهادی نوشته شده هنوز به لیست افزوده نشده است، لطفا آن را با Enter بیفزایید و یا پاک "
           "نمایید"_qs;
}

QString ReminderTakenText()
{
    return u"کاربر گرامی تعدادی کالا ثبت شده اند که دارای جزئیات تاریخی با قابلیت یادآوری سررسید می "
           "باشندکه این جزئیات هم در لیست جزئیات کالاهای فوق ثبت شده است و در صورتی که تیک یادآوری "
           "سررسید این جزئیات را هم بزنید  کالاهای فوق دارای دو جزئیات تاریخی با تیک یادآوری سررسید "
           "می شوند که همین امر مشکل ساز خواهد شد و به همین دلیل  افزودن تیک یادآوری سررسید برای "
           "این جزئیات امکان پذیر نمی باشد"_qs;
}

/// A letter "i" in a disc of the house's colour.
QPixmap InformationMark(double ratio)
{
    constexpr int side = 28;
    QPixmap picture(QSize(side, side) * ratio);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(host::theme::Accent());
    painter.drawEllipse(QRectF(0, 0, side, side));
    QFont font = host::theme::InterfaceFont(13);
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRectF(0, 0, side, side), Qt::AlignCenter, u"i"_qs);
    return picture;
}

QString StateCaption(const QString &title)
{
    return title.trimmed().isEmpty() ? u"..."_qs : title;
}

Refusal Required(QWidget *control, const QString &caption)
{
    return {control, [caption](MessageService &messages) { messages.MsgRequiredField(caption); }};
}

} // namespace

TDetailTypes_Get_FRM::TDetailTypes_Get_FRM(host::Host &host)
    : TBaseGet_FRM(host, TSoftwarePart::DetailTypes), ui_(std::make_unique<Ui::TDetailTypes_Get_FRM>()), data_(host.DM)
{
    setObjectName(u"TDetailTypes_Get_FRM"_qs);
    ui_->setupUi(Content());
    ui_->Code_EDT->hide();
    ui_->Type_CMB->setMaxVisibleItems(ui_->Type_CMB->count());
    ui_->TypeDescription_IMG->setPixmap(InformationMark(devicePixelRatioF()));
    SetTitle(u"جزئیات کالا"_qs);
    connect(ui_->Type_CMB, &QComboBox::currentIndexChanged, this, &TDetailTypes_Get_FRM::ApplyKind);
    connect(ui_->IsRequired_CHB, &QCheckBox::clicked, this, [this](bool checked) {
        isRequiredTouched_ = true;
        isRequiredUserValue_ = checked;
    });
    BindItems();
    BindToggle();
}

TDetailTypes_Get_FRM::~TDetailTypes_Get_FRM() = default;

void TDetailTypes_Get_FRM::BindItems()
{
    items_ = new DetailItems(*ui_->RecommendValues_EDT, *ui_->RecommendList_LST, *ui_->DefaultValue_CMB, this);
    connect(items_, &DetailItems::Changed, this, [this] { SetIsSaved(false); });
    Bind(ui_->AddToList_BTN, {}, [this] { AddItem(); });
    Bind(ui_->Up_BTN, {}, [this] { items_->MoveUp(); });
    Bind(ui_->Down_BTN, {}, [this] { items_->MoveDown(); });
    Bind(ui_->Delrow_BTN, {}, [this] { items_->Remove(); });
}

void TDetailTypes_Get_FRM::BindToggle()
{
    ui_->ToggleSwitchTitle_TSW->SetKnobColors(OnKnob, OffKnob);
    for (const QLineEdit *title : {ui_->ToggleTitleTrue_EDT, ui_->ToggleTitleFalse_EDT})
        connect(title, &QLineEdit::textChanged, this, &TDetailTypes_Get_FRM::ShowStateCaptions);
    ShowStateCaptions();
}

QWidget *TDetailTypes_Get_FRM::FirstControl() const
{
    return ui_->DetailTitle_EDT;
}

QString TDetailTypes_Get_FRM::PrepareRecoveryQuery() const
{
    return u"SELECT ID FROM DetailTypes WHERE ID = "_qs + QString::number(Key().toInt());
}

// A record on the form ----------------------------------------------------------------------------------------------

void TDetailTypes_Get_FRM::Clear()
{
    shown_ = false;
    isRequiredTouched_ = false;
    loaded_ = {};
    ui_->DetailTitle_EDT->setMaxLength(LongestTitle);
    ui_->DetailTitle_EDT->clear();
    ui_->Type_CMB->setCurrentIndex(0);
    ui_->RecommendValues_EDT->clear();
    items_->SetDefaultText({});
    items_->SetItems({});
    SetCalendar(TDetailCalendar::Solar);
    ui_->DateAlarm_CHB->setChecked(false);
    ui_->ToggleTitleTrue_EDT->setText(u"فعال"_qs);
    ui_->ToggleTitleFalse_EDT->setText(u"غیرفعال"_qs);
    ui_->ToggleSwitchTitle_TSW->setChecked(true);
    ui_->Comment_EDT->clear();
}

void TDetailTypes_Get_FRM::Prepare()
{
    if (!host::MayWrite(m_host, host::TSoftwarePart::DetailTypes, Mode())) {
        AbortOpening();
        return;
    }
    SetKey(1);
    Clear();
    ui_->Code_EDT->setText(Key().toString());
    ApplyKind();
}

void TDetailTypes_Get_FRM::Load()
{
    if (!host::MayWrite(m_host, host::TSoftwarePart::DetailTypes, Mode())) {
        AbortOpening();
        return;
    }
    Clear();
    const int id = Key().toInt();
    if (!data_.DetailTypes_GetByID(id, loaded_)) {
        m_host.messages.ShowMessage(u"این نوع جزئیات دیگر وجود ندارد."_qs, host::MessageIcon::Warning);
        AbortOpening();
        return;
    }
    ui_->Code_EDT->setText(QString::number(id));
    Show(loaded_);
}

void TDetailTypes_Get_FRM::Show(const TDetailType_Rec &record)
{
    ui_->DetailTitle_EDT->setMaxLength(qMax(LongestTitle, static_cast<int>(record.Title.size())));
    ui_->DetailTitle_EDT->setText(record.Title);
    ui_->IsRequired_CHB->setChecked(record.IsRequired);
    ui_->Type_CMB->setCurrentIndex(static_cast<int>(record.DetailType));
    ApplyKind();
    if (detail_types::HasItems(Kind()))
        items_->SetItems(data_.DetailTypesItems(record.ID));
    switch (Kind()) {
    case TDetailKind::List:
        items_->SetDefaultItem(qMax(record.DefaultValue.toInt() - 1, 0));
        break;
    case TDetailKind::Text:
        items_->SetDefaultText(record.DefaultValue);
        break;
    case TDetailKind::Date:
        SetCalendar(record.DateType);
        ui_->DateAlarm_CHB->setChecked(record.DateAlarm);
        break;
    case TDetailKind::Toggle:
        ui_->ToggleTitleTrue_EDT->setText(record.ToggleTitleTrue);
        ui_->ToggleTitleFalse_EDT->setText(record.ToggleTitleFalse);
        ui_->ToggleSwitchTitle_TSW->setChecked(record.DefaultValue.toInt() != 0);
        break;
    default:
        break;
    }
    ui_->Comment_EDT->setText(record.Comment);
}

void TDetailTypes_Get_FRM::FormShown()
{
    isRequiredTouched_ = false;
    isRequiredUserValue_ = false;
    if (IsNew())
        ui_->IsRequired_CHB->setChecked(true);
    TBaseGet_FRM::FormShown();
    shown_ = true;
}

// The form by kind --------------------------------------------------------------------------------------------------

TDetailKind TDetailTypes_Get_FRM::Kind() const
{
    return static_cast<TDetailKind>(qMax(0, ui_->Type_CMB->currentIndex()));
}

void TDetailTypes_Get_FRM::ApplyKind()
{
    const TDetailKind kind = Kind();
    const KindLayout form = detail_types::LayoutOf(kind);
    ui_->TypeDescription_LBL->setText(detail_types::DescriptionOf(kind));
    ui_->TypeDescription_PNL->setVisible(kind != TDetailKind::None);
    ui_->RecommendedValues_PNL->setVisible(form.items);
    ui_->DateType_PNL->setVisible(form.date);
    ui_->ToggleTitle_PNL->setVisible(form.toggle);
    if (form.items)
        items_->SetPickOnly(kind == TDetailKind::List);
    // What a short form leaves is the explanation's, what a tall one leaves the list's.
    ui_->column->setStretchFactor(ui_->TypeDescription_PNL, form.items ? 0 : 1);
    ApplyRequired(form.alwaysRequired);
    Content()->layout()->activate();
    layout()->activate();
    resize(width(), qMax(form.height, minimumSizeHint().height()));
    KeepHigh();
}

void TDetailTypes_Get_FRM::ApplyRequired(bool always)
{
    QCheckBox &box = *ui_->IsRequired_CHB;
    box.setEnabled(!always);
    if (always || (IsNew() && !isRequiredTouched_))
        box.setChecked(true);
    else if (shown_ && isRequiredTouched_)
        box.setChecked(isRequiredUserValue_);
}

void TDetailTypes_Get_FRM::KeepHigh()
{
    if (isVisible() && detail_types::LayoutOf(Kind()).items && y() > HighestTop)
        move(x(), HighestTop);
}

void TDetailTypes_Get_FRM::showEvent(QShowEvent *event)
{
    TBaseGet_FRM::showEvent(event);
    KeepHigh();
}

void TDetailTypes_Get_FRM::SetCalendar(TDetailCalendar calendar)
{
    // A stored calendar that is neither leaves both unchecked, which a group of radio buttons does not allow by itself.
    for (QRadioButton *button : {ui_->SolarDate_RDB, ui_->GregorianDate_RDB})
        button->setAutoExclusive(false);
    ui_->SolarDate_RDB->setChecked(calendar == TDetailCalendar::Solar);
    ui_->GregorianDate_RDB->setChecked(calendar == TDetailCalendar::Gregorian);
    for (QRadioButton *button : {ui_->SolarDate_RDB, ui_->GregorianDate_RDB})
        button->setAutoExclusive(true);
}

void TDetailTypes_Get_FRM::ShowStateCaptions()
{
    ui_->ToggleSwitchTitle_TSW->SetStateCaptions(StateCaption(ui_->ToggleTitleTrue_EDT->text()),
                                                 StateCaption(ui_->ToggleTitleFalse_EDT->text()));
}

void TDetailTypes_Get_FRM::AddItem()
{
    if (items_->Add() == DetailItems::Added::Repeated)
        m_host.messages.ShowMessage(RepeatedItemText(), host::MessageIcon::Warning);
    FocusControl(ui_->RecommendValues_EDT);
}

/// Enter adds the typed item and stays for the next one; an empty edit lets it go on. The buttons beside the list are
/// not stops: Enter would press them and never come past.
void TDetailTypes_Get_FRM::NextControl()
{
    if (ui_->RecommendValues_EDT->hasFocus() && !ui_->RecommendValues_EDT->text().trimmed().isEmpty()) {
        AddItem();
        return;
    }
    TBaseGet_FRM::NextControl();
    for (int steps = 0; steps < 5; ++steps) {
        const auto *button = qobject_cast<QPushButton *>(focusWidget());
        if (!button || !ui_->RecommendedValues_PNL->isAncestorOf(button))
            return;
        TBaseGet_FRM::NextControl();
    }
}

// Saving ------------------------------------------------------------------------------------------------------------

detail_types::DetailTypeDraft TDetailTypes_Get_FRM::Draft() const
{
    return {.isNew = IsNew(),
            .title = ui_->DetailTitle_EDT->text(),
            .kind = Kind(),
            .storedKind = loaded_.DetailType,
            .items = ui_->RecommendList_LST->count(),
            .defaultItem = items_->DefaultItem(),
            .calendarGiven = ui_->SolarDate_RDB->isChecked() || ui_->GregorianDate_RDB->isChecked(),
            .reminder = ui_->DateAlarm_CHB->isChecked(),
            .titleOn = ui_->ToggleTitleTrue_EDT->text(),
            .titleOff = ui_->ToggleTitleFalse_EDT->text(),
            .nextItem = ui_->RecommendValues_EDT->text()};
}

std::vector<host::Check> TDetailTypes_Get_FRM::Validate()
{
    return {{u"detail type"_qs, [this] {
                 return RefusalOf(detail_types::FirstFault(
                     Draft(),
                     {.sameTitles = [this](const QString &title) { return data_.DetailTypesTitle_Exist(title); },
                      .reminderTaken = [this] { return data_.ExistsGoodDetailBeforeEditForDateAlarmDetail(Key()); },
                      .meetsIdentifying =
                          [this](bool inList) { return data_.MeetsSerialOrBarcode(Key().toInt(), inList); }}));
             }}};
}

std::optional<Refusal> TDetailTypes_Get_FRM::RefusalOf(DetailTypeFault fault) const
{
    switch (fault) {
    case DetailTypeFault::None:
        break;
    case DetailTypeFault::TitleMissing:
        return Required(ui_->DetailTitle_EDT, u"عنوان گزارش"_qs);
    case DetailTypeFault::TitleTaken:
        return Refusal{ui_->DetailTitle_EDT, [](MessageService &messages) {
                           messages.MsgRepeatedField(u"عنوان جزئیات"_qs, u"جزئیات کالا"_qs);
                       }};
    case DetailTypeFault::ReminderTaken:
        return Refusal{ui_->DateAlarm_CHB, [](MessageService &messages) {
                           messages.ShowMessage(ReminderTakenText(), host::MessageIcon::Warning);
                       }};
    case DetailTypeFault::IdentifyingOnGood:
    case DetailTypeFault::IdentifyingInList:
        return Refusal{ui_->Type_CMB, [inList = fault == DetailTypeFault::IdentifyingInList](MessageService &messages) {
                           messages.ShowMessage(detail_types::TwoIdentifying(inList), host::MessageIcon::Warning);
                       }};
    case DetailTypeFault::KindMissing:
        return Required(ui_->Type_CMB, u"نوع جزئیات"_qs);
    case DetailTypeFault::ItemsMissing:
        return Required(ui_->RecommendValues_EDT, u"مقادیر پیشنهادی"_qs);
    case DetailTypeFault::CalendarMissing:
        return Required(ui_->SolarDate_RDB, u"نوع تاریخ"_qs);
    case DetailTypeFault::OnTitleMissing:
        return Required(ui_->ToggleTitleTrue_EDT, u"عنوان فعال"_qs);
    case DetailTypeFault::OffTitleMissing:
        return Required(ui_->ToggleTitleFalse_EDT, u"عنوان غیر فعال"_qs);
    case DetailTypeFault::DefaultMissing:
        return Required(ui_->DefaultValue_CMB, u"مقدار پیش فرض"_qs);
    case DetailTypeFault::ItemNotAdded:
        return Refusal{ui_->RecommendValues_EDT, [](MessageService &messages) {
                           messages.ShowMessage(ItemNotAddedText(), host::MessageIcon::Warning);
                       }};
    }
    return std::nullopt;
}

TDetailType_Rec TDetailTypes_Get_FRM::Record() const
{
    TDetailType_Rec record = loaded_;
    const TDetailKind kind = Kind();
    record.Title = ui_->DetailTitle_EDT->text();
    record.DetailType = kind;
    record.IsRequired = ui_->IsRequired_CHB->isChecked();
    record.ToggleTitleTrue = record.ToggleTitleFalse = u""_qs;
    record.DateType = TDetailCalendar::Gregorian;
    record.DateAlarm = false;
    switch (kind) {
    case TDetailKind::List:
        record.DefaultValue = QString::number(items_->DefaultItem() + 1);
        break;
    case TDetailKind::Text:
        record.DefaultValue = items_->DefaultText();
        break;
    case TDetailKind::Date:
        record.DateType = ui_->GregorianDate_RDB->isChecked() ? TDetailCalendar::Gregorian : TDetailCalendar::Solar;
        record.DateAlarm = ui_->DateAlarm_CHB->isChecked();
        break;
    case TDetailKind::Toggle:
        record.DefaultValue = ui_->ToggleSwitchTitle_TSW->isChecked() ? u"1"_qs : u"0"_qs;
        record.ToggleTitleTrue = ui_->ToggleTitleTrue_EDT->text();
        record.ToggleTitleFalse = ui_->ToggleTitleFalse_EDT->text();
        break;
    default:
        break;
    }
    record.Comment = ui_->Comment_EDT->text();
    return record;
}

void TDetailTypes_Get_FRM::Write()
{
    const host::TUserInfo &user = m_host.settings.UserInfo();
    TDetailType_Rec record = Record();
    (IsNew() ? record.CreatedTime : record.ModifiedTime) = m_host.clock.NowTime();
    (IsNew() ? record.CreatedDate : record.ModifiedDate) = m_host.clock.NowDate();
    (IsNew() ? record.UserCreated : record.UserModified) = u"%1 (%2)"_qs.arg(user.Name, QString::number(user.Code));
    const QStringList items = detail_types::HasItems(Kind()) ? items_->Items() : QStringList();
    if (!IsNew()) {
        data_.DetailTypes_UpdateWithItems(record, items);
        return;
    }
    int id = 0;
    data_.DetailTypes_InsertWithItems(record, items, id);
    SetKey(id);
}
