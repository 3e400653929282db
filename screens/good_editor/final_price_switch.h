#pragma once

#include <QObject>

class QAbstractButton;
class QLabel;

/// One "prices are final" switch with its clickable label and its information button, which explains why the switch
/// cannot be used.
class FinalPriceSwitch : public QObject
{
    Q_OBJECT

public:
    /// The controls belong to the page, which is `parent`.
    FinalPriceSwitch(QAbstractButton *button, QLabel *label, QAbstractButton *information, QObject *parent);

    /// Shown only in shops that allow final prices.
    void SetVisible(bool visible);
    void Show(bool on);
    bool IsOn() const;
    /// A good without tax and toll has no final prices, except where it was stored so.
    void SetBothExempt(bool exempt, bool isNew);

signals:
    void TurnedOn();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QAbstractButton *m_button;
    QLabel *m_label;
    QAbstractButton *m_information;
    bool m_visible = false;
    bool m_loadedOn = false;
};
