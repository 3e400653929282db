#pragma once

#include "data/goods/good_dm.h"
#include "host/screens/refusals.h"
#include "rules/barcode_text.h"

#include <QHash>
#include <QObject>

class BarcodeEdit;

/// The six barcode edits of a good, alike in everything. The first stands on the first tab, the others on a panel that
/// is hidden for a good without barcodes until it gets one.
class BarcodeFields : public QObject
{
    Q_OBJECT

public:
    using Edits = std::array<BarcodeEdit *, std::tuple_size_v<goods::Barcodes>>;

    /// `panel` holds all edits but the first.
    BarcodeFields(const Edits &edits, QWidget *panel, host::Host &host, TGood_DM &data, host::RuleRunner run,
                  QObject *parent);

    /// Whose barcodes these are: its own row does not count as another good.
    void SetGood(int code) { m_good = code; }
    void Clear();
    /// Shows the barcodes of a stored text.
    void Show(const QString &text);
    /// The text to store.
    QString Text() const;

    /// Runs the rule of leaving for what was typed and not left yet, in whichever edit it stands.
    host::Refused CheckTyped();
    /// The screen closes: the keyboard is left as by leaving the focused edit.
    void GiveKeyboardBack();

    /// Refuses the first barcode that operates the sales screens.
    host::Refused CheckReserved() const;

signals:
    /// The barcode of `edit` was completed.
    void Completed(BarcodeEdit *edit);

private:
    host::Refused CheckLeft(BarcodeEdit *edit);
    host::Refused CheckUnique(BarcodeEdit *edit) const;
    /// Checks a barcode before the next control takes what is scanned next.
    bool CheckEntered(BarcodeEdit *edit);
    host::Refused CheckOperation(BarcodeEdit *edit) const;
    host::Refused Complete(BarcodeEdit *edit);
    void SwitchKeyboard(const char16_t *layout);

    Edits m_edits;
    QWidget *m_panel;
    host::Host &m_host;
    TGood_DM &m_data;
    host::RuleRunner m_run;
    int m_good = 0;
    /// As it was shown; nothing for a new good.
    std::optional<QString> m_stored;
    /// The barcodes that need no check of uniqueness: those of the stored good, and those that passed it.
    QHash<const BarcodeEdit *, QString> m_passed;
};
