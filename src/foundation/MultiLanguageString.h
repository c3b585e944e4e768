#pragma once

#include <map>
#include <string>

namespace TKL {

/// A text in several languages, by language identifier ("en", "de"). A text under "all" holds for every
/// language that has none of its own.
class MultiLanguageString {
 public:
  MultiLanguageString() = default;
  explicit MultiLanguageString(const std::string& encoded) { setEncodedString(encoded); }

  /// Replaces the content by that of "language:text|language:text"; a part without ":" holds for all.
  void setEncodedString(const std::string& text);

  /// @throws Exception "Cannot use 'all' as language ID for MultiLanguageString."
  void setString(const std::string& text, const std::string& language);

  /// The text for a language, else that of the fallback, else the one for all; empty if there is none.
  /// @throws Exception "Cannot use 'all' as language ID for MultiLanguageString."
  std::string string(const std::string& language, const std::string& fallback = std::string()) const;

  bool empty() const { return texts_.empty(); }
  const std::map<std::string, std::string>& texts() const { return texts_; }

  bool operator==(const MultiLanguageString&) const = default;

 private:
  std::map<std::string, std::string> texts_;
};

}  // namespace TKL
