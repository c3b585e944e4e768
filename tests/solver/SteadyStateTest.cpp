#include <cmath>
#include <numeric>

#include "solver/WallBench.h"

using namespace VELMORA_SOLVER;

namespace {

constexpr double H_OUT = 25.0, H_IN = 8.0;  // [W/m2K]
constexpr double T_OUT = -5.0, T_IN = 20.0;

struct Layer {
  double width;   // [m]
  double lambda;  // [W/mK]
};
const std::vector<Layer> WALL = {{0.14, 0.04}, {0.24, 0.81}, {0.015, 0.7}};

/// The wall between two films; little heat capacity, so that it is soon steady.
WallProblem wallProblem(const std::vector<std::vector<double>>& widths) {
  std::vector<double> dx;
  for (const auto& layer : widths) dx = joined(dx, layer);
  WallProblem problem(dx);
  int first = 0;
  for (std::size_t k = 0; k < widths.size(); ++k) {
    const int next = first + static_cast<int>(widths[k].size());
    problem.material({first, 0, next - 1, 0}, "Layer " + std::to_string(k), {WALL[k].lambda, 1e5});
    first = next;
  }
  problem.initial(problem.all(), 10.0);
  problem.film("Outside", H_OUT, T_OUT, problem.column(0), "LEFT");
  problem.film("Inside", H_IN, T_IN, problem.column(-1), "RIGHT");
  return problem;
}

constexpr double LONG = 100.0 * 86400.0;  // [s]

/// Two layers between two films: inner side `SIDE` lies between them.
constexpr int SIDE = 10;
WallProblem twoSlabs() {
  WallProblem problem(uniform(2 * SIDE, 0.2));
  problem.material({0, 0, SIDE - 1, 0}, "Left", {0.5, 1e5});
  problem.material({SIDE, 0, 2 * SIDE - 1, 0}, "Right", {0.5, 1e5});
  problem.initial(problem.all(), 10.0);
  problem.film("Outside", H_OUT, T_OUT, problem.column(0), "LEFT");
  problem.film("Inside", H_IN, T_IN, problem.column(-1), "RIGHT");
  return problem;
}
/// Films act on the centres of the outermost cells: half a cell is missing at each end.
constexpr double TWO_SLABS_R = 1.0 / H_OUT + 0.19 / 0.5 + 1.0 / H_IN;

}  // namespace

TEST(SteadyWall, heatFlowFollowsFromTheSumOfResistances) {
  double resistance = 1.0 / H_OUT + 1.0 / H_IN;
  std::vector<std::vector<double>> widths;
  for (const Layer& layer : WALL) {
    resistance += layer.width / layer.lambda;
    const std::vector<double> half = growing(1e-5, 1.4, layer.width / 2.0);
    widths.push_back(joined(half, reversed(half)));
  }
  WallRun run(wallProblem(widths));
  run.advance(LONG);
  const double flow = (T_OUT - T_IN) / resistance;
  // half an outermost cell and the mean conductivity of the interface cells, 1e-5 m wide
  EXPECT_NEAR(run.flowLeft(0), flow, 1e-4 * std::fabs(flow));
  EXPECT_NEAR(run.flowLeft(0), run.flowRight(static_cast<int>(run.centres().size()) - 1), 1e-6);
}

TEST(SteadyWall, interfacesHaveTheTemperaturesOfTheResistancesBeforeThem) {
  double resistance = 1.0 / H_OUT + 1.0 / H_IN;
  std::vector<std::vector<double>> widths;
  for (const Layer& layer : WALL) {
    resistance += layer.width / layer.lambda;
    const std::vector<double> half = growing(1e-5, 1.4, layer.width / 2.0);
    widths.push_back(joined(half, reversed(half)));
  }
  WallRun run(wallProblem(widths));
  run.advance(LONG);
  const double flow = (T_OUT - T_IN) / resistance;
  double before = 1.0 / H_OUT;
  double x = 0.0;
  std::vector<double> actual, exact;
  for (const Layer& layer : WALL) {
    actual.push_back(run.celsiusAt(x));
    exact.push_back(T_OUT - flow * before);
    before += layer.width / layer.lambda;
    x += layer.width;
  }
  actual.push_back(run.celsiusAt(x));
  exact.push_back(T_OUT - flow * before);
  EXPECT_TRUE(agree(actual, exact, 0.005));
}

TEST(SteadyWall, coarseGridIsTheNetworkOfItsCells) {
  // three uniform layers: between centres the conductivity is the mean by widths, films act on centres
  const std::vector<int> cells = {7, 5, 2};
  std::vector<std::vector<double>> widths;
  std::vector<double> dx, lambda;
  for (std::size_t k = 0; k < WALL.size(); ++k) {
    widths.push_back(uniform(cells[k], WALL[k].width));
    dx = joined(dx, widths.back());
    lambda.insert(lambda.end(), widths.back().size(), WALL[k].lambda);
  }
  double resistance = 1.0 / H_OUT + 1.0 / H_IN;
  for (std::size_t i = 1; i < dx.size(); ++i) {
    const double sum = dx[i - 1] + dx[i];
    resistance += 0.5 * sum / ((lambda[i - 1] * dx[i - 1] + lambda[i] * dx[i]) / sum);
  }
  WallRun run(wallProblem(widths));
  run.advance(LONG);
  EXPECT_NEAR(run.flowLeft(0), (T_OUT - T_IN) / resistance, 1e-5);
}

TEST(ContactResistance, standsInSeriesWithTheCells) {
  WallProblem problem = twoSlabs();
  problem.contact("Gap", "ADDITIONAL_RESISTANCE", "HEATCONDRES = 0.3 m2K/W\n");
  problem.assign("CONTACTCOND", problem.column(SIDE), "Gap", "LEFT");
  WallRun run(problem);
  run.advance(LONG);
  EXPECT_NEAR(run.flowLeft(SIDE), (T_OUT - T_IN) / (TWO_SLABS_R + 0.3), 1e-5);
  // the whole drop of the contact lies between the two centres beside it
  const double q = run.flowLeft(SIDE);
  EXPECT_NEAR(run.celsius(SIDE - 1) - run.celsius(SIDE), q * (0.3 + 0.01 / 0.5), 1e-5);
}

TEST(ContactResistance, withoutItTheSlabsAloneResist) {
  WallRun run(twoSlabs());
  run.advance(LONG);
  EXPECT_NEAR(run.flowLeft(SIDE), (T_OUT - T_IN) / TWO_SLABS_R, 1e-5);
}

TEST(AirContact, exchangeReplacesConductionBetweenAirAndMaterial) {
  WallProblem problem = twoSlabs();
  problem.material({SIDE, 0, 2 * SIDE - 1, 0}, "Air", {0.5, 1e5, "AIR AIR_TIGHT"});
  problem.contact("Surface", "AIR_MAT_HEATCOND", "KIND = EXCHANGE\nEXCOEFF = 4 W/m2K\n");
  problem.assign("CONTACTCOND", problem.column(SIDE), "Surface", "LEFT");
  WallRun run(problem);
  run.advance(LONG);
  // the exchange acts between the two centres, in the place of the conduction over 10 mm
  const double resistance = TWO_SLABS_R - 0.01 / 0.5 + 1.0 / 4.0;
  EXPECT_NEAR(run.flowLeft(SIDE), (T_OUT - T_IN) / resistance, 1e-5);
  EXPECT_NEAR(run.flowLeft(SIDE), 4.0 * (run.celsius(SIDE - 1) - run.celsius(SIDE)), 1e-9);
}

TEST(AirContact, exchangeByVelocityHasTheCoefficientOfStillAir) {
  WallProblem problem = twoSlabs();
  problem.material({SIDE, 0, 2 * SIDE - 1, 0}, "Air", {0.5, 1e5, "AIR AIR_TIGHT"});
  problem.contact("Surface", "AIR_MAT_HEATCOND",
                  "KIND = EXCHANGE_VEL\nEXCOEFF = 4 W/m2K\nEXCH_SLOPE = 2 J/m3K\n");
  problem.assign("CONTACTCOND", problem.column(SIDE), "Surface", "LEFT");
  WallRun run(problem);
  run.advance(LONG);
  EXPECT_NEAR(run.flowLeft(SIDE), (T_OUT - T_IN) / (TWO_SLABS_R - 0.01 / 0.5 + 1.0 / 4.0), 1e-5);
}

TEST(AirContact, withoutAirTheMaterialsConduct) {
  WallProblem problem = twoSlabs();
  problem.contact("Surface", "AIR_MAT_HEATCOND", "KIND = EXCHANGE\nEXCOEFF = 4 W/m2K\n");
  problem.assign("CONTACTCOND", problem.column(SIDE), "Surface", "LEFT");
  WallRun run(problem);
  run.advance(LONG);
  EXPECT_NEAR(run.flowLeft(SIDE), (T_OUT - T_IN) / TWO_SLABS_R, 1e-5);
}

TEST(AirContact, withoutAConditionAirConducts) {
  WallProblem problem = twoSlabs();
  problem.material({SIDE, 0, 2 * SIDE - 1, 0}, "Air", {0.5, 1e5, "AIR AIR_TIGHT"});
  WallRun run(problem);
  run.advance(LONG);
  EXPECT_NEAR(run.flowLeft(SIDE), (T_OUT - T_IN) / TWO_SLABS_R, 1e-5);
}
