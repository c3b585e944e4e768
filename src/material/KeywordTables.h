#pragma once

#include <span>
#include <string_view>

namespace MM {

/// The keywords of one enumeration of the material library, in the order of its values. The first word of an
/// entry is the current keyword, any other an alias.
struct KeywordTable {
  std::string_view category;
  std::span<const char* const> entries;
  bool isFlags = false;  ///< the entries belong to the bits 1, 2, 4 ... instead of 0, 1, 2 ...
};

/// All tables.
std::span<const KeywordTable> keywordTables();

}  // namespace MM
