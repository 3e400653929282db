#pragma once

#include "gooddetail/good_detail_records.h"

#include <QWidget>

#include <functional>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QLineEdit;
class TSerial_DM;

namespace host {
class DateEdit;
class NumericEdit;
class ToggleSwitch;
} // namespace host

namespace good_detail {

/// Why the inputs are there: the number goes to `GetGoodDetailData`.
enum class InputMode {
    Enter = 1, ///< values are entered
    Seek = 2,  ///< values are looked for: a list begins with "choose", every kind can look for an empty value
};

/// The inputs of a good's details that are neither serial nor barcode: one panel for each, built at run time by its
/// kind. A control's name is its prefix and the detail's place in the good's order, from 1: "Edit_2".
///
/// Values are texts as the user sees them, empty for none.
class DetailInputs : public QWidget
{
    Q_OBJECT

public:
    explicit DetailInputs(QWidget *parent = nullptr);
    ~DetailInputs() override;

    /// Builds the inputs of a good, in place of what there was. Reads the database.
    void Build(TSerial_DM &data, int goodCode, InputMode mode);

    /// Of all details of the good, serial and barcode included; 0 where there is none.
    const std::array<int, host::MostDetails> &DetailIDs() const { return m_ids; }
    /// What is known of the detail in a place from 0; not found beyond the last.
    const TGoodDetailData &Data(int place) const { return m_data[static_cast<size_t>(place)]; }
    /// Where the serial stands, from 0; -1 without one.
    int SerialPlace() const { return PlaceOf(3); }
    int BarcodePlace() const { return PlaceOf(6); }
    bool IsEmpty() const { return m_inputs.empty(); }

    /// The value in a place; empty where there is no input.
    QString Value(int place) const;
    /// All values; those of serial and barcode are left empty for the screen.
    host::TDetailValues Values() const;
    /// Shows a value as it is on record, whether the lists have it or not.
    void SetValue(int place, const QString &value);
    void SetValues(const host::TDetailValues &values);
    /// The defaults of the detail types.
    void Clear();
    /// What the list is to be narrowed by (Seek): nothing when the input narrows nothing.
    TExitNarrowing::Detail Sought(int place) const;

    /// The control of a place, null where there is no input.
    QWidget *Control(int place) const;
    /// The first input in the order of Tab, null when there is none.
    QWidget *First() const;
    /// How wide the first column of captions is, and has to be at least.
    int CaptionWidth() const;
    void SetCaptionWidth(int width);
    /// Puts the inputs into the order of Tab, between two controls of the screen.
    void SetTabOrder(QWidget *before, QWidget *behind) const;
    /// The first place whose value must be entered and is not; -1 when there is none.
    int FirstMissing() const;
    /// The first place with a date that is none; -1 when there is none.
    int FirstInvalid() const;

signals:
    /// The user or the program changed a value.
    void Changed();

private:
    struct Input;
    using Row = std::pair<QWidget *, QWidget *>;

    int PlaceOf(int kind) const;
    const Input *At(int place) const;
    void Add(int place, InputMode mode);
    void AddList(Input &input, QWidget *panel);
    void AddNumber(Input &input, QWidget *panel);
    void AddDate(Input &input, QWidget *panel);
    void AddToggle(Input &input, QWidget *panel);
    QCheckBox *AddEmptyChoice(const Input &input, QWidget *panel, const QString &prefix, const QString &caption,
                              const QString &label);
    QString Name(const QString &prefix, int place) const;
    static void ShowValue(const Input &input, const QString &value);
    static QString ValueOf(const Input &input);
    static void ShowDefault(const Input &input);

    std::array<int, host::MostDetails> m_ids{};
    std::array<TGoodDetailData, host::MostDetails> m_data;
    std::vector<std::unique_ptr<Input>> m_inputs;
    QGridLayout *m_grid;
    InputMode m_mode = InputMode::Enter;
};

} // namespace good_detail
