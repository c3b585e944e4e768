#pragma once

#include <iosfwd>
#include <string>

namespace TKL {

/// Console colours; the numbers are the character attributes that message handlers speak of.
enum consoleColor_t {
  CC_GREY = 7,
  CC_LIGHT_CYAN = 11,
  CC_LIGHT_RED = 12,
  CC_LIGHT_MAGENTA = 13,
  CC_YELLOW = 14,
  CC_WHITE = 15
};

/// The ANSI escape sequence of a colour; grey and white, the two resets, give back the terminal's default.
/// Empty for any other number.
std::string ansiColorCode(int color);

/// True if the stream is standard output, error or log, has not been redirected, and ends at a terminal.
bool isTerminal(const std::ostream& stream);

/// Switches the colour of a stream that ends at a terminal; writes nothing to any other.
void setConsoleColor(std::ostream& stream, int color);

}  // namespace TKL
