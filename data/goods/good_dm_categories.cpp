#include "data/goods/good_dm.h"
#include "host/data/transaction.h"

#include <algorithm>

using namespace Qt::StringLiterals;

// Kala_category.tmp: 0 saved, 1 attached by an open editor, -1 taken off by an open editor. Negative because clearing
// what was attached ("tmp > 0") reaches the rows of every desk, and must not make their removals final.

void TGood_DM::InsertUpdateToKalaCategory(int goodCode, int categoryCode, int kind)
{
    const QString good = QString::number(goodCode);
    const QString category = QString::number(categoryCode);
    if (kind == 1) {
        host::Exec(main_, u"insert into Kala_category(kala_code,category_code,tmp) values("_s + good + u","_s +
                              category + u",1)"_s);
        attached_.append({goodCode, categoryCode});
    } else if (kind == 2) {
        const int changed = host::Exec(main_, u"Update Kala_category set tmp=0 where category_Code="_s + category +
                                                  u" and kala_code="_s + good);
        if (changed == 0) {
            host::Exec(main_, u"insert into Kala_category(kala_code,category_code,tmp) values("_s + good + u","_s +
                                  category + u",0)"_s);
        }
    }
}

bool TGood_DM::cat_checker(int goodCode, int categoryCode)
{
    const QString category = QString::number(categoryCode);
    Temp_QRY.Open(u"select Code from Categories as c where c.Code="_s + category +
                  u" and not exists (select 1 from Categories as b where b.ParentCode=c.Code)"
                  " and not exists (select 1 from Kala_category as k where k.Category_code=c.Code and k.tmp>=0"
                  " and k.Kala_code="_s +
                  QString::number(goodCode) + u')');
    return !Temp_QRY.IsEmpty();
}

void TGood_DM::GoodCatToTemp(int id, int kind)
{
    const QString row = QString::number(id);
    if (kind == 1) {
        host::Exec(main_, u"Update Kala_category set tmp=0 where tmp<0 and Id="_s + row);
        return;
    }
    Temp_QRY.Open(u"select Kala_code,Category_code,tmp from Kala_category where Id="_s + row);
    if (Temp_QRY.IsEmpty()) {
        return;
    }
    if (Temp_QRY.Int(u"tmp") > 0) {
        DropAttached(Temp_QRY.Int(u"Kala_code"), Temp_QRY.Int(u"Category_code"));
        host::Exec(main_, u"delete Kala_category where Id="_s + row);
    } else {
        host::Exec(main_, u"Update Kala_category set tmp=-1 where Id="_s + row);
    }
}

void TGood_DM::DropAttached(int goodCode, int categoryCode)
{
    attached_.removeAll(qMakePair(goodCode, categoryCode));
}

void TGood_DM::Fill_grid(int goodCode)
{
    KalaCategory_Qry.SetText(
        u"select k.Id,k.Kala_code,k.Category_code,k.tmp,"
        "ISNULL(c4.Name+N' / ',N'')+ISNULL(c3.Name+N' / ',N'')+ISNULL(c2.Name+N' / ',N'')+c1.Name as NAME"
        " from Kala_category as k inner join Categories as c1 on c1.Code=k.Category_code"
        " left join Categories as c2 on c2.Code=c1.ParentCode"
        " left join Categories as c3 on c3.Code=c2.ParentCode"
        " left join Categories as c4 on c4.Code=c3.ParentCode"
        " where k.tmp>=0 and k.Kala_code="_s +
        QString::number(goodCode) + u" order by k.Id"_s);
    KalaCategory_Qry.Open();
    RestoreAttached(goodCode);
    if (!KalaCategory_Qry.IsEmpty()) {
        KalaCategory_Qry.SetCurrentRow(0);
    }
}

void TGood_DM::RestoreAttached(int goodCode)
{
    // Another desk that opens an editor clears everybody's attached rows.
    bool restored = false;
    const QList<QPair<int, int>> attached = attached_;
    for (const auto &[good, category] : attached) {
        if (good == goodCode && !KalaCategory_Qry.Locate(u"Category_code", category)) {
            DropAttached(good, category);
            InsertUpdateToKalaCategory(good, category, 1);
            restored = true;
        }
    }
    if (restored) {
        KalaCategory_Qry.Requery();
    }
}

void TGood_DM::TempToGoodCat(int goodCode)
{
    const QString good = QString::number(goodCode);
    host::Transaction transaction(main_);
    QList<int> categories;
    for (const auto &[attachedGood, category] : attached_) {
        if (attachedGood == goodCode) {
            categories.append(category);
        }
    }
    Temp_QRY.Open(u"select Category_code from Kala_category where tmp>0 and Kala_code="_s + good);
    for (; !Temp_QRY.Eof(); Temp_QRY.Next()) {
        if (!categories.contains(Temp_QRY.Int(0))) {
            categories.append(Temp_QRY.Int(0));
        }
    }
    host::Run(main_, u"delete Kala_category where tmp<0 and Kala_code="_s + good);
    for (const int category : categories) {
        InsertUpdateToKalaCategory(goodCode, category, 2);
    }
    transaction.Commit();
}

void TGood_DM::DeleteTmpCategory()
{
    host::Run(main_, u"delete kala_category where tmp > 0"_s);
    attached_.clear();
}

void TGood_DM::undodelete_category(int goodCode)
{
    host::Run(main_, u"Update Kala_category set tmp=0 where tmp<0 and Kala_code="_s + QString::number(goodCode));
}
