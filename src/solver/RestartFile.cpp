#include "solver/RestartFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"

namespace VELMORA_SOLVER {

namespace {

constexpr int TIME_DECIMALS = 3;
constexpr int ENERGY_DECIMALS = 2;
constexpr int MASS_DECIMALS = 8;

void appendFixed(std::string& text, double value, int decimals) {
  char buffer[400];
  const auto end = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed, decimals);
  text.append(buffer, end.ptr);
}

void appendLine(std::string& text, const std::vector<double>& values, int decimals) {
  for (const double value : values) {
    appendFixed(text, value, decimals);
    text += ' ';
  }
  text += '\n';
}

[[noreturn]] void fail(const char* action, const TKL::Path& path) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::writeRestartFile]";
  const std::string reason = std::strerror(errno);
  throw TKL::Exception(
      TKL::FormatString("Cannot %1 restart file '%2': %3").arg(action).arg(path.str()).arg(reason), FUNC_ID);
}

constexpr double FLUSH_INTERVAL = 1000.0;  // [ms] of real time

/// Writes the whole text and, with `flush`, forces it to disk.
void writeText(const TKL::Path& path, const std::string& text, bool flush) {
  const int file = ::open(path.str().c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
  if (file < 0) fail("create", path);
  std::size_t done = 0;
  while (done < text.size()) {
    const ssize_t n = ::write(file, text.data() + done, text.size() - done);
    if (n < 0 && errno == EINTR) continue;
    if (n < 0) {
      const int error = errno;
      ::close(file);
      errno = error;
      fail("write", path);
    }
    done += static_cast<std::size_t>(n);
  }
  if (flush && ::fsync(file) != 0) {
    const int error = errno;
    ::close(file);
    errno = error;
    fail("flush", path);
  }
  if (::close(file) != 0) fail("close", path);
}

/// Reads exactly `count` numbers of one line.
bool readNumbers(std::istream& in, std::size_t count, std::vector<double>& values) {
  std::string line;
  if (!std::getline(in, line)) return false;
  values.clear();
  values.reserve(count);
  const char* position = line.data();
  const char* const end = position + line.size();
  while (values.size() < count) {
    while (position != end && *position == ' ') ++position;
    double value = 0.0;
    const auto result = std::from_chars(position, end, value);
    if (result.ec != std::errc() || !std::isfinite(value)) return false;
    values.push_back(value);
    position = result.ptr;
  }
  return true;
}

}  // namespace

RestartFile::RestartFile(const TKL::Path& resultsDirectory)
    : file_(resultsDirectory / "restart.txt"),
      backup_(resultsDirectory / "restart.txt.backup"),
      unfinished_(resultsDirectory / "restart.txt.new") {}

void RestartFile::write(const RestartState& state) {
  std::string text;
  text.reserve(24 * (state.U.size() + state.mw.size()) + 64);
  appendFixed(text, state.t, TIME_DECIMALS);
  text += '\n';
  appendLine(text, state.U, ENERGY_DECIMALS);
  appendLine(text, state.mw, MASS_DECIMALS);

  const bool flush = !sinceFlush_ || sinceFlush_->difference() >= FLUSH_INTERVAL;
  writeText(unfinished_, text, flush);
  if (flush) sinceFlush_.emplace();
  // Renaming replaces the old backup in one step.
  if (std::rename(file_.str().c_str(), backup_.str().c_str()) != 0 && errno != ENOENT) fail("rename", file_);
  if (std::rename(unfinished_.str().c_str(), file_.str().c_str()) != 0) fail("rename", unfinished_);
}

RestartState RestartFile::read(std::size_t nElements) const {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::setRestartFields]";
  const std::string prefix = std::string(FUNC_ID) + "  ";
  std::ifstream in(file_.str());
  std::string line;
  if (!in || !std::getline(in, line)) throw TKL::Exception(prefix + "Restart file missing!", FUNC_ID);
  RestartState state;
  const auto time = std::from_chars(line.data(), line.data() + line.size(), state.t);
  if (time.ec != std::errc() || !std::isfinite(state.t))
    throw TKL::Exception(prefix + "Error reading time point from restart file!", FUNC_ID);
  if (!readNumbers(in, nElements, state.U) || !readNumbers(in, nElements, state.mw))
    throw TKL::Exception(prefix + "Error reading restart file!", FUNC_ID);
  return state;
}

}  // namespace VELMORA_SOLVER
