#include "foundation/NumberScanner.h"

#include <algorithm>
#include <charconv>

namespace TKL {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

}  // namespace

bool scanNumber(std::string_view& text, double& value) {
  const char* first = text.data();
  const char* const last = text.data() + text.size();
  if (first != last && *first == '+') {
    ++first;
  }
  const char* digits = first;
  if (digits != last && *digits == '-' && first == text.data()) {
    ++digits;
  }
  if (digits == last || !(isDigit(*digits) || *digits == '.')) {
    return false;
  }
  double number = 0.0;
  const auto [end, error] = std::from_chars(first, last, number);
  if (error != std::errc()) {
    return false;
  }
  value = number;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return true;
}

std::string_view scanWord(std::string_view& text) {
  text.remove_prefix(std::min(text.find_first_not_of(WHITE_SPACE), text.size()));
  const std::size_t length = std::min(text.find_first_of(WHITE_SPACE), text.size());
  const std::string_view word = text.substr(0, length);
  text.remove_prefix(length);
  return word;
}

}  // namespace TKL
