#pragma once

#include <cstddef>
#include <iosfwd>
#include <span>
#include <string>

#include "foundation/Unit.h"
#include "output/OutputSource.h"
#include "project/VelOutputFile.h"

namespace VELMORA {

/// Appends one record of a field file to a stream.
/// @param t [s] time of the record
/// @param values by element number, in the base unit of the value unit of the format
void writeSingleValueField(double t, const VelOutputFile& file, std::ostream& stream,
                           std::span<const double> values);

/// Appends one record of a flux file to a stream. Fluxes through horizontal sides are turned, so that they
/// are positive upwards.
/// @param t [s] time of the record
/// @param values by side number, flows in the base unit of the value unit of the format
void writeSingleValueFlux(double t, const VelOutputFile& file, std::ostream& stream,
                          std::span<const double> values);

/// The same for one slot of the records of all sides.
/// @throws TKL::Exception "Invalid input (empty data vector or index out of range)!"
void writeSingleValueFlux(double t, const VelOutputFile& file, std::ostream& stream,
                          const RecordView& slotValues, std::size_t slot);

/// The same for values in the order of the sides of the file.
void writeFluxRecord(double t, const VelOutputFile& file, std::ostream& stream,
                     std::span<const double> flows);

/// A time [s] in the time unit of a format.
double timeInUnit(double t, const VelOutputFormat& format);

/// Text of a number with the precision and the float format of a stream, in the C locale.
std::string formatNumber(double value, const std::ios_base& stream);

}  // namespace VELMORA
