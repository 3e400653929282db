#include "data/goods/goods_import_judge.h"

#include "data/goods/goods_import_rules.h"
#include "host/data/persian_text.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

/// What earlier rows of the file have taken.
struct Taken
{
    QHash<int, int> codes; ///< row of the file
    QHash<QString, int> names;
    QHash<QString, int> barcodes;
};

QString FullNameOf(const ImportRow &row)
{
    const QString *name = row.Find(ImportField::FullName);
    return name ? ImportNameKey(*name) : QString();
}

QString Repeats(const QString &what, int row)
{
    return u"%1 در ردیف %2 تکرار شده است"_s.arg(what).arg(row + 1);
}

QStringList Repetitions(const ImportRow &read, const Taken &taken)
{
    QStringList faults;
    if (const auto row = taken.codes.constFind(read.code); read.code != 0 && row != taken.codes.constEnd()) {
        faults += Repeats(read.isKnown ? u"همین کالا"_s : u"کد %1"_s.arg(read.code), *row);
    }
    const QString name = FullNameOf(read);
    if (const auto row = taken.names.constFind(name); !name.isEmpty() && row != taken.names.constEnd()) {
        faults += Repeats(u"نام کالا"_s, *row);
    }
    for (const QString &barcode : read.barcodes) {
        if (const auto row = taken.barcodes.constFind(barcode.toLower()); row != taken.barcodes.constEnd()) {
            faults += Repeats(u"بارکد %1"_s.arg(barcode), *row);
        }
    }
    return faults;
}

void Keep(const ImportRow &read, int row, Taken &taken)
{
    if (read.code != 0) {
        taken.codes.insert(read.code, row);
    }
    if (const QString name = FullNameOf(read); !name.isEmpty()) {
        taken.names.insert(name, row);
    }
    for (const QString &barcode : read.barcodes) {
        taken.barcodes.insert(barcode.toLower(), row);
    }
}

void AddFresh(QStringList &names, const QString &name)
{
    const auto same = [&name](const QString &other) { return host::Fold(other) == host::Fold(name); };
    if (!name.isEmpty() && std::none_of(names.cbegin(), names.cend(), same)) {
        names += name;
    }
}

} // namespace

void ImportPlan::Refuse(Entry &entry, const QString &fault)
{
    --counts.at(static_cast<size_t>(entry.verdict));
    entry.verdict = ImportVerdict::Faulty;
    ++counts.at(static_cast<size_t>(entry.verdict));
    faults.insert(entry.row, fault);
}

ImportPlan JudgeImport(const ImportTable &table, const ImportReader &reader, const ImportOptions &options)
{
    ImportPlan plan;
    Taken taken;
    for (int row = options.firstRow; row < table.RowCount(); ++row) {
        if (table.IsEmptyRow(row)) {
            continue;
        }
        ImportRow read = reader.Read(row);
        read.faults += Repetitions(read, taken);
        ImportPlan::Entry entry{row, read.code};
        if (read.faults.isEmpty()) {
            entry.verdict = !read.isKnown           ? ImportVerdict::New
                            : read.values.isEmpty() ? ImportVerdict::Unchanged
                                                    : ImportVerdict::Changed;
            Keep(read, row, taken);
            AddFresh(plan.newGroups, read.newGroup);
            AddFresh(plan.newUnits, read.newUnit);
            AddFresh(plan.newUnits, read.newUnit2);
        } else {
            plan.faults.insert(row, read.faults.join(u"؛ "_s));
        }
        ++plan.counts.at(static_cast<size_t>(entry.verdict));
        plan.rows.push_back(entry);
    }
    return plan;
}

} // namespace goods
