#pragma once

#include "data/goods/good_dm.h"

#include <QtWidgets/QWidget>

#include <memory>

namespace Ui {
class DetailsPage;
}

/// The tab of the good's detail types (serial, colour …), of which it carries at most five.
class DetailsPage : public QWidget
{
    Q_OBJECT

public:
    DetailsPage(TGood_DM &data, QWidget *parent = nullptr);
    ~DetailsPage() override;

    /// Makes the working list of a new good: the members of the default category of detail types.
    void OpenNew(int goodCode);
    /// Makes the working list of an existing good: its own.
    void OpenExisting(int goodCode);
    /// The detail types that the good was opened with, 0 for none.
    const std::array<int, 5> &Loaded() const { return loaded_; }
    bool HasRows() const { return !data_.GoodDetails_QRY.IsEmpty(); }

private:
    void Refresh();

    TGood_DM &data_;
    std::unique_ptr<Ui::DetailsPage> ui_;
    std::array<int, 5> loaded_{};
};
