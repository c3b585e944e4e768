#include "keywords/QuotedText.h"

namespace VELMORA {

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

}  // namespace

std::string quotedText(const std::string& text) {
  constexpr std::size_t LONGEST_WHOLE = 1000;
  constexpr std::size_t SHORTENED = 200;
  if (text.size() <= LONGEST_WHOLE) return withoutControlBytes(text);
  std::size_t end = SHORTENED;
  const auto continuesCharacter = [&](std::size_t i) {
    return (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
  };
  while (end + 4 > SHORTENED && continuesCharacter(end)) --end;
  return withoutControlBytes(text.substr(0, end)) + "...";
}

}  // namespace VELMORA
