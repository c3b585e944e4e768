#include "foundation/ConsoleColor.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <sstream>

namespace TKL {
namespace {

/// Replaces standard output by a pseudo terminal while it lives.
class TerminalOutput {
 public:
  TerminalOutput() : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
      return;
    }
    const int terminal = open(ptsname(master_), O_RDWR | O_NOCTTY);
    if (terminal < 0) {
      return;
    }
    std::cout.flush();
    saved_ = dup(STDOUT_FILENO);
    dup2(terminal, STDOUT_FILENO);
    close(terminal);
  }
  ~TerminalOutput() {
    restore();
    close(master_);
  }
  bool works() const { return saved_ >= 0; }
  /// What has been written so far.
  std::string text() {
    std::cout.flush();
    char buffer[256];
    const ssize_t count = read(master_, buffer, sizeof(buffer));
    return count > 0 ? std::string(buffer, static_cast<std::size_t>(count)) : std::string();
  }

 private:
  void restore() {
    if (saved_ >= 0) {
      std::cout.flush();
      dup2(saved_, STDOUT_FILENO);
      close(saved_);
    }
  }
  int master_;
  int saved_ = -1;
};

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
  TerminalOutput terminal;
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
