#pragma once

#include "host/services/types.h"

#include <QList>
#include <QString>

namespace desk {

/// One kind of document that moves goods.
struct DocumentKind
{
    host::TOperationType type; ///< of its movements; also Documents.Kind
    host::TSoftwarePart part;  ///< whose rights its screens ask, and under which its codes are reserved
    QString name;              ///< "فروش"
    int direction = 0;         ///< of the goods in the line's store: 1 in, -1 out
    int answers = 0;           ///< the kind of the document that it returns; 0: none
    bool mustAnswer = false;   ///< that document has to be named
    int priceSide = 0;         ///< the price that a new line proposes: 0 sale, 1 purchase, -1 none

    int Number() const { return static_cast<int>(type); }
    bool IsTransfer() const { return type == host::TOperationType::TransferOut; }
    /// "سند فروش شماره ۱۲"
    QString Title(int code) const;
};

/// In the order in which they are offered.
const QList<DocumentKind> &AllDocumentKinds();
/// The kind with this number, also by the number under which a transfer brings in; null for what is no document.
const DocumentKind *FindDocumentKind(int number);
const DocumentKind &DocumentKindOf(int number);

/// The kind whose documents return those of `number`; null when it is not returned.
const DocumentKind *AnsweringKind(int number);

/// "سند خرید شماره ۵", "موجودی اول دوره" …: how a movement's operation is called before users.
QString OperationTitle(int operationType, int operationCode);

} // namespace desk
