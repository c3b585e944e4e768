#pragma once

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "foundation/Path.h"
#include "output/OutputConstruction.h"
#include "project/VelOutputFile.h"

namespace VELMORA {

/// One stream for each output file, null for a file that is not written.
using OutputStreams = std::vector<std::unique_ptr<std::ofstream>>;

/// Opens all output files and gives them their headers; after a restart they are continued instead. A file
/// whose quantity belongs to a balance equation that is not solved gets a warning and no stream. Writes
/// "constr.txt" as well.
/// @throws TKL::Exception "Error creating output file '...'!", and what `writeHeader` and
/// `writeMaterialBoundaries` throw
void initOutputFiles(const std::vector<VelOutputFile>& outputFiles, const OutputConstruction& construction,
                     OutputStreams& outputStreams, bool restart);

/// Writes the header of one file, with the geometry where the file holds at least two single values.
/// @throws TKL::Exception "Error while writing element definitions, ..." for a material that is not in the
/// list
void writeHeader(std::ostream& stream, const VelOutputFile& file, const OutputConstruction& construction);

/// True where header and records of a file are binary: single values, at least two of them.
bool writesBinary(const VelOutputFile& file);

/// Writes the lines along which the material changes, for drawings: start, end, position of the line, and 0
/// for a horizontal or 1 for a vertical one.
/// @throws TKL::Exception where the file cannot be written
void writeMaterialBoundaries(const TKL::Path& path, const OutputConstruction& construction);

/// Name of the unit that values in `unit` have after the integrations that a format asks for.
std::string integratedUnit(const VelOutputFormat& format, std::string unit);

/// Keyword description of the quantity that a format names.
std::string quantityDescription(const VelOutputFormat& format);

/// @throws TKL::Exception that names the file and the system's reason, if the stream has failed or its file
/// is gone
void checkOutputStream(const std::ofstream& stream, const TKL::Path& path);

}  // namespace VELMORA
