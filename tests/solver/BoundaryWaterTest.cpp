#include <gtest/gtest.h>

#include <cmath>

#include "solver/MoistSurface.h"
#include "support/AllocationCounter.h"
#include "support/Thrown.h"

namespace VELMORA_SOLVER {

namespace {

using VELMORA::VelBoundaryCond;
using VELMORA::VelClimateCond;

const char* const WATER_TAG = "[VelmoraCvodeSolver::boundaryFluxWaterContact]";
constexpr double PREHEAD = -500.0;             // [m] of water
constexpr double SUCTION = PREHEAD * 9806.65;  // [Pa]
constexpr double LATE = 1000.0;                // [s] long after the start
constexpr double IMPOSED = 3e-4;               // [kg/m2s]

/// Potential [kg/ms] of the surface at a pressure [Pa] and the temperature of the element.
double surfacePotential(double p) {
  return 4e-6 * std::exp(p / (KELVIN_FACTOR * SURFACE_T));
}

/// Liquid water at a surface, under a suction of 500 m of water.
class BoundaryWaterTest : public MoistSurface {
 protected:
  BoundaryWaterTest() {
    condition.condition = VelBoundaryCond::C_WATCONTC;
    condition.kind = VelBoundaryCond::K_SURFVAL;
    attach(VelClimateCond::C_TEMPER, CLIMATE_T);
    attach(VelClimateCond::C_PREHEAD, PREHEAD);
  }
  double liquid() const { return moisture(VELMORA::MF_LIQUID); }
  double enthalpy() const { return heat(VELMORA::HF_LIQUID); }
  TKL::Thrown failure() {
    return TKL::thrownBy([&] { calculate(); });
  }
  TKL::Thrown missing(const std::string& quantity) {
    return {"Error in boundary condition 'Weather' with type 'WATCONTC'.\nClimate condition of type '" +
                quantity + "' needs to be specified!",
            WATER_TAG};
  }
  void impose(double q) {
    condition.kind = VelBoundaryCond::K_IMPFLUX;
    attach(VelClimateCond::C_WATFLUXDENS, q);
  }
  /// Water up to a height [m] above the bottom of the construction.
  void waterTable(double height) {
    condition.kind = VelBoundaryCond::K_HYDROSTATIC;
    attach(VelClimateCond::C_PREHEAD, height);
    s.mw = {0.0};
  }
};

const double SURFACE_FLOW = 2.0 * (surfacePotential(SUCTION) - SURFACE_PSI) * SURFACE_G * SURFACE_AREA;

void expectWater(double actual, double expected) {
  EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
}

}  // namespace

TEST_F(BoundaryWaterTest, inflow_isPositiveAtLeftAndTopAndNegativeAtRightAndBottom) {
  for (const auto location : {LEFT, TOP}) {
    calculate(location);
    expectWater(liquid(), SURFACE_FLOW);
    expectWater(enthalpy(), SURFACE_FLOW * 4180.0 * CLIMATE_T);
  }
  for (const auto location : {RIGHT, BOTTOM}) {
    calculate(location);
    expectWater(liquid(), -SURFACE_FLOW);
    expectWater(enthalpy(), -SURFACE_FLOW * 4180.0 * CLIMATE_T);
  }
}

TEST_F(BoundaryWaterTest, sums_areThoseOfTheOnlyContribution) {
  calculate();
  EXPECT_EQ(moisture(VELMORA::MF_SUM), liquid());
  EXPECT_EQ(heat(VELMORA::HF_SUM), enthalpy());
}

TEST_F(BoundaryWaterTest, outflow_carriesTheEnthalpyOfTheElement) {
  s.Kirchhoff = {3.9e-6};
  calculate();
  ASSERT_LT(liquid(), 0.0);
  expectWater(enthalpy(), liquid() * 4180.0 * SURFACE_T);
}

TEST_F(BoundaryWaterTest, withoutPotential_meanConductivityActsOverHalfTheElement) {
  settings.useKirchhoff = false;
  calculate();
  const double content = std::pow(10.0, -20.0 + 12.0 * SURFACE_THETA / MOIST_EFF);
  const double saturated = std::pow(10.0, -8.0);
  const double mean = 0.5 * (content + saturated);
  EXPECT_NEAR(liquid(), mean * (SUCTION - SURFACE_P) / (0.5 / SURFACE_G) * SURFACE_AREA,
              1e-10 * std::fabs(liquid()));
}

TEST_F(BoundaryWaterTest, withoutPotential_diffusivityIsNotEnough) {
  settings.useKirchhoff = false;
  const MM::Material other = moistMaterial(moistText("", MOIST_STORAGE, MOIST_DL));
  useMaterial(other);
  for (const auto kind : {VelBoundaryCond::K_SURFVAL, VelBoundaryCond::K_HYDROSTATIC}) {
    condition.kind = kind;
    attach(VelClimateCond::C_PREHEAD, 1.0);
    EXPECT_EQ(failure(), (TKL::Thrown{"Kl(Thetal) function not available!", WATER_TAG}));
  }
}

TEST_F(BoundaryWaterTest, start_isAFluxOfZero) {
  calculate(LEFT, 0.0);
  EXPECT_EQ(liquid(), 0.0);
  EXPECT_EQ(enthalpy(), 0.0);
}

TEST_F(BoundaryWaterTest, flux_setsInOverTwoSeconds) {
  calculate(LEFT, 1.0);
  expectWater(liquid(), 0.5 * SURFACE_FLOW);
  calculate(LEFT, 0.5);
  expectWater(liquid(), (3.0 / 16.0 - 2.0 / 64.0) * SURFACE_FLOW);
  calculate(LEFT, 2.0);
  expectWater(liquid(), SURFACE_FLOW);
}

TEST_F(BoundaryWaterTest, fluxWithoutPotential_setsInLikewise) {
  settings.useKirchhoff = false;
  calculate(LEFT, LATE);
  const double full = liquid();
  calculate(LEFT, 1.0);
  expectWater(liquid(), 0.5 * full);
}

TEST_F(BoundaryWaterTest, flux_setsInFromTheStartOfTheCondition) {
  condition.startTime.set("START_TIME", LATE, "s");
  calculate(LEFT, LATE + 1.0);
  expectWater(liquid(), 0.5 * SURFACE_FLOW);
}

TEST_F(BoundaryWaterTest, waterTable_pressesByItsHeightAboveTheElement) {
  waterTable(SURFACE_HEIGHT + 2.0);
  calculate();
  const double p = (SURFACE_HEIGHT + 2.0) * 9806.65 - SURFACE_HEIGHT * 1000.0 * 9.80665;
  ASSERT_NEAR(p, 2.0 * 9806.65, 1e-9);
  // above saturation the content grows by a small slope, where the table of the potential ends
  expectWater(liquid(), 2.0 * (4e-6 - SURFACE_PSI) * SURFACE_G * SURFACE_AREA);
}

TEST_F(BoundaryWaterTest, waterTableWithoutPotential_actsByThePressure) {
  settings.useKirchhoff = false;
  waterTable(SURFACE_HEIGHT + 2.0);
  calculate();
  const double conductivities = std::pow(10.0, -20.0 + 12.0 * 0.5) + 1e-8;
  EXPECT_NEAR(liquid(), (2.0 * 9806.65 - SURFACE_P) * conductivities * SURFACE_G * SURFACE_AREA,
              1e-10 * liquid());
}

TEST_F(BoundaryWaterTest, waterTableBelowTheElement_doesNotTouchIt) {
  waterTable(SURFACE_HEIGHT - 0.001);
  calculate();
  EXPECT_EQ(liquid(), 0.0);
  EXPECT_EQ(enthalpy(), 0.0);
}

TEST_F(BoundaryWaterTest, waterTableAtTheCentreOfTheElement_touchesIt) {
  waterTable(0.0);
  data.elements[0].y = 0.0;
  calculate();
  expectWater(liquid(), 2.0 * (4e-6 - SURFACE_PSI) * SURFACE_G * SURFACE_AREA);
}

TEST_F(BoundaryWaterTest, suction_isNoWaterTable) {
  condition.kind = VelBoundaryCond::K_HYDROSTATIC;
  calculate();
  EXPECT_EQ(liquid(), 0.0);
}

TEST_F(BoundaryWaterTest, imposedFlux_isTimesTheArea) {
  impose(IMPOSED);
  calculate();
  expectWater(liquid(), IMPOSED * SURFACE_AREA);
  expectWater(enthalpy(), IMPOSED * SURFACE_AREA * 4180.0 * CLIMATE_T);
  calculate(RIGHT);
  expectWater(liquid(), -IMPOSED * SURFACE_AREA);
}

TEST_F(BoundaryWaterTest, imposedOutflow_carriesTheEnthalpyOfTheElement) {
  impose(-IMPOSED);
  calculate();
  expectWater(enthalpy(), -IMPOSED * SURFACE_AREA * 4180.0 * SURFACE_T);
}

TEST_F(BoundaryWaterTest, imposedFlux_setsInAtOnce) {
  impose(IMPOSED);
  calculate(LEFT, 0.0);
  expectWater(liquid(), IMPOSED * SURFACE_AREA);
}

TEST_F(BoundaryWaterTest, climateOfAKind_isAskedFor) {
  detach(VelClimateCond::C_PREHEAD);
  EXPECT_EQ(failure(), missing("PREHEAD"));
  condition.kind = VelBoundaryCond::K_HYDROSTATIC;
  EXPECT_EQ(failure(), missing("PREHEAD"));
  condition.kind = VelBoundaryCond::K_IMPFLUX;
  EXPECT_EQ(failure(), missing("WATFLUXDENS"));
  detach(VelClimateCond::C_TEMPER);
  EXPECT_EQ(failure(), missing("TEMPER"));
}

TEST_F(BoundaryWaterTest, otherKinds_areRefused) {
  for (const auto kind : {VelBoundaryCond::K_EXCHANGE, VelBoundaryCond::K_EXCHANGE_VEL}) {
    condition.kind = kind;
    EXPECT_EQ(failure(),
              (TKL::Thrown{"Invalid kind type for water contact boundary condition 'Weather'.", WATER_TAG}));
  }
}

TEST_F(BoundaryWaterTest, waterTightSurface_needsNothingAndTakesNothing) {
  const MM::Material tight = moistMaterial(moistText("WATER_TIGHT", MOIST_STORAGE, ""));
  const MM::Material air = airMaterial();
  detach(VelClimateCond::C_TEMPER);
  for (const MM::Material* material : {&tight, &air}) {
    useMaterial(*material);
    calculate();
    EXPECT_EQ(liquid(), 0.0);
    EXPECT_EQ(enthalpy(), 0.0);
  }
}

TEST_F(BoundaryWaterTest, almostFullElement_takesHalf) {
  impose(IMPOSED);
  s.mw = {200.0 - 0.04};
  for (const auto location : {LEFT, RIGHT, TOP, BOTTOM}) {
    calculate(location);
    const double half = 0.5 * IMPOSED * SURFACE_AREA;
    EXPECT_NEAR(std::fabs(liquid()), half, 1e-9 * half);
    EXPECT_NEAR(std::fabs(enthalpy()), half * 4180.0 * CLIMATE_T, 1e-9 * half * 4180.0 * CLIMATE_T);
    EXPECT_EQ(moisture(VELMORA::MF_SUM), liquid());
  }
}

TEST_F(BoundaryWaterTest, almostFullElement_losesAllThatIsDrawn) {
  impose(-IMPOSED);
  s.mw = {200.0 - 0.04};
  for (const auto location : {LEFT, RIGHT, TOP, BOTTOM}) {
    calculate(location);
    expectWater(std::fabs(liquid()), IMPOSED * SURFACE_AREA);
  }
}

TEST_F(BoundaryWaterTest, laterCondition_overwritesTheWaterOfAnEarlierOne) {
  impose(IMPOSED);
  VelBoundaryCond later = condition;
  VelClimateCond dry;
  dry.currentValue = 0.0;
  later.climate[VelClimateCond::C_WATFLUXDENS] = &dry;
  data.sides[LEFT].boundaryConds = {&condition, &later};
  BoundaryFluxes(data, settings, arrays.traits, s, arrays.records).calculate(LATE);
  EXPECT_EQ(liquid(), 0.0);
  EXPECT_EQ(enthalpy(), 0.0);
}

TEST_F(BoundaryWaterTest, calculation_doesNotAllocate) {
  if (!COUNTS_ALLOCATIONS) GTEST_SKIP();
  for (const bool useKirchhoff : {true, false}) {
    settings.useKirchhoff = useKirchhoff;
    calculate();
    BoundaryFluxes fluxes(data, settings, arrays.traits, s, arrays.records);
    const std::size_t before = allocationCount();
    fluxes.calculate(LATE);
    EXPECT_EQ(allocationCount(), before);
    EXPECT_NE(liquid(), 0.0);
  }
}

}  // namespace VELMORA_SOLVER
