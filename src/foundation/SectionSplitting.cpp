#include <algorithm>
#include <istream>
#include <string>
#include <vector>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/QuotedText.h"
#include "foundation/StringUtilities.h"

namespace TKL {

namespace {

std::string titleOf(const std::string& line) {
  return trim_copy(section_title(trim_copy(line)));
}

/// Follows the section that a line belongs to.
class SectionTracker {
 public:
  SectionTracker(const std::vector<std::string>& titles, std::string_view commentChars)
      : titles_(titles), commentChars_(commentChars), current_(titles.size()) {}

  /// True if the line is data of the section `current`.
  bool takes(const std::string& line) {
    const char* const FUNC_ID = "[TKL::explode_sections]";
    const std::size_t first = line.find_first_not_of(TRIM_CHARS);
    if (first == std::string::npos || commentChars_.find(line[first]) != std::string_view::npos) {
      return false;
    }
    const auto title = std::find(titles_.begin(), titles_.end(), titleOf(line));
    if (title != titles_.end()) {
      current_ = static_cast<std::size_t>(title - titles_.begin());
      return false;
    }
    if (current_ == titles_.size()) {
      throw Exception(
          FormatString("Expected section header in first non-empty line:\n'%1'").arg(quotedText(line)),
          FUNC_ID);
    }
    return true;
  }

  std::size_t current() const { return current_; }

 private:
  const std::vector<std::string>& titles_;
  std::string_view commentChars_;
  std::size_t current_;  ///< number of titles: none yet
};

}  // namespace

void explode_sections(std::istream& input, const std::vector<std::string>& titles,
                      std::vector<std::string>& sections, std::string_view commentChars) {
  sections.assign(titles.size(), std::string());
  SectionTracker tracker(titles, commentChars);
  std::string line;
  while (std::getline(input, line)) {
    if (tracker.takes(line)) {
      sections[tracker.current()] += line;
      sections[tracker.current()] += '\n';
    }
  }
}

void explode_sections(const std::vector<std::string>& input, const std::vector<std::string>& titles,
                      std::vector<std::vector<std::string>>& sections, std::string_view commentChars) {
  sections.assign(titles.size(), {});
  SectionTracker tracker(titles, commentChars);
  for (const std::string& line : input) {
    if (tracker.takes(line)) {
      sections[tracker.current()].push_back(line);
    }
  }
}

void explode_section(const std::string& text, const std::string& title, std::vector<std::string>& lines) {
  const char* const FUNC_ID = "[explode_section]";
  lines.clear();
  enum { NO_TITLE, WANTED, OTHER } state = NO_TITLE;
  std::size_t position = 0;
  while (position < text.size()) {
    const std::size_t end = std::min(text.find('\n', position), text.size());
    const std::string line = remove_comment(text.substr(position, end - position));
    position = end + 1;
    const std::size_t first = line.find_first_not_of(TRIM_CHARS);
    if (first == std::string::npos) {
      continue;
    }
    if (titleOf(line) == title) {
      state = WANTED;
    } else if (line[first] == '[') {
      state = OTHER;
    } else if (state == NO_TITLE) {
      throw Exception("Expected keyword/section title!", FUNC_ID);
    } else if (state == WANTED) {
      lines.push_back(line);
    }
  }
}

}  // namespace TKL
