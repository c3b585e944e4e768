// Which balance equations can be coupled: one panel for 30 days with each accepted combination, and what is
// said of all others.

#include <gtest/gtest.h>

#include <set>
#include <string>
#include <vector>

#include "support/OutputFileReader.h"
#include "support/TempFolder.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

constexpr double RUN_DAYS = 30.0;
constexpr double EMITTED_START = 1e-3;  // [kg/m3] pollutant in the spruce

/// Wool of 5 by 4 cells whose last column is spruce, which emits. Cold air enters at the bottom of the left
/// face and leaves at its top; the right face is that of a room.
const char* const PANEL = R"(
[SOLVER_SETTINGS]
[CVODE_SOLVER_SETTINGS]
MAX_DT = 1 d
[MATERIALS]
[MATERIAL]
NAME = Wool
FILENAME = $(MATERIALS_DIR)/MineralWool_2004.m6
[MATERIAL]
NAME = Wood
FILENAME = $(MATERIALS_DIR)/Spruce_2006.m6
[CONDITIONS]
[CLIMATE_CONDITIONS]
[CLIMATE_COND]
NAME = Frost
TYPE = TEMPER
KIND = CONSTANT
CONSTVALUE = -5 C
[CLIMATE_COND]
NAME = Warmth
TYPE = TEMPER
KIND = CONSTANT
CONSTVALUE = 20 C
[CLIMATE_COND]
NAME = Humidity
TYPE = RELHUM
KIND = CONSTANT
CONSTVALUE = 60 %
[CLIMATE_COND]
NAME = Pressure below
TYPE = GASPRESS
KIND = CONSTANT
CONSTVALUE = 101326 Pa
[CLIMATE_COND]
NAME = Pressure above
TYPE = GASPRESS
KIND = CONSTANT
CONSTVALUE = 101325 Pa
[CLIMATE_COND]
NAME = Clean
TYPE = VOCDENSG
KIND = CONSTANT
CONSTVALUE = 0 kg/m3
[BOUNDARY_CONDITIONS]
[BOUND_COND]
NAME = Outside heat
TYPE = HEATCOND
KIND = EXCHANGE
EXCOEFF = 25 W/m2K
TEMPER = Frost
[BOUND_COND]
NAME = Inside heat
TYPE = HEATCOND
KIND = EXCHANGE
EXCOEFF = 8 W/m2K
TEMPER = Warmth
[BOUND_COND]
NAME = Outside vapour
TYPE = VAPDIFF
KIND = EXCHANGE
EXCOEFF = 2e-7 s/m
TEMPER = Frost
RELHUM = Humidity
[BOUND_COND]
NAME = Inside vapour
TYPE = VAPDIFF
KIND = EXCHANGE
EXCOEFF = 3e-8 s/m
TEMPER = Warmth
RELHUM = Humidity
[BOUND_COND]
NAME = Outside pollutant
TYPE = VOCDIFF
KIND = EXCHANGE
EXCOEFF = 0.001 m/s
VOCDENSG = Clean
[BOUND_COND]
NAME = Wind below
TYPE = AIRPRESS
KIND = EXCHANGE
EXCOEFF = 1 s/m
TEMPER = Frost
RELHUM = Humidity
VOCDENSG = Clean
GASPRESS = Pressure below
[BOUND_COND]
NAME = Wind above
TYPE = AIRPRESS
KIND = EXCHANGE
EXCOEFF = 1 s/m
TEMPER = Frost
RELHUM = Humidity
VOCDENSG = Clean
GASPRESS = Pressure above
[INITIAL_CONDITIONS]
[INIT_COND]
NAME = Start temperature
TYPE = TEMPER
VALUE = 10 C
[INIT_COND]
NAME = Start humidity
TYPE = RELHUM
VALUE = 70 %
[INIT_COND]
NAME = Start pollutant
TYPE = VOCMASS
VALUE = 1e-3 kg/m3
[DISCRETISATION]
GEOMETRY = PLANE2D
X_STEPS = 4 4 4 4 2 cm
Y_STEPS = 0.5 0.5 0.5 0.5 m
[OUTPUTS]
[GRIDS]
[OUTPUT_GRID]
NAME = Days
INTERVAL = 0 d 5 d
[FORMATS]
[OUTPUT_FORMAT]
NAME = Energy
TYPE = FIELD
FIELD_TYPE = TEMPER
SPACE_TYPE = SINGLE
TIME_TYPE = NONE
TIME_UNIT = d
VALUE_UNIT = C
[OUTPUT_FORMAT]
NAME = Water
TYPE = FIELD
FIELD_TYPE = MOISTURE
SPACE_TYPE = INTEGRAL
TIME_TYPE = NONE
TIME_UNIT = d
VALUE_UNIT = kg/m3
[OUTPUT_FORMAT]
NAME = Gas
TYPE = FIELD
FIELD_TYPE = VOCG
SPACE_TYPE = INTEGRAL
TIME_TYPE = NONE
TIME_UNIT = d
VALUE_UNIT = kg/m3
[OUTPUT_FORMAT]
NAME = Solid
TYPE = FIELD
FIELD_TYPE = VOCS
SPACE_TYPE = INTEGRAL
TIME_TYPE = NONE
TIME_UNIT = d
VALUE_UNIT = kg/m3
[FILES]
[OUTPUT_FILE]
NAME = energy.out
OUTPUT_GRID = Days
OUTPUT_FORMAT = Energy
[OUTPUT_FILE]
NAME = water.out
OUTPUT_GRID = Days
OUTPUT_FORMAT = Water
[OUTPUT_FILE]
NAME = gas.out
OUTPUT_GRID = Days
OUTPUT_FORMAT = Gas
[OUTPUT_FILE]
NAME = solid.out
OUTPUT_GRID = Days
OUTPUT_FORMAT = Solid
[ASSIGNMENTS]
)";

std::string select(const std::string& type, const std::string& range, const std::string& name,
                   const std::string& location) {
  return "[SELECTION]\nTYPE = " + type + "\nRANGE = " + range + "\nNAME = " + name +
         "\nLOCATION = " + location + "\n";
}

std::string panel(const std::string& balances) {
  std::string text =
      "[PROJECT_INFO]\nFILE_VERSION = 5.9\n[INIT]\n[GENERAL]\nBALANCE_EQUATIONS = " + balances +
      "\nDURATION = 30 d\nVOC_DATABASE = $(VOC_DIR)/common.voc\nVOC_IDS = formaldehyde\n" + PANEL +
      select("MATERIAL", "0 0 3 3", "Wool", "ELEMENT") + select("MATERIAL", "4 0 4 3", "Wood", "ELEMENT") +
      select("INITIALCOND", "4 0 4 3", "Start pollutant", "ELEMENT") +
      select("BOUNDARYCOND", "0 0 0 0", "Wind above", "LEFT") +
      select("BOUNDARYCOND", "0 3 0 3", "Wind below", "LEFT");
  for (const char* name : {"Start temperature", "Start humidity"})
    text += select("INITIALCOND", "0 0 4 3", name, "ELEMENT");
  for (const char* name : {"Outside heat", "Outside vapour", "Outside pollutant"})
    text += select("BOUNDARYCOND", "0 0 0 3", name, "LEFT");
  for (const char* name : {"Inside heat", "Inside vapour"})
    text += select("BOUNDARYCOND", "4 0 4 3", name, "RIGHT");
  for (const char* name : {"energy.out", "water.out", "gas.out", "solid.out"})
    text += select("FIELDOUTPUT", "0 0 4 3", name, "ELEMENT");
  return text;
}

/// What the panel has shown at its end.
struct PanelEnd {
  ProcessResult process;
  std::vector<double> celsius;
  bool hasWater = false;
  double water = 0.0;  ///< [kg]
  bool hasPollutant = false;
  double pollutant = 0.0;  ///< [kg] in gas and solid
};

class Combination : public ::testing::Test {
 protected:
  std::vector<double> last(const std::string& file) const {
    const TKL::ReadOutputFile output = TKL::readOutputFile(folder.read("panel.results/" + file));
    EXPECT_EQ(output.records.size(), 7U) << file;
    if (output.records.empty() || output.records.back().time != RUN_DAYS) {
      ADD_FAILURE() << file << " does not reach the end";
      return std::vector<double>(20, 0.0);
    }
    return output.records.back().values;
  }

  PanelEnd run(const std::string& balances) const {
    std::filesystem::remove_all(folder.file("panel.results"));
    PanelEnd end;
    end.process = runSolver({"-x", "-v0", folder.write("panel.vel", panel(balances))});
    EXPECT_EQ(end.process.exitCode, 0) << balances << end.process.err;
    const auto has = [&](const char* word) { return balances.find(word) != std::string::npos; };
    if (has("ENERGY")) end.celsius = last("energy.out");
    end.hasWater = has("MOISTURE");
    if (end.hasWater) end.water = last("water.out")[0];
    end.hasPollutant = has("POLLUTANT");
    if (end.hasPollutant) end.pollutant = last("gas.out")[0] + last("solid.out")[0];
    return end;
  }

  TKL::TempFolder folder;
};

constexpr double WOOD_VOLUME = 0.02 * 2.0;  // [m3]

}  // namespace

TEST_F(Combination, thePanelRunsWithAllTenOfThem) {
  for (const char* balances : {"ENERGY", "MOISTURE", "ENERGY MOISTURE", "ENERGY AIR", "ENERGY MOISTURE AIR",
                               "ENERGY POLLUTANT", "ENERGY MOISTURE POLLUTANT", "ENERGY AIR POLLUTANT",
                               "ENERGY MOISTURE AIR POLLUTANT", "ENERGY MOISTURE ICE"}) {
    SCOPED_TRACE(balances);
    const PanelEnd end = run(balances);
    for (const double T : end.celsius) {
      EXPECT_GT(T, -5.01);
      EXPECT_LT(T, 20.01);
    }
    if (end.hasWater) {
      EXPECT_GT(end.water, 0.0);
    }
    if (end.hasPollutant) {  // the wood emits for months
      EXPECT_GT(end.pollutant, 0.05 * EMITTED_START * WOOD_VOLUME);
      EXPECT_LT(end.pollutant, 0.9 * EMITTED_START * WOOD_VOLUME);
    }
  }
}

TEST_F(Combination, allOthersAreRefused) {
  const char* const names[] = {"ENERGY", "MOISTURE", "ICE", "AIR", "SALT", "POLLUTANT"};
  enum { E = 1, M = 2, I = 4, A = 8, P = 32 };
  // ice without moisture does nothing, and changes nothing
  const std::set<int> accepted{E,     M,         E | M,     E | A,         E | M | A,
                               E | P, E | M | P, E | A | P, E | M | A | P, E | M | I,
                               E | I, E | A | I, E | P | I, E | A | P | I};
  for (int set = 1; set < 64; ++set) {
    std::string balances;
    for (int i = 0; i < 6; ++i)
      if ((set >> i & 1) != 0) balances += std::string(names[i]) + " ";
    const ProcessResult result = runSolver({"-x", "-v0", "-t", folder.write("panel.vel", panel(balances))});
    if (accepted.count(set) == 1) {
      EXPECT_EQ(result.exitCode, 0) << balances << result.err;
      continue;
    }
    EXPECT_EQ(result.exitCode, 1) << balances;
    EXPECT_TRUE(result.errHasInOrder(
        {"This combination of balance equations is invalid or not supported in this solver!",
         "Error during initialization of solver!"}))
        << balances << result.err;
  }
}

}  // namespace VELMORA_TEST
