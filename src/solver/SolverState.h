#pragma once

#include <cstddef>
#include <vector>

namespace VELMORA_SOLVER {

/// Values per element that the decomposition fills, one flat array per physical quantity, indexed by the
/// number of the element.
struct SolverState {
  std::vector<double> U;        ///< internal energy density [J/m3], zero at 0 K
  std::vector<double> mw;       ///< moisture mass density in all phases [kg/m3]
  std::vector<double> T;        ///< temperature [K]
  std::vector<double> Theta;    ///< moisture content, mw / RHO_W [m3/m3]
  std::vector<double> rhoCDry;  ///< volumetric heat capacity of the dry material [J/(m3 K)]
  std::vector<double> lambda;   ///< thermal conductivity [W/(m K)]
  std::vector<double> pAir;     ///< gas pressure [Pa]

  /// All arrays to the number of elements, 0 but for the gas pressure at its normal value.
  void resize(std::size_t nElements) {
    for (auto* quantity : {&U, &mw, &T, &Theta, &rhoCDry, &lambda}) quantity->assign(nElements, 0.0);
    pAir.assign(nElements, 101325.0);
  }
};

}  // namespace VELMORA_SOLVER
