#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "foundation/Path.h"

namespace VELMORA {

/// Reads a climate data file: one quantity as a series of times and values. The extension of the file name,
/// in any case, tells the format: CCD or CLI. All readers of this file have the same arguments.
///
/// @param path the file, without placeholders
/// @param times receives the time points [s] in file order; they never decrease in a CCD file
/// @param values receives as many values, in the unit of the file
/// @param typeName receives the word for the quantity
/// @param unitName receives the name of the unit
/// @param comment receives the comment, lines separated by line feeds
/// @param errorText receives the reason of a failure
/// @return false if the file cannot be read; nothing is thrown for bad data
bool read_climate_file(const TKL::Path& path, std::vector<double>& times, std::vector<double>& values,
                       std::string& typeName, std::string& unitName, std::string& comment,
                       std::string& errorText);

/// Reads a CCD file: comment lines, a line with quantity and unit, lines `day hh:mm:ss value`.
bool read_CCD(const TKL::Path& path, std::vector<double>& times, std::vector<double>& values,
              std::string& typeName, std::string& unitName, std::string& comment, std::string& errorText);

/// Reads a CLI file: key words, then lines of time and value behind `Data=`. A data line that cannot be read
/// ends the data.
bool read_CLI(const TKL::Path& path, std::vector<double>& times, std::vector<double>& values,
              std::string& typeName, std::string& unitName, std::string& comment, std::string& errorText);

/// `read_CCD` on the content of a file.
bool parse_CCD(std::string_view content, std::vector<double>& times, std::vector<double>& values,
               std::string& typeName, std::string& unitName, std::string& comment, std::string& errorText);

/// `read_CLI` on the content of a file; `path` serves for messages only.
bool parse_CLI(std::string_view content, const TKL::Path& path, std::vector<double>& times,
               std::vector<double>& values, std::string& typeName, std::string& unitName,
               std::string& comment, std::string& errorText);

}  // namespace VELMORA
