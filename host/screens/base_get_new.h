#pragma once

#include "host/screens/base_get.h"

class QLineEdit;

namespace host {

/// The base of editors with a code of their own and records entered one after another: after a new record was written
/// the screen prepares a fresh empty one and stays, unless the opener wants it closed. An existing record closes with
/// OK.
class HOST_EXPORT TBaseGet_New_FRM : public TBaseGet_FRM
{
    Q_OBJECT

public:
    TBaseGet_New_FRM(Host &host, TSoftwarePart part, QWidget *parent = nullptr);

    /// The next new record closes the screen with OK when it is written (an opener that wants exactly one).
    void SetCloseAfterNew(bool close) { m_closeAfterNew = close; }
    bool CloseAfterNew() const { return m_closeAfterNew; }

protected:
    /// The edit of the record's code.
    void SetCodeEdit(QLineEdit *code);
    /// Whether Tab and Enter stop at the code edit.
    void SetCode_EDTTabActive(bool active);
    /// The user changed the code.
    virtual void BaseCode_EDTPropertiesEditValueChanged();

    void Proceed() override;

private:
    QLineEdit *m_code = nullptr;
    bool m_closeAfterNew = false;
};

} // namespace host
