#include "foundation/Color.h"

#include <string_view>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/QuotedText.h"
#include "foundation/StringUtilities.h"

namespace TKL {

namespace {

/// Value of a hexadecimal digit, or -1.
int digitValue(char c) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  if (c >= 'a' && c <= 'f') {
    return c - 'a' + 10;
  }
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

unsigned char component(std::string_view twoDigits) {
  return static_cast<unsigned char>(digitValue(twoDigits[0]) * 16 + digitValue(twoDigits[1]));
}

void appendComponent(std::string& text, unsigned char value) {
  const char* const DIGITS = "0123456789abcdef";
  text += DIGITS[value / 16];
  text += DIGITS[value % 16];
}

}  // namespace

Color Color::fromHtml(const std::string& text) {
  const char* const FUNC_ID = "[Color::fromHtml]";
  std::string_view digits(text);
  if (digits.starts_with('#')) {
    digits.remove_prefix(1);
  }
  bool valid = digits.size() == 6 || digits.size() == 8;
  for (const char digit : digits) {
    valid = valid && digitValue(digit) >= 0;
  }
  if (!valid) {
    throw Exception(FormatString("Invalid colour '%1'!").arg(quotedText(text)), FUNC_ID);
  }
  digits.remove_prefix(digits.size() - 6);
  Color color;
  color.red = component(digits.substr(0, 2));
  color.green = component(digits.substr(2, 2));
  color.blue = component(digits.substr(4, 2));
  return color;
}

void Color::read(const std::string& text) {
  *this = fromHtml(trim_copy(text));
}

std::string Color::toHtml() const {
  std::string text = "#";
  appendComponent(text, red);
  appendComponent(text, green);
  appendComponent(text, blue);
  return text;
}

}  // namespace TKL
