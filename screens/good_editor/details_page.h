#pragma once

#include "data/goods/good_detail_types.h"

#include <QWidget>

#include <memory>

namespace Ui {
class DetailsPage;
}

/// The tab of the good's detail types (serial, colour …), of which it carries at most five.
class DetailsPage : public QWidget
{
    Q_OBJECT

public:
    DetailsPage(goods::GoodDetailTypes &data, QWidget *parent = nullptr);
    ~DetailsPage() override;

    /// Makes the working list of a new good: the members of the default category of detail types.
    void OpenNew(int goodCode);
    /// Makes the working list of an existing good: its own.
    void OpenExisting(int goodCode);
    /// The detail types that the good was opened with, 0 for none.
    const std::array<int, 5> &Loaded() const { return m_loaded; }
    bool HasRows() const { return !m_data.GoodDetails_QRY.IsEmpty(); }

private:
    void Refresh();

    goods::GoodDetailTypes &m_data;
    std::unique_ptr<Ui::DetailsPage> m_ui;
    std::array<int, 5> m_loaded{};
};
