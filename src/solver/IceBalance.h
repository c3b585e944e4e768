#pragma once

#include <array>

#include "material/MoistureStorage.h"

namespace VELMORA_SOLVER {

/// Ice in the pores of an element below the freezing point.
///
/// Liquid water that freezes gives off heat, and the water that stays liquid is in equilibrium with the ice:
/// the smaller the pores, the colder the ice must be. With r the mass density of ice [kg/m3] both balances
/// are
///
///     U = ((mw - r) c_w + (rho c) + r c_ice) T + r h_ice             energy
///     mw - r = rho_w Theta_l(pIce(T), T)                             equilibrium, as long as r > 0
///
///     pIce(T) = rho_w ((c_w - c_ice) (T ln(T/T0) - (T - T0)) + L/T0 (T - T0))       T0 = 273.15 K
///
/// pIce is the pressure at which liquid water has the chemical potential of ice at the pressure of the air;
/// its slope at T0 is that of Clausius and Clapeyron. The first balance gives T(r), and
///
///     F(r) = r - max(mw - rho_w Theta_l(pIce(T(r)), T(r)), 0)
///
/// rises with r at least as fast as r, so that it has one root between no ice and the ice that would warm the
/// element to T0. That needs a retention curve that rises to saturation. Where the polynomial of a curve
/// between -100 Pa and saturation does not, a straight line takes its place: a matter of 0.0001 K.
class IceBalance {
 public:
  static constexpr double T_LOW = 170.0;            ///< [K] lowest temperature of the iteration
  static constexpr double T_HIGH = 273.1499999999;  ///< [K] highest one, just below the freezing point
  static constexpr double ICE_TOL = 1e-08;          ///< [kg/m3] of steps and bracket; less ice counts as none
  static constexpr double ICE_FD_STEP = 1e-10;      ///< [kg/m3] of the difference quotient
  static constexpr int WARN_AT_PASS = 20;           ///< slow convergence is told
  static constexpr int PASSES = 199;                ///< then the attempt ends

  /// @param U, mw, rhoCDry  of the element: energy [J/m3], moisture [kg/m3], dry heat capacity [J/(m3 K)]
  /// @param rises  `risesToSaturation` of its retention curve
  IceBalance(double U, double mw, double rhoCDry, const MM::MoistureStorage& storage, bool rises)
      : U_(U), mw_(mw), rhoCDry_(rhoCDry), storage_(storage), rises_(rises) {}

  /// Whether the content of a retention curve does not fall between -100 Pa and saturation.
  static bool risesToSaturation(const MM::MoistureStorage& storage);

  /// Temperature [K] that the energy gives with this ice density [kg/m3].
  double temperature(double rhoIce) const;

  /// Pressure of liquid water [Pa] in equilibrium with ice at T [K].
  /// @param logarithm  ln(T / 273.15 K)
  static double equilibriumPressure(double T, double logarithm);

  /// F [kg/m3]: by how much there is more ice than the equilibrium at its temperature allows.
  double excess(double rhoIce) const;

  /// Finds the ice density. Counts its passes in `TKL::iceIterationCount`.
  /// @param element  number for the messages
  /// @param rhoIce   [kg/m3] start of the iteration, and the result; 0 where nothing is frozen
  /// @param T        [K] result, left as it is where nothing is frozen
  /// @return 0, or 1 without convergence or when not even the freezing of all water keeps the element at
  /// `T_LOW`
  /// @throws TKL::Exception "Cannot compute valid rho_ice without dropping into invalid temperature range."
  /// and the same with "(T>=273.15)"
  int solve(int element, double& rhoIce, double& T) const;

 private:
  /// Limits of the root and the place of the iteration [kg/m3].
  struct Search {
    double lo, hi, r;
  };

  double liquidAtPressure(double pressure, double T) const;
  double excess(double rhoIce, double liquid) const;
  void addIce(Search& search) const;
  static void tell(int element, bool inAll, bool inThis);

  // Small steps of the loop of `solve`, in line.
  inline std::array<double, 2> liquids(std::array<double, 2> T) const;
  inline bool pass(Search& search) const;
  static inline bool newtonPass(Search& search, double F, double slope);
  static inline void count(int element, int passNumber);

  double U_;
  double mw_;
  double rhoCDry_;
  const MM::MoistureStorage& storage_;
  bool rises_;
};

}  // namespace VELMORA_SOLVER
