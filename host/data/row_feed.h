#pragma once

#include <QMetaType>

#include <vector>

namespace host {

/// One cell on its way from a driver into a row store, without a QVariant for each.
struct FedCell
{
    enum class Form : quint8 {
        Null,
        Integer, ///< `number`
        Boolean, ///< `number`, 0 or 1
        Decimal, ///< `number` units of 10^-`scale`
        Utf8,    ///< `size` bytes at `bytes`, valid until the next row
        Other,   ///< ask the query for its value
    };

    Form form = Form::Null;
    quint8 scale = 0;
    qint64 number = 0;
    const char *bytes = nullptr;
    qsizetype size = 0;
};

/// What a driver offers beyond QSqlResult when whole results are read: its result's handle() holds a RowFeed pointer,
/// valid as long as the result. A driver without one is read value by value.
class RowFeed
{
public:
    virtual ~RowFeed() = default;

    /// Goes to the next row of the current result as QSqlQuery::next() does, and fills in a cell for each column.
    /// False behind the last row and on an error, which the query knows then.
    virtual bool NextRow(std::vector<FedCell> &cells) = 0;

protected:
    RowFeed() = default;
    RowFeed(const RowFeed &) = default;
    RowFeed &operator=(const RowFeed &) = default;
};

} // namespace host

Q_DECLARE_METATYPE(host::RowFeed *)
