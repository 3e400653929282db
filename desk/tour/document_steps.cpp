#include "desk/tour/document_steps.h"

#include "desk/tour/tour_script.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString List = u"DocumentsDB_GRD"_s;
const QString Scan = u"Scan_EDT"_s;
const QString Store = u"Store_Entity"_s;
const QString Tools = u"4"_s; // the store of the power tools
const QString Drill = u"200001"_s;
const QString Returned = u"300002"_s;
/// Sales of the demo data; the tour's is the next one.
constexpr int DemoSales = 51;
constexpr int SaleReturnPlace = 3; // in the chooser of kinds

/// Rows of the ledger with the tour's serials.
QString Ledger(int operationType)
{
    return u"SELECT k.ID FROM GoodDetailKardex AS k INNER JOIN GoodDetailValueDetails AS d ON d.DetailValueID = "
           "k.DetailValueID WHERE d.[Value] BETWEEN N'300001' AND N'300050' AND k.OperationType = %1"_s.arg(
               operationType);
}

void ScanText(TourScript &script, const QString &text)
{
    script.Fill(Scan, text);
    script.Key(u"take it"_s, Scan, Qt::Key_Return);
}

void SaveAndLeave(TourScript &script)
{
    script.Key(u"save"_s, Scan, Qt::Key_F3);
    script.Key(u"no further one"_s, Scan, Qt::Key_Escape);
}

void Buy(TourScript &script)
{
    script.Command(u"new purchase"_s, u"NewPurchase_ACT"_s);
    script.Fill(Store, Tools);
    ScanText(script, Drill);
    script.Focus(u"MultiSerial_RD"_s);
    script.Key(u"a range"_s, u"MultiSerial_RD"_s, Qt::Key_Space);
    script.Fill(u"SerialFrom_EDT"_s, u"300001"_s);
    script.Fill(u"SerialTo_EDT"_s, u"300050"_s);
    script.Fill(u"Amount1_EDT"_s, u"1"_s);
    script.Shot(u"details-enter"_s, u"EnterSerialList_GRD"_s);
    script.Focus(u"SaveRow_BTN"_s);
    script.Key(u"enter them"_s, u"SaveRow_BTN"_s, Qt::Key_Space);
    script.Shot(u"details-entered"_s, u"EnterSerialList_GRD"_s);
    script.Key(u"keep them"_s, u"EnterSerialList_GRD"_s, Qt::Key_F3);
    script.Shot(u"document-purchase"_s, Scan);
    SaveAndLeave(script);
    script.Expect(u"they are bought"_s, Ledger(1), 50);
}

void Sell(TourScript &script)
{
    script.Command(u"new sale"_s, u"NewSale_ACT"_s);
    script.Fill(Store, Tools);
    for (const QString &serial : {u"300001"_s, Returned, u"300003"_s})
        ScanText(script, serial);
    script.Key(u"what goes out"_s, Scan, Qt::Key_F6);
    script.Shot(u"details-exit"_s, u"ExitSerialList_GRD"_s);
    script.Key(u"leave it so"_s, u"ExitSerialList_GRD"_s, Qt::Key_Escape);
    script.Shot(u"document-sale"_s, Scan);
    SaveAndLeave(script);
    script.Expect(u"they are sold"_s, Ledger(2), 3);
}

void TakeBack(TourScript &script)
{
    script.Command(u"the documents"_s, u"Documents_ACT"_s);
    script.Shot(u"documents"_s, List);
    script.Focus(u"Kind_CMB"_s);
    for (int step = 0; step < SaleReturnPlace; ++step)
        script.Key(u"choose the kind"_s, u"Kind_CMB"_s, Qt::Key_Down);
    script.Key(u"new return"_s, List, Qt::Key_F4);
    script.Fill(u"Answers_EDT"_s, QString::number(DemoSales + 1));
    ScanText(script, Returned);
    script.Shot(u"document-return"_s, Scan);
    SaveAndLeave(script);
    script.Expect(u"it is back"_s, Ledger(4), 1);
}

void FollowIt(TourScript &script)
{
    script.Key(u"the road of a serial"_s, List, Qt::Key_F8);
    script.Fill(u"Serial_EDT"_s, Returned);
    script.Key(u"find it"_s, u"Serial_EDT"_s, Qt::Key_Return);
    script.Shot(u"detail-history"_s, u"Movements_GRD"_s);
    script.Key(u"empty the field"_s, u"Serial_EDT"_s, Qt::Key_Escape);
    script.Key(u"leave it"_s, u"Serial_EDT"_s, Qt::Key_Escape);
    script.Focus(u"Kind_CMB"_s);
    script.Key(u"all kinds again"_s, u"Kind_CMB"_s, Qt::Key_Home);
    script.Focus(List);
    script.Key(u"leave the documents"_s, List, Qt::Key_Escape);
}

} // namespace

void DocumentSteps(TourScript &script)
{
    Buy(script);
    Sell(script);
    TakeBack(script);
    FollowIt(script);
}

} // namespace desk
