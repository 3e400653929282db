#include "host/controls/category_path.h"

#include "host/controls/flow_layout.h"
#include "host/data/persian_text.h"
#include "host/look/theme.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>
#include <QStringListModel>
#include <QToolButton>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace host {
namespace {

/// More than a person looks through: a longer text narrows them.
constexpr int MostOffered = 50;
constexpr int EditWidth = 200;

} // namespace

CategoryPath::CategoryPath(QWidget *parent)
    : QWidget(parent), m_flow(new FlowLayout(this)), m_edit(new QLineEdit(this)), m_choose(new QToolButton(this)),
      m_found(new QStringListModel(this)), m_completer(new QCompleter(m_found, this))
{
    QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Minimum);
    policy.setHeightForWidth(true);
    setSizePolicy(policy);
    m_edit->setObjectName(u"Editor"_s);
    m_edit->setPlaceholderText(u"بخشی از نام دسته ..."_s);
    m_edit->setMinimumWidth(EditWidth);
    m_edit->installEventFilter(this);
    setFocusProxy(m_edit);
    m_choose->setObjectName(u"select_BTN"_s);
    m_choose->setText(u"…"_s);
    m_choose->setToolTip(u"انتخاب دسته (F2)"_s);
    m_choose->setFocusPolicy(Qt::NoFocus); // the keyboard has F2
    m_completer->setCompletionMode(QCompleter::UnfilteredPopupCompletion);
    m_completer->setWidget(m_edit);
    connect(m_choose, &QToolButton::clicked, this, &CategoryPath::OpenMenu);
    connect(m_edit, &QLineEdit::textEdited, this, &CategoryPath::Offer);
    connect(m_completer, qOverload<const QModelIndex &>(&QCompleter::activated), this,
            [this](const QModelIndex &index) { Take(m_offered.value(index.row())); });
    Rebuild();
}

void CategoryPath::SetTree(const QList<Category> &tree)
{
    m_nodes.clear();
    m_branches.clear();
    m_ways.clear();
    for (const Category &node : tree) {
        m_nodes.insert(node.Code, node);
        m_branches[node.Parent] << node.Code;
    }
    for (const Category &node : tree)
        m_ways.append({Fold(Way(node.Code)), node.Code});
    SetCode(m_code);
}

void CategoryPath::SetCode(int code)
{
    m_code = m_nodes.contains(code) ? code : 0;
    m_edit->clear();
    m_completer->popup()->hide();
    Rebuild();
}

void CategoryPath::Take(int code)
{
    const bool another = code != m_code;
    SetCode(code);
    m_edit->setFocus(Qt::OtherFocusReason);
    if (another)
        emit Changed();
}

/// The branches from the root to this one. A tree that leads in a circle ends where it began.
QList<int> CategoryPath::Codes(int code) const
{
    QList<int> codes;
    for (; m_nodes.contains(code) && !codes.contains(code); code = m_nodes.value(code).Parent)
        codes.prepend(code);
    return codes;
}

QString CategoryPath::Way(int code) const
{
    QStringList names;
    const QList<int> codes = Codes(code);
    for (const int step : codes)
        names << m_nodes.value(step).Name;
    return names.join(u" / ");
}

void CategoryPath::Rebuild()
{
    while (QLayoutItem *item = m_flow->takeAt(0)) {
        if (item->widget() != m_edit && item->widget() != m_choose) {
            item->widget()->hide();
            item->widget()->deleteLater(); // its own click may have asked for this
        }
        delete item;
    }
    const QList<int> way = Codes(m_code);
    for (const int code : way) {
        auto *bubble = new QToolButton(this);
        bubble->setObjectName(u"Path_%1"_s.arg(code));
        bubble->setText(m_nodes.value(code).Name.replace(u'&', u"&&"_s) + u"  ✕"_s);
        bubble->setToolTip(u"برداشتن از اینجا (Backspace)"_s);
        bubble->setFocusPolicy(Qt::NoFocus); // the keyboard has Backspace
        bubble->setProperty("bubble", true);
        connect(bubble, &QToolButton::clicked, this, [this, code] { Take(m_nodes.value(code).Parent); });
        m_flow->addWidget(bubble);
        bubble->show();
    }
    m_flow->addWidget(m_edit);
    m_flow->addWidget(m_choose);
    updateGeometry();
}

void CategoryPath::Offer(const QString &typed)
{
    const QStringList words = Fold(typed).split(u' ', Qt::SkipEmptyParts);
    m_offered.clear();
    QStringList ways;
    for (const auto &[folded, code] : std::as_const(m_ways)) {
        const bool fits =
            !words.isEmpty() && std::all_of(words.begin(), words.end(),
                                            [&text = folded](const QString &word) { return text.contains(word); });
        if (!fits)
            continue;
        m_offered << code;
        ways << Way(code);
        if (ways.size() == MostOffered)
            break;
    }
    m_found->setStringList(ways);
    if (ways.isEmpty()) {
        m_completer->popup()->hide();
        return;
    }
    m_completer->complete();
    m_completer->popup()->setCurrentIndex(m_completer->completionModel()->index(0, 0));
}

bool CategoryPath::IsPending() const
{
    return !m_edit->text().trimmed().isEmpty();
}

bool CategoryPath::TakePending()
{
    return !IsPending() || TakeTyped();
}

bool CategoryPath::TakeTyped()
{
    if (m_edit->text().isEmpty() || m_offered.isEmpty())
        return false;
    Take(m_offered.first());
    return true;
}

void CategoryPath::OpenMenu()
{
    auto *menu = new QMenu(this);
    menu->setObjectName(u"Category_PMN"_s);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool ends = !m_branches.contains(m_code);
    FillMenu(menu, ends ? m_nodes.value(m_code).Parent : m_code);
    if (menu->isEmpty())
        menu->addAction(u"دسته ای تعریف نشده است"_s)->setEnabled(false);
    menu->popup(m_edit->mapToGlobal(m_edit->rect().bottomLeft()));
}

/// The branches of a branch are filled in when their menu is about to show: trees have thousands.
void CategoryPath::FillMenu(QMenu *menu, int parent)
{
    const QList<int> branches = m_branches.value(parent);
    for (const int code : branches) {
        const QString name = m_nodes.value(code).Name.replace(u'&', u"&&"_s);
        if (!m_branches.contains(code)) {
            connect(menu->addAction(name), &QAction::triggered, this, [this, code] { Take(code); });
            continue;
        }
        QMenu *below = menu->addMenu(name);
        connect(below, &QMenu::aboutToShow, this, [this, below, name, code] {
            if (!below->isEmpty())
                return;
            connect(below->addAction(u"«%1»"_s.arg(name)), &QAction::triggered, this, [this, code] { Take(code); });
            FillMenu(below, code);
        });
    }
}

bool CategoryPath::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() != QEvent::KeyPress)
        return QWidget::eventFilter(watched, event);
    const auto *key = static_cast<QKeyEvent *>(event);
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return TakeTyped();
    case Qt::Key_F2:
    case Qt::Key_Down:
        OpenMenu();
        return true;
    case Qt::Key_Backspace:
        if (!m_edit->text().isEmpty() || m_code == 0)
            return false;
        Take(m_nodes.value(m_code).Parent);
        return true;
    default:
        return QWidget::eventFilter(watched, event);
    }
}

} // namespace host
