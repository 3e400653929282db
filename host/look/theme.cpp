#include "host/look/theme.h"

#include "host/look/house_style.h"
#include "host/look/palette.h"

#include <QApplication>
#include <QFontDatabase>
#include <QPalette>
#include <QStyle>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace host::theme {
namespace {

/// Colours appear as @name; they are filled in from the functions below. Left is where reading begins.
const char16_t *const sheet = uR"(
QDialog, QMainWindow, QWidget#Content { background: @ground; }
QWidget#Footer_PNL { background: @footer; border-top: 1px solid @line; }

QLineEdit, QPlainTextEdit, QTextEdit, QComboBox, QAbstractSpinBox {
    background: @surface; border: 1px solid @border; border-radius: 4px; padding: 1px 6px; min-height: 1.4em;
    selection-background-color: @fill; selection-color: white; }
QLineEdit:hover, QComboBox:hover, QPlainTextEdit:hover { border-color: @soft; }
QLineEdit:focus, QPlainTextEdit:focus, QTextEdit:focus, QComboBox:focus, QAbstractSpinBox:focus {
    border: 2px solid @accent; padding: 0px 5px; }
QLineEdit[readOnly="true"], QPlainTextEdit[readOnly="true"], QLineEdit:disabled, QComboBox:disabled,
QPlainTextEdit:disabled { background: @readonly; border-color: @line; }
QLineEdit[fault="true"] { border: 2px solid @danger; padding: 0px 5px; }
QComboBox QLineEdit, QComboBox QLineEdit:focus { border: none; padding: 0; min-height: 0; background: transparent; }
QComboBox::drop-down { border: none; width: 22px; }
QComboBox::down-arrow { image: url(:/host/icons/@down.png); width: 10px; height: 10px; }
QComboBox QAbstractItemView { background: @surface; border: 1px solid @border; outline: 0;
    selection-background-color: @accentsoft; selection-color: @ink; }

QPushButton { background: @surface; border: 1px solid @border; border-radius: 4px; padding: 3px 12px;
    min-height: 1.4em; }
QPushButton:hover { background: @accentsoft; border-color: @accent; }
QPushButton:pressed { background: @line; }
QPushButton:focus { border: 2px solid @accent; padding: 2px 11px; }
QPushButton:checked { background: @accentsoft; border-color: @accent; color: @accentdark; }
QPushButton:disabled { color: @disabled; background: @ground; border-color: @line; }
QPushButton::menu-indicator { subcontrol-origin: padding; subcontrol-position: center right; right: 4px; }
QPushButton[primary="true"] { background: @fill; border-color: @fill; color: white; }
QPushButton[primary="true"]:hover { border-color: @ink; }
QPushButton[primary="true"]:focus { border: 2px solid @ink; }
QPushButton[primary="true"]:disabled { background: @readonly; border-color: @line; color: @disabled; }
QToolButton { background: transparent; border: 1px solid transparent; border-radius: 4px; padding: 2px 4px; }
QToolButton:hover { background: @accentsoft; border-color: @accent; }
QToolButton:focus { border-color: @accent; }
QToolButton:disabled { color: @disabled; }
QToolButton#Inner_BTN { padding: 0; border: none; color: @accent; }
QToolButton#Picker_BTN, QToolButton#select_BTN { background: @surface; border: 1px solid @border; min-height: 1.3em; min-width: 1.3em; padding: 1px; }
QToolButton#Picker_BTN:hover, QToolButton#select_BTN:hover { background: @accentsoft; border-color: @accent; }
QToolButton[bubble="true"] { background: @line; border: none; border-radius: 11px; padding: 1px 10px; min-height: 1.2em; }
QToolButton[tile="true"] { background: @surface; border: 1px solid @line; border-radius: 10px; padding: 6px; }
QToolButton[tile="true"]:hover, QToolButton[tile="true"]:focus { border-color: @accent; background: @accentsoft; }
QLabel[fault="true"] { color: @danger; }

QGroupBox { border: 1px solid @line; border-radius: 6px; margin-top: 12px; padding: 8px 6px 4px 6px; background: @panel; }
QGroupBox::title { subcontrol-origin: margin; subcontrol-position: top left; left: 10px; padding: 0 4px;
    color: @accentdark; }
QTabWidget::pane { border: 1px solid @line; border-radius: 4px; background: @panel; }
QTabBar::tab { background: transparent; color: @soft; border: none; border-bottom: 2px solid transparent;
    padding: 5px 12px; }
QTabBar::tab:hover { color: @ink; }
QTabBar::tab:selected { color: @accentdark; border-bottom: 2px solid @accent; }
QTabBar::tab:focus { background: @accentsoft; }

QAbstractItemView { background: @surface; alternate-background-color: @stripe; border: 1px solid @line;
    gridline-color: @gridline; selection-background-color: @accentsoft; selection-color: @ink; outline: 0; }
QTableView::item, QTreeView::item, QListView::item { border: none; padding: 0 6px; }
QAbstractScrollArea::corner { background: transparent; border: none; }
QTableView::item:selected:active, QTreeView::item:selected:active { background: @current; color: @ink; }
QTableView::item:selected:!active, QTreeView::item:selected:!active { background: @accentsoft; color: @ink; }
QHeaderView { background: @head; border: none; }
QHeaderView::section { background: @head; color: @ink; border: none; border-bottom: 1px solid @border;
    border-left: 1px solid @line; padding: 4px 6px; }
QHeaderView::section:hover { background: @accentsoft; }
QTableCornerButton::section { background: @head; border: none; }

QCheckBox, QRadioButton { spacing: 6px; }
QCheckBox:focus, QRadioButton:focus { color: @accentdark; text-decoration: underline; }
QCheckBox:disabled, QRadioButton:disabled, QLabel:disabled { color: @disabled; }
QLabel[soft="true"] { color: @soft; }
QLabel[accent="true"] { color: @accent; }
QFrame[panel="true"] { background: @panel; border: 1px solid @line; border-radius: 6px; }
QToolTip { background: @bar; color: white; border: none; padding: 3px 6px; }
QMenu { background: @surface; border: 1px solid @border; padding: 4px 0; }
QMenu::item { padding: 4px 24px; }
QMenu::item:selected { background: @accentsoft; color: @ink; }
QMenu::item:disabled { color: @disabled; }
QMenu::separator { height: 1px; background: @line; margin: 4px 8px; }
QMenuBar { background: @ground; }
QMenuBar::item { padding: 4px 10px; background: transparent; }
QMenuBar::item:selected { background: @accentsoft; }
QStatusBar { background: @footer; border-top: 1px solid @line; }
QScrollBar:vertical { background: transparent; width: 12px; margin: 0; }
QScrollBar:horizontal { background: transparent; height: 12px; margin: 0; }
QScrollBar::handle { background: @handle; border-radius: 4px; margin: 2px; }
QScrollBar::handle:vertical { min-height: 32px; }
QScrollBar::handle:horizontal { min-width: 32px; }
QScrollBar::handle:hover { background: @soft; }
QScrollBar::add-line, QScrollBar::sub-line { width: 0; height: 0; }
QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }
QSplitter::handle { background: transparent; }
QProgressBar { border: 1px solid @border; border-radius: 4px; text-align: center; background: @surface; }
QProgressBar::chunk { background: @current; border-radius: 3px; }
)";

bool dark = false;

const Palette &Colors()
{
    return dark ? Palette::Dark() : Palette::Light();
}

QString StyleSheet()
{
    const Palette &look = Colors();
    // Longer names first: @accentsoft begins with @accent.
    const std::pair<const char16_t *, QColor> colors[] = {
        {u"@accentsoft", look.AccentSoft},
        {u"@accentdark", look.AccentInk},
        {u"@accent", look.Accent},
        {u"@surface", look.Surface},
        {u"@stripe", look.Stripe},
        {u"@soft", look.InkSoft},
        {u"@ground", look.Ground},
        {u"@gridline", look.GridLine},
        {u"@footer", look.Footer},
        {u"@panel", look.Panel},
        {u"@readonly", look.ReadOnly},
        {u"@disabled", look.Disabled},
        {u"@current", look.Current},
        {u"@border", look.Border},
        {u"@handle", look.Handle},
        {u"@head", look.Head},
        {u"@danger", look.Danger},
        {u"@line", look.Line},
        {u"@fill", look.Fill},
        {u"@bar", look.Bar},
        {u"@ink", look.Ink},
    };
    QString text = QString::fromUtf16(sheet);
    text.replace(u"@down"_s, dark ? u"down-light"_s : u"down"_s);
    for (const auto &[name, color] : colors)
        text.replace(QString::fromUtf16(name), color.name());
    return text;
}

/// A desktop that is dark gives its programs a dark window before they choose their own.
bool DesktopIsDark()
{
    return QGuiApplication::palette().color(QPalette::Window).lightnessF() < 0.5F;
}

} // namespace

QColor Ground()
{
    return Colors().Ground;
}
QColor Surface()
{
    return Colors().Surface;
}
QColor Line()
{
    return Colors().Line;
}
QColor Ink()
{
    return Colors().Ink;
}
QColor InkSoft()
{
    return Colors().InkSoft;
}
QColor Accent()
{
    return Colors().Accent;
}
QColor AccentSoft()
{
    return Colors().AccentSoft;
}
QColor Danger()
{
    return Colors().Danger;
}
QColor Bar()
{
    return Colors().Bar;
}
QColor PaperInk()
{
    return Palette::Light().Ink;
}
QColor PaperLine()
{
    return Palette::Light().Line;
}

QFont InterfaceFont(double points)
{
    static const QStringList families = [] {
        const QStringList installed = QFontDatabase::families();
        QStringList wanted;
        for (const QString &name : {u"DejaVu Sans Condensed"_s, u"DejaVu Sans"_s, u"Vazirmatn"_s, u"Tahoma"_s,
                                    u"Noto Sans Arabic UI"_s, u"Noto Sans"_s})
            if (installed.contains(name))
                wanted << name;
        return wanted.isEmpty() ? QFontDatabase::families(QFontDatabase::Arabic).mid(0, 1) : wanted;
    }();
    QFont font;
    if (!families.isEmpty())
        font.setFamilies(families);
    font.setPointSizeF(points);
    return font;
}

QFont TitleFont()
{
    QFont font = InterfaceFont(13);
    font.setBold(true);
    return font;
}

QString PlainToolTip(const QString &text)
{
    return text.isEmpty() ? QString() : u"<qt>"_s + text.toHtmlEscaped() + u"</qt>"_s;
}

void Repolish(QWidget *widget)
{
    widget->style()->unpolish(widget);
    widget->style()->polish(widget);
    widget->update();
}

void Apply(QApplication &application, Look look)
{
    QApplication::setPalette(QPalette()); // the desktop's own colours, whatever was applied before
    dark = look == Look::Dark || (look == Look::Desktop && DesktopIsDark());
    const Palette &colors = Colors();
    application.setLayoutDirection(Qt::RightToLeft);
    application.setStyle(new HouseStyle);
    application.setFont(InterfaceFont());
    QPalette palette(colors.Surface, colors.Ground);
    palette.setColor(QPalette::Window, Ground());
    palette.setColor(QPalette::Base, Surface());
    palette.setColor(QPalette::Button, Surface());
    palette.setColor(QPalette::AlternateBase, colors.Stripe);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(role, Ink());
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, colors.Disabled);
    palette.setColor(QPalette::PlaceholderText, colors.Placeholder);
    palette.setColor(QPalette::ToolTipBase, colors.Bar);
    palette.setColor(QPalette::ToolTipText, Qt::white);
    palette.setColor(QPalette::Link, colors.AccentInk);
    palette.setColor(QPalette::LinkVisited, colors.AccentInk);
    palette.setColor(QPalette::Highlight, colors.Fill);
    palette.setColor(QPalette::HighlightedText, Qt::white);
    application.setPalette(palette);
    application.setStyleSheet(StyleSheet());
}

} // namespace host::theme
