#include "data/goods/goods_import_known.h"

#include "data/goods/goods_import_rules.h"
#include "host/data/persian_text.h"
#include "host/data/query.h"
#include "host/data/sql_text.h"
#include "rules/barcode_text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr int GoodsOfBlock = 10000;

struct Stored
{
    ImportField field;
    const char16_t *column;
};

/// Read of every good: what it is found by, and what is checked against it.
constexpr Stored Always[] = {
    {ImportField::Code, u"g.Code"},       {ImportField::Group, u"g.GrpCode"},  {ImportField::FullName, u"g.Name"},
    {ImportField::Name, u"g.kala_name"},  {ImportField::Type, u"g.kala_type"}, {ImportField::Index, u"g.kala_index"},
    {ImportField::Barcode, u"g.AbbName"}, {ImportField::Unit, u"g.Unit"},      {ImportField::Unit2, u"g.Unit2"},
};

void ReadNames(const QSqlDatabase &main, const QString &table, QHash<QString, int> &codes, QHash<int, QString> &names)
{
    for (host::Query rows(main, u"SELECT Code, Name FROM "_s + table + u" ORDER BY Code DESC"_s); !rows.Eof();
         rows.Next()) {
        const QString name = rows.Text(u"Name");
        codes.insert(host::Fold(name.trimmed()), rows.Int(u"Code"));
        names.insert(rows.Int(u"Code"), name);
    }
}

template <typename Take> void ReadColumn(const QSqlDatabase &main, const QString &text, const Take &take)
{
    const host::Query rows(main, text);
    for (int row = 0; row < rows.RecordCount(); ++row) {
        take(rows.Rows().Text(row, 0));
    }
}

void TakeGood(ImportKnown &known, const host::RowStore &rows, int row)
{
    for (int column = 0; column < rows.ColumnCount(); ++column) {
        const QString text = rows.Text(row, column);
        known.goods.AddCell(rows.ColumnAt(column).kind == host::ColumnKind::Decimal ? host::TrimDecimal(text) : text);
    }
    known.goods.EndRow();
    const int place = known.goods.RowCount() - 1;
    const int code = known.Stored(place, ImportField::Code).toInt();
    known.rowOf.insert(code, place);
    known.codeOfName.insert(ImportNameKey(known.Stored(place, ImportField::FullName)), code);
    for (const QString &barcode : UnpackBarcodes(known.Stored(place, ImportField::Barcode).toString())) {
        if (!barcode.isEmpty()) {
            known.codeOfBarcode.insert(barcode.toLower(), code);
        }
    }
}

void ReadGoods(const QSqlDatabase &main, const QList<ImportFieldInfo> &mapped, ImportKnown &known)
{
    QStringList columns;
    for (const Stored &stored : Always) {
        known.fields += stored.field;
        columns += QString::fromUtf16(stored.column);
    }
    for (const ImportFieldInfo &info : mapped) {
        if (!known.fields.contains(info.field)) {
            known.fields += info.field;
            columns +=
                IsLevel(info.field) ? u"ISNULL(c."_s + info.column + u",0) AS "_s + info.column : u"g."_s + info.column;
        }
    }
    const QString select = u"SELECT TOP "_s + QString::number(GoodsOfBlock) + u' ' + columns.join(u", "_s) +
                           u" FROM GoodInf g LEFT JOIN GoodCostDiscount c ON c.GoodCode = g.Code WHERE g.Code > "_s;
    int last = -1;
    for (;;) {
        const host::Query block(main, select + QString::number(last) + u" ORDER BY g.Code"_s);
        for (int row = 0; row < block.RecordCount(); ++row) {
            TakeGood(known, block.Rows(), row);
        }
        if (block.RecordCount() < GoodsOfBlock) {
            return;
        }
        last = known.Stored(known.goods.RowCount() - 1, ImportField::Code).toInt();
    }
}

} // namespace

QStringView ImportKnown::Stored(int row, ImportField field) const
{
    return Stored(row, fields.indexOf(field));
}

QString ImportNameKey(QStringView name)
{
    QString key = name.toString().toLower();
    while (key.endsWith(u' ')) {
        key.chop(1);
    }
    return key;
}

ImportKnown ReadImportKnown(const QSqlDatabase &main, const QList<ImportFieldInfo> &mapped, int deniedTo,
                            const QStringList &operations)
{
    ImportKnown known;
    ReadNames(main, u"GoodGrpS"_s, known.groups, known.groupNames);
    ReadNames(main, u"Units"_s, known.units, known.unitNames);
    if (deniedTo != 0) {
        ReadColumn(main, u"SELECT GrpCode FROM UserDeniedGroups WHERE UserCode = "_s + QString::number(deniedTo),
                   [&](const QString &code) { known.deniedGroups.insert(code.toInt()); });
    }
    ReadColumn(main, u"SELECT Code FROM CodeLock_TBL WHERE Status = 102"_s,
               [&](const QString &code) { known.reservedCodes.insert(code.toInt()); });
    ReadColumn(main,
               u"SELECT v.[Value] FROM GoodDetailValueDetails v INNER JOIN DetailTypes t ON t.ID = v.DetailID "
               "WHERE t.DetailType = 6"_s,
               [&](const QString &barcode) { known.otherBarcodes.insert(barcode.toLower()); });
    for (const QString &barcode : operations) {
        known.otherBarcodes.insert(barcode.toLower());
    }
    known.otherBarcodes.remove(QString());
    ReadGoods(main, mapped, known);
    return known;
}

QList<host::Entity> ImportUnits(const QSqlDatabase &main)
{
    QList<host::Entity> units;
    for (host::Query rows(main, u"SELECT Code, Name FROM Units ORDER BY Code"_s); !rows.Eof(); rows.Next()) {
        units += host::Entity{rows.Int(u"Code"), rows.Text(u"Name")};
    }
    return units;
}

QStringList ImportLevelTitles(const QSqlDatabase &main)
{
    QStringList titles(ImportLevels);
    for (host::Query rows(main, u"SELECT Code, Name FROM CostLevel WHERE CostType = 1"_s); !rows.Eof(); rows.Next()) {
        const int level = rows.Int(u"Code");
        if (level >= 1 && level <= ImportLevels) {
            titles[level - 1] = rows.Text(u"Name");
        }
    }
    return titles;
}

} // namespace goods
