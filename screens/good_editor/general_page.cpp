#include "screens/good_editor/general_page.h"

#include "host/look/theme.h"
#include "rules/good_name.h"
#include "screens/good_editor/barcode_edit.h"
#include "ui_general_page.h"

#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace {

constexpr int RootGroup = 0;
constexpr int LargestCode = 999999;
constexpr int CodeDigits = 6;
constexpr int NamePartLength = 50;

} // namespace

GeneralPage::GeneralPage(host::Host &host, TGood_DM &data, const host::Boundary &run, QWidget *parent)
    : QWidget(parent), m_host(host), m_data(data), m_ui(std::make_unique<Ui::GeneralPage>())
{
    m_ui->setupUi(this);
    m_opening = new OpeningFields(*m_ui, host, this);
    connect(m_ui->Quantities, &UnitQuantities::Changed, this, &GeneralPage::Changed);
    m_ui->FullName_LBL->setFont(host.theme.TitleFont());
    // A long name must not widen the window; all of it is in the tooltip.
    m_ui->FullName_LBL->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    for (const auto &[edit, part] :
         {std::pair(m_ui->Name_EDT, TGood_DM::NamePart::Name), std::pair(m_ui->Kala_Type_EDT, TGood_DM::NamePart::Type),
          std::pair(m_ui->Kala_Index_EDT, TGood_DM::NamePart::Index)}) {
        edit->lineEdit()->setMaxLength(NamePartLength);
        edit->SetSource([this, run, part = part](const QString &beginning) {
            QStringList texts;
            run([&] { texts = m_data.Good_NameParts(part, beginning); });
            return texts;
        });
        connect(edit, &QComboBox::editTextChanged, this, &GeneralPage::ShowFullName);
    }
    connect(m_ui->Group_CMB, &QComboBox::currentIndexChanged, this, [this] { emit GroupPicked(Group()); });
}

GeneralPage::~GeneralPage() = default;

BarcodeEdit *GeneralPage::BarCode1() const
{
    return m_ui->BarCode1_EDT;
}

host::NumericEdit *GeneralPage::CodeEdit() const
{
    return m_ui->Code_EDT;
}

QPushButton *GeneralPage::OpeningRowsButton() const
{
    return m_ui->GoodFirstAsset_BTN;
}

QWidget *GeneralPage::NameEdit() const
{
    return m_ui->Name_EDT;
}

void GeneralPage::FillGroups()
{
    QList<host::Entity> groups;
    m_data.GoodGroup_Fill(groups);
    m_ui->Group_CMB->clear();
    for (const host::Entity &group : groups)
        m_ui->Group_CMB->addItem(group.Name, group.Code);
    if (m_ui->Group_CMB->findData(RootGroup) < 0)
        m_ui->Group_CMB->insertItem(0, u"کليه کالاها"_s, RootGroup);
}

void GeneralPage::SelectGroup(int group)
{
    m_ui->Group_CMB->setCurrentIndex(m_ui->Group_CMB->findData(group));
}

void GeneralPage::Clear(int group)
{
    SetCode(0);
    SelectGroup(group);
    for (QComboBox *part : {m_ui->Name_EDT, m_ui->Kala_Type_EDT, m_ui->Kala_Index_EDT})
        part->setEditText(QString());
    m_ui->MinAva_EDT->SetNumber(0);
    m_ui->ConsumerPrice_EDT->SetNumber(0);
    m_opening->Clear();
}

void GeneralPage::Show(const TGoodInfoRec &rec)
{
    SetCode(rec.Code);
    SelectGroup(rec.GrpCode);
    m_ui->Name_EDT->setEditText(rec.kala_name);
    m_ui->Kala_Type_EDT->setEditText(rec.kala_type);
    m_ui->Kala_Index_EDT->setEditText(rec.kala_index);
    m_ui->MinAva_EDT->SetNumber(rec.MinAva);
    m_ui->ConsumerPrice_EDT->SetNumber(rec.ConsumerPrice);
    m_opening->Show(rec);
}

void GeneralPage::Store(TGoodInfoRec &rec) const
{
    rec.Code = Code();
    rec.GrpCode = Group();
    rec.kala_name = m_ui->Name_EDT->currentText();
    rec.kala_type = m_ui->Kala_Type_EDT->currentText();
    rec.kala_index = m_ui->Kala_Index_EDT->currentText();
    rec.Name = FullName();
    rec.MinAva = m_ui->MinAva_EDT->Number();
    rec.ConsumerPrice = m_ui->ConsumerPrice_EDT->Number();
    m_opening->Store(rec);
}

int GeneralPage::Code() const
{
    return static_cast<int>(m_ui->Code_EDT->Integer());
}

void GeneralPage::SetCode(int code)
{
    const QString text = QString::number(code);
    m_ui->Code_EDT->setMaxLength(qMax(CodeDigits, static_cast<int>(text.size())));
    m_ui->Code_EDT->setText(text);
}

int GeneralPage::Group() const
{
    return m_ui->Group_CMB->currentData().toInt();
}

QString GeneralPage::FullName() const
{
    return goods::ComposedName(m_ui->Name_EDT->currentText(), m_ui->Kala_Type_EDT->currentText(),
                               m_ui->Kala_Index_EDT->currentText());
}

void GeneralPage::ShowFullName()
{
    m_ui->FullName_LBL->setText(FullName());
    m_ui->FullName_LBL->setToolTip(host::theme::PlainToolTip(FullName()));
}

host::Refused GeneralPage::CheckGroup() const
{
    if (Group() != RootGroup)
        return {};
    return host::Refusal{m_ui->Group_CMB,
                         [](host::MessageService &messages) { messages.NotSaveable(u"کليه کالاها"_s, u"کالايي"_s); }};
}

host::Refused GeneralPage::CheckCodeGiven() const
{
    if (Code() != 0)
        return {};
    return host::Required(m_ui->Code_EDT, u"کد"_s);
}

host::Refused GeneralPage::CheckCodeDigits() const
{
    if (Code() <= LargestCode)
        return {};
    return host::SmartMessage(m_ui->Code_EDT, host::message::TooManyDigits, {u"کالا"_s, u"6 رقم"_s});
}

host::Refused GeneralPage::CheckNameGiven() const
{
    for (const QComboBox *part : {m_ui->Name_EDT, m_ui->Kala_Type_EDT, m_ui->Kala_Index_EDT})
        if (!part->currentText().trimmed().isEmpty())
            return {};
    return host::Required(m_ui->Name_EDT, u"نام کالا"_s);
}

host::Refused GeneralPage::CheckNameUnique(int code) const
{
    if (m_data.Good_ExistName(code, FullName()) == 0)
        return {};
    return host::Repeated(m_ui->Name_EDT, u"نام"_s, u"کالا"_s);
}

host::Refused GeneralPage::CheckIndexUnique(int code) const
{
    // Most goods have no index; nobody is to be asked about that.
    const QString index = m_ui->Kala_Index_EDT->currentText();
    if (index.trimmed().isEmpty() || m_data.Good_ExistIndex(code, index) == 0 ||
        m_host.messages.ContinueWithRepeatedField(u"شاخص کالا"_s))
        return {};
    return host::ToldAlready(m_ui->Kala_Index_EDT);
}
