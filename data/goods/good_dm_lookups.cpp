#include "data/goods/good_dm.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace {

void AppendEntities(QList<host::Entity> &list, host::Query &query, QStringView nameField)
{
    for (; !query.Eof(); query.Next()) {
        list.append({query.Int(u"Code"), query.Text(nameField)});
    }
}

} // namespace

void TGood_DM::GoodGroup_GetAll()
{
    GoodGroup_List_QRY.Open(u"select * From GoodGrpS"_s);
}

void TGood_DM::GoodGroup_Fill(QList<host::Entity> &list)
{
    Temp_QRY.Open(u"Select distinct Name,Code From GoodGrpS order by code"_s);
    AppendEntities(list, Temp_QRY, u"Name");
}

void TGood_DM::GoodSelectedList_Fill(QList<host::Entity> &list)
{
    list.append({0, u"هيچکدام"_s});
    Temp_QRY.Open(u"Select Code,Title,Enable,DisplayType from SelectedLists where Type=0"_s);
    for (; !Temp_QRY.Eof(); Temp_QRY.Next()) {
        if (Temp_QRY.Bool(u"Enable")) {
            list.append({Temp_QRY.Int(u"Code"), Temp_QRY.Text(u"Title")});
        }
    }
}

bool TGood_DM::GoodSelectedIndex_IsChecked(int code)
{
    Temp_QRY.Open(u"Select Code,DisplayType from SelectedLists where Type=0 and Code="_s + QString::number(code));
    return !Temp_QRY.IsEmpty() && Temp_QRY.Bool(u"DisplayType");
}

void TGood_DM::UpdateMogodiKala(int kind)
{
    host::Exec(m_main, u"Exec UpdateMogodiKala "_s + QString::number(kind));
}

QString TGood_DM::GetFirstPeriodVoucherDate()
{
    Temp_QRY.Open(u"SELECT TOP 1 DATE FROM inf_co"_s);
    return Temp_QRY.IsEmpty() ? QString() : Temp_QRY.Text(u"DATE");
}

TGood_DM::Stock TGood_DM::GetStockMogodi(const QString &inner)
{
    Temp_QRY.Open(u"Select IsNull(Sum(MeghdarKol),0),IsNull(Sum(Mojod),0) From ("_s + inner + u")As T1"_s);
    return {Temp_QRY.Number(0), Temp_QRY.Number(1)};
}

bool TGood_DM::ExistTag()
{
    Temp_QRY.Open(u"SELECT TOP 1 Code FROM TagS"_s);
    return !Temp_QRY.IsEmpty();
}

void TGood_DM::GetAllTagsWithColor()
{
    Tags_qry.Open(u"SELECT TagS.Code AS ID,TagS.Name,Colors.code,[h-img] as image FROM TagS inner join colors on "
                  "TagS.color_code = colors.code"_s);
}

void TGood_DM::GetAllColors()
{
    colors_qry.Open(u"select * from colors "_s);
}

TGood_DM::Tag TGood_DM::GetTagsByColorCode(int code)
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

QList<QPair<int, QString>> TGood_DM::GetTagsOfGoods(const QString &codes)
{
    Temp_QRY.Open(u"select code,tags from GoodInf where code in("_s + host::CodeList(codes) + u')');
    QList<QPair<int, QString>> tags;
    for (; !Temp_QRY.Eof(); Temp_QRY.Next()) {
        tags.append({Temp_QRY.Int(u"code"), Temp_QRY.Text(u"tags")});
    }
    return tags;
}

void TGood_DM::TmpToMainPhoto(int goodCode)
{
    host::Run(m_main,
              u"Update PhotoGallery set tmp=0 where tmp=1 and GRPCode=102 and Id_pic="_s + QString::number(goodCode));
}

void TGood_DM::DeleteTmpphoto(int goodCode)
{
    host::Run(m_main, u"delete from PhotoGallery where tmp>0 and id_pic="_s + QString::number(goodCode));
}
