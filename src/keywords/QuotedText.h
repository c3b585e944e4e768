#pragma once

#include <string>

namespace VELMORA {

/// Input text for quotation in a message: as it stands up to 1000 bytes, of a longer one the first 200
/// bytes and "...". A character of several bytes is not cut in two.
/// Control bytes other than tab and line ends become "?".
std::string quotedText(const std::string& text);

}  // namespace VELMORA
