#pragma once

#include <charconv>
#include <cstddef>

namespace TKL {

/// How the text of a number looks.
struct NumberFormat {
  std::chars_format form = std::chars_format::general;
  int precision = 6;  ///< 0 to 100: digits in all with the general form, else digits behind the point
};

/// No text of a number is longer.
constexpr std::size_t MAX_NUMBER_TEXT = 512;

/// Writes the text of a number, as `std::to_chars` does, to a place with room for `MAX_NUMBER_TEXT`
/// characters. The general form with up to 17 digits, in which almost all records are, has a short way of its
/// own for numbers of a common size.
/// @return the end of the text
char* writeNumber(char* out, double value, const NumberFormat& format);

}  // namespace TKL
