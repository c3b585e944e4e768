#pragma once

#include <string>

namespace TKL {

/// Input text for quotation in a message: as it stands up to 1000 bytes, of a longer one the first 200
/// bytes and "...". A character of several bytes is not cut in two.
/// Control bytes other than tab and line ends become "?".
std::string quotedText(const std::string& text);

/// A whole message, made fit for a console in the same way: as it stands up to 4000 bytes, of a longer one
/// the first 1000 and "...". A message may quote a file by ways that do not shorten the quotation.
std::string printableMessage(const std::string& text);

}  // namespace TKL
