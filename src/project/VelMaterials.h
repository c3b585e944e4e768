#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include "foundation/Path.h"
#include "keywords/ProjectPaths.h"
#include "keywords/SectionText.h"
#include "material/Material.h"

namespace VELMORA {

/// One entry of the section MATERIALS: embedded data, or the name of a material file.
class MaterialDescription {
 public:
  std::string name;       ///< NAME of the entry, empty if it has none
  TKL::Path filename;     ///< file reference, may hold a path placeholder; empty for embedded data
  MM::Material material;  ///< without data until its file has been read
  bool hasData = false;   ///< `material` has been read

  /// Name by which assignments refer to the material: NAME, else the English name of the material, else the
  /// file name without extension.
  std::string idName() const;

  /// True for an assignment's name that is not an id name: the file name, with or without extension.
  bool matchesFileName(const std::string& reference) const;

  /// Reads the lines of a block behind its title:
  ///   NAME = <name>             optional
  ///   FILENAME = <path>         or FILE, or the path alone on a line
  ///   <KEYWORD> = <value unit>  base parameters of embedded data
  ///   [<section of a material file>] and all that follows: embedded data
  /// @throws TKL::Exception where there is neither a file nor data, or the data are bad
  void read(const SectionText& text);

 private:
  void readOwnLine(const TextLine& line, std::vector<TextLine>& parameters);
  void readEmbedded(const std::vector<TextLine>& parameters, const std::vector<TextLine>& sections);
};

/// The materials that a project uses.
class VelMaterials {
 public:
  /// Reads one material file; a parameter of `readExternalMaterials`.
  using FileReader = std::function<void(MM::Material&, const TKL::Path&)>;

  std::vector<MaterialDescription> materials;

  /// Reads the section MATERIALS: blocks that begin with MATERIAL. ";" begins a comment.
  /// @throws TKL::Exception "Error reading entry %1!"
  void read(const SectionText& text);

  /// Reads the files of all entries that name one. A file of the older generation that is gone is replaced
  /// by its successor in the material database, or by the file of the current generation beside it. A file
  /// that cannot be found is a warning and leaves the entry without data.
  /// @param placeholders directories that the paths are written against
  /// @param newNames takes pairs of old and new id name where a successor was read
  /// @throws TKL::Exception "Error reading material file '%1' (-> '%2')"
  void readExternalMaterials(const PlaceholderMap& placeholders, std::map<std::string, std::string>& newNames,
                             const FileReader& readFile = {});

  /// The entry that an assignment's name means: by id name, else by file name; null if there is none.
  const MaterialDescription* find(const std::string& reference) const;

 private:
  struct Resolved {
    TKL::Path path;
    bool substituted = false;
  };

  /// The file to be read for a path; false, after a warning, if there is none.
  static bool resolve(const TKL::Path& path, const PlaceholderMap& placeholders, Resolved& resolved);
  static void readEntry(MaterialDescription& entry, const TKL::Path& path, const Resolved& resolved,
                        std::map<std::string, std::string>& newNames, const FileReader& readFile);
};

/// File name of the current generation for a material file of the older one, by the table of the shorter
/// list of old names; empty if no row fits. An old name is searched anywhere in the path, in any case; the
/// first row counts. A row whose material has no successor in the database gives the empty name, too.
std::string substituteMaterialName(const std::string& path);

/// The same by the table of the longer list.
std::string substituteMaterialNameExtended(const std::string& path);

}  // namespace VELMORA
