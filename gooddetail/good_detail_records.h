#pragma once

#include "host/services/good_detail_records.h"

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

/// A row of the enter screen: one detail value that came in with a line, and how much of it.
struct TEnterGoodDetail_Rec
{
    int ID = 0; ///< of the working row; used when it is updated
    int DetailValueID = 0;
    int StoreCode = 0;
    int GoodCode = 0;
    std::array<QString, host::MostDetails> DetailTitle; ///< as the user sees them
    host::TAmounts Amounts;
    quint8 OperationType = 0;
    int OperationCode = 0;
    int OperationRow = 0;
    int ForeignOperationCode = 0;
    quint8 Tmp = 1;                                ///< 1 while the document is not saved
    std::optional<host::TAmounts> Returnable = {}; ///< of a return; what is not given stays as it is
};

/// What a screen needs to build the input of one detail type. What a kind does not have stays empty.
struct TGoodDetailData
{
    bool Found = false;
    int Kind = 0; ///< 1 list, 2 text, 3 serial, 4 number, 5 date, 6 barcode, 7 two-state
    QString Title;
    bool IsRequired = false;
    QStringList Items;    ///< what a list or a text offers
    QString DefaultValue; ///< of lists, texts and two-states
    int DateType = 0;     ///< 0 Gregorian, 1 solar Hijri
    QString ToggleTitleTrue;
    QString ToggleTitleFalse;
};

/// The good of a document's line, as the screens of details show it.
struct TLineGood_Rec
{
    bool Found = false;
    QString Name;
    int Unit = 0;
    int Unit2 = 0;              ///< 0: none
    host::Quantity Formool = 0; ///< units 1 in one unit 2; 0: no formula
    QString UnitName;
    QString Unit2Name;
};

/// The header of a division of details.
struct TGoodDetailDivision_Rec
{
    int Code = 0;
    QString Date;
    QString Comment;
};

/// What is typed above the list of the exit screen, of which only what is set narrows the list.
struct TExitNarrowing
{
    struct Detail
    {
        std::optional<QString> Value; ///< an empty one looks for rows without a value
        bool IsText = false;          ///< a part of the value is enough
    };

    bool OnlySelected = false; ///< the list of what was chosen: nothing else counts then
    QString Serial;            ///< anywhere in the serial
    qint64 SerialFrom = 0;     ///< counts when both ends are above 0
    qint64 SerialTo = 0;
    QString Barcode;
    std::array<Detail, host::MostDetails> Details;
    host::Quantity Package = 0; ///< packed goods: the amount in a package
    host::Quantity Length = 0;  ///< area goods; counts together with the width
    host::Quantity Width = 0;
};
