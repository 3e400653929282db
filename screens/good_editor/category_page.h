#pragma once

#include "data/goods/good_categories.h"
#include "host/screens/refusals.h"

#include <QWidget>

#include <memory>

namespace Ui {
class CategoryPage;
}

/// The tab of the categories that the good stands in. What is added and taken off lasts when the good is saved.
class CategoryPage : public QWidget
{
    Q_OBJECT

public:
    CategoryPage(host::Host &host, goods::Categories &data, const host::RuleRunner &run, QWidget *parent = nullptr);
    ~CategoryPage() override;

    /// Shows the categories of a good; the commands only where they may be changed.
    void Open(int goodCode, bool mayChange);
    /// The good got another code, and its categories with it.
    void MoveTo(int goodCode);
    /// Adds a category that is typed or chosen still; refuses when it cannot be, or when one added before cannot hold
    /// goods any more: another desk has deleted it or given it branches. That one is taken off.
    host::Refused CheckCategories();

signals:
    /// The user added or took off a category.
    void Changed();

private:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void Refresh();
    host::Refused Add();
    host::Refusal Unfit() const;
    host::Refused Delete();

    host::Host &m_host;
    goods::Categories &m_data;
    std::unique_ptr<Ui::CategoryPage> m_ui;
    QWidget *m_edit = nullptr; ///< where the chooser takes the keys
    int m_good = 0;
};
