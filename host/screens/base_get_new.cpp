#include "host/screens/base_get_new.h"

#include <QLineEdit>

namespace host {

TBaseGet_New_FRM::TBaseGet_New_FRM(Host &host, TSoftwarePart part, QWidget *parent) : TBaseGet_FRM(host, part, parent)
{}

void TBaseGet_New_FRM::SetCodeEdit(QLineEdit *code)
{
    m_code = code;
    connect(code, &QLineEdit::textEdited, this,
            [this] { Command(Title(), [this] { BaseCode_EDTPropertiesEditValueChanged(); }); });
}

void TBaseGet_New_FRM::SetCode_EDTTabActive(bool active)
{
    if (m_code)
        m_code->setFocusPolicy(active ? Qt::StrongFocus : Qt::ClickFocus);
}

void TBaseGet_New_FRM::BaseCode_EDTPropertiesEditValueChanged()
{
    if (!IsLoading())
        SetIsSaved(false);
}

void TBaseGet_New_FRM::Proceed()
{
    if (Mode() != TFormMode::New || m_closeAfterNew) {
        m_closeAfterNew = false;
        TBaseGet_FRM::Proceed();
        return;
    }
    SetKey({});
    {
        const Loading quiet(*this);
        Prepare();
    }
    SetIsSaved(true);
    if (QWidget *first = FirstControl())
        FocusControl(first);
}

} // namespace host
