#include "screens/goods_import/column_choices.h"

#include "host/controls/grid.h"

#include <QComboBox>
#include <QEvent>
#include <QHeaderView>
#include <QScrollBar>

using namespace Qt::StringLiterals;

using goods::ImportField;

namespace goods_import {

namespace {

int Number(ImportField field)
{
    return static_cast<int>(field);
}

} // namespace

ColumnChoices::ColumnChoices(QWidget *parent) : QWidget(parent)
{
    setFixedHeight(QComboBox().sizeHint().height() + 4);
}

void ColumnChoices::SetGrid(host::Grid *grid, int firstSection)
{
    m_grid = grid;
    m_firstSection = firstSection;
    const QHeaderView *header = grid->horizontalHeader();
    for (const auto signal : {&QHeaderView::sectionResized, &QHeaderView::sectionMoved})
        connect(header, signal, this, &ColumnChoices::Place);
    connect(header, &QHeaderView::geometriesChanged, this, &ColumnChoices::Place);
    connect(grid->horizontalScrollBar(), &QScrollBar::valueChanged, this, &ColumnChoices::Place);
}

void ColumnChoices::SetColumns(const QStringList &captions, const QList<goods::ImportFieldInfo> &fields,
                               const QList<ImportField> &chosen)
{
    qDeleteAll(m_combos);
    m_combos.clear();
    for (int column = 0; column < captions.size(); ++column) {
        auto *combo = new QComboBox(this);
        combo->setObjectName(u"Column%1_CMB"_s.arg(column + 1));
        combo->setAccessibleName(captions.at(column));
        combo->setToolTip(captions.at(column).toHtmlEscaped());
        combo->addItem(u"— نادیده —"_s, Number(ImportField::None));
        for (const goods::ImportFieldInfo &info : fields)
            combo->addItem(info.caption, Number(info.field));
        combo->setCurrentIndex(qMax(0, combo->findData(Number(chosen.value(column)))));
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->installEventFilter(this);
        connect(combo, &QComboBox::activated, this, [this, column] {
            TakeFromOthers(column);
            emit Chose(column);
        });
        combo->show();
        m_combos << combo;
    }
    Place();
}

void ColumnChoices::TakeFromOthers(int column)
{
    const QVariant field = m_combos.at(column)->currentData();
    for (int other = 0; other < m_combos.size(); ++other)
        if (other != column && field.toInt() != 0 && m_combos.at(other)->currentData() == field)
            m_combos.at(other)->setCurrentIndex(0);
}

QList<QWidget *> ColumnChoices::TabStops() const
{
    return QList<QWidget *>(m_combos.cbegin(), m_combos.cend());
}

QList<ImportField> ColumnChoices::Chosen() const
{
    QList<ImportField> fields;
    for (const QComboBox *combo : m_combos)
        fields << static_cast<ImportField>(combo->currentData().toInt());
    return fields;
}

bool ColumnChoices::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn && m_grid) {
        const auto column = m_combos.indexOf(static_cast<QComboBox *>(watched));
        const int row = qMax(0, m_grid->currentIndex().row());
        if (column >= 0 && m_grid->model()->rowCount() > row)
            m_grid->scrollTo(m_grid->model()->index(row, m_firstSection + static_cast<int>(column)));
    }
    return QWidget::eventFilter(watched, event);
}

void ColumnChoices::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Place();
}

void ColumnChoices::Place()
{
    if (!m_grid)
        return;
    const QHeaderView *header = m_grid->horizontalHeader();
    for (int column = 0; column < m_combos.size(); ++column) {
        const int section = m_firstSection + column;
        if (section >= header->count())
            return;
        const int left = mapFromGlobal(header->viewport()->mapToGlobal(QPoint(0, 0))).x();
        m_combos.at(column)->setGeometry(left + header->sectionViewportPosition(section) + 1, 2,
                                         qMax(1, header->sectionSize(section) - 2), height() - 4);
    }
}

} // namespace goods_import
