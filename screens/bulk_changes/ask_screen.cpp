#include "screens/bulk_changes/ask_screen.h"

#include "host/look/theme.h"

#include <QLabel>
#include <QPushButton>

using namespace Qt::StringLiterals;

TAsk_FRM::TAsk_FRM(host::Host &host, const QString &title)
    : TBaseSave_FRM(host, host::TSoftwarePart::Goods, host::TFormMode::Edit), m_subject(new QLabel(this))
{
    SetTitle(title);
    SaveButton()->setProperty("primary", true);
    host::theme::Repolish(SaveButton());
    m_subject->setObjectName(u"Subject_LBL"_s);
    m_subject->setTextFormat(Qt::PlainText);
    AddToHeader(m_subject);
}

void TAsk_FRM::SetSubject(const QString &subject)
{
    m_subject->setText(subject);
}

void TAsk_FRM::Proceed()
{
    done(QDialog::Accepted);
}

void TAsk_FRM::FormShown()
{
    FocusControl(FirstControl());
}

bool TAsk_FRM::FormKeyDown(QKeyEvent *event)
{
    return GoOnByEnter(event) || TBaseSave_FRM::FormKeyDown(event);
}
