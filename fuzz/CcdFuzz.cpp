// Feeds arbitrary bytes to the reader of CCD files. It must hand back as many times as values, times that
// never decrease, and a reason where it refuses.

#include <algorithm>
#include <vector>

#include "climate/ClimateFile.h"
#include "FuzzSupport.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<double> times, values;
  std::string typeName, unitName, comment, errorText;
  const bool isRead = VELMORA::parse_CCD(VELMORA_FUZZ::textOf(data, size), times, values, typeName, unitName,
                                         comment, errorText);
  VELMORA_FUZZ::require(isRead || !errorText.empty());
  VELMORA_FUZZ::require(times.size() == values.size());
  VELMORA_FUZZ::require(std::is_sorted(times.begin(), times.end()));
  VELMORA_FUZZ::require(!isRead || !unitName.empty());
  return 0;
}
