#include "division/division_items.h"

#include "division/division_dm.h"
#include "division/division_save.h"
#include "division/part_entry.h"
#include "gooddetail/opening_texts.h"
#include "host/controls/grid.h"
#include "host/controls/number_text.h"
#include "host/controls/numeric_edit.h"
#include "host/data/transaction.h"
#include "host/look/theme.h"
#include "rules/unit_arithmetic.h"
#include "screens/shared/leave_watch.h"
#include "ui_division_items.h"

#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

using host::ColumnFormat;
using host::GridColumn;
using host::Refused;
using host::TFormMode;

namespace {

QString Named(const QString &caption, const QString &unit)
{
    return caption + u" ("_s + unit + u')';
}

QString Amount(host::Quantity amount, const QString &unit)
{
    return host::DisplayAmount(amount) + u' ' + unit;
}

} // namespace

TGoodDetailDivision_DetailItems_Get_FRM::TGoodDetailDivision_DetailItems_Get_FRM(host::Host &host)
    : TBaseGet_FRM(host, host::TSoftwarePart::GoodDetailDivision),
      m_form(std::make_unique<Ui::TGoodDetailDivision_DetailItems_Get_FRM>()), m_row(host), m_totals(new QLabel(this))
{
    setObjectName(u"TGoodDetailDivision_DetailItems_Get_FRM"_s);
    m_form->setupUi(Content());
    m_first = good_detail::ShownAmount(m_form->Amount_3_EDT);
    m_second = good_detail::ShownAmount(m_form->Amount_5_EDT);
    SetTitle(u"تقسیم جزئیات کالا"_s);
    SetDiscardQuestion(u"قطعه های وارد شده نگهداری نمی شود. آیا بدون ذخیره خارج می شوید؟"_s);
    m_totals->setObjectName(u"Totals_LBL"_s);
    m_totals->setTextFormat(Qt::PlainText);
    AdoptFooter(m_totals);
    for (QLabel *caption : {m_form->StoreCaption_LBL, m_form->GoodCodeCaption_LBL, m_form->GoodNameCaption_LBL,
                            m_form->GoodDetailCaption_LBL, m_form->MojodiCaption_LBL, m_form->MeasureCaption_LBL})
        caption->setProperty("soft", true);
    m_form->GoodName_LBL->setWordWrap(true);
    m_form->GoodDetail_LBL->setWordWrap(true);
    m_entry = new division::PartEntry({{{m_form->Amount1_LBL, m_form->Amount1_EDT},
                                        {m_form->Amount2_LBL, m_form->Amount2_EDT},
                                        {m_form->Amount3_LBL, m_form->Amount3_EDT},
                                        {m_form->Amount4_LBL, m_form->Amount4_EDT}}},
                                      this);
    BindCount();
    BindParts();
}

TGoodDetailDivision_DetailItems_Get_FRM::~TGoodDetailDivision_DetailItems_Get_FRM()
{
    m_form->GoodDetailDivisionDetailItems_GRD->SetSource(nullptr);
}

void TGoodDetailDivision_DetailItems_Get_FRM::BindCount()
{
    const host::RuleRunner run = [this](const std::function<Refused()> &rule) {
        Command(Title(), [&] { Refuse(rule()); });
    };
    goods::OnChanged(m_form->Amount_3_EDT, goods::RuleTime::Afterwards, run, [this] {
        ComputeSecond();
        return CheckCount(m_form->Amount_5_EDT->isHidden());
    });
    goods::OnChanged(m_form->Amount_5_EDT, goods::RuleTime::Afterwards, run, [this] { return CheckCount(true); });
    for (host::NumericEdit *edit : {m_form->Amount_3_EDT, m_form->Amount_5_EDT})
        connect(edit, &QLineEdit::textEdited, this, [this] {
            ShowTotals();
            ShowCut();
        });
}

void TGoodDetailDivision_DetailItems_Get_FRM::BindParts()
{
    host::Grid *grid = m_form->GoodDetailDivisionDetailItems_GRD;
    Bind(m_form->SaveRow_BTN, QKeySequence(Qt::Key_F4), [this] { SavePart(); });
    Bind(m_form->Rest_BTN, QKeySequence(Qt::Key_F6), [this] { ProposeRest(); });
    Bind(m_form->Cancel_BTN, {}, [this] { Cancel(); });
    Bind(m_form->EditDetail_BTN, QKeySequence(Qt::Key_F2), [this] { EditPart(); });
    Bind(m_form->DeleteDetail_BTN, {}, [this] { DeletePart(); });
    Bind(m_form->DeleteAllDetail_BTN, {}, [this] { DeleteAll(); });
    connect(grid, &host::Grid::RowActivated, m_form->EditDetail_BTN, &QPushButton::click);
    connect(grid, &host::Grid::CurrentKeyChanged, this,
            [this] { m_form->Cut_VIEW->SetCurrent(CurrentPart() == 0 ? -1 : CurrentPart()); });
    connect(m_entry, &division::PartEntry::Edited, this, [this] { ShowCut(); });
    connect(m_form->Waste_CHK, &QCheckBox::clicked, this, [this] { ShowCut(); });
}

// Opening -----------------------------------------------------------------------------------------------------------

int TGoodDetailDivision_DetailItems_Get_FRM::OpenRow(const DivisionRowOpening &opening)
{
    m_given = opening;
    const auto forget = qScopeGuard([this] { m_given.reset(); });
    return Open(opening.DivisionRow, opening.Mode);
}

int TGoodDetailDivision_DetailItems_Get_FRM::OpenText(const QString &text)
{
    m_given.reset();
    return Open({}, TFormMode::New, text);
}

void TGoodDetailDivision_DetailItems_Get_FRM::Prepare()
{
    const std::optional<DivisionRowOpening> opening = m_given ? std::exchange(m_given, {}) : OnItsOwn();
    if (opening)
        Begin(*opening);
    else
        RefuseOpening(host::Warning(nullptr, u"کاربر گرامی اطلاعات تقسیم جزئیات کالا نادرست می باشد"_s));
}

void TGoodDetailDivision_DetailItems_Get_FRM::Load()
{
    Prepare();
}

/// The division of the opening text, under a code that is reserved until the screen closes.
std::optional<DivisionRowOpening> TGoodDetailDivision_DetailItems_Get_FRM::OnItsOwn()
{
    const auto told = good_detail::ParseDivisionItems(ParameterText());
    if (!told)
        return std::nullopt;
    m_own = std::make_unique<TDivision_DM>(m_host);
    m_ownCode = m_own->NewCode();
    return DivisionRowOpening{m_ownCode,        m_own->NextRow(), told->Numbers[0],
                              told->Numbers[1], told->Numbers[2], TFormMode::New};
}

void TGoodDetailDivision_DetailItems_Get_FRM::Begin(const DivisionRowOpening &opening)
{
    m_edited = 0;
    m_countError = false;
    if (!m_row.Open(opening)) {
        RefuseOpening(host::Warning(nullptr, u"کاربر گرامی از این جزئیات موجودی برای تقسیم وجود ندارد"_s));
        return;
    }
    ShowSource();
    ShowCaptions();
    ShowColumns();
    m_entry->SetUp(m_row.UnitType(), m_row.Good().Unit2Name, m_row.Ratio());
    m_form->Waste_CHK->setChecked(false);
    m_form->Comment_EDT->setText(m_row.Row().Comment);
    ProposeCount();
    ShowEdited(0);
    ShowParts();
}

void TGoodDetailDivision_DetailItems_Get_FRM::ShowSource()
{
    const host::TDivisionRow &row = m_row.Row();
    const TLineGood_Rec &good = m_row.Good();
    const host::TAmounts &onHand = row.Source.OnHand;
    m_form->Store_LBL->setText(row.StoreName);
    m_form->GoodCode_LBL->setText(host::DisplayNumber(QString::number(row.Source.GoodCode), false));
    m_form->GoodName_LBL->setText(good.Name);
    m_form->GoodDetail_LBL->setText(row.Source.GoodDetail);
    QString stock = Amount(onHand.Amount1, good.UnitName);
    const bool packed = m_row.UnitType() == good_detail::Packed;
    const bool area = m_row.UnitType() == good_detail::Area;
    if (packed || m_row.UnitType() == good_detail::TwoUnits)
        stock += u"، "_s + Amount(onHand.Amount2, good.Unit2Name);
    else if (area)
        stock += u"، "_s + Amount(onHand.Amount3, u"قطعه"_s);
    m_form->Mojodi_LBL->setText(stock);
    QString caption;
    QString measure;
    if (packed) {
        caption = Named(u"هر "_s + good.Unit2Name, good.UnitName) + u" :"_s;
        measure = host::DisplayAmount(onHand.Amount3);
    } else if (area) {
        caption = u"طول :"_s;
        measure = host::DisplayAmount(onHand.Length) + u"      عرض : "_s + host::DisplayAmount(onHand.Width) +
                  u"  ("_s + good.UnitName + u')';
    }
    m_form->MeasureCaption_LBL->setText(caption);
    m_form->Measure_LBL->setText(measure);
}

void TGoodDetailDivision_DetailItems_Get_FRM::ShowCaptions()
{
    const TLineGood_Rec &good = m_row.Good();
    const int unitType = m_row.UnitType();
    const bool packed = unitType == good_detail::Packed;
    const bool counted = packed || unitType == good_detail::Area;
    m_form->Amount_3_LBL->setText(packed    ? Named(u"تعداد"_s, good.Unit2Name) + u" :"_s
                                  : counted ? u"تعداد :"_s
                                            : u"مقدار &کل :"_s);
    const bool second = unitType == good_detail::TwoUnits;
    m_form->Amount_5_LBL->setVisible(second);
    m_form->Amount_5_EDT->setVisible(second);
    m_form->TotalCaption_LBL->setText(Named(u"مقدار کل"_s, counted ? good.UnitName : good.Unit2Name) + u" :"_s);
    const bool total = counted || unitType == good_detail::TotalAndPart;
    m_form->TotalCaption_LBL->setVisible(total);
    m_form->Amount_4_LBL->setVisible(total);
    m_form->Waste_CHK->setVisible(m_host.settings.SettingRecord().DivisionWaste);
}

void TGoodDetailDivision_DetailItems_Get_FRM::ShowColumns()
{
    const TLineGood_Rec &good = m_row.Good();
    const int unitType = m_row.UnitType();
    const auto column = [](const QString &field, const QString &caption) {
        return GridColumn{field, caption, 90, false, ColumnFormat::Amount};
    };
    QList<GridColumn> columns;
    if (unitType == good_detail::Packed) {
        columns = {column(u"Amount3"_s, Named(u"هر "_s + good.Unit2Name, good.UnitName)),
                   column(u"Amount2"_s, Named(u"تعداد"_s, good.Unit2Name)),
                   column(u"Amount1"_s, Named(u"مقدار"_s, good.UnitName))};
    } else {
        if (unitType == good_detail::Area)
            columns = {column(u"Length"_s, u"طول"_s), column(u"Width"_s, u"عرض"_s)};
        columns << column(u"Amount3"_s, u"تعداد"_s);
        if (unitType == good_detail::TwoUnits)
            columns << column(u"Amount2"_s, u"مقدار2"_s);
        columns << column(u"Amount1"_s, u"مقدار"_s);
    }
    columns << GridColumn{u"Waste"_s, u"ضایعات"_s, 70, true, ColumnFormat::Flag};
    host::Grid *grid = m_form->GoodDetailDivisionDetailItems_GRD;
    grid->SetSource(nullptr);
    grid->SetColumns(columns);
    grid->SetSource(&m_row.Parts_QRY, u"OperationRow"_s);
}

/// What was taken; of a new row one piece, or all there is where nothing is counted. A proposal counts as typed: it is
/// checked when the user goes on.
void TGoodDetailDivision_DetailItems_Get_FRM::ProposeCount()
{
    goods::UnitAmounts count = division::TypedTaken(m_row.UnitType(), m_row.Row().Taken);
    const goods::DividedStock stock = m_row.Stock();
    if (m_row.IsNew()) {
        const bool counted = stock.by == goods::DividedBy::Packages || stock.by == goods::DividedBy::Area;
        count = counted ? goods::UnitAmounts{qMin<goods::Quantity>(1, stock.piece.count), 0} : stock.onHand;
    }
    m_first.Show(count.first);
    m_second.Show(count.second);
    m_form->Amount_3_EDT->setModified(m_row.IsNew());
    for (host::NumericEdit *edit : {m_form->Amount_3_EDT, m_form->Amount_5_EDT}) {
        edit->setProperty("fault", false);
        host::theme::Repolish(edit);
    }
}

QWidget *TGoodDetailDivision_DetailItems_Get_FRM::FirstControl() const
{
    return m_form->Amount_3_EDT;
}

host::Grid *TGoodDetailDivision_DetailItems_Get_FRM::PrintedGrid() const
{
    return m_form->GoodDetailDivisionDetailItems_GRD;
}

// Accepting ---------------------------------------------------------------------------------------------------------

void TGoodDetailDivision_DetailItems_Get_FRM::BeforeChecks()
{
    if (m_form->Amount_3_EDT->isModified())
        ComputeSecond();
    m_entry->Take();
}

std::vector<host::Check> TGoodDetailDivision_DetailItems_Get_FRM::Validate()
{
    return {
        {u"Count"_s, [this] { return CheckCount(true); }},
        {u"AllDivided"_s,
         [this] {
             return host::When(
                 !goods::IsDivided(Total(), m_row.Sum()),
                 host::Warning(m_entry->First(), u"کاربر گرامی مقدار وارد شده از جمع مقادیر تقسیم شده کمتر می باشد"_s));
         }},
        {u"NothingHalfTyped"_s, [this] { return host::When(m_edited != 0 || m_entry->IsTyped(), HalfTyped()); }},
    };
}

void TGoodDetailDivision_DetailItems_Get_FRM::Write()
{
    host::Transaction transaction(m_host.DM.ADOConnection1);
    m_row.Keep(CountTyped(), m_form->Comment_EDT->text().trimmed());
    if (m_own)
        division::Save(m_host, {m_ownCode, m_host.clock.NowShamsiDate(), {}, 0}, TFormMode::New);
    transaction.Commit();
    SetKey(m_row.Row().OperationRow);
}

/// After OK there is nothing left to be forgotten of the row; what was typed otherwise goes.
void TGoodDetailDivision_DetailItems_Get_FRM::FormClose()
{
    m_given.reset();
    const std::unique_ptr<TDivision_DM> own = std::exchange(m_own, nullptr);
    m_row.GiveUp();
    if (own)
        own->Leave(std::exchange(m_ownCode, 0));
    TBaseGet_FRM::FormClose();
}

bool TGoodDetailDivision_DetailItems_Get_FRM::FormKeyDown(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool last = focusWidget() == m_entry->Last() || focusWidget() == m_form->Waste_CHK;
    if (enter && !(event->modifiers() & ~Qt::KeypadModifier) && last) {
        Command(m_form->SaveRow_BTN->text(), [this] { SavePart(); });
        return true;
    }
    if (event->key() == Qt::Key_Delete && focusWidget() == m_form->GoodDetailDivisionDetailItems_GRD) {
        m_form->DeleteDetail_BTN->click();
        return true;
    }
    return TBaseGet_FRM::FormKeyDown(event);
}
