#include <exception>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/StringUtilities.h"
#include "keywords/QuotedText.h"
#include "project/VelMaterials.h"
#include "project/VelMaterialsNames.h"

namespace VELMORA {

namespace {

const char* const EXTERNAL_ID = "[VelMaterials::readExternalMaterials]";

std::string lookUp(std::span<const MaterialSuccessor> table, const std::string& path) {
  for (const MaterialSuccessor& row : table)
    if (TKL::string_nocase_find(path, row.oldName) >= 0) return row.newName;
  return {};
}

/// The file of the current generation beside one of the older generation.
TKL::Path currentFileBeside(const TKL::Path& path) {
  return path.parentPath() / TKL::Path(path.filenameWithoutExtension()).addExtension("m6");
}

/// The warnings about single keywords show at a high verbosity only; this one shows always.
void warnOfUnknownWords(const MM::Material& material, const TKL::Path& path) {
  const char* const FUNC_ID = EXTERNAL_ID;
  const std::vector<std::string> unknown = material.unknownKeywords();
  if (unknown.empty()) return;
  TKL::message(
      TKL::FormatString("%1 unknown or deprecated keyword(s) in material file '%2'. The first one is "
                        "'%3'. Verbosity -v3 lists them all.")
          .arg(unknown.size())
          .arg(path)
          .arg(quotedText(unknown.front())),
      TKL::MSG_WARNING, FUNC_ID, -1);
}

}  // namespace

std::string substituteMaterialName(const std::string& path) {
  return lookUp(materialSuccessors(), path);
}

std::string substituteMaterialNameExtended(const std::string& path) {
  return lookUp(materialSuccessorsExtended(), path);
}

void VelMaterials::readExternalMaterials(const PlaceholderMap& placeholders,
                                         std::map<std::string, std::string>& newNames,
                                         const FileReader& readFile) {
  const char* const FUNC_ID = EXTERNAL_ID;
  TKL::message("Reading referenced material files\n", TKL::MSG_STANDARD, FUNC_ID, 2);
  const TKL::MessageIndentor indentor;
  for (MaterialDescription& entry : materials) {
    if (!entry.filename.isValid()) continue;
    const TKL::Path path = resolvedInputPath(entry.filename, placeholders).absolutePath();
    TKL::message(TKL::FormatString("Reading material file '%1'\n").arg(entry.filename), TKL::MSG_STANDARD,
                 FUNC_ID, 2);
    Resolved resolved;
    if (resolve(path, placeholders, resolved)) readEntry(entry, path, resolved, newNames, readFile);
  }
}

bool VelMaterials::resolve(const TKL::Path& path, const PlaceholderMap& placeholders, Resolved& resolved) {
  const char* const FUNC_ID = EXTERNAL_ID;
  std::string newName = substituteMaterialName(path.str());
  if (newName.empty()) newName = substituteMaterialNameExtended(path.str());
  resolved = {path, false};
  if (path.exists()) {
    if (!newName.empty())
      TKL::message(
          TKL::FormatString("A newer material file '%1' that replaces '%2' is available. Since the old "
                            "file still exists, the solver will use the old file.\n")
              .arg(newName)
              .arg(path),
          TKL::MSG_WARNING, FUNC_ID, 2);
    return true;
  }
  if (!newName.empty()) {
    const TKL::Path reference = TKL::Path("${MATERIALS_DIR}") / TKL::Path(newName);
    resolved = {reference.withReplacedPlaceholders(placeholders), true};
    return true;
  }
  resolved.path = currentFileBeside(path);
  if (resolved.path.exists()) return true;
  TKL::message(TKL::FormatString("Cannot find material file '%1' and cannot find name substition.").arg(path),
               TKL::MSG_WARNING, FUNC_ID, 1);
  return false;
}

void VelMaterials::readEntry(MaterialDescription& entry, const TKL::Path& path, const Resolved& resolved,
                             std::map<std::string, std::string>& newNames, const FileReader& readFile) {
  const char* const FUNC_ID = EXTERNAL_ID;
  entry.hasData = false;
  try {
    if (readFile)
      readFile(entry.material, resolved.path);
    else
      entry.material.read(resolved.path);
    entry.hasData = true;
    warnOfUnknownWords(entry.material, resolved.path);
  } catch (TKL::Exception& ex) {
    throw TKL::Exception(ex,
                         TKL::FormatString("Error reading material file '%1' (-> '%2')")
                             .arg(entry.filename)
                             .arg(resolved.path),
                         FUNC_ID);
  } catch (std::exception& ex) {
    entry.material.clear();
    TKL::message(TKL::FormatString("Cannot find material file '%1' and cannot find name substition.\n%2")
                     .arg(path)
                     .arg(ex.what()),
                 TKL::MSG_WARNING, FUNC_ID, 1);
    return;
  }
  // Assignments refer to the old material: by its name alone, or by the name of its file.
  if (!resolved.substituted || !entry.name.empty()) return;
  newNames[path.filenameWithoutExtension()] = entry.idName();
  newNames[path.filenameWithoutExtension() + ".mat"] = entry.idName();
}

}  // namespace VELMORA
