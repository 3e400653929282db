#include "screens/good_editor/details_page.h"

#include "ui_details_page.h"

#include <QHeaderView>

using namespace Qt::StringLiterals;

DetailsPage::DetailsPage(goods::GoodDetailTypes &data, QWidget *parent)
    : QWidget(parent), m_data(data), m_ui(std::make_unique<Ui::DetailsPage>())
{
    m_ui->setupUi(this);
    m_ui->DetailCommands_PNL->hide();
    m_ui->GoodDetails_GRD->SetColumns({{u"GoodDetailTitle"_s, u"عنوان جزئیات"_s, 360}});
    m_ui->GoodDetails_GRD->SetSource(&m_data.GoodDetails_QRY, u"ID"_s);
    m_ui->GoodDetails_GRD->horizontalHeader()->setStretchLastSection(true);
}

DetailsPage::~DetailsPage() = default;

void DetailsPage::OpenNew(int goodCode)
{
    m_data.CreateGoodDetailTempTable();
    m_data.InsertDefaultDetailTypesSelectedListInNewGood(QString::number(goodCode));
    Refresh();
}

void DetailsPage::OpenExisting(int goodCode)
{
    m_data.FillGoodDetails(goodCode);
    Refresh();
    m_loaded = {};
    const int known = qMin(m_data.GoodDetails_QRY.RecordCount(), static_cast<int>(m_loaded.size()));
    for (int row = 0; row < known; ++row)
        m_loaded[static_cast<size_t>(row)] = m_data.GoodDetails_QRY.FieldAt(row, u"GoodDetailID").toInt();
}

void DetailsPage::Refresh()
{
    m_data.GoodDetailTemp_GetAll();
    m_ui->DetailHint_LBL->setVisible(!HasRows());
}
