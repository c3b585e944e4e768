// A wall through which the air of a room escapes for twenty days and outdoor air comes in for the next
// twenty.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "airflow/AirFlowLibrary.h"
#include "project/VelContactCond.h"
#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"
#include "support/TempFolder.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double DAY = 86400.0;
constexpr double TURN = 20 * DAY;
constexpr int WALL_CELLS = 20;
constexpr double WALL_KG = 1e-5;    // [s]
constexpr double DRAUGHT = 5.0;     // [Pa]
constexpr double WALL_FILM = 1e-2;  // [s/m]

/// 200 mm of insulation behind a porous sheathing, cold and damp at the left, a room at the right.
WallProblem draughtyWall(const TKL::TempFolder& folder) {
  folder.write("room.ccd",
               "# room\nGASPRESS Pa\n\n0 00:00:00 101330\n19 23:59:00 101330\n20 00:01:00 101320\n60 "
               "00:00:00 101320\n");
  WallProblem problem(uniform(WALL_CELLS, 0.2));
  problem.balances = "ENERGY MOISTURE AIR";
  problem.general = "PRESSURE_UPDATE_INTERVAL = 1 h\n";
  problem.duration = 40 * DAY;
  problem.maxStep = 1800.0;
  problem.relTol = 1e-6;
  PorousMaterial wool;
  wool.thetaEff = 0.6;
  wool.alpha = 1e-5;
  wool.lambda = 0.04;
  wool.rhoC = 1e5;
  wool.lgKv = -10.0;
  wool.flags = "WATER_TIGHT";
  problem.materialText(problem.all(), "Wool", "KG = " + number(WALL_KG) + " s\n" + wool.text("Wool"));
  problem.initial(problem.all(), 10.0);
  problem.initial(problem.all(), "RELHUM", "60 %");
  problem.constantClimate("Outdoor T", "TEMPER", "-5 C");
  problem.constantClimate("Room T", "TEMPER", "20 C");
  problem.constantClimate("Outdoor RH", "RELHUM", "80 %");
  problem.constantClimate("Room RH", "RELHUM", "50 %");
  problem.constantClimate("Outdoor p", "GASPRESS", "101325 Pa");
  problem.climate("Room p", "GASPRESS", "KIND = DATLINEAR\nFILENAME = " + folder.file("room.ccd") + "\n");
  const auto surface = [&](const std::string& place, double alpha, const std::string& location, int column) {
    problem.boundary("HEATCOND", place + " film", "EXCHANGE",
                     "EXCOEFF = " + number(alpha) + " W/m2K\nTEMPER = " + place + " T\n");
    problem.boundary("VAPDIFF", place + " vapour", "EXCHANGE",
                     "EXCOEFF = 1e-8 s/m\nTEMPER = " + place + " T\nRELHUM = " + place + " RH\n");
    problem.boundary("AIRPRESS", place + " air", "EXCHANGE",
                     "EXCOEFF = " + number(WALL_FILM) + " s/m\nTEMPER = " + place + " T\nRELHUM = " + place +
                         " RH\nGASPRESS = " + place + " p\n");
    for (const char* const what : {" film", " vapour", " air"})
      problem.assign("BOUNDARYCOND", problem.column(column), place + what, location);
  };
  surface("Outdoor", 25.0, "LEFT", 0);
  surface("Room", 8.0, "RIGHT", -1);
  return problem;
}

/// Flow of dry air through the dry wall [kg/s].
double draught() {
  return DRAUGHT / (0.2 * (WALL_CELLS - 1) / WALL_CELLS / WALL_KG + 2 / WALL_FILM);
}

/// The balances of the wall with the water through its surfaces [kg] as one more unknown.
class WaterLedger : public OdeSystem {
 public:
  WaterLedger(VELMORA::CalculationData& data, const ModelSettings& settings)
      : rhs(data, settings), data_(data) {
    air.init(0, data.elements, data.sides, data.bandWidth, false);
    air.temperature = &rhs.state.T;
    air.thetaL = &rhs.state.Theta;
  }
  int calculate(double t, const double* y, double* ydot) override {
    const int code = rhs.calculate(t, y, ydot);
    if (code != 0) return code;
    double water = 0.0;
    for (const VELMORA::Side& side : data_.sides) {
      if (side.elementLeft != nullptr && side.elementRight != nullptr) continue;
      const double flow = rhs.records.moistureFlux[static_cast<std::size_t>(side.number)][VELMORA::MF_SUM];
      water += side.elementLeft == nullptr ? flow : -flow;
    }
    ydot[2 * data_.elements.size()] = water;
    return 0;
  }
  void updateAir(double t) { air.calculate(t, rhs.state.pAir, rhs.records.airMassFlux); }

  RightHandSide rhs;
  VELMORA::AirFlowLibrary air;

 private:
  VELMORA::CalculationData& data_;
};

}  // namespace

TEST(Exfiltration, coldSide_getsWetWithRoomAirAndDriesWithOutdoorAir) {
  const TKL::TempFolder folder;
  WallRun run(draughtyWall(folder));
  const auto coldSide = [&] {
    return run.solver.state().mw[static_cast<std::size_t>(run.element(0).number)];
  };
  const auto air = [&] {
    return run.solver.records().airMassFlux[static_cast<std::size_t>(run.element(5).sideLeft->number)];
  };
  run.solver.initStep();
  const double start = coldSide();
  EXPECT_NEAR(air() / -draught(), 1.0, 0.1);  // the pores hold little water
  run.solver.runStep(10 * DAY, false);
  const double tenth = coldSide();
  run.solver.runStep(TURN - 3600.0, false);
  const double wettest = coldSide();
  EXPECT_LT(air(), 0.0);
  run.solver.runStep(TURN + 3.0 * 3600.0, false);
  EXPECT_GT(air(), 0.0);
  run.solver.runStep(40 * DAY, false);
  EXPECT_GT(tenth, 1.1 * start);
  EXPECT_GT(wettest, 1.1 * tenth);
  EXPECT_LT(coldSide(), 0.9 * wettest);
  EXPECT_NEAR(air() / draught(), 1.0, 0.1);
}

TEST(Exfiltration, airFlow_followsAtItsIntervals) {
  const TKL::TempFolder folder;
  WallProblem problem = draughtyWall(folder);
  problem.maxStep = 300.0;
  WallRun run(problem);
  run.solver.initStep();
  const auto updates = [&] {
    return run.capture.count("Updating steady-state pressure field and air fluxes...\n");
  };
  EXPECT_EQ(updates(), 1);
  run.solver.runStep(10 * 3600.0 + 1.0, false);
  // each interval begins at the end of the step that has passed the last one
  EXPECT_GE(updates(), 9);
  EXPECT_LE(updates(), 11);
}

TEST(Exfiltration, intervalThatIsNotPositive_updatesAtTheStartOnly) {
  const TKL::TempFolder folder;
  for (const char* const interval : {"0 h", "-1 h"}) {
    WallProblem problem = draughtyWall(folder);
    problem.general = std::string("PRESSURE_UPDATE_INTERVAL = ") + interval + "\n";
    WallRun run(problem);
    run.solver.initStep();
    run.solver.runStep(21 * DAY, false);
    EXPECT_EQ(run.capture.count("Updating steady-state pressure field and air fluxes...\n"), 1) << interval;
    const auto side = static_cast<std::size_t>(run.element(5).sideLeft->number);
    EXPECT_LT(run.solver.records().airMassFlux[side], 0.0) << "the wind has turned unseen";
  }
}

TEST(Exfiltration, gainOfWater_isWhatPassesTheSurfaces) {
  const TKL::TempFolder folder;
  WallRun run(draughtyWall(folder));
  run.solver.initStep();
  const SolverState& begin = run.solver.state();
  VELMORA::CalculationData data;
  run.project.setup_calculation(data);
  for (auto& climate : data.climateConds)
    climate.prepareCalculation(run.project.m_placeholders.placeholderMap());
  WaterLedger ledger(data, ModelSettings::of(run.project.m_init, run.project.m_disc));
  const std::size_t n = 2 * data.elements.size();
  Integrator integrator;
  ASSERT_TRUE(integrator.createVectors(n + 1));
  ASSERT_TRUE(integrator.createAbsoluteTolerances());
  const auto y = integrator.state();
  const auto tolerance = integrator.absoluteTolerances();
  for (std::size_t e = 0; e < data.elements.size(); ++e) {
    y[2 * e] = begin.U[e];
    y[2 * e + 1] = begin.mw[e];
    tolerance[2 * e] = 1.0;
    tolerance[2 * e + 1] = 1e-7;
  }
  tolerance[n] = 1e-9;
  const std::vector<double> start(y.begin(), y.end());
  ASSERT_EQ(integrator.initialise(ledger, 0.0, 1e-8), 0);
  ASSERT_EQ(integrator.attachBandSolver((data.bandWidth + 1) * 2 - 1), 0);
  IntegratorSettings settings;
  settings.maxSteps = 1000000;
  integrator.configure(settings);
  double t = 0.0, next = 0.0;
  while (t < 25 * DAY) {
    if (t >= next) {
      ASSERT_EQ(ledger.rhs.calculateFluxesAndSources(t, y.data()), 0);
      ledger.updateAir(t);
      next = t + 6 * 3600.0;
    }
    ASSERT_GE(integrator.step(25 * DAY, t), 0);
  }
  double gain = 0.0, through = 0.0;
  for (const VELMORA::Element& e : data.elements) {
    const auto i = 2 * static_cast<std::size_t>(e.number) + 1;
    gain += (y[i] - start[i]) * e.volume;
    through += std::fabs(y[i] - start[i]) * e.volume;
  }
  ASSERT_GT(through, 1e-3);
  EXPECT_NEAR(y[n], gain, 1e-6 * through);
}

}  // namespace VELMORA_SOLVER
