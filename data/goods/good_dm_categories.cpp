#include "data/goods/good_dm.h"
#include "host/data/transaction.h"

#include <utility>

using namespace Qt::StringLiterals;

// Kala_category.tmp: 0 saved, 1 attached by an open editor. What an editor takes off is marked in its own memory only:
// a mark in the table would hide the category from other desks, and go with whichever of them leaves first.

QString TGood_DM::CategoryList(const QList<QPair<int, int>> &rows, int goodCode)
{
    QStringList codes;
    for (const auto &[good, category] : rows) {
        if (good == goodCode) {
            codes += QString::number(category);
        }
    }
    return codes.isEmpty() ? u"0"_s : codes.join(u',');
}

void TGood_DM::InsertUpdateToKalaCategory(int goodCode, int categoryCode, int kind)
{
    const QString good = QString::number(goodCode);
    const QString category = QString::number(categoryCode);
    if (kind == 1) {
        host::Exec(m_main, u"insert into Kala_category(kala_code,category_code,tmp) values("_s + good + u","_s +
                               category + u",1)"_s);
        m_attached.append({goodCode, categoryCode});
    } else if (kind == 2) {
        const int changed = host::Exec(m_main, u"Update Kala_category set tmp=0 where category_Code="_s + category +
                                                   u" and kala_code="_s + good);
        if (changed == 0) {
            host::Exec(m_main, u"insert into Kala_category(kala_code,category_code,tmp) values("_s + good + u","_s +
                                   category + u",0)"_s);
        }
    }
}

bool TGood_DM::cat_checker(int goodCode, int categoryCode)
{
    const QPair<int, int> row(goodCode, categoryCode);
    if (m_attached.contains(row)) {
        return false;
    }
    const QString category = QString::number(categoryCode);
    QString free = u"select Code from Categories as c where c.Code="_s + category +
                   u" and not exists (select 1 from Categories as b where b.ParentCode=c.Code)"_s;
    if (!m_takenOff.contains(row)) {
        free += u" and not exists (select 1 from Kala_category as k where k.Category_code=c.Code and k.tmp<=0"
                " and k.Kala_code="_s +
                QString::number(goodCode) + u')';
    }
    Temp_QRY.Open(free);
    return !Temp_QRY.IsEmpty();
}

void TGood_DM::GoodCatToTemp(int id, int kind)
{
    // Taken from what is shown: the row itself may have been cleared by another desk.
    if (!KalaCategory_Qry.Locate(u"Id", id)) {
        return;
    }
    const QPair<int, int> row(KalaCategory_Qry.IntField(u"Kala_code"), KalaCategory_Qry.IntField(u"Category_code"));
    if (kind == 1) {
        m_takenOff.removeAll(row);
    } else if (m_attached.contains(row)) {
        host::Exec(m_main, u"delete Kala_category where tmp>0 and Category_code="_s + QString::number(row.second) +
                               u" and Kala_code="_s + QString::number(row.first));
        m_attached.removeAll(row);
    } else if (!m_takenOff.contains(row)) {
        m_takenOff.append(row);
    }
}

void TGood_DM::Fill_grid(int goodCode)
{
    const QString good = QString::number(goodCode);
    KalaCategory_Qry.SetText(
        u"select k.Id,k.Kala_code,k.Category_code,k.tmp,"
        "ISNULL(c4.Name+N' / ',N'')+ISNULL(c3.Name+N' / ',N'')+ISNULL(c2.Name+N' / ',N'')+c1.Name as NAME"
        " from Kala_category as k inner join Categories as c1 on c1.Code=k.Category_code"
        " left join Categories as c2 on c2.Code=c1.ParentCode"
        " left join Categories as c3 on c3.Code=c2.ParentCode"
        " left join Categories as c4 on c4.Code=c3.ParentCode"
        " where k.Id in (select min(v.Id) from Kala_category as v where v.Kala_code="_s +
        good + u" and (v.tmp<=0 and v.Category_code not in ("_s + CategoryList(m_takenOff, goodCode) +
        u") or v.tmp>0 and v.Category_code in ("_s + CategoryList(m_attached, goodCode) +
        u")) group by v.Category_code) order by k.Id"_s);
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
    const QList<QPair<int, int>> attached = m_attached;
    for (const auto &row : attached) {
        if (row.first == goodCode && !KalaCategory_Qry.Locate(u"Category_code", row.second)) {
            m_attached.removeAll(row);
            InsertUpdateToKalaCategory(row.first, row.second, 1);
            restored = true;
        }
    }
    if (restored) {
        KalaCategory_Qry.Requery();
    }
}

void TGood_DM::TempToGoodCat(int goodCode)
{
    host::Transaction transaction(m_main);
    // What other desks have attached to the good is not saved with it.
    host::Run(m_main, u"delete Kala_category where Kala_code="_s + QString::number(goodCode) +
                          u" and (tmp>0 or Category_code in ("_s + CategoryList(m_takenOff, goodCode) + u"))"_s);
    for (const auto &[good, category] : std::as_const(m_attached)) {
        if (good == goodCode) {
            InsertUpdateToKalaCategory(goodCode, category, 2);
        }
    }
    host::Transaction::WhenEnded(m_main, [this, goodCode](bool committed) {
        if (committed) {
            undodelete_category(goodCode);
        }
    });
    transaction.Commit();
}

void TGood_DM::DeleteTmpCategory()
{
    host::Run(m_main, u"delete kala_category where tmp > 0"_s);
    host::Transaction::WhenEnded(m_main, [this](bool committed) {
        if (committed) {
            m_attached.clear();
        }
    });
}

void TGood_DM::undodelete_category(int goodCode)
{
    m_takenOff.removeIf([goodCode](const QPair<int, int> &row) { return row.first == goodCode; });
}
