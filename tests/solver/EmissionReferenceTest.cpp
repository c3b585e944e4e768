// The exact solutions themselves: their equation, their ends in space and time, and what a wrong one would
// do.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

#include "solver/EmissionReference.h"

using namespace VELMORA_SOLVER;

namespace {

const SorbingLayer BOARD{0.02, 3000.0, 3e-7};
constexpr double BOARD_FILM = 6e-5;  // [m/s], Bi = 4
constexpr double BOARD_START = 2e-3;
constexpr double BOARD_AIR = 3e-4;
// [s] in which the layer would empty at the flow of its first thickness
const double BOARD_TIME = BOARD.thickness * BOARD.thickness / BOARD.diffusivity();

const LayerEmission& boardEmission() {
  static const LayerEmission emission(BOARD, BOARD_FILM, BOARD_START, BOARD_AIR);
  return emission;
}

using DensityField = std::function<double(double, double)>;

/// Residual of the equation at x and t over the rate of change, by central differences.
double emissionResidual(const DensityField& density, const SorbingLayer& layer, double x, double t) {
  const double dx = 1e-3 * layer.thickness;
  const double dt = 1e-4 * t;
  const double rate = (density(x, t + dt) - density(x, t - dt)) / (2.0 * dt);
  const double bend = (density(x + dx, t) - 2.0 * density(x, t) + density(x - dx, t)) / (dx * dx);
  return (layer.capacity * rate - layer.conductance * bend) / (layer.capacity * rate);
}

/// Integral over the layer by Simpson's rule.
double amountInLayer(const DensityField& density, const SorbingLayer& layer, double t) {
  constexpr int HALVES = 400;
  const double dx = layer.thickness / HALVES;
  double sum = density(0.0, t) + density(layer.thickness, t);
  for (int i = 1; i < HALVES; ++i) sum += (i % 2 == 1 ? 4.0 : 2.0) * density(i * dx, t);
  return layer.capacity * sum * dx / 3.0;
}

DensityField boardDensity() {
  return [](double x, double t) { return boardEmission().density(x, t); };
}

}  // namespace

TEST(EmissionReference, eigenvalues_solveTheirEquationEachInItsInterval) {
  const std::vector<double>& roots = boardEmission().eigenvalues();
  ASSERT_NEAR(boardEmission().biot(), 4.0, 1e-12);
  for (std::size_t n = 0; n < 50; ++n) {
    const double b = roots[n];
    EXPECT_GT(b, static_cast<double>(n) * std::numbers::pi);
    EXPECT_LT(b, (static_cast<double>(n) + 0.5) * std::numbers::pi);
    EXPECT_NEAR(b * std::sin(b), 4.0 * std::cos(b), 1e-12 * (b + 4.0));
  }
}

TEST(EmissionReference, firstEigenvalues_areThoseOfThePublishedTable) {
  // J. Crank, table 4.2 (roots of b tan b = L), L = 1
  const LayerEmission emission({1.0, 1.0, 1.0}, 1.0, 1.0, 0.0);
  const double table[] = {0.8603, 3.4256, 6.4373, 9.5293, 12.6453, 15.7713};
  for (std::size_t n = 0; n < std::size(table); ++n) EXPECT_NEAR(emission.eigenvalues()[n], table[n], 6e-5);
}

TEST(EmissionReference, emission_solvesItsEquation) {
  for (const double fourier : {0.05, 0.3, 1.5})
    for (const double place : {0.1, 0.5, 0.9})
      EXPECT_NEAR(emissionResidual(boardDensity(), BOARD, place * BOARD.thickness, fourier * BOARD_TIME), 0.0,
                  1e-4);
}

TEST(EmissionReference, emission_doesNotSolveTheEquationOfAnotherLayer) {
  SorbingLayer other = BOARD;
  other.capacity *= 1.01;
  EXPECT_GT(std::abs(emissionResidual(boardDensity(), other, 0.5 * BOARD.thickness, 0.3 * BOARD_TIME)), 5e-3);
}

TEST(EmissionReference, emission_meetsBothFaces) {
  const double dx = 1e-4 * BOARD.thickness, L = BOARD.thickness, t = 0.2 * BOARD_TIME;
  const LayerEmission& emission = boardEmission();
  EXPECT_NEAR(emission.density(dx, t), emission.density(-dx, t), 1e-12 * BOARD_START);
  const double slope = (emission.density(L + dx, t) - emission.density(L - dx, t)) / (2.0 * dx);
  const double film = BOARD_FILM * (emission.density(L, t) - BOARD_AIR);
  EXPECT_NEAR(-BOARD.conductance * slope, film, 1e-6 * film);
  EXPECT_NEAR(emission.flux(t), film, 1e-9 * film);
}

TEST(EmissionReference, emission_startsAtTheDensityOfTheStart) {
  const double t = 1e-5 * BOARD_TIME;
  for (const double place : {0.0, 0.5, 0.95})
    EXPECT_NEAR(boardEmission().density(place * BOARD.thickness, t), BOARD_START, 1e-9 * BOARD_START);
}

TEST(EmissionReference, emission_endsAtTheDensityOfTheAir) {
  const double all = BOARD.capacity * BOARD.thickness * (BOARD_START - BOARD_AIR);
  EXPECT_NEAR(boardEmission().density(0.0, 20.0 * BOARD_TIME), BOARD_AIR, 1e-9 * BOARD_START);
  EXPECT_NEAR(boardEmission().emitted(20.0 * BOARD_TIME), all, 1e-9 * all);
}

TEST(EmissionReference, emittedAndRemaining_addUpToTheStart) {
  const double all = BOARD.capacity * BOARD.thickness * BOARD_START;
  for (const double fourier : {0.02, 0.3, 1.5}) {
    const double t = fourier * BOARD_TIME;
    EXPECT_NEAR(boardEmission().emitted(t) + amountInLayer(boardDensity(), BOARD, t), all, 1e-9 * all);
  }
}

TEST(EmissionReference, emitted_growsByTheFlux) {
  const double t = 0.3 * BOARD_TIME, dt = 1e-4 * BOARD_TIME;
  const double growth = (boardEmission().emitted(t + dt) - boardEmission().emitted(t - dt)) / (2.0 * dt);
  EXPECT_NEAR(growth, boardEmission().flux(t), 1e-6 * growth);
}

TEST(EmissionReference, earlyEmission_isThatOfABodyWithoutEnd) {
  const LayerEmission clean(BOARD, BOARD_FILM, BOARD_START, 0.0);
  for (const double fourier : {1e-3, 1e-2}) {
    const double early = earlyEmission(BOARD, BOARD_FILM, BOARD_START, fourier * BOARD_TIME);
    EXPECT_NEAR(clean.emitted(fourier * BOARD_TIME), early, 1e-6 * early);
  }
}

TEST(EmissionReference, lateEmission_isNotThatOfABodyWithoutEnd) {
  const LayerEmission clean(BOARD, BOARD_FILM, BOARD_START, 0.0);
  const double early = earlyEmission(BOARD, BOARD_FILM, BOARD_START, BOARD_TIME);
  EXPECT_LT(clean.emitted(BOARD_TIME), 0.9 * early);
}

TEST(EmissionReference, withoutResistanceOfTheLayer_emptiesAsAWellMixedBody) {
  // Bi = 1e-4: one exponential with film / (capacity thickness)
  const double film = 1e-4 * BOARD.conductance / BOARD.thickness;
  const LayerEmission emission(BOARD, film, BOARD_START, 0.0);
  const double t = BOARD.capacity * BOARD.thickness / film;
  EXPECT_NEAR(emission.density(0.5 * BOARD.thickness, t) / BOARD_START, std::exp(-1.0), 1e-4);
}

TEST(EmissionReference, withoutFilm_theFaceHasTheDensityOfTheAir) {
  const LayerEmission emission(BOARD, std::numeric_limits<double>::infinity(), BOARD_START, BOARD_AIR);
  const double t = 0.2 * BOARD_TIME;
  EXPECT_NEAR(emission.density(BOARD.thickness, t), BOARD_AIR, 1e-12 * BOARD_START);
  const DensityField density = [&](double x, double at) { return emission.density(x, at); };
  EXPECT_NEAR(emissionResidual(density, BOARD, 0.5 * BOARD.thickness, t), 0.0, 1e-4);
  // early: as a half-space, 2 rho sqrt(capacity conductance t / pi)
  const double early = 1e-3 * BOARD_TIME;
  const double halfSpace = 2.0 * (BOARD_START - BOARD_AIR) *
                           std::sqrt(BOARD.capacity * BOARD.conductance * early / std::numbers::pi);
  EXPECT_NEAR(emission.emitted(early), halfSpace, 1e-9 * halfSpace);
}

TEST(SealedLayerReference, solvesItsEquation) {
  const SealedLayer layer(BOARD, 0.3 * BOARD.thickness, BOARD_START);
  const DensityField density = [&](double x, double t) { return layer.density(x, t); };
  for (const double place : {0.1, 0.6, 0.9})
    EXPECT_NEAR(emissionResidual(density, BOARD, place * BOARD.thickness, 0.05 * BOARD_TIME), 0.0, 1e-4);
}

TEST(SealedLayerReference, keepsItsAmount) {
  const SealedLayer layer(BOARD, 0.3 * BOARD.thickness, BOARD_START);
  const DensityField density = [&](double x, double t) { return layer.density(x, t); };
  const double all = 0.3 * BOARD.capacity * BOARD.thickness * BOARD_START;
  for (const double fourier : {0.005, 0.1, 1.0})
    EXPECT_NEAR(amountInLayer(density, BOARD, fourier * BOARD_TIME), all, 1e-9 * all);
}

TEST(SealedLayerReference, startsAsAStepAndEndsEven) {
  const SealedLayer layer(BOARD, 0.3 * BOARD.thickness, BOARD_START);
  const double early = 1e-5 * BOARD_TIME;
  EXPECT_NEAR(layer.density(0.2 * BOARD.thickness, early), BOARD_START, 1e-9 * BOARD_START);
  EXPECT_NEAR(layer.density(0.4 * BOARD.thickness, early), 0.0, 1e-9 * BOARD_START);
  for (const double place : {0.0, 1.0})
    EXPECT_NEAR(layer.density(place * BOARD.thickness, 5.0 * BOARD_TIME), 0.3 * BOARD_START,
                1e-9 * BOARD_START);
}

TEST(SealedLayerReference, losesNothingThroughItsFaces) {
  const SealedLayer layer(BOARD, 0.3 * BOARD.thickness, BOARD_START);
  const double dx = 1e-4 * BOARD.thickness, t = 0.05 * BOARD_TIME;
  EXPECT_NEAR(layer.density(dx, t), layer.density(-dx, t), 1e-12 * BOARD_START);
  EXPECT_NEAR(layer.density(BOARD.thickness + dx, t), layer.density(BOARD.thickness - dx, t),
              1e-12 * BOARD_START);
}
