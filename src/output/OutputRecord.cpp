#include "output/OutputRecord.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <memory>
#include <ostream>
#include <vector>

#include "foundation/Exception.h"
#include "foundation/NumberText.h"
#include "foundation/StringUtilities.h"
#include "foundation/UnitList.h"
#include "foundation/UnitVector.h"
#include "output/OutputFiles.h"

namespace VELMORA {

namespace {

constexpr std::size_t VALUE_WIDTH = 15;
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

void writeLittleEndian(char* out, double value) {
  const auto bits = std::bit_cast<std::uint64_t>(value);
  if constexpr (std::endian::native == std::endian::little)
    std::memcpy(out, &bits, sizeof bits);
  else
    for (int i = 0; i < 8; ++i) out[i] = static_cast<char>(bits >> (8 * i) & 0xffu);
}

void writeBinaryRecord(double time, std::ostream& stream, const std::vector<double>& values) {
  const std::size_t size = (values.size() + 1) * sizeof(double);
  const auto bytes = std::make_unique_for_overwrite<char[]>(size);
  char* out = bytes.get();
  writeLittleEndian(out, time);
  for (const double value : values) writeLittleEndian(out += sizeof(double), value);
  stream.write(bytes.get(), static_cast<std::streamsize>(size));
  stream.flush();
}

TKL::NumberFormat numberFormat(const std::ios_base& stream) {
  const auto floatField = stream.flags() & std::ios_base::floatfield;
  const auto form = floatField == std::ios_base::fixed        ? std::chars_format::fixed
                    : floatField == std::ios_base::scientific ? std::chars_format::scientific
                                                              : std::chars_format::general;
  return {form, static_cast<int>(std::min<std::streamsize>(stream.precision(), MAX_PRECISION))};
}

/// A line of padded values for single values; the one value of a mean or an integral stands alone.
void writeTextRecord(double time, std::ostream& stream, const std::vector<double>& values, bool single) {
  constexpr char BLANKS[] = "                ";
  static_assert(sizeof BLANKS == VALUE_WIDTH + 2);
  constexpr std::size_t PIECE = 4096;
  const TKL::NumberFormat format = numberFormat(stream);
  std::string line = TKL::pad_text(TKL::val2string(time), -TIME_WIDTH) + " \t";
  line.reserve(line.size() + values.size() * (VALUE_WIDTH + 1) + 1);
  std::array<char, PIECE + TKL::MAX_NUMBER_TEXT + VALUE_WIDTH + 1> piece;
  char* out = piece.data();
  for (const double value : values) {
    char* const end = TKL::writeNumber(out, value, format);
    const auto length = static_cast<std::size_t>(end - out);
    out = end;
    if (single) {
      std::memcpy(out, BLANKS, VALUE_WIDTH + 1);
      out += length < VALUE_WIDTH ? VALUE_WIDTH + 1 - length : 1;
    }
    if (out > piece.data() + PIECE) {
      line.append(piece.data(), out);
      out = piece.data();
    }
  }
  line.append(piece.data(), out);
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
  std::vector<double> shown(file.elements.size());
  for (std::size_t i = 0; i < shown.size(); ++i)
    shown[i] = values[static_cast<std::size_t>(file.elements[i]->number)];
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
  std::array<char, TKL::MAX_NUMBER_TEXT> text;
  return std::string(text.data(), TKL::writeNumber(text.data(), value, numberFormat(stream)));
}

}  // namespace VELMORA
