#pragma once

#include <string_view>

namespace TKL {

/// The blanks of the C locale.
inline constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";

/// Takes a decimal number off the front of `text`, in the C locale and without "inf" and "nan".
/// @return false, with both arguments as they were, if there is none or it is too large for a double
bool scanNumber(std::string_view& text, double& value);

/// Cuts leading white space and the word behind it off `text`.
/// @return the word, empty at the end of the text
std::string_view scanWord(std::string_view& text);

}  // namespace TKL
