#pragma once

#include "host/controls/tags_panel.h"

namespace host {
class Dataset;
}

namespace goods {

/// The tags that can be put on a good, with the colours of their swatches, from the rows of
/// Categories::GetAllTagsWithColor().
QList<host::Tag> ReadTags(const host::Dataset &tags);

} // namespace goods
