#pragma once

#include <fcntl.h>
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

  /// What has been written to the terminal since the last call, at most 4 kB.
  std::string text() {
    flush();
    std::string bytes(4096, '\0');
    const ssize_t count = read(master_, bytes.data(), bytes.size());
    bytes.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
    return bytes;
  }

 private:
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
