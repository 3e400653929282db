#pragma once

#include "host/screens/base_save.h"

class QLabel;

/// The base of small screens that ask for something and hand it to their caller: they close with OK once what was
/// entered passed the checks, and nothing is lost by leaving them. Enter goes on to the next control.
class TAsk_FRM : public host::TBaseSave_FRM
{
    Q_OBJECT

public:
    TAsk_FRM(host::Host &host, const QString &title);

    /// What the answer is for ("۳ کالا"), shown beside the title.
    void SetSubject(const QString &subject);

protected:
    /// Where the focus stands when the screen appears.
    virtual QWidget *FirstControl() const = 0;

    void Write() override {}
    void ShowSaved(bool) override {} // an answer may be given unchanged
    void Proceed() override;
    void FormShown() override;
    bool FormKeyDown(QKeyEvent *event) override;

private:
    QLabel *m_subject;
};
