#include "foundation/FormatString.h"

#include <algorithm>

#include "foundation/MultiLanguageString.h"
#include "foundation/Path.h"
#include "foundation/StringUtilities.h"
#include "foundation/Unit.h"

namespace TKL {

namespace {

/// Value of a run of digits; a number too large for any argument list gives the largest value.
std::size_t argumentNumber(std::string_view digits) {
  constexpr std::size_t LIMIT = 1000000000;
  std::size_t number = 0;
  for (const char digit : digits) {
    number = std::min(LIMIT, number * 10 + static_cast<std::size_t>(digit - '0'));
  }
  return number;
}

}  // namespace

FormatString::FormatString(std::string_view pattern) {
  std::string buffer;
  const auto closeLiteral = [&] {
    if (!buffer.empty()) {
      tokens_.push_back({buffer, 0, {}});
      buffer.clear();
    }
  };
  std::size_t i = 0;
  while (i < pattern.size()) {
    if (pattern[i] != '%') {
      buffer += pattern[i++];
      continue;
    }
    closeLiteral();
    ++i;
    if (i < pattern.size() && pattern[i] == '%') {
      buffer = "%";
      ++i;
      continue;
    }
    const std::size_t end = std::min(pattern.find_first_not_of("0123456789", i), pattern.size());
    if (end == i) {
      buffer = "%";
      continue;
    }
    std::string_view digits = pattern.substr(i, end - i);
    digits.remove_prefix(std::min(digits.find_first_not_of('0'), digits.size() - 1));
    tokens_.push_back({{}, argumentNumber(digits), std::string(digits)});
    i = end;
  }
  closeLiteral();
}

FormatString& FormatString::arg(const std::string& text, int fieldWidth, char fill) {
  arguments_.push_back(pad_text(text, fieldWidth, fill));
  return *this;
}

FormatString& FormatString::arg(std::string_view text, int fieldWidth, char fill) {
  return arg(std::string(text), fieldWidth, fill);
}

FormatString& FormatString::arg(const char* text, int fieldWidth, char fill) {
  return arg(std::string(text != nullptr ? text : ""), fieldWidth, fill);
}

FormatString& FormatString::arg(char character, int fieldWidth, char fill) {
  return arg(std::string(1, character), fieldWidth, fill);
}

FormatString& FormatString::arg(int value, int fieldWidth, char fill) {
  return arg(val2string(value), fieldWidth, fill);
}

FormatString& FormatString::arg(unsigned int value, int fieldWidth, char fill) {
  return arg(val2string(value), fieldWidth, fill);
}

FormatString& FormatString::arg(long value, int fieldWidth, char fill) {
  return arg(val2string(value), fieldWidth, fill);
}

FormatString& FormatString::arg(unsigned long value, int fieldWidth, char fill) {
  return arg(val2string(value), fieldWidth, fill);
}

FormatString& FormatString::arg(long long value, int fieldWidth, char fill) {
  return arg(val2string(value), fieldWidth, fill);
}

FormatString& FormatString::arg(unsigned long long value, int fieldWidth, char fill) {
  return arg(val2string(value), fieldWidth, fill);
}

FormatString& FormatString::arg(double value, int fieldWidth, char format, int precision, char fill) {
  if (format == 'g' && precision == -1 && fieldWidth == 0) {
    return arg(val2string(value));
  }
  return arg(val2string(value, format, precision), fieldWidth, fill);
}

FormatString& FormatString::arg(const Path& path) {
  return arg(path.str());
}

FormatString& FormatString::arg(const Unit& unit) {
  return arg(unit.name());
}

FormatString& FormatString::arg(const MultiLanguageString& text, int fieldWidth, char fill) {
  return arg(text.string("en"), fieldWidth, fill);
}

std::string FormatString::str() const {
  std::string text;
  for (const Token& token : tokens_) {
    if (!token.literal.empty()) {
      text += token.literal;
    } else if (token.argument != 0 && token.argument <= arguments_.size()) {
      text += arguments_[token.argument - 1];
    } else {
      text += '%';
      text += token.digits;
    }
  }
  return text;
}

}  // namespace TKL
