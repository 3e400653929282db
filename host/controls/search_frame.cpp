#include "host/controls/search_frame.h"

#include "host/controls/grid.h"
#include "host/controls/numeric_edit.h"

#include <QCheckBox>
#include <QComboBox>
#include <QCoreApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {
namespace {

/// Whether a key types something, as opposed to moving, marking or commanding.
bool Types(const QKeyEvent &key)
{
    const auto modifiers = key.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
    const QString text = key.text();
    return modifiers == Qt::NoModifier && !text.isEmpty() && text.front().isPrint() && text != u" ";
}

} // namespace

SearchFrame::SearchFrame(QWidget *parent) : QWidget(parent)
{
    m_column = new QComboBox(this);
    m_column->setObjectName(u"Column_CMB"_s);
    m_column->setMinimumWidth(130);
    m_reverse = new QCheckBox(u"معکوس"_s, this);
    m_reverse->setObjectName(u"Reverse_CHK"_s);
    m_text = new QLineEdit(this);
    m_text->setObjectName(u"Text_EDT"_s);
    m_text->setPlaceholderText(u"جستجو ..."_s);
    m_text->setClearButtonEnabled(true);
    m_number = new NumericEdit(this);
    m_number->setObjectName(u"Number_EDT"_s);
    m_number->setAccessibleName(u"جستجو"_s);
    m_number->setGrouped(false);
    m_price = new NumericEdit(this);
    m_price->setObjectName(u"Price_EDT"_s);
    m_price->setAccessibleName(u"جستجو"_s);
    m_price->setWholeDigits(19);
    m_edits = new QStackedWidget(this);
    m_edits->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);

    auto *caption = new QLabel(u"جستجو در :"_s, this);
    caption->setBuddy(m_column);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(6);
    row->addWidget(caption);
    row->addWidget(m_column);
    row->addWidget(m_edits, 1);
    row->addWidget(m_reverse);

    for (QLineEdit *edit : {m_text, static_cast<QLineEdit *>(m_number), static_cast<QLineEdit *>(m_price)}) {
        m_edits->addWidget(edit);
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::textChanged, this, &SearchFrame::Report);
    }
    connect(m_reverse, &QCheckBox::toggled, this, &SearchFrame::Report);
    connect(m_column, &QComboBox::currentIndexChanged, this, &SearchFrame::ColumnChosen);
    setFocusProxy(m_text);
    SetColumns({});
}

void SearchFrame::SetColumns(const QList<GridColumn> &columns)
{
    const QString chosen = m_column->currentData().toString();
    m_columns = columns;
    {
        const QSignalBlocker quiet(m_column);
        m_column->clear();
        m_column->addItem(u"همه ستون ها"_s, QString());
        for (const GridColumn &column : columns)
            if (column.format != ColumnFormat::Flag && !column.caption.trimmed().isEmpty())
                m_column->addItem(column.caption.trimmed(), column.field);
        m_column->setCurrentIndex(std::max(0, m_column->findData(chosen)));
    }
    ColumnChosen();
}

void SearchFrame::SetGrid(Grid *grid)
{
    m_grid = grid;
    SetColumns(grid->Columns());
    connect(this, &SearchFrame::Changed, grid, &Grid::Search);
    grid->installEventFilter(this);
}

void SearchFrame::ColumnChosen()
{
    const QString field = m_column->currentData().toString();
    const auto column =
        std::find_if(m_columns.begin(), m_columns.end(), [&](const GridColumn &known) { return known.field == field; });
    const ColumnFormat format = field.isEmpty() || column == m_columns.end() ? ColumnFormat::Text : column->format;
    QLineEdit *edit = m_text;
    if (format == ColumnFormat::Price)
        edit = m_price;
    else if (format == ColumnFormat::Code || format == ColumnFormat::Quantity || format == ColumnFormat::Amount)
        edit = m_number;
    if (m_edits->currentWidget() != edit) {
        const bool focused = m_edits->currentWidget() && m_edits->currentWidget()->hasFocus();
        m_edits->setCurrentWidget(edit);
        setFocusProxy(edit);
        if (focused)
            edit->setFocus();
    }
    Report();
}

QList<QWidget *> SearchFrame::TabStops() const
{
    return {m_column, m_text, m_number, m_price, m_reverse};
}

void ChainTabs(const QList<QWidget *> &stops)
{
    for (qsizetype stop = 1; stop < stops.size(); ++stop)
        QWidget::setTabOrder(stops.at(stop - 1), stops.at(stop));
    QWidget::setTabOrder(stops.constLast(), stops.constFirst());
}

SearchDescription SearchFrame::Description() const
{
    SearchDescription description;
    description.field = m_column->currentData().toString();
    description.reverse = m_reverse->isChecked();
    const auto *edit = static_cast<QLineEdit *>(m_edits->currentWidget());
    (edit == m_text ? description.text : description.number) = PlainText(*edit);
    return description;
}

void SearchFrame::Report()
{
    const SearchDescription description = Description();
    if (description == m_reported)
        return;
    m_reported = description;
    emit Changed(description);
}

void SearchFrame::SetText(const QString &text)
{
    m_column->setCurrentIndex(0);
    m_text->setText(text);
}

void SearchFrame::Clear()
{
    for (QLineEdit *edit : {m_text, static_cast<QLineEdit *>(m_number), static_cast<QLineEdit *>(m_price)})
        edit->clear();
    m_reverse->setChecked(false);
}

void SearchFrame::Reset()
{
    Clear();
    m_column->setCurrentIndex(0);
}

bool SearchFrame::GiveUp()
{
    if (Description().IsEmpty())
        return false;
    Clear();
    if (m_grid)
        m_grid->setFocus(Qt::OtherFocusReason);
    return true;
}

void SearchFrame::Focus(const QString &field)
{
    m_column->setCurrentIndex(std::max(0, m_column->findData(field)));
    m_edits->currentWidget()->setFocus();
    static_cast<QLineEdit *>(m_edits->currentWidget())->selectAll();
}

/// What is typed on the grid goes into the edit, over what it held.
bool SearchFrame::TypedOnGrid(QKeyEvent &key)
{
    if (!isVisible() || !Types(key))
        return false;
    Focus(m_column->currentData().toString());
    QCoreApplication::sendEvent(m_edits->currentWidget(), &key);
    return true;
}

bool SearchFrame::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return QWidget::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    if (watched == m_grid)
        return event->type() == QEvent::KeyPress && TypedOnGrid(*key);
    auto *edit = static_cast<QLineEdit *>(watched);
    // A first Esc empties the search, a second one belongs to the screen.
    if (key->key() == Qt::Key_Escape && !edit->text().isEmpty()) {
        if (event->type() == QEvent::KeyPress)
            edit->clear();
        event->accept();
        return true;
    }
    if (event->type() == QEvent::ShortcutOverride)
        return QWidget::eventFilter(watched, event);
    if (m_grid && (key->key() == Qt::Key_Down || key->key() == Qt::Key_Up || key->key() == Qt::Key_PageDown ||
                   key->key() == Qt::Key_PageUp)) {
        m_grid->setFocus();
        return true;
    }
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        edit->selectAll(); // the next scan takes the place of this one
        emit Accepted();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace host
