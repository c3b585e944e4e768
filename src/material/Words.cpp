#include "material/Words.h"

#include "foundation/StringUtilities.h"

namespace MM {

namespace {

bool isWordCharacter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '_';
}

}  // namespace

std::vector<std::string> splitWords(std::string_view text) {
  std::vector<std::string> words;
  std::size_t begin = text.find_first_not_of(TKL::TRIM_CHARS);
  while (begin != std::string_view::npos) {
    const std::size_t end = text.find_first_of(TKL::TRIM_CHARS, begin);
    words.emplace_back(text.substr(begin, end - begin));
    begin = text.find_first_not_of(TKL::TRIM_CHARS, end);
  }
  return words;
}

bool containsWord(std::string_view text, std::string_view word) {
  for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1)) {
    const std::size_t end = at + word.size();
    const bool freeBefore = at == 0 || !isWordCharacter(text[at - 1]);
    const bool freeBehind = end == text.size() || !isWordCharacter(text[end]);
    if (freeBefore && freeBehind) return true;
  }
  return false;
}

}  // namespace MM
