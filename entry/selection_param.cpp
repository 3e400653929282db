#include "entry/selection_param.h"

namespace entry {

namespace {
constexpr QStringView Marker = u"#LC#";
constexpr qsizetype UnmarkedPrefix = 3;
} // namespace

SelectionParam SplitSelectionParam(const QString &param)
{
    const qsizetype at = param.indexOf(Marker);
    if (at < 0)
        return {{}, param.mid(UnmarkedPrefix)};
    return {param.left(at), param.mid(at + Marker.size())};
}

} // namespace entry
