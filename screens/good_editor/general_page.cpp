#include "screens/good_editor/general_page.h"

#include "screens/good_editor/barcode_edit.h"
#include "screens/good_editor/full_name.h"
#include "ui_general_page.h"

#include <QtWidgets/QLineEdit>

namespace {

constexpr int RootGroup = 0;
constexpr int LargestCode = 999999;
constexpr int CodeDigits = 6;
constexpr int NamePartLength = 50;

} // namespace

GeneralPage::GeneralPage(host::Host &host, TGood_DM &data, const goods::Boundary &run, QWidget *parent)
    : QWidget(parent), host_(host), data_(data), ui_(std::make_unique<Ui::GeneralPage>())
{
    ui_->setupUi(this);
    opening_ = new OpeningFields(*ui_, host, data, this);
    ui_->FullName_LBL->setFont(host.theme.TitleFont());
    // A long name must not widen the window; all of it is in the tooltip.
    ui_->FullName_LBL->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    for (const auto &[edit, part] :
         {std::pair(ui_->Name_EDT, TGood_DM::NamePart::Name), std::pair(ui_->Kala_Type_EDT, TGood_DM::NamePart::Type),
          std::pair(ui_->Kala_Index_EDT, TGood_DM::NamePart::Index)}) {
        edit->lineEdit()->setMaxLength(NamePartLength);
        edit->SetSource([this, run, part = part](const QString &beginning) {
            QStringList texts;
            run([&] { texts = data_.Good_NameParts(part, beginning); });
            return texts;
        });
        connect(edit, &QComboBox::editTextChanged, this, &GeneralPage::ShowFullName);
    }
    connect(ui_->Group_CMB, &QComboBox::currentIndexChanged, this, [this] { emit GroupPicked(Group()); });
}

GeneralPage::~GeneralPage() = default;

BarcodeEdit *GeneralPage::BarCode1() const
{
    return ui_->BarCode1_EDT;
}

host::NumericEdit *GeneralPage::CodeEdit() const
{
    return ui_->Code_EDT;
}

QWidget *GeneralPage::NameEdit() const
{
    return ui_->Name_EDT;
}

void GeneralPage::FillGroups()
{
    QList<host::Entity> groups;
    data_.GoodGroup_Fill(groups);
    ui_->Group_CMB->clear();
    for (const host::Entity &group : groups)
        ui_->Group_CMB->addItem(group.Name, group.Code);
    if (ui_->Group_CMB->findData(RootGroup) < 0)
        ui_->Group_CMB->insertItem(0, QStringLiteral("کليه کالاها"), RootGroup);
}

void GeneralPage::SelectGroup(int group)
{
    ui_->Group_CMB->setCurrentIndex(ui_->Group_CMB->findData(group));
}

void GeneralPage::Clear(int group)
{
    SetCode(0);
    SelectGroup(group);
    for (QComboBox *part : {ui_->Name_EDT, ui_->Kala_Type_EDT, ui_->Kala_Index_EDT})
        part->setEditText(QString());
    ui_->MinAva_EDT->SetNumber(0);
    ui_->ConsumerPrice_EDT->SetNumber(0);
    opening_->Clear();
}

void GeneralPage::Show(const TGoodInfoRec &rec)
{
    SetCode(rec.Code);
    SelectGroup(rec.GrpCode);
    ui_->Name_EDT->setEditText(rec.kala_name);
    ui_->Kala_Type_EDT->setEditText(rec.kala_type);
    ui_->Kala_Index_EDT->setEditText(rec.kala_index);
    ui_->MinAva_EDT->SetNumber(rec.MinAva);
    ui_->ConsumerPrice_EDT->SetNumber(rec.ConsumerPrice);
    opening_->Show(rec);
}

void GeneralPage::Store(TGoodInfoRec &rec) const
{
    rec.Code = Code();
    rec.GrpCode = Group();
    rec.kala_name = ui_->Name_EDT->currentText();
    rec.kala_type = ui_->Kala_Type_EDT->currentText();
    rec.kala_index = ui_->Kala_Index_EDT->currentText();
    rec.Name = FullName();
    rec.MinAva = ui_->MinAva_EDT->Number();
    rec.ConsumerPrice = ui_->ConsumerPrice_EDT->Number();
    opening_->Store(rec);
}

int GeneralPage::Code() const
{
    return static_cast<int>(ui_->Code_EDT->Integer());
}

void GeneralPage::SetCode(int code)
{
    const QString text = QString::number(code);
    ui_->Code_EDT->setMaxLength(qMax(CodeDigits, static_cast<int>(text.size())));
    ui_->Code_EDT->setText(text);
}

int GeneralPage::Group() const
{
    return ui_->Group_CMB->currentData().toInt();
}

QString GeneralPage::FullName() const
{
    return goods::FullName(ui_->Name_EDT->currentText(), ui_->Kala_Type_EDT->currentText(),
                           ui_->Kala_Index_EDT->currentText());
}

void GeneralPage::ShowFullName()
{
    ui_->FullName_LBL->setText(FullName());
    ui_->FullName_LBL->setToolTip(FullName());
}

goods::Refused GeneralPage::CheckGroup() const
{
    if (Group() != RootGroup)
        return {};
    return host::Refusal{ui_->Group_CMB, [](host::MessageService &messages) {
                             messages.NotSaveable(QStringLiteral("کليه کالاها"), QStringLiteral("کالايي"));
                         }};
}

goods::Refused GeneralPage::CheckCodeGiven() const
{
    if (Code() != 0)
        return {};
    return goods::RequiredField(ui_->Code_EDT, QStringLiteral("کد"));
}

goods::Refused GeneralPage::CheckCodeDigits() const
{
    if (Code() <= LargestCode)
        return {};
    return goods::SmartMessage(ui_->Code_EDT, host::message::TooManyDigits,
                               {QStringLiteral("کالا"), QStringLiteral("6 رقم")});
}

goods::Refused GeneralPage::CheckNameGiven() const
{
    for (const QComboBox *part : {ui_->Name_EDT, ui_->Kala_Type_EDT, ui_->Kala_Index_EDT})
        if (!part->currentText().trimmed().isEmpty())
            return {};
    return goods::RequiredField(ui_->Name_EDT, QStringLiteral("نام کالا"));
}

goods::Refused GeneralPage::CheckNameUnique(int code) const
{
    if (data_.Good_ExistName(code, FullName()) == 0)
        return {};
    return host::Refusal{ui_->Name_EDT, [](host::MessageService &messages) {
                             messages.MsgRepeatedField(QStringLiteral("نام"), QStringLiteral("کالا"));
                         }};
}

goods::Refused GeneralPage::CheckIndexUnique(int code) const
{
    // Most goods have no index; nobody is to be asked about that.
    const QString index = ui_->Kala_Index_EDT->currentText();
    if (index.trimmed().isEmpty() || data_.Good_ExistIndex(code, index) == 0 ||
        host_.messages.ContinueWithRepeatedField(QStringLiteral("شاخص کالا")))
        return {};
    return goods::ToldAlready(ui_->Kala_Index_EDT);
}
