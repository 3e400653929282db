// What a screen reader says of the controls of a form.

#include "host/controls/accessible_names.h"
#include "host/controls/entity_picker.h"
#include "host/controls/search_frame.h"
#include "host/controls/toggle_switch.h"
#include "tests/support/modal.h"
#include "tests/support/test_main.h"

#include <QAccessible>
#include <QtTest>
#include <QtWidgets>

class TestAccessibleNames : public QObject
{
    Q_OBJECT

private slots:
    void controlsAreCalledByTheirCaptions();
    void namelessOnesAreFound();
};

void TestAccessibleNames::controlsAreCalledByTheirCaptions()
{
    host::AccessibleNames::Install();
    QWidget window;
    window.setWindowTitle(u"کالا"_s);
    auto *form = new QGridLayout(&window);
    QList<std::pair<QWidget *, QString>> expected;
    QList<QLabel *> labels;
    const auto add = [&](const QString &caption, QWidget *control, const QString &name, bool buddy = true) {
        const int row = form->rowCount();
        labels << new QLabel(caption);
        labels.last()->setBuddy(buddy ? control : nullptr);
        form->addWidget(labels.last(), row, 0);
        form->addWidget(control, row, 1);
        QWidget *spoken = control;
        while (spoken->focusProxy())
            spoken = spoken->focusProxy();
        expected.append({spoken, name});
        return control;
    };
    add(u"&نام کالا :"_s, new QLineEdit, u"نام کالا"_s);
    add(u"رنگ && بو ..."_s, new QLineEdit, u"رنگ & بو"_s);
    add(u"وا&حد:"_s, new host::EntityPicker, u"واحد"_s);
    add(u"انبار :"_s, new QComboBox, u"انبار"_s, false);
    auto *editable = new QComboBox;
    editable->setEditable(true);
    add(u"نوع :"_s, editable, u"نوع"_s);
    expected.append({editable->lineEdit(), u"نوع"_s});
    auto *toggle = new host::ToggleSwitch;
    toggle->SetStateCaptions(u"دارد"_s, u"ندارد"_s);
    add(u"گارانتی :"_s, toggle, u"گارانتی"_s);
    add({}, new host::SearchFrame, u"جستجو"_s);
    auto *more = new QToolButton;
    more->setText(u"…"_s);
    more->setToolTip(u"انتخاب <b>دسته</b>"_s);
    more->setFocusPolicy(Qt::StrongFocus);
    add({}, more, u"انتخاب دسته"_s);
    auto *own = new QLineEdit;
    own->setAccessibleName(u"نام دیگر"_s);
    add(u"نام :"_s, own, u"نام دیگر"_s);
    auto *group = new QGroupBox(u"&سطرها"_s);
    auto *rows = new QTableView(group);
    form->addWidget(group);
    expected.append({rows, u"سطرها"_s});
    auto *list = new QListView;
    form->addWidget(list);
    expected.append({list, u"کالا"_s});
    const auto said = [](QWidget *control) {
        return QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
    };
    test::Show(window);
    for (const auto &[control, name] : std::as_const(expected))
        QCOMPARE(said(control), name);

    labels.first()->setText(u"&شرح :"_s); // captions that change take their names along
    expected.last().first->setFocus();
    expected.first().first->setFocus();
    QCOMPARE(said(expected.first().first), u"شرح"_s);

    QAccessibleInterface *box = QAccessible::queryAccessibleInterface(toggle);
    QCOMPARE(box->role(), QAccessible::CheckBox);
    QVERIFY(!box->state().checked);
    box->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    QVERIFY(toggle->isChecked() && box->state().checked);
}

void TestAccessibleNames::namelessOnesAreFound()
{
    QWidget window;
    auto *row = new QHBoxLayout(&window);
    auto *mute = new QPushButton(u"+"_s);
    mute->setObjectName(u"Mute_BTN"_s);
    row->addWidget(mute);
    row->addWidget(new QPushButton(u"&ثبت"_s));
    window.show();
    QCOMPARE(test::Nameless(window), QStringList{u"QPushButton Mute_BTN \"+\""_s});
    mute->setToolTip(u"افزودن"_s);
    window.hide();
    test::Show(window);
    QCOMPARE(test::Nameless(window), QStringList());
}

REGISTER_TEST(TestAccessibleNames)
#include "tst_accessible_names.moc"
