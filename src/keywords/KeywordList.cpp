#include "keywords/KeywordList.h"

#include <algorithm>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "keywords/KeywordTables.h"
#include "keywords/QuotedText.h"

namespace VELMORA {

namespace {

constexpr std::int32_t NOT_FOUND = -1;

/// Position of a keyword among the words of a table entry, `NOT_FOUND` where it is none of them.
std::int32_t wordPosition(std::string_view words, std::string_view keyword) {
  constexpr const char* BLANKS = " \t";
  std::int32_t position = 0;
  for (std::size_t begin = words.find_first_not_of(BLANKS); begin != std::string_view::npos;
       begin = words.find_first_not_of(BLANKS, begin)) {
    const std::size_t end = std::min(words.find_first_of(BLANKS, begin), words.size());
    if (words.substr(begin, end - begin) == keyword) return position;
    begin = end;
    ++position;
  }
  return NOT_FOUND;
}

/// Index of a keyword in its category, `NOT_FOUND` without a match.
std::int32_t findIndex(std::string_view category, std::string_view keyword, bool* deprecated) {
  const std::int32_t maxIndex = KeywordList::MaxIndex(category);
  const std::int32_t number = categoryNumber(category);
  for (std::int32_t index = 0; index <= maxIndex; ++index) {
    const std::string_view words = keywordString(number, static_cast<std::uint32_t>(index));
    if (words == KEYWORD_ERROR_STRING) continue;
    const std::int32_t position = wordPosition(words, keyword);
    if (position == NOT_FOUND) continue;
    if (deprecated != nullptr) *deprecated = position > 0;
    return index;
  }
  return NOT_FOUND;
}

}  // namespace

std::string KeywordList::Keyword(std::string_view category, std::uint32_t index) {
  const char* const FUNC_ID = "[KeywordList::Keyword]";
  const std::string_view keyword = primaryKeyword(categoryNumber(category), index);
  if (keyword == KEYWORD_ERROR_STRING)
    throw TKL::Exception(
        TKL::FormatString("Cannot determine keyword for enumeration type '%1' and index '%2'.")
            .arg(std::string(category))
            .arg(index),
        FUNC_ID);
  return std::string(keyword);
}

std::int32_t KeywordList::Enumeration(std::string_view category, std::string_view keyword, bool* deprecated) {
  const char* const FUNC_ID = "[KeywordList::Enumeration]";
  const std::int32_t index = findIndex(category, keyword, deprecated);
  if (index == NOT_FOUND)
    throw TKL::Exception(
        TKL::FormatString("Cannot determine enumeration value for enumeration type '%1' and keyword '%2'.")
            .arg(std::string(category))
            .arg(quotedText(std::string(keyword))),
        FUNC_ID);
  return index;
}

std::string KeywordList::Description(std::string_view category, std::uint32_t index, bool* noDescription) {
  const char* const FUNC_ID = "[KeywordList::Description]";
  if (noDescription != nullptr) *noDescription = false;
  const KeywordCategory* found = keywordCategory(categoryNumber(category));
  if (found == nullptr || index >= found->rows.size() || found->descriptions == Descriptions::NONE)
    throw TKL::Exception(
        TKL::FormatString("Cannot determine description for enumeration type '%1' and index '%2'.")
            .arg(std::string(category))
            .arg(index),
        FUNC_ID);
  if (found->descriptions == Descriptions::SENTENCES) return found->rows[index].description;
  if (noDescription != nullptr) *noDescription = true;
  return Keyword(category, index);
}

std::int32_t KeywordList::MaxIndex(std::string_view category) {
  const char* const FUNC_ID = "[KeywordList::MaxIndex]";
  const KeywordCategory* found = keywordCategory(categoryNumber(category));
  if (found == nullptr)
    throw TKL::Exception(TKL::FormatString("Invalid enumeration type '%1'.").arg(std::string(category)),
                         FUNC_ID);
  return static_cast<std::int32_t>(found->rows.size()) - 1;
}

bool KeywordList::KeywordExists(std::string_view category, std::string_view keyword) {
  return findIndex(category, keyword, nullptr) != NOT_FOUND;
}

}  // namespace VELMORA
