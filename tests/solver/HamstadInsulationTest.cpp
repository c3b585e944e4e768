// Wall of brick with mortar and a capillary-active inside insulation under steady climates, benchmark 5 of
// C.-E. Hagentoft, HAMSTAD WP2 modeling, report R-02:8, Chalmers University of Technology, 2002: water
// content and relative humidity after 60 days. The envelope is that of the five submissions of the project's
// participants.

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "solver/WallBench.h"

namespace VELMORA_SOLVER {

namespace {

struct Position {
  double x;                ///< [mm]
  double w;                ///< [kg/m3] converged solution of an independent program
  double RH;               ///< [-] likewise
  double lowest, highest;  ///< [kg/m3] of the five submissions
};

constexpr std::array<Position, 31> REFERENCE = {{
    {0.5, 4.1152, 0.76437, 4.0960, 4.2792},      {97.5, 4.2037, 0.77298, 4.1600, 4.3430},
    {202.5, 4.3024, 0.78207, 4.2400, 4.4160},    {302.5, 4.4168, 0.79196, 4.3520, 4.5092},
    {364.5, 4.5015, 0.79887, 4.4480, 4.5823},    {365.5, 4.1394, 0.80422, 4.0549, 4.3651},
    {367.5, 4.6011, 0.82536, 4.4965, 5.4341},    {370.5, 5.6769, 0.85694, 5.5568, 7.0378},
    {373.5, 7.8098, 0.88830, 7.6981, 8.6375},    {376.5, 13.2799, 0.91895, 12.8023, 13.3729},
    {378.5, 22.6592, 0.93770, 21.2979, 23.5543}, {379.5, 30.5366, 0.94547, 28.5732, 31.9815},
    {380.5, 62.9176, 0.94848, 60.2561, 63.7208}, {382.5, 61.4236, 0.94763, 58.2200, 62.0397},
    {384.5, 59.5794, 0.94654, 55.5623, 60.3437}, {386.5, 57.1831, 0.94503, 51.7762, 58.5417},
    {388.5, 53.8058, 0.94273, 45.6757, 56.0509}, {390.5, 48.3749, 0.93849, 36.1980, 53.1216},
    {392.5, 38.8331, 0.92877, 27.1899, 49.0630}, {394.5, 28.1732, 0.91194, 20.8884, 38.2858},
    {396.5, 20.8609, 0.89286, 16.5495, 29.6959}, {398.5, 16.0825, 0.87328, 13.4613, 23.0276},
    {400.5, 12.8238, 0.85361, 11.1889, 17.8359}, {402.5, 10.5050, 0.83402, 9.4681, 13.8155},
    {405.5, 8.1030, 0.80501, 7.5198, 9.7805},    {408.5, 6.4840, 0.77666, 6.1430, 7.2617},
    {410.5, 5.6792, 0.75819, 5.4394, 6.1752},    {413.5, 4.7468, 0.73119, 4.6065, 5.0736},
    {415.5, 4.2581, 0.71368, 4.1617, 4.4078},    {417.5, 3.8482, 0.69656, 3.7838, 3.9602},
    {419.5, 3.5006, 0.67984, 3.4598, 3.6294},
}};

/// Cells of `width` [m] in all three layers near the contacts and at the surfaces, growing away from them.
std::vector<double> insulatedGrid(double width) {
  const auto graded = [width](double length) {
    const std::vector<double> half = growing(width, 1.08, length / 2.0);
    return joined(half, reversed(half));
  };
  return joined(joined(graded(0.365), graded(0.015)), graded(0.04));
}

WallProblem insulatedWall(double width) {
  const std::vector<double> dx = insulatedGrid(width);
  WallProblem problem(dx);
  problem.balances = "ENERGY MOISTURE";
  problem.relTol = 1e-6;
  problem.duration = 61 * 86400.0;
  problem.maxStep = 86400.0;
  const char* const files[] = {"HamstadBrick_3005.m6", "HamstadMortar_3006.m6", "HamstadInsulation_3007.m6"};
  const double ends[] = {0.365, 0.38, 0.42};
  double x = 0.0;
  int first = 0, layer = 0;
  for (int i = 0; i < static_cast<int>(dx.size()); ++i) {
    x += dx[static_cast<std::size_t>(i)];
    if (x < ends[layer] - 1e-9) continue;
    problem.materialFile({first, 0, i, 0}, "Layer " + std::to_string(layer), shippedMaterial(files[layer]));
    first = i + 1;
    ++layer;
  }
  problem.initial(problem.all(), "TEMPER", "25 C");
  problem.initial(problem.all(), "RELHUM", "60 %");
  problem.film("Outside", 25.0, 0.0, problem.column(0), "LEFT");
  problem.film("Inside", 8.0, 20.0, problem.column(-1), "RIGHT");
  problem.constantClimate("Outside RH", "RELHUM", "80 %");
  problem.constantClimate("Inside RH", "RELHUM", "60 %");
  problem.boundary("VAPDIFF", "Outside vapour", "EXCHANGE",
                   "EXCOEFF = 1.8382e-7 s/m\nTEMPER = Outside climate\nRELHUM = Outside RH\n");
  problem.boundary("VAPDIFF", "Inside vapour", "EXCHANGE",
                   "EXCOEFF = 5.8823e-8 s/m\nTEMPER = Inside climate\nRELHUM = Inside RH\n");
  problem.assign("BOUNDARYCOND", problem.column(0), "Outside vapour", "LEFT");
  problem.assign("BOUNDARYCOND", problem.column(-1), "Inside vapour", "RIGHT");
  return problem;
}

struct InsulationError {
  double w = 0.0;   ///< [kg/m3] largest difference to the reference
  double RH = 0.0;  ///< [-] likewise
  int outside = 0;  ///< positions outside the envelope and more than 1 kg/m3 off the reference
};

InsulationError insulationError(double width) {
  constexpr double CLOSE = 1.0;  // [kg/m3]
  WallRun run(insulatedWall(width));
  run.advance(60 * 86400.0);
  InsulationError error;
  for (const Position& p : REFERENCE) {
    const double w = run.at(p.x / 1000.0, run.solver.state().mw);
    const double RH = run.at(p.x / 1000.0, run.solver.state().RH);
    error.w = std::max(error.w, std::fabs(w - p.w));
    error.RH = std::max(error.RH, std::fabs(RH - p.RH));
    const bool inside = p.lowest <= w && w <= p.highest;
    if (!inside && !(std::fabs(w - p.w) < CLOSE)) ++error.outside;
  }
  return error;
}

}  // namespace

TEST(HamstadInsulation, staysInTheEnvelopeOrCloseToTheReference) {
  const InsulationError error = insulationError(0.00025);
  EXPECT_EQ(error.outside, 0);
  EXPECT_LT(error.RH, 0.003);
}

TEST(HamstadInsulation, convergesWithTheGrid) {
  const double coarse = insulationError(0.001).w, medium = insulationError(0.0005).w;
  const double fine = insulationError(0.00025).w;
  EXPECT_LT(medium, coarse / 1.6);
  EXPECT_LT(fine, medium / 1.6);
}

}  // namespace VELMORA_SOLVER
