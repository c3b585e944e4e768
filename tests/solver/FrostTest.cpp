// Walls that freeze: the heat of freezing, and the front that it holds up.

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "solver/PorousMaterial.h"
#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double ZERO = 273.15;           // [K]
constexpr double CAP_WATER = 4180.0;      // [J/(kg K)]
constexpr double CAP_ICE = 2108.0;        // [J/(kg K)]
constexpr double MELTING_HEAT = 333.5e3;  // [J/kg]
/// What the constants of the program give: the heat capacities and the energy constant of ice.
constexpr double MODEL_HEAT = (CAP_WATER - CAP_ICE) * ZERO - 232417.0;

/// A brick whose moisture stays where it is: pores so fine that half of the water is still liquid at some
/// kelvins of frost.
PorousMaterial sealedBrick() {
  PorousMaterial material;
  material.lgKv = -30.0;
  material.liquid = PorousMaterial::constantDiffusivity(-30.0, material.thetaEff);
  return material;
}

constexpr double BRICK_WATER = 240.0;  // [kg/m3]

WallProblem wetWall(const PorousMaterial& material, const std::vector<double>& dx, double celsius,
                    double water) {
  WallProblem problem(dx);
  problem.balances = "ENERGY MOISTURE ICE";
  problem.relTol = 1e-7;
  problem.maxStep = 3600.0;
  problem.materialText(problem.all(), "Brick", material.text("Brick"));
  problem.initial(problem.all(), celsius);
  problem.initial(problem.all(), "MSTMASS", number(water) + " kg/m3");
  return problem;
}

/// Ice [kg/m3] beside the water that the pores keep liquid at this temperature [C].
double iceAt(const PorousMaterial& material, double water, double celsius) {
  const double T = ZERO + celsius;
  const double suction =
      -1000.0 * ((std::log(T / ZERO) * T - celsius) * (CAP_WATER - CAP_ICE) + celsius * MELTING_HEAT / ZERO);
  return std::max(water - 1000.0 * material.content(suction), 0.0);
}

/// Heat [J/m3] that the material gives off from +10 C to -10 C, where it has this ice, by way of freezing at
/// 0 C.
double heatOfFrost(const PorousMaterial& material, double water, double ice, double latent) {
  return 10.0 * (material.rhoC + CAP_WATER * water) + latent * ice +
         10.0 * (material.rhoC + CAP_WATER * (water - ice) + CAP_ICE * ice);
}

/// Air of -10 C at both sides for ten days, then of 10 C.
WallProblem winterWall() {
  WallProblem problem = wetWall(sealedBrick(), uniform(10, 0.1), 10.0, BRICK_WATER);
  for (const char* const name : {"-10", "10"}) {
    problem.constantClimate(std::string("T") + name, "TEMPER", std::string(name) + " C");
    problem.boundary(std::string("Air ") + name, "EXCHANGE",
                     std::string("EXCOEFF = 20 W/m2K\nTEMPER = T") + name +
                         (*name == '-' ? "\nEND_TIME = 10 d\n" : "\nSTART_TIME = 10 d\n"));
    problem.assign("BOUNDARYCOND", problem.column(0), std::string("Air ") + name, "LEFT");
    problem.assign("BOUNDARYCOND", problem.column(-1), std::string("Air ") + name, "RIGHT");
  }
  return problem;
}

constexpr double TEN_DAYS = 864000.0;  // [s]

}  // namespace

TEST(Frost, coolingAndWarming_passTheHeatOfTheIceAndEndAtTheStart) {
  WallRun run(winterWall());
  run.solver.initStep();
  const PorousMaterial brick = sealedBrick();
  const double start = run.energy();
  run.advance(TEN_DAYS - 1.0);
  const double ice = run.solver.state().rhoIce[4];
  ASSERT_GT(ice, 0.2 * BRICK_WATER);
  ASSERT_LT(ice, 0.95 * BRICK_WATER);
  for (const double rhoIce : run.solver.state().rhoIce) {
    EXPECT_NEAR(rhoIce, ice, 1e-6 * ice);
    EXPECT_NEAR(rhoIce, iceAt(brick, BRICK_WATER, -10.0), 1e-3 * ice);  // the curve is a table
  }
  const double released = (start - run.energy()) / 0.1;  // [J/m3]
  EXPECT_NEAR(released / heatOfFrost(brick, BRICK_WATER, ice, MODEL_HEAT), 1.0, 1e-6);
  // the tabulated heat of melting differs by 0.02 % from that of the constants
  EXPECT_NEAR((released - heatOfFrost(brick, BRICK_WATER, ice, 0.0)) / ice, MELTING_HEAT,
              2e-4 * MELTING_HEAT);
  run.advance(2.0 * TEN_DAYS);
  EXPECT_NEAR(run.energy() / start, 1.0, 1e-7);
  for (int i = 0; i < 10; ++i) {
    EXPECT_NEAR(run.celsius(i), 10.0, 1e-4);
    EXPECT_EQ(run.solver.state().rhoIce[static_cast<std::size_t>(i)], 0.0);
    EXPECT_NEAR(run.solver.state().mw[static_cast<std::size_t>(i)], BRICK_WATER, 1e-6);
  }
}

TEST(Frost, givenHeat_coolsToTheTemperatureOfItsBalance) {
  // The heat for 10 C to -10 C leaves 50 mm in a day; then it comes back in another one.
  const PorousMaterial brick = sealedBrick();
  constexpr double SECONDS_OF_DAY = 86400.0;
  const double heat = 0.05 * heatOfFrost(brick, BRICK_WATER, iceAt(brick, BRICK_WATER, -10.0), MODEL_HEAT);
  WallProblem problem = wetWall(brick, uniform(5, 0.05), 10.0, BRICK_WATER);
  problem.maxStep = 600.0;
  const double flux = heat / SECONDS_OF_DAY;
  problem.constantClimate("Loss", "HEATFLUXDENS", number(-flux) + " W/m2");
  problem.constantClimate("Gain", "HEATFLUXDENS", number(flux) + " W/m2");
  problem.boundary("Cooling", "IMPFLUX", "HEATFLUXDENS = Loss\nEND_TIME = 1 d\n");
  problem.boundary("Heating", "IMPFLUX", "HEATFLUXDENS = Gain\nSTART_TIME = 2 d\nEND_TIME = 3 d\n");
  for (const char* const name : {"Cooling", "Heating"})
    problem.assign("BOUNDARYCOND", problem.column(0), name, "LEFT");
  WallRun run(problem);
  run.advance(1.99 * SECONDS_OF_DAY);
  for (int i = 0; i < 5; ++i) EXPECT_NEAR(run.celsius(i), -10.0, 0.01);
  run.advance(4.0 * SECONDS_OF_DAY);
  for (int i = 0; i < 5; ++i) EXPECT_NEAR(run.celsius(i), 10.0, 0.01);
}

// ---- freezing front ----

namespace {

constexpr double FRONT_WATER = 300.0;  // [kg/m3]
constexpr double FRONT_COLD = -10.0;   // [C] of the surface
constexpr double FRONT_WARM = 5.0;     // [C] at the start
constexpr double FRONT_TIME = 172800.0;

/// Coarse pores: all but a thousandth of the water freezes within 0.03 K.
PorousMaterial coarseSand() {
  PorousMaterial material = sealedBrick();
  material.alpha = 1e-3;
  material.n = 4.0;
  return material;
}

/// A body of two phases after F. Neumann (H. S. Carslaw, J. C. Jaeger: Conduction of heat in solids, 2nd
/// edition, 11.2): the front lies at 2 root sqrt(a t), a of the frozen phase.
struct NeumannFront {
  NeumannFront() {
    const PorousMaterial sand = coarseSand();
    const double heat = MODEL_HEAT * FRONT_WATER;
    conductivity = sand.lambda + 0.58 * sand.thetaEff;  // the curve ends at saturation
    frozenConductivity = conductivity + (2.2 - 0.6) * FRONT_WATER / 1000.0;
    a = conductivity / (sand.rhoC + CAP_WATER * FRONT_WATER);
    const double frozenCapacity = sand.rhoC + CAP_ICE * FRONT_WATER;
    frozenA = frozenConductivity / frozenCapacity;
    const double ratio = std::sqrt(frozenA / a);
    const auto excess = [&](double x) {
      return std::exp(-x * x) / std::erf(x) -
             conductivity / frozenConductivity * ratio * FRONT_WARM / -FRONT_COLD *
                 std::exp(-x * x * ratio * ratio) / std::erfc(x * ratio) -
             x * heat * std::sqrt(std::numbers::pi) / (frozenCapacity * -FRONT_COLD);
    };
    double lo = 1e-3, hi = 2.0;
    while (hi - lo > 1e-12) (excess(0.5 * (lo + hi)) > 0.0 ? lo : hi) = 0.5 * (lo + hi);
    root = lo;
  }

  double position(double t) const { return 2.0 * root * std::sqrt(frozenA * t); }
  double celsius(double x, double t) const {
    if (x < position(t))
      return FRONT_COLD - FRONT_COLD * std::erf(x / (2.0 * std::sqrt(frozenA * t))) / std::erf(root);
    return FRONT_WARM -
           FRONT_WARM * std::erfc(x / (2.0 * std::sqrt(a * t))) / std::erfc(root * std::sqrt(frozenA / a));
  }

  double conductivity, frozenConductivity;  ///< [W/mK]
  double a, frozenA;                        ///< [m2/s]
  double root;
};

struct FrontErrors {
  double position;  ///< relative
  double celsius;   ///< largest one [K]
};

/// A body of that sand, its first 0.16 m in this number of cells.
FrontErrors frontErrors(int cells) {
  const NeumannFront exact;
  constexpr double FINE = 0.16;
  const double width = FINE / cells;
  WallProblem problem =
      wetWall(coarseSand(), joined(uniform(cells, FINE), growing(width, 1.2, 2.0)), FRONT_WARM, FRONT_WATER);
  problem.relTol = 1e-6;
  problem.surface("Frost", FRONT_COLD, problem.column(0), "LEFT");
  WallRun run(problem);
  run.advance(FRONT_TIME);
  double ice = 0.0;
  FrontErrors errors{};
  for (const VELMORA::Element& e : run.solver.data().elements) {
    const auto i = static_cast<std::size_t>(e.number);
    ice += run.solver.state().rhoIce[i] * e.volume;
    errors.celsius =
        std::max(errors.celsius, std::fabs(run.solver.state().T[i] - ZERO - exact.celsius(e.x, FRONT_TIME)));
  }
  errors.position = std::fabs(ice / FRONT_WATER / exact.position(FRONT_TIME) - 1.0);
  return errors;
}

}  // namespace

TEST(Frost, neumannFront_joinsBothPhasesAtTheFreezingPoint) {
  const NeumannFront exact;
  const double front = exact.position(FRONT_TIME);
  EXPECT_NEAR(exact.celsius(0.0, FRONT_TIME), FRONT_COLD, 1e-12);
  EXPECT_NEAR(exact.celsius(front * (1 - 1e-12), FRONT_TIME), 0.0, 1e-9);
  EXPECT_NEAR(exact.celsius(front, FRONT_TIME), 0.0, 1e-9);
  // heat that the front sets free: what leaves it less what reaches it
  constexpr double DX = 1e-6;
  const double leaves = exact.frozenConductivity * -exact.celsius(front - DX, FRONT_TIME) / DX;
  const double reaches = exact.conductivity * exact.celsius(front + DX, FRONT_TIME) / DX;
  const double speed = (exact.position(FRONT_TIME + 1.0) - exact.position(FRONT_TIME - 1.0)) / 2.0;
  EXPECT_NEAR(leaves - reaches, MODEL_HEAT * FRONT_WATER * speed, 1e-3 * leaves);
}

TEST(Frost, front_isThatOfNeumannAndConverges) {
  const FrontErrors coarse = frontErrors(20), medium = frontErrors(40), fine = frontErrors(80);
  RecordProperty("front, 20 cells", std::to_string(coarse.position));
  RecordProperty("front, 40 cells", std::to_string(medium.position));
  RecordProperty("front, 80 cells", std::to_string(fine.position));
  RecordProperty("temperature, 80 cells", std::to_string(fine.celsius));
  EXPECT_LT(coarse.position, 0.03);
  EXPECT_LT(medium.position, 0.5 * coarse.position);
  EXPECT_LT(fine.position, coarse.position / 3.0);
  EXPECT_LT(fine.position, 0.005);
  EXPECT_LT(medium.celsius, 0.75 * coarse.celsius);
  EXPECT_LT(fine.celsius, 0.75 * medium.celsius);
}

}  // namespace VELMORA_SOLVER
