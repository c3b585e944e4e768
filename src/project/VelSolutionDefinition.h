#pragma once

#include <string>
#include <vector>

#include "keywords/SectionText.h"

namespace VELMORA {

/// A salt solution by the concentrations of its species.
class VelSolutionDefinition {
 public:
  /// Indices of the keywords of "VelSolutionDefinition::concentration_t"; `NUM_CT` means not set.
  enum concentration_t {
    CT_MASSFRAC,  ///< [kg/kg] of the water
    CT_MOLALITY,  ///< [mol/kg]
    NUM_CT
  };

  std::string name;
  concentration_t concentrationType = NUM_CT;
  std::vector<std::string> speciesNames;
  std::vector<double> speciesConcentrations;
  std::string percentage;  ///< id name of a climate condition that scales the concentrations

  /// Reads the lines of one `SOLUTION_DEFINITION` block. An unknown keyword is warned about and skipped.
  /// @throws TKL::Exception "Expected keyword, got '%1'!", "Missing value for keyword '%1'!", and an unknown
  /// `CONCENTRATION_TYPE`
  void read(const SectionText& text);
};

}  // namespace VELMORA
