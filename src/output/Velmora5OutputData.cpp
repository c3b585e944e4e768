#include "output/Velmora5OutputData.h"

#include <bit>
#include <ctime>
#include <iomanip>
#include <ostream>
#include <sstream>
#include <stdexcept>

#include "foundation/StringUtilities.h"

namespace VELMORA {

namespace {

constexpr char ASCII_MAGIC[] = "# Velmora 5 Output file";
constexpr char BINARY_MAGIC[] = "# Velmora 5 Output file - binary 5.0";
constexpr std::size_t BINARY_MAGIC_SIZE = 40;  // filled up with NUL
constexpr char HEADER_END[] = "HDR_END";

const char* const TYPE_NAMES[] = {"FIELD", "FLUX", "UNKNOWN"};
const char* const SPACE_NAMES[] = {"SINGLE", "MEAN", "INTEGRAL", "UNKNOWN"};
const char* const TIME_NAMES[] = {"NONE", "MEAN", "INTEGRAL", "UNKNOWN"};

template <std::size_t N>
const char* nameOf(const char* const (&names)[N], std::int32_t index) {
  const bool known = index >= 0 && index < static_cast<std::int32_t>(N);
  return names[known ? static_cast<std::size_t>(index) : N - 1];
}

/// Collects values as little-endian bytes.
class Bytes {
 public:
  void u32(std::uint32_t value) {
    for (int shift = 0; shift < 32; shift += 8) data.push_back(static_cast<char>(value >> shift & 0xffu));
  }
  void i32(std::int32_t value) { u32(static_cast<std::uint32_t>(value)); }
  void f64(double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    u32(static_cast<std::uint32_t>(bits));
    u32(static_cast<std::uint32_t>(bits >> 32));
  }
  /// The stored length counts the closing NUL.
  void string(const std::string& text) {
    u32(static_cast<std::uint32_t>(text.size() + 1));
    data.append(text.c_str(), text.size() + 1);
  }
  void count(std::size_t size) { u32(static_cast<std::uint32_t>(size)); }
  void vector(const std::vector<double>& values) {
    count(values.size());
    for (const double value : values) f64(value);
  }
  void writeTo(std::ostream& stream) const {
    stream.write(data.data(), static_cast<std::streamsize>(data.size()));
  }

  std::string data;
};

/// "x y" with 12 significant digits.
std::string positionText(double x, double y) {
  return TKL::pad_text(TKL::val2string(x, 'g', 12), -9) + ' ' + TKL::val2string(y, 'g', 12);
}

void writeWidths(std::ostream& stream, const std::vector<double>& widths) {
  for (const double width : widths) stream << width << ' ';
  stream << '\n';
}

[[noreturn]] void fail(const char* functionId, const char* text) {
  throw std::runtime_error(std::string(functionId) + "  " + text);
}

}  // namespace

bool Velmora5OutputData::writeHeader(std::ostream& stream, bool withGeometry, std::string& errorText) const {
  if (outputType == OT_UNKNOWN) {
    errorText = "Output type (field or flux output) not specified.";
    return false;
  }
  if (binary) {
    writeBinaryHeader(stream, withGeometry);
  } else {
    writeAsciiHeader(stream, withGeometry);
  }
  return true;
}

void Velmora5OutputData::writeAsciiHeader(std::ostream& stream, bool withGeometry) const {
  const std::time_t now = std::time(nullptr);
  const char* const created = std::ctime(&now);  // ends in a line feed
  stream << ASCII_MAGIC << '\n'
         << "# TYPE          = " << nameOf(TYPE_NAMES, outputType) << '\n'
         << "# PROJECT_FILE  = " << projectFile.str() << '\n'
         << "# CREATED       = " << (created ? created : "\n")  //
         << "# QUANTITY      = " << quantity << '\n'
         << "# SPACE_TYPE    = " << nameOf(SPACE_NAMES, spaceType) << '\n'
         << "# TIME_TYPE     = " << nameOf(TIME_NAMES, timeType) << '\n'
         << "# VALUE_UNIT    = " << valueUnit << '\n'
         << "# TIME_UNIT     = " << timeUnit << '\n'
         << '\n';
  if (withGeometry) writeGeometryData(stream);
  stream << (outputType == OT_FIELD ? "ELEMENTS = " : "SIDES = ");
  if (withGeometry) {
    for (const std::int32_t number : numbers) stream << number << ' ';
  } else {
    stream << "0\n";
  }
  stream << "\n\n" << std::flush;
}

void Velmora5OutputData::writeGeometryData(std::ostream& stream) const {
  const char* const FUNC_ID = "[Velmora5OutputData::writeGeometryData]";
  checkMaterials(FUNC_ID);
  stream << std::left << "TABLE  MATERIALS\n";
  for (const MaterialRecord& material : materials) {
    const int color = material.color.red + 256 * material.color.green + 65536 * material.color.blue;
    stream << std::setw(10) << material.id << ' ' << std::setw(10) << color << ' ' << material.name << '\n';
  }

  checkGrid(FUNC_ID);
  stream << "\nTABLE  GRID\n";
  writeWidths(stream, gridX);
  writeWidths(stream, gridY);
  stream << gridZ.front() << '\n';

  checkElements(FUNC_ID);
  stream << "\nTABLE  ELEMENT_GEOMETRY\n";
  for (const ElementGeometryRecord& element : elementGeometry) {
    stream << std::setw(8) << element.number << ' ' << std::setw(20) << positionText(element.x, element.y)
           << "\t " << std::setw(5) << element.i << ' ' << std::setw(5) << element.j << ' '
           << element.materialId << '\n';
  }

  checkSides(FUNC_ID);
  stream << "\nTABLE  SIDES_GEOMETRY\n";
  for (const SideGeometryRecord& side : sideGeometry) {
    stream << std::setw(8) << side.number << ' ' << std::setw(20) << positionText(side.x, side.y) << "\t "
           << std::setw(6) << side.i << ' ' << std::setw(6) << side.j << ' ' << std::setw(5)
           << (side.vertical ? 1 : 0) << '\n';
  }
  stream << '\n';
}

void Velmora5OutputData::writeBinaryHeader(std::ostream& stream, bool withGeometry) const {
  std::string geometry;
  if (withGeometry) {
    std::ostringstream block;
    writeBinaryGeometryData(block);
    geometry = std::move(block).str();
  }
  Bytes bytes;
  bytes.data = BINARY_MAGIC;
  bytes.data.resize(BINARY_MAGIC_SIZE, '\0');
  bytes.i32(outputType);
  bytes.string(projectFile.isValid() ? projectFile.absolutePath().str() : std::string());
  bytes.u32(static_cast<std::uint32_t>(std::time(nullptr)));
  bytes.string(quantity);
  bytes.i32(spaceType);
  bytes.i32(timeType);
  bytes.string(valueUnit);
  bytes.string(timeUnit);
  bytes.count(geometry.size());
  bytes.data += geometry;
  bytes.count(numbers.size());
  for (const std::int32_t number : numbers) bytes.i32(number);
  bytes.string(HEADER_END);
  bytes.writeTo(stream);
  stream << std::flush;
}

void Velmora5OutputData::writeBinaryGeometryData(std::ostream& stream) const {
  const char* const FUNC_ID = "[Velmora5OutputData::writeBinaryGeometryData]";
  Bytes bytes;
  checkMaterials(FUNC_ID);
  bytes.count(materials.size());
  for (const MaterialRecord& material : materials) {
    bytes.i32(material.id);
    bytes.u32(0);  // the place of a colour, without content in this form
    bytes.string(material.name);
  }

  checkGrid(FUNC_ID);
  bytes.vector(gridX);
  bytes.vector(gridY);
  bytes.vector(gridZ);

  checkElements(FUNC_ID);
  bytes.count(elementGeometry.size());
  for (const ElementGeometryRecord& element : elementGeometry) {
    bytes.u32(element.number);
    bytes.u32(0);
    bytes.f64(element.x);
    bytes.f64(element.y);
    bytes.i32(element.i);
    bytes.i32(element.j);
    bytes.u32(element.materialId);
    bytes.u32(0);
  }

  checkSides(FUNC_ID);
  bytes.count(sideGeometry.size());
  for (const SideGeometryRecord& side : sideGeometry) {
    bytes.u32(side.number);
    bytes.u32(0);
    bytes.f64(side.x);
    bytes.f64(side.y);
    bytes.i32(side.i);
    bytes.i32(side.j);
    bytes.u32(side.vertical ? 1 : 0);  // the flag is one byte, three of padding follow
    bytes.u32(0);
  }
  bytes.writeTo(stream);
}

void Velmora5OutputData::checkMaterials(const char* functionId) const {
  if (materials.empty()) fail(functionId, "Missing data in materials table!");
}

void Velmora5OutputData::checkGrid(const char* functionId) const {
  if (gridX.empty() || gridY.empty() || gridZ.empty()) fail(functionId, "Missing or invalid grid data!");
}

void Velmora5OutputData::checkElements(const char* functionId) const {
  if (elementGeometry.empty()) fail(functionId, "Missing element geometry data!");
}

void Velmora5OutputData::checkSides(const char* functionId) const {
  if (sideGeometry.empty()) fail(functionId, "Missing side geometry data!");
}

}  // namespace VELMORA
