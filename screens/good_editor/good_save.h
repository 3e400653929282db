#pragma once

#include "data/goods/good_dm.h"
#include "data/goods/opening_copy.h"
#include "rules/opening_values.h"
#include "screens/opening_stock/opening_details.h"

/// Writes a good that was found valid, with everything that belongs to it, in one transaction: all of it or nothing.
class GoodSave
{
public:
    struct Request
    {
        TGoodInfoRec good;
        bool isNew = false;
        goods::OpeningValues loaded;        ///< the opening stock before the change
        goods::OpeningValues entered;       ///< and now
        bool rowTyped = false;              ///< its only row was changed in the fields of the editor
        int rowStore = 0;                   ///< and stands here now
        std::array<int, 5> loadedDetails{}; ///< the detail types before the change, 0 for none
    };

    /// `rows` and `details` are those of the good's opening stock.
    GoodSave(host::Host &host, TGood_DM &data, goods::OpeningCopy &rows, OpeningDetails &details)
        : m_host(host), m_data(data), m_rows(rows), m_details(details)
    {}

    /// Returns the code that the good was saved under: another one than asked for when another desk has taken that
    /// code meanwhile. Throws DatabaseError, having written nothing.
    int Run(Request request);

private:
    void WriteOpeningRows(const Request &request);
    void StockLasts(const Request &request);
    void WriteOpeningDetails(const Request &request);
    void WriteGood(Request &request);
    void BookOpeningStock(const Request &request);

    host::Host &m_host;
    TGood_DM &m_data;
    goods::OpeningCopy &m_rows;
    OpeningDetails &m_details;
};
