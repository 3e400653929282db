#include "screens/good_editor/details_page.h"

#include "ui_details_page.h"

#include <QtWidgets/QHeaderView>

DetailsPage::DetailsPage(TGood_DM &data, QWidget *parent)
    : QWidget(parent), data_(data), ui_(std::make_unique<Ui::DetailsPage>())
{
    ui_->setupUi(this);
    ui_->DetailCommands_PNL->hide();
    ui_->GoodDetails_GRD->SetColumns({{QStringLiteral("GoodDetailTitle"), QStringLiteral("عنوان جزئیات"), 360}});
    ui_->GoodDetails_GRD->SetSource(&data_.GoodDetails_QRY, QStringLiteral("ID"));
    ui_->GoodDetails_GRD->horizontalHeader()->setStretchLastSection(true);
}

DetailsPage::~DetailsPage() = default;

void DetailsPage::OpenNew(int goodCode)
{
    data_.CreateGoodDetailTempTable();
    data_.InsertDefaultDetailTypesSelectedListInNewGood(QString::number(goodCode));
    Refresh();
}

void DetailsPage::OpenExisting(int goodCode)
{
    data_.FillGoodDetails(goodCode);
    Refresh();
    loaded_ = {};
    const int known = qMin(data_.GoodDetails_QRY.RecordCount(), static_cast<int>(loaded_.size()));
    for (int row = 0; row < known; ++row)
        loaded_[static_cast<size_t>(row)] = data_.GoodDetails_QRY.FieldAt(row, u"GoodDetailID").toInt();
}

void DetailsPage::Refresh()
{
    data_.GoodDetailTemp_GetAll();
    ui_->DetailHint_LBL->setVisible(!HasRows());
}
