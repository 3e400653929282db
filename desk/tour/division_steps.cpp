#include "desk/tour/division_steps.h"

#include "desk/tour/tour_script.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString Scan = u"Scan_EDT"_s;
const QString List = u"Division_GRD"_s;
// Rolls of one good are of different lengths only in shops that say so.
const QString RollSwitch = u"TwoUnitVariableRatio"_s;

/// Rows of the ledger that divisions made of the tour's units.
QString Ledger(int operationType)
{
    return u"SELECT k.ID FROM GoodDetailKardex AS k INNER JOIN GoodDetailDivision AS v ON v.Code = k.OperationCode WHERE "
           "k.GoodCode IN (200034, 210036) AND k.OperationType = %1"_s.arg(operationType);
}

/// The units on hand that the editor offers.
void Offered(TourScript &script, const QString &picture)
{
    script.Key(u"what can be divided"_s, Scan, Qt::Key_F4);
    script.Shot(picture, u"Goods_List_GRD"_s);
    script.Key(u"leave them"_s, u"Goods_List_GRD"_s, Qt::Key_Escape);
}

/// Parts as rows of the texts that their fields take; the last one is what is left.
void Divide(TourScript &script, const QString &serial, const QList<QStringList> &parts, const QString &picture)
{
    script.Fill(Scan, serial);
    script.Key(u"divide it"_s, Scan, Qt::Key_Return);
    for (const QStringList &part : parts) {
        for (int field = 0; field < part.size(); ++field)
            script.Fill(u"Amount%1_EDT"_s.arg(field + 1), part.at(field));
        script.Key(u"enter the part"_s, u"SaveRow_BTN"_s, Qt::Key_F4);
    }
    script.Shot(picture, u"SaveRow_BTN"_s);
    script.Key(u"keep the parts"_s, u"SaveRow_BTN"_s, Qt::Key_F3);
}

} // namespace

void DivisionSteps(TourScript &script)
{
    script.Switch(RollSwitch);
    script.Command(u"the divisions"_s, u"Divisions_ACT"_s);
    script.Key(u"a new one"_s, List, Qt::Key_F4);
    Offered(script, u"details-select-packed"_s);
    Divide(script, u"200034001"_s,
           {{u"1.5"_s, u"1"_s, u"1"_s}, {u"1"_s, u"0.75"_s, u"2"_s}, {u"1.5"_s, u"0.5"_s, u"1"_s}},
           u"division-sheet"_s);
    Divide(script, u"210036001"_s, {{u"20"_s, u"1"_s}, {u"15"_s, u"2"_s}}, u"division-roll"_s);
    script.Fill(u"Comment_EDT"_s, u"سفارش گلخانه"_s);
    script.Shot(u"division-editor"_s, Scan);
    script.Key(u"save"_s, Scan, Qt::Key_F3);
    script.Shot(u"division-list"_s, List);
    script.Key(u"leave the divisions"_s, List, Qt::Key_Escape);
    script.Expect(u"a sheet and a roll went"_s, Ledger(24), 2);
    script.Expect(u"their parts came"_s, Ledger(25), 7);
    script.Switch(RollSwitch);
    script.Command(u"the divisions of sheets"_s, u"Divisions_ACT"_s);
    script.Key(u"a new one"_s, List, Qt::Key_F4);
    Offered(script, u"details-select-area"_s);
    script.Key(u"leave it"_s, Scan, Qt::Key_Escape);
    script.Key(u"leave the divisions again"_s, List, Qt::Key_Escape);
}

} // namespace desk
