// Conversions between numbers and text. Streams would do, but they are slow and follow the global locale.

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <type_traits>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/QuotedText.h"
#include "foundation/StringUtilities.h"

namespace TKL {

namespace {

constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";
constexpr const char* NAN_TEXT = "1.#QNAN";

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

const char* skipDigits(const char* position, const char* end) {
  return std::find_if_not(position, end, isDigit);
}

/// End of what a stream takes for a floating point number, or null if it is none. An exponent mark behind a
/// mantissa belongs to the number, so that "1e" is a broken number and not 1.
const char* endOfReal(const char* position, const char* end) {
  const char* const integerEnd = skipDigits(position, end);
  const char* mantissaEnd = integerEnd;
  std::ptrdiff_t digits = integerEnd - position;
  if (integerEnd != end && *integerEnd == '.') {
    mantissaEnd = skipDigits(integerEnd + 1, end);
    digits += mantissaEnd - (integerEnd + 1);
  }
  if (digits == 0) {
    return nullptr;
  }
  if (mantissaEnd == end || (*mantissaEnd != 'e' && *mantissaEnd != 'E')) {
    return mantissaEnd;
  }
  const char* exponent = mantissaEnd + 1;
  if (exponent != end && (*exponent == '+' || *exponent == '-')) {
    ++exponent;
  }
  const char* const exponentEnd = skipDigits(exponent, end);
  return exponentEnd == exponent ? nullptr : exponentEnd;
}

/// True if a number whose value is out of range is too small, and not too large: then its value is zero.
bool isUnderflow(const char* first, const char* last) {
  const char* const mark = std::find_if(first, last, [](char c) { return c == 'e' || c == 'E'; });
  const char* const point = std::find(first, mark, '.');
  const char* const significant = std::find_if(first, mark, [](char c) { return c >= '1' && c <= '9'; });
  if (significant == mark) {
    return true;
  }
  // Position of the first significant digit relative to the decimal point.
  const long order = significant < point ? static_cast<long>(point - significant)
                                         : -static_cast<long>(significant - point - 1);
  if (mark == last) {
    return order < 0;
  }
  const char* digits = mark + 1;
  const bool negative = *digits == '-';
  if (*digits == '-' || *digits == '+') {
    ++digits;
  }
  long exponent = 0;
  if (std::from_chars(digits, last, exponent).ec != std::errc()) {
    return negative;
  }
  return (negative ? -exponent : exponent) < -order;
}

/// Takes one value off the text between `position` and `end`, in front of which a sign may stand.
/// @return the end of the value, or null
template <typename T>
const char* scanReal(const char* position, const char* end, T& value) {
  const bool negative = position != end && *position == '-';
  if (position != end && (*position == '+' || *position == '-')) {
    ++position;
  }
  const char* const last = endOfReal(position, end);
  if (last == nullptr) {
    return nullptr;
  }
  T number = 0;
  if (std::from_chars(position, last, number).ec != std::errc()) {
    if (!isUnderflow(position, last)) {
      return nullptr;
    }
    number = 0;
  } else if (std::isinf(number)) {
    return nullptr;
  }
  value = negative ? -number : number;
  return last;
}

template <typename T>
const char* scanInteger(const char* position, const char* end, T& value) {
  using Magnitude = unsigned long long;
  const bool negative = position != end && *position == '-';
  if (position != end && (*position == '+' || *position == '-')) {
    ++position;
  }
  Magnitude magnitude = 0;
  const auto [last, error] = std::from_chars(position, end, magnitude);
  if (error != std::errc()) {
    return nullptr;
  }
  constexpr auto MAX = static_cast<Magnitude>(std::numeric_limits<T>::max());
  if (magnitude > MAX + (std::is_signed_v<T> && negative ? 1U : 0U)) {
    return nullptr;
  }
  value = static_cast<T>(negative ? Magnitude(0) - magnitude : magnitude);
  return last;
}

/// Skips white space and takes one value off the text.
template <typename T>
bool scanValue(std::string_view& text, T& value) {
  text.remove_prefix(std::min(text.find_first_not_of(WHITE_SPACE), text.size()));
  const char* const end = text.data() + text.size();
  const char* last = nullptr;
  if constexpr (std::is_floating_point_v<T>) {
    last = scanReal(text.data(), end, value);
  } else if constexpr (std::is_integral_v<T>) {
    last = scanInteger(text.data(), end, value);
  } else {
    const std::string_view word = text.substr(0, text.find_first_of(WHITE_SPACE));
    if (!word.empty()) {
      value = word;
      last = word.data() + word.size();
    }
  }
  if (last == nullptr) {
    return false;
  }
  text.remove_prefix(static_cast<std::size_t>(last - text.data()));
  return true;
}

}  // namespace

template <typename T>
bool tryString2val(const std::string& text, T& value) {
  if constexpr (std::is_floating_point_v<T>) {
    if (text == NAN_TEXT) {
      value = std::numeric_limits<T>::quiet_NaN();
      return true;
    }
  }
  std::string_view rest(text);
  return scanValue(rest, value);
}

template <typename T>
T string2val(const std::string& text) {
  const char* const FUNC_ID = "[string2val]";
  T value{};
  if (!tryString2val(text, value)) {
    throw Exception(FormatString("Could not convert '%1' into value.").arg(quotedText(text)), FUNC_ID);
  }
  return value;
}

template <typename T>
void string2valueVector(const std::string& text, std::vector<T>& values) {
  std::string_view rest(text);
  T value{};
  while (scanValue(rest, value)) {
    values.push_back(value);
  }
}

template int string2val<int>(const std::string&);
template unsigned int string2val<unsigned int>(const std::string&);
template long string2val<long>(const std::string&);
template unsigned long string2val<unsigned long>(const std::string&);
template long long string2val<long long>(const std::string&);
template unsigned long long string2val<unsigned long long>(const std::string&);
template float string2val<float>(const std::string&);
template double string2val<double>(const std::string&);
template std::string string2val<std::string>(const std::string&);

template bool tryString2val<int>(const std::string&, int&);
template bool tryString2val<unsigned int>(const std::string&, unsigned int&);
template bool tryString2val<long>(const std::string&, long&);
template bool tryString2val<unsigned long>(const std::string&, unsigned long&);
template bool tryString2val<long long>(const std::string&, long long&);
template bool tryString2val<unsigned long long>(const std::string&, unsigned long long&);
template bool tryString2val<float>(const std::string&, float&);
template bool tryString2val<double>(const std::string&, double&);
template bool tryString2val<std::string>(const std::string&, std::string&);

template void string2valueVector<int>(const std::string&, std::vector<int>&);
template void string2valueVector<unsigned int>(const std::string&, std::vector<unsigned int>&);
template void string2valueVector<double>(const std::string&, std::vector<double>&);

std::string val2string(double value) {
  if (std::isnan(value)) {
    return NAN_TEXT;
  }
  std::array<char, 32> buffer{};
  const auto result =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::general, 6);
  return {buffer.data(), result.ptr};
}

std::string val2string(double value, char format, int precision) {
  const std::chars_format style = format == 'f'                    ? std::chars_format::fixed
                                  : format == 'e' || format == 'E' ? std::chars_format::scientific
                                                                   : std::chars_format::general;
  const int digits = precision < 0 ? 6 : precision;
  constexpr int LONGEST_INTEGER_PART = 310;
  std::string buffer(static_cast<std::size_t>(digits) + LONGEST_INTEGER_PART + 20, '\0');
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, style, digits);
  buffer.resize(static_cast<std::size_t>(result.ptr - buffer.data()));
  return buffer;
}

std::string val2string(int value) {
  return std::to_string(value);
}
std::string val2string(unsigned int value) {
  return std::to_string(value);
}
std::string val2string(long value) {
  return std::to_string(value);
}
std::string val2string(unsigned long value) {
  return std::to_string(value);
}
std::string val2string(long long value) {
  return std::to_string(value);
}
std::string val2string(unsigned long long value) {
  return std::to_string(value);
}

}  // namespace TKL
