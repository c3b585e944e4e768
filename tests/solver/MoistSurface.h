#pragma once

#include <array>

#include "foundation/Exception.h"
#include "project/VelBoundaryCond.h"
#include "solver/BoundaryFluxes.h"
#include "solver/MoistBench.h"

namespace VELMORA_SOLVER {

constexpr double SURFACE_AREA = 0.5;     ///< [m2]
constexpr double SURFACE_G = 10.0;       ///< [1/m] of an element 0.1 m thick
constexpr double SURFACE_T = 285.0;      ///< [K] of the element
constexpr double SURFACE_PV = 900.0;     ///< [Pa]
constexpr double SURFACE_P = -2e7;       ///< [Pa] driving pressure of the liquid
constexpr double SURFACE_THETA = 0.1;    ///< [m3/m3]
constexpr double SURFACE_PSI = 1e-6;     ///< [kg/ms] Kirchhoff potential
constexpr double SURFACE_HEIGHT = 0.75;  ///< [m] of the element's centre
constexpr double CLIMATE_T = 295.0;      ///< [K]

/// One element with outer sides at its left, right, top and bottom, in a state that is set by hand.
class MoistSurface : public ::testing::Test {
 protected:
  enum location_t { LEFT, RIGHT, TOP, BOTTOM, NUM_LOCATIONS };

  MoistSurface() {
    setPotential(plaster, 4e-6);
    data.elements.resize(1);
    data.elements[0].number = 0;
    data.elements[0].y = SURFACE_HEIGHT;
    data.sides.resize(NUM_LOCATIONS);
    for (int i = 0; i < NUM_LOCATIONS; ++i) {
      VELMORA::Side& side = data.sides[static_cast<std::size_t>(i)];
      side.number = i;
      side.horizontal = i == TOP || i == BOTTOM;
      side.area = SURFACE_AREA;
      side.invDistance = SURFACE_G;
      (i == LEFT || i == TOP ? side.elementRight : side.elementLeft) = &data.elements[0];
    }
    useMaterial(plaster);
    condition.name = "Weather";
  }

  void useMaterial(const MM::Material& material) {
    data.elements[0].material = &material;
    arrays.size(data, settings);
    s.T = {SURFACE_T};
    s.pV = {SURFACE_PV};
    s.pCTotal = {SURFACE_P};
    s.Theta = {SURFACE_THETA};
    s.mw = {1000.0 * SURFACE_THETA};
    s.Kirchhoff = {SURFACE_PSI};
  }

  /// Attaches a climate condition with its current value.
  void attach(VELMORA::VelClimateCond::condition_t quantity, double value) {
    climate[quantity].condition = quantity;
    climate[quantity].currentValue = value;
    condition.climate[quantity] = &climate[quantity];
  }
  void detach(VELMORA::VelClimateCond::condition_t quantity) { condition.climate[quantity] = nullptr; }
  void set(VELMORA::VelBoundaryCond::para_t index, double value) {
    condition.para[index].setBaseValue("X", value, TKL::Unit());
  }

  /// The flows with the condition at one side only.
  void calculate(location_t location = LEFT, double t = 1000.0) {
    for (VELMORA::Side& side : data.sides) side.boundaryConds.clear();
    data.sides[location].boundaryConds.push_back(&condition);
    side_ = location;
    arrays.traits = elementTraits(data.elements, settings);
    BoundaryFluxes(data, settings, arrays.traits, s, arrays.records).calculate(t);
  }
  double moisture(VELMORA::moistureFluxSlot_t slot) const { return arrays.records.moistureFlux[side_][slot]; }
  double heat(VELMORA::heatFluxSlot_t slot) const { return arrays.records.heatFlux[side_][slot]; }

  MM::Material plaster = moistMaterial();
  ModelSettings settings = moistSettings();
  VELMORA::CalculationData data;
  VELMORA::VelBoundaryCond condition;
  std::array<VELMORA::VelClimateCond, VELMORA::VelClimateCond::NUM_C> climate;
  MoistArrays arrays;
  SolverState& s = arrays.state;
  TKL::MessageCapture capture;

 private:
  std::size_t side_ = LEFT;
};

}  // namespace VELMORA_SOLVER
