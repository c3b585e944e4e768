// The operations of a path that ask the operating system.

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <filesystem>
#include <new>
#include <system_error>
#include <vector>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Path.h"
#include "foundation/StringUtilities.h"

namespace TKL {

std::string systemErrorText(int errorNumber) {
  const std::string text = std::generic_category().message(errorNumber);
  if (text.starts_with("Unknown error")) {
    return "Cannot retrieve error message with id " + val2string(errorNumber);
  }
  return text;
}

bool Path::exists() const {
  std::error_code error;
  return isValid() && std::filesystem::exists(path_, error);
}

bool Path::isDirectory() const {
  std::error_code error;
  return isValid() && std::filesystem::is_directory(path_, error);
}

Path Path::current() {
  const char* const FUNC_ID = "[current()]";
  std::vector<char> buffer;
  try {
    buffer.resize(PATH_MAX);
  } catch (const std::bad_alloc&) {
    throw Exception(FormatString("Out of memory! Can not reserve %1 bytes").arg(PATH_MAX), FUNC_ID);
  }
  if (getcwd(buffer.data(), buffer.size()) == nullptr) {
    if (errno == ERANGE || errno == ENAMETOOLONG) {
      throw Exception(FormatString("Path longer than %1 characters").arg(PATH_MAX), FUNC_ID);
    }
    throw Exception("Couldn't deduce user directory.", FUNC_ID);
  }
  return Path(buffer.data());
}

void Path::setCurrent(const Path& path) {
  const char* const FUNC_ID = "[setCurrent()]";
  if (!path.isValid()) {
    throw Exception("Invalid path", FUNC_ID);
  }
  if (chdir(path.path_.c_str()) == 0) {
    return;
  }
  if (errno == ENOENT || errno == ENOTDIR) {
    throw Exception("Path not found", FUNC_ID);
  }
  throw Exception(errno == ENAMETOOLONG ? "Invalid path" : "Unknown error", FUNC_ID);
}

void Path::makePath(const Path& path) {
  const char* const FUNC_ID = "[TKL_Path::makePath]";
  std::size_t end = 0;
  while (end < path.path_.size()) {
    end = std::min(path.path_.find('/', end + 1), path.path_.size());
    const std::string level = path.path_.substr(0, end);
    if (mkdir(level.c_str(), 0777) == 0) {
      continue;
    }
    const int error = errno;
    if (error != EEXIST || !Path(level).isDirectory()) {
      throw Exception(FormatString("%1\nError in CreateDirectoryW().").arg(systemErrorText(error)), FUNC_ID);
    }
  }
}

void Path::remove(const Path& path) {
  const char* const FUNC_ID = "[Path::remove]";
  std::error_code error;
  const auto kind = std::filesystem::symlink_status(path.path_, error).type();
  if (!path.isValid() || kind == std::filesystem::file_type::not_found) {
    throw Exception(FormatString("Cannot remove '%1'.\n'File doesn't exist' !").arg(path), FUNC_ID);
  }
  std::filesystem::remove_all(path.path_, error);
  if (error) {
    throw Exception(
        FormatString("Error while removing '%1'.\n'%2' !").arg(path).arg(systemErrorText(error.value())),
        FUNC_ID);
  }
}

}  // namespace TKL
