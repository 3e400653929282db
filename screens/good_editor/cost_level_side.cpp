#include "screens/good_editor/cost_level_side.h"

#include "host/controls/grid.h"
#include "host/data/database_error.h"
#include "host/screens/theme.h"
#include "screens/good_editor/leave_watch.h"
#include "screens/good_editor/price_delegate.h"

#include <QtGui/QKeyEvent>
#include <QtWidgets/QApplication>
#include <QtWidgets/QComboBox>
#include <QtWidgets/QHeaderView>
#include <QtWidgets/QLabel>

namespace {

/// Behind the grid's column of marks and the name of the level.
constexpr int PriceColumn = 2;
constexpr double HintPoints = 10;

} // namespace

CostLevelSide::Operations CostLevelSide::Sell()
{
    return {&TGood_DM::SellDetails_QRY,       &TGood_DM::CostLevel_Sell_GetAll, &TGood_DM::CostLevel_Sell_View,
            &TGood_DM::CostLevel_Sell_Fill,   &TGood_DM::CostLevel_Sell_Update, &TGood_DM::CostLevel_Sell_NotSelect,
            &TGood_DM::CostLevel_Sell_Restore};
}

CostLevelSide::Operations CostLevelSide::Buy()
{
    return {&TGood_DM::BuyDetails_QRY,       &TGood_DM::CostLevel_Buy_GetAll, &TGood_DM::CostLevel_Buy_View,
            &TGood_DM::CostLevel_Buy_Fill,   &TGood_DM::CostLevel_Buy_Update, &TGood_DM::CostLevel_Buy_NotSelect,
            &TGood_DM::CostLevel_Buy_Restore};
}

CostLevelSide::CostLevelSide(const Operations &operations, TGood_DM &data, host::Grid *grid, QComboBox *defaultLevel,
                             QLabel *hint, goods::Boundary run, QObject *parent)
    : QObject(parent), operations_(operations), data_(data), grid_(grid), default_(defaultLevel), hint_(hint),
      hintText_(hint->text()), run_(std::move(run))
{
    grid_->SetColumns({{QStringLiteral("Name"), QStringLiteral("سطح قیمت"), 122},
                       {QStringLiteral("Cost"), QStringLiteral("قیمت"), 115, false, host::ColumnFormat::Price},
                       {QStringLiteral("deftitle"), QStringLiteral("پیش فرض"), 74}});
    grid_->SetSource(&Rows(), QStringLiteral("CostLevelCode"));
    grid_->horizontalHeader()->setStretchLastSection(true);
    connect(default_, &QComboBox::activated, this, [this] { run_([this] { ChooseDefault(); }); });
    auto *prices = new PriceDelegate(grid_);
    grid_->setItemDelegateForColumn(PriceColumn, prices);
    SetReadOnly(false);
    hint_->setFont(host::theme::InterfaceFont(HintPoints));
    connect(prices, &PriceDelegate::Entered, this, &CostLevelSide::NextPrice);
    connect(grid_, &host::Grid::RowActivated, this, [this] { EditPrice(grid_->currentIndex().row()); });
    connect(&Rows(), &host::Dataset::FieldChanged, this, &CostLevelSide::Changed);
    connect(&Rows(), &host::Dataset::Failed, this,
            [this](const QString &text) { run_([text] { throw host::DatabaseError(text); }); });
    // Later, because a grid that is still moving cannot be sent back.
    connect(grid_, &host::Grid::CurrentKeyChanged, this, &CostLevelSide::PostLeftRow, Qt::QueuedConnection);
    grid_->installEventFilter(this);
    goods::OnEnter(grid_, [this] { StandOnPrice(grid_->currentIndex().row()); });
    goods::OnLeave(grid_, goods::RuleTime::Afterwards, [this] {
        // The editor of a cell belongs to the grid.
        if (!grid_->isAncestorOf(QApplication::focusWidget()))
            run_([this] { Post(); });
    });
}

void CostLevelSide::Open(int goodCode, host::TFormMode mode)
{
    if (mode == host::TFormMode::Review) {
        (data_.*operations_.View)(goodCode);
        ShowHint();
    } else {
        MoveTo(goodCode);
    }
    QList<host::Entity> levels;
    const int chosen = (data_.*operations_.Fill)(levels, goodCode);
    default_->clear();
    for (const host::Entity &level : levels)
        default_->addItem(level.Name, level.Code);
    default_->setCurrentIndex(chosen);
    defaultStored_ = true;
}

void CostLevelSide::MoveTo(int goodCode)
{
    good_ = goodCode;
    (data_.*operations_.GetAll)(goodCode);
    ShowHint();
}

void CostLevelSide::ShowHint()
{
    // A good that came from elsewhere has no price row; its first save makes one.
    hint_->setText(Rows().IsEmpty()
                       ? QStringLiteral("این کالا هنوز ردیف قیمت ندارد؛ پس از ذخیره می توانید قیمت ها را وارد کنید.")
                       : hintText_);
}

void CostLevelSide::SetReadOnly(bool readOnly)
{
    // Without working prices there is nothing to mark as the default.
    default_->setEnabled(!readOnly && !Rows().IsEmpty());
    grid_->setEditTriggers(readOnly ? QAbstractItemView::NoEditTriggers
                                    : QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                                          QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed);
}

void CostLevelSide::StandOnPrice(int row)
{
    grid_->setCurrentIndex(grid_->model()->index(qMax(row, 0), PriceColumn));
}

void CostLevelSide::EditPrice(int row)
{
    StandOnPrice(row);
    if (grid_->editTriggers() != QAbstractItemView::NoEditTriggers && grid_->currentIndex().isValid())
        grid_->edit(grid_->currentIndex());
}

void CostLevelSide::NextPrice()
{
    const int next = grid_->currentIndex().row() + 1;
    run_([this] { Post(); });
    if (Rows().IsEditing())
        StandOnPrice(next - 1); // the price is still to be written, Enter tries again
    else if (next < grid_->RowCount())
        EditPrice(next);
    else
        default_->setFocus(Qt::TabFocusReason);
}

void CostLevelSide::PostLeftRow()
{
    const int typed = Rows().CurrentRow();
    if (!Rows().IsEditing() || grid_->CurrentSourceRow() == typed)
        return;
    run_([this] { Post(); });
    if (Rows().IsEditing())
        StandOnPrice(typed);
}

bool CostLevelSide::eventFilter(QObject *watched, QEvent *event)
{
    // A grid takes typed characters into a cell by itself, a pasted price only this way.
    if (watched == grid_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::Paste)) {
        EditPrice(grid_->currentIndex().row());
        if (QWidget *editor = grid_->indexWidget(grid_->currentIndex()))
            QCoreApplication::sendEvent(editor, event);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void CostLevelSide::Post()
{
    if (Rows().IsEditing())
        PostPrice();
    if (!defaultStored_)
        StoreDefault();
}

void CostLevelSide::PostPrice()
{
    try {
        Rows().Post();
    } catch (const host::DatabaseError &) {
        // Another desk may have cleared the working rows; what this one shows takes their place.
        if (!(data_.*operations_.Restore)(good_))
            throw;
    }
}

void CostLevelSide::ChooseDefault()
{
    defaultStored_ = false;
    emit Changed();
    Post();
}

void CostLevelSide::StoreDefault()
{
    (data_.*operations_.Restore)(good_);
    (data_.*operations_.Update)(good_, default_->currentData().toInt());
    defaultStored_ = true;
    (data_.*operations_.GetAll)(good_);
}

goods::Refused CostLevelSide::CheckDefault() const
{
    const int level = default_->currentData().toInt();
    if (level == 0 || !(data_.*operations_.NotSelect)(level))
        return {};
    return goods::RequiredField(grid_, QStringLiteral("قيمت سطح پيش فرض"));
}
