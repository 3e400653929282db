#include "desk/tour/unit_type_steps.h"

#include "desk/tour/tour_script.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString Scan = u"Scan_EDT"_s;
const QString Store = u"Store_Entity"_s;
const QString Tools = u"4"_s; // the store of the power tools
const QString Variable = u"TwoUnitVariableRatio"_s;
const QString TwoUnits = u"TwoUnitGoods"_s;

/// A good of the demo data, its new units as serial and the texts of its amounts.
struct Received
{
    QString good;
    QString picture;
    QList<QStringList> units;
};

const Received Sheet{
    u"200034"_s, u"area"_s, {{u"200034101"_s, u"2"_s, u"1.25"_s, u"1"_s}, {u"200034102"_s, u"2"_s, u"0.8"_s, u"1"_s}}};
const Received Roll{u"210036"_s, u"packed"_s, {{u"210036101"_s, u"100"_s, u"1"_s}, {u"210036102"_s, u"75"_s, u"1"_s}}};
const Received Drill{u"200001"_s, u"two-units"_s, {{u"300101"_s, u"1"_s}, {u"300102"_s, u"1"_s}}};
const Received Grinder{u"200005"_s, u"one-unit"_s, {{u"300201"_s, u"1"_s}, {u"300202"_s, u"1"_s}}};

/// The last unit stands in the inputs when the picture is taken.
void Enter(TourScript &script, const Received &received)
{
    script.Fill(Scan, received.good);
    script.Key(u"its details"_s, Scan, Qt::Key_Return);
    for (const QStringList &unit : received.units) {
        script.Fill(u"Serial_EDT"_s, unit.first());
        for (int field = 1; field < unit.size(); ++field)
            script.Fill(u"Amount%1_EDT"_s.arg(field), unit.at(field));
        if (&unit == &received.units.last())
            script.Shot(u"details-enter-"_s + received.picture, u"EnterSerialList_GRD"_s);
        script.Focus(u"SaveRow_BTN"_s);
        script.Key(u"enter it"_s, u"SaveRow_BTN"_s, Qt::Key_Space);
    }
    script.Key(u"keep them"_s, u"EnterSerialList_GRD"_s, Qt::Key_F3);
}

void Take(TourScript &script, const Received &received)
{
    script.Fill(Scan, received.units.first().first());
    script.Key(u"take it"_s, Scan, Qt::Key_Return);
    script.Key(u"what goes out"_s, Scan, Qt::Key_F6);
    script.Shot(u"details-exit-"_s + received.picture, u"ExitSerialList_GRD"_s);
    script.Key(u"leave it so"_s, u"ExitSerialList_GRD"_s, Qt::Key_Escape);
}

void Document(TourScript &script, const QString &command, const QList<Received> &goods,
              void (*line)(TourScript &, const Received &))
{
    script.Command(u"a new document"_s, command);
    script.Fill(Store, Tools);
    for (const Received &received : goods)
        line(script, received);
    script.Key(u"save"_s, Scan, Qt::Key_F3);
    script.Key(u"no further one"_s, Scan, Qt::Key_Escape);
}

void InAndOut(TourScript &script, const QList<Received> &goods)
{
    Document(script, u"NewPurchase_ACT"_s, goods, Enter);
    Document(script, u"NewSale_ACT"_s, goods, Take);
}

} // namespace

void UnitTypeSteps(TourScript &script)
{
    script.Switch(Variable);
    InAndOut(script, {Sheet, Roll, Drill});
    script.Switch(Variable);
    script.Switch(TwoUnits);
    InAndOut(script, {Grinder});
    script.Switch(TwoUnits);
    script.Expect(u"they came in and one of each went out"_s,
                  u"SELECT k.ID FROM GoodDetailKardex AS k INNER JOIN GoodDetailValueDetails AS d ON d.DetailValueID = "
                  "k.DetailValueID WHERE d.[Value] IN (N'200034101', N'210036101', N'300101', N'300201') AND "
                  "k.OperationType IN (1, 2)"_s,
                  8);
}

} // namespace desk
