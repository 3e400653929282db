#pragma once

#include "host/services/good_detail_records.h"

#include <QString>
#include <QStringList>

#include <optional>

/// The one text of fields joined by ";" by which a host's arguments reach a screen of good details, both ways. Inside
/// the module these structs travel: a text keeps two decimals of an amount.
namespace good_detail {

/// Arguments that the module hands on without a meaning of its own keep the number of their place in the text.
struct EnterOpening
{
    std::array<int, 6> Numbers{}; ///< fields 1 to 6
    std::array<QString, 4> Texts; ///< fields 7 to 10
    int Key = 0;                  ///< field 11: the record to be edited
    QString Last;                 ///< field 12
};

struct EnterLineOpening
{
    std::array<int, 12> Numbers{}; ///< fields 1 to 12
    QString Text13;
    int Number14 = 0;
    QString Text15;
    int Number16 = 0;
    QString Text17;
    QString Text18;
    host::Quantity Amount = 0; ///< field 19
    int Number20 = 0;
    int Number21 = 0;
};

struct ExitOpening
{
    std::array<int, 10> Numbers{}; ///< fields 1 to 10
    QString Text;                  ///< field 11
};

struct SelectOpening
{
    int Flag = 0;
    int Kind = 0;
    QString Text;
    int Number = 0;
};

struct DivisionItemsOpening
{
    std::array<int, 3> Numbers{};
    std::array<host::Quantity, 5> Amounts{};
    std::array<int, 4> Constants{0, 0, 2, 1};
};

/// What the choice of one detail value gives back; each field is followed by ";".
struct ChosenDetail
{
    int DetailValueID = 0;
    int StoreCode = 0;
    int GoodCode = 0;
    host::Quantity Amount1 = 0;
    host::Quantity Amount2 = 0;
    host::Quantity Length = 0;
    host::Quantity Width = 0;
    host::Quantity Amount3 = 0;
};

/// "%d;%d;%d;%d;%d;%d;%s;%s;%s;%s;%d;%s"
QString Pack(const EnterOpening &opening);
/// "%d;%d;%d;%d;%d;%d;%d;%d;%d;%d;%d;%d;%s;%d;%s;%d;%s;%s;%f;%d;%d"
QString Pack(const EnterLineOpening &opening);
/// "%d;%d;%d;%d;%d;%d;%d;%d;%d;%d;%s"
QString Pack(const ExitOpening &opening);
/// "%d;%d;%s;%d"
QString Pack(const SelectOpening &opening);
/// "%d;%d;%d;%f;%f;%f;%f;%f;%d;%d;%d;%d"
QString Pack(const DivisionItemsOpening &opening);
/// "%d;%d;%d;%f;%f;%f;%f;%f;"
QString Pack(const ChosenDetail &chosen);

/// Nothing when the text does not have the format. A text field may hold ";" itself: of several text fields in a row
/// the last one takes what is too much, where the fields behind leave the choice.
std::optional<EnterOpening> ParseEnter(const QString &text);
std::optional<EnterLineOpening> ParseEnterLine(const QString &text);
std::optional<ExitOpening> ParseExit(const QString &text);
std::optional<SelectOpening> ParseSelect(const QString &text);
std::optional<DivisionItemsOpening> ParseDivisionItems(const QString &text);
std::optional<ChosenDetail> ParseChosen(const QString &text);

} // namespace good_detail
