#include "desk/services/users.h"

#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace desk {

QString UserCaption(const host::Entity &user)
{
    return user.Name + u" ("_s + host::PersianDigits(QString::number(user.Code)) + u')';
}

QList<host::Entity> Users::All() const
{
    QList<host::Entity> users;
    for (host::Query query(m_connection, u"SELECT Code, Name FROM Users ORDER BY Code"_s); !query.Eof(); query.Next())
        users << host::Entity{query.Int(u"Code"), query.Text(u"Name")};
    return users;
}

bool Users::NameTaken(const QString &name, int except) const
{
    const QString wanted = host::Fold(name).simplified();
    const QList<host::Entity> users = All();
    return std::any_of(users.begin(), users.end(), [&](const host::Entity &user) {
        return user.Code != except && host::Fold(user.Name).simplified() == wanted;
    });
}

int Users::Add(const QString &name)
{
    host::Transaction transaction(m_connection);
    const int code = host::Scalar(m_connection, u"SELECT ISNULL(MAX(Code), 0) + 1 FROM Users"_s).toInt();
    host::Exec(m_connection,
               u"INSERT INTO Users (Code, Name) VALUES (%1, "_s.arg(code) + host::NQuotedStr(name) + u")"_s);
    transaction.Commit();
    return code;
}

void Users::Rename(int code, const QString &name)
{
    host::Exec(m_connection, u"UPDATE Users SET Name = "_s + host::NQuotedStr(name) + u" WHERE Code = %1"_s.arg(code));
}

} // namespace desk
