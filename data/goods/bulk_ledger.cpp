#include "data/goods/bulk_ledger.h"

#include "data/goods/bulk_scope.h"
#include "host/data/database_error.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"
#include "host/services/types.h"

#include <QLoggingCategory>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

Q_LOGGING_CATEGORY(log, "goods.bulk", QtWarningMsg)

constexpr int TitleLength = 300;
/// Changes that are kept: so many, and as many of them as together name so many goods.
constexpr int KeptChanges = 50;
constexpr int KeptGoods = 1000000;

QString Quoted(const QString &text)
{
    return host::NQuotedStr(text);
}

} // namespace

BulkTarget TargetOf(const QList<BulkField> &fields)
{
    const QString &first = fields.constFirst().name;
    const bool ofGood = first == "ConsumerPrice"_L1 || first == "DaraiGoodType"_L1;
    return ofGood ? BulkTarget{u"GoodInf"_s, u"Code"_s} : BulkTarget{u"GoodCostDiscount"_s, u"GoodCode"_s};
}

QString NewValueOf(const BulkField &field)
{
    return field.newValue.isEmpty() ? u"j.NewPrice"_s : field.newValue;
}

QString DetailList(const QList<BulkField> &fields)
{
    QStringList ids;
    for (const BulkField &field : fields) {
        ids += field.newValue;
    }
    return ids.join(u',');
}

QString OtherDetails(const QList<BulkField> &fields, const QString &code, const QString &lock)
{
    const QString ofGood = u"FROM GoodDetailRelation r"_s + lock + u" WHERE r.GoodCode = "_s + code;
    QString other = u"((SELECT COUNT(*) "_s + ofGood + u") <> "_s + QString::number(fields.size());
    for (const BulkField &field : fields) {
        other += u" OR NOT EXISTS (SELECT 1 "_s + ofGood + u" AND r.DetailID = "_s + field.newValue + u')';
    }
    return other + u')';
}

QString RecordedDetails(const QString &code)
{
    // Opening details follow the good's own editor.
    return u"(EXISTS (SELECT 1 FROM GoodDetailKardex k WHERE k.GoodCode = %1) OR %1 IN (SELECT e.GoodCode FROM "
           "GoodDetailKardexEnter_Temp e WHERE e.GoodCode IS NOT NULL AND e.OperationType <> %2))"_s.arg(code)
               .arg(static_cast<int>(host::TOperationType::OpeningStock));
}

int BulkLedger::Open(BulkKind kind, ScopeKind scope, const BulkOrder &order, const QList<BulkField> &fields)
{
    QStringList rows;
    for (const BulkField &field : fields) {
        rows += u"(@Change,"_s + QString::number(rows.size() + 1) + u","_s + host::QuotedStr(field.name) + u","_s +
                (field.newValue.isEmpty() ? u"NULL"_s : field.newValue) + u')';
    }
    const host::Query opened(
        m_main, u"DECLARE @Change int INSERT INTO BulkChanges (Kind, Scope, Title, Goods, UserChanged, ChangedDate, "
                "ChangedTime) VALUES ("_s +
                    QStringList{QString::number(static_cast<int>(kind)), QString::number(static_cast<int>(scope)),
                                Quoted(order.title.left(TitleLength)), u"0"_s, Quoted(order.user),
                                host::QuotedStr(order.date), host::QuotedStr(order.time)}
                        .join(u',') +
                    u") SELECT @Change = SCOPE_IDENTITY() INSERT INTO BulkChangeFields (ChangeID, Place, Field, "
                    "NewValue) VALUES "_s +
                    rows.join(u',') + u" SELECT @Change AS ID"_s);
    return opened.Int(u"ID");
}

int BulkLedger::AddGoods(int change, const QString &columns, const QString &select)
{
    return host::Exec(m_main, u"INSERT INTO BulkChangeGoods (ChangeID, Made, "_s + columns + u") SELECT "_s +
                                  QString::number(change) + u", "_s + MadeOf + u", "_s + select);
}

void BulkLedger::Write(int change, const QList<BulkField> &fields, const QString &only)
{
    const BulkTarget target = TargetOf(fields);
    const QString entry =
        u"j.ChangeID = "_s + QString::number(change) + (only.isEmpty() ? QString() : u" AND "_s + only);
    if (target.table == "GoodCostDiscount"_L1) {
        // No level of a fresh row has a price yet, so none can be the default.
        host::Exec(m_main, u"INSERT INTO GoodCostDiscount (GoodCode, Default_CostLevel_Sell_Number, "
                           "Default_CostLevel_Buy_Number) SELECT j.GoodCode, 0, 0 FROM BulkChangeGoods j WHERE "_s +
                               entry +
                               u" AND NOT EXISTS (SELECT 1 FROM GoodCostDiscount c WHERE c.GoodCode = j.GoodCode)"_s);
    }
    QStringList assignments;
    for (const BulkField &field : fields) {
        assignments += u"t."_s + field.name + u" = "_s + NewValueOf(field);
    }
    host::Exec(m_main, u"UPDATE t SET "_s + assignments.join(u", "_s) + u" FROM "_s + target.table +
                           u" t INNER JOIN BulkChangeGoods j ON j.GoodCode = t."_s + target.key + u" WHERE "_s + entry);
}

void BulkLedger::Close(BulkResult &result)
{
    const QString change = QString::number(result.change);
    if (result.written == 0) {
        host::Exec(m_main, u"DELETE FROM BulkChanges WHERE ID = "_s + change);
        result.change = 0;
        return;
    }
    Count(result);
}

void BulkLedger::Count(const BulkResult &result)
{
    host::Exec(m_main, u"UPDATE BulkChanges SET Goods = "_s + QString::number(result.written) + u" WHERE ID = "_s +
                           QString::number(result.change));
}

void BulkLedger::Trim(int change)
{
    if (change == 0) {
        return;
    }
    const QString newest = QString::number(change);
    try {
        host::Exec(m_main, u"DELETE FROM BulkChanges WHERE ID NOT IN (SELECT TOP "_s + QString::number(KeptChanges) +
                               u" ID FROM BulkChanges ORDER BY ID DESC) OR ID <> "_s + newest +
                               u" AND (SELECT SUM(n.Goods) FROM BulkChanges n WHERE n.ID >= BulkChanges.ID) > "_s +
                               QString::number(KeptGoods));
    } catch (const host::DatabaseError &error) {
        qCWarning(log).noquote() << error.LogText();
    }
}

bool BulkLedger::Finish(host::Transaction &transaction, BulkSteps &steps, BulkResult &result)
{
    Close(result);
    if (!steps.GoOn()) {
        return false;
    }
    transaction.Commit();
    Trim(result.change);
    return true;
}

BulkKind BulkLedger::KindOf(int change) const
{
    return static_cast<BulkKind>(
        host::Scalar(m_main, u"SELECT Kind FROM BulkChanges WHERE ID = "_s + QString::number(change)).toInt());
}

QList<BulkField> BulkLedger::FieldsOf(int change) const
{
    // The names get into statements: a row that somebody else wrote does not.
    static const QRegularExpression known(
        u"^(CostLevel_(Sell|Buy)_([1-9]|10)|Discount_(Sell|Buy)_[1-4]|Default_Discount_(Sell|Buy)_Number|"
        "ConsumerPrice|DaraiGoodType|DetailID|Name|kala_(name|type|index)|AbbName|GrpCode|Unit2?|Meghdar_Formool|"
        "MinAva|Position|Comment)$"_s);
    QList<BulkField> fields;
    host::Query rows(m_main, u"SELECT Field, NewValue FROM BulkChangeFields WHERE ChangeID = "_s +
                                 QString::number(change) + u" ORDER BY Place"_s);
    for (; !rows.Eof(); rows.Next()) {
        const QString name = rows.Text(u"Field");
        if (!known.match(name).hasMatch()) {
            throw host::DatabaseError(u"ستون %1 در تغییرات گروهی شناخته نیست."_s.arg(name));
        }
        fields.append({name, rows.IsNull(u"NewValue") ? QString() : host::TrimDecimal(rows.Text(u"NewValue"))});
    }
    return fields;
}

} // namespace goods
