#include <cmath>
#include <fstream>
#include <map>
#include <sstream>
#include <stdexcept>

#include "climate/VelClimateCond.h"
#include "material/Material.h"
#include "solver/WallBench.h"

// Balances over a whole year.

using namespace VELMORA_SOLVER;

namespace {

constexpr double YEAR = 365.0 * 86400.0;  // [s]
const std::string ROOT = VELMORA_SOURCE_DIR;
const std::string MATERIALS = ROOT + "/database/DB_material_data/";
const std::string CLIMATE = ROOT + "/database/DB_climate_data/";
constexpr double T_INDOORS = 20.0;  // [C] indoors in the example

std::string replaced(std::string text, const std::string& what, const std::string& by) {
  std::size_t at = text.find(what);
  if (at == std::string::npos) throw std::logic_error("The example has no " + what);
  for (; at != std::string::npos; at = text.find(what, at + by.size())) text.replace(at, what.size(), by);
  return text;
}

/// Hourly outputs are thinned to daily ones: they have no influence on the steps, but take their time.
std::string exampleText() {
  std::ostringstream text;
  text << std::ifstream(ROOT + "/examples/outer_wall/outer_wall.vel").rdbuf();
  const std::string daily = replaced(text.str(), "INTERVAL = 0 d 1 h", "INTERVAL = 0 d 1 d");
  return replaced(replaced(daily, "$(MATERIALS_DIR)/", MATERIALS), "$(CLIMATE_DIR)/", CLIMATE);
}

/// The example with a constant temperature outdoors, all cells at one temperature at the start.
std::string constantClimateText(double outdoors) {
  return replaced(exampleText(), "KIND = DATLINEAR\nFILENAME = " + CLIMATE + "germany_temperature.ccd\n",
                  "KIND = CONSTANT\nCONSTVALUE = " + number(outdoors) + " C\n");
}

double conductivityOf(const std::string& file) {
  const TKL::MessageCapture capture;
  MM::Material material;
  material.read(TKL::Path(MATERIALS + file));
  return material.paraTransport[MM::Material::PT_LAMBDA].value;
}

/// Thermal transmittance [W/m2K] of the wall of the example, from the shipped materials.
double transmittance() {
  return 1.0 /
         (1.0 / 25.0 + 0.140 / conductivityOf("ExpandedPolystyrene_2005.m6") +
          0.240 / conductivityOf("Brick_2001.m6") + 0.015 / conductivityOf("LimePlaster_2003.m6") + 0.13);
}

/// Mean over the year of the hourly temperatures [C], linear between them.
double meanOutdoorTemperature() {
  const TKL::MessageCapture capture;
  VELMORA::VelClimateCond climate;
  std::string type;
  TKL::Unit unit;
  climate.readClimateData(TKL::Path(CLIMATE + "germany_temperature.ccd"), type, unit);
  double sum = 0.0;
  for (int hour = 0; hour < 8760; ++hour)
    sum += 0.5 * (climate.data.value(3600.0 * hour) + climate.data.value(3600.0 * (hour + 1)));
  return sum / 8760.0 - KELVIN;
}

/// Last value of an output file [kWh/m2].
double lastValue(const WallRun& run, const std::string& name) {
  std::ifstream file(run.folder().file("problem.results/" + name));
  std::string line, last;
  while (std::getline(file, line))
    if (line.find_first_not_of(" \t\r") != std::string::npos) last = line;
  std::istringstream numbers(last);
  double time = 0.0, value = 0.0;
  if (!(numbers >> time >> value) || time != 365.0) throw std::runtime_error("No last value: " + last);
  return value;
}

struct MeanFluxes {
  double outside;  ///< [W/m2] positive to the inside
  double inside;
};

MeanFluxes meanFluxes(const std::string& projectText) {
  WallRun run(projectText);
  run.runAll();
  constexpr double PER_HOUR = 1000.0 / 8760.0;
  return {lastValue(run, "heat_outside.out") * PER_HOUR, lastValue(run, "heat_inside.out") * PER_HOUR};
}

}  // namespace

TEST(SealedWall, keepsItsEnergyOverAYear) {
  WallProblem problem(joined(joined(uniform(12, 0.14), uniform(12, 0.24)), uniform(4, 0.015)));
  problem.material({0, 0, 11, 0}, "Insulation", {0.04, 3e4});
  problem.material({12, 0, 23, 0}, "Brick", {0.81, 1.8e6});
  problem.material({24, 0, 27, 0}, "Plaster", {0.7, 1.6e6});
  problem.initial({0, 0, 11, 0}, -10.0);
  problem.initial({12, 0, 27, 0}, 20.0);
  problem.relTol = 1e-6;
  problem.maxStep = 3600.0;
  WallRun run(problem);
  run.advance(1.0);
  const double start = 0.14 * 3e4 * (KELVIN - 10.0) + (0.24 * 1.8e6 + 0.015 * 1.6e6) * (KELVIN + 20.0);
  EXPECT_NEAR(run.energy() / start, 1.0, 1e-9);
  run.advance(YEAR);
  EXPECT_NEAR(run.energy() / start, 1.0, 1e-9);
  // the temperatures have become equal meanwhile
  EXPECT_NEAR(run.celsius(0), run.celsius(27), 1e-3);
}

TEST(OuterWallExample, meanHeatFluxIsTransmittanceTimesMeanDifference) {
  const double expected = transmittance() * (meanOutdoorTemperature() - T_INDOORS);
  const MeanFluxes mean = meanFluxes(exampleText());
  EXPECT_NEAR(mean.inside, expected, 0.005 * std::fabs(expected));
  EXPECT_NEAR(mean.outside, expected, 0.005 * std::fabs(expected));
}

TEST(OuterWallExample, constantClimateGivesTransmittanceTimesDifference) {
  constexpr double T_OUT = 3.15;
  const double expected = transmittance() * (T_OUT - T_INDOORS);
  const MeanFluxes mean = meanFluxes(constantClimateText(T_OUT));
  EXPECT_NEAR(mean.inside, expected, 0.005 * std::fabs(expected));
  EXPECT_NEAR(mean.outside, expected, 0.005 * std::fabs(expected));
}
