#include "desk/documents/document_kinds.h"

#include "host/data/persian_text.h"

#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

using host::TOperationType;
using host::TSoftwarePart;

constexpr int In = 1;
constexpr int Out = -1;
constexpr int SalePrice = 0;
constexpr int PurchasePrice = 1;
constexpr int NoPrice = -1;

} // namespace

QString DocumentKind::Title(int code) const
{
    return u"سند %1 شماره %2"_s.arg(name, host::PersianDigits(QString::number(code)));
}

const QList<DocumentKind> &AllDocumentKinds()
{
    constexpr auto number = [](TOperationType type) { return static_cast<int>(type); };
    static const QList<DocumentKind> kinds{
        {TOperationType::Sale, TSoftwarePart::Sales, u"فروش"_s, Out, 0, false, SalePrice},
        {TOperationType::Purchase, TSoftwarePart::Purchases, u"خرید"_s, In, 0, false, PurchasePrice},
        {TOperationType::SaleReturn, TSoftwarePart::SaleReturns, u"برگشت از فروش"_s, In, number(TOperationType::Sale),
         true, SalePrice},
        {TOperationType::PurchaseReturn, TSoftwarePart::PurchaseReturns, u"برگشت از خرید"_s, Out,
         number(TOperationType::Purchase), false, PurchasePrice},
        {TOperationType::TransferOut, TSoftwarePart::Transfers, u"انتقال بین انبارها"_s, Out, 0, false, NoPrice},
    };
    return kinds;
}

const DocumentKind *FindDocumentKind(int number)
{
    const auto &kinds = AllDocumentKinds();
    const int wanted =
        number == static_cast<int>(TOperationType::TransferIn) ? static_cast<int>(TOperationType::TransferOut) : number;
    const auto found = std::find_if(kinds.cbegin(), kinds.cend(),
                                    [wanted](const DocumentKind &kind) { return kind.Number() == wanted; });
    return found == kinds.cend() ? nullptr : &*found;
}

const DocumentKind &DocumentKindOf(int number)
{
    const DocumentKind *kind = FindDocumentKind(number);
    if (!kind)
        throw std::logic_error("no kind of document has the number " + std::to_string(number));
    return *kind;
}

const DocumentKind *AnsweringKind(int number)
{
    const auto &kinds = AllDocumentKinds();
    const auto found = std::find_if(kinds.cbegin(), kinds.cend(),
                                    [number](const DocumentKind &kind) { return kind.answers == number; });
    return found == kinds.cend() ? nullptr : &*found;
}

QString OperationTitle(int operationType, int operationCode)
{
    if (const DocumentKind *kind = FindDocumentKind(operationType))
        return kind->Title(operationCode);
    if (operationType == static_cast<int>(TOperationType::OpeningStock))
        return u"موجودی اول دوره"_s;
    const bool division = operationType == static_cast<int>(TOperationType::DivisionExit) ||
                          operationType == static_cast<int>(TOperationType::DivisionEntry);
    return (division ? u"تقسیم جزئیات شماره %1"_s : u"سند شماره %1"_s)
        .arg(host::PersianDigits(QString::number(operationCode)));
}

} // namespace desk
