#include "foundation/ConsoleColor.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <iostream>
#include <sstream>

#include "support/Terminal.h"

namespace TKL {
namespace {

TEST(ConsoleColor, otherStream_getsNothing) {
  std::ostringstream stream;
  setConsoleColor(stream, CC_YELLOW);
  EXPECT_EQ(stream.str(), "");
}

TEST(ConsoleColor, redirectedStandardOutput_getsNothing) {
  std::ostringstream stream;
  std::streambuf* const before = std::cout.rdbuf(stream.rdbuf());
  setConsoleColor(std::cout, CC_YELLOW);
  std::cout.rdbuf(before);
  EXPECT_EQ(stream.str(), "");
}

TEST(ConsoleColor, terminal_getsTheColour) {
  Terminal terminal(STDOUT_FILENO);
  if (!terminal.works()) {
    GTEST_SKIP() << "no pseudo terminal here";
  }
  setConsoleColor(std::cout, CC_LIGHT_RED);
  std::cout << "x";
  setConsoleColor(std::cout, CC_GREY);
  EXPECT_EQ(terminal.text(), "\033[91mx\033[0m");
}

TEST(ConsoleColor, standardOutputIntoAFile_isNoTerminal) {
  testing::internal::CaptureStdout();
  const bool terminal = isTerminal(std::cout);
  setConsoleColor(std::cout, CC_YELLOW);
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
  EXPECT_FALSE(terminal);
}

TEST(ConsoleColor, standardErrorIntoAFile_isNoTerminal) {
  testing::internal::CaptureStderr();
  const bool terminal = isTerminal(std::cerr) || isTerminal(std::clog);
  testing::internal::GetCapturedStderr();
  EXPECT_FALSE(terminal);
}

TEST(ConsoleColor, coloursDiffer_resetsAgree) {
  EXPECT_EQ(ansiColorCode(CC_GREY), ansiColorCode(CC_WHITE));
  EXPECT_NE(ansiColorCode(CC_YELLOW), ansiColorCode(CC_LIGHT_CYAN));
  EXPECT_NE(ansiColorCode(CC_LIGHT_MAGENTA), ansiColorCode(CC_LIGHT_RED));
}

TEST(ConsoleColor, unknownNumber_hasNoCode) {
  EXPECT_EQ(ansiColorCode(1), "");
}

}  // namespace
}  // namespace TKL
