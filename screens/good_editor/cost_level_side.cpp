#include "screens/good_editor/cost_level_side.h"

#include "host/controls/grid.h"
#include "host/data/database_error.h"
#include "host/look/theme.h"
#include "screens/good_editor/price_delegate.h"
#include "screens/shared/leave_watch.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>

using namespace Qt::StringLiterals;

namespace {

/// Behind the grid's column of marks and the name of the level.
constexpr int PriceColumn = 2;
constexpr double HintPoints = 10;

} // namespace

CostLevelSide::CostLevelSide(goods::Prices::Side side, goods::Prices &data, host::Grid *grid, QComboBox *defaultLevel,
                             QLabel *hint, host::Boundary run, QObject *parent)
    : QObject(parent), m_side(side), m_data(data), m_grid(grid), m_default(defaultLevel), m_hint(hint),
      m_hintText(hint->text()), m_run(std::move(run))
{
    m_grid->SetColumns({{u"Name"_s, u"سطح قیمت"_s, 122},
                        {u"Cost"_s, u"قیمت"_s, 115, false, host::ColumnFormat::Price},
                        {u"deftitle"_s, u"پیش فرض"_s, 74}});
    m_grid->SetSource(&Rows(), u"CostLevelCode"_s);
    m_grid->horizontalHeader()->setStretchLastSection(true);
    connect(m_default, &QComboBox::activated, this, [this] { m_run([this] { ChooseDefault(); }); });
    auto *prices = new PriceDelegate(m_grid);
    m_grid->setItemDelegateForColumn(PriceColumn, prices);
    SetReadOnly(false);
    m_hint->setFont(host::theme::InterfaceFont(HintPoints));
    connect(prices, &PriceDelegate::Entered, this, &CostLevelSide::NextPrice);
    connect(m_grid, &host::Grid::RowActivated, this, [this] { EditPrice(m_grid->currentIndex().row()); });
    connect(&Rows(), &host::Dataset::FieldChanged, this, &CostLevelSide::Changed);
    connect(&Rows(), &host::Dataset::Failed, this,
            [this](const QString &text) { m_run([text] { throw host::DatabaseError(text); }); });
    // Later, because a grid that is still moving cannot be sent back.
    connect(m_grid, &host::Grid::CurrentKeyChanged, this, &CostLevelSide::PostLeftRow, Qt::QueuedConnection);
    m_grid->installEventFilter(this);
    goods::OnEnter(m_grid, [this] { StandOnPrice(m_grid->currentIndex().row()); });
    goods::OnLeave(m_grid, goods::RuleTime::Afterwards, [this] {
        // The editor of a cell belongs to the grid.
        if (!m_grid->isAncestorOf(QApplication::focusWidget()))
            m_run([this] { Post(); });
    });
}

void CostLevelSide::Open(int goodCode, host::TFormMode mode)
{
    if (mode == host::TFormMode::Review) {
        m_good = goodCode;
        m_data.CostLevel_View(m_side, goodCode);
        ShowHint();
    } else {
        MoveTo(goodCode);
    }
    m_default->setCurrentIndex(FillLevels());
    m_defaultStored = true;
}

int CostLevelSide::FillLevels()
{
    QList<host::Entity> levels;
    const int own = m_data.CostLevel_Fill(m_side, levels, m_good);
    m_default->clear();
    for (const host::Entity &level : levels)
        m_default->addItem(level.Name, level.Code);
    return own;
}

void CostLevelSide::ReloadTitles()
{
    m_grid->CommitTyped();
    Post();
    const QSignalBlocker quiet(m_default);
    const int row = m_grid->currentIndex().row();
    const QVariant level = m_default->currentData();
    m_data.CostLevel_GetAll(m_side, m_good);
    if (row >= 0)
        StandOnPrice(row);
    FillLevels();
    m_default->setCurrentIndex(m_default->findData(level));
}

void CostLevelSide::MoveTo(int goodCode)
{
    m_good = goodCode;
    m_data.CostLevel_GetAll(m_side, goodCode);
    ShowHint();
}

void CostLevelSide::ShowHint()
{
    // A good that came from elsewhere has no price row; its first save makes one.
    m_hint->setText(Rows().IsEmpty() ? u"این کالا هنوز ردیف قیمت ندارد؛ پس از ذخیره می توانید قیمت ها را وارد کنید."_s
                                     : m_hintText);
}

void CostLevelSide::SetReadOnly(bool readOnly)
{
    // Without working prices there is nothing to mark as the default.
    m_default->setEnabled(!readOnly && !Rows().IsEmpty());
    m_grid->setEditTriggers(readOnly ? QAbstractItemView::NoEditTriggers
                                     : QAbstractItemView::DoubleClicked | QAbstractItemView::SelectedClicked |
                                           QAbstractItemView::AnyKeyPressed | QAbstractItemView::EditKeyPressed);
}

void CostLevelSide::StandOnPrice(int row)
{
    m_grid->setCurrentIndex(m_grid->model()->index(qMax(row, 0), PriceColumn));
}

void CostLevelSide::EditPrice(int row)
{
    StandOnPrice(row);
    if (m_grid->editTriggers() != QAbstractItemView::NoEditTriggers && m_grid->currentIndex().isValid())
        m_grid->edit(m_grid->currentIndex());
}

void CostLevelSide::NextPrice()
{
    const int next = m_grid->currentIndex().row() + 1;
    m_run([this] { Post(); });
    if (Rows().IsEditing())
        StandOnPrice(next - 1); // the price is still to be written, Enter tries again
    else if (next < m_grid->RowCount())
        EditPrice(next);
    else
        m_default->setFocus(Qt::TabFocusReason);
}

void CostLevelSide::PostLeftRow()
{
    const int typed = Rows().CurrentRow();
    if (!Rows().IsEditing() || m_grid->CurrentSourceRow() == typed)
        return;
    m_run([this] { Post(); });
    if (Rows().IsEditing())
        StandOnPrice(typed);
}

bool CostLevelSide::eventFilter(QObject *watched, QEvent *event)
{
    // A grid takes typed characters into a cell by itself, a pasted price only this way.
    if (watched == m_grid && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent *>(event)->matches(QKeySequence::Paste)) {
        EditPrice(m_grid->currentIndex().row());
        if (QWidget *editor = m_grid->indexWidget(m_grid->currentIndex()))
            QCoreApplication::sendEvent(editor, event);
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void CostLevelSide::Post()
{
    if (Rows().IsEditing())
        PostPrice();
    if (!m_defaultStored)
        StoreDefault();
}

void CostLevelSide::PostPrice()
{
    try {
        Rows().Post();
    } catch (const host::DatabaseError &) {
        // Another desk may have cleared the working rows; what this one shows takes their place.
        if (!m_data.CostLevel_Restore(m_side, m_good))
            throw;
    }
}

void CostLevelSide::ChooseDefault()
{
    m_defaultStored = false;
    emit Changed();
    Post();
}

void CostLevelSide::StoreDefault()
{
    m_data.CostLevel_Restore(m_side, m_good);
    m_data.CostLevel_Update(m_side, m_good, m_default->currentData().toInt());
    m_defaultStored = true;
    m_data.CostLevel_GetAll(m_side, m_good);
}

host::Refused CostLevelSide::CheckDefault() const
{
    const int level = m_default->currentData().toInt();
    if (level == 0 || !m_data.CostLevel_NotSelect(m_side, level))
        return {};
    return host::Required(m_grid, u"قيمت سطح پيش فرض"_s);
}
