#include "data/goods/good_categories.h"

#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace goods {

// Kala_category.tmp: 0 saved, 1 attached by an open editor. What an editor takes off is marked in its own memory only:
// a mark in the table would hide the category from other desks, and go with whichever of them leaves first.

namespace {

/// The codes of the categories that `rows` has for the good, for an IN list; one that no category has when none.
QString CategoryList(const QList<QPair<int, int>> &rows, int goodCode)
{
    QStringList codes;
    for (const auto &[good, category] : rows) {
        if (good == goodCode) {
            codes += QString::number(category);
        }
    }
    return codes.isEmpty() ? u"0"_s : codes.join(u',');
}

} // namespace

Categories::Categories(const QSqlDatabase &main)
    : KalaCategory_Qry(main), Tags_qry(main), colors_qry(main), m_main(main), Temp_QRY(main)
{
    colors_qry.SetText(u"select * from colors "_s);
}

void Categories::InsertUpdateToKalaCategory(int goodCode, int categoryCode, int kind)
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

bool Categories::cat_checker(int goodCode, int categoryCode)
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

bool Categories::DropUnfit(int goodCode)
{
    QList<int> attached;
    for (const auto &[good, category] : std::as_const(m_attached)) {
        if (good == goodCode) {
            attached.append(category);
        }
    }
    if (attached.isEmpty()) {
        return false;
    }
    QList<int> unfit = attached;
    for (Temp_QRY.Open(u"select c.Code from Categories as c where c.Code in ("_s + CategoryList(m_attached, goodCode) +
                       u") and not exists (select 1 from Categories as b where b.ParentCode=c.Code)"_s);
         !Temp_QRY.Eof(); Temp_QRY.Next()) {
        unfit.removeAll(Temp_QRY.Int(u"Code"));
    }
    if (unfit.isEmpty()) {
        return false;
    }
    QList<QPair<int, int>> rows;
    for (const int category : std::as_const(unfit)) {
        rows.append({goodCode, category});
    }
    host::Exec(m_main, u"delete Kala_category where tmp>0 and Kala_code="_s + QString::number(goodCode) +
                           u" and Category_code in ("_s + CategoryList(rows, goodCode) + u')');
    m_attached.removeIf([&rows](const QPair<int, int> &row) { return rows.contains(row); });
    return true;
}

void Categories::GoodCatToTemp(int id, int kind)
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

void Categories::Fill_grid(int goodCode)
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

void Categories::RestoreAttached(int goodCode)
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

void Categories::TempToGoodCat(int goodCode)
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

void Categories::DeleteTmpCategory()
{
    host::Run(m_main, u"delete kala_category where tmp > 0"_s);
    host::Transaction::WhenEnded(m_main, [this](bool committed) {
        if (committed) {
            m_attached.clear();
        }
    });
}

void Categories::undodelete_category(int goodCode)
{
    m_takenOff.removeIf([goodCode](const QPair<int, int> &row) { return row.first == goodCode; });
}

bool Categories::ExistTag()
{
    Temp_QRY.Open(u"SELECT TOP 1 Code FROM TagS"_s);
    return !Temp_QRY.IsEmpty();
}

void Categories::GetAllTagsWithColor()
{
    Tags_qry.Open(u"SELECT TagS.Code AS ID,TagS.Name,Colors.code,[h-img] as image FROM TagS inner join colors on "
                  "TagS.color_code = colors.code"_s);
}

Categories::Tag Categories::GetTagsByColorCode(int code)
{
    Temp_QRY.Open(
        u"select tags.code,TagS.color_code,TagS.Name,[H-img] from TagS inner join colors on TagS.color_code = "
        "colors.code  where tags.code="_s +
        QString::number(code));
    if (Temp_QRY.IsEmpty()) {
        return {};
    }
    return {Temp_QRY.Int(u"code"), Temp_QRY.Int(u"color_code"), Temp_QRY.Text(u"Name"),
            Temp_QRY.Value(u"H-img").toByteArray()};
}

QList<QPair<int, QString>> Categories::GetTagsOfGoods(const QString &codes)
{
    Temp_QRY.Open(u"select code,tags from GoodInf where code in("_s + host::CodeList(codes) + u')');
    QList<QPair<int, QString>> tags;
    for (; !Temp_QRY.Eof(); Temp_QRY.Next()) {
        tags.append({Temp_QRY.Int(u"code"), Temp_QRY.Text(u"tags")});
    }
    return tags;
}

void Categories::TmpToMainPhoto(int goodCode)
{
    host::Run(m_main,
              u"Update PhotoGallery set tmp=0 where tmp=1 and GRPCode=102 and Id_pic="_s + QString::number(goodCode));
}

void Categories::DeleteTmpphoto(int goodCode)
{
    host::Run(m_main, u"delete from PhotoGallery where tmp>0 and id_pic="_s + QString::number(goodCode));
}

bool Categories::ExistTmpphoto(int goodCode)
{
    return host::Exists(m_main, u"select top 1 Id from PhotoGallery where tmp>0 and GRPCode=102 and Id_pic="_s +
                                    QString::number(goodCode));
}

void Categories::SetTagsOfGood(int goodCode, const QString &tags)
{
    host::Exec(m_main, u"update GoodInf set tags = "_s + host::QuotedStr(tags) + u" where Code = "_s +
                           QString::number(goodCode));
}

void Categories::Category_ChangeCode(int newCode, int oldCode)
{
    const QString to = QString::number(newCode);
    const QString from = QString::number(oldCode);
    host::Run(m_main, u"Update Kala_category set kala_code="_s + to + u" where tmp>0 and kala_code="_s + from);
    host::Run(m_main, u"Update PhotoGallery set Id_pic="_s + to + u" where tmp>0 and GRPCode=102 and Id_pic="_s + from);
    const auto move = [this](int former, int later) {
        for (auto &[good, category] : m_attached) {
            good = good == former ? later : good;
        }
    };
    move(oldCode, newCode);
    host::Transaction::WhenEnded(m_main, [move, newCode, oldCode](bool committed) {
        if (!committed) {
            move(newCode, oldCode);
        }
    });
}

} // namespace goods
