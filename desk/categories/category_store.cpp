#include "desk/categories/category_store.h"

#include "desk/messages/catalogue.h"
#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace desk {

namespace {

/// The width of Categories.Path.
constexpr int LongestPath = 400;

host::Category CategoryOf(const host::Query &query)
{
    return {query.Int(u"Code"), query.Int(u"ParentCode"), query.Text(u"Name")};
}

QString Below(int parent)
{
    return parent == 0 ? u"ParentCode IS NULL"_s : u"ParentCode = %1"_s.arg(parent);
}

QString Gone()
{
    return MessageText(message::EntityGone, {u"دسته"_s});
}

QString Repeated()
{
    return MessageText(message::RepeatedField, {u"نام دسته"_s, u"همین شاخه"_s});
}

QString Counted(int goods)
{
    return host::PersianDigits(QString::number(goods));
}

} // namespace

QList<host::Category> CategoryStore::All() const
{
    QList<host::Category> nodes;
    for (host::Query query(m_connection, u"SELECT Code, ParentCode, Name FROM Categories ORDER BY Radif, Code"_s);
         !query.Eof(); query.Next())
        nodes << CategoryOf(query);
    return nodes;
}

QList<host::Category> CategoryStore::Path(int code) const
{
    const auto node = Find(code);
    if (!node)
        return {};
    QList<host::Category> found;
    host::Query query(m_connection, u"SELECT Code, ParentCode, Name FROM Categories WHERE Code IN ("_s +
                                        host::CodeList(node->path.mid(1)) + u") ORDER BY LEN(Path)"_s);
    for (; !query.Eof(); query.Next())
        found << CategoryOf(query);
    return found;
}

QHash<int, int> CategoryStore::GoodsCounts() const
{
    QHash<int, int> counts;
    for (host::Query query(m_connection, u"SELECT Category_code, COUNT(*) AS Goods FROM Kala_category "
                                         "WHERE tmp <= 0 GROUP BY Category_code"_s);
         !query.Eof(); query.Next())
        counts.insert(query.Int(u"Category_code"), query.Int(u"Goods"));
    return counts;
}

/// Two desks change the tree one after the other: what is checked next holds until the end of the transaction. (The
/// embedded database locks as a whole; a server locks the rows that are written.)
void CategoryStore::Lock()
{
    host::Run(m_connection, u"UPDATE Categories SET Radif = Radif"_s);
}

std::optional<CategoryStore::Node> CategoryStore::Find(int code) const
{
    if (code == 0)
        return Node{0, {}, u","_s};
    const host::Query query(m_connection, u"SELECT ParentCode, Name, Path FROM Categories WHERE Code = %1"_s.arg(code));
    if (query.IsEmpty())
        return std::nullopt;
    return Node{query.Int(u"ParentCode"), query.Text(u"Name"), query.Text(u"Path")};
}

/// As users read it: spellings of one word count as the same name.
bool CategoryStore::NameTaken(const QString &name, int parent, int except) const
{
    host::Query query(m_connection, u"SELECT Code, Name FROM Categories WHERE "_s + Below(parent));
    for (; !query.Eof(); query.Next())
        if (query.Int(u"Code") != except &&
            host::Fold(query.Text(u"Name")).simplified() == host::Fold(name).simplified())
            return true;
    return false;
}

int CategoryStore::GoodsIn(int code) const
{
    return host::Scalar(m_connection,
                        u"SELECT COUNT(*) FROM Kala_category WHERE tmp <= 0 AND Category_code = %1"_s.arg(code))
        .toInt();
}

QString CategoryStore::FreeRadif(const Place &place, int except)
{
    const QString others = Below(place.parent) + u" AND Code <> %1"_s.arg(except);
    host::Run(m_connection,
              u"UPDATE c SET Radif = 2 * n.Place FROM Categories AS c INNER JOIN (SELECT Code, ROW_NUMBER() OVER "
              "(ORDER BY Radif, Code) AS Place FROM Categories WHERE "_s +
                  others + u") AS n ON n.Code = c.Code"_s);
    return host::Scalar(m_connection,
                        u"SELECT COALESCE((SELECT Radif - 1 FROM Categories WHERE Code = %1 AND "_s.arg(place.next) +
                            others + u"), (SELECT MAX(Radif) + 2 FROM Categories WHERE "_s + others + u"), 2)"_s)
        .toString();
}

CategoryStore::Refusal CategoryStore::Add(const QString &name, const Place &place, bool takeGoods, int &code)
{
    host::Transaction transaction(m_connection);
    Lock();
    const auto parent = Find(place.parent);
    if (!parent)
        return Gone();
    if (NameTaken(name, place.parent, 0))
        return Repeated();
    const int goods = place.parent == 0 ? 0 : GoodsIn(place.parent);
    if (goods > 0 && !takeGoods)
        return MessageText(message::CategoryHasGoods, {parent->name, Counted(goods)});
    code = host::Scalar(m_connection, u"SELECT ISNULL(MAX(Code), 0) + 1 FROM Categories"_s).toInt();
    const QString path = parent->path + QString::number(code) + u',';
    if (path.size() > LongestPath)
        return MessageText(message::CategoryTooDeep, {parent->name});
    const QString radif = FreeRadif(place, code);
    host::Run(m_connection, u"INSERT INTO Categories (Code, ParentCode, Name, Path, Radif) VALUES (%1, %2, "_s.arg(
                                QString::number(code), place.parent == 0 ? u"NULL"_s : QString::number(place.parent)) +
                                host::NQuotedStr(name) + u", "_s + host::QuotedStr(path) + u", "_s + radif + u')');
    if (goods > 0)
        host::Run(m_connection,
                  u"UPDATE Kala_category SET Category_code = %1 WHERE tmp <= 0 AND Category_code = %2"_s.arg(code).arg(
                      place.parent));
    transaction.Commit();
    return std::nullopt;
}

CategoryStore::Refusal CategoryStore::Rename(int code, const QString &name)
{
    host::Transaction transaction(m_connection);
    Lock();
    const auto node = Find(code);
    if (!node)
        return Gone();
    if (name == node->name)
        return std::nullopt;
    if (NameTaken(name, node->parent, code))
        return Repeated();
    host::Run(m_connection,
              u"UPDATE Categories SET Name = "_s + host::NQuotedStr(name) + u" WHERE Code = %1"_s.arg(code));
    transaction.Commit();
    return std::nullopt;
}

CategoryStore::Refusal CategoryStore::Move(int code, const Place &place)
{
    host::Transaction transaction(m_connection);
    Lock();
    const auto node = Find(code);
    const auto parent = Find(place.parent);
    if (!node || !parent)
        return Gone();
    if (parent->path.contains(u",%1,"_s.arg(code)))
        return MessageText(message::CategoryCircle, {node->name});
    if (place.parent != node->parent) {
        if (NameTaken(node->name, place.parent, code))
            return Repeated();
        if (const int goods = place.parent == 0 ? 0 : GoodsIn(place.parent))
            return MessageText(message::CategoryHasGoods, {parent->name, Counted(goods)});
    }
    const QString branch = u" WHERE Path LIKE "_s + host::QuotedStr(node->path + u'%');
    const QString path = parent->path + QString::number(code) + u',';
    const qsizetype longer = path.size() - node->path.size();
    if (host::Scalar(m_connection, u"SELECT MAX(LEN(Path)) FROM Categories"_s + branch).toInt() + longer > LongestPath)
        return MessageText(message::CategoryTooDeep, {node->name});
    const QString radif = FreeRadif(place, code);
    host::Run(m_connection,
              u"UPDATE Categories SET ParentCode = %1, Radif = %2 WHERE Code = %3"_s.arg(
                  place.parent == 0 ? u"NULL"_s : QString::number(place.parent), radif, QString::number(code)));
    host::Run(m_connection, u"UPDATE Categories SET Path = "_s + host::QuotedStr(path) +
                                u" + SUBSTRING(Path, %1, %2)"_s.arg(node->path.size() + 1).arg(LongestPath) + branch);
    transaction.Commit();
    return std::nullopt;
}

CategoryStore::Refusal CategoryStore::ReasonToKeep(int code) const
{
    const auto node = Find(code);
    if (!node)
        return Gone();
    const QString named = u"دسته‌ی «%1»"_s.arg(node->name);
    if (host::Exists(m_connection, u"SELECT TOP 1 Code FROM Categories WHERE ParentCode = %1"_s.arg(code)))
        return MessageText(message::InUse, {named, u"زیرشاخه دارد"_s});
    if (const int goods = GoodsIn(code))
        return MessageText(message::InUse, {named, u"%1 کالا در آن ثبت شده است"_s.arg(Counted(goods))});
    return std::nullopt;
}

CategoryStore::Refusal CategoryStore::Delete(int code)
{
    host::Transaction transaction(m_connection);
    Lock();
    if (Refusal reason = ReasonToKeep(code))
        return reason;
    // What an editor attached and did not save refers to it still.
    host::Run(m_connection, u"DELETE FROM Kala_category WHERE tmp > 0 AND Category_code = %1"_s.arg(code));
    host::Run(m_connection, u"DELETE FROM Categories WHERE Code = %1"_s.arg(code));
    transaction.Commit();
    return std::nullopt;
}

} // namespace desk
