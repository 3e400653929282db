#include "data/goods/good_lookups.h"

#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

namespace goods {

namespace {

void AppendEntities(QList<host::Entity> &list, host::Query &query, QStringView nameField)
{
    for (; !query.Eof(); query.Next()) {
        list.append({query.Int(u"Code"), query.Text(nameField)});
    }
}

} // namespace

Lookups::Lookups(const QSqlDatabase &main) : GoodGroup_List_QRY(main), m_main(main), Temp_QRY(main)
{}

void Lookups::GoodGroup_GetAll()
{
    GoodGroup_List_QRY.Open(u"select * From GoodGrpS"_s);
}

void Lookups::GoodGroup_Fill(QList<host::Entity> &list)
{
    Temp_QRY.Open(u"Select distinct Name,Code From GoodGrpS order by code"_s);
    AppendEntities(list, Temp_QRY, u"Name");
}

void Lookups::GoodSelectedList_Fill(QList<host::Entity> &list)
{
    list.append({0, u"هيچکدام"_s});
    Temp_QRY.Open(u"Select Code,Title,Enable,DisplayType from SelectedLists where Type=0"_s);
    for (; !Temp_QRY.Eof(); Temp_QRY.Next()) {
        if (Temp_QRY.Bool(u"Enable")) {
            list.append({Temp_QRY.Int(u"Code"), Temp_QRY.Text(u"Title")});
        }
    }
}

bool Lookups::GoodSelectedIndex_IsChecked(int code)
{
    Temp_QRY.Open(u"Select Code,DisplayType from SelectedLists where Type=0 and Code="_s + QString::number(code));
    return !Temp_QRY.IsEmpty() && Temp_QRY.Bool(u"DisplayType");
}

QString GoodsShownTo(int deniedTo)
{
    return deniedTo == 0 ? QString()
                         : u" WHERE NOT EXISTS (SELECT 1 FROM UserDeniedGroups d WHERE d.UserCode = "_s +
                               QString::number(deniedTo) + u" AND d.GrpCode = g.GrpCode)"_s;
}

int Lookups::Good_Count(int deniedTo)
{
    return host::Scalar(m_main, u"select Count(*) as Goods from GoodInf g"_s + GoodsShownTo(deniedTo)).toInt();
}

bool Lookups::Good_IsShownTo(int code, int deniedTo)
{
    return host::Exists(m_main, u"select g.Code from (select Code,GrpCode from GoodInf where Code="_s +
                                    QString::number(code) + u") as g"_s + GoodsShownTo(deniedTo));
}

void Lookups::UpdateMogodiKala(int kind)
{
    host::Exec(m_main, u"Exec UpdateMogodiKala "_s + QString::number(kind));
}

Lookups::Stock Lookups::GetStockMogodi(const QString &inner)
{
    Temp_QRY.Open(u"Select IsNull(Sum(MeghdarKol),0),IsNull(Sum(Mojod),0) From ("_s + inner + u")As T1"_s);
    return {Temp_QRY.Number(0), Temp_QRY.Number(1)};
}

QStringList Lookups::Good_NameParts(NamePart part, const QString &beginning)
{
    const QString column = part == NamePart::Name   ? u"kala_name"_s
                           : part == NamePart::Type ? u"kala_type"_s
                                                    : u"kala_index"_s;
    // What a pattern would read as a sign stands for itself.
    QString pattern;
    for (const QChar c : beginning)
        pattern += c == u'%' || c == u'_' || c == u'[' ? QString(u'[') + c + u']' : QString(c);
    Temp_QRY.Open(u"select distinct top 50 "_s + column + u" from GoodInf where "_s + column + u"<>'' and "_s + column +
                  u" like "_s + host::NQuotedStr(QString(pattern + u'%')) + u" order by "_s + column);
    QStringList texts;
    for (; !Temp_QRY.Eof(); Temp_QRY.Next())
        texts += Temp_QRY.Text(column);
    return texts;
}

} // namespace goods
