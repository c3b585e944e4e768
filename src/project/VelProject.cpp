#include "project/VelProject.h"

#include <cerrno>
#include <fstream>
#include <map>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"
#include "keywords/QuotedText.h"
#include "keywords/UnknownKeywords.h"
#include "project/ProjectText.h"

namespace VELMORA {

namespace {

constexpr int ALWAYS = -1;
const char* const READ_ID = "[VelProject::read]";

void tell(const std::string& text, const TKL::Path& path, int verbosity) {
  TKL::message(text + path.str() + "'\n", TKL::MSG_STANDARD, READ_ID, verbosity);
}

/// A missing file reads like an empty one; what is missing shows when the calculation is set up.
void readText(const TKL::Path& projectFile, ProjectText& text) {
  constexpr int VERBOSITY = 2;
  errno = 0;
  std::ifstream file(projectFile.str(), std::ios::binary);
  if (!file.is_open() || projectFile.isDirectory())
    TKL::message("Cannot open project: '" + projectFile.str() + "'\n", TKL::MSG_WARNING, READ_ID, VERBOSITY);
  else
    text.read(file);
  // Half a project must not be calculated.
  if (file.bad())
    throw TKL::Exception(
        "Cannot read project file '" + projectFile.str() + "': " + TKL::systemErrorText(errno), READ_ID);
}

/// The warnings about single keywords show at a high verbosity only; this one shows always.
void warnOfUnknownKeywords(const std::string& section) {
  const UnknownKeywords& unknown = unknownKeywords();
  if (unknown.count == 0) return;
  TKL::message(
      TKL::FormatString("%1 unknown or deprecated keyword(s) in the project file. The first one is '%2' in "
                        "line %3, section %4. Verbosity -v3 lists them all.")
          .arg(unknown.count)
          .arg(quotedText(unknown.firstKeyword))
          .arg(unknown.firstLine)
          .arg(section),
      TKL::MSG_WARNING, READ_ID, ALWAYS);
}

}  // namespace

std::int32_t VelProject::read(const TKL::Path& projectFile, std::string& errorMessage) {
  tell("Begin reading project '", projectFile, 1);
  const TKL::MessageIndentor indentor;
  const std::string failure = TKL::FormatString("Error reading project file '%1'!").arg(projectFile).str();
  ProjectText text;
  try {
    if (!locate(projectFile)) {
      errorMessage = failure + " " + READ_ID;
      return 2;
    }
    readText(m_projectFile, text);
    readSections(text);
    return 0;
  } catch (const TKL::Exception& error) {
    error.writeMsgStackToError();
    reportInputLine(error.inputLine(), text);
    errorMessage = failure + "\n" + error.what();
  } catch (const std::exception& error) {
    TKL::message(std::string(error.what()), TKL::MSG_ERROR, READ_ID, ALWAYS);
    errorMessage = failure + "\n" + error.what();
  }
  return 1;
}

bool VelProject::locate(const TKL::Path& projectFile) {
  constexpr int VERBOSITY = 2;
  m_placeholders.set(PathPlaceholders::D_INSTALL, PathPlaceholders::installationDirectory(m_executable));
  const TKL::Path path = projectFile.withReplacedPlaceholders(m_placeholders.placeholderMap());
  if (!path.isValid()) return false;
  m_projectFile = path.absolutePath();
  m_placeholders.set(PathPlaceholders::D_PROJECT, m_projectFile.parentPath());
  tell("Installation directory = '", m_placeholders.installDir(), VERBOSITY);
  tell("Project directory      = '", m_placeholders.projectDir(), VERBOSITY);
  tell("Full project filename  = '", m_projectFile, VERBOSITY);
  return true;
}

void VelProject::readSections(const ProjectText& text) {
  unknownKeywords() = UnknownKeywords{};
  std::string firstUnknownSection;
  std::map<std::string, std::string> newMaterialNames;
  // Paths need the directories, and assignments the names that the materials have in the end.
  constexpr projectParts_t ORDER[] = {PART_DIRECTORIES, PART_PROJECT_INFO,   PART_INIT,    PART_MATERIALS,
                                      PART_CONDITIONS,  PART_DISCRETISATION, PART_OUTPUTS, PART_ASSIGNMENTS};
  for (const projectParts_t part : ORDER) {
    const bool noneUnknown = unknownKeywords().count == 0;
    readSection(part, text.section(part));
    if (noneUnknown && unknownKeywords().count > 0)
      firstUnknownSection = KeywordList::Keyword("VelProject::projectParts_t", part);
    if (part == PART_MATERIALS) readExternalMaterials(newMaterialNames);
    if (part == PART_OUTPUTS) m_outputs.setDefaultFolder(m_projectFile);
  }
  for (VelSelection& selection : m_assignments.selections) {
    if (selection.kind != VelSelection::A_MATERIAL) continue;
    const auto newName = newMaterialNames.find(selection.name);
    if (newName != newMaterialNames.end()) selection.name = newName->second;
  }
  warnOfUnknownKeywords(firstUnknownSection);
}

void VelProject::readSection(projectParts_t part, const SectionText& text) {
  switch (part) {
    case PART_DIRECTORIES:
      m_placeholders.readFromString(text, m_placeholders.installDir(), m_placeholders.projectDir());
      break;
    case PART_PROJECT_INFO:
      readProjectInfo(text);
      break;
    case PART_INIT:
      m_init.read(text);
      break;
    case PART_MATERIALS:
      m_materials.read(text);
      break;
    case PART_CONDITIONS:
      m_conditions.read(text);
      break;
    case PART_DISCRETISATION:
      m_disc.read(text);
      break;
    case PART_OUTPUTS:
      m_outputs.read(text);
      break;
    case PART_ASSIGNMENTS:
      m_assignments.read(text);
      break;
    case NUM_PART:
      break;
  }
}

/// A line number in an error of a material file means that file, not the project file.
void VelProject::readExternalMaterials(std::map<std::string, std::string>& newNames) {
  try {
    m_materials.readExternalMaterials(m_placeholders.placeholderMap(), newNames);
  } catch (TKL::Exception& error) {
    error.setInputLine(0);
    throw;
  }
}

void VelProject::reportInputLine(int line, const ProjectText& text) const {
  if (line == 0) return;
  TKL::message(TKL::FormatString("The error is in line %1 of the file '%2': %3")
                   .arg(line)
                   .arg(m_projectFile)
                   .arg(quotedText(text.lineText(line))),
               TKL::MSG_ERROR, READ_ID, ALWAYS);
}

void VelProject::readProjectInfo(const SectionText& text) {
  const char* const FUNC_ID = "[VelProject::readProjectInfo]";
  constexpr int VERBOSITY = 2;
  bool inComment = false;
  forEachLine(text, [&](const TextLine& line) {
    if (inComment) {
      m_comment += line.text + "\n";
      return;
    }
    std::string keyword;
    std::string value;
    if (TKL::extract_keyword(line.text, keyword, value)) {
      keyword = TKL::section_title(keyword);
      if (keyword == "FILE_VERSION")
        m_fileVersion = value;
      else if (keyword.find("CREATED") != std::string::npos)
        m_created = value;
      else if (keyword.find("LAST_EDIT") != std::string::npos)
        m_lastEdit = value;
      else {
        noteUnknownKeyword(keyword, line.number);
        TKL::message(TKL::FormatString("Invalid keyword '%1' in this section!").arg(quotedText(keyword)),
                     TKL::MSG_STANDARD, FUNC_ID, VERBOSITY);
      }
    } else if (line.text.find("COMMENTS:") != std::string::npos) {
      inComment = true;
    } else if (!line.text.empty()) {
      throw TKL::Exception(
          TKL::FormatString("Unexpected data in this section: '%1'!").arg(quotedText(line.text)), FUNC_ID);
    }
  });
  while (m_comment.ends_with('\n')) m_comment.pop_back();
}

}  // namespace VELMORA
