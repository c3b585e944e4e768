// The wall of an example under rain, sun, sky and wind: what each kind of flow has brought, integrated beside
// the state, adds up to what the wall has gained, and the outputs tell the same.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "solver/Ledger.h"
#include "solver/WallBench.h"
#include "solver/WestWall.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double LEDGER_DAY = 86400.0;   // [s]
constexpr double JOULE_PER_KWH = 3.6e6;  // [J]

/// Last value of an output file.
double lastOutput(const WallRun& run, const std::string& name, double days) {
  std::ifstream file(run.folder().file("problem.results/" + name));
  std::string last;
  for (std::string line; std::getline(file, line);)
    if (!line.empty()) last = line;
  std::istringstream numbers(last);
  double time = 0.0, value = 0.0;
  if (!(numbers >> time >> value) || time != days) throw std::runtime_error("No last value in " + name);
  return value;
}

/// A kind of flow through a surface and the output that tells it.
struct LedgerFlow {
  bool isHeat;
  int slot;
  const char* output;  ///< its integral, in kWh/m2 or kg/m2; null without one
};

const std::vector<LedgerFlow> OUTER_FLOWS{{true, VELMORA::HF_CONDUCTION, "heat_outside.out"},
                                          {true, VELMORA::HF_INFILTRATION_SHORTWAVE, "sun.out"},
                                          {true, VELMORA::HF_LONGWAVE, "sky.out"},
                                          {true, VELMORA::HF_VAPOUR_DIFFUSION, nullptr},
                                          {true, VELMORA::HF_LIQUID, nullptr},
                                          {true, VELMORA::HF_RUNOFF, nullptr},
                                          {false, VELMORA::MF_VAPOUR_DIFFUSION, "vapour_outside.out"},
                                          {false, VELMORA::MF_LIQUID, "absorbed_rain.out"}};
const std::vector<LedgerFlow> INNER_FLOWS{{true, VELMORA::HF_CONDUCTION, "heat_inside.out"},
                                          {true, VELMORA::HF_VAPOUR_DIFFUSION, nullptr},
                                          {false, VELMORA::MF_VAPOUR_DIFFUSION, "vapour_inside.out"}};

/// Flows to the right through a side of the one row of cells.
std::vector<Ledger::Entry> ledgerEntries(const VelmoraCvodeSolver& solver, const VELMORA::Side& side,
                                         const std::vector<LedgerFlow>& flows) {
  std::vector<Ledger::Entry> result;
  const auto s = static_cast<std::size_t>(side.number);
  for (const LedgerFlow& flow : flows)
    result.push_back([&solver, s, flow] {
      const auto& record = flow.isHeat ? solver.records().heatFlux : solver.records().moistureFlux;
      return record[s][flow.slot];
    });
  return result;
}

struct Totals {
  double heat = 0.0;
  double moisture = 0.0;
  double turnover[2] = {0.0, 0.0};  ///< of heat and moisture, all flows with their absolute value

  void add(const std::vector<LedgerFlow>& flows, const std::vector<double>& integrals, double inward) {
    ASSERT_EQ(flows.size(), integrals.size());
    for (std::size_t i = 0; i < flows.size(); ++i) {
      (flows[i].isHeat ? heat : moisture) += inward * integrals[i];
      turnover[flows[i].isHeat ? 0 : 1] += std::fabs(integrals[i]);
    }
  }
};

/// The integrals of the outputs, which sum step by step, within 1 % of those of the ledger.
void expectOutputs(const WallRun& run, const std::vector<LedgerFlow>& flows,
                   const std::vector<double>& integrals, double days) {
  for (std::size_t i = 0; i < flows.size(); ++i) {
    if (flows[i].output == nullptr) continue;
    const double exact = integrals[i] / (flows[i].isHeat ? JOULE_PER_KWH : 1.0);
    const double told = lastOutput(run, flows[i].output, days);
    std::printf("%-20s %12.5f, ledger %12.5f, off by %+.4f %%\n", flows[i].output, told, exact,
                100.0 * (told / exact - 1.0));
    EXPECT_NEAR(told, exact, 0.01 * std::fabs(exact)) << flows[i].output;
  }
}

/// Whether a flow of this kind could be missing without being noticed.
bool isNegligible(const LedgerFlow& flow, double integral, const Ledger& ledger) {
  return std::fabs(integral) < 1e-5 * std::fabs(flow.isHeat ? ledger.heat : ledger.moisture);
}

/// @param inRain  it rains so much that some of it runs off
void expectClosedLedger(double startDay, double days, bool inRain) {
  constexpr double TOLERANCE = 1e-5, LONGEST_STEP = 1800.0;  // of the example
  const std::string text = westWallText(startDay, days);
  WallRun run(text);
  run.solver.initStep();
  const VELMORA::CalculationData& data = run.solver.data();
  Ledger ledger(run.solver, ledgerEntries(run.solver, *data.elements.front().sideLeft, OUTER_FLOWS),
                ledgerEntries(run.solver, *data.elements.back().sideRight, INNER_FLOWS));
  ledger.run(days * LEDGER_DAY, TOLERANCE, LONGEST_STEP, 1);
  Totals totals;
  totals.add(OUTER_FLOWS, ledger.front, 1.0);
  totals.add(INNER_FLOWS, ledger.back, -1.0);
  EXPECT_GT(totals.turnover[0], 1e6 * days);
  EXPECT_GT(totals.turnover[1], 0.1 * days);
  EXPECT_NEAR(totals.heat / ledger.heat, 1.0, 1e-6);
  EXPECT_NEAR(totals.moisture / ledger.moisture, 1.0, 1e-6);
  for (std::size_t i = 0; i < OUTER_FLOWS.size(); ++i)
    EXPECT_TRUE(!inRain || !isNegligible(OUTER_FLOWS[i], ledger.front[i], ledger)) << i;
  for (std::size_t i = 0; i < INNER_FLOWS.size(); ++i)
    EXPECT_FALSE(isNegligible(INNER_FLOWS[i], ledger.back[i], ledger)) << i;
  std::printf("gain of %.0f days: %.6g J/m2, the flows off by %.1e; %.6g kg/m2, off by %.1e\n", days,
              ledger.heat, totals.heat / ledger.heat - 1.0, ledger.moisture,
              totals.moisture / ledger.moisture - 1.0);

  WallRun program(text);
  program.runAll();
  expectOutputs(program, OUTER_FLOWS, ledger.front, days);
  expectOutputs(program, INNER_FLOWS, ledger.back, days);
}

}  // namespace

TEST(WestWallLedger, flowsOfTwoWeeksInSpring_addUpToTheGain) {
  expectClosedLedger(90.0, 14.0, false);
}

TEST(WestWallLedger, flowsOfTheYear_addUpToTheGain) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "takes too long with sanitizers";
#endif
  expectClosedLedger(0.0, 365.0, true);
}

}  // namespace VELMORA_SOLVER
