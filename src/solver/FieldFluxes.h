#pragma once

#include <array>
#include <vector>

#include "project/CalculationData.h"
#include "solver/ElementTraits.h"
#include "solver/FluxRecords.h"
#include "solver/ModelSettings.h"
#include "solver/SolverState.h"

namespace VELMORA_SOLVER {

/// Flows through the sides between two elements, from the values that the decomposition has found.
///
/// With L and R for the two elements, w for the share of each in the sum of their widths, A for the area and
/// g = 2 / (d_L + d_R):
///
///     heat     Q  = lambda A g (T_L - T_R)         lambda = w_L lambda_L + w_R lambda_R
///     vapour   jv = Kv A g (pV_L - pV_R)           Kv likewise
///     vapour   jv = m pV_u R_A / (p_u R_V)         with the air m that flows, from the element u upwind
///     liquid   jl = A g (Psi_L - Psi_R - dPsi)     Kirchhoff form, dPsi the jump between two materials
///              jl = Kl A g (p_L - p_R)             conductivity form, Kl likewise
///
/// A contact resistance R is in series: K becomes K / (R g K + 1). Each mass flow carries the enthalpy of
/// the element that it comes from.
class FieldFluxes {
 public:
  /// All arguments must live as long as this object; `data` must keep its vectors.
  FieldFluxes(const VELMORA::CalculationData& data, const ModelSettings& settings,
              const std::vector<ElementTraits>& traits, const SolverState& state, FluxRecords& records);

  /// The flows through all inner sides, with their sums.
  /// @throws TKL::Exception for a contact condition that has no formula
  void calculate();

 private:
  enum class LiquidForm { NONE, CONDUCTIVITY, KIRCHHOFF, KIRCHHOFF_WITH_JUMP };

  /// What one side needs of its neighbours, in one place for the loop over all inner sides.
  struct InnerSide {
    std::size_t number = 0;
    std::size_t left = 0;
    std::size_t right = 0;
    double weightLeft = 0.0;
    double weightRight = 0.0;
    double areaByDistance = 0.0;  ///< [m]
    double heatSlowing = 0.0;     ///< resistance of contact conditions by the distance [mK/W]
    double vapourSlowing = 0.0;   ///< the same for vapour [1/s]
    double liquidSlowing = 0.0;   ///< the same for liquid [1/s]
    bool vapourOpen = false;
    bool isSpecial = false;  ///< one of the conditions below, or a liquid form other than the plain potential
    LiquidForm liquidForm = LiquidForm::NONE;
    double area = 0.0;         ///< [m2]
    double invDistance = 0.0;  ///< [1/m]
    const VELMORA::Side* side = nullptr;
    const VELMORA::VelContactCond* airHeat = nullptr;       ///< heat transfer between air and a material
    const VELMORA::VelContactCond* airVapour = nullptr;     ///< vapour transfer between air and a material
    const VELMORA::VelContactCond* adaptiveFoil = nullptr;  ///< its resistance depends on the humidities
    std::size_t air = 0;                                    ///< place of the air beside a material
  };

  /// Air beside a material, whose velocity speeds up the exchange.
  struct AirSpace {
    std::size_t element = 0;
    std::array<int, 4> sides{};   ///< numbers of its left, right, top and bottom side, or -1
    std::array<int, 2> across{};  ///< the two of them that the exchange is told by for vapour
  };

  /// Conducted heat through a side [W] and the masses through it that carry heat [kg/s].
  struct Flows {
    double heat = 0.0;
    double vapour = 0.0;  ///< by diffusion
    double liquid = 0.0;
    double air = 0.0;        ///< dry
    double airVapour = 0.0;  ///< in the air that passes
  };

  void addAirSpace(InnerSide& inner);
  InnerSide innerSide(const VELMORA::Side& side, const VELMORA::SideQuantities& quantities);
  LiquidForm liquidForm(const InnerSide& side, double liquidResistance) const;

  template <bool ENERGY, bool MOISTURE, bool AIR>
  void calculateSides();
  template <bool AIR>
  static inline void recordMoisture(const Flows& flows, double* flux);
  template <bool MOISTURE, bool AIR>
  static inline void recordHeat(const Flows& flows, double left, double right, double* flux);
  void takeSpecialFlows(const InnerSide& side, Flows& flows) const;
  double exchangedHeat(const InnerSide& side) const;
  double exchangedVapour(const InnerSide& side) const;
  double foilResistance(const InnerSide& side) const;
  bool isClosedByFoil(const InnerSide& side) const;
  double vapourThroughFoil(const InnerSide& side) const;
  double specialLiquid(const InnerSide& side) const;
  double potentialJump(const InnerSide& side) const;
  bool isAnyAlmostFull() const;
  void limitOverfilling(const InnerSide& side);

  // Air beside materials, AirSpaces.cpp
  double largestAirVelocity(const InnerSide& side) const;
  double meanAirVelocity(const InnerSide& side) const;
  double airDensity(std::size_t element) const;
  double airFlow(int side) const;
  bool dependsOnVelocity(const VELMORA::VelContactCond& contact) const;

  const ModelSettings& settings_;
  const std::vector<ElementTraits>& traits_;
  const SolverState& state_;
  FluxRecords& records_;
  std::vector<InnerSide> sides_;
  std::vector<double> capacity_;  ///< largest moisture mass of each element [kg/m3]
  std::vector<AirSpace> airSpaces_;
};

}  // namespace VELMORA_SOLVER
