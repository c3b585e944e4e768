#pragma once

#include <cstdint>
#include <vector>

#include "foundation/BandMatrix.h"
#include "grid/Element.h"
#include "grid/Side.h"

namespace VELMORA {

class VelBoundaryCond;

/// Gas pressure of the elements and mass flow of dry air through the sides, from a steady balance of air.
///
/// Air flows through pores and gaps in proportion to the gradient of its pressure, so that with K for the air
/// conductivity of a side [s], A for its area and g = 2 / (d_L + d_R)
///
///     m = K A (p_L - p_R) g                            through a vertical side [kg/s], positive to the right
///     m = K A ((p_L - p_R) g + rho g_n)                through a horizontal side, positive downwards
///     rho = w_L rho_L + w_R rho_R,  rho_e = p_e / (R_A T_e)
///
/// and the flows of every element sum up to 0. At the outside the flow is `EXCOEFF` A (p_C - p), or follows
/// the law of an opening. The balance is linear: temperatures, water contents and densities are those of the
/// last update. Elements and sides must keep their vectors while this object lives.
class AirFlowLibrary {
 public:
  /// Takes the construction over. `kind` 0 is the linear balance, the only one.
  /// @param elementBandWidth  largest distance of the numbers of two neighbours
  /// @param buoyancy          the weight of air drives it
  void init(int kind, const std::vector<Element>& elements, const std::vector<Side>& sides,
            int elementBandWidth, bool buoyancy);

  /// Brings pressures [Pa] and flows [kg/s] to the time t [s]. Temperatures, water contents and climate
  /// must be those of that time, the pressures those of the last update.
  /// @throws TKL::Exception without `temperature` and `thetaL`, for a condition without its climate, and
  /// for a construction whose pressures are not determined
  void calculate(double t, std::vector<double>& pAir, std::vector<double>& airMassFlux);

  /// Forgets the construction.
  void clear();

  std::int32_t updateCount = 0;                      ///< updates so far
  std::vector<double> sideResistance;                ///< [m/s] of contact conditions, by side
  const std::vector<double>* temperature = nullptr;  ///< [K] by element, not owned
  const std::vector<double>* thetaL = nullptr;       ///< [m3/m3] liquid content by element, not owned

  // What the last update has found, for inspection.
  std::int32_t kind = 0;
  std::uint32_t nElements = 0;
  std::uint32_t nSides = 0;
  double t = 0.0;  ///< [s] of the current update
  bool useBuoyancy = false;
  std::vector<double> kGElement;  ///< [s] air conductivity by element
  std::vector<double> kGSide;     ///< [s] air conductivity by side
  std::vector<double> rhs;        ///< [Pa] difference of the pressure to the normal one

 private:
  static constexpr double NORMAL_PRESSURE = 101325.0;  ///< [Pa]

  /// Condition of the air in front of a surface.
  struct Climate {
    double pressure = 0.0;     ///< [Pa]
    double temperature = 0.0;  ///< [K]
  };

  void calculateLinearPressureGradient();
  void calculateConductivities();
  void buildAirMatrix(const Element& element, const Element* neighbour, const Side& side, bool leftOrTop);
  void addOuterSide(const Element& element, const Side& side);
  void addToDiagonal(const Element& element, double coefficient);
  bool anchorPressures();
  bool hasIdleOpening() const;
  void anchorNeighbours(std::vector<std::size_t>& open);
  void warnOfEnclosure(const Element& element) const;
  void checkPressures() const;
  double innerFlow(const Side& side) const;
  void setOuterFlow(const Side& side);
  double outerFlow(const VelBoundaryCond& condition, const Side& side) const;
  double density(const Element& element) const;
  static bool exchangesAir(const VelBoundaryCond& condition);
  bool acts(const VelBoundaryCond& condition) const;
  static Climate climateOf(const VelBoundaryCond& condition, const char* functionId);

  const std::vector<Element>* elements_ = nullptr;
  const std::vector<Side>* sides_ = nullptr;
  std::vector<double>* pAir_ = nullptr;
  std::vector<double>* airMassFlux_ = nullptr;
  TKL::BandMatrix matrix_;
  std::vector<double> density_;         ///< [kg/m3] by element, at the pressures of the last update
  std::vector<double> fromOutside_;     ///< [kg/(s Pa)] coupling of each element with the outside
  std::vector<std::uint8_t> anchored_;  ///< 1 where the pressure is determined
};

}  // namespace VELMORA
