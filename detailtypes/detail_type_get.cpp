#include "detailtypes/detail_type_get.h"

#include "detailtypes/detail_items.h"
#include "detailtypes/detail_type_choice.h"
#include "detailtypes/kind_layout.h"
#include "host/data/transaction.h"
#include "host/host.h"
#include "host/look/icons.h"
#include "host/look/theme.h"
#include "rules/stamp.h"
#include "ui_detail_type_get.h"

#include <tuple>

using namespace Qt::StringLiterals;

using detail_types::KindLayout;
using host::Required;
using host::TSoftwarePart;
using host::When;

namespace {

constexpr int LongestTitle = 20; // as typed; what is stored may be longer
constexpr int HighestTop = 150;  // a tall form must not begin lower, in pixels
const QColor OnKnob(0x00, 0x80, 0x00);
const QColor OffKnob(0xff, 0x00, 0x00);

QString RepeatedItemText()
{
    return u"کاربر گرامی مقدار پیشنهادی وارد شده تکراری می باشد، لطفا مقدار پیشنهادی جدید وارد نمایید"_s;
}

QString ItemNotAddedText()
{
    return u"کاربر گرامی مقدار پیشنهادی نوشته شده هنوز به لیست افزوده نشده است، لطفا آن را با Enter بیفزایید و یا پاک نمایید"_s;
}

QString LongDefaultText()
{
    return u"کاربر گرامی مقدار پیش فرض حداکثر 50 حرف می تواند داشته باشد"_s;
}

QString ReminderTakenText()
{
    return u"کاربر گرامی تعدادی کالا ثبت شده اند که دارای جزئیات تاریخی با قابلیت یادآوری سررسید می باشندکه این جزئیات هم در لیست جزئیات کالاهای فوق ثبت شده است و در صورتی که تیک یادآوری سررسید این جزئیات را هم بزنید  کالاهای فوق دارای دو جزئیات تاریخی با تیک یادآوری سررسید می شوند که همین امر مشکل ساز خواهد شد و به همین دلیل  افزودن تیک یادآوری سررسید برای این جزئیات امکان پذیر نمی باشد"_s;
}

QString StateCaption(const QString &title)
{
    return title.trimmed().isEmpty() ? u"..."_s : title;
}

bool Identifies(TDetailKind kind)
{
    return kind == TDetailKind::Serial || kind == TDetailKind::Barcode;
}

/// What means something only together.
auto Kindly(const TDetailType_Rec &record)
{
    return std::tie(record.DetailType, record.IsRequired, record.ToggleTitleTrue, record.ToggleTitleFalse,
                    record.DefaultValue, record.DateType, record.DateAlarm);
}

bool Blank(const QLineEdit *edit)
{
    return edit->text().trimmed().isEmpty();
}

} // namespace

TDetailTypes_Get_FRM::TDetailTypes_Get_FRM(host::Host &host)
    : TBaseGet_FRM(host, TSoftwarePart::DetailTypes), m_ui(std::make_unique<Ui::TDetailTypes_Get_FRM>()),
      m_data(host.DM)
{
    setObjectName(u"TDetailTypes_Get_FRM"_s);
    m_ui->setupUi(Content());
    m_ui->Code_EDT->hide();
    m_ui->Type_CMB->setMaxVisibleItems(m_ui->Type_CMB->count());
    m_ui->TypeDescription_IMG->setPixmap(
        host::Icon(host::Glyph::Information, host::theme::Accent).pixmap({28, 28}, devicePixelRatioF()));
    SetTitle(u"جزئیات کالا"_s);
    connect(m_ui->Type_CMB, &QComboBox::currentIndexChanged, this, &TDetailTypes_Get_FRM::ApplyKind);
    connect(m_ui->IsRequired_CHB, &QCheckBox::clicked, this, [this](bool checked) {
        m_isRequiredTouched = true;
        m_isRequiredUserValue = checked;
    });
    BindItems();
    BindToggle();
}

TDetailTypes_Get_FRM::~TDetailTypes_Get_FRM() = default;

void TDetailTypes_Get_FRM::BindItems()
{
    m_items = new DetailItems(*m_ui->RecommendValues_EDT, *m_ui->RecommendList_LST, *m_ui->DefaultValue_CMB, this);
    connect(m_items, &DetailItems::Changed, this, [this] { SetIsSaved(false); });
    Bind(m_ui->AddToList_BTN, {}, [this] { AddItem(); });
    Bind(m_ui->Up_BTN, {}, [this] { m_items->MoveUp(); });
    Bind(m_ui->Down_BTN, {}, [this] { m_items->MoveDown(); });
    Bind(m_ui->Delrow_BTN, {}, [this] { m_items->Remove(); });
}

void TDetailTypes_Get_FRM::BindToggle()
{
    m_ui->ToggleSwitchTitle_TSW->SetKnobColors(OnKnob, OffKnob);
    for (const QLineEdit *title : {m_ui->ToggleTitleTrue_EDT, m_ui->ToggleTitleFalse_EDT})
        connect(title, &QLineEdit::textChanged, this, &TDetailTypes_Get_FRM::ShowStateCaptions);
    ShowStateCaptions();
}

QWidget *TDetailTypes_Get_FRM::FirstControl() const
{
    return m_ui->DetailTitle_EDT;
}

QString TDetailTypes_Get_FRM::PrepareRecoveryQuery() const
{
    return TDetailTypes_DM::DetailTypes_RecoveryText(Key().toInt());
}

// A record on the form ----------------------------------------------------------------------------------------------

void TDetailTypes_Get_FRM::Clear()
{
    m_shown = false;
    m_isRequiredTouched = false;
    m_loaded = {};
    m_ui->DetailTitle_EDT->setMaxLength(LongestTitle);
    m_ui->DetailTitle_EDT->clear();
    m_ui->Type_CMB->setCurrentIndex(0);
    m_ui->RecommendValues_EDT->clear();
    m_items->SetDefaultText({});
    m_items->SetItems({});
    SetCalendar(TDetailCalendar::Solar);
    m_ui->DateAlarm_CHB->setChecked(false);
    m_ui->ToggleTitleTrue_EDT->setText(u"فعال"_s);
    m_ui->ToggleTitleFalse_EDT->setText(u"غیرفعال"_s);
    m_ui->ToggleSwitchTitle_TSW->setChecked(true);
    m_ui->Comment_EDT->clear();
}

void TDetailTypes_Get_FRM::Prepare()
{
    if (RefuseOpening(host::CheckRight(m_host, SoftwarePart(), Mode())))
        return;
    SetKey(1);
    Clear();
    m_ui->Code_EDT->setText(Key().toString());
    ApplyKind();
}

void TDetailTypes_Get_FRM::Load()
{
    if (RefuseOpening(host::CheckRight(m_host, SoftwarePart(), Mode())))
        return;
    Clear();
    const int id = Key().toInt();
    if (!m_data.DetailTypes_GetByID(id, m_loaded)) {
        RefuseOpening(host::RecordGone(u"نوع جزئیات"_s));
        return;
    }
    m_ui->Code_EDT->setText(QString::number(id));
    Show(m_loaded);
    m_before = Record();
    m_itemsBefore = m_items->Items();
}

void TDetailTypes_Get_FRM::Show(const TDetailType_Rec &record)
{
    m_ui->DetailTitle_EDT->setMaxLength(qMax(LongestTitle, static_cast<int>(record.Title.size())));
    m_ui->DetailTitle_EDT->setText(record.Title);
    m_ui->IsRequired_CHB->setChecked(record.IsRequired);
    m_ui->Type_CMB->setCurrentIndex(static_cast<int>(record.DetailType));
    ApplyKind();
    if (detail_types::HasItems(Kind()))
        m_items->SetItems(m_data.DetailTypesItems(record.ID));
    switch (Kind()) {
    case TDetailKind::List:
        m_items->SetDefaultItem(qMax(record.DefaultValue.toInt() - 1, 0));
        break;
    case TDetailKind::Text:
        m_items->SetDefaultText(record.DefaultValue);
        break;
    case TDetailKind::Date:
        SetCalendar(record.DateType);
        m_ui->DateAlarm_CHB->setChecked(record.DateAlarm);
        break;
    case TDetailKind::Toggle:
        m_ui->ToggleTitleTrue_EDT->setText(record.ToggleTitleTrue);
        m_ui->ToggleTitleFalse_EDT->setText(record.ToggleTitleFalse);
        m_ui->ToggleSwitchTitle_TSW->setChecked(record.DefaultValue.toInt() != 0);
        break;
    default:
        break;
    }
    m_ui->Comment_EDT->setText(record.Comment);
}

void TDetailTypes_Get_FRM::FormShown()
{
    m_isRequiredTouched = false;
    m_isRequiredUserValue = false;
    if (IsNew())
        m_ui->IsRequired_CHB->setChecked(true);
    TBaseGet_FRM::FormShown();
    m_shown = true;
}

// The form by kind --------------------------------------------------------------------------------------------------

TDetailKind TDetailTypes_Get_FRM::Kind() const
{
    return static_cast<TDetailKind>(qMax(0, m_ui->Type_CMB->currentIndex()));
}

void TDetailTypes_Get_FRM::ApplyKind()
{
    const TDetailKind kind = Kind();
    const KindLayout form = detail_types::LayoutOf(kind);
    m_ui->TypeDescription_LBL->setText(detail_types::DescriptionOf(kind));
    m_ui->TypeDescription_PNL->setVisible(kind != TDetailKind::None);
    m_ui->RecommendedValues_PNL->setVisible(form.items);
    m_ui->DateType_PNL->setVisible(form.date);
    m_ui->ToggleTitle_PNL->setVisible(form.toggle);
    if (form.items)
        m_items->SetPickOnly(kind == TDetailKind::List);
    // What a short form leaves is the explanation's, what a tall one leaves the list's.
    m_ui->column->setStretchFactor(m_ui->TypeDescription_PNL, form.items ? 0 : 1);
    ApplyRequired(form.alwaysRequired);
    Content()->layout()->activate();
    layout()->activate();
    resize(width(), qMax(form.height, minimumSizeHint().height()));
    KeepHigh();
}

void TDetailTypes_Get_FRM::ApplyRequired(bool always)
{
    QCheckBox &box = *m_ui->IsRequired_CHB;
    box.setEnabled(!always);
    if (always || (IsNew() && !m_isRequiredTouched))
        box.setChecked(true);
    else if (m_shown && m_isRequiredTouched)
        box.setChecked(m_isRequiredUserValue);
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
    for (QRadioButton *button : {m_ui->SolarDate_RDB, m_ui->GregorianDate_RDB})
        button->setAutoExclusive(false);
    m_ui->SolarDate_RDB->setChecked(calendar == TDetailCalendar::Solar);
    m_ui->GregorianDate_RDB->setChecked(calendar == TDetailCalendar::Gregorian);
    for (QRadioButton *button : {m_ui->SolarDate_RDB, m_ui->GregorianDate_RDB})
        button->setAutoExclusive(true);
}

void TDetailTypes_Get_FRM::ShowStateCaptions()
{
    m_ui->ToggleSwitchTitle_TSW->SetStateCaptions(StateCaption(m_ui->ToggleTitleTrue_EDT->text()),
                                                  StateCaption(m_ui->ToggleTitleFalse_EDT->text()));
}

void TDetailTypes_Get_FRM::AddItem()
{
    if (m_items->Add() == DetailItems::Added::Repeated)
        m_host.messages.ShowMessage(RepeatedItemText(), host::MessageIcon::Warning);
    FocusControl(m_ui->RecommendValues_EDT);
}

/// Enter adds the typed item and stays for the next one; an empty edit lets it go on. The buttons beside the list are
/// not stops: Enter would press them and never come past.
void TDetailTypes_Get_FRM::NextControl()
{
    if (m_ui->RecommendValues_EDT->hasFocus() && !Blank(m_ui->RecommendValues_EDT)) {
        AddItem();
        return;
    }
    TBaseGet_FRM::NextControl();
    for (int steps = 0; steps < 5; ++steps) {
        const auto *button = qobject_cast<QPushButton *>(focusWidget());
        if (!button || !m_ui->RecommendedValues_PNL->isAncestorOf(button))
            return;
        TBaseGet_FRM::NextControl();
    }
}

// Saving ------------------------------------------------------------------------------------------------------------

std::vector<host::Check> TDetailTypes_Get_FRM::Validate()
{
    const Ui::TDetailTypes_Get_FRM *ui = m_ui.get();
    const TDetailKind kind = Kind();
    const KindLayout shown = detail_types::LayoutOf(kind);
    return {
        {u"TitleGiven"_s,
         [=] { return When(Blank(ui->DetailTitle_EDT), Required(ui->DetailTitle_EDT, u"عنوان گزارش"_s)); }},
        {u"TitleFree"_s,
         [=, this] {
             return When(TitleTaken(), host::Repeated(ui->DetailTitle_EDT, u"عنوان جزئیات"_s, u"جزئیات کالا"_s));
         }},
        {u"ReminderFree"_s,
         [=, this] { return When(ReminderTaken(), host::Warning(ui->DateAlarm_CHB, ReminderTakenText())); }},
        {u"IdentifiesAlone"_s, [=, this] { return IdentifiesAlone(); }},
        {u"KindGiven"_s, [=] { return When(kind == TDetailKind::None, Required(ui->Type_CMB, u"نوع جزئیات"_s)); }},
        {u"ItemsGiven"_s,
         [=] {
             return When(shown.items && ui->RecommendList_LST->count() == 0,
                         Required(ui->RecommendValues_EDT, u"مقادیر پیشنهادی"_s));
         }},
        {u"CalendarGiven"_s,
         [=] {
             return When(shown.date && !ui->SolarDate_RDB->isChecked() && !ui->GregorianDate_RDB->isChecked(),
                         Required(ui->SolarDate_RDB, u"نوع تاریخ"_s));
         }},
        {u"OnTitleGiven"_s,
         [=] {
             return When(shown.toggle && Blank(ui->ToggleTitleTrue_EDT),
                         Required(ui->ToggleTitleTrue_EDT, u"عنوان فعال"_s));
         }},
        {u"OffTitleGiven"_s,
         [=] {
             return When(shown.toggle && Blank(ui->ToggleTitleFalse_EDT),
                         Required(ui->ToggleTitleFalse_EDT, u"عنوان غیر فعال"_s));
         }},
        {u"DefaultGiven"_s,
         [=, this] {
             return When(kind == TDetailKind::List && m_items->DefaultItem() < 0,
                         Required(ui->DefaultValue_CMB, u"مقدار پیش فرض"_s));
         }},
        {u"DefaultFits"_s,
         [=, this] {
             return When(kind == TDetailKind::Text && m_items->DefaultText().size() > DetailItems::LongestDefault,
                         host::Warning(ui->DefaultValue_CMB, LongDefaultText()));
         }},
        {u"ItemAdded"_s,
         [=] {
             return When(shown.items && !Blank(ui->RecommendValues_EDT),
                         host::Warning(ui->RecommendValues_EDT, ItemNotAddedText()));
         }},
    };
}

/// A renamed type may take the title of one other: its own stored row counts as one.
bool TDetailTypes_Get_FRM::TitleTaken()
{
    return m_data.DetailTypesTitle_Exist(m_ui->DetailTitle_EDT->text()) > (IsNew() ? 0 : 1);
}

/// Some good already has values of this type and of another one with reminder.
bool TDetailTypes_Get_FRM::ReminderTaken()
{
    return !IsNew() && Kind() == TDetailKind::Date && m_ui->DateAlarm_CHB->isChecked() &&
           m_data.ExistsGoodDetailBeforeEditForDateAlarmDetail(Key());
}

/// A type that becomes a serial or a barcode may not meet another one, on a good or in a category.
host::Refused TDetailTypes_Get_FRM::IdentifiesAlone()
{
    if (IsNew() || !Identifies(Kind()) || Identifies(m_loaded.DetailType))
        return {};
    for (const bool inList : {false, true})
        if (m_data.MeetsSerialOrBarcode(Key().toInt(), inList))
            return host::Warning(m_ui->Type_CMB, detail_types::TwoIdentifying(inList));
    return {};
}

TDetailType_Rec TDetailTypes_Get_FRM::Record() const
{
    TDetailType_Rec record = m_loaded;
    const TDetailKind kind = Kind();
    record.Title = m_ui->DetailTitle_EDT->text();
    record.DetailType = kind;
    record.IsRequired = m_ui->IsRequired_CHB->isChecked();
    record.ToggleTitleTrue = record.ToggleTitleFalse = u""_s;
    record.DateType = TDetailCalendar::Gregorian;
    record.DateAlarm = false;
    switch (kind) {
    case TDetailKind::List:
        record.DefaultValue = QString::number(m_items->DefaultItem() + 1);
        break;
    case TDetailKind::Text:
        record.DefaultValue = m_items->DefaultText();
        break;
    case TDetailKind::Date:
        record.DateType = m_ui->GregorianDate_RDB->isChecked() ? TDetailCalendar::Gregorian : TDetailCalendar::Solar;
        record.DateAlarm = m_ui->DateAlarm_CHB->isChecked();
        break;
    case TDetailKind::Toggle:
        record.DefaultValue = m_ui->ToggleSwitchTitle_TSW->isChecked() ? u"1"_s : u"0"_s;
        record.ToggleTitleTrue = m_ui->ToggleTitleTrue_EDT->text();
        record.ToggleTitleFalse = m_ui->ToggleTitleFalse_EDT->text();
        break;
    default:
        break;
    }
    record.Comment = m_ui->Comment_EDT->text();
    return record;
}

/// What was not changed here stays as it is by now: another desk may have changed it.
void TDetailTypes_Get_FRM::LeaveUnchanged(TDetailType_Rec &record, QStringList &items)
{
    TDetailType_Rec stored;
    if (!m_data.DetailTypes_GetByID(record.ID, stored))
        return;
    const bool sameKind = Kindly(record) == Kindly(m_before) && m_items->Items() == m_itemsBefore;
    if (record.Title == m_before.Title)
        record.Title = stored.Title;
    if (record.Comment == m_before.Comment)
        record.Comment = stored.Comment;
    if (!sameKind)
        return;
    stored.Title = record.Title;
    stored.Comment = record.Comment;
    record = stored;
    items = detail_types::HasItems(record.DetailType) ? m_data.DetailTypesItems(record.ID) : QStringList();
}

void TDetailTypes_Get_FRM::Write()
{
    host::Transaction transaction(m_data.Connection());
    const host::TUserInfo &user = m_host.settings.UserInfo();
    TDetailType_Rec record = Record();
    QStringList items = detail_types::HasItems(Kind()) ? m_items->Items() : QStringList();
    if (!IsNew())
        LeaveUnchanged(record, items);
    (IsNew() ? record.CreatedTime : record.ModifiedTime) = m_host.clock.NowTime();
    (IsNew() ? record.CreatedDate : record.ModifiedDate) = m_host.clock.NowDate();
    (IsNew() ? record.UserCreated : record.UserModified) = goods::StampUser(user.Name, user.Code);
    int id = record.ID;
    if (IsNew())
        m_data.DetailTypes_InsertWithItems(record, items, id);
    else
        m_data.DetailTypes_UpdateWithItems(record, items);
    transaction.Commit();
    SetKey(id);
}
