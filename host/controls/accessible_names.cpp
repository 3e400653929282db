#include "host/controls/accessible_names.h"

#include "host/controls/switch_interface.h"

#include <QAccessible>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QEvent>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QRadioButton>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTextDocumentFragment>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {
namespace {

constexpr char Given[] = "givenName"; ///< the name that was set here, to tell it from one of the form's own

/// A caption as it is said: without the mark of its key, without what leads over to the field.
QString Said(const QString &caption)
{
    QString words = Qt::mightBeRichText(caption) ? QTextDocumentFragment::fromHtml(caption).toPlainText() : caption;
    words.replace(u"&&"_s, u"\u0001"_s).remove(u'&').replace(u'\u0001', u'&');
    words = words.simplified();
    while (!words.isEmpty() && QStringView(u":.… ").contains(words.back()))
        words.chop(1);
    // A sign or a single letter says nothing to whoever does not see where it stands.
    const auto letters =
        std::count_if(words.cbegin(), words.cend(), [](QChar sign) { return sign.isLetterOrNumber(); });
    return letters > 1 ? words : QString();
}

QString LabelOf(const QWidget &control)
{
    const auto labels = control.window()->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        if (label->buddy() == &control && !label->isHidden())
            if (QString name = Said(label->text()); !name.isEmpty())
                return name;
    return {};
}

/// The control that this one is the inner part of: a combo box, a picker, a path.
const QWidget *Outer(const QWidget &control)
{
    const QWidget *parent = control.parentWidget();
    const bool inner =
        parent && !control.isWindow() &&
        (parent->focusProxy() == &control || control.focusProxy() == parent || qobject_cast<const QComboBox *>(parent));
    return inner ? parent : nullptr;
}

/// What a control says itself.
QString OwnWords(const QWidget &control)
{
    if (const auto *button = qobject_cast<const QAbstractButton *>(&control))
        return Said(button->text());
    if (const auto *edit = qobject_cast<const QLineEdit *>(&control))
        return Said(edit->placeholderText());
    if (const auto *combo = qobject_cast<const QComboBox *>(&control))
        return Said(combo->placeholderText());
    return {};
}

QString CaptionIn(const QWidget &widget)
{
    if (const auto *label = qobject_cast<const QLabel *>(&widget))
        return label->buddy() ? QString() : Said(label->text());
    if (qobject_cast<const QCheckBox *>(&widget) || qobject_cast<const QRadioButton *>(&widget))
        return Said(static_cast<const QAbstractButton &>(widget).text());
    return {};
}

/// The caption that stands nearest before the control in its row.
const QWidget *CaptionBeside(const QWidget &control)
{
    const QWidget *beside = nullptr;
    int nearest = QWIDGETSIZE_MAX;
    const QRect place = control.geometry();
    const bool fromRight = control.layoutDirection() == Qt::RightToLeft;
    const QObjectList siblings = control.parent() ? control.parent()->children() : QObjectList();
    for (const QObject *sibling : siblings) {
        const auto *caption = qobject_cast<const QWidget *>(sibling);
        if (!caption || caption == &control || caption->isHidden() || CaptionIn(*caption).isEmpty() ||
            std::abs(caption->geometry().center().y() - place.center().y()) > place.height() / 2)
            continue;
        const int gap =
            fromRight ? caption->geometry().left() - place.right() : place.left() - caption->geometry().right();
        if (gap >= 0 && gap < nearest) {
            nearest = gap;
            beside = caption;
        }
    }
    return beside;
}

QString WordsBeside(const QWidget &control)
{
    const QWidget *caption = CaptionBeside(control);
    return caption ? CaptionIn(*caption) : QString();
}

/// Screen readers take what a combo box holds for its name, and look for a label that belongs to it.
void Label(QComboBox &choice)
{
    if (LabelOf(choice).isEmpty())
        if (const auto *label = qobject_cast<const QLabel *>(CaptionBeside(choice)))
            const_cast<QLabel *>(label)->setBuddy(&choice);
}

/// The title of the group, the page or the window around a control.
QString Around(const QWidget &control)
{
    for (const QWidget *inside = &control; !inside->isWindow(); inside = inside->parentWidget()) {
        const QWidget *parent = inside->parentWidget();
        QString name;
        if (const auto *group = qobject_cast<const QGroupBox *>(parent))
            name = Said(group->title());
        else if (const auto *pages = qobject_cast<const QTabWidget *>(parent->parentWidget()))
            name = Said(pages->tabText(pages->indexOf(inside)));
        if (!name.isEmpty())
            return name;
        if (!parent->windowTitle().isEmpty())
            return Said(parent->windowTitle());
    }
    return Said(control.window()->windowTitle());
}

} // namespace

void AccessibleNames::Install()
{
    static QPointer<AccessibleNames> installed; // goes with the application
    if (installed)
        return;
    QAccessible::installFactory(SwitchInterfaceFor);
    installed = new AccessibleNames(qApp);
    qApp->installEventFilter(installed);
}

QString AccessibleNames::NameOf(const QWidget &control)
{
    QString (*const ways[])(const QWidget &) = {
        LabelOf,
        OwnWords,
        [](const QWidget &widget) { return Said(widget.toolTip()); },
        WordsBeside,
    };
    const bool box = qobject_cast<const QCheckBox *>(&control) || qobject_cast<const QRadioButton *>(&control);
    QString name = box ? OwnWords(control) : QString();
    for (const auto way : ways)
        for (const QWidget *widget = &control; widget && name.isEmpty(); widget = Outer(*widget))
            name = way(*widget);
    return name.isEmpty() ? Around(control) : name;
}

bool AccessibleNames::eventFilter(QObject *watched, QEvent *event)
{
    if (!watched->isWidgetType() || (event->type() != QEvent::Show && event->type() != QEvent::FocusIn))
        return false;
    auto *control = static_cast<QWidget *>(watched);
    if (control->isWindow() || control->focusPolicy() == Qt::NoFocus)
        return false;
    if (!control->accessibleName().isEmpty() && control->accessibleName() != control->property(Given).toString())
        return false;
    if (auto *choice = qobject_cast<QComboBox *>(control))
        Label(*choice);
    if (const QString name = NameOf(*control); name != control->accessibleName()) {
        control->setProperty(Given, name);
        control->setAccessibleName(name);
    }
    return false;
}

} // namespace host
