#include "foundation/Path.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/QuotedText.h"
#include "foundation/StringUtilities.h"

namespace TKL {

namespace {

bool hasDriveLetter(std::string_view path) {
  return path.size() >= 2 && path[1] == ':' &&
         ((path[0] >= 'a' && path[0] <= 'z') || (path[0] >= 'A' && path[0] <= 'Z'));
}

bool isAbsoluteText(std::string_view path) {
  return path.starts_with('/') || hasDriveLetter(path);
}

std::string_view withoutTrailingSlashes(std::string_view path) {
  const std::size_t last = path.find_last_not_of('/');
  return last == std::string_view::npos ? std::string_view() : path.substr(0, last + 1);
}

/// A placeholder "$(NAME)" or "${NAME}" in a text.
struct Placeholder {
  std::string name;
  std::size_t begin = 0;
  std::size_t end = 0;  ///< behind the closing sign
};

/// The first placeholder from `start` on; false if there is none. Without closing sign it reaches to the end.
bool findPlaceholder(std::string_view text, Placeholder& placeholder) {
  placeholder.begin = std::min(text.find("$("), text.find("${"));
  if (placeholder.begin == std::string_view::npos) {
    return false;
  }
  const std::size_t nameBegin = placeholder.begin + 2;
  const char closing = text[placeholder.begin + 1] == '(' ? ')' : '}';
  const std::size_t nameEnd = std::min(text.find(closing, nameBegin), text.size());
  placeholder.name = text.substr(nameBegin, nameEnd - nameBegin);
  placeholder.end = std::min(nameEnd + 1, text.size());
  return true;
}

}  // namespace

Path::Path(const std::string& text) : path_(trim_copy(text)) {
  std::replace(path_.begin(), path_.end(), '\\', '/');
}

Path::Path(const char* text) : Path(std::string(text)) {}

bool Path::isAbsolute() const {
  return isAbsoluteText(path_);
}

Path& Path::operator/=(const Path& part) {
  if (part.path_.empty() || part.path_ == "." || part.path_ == "/") {
    return *this;
  }
  std::string_view tail(part.path_);
  if (path_.ends_with('/') && tail.starts_with('/')) {
    tail.remove_prefix(1);
  }
  std::string joined = path_;
  if (!joined.empty() && !joined.ends_with('/') && !tail.starts_with('/')) {
    joined += '/';
  }
  joined += tail;
  if (joined.starts_with("./")) {
    joined.erase(0, 2);
  }
  path_ = std::move(joined);
  return *this;
}

std::string Path::filename() const {
  const char* const FUNC_ID = "[Path::filename]";
  if (!isValid()) {
    throw Exception(FormatString("Invalid path: '%1'").arg(path_), FUNC_ID);
  }
  const std::string_view trimmed = withoutTrailingSlashes(path_);
  return std::string(trimmed.substr(trimmed.rfind('/') + 1));
}

std::string Path::extension() const {
  const std::string name = filename();
  const std::size_t dot = name.rfind('.');
  return dot == std::string::npos ? std::string() : name.substr(dot + 1);
}

std::string Path::filenameWithoutExtension() const {
  const std::string name = filename();
  return name.substr(0, name.rfind('.'));
}

Path Path::parentPath() const {
  const char* const FUNC_ID = "[Path::parentPath]";
  if (!isValid()) {
    throw Exception(FormatString("Invalid path: '%1'").arg(path_), FUNC_ID);
  }
  const std::string_view trimmed = withoutTrailingSlashes(path_);
  const std::size_t slash = trimmed.rfind('/');
  if (slash == std::string_view::npos) {
    throw Exception("No parent possible.", FUNC_ID);
  }
  const std::string_view parent = withoutTrailingSlashes(trimmed.substr(0, slash));
  const bool isRoot = parent.empty() || (parent.size() == 2 && hasDriveLetter(parent));
  return Path(std::string(parent) + (isRoot ? "/" : ""));
}

Path Path::addExtension(const std::string& text) const {
  return Path(path_ + (text.empty() || text.starts_with('.') ? "" : ".") + text);
}

Path Path::absolutePath() const {
  const Path full = isAbsolute() ? *this : current() / *this;
  std::string normal = std::filesystem::path(full.path_).lexically_normal().generic_string();
  if (normal.size() > 1 && normal.ends_with('/') && !(normal.size() == 3 && hasDriveLetter(normal))) {
    normal.pop_back();
  }
  return Path(normal);
}

bool Path::hasPlaceholder() const {
  const auto holds = [this](std::string_view piece) { return path_.find(piece) != std::string::npos; };
  return (holds("$(") && holds(")")) || (holds("{") && holds("}"));
}

Path Path::withReplacedPlaceholders(const std::map<std::string, Path>& placeholderMap) const {
  const char* const FUNC_ID = "[Path::withReplacedPlaceholders]";
  const char* const UNKNOWN_ID = "[Project::replacePlaceHolders]";
  Path result = *this;
  Placeholder placeholder;
  if (findPlaceholder(path_, placeholder) && placeholder.begin == 0) {
    const auto known = placeholderMap.find(placeholder.name);
    if (known != placeholderMap.end()) {
      if (!known->second.isValid()) {
        throw Exception(FormatString("Path for placeholder '%1' is empty.").arg(quotedText(placeholder.name)),
                        FUNC_ID);
      }
      std::string rest = path_.substr(placeholder.end);
      if (rest.starts_with('/')) {
        rest.erase(0, 1);
      }
      if (isAbsoluteText(rest)) {
        throw Exception(FormatString("Cannot add absolute path '%1' (from replacing placeholder '%2') to "
                                     "path part '%3'.")
                            .arg(quotedText(rest))
                            .arg(quotedText(placeholder.name))
                            .arg(known->second),
                        FUNC_ID);
      }
      result = known->second / Path(rest);
    }
  }
  if (findPlaceholder(result.path_, placeholder)) {
    std::string list;
    for (const auto& [name, path] : placeholderMap) {
      list += "$(" + name + ") = " + path.path_ + "\n";
    }
    throw Exception(FormatString("Unknown or undefined path placeholder '%1'. Known placeholders are:\n%2")
                        .arg(quotedText(placeholder.name))
                        .arg(list),
                    UNKNOWN_ID);
  }
  return result;
}

}  // namespace TKL
