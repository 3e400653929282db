#pragma once

#include <QString>

#include <concepts>
#include <exception>
#include <initializer_list>
#include <utility>

namespace tsql {

/// What an Error says: a row of the table in error_texts.cpp. A number means its usual text; wording names the others.
struct Wording
{
    constexpr Wording(int number, int variant = 0) : number(number), variant(variant) {}
    bool operator==(const Wording &) const = default;
    auto operator<=>(const Wording &) const = default; // NOLINT(modernize-use-nullptr): the compiler's zero

    int number;
    int variant;
};

namespace wording {
inline constexpr Wording BrokenDefinition{102, 1};
inline constexpr Wording VariableInDefinition{137, 1};
inline constexpr Wording CheckConflict{547, 1};
inline constexpr Wording CheckConflictOfTable{547, 2};
inline constexpr Wording CheckConflictOfColumn{547, 3};
inline constexpr Wording KeyConflict{547, 4};
inline constexpr Wording FileGone{823, 1};
inline constexpr Wording SecondNull{2601, 1};
inline constexpr Wording BytesTruncated{2628, 1};
inline constexpr Wording NoTableToDrop{3701, 1};
inline constexpr Wording ConditionAsValue{4145, 1};
inline constexpr Wording OwnTemporaryTable{40517, 1};
inline constexpr Wording OutputOfExchange{40517, 2};
inline constexpr Wording LowestNumbersExchanged{40517, 3};
inline constexpr Wording ReferredExchange{40517, 4};
inline constexpr Wording AverageOfDistinct{40517, 5};
inline constexpr Wording RunningAssignment{40517, 6};
inline constexpr Wording AddedConstraint{40517, 7};
inline constexpr Wording DroppedConstraint{40517, 8};
inline constexpr Wording AddedIdentity{40517, 9};
inline constexpr Wording InsertedProcedure{40517, 10};
inline constexpr Wording OutputOfFormerValues{40517, 11};
inline constexpr Wording TopPercent{40517, 12};
inline constexpr Wording XmlOfColumns{40517, 13};
inline constexpr Wording ForeignToWriter{40517, 14};
inline constexpr Wording ChangedQuery{40517, 15};
inline constexpr Wording ChangedQueryInJoin{40517, 16};
inline constexpr Wording ChangedRowsOf{40517, 17};
} // namespace wording

/// What stands in place of a text's %1, %2 …
class ErrorArgument
{
public:
    ErrorArgument(QString text) : m_text(std::move(text)) {}
    ErrorArgument(QStringView text) : m_text(text.toString()) {}
    ErrorArgument(QLatin1String text) : m_text(text) {}
    ErrorArgument(QChar letter) : m_text(letter) {}
    ErrorArgument(char16_t letter) : m_text(QChar(letter)) {}
    template <std::integral T> ErrorArgument(T value) : m_text(QString::number(qint64(value))) {}

    const QString &text() const { return m_text; }

private:
    QString m_text;
};

/// A refused statement, with the number and text the server would give and the line within the batch (from 1).
class Error : public std::exception
{
public:
    Error(Wording wording, std::initializer_list<ErrorArgument> arguments = {}, int line = 0);
    /// With a text that somebody else wrote: of THROW, of SQLite, of another error.
    static Error Worded(int number, QString message, int line = 0);

    const char *what() const noexcept override { return m_utf8.constData(); }
    int Number() const { return m_number; }
    const QString &Text() const { return m_message; }
    int Line() const { return m_line; }
    int Severity() const { return m_severity; }
    int State() const { return m_state; }
    void setLine(int line) { m_line = line; }
    void setSeverity(int severity, int state);

private:
    Error(int number, int line, QString message);

    int m_number;
    QString m_message;
    int m_line;
    int m_severity = 16;
    int m_state = 1;
    QByteArray m_utf8;
};

/// The text of an error with its arguments in place.
QString ErrorText(Wording wording, std::initializer_list<ErrorArgument> arguments);

/// 191: for texts beyond what the parsers take.
Error NestedTooDeeply(int line = 0);

/// Error 40517: what this database does not carry out, by its name.
Error NotSupported(const QString &what, int line = 0);

} // namespace tsql
