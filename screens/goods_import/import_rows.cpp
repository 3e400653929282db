#include "screens/goods_import/import_rows.h"

#include "data/goods/goods_import_rules.h"
#include "host/controls/number_text.h"
#include "host/data/persian_text.h"
#include "rules/barcode_text.h"

using namespace Qt::StringLiterals;

using goods::ImportField;
using goods::ImportVerdict;

namespace goods_import {

namespace {

const QStringList Own{u"Line"_s, u"State"_s, u"Note"_s, u"Code"_s, u"Name"_s};

} // namespace

QString VerdictText(ImportVerdict verdict)
{
    switch (verdict) {
    case ImportVerdict::New:
        return u"جدید"_s;
    case ImportVerdict::Changed:
        return u"تغییر"_s;
    case ImportVerdict::Unchanged:
        return u"بدون تغییر"_s;
    case ImportVerdict::Faulty:
        break;
    }
    return u"ایراد دارد"_s;
}

void ImportRows::Show(const Source &source, Shown shown)
{
    beginResetModel();
    m_source = source;
    m_shown.clear();
    for (size_t i = 0; source.plan && i < source.plan->rows.size(); ++i) {
        const ImportVerdict verdict = source.plan->rows[i].verdict;
        if (shown == Shown::All || (shown == Shown::Faulty && verdict == ImportVerdict::Faulty) ||
            (shown == Shown::NotSame && verdict != ImportVerdict::Unchanged))
            m_shown.push_back(i);
    }
    endResetModel();
}

int ImportRows::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_shown.size());
}

int ImportRows::columnCount(const QModelIndex &parent) const
{
    const int cells = m_source.table ? m_source.table->ColumnCount() : 0;
    return parent.isValid() ? 0 : static_cast<int>(Own.size()) + cells;
}

QVariant ImportRows::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    return section < Own.size() ? Own.at(section) : u"C"_s + QString::number(section - Own.size());
}

const goods::ImportPlan::Entry &ImportRows::EntryAt(int row) const
{
    return m_source.plan->rows.at(m_shown.at(static_cast<size_t>(row)));
}

QVariant ImportRows::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || (role != Qt::DisplayRole && role != Qt::EditRole))
        return {};
    const goods::ImportPlan::Entry &entry = EntryAt(index.row());
    switch (index.column()) {
    case 0:
        return entry.row + 1;
    case 1:
        return VerdictText(entry.verdict);
    case 2:
        return Note(entry);
    case 3:
        return entry.code == 0 ? QVariant() : QVariant(entry.code);
    case 4:
        return Name(entry);
    default:
        return m_source.table->Cell(entry.row, index.column() - static_cast<int>(Own.size())).toString();
    }
}

QString ImportRows::Name(const goods::ImportPlan::Entry &entry) const
{
    const goods::ImportRow row = m_source.reader->Read(entry.row);
    if (const QString *name = row.Find(ImportField::FullName))
        return name->trimmed();
    const auto stored = m_source.known->rowOf.constFind(row.code);
    return stored == m_source.known->rowOf.constEnd()
               ? QString()
               : m_source.known->Stored(*stored, ImportField::FullName).trimmed().toString();
}

QString ImportRows::Note(const goods::ImportPlan::Entry &entry) const
{
    if (entry.verdict == ImportVerdict::Faulty)
        return host::PersianDigits(m_source.plan->faults.value(entry.row));
    if (entry.verdict == ImportVerdict::Unchanged)
        return {};
    const goods::ImportRow row = m_source.reader->Read(entry.row);
    QStringList notes;
    if (!row.newGroup.isEmpty())
        notes += u"گروه تازه: %1"_s.arg(row.newGroup);
    for (const QString &unit : {row.newUnit, row.newUnit2})
        if (!unit.isEmpty())
            notes += u"واحد تازه: %1"_s.arg(unit);
    for (const goods::ImportValue &value : row.values)
        if (row.isKnown && value.field != ImportField::FullName && !value.text.isEmpty())
            notes += Change(row, value);
    return notes.join(u"؛ "_s);
}

QString ImportRows::Change(const goods::ImportRow &row, const goods::ImportValue &value) const
{
    QString caption;
    bool number = false;
    for (const goods::ImportFieldInfo &info : *m_source.fields) {
        if (info.field == value.field) {
            caption = info.caption;
            number = info.price || info.field == ImportField::MinAva;
        }
    }
    if (value.field == ImportField::Barcode)
        return u"بارکد تازه: %1"_s.arg(host::PersianDigits(row.barcodes.join(u"، "_s)));
    const QString before = m_source.known->Stored(m_source.known->rowOf.value(row.code), value.field).toString();
    const auto shown = [&](const QString &text) {
        return number ? host::DisplayNumber(text) : Readable(value.field, text);
    };
    return before.isEmpty() ? u"%1: %2"_s.arg(caption, shown(value.text))
                            : u"%1: از %2 به %3"_s.arg(caption, shown(before), shown(value.text));
}

QString ImportRows::Readable(ImportField field, const QString &stored) const
{
    return field == ImportField::Group ? m_source.known->groupNames.value(stored.toInt(), stored) : stored;
}

} // namespace goods_import
