#pragma once

#include <cstdint>
#include <span>
#include <string_view>

/// The tables behind `KeywordList`.
namespace VELMORA {

/// What a table gives for an index or category out of range. It reaches no message.
inline constexpr std::string_view KEYWORD_ERROR_STRING = "KEYWORD_ERROR_STRING: Invalid type index";

/// What a category says about its keywords to people.
enum class Descriptions {
  SENTENCES,  ///< a sentence for each index
  KEYWORDS,   ///< the keyword stands for itself
  NONE
};

struct KeywordRow {
  const char* keywords;          ///< current keyword, then aliases, between blanks or tabs
  const char* description = "";  ///< empty in a category without sentences
};

struct KeywordCategory {
  const char* name;
  Descriptions descriptions;
  std::span<const KeywordRow> rows;
};

/// The categories in the order of their numbers, the lists of all functions taken one after the other.
std::span<const KeywordCategory> interfaceCategories();
std::span<const KeywordCategory> boundaryCategories();
std::span<const KeywordCategory> climateCategories();
std::span<const KeywordCategory> fieldCategories();
std::span<const KeywordCategory> settingsCategories();
std::span<const KeywordCategory> outputCategories();
std::span<const KeywordCategory> projectCategories();

/// Number of a category, -1 for an unknown name.
std::int32_t categoryNumber(std::string_view name);

/// The category of a number, null where there is none.
const KeywordCategory* keywordCategory(std::int32_t number);

/// Current keyword and aliases of an index, or the error string.
std::string_view keywordString(std::int32_t category, std::uint32_t index);

/// Current keyword of an index, or the error string.
std::string_view primaryKeyword(std::int32_t category, std::uint32_t index);

}  // namespace VELMORA
