#pragma once

#include <cstdint>
#include <vector>

#include "pollutant/PollutantLibrary.h"
#include "project/CalculationData.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

/// A pollutant in the elements: a part in the gas of the pores, which moves, and a part bound in the solid.
/// The first compound of the library is the one that is balanced.
///
/// With m1 the mass in the gas and m2 the mass in the solid, both per volume of the element [kg/m3]:
///
///     rho = m1 / theta_por                          density in the pore gas
///     p   = R_voc rho T                             partial pressure
///     K   = K_23 rho_sat(23 C) / rho_sat(T)         partition coefficient, colder materials bind more
///     rho_eq = m2 / K                               gas that the solid is in equilibrium with
class PollutantBalance {
 public:
  /// @param library  with compounds and the materials of `data`, in their order; must live as long as this
  PollutantBalance(const VELMORA::CalculationData& data, const POLLUTANT_LIB::PollutantLibrary& library);

  /// Density, pressure and permeability of an element from its masses, temperature and moisture content at
  /// time t [s]. Negative masses become 0.
  void decompose(std::size_t element, double t, SolverState& state) const;

  /// Density [kg/m3] of the pore gas that the solid of an element is in equilibrium with.
  double equilibriumDensity(std::size_t element, const SolverState& state) const;

  double gasConstant() const { return gasConstant_; }  ///< [J/kgK]

 private:
  /// What does not change at an element.
  struct Place {
    std::uint32_t material = 0;      ///< position in the library
    double porosity = 1.0;           ///< [m3/m3]
    double saturatedCapacity = 0.0;  ///< [kg/m3] bound where the pore gas is saturated, at 23 C
  };

  const POLLUTANT_LIB::PollutantLibrary& library_;
  double gasConstant_;
  std::vector<Place> places_;  ///< by element
};

}  // namespace VELMORA_SOLVER
