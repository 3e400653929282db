#include "gooddetail/detail_inputs.h"

#include "gooddetail/serial_dm.h"
#include "host/controls/date_edit.h"
#include "host/controls/numeric_edit.h"
#include "host/controls/toggle_switch.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace good_detail {

namespace {

constexpr int LongestValue = 100; ///< characters that the table keeps
constexpr int InputsInRow = 2;

enum Kind { List = 1, Text = 2, Number = 4, Date = 5, Toggle = 7 };

} // namespace

struct DetailInputs::Input
{
    int place = 0; ///< from 0
    const TGoodDetailData *data = nullptr;
    QComboBox *combo = nullptr; ///< of a list or a text
    host::NumericEdit *number = nullptr;
    host::DateEdit *date = nullptr;
    host::ToggleSwitch *toggle = nullptr;
    QCheckBox *empty = nullptr;  ///< the value is none
    QCheckBox *filter = nullptr; ///< of a toggle, which always has a value: it narrows
    int heads = 0;               ///< entries of a list that stand for no value
    bool asksToChoose = false;   ///< the first of them does

    QWidget *Control() const
    {
        if (combo)
            return combo;
        if (number)
            return number;
        return date ? static_cast<QWidget *>(date) : toggle;
    }
};

DetailInputs::DetailInputs(QWidget *parent) : QWidget(parent), m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setHorizontalSpacing(8);
    m_grid->setVerticalSpacing(6);
    for (int column = 0; column < InputsInRow; ++column)
        m_grid->setColumnStretch(2 * column + 1, 1);
}

DetailInputs::~DetailInputs() = default;

void DetailInputs::Build(TSerial_DM &data, int goodCode, InputMode mode)
{
    while (QLayoutItem *item = m_grid->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    m_inputs.clear();
    m_mode = mode;
    data.GetGoodsDetail(goodCode, m_ids[0], m_ids[1], m_ids[2], m_ids[3], m_ids[4]);
    for (int place = 0; place < host::MostDetails; ++place) {
        const auto at = static_cast<size_t>(place);
        m_data[at] = m_ids[at] == 0 ? TGoodDetailData() : data.GetGoodDetailData(m_ids[at], static_cast<int>(mode));
        if (m_data[at].Found && place != SerialPlace() && place != BarcodePlace())
            Add(place, mode);
    }
    setVisible(!m_inputs.empty());
    Clear();
}

QString DetailInputs::Name(const QString &prefix, int place) const
{
    return prefix + QString::number(place + 1);
}

void DetailInputs::Add(int place, InputMode mode)
{
    auto input = std::make_unique<Input>();
    input->place = place;
    input->data = &m_data[static_cast<size_t>(place)];
    const int kind = input->data->Kind;
    auto *captionPanel = new QWidget(this);
    captionPanel->setObjectName(Name(u"LPanel_"_s, place));
    auto *label = new QLabel(QString(input->data->Title).replace(u'&', u"&&"_s) + u" :"_s, captionPanel);
    label->setObjectName(Name(u"Label_"_s, place));
    auto *captionRow = new QHBoxLayout(captionPanel);
    captionRow->setContentsMargins(0, 0, 0, 0);
    captionRow->addWidget(label);
    auto *panel = new QWidget(this);
    panel->setObjectName(Name(u"RPanel_"_s, place));
    auto *row = new QHBoxLayout(panel);
    row->setContentsMargins(0, 0, 0, 0);
    if (kind == List || kind == Text)
        AddList(*input, panel);
    else if (kind == Number)
        AddNumber(*input, panel);
    else if (kind == Date)
        AddDate(*input, panel);
    else
        AddToggle(*input, panel);
    label->setBuddy(input->Control());
    if (input->empty) {
        connect(input->empty, &QCheckBox::toggled, this, [this, in = input.get()](bool empty) {
            in->Control()->setEnabled(!empty);
            emit Changed();
        });
    }
    Q_UNUSED(mode)
    const int cell = static_cast<int>(m_inputs.size());
    m_grid->addWidget(captionPanel, cell / InputsInRow, 2 * (cell % InputsInRow));
    m_grid->addWidget(panel, cell / InputsInRow, 2 * (cell % InputsInRow) + 1);
    m_inputs.push_back(std::move(input));
}

/// A check box with a label of its own, which says what is looked for or left empty.
QCheckBox *DetailInputs::AddEmptyChoice(const Input &input, QWidget *panel, const QString &prefix,
                                        const QString &caption, const QString &label)
{
    auto *box = new QCheckBox(caption, panel);
    box->setObjectName(Name(prefix, input.place));
    panel->layout()->addWidget(box);
    if (!label.isEmpty()) {
        auto *text = new QLabel(label, panel);
        text->setObjectName(Name(input.number ? u"LabelNumber_"_s : u"Label__"_s, input.place));
        text->setBuddy(box);
        panel->layout()->addWidget(text);
    }
    return box;
}

void DetailInputs::AddList(Input &input, QWidget *panel)
{
    const TGoodDetailData &data = *input.data;
    input.combo = new QComboBox(panel);
    input.combo->setObjectName(Name(u"ComboBox_"_s, input.place));
    input.combo->addItems(data.Items);
    // A long entry must not push the other inputs out of the window.
    input.combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    input.combo->setMinimumContentsLength(12);
    panel->layout()->addWidget(input.combo);
    if (data.Kind == List) {
        input.asksToChoose = m_mode == InputMode::Seek && !data.Items.isEmpty();
        input.heads = data.Items.isEmpty() ? 0 : int(input.asksToChoose) + int(!data.IsRequired);
        connect(input.combo, &QComboBox::currentIndexChanged, this, &DetailInputs::Changed);
        return;
    }
    input.combo->setEditable(true);
    input.combo->setInsertPolicy(QComboBox::NoInsert);
    input.combo->setCompleter(nullptr); // it would write the rest of a known text behind what is typed
    input.combo->lineEdit()->setMaxLength(LongestValue);
    connect(input.combo, &QComboBox::editTextChanged, this, &DetailInputs::Changed);
    if (m_mode == InputMode::Seek)
        input.empty = AddEmptyChoice(input, panel, u"CheckBoxText_"_s, u"بدون &متن"_s, {});
}

void DetailInputs::AddNumber(Input &input, QWidget *panel)
{
    input.number = new host::NumericEdit(panel);
    input.number->setObjectName(Name(u"Edit_"_s, input.place));
    input.number->setNegative(true);
    panel->layout()->addWidget(input.number);
    connect(input.number, &QLineEdit::textChanged, this, &DetailInputs::Changed);
    if (m_mode == InputMode::Seek)
        input.empty = AddEmptyChoice(input, panel, u"CheckBoxNumber_"_s, {}, u"بدون &عدد"_s);
}

void DetailInputs::AddDate(Input &input, QWidget *panel)
{
    input.date = new host::DateEdit(panel);
    input.date->setObjectName(Name(u"DateEdit_"_s, input.place));
    input.date->SetType(static_cast<host::DateType>(input.data->DateType));
    panel->layout()->addWidget(input.date);
    connect(input.date, &QLineEdit::textChanged, this, &DetailInputs::Changed);
    if (m_mode == InputMode::Seek)
        input.empty = AddEmptyChoice(input, panel, u"CheckBox_"_s, {}, u"بدون تا&ریخ"_s);
    else if (!input.data->IsRequired)
        input.empty = AddEmptyChoice(input, panel, u"CheckBox_"_s, u"&ت"_s, u"بدون &تاریخ"_s);
}

void DetailInputs::AddToggle(Input &input, QWidget *panel)
{
    input.toggle = new host::ToggleSwitch(panel);
    input.toggle->setObjectName(Name(u"ToggleSwitch_"_s, input.place));
    input.toggle->SetStateCaptions(input.data->ToggleTitleTrue, input.data->ToggleTitleFalse);
    panel->layout()->addWidget(input.toggle);
    connect(input.toggle, &host::ToggleSwitch::toggled, this, &DetailInputs::Changed);
    if (m_mode != InputMode::Seek)
        return;
    input.filter = AddEmptyChoice(input, panel, u"CheckBoxFilter_"_s, u"جستجو"_s, {});
    connect(input.filter, &QCheckBox::toggled, this, &DetailInputs::Changed);
}

int DetailInputs::PlaceOf(int kind) const
{
    const auto found = std::find_if(m_data.cbegin(), m_data.cend(),
                                    [kind](const TGoodDetailData &data) { return data.Found && data.Kind == kind; });
    return found == m_data.cend() ? -1 : static_cast<int>(found - m_data.cbegin());
}

const DetailInputs::Input *DetailInputs::At(int place) const
{
    const auto found =
        std::find_if(m_inputs.cbegin(), m_inputs.cend(), [place](const auto &input) { return input->place == place; });
    return found == m_inputs.cend() ? nullptr : found->get();
}

QString DetailInputs::ValueOf(const Input &input)
{
    if (input.empty && input.empty->isChecked())
        return {};
    if (input.combo && input.data->Kind == List)
        return input.combo->currentIndex() < input.heads ? QString() : input.combo->currentText();
    if (input.combo)
        return input.combo->currentText().trimmed();
    if (input.number)
        return input.number->IsEmpty() ? QString() : host::NormalizeDecimal(input.number->text()).value_or(QString());
    if (input.date)
        return input.date->Text();
    return input.toggle->isChecked() ? input.data->ToggleTitleTrue : input.data->ToggleTitleFalse;
}

QString DetailInputs::Value(int place) const
{
    const Input *input = At(place);
    return input ? ValueOf(*input) : QString();
}

host::TDetailValues DetailInputs::Values() const
{
    host::TDetailValues values{m_ids, {}};
    for (const auto &input : m_inputs)
        values.Values[static_cast<size_t>(input->place)] = ValueOf(*input);
    return values;
}

void DetailInputs::ShowValue(const Input &input, const QString &value)
{
    if (input.empty)
        input.empty->setChecked(false);
    if (input.combo && input.data->Kind == List) {
        // An item that was taken off the list since is still the value of what was entered.
        const int item = input.combo->findText(value, Qt::MatchExactly | Qt::MatchCaseSensitive);
        if (value.isEmpty())
            input.combo->setCurrentIndex(input.heads > 0 ? input.heads - 1 : -1);
        else if (item >= input.heads)
            input.combo->setCurrentIndex(item);
        else {
            input.combo->addItem(value);
            input.combo->setCurrentIndex(input.combo->count() - 1);
        }
    } else if (input.combo) {
        input.combo->setEditText(value);
    } else if (input.number) {
        input.number->setText(value);
    } else if (input.date) {
        input.date->SetDate(host::ParseDate(value, input.date->Type()).value_or(QDate()));
        if (input.empty)
            input.empty->setChecked(value.isEmpty());
    } else {
        input.toggle->setChecked(value == input.data->ToggleTitleTrue);
    }
}

void DetailInputs::SetValue(int place, const QString &value)
{
    if (const Input *input = At(place))
        ShowValue(*input, value);
}

void DetailInputs::SetValues(const host::TDetailValues &values)
{
    for (const auto &input : m_inputs)
        ShowValue(*input, values.Values[static_cast<size_t>(input->place)]);
}

void DetailInputs::ShowDefault(const Input &input)
{
    if (input.empty)
        input.empty->setChecked(false);
    if (input.filter)
        input.filter->setChecked(false);
    const QString &value = input.data->DefaultValue;
    if (input.combo && input.data->Kind == List) {
        // The default of a list is an item's place, from 1.
        const int item = value.toInt() + input.heads - 1;
        const bool known = value.toInt() > 0 && item < input.combo->count();
        const int none = input.heads > 0 ? 0 : -1;
        input.combo->setCurrentIndex(known && !input.asksToChoose ? item : none);
    } else if (input.combo) {
        input.combo->setEditText(input.filter || input.empty ? QString() : value);
    } else if (input.number) {
        input.number->clear();
    } else if (input.date) {
        input.date->SetDate({});
    } else {
        input.toggle->setChecked(value == u"1");
    }
}

void DetailInputs::Clear()
{
    for (const auto &input : m_inputs)
        ShowDefault(*input);
}

TExitNarrowing::Detail DetailInputs::Sought(int place) const
{
    const Input *input = At(place);
    if (!input)
        return {};
    TExitNarrowing::Detail sought;
    sought.IsText = input->data->Kind == Text;
    const bool chosen =
        input->combo && input->data->Kind == List && input->combo->currentIndex() >= int(input->asksToChoose);
    const QString value = ValueOf(*input);
    const bool asked = (input->empty && input->empty->isChecked()) || (input->filter && input->filter->isChecked());
    const bool typed = !value.isEmpty() && !input->filter;
    if (asked || chosen || typed)
        sought.Value = value;
    return sought;
}

QWidget *DetailInputs::Control(int place) const
{
    const Input *input = At(place);
    return input ? input->Control() : nullptr;
}

QWidget *DetailInputs::First() const
{
    return m_inputs.empty() ? nullptr : m_inputs.front()->Control();
}

int DetailInputs::CaptionWidth() const
{
    int width = 0;
    for (int row = 0; row < m_grid->rowCount(); ++row)
        if (const QLayoutItem *caption = m_grid->itemAtPosition(row, 0))
            width = qMax(width, caption->sizeHint().width());
    return width;
}

void DetailInputs::SetCaptionWidth(int width)
{
    m_grid->setColumnMinimumWidth(0, width);
}

void DetailInputs::SetTabOrder(QWidget *before, QWidget *behind) const
{
    QWidget *last = before;
    const auto add = [&last](QWidget *stop) {
        if (!stop)
            return;
        QWidget::setTabOrder(last, stop);
        last = stop;
    };
    for (const auto &input : m_inputs) {
        add(input->Control());
        add(input->empty);
        add(input->filter);
    }
    add(behind);
}

int DetailInputs::FirstMissing() const
{
    const auto missing = std::find_if(m_inputs.cbegin(), m_inputs.cend(), [](const auto &input) {
        return input->data->IsRequired && ValueOf(*input).isEmpty();
    });
    return missing == m_inputs.cend() ? -1 : (*missing)->place;
}

int DetailInputs::FirstInvalid() const
{
    const auto invalid = std::find_if(m_inputs.cbegin(), m_inputs.cend(), [](const auto &input) {
        return input->date && input->date->isEnabled() && !input->date->IsValid();
    });
    return invalid == m_inputs.cend() ? -1 : (*invalid)->place;
}

} // namespace good_detail
