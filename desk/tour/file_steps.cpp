#include "desk/tour/file_steps.h"

#include "desk/tour/tour_script.h"

#include <QClipboard>
#include <QGuiApplication>

using namespace Qt::StringLiterals;

namespace desk {

namespace {

const QString Goods = u"GoodListDB_GRD"_s;
const QString Group = u"دمنوش"_s;

/// As a sheet copies them: two new goods of a group that is not there yet, two changes, two rows with faults.
QString CopiedRows()
{
    return u"کد\tبارکد\tنام کالا\tنوع کالا\tگروه\tواحد\tقیمت فروش\tقیمت خرید\n"
           "\t6260000000019\tدمنوش گل گاوزبان\t۵۰ گرمی\tدمنوش\tعدد\t985000\t760000\n"
           "\t6260000000026\tدمنوش به‌لیمو\t۴۰ گرمی\tدمنوش\tعدد\t870000\t655000\n"
           "\t6.26E+12\tدمنوش آویشن\t۴۰ گرمی\tدمنوش\tعدد\t640000\t480000\n"
           "\t6260000000011\tدمنوش بابونه\t۳۰ گرمی\tدمنوش\tعدد\t590000\t450000\n"
           "110001\t\t\t\t\t\t9850000\t\n"
           "110002\t\t\t\t\t\t19500000\t17900000\n"_s;
}

QString OfGroup()
{
    return u"SELECT g.Code FROM GoodInf g INNER JOIN GoodGrpS r ON r.Code = g.GrpCode WHERE r.Name = N'"_s + Group +
           u'\'';
}

void BringIn(TourScript &script)
{
    const QString rows = u"Rows_GRD"_s;
    script.When(u"copy rows"_s, Goods, [] { QGuiApplication::clipboard()->setText(CopiedRows()); });
    script.Focus(u"Import_BTN"_s);
    script.Key(u"goods from a file"_s, u"Import_BTN"_s, Qt::Key_Space);
    script.Key(u"paste them"_s, rows, Qt::Key_V, Qt::ControlModifier);
    script.Focus(u"NewGroups_CHK"_s);
    script.Key(u"make new groups"_s, u"NewGroups_CHK"_s, Qt::Key_Space);
    script.Focus(rows);
    script.Shot(u"import"_s, rows);
    script.Key(u"write them"_s, rows, Qt::Key_F3);
    script.Shot(u"import-report"_s, u"Left_GRD"_s);
    script.Key(u"leave the report"_s, u"Left_GRD"_s, Qt::Key_Escape);
    script.Expect(u"the new goods are there"_s, OfGroup(), 2);
}

void TakeBack(TourScript &script)
{
    const QString changes = u"Changes_GRD"_s;
    script.Focus(Goods);
    script.Key(u"open the last changes"_s, Goods, Qt::Key_F8, Qt::ControlModifier);
    script.Shot(u"import-last-changes"_s, changes);
    script.Key(u"take the goods back"_s, changes, Qt::Key_F8);
    script.AnswerYes(u"import-take-back"_s);
    script.Key(u"leave the last changes"_s, changes, Qt::Key_Escape);
    script.Expect(u"the new goods are gone"_s, OfGroup(), 0);
    script.Expect(u"so is their group"_s, u"SELECT Code FROM GoodGrpS WHERE Name = N'"_s + Group + u'\'', 0);
}

void TakeOut(TourScript &script)
{
    const QString name = u"fileNameEdit"_s;
    script.Focus(Goods);
    script.Key(u"take the list out"_s, Goods, Qt::Key_F9, Qt::ControlModifier);
    script.Shot(u"export"_s, name);
    script.Key(u"leave it"_s, name, Qt::Key_Escape);
}

} // namespace

void FileSteps(TourScript &script)
{
    BringIn(script);
    TakeBack(script);
    TakeOut(script);
}

} // namespace desk
