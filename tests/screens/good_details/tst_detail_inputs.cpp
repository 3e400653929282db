// The inputs of details that are built at run time, by kind.

#include "gooddetail/detail_inputs.h"
#include "tests/screens/good_details/details_fixture.h"
#include "tests/support/test_main.h"

#include <QtTest>
#include <QtWidgets>

using good_detail::DetailInputs;
using good_detail::InputMode;

class TestDetailInputs : public QObject
{
    Q_OBJECT

private slots:
    void builtByKind();
};

void TestDetailInputs::builtByKind()
{
    fixture::Shop shop;
    TSerial_DM data(shop.host);
    DetailInputs inputs;
    const auto names = [&] {
        QStringList found;
        for (const auto *each : inputs.findChildren<QWidget *>(QRegularExpression(u"_\\d$"_s)))
            if (!each->objectName().contains(u"Panel_"))
                found << each->objectName();
        found.sort();
        return found.join(u' ');
    };
    inputs.Build(data, 5004, InputMode::Enter);
    QCOMPARE(inputs.BarcodePlace(), 0);
    QCOMPARE(names(), u"CheckBox_4 ComboBox_2 DateEdit_4 Edit_3 Label_2 Label_3 Label_4 Label_5 Label__4 "
                      "ToggleSwitch_5"_s);
    QCOMPARE(test::Find<QLabel>(&inputs, u"Label_2"_s).text(), u"رنگ :"_s);
    auto &colour = test::Find<QComboBox>(&inputs, u"ComboBox_2"_s);
    QCOMPARE(colour.itemText(0), u"خالی..."_s);
    QCOMPARE(inputs.Values().Values, (std::array<QString, 5>{QString(), u"قرمز"_s, QString(), QString(), u"دارد"_s}));
    colour.setCurrentIndex(0);
    QCOMPARE(inputs.Value(1), QString());

    // What is on record is shown, whether the list has it still or not.
    const std::array<QString, 5> known{QString(), u"سبز"_s, u"1.5"_s, u"1403/05/09"_s, u"ندارد"_s};
    inputs.SetValues({inputs.DetailIDs(), known});
    QCOMPARE(inputs.Values().Values, known);
    test::Find<QCheckBox>(&inputs, u"CheckBox_4"_s).setChecked(true);
    QCOMPARE(inputs.Value(3), QString());
    test::Find<QLineEdit>(&inputs, u"Edit_3"_s).setText(u"۰۵٫۵۰"_s);
    QCOMPARE(inputs.Value(2), u"5.5"_s);

    inputs.Build(data, 5004, InputMode::Seek);
    QCOMPARE(test::Find<QComboBox>(&inputs, u"ComboBox_2"_s).currentText(), u"انتخاب کنید..."_s);
    for (int place = 0; place < 5; ++place)
        QVERIFY(!inputs.Sought(place).Value);
    test::Find<QCheckBox>(&inputs, u"CheckBoxNumber_3"_s).setChecked(true);
    test::Find<QCheckBox>(&inputs, u"CheckBoxFilter_5"_s).setChecked(true);
    test::Find<QComboBox>(&inputs, u"ComboBox_2"_s).setCurrentIndex(1);
    QCOMPARE(inputs.Sought(1).Value.value_or(u"?"_s), QString());
    QCOMPARE(inputs.Sought(2).Value.value_or(u"?"_s), QString());
    QCOMPARE(inputs.Sought(4).Value.value_or(u"?"_s), u"دارد"_s);
}

REGISTER_TEST(TestDetailInputs)
#include "tst_detail_inputs.moc"
