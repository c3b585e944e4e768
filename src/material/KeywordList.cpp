#include "material/KeywordList.h"

#include <cstddef>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "material/KeywordTables.h"

namespace MM {

namespace {

constexpr std::string_view BLANKS = " \t";

/// Stands for an index without a keyword: one out of range, or a number that is no bit of a flag category.
constexpr std::string_view KEYWORD_ERROR_STRING = "KEYWORD_ERROR_STRING: Invalid type index";

const KeywordTable* findTable(std::string_view category) {
  for (const KeywordTable& table : keywordTables())
    if (table.category == category) return &table;
  return nullptr;
}

std::uint32_t indexOf(const KeywordTable& table, std::size_t position) {
  return table.isFlags ? std::uint32_t{1} << position : static_cast<std::uint32_t>(position);
}

std::string_view entryOf(const KeywordTable& table, std::uint32_t index) {
  for (std::size_t position = 0; position < table.entries.size(); ++position)
    if (indexOf(table, position) == index) return table.entries[position];
  return KEYWORD_ERROR_STRING;
}

/// Position of a word in a blank separated entry, -1 if it is not there.
int wordPosition(std::string_view entry, std::string_view keyword) {
  for (int position = 0;; ++position) {
    const std::size_t begin = entry.find_first_not_of(BLANKS);
    if (begin == std::string_view::npos) return -1;
    entry.remove_prefix(begin);
    const std::string_view word = entry.substr(0, entry.find_first_of(BLANKS));
    if (word == keyword) return position;
    entry.remove_prefix(word.size());
  }
}

bool find(const KeywordTable& table, std::string_view keyword, std::int32_t& index, bool& alias) {
  for (std::size_t position = 0; position < table.entries.size(); ++position) {
    const int word = wordPosition(table.entries[position], keyword);
    if (word < 0) continue;
    index = static_cast<std::int32_t>(indexOf(table, position));
    alias = word > 0;
    return true;
  }
  return false;
}

}  // namespace

std::string KeywordList::Keyword(std::string_view category, std::uint32_t index) {
  const char* const FUNC_ID = "[KeywordList::Keyword]";
  const KeywordTable* const table = findTable(category);
  const std::string_view entry = table ? entryOf(*table, index) : KEYWORD_ERROR_STRING;
  if (entry == KEYWORD_ERROR_STRING)
    throw TKL::Exception(
        TKL::FormatString("Cannot determine keyword for enumeration type '%1' and index '%2'.")
            .arg(category)
            .arg(index),
        FUNC_ID);
  return std::string(entry.substr(0, entry.find_first_of(BLANKS)));
}

std::int32_t KeywordList::Enumeration(std::string_view category, std::string_view keyword, bool* deprecated) {
  const char* const FUNC_ID = "[KeywordList::Enumeration]";
  MaxIndex(category);
  std::int32_t index = -1;
  bool alias = false;
  if (!find(*findTable(category), keyword, index, alias))
    throw TKL::Exception(
        TKL::FormatString("Cannot determine enumeration value for enumeration type '%1' and keyword '%2'.")
            .arg(category)
            .arg(keyword),
        FUNC_ID);
  if (deprecated) *deprecated = alias;
  return index;
}

std::int32_t KeywordList::MaxIndex(std::string_view category) {
  const char* const FUNC_ID = "[KeywordList::MaxIndex]";
  const KeywordTable* const table = findTable(category);
  if (!table)
    throw TKL::Exception(TKL::FormatString("Invalid enumeration type '%1'.").arg(category), FUNC_ID);
  return static_cast<std::int32_t>(indexOf(*table, table->entries.size() - 1));
}

bool KeywordList::KeywordExists(std::string_view category, std::string_view keyword) {
  MaxIndex(category);
  std::int32_t index = -1;
  bool alias = false;
  return find(*findTable(category), keyword, index, alias);
}

}  // namespace MM
