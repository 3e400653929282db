#include "host/screens/base_search.h"

#include "host/controls/category_path.h"
#include "host/look/theme.h"
#include "host/screens/form_inputs.h"
#include "host/screens/search_manager.h"

#include <QJsonDocument>
#include <QPushButton>

#include <utility>

using namespace Qt::StringLiterals;

namespace host {

TBaseSearch_FRM::TBaseSearch_FRM(Host &host, TSoftwarePart part, QWidget *parent)
    : TBaseDock_FRM(host, part, TFormMode::Selection, parent),
      m_search(std::make_unique<TVelakSearchManager>(host.DM.FDConnection1))
{
    QPushButton *select = AddFooterButton(u"Select_BTN"_s, u"انتخاب F3"_s);
    select->setProperty("primary", true);
    theme::Repolish(select);
    QPushButton *clear = AddFooterButton(u"Del_BTN"_s, u"حذف شرط‌ها F7"_s);
    QPushButton *exit = AddFooterButton(u"EXit_BTN"_s, u"خروج Esc"_s);
    SetLastButton(exit);
    Bind(select, Qt::Key_F3, [this] { RunSelect(); });
    Bind(clear, Qt::Key_F7, [this] { Clear(); });
    Bind(exit, {}, [this] { reject(); });
}

TBaseSearch_FRM::~TBaseSearch_FRM() = default;

void TBaseSearch_FRM::FormShow()
{
    if (m_empty.isEmpty())
        m_empty = Choices();
    Show(m_empty);
    ClearChoices();
    if (m_selected.isEmpty())
        return;
    Show(m_selected);
    RestoreChoices(m_selected);
}

bool TBaseSearch_FRM::Recall()
{
    LoadState();
    m_generalFilter.clear();
    if (m_selected.isEmpty())
        return false;
    FormShow();
    m_generalFilter = m_search->ParameterText();
    return true;
}

void TBaseSearch_FRM::FormShown()
{
    QWidget *const start = Content();
    for (QWidget *next = start->nextInFocusChain(); next != start; next = next->nextInFocusChain())
        if (start->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) && next->isEnabledTo(this) &&
            next->isVisibleTo(this) && inputs::TakesTyping(next)) {
            next->setFocus(Qt::TabFocusReason);
            return;
        }
}

bool TBaseSearch_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseDock_FRM::FormKeyDown(event);
}

void TBaseSearch_FRM::RunSelect()
{
    for (CategoryPath *path : Content()->findChildren<CategoryPath *>())
        if (!path->TakePending()) {
            m_host.messages.ShowMessage(u"دسته‌ای با این نام نیست."_s, MessageIcon::Warning,
                                        Title());
            path->setFocus(Qt::OtherFocusReason);
            return;
        }
    const QString before = m_generalFilter;
    try {
        SetGeneralFilter(m_search->ParameterText());
        Select();
    } catch (...) {
        m_generalFilter = before;
        throw;
    }
    if (IsShowing()) // the derived dialog thought better of it
        m_generalFilter = before;
}

void TBaseSearch_FRM::Select()
{
    m_selected = Choices();
    SaveChoices(m_selected);
    done(QDialog::Accepted);
}

void TBaseSearch_FRM::Clear()
{
    Show(m_empty);
    ClearChoices();
    FormShown();
}

QList<QWidget *> TBaseSearch_FRM::Inputs() const
{
    QList<QWidget *> found;
    const auto children = Content()->findChildren<QWidget *>();
    for (QWidget *child : children)
        if (!child->objectName().isEmpty() && !inputs::IsInner(child, Content()) && inputs::Value(child).isValid())
            found << child;
    return found;
}

QJsonObject TBaseSearch_FRM::Choices() const
{
    QJsonObject choices;
    for (const QWidget *input : Inputs())
        choices.insert(input->objectName(), QJsonValue::fromVariant(inputs::Value(input)));
    return choices;
}

void TBaseSearch_FRM::Show(const QJsonObject &choices)
{
    for (QWidget *input : Inputs())
        if (const QJsonValue value = choices.value(input->objectName()); !value.isUndefined())
            inputs::SetValue(input, value.toVariant());
}

QByteArray TBaseSearch_FRM::SaveState() const
{
    return m_selected.isEmpty() ? QByteArray() : QJsonDocument(m_selected).toJson(QJsonDocument::Compact);
}

void TBaseSearch_FRM::RestoreState(const QByteArray &state)
{
    m_selected = QJsonDocument::fromJson(state).object();
}

} // namespace host
