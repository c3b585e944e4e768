// Feeds arbitrary bytes to both climate file readers. Whatever comes in, they must return, and must hand
// back as many times as values.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "climate/ClimateFile.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view content(reinterpret_cast<const char*>(data), size);
  std::vector<double> times, values;
  std::string typeName, unitName, comment, errorText;

  const bool isCcd = VELMORA::parse_CCD(content, times, values, typeName, unitName, comment, errorText);
  if (times.size() != values.size() || (!isCcd && errorText.empty())) std::abort();

  errorText.clear();
  const bool isCli =
      VELMORA::parse_CLI(content, "fuzz.cli", times, values, typeName, unitName, comment, errorText);
  if (times.size() != values.size() || (!isCli && errorText.empty())) std::abort();
  return 0;
}
