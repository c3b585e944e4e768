#pragma once

#include <map>
#include <string>

namespace TKL {

/// A file or directory name, kept as UTF-8 with "/" as separator. An empty text is an invalid path.
class Path {
 public:
  Path() = default;
  /// Trims blanks, tabs and carriage returns, and turns backslashes into slashes.
  Path(const std::string& text);  // NOLINT(google-explicit-constructor): a path is a text
  Path(const char* text);         // NOLINT(google-explicit-constructor)

  const std::string& str() const { return path_; }
  bool isValid() const { return !path_.empty(); }
  /// True for a path that starts with "/" or with a drive letter.
  bool isAbsolute() const;

  /// Appends a part with one "/" between. Appending "", "." or "/" changes nothing; a leading "./" of the
  /// result is removed.
  Path& operator/=(const Path& part);
  friend Path operator/(Path base, const Path& part) { return base /= part; }
  bool operator==(const Path&) const = default;
  auto operator<=>(const Path&) const = default;

  /// The last component. @throws Exception "Invalid path: '%1'"
  std::string filename() const;
  /// The text behind the last "." of the file name; empty without ".".
  std::string extension() const;
  /// The file name up to its last ".".
  std::string filenameWithoutExtension() const;
  /// The path without its last component.
  /// @throws Exception "Invalid path: '%1'", "No parent possible."
  Path parentPath() const;
  /// The path with `text` added at its end; a "." is put between unless `text` begins with one.
  [[nodiscard]] Path addExtension(const std::string& text) const;
  /// The path completed with the current directory, "." and ".." resolved.
  Path absolutePath() const;

  /// Whether the file or directory is there.
  bool exists() const;
  bool isDirectory() const;

  /// True if the text holds "$(" and ")", or "{" and "}".
  bool hasPlaceholder() const;
  /// Replaces a placeholder "$(NAME)" or "${NAME}" at the start of the path by the directory of that name.
  /// @throws Exception "Path for placeholder '%1' is empty.", "Cannot add absolute path '%1' ...",
  ///                   "Unknown or undefined path placeholder '%1'. ..."
  Path withReplacedPlaceholders(const std::map<std::string, Path>& placeholderMap) const;

  /// The current directory. @throws Exception
  static Path current();
  /// Changes the current directory. @throws Exception "Invalid path", "Path not found" or "Unknown error"
  static void setCurrent(const Path& path);
  /// Creates all directories of the path that are not there yet. @throws Exception
  static void makePath(const Path& path);
  /// Removes a file or a whole directory. @throws Exception, also if nothing is there
  static void remove(const Path& path);

 private:
  std::string path_;
};

/// The operating system's text for an error number.
std::string systemErrorText(int errorNumber);

}  // namespace TKL
