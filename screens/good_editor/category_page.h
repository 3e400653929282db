#pragma once

#include "data/goods/good_dm.h"

#include <QtWidgets/QWidget>

#include <memory>

namespace Ui {
class CategoryPage;
}

/// The tab of the categories that the good stands in.
class CategoryPage : public QWidget
{
    Q_OBJECT

public:
    CategoryPage(TGood_DM &data, QWidget *parent = nullptr);
    ~CategoryPage() override;

    void Open(int goodCode);

private:
    TGood_DM &data_;
    std::unique_ptr<Ui::CategoryPage> ui_;
};
