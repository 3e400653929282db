#pragma once

#include "host/screens/base_dock.h"

#include <QJsonObject>

namespace host {

class TVelakSearchManager;

/// The base of the advanced search of a list: the user sets criteria, the list gets a parameter text for its procedure.
///
/// The contract. A criterion is an input of the content area (edit, combo box, check box, switch, picker, tags), known
/// by its object name, or something of the derived dialog's own (`SaveChoices`, `RestoreChoices`, `ClearChoices`). How
/// the criteria read as parameters the derived dialog tells once, through `SearchManager().SetCustomFilter`, or with
/// `SetFilter` while the user chooses; texts that the user typed go in by QuotedStr.
///
/// Opening (`ShowModally`) shows what the signed-in user selected last; nothing is kept of choices that were given up.
/// F3 or `Select_BTN` makes the parameter text the general filter, keeps the choices for the user and closes with OK.
/// F7 or `Del_BTN` empties all criteria; the list notices nothing before the user selects. Esc or `EXit_BTN` closes and
/// leaves the general filter as it was. Enter goes to the next criterion and from the last one to the buttons.
class HOST_EXPORT TBaseSearch_FRM : public TBaseDock_FRM
{
    Q_OBJECT

public:
    /// `host` outlives the dialog.
    TBaseSearch_FRM(Host &host, TSoftwarePart part, QWidget *parent = nullptr);
    ~TBaseSearch_FRM() override;

    /// The parameter text of what the user selected last in this dialog ("@Name = value" joined by commas); empty
    /// before.
    QString GeneralFilter() const { return m_generalFilter; }
    /// Without showing the dialog: the general filter becomes what the signed-in user selected last, as far as it can
    /// still be chosen. False, and an empty filter, when that is nothing. Throws what opening the dialog throws.
    bool Recall();

protected:
    /// Puts the criteria together; it runs nothing here.
    TVelakSearchManager &SearchManager() { return *m_search; }
    /// Stores the general filter, as derived dialogs complete it (ADDParam, DeleteParam) before they finish.
    void SetGeneralFilter(const QString &parameters) { m_generalFilter = parameters; }

    /// The user selected, and the general filter holds the parameters of the criteria. The base keeps the choices and
    /// closes with OK; a derived dialog completes the filter first, or returns without calling the base to stay open.
    /// When it throws, the user sees why, the dialog stays, and so does the filter selected before.
    virtual void Select();

    /// The dialog's own criteria, beside the inputs that the base knows: into `choices`, back, and to nothing chosen.
    virtual void SaveChoices(QJsonObject &choices) const { Q_UNUSED(choices) }
    virtual void RestoreChoices(const QJsonObject &choices) { Q_UNUSED(choices) }
    virtual void ClearChoices() {}

    /// Shows the last choices. A derived dialog that fills combo boxes on opening does so before it calls the base.
    void FormShow() override;
    void FormShown() override;
    bool FormKeyDown(QKeyEvent *event) override;
    QByteArray SaveState() const override;
    void RestoreState(const QByteArray &state) override;

private:
    void RunSelect();
    void Clear();
    QList<QWidget *> Inputs() const;
    QJsonObject Choices() const;
    void Show(const QJsonObject &choices);

    std::unique_ptr<TVelakSearchManager> m_search;
    QString m_generalFilter;
    QJsonObject m_empty;    ///< the inputs as they are with nothing chosen
    QJsonObject m_selected; ///< what the user selected last
};

} // namespace host
