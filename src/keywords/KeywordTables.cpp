#include "keywords/KeywordTables.h"

#include <array>

namespace VELMORA {

namespace {

std::array<std::span<const KeywordCategory>, 7> categoryGroups() {
  return {interfaceCategories(), boundaryCategories(), climateCategories(), fieldCategories(),
          settingsCategories(),  outputCategories(),   projectCategories()};
}

}  // namespace

std::int32_t categoryNumber(std::string_view name) {
  std::int32_t number = 0;
  for (const auto& group : categoryGroups())
    for (const KeywordCategory& category : group) {
      if (name == category.name) return number;
      ++number;
    }
  return -1;
}

const KeywordCategory* keywordCategory(std::int32_t number) {
  if (number < 0) return nullptr;
  auto position = static_cast<std::size_t>(number);
  for (const auto& group : categoryGroups()) {
    if (position < group.size()) return &group[position];
    position -= group.size();
  }
  return nullptr;
}

std::string_view keywordString(std::int32_t category, std::uint32_t index) {
  const KeywordCategory* found = keywordCategory(category);
  if (found == nullptr || index >= found->rows.size()) return KEYWORD_ERROR_STRING;
  return found->rows[index].keywords;
}

std::string_view primaryKeyword(std::int32_t category, std::uint32_t index) {
  const std::string_view all = keywordString(category, index);
  return all == KEYWORD_ERROR_STRING ? all : all.substr(0, all.find_first_of(" \t"));
}

}  // namespace VELMORA
