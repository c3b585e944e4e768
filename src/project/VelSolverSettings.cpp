#include "project/VelSolverSettings.h"

#include <array>

namespace VELMORA {

void VelSolverSettings::read(const SectionText& text) {
  constexpr std::size_t CVODE = 0;
  constexpr std::array<const char*, 3> HEADERS = {"CVODE_SOLVER_SETTINGS", "GENERAL_SOLVER_OPTIONS",
                                                  "COEFFICIENT_AVERAGING"};
  SectionText cvodeText;
  std::size_t current = CVODE;
  for (const TextLine& line : text) {
    std::size_t header = 0;
    while (header < HEADERS.size() && line.text.find(HEADERS[header]) == std::string::npos) ++header;
    if (header < HEADERS.size())
      current = header;
    else if (current == CVODE)
      cvodeText.append(line);
  }
  cvodeSettings.read(cvodeText);
}

}  // namespace VELMORA
