// Whole runs of layers that bind a pollutant against exact solutions.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <tuple>

#include "solver/EmissionReference.h"
#include "solver/PollutantBench.h"

namespace VELMORA_SOLVER {

namespace {

constexpr double EMITTER = 0.04;        // [m]
constexpr double EMITTER_START = 1e-4;  // [kg/m3] in the pore gas at equilibrium
constexpr double EMISSION_FILM = 4e-5;  // [m/s]
constexpr double ROOM_DENSITY = 2e-5;   // [kg/m3]

/// The layer of "Board" as the exact solutions see it, with this moisture content.
SorbingLayer boardAt(double celsius, double Theta = 0.0) {
  const double T = celsius + KELVIN;
  SorbingLayer layer;
  layer.thickness = EMITTER;
  layer.capacity = VOC_POROSITY + vocPartition(BOARD_K, T);
  layer.conductance = vocPermeability(BOARD_MU, T, Theta) * VOC_RV * T;
  return layer;
}

/// A layer of "Board" at one temperature. It starts with all of the pollutant in the gas; the solid takes its
/// share within milliseconds.
class LayerProblem : public PollutantProblem {
 public:
  LayerProblem(const std::vector<double>& widths, double celsius,
               const std::string& equations = "ENERGY POLLUTANT")
      : PollutantProblem(widths, {1.0}, equations) {
    board(all());
    initial(all(), celsius);
    if (hasMoisture()) initial(all(), "RELHUM", "60 %");
    relTol = 1e-9;
    // thin cells exchange within microseconds: the first step has to be shorter than that
    settings = "ABS_TOL_POLLUTANT = 1e-12\nABS_TOL_MOISTURE = 1e-9\nMIN_DT = 1e-15 s\n";
  }

  /// A film to air of this density at the right.
  void room(double film, double density) {
    constantClimate("Room", "VOCDENSG", number(density) + " kg/m3");
    boundary("VOCDIFF", "Room film", "EXCHANGE", "EXCOEFF = " + number(film) + " m/s\nVOCDENSG = Room\n");
    assign("BOUNDARYCOND", column(-1), "Room film", "RIGHT");
  }
};

/// [kg/s] through the right side of the last column.
double flowToRoom(const WallRun& run, int columns) {
  const auto side = static_cast<std::size_t>(run.element(columns - 1).sideRight->number);
  return run.solver.records().vocFlux[side][VELMORA::VF_SUM];
}

/// Deviation of the emitted amount from the exact one at a Fourier number, over that.
double emissionError(int columns, double fourier) {
  const SorbingLayer layer = boardAt(20.0);
  LayerProblem problem(uniform(columns, EMITTER), 20.0);
  problem.mass(problem.all(), layer.capacity * EMITTER_START);
  problem.room(EMISSION_FILM, 0.0);
  WallRun run(problem);
  const double before = pollutantMass(run);
  const double t = fourier * EMITTER * EMITTER / layer.diffusivity();
  run.advance(t);
  const double exact = LayerEmission(layer, EMISSION_FILM, EMITTER_START, 0.0).emitted(t);
  return (before - pollutantMass(run)) / exact - 1.0;
}

/// Largest deviation of the density in a sealed layer whose left quarter was loaded, over that of the start.
double sealedError(int columns, double fourier) {
  const SorbingLayer layer = boardAt(20.0);
  LayerProblem problem(uniform(columns, EMITTER), 20.0);
  problem.mass({0, 0, columns / 4 - 1, 0}, layer.capacity * EMITTER_START);
  WallRun run(problem);
  const double t = fourier * EMITTER * EMITTER / layer.diffusivity();
  run.advance(t);
  const SealedLayer exact(layer, 0.25 * EMITTER, EMITTER_START);
  double largest = 0.0;
  for (int i = 0; i < columns; ++i) {
    const double x = (i + 0.5) * EMITTER / columns;
    const double actual = run.solver.state().rhoVOC[static_cast<std::size_t>(i)];
    largest = std::max(largest, std::abs(actual - exact.density(x, t)) / EMITTER_START);
  }
  return largest;
}

}  // namespace

class EmissionOf : public ::testing::TestWithParam<std::tuple<const char*, double>> {};

TEST_P(EmissionOf, aLayerThroughAFilm_followsTheSeries) {
  const auto& [equations, celsius] = GetParam();
  const std::vector<double> widths = reversed(growing(1e-5, 1.05, EMITTER));
  const int columns = static_cast<int>(widths.size());
  LayerProblem problem(widths, celsius, equations);
  problem.mass(problem.all(), boardAt(celsius).capacity * EMITTER_START);
  problem.room(EMISSION_FILM, ROOM_DENSITY);
  WallRun run(problem);
  run.solver.initStep();
  const SorbingLayer layer = boardAt(celsius, run.solver.state().Theta[0]);
  const LayerEmission exact(layer, EMISSION_FILM, EMITTER_START, ROOM_DENSITY);
  const double before = pollutantMass(run);
  for (const double fourier : {0.02, 0.1, 0.4, 1.0}) {
    const double t = fourier * EMITTER * EMITTER / layer.diffusivity();
    run.advance(t);
    std::vector<double> expected, actual;
    for (const double x : centresOf(widths)) expected.push_back(exact.density(x, t) / EMITTER_START);
    for (const double rho : run.solver.state().rhoVOC) actual.push_back(rho / EMITTER_START);
    EXPECT_TRUE(agree(actual, expected, 1e-3)) << "Fourier number " << fourier;
    EXPECT_NEAR(flowToRoom(run, columns), exact.flux(t), 1e-3 * exact.flux(t)) << fourier;
    EXPECT_NEAR(before - pollutantMass(run), exact.emitted(t), 1e-3 * exact.emitted(t)) << fourier;
  }
}

INSTANTIATE_TEST_SUITE_P(Equations, EmissionOf,
                         ::testing::Values(std::make_tuple("ENERGY POLLUTANT", 20.0),
                                           std::make_tuple("ENERGY POLLUTANT", 40.0),
                                           std::make_tuple("ENERGY MOISTURE POLLUTANT", 20.0)));

TEST(Emission, throughAFastFilm_isThatOfAFaceAtTheDensityOfTheRoom) {
  const SorbingLayer layer = boardAt(20.0);
  const LayerEmission exact(layer, std::numeric_limits<double>::infinity(), EMITTER_START, 0.0);
  LayerProblem problem(reversed(growing(1e-6, 1.08, EMITTER)), 20.0);
  problem.mass(problem.all(), layer.capacity * EMITTER_START);
  problem.room(1.0, 0.0);
  WallRun run(problem);
  const double before = pollutantMass(run);
  for (const double fourier : {0.05, 0.3, 1.0}) {
    const double t = fourier * EMITTER * EMITTER / layer.diffusivity();
    run.advance(t);
    EXPECT_NEAR(before - pollutantMass(run), exact.emitted(t), 2e-3 * exact.emitted(t)) << fourier;
  }
}

TEST(Emission, early_isThatOfABodyWithoutEnd) {
  const SorbingLayer layer = boardAt(20.0);
  LayerProblem problem(reversed(growing(2e-6, 1.08, EMITTER)), 20.0);
  problem.mass(problem.all(), layer.capacity * EMITTER_START);
  problem.room(EMISSION_FILM, 0.0);
  problem.maxStep = 600.0;
  WallRun run(problem);
  const double before = pollutantMass(run);
  for (const double t : {600.0, 3600.0}) {
    run.advance(t);
    const double early = earlyEmission(layer, EMISSION_FILM, EMITTER_START, t);
    EXPECT_NEAR(before - pollutantMass(run), early, 2e-3 * early) << t;
  }
}

TEST(Emission, converges_inFirstOrder) {
  // a film sees the centre of the last cell, half a cell behind the surface
  const double coarse = emissionError(20, 0.2), middle = emissionError(40, 0.2),
               fine = emissionError(80, 0.2);
  EXPECT_NEAR(std::log2(coarse / middle), 1.0, 0.1);
  EXPECT_NEAR(std::log2(middle / fine), 1.0, 0.1);
  EXPECT_LT(std::abs(fine), 0.02);
}

TEST(SealedSorption, convergesToTheSeries_inSecondOrder) {
  const double coarse = sealedError(16, 0.02), middle = sealedError(32, 0.02), fine = sealedError(64, 0.02);
  EXPECT_NEAR(std::log2(coarse / middle), 2.0, 0.15);
  EXPECT_NEAR(std::log2(middle / fine), 2.0, 0.15);
  EXPECT_LT(fine, 1e-3);
}

/// Balances of a construction without flow through its outer faces.
class SealedEmission : public ::testing::TestWithParam<const char*> {};

TEST_P(SealedEmission, keepsTheSumOfGasSolidAndEmitted) {
  // a loaded board emits into an air space and through that into a clean layer
  PollutantProblem problem(uniform(24, 0.12), {1.0}, GetParam());
  problem.board({0, 0, 7, 0});
  problem.layer({8, 0, 15, 0}, "Cavity");
  problem.layer({16, 0, 23, 0}, "Screed");
  problem.initial(problem.all(), 20.0);
  problem.initial({0, 0, 3, 0}, 40.0);
  if (problem.hasMoisture()) {
    problem.initial(problem.all(), "RELHUM", "40 %");
    problem.initial({16, 0, 23, 0}, "RELHUM", "80 %");
  }
  problem.mass({0, 0, 7, 0}, 5e-3);
  problem.relTol = 1e-6;
  WallRun run(problem);
  const double start = pollutantMass(run);
  const auto boardMass = [&] {
    double sum = 0.0;
    for (std::size_t n = 0; n < 8; ++n)
      sum += (run.solver.state().mVOC1[n] + run.solver.state().mVOC2[n]) *
             run.element(static_cast<int>(n)).volume;
    return sum;
  };
  for (const double days : {0.1, 1.0, 30.0}) {
    run.advance(days * 86400.0);
    EXPECT_NEAR(pollutantMass(run), start, 1e-10 * start) << days;
  }
  EXPECT_LT(boardMass(), 0.9 * start);
}

INSTANTIATE_TEST_SUITE_P(Equations, SealedEmission,
                         ::testing::Values("ENERGY POLLUTANT", "ENERGY MOISTURE POLLUTANT"));

}  // namespace VELMORA_SOLVER
