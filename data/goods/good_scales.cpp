#include "data/goods/good_scales.h"

#include "host/data/database_error.h"
#include "host/data/sql_text.h"
#include "host/data/transaction.h"

using namespace Qt::StringLiterals;

namespace goods {

namespace {

/// As many rows as one INSERT takes.
constexpr qsizetype BlockRows = 1000;
constexpr int Levels = 10;

void CheckLevel(int costLevel)
{
    if (costLevel < 1 || costLevel > Levels) {
        throw host::RefusedText(u"سطح قیمتی ۱ تا ۱۰"_s, QString::number(costLevel));
    }
}

QString Joined(const QList<int> &codes)
{
    QStringList texts;
    for (const int code : codes) {
        texts += QString::number(code);
    }
    return host::CodeList(texts.join(u','));
}

/// Calls `use` with the list in pieces that fit into a statement.
template <typename Value, typename Use> void InBlocks(const QList<Value> &values, const Use &use)
{
    for (qsizetype first = 0; first < values.size(); first += BlockRows) {
        use(values.mid(first, BlockRows));
    }
}

QString Number(ScaleChange change)
{
    return QString::number(static_cast<int>(change));
}

} // namespace

/// A row of Items, or what it should be for a good.
struct Scales::Item
{
    int code = 0;
    QString name;
    QString price; ///< decimal text, trimmed; empty: the good has none
    QString barcode;
    int type = 0;
    int scaleType = 1;
    ScaleChange change = ScaleChange::None;

    bool ShowsTheSame(const Item &other) const
    {
        return name == other.name && price == other.price && barcode == other.barcode && type == other.type;
    }
    /// The values that an INSERT and an UPDATE share.
    QString Values() const
    {
        return QString::number(code) + u", "_s + host::NQuotedStr(name) + u", "_s +
               host::DecimalLiteral(QStringView(price)) + u", "_s + host::NQuotedStr(barcode) + u", "_s +
               QString::number(type);
    }
};

Scales::Scales(const QSqlDatabase &main, const QSqlDatabase &scale)
    : Items_QRY(scale), m_main(main), m_scale(scale), Temp_QRY(main), TMP_OnLine_QRY(scale)
{}

bool Scales::CheckGoodInScale(int code)
{
    TMP_OnLine_QRY.Open(u" SELECT * FROM Items i WHERE i.ScaleType = 1 AND i.Code = "_s + QString::number(code));
    return !TMP_OnLine_QRY.IsEmpty();
}

void Scales::DeleteGoodInScale(int code)
{
    host::Exec(m_scale, u" UPDATE Items SET ChangeType = 3 WHERE Code = "_s + QString::number(code));
}

void Scales::Change_Price_Scale(int code, int costLevel)
{
    CheckLevel(costLevel);
    const QString good = QString::number(code);
    Temp_QRY.Open(
        u"SELECT Name, SUBSTRING(AbbName, 2, ABS(CHARINDEX('!', AbbName, 2) - 2)) AS BarCode, CAST ((SELECT [Type] "
        "FROM [Units] WHERE units.Code = GoodInf.Unit)  AS INT) AS [Type]  FROM GoodInf WHERE Code ="_s +
        good);
    if (Temp_QRY.IsEmpty()) {
        return;
    }
    const QString name = Temp_QRY.Text(u"Name");
    const QString barcode = Temp_QRY.Text(u"BarCode");
    const int type = Temp_QRY.Int(u"Type");
    Temp_QRY.Open(u"select CostLevel_Sell_"_s + QString::number(costLevel) +
                  u" from GoodCostDiscount where GoodCode = "_s + good);
    if (Temp_QRY.IsEmpty()) {
        return; // no price row: the scale keeps the price it has
    }
    const QString price = host::DecimalLiteral(Temp_QRY.Number(0));
    TMP_OnLine_QRY.Open(u"SELECT * FROM Items WHERE Code = "_s + good);
    if (!TMP_OnLine_QRY.IsEmpty()) {
        host::Exec(m_scale, u" UPDATE Items SET Name1 = "_s + host::QuotedStr(name) + u", Price = "_s + price +
                                u", BarCode = "_s + host::QuotedStr(barcode) + u", Type = "_s + QString::number(type) +
                                u", ChangeType = 2 "
                                " WHERE Code = "_s +
                                good);
    }
}

bool Scales::HasScaleDatabase() const
{
    if (!m_scale.isOpen())
        return false;
    try {
        host::Exists(m_scale, u"SELECT TOP 1 Code FROM Items"_s);
        return true;
    } catch (const host::DatabaseError &error) {
        if (error.NativeCode() == u"208"_s) // no such table
            return false;
        throw;
    }
}

void Scales::ScaleItems_GetAll(bool waiting)
{
    QString states = u"CASE ChangeType"_s;
    for (const auto &[change, words] : {std::pair(ScaleChange::New, u"تازه؛ در انتظار ترازو"_s),
                                        {ScaleChange::Changed, u"تغییر؛ در انتظار ترازو"_s},
                                        {ScaleChange::Removed, u"حذف؛ در انتظار ترازو"_s}}) {
        states += u" WHEN "_s + Number(change) + u" THEN "_s + host::NQuotedStr(words);
    }
    states += u" ELSE N'روی ترازو' END AS State"_s;
    Items_QRY.Open(u"SELECT Code, Name1, Price, BarCode, [Type], CASE [Type] WHEN 1 THEN N'وزنی' ELSE N'شمارشی' END AS "
                   "TypeName, ChangeType, "_s +
                   states + u" FROM Items WHERE ScaleType = 1"_s +
                   (waiting ? u" AND ChangeType <> "_s + Number(ScaleChange::None) : QString()) + u" ORDER BY Code"_s);
}

QList<Scales::Item> Scales::GoodsOf(const QList<int> &codes, int costLevel) const
{
    QList<Item> goods;
    InBlocks(codes, [&](const QList<int> &block) {
        host::Query query(
            m_main, u"SELECT g.Code, g.Name, SUBSTRING(g.AbbName, 2, ABS(CHARINDEX('!', g.AbbName, 2) - "
                    "2)) AS BarCode, CAST(u.[Type] AS int) AS [Type], p.CostLevel_Sell_%1 AS Price FROM "
                    "GoodInf AS g LEFT JOIN Units AS u ON u.Code = g.Unit LEFT JOIN GoodCostDiscount AS "
                    "p ON p.GoodCode = g.Code WHERE g.Code IN (%2)"_s.arg(QString::number(costLevel), Joined(block)));
        for (; !query.Eof(); query.Next()) {
            const QString price = query.Text(u"Price");
            goods.append({query.Int(u"Code"), query.Text(u"Name"), price.isEmpty() ? price : host::TrimDecimal(price),
                          query.Text(u"BarCode"), query.Int(u"Type")});
        }
    });
    return goods;
}

QList<Scales::Item> Scales::ItemsOf(const QList<int> &codes) const
{
    QList<Item> items;
    InBlocks(codes, [&](const QList<int> &block) {
        host::Query query(m_scale,
                          u"SELECT Code, Name1, Price, BarCode, [Type], ScaleType, ChangeType FROM Items WHERE "
                          "Code IN ("_s +
                              Joined(block) + u')');
        for (; !query.Eof(); query.Next()) {
            items.append({query.Int(u"Code"), query.Text(u"Name1"), host::TrimDecimal(query.Text(u"Price")),
                          query.Text(u"BarCode"), query.Int(u"Type"), query.Int(u"ScaleType"),
                          static_cast<ScaleChange>(query.Int(u"ChangeType"))});
        }
    });
    return items;
}

void Scales::InsertItems(const QList<Item> &items)
{
    InBlocks(items, [this](const QList<Item> &block) {
        QStringList rows;
        for (const Item &item : block) {
            rows += u"("_s + item.Values() + u", 1, "_s + Number(ScaleChange::New) + u')';
        }
        host::Run(m_scale, u"INSERT INTO Items (Code, Name1, Price, BarCode, [Type], ScaleType, ChangeType) VALUES "_s +
                               rows.join(u", "_s));
    });
}

void Scales::UpdateItems(const QList<Item> &items)
{
    InBlocks(items, [this](const QList<Item> &block) {
        QStringList rows;
        for (const Item &item : block) {
            rows += u"("_s + item.Values() + u')';
        }
        // What the scales were never told of stays new.
        host::Run(m_scale, u"UPDATE i SET Name1 = v.Name1, Price = v.Price, BarCode = v.BarCode, [Type] = v.[Type], "
                           "ChangeType = CASE i.ChangeType WHEN %1 THEN %1 ELSE %2 END FROM Items AS i INNER JOIN "
                           "(VALUES "_s.arg(Number(ScaleChange::New), Number(ScaleChange::Changed)) +
                               rows.join(u", "_s) +
                               u") AS v(Code, Name1, Price, BarCode, [Type]) ON v.Code = i.Code"_s);
    });
}

ScaleResult Scales::Send(const QList<int> &codes, int costLevel, bool add)
{
    CheckLevel(costLevel);
    const QList<Item> goods = GoodsOf(codes, costLevel);
    host::Transaction transaction(m_scale);
    QHash<int, Item> known;
    for (const Item &item : ItemsOf(codes)) {
        known.insert(item.code, item);
    }
    ScaleResult result;
    QList<Item> added;
    QList<Item> changed;
    for (const Item &good : goods) {
        const auto item = known.constFind(good.code);
        const bool stranger = item != known.cend() && item->scaleType != 1;
        const bool absent = item == known.cend() || item->change == ScaleChange::Removed;
        if (absent && !add && !stranger) {
            continue; // taken off meanwhile
        }
        if (stranger) {
            ++result.strangers;
        } else if (good.price.isEmpty() || host::QuantityFromText(good.price) == 0) {
            ++result.unpriced;
        } else if (item == known.cend()) {
            added += good;
        } else if (absent || !item->ShowsTheSame(good)) {
            changed += good;
        }
    }
    InsertItems(added);
    UpdateItems(changed);
    transaction.Commit();
    result.added = static_cast<int>(added.size());
    result.changed = static_cast<int>(changed.size());
    return result;
}

ScaleResult Scales::PutGoodsOnScale(const QString &codes, int costLevel)
{
    return Send(host::Codes(codes), costLevel, true);
}

QList<int> Scales::CodesOnScale() const
{
    QList<int> codes;
    for (host::Query query(m_scale, u"SELECT Code FROM Items WHERE ScaleType = 1 AND ChangeType <> "_s +
                                        Number(ScaleChange::Removed) + u" ORDER BY Code"_s);
         !query.Eof(); query.Next()) {
        codes += query.Int(u"Code");
    }
    return codes;
}

ScaleResult Scales::SendChangesToScale(int costLevel)
{
    return Send(CodesOnScale(), costLevel, false);
}

ScaleResult Scales::SendChangesToScale(const QList<int> &codes, int costLevel)
{
    return Send(codes, costLevel, false);
}

int Scales::TakeGoodsOffScale(const QString &codes)
{
    int count = 0;
    host::Transaction transaction(m_scale);
    InBlocks(host::Codes(codes), [&](const QList<int> &block) {
        count += host::Exec(m_scale, u"UPDATE Items SET ChangeType = %1 WHERE ScaleType = 1 AND ChangeType <> %1 AND "
                                     "Code IN (%2)"_s.arg(Number(ScaleChange::Removed), Joined(block)));
    });
    transaction.Commit();
    return count;
}

} // namespace goods
