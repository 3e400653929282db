#include "detailtypes/detail_types_dm.h"
#include "host/data/sql_text.h"

using namespace Qt::StringLiterals;

// The items of list and text types. They are always rewritten as a whole, in list order.

QStringList TDetailTypes_DM::DetailTypesItems(int id)
{
    Temp_QRY.Open(u"SELECT * FROM DetailTypesItems WHERE DetailID = "_s + QString::number(id) + u" ORDER BY Row"_s);
    QStringList items;
    for (; !Temp_QRY.Eof(); Temp_QRY.Next())
        items += Temp_QRY.Text(u"Value");
    Temp_QRY.Close();
    return items;
}

bool TDetailTypes_DM::DetailTypesItems_Delete(int id)
{
    host::Exec(m_main, u"DELETE FROM DetailTypesItems WHERE DetailID = "_s + QString::number(id));
    return true;
}

void TDetailTypes_DM::DetailTypesItems_Insert(int id, int row, const QString &value)
{
    host::Exec(m_main, u" INSERT INTO DetailTypesItems(DetailID, Row, [Value])  VALUES("_s + QString::number(id) +
                           u", "_s + QString::number(row) + u", "_s + host::QuotedStr(value) + u')');
}

void TDetailTypes_DM::InsertItems(int id, const QStringList &items)
{
    int row = 0;
    for (const QString &item : items)
        DetailTypesItems_Insert(id, ++row, item);
}
