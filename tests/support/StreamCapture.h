#pragma once

#include <ostream>
#include <sstream>
#include <string>

namespace TKL {

/// Collects what is written to a stream, such as `std::cout`, while the object lives.
class StreamCapture {
 public:
  explicit StreamCapture(std::ostream& stream) : stream_(stream), previous_(stream.rdbuf(buffer_.rdbuf())) {}
  ~StreamCapture() { stream_.rdbuf(previous_); }
  StreamCapture(const StreamCapture&) = delete;
  StreamCapture& operator=(const StreamCapture&) = delete;

  std::string text() const { return buffer_.str(); }

 private:
  std::ostringstream buffer_;
  std::ostream& stream_;
  std::streambuf* previous_;
};

}  // namespace TKL
