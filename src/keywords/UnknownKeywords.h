#pragma once

#include <string>

namespace VELMORA {

/// Counts the keywords that the readers below passed over, and remembers the first of them. While an
/// object lives, `UnknownKeywords::note` reports to it; objects may be nested, the innermost one counts.
class UnknownKeywords {
 public:
  UnknownKeywords();
  ~UnknownKeywords();
  UnknownKeywords(const UnknownKeywords&) = delete;
  UnknownKeywords& operator=(const UnknownKeywords&) = delete;

  /// Name of the section that is being read; stands beside the first unknown keyword.
  void enterSection(std::string name) { section_ = std::move(name); }

  int count() const { return count_; }
  const std::string& firstKeyword() const { return firstKeyword_; }
  const std::string& firstSection() const { return firstSection_; }
  /// Line number in the project file, 0 where it is not known.
  int firstLine() const { return firstLine_; }

  /// Reports a keyword that a reader does not know. Without a counter alive nothing happens.
  static void note(const std::string& keyword, int lineNumber);

 private:
  UnknownKeywords* outer_;
  std::string section_;
  int count_ = 0;
  std::string firstKeyword_;
  std::string firstSection_;
  int firstLine_ = 0;
};

}  // namespace VELMORA
