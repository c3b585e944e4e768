// Flows of a pollutant between two elements.

#include "solver/MoistPair.h"
#include "solver/PollutantFluxes.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double PAIR_RV = 200.0;       // [J/kgK]
constexpr double PAIR_BREEZE = 3e-4;    // [kg/s]
constexpr double D_LEFT = 4e-9;         // [s]
constexpr double D_RIGHT = 1e-9;        // [s]
constexpr double DENSITY_LEFT = 2e-4;   // [kg/m3]
constexpr double DENSITY_RIGHT = 5e-5;  // [kg/m3]

class PollutantFluxTest : public MoistPair {
 protected:
  PollutantFluxTest() { use(BE_ENERGY | BE_POLLUTANT); }
  void use(int equations) {
    settings = moistSettings(equations);
    s.resizePollutant(2);
    s.DVOC = {D_LEFT, D_RIGHT};
    s.rhoVOC = {DENSITY_LEFT, DENSITY_RIGHT};
    s.pVOC = {PAIR_RV * DENSITY_LEFT * s.T[0], PAIR_RV * DENSITY_RIGHT * s.T[1]};
    s.pAir = {101500.0, 101200.0};
  }
  void flow(double m = 0.0) {
    arrays.records.airMassFlux[0] = m;
    PollutantFluxes(data, settings, s, arrays.records, PAIR_RV).calculate();
  }
  double voc(VELMORA::vocFluxSlot_t slot) const { return arrays.records.vocFlux[0][slot]; }
  double difference() const { return s.pVOC[0] - s.pVOC[1]; }
  static void expectClose(double actual, double expected) {
    EXPECT_NEAR(actual, expected, 1e-12 * std::fabs(expected));
  }
};

// by the widths of the two
constexpr double ARITHMETIC = D_LEFT * PAIR_LEFT + D_RIGHT * PAIR_RIGHT;
constexpr double HARMONIC = 1.0 / (PAIR_LEFT / D_LEFT + PAIR_RIGHT / D_RIGHT);

}  // namespace

TEST_F(PollutantFluxTest, withoutMoisture_permeabilitiesAddUpByTheirWidths) {
  flow();
  expectClose(voc(VELMORA::VF_DIFFUSION), ARITHMETIC * PAIR_AREA * PAIR_G * difference());
  EXPECT_EQ(voc(VELMORA::VF_SUM), voc(VELMORA::VF_DIFFUSION));
}

TEST_F(PollutantFluxTest, withMoisture_resistancesAddUpByTheirWidths) {
  use(BE_ENERGY | BE_MOISTURE | BE_POLLUTANT);
  flow();
  expectClose(voc(VELMORA::VF_DIFFUSION), HARMONIC * PAIR_AREA * PAIR_G * difference());
}

TEST_F(PollutantFluxTest, nothingDiffuses_whereBothAreClosed) {
  use(BE_ENERGY | BE_MOISTURE | BE_POLLUTANT);
  s.DVOC = {0.0, 0.0};
  flow();
  EXPECT_EQ(voc(VELMORA::VF_DIFFUSION), 0.0);
}

TEST_F(PollutantFluxTest, withMoisture_oneClosedElementClosesTheSide) {
  use(BE_ENERGY | BE_MOISTURE | BE_POLLUTANT);
  s.DVOC = {D_LEFT, 0.0};
  flow();
  EXPECT_EQ(voc(VELMORA::VF_DIFFUSION), 0.0);
  use(BE_ENERGY | BE_POLLUTANT);
  s.DVOC = {D_LEFT, 0.0};
  flow();
  EXPECT_GT(voc(VELMORA::VF_DIFFUSION), 0.0);
}

TEST_F(PollutantFluxTest, air_carriesTheShareOfTheElementThatItComesFrom) {
  for (const int more : {0, int(BE_MOISTURE)}) {
    use(BE_ENERGY | BE_AIR | BE_POLLUTANT | more);
    flow(PAIR_BREEZE);
    expectClose(voc(VELMORA::VF_CONVECTION), PAIR_BREEZE * DENSITY_LEFT / (101500.0 / (287.1 * s.T[0])));
    flow(-PAIR_BREEZE);
    expectClose(voc(VELMORA::VF_CONVECTION), -PAIR_BREEZE * DENSITY_RIGHT / (101200.0 / (287.1 * s.T[1])));
    expectClose(voc(VELMORA::VF_SUM), voc(VELMORA::VF_DIFFUSION) + voc(VELMORA::VF_CONVECTION));
  }
}

TEST_F(PollutantFluxTest, airAtRest_carriesNothing) {
  use(BE_ENERGY | BE_AIR | BE_POLLUTANT);
  flow(0.0);
  EXPECT_EQ(voc(VELMORA::VF_CONVECTION), 0.0);
}

TEST_F(PollutantFluxTest, withoutAirBalance_nothingIsCarried) {
  flow(PAIR_BREEZE);
  EXPECT_EQ(voc(VELMORA::VF_CONVECTION), 0.0);
}

TEST_F(PollutantFluxTest, closedVapourContact_letsThePollutantPass) {
  resistance(VELMORA::VelContactCond::P_VAPDIFFRES, 1e30);
  use(BE_ENERGY | BE_MOISTURE | BE_POLLUTANT);
  flow();
  expectClose(voc(VELMORA::VF_DIFFUSION), HARMONIC * PAIR_AREA * PAIR_G * difference());
}

}  // namespace VELMORA_SOLVER
