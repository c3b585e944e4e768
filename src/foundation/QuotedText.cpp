#include "foundation/QuotedText.h"

namespace TKL {

namespace {

/// A NUL would end the message early, an escape sequence would steer the terminal.
std::string withoutControlBytes(std::string text) {
  for (char& character : text) {
    const auto byte = static_cast<unsigned char>(character);
    const bool layout = character == '\t' || character == '\n' || character == '\r';
    if ((byte < 0x20U && !layout) || byte == 0x7FU) character = '?';
  }
  return text;
}

/// The text, or its first `shortened` bytes and "..." if it is longer than `longestWhole`.
std::string printable(const std::string& text, std::size_t longestWhole, std::size_t shortened) {
  if (text.size() <= longestWhole) return withoutControlBytes(text);
  std::size_t end = shortened;
  const auto continuesCharacter = [&](std::size_t i) {
    return (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
  };
  while (end + 4 > shortened && continuesCharacter(end)) --end;
  return withoutControlBytes(text.substr(0, end)) + "...";
}

}  // namespace

std::string quotedText(const std::string& text) {
  return printable(text, 1000, 200);
}

std::string printableMessage(const std::string& text) {
  return printable(text, 4000, 1000);
}

}  // namespace TKL
