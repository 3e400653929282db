// Texts that nest deeper than SQLite's parser goes.
#pragma once

#include <QByteArray>

namespace tsql {

/**
 * The statement of the writer with its depth taken apart: derived tables become common tables in front of their query,
 * inner expressions common tables of a subquery that stands for the outer one. Both see the same columns there and are
 * carried out where they were. What may not be moved (an aggregate, a subquery, a definition) stays where it is.
 */
QByteArray Flattened(const QByteArray &sql);

} // namespace tsql
