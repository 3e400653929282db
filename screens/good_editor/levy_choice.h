#pragma once

#include "host/controls/numeric_edit.h"
#include "host/screens/refusals.h"
#include "rules/levy_state.h"

#include <QObject>

class QRadioButton;

/// How one levy (the tax, the toll) applies to the good: three buttons and the percent of the good's own.
class LevyChoice : public QObject
{
    Q_OBJECT

public:
    /// The controls belong to the page, which is `parent`.
    LevyChoice(QRadioButton *globalSetting, QRadioButton *ownPercent, QRadioButton *exempt, host::NumericEdit *percent,
               QObject *parent);

    void Show(const goods::Levy &levy);
    goods::Levy Value() const;
    bool IsExempt() const;
    host::NumericEdit *Percent() const { return m_percent; }

    /// `caption`: what the message calls the percent.
    host::Refused CheckPercent(const QString &caption) const;

signals:
    void Changed();

private:
    void Choose();

    QRadioButton *m_globalSetting;
    QRadioButton *m_ownPercent;
    QRadioButton *m_exempt;
    host::NumericEdit *m_percent;
};
