#include <cmath>
#include <numbers>

#include "solver/WallBench.h"

// A pipe wall between two films, steady: Carslaw, Jaeger: Conduction of heat in solids, 2nd edition, 7.2.
//
// The faces of the rings have their true radii, so a steady state depends on the faces and the distances of
// the centres alone. The volumes count the radius over the used cells only, from 0 at the inner face of the
// pipe; so the way to the steady state takes another time than that of a real pipe, and is not compared.

using namespace VELMORA_SOLVER;

namespace {

constexpr double INNER = 0.02, OUTER = 0.1;  // [m]
constexpr double HEIGHT = 0.5;               // [m]
constexpr double CYLINDER_LAMBDA = 0.4;      // [W/mK]
constexpr double H_INNER = 50.0, H_OUTER = 8.0;
constexpr double T_INNER = 60.0, T_OUTER = 20.0;
constexpr double TWO_PI = 2.0 * std::numbers::pi;

/// `wall` holds the widths of the rings of the wall, behind two rings of the hollow core.
WallProblem pipe(const std::vector<double>& wall) {
  WallProblem problem(joined(uniform(2, INNER), wall), {HEIGHT});
  problem.rotational = true;
  problem.material(problem.all(), "Stone", {CYLINDER_LAMBDA, 1e5});
  problem.hollow({0, 0, 1, 0});
  problem.initial(problem.all(), 20.0);
  problem.film("Water", H_INNER, T_INNER, problem.column(2), "LEFT");
  problem.film("Air", H_OUTER, T_OUTER, problem.column(-1), "RIGHT");
  return problem;
}

double flowThrough(const std::vector<double>& wall) {
  WallRun run(pipe(wall));
  run.advance(100.0 * 86400.0);
  return run.flowLeft(2);
}

/// Thin rings at both surfaces, `n` rings between them.
std::vector<double> thinEnds(int n) {
  constexpr double THIN = 1e-6;
  return joined(joined({THIN}, uniform(n, OUTER - INNER - 2.0 * THIN)), {THIN});
}

double filmResistances() {
  return (1.0 / (INNER * H_INNER) + 1.0 / (OUTER * H_OUTER)) / (TWO_PI * HEIGHT);
}

double exactFlow() {
  return (T_INNER - T_OUTER) /
         (filmResistances() + std::log(OUTER / INNER) / (TWO_PI * HEIGHT * CYLINDER_LAMBDA));
}

}  // namespace

TEST(HollowCylinder, heatFlowIsThatOfTheLogarithmicProfile) {
  const double exact = exactFlow();
  EXPECT_NEAR(flowThrough(thinEnds(80)), exact, 1e-3 * exact);
}

TEST(HollowCylinder, temperaturesFollowTheLogarithmOfTheRadius) {
  const std::vector<double> wall = thinEnds(80);
  WallRun run(pipe(wall));
  run.advance(100.0 * 86400.0);
  const double q = exactFlow() / (TWO_PI * HEIGHT);
  std::vector<double> exact;
  for (const double x : centresOf(wall)) {
    const double r = INNER + x;
    exact.push_back(T_INNER - q * (1.0 / (INNER * H_INNER) + std::log(r / INNER) / CYLINDER_LAMBDA));
  }
  EXPECT_TRUE(agree(run.rowCelsius(), exact, 0.02));
}

TEST(HollowCylinder, flowIsConservedFromFaceToFace) {
  WallRun run(pipe(thinEnds(20)));
  run.advance(100.0 * 86400.0);
  const double flow = run.flowLeft(2);
  for (int i = 2; i < 24; ++i) EXPECT_NEAR(run.flowRight(i), flow, 1e-5) << i;
}

TEST(HollowCylinder, coarseWallIsTheNetworkOfItsFaces) {
  const std::vector<double> wall = uniform(5, OUTER - INNER);
  double resistance = filmResistances();
  for (std::size_t i = 1; i < wall.size(); ++i) {
    const double face = INNER + static_cast<double>(i) * wall[0];
    resistance += wall[0] / (TWO_PI * face * HEIGHT * CYLINDER_LAMBDA);
  }
  EXPECT_NEAR(flowThrough(wall), (T_INNER - T_OUTER) / resistance, 1e-5);
}

TEST(HollowCylinder, errorOfTheRingsIsOfSecondOrder) {
  const double coarse = flowThrough(thinEnds(20)) - exactFlow();
  const double fine = flowThrough(thinEnds(40)) - exactFlow();
  EXPECT_NEAR(std::log2(coarse / fine), 2.0, 0.1);
}
