#include "desk/documents/document_lines.h"
#include "desk/documents/document_store.h"
#include "desk/messages/catalogue.h"
#include "host/controls/grid.h"
#include "ui_document_lines.h"

#include <QScopeGuard>

using namespace Qt::StringLiterals;

// What is scanned or typed into the one field becomes a line, or more of a line; and the details of a line.

namespace desk {

int DocumentLinesPage::LineOf(int goodCode) const
{
    for (int row = 0; row < m_lines.rowCount(); ++row) {
        if (m_lines.At(row).Good.Code == goodCode && m_lines.At(row).StoreCode == m_storeCode)
            return row;
    }
    return -1;
}

bool DocumentLinesPage::InAnswered(const DocumentGood &good) const
{
    return !m_answered || std::any_of(m_answered->Lines.cbegin(), m_answered->Lines.cend(),
                                      [&](const DocumentLine &line) { return line.Good.Code == good.Code; });
}

DocumentLine DocumentLinesPage::NewLine(const DocumentGood &good) const
{
    DocumentLine line;
    line.Good = good;
    line.StoreCode = m_storeCode;
    line.StoreName = m_storeName;
    if (m_answered) {
        for (const DocumentLine &sold : m_answered->Lines) {
            if (sold.Good.Code == good.Code)
                line.Price = sold.Price;
        }
    } else {
        line.Price = ProposedPrice(m_host.DM.ADOConnection1, m_kind->priceSide, good.Code);
    }
    return line;
}

void DocumentLinesPage::TakeScan()
{
    const QString typed = Scanned();
    if (typed.isEmpty()) {
        m_ui->Scan_EDT->clear();
        return;
    }
    const QString missing = m_storeCode == 0                    ? u"انبار"_s
                            : m_kind->mustAnswer && !m_answered ? u"سند "_s + DocumentKindOf(m_kind->answers).name
                                                                : QString();
    if (!missing.isEmpty()) {
        Tell(MessageText(message::RequiredField, {missing}));
        m_waits = true;
        return;
    }
    const auto scan = ResolveScan(m_host.DM.ADOConnection1, typed);
    if (!scan)
        return Tell(MessageText(message::ScanUnknown, {typed}));
    if (!InAnswered(scan->Good))
        return Tell(MessageText(message::ScanNotSold, {typed}));
    Tell({});
    // A serial of what comes in from outside is not chosen among what is here: its screen is opened.
    const bool chosen = m_kind->direction < 0 || m_kind->type == host::TOperationType::SaleReturn;
    if (scan->how == GoodScan::How::Serial && chosen && TracksDetails(scan->Good))
        TakeSerial(*scan);
    else
        TakeGood(*scan);
}

void DocumentLinesPage::TakeGood(const GoodScan &scan)
{
    const bool details = TracksDetails(scan.Good);
    int row = LineOf(scan.Good.Code);
    const bool isNew = row < 0;
    if (isNew)
        row = m_lines.Add(NewLine(scan.Good));
    m_ui->Lines_GRD->StandOn(row);
    if (details) {
        OpenDetailsOf(row, isNew);
    } else if (isNew || scan.how != GoodScan::How::Code || scan.Count != 1) {
        DocumentLine line = m_lines.At(row);
        line.Amount1 += scan.Count;
        Follow(line, true);
        Replace(row, line);
    }
    ShowLine();
    ShowTotal();
    m_ui->Scan_EDT->clear();
    if (scan.how == GoodScan::How::Code && !details)
        m_ui->Amount1_EDT->setFocus(Qt::TabFocusReason);
    else
        FocusScan();
}

void DocumentLinesPage::TakeSerial(const GoodScan &scan)
{
    const QString typed = Scanned();
    int row = LineOf(scan.Good.Code);
    const bool isNew = row < 0;
    if (isNew)
        row = m_lines.Add(NewLine(scan.Good));
    auto giveUp = qScopeGuard([this, row, isNew] { GiveUp(row, isNew); });
    const host::TDocumentLine line = DetailsOf(m_lines.At(row));
    host::DetailMovementService &details = m_host.detailMovements;
    const bool twice =
        !isNew && LineHasDetail(m_host.DM.ADOConnection1, details.DetailsOfLine(line), scan.DetailValueID);
    std::optional<host::TAmounts> amounts;
    if (!twice)
        amounts = m_kind->direction < 0 ? details.ExitGoodDetails_Take(line, scan.DetailValueID)
                                        : details.EnterGoodDetails_Return(line, scan.DetailValueID);
    if (!amounts)
        return Tell(twice                   ? MessageText(message::ScanTwice, {typed})
                    : m_kind->direction < 0 ? MessageText(message::ScanNotInStore, {typed, scan.Good.Name, m_storeName})
                                            : MessageText(message::ScanNotSold, {typed}));
    giveUp.dismiss();
    m_ui->Lines_GRD->StandOn(row);
    SetAmounts(row, *amounts);
    m_ui->Scan_EDT->clear();
    FocusScan();
}

void DocumentLinesPage::SetAmounts(int row, const host::TAmounts &amounts)
{
    DocumentLine line = m_lines.At(row);
    line.Amount1 = amounts.Amount1;
    line.Amount2 = amounts.Amount2;
    Follow(line, true);
    Replace(row, line);
}

void DocumentLinesPage::OpenDetails()
{
    if (Current() < 0)
        return;
    if (!TracksDetails(m_lines.At(Current()).Good))
        return Tell(MessageText(message::DetailsNotKept));
    OpenDetailsOf(Current(), false);
}

void DocumentLinesPage::GiveUp(int row, bool isNew)
{
    if (isNew)
        m_lines.Remove(row);
    ShowLine();
}

/// A new line is announced only when it stays: nothing else hangs on one that is given up.
void DocumentLinesPage::OpenDetailsOf(int row, bool isNew)
{
    auto giveUp = qScopeGuard([this, row, isNew] { GiveUp(row, isNew); });
    const DocumentLine line = m_lines.At(row);
    LineDetailsOpening opening{DetailsOf(line),     line.Good.Name,      line.StoreName,
                               line.Good.UnitName1, line.Good.UnitName2, line.Amount1};
    opening.HasRows = m_host.detailMovements.RowsOfLine(opening.Line) > 0;
    const auto amounts = m_kind->direction < 0 ? m_screens.ExitGoodDetail(opening) : m_screens.EnterGoodDetail(opening);
    if (!amounts || (isNew && *amounts == host::TAmounts()))
        return;
    giveUp.dismiss();
    SetAmounts(row, *amounts);
}

} // namespace desk
