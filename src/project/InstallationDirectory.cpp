#include <unistd.h>

#include <array>
#include <cstdlib>

#include "foundation/Exception.h"
#include "project/PathPlaceholders.h"

/// Where the program and the user's data lie on this platform.
namespace VELMORA {

namespace {

/// The desktop program lies beside the databases or one level below them.
const char* const DESKTOP_PROGRAM = "Velmora.exe";
const char* const CLIMATE_DATABASE = "DB_climate_data";

TKL::Path parentOrNone(const TKL::Path& path) {
  try {
    return path.parentPath();
  } catch (const TKL::Exception&) {
    return {};
  }
}

/// Path of the running program as the operating system knows it.
TKL::Path modulePath() {
  std::array<char, 4096> buffer{};
  const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size());
  if (length <= 0) return {};
  return TKL::Path(std::string(buffer.data(), static_cast<std::size_t>(length)));
}

/// The directory or its parent, whichever holds the climate database.
TKL::Path directoryWithDatabase(const TKL::Path& directory) {
  if (!directory.isValid() || (directory / CLIMATE_DATABASE).isDirectory()) return directory;
  const TKL::Path parent = parentOrNone(directory);
  if (parent.isValid() && (parent / CLIMATE_DATABASE).isDirectory()) return parent;
  return {};
}

}  // namespace

TKL::Path PathPlaceholders::installationDirectory(const std::string& executable) {
  const TKL::Path program(executable);
  if (!program.isValid()) return {};
  const TKL::Path absolute = program.absolutePath();
  // A program that the shell has found by its search path is called by its bare name.
  const bool bareName = program.str().find('/') == std::string::npos;
  TKL::Path result;
  if (!bareName || absolute.exists()) {
    result = parentOrNone(absolute);
    if (program.filename() == DESKTOP_PROGRAM) result = directoryWithDatabase(result);
  }
  if (!result.isValid()) result = parentOrNone(modulePath());
  return result.isValid() ? result.absolutePath() : result;
}

TKL::Path PathPlaceholders::userDataDirectory() {
  const char* const home = std::getenv("HOME");
  if (home == nullptr || *home == '\0') return {};
  return TKL::Path(home) / ".config";
}

}  // namespace VELMORA
