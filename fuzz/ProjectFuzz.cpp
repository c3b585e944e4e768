// Reads arbitrary bytes as a project file, sets the calculation up and evaluates the climate. A material file
// and a climate file lie beside the project. Results go into the folder of this process, whatever folder the
// project asks for.

#include <cstdlib>
#include <exception>

#include "FuzzSupport.h"
#include "project/CalculationData.h"
#include "project/VelProject.h"

namespace {

constexpr char MATERIAL_FILE[] =
    "V6MARLZ! 006.000\n\n[IDENTIFICATION]\nNAME = en:Brick\nCATEGORY = BRICK\n\n[STORAGE_BASE_PARAMETERS]\n"
    "RHO = 1800 kg/m3\nCE = 1000 J/kgK\n\n[TRANSPORT_BASE_PARAMETERS]\nLAMBDA = 0.8 W/mK\n";

constexpr char CLIMATE_FILE[] = "# two days\nTEMPER C\n0 00:00:00 -5\n1 00:00:00 2.5\n2 00:00:00 10\n";

/// What the solver relies on.
void checkGrid(const VELMORA::CalculationData& data) {
  for (const VELMORA::Side& side : data.sides) {
    const VELMORA::Element* left = side.elementLeft;
    const VELMORA::Element* right = side.elementRight;
    VELMORA_FUZZ::require(left != nullptr || right != nullptr);
    if (left == nullptr || right == nullptr) continue;
    VELMORA_FUZZ::require(std::abs(left->number - right->number) <= data.bandWidth);
  }
}

void setUp(VELMORA::VelProject& project) {
  VELMORA::CalculationData data;
  project.setup_calculation(data);
  checkGrid(data);
  for (VELMORA::VelClimateCond& condition : data.climateConds) {
    condition.prepareCalculation(project.m_placeholders.placeholderMap());
    for (const double time : {0.0, 86400.0, 1e9}) condition.calcCurrentValue(time);
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static VELMORA_FUZZ::SilentMessages silence;
  static const VELMORA_FUZZ::ScratchFolder folder;
  static const std::string material = folder.write("brick.m6", MATERIAL_FILE);
  static const std::string climate = folder.write("climate.ccd", CLIMATE_FILE);

  VELMORA::VelProject project;
  project.m_executable = folder.file("solver");
  std::string errorMessage;
  if (project.read(folder.write("fuzz.vel", VELMORA_FUZZ::textOf(data, size)), errorMessage) != 0) {
    VELMORA_FUZZ::require(!errorMessage.empty());
    return 0;
  }
  project.m_outputs.outputFolder = folder.file("results");
  try {
    setUp(project);
  } catch (const std::exception& error) {
    VELMORA_FUZZ::require(*error.what() != '\0');
  }
  return 0;
}
