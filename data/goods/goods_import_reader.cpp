#include "data/goods/goods_import_judge.h"
#include "data/goods/goods_import_rules.h"
#include "host/data/persian_text.h"
#include "host/data/quantity.h"
#include "rules/barcode_text.h"
#include "rules/good_name.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace goods {

namespace {

constexpr int NoRow = -1;
constexpr qsizetype TitleLength = 50; ///< of groups and units

QString TooLong(const ImportFieldInfo &info)
{
    return u"%1 بیش از %2 حرف است"_s.arg(info.caption).arg(info.length);
}

/// The number of a cell that names a record by its code; 0 when it is no number.
int CodeOf(const QString &text)
{
    const auto plain = host::NormalizeDecimal(text);
    return plain ? plain->toInt() : 0;
}

} // namespace

/// A row in the making.
struct ImportReader::Reading
{
    int row;
    ImportRow read;
    int stored = NoRow; ///< the known good in ImportKnown::goods

    void Fault(const QString &fault) { read.faults += fault; }
};

const QString *ImportRow::Find(ImportField field) const
{
    for (const ImportValue &value : values) {
        if (value.field == field) {
            return &value.text;
        }
    }
    return nullptr;
}

ImportReader::ImportReader(const ImportTable &table, const ImportKnown &known, const ImportOptions &options,
                           const QList<ImportFieldInfo> &fields)
    : m_table(table), m_known(known), m_options(options)
{
    for (int column = 0; column < options.columns.size(); ++column) {
        if (options.columns[column] != ImportField::None) {
            m_columns.insert(options.columns[column], column);
        }
    }
    for (const ImportFieldInfo &info : fields) {
        m_fields.insert(info.field, info);
    }
}

const ImportFieldInfo &ImportReader::Info(ImportField field) const
{
    static const ImportFieldInfo none;
    const auto info = m_fields.constFind(field);
    return info == m_fields.constEnd() ? none : *info;
}

QStringView ImportReader::Cell(int row, ImportField field) const
{
    const auto column = m_columns.constFind(field);
    return column == m_columns.constEnd() ? QStringView() : WithoutGuard(m_table.Cell(row, *column)).trimmed();
}

/// The same in the letters of another keyboard is no change; neither is a text that begins as the guard does.
bool ImportReader::IsStored(const Reading &reading, ImportField field) const
{
    if (reading.stored == NoRow) {
        return false;
    }
    const QString stored = ImportText(m_known.Stored(reading.stored, field));
    return stored == ImportText(Cell(reading.row, field)) ||
           stored == ImportText(m_table.Cell(reading.row, m_columns.value(field)));
}

ImportRow ImportReader::Read(int row) const
{
    Reading reading{row, {}, NoRow};
    FindGood(reading);
    ReadName(reading);
    ReadBarcodes(reading);
    ReadGroup(reading);
    ReadUnits(reading);
    ReadNumbers(reading);
    ReadText(reading, ImportField::Position);
    ReadText(reading, ImportField::Comment);
    return reading.read;
}

/// By its code, else by its barcode.
void ImportReader::FindGood(Reading &reading) const
{
    ImportRow &read = reading.read;
    const QStringView cell = Cell(reading.row, ImportField::Code);
    if (!cell.isEmpty()) {
        const auto code = ImportCode(cell);
        if (!code) {
            reading.Fault(HasExponent(cell)
                              ? u"کد به شکل نمایی است و رقم‌های آن کامل نیست"_s
                              : u"کد باید عددی تا ۶ رقم باشد"_s);
            return;
        }
        read.code = *code;
    } else {
        for (const QString &barcode : ImportBarcodes(Cell(reading.row, ImportField::Barcode))) {
            read.code = read.code == 0 ? m_known.codeOfBarcode.value(barcode.toLower()) : read.code;
        }
    }
    reading.stored = m_known.rowOf.value(read.code, NoRow);
    read.isKnown = reading.stored != NoRow;
    if (read.isKnown && m_known.deniedGroups.contains(m_known.Stored(reading.stored, ImportField::Group).toInt())) {
        reading.Fault(u"گروه این کالا در دسترس شما نیست"_s);
    }
    if (!read.isKnown && m_known.reservedCodes.contains(read.code)) {
        reading.Fault(u"کاربر دیگری همین حالا کالایی با این کد می‌سازد"_s);
    }
}

/// What is stored already is not given again.
void ImportReader::Give(Reading &reading, ImportField field, const QString &text) const
{
    if (reading.stored == NoRow || m_known.Stored(reading.stored, field) != text) {
        reading.read.values += ImportValue{field, text};
    }
}

void ImportReader::ReadText(Reading &reading, ImportField field) const
{
    const QString text = ImportText(Cell(reading.row, field));
    if (text.isEmpty() || IsStored(reading, field)) {
        return;
    }
    if (text.size() > Info(field).length) {
        reading.Fault(TooLong(Info(field)));
    }
    Give(reading, field, text);
}

void ImportReader::ReadName(Reading &reading) const
{
    if (Has(ImportField::Name) || !Has(ImportField::FullName)) {
        ReadText(reading, ImportField::Name);
        ReadText(reading, ImportField::Type);
        ReadText(reading, ImportField::Index);
    } else {
        ReadFullName(reading);
    }
    CheckName(reading);
}

/// The name of a good whose parts the file does not tell apart.
void ImportReader::ReadFullName(Reading &reading) const
{
    const QString text = ImportText(Cell(reading.row, ImportField::FullName));
    if (text.isEmpty() || IsStored(reading, ImportField::FullName)) {
        return;
    }
    const auto part = [&](ImportField field) {
        return reading.stored == NoRow ? QString() : m_known.Stored(reading.stored, field).toString();
    };
    const QString ending = ImportText(u' ' + part(ImportField::Type) + u' ' + part(ImportField::Index));
    QString name = text;
    if (!ending.isEmpty()) {
        if (!text.endsWith(u' ' + ending)) {
            reading.Fault(
                u"نام این کالا نوع یا شاخص دارد؛ برای تغییر، آنها را در ستون‌های جدا بیاورید"_s);
            return;
        }
        name = text.chopped(ending.size() + 1);
    }
    if (name.size() > Info(ImportField::Name).length) {
        reading.Fault(TooLong(Info(ImportField::Name)));
    }
    Give(reading, ImportField::Name, name);
}

/// A good has a name, and no other good has it.
void ImportReader::CheckName(Reading &reading) const
{
    ImportRow &read = reading.read;
    const auto part = [&](ImportField field) {
        if (const QString *given = read.Find(field)) {
            return *given;
        }
        return reading.stored == NoRow ? QString() : m_known.Stored(reading.stored, field).toString();
    };
    const QString full = ComposedName(part(ImportField::Name), part(ImportField::Type), part(ImportField::Index));
    if (full.trimmed().isEmpty()) {
        reading.Fault(u"نام کالا خالی است"_s);
        return;
    }
    const bool changes = reading.stored == NoRow || read.Find(ImportField::Name) || read.Find(ImportField::Type) ||
                         read.Find(ImportField::Index);
    if (!changes) {
        return;
    }
    const int owner = m_known.codeOfName.value(ImportNameKey(full), read.isKnown ? read.code : 0);
    if (owner != (read.isKnown ? read.code : 0)) {
        reading.Fault(u"نام کالا تکراری است (کالای %1)"_s.arg(owner));
    }
    read.values += ImportValue{ImportField::FullName, full};
}

/// Barcodes are added to those that a good has; none is ever taken off.
void ImportReader::ReadBarcodes(Reading &reading) const
{
    ImportRow &read = reading.read;
    const QStringView cell = Cell(reading.row, ImportField::Barcode);
    Barcodes kept;
    if (reading.stored != NoRow) {
        kept = UnpackBarcodes(m_known.Stored(reading.stored, ImportField::Barcode).toString());
    }
    for (const QString &barcode : ImportBarcodes(cell)) {
        const int owner = m_known.codeOfBarcode.value(barcode.toLower());
        if (owner != 0 && owner == read.code) {
            continue;
        }
        if (HasExponent(barcode)) {
            reading.Fault(u"بارکد به شکل نمایی است و رقم‌های آن کامل نیست"_s);
        } else if (owner != 0) {
            reading.Fault(u"بارکد %1 از آن کالای %2 است"_s.arg(barcode).arg(owner));
        } else if (m_known.otherBarcodes.contains(barcode.toLower())) {
            reading.Fault(u"بارکد %1 از آن جزییات یک کالا یا بارکدهای عملیاتی است"_s.arg(barcode));
        } else if (!CheckDigitFits(barcode)) {
            reading.Fault(u"رقم کنترل بارکد %1 درست نیست"_s.arg(barcode));
        }
        read.barcodes += barcode;
        auto *free = std::find(kept.begin(), kept.end(), QString());
        if (free == kept.end()) {
            reading.Fault(u"کالا بیش از شش بارکد نمی‌گیرد"_s);
            return;
        }
        *free = barcode;
    }
    if (!read.barcodes.isEmpty()) {
        const QString packed = PackBarcodes(kept, kept[1].isEmpty());
        if (packed.size() > Info(ImportField::Barcode).length) {
            reading.Fault(TooLong(Info(ImportField::Barcode)));
        }
        Give(reading, ImportField::Barcode, packed);
    }
}

void ImportReader::ReadGroup(Reading &reading) const
{
    ImportRow &read = reading.read;
    const QString text = ImportText(Cell(reading.row, ImportField::Group));
    int group = text.isEmpty() ? (read.isKnown ? 0 : m_options.group) : m_known.groups.value(host::Fold(text));
    if (group == 0 && m_known.groupNames.contains(CodeOf(text))) {
        group = CodeOf(text);
    }
    if (group != 0 && m_known.deniedGroups.contains(group)) {
        reading.Fault(u"گروه «%1» در دسترس شما نیست"_s.arg(m_known.groupNames.value(group)));
    } else if (group != 0) {
        Give(reading, ImportField::Group, QString::number(group));
    } else if (!text.isEmpty() && m_options.newGroups && text.size() <= TitleLength) {
        read.newGroup = text;
        read.values += ImportValue{ImportField::Group, QString()};
    } else if (!text.isEmpty()) {
        reading.Fault(u"گروه «%1» شناخته نیست"_s.arg(text.left(TitleLength)));
    } else if (!read.isKnown) {
        reading.Fault(u"گروه کالا خالی است"_s);
    }
}

int ImportReader::ReadUnit(Reading &reading, ImportField field, QString &newUnit) const
{
    const QString text = ImportText(Cell(reading.row, field));
    if (text.isEmpty()) {
        return 0;
    }
    int unit = m_known.units.value(host::Fold(text));
    if (unit == 0 && m_known.unitNames.contains(CodeOf(text))) {
        unit = CodeOf(text);
    }
    if (unit == 0 && m_options.newUnits && text.size() <= TitleLength) {
        newUnit = text;
    } else if (unit == 0) {
        reading.Fault(u"واحد «%1» شناخته نیست"_s.arg(text.left(TitleLength)));
    }
    return unit;
}

/// Documents count in the units of a good: those of a known one stay.
void ImportReader::ReadUnits(Reading &reading) const
{
    ImportRow &read = reading.read;
    int unit = ReadUnit(reading, ImportField::Unit, read.newUnit);
    const int second = ReadUnit(reading, ImportField::Unit2, read.newUnit2);
    if (read.isKnown) {
        const auto differs = [&](ImportField field, int now, const QString &fresh) {
            return !fresh.isEmpty() || (now != 0 && m_known.Stored(reading.stored, field).toInt() != now);
        };
        if (differs(ImportField::Unit, unit, read.newUnit) || differs(ImportField::Unit2, second, read.newUnit2)) {
            reading.Fault(u"واحد کالای موجود با ورود از فایل عوض نمی‌شود"_s);
        }
        return;
    }
    if (Cell(reading.row, ImportField::Unit).isEmpty()) {
        unit = m_options.unit;
        if (unit == 0) {
            reading.Fault(u"واحد کالا خالی است"_s);
        }
    }
    read.values += ImportValue{ImportField::Unit, unit == 0 ? QString() : QString::number(unit)};
    if (!Cell(reading.row, ImportField::Unit2).isEmpty()) {
        read.values += ImportValue{ImportField::Unit2, second == 0 ? QString() : QString::number(second)};
    } else if (!Cell(reading.row, ImportField::Formula).isEmpty()) {
        reading.Fault(u"فرمول بدون واحد ۲ معنی ندارد"_s);
    }
}

void ImportReader::ReadNumbers(Reading &reading) const
{
    for (const ImportField field : m_options.columns) {
        const ImportFieldInfo &info = Info(field);
        if (!info.price && info.field != ImportField::MinAva && info.field != ImportField::Formula) {
            continue;
        }
        const QStringView cell = Cell(reading.row, info.field);
        if (cell.isEmpty()) {
            continue;
        }
        const auto number = ImportNumber(cell);
        if (!number) {
            reading.Fault(u"«%1» برای %2 عدد درستی نیست"_s.arg(cell.left(30), info.caption));
        } else if (info.field != ImportField::Formula) {
            Give(reading, info.field, *number);
        } else if (!reading.read.isKnown) {
            reading.read.values += ImportValue{info.field, *number};
        } else if (m_known.Stored(reading.stored, info.field) != *number) {
            reading.Fault(u"فرمول کالای موجود با ورود از فایل عوض نمی‌شود"_s);
        }
    }
}

} // namespace goods
