#include "output/OutputFiles.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <locale>
#include <string_view>
#include <unordered_map>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/Path.h"
#include "keywords/KeywordList.h"
#include "material/Material.h"
#include "output/OutputRequirement.h"
#include "output/Velmora5OutputData.h"

namespace VELMORA {

namespace {

const char* const INIT_ID = "[VelOutputs::initOutputFiles]";

constexpr std::uint32_t MAX_MATERIAL_ID = 1000;

struct UnitChange {
  std::string_view before;
  std::string_view after;
};

constexpr std::array<UnitChange, 6> FIELD_SPACE_UNITS{{{"kg/m3", "kg"},
                                                       {"m3/m3", "m3"},
                                                       {"J/m3", "J"},
                                                       {"mol/m3", "mol"},
                                                       {"kg/m3s", "kg/s"},
                                                       {"m3/m2s", "m3/s"}}};
constexpr std::array<UnitChange, 2> FIELD_TIME_UNITS{{{"kg/s", "kg"}, {"m3/s", "m3"}}};
constexpr std::array<UnitChange, 5> FLUX_SPACE_UNITS{
    {{"kg/m2s", "kg/s"}, {"J/m2s", "J/s"}, {"W/m2", "W"}, {"mol/m2s", "mol/s"}, {"m3/m2s", "m3/s"}}};
// "mol/m3" is what tools expect of an amount of substance per area.
constexpr std::array<UnitChange, 8> FLUX_TIME_UNITS{{{"kg/m2s", "kg/m2"},
                                                     {"J/m2s", "J/m2"},
                                                     {"W/m2", "J/m2"},
                                                     {"mol/m2s", "mol/m3"},
                                                     {"kg/s", "kg"},
                                                     {"J/s", "J"},
                                                     {"W", "J"},
                                                     {"mol/s", "mol"}}};

template <std::size_t N>
void changeUnit(std::string& unit, const std::array<UnitChange, N>& changes) {
  for (const UnitChange& change : changes) {
    if (unit == change.before) {
      unit = change.after;
      return;
    }
  }
}

std::size_t numberOfEntries(const VelOutputFile& file) {
  return file.format->type == VelOutputFormat::T_FIELD ? file.elements.size() : file.sides.size();
}

bool isSkipped(const VelOutputFile& file, const OutputConstruction& construction) {
  const requirement_t requirement = outputRequirement(*file.format);
  if (isMet(requirement, construction.balanceEquations)) return false;
  if (requirement == REQ_NEVER) return true;
  const std::string suffix =
      requirement == REQ_ICE ? " calculation is not enabled." : " balance equation is not enabled.";
  TKL::message("      .Skipped output file '" + file.path.absolutePath().str() + "' because required " +
                   requirementName(requirement) + suffix,
               TKL::MSG_WARNING, INIT_ID, -1);
  return true;
}

/// Without a treatment in space or time there is nothing that could be written.
void warnIncompleteFormat(const VelOutputFormat& format) {
  if (format.spaceType != VelOutputFormat::NUM_S && format.timeType != VelOutputFormat::NUM_M) return;
  TKL::message(
      TKL::FormatString(
          "Output format '%1' lacks SPACE_TYPE or TIME_TYPE, its output files will have no values.\n")
          .arg(format.name),
      TKL::MSG_WARNING, INIT_ID, -1);
}

void setNumberFormat(std::ostream& stream, const VelOutputFormat& format) {
  stream.precision(format.precision);
  stream.unsetf(std::ios::floatfield);
  if (format.numberFormat == VelOutputFormat::N_SCIENTIFIC) stream.setf(std::ios::scientific);
  if (format.numberFormat == VelOutputFormat::N_FIXED) stream.setf(std::ios::fixed);
}

/// What the system says about the last call that has failed.
std::string reasonText(const TKL::Path& path) {
  return "Cannot write '" + path.absolutePath().str() + "': " + TKL::systemErrorText(errno);
}

std::unique_ptr<std::ofstream> openOutputFile(const VelOutputFile& file,
                                              const OutputConstruction& construction, bool restart) {
  const VelOutputFormat& format = *file.format;
  const bool binary = format.binary && format.spaceType == VelOutputFormat::S_SINGLE;
  const std::string absolutePath = file.path.absolutePath().str();
  auto mode = std::ios::out | (restart ? std::ios::app : std::ios::trunc);
  if (binary) mode |= std::ios::binary;

  errno = 0;
  auto stream = std::make_unique<std::ofstream>();
  stream->imbue(std::locale::classic());
  if (restart) {
    if (!std::ifstream(file.path.str())) {
      TKL::message("Output file '" + absolutePath + "' does not exist. Creating new file...\n",
                   TKL::MSG_STANDARD, INIT_ID, 2);
    }
    stream->open(file.path.str(), mode);
  } else {
    TKL::message(TKL::FormatString("Creating file: %1 (%2 mode)\n")
                     .arg(file.path.filename())
                     .arg(binary ? "binary" : "ASCII"),
                 TKL::MSG_STANDARD, INIT_ID, 2);
    stream->open(file.path.str(), mode);
    if (*stream) writeHeader(*stream, file, construction);
  }
  if (!binary) setNumberFormat(*stream, format);
  if (!*stream || !file.path.exists()) {
    if (errno != 0) TKL::message(reasonText(file.path), TKL::MSG_ERROR, INIT_ID, -1);
    throw TKL::Exception("Error creating output file '" + absolutePath + "'!", INIT_ID);
  }
  TKL::message("      .Created output file '" + absolutePath + "'.\n", TKL::MSG_STANDARD, INIT_ID, 2);
  return stream;
}

void fillMaterialsAndElements(Velmora5OutputData& header, const OutputConstruction& construction,
                              const char* functionId) {
  std::unordered_map<const MM::Material*, std::uint32_t> ids;
  for (const MM::Material* material : construction.materials) {
    const auto id = static_cast<std::uint32_t>(header.materials.size() + 1);
    ids.emplace(material, id);
    header.materials.push_back({static_cast<std::int32_t>(id), material->identification.colour,
                                material->identification.englishName()});
  }
  header.elementGeometry.reserve(construction.elements.size());
  for (const Element& element : construction.elements) {
    const auto found = ids.find(element.material);
    if (found == ids.end() || found->second > MAX_MATERIAL_ID) {
      throw TKL::Exception(
          "Error while writing element definitions, maybe wrong or uninitialised materials vector?",
          functionId);
    }
    header.elementGeometry.push_back({static_cast<std::uint32_t>(element.number), element.x, element.y,
                                      element.i, element.j, found->second});
  }
}

void fillGeometry(Velmora5OutputData& header, const OutputConstruction& construction,
                  const char* functionId) {
  fillMaterialsAndElements(header, construction, functionId);
  const VelDisc& disc = *construction.disc;
  header.gridX = disc.dx.data;
  header.gridY = disc.dy.data;
  header.gridZ = {disc.geometry == VelDisc::G_RSYM ? 0.0 : disc.thickness()};
  header.sideGeometry.reserve(construction.sides.size());
  for (const Side& side : construction.sides) {
    header.sideGeometry.push_back(
        {static_cast<std::uint32_t>(side.number), side.x, side.y, side.i, side.j, !side.horizontal});
  }
}

bool materialChanges(const Side& side) {
  return !side.elementLeft || !side.elementRight || side.elementLeft->material != side.elementRight->material;
}

}  // namespace

void initOutputFiles(const std::vector<VelOutputFile>& outputFiles, const OutputConstruction& construction,
                     OutputStreams& outputStreams, bool restart) {
  TKL::message("Creating output files\n", TKL::MSG_STANDARD, INIT_ID, 1);
  const TKL::MessageIndentor indentor;
  outputStreams.clear();
  for (const VelOutputFile& file : outputFiles) {
    outputStreams.emplace_back();
    if (isSkipped(file, construction)) continue;
    warnIncompleteFormat(*file.format);
    outputStreams.back() = openOutputFile(file, construction, restart);
  }
  if (construction.outputDir.isDirectory()) {
    writeMaterialBoundaries(construction.outputDir / "constr.txt", construction);
  }
}

void writeHeader(std::ostream& stream, const VelOutputFile& file, const OutputConstruction& construction) {
  const char* const FUNC_ID = "[VelOutputs::writeHeader]";
  const VelOutputFormat& format = *file.format;
  Velmora5OutputData header;
  header.outputType = format.type;
  header.projectFile = construction.projectFile;
  header.quantity = quantityDescription(format);
  header.spaceType = format.spaceType;
  header.timeType = format.timeType;
  header.valueUnit = integratedUnit(format, format.valueUnit.name());
  header.timeUnit = format.timeUnit.name();
  header.binary = writesBinary(file);
  if (format.type == VelOutputFormat::T_FIELD) {
    for (const Element* element : file.elements) header.numbers.push_back(element->number);
  } else {
    for (const Side* side : file.sides) header.numbers.push_back(side->number);
  }
  const bool withGeometry = format.spaceType == VelOutputFormat::S_SINGLE && numberOfEntries(file) >= 2;
  if (withGeometry) fillGeometry(header, construction, FUNC_ID);
  std::string errorText;
  if (!header.writeHeader(stream, withGeometry, errorText)) throw TKL::Exception(errorText, FUNC_ID);
}

bool writesBinary(const VelOutputFile& file) {
  return file.format->binary && file.format->spaceType == VelOutputFormat::S_SINGLE &&
         numberOfEntries(file) >= 2;
}

void writeMaterialBoundaries(const TKL::Path& path, const OutputConstruction& construction) {
  const std::vector<double>& dx = construction.disc->dx.data;
  const std::vector<double>& dy = construction.disc->dy.data;
  std::vector<double> xEdge{0.0};
  for (const double width : dx) xEdge.push_back(xEdge.back() + width);
  double height = 0.0;
  for (const double width : dy) height += width;
  std::vector<double> yEdge{height};
  double depth = 0.0;
  for (const double width : dy) yEdge.push_back(height - (depth += width));
  yEdge.back() = 0.0;

  errno = 0;
  std::ofstream stream(path.str());
  stream.imbue(std::locale::classic());
  for (const Side& side : construction.sides) {
    if (!materialChanges(side)) continue;
    if (side.horizontal) {
      const auto i = static_cast<std::size_t>(side.i);
      stream << xEdge[i] << ' ' << xEdge[i + 1] << ' ' << side.y << " 0\n";
    } else {
      const auto j = static_cast<std::size_t>(side.j);
      stream << yEdge[j] << ' ' << yEdge[j + 1] << ' ' << side.x << " 1\n";
    }
  }
  stream.close();
  if (!stream) {
    // half of the lines would look like another construction
    const int error = errno;
    std::remove(path.str().c_str());
    errno = error;
  }
  checkOutputStream(stream, path);
}

std::string integratedUnit(const VelOutputFormat& format, std::string unit) {
  const bool inSpace = format.spaceType == VelOutputFormat::S_INTEGRAL;
  const bool inTime = format.timeType == VelOutputFormat::M_INTEGRAL;
  if (format.type == VelOutputFormat::T_FIELD) {
    if (inSpace) changeUnit(unit, FIELD_SPACE_UNITS);
    if (inTime) changeUnit(unit, FIELD_TIME_UNITS);
  } else {
    if (inSpace) changeUnit(unit, FLUX_SPACE_UNITS);
    if (inTime) changeUnit(unit, FLUX_TIME_UNITS);
  }
  return unit;
}

std::string quantityDescription(const VelOutputFormat& format) {
  const bool field = format.type == VelOutputFormat::T_FIELD;
  return KeywordList::Description(field ? "VelOutputFormat::field_t" : "VelOutputFormat::flux_t",
                                  static_cast<std::uint32_t>(format.quantity));
}

void checkOutputStream(const std::ofstream& stream, const TKL::Path& path) {
  const char* const FUNC_ID = "[VelOutputs::checkOutputStream]";
  if (!stream) {
    const std::string reason = errno != 0 ? " " + TKL::systemErrorText(errno) : "";
    throw TKL::Exception("Error writing output file '" + path.absolutePath().str() + "'!" + reason, FUNC_ID);
  }
  if (!path.exists()) {
    throw TKL::Exception("Output file '" + path.absolutePath().str() + "' has been removed during the run!",
                         FUNC_ID);
  }
}

}  // namespace VELMORA
