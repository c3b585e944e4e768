#include "foundation/MultiLanguageString.h"

#include <algorithm>
#include <string_view>

#include "foundation/Exception.h"
#include "foundation/StringUtilities.h"

namespace TKL {

namespace {

const char* const ALL_LANGUAGES = "all";

void refuseAll(const std::string& language, const char* functionId) {
  if (language == ALL_LANGUAGES) {
    throw Exception("Cannot use 'all' as language ID for MultiLanguageString.", functionId);
  }
}

}  // namespace

void MultiLanguageString::setEncodedString(const std::string& text) {
  texts_.clear();
  const std::string_view view(text);
  std::size_t position = 0;
  while (position < view.size()) {
    const std::size_t end = std::min(view.find('|', position), view.size());
    const std::string_view part = view.substr(position, end - position);
    position = end + 1;
    const std::size_t colon = part.find(':');
    if (colon != std::string_view::npos) {
      texts_[trim_copy(part.substr(0, colon))] = trim_copy(part.substr(colon + 1));
    } else if (std::string common = trim_copy(part); !common.empty()) {
      texts_[ALL_LANGUAGES] = std::move(common);
    }
  }
}

void MultiLanguageString::setString(const std::string& text, const std::string& language) {
  const char* const FUNC_ID = "[MultiLanguageString::setString]";
  refuseAll(language, FUNC_ID);
  texts_[language] = text;
}

std::string MultiLanguageString::string(const std::string& language, const std::string& fallback) const {
  const char* const FUNC_ID = "[MultiLanguageString::string]";
  refuseAll(language, FUNC_ID);
  refuseAll(fallback, FUNC_ID);
  for (const std::string& key : {language, fallback, std::string(ALL_LANGUAGES)}) {
    const auto found = texts_.find(key);
    if (found != texts_.end()) {
      return found->second;
    }
  }
  return {};
}

}  // namespace TKL
