#include <string>
#include <unordered_map>
#include <unordered_set>

#include "foundation/Exception.h"
#include "project/MarkUsed.h"
#include "project/NameIndex.h"
#include "project/SetupCalculation.h"

namespace VELMORA::setup {

namespace {

std::string usedBy(const VelOutputFile& file) {
  return "' used by output file '" + file.name + "' is not defined!";
}

void linkFile(const NameIndex& grids, const NameIndex& formats, VelOutputFile& file, CalculationData& data) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  const std::size_t grid = grids.find(file.gridName);
  if (grid == NameIndex::NONE) {
    throw TKL::Exception("Output grid '" + file.gridName + usedBy(file), FUNC_ID)
        .withInputLine(file.gridLine);
  }
  const std::size_t format = formats.find(file.formatName);
  if (format == NameIndex::NONE) {
    throw TKL::Exception("Output format '" + file.formatName + usedBy(file), FUNC_ID)
        .withInputLine(file.formatLine);
  }
  if (formats.isAmbiguous(file.formatName)) {
    throw TKL::Exception("Ambiguous assignment of output format with name '" + file.formatName + "'", FUNC_ID)
        .withInputLine(file.formatLine);
  }
  file.grid = &data.outputGrids[grid];
  file.format = &data.outputFormats[format];
  file.path = data.outputDir / file.name;
}

}  // namespace

void createOutputDirectory(const VelProject& project, CalculationData& data) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  data.outputDir = project.resolvedPath(project.m_outputs.outputFolder);
  const std::string& path = data.outputDir.str();
  if (data.outputDir.isDirectory()) return;
  if (data.outputDir.exists()) {
    throw TKL::Exception(
        "Couldn't create output directory '" + path + "'. A file with this path exists already.", FUNC_ID);
  }
  progress("Creating output folder '" + path + "'\n");
  try {
    TKL::Path::makePath(data.outputDir);
  } catch (const TKL::Exception& error) {
    throw TKL::Exception(error, "Couldn't create directory '" + path + "' (access denied?)", FUNC_ID);
  }
}

void transferOutputs(const VelProject& project, CalculationData& data) {
  progress("Setting up output grids\n");
  const VelOutputs& outputs = project.m_outputs;
  data.outputFiles = outputs.outputFiles;
  data.outputFormats = outputs.outputFormats;
  removeUnused(data.outputFiles, mark_used(project.m_assignments, data.outputFiles));

  std::unordered_set<std::string> wanted;
  for (const VelOutputFile& file : data.outputFiles) wanted.insert(file.gridName);
  // only the first grid of a name can be reached
  for (const VelOutputGrid& grid : outputs.outputGrids) {
    if (wanted.erase(grid.name) > 0) data.outputGrids.push_back(grid);
  }
}

void assignOutputs(const VelProject& project, const IndexMatrix& indexMatrix, CalculationData& data) {
  progress("Assigning output ranges\n");
  std::unordered_map<std::string, std::vector<const VelSelection*>> selections;
  for (const VelSelection& selection : project.m_assignments.selections) {
    if (selection.isOutput()) selections[selection.name].push_back(&selection);
  }
  const NameIndex grids(data.outputGrids);
  const NameIndex formats(data.outputFormats);
  for (VelOutputFile& file : data.outputFiles) {
    linkFile(grids, formats, file, data);
    file.assignRanges(data.elements, indexMatrix, selections[file.name]);
  }
}

}  // namespace VELMORA::setup
