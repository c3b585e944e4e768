#include "solver/TwoGenerationFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double SHORTEST_INTERVAL = 1000.0;  // [ms] of real time
constexpr double WAITING_SHARE = 0.1;         // of the run that may pass with waiting for the disk

[[noreturn]] void failedCall(const char* action, const TKL::Path& path) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::writeRestartFile]";
  const std::string reason = std::strerror(errno);
  throw TKL::Exception(
      TKL::FormatString("Cannot %1 restart file '%2': %3").arg(action).arg(path.str()).arg(reason), FUNC_ID);
}

/// A file descriptor that is closed in any case. `close` tells what closing says.
class OpenFile {
 public:
  OpenFile(const TKL::Path& path, int flags) : descriptor_(::open(path.str().c_str(), flags, 0666)) {}
  ~OpenFile() {
    const int error = errno;
    if (descriptor_ >= 0) ::close(descriptor_);
    errno = error;
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;

  int descriptor() const { return descriptor_; }
  bool isOpen() const { return descriptor_ >= 0; }
  bool close() {
    const int descriptor = descriptor_;
    descriptor_ = -1;
    return ::close(descriptor) == 0;
  }

 private:
  int descriptor_;
};

bool writeAll(int descriptor, const std::string& text) {
  for (std::size_t done = 0; done < text.size();) {
    const ssize_t n = ::write(descriptor, text.data() + done, text.size() - done);
    if (n < 0 && errno != EINTR) return false;
    if (n > 0) done += static_cast<std::size_t>(n);
  }
  return true;
}

/// Writes a whole file, over what it may hold.
void writeText(const TKL::Path& path, const std::string& text, bool flush) {
  OpenFile file(path, O_WRONLY | O_CREAT | O_CLOEXEC);
  if (!file.isOpen()) failedCall("create", path);
  if (!writeAll(file.descriptor(), text)) failedCall("write", path);
  if (::ftruncate(file.descriptor(), static_cast<off_t>(text.size())) != 0) failedCall("write", path);
  if (flush && ::fsync(file.descriptor()) != 0) failedCall("flush", path);
  if (!file.close()) failedCall("close", path);
}

void flushPath(const TKL::Path& path, int flags) {
  OpenFile file(path, flags | O_CLOEXEC);
  if (!file.isOpen()) failedCall("flush", path);
  // some file systems cannot flush a folder
  if (::fsync(file.descriptor()) != 0 && errno != EINVAL) failedCall("flush", path);
  if (!file.close()) failedCall("close", path);
}

}  // namespace

TwoGenerationFile::TwoGenerationFile(const TKL::Path& folder, const std::string& name)
    : folder_(folder),
      file_(folder / name),
      backup_(folder / (name + ".backup")),
      unfinished_(folder / (name + ".new")) {}

void TwoGenerationFile::write(const std::string& text) {
  const bool flush = !sinceFlush_ || sinceFlush_->difference() >= flushInterval_;
  const TKL::StopWatch writing;
  // The old backup is written over. A file of its own for every output time, and a name taken from another
  // file, would cost several times as much.
  if (std::rename(backup_.str().c_str(), unfinished_.str().c_str()) != 0 && errno != ENOENT)
    failedCall("rename", backup_);
  writeText(unfinished_, text, flush);
  if (flush) {
    flushInterval_ = std::max(SHORTEST_INTERVAL, writing.difference() / WAITING_SHARE);
    sinceFlush_.emplace();
  }
  if (std::rename(file_.str().c_str(), backup_.str().c_str()) != 0 && errno != ENOENT)
    failedCall("rename", file_);
  if (std::rename(unfinished_.str().c_str(), file_.str().c_str()) != 0) failedCall("rename", unfinished_);
  onDisk_ = false;  // the names have changed, whatever became of the text
}

void TwoGenerationFile::flush() {
  if (onDisk_) return;
  flushPath(file_, O_RDONLY);
  flushPath(folder_, O_RDONLY | O_DIRECTORY);
  onDisk_ = true;
}

void TwoGenerationFile::takeBackup() {
  if (std::rename(backup_.str().c_str(), file_.str().c_str()) != 0) failedCall("rename", backup_);
}

}  // namespace VELMORA_SOLVER
