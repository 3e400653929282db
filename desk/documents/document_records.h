#pragma once

#include "host/data/quantity.h"
#include "host/services/types.h"

#include <QList>
#include <QString>

#include <stdexcept>

namespace desk {

using host::Quantity;

/// A good as the lines of documents need it.
struct DocumentGood
{
    int Code = 0;
    QString Name;
    QString UnitName1;
    QString UnitName2;    ///< empty for a good of one unit
    Quantity Formula = 0; ///< main units in one second unit; 0: none
    int StoreCode = 0;    ///< where it usually lies; 0: not told
    bool HasDetails = false;
};

/// One line of a document: amounts without sign, the price of one main unit.
struct DocumentLine
{
    int OperationRow = 0; ///< stays with the line for good
    DocumentGood Good;
    int StoreCode = 0;
    QString StoreName;
    Quantity Amount1 = 0;
    Quantity Amount2 = 0;
    Quantity Price = 0;

    Quantity Sum() const { return Amount1 * Price; }
};

struct Document
{
    int Kind = 0;
    int Code = 0;
    QString Date; ///< "1405/02/31"
    int StoreCode = 0;
    int ToStoreCode = 0; ///< of a transfer
    int AnswersCode = 0; ///< the document that a return answers; 0: none
    QString Comment;
    int Revision = 0; ///< of what was read; 0: a new document
    QList<DocumentLine> Lines;
    int ID = 0; ///< of the row that was read: the number of a deleted document is given anew
};

/// A document that may not be saved or deleted as it is; the text tells the user why.
class DocumentRefused : public std::runtime_error
{
public:
    explicit DocumentRefused(const QString &text) : std::runtime_error(text.toStdString()) {}
};

} // namespace desk
