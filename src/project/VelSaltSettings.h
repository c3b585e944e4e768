#pragma once

#include <string>

#include "foundation/Path.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// Settings of salt transport, the subsection `SALT_SETTINGS`. They are read and kept only: the balance
/// equation of salt is not solved.
class VelSaltSettings {
 public:
  TKL::Path saltDatabase;
  std::string saltSpeciesIds;  ///< identifiers as written
  bool useExtraSaltOutput = false;
  bool useDensity = true;
  double flowResistanceFactor = 0.0;
  bool useOversaturation = false;

  void clear() { *this = VelSaltSettings(); }

  /// @throws TKL::Exception for a line that is no keyword line or a number that cannot be read
  void read(const SectionText& text);
};

}  // namespace VELMORA
