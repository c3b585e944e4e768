#include <cmath>
#include <complex>
#include <numbers>
#include <numeric>

#include "solver/WallBench.h"

using namespace VELMORA_SOLVER;

namespace {

constexpr double SLAB_LAMBDA = 1.4;  // [W/mK]
constexpr double SLAB_RHO_C = 2e6;   // [J/m3K]
constexpr double SLAB_DIFFUSIVITY = SLAB_LAMBDA / SLAB_RHO_C;

/// Root of z tan(z) = biot in the n-th interval (n = 0, 1, ...), by bisection.
double eigenvalue(double biot, int n) {
  double low = n * std::numbers::pi;
  double high = low + std::numbers::pi / 2.0;
  for (int k = 0; k < 80; ++k) {
    const double z = 0.5 * (low + high);
    (z * std::tan(z) < biot ? low : high) = z;
  }
  return low;
}

/// Temperature over that of the surroundings, start 1, of a slab sealed at x = 0 with a film at x = length.
/// Carslaw, Jaeger: Conduction of heat in solids, 2nd edition, 3.11.
double cooledSlab(double x, double t, double length, double h) {
  const double biot = h * length / SLAB_LAMBDA;
  double sum = 0.0;
  for (int n = 0; n < 60; ++n) {
    const double z = eigenvalue(biot, n);
    const double factor = 2.0 * std::sin(z) / (z + std::sin(z) * std::cos(z));
    sum += factor * std::cos(z * x / length) * std::exp(-z * z * SLAB_DIFFUSIVITY * t / (length * length));
  }
  return sum;
}

/// Amplitude as a complex number of a slab sealed at x = 0, with a film to a temperature of amplitude 1 at
/// x = length: the steady periodic solution of the heat equation.
std::complex<double> periodic(double x, double omega, double length, double h) {
  const std::complex<double> k = std::sqrt(std::complex<double>(0.0, omega / SLAB_DIFFUSIVITY));
  return std::cosh(k * x) / (std::cosh(k * length) + k * SLAB_LAMBDA / h * std::sinh(k * length));
}

}  // namespace

TEST(Slab, coolsThroughAFilmAsTheFourierSeries) {
  constexpr double LENGTH = 0.1, H = 30.0, START = 20.0;
  ASSERT_NEAR(cooledSlab(0.5 * LENGTH, 1.0, LENGTH, H), 1.0, 1e-3);  // the series gives the start
  const std::vector<double> widths = reversed(growing(1e-5, 1.02, LENGTH));
  WallProblem problem(widths);
  problem.material(problem.all(), "Stone", {SLAB_LAMBDA, SLAB_RHO_C});
  problem.initial(problem.all(), START);
  problem.film("Air", H, 0.0, problem.column(-1), "RIGHT");
  problem.maxStep = 300.0;
  WallRun run(problem);
  for (const double fourier : {0.05, 0.2, 0.5, 1.0, 2.0}) {
    const double t = fourier * LENGTH * LENGTH / SLAB_DIFFUSIVITY;
    run.advance(t);
    std::vector<double> exact;
    for (const double x : centresOf(widths)) exact.push_back(START * cooledSlab(x, t, LENGTH, H));
    EXPECT_TRUE(agree(run.rowCelsius(), exact, 0.003)) << "Fourier number " << fourier;
    const double flow = H * START * cooledSlab(LENGTH, t, LENGTH, H);
    EXPECT_NEAR(run.flowRight(static_cast<int>(widths.size()) - 1), flow, 5e-4 * flow);
  }
}

TEST(Slab, answersASineWithTheExactAmplitudeAndDelay) {
  constexpr double LENGTH = 0.24, H = 25.0, DAY = 86400.0, AMPLITUDE = 8.0;
  constexpr double OMEGA = 2.0 * std::numbers::pi / DAY;
  constexpr int SAMPLES = 24;
  const std::vector<double> widths = reversed(growing(5e-5, 1.06, LENGTH));
  WallProblem problem(widths);
  problem.material(problem.all(), "Stone", {SLAB_LAMBDA, SLAB_RHO_C});
  problem.initial(problem.all(), 10.0);
  problem.climate("Sine", "TEMPER",
                  "KIND = SINUS\nMEANVALUE = 10 C\nAMPLITUDE1 = " + number(AMPLITUDE) +
                      " K\nOSCPERIOD1 = 1 d\nPHASESHIFT1 = 0 s\n");
  problem.boundary("Air", "EXCHANGE", "EXCOEFF = " + number(H) + " W/m2K\nTEMPER = Sine\n");
  problem.assign("BOUNDARYCOND", problem.column(-1), "Air", "RIGHT");
  problem.maxStep = 900.0;
  WallRun run(problem);

  std::vector<std::complex<double>> answer(widths.size());
  for (int k = 1; k <= SAMPLES; ++k) {  // in the twelfth day, when the start is forgotten
    const double t = 11.0 * DAY + k * DAY / SAMPLES;
    run.advance(t);
    const std::vector<double> T = run.rowCelsius();
    for (std::size_t i = 0; i < T.size(); ++i)
      answer[i] += 2.0 / SAMPLES * (T[i] - 10.0) * std::polar(1.0, std::numbers::pi / 2.0 - OMEGA * t);
  }
  const std::vector<double> x = centresOf(widths);
  for (std::size_t i = 0; i < x.size(); ++i) {
    const std::complex<double> exact = AMPLITUDE * periodic(x[i], OMEGA, LENGTH, H);
    EXPECT_NEAR(std::abs(answer[i]), std::abs(exact), 1e-3 * AMPLITUDE) << x[i];
    const double delay = -std::arg(answer[i] / exact) / OMEGA;  // [s]
    EXPECT_NEAR(delay, 0.0, 60.0) << x[i];
  }
  // the sealed surface is late by hours, so the comparison above is no trivial one
  EXPECT_GT(-std::arg(answer.front()) / OMEGA, 3.0 * 3600.0);
}
