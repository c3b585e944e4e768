#pragma once

#include "keywords/SectionText.h"
#include "project/VelSolverCVODESettings.h"

namespace VELMORA {

/// The subsection `SOLVER_SETTINGS`.
class VelSolverSettings {
 public:
  VelSolverCVODESettings cvodeSettings;

  void clear() { cvodeSettings.clear(); }

  /// Reads the settings of the integrator. Lines below the headers `GENERAL_SOLVER_OPTIONS` and
  /// `COEFFICIENT_AVERAGING`, which older project files have, are dropped unread. A header counts wherever
  /// it stands in a line.
  /// @throws TKL::Exception what `VelSolverCVODESettings::read` throws
  void read(const SectionText& text);
};

}  // namespace VELMORA
