#include "keywords/QuotedText.h"

namespace VELMORA {

std::string quotedText(const std::string& text) {
  constexpr std::size_t LONGEST_WHOLE = 1000;
  constexpr std::size_t SHORTENED = 200;
  if (text.size() <= LONGEST_WHOLE) return text;
  std::size_t end = SHORTENED;
  const auto continuesCharacter = [&](std::size_t i) {
    return (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
  };
  while (end + 4 > SHORTENED && continuesCharacter(end)) --end;
  return text.substr(0, end) + "...";
}

}  // namespace VELMORA
