#include "climate/ClimateFile.h"

#include "foundation/StringUtilities.h"

namespace VELMORA {

bool read_climate_file(const TKL::Path& path, std::vector<double>& times, std::vector<double>& values,
                       std::string& typeName, std::string& unitName, std::string& comment,
                       std::string& errorText) {
  const char* const FUNC_ID = "[read_climate_file]";
  times.clear();
  values.clear();
  const std::string& text = path.str();
  const std::string fileName = text.substr(text.rfind('/') + 1);
  const std::size_t dot = fileName.rfind('.');
  if (dot == std::string::npos) {
    errorText = std::string(FUNC_ID) + "  File extension required to determine type of climate data file!";
    return false;
  }
  const std::string extension = TKL::to_lower(fileName.substr(dot + 1));
  if (extension == "ccd") return read_CCD(path, times, values, typeName, unitName, comment, errorText);
  if (extension == "cli") return read_CLI(path, times, values, typeName, unitName, comment, errorText);
  errorText = std::string(FUNC_ID) + "  File extension '" + extension +
              "' not recognized (only CCD and CLI supported)";
  return false;
}

}  // namespace VELMORA
