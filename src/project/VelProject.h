#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "foundation/Path.h"
#include "keywords/SectionText.h"
#include "project/PathPlaceholders.h"
#include "project/SolverFlags.h"
#include "project/VelAssignments.h"
#include "project/VelConditions.h"
#include "project/VelDisc.h"
#include "project/VelInit.h"
#include "project/VelMaterials.h"
#include "project/VelOutputs.h"
#include "project/Version.h"

namespace VELMORA {

struct CalculationData;
class ProjectText;

/// The root of the data model: one object for each section of the project file. A project is read once and
/// lives for a whole run; the calculation data point into its materials.
class VelProject {
 public:
  /// Indices of the keywords of "VelProject::projectParts_t".
  enum projectParts_t {
    PART_PROJECT_INFO,
    PART_DIRECTORIES,
    PART_INIT,
    PART_MATERIALS,
    PART_CONDITIONS,
    PART_DISCRETISATION,
    PART_OUTPUTS,
    PART_ASSIGNMENTS,
    NUM_PART
  };

  SolverFlags m_solverFlags;              ///< copy of the command line, set before `read`
  std::string m_version = MODEL_VERSION;  ///< version of the program
  std::string m_executable;               ///< the running program, set before `read`
  TKL::Path m_projectFile;                ///< absolute
  PathPlaceholders m_placeholders;
  std::string m_created;
  std::string m_lastEdit;
  std::string m_comment;
  std::string m_fileVersion;  ///< kept as read
  VelInit m_init;
  VelMaterials m_materials;
  VelConditions m_conditions;
  VelDisc m_disc;
  VelOutputs m_outputs;
  VelAssignments m_assignments;

  VelProject() = default;
  VelProject(const VelProject&) = delete;
  VelProject& operator=(const VelProject&) = delete;
  ~VelProject() = default;

  /// Reads a project file with all files that it names. A missing project file reads like an empty one.
  /// @returns 0 on success; 1 where reading has failed, after the message chain has been written; 2 where
  /// the path is not valid. Then `errorMessage` holds the text for the caller, and the project is of no
  /// further use.
  std::int32_t read(const TKL::Path& projectFile, std::string& errorMessage);

  /// Reads the section `PROJECT_INFO`.
  /// @throws TKL::Exception "Unexpected data in this section: '%1'!" for a line without "=" that is not
  /// part of the comment
  void readProjectInfo(const SectionText& text);

  /// Turns the project into the grid, the conditions and the output files that the solver runs on.
  /// @throws TKL::Exception where the project is incomplete or contradicts itself
  void setup_calculation(CalculationData& data);

  /// A path as the project file has it: placeholder replaced, relative to the directory of the project
  /// file.
  TKL::Path resolvedPath(const TKL::Path& path) const {
    return VELMORA::resolvedPath(path, m_placeholders.placeholderMap());
  }
  /// The same for a file that is read: a relative path that leads nowhere is looked for in the current
  /// directory as well.
  TKL::Path resolvedInputPath(const TKL::Path& path) const {
    return VELMORA::resolvedInputPath(path, m_placeholders.placeholderMap());
  }

 private:
  /// Finds the directories and the full name of the project file; false for an empty path.
  bool locate(const TKL::Path& projectFile);
  void readSections(const ProjectText& text);
  void readSection(projectParts_t part, const SectionText& text);
  void readExternalMaterials(std::map<std::string, std::string>& newNames);
  void reportInputLine(int line, const ProjectText& text) const;
};

}  // namespace VELMORA
