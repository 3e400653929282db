#pragma once

#include "data/goods/good_bulk_records.h"

class QWidget;
class TGood_DM;

namespace host {
struct Host;
}

namespace bulk_changes {

/// The changes of many goods, from asking to the report. Each tells the user how many goods it is for before it writes,
/// and answers whether goods were written, so that lists which show them are old.
class Commands
{
public:
    /// All outlive the object; `owner` is the window that waits.
    Commands(host::Host &host, TGood_DM &goods, QWidget &owner) : m_host(host), m_goods(goods), m_owner(owner) {}

    /// Asks for the change, shows what it will do good by good, and writes the goods that the user leaves in.
    bool ChangePrices(const goods::GoodsScope &scope);
    bool ChangeDiscounts(const goods::GoodsScope &scope);
    bool ChangeAssetType(const goods::GoodsScope &scope);
    /// Replaces the detail types of the goods by those that the user chooses.
    bool ChangeDetailTypes(const goods::GoodsScope &scope);
    /// The list of the last changes, from which they are taken back.
    bool ShowLastChanges();

private:
    int GoodsOf(const goods::GoodsScope &scope);
    bool PreviewAndWrite(const QString &title);
    void ReportPrices(const goods::BulkResult &result, const QSet<int> &picked);
    bool MayReplaceDetailTypes(const goods::BulkForecast &forecast);
    bool Finished(const goods::BulkResult &result);
    void TellLeft(const goods::BulkResult &result);

    host::Host &m_host;
    TGood_DM &m_goods;
    QWidget &m_owner;
};

} // namespace bulk_changes
