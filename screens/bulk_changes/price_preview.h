#pragma once

#include "data/goods/good_bulk.h"
#include "screens/bulk_changes/ask_screen.h"
#include "screens/bulk_changes/computed_rows.h"

#include <QTimer>

#include <memory>

namespace host {
class Grid;
}

namespace Ui {
class TPrice_Preview_FRM;
}

/// What a change of prices will do, good by good, before anything is written: the goods that change, each with a mark
/// that may be taken off, those that stay as they are and why, and the totals. F3 writes the marked goods, Esc leaves
/// with nothing written.
class TPrice_Preview_FRM : public TAsk_FRM
{
    Q_OBJECT

public:
    /// `changes` has a prepared preview and outlives the screen; `title` is what was asked, in words.
    TPrice_Preview_FRM(host::Host &host, goods::BulkPrices &changes, const QString &title);
    ~TPrice_Preview_FRM() override;

    /// What became of it; meaningful after the screen closed with OK.
    const goods::BulkResult &Result() const { return m_result; }
    /// The goods that were to be written.
    const QSet<int> &WrittenOrLeft() const { return m_picked; }

    void reject() override;

protected:
    void FormShow() override;
    std::vector<host::Check> Validate() override;
    void Write() override;
    void Proceed() override;
    QWidget *FirstControl() const override;
    host::Grid *PrintedGrid() const override;
    host::SearchFrame *ListSearch() const override;

private:
    /// A good that will change.
    struct Price
    {
        QString key;
        host::Quantity before;
        host::Quantity after;
    };

    void BuildGrids();
    void MarkShown(bool marked);
    void ReadPrices();
    void ShowTotals();
    bool IsStaying() const;
    QString StayingText() const;
    void Pick();

    std::unique_ptr<Ui::TPrice_Preview_FRM> m_ui;
    goods::BulkPrices &m_changes;
    QString m_title;
    bulk_changes::ComputedRows m_changing;
    bulk_changes::ComputedRows m_staying;
    std::vector<Price> m_prices;
    QTimer m_reckon; ///< the totals follow the marks when they rest
    QSet<int> m_picked;
    goods::BulkResult m_result;
};
