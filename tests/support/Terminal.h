#pragma once

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <string>

namespace TKL {

/// Puts a pseudo terminal in the place of standard input, output or error while it lives. Nothing is echoed
/// and line ends stay what they are.
class Terminal {
 public:
  explicit Terminal(int descriptor)
      : descriptor_(descriptor), master_(posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK)) {
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) return;
    const int terminal = open(ptsname(master_), O_RDWR | O_NOCTTY);
    if (terminal < 0) return;
    termios settings{};
    tcgetattr(terminal, &settings);
    cfmakeraw(&settings);
    tcsetattr(terminal, TCSANOW, &settings);
    flush();
    saved_ = dup(descriptor_);
    dup2(terminal, descriptor_);
    close(terminal);
  }
  ~Terminal() {
    if (saved_ >= 0) {
      flush();
      dup2(saved_, descriptor_);
      close(saved_);
    }
    if (master_ >= 0) close(master_);
    std::clearerr(stdin);
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  /// False where this machine has no pseudo terminals.
  bool works() const { return saved_ >= 0; }

  /// Types a text at the keyboard of the terminal.
  bool type(const std::string& text) {
    return write(master_, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  }

  /// What has been written to the terminal since the last call. A terminal hands its bytes over in the
  /// background and in pieces: a mark is written behind them and everything before it is waited for.
  std::string text() {
    flush();
    if (write(descriptor_, &MARK, 1) != 1) return {};
    std::string bytes;
    pollfd arrived{master_, POLLIN, 0};
    while (poll(&arrived, 1, MARK_TIMEOUT) == 1) {
      char byte = MARK;
      if (read(master_, &byte, 1) != 1 || byte == MARK) break;
      bytes += byte;
    }
    return bytes;
  }

 private:
  static constexpr char MARK = '\x04';
  static constexpr int MARK_TIMEOUT = 10'000;  ///< [ms], far above what any machine needs

  static void flush() {
    std::cout.flush();
    std::cerr.flush();
    std::clog.flush();
  }

  int descriptor_;
  int master_;
  int saved_ = -1;
};

}  // namespace TKL
