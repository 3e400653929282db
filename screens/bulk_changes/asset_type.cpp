#include "screens/bulk_changes/asset_type.h"

#include "ui_asset_type.h"

using namespace Qt::StringLiterals;

TSelectedGoodSaveGoodType_FRM::TSelectedGoodSaveGoodType_FRM(host::Host &host)
    : TAsk_FRM(host, u"ثبت گروهی نوع کالا (دارایی)"_s), m_ui(std::make_unique<Ui::TSelectedGoodSaveGoodType_FRM>())
{
    m_ui->setupUi(Content());
}

TSelectedGoodSaveGoodType_FRM::~TSelectedGoodSaveGoodType_FRM() = default;

void TSelectedGoodSaveGoodType_FRM::FormShow()
{
    m_goodType = 0;
    m_goodTypeName.clear();
    m_ui->DaraiGoodType_CMB->clear();
    for (const host::Entity &type : m_host.finance.Fill_FinanceGoodTypes())
        m_ui->DaraiGoodType_CMB->addItem(type.Name, type.Code);
    m_ui->DaraiGoodType_CMB->setCurrentIndex(-1);
}

std::vector<host::Check> TSelectedGoodSaveGoodType_FRM::Validate()
{
    return {{u"TypeChosen"_s, [this] {
                 return host::When(m_ui->DaraiGoodType_CMB->currentData().toInt() <= 0,
                                   host::Required(m_ui->DaraiGoodType_CMB, u"نوع کالا"_s));
             }}};
}

void TSelectedGoodSaveGoodType_FRM::Write()
{
    m_goodType = m_ui->DaraiGoodType_CMB->currentData().toInt();
    m_goodTypeName = m_ui->DaraiGoodType_CMB->currentText();
}

QWidget *TSelectedGoodSaveGoodType_FRM::FirstControl() const
{
    return m_ui->DaraiGoodType_CMB;
}
