#include "desk/tour/tour_check.h"

#include "host/look/theme.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpression>
#include <QScreen>
#include <QTableView>
#include <QTextEdit>
#include <QToolBar>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr QSize LeastScreen(1280, 720);
constexpr qreal UsualDpi = 96;

QString Called(const QWidget &widget)
{
    QString name = QString::fromLatin1(widget.metaObject()->className());
    for (const QWidget *up = &widget; up; up = up->parentWidget())
        if (!up->objectName().isEmpty() && !up->objectName().startsWith(u"qt_"))
            return name + u' ' + up->objectName();
    return name;
}

bool IsStop(const QWidget &widget)
{
    return widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) && !widget.focusProxy();
}

QString Nameless(const QWidget &widget)
{
    if (!IsStop(widget))
        return {};
    QAccessibleInterface *access = QAccessible::queryAccessibleInterface(const_cast<QWidget *>(&widget));
    QString name = access ? access->text(QAccessible::Name).trimmed() : QString();
    // What a combo box is called is what it holds; its caption is told beside.
    if (access && access->role() == QAccessible::ComboBox)
        name = access->relations(QAccessible::Label).isEmpty() ? widget.accessibleName() : u"caption"_s;
    return name.size() < 2 || name.endsWith(u':') ? u"has no name but \"%1\""_s.arg(name) : QString();
}

/// A button that Tab passes by is pressed by a key that it names, or belongs to a field, a menu or a bar of the window.
QString WithoutKey(const QWidget &widget)
{
    const auto *button = qobject_cast<const QAbstractButton *>(&widget);
    if (!button || !button->isEnabled() || qobject_cast<const QRadioButton *>(button) || // arrows lead through a group
        (button->focusPolicy() & Qt::TabFocus) || qobject_cast<const QToolBar *>(button->parentWidget()) ||
        qobject_cast<const QMenuBar *>(button->parentWidget()))
        return {};
    static const QRegularExpression key(u"\\b(F\\d|Ctrl|Alt|Del|Esc|Enter|Backspace)"_s);
    const QString told = button->text() + u' ' + button->toolTip();
    const bool inner = qobject_cast<const QLineEdit *>(button->parentWidget());
    return inner || told.contains(key) || told.contains(u'&') ? QString() : u"is reached by no key"_s;
}

/// Typing Tab into it does not lead on.
QString KeepsTab(const QWidget &widget)
{
    const auto *text = qobject_cast<const QTextEdit *>(&widget);
    const auto *plain = qobject_cast<const QPlainTextEdit *>(&widget);
    const auto *table = qobject_cast<const QTableView *>(&widget);
    const bool keeps = (text && !text->isReadOnly() && !text->tabChangesFocus()) ||
                       (plain && !plain->isReadOnly() && !plain->tabChangesFocus()) ||
                       (table && table->tabKeyNavigation());
    return keeps ? u"keeps the Tab key"_s : QString();
}

QString CutCaptions(const QWidget &widget)
{
    const auto *header = qobject_cast<const QHeaderView *>(&widget);
    if (!header || header->orientation() != Qt::Horizontal || !header->model())
        return {};
    constexpr int padding = 13; // of the style sheet, and the line between two captions
    QStringList cut;
    for (int section = 0; section < header->count(); ++section) {
        const QString caption = header->model()->headerData(section, Qt::Horizontal).toString();
        const int needed = header->fontMetrics().horizontalAdvance(caption.trimmed()) + padding;
        if (!header->isSectionHidden(section) && header->sectionSize(section) < needed)
            cut << u"%1 (%2 of %3)"_s.arg(caption).arg(header->sectionSize(section)).arg(needed);
    }
    return cut.isEmpty() ? QString() : u"cuts off "_s + cut.join(u", ");
}

QString CutOff(const QWidget &widget)
{
    QSize needed(0, 0);
    if (const auto *label = qobject_cast<const QLabel *>(&widget)) {
        if (label->text().isEmpty() || label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored)
            return {};
        needed = label->wordWrap() ? QSize(0, label->heightForWidth(label->width())) : label->sizeHint();
    } else if (const auto *button = qobject_cast<const QAbstractButton *>(&widget)) {
        const bool inner = qobject_cast<const QLineEdit *>(button->parentWidget());
        needed = button->text().isEmpty() || inner ? QSize(0, 0) : button->minimumSizeHint();
    } else if (const auto *edit = qobject_cast<const QLineEdit *>(&widget)) {
        needed.setWidth(edit->text().isEmpty() ? edit->fontMetrics().horizontalAdvance(edit->placeholderText()) : 0);
    }
    if (needed.width() <= widget.width() && needed.height() <= widget.height())
        return {};
    return u"is cut off: %1 x %2 of %3 x %4"_s.arg(widget.width())
        .arg(widget.height())
        .arg(needed.width())
        .arg(needed.height());
}

} // namespace

QStringList Hindrances(const QWidget &window)
{
    QStringList found;
    const QScreen *screen = window.screen();
    const QSize usable = LeastScreen * (screen->logicalDotsPerInch() / UsualDpi);
    if (screen->size().width() < usable.width() || screen->size().height() < usable.height())
        return {};
    const QSize room = usable - host::theme::WindowFrame;
    const QSize least = window.minimumSizeHint().expandedTo(window.minimumSize());
    if (least.width() > room.width() || least.height() > room.height())
        found << u"%1 needs %2 x %3"_s.arg(Called(window)).arg(least.width()).arg(least.height());
    const QSize shown = screen->availableSize() - host::theme::WindowFrame;
    if (window.width() > shown.width() || window.height() > shown.height())
        found << u"%1 is larger than the screen"_s.arg(Called(window));
    const auto widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (!widget->isVisible() || widget->window() != &window)
            continue;
        for (const auto look : {Nameless, WithoutKey, KeepsTab, CutOff, CutCaptions})
            if (const QString hindrance = look(*widget); !hindrance.isEmpty())
                found << Called(*widget) + u' ' + hindrance;
    }
    return found;
}

} // namespace desk
