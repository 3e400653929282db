#include "gooddetail/detail_line_screen.h"

#include "gooddetail/scan_keeper.h"
#include "gooddetail/typed_inputs.h"
#include "host/controls/date_edit.h"
#include "host/controls/display_edit.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/controls/numeric_edit.h"
#include "host/look/theme.h"
#include "rules/unit_arithmetic.h"
#include "screens/shared/leave_watch.h"
#include "ui_detail_line_panel.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

using namespace Qt::StringLiterals;

using host::TFormMode;
using host::TSoftwarePart;

namespace good_detail {

namespace {

constexpr int IdentityWidth = 150; // pixels at 100 %
constexpr int DetailWidth = 104;
constexpr int AmountWidth = 92;
constexpr int TitleMargin = 28;
constexpr qsizetype MostTold = 12; ///< serials in the line below the inputs

/// The line under a mnemonic parts letters that are joined otherwise: the text is wider than its size hint.
int CaptionWidth(const QLabel *caption)
{
    return caption->sizeHint().width() + 2 * caption->fontMetrics().averageCharWidth();
}

} // namespace

TDetailLine_FRM::TDetailLine_FRM(host::Host &host, InputMode mode)
    : TBaseGet_FRM(host, TSoftwarePart::GoodDetails), m_data(host), m_mode(mode),
      m_panel(std::make_unique<Ui::DetailLinePanel>()), m_totals(new QLabel(this)), m_status(new QLabel(this)),
      m_empty(new QLabel(this))
{
    m_totals->setObjectName(u"Totals_LBL"_s);
    m_totals->setTextFormat(Qt::PlainText);
    m_status->setObjectName(u"Status_LBL"_s);
    m_status->setTextFormat(Qt::PlainText);
    m_status->setWordWrap(true);
    AdoptFooter(m_totals);
}

TDetailLine_FRM::~TDetailLine_FRM() = default;

void TDetailLine_FRM::SetUpPanel(QWidget *place)
{
    auto *panel = new QWidget(place);
    m_panel->setupUi(panel);
    place->layout()->addWidget(panel);
    place->layout()->addWidget(m_status);
    m_amounts = new TypedInputs(
        {{{m_panel->Amount1_LBL, m_panel->Amount1_EDT},
          {m_panel->Amount2_LBL, m_panel->Amount2_EDT},
          {m_panel->Amount3_LBL, m_panel->Amount3_EDT},
          {m_panel->Amount4_LBL, m_panel->Amount4_EDT}}},
        [this](const TypedAmounts &typed, int changed) { return Recomputed(m_line.UnitType, typed, changed, m_ratio); },
        this);
    m_panel->Barcode_RD->hide();
    for (QLabel *caption : {m_panel->Good_LBL, m_panel->Store_LBL, m_panel->UnitCaption_LBL, m_panel->Unit2Caption_LBL})
        caption->setProperty("soft", true);
    connect(m_panel->MultiSerial_RD, &QRadioButton::toggled, this, &TDetailLine_FRM::ShowSerialChoice);
    BindKeyboard();
}

void TDetailLine_FRM::SetUpList(host::Grid *grid)
{
    if (auto *exit = ExitButton())
        exit->setObjectName(u"EXit_BTN"_s);
    m_empty->setText(u"<داده ای برای نمایش وجود ندارد>"_s);
    m_empty->setObjectName(u"Empty_LBL"_s);
    m_empty->setTextFormat(Qt::PlainText);
    m_empty->setProperty("soft", true);
    m_empty->setAlignment(Qt::AlignCenter);
    m_empty->setAttribute(Qt::WA_TransparentForMouseEvents);
    (new QVBoxLayout(grid->viewport()))->addWidget(m_empty);
}

void TDetailLine_FRM::ShowListEmpty(bool empty)
{
    m_empty->setVisible(empty);
}

QByteArray TDetailLine_FRM::SaveState() const
{
    QJsonObject layouts;
    for (auto layout = m_layouts.cbegin(); layout != m_layouts.cend(); ++layout)
        layouts.insert(QString::number(layout.key()), layout.value());
    layouts.insert(QString::number(UnitTypeNow()), QString::fromUtf8(PrintedGrid()->SaveLayout()));
    return QJsonDocument(layouts).toJson(QJsonDocument::Compact);
}

void TDetailLine_FRM::RestoreState(const QByteArray &state)
{
    m_layouts.clear();
    const QJsonObject layouts = QJsonDocument::fromJson(state).object();
    for (const QString &unitType : layouts.keys())
        m_layouts.insert(unitType.toInt(), layouts.value(unitType).toString());
    if (const QString layout = m_layouts.value(UnitTypeNow()); !layout.isEmpty())
        PrintedGrid()->RestoreLayout(layout.toUtf8());
}

// Opening -----------------------------------------------------------------------------------------------------------

int TDetailLine_FRM::OpenLine(const DetailLineOpening &opening)
{
    m_given = opening;
    const auto forget = qScopeGuard([this] { ForgetGiven(); });
    return Open(opening.Line.OperationCode, opening.Mode);
}

int TDetailLine_FRM::OpenText(const QVariant &key, TFormMode mode, const QString &text)
{
    m_given.reset();
    const auto forget = qScopeGuard([this] { ForgetGiven(); });
    return Open(key, mode, text);
}

/// Also when the opening did not come as far as taking it.
void TDetailLine_FRM::ForgetGiven()
{
    m_given.reset();
    m_wanted.reset();
}

void TDetailLine_FRM::Prepare()
{
    Begin();
}

void TDetailLine_FRM::Load()
{
    Begin();
}

void TDetailLine_FRM::Begin()
{
    const std::optional<DetailLineOpening> opening =
        m_given ? std::exchange(m_given, {}) : ParseOpening(ParameterText());
    if (!opening) {
        RefuseOpening(host::Warning(nullptr, u"کاربر گرامی اطلاعات سطر سند برای نمایش جزییات کالا نادرست می باشد"_s));
        return;
    }
    m_opening = *opening;
    // Two decimals make nothing of less than half a hundredth.
    if (const auto wanted = std::exchange(m_wanted, {}); wanted && *wanted > 0 && std::isfinite(*wanted))
        m_opening.Wanted = host::TAmounts{*wanted};
    m_line = m_opening.Line;
    m_result = {};
    if (!FindGood() || !FindStore())
        return;
    Inputs().Build(m_data, m_line.GoodCode, m_mode);
    Inputs().SetTabOrder(m_panel->Barcode_EDT, m_panel->Amount1_EDT);
    ShowHeader();
    m_amounts->SetUp(AmountInputsOf(m_line.UnitType, m_opening.Unit2Name));
    ClearAmounts();
    AlignCaptions();
    ShowStatus({});
    BeginLine();
    WatchChanges();
}

bool TDetailLine_FRM::FindGood()
{
    const TLineGood_Rec good = m_data.GetLineGood(m_line.GoodCode);
    if (!good.Found)
        return !RefuseOpening(host::RecordGone(u"کالا"_s));
    const auto fill = [](QString &name, const QString &known) {
        if (name.isEmpty())
            name = known;
    };
    fill(m_opening.GoodName, good.Name);
    fill(m_opening.UnitName, good.UnitName);
    fill(m_opening.Unit2Name, good.Unit2Name);
    const host::TSettingRecord &settings = m_host.settings.SettingRecord();
    m_ratio = {good.Formool, settings.IntegerUnits};
    if (m_line.UnitType < OneUnit || m_line.UnitType > Area)
        m_line.UnitType = UnitTypeOf(good, settings);
    return true;
}

bool TDetailLine_FRM::FindStore()
{
    const std::optional<QString> name = m_data.GetStoreName(m_line.StoreCode);
    if (!name)
        return !RefuseOpening(host::RecordGone(u"انبار"_s));
    if (m_opening.StoreName.isEmpty())
        m_opening.StoreName = *name;
    return true;
}

void TDetailLine_FRM::FormClose()
{
    m_given.reset();
}

QString TDetailLine_FRM::UnitName() const
{
    return m_opening.UnitName;
}

QString TDetailLine_FRM::Unit2Name() const
{
    return m_opening.Unit2Name;
}

DetailInputs &TDetailLine_FRM::Inputs() const
{
    return *m_panel->DetailTypes_FP;
}

bool TDetailLine_FRM::HasSerial() const
{
    return Inputs().SerialPlace() >= 0;
}

bool TDetailLine_FRM::HasBarcode() const
{
    return Inputs().BarcodePlace() >= 0;
}

bool TDetailLine_FRM::IsRange() const
{
    return HasSerial() && m_panel->MultiSerial_RD->isChecked();
}

QWidget *TDetailLine_FRM::FirstControl() const
{
    if (HasSerial())
        return IsRange() ? m_panel->SerialFrom_EDT : m_panel->Serial_EDT;
    if (HasBarcode())
        return m_panel->Barcode_EDT;
    return Inputs().First() ? Inputs().First() : m_panel->Amount1_EDT;
}

void TDetailLine_FRM::ShowHeader()
{
    m_panel->GoodName_LBL->setText(m_opening.GoodName);
    m_panel->StoreName_LBL->setText(m_opening.StoreName);
    m_panel->Unit_LBL->setText(m_opening.UnitName);
    m_panel->Unit2_LBL->setText(m_opening.Unit2Name);
    const bool second = m_line.UnitType >= TwoUnits && m_line.UnitType <= TotalAndPart;
    m_panel->Unit2Caption_LBL->setVisible(second);
    m_panel->Unit2_LBL->setVisible(second);
    m_panel->Serial_PNL->setVisible(HasSerial());
    m_panel->Barcode_PNL->setVisible(HasBarcode());
    m_panel->Serial_RD->setChecked(true);
    m_panel->Serial_EDT->setText({});
    m_panel->SerialFrom_EDT->setText(u"0"_s);
    m_panel->SerialTo_EDT->setText(u"0"_s);
    m_panel->Barcode_EDT->setText({});
    ShowSerialChoice();
}

/// Of the single serial and the range only the chosen one can be typed into.
void TDetailLine_FRM::ShowSerialChoice()
{
    const bool range = m_panel->MultiSerial_RD->isChecked();
    m_panel->Serial_EDT->setEnabled(!range);
    m_panel->SerialFrom_EDT->setEnabled(range);
    m_panel->SerialTo_EDT->setEnabled(range);
    if (!IsLoading() && isVisible())
        (range ? m_panel->SerialFrom_EDT : m_panel->Serial_EDT)->setFocus(Qt::OtherFocusReason);
}

void TDetailLine_FRM::BindKeyboard()
{
    const auto load = [this](const char16_t *layout) {
        if (m_host.settings.SettingRecord().AutoKeyboard)
            m_host.keyboard.LoadKeyboardLayout(QString::fromUtf16(layout));
    };
    for (QWidget *edit : std::initializer_list<QWidget *>{m_panel->Serial_EDT, m_panel->SerialFrom_EDT,
                                                          m_panel->SerialTo_EDT, m_panel->Barcode_EDT}) {
        goods::OnEnter(edit, [load] { load(host::KeyboardService::English); });
        goods::OnLeave(edit, goods::RuleTime::AtOnce, [load] { load(host::KeyboardService::Persian); });
    }
}

// Amounts -----------------------------------------------------------------------------------------------------------

/// The first input of each line begins where the others do.
void TDetailLine_FRM::AlignCaptions()
{
    const int choice = m_panel->Serial_RD->sizeHint().width() + m_panel->serialGrid->horizontalSpacing();
    int width = qMax(Inputs().CaptionWidth(), CaptionWidth(m_panel->Amount1_LBL));
    width = qMax(width, CaptionWidth(m_panel->Good_LBL));
    if (HasSerial())
        width = qMax(width, choice + CaptionWidth(m_panel->Serial_LBL));
    if (HasBarcode())
        width = qMax(width, CaptionWidth(m_panel->Barcode_LBL));
    m_panel->Serial_LBL->setMinimumWidth(qMax(0, width - choice));
    for (QLabel *caption : {m_panel->Barcode_LBL, m_panel->Amount1_LBL, m_panel->Good_LBL, m_panel->Store_LBL})
        caption->setMinimumWidth(width);
    for (QLabel *caption : {m_panel->Amount2_LBL, m_panel->Amount3_LBL, m_panel->Amount4_LBL, m_panel->SerialFrom_LBL,
                            m_panel->SerialTo_LBL})
        caption->setMinimumWidth(CaptionWidth(caption));
    Inputs().SetCaptionWidth(width);
}

host::TAmounts TDetailLine_FRM::Amounts()
{
    m_amounts->Take();
    return AmountsOf(m_line.UnitType, m_amounts->Typed(), m_ratio);
}

void TDetailLine_FRM::ShowAmounts(const host::TAmounts &amounts)
{
    m_amounts->Show(TypedOf(m_line.UnitType, amounts, m_ratio));
}

void TDetailLine_FRM::ClearAmounts()
{
    m_amounts->Show({});
}

host::Refused TDetailLine_FRM::AmountMissing()
{
    m_amounts->Take();
    for (const AmountInput &input : m_amounts->Layout()) {
        const bool second = m_line.UnitType == TwoUnits && input.Part == AmountPart::Amount2;
        if (second || input.Part == AmountPart::Big || input.Part == AmountPart::Small)
            continue;
        host::NumericEdit *edit = m_amounts->Edit(input.Part);
        if (edit->Number() <= 0)
            return host::Refusal{edit, [caption = PlainCaption(input.Caption)](host::MessageService &messages) {
                                     messages.NotZeroValue(caption);
                                 }};
    }
    return {};
}

// Rows --------------------------------------------------------------------------------------------------------------

int TDetailLine_FRM::TitleWidth(const QString &title, int least) const
{
    return qMax(least, fontMetrics().horizontalAdvance(title) + TitleMargin);
}

QList<host::GridColumn> TDetailLine_FRM::DetailColumns() const
{
    QList<host::GridColumn> columns;
    for (int place = 0; place < host::MostDetails; ++place) {
        const TGoodDetailData &data = Inputs().Data(place);
        const QString title = place == Inputs().SerialPlace()    ? u"سریال"_s
                              : place == Inputs().BarcodePlace() ? u"بارکد"_s
                              : data.Found                       ? data.Title
                                                                 : u"جزییات %1"_s.arg(place + 1);
        const bool identity = place == Inputs().SerialPlace() || place == Inputs().BarcodePlace();
        const int width = identity ? IdentityWidth : TitleWidth(title, DetailWidth);
        columns << host::GridColumn{u"DetailTitle%1"_s.arg(place + 1), title,     width, !data.Found,
                                    host::ColumnFormat::Text,          data.Found};
    }
    return columns;
}

QList<host::GridColumn> TDetailLine_FRM::AmountColumns(const QString &suffix, const QString &ending) const
{
    QList<host::GridColumn> columns;
    for (const AmountColumn &column : AmountColumnsOf(m_line.UnitType, m_opening.UnitName, m_opening.Unit2Name))
        columns << host::GridColumn{column.Field + suffix, column.Title + ending,
                                    TitleWidth(column.Title + ending, AmountWidth), false, host::ColumnFormat::Amount};
    return columns;
}

host::TAmounts TDetailLine_FRM::AmountsAt(const host::Dataset &rows, const QString &suffix)
{
    const auto amount = [&](const char16_t *field) { return rows.QuantityField(QString::fromUtf16(field) + suffix); };
    return {amount(u"Amount1"), amount(u"Amount2"), amount(u"TotalAmount"),
            amount(u"Length"),  amount(u"Width"),   amount(u"Amount3")};
}

void TDetailLine_FRM::ShowTotals(const DetailLineResult &result)
{
    m_result = result;
    const auto number = [](host::Quantity amount) { return host::DisplayAmount(amount); };
    const host::Quantity sum = result.Amounts.Amount1;
    QString text = u"سطرها: %1    مقدار: %2"_s.arg(number(result.Rows), number(sum));
    bool over = false;
    if (m_opening.Wanted) {
        const host::Quantity wanted = m_opening.Wanted->Amount1;
        const host::Quantity left = goods::RoundedQuantity(wanted - sum);
        over = left < 0;
        text += u" از "_s + number(wanted);
        if (left != 0)
            text += (left > 0 ? u"    مانده: %1"_s : u"    اضافه: %1"_s).arg(number(left < 0 ? -left : left));
    }
    if (m_line.UnitType == TwoUnits || m_line.UnitType == Packed)
        text += u"    %1: %2"_s.arg(m_opening.Unit2Name, number(result.Amounts.Amount2));
    else if (m_line.UnitType == Area)
        text += u"    تعداد: %1"_s.arg(number(result.Amounts.Amount3));
    m_totals->setText(text);
    m_totals->setProperty("fault", over);
    host::theme::Repolish(m_totals);
}

QString TDetailLine_FRM::Listed(const QStringList &serials)
{
    const QString more = serials.size() > MostTold ? u" …"_s : QString();
    return serials.mid(qMax(qsizetype(0), serials.size() - MostTold)).join(u"، ") + more;
}

bool TDetailLine_FRM::Tell(const host::Refused &refused)
{
    if (refused)
        KeepScans([&] { Refuse(refused); });
    return refused.has_value();
}

void TDetailLine_FRM::ShowError(const QString &text, const QString &caption)
{
    KeepScans([&] { TBaseGet_FRM::ShowError(text, caption); });
}

void TDetailLine_FRM::KeepScans(const std::function<void()> &message)
{
    ScanKeeper::Over(this, message,
                     [this](const QStringList &scans, const QString &begun) { TakeScans(scans, begun); });
}

void TDetailLine_FRM::GoOn(QLineEdit *edit, const QString &begun)
{
    if (begun.isEmpty())
        return;
    edit->setText(begun);
    edit->setModified(true);
    edit->setFocus(Qt::OtherFocusReason);
    edit->end(false);
}

void TDetailLine_FRM::ShowStatus(const QString &text, bool fault)
{
    m_status->setText(text.isEmpty() ? text : QChar(0x200f) + text); // may begin with a serial
    m_status->setVisible(!text.isEmpty());
    m_status->setProperty("fault", fault);
    host::theme::Repolish(m_status);
}

} // namespace good_detail
