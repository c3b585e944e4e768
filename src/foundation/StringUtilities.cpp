#include "foundation/StringUtilities.h"

#include <algorithm>
#include <cstdlib>

namespace TKL {

namespace {

char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
char upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool sameIgnoringCase(char a, char b) {
  return lower(a) == lower(b);
}

}  // namespace

void trim(std::string& text, std::string_view chars) {
  const std::size_t last = text.find_last_not_of(chars);
  text.erase(last == std::string::npos ? 0 : last + 1);
  text.erase(0, std::min(text.find_first_not_of(chars), text.size()));
}

std::string trim_copy(std::string_view text, std::string_view chars) {
  const std::size_t first = text.find_first_not_of(chars);
  if (first == std::string_view::npos) {
    return {};
  }
  return std::string(text.substr(first, text.find_last_not_of(chars) - first + 1));
}

std::string to_lower(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), lower);
  return text;
}

std::string to_upper(std::string text) {
  std::transform(text.begin(), text.end(), text.begin(), upper);
  return text;
}

std::string pad_text(std::string text, int width, char fill) {
  const std::size_t fieldWidth = static_cast<std::size_t>(std::abs(static_cast<long>(width)));
  if (text.size() < fieldWidth) {
    text.insert(width < 0 ? text.size() : 0, fieldWidth - text.size(), fill);
  }
  return text;
}

bool string_nocase_compare(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameIgnoringCase);
}

int string_nocase_find(std::string_view text, std::string_view pattern) {
  if (text.empty()) {
    return -1;
  }
  const auto found = std::search(text.begin(), text.end(), pattern.begin(), pattern.end(), sameIgnoringCase);
  return found == text.end() ? -1 : static_cast<int>(found - text.begin());
}

bool extract_keyword(const std::string& line, std::string& keyword, std::string& value) {
  const std::size_t equalSign = line.find('=');
  if (equalSign == std::string::npos) {
    value = line;
    keyword.clear();
    return false;
  }
  const std::string_view view(line);
  std::string left = trim_copy(view.substr(0, equalSign));
  std::string right = trim_copy(view.substr(equalSign + 1));
  keyword = std::move(left);
  value = std::move(right);
  return true;
}

std::string remove_comment(std::string line) {
  line.erase(std::min(line.find(';'), line.size()));
  return line;
}

std::string section_title(std::string line) {
  if (line.starts_with('[')) {
    line.erase(0, 1);
  }
  if (line.ends_with(']')) {
    line.pop_back();
  }
  if (line.ends_with('=')) {
    line.pop_back();
  }
  return line;
}

}  // namespace TKL
