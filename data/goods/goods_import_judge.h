#pragma once

#include "data/goods/goods_import_known.h"

#include <array>
#include <vector>

namespace goods {

/// What is to become of a row.
enum class ImportVerdict : quint8 { New, Changed, Unchanged, Faulty };
inline constexpr int ImportVerdicts = 4;

/// What the user chose beside the columns.
struct ImportOptions
{
    QList<ImportField> columns; ///< what each column of the file is
    int firstRow = 0;           ///< 1 when the first row holds captions
    bool newGroups = false;     ///< unknown groups are made
    bool newUnits = false;
    int group = 0; ///< of new goods without one; 0: each needs one of its own
    int unit = 0;
};

/// A value that a row gives to its good, as it is stored.
struct ImportValue
{
    ImportField field = ImportField::None;
    QString text;
};

/// A row of the file against what is known.
struct ImportRow
{
    int code = 0; ///< of the known good, or the one that the file gives to a new one; 0: the program gives one
    bool isKnown = false;
    QList<ImportValue> values; ///< of a new good all that are given, of a known one those that change
    QStringList barcodes;      ///< those that the good does not have yet
    QString newGroup;          ///< names of what must be made for it
    QString newUnit;
    QString newUnit2;
    QStringList faults; ///< as the user reads them

    const QString *Find(ImportField field) const;
};

/// Reads one row at a time, for the preview as for the writing. What rows have in common (repeated codes, names and
/// barcodes) is for ImportPlan.
class ImportReader
{
public:
    /// Keeps references.
    ImportReader(const ImportTable &table, const ImportKnown &known, const ImportOptions &options,
                 const QList<ImportFieldInfo> &fields);

    ImportRow Read(int row) const;
    /// Whether one of the columns gives this field.
    bool Has(ImportField field) const { return m_columns.contains(field); }

private:
    struct Reading;

    QStringView Cell(int row, ImportField field) const;
    bool IsStored(const Reading &reading, ImportField field) const;
    void FindGood(Reading &reading) const;
    void ReadBarcodes(Reading &reading) const;
    void ReadName(Reading &reading) const;
    void ReadFullName(Reading &reading) const;
    void ReadGroup(Reading &reading) const;
    void ReadUnits(Reading &reading) const;
    int ReadUnit(Reading &reading, ImportField field, QString &newUnit) const;
    void ReadNumbers(Reading &reading) const;
    void ReadText(Reading &reading, ImportField field) const;
    void CheckName(Reading &reading) const;
    void Give(Reading &reading, ImportField field, const QString &text) const;
    const ImportFieldInfo &Info(ImportField field) const;

    const ImportTable &m_table;
    const ImportKnown &m_known;
    const ImportOptions &m_options;
    QHash<ImportField, int> m_columns;
    QHash<ImportField, ImportFieldInfo> m_fields;
};

/// The verdict on every row of a file that is not empty.
struct ImportPlan
{
    struct Entry
    {
        int row = 0; ///< of the file
        int code = 0;
        ImportVerdict verdict = ImportVerdict::Faulty;
    };
    std::vector<Entry> rows;
    QHash<int, QString> faults; ///< by row of the file
    std::array<int, ImportVerdicts> counts{};
    QStringList newGroups; ///< to be made for rows without faults, in their order
    QStringList newUnits;

    int Count(ImportVerdict verdict) const { return counts.at(static_cast<size_t>(verdict)); }
    /// Takes a row out that was to be written.
    void Refuse(Entry &entry, const QString &fault);
};

ImportPlan JudgeImport(const ImportTable &table, const ImportReader &reader, const ImportOptions &options);

} // namespace goods
