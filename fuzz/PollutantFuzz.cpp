// Reads arbitrary bytes as a database of pollutants. What is accepted is asked for all its values.

#include <algorithm>
#include <exception>
#include <iostream>

#include "FuzzSupport.h"
#include "pollutant/PollutantLibrary.h"

namespace {

/// All values of a compound and a material at a few temperatures.
double evaluate(const POLLUTANT_LIB::PollutantLibrary& library) {
  double sum = library.Rv(0) + library.partC(0, 0) + library.muFactor(0, 0);
  for (const double T : {1.0, 293.15, 1000.0}) sum += library.rhoSat(0, T) + library.logKVOC(0, 0, T, 0.1);
  return sum;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static VELMORA_FUZZ::SilentMessages silence;
  static const VELMORA_FUZZ::ScratchFolder folder;
  std::cout.rdbuf(nullptr);  // unknown tables are named there
  const std::string path = folder.write("fuzz.voc", VELMORA_FUZZ::textOf(data, size));
  POLLUTANT_LIB::PollutantLibrary library;
  std::string errmsg;
  const bool read = library.readDatabase(TKL::Path(path), errmsg);
  VELMORA_FUZZ::require(read == errmsg.empty());
  constexpr std::size_t MOST_PAIRS = 100;
  volatile double sum = 0.0;
  for (std::size_t i = 0; i < std::min(library.vocMatData.size(), MOST_PAIRS); ++i) {
    const POLLUTANT_LIB::VocMatData& pair = library.vocMatData[i];
    const std::string vocId = pair.vocId, materialId = pair.materialId;
    if (library.init({vocId}, {materialId}, {10.0}, {0.5}, errmsg)) sum = sum + evaluate(library);
  }
  return 0;
}
