#include "host/controls/entity_picker.h"

#include "host/controls/display_edit.h"
#include "host/data/persian_text.h"
#include "host/look/theme.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QScopedValueRollback>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace host {

EntityPicker::EntityPicker(QWidget *parent) : QWidget(parent)
{
    m_edit = new DisplayEdit(this);
    m_edit->setObjectName(u"PickerCode_EDT"_s);
    m_edit->setFixedWidth(72);
    m_edit->setMaxLength(50);
    m_button = new QToolButton(this);
    m_button->setObjectName(u"Picker_BTN"_s);
    m_button->setText(u"…"_s);
    m_button->setToolTip(u"F2"_s);
    m_button->setFocusPolicy(Qt::NoFocus);
    m_nameLabel = new QLabel(this);
    m_nameLabel->setObjectName(u"PickerName_LBL"_s);
    m_nameLabel->setTextFormat(Qt::PlainText);
    m_nameLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_nameLabel->setMinimumWidth(60);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(m_edit);
    row->addWidget(m_button);
    row->addWidget(m_nameLabel, 1);

    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setFocusProxy(m_edit);
    m_edit->installEventFilter(this);
    connect(m_edit, &QLineEdit::textEdited, this, &EntityPicker::OnEdited);
    connect(m_button, &QToolButton::clicked, this, [this] { Run([this] { Choose(); }); });
}

void EntityPicker::SetSource(EntityService &entities, TSoftwarePart part)
{
    m_entities = &entities;
    m_part = part;
}

void EntityPicker::SetItems(const QList<Entity> &items)
{
    m_entities = nullptr;
    m_items = items;
}

std::optional<Entity> EntityPicker::Find(int code) const
{
    if (m_entities)
        return m_entities->Find(m_part, code);
    for (const Entity &item : m_items)
        if (item.Code == code)
            return item;
    return {};
}

QList<Entity> EntityPicker::Named(const QString &text) const
{
    if (m_entities)
        return m_entities->List(m_part, text);
    QList<Entity> named;
    for (const Entity &item : m_items)
        if (Fold(item.Name).contains(Fold(text)))
            named << item;
    return named;
}

int EntityPicker::ChooseItem(const QString &text) const
{
    if (m_entities)
        return m_entities->Select_GroupList(m_part, text);
    QMenu menu(m_edit);
    for (const Entity &item : m_items) {
        QString name = item.Name;
        QAction *action =
            menu.addAction(u"%1  %2"_s.arg(PersianDigits(QString::number(item.Code)), name.replace(u'&', u"&&"_s)));
        action->setData(item.Code);
        if (item.Code == m_code || menu.actions().size() == 1)
            menu.setActiveAction(action);
    }
    const QAction *chosen =
        menu.exec(mapToGlobal(QPoint(m_edit->geometry().right() - menu.sizeHint().width(), height())));
    return chosen ? chosen->data().toInt() : 0;
}

void EntityPicker::SetBoundary(Boundary run)
{
    m_run = std::move(run);
}

bool EntityPicker::Run(const std::function<void()> &body)
{
    if (m_run)
        return m_run(body);
    body();
    return true;
}

void EntityPicker::SetChooseGuard(std::function<bool()> guard)
{
    m_guard = std::move(guard);
}

QString EntityPicker::Name() const
{
    return m_code == 0 ? QString() : m_name;
}

bool EntityPicker::IsEmpty() const
{
    return m_code == 0 && m_edit->text().trimmed().isEmpty();
}

void EntityPicker::SetCode(int code)
{
    const auto found = code != 0 ? Find(code) : std::nullopt;
    SetItem(found ? found->Code : 0, found ? found->Name : QString());
}

void EntityPicker::SetItem(int code, const QString &name)
{
    m_code = code;
    m_reported = code;
    m_name = name;
    m_edit->setText(m_code ? QString::number(m_code) : QString());
    ShowName(m_name);
}

void EntityPicker::ShowName(const QString &name)
{
    m_nameLabel->setText(name);
    m_nameLabel->setToolTip(theme::PlainToolTip(name));
    m_nameLabel->setProperty("fault", false);
    theme::Repolish(m_nameLabel);
}

void EntityPicker::ShowInstead(const QString &text)
{
    Clear();
    ShowName(text);
}

void EntityPicker::Clear()
{
    SetCode(0);
}

void EntityPicker::Take(int code, const QString &name)
{
    m_code = code;
    m_name = name;
    m_edit->setText(code ? QString::number(code) : QString());
    ShowName(name);
    if (m_reported != code) {
        m_reported = code;
        emit Changed(code);
    }
}

bool EntityPicker::Fail()
{
    m_nameLabel->setText(u"یافت نشد"_s);
    m_nameLabel->setProperty("fault", true);
    theme::Repolish(m_nameLabel);
    if (m_reported != 0) {
        m_reported = 0;
        emit Changed(0);
    }
    return false;
}

void EntityPicker::OnEdited(const QString &text)
{
    Q_UNUSED(text)
    m_code = 0;
    m_name.clear();
    m_nameLabel->clear();
    m_nameLabel->setProperty("fault", false);
    emit Edited();
}

bool EntityPicker::Resolve(bool mayChoose)
{
    if (m_code != 0)
        return true;
    const QString typed = m_edit->text().trimmed();
    if (typed.isEmpty()) {
        Take(0, {});
        return true;
    }
    bool number = false;
    const int code = FoldDigits(typed).toInt(&number);
    if (number) {
        const auto found = Find(code);
        if (!found)
            return Fail();
        Take(found->Code, found->Name);
        return true;
    }
    const QList<Entity> named = Named(typed);
    if (named.size() == 1) {
        Take(named.first().Code, named.first().Name);
        return true;
    }
    for (const Entity &entity : named)
        if (Fold(entity.Name) == Fold(typed)) {
            Take(entity.Code, entity.Name);
            return true;
        }
    if (named.size() > 1 && mayChoose) {
        Choose();
        return m_code != 0;
    }
    return Fail();
}

void EntityPicker::SetReadOnly(bool readOnly)
{
    m_edit->setReadOnly(readOnly);
    m_button->setEnabled(!readOnly);
    theme::Repolish(m_edit);
}

bool EntityPicker::IsReadOnly() const
{
    return m_edit->isReadOnly();
}

void EntityPicker::Choose()
{
    if (m_choosing || IsReadOnly() || !isEnabled() || (m_guard && !m_guard()))
        return;
    int code = 0;
    {
        const QScopedValueRollback choosing(m_choosing, true);
        code = ChooseItem(m_edit->text().trimmed());
    }
    if (code != 0)
        if (const auto found = Find(code))
            Take(found->Code, found->Name);
    m_edit->setFocus();
    m_edit->selectAll();
}

bool EntityPicker::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != m_edit)
        return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress) {
        const auto *key = static_cast<QKeyEvent *>(event);
        if (key->key() == Qt::Key_F2 || (key->key() == Qt::Key_Down && key->modifiers() == Qt::AltModifier)) {
            Run([this] { Choose(); });
            return true;
        }
        // Enter goes on to the next control only from a code that is known.
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            bool known = false;
            Run([&] { known = Resolve(true); });
            if (!known) {
                m_edit->selectAll();
                return true;
            }
        }
    } else if (event->type() == QEvent::FocusOut && !m_choosing && !IsReadOnly() &&
               static_cast<QFocusEvent *>(event)->reason() != Qt::PopupFocusReason &&
               static_cast<QFocusEvent *>(event)->reason() != Qt::ActiveWindowFocusReason) {
        Run([this] { Resolve(); });
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace host
