#pragma once

#include <QString>

namespace goods {

/// How the goods `j` of an entry of the last changes compare with what is stored now, as parts of statements.
struct Comparison
{
    QString tables;                             ///< joined to `j`, GoodInf as `g` among them
    QString changed;                            ///< condition: it has not the values that were written
    QString stuck = QString::fromUtf16(u"1=0"); ///< condition: it cannot get its old ones back
    QString used = QString::fromUtf16(u"1=0");  ///< condition: the change made it, and it is in use
    QString made = QString::fromUtf16(u"0");    ///< 1 for a good that the change made

    /// LeftReason of the good.
    QString Reason() const;
};

} // namespace goods
