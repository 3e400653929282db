#pragma once

#include <QString>

namespace entry {

/// The two halves of the parameter text of a goods choice.
struct SelectionParam
{
    QString LocateCode;
    QString SelectionText;
};

/// Splits "<locate code>#LC#<selection text>" at the first marker. A missing marker counts as found
/// just before the text, and its four characters are skipped from there: no locate code, and the selection text begins
/// at the fourth character. Hosts were written against that.
SelectionParam SplitSelectionParam(const QString &param);

} // namespace entry
