#pragma once

#include <QHash>
#include <QList>
#include <QStringList>

namespace goods {

/// What a column of a file may be. The numbers are remembered for users: they stay.
enum class ImportField : quint8 {
    None = 0,
    Code = 1,
    FullName = 2, ///< name, type and index in one
    Name = 3,
    Type = 4,
    Index = 5,
    Barcode = 6, ///< one or several
    Group = 7,   ///< code or name
    Unit = 8,
    Unit2 = 9,
    Formula = 10, ///< units 1 in one unit 2
    ConsumerPrice = 11,
    MinAva = 12,
    Position = 13,
    Comment = 14,
    Sell1 = 20, ///< … Sell10 = 29
    Buy1 = 40,  ///< … Buy10 = 49
};

inline constexpr int ImportLevels = 10;

/// A field as it is offered, and where it is stored.
struct ImportFieldInfo
{
    ImportField field = ImportField::None;
    QString caption;
    QString column;     ///< of GoodInf, or of GoodCostDiscount for prices of levels
    int length = 0;     ///< characters that a text column holds; 0 for a number
    bool price = false; ///< kept by the list of the last changes
};

ImportField SellField(int level);
ImportField BuyField(int level);
bool IsLevel(ImportField field);

/// The fields that a shop has. `levelTitles` are those of the price levels 1, 2, …; a level beyond the fourth is
/// offered only when it has a title. Without two-unit goods nobody is asked for a second unit.
QList<ImportFieldInfo> ImportFields(const QStringList &levelTitles, bool twoUnits);

/// The caption as it is compared: folded, without blanks and marks.
QString ImportCaptionKey(QStringView caption);

/// Finds out what the columns with these captions are: by what the user chose for the caption before (`remembered`, by
/// ImportCaptionKey), by the program's own captions, and by the usual other names. Each field is found once.
QList<ImportField> MatchImportFields(const QStringList &captions, const QList<ImportFieldInfo> &fields,
                                     const QHash<QString, ImportField> &remembered);

} // namespace goods
