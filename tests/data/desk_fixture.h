#pragma once

#include "data/goods/good_dm.h"
#include "tests/support/database.h"
#include "tests/support/test_host.h"

using namespace Qt::StringLiterals;

namespace fixture {

/// One desk: a goods data module on connections of its own.
struct Desk
{
    test::FakeSettings settings;
    test::FakeEntities entities;
    TGood_DM goods;

    explicit Desk(const test::Database &database)
        : goods({database.Main(), database.GoodsList(), database.Scales()}, settings, entities)
    {}
    Desk(const QSqlDatabase &main, const test::Database &database)
        : goods({main, database.GoodsList(), database.Scales()}, settings, entities)
    {}
};

/// A database with group 5 and 7, two units, three stores and a small tree of categories.
inline void Furnish(const test::Database &database)
{
    database.Exec(u"insert into GoodGrpS (Code, Name) values (5, N'نوشیدنی'), (7, N'شوینده')"_s);
    database.Exec(u"insert into Units (Code, Name, [Type]) values (1, N'عدد', 0), (2, N'کارتن', 1)"_s);
    database.Exec(u"insert into Stores (Code, Name) values (1, N'فروشگاه'), (2, N'مرکزی'), (3, N'سردخانه')"_s);
    database.Exec(u"insert into Categories (Code, ParentCode, Name, Path) values (1, NULL, N'خوراکی', ',1,'), "
                  "(2, 1, N'چای', ',1,2,'), (3, 1, N'قهوه', ',1,3,')"_s);
}

/// A good with something in every member.
inline TGoodInfoRec Good(int code, int group = 5)
{
    TGoodInfoRec rec;
    rec.Code = code;
    rec.GrpCode = group;
    rec.tags = u"1,2"_s;
    rec.kala_name = u"چای"_s;
    rec.kala_type = u"سبز"_s;
    rec.kala_index = QString::number(code);
    rec.AbbName = u"!626%1!"_s.arg(code);
    rec.Pos = u"10"_s;
    rec.Position = u"قفسه ۳"_s;
    rec.OffPercent = 1.5L;
    rec.MinAva = 2;
    rec.Unit = 1;
    rec.Unit2 = 2;
    rec.AvaBgPrd = 24;
    rec.AvaBgPrd2 = 2;
    rec.CostBgPrd = 1200.5L;
    rec.Store = 1;
    rec.SMSCode = QString::number(code);
    rec.ChargePercent = 3;
    rec.TaxExempt = true;
    rec.Meghdar_Formool = 12;
    rec.Weight = 0.1L;
    rec.Height = 0.2L;
    rec.Width = 0.3L;
    rec.Length = 0.123456789L;
    rec.GroupDiscount = false;
    rec.DetailUniqueCode = u"D-1"_s;
    rec.Tax_In_SellCosts = true;
    rec.Comment = u"آزمایش"_s;
    rec.CreatedTime = u"10:20:30"_s;
    rec.CreatedDate = u"1405/01/02"_s;
    rec.UserCreated = u"مدیر (1)"_s;
    rec.FeaturesDetail = u"برگ درشت"_s;
    rec.ConsumerPrice = 99000;
    rec.DaraiGoodType = 0;
    rec.Price.Discount_Sell = {1, 2.5L, 3, 4};
    rec.Price.Discount_Buy = {5, 6, 7, 100};
    rec.Price.Default_Discount_Sell_Number = 3;
    rec.Price.Default_Discount_Buy_Number = 4;
    return rec;
}

/// Tests of one desk, each on a furnished database of its own.
class Test : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        database = std::make_unique<test::Database>();
        Furnish(*database);
        desk = std::make_unique<Desk>(*database);
        Fill();
    }
    void cleanup()
    {
        desk.reset();
        database.reset();
    }

protected:
    /// What else stands in the database.
    virtual void Fill() {}

    std::unique_ptr<test::Database> database;
    std::unique_ptr<Desk> desk;
};

} // namespace fixture
