#include "output/OutputRecord.h"

#include <algorithm>
#include <array>
#include <bit>
#include <charconv>
#include <ostream>
#include <vector>

#include "foundation/Exception.h"
#include "foundation/StringUtilities.h"
#include "foundation/UnitList.h"
#include "foundation/UnitVector.h"
#include "output/OutputFiles.h"

namespace VELMORA {

namespace {

constexpr int VALUE_WIDTH = 15;
constexpr int TIME_WIDTH = 12;
constexpr int MAX_PRECISION = 100;

/// A unit that is not set means values in the base unit.
void convertFromBase(std::vector<double>& values, const TKL::Unit& unit) {
  TKL::UnitVector converted;
  converted.IO_unit = unit.base();
  converted.data = std::move(values);
  converted.convert(unit);
  values = std::move(converted.data);
}

void appendLittleEndian(std::string& bytes, double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  for (int shift = 0; shift < 64; shift += 8) bytes.push_back(static_cast<char>(bits >> shift & 0xffu));
}

void writeBinaryRecord(double time, std::ostream& stream, const std::vector<double>& values) {
  std::string bytes;
  bytes.reserve((values.size() + 1) * sizeof(double));
  appendLittleEndian(bytes, time);
  for (const double value : values) appendLittleEndian(bytes, value);
  stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  stream.flush();
}

/// A line of padded values for single values; the one value of a mean or an integral stands alone.
void writeTextRecord(double time, std::ostream& stream, const std::vector<double>& values, bool single) {
  std::string line = TKL::pad_text(TKL::val2string(time), -TIME_WIDTH) + " \t";
  for (const double value : values) {
    const std::size_t start = line.size();
    line += formatNumber(value, stream);
    if (!single) continue;
    line.resize(std::max(line.size(), start + VALUE_WIDTH), ' ');
    line += ' ';
  }
  line += '\n';
  stream.write(line.data(), static_cast<std::streamsize>(line.size()));
  stream.flush();
}

void writeRecord(double t, const VelOutputFile& file, std::ostream& stream,
                 const std::vector<double>& values) {
  const double time = timeInUnit(t, *file.format);
  if (writesBinary(file)) {
    writeBinaryRecord(time, stream, values);
  } else {
    writeTextRecord(time, stream, values, file.format->spaceType == VelOutputFormat::S_SINGLE);
  }
}

double mean(double sum, double measure) {
  return measure != 0.0 ? sum / measure : 0.0;
}

}  // namespace

void writeSingleValueField(double t, const VelOutputFile& file, std::ostream& stream,
                           std::span<const double> values) {
  std::vector<double> shown;
  shown.reserve(file.elements.size());
  for (const Element* element : file.elements) {
    shown.push_back(values[static_cast<std::size_t>(element->number)]);
  }
  convertFromBase(shown, file.format->valueUnit);
  if (file.format->spaceType != VelOutputFormat::S_SINGLE) {
    double sum = 0.0;
    double volume = 0.0;
    for (std::size_t i = 0; i < shown.size(); ++i) {
      sum += shown[i] * file.elements[i]->volume;
      volume += file.elements[i]->volume;
    }
    shown = {file.format->spaceType == VelOutputFormat::S_MEAN ? mean(sum, volume) : sum};
  }
  writeRecord(t, file, stream, shown);
}

void writeSingleValueFlux(double t, const VelOutputFile& file, std::ostream& stream,
                          std::span<const double> values) {
  writeSingleValueFlux(t, file, stream, RecordView{values, 1}, 0);
}

void writeSingleValueFlux(double t, const VelOutputFile& file, std::ostream& stream,
                          const RecordView& slotValues, std::size_t slot) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::writeSingleValueFlux]";
  if (slotValues.empty() || slot >= slotValues.nSlots) {
    throw TKL::Exception("Invalid input (empty data vector or index out of range)!", FUNC_ID);
  }
  std::vector<double> flows;
  flows.reserve(file.sides.size());
  for (const Side* side : file.sides) {
    flows.push_back(slotValues.at(static_cast<std::size_t>(side->number), slot));
  }
  writeFluxRecord(t, file, stream, flows);
}

void writeFluxRecord(double t, const VelOutputFile& file, std::ostream& stream,
                     std::span<const double> flows) {
  std::vector<double> shown(flows.begin(), flows.end());
  convertFromBase(shown, file.format->valueUnit);
  double sum = 0.0;
  double area = 0.0;
  for (std::size_t i = 0; i < shown.size(); ++i) {
    const Side& side = *file.sides[i];
    const double flow = side.horizontal ? -shown[i] : shown[i];
    sum += flow;
    area += side.area;
    shown[i] = mean(flow, side.area);  // a side on the axis of rotation has no area
  }
  if (file.format->spaceType != VelOutputFormat::S_SINGLE) {
    shown = {file.format->spaceType == VelOutputFormat::S_MEAN ? mean(sum, area) : sum};
  }
  writeRecord(t, file, stream, shown);
}

double timeInUnit(double t, const VelOutputFormat& format) {
  TKL::UnitList::instance().convert(format.timeUnit.base(), format.timeUnit, t);
  return t;
}

std::string formatNumber(double value, const std::ios_base& stream) {
  const auto floatField = stream.flags() & std::ios_base::floatfield;
  const auto format = floatField == std::ios_base::fixed        ? std::chars_format::fixed
                      : floatField == std::ios_base::scientific ? std::chars_format::scientific
                                                                : std::chars_format::general;
  const int precision = static_cast<int>(std::min<std::streamsize>(stream.precision(), MAX_PRECISION));
  std::array<char, 512> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, format, precision);
  return std::string(buffer.data(), result.ptr);
}

}  // namespace VELMORA
