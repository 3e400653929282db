#include "desk/selected/selected_lists_data.h"

#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

constexpr int Block = 1000; // rows that one statement may bring

QString Bit(bool on)
{
    return on ? u"1"_s : u"0"_s;
}

QString Members(int list)
{
    return u" FROM SelectedList_Detail WHERE SL_Code = "_s + QString::number(list);
}

} // namespace

SelectedListsData::SelectedListsData(const QSqlDatabase &connection)
    : Lists(connection), Goods(connection), m_connection(connection)
{}

void SelectedListsData::OpenLists()
{
    Lists.Open(u"SELECT s.Code, s.Title, (SELECT COUNT(*) FROM SelectedList_Detail AS d WHERE d.SL_Code = s.Code) AS "
               "Goods, CASE s.DisplayType WHEN 1 THEN N'کنار گذاشتن' ELSE N'نمایش' END AS [Use], CASE s.Enable "
               "WHEN 1 THEN N'فعال' ELSE N'غیرفعال' END AS State FROM SelectedLists AS s WHERE s.[Type] = 0 "
               "ORDER BY s.Code"_s);
}

void SelectedListsData::OpenGoods(int list)
{
    Goods.Open(
        u"SELECT d.Code, g.Name, ROW_NUMBER() OVER (ORDER BY d.Radif, d.Code) AS Place FROM SelectedList_Detail "
        "AS d INNER JOIN GoodInf AS g ON g.Code = d.Code WHERE d.SL_Code = %1 ORDER BY d.Radif, d.Code"_s.arg(list));
}

QString SelectedListsData::RowText(int code)
{
    return u"SELECT * FROM SelectedLists WHERE [Type] = 0 AND Code = "_s + QString::number(code);
}

SelectedListsData::List SelectedListsData::Get(int code) const
{
    const host::Query row(m_connection, RowText(code));
    if (row.IsEmpty())
        return {};
    return {code, row.Text(u"Title"), row.Bool(u"Enable"), row.Bool(u"DisplayType")};
}

bool SelectedListsData::TitleTaken(const List &list) const
{
    return host::Exists(
        m_connection, u"SELECT Code FROM SelectedLists WHERE [Type] = 0 AND Code <> %1 AND Title = "_s.arg(list.Code) +
                          host::NQuotedStr(list.Title));
}

int SelectedListsData::Save(const List &list)
{
    const QString title = host::NQuotedStr(list.Title);
    host::Transaction transaction(m_connection);
    int code = list.Code;
    if (code == 0) {
        code = host::Scalar(m_connection, u"SELECT ISNULL(MAX(Code), 0) + 1 FROM SelectedLists"_s).toInt();
        host::Run(m_connection,
                  u"INSERT INTO SelectedLists (Code, Title, Enable, DisplayType, [Type]) VALUES (%1, "_s.arg(code) +
                      title + u", "_s + Bit(list.Enable) + u", "_s + Bit(list.DisplayType) + u", 0)"_s);
    } else {
        host::Run(m_connection, u"UPDATE SelectedLists SET Title = "_s + title + u", Enable = "_s + Bit(list.Enable) +
                                    u", DisplayType = "_s + Bit(list.DisplayType) +
                                    u" WHERE [Type] = 0 AND Code = %1"_s.arg(code));
    }
    transaction.Commit();
    return code;
}

void SelectedListsData::Delete(int list)
{
    host::Exec(m_connection, u"DELETE FROM SelectedLists WHERE [Type] = 0 AND Code = "_s + QString::number(list));
}

int SelectedListsData::Add(int list, const QString &codes)
{
    const QList<int> goods = host::Codes(codes);
    host::Transaction transaction(m_connection);
    int place = host::Scalar(m_connection, u"SELECT ISNULL(MAX(Radif), 0)"_s + Members(list)).toInt();
    int added = 0;
    for (qsizetype first = 0; first < goods.size(); first += Block) {
        QStringList rows;
        const qsizetype end = qMin(first + Block, goods.size());
        for (qsizetype i = first; i < end; ++i)
            rows << u"(%1, %2)"_s.arg(goods.at(i)).arg(++place);
        // A code that stands twice counts where it stands first.
        added +=
            host::Exec(m_connection,
                       u"INSERT INTO SelectedList_Detail (SL_Code, Code, Radif) SELECT %1, v.Code, MIN(v.Radif) FROM "
                       "(VALUES "_s.arg(list) +
                           rows.join(u", ") +
                           u") AS v(Code, Radif) INNER JOIN GoodInf AS g ON g.Code = v.Code WHERE NOT EXISTS "
                           "(SELECT 1 FROM SelectedList_Detail AS d WHERE d.SL_Code = %1 AND d.Code = v.Code) "
                           "GROUP BY v.Code"_s.arg(list));
    }
    transaction.Commit();
    return added;
}

void SelectedListsData::Remove(int list, const QString &codes)
{
    const QList<int> goods = host::Codes(codes);
    host::Transaction transaction(m_connection);
    for (qsizetype first = 0; first < goods.size(); first += Block) {
        QStringList block;
        for (const int good : goods.mid(first, Block))
            block << QString::number(good);
        host::Exec(m_connection, u"DELETE"_s + Members(list) + u" AND Code IN ("_s + block.join(u',') + u')');
    }
    transaction.Commit();
}

void SelectedListsData::RemoveAll(int list)
{
    host::Exec(m_connection, u"DELETE"_s + Members(list));
}

void SelectedListsData::Move(int list, int good, int step)
{
    // Places may be missing or stand twice, from before or by another desk; goods that were deleted have none.
    const QString places =
        u"(SELECT m.Code, ROW_NUMBER() OVER (ORDER BY m.Radif, m.Code) AS Place FROM SelectedList_Detail AS m INNER "
        "JOIN GoodInf AS g ON g.Code = m.Code WHERE m.SL_Code = %1) AS n"_s.arg(list);
    host::Transaction transaction(m_connection);
    const int place =
        host::Scalar(m_connection, u"SELECT n.Place FROM "_s + places + u" WHERE n.Code = %1"_s.arg(good)).toInt();
    const int other =
        host::Scalar(m_connection, u"SELECT n.Code FROM "_s + places + u" WHERE n.Place = %1"_s.arg(place + step))
            .toInt();
    if (place == 0 || other == 0)
        return;
    host::Exec(m_connection, u"UPDATE d SET Radif = n.Place FROM SelectedList_Detail AS d INNER JOIN "_s + places +
                                 u" ON n.Code = d.Code WHERE d.SL_Code = %1 AND d.Radif <> n.Place"_s.arg(list));
    host::Exec(m_connection,
               u"UPDATE SelectedList_Detail SET Radif = CASE Code WHEN %2 THEN %3 ELSE %4 END WHERE SL_Code = %1 AND "
               "Code IN (%2, %5)"_s.arg(list)
                   .arg(good)
                   .arg(place + step)
                   .arg(place)
                   .arg(other));
    transaction.Commit();
}

} // namespace desk
