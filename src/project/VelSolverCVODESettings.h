#pragma once

#include <array>
#include <cstdint>

#include "foundation/Parameter.h"
#include "keywords/SectionText.h"

namespace VELMORA {

/// Tolerances, step limits and switches of the time integration. No range is tested here.
class VelSolverCVODESettings {
 public:
  /// Indices of the keywords of "VelSolverCVODESettings::solver_para_t".
  enum solver_para_t { P_INITIAL_DT, P_MAX_DT, P_MIN_DT, NUM_P };
  /// How the linear equations of a step are solved: by the fastest way that is sure, by a band matrix, by
  /// complete sparse factors, by complete factors in blocks, or by iteration with incomplete ones.
  enum linear_solver_t { L_AUTO, L_BAND, L_KLU, L_BLOCK, L_GMRES };

  std::array<TKL::Parameter, NUM_P> para;  ///< [s] time steps
  double relTol;                           ///< [-] relative tolerance of all balance equations
  double absTol;                           ///< no keyword sets it
  double absTolEnergy;                     ///< [J/m3]
  double absTolMoisture;                   ///< [kg/m3]
  double absTolAir;                        ///< [kg/m3]
  double absTolSalt;                       ///< [kg/m3]
  double absTolPollutant;                  ///< [kg/m3]
  bool useAutoRecover;                     ///< loosen the tolerances where the integrator fails to converge
  std::int32_t maxOrder;                   ///< highest order of the method
  std::int32_t maxSteps;                   ///< internal steps between two returns of the integrator
  bool useMonitorsFile;
  bool useOneStepMonitors;
  bool preventOverfilling;
  bool useStrictRangeChecking;
  linear_solver_t linearSolver;

  VelSolverCVODESettings() { clear(); }

  /// Sets every field to its default.
  void clear();

  /// @throws TKL::Exception for a line that is no keyword line or a value that cannot be read
  void read(const SectionText& text);
};

}  // namespace VELMORA
