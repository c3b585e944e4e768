#pragma once

#include <string>

#include "foundation/Path.h"
#include "keywords/ProjectPaths.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// The directories that paths of a project are written against, so that a project moves between machines.
class PathPlaceholders {
 public:
  /// Indices of the keywords of "PathPlaceholders::data_directories_t".
  enum data_directories_t {
    D_MATERIALS,
    D_USER_MATERIALS,
    D_CLIMATE,
    D_SALT,
    D_VOC,
    D_USER_CLIMATE,
    D_PROJECT,
    D_INSTALL,
    D_PROJECT_FILE,
    D_EXAMPLES,
    NUM_D
  };

  /// Name of a directory inside a path: "CLIMATE_DIR" for `$(CLIMATE_DIR)`.
  static const char* placeholderName(data_directories_t index);

  void set(data_directories_t index, const TKL::Path& path);
  /// The path of an index, invalid where none is set.
  TKL::Path get(data_directories_t index) const;
  TKL::Path installDir() const { return get(D_INSTALL); }
  TKL::Path projectDir() const { return get(D_PROJECT); }

  /// Reads the section `DIRECTORIES`, and gives the databases that it leaves out their places below the
  /// installation and the user's data directory. An empty installation directory gives no such defaults.
  /// @throws TKL::Exception "Unexpected data in this section: '%1'!" for a line without "="
  void readFromString(const SectionText& text, const TKL::Path& installDir, const TKL::Path& projectDir);

  const PlaceholderMap& placeholderMap() const { return placeholders_; }

  /// Installation directory from the path of the running program, invalid where none can be found. The
  /// desktop program lies in the installation or one level below it, and the climate database tells which;
  /// any other program lies in the installation itself.
  static TKL::Path installationDirectory(const std::string& executable);

  /// The user's directory of application data, invalid where there is none.
  static TKL::Path userDataDirectory();

 private:
  void readLine(const TextLine& line, const TKL::Path& installDir, const TKL::Path& projectDir);
  void setDefault(data_directories_t index, const TKL::Path& path);

  PlaceholderMap placeholders_;
};

}  // namespace VELMORA
