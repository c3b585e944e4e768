#include "foundation/ConsoleColor.h"

#include <unistd.h>

#include <iostream>
#include <ostream>

namespace TKL {

namespace {

// The buffers that the standard streams start with; a stream that has another one has been redirected.
const std::streambuf* const OUT_BUFFER = std::cout.rdbuf();
const std::streambuf* const ERR_BUFFER = std::cerr.rdbuf();
const std::streambuf* const LOG_BUFFER = std::clog.rdbuf();

}  // namespace

std::string ansiColorCode(int color) {
  switch (color) {
    case CC_GREY:
    case CC_WHITE:
      return "\033[0m";
    case CC_LIGHT_CYAN:
      return "\033[96m";
    case CC_LIGHT_RED:
      return "\033[91m";
    case CC_LIGHT_MAGENTA:
      return "\033[95m";
    case CC_YELLOW:
      return "\033[93m";
    default:
      return {};
  }
}

bool isTerminal(const std::ostream& stream) {
  const std::streambuf* const buffer = stream.rdbuf();
  if (buffer == OUT_BUFFER) {
    return isatty(STDOUT_FILENO) != 0;
  }
  if (buffer == ERR_BUFFER || buffer == LOG_BUFFER) {
    return isatty(STDERR_FILENO) != 0;
  }
  return false;
}

void setConsoleColor(std::ostream& stream, int color) {
  if (isTerminal(stream)) {
    stream << ansiColorCode(color);
  }
}

}  // namespace TKL
