#pragma once

#include "rules/quantity_entry.h"

#include <QWidget>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QLabel;
namespace goods {
enum class RuleTime;
struct SplitQuantity;
} // namespace goods
namespace host {
class NumericEdit;
}
namespace Ui {
class UnitQuantities;
}

/// The quantities of one good with the rules between them: one quantity, one in each of two units, or whole big units
/// and loose small ones with their total. Which it is follows from the shop's settings and the good's formula.
///
/// A screen disables the widget where quantities are fixed. It may set fields of its own under the quantities.
class UnitQuantities : public QWidget
{
    Q_OBJECT

public:
    /// What the shop has settled.
    struct Settings
    {
        bool twoUnitGoods = false;
        bool variableRatio = false; ///< the ratio of the units differs from piece to piece
        bool wholeUnits = false;    ///< unit 2 is counted in whole ones
    };
    /// What a screen calls a field: "X" names X_EDT and its label X_LBL.
    struct Field
    {
        QString name;
        QString caption;
    };
    /// Units 1 in one unit 2: nothing while the good has no formula, 0 while none is typed.
    using FormulaProvider = std::function<std::optional<goods::Quantity>()>;
    /// Asks whether quantity 2 may replace the quantity 1 that was typed by hand.
    using ReplaceQuestion = std::function<bool()>;

    explicit UnitQuantities(QWidget *parent = nullptr);
    ~UnitQuantities() override;

    void SetFormula(FormulaProvider formula) { m_formula = std::move(formula); }
    void SetReplaceQuestion(ReplaceQuestion question) { m_mayReplace = std::move(question); }
    /// Counts from the next Show() or Clear() on.
    void SetSettings(const Settings &settings) { m_settings = settings; }
    void SetNames(const Field &first, const Field &second);
    /// Sets a row of the screen's fields under quantity 1 and 2, in their columns; hidden and disabled with them.
    void AddUnderQuantities(std::initializer_list<QWidget *> fields);
    /// The same under big and small units.
    void AddUnderParts(std::initializer_list<QWidget *> fields);
    /// The names of the units stand beside their quantities; empty ones do not.
    void SetUnitNames(const QString &first, const QString &second);
    /// Captions the total of big and small units, which otherwise follows "=".
    void SetTotalCaption(const QString &caption);
    /// Every quantity gets a button, and the numeric "+", for the entry of details; both report `DetailsWanted`.
    void SetDetailButtons(bool shown);
    /// Fixes the quantities; what the screen has set under them stays as it is.
    void SetQuantitiesEnabled(bool enabled);
    /// In the order of Tab.
    const std::vector<host::NumericEdit *> &Edits() const { return m_edits; }

    /// A good without quantities: the fields are empty, not 0.
    void Clear();
    void Show(const goods::UnitAmounts &amounts);
    /// Shows totals that are entered elsewhere.
    void ShowTotals(const goods::UnitAmounts &totals);
    /// Shows what was entered elsewhere since Show(): it counts as a change.
    void Replace(const goods::UnitAmounts &amounts);
    /// Details were entered: the quantities come from them.
    void SetDetailsEntered(bool entered);
    bool DetailsEntered() const { return m_detailsEntered; }

    goods::QuantityEntry Entry() const;
    /// As typed now.
    goods::UnitAmounts Amounts() const;
    /// As they were when they were shown.
    const goods::UnitAmounts &Loaded() const { return m_loaded; }
    bool IsChanged() const { return !goods::SameAmounts(Amounts(), m_loaded); }
    /// Two quantities that may be typed agree with the formula, if there is one.
    bool AgreesWithFormula() const;
    /// Where messages on the quantity belong.
    QWidget *QuantityEdit() const;
    QWidget *SecondEdit() const;

    /// The formula was switched on or off: the other way of typing goes on with what was typed so far.
    void FormulaSwitched(bool on);
    /// Another formula was typed.
    void FormulaTyped();
    /// Computes what leaving the focused field would, so that a save from inside it sees what the user means.
    void TakeTyped();
    /// What was typed in big and small units becomes quantity 1 and 2.
    void AdoptParts();
    void ZeroWhenEmpty();

signals:
    /// The user changed a quantity, or a rule did.
    void Changed();
    /// The button of a quantity was pressed, or "+" in one.
    void DetailsWanted();

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    void Bind(host::NumericEdit *edit, goods::RuleTime time, void (UnitQuantities::*rule)(),
              bool UnitQuantities::*typed);
    bool FormulaOn() const;
    goods::Quantity Formula() const;
    goods::Quantity HiddenSecond() const;
    void SetUnitName(host::NumericEdit *edit, QLabel *&label, const QString &name);
    void ShowEntry();
    void ShowFormula();
    void SplitIntoParts();
    void ShowParts(const goods::SplitQuantity &parts);

    void LeaveFirst();
    void LeaveSecond();
    void LeaveParts();
    void LeaveTotal();

    std::unique_ptr<Ui::UnitQuantities> m_ui;
    FormulaProvider m_formula = [] { return std::nullopt; };
    ReplaceQuestion m_mayReplace = [] { return true; };
    Settings m_settings;
    goods::UnitAmounts m_loaded;
    goods::UnitAmounts m_shown; ///< by the screen, last
    std::vector<host::NumericEdit *> m_edits;
    QLabel *m_unit1 = nullptr;
    QLabel *m_unit2 = nullptr;
    bool m_detailButtons = false;
    bool m_detailsEntered = false;
    bool m_firstTyped = false; ///< by hand, since quantity 1 last followed from quantity 2
    bool m_partsTyped = false; ///< or their formula
};
