// Names inside the database file that both the writer and the connection rely on.
#pragma once

namespace tsql {

/// The attached in-memory database of the global temporary tables ("##t"), one for each file and process.
inline constexpr char GlobalSchema[] = "shared";
/// The data definition texts of the file, in the order they were carried out: (id INTEGER PRIMARY KEY, text TEXT).
inline constexpr char DefinitionTable[] = "tsql_definitions";

/// Ends the name of the index that keeps rows with a NULL in a unique key apart; see Writer::nullsIndex.
inline constexpr char NullsSuffix[] = " nulls";

} // namespace tsql
