#pragma once

#include <string>
#include <vector>

namespace MM {

/// The kinds of building products that a material belongs to, up to three.
class MaterialCategory {
 public:
  enum CategoryID {
    MC_INVALID,
    MC_COATING,
    MC_PLASTER,
    MC_BRICK,
    MC_NATURAL_STONES,
    MC_CONCRETE,
    MC_INSULATION,
    MC_BUILDING_BOARDS,
    MC_TIMBER,
    MC_NATURAL_MATERIALS,
    MC_SOIL,
    MC_CLADDING,
    MC_FOILS,
    MC_MISC,
    NUM_MC
  };

  std::vector<CategoryID> ids;

  /// Reads blank separated keywords.
  /// @throws TKL::Exception for an unknown keyword, and "Invalid parameter value '%1' for keyword '%2'!" for
  /// more than three
  void read(const std::string& text);
};

}  // namespace MM
