#include "screens/good_editor/category_page.h"

#include "ui_category_page.h"

CategoryPage::CategoryPage(TGood_DM &data, QWidget *parent)
    : QWidget(parent), data_(data), ui_(std::make_unique<Ui::CategoryPage>())
{
    ui_->setupUi(this);
    ui_->CategoryCommands_PNL->hide();
    ui_->Category_GRD->SetColumns({{QStringLiteral("NAME"), QStringLiteral("دسته"), 420}});
    ui_->Category_GRD->SetSource(&data_.KalaCategory_Qry, QStringLiteral("Id"));
}

CategoryPage::~CategoryPage() = default;

void CategoryPage::Open(int goodCode)
{
    data_.Fill_grid(goodCode);
}
