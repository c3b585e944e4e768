// Feeds arbitrary bytes to the reader of CLI files. It must hand back as many times as values, and a reason
// where it refuses.

#include <vector>

#include "climate/ClimateFile.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<double> times, values;
  std::string typeName, unitName, comment, errorText;
  const bool isRead = VELMORA::parse_CLI(VELMORA_FUZZ::textOf(data, size), "fuzz.cli", times, values,
                                         typeName, unitName, comment, errorText);
  VELMORA_FUZZ::require(isRead || !errorText.empty());
  VELMORA_FUZZ::require(times.size() == values.size());
  return 0;
}
