// Every quantity that balances of heat, moisture and air offer, written by one run in binary files, read by
// the independent reader and held against the other quantities and the formulas between them.

#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "support/OutputFileReader.h"
#include "support/TempFolder.h"
#include "system/ConditionProject.h"
#include "system/SolverProcess.h"

namespace VELMORA_TEST {

namespace {

constexpr double QUANTITY_RV = 461.89;  // [J/kgK]
constexpr double QUANTITY_RA = 287.1;   // [J/kgK]
constexpr int QUANTITY_COLUMNS = 3, QUANTITY_ROWS = 2, QUANTITY_CELLS = QUANTITY_COLUMNS * QUANTITY_ROWS;
constexpr int QUANTITY_SIDES = 7 + 2 + 1;  // between cells, at the left and at the outlet; the rest is sealed

// cells, row by row
enum { HEATED_CELL = 2, DRIPPING_CELL = 5, DRAUGHTY_CELL = 1, LEAKY_CELL = 4 };

/// Content 0.2 RH; expands with heat and water.
const char* const EXPANDING_PLASTER =
    "V6MARLZ! 006.000\n\n[IDENTIFICATION]\nNAME = en:Plaster\n[STORAGE_BASE_PARAMETERS]\nRHO = 2000 kg/m3\n"
    "CE = 1000 J/kgK\nTHETA_POR = 0.4 m3/m3\nTHETA_EFF = 0.2 m3/m3\n[TRANSPORT_BASE_PARAMETERS]\n"
    "LAMBDA = 0.8 W/mK\nMEW = 10 -\nKG = 1e-6 s\n[MECHANICAL_BASE_PARAMETERS]\nALPHA = 0.01 1/K\n"
    "BETA_THETA_L = 2 mm/m\n[MOISTURE_STORAGE]\nFUNCTION = Theta_l(RH)\n0 1\n0 0.2\n[MOISTURE_TRANSPORT]\n"
    "FUNCTION = lgKl(Theta_l)\n0 0.2\n-17 -13\n[HEAT_TRANSPORT]\nFUNCTION = lambda(Theta_l)\n0 0.2\n0.8 "
    "2.8\n";

struct ShownQuantity {
  const char* keyword;
  const char* description;
  const char* unit;
};

const std::vector<ShownQuantity> FIELD_QUANTITIES{
    {"TEMPER", "Temperature", "K"},
    {"ENERGY", "Internal energy density", "J/m3"},
    {"MOISTURE", "Moisture mass density (liquid + vapor + ice)", "kg/m3"},
    {"WATERMASS", "Water mass density (liquid)", "kg/m3"},
    {"VAPORMASS", "Water vapor mass density (vapor)", "kg/m3"},
    {"THETAL", "Liquid water content (Volume fraction)", "m3/m3"},
    {"ULIQU", "Liquid water content (Mass fraction)", "kg/kg"},
    {"OVHWATCONT", "Overhygroscopic water content (Volume fraction)", "m3/m3"},
    {"OVHWATMASS", "Overhygroscopic water mass density", "kg/m3"},
    {"RELHUM", "Relative humidity", "---"},
    {"GASPRESS", "Gas pressure", "Pa"},
    {"GASPRESS_DIFF", "Gas pressure difference to normal air pressure", "Pa"},
    {"LIQUIDPRESS", "Liquid pressure", "Pa"},
    {"CAPILLARYPRESS", "Capillary pressure", "Pa"},
    {"VAPPRESS", "Water vapor pressure", "Pa"},
    {"THERMAL_EXPANSION", "Thermal expansion", "mm/m"},
    {"HYGRIC_EXPANSION", "Hygric expansion", "mm/m"},
    {"HEATSOURCE", "Heat source", "W/m3"},
    {"MOISTSOURCE", "Moisture source", "kg/m3s"},
    {"HP_FLOW_TEMPERATURE", "Heat pipe model: flow temperature (supply)", "K"},
    {"HP_RETURN_FLOW_TEMPERATURE", "Heat pipe model: return flow temperature", "K"},
    {"SATDEGREE", "Moisture saturation degree (Moisture volume divided by pore volume)", "---"},
    {"CONVECTIVE_MOISTURE_SOURCE", "Moisture source due to leakages calculated according WTA 6.2", "kg/m3s"},
    {"CONVECTIVE_AIR_FLOW", "Air volume flow due to leakages calculated according WTA 6.2", "m3/m2s"},
    {"HEATFLUXMEAN", "Mean value of heat flux for element", "W/m2"},
    {"AIRFLUXMEAN", "Mean value of air flux for element", "kg/m2s"},
    {"AIRFLUXMAX_X", "Max value of air flux in x direction for element", "kg/m2s"},
    {"AIRFLUXMAX_Y", "Max value of air flux in y directionfor element", "kg/m2s"},
    {"AIRENTHALPYFLUX", "Mean value of enthalpy of air flux for element.", "W/m2"},
    {"AIRFLOWENTHALPY_IN", "Enthalpy of inflow of air flow source model.", "W/m2"},
    {"AIRFLOWENTHALPY_OUT", "Enthalpy of outflow of air flow source model.", "W/m2"},
    {"HP_HEAT_FLUX", "Heat pipe model: heat flux from pipe to surrounding in W", "W"},
    {"DEW_POINT", "Dew point temerature of the element", "K"}};

const std::vector<ShownQuantity> FLUX_QUANTITIES{
    {"HEATFLUX", "Heat flux (conduction)", "W/m2"},
    {"MOISTFLUX", "Total moisture flux", "kg/m2s"},
    {"WATFLUX", "Water flux (liquid phase only)", "kg/m2s"},
    {"VAPDIFF", "Vapour flux (vapour diffusion)", "kg/m2s"},
    {"VAPCONV", "Vapour flux (vapour convection)", "kg/m2s"},
    {"AIRFLUX", "Total dry air mass flux", "kg/m2s"},
    {"NORMRAIN", "Rain flow density normal to the surface", "kg/m2s"},
    {"SHWRAD", "Shortwave radiation flux absorbed from the surface", "W/m2"},
    {"LWRAD", "Longwave radiation balance absorbed from the surface", "W/m2"},
    {"AIRENTH", "Total dry air enthalpy flux", "W/m2"},
    {"RAINRUNOFF", "Rain runoff flow density on the surface", "kg/m2s"},
    {"RAINRUNOFFENTH", "Enthalpy flow due to rain runoff on the surface", "W/m2"},
    {"WATENTH", "Enthalpy flow due to liquid water flow", "W/m2"}};

std::string quantityBlock(const std::string& title, const std::string& name, const std::string& lines) {
  return "[" + title + "]\nNAME = " + name + "\n" + lines;
}
std::string quantityClimate(const std::string& name, const std::string& type, const std::string& value) {
  return quantityBlock("CLIMATE_COND", name,
                       "TYPE = " + type + "\nKIND = CONSTANT\nCONSTVALUE = " + value + "\n");
}
std::string quantityBoundary(const std::string& name, const std::string& type, const std::string& kind,
                             const std::string& lines) {
  return quantityBlock("BOUND_COND", name, "TYPE = " + type + "\nKIND = " + kind + "\n" + lines);
}
std::string quantitySource(const std::string& name, const std::string& type, const std::string& lines) {
  return quantityBlock("FIELD_COND", name, "TYPE = " + type + "\n" + lines);
}
std::string quantitySelection(const std::string& type, const std::string& range, const std::string& name,
                              const std::string& location) {
  return "[SELECTION]\nTYPE = " + type + "\nRANGE = " + range + "\nNAME = " + name +
         "\nLOCATION = " + location + "\n";
}

std::string quantityConditions() {
  return "[CONDITIONS]\n[CLIMATE_CONDITIONS]\n" + quantityClimate("Room", "TEMPER", "22 C") +
         quantityClimate("Outside", "TEMPER", "8 C") + quantityClimate("Damp", "RELHUM", "80 %") +
         quantityClimate("Sun", "SHWRAD", "400 W/m2") + quantityClimate("Sky", "LOWRAD", "50 W/m2") +
         quantityClimate("Rain", "NORRAIN", "4 l/m2h") + quantityClimate("High", "GASPRESS", "101345 Pa") +
         quantityClimate("Low", "GASPRESS", "101325 Pa") + quantityClimate("Power", "ENESOURCE", "100 W/m3") +
         quantityClimate("Water", "WATSOURCE", "1e-5 kg/m3s") +
         quantityClimate("Breeze", "FLUIDVELOCITY", "1e-5 m/s") + "[BOUNDARY_CONDITIONS]\n" +
         quantityBoundary("Film", "HEATCOND", "EXCHANGE", "EXCOEFF = 8 W/m2K\nTEMPER = Outside\n") +
         quantityBoundary("Sunshine", "SHWRAD", "IMPFLUX", "SURABSOR = 0.6 -\nSHWRAD = Sun\n") +
         quantityBoundary("Skylight", "LOWRAD", "IMPFLUX", "SUREMISS = 0.9 -\nLOWRAD = Sky\n") +
         quantityBoundary("Shower", "RAIN", "IMPFLUX",
                          "EXPCOEFF = 0.5 -\nMINRTEMP = 0 C\nMINRFLUX = 0 l/m2s\nTEMPER = Outside\nRELHUM = "
                          "Damp\nNORRAIN = Rain\n") +
         quantityBoundary("Wind", "AIRPRESS", "EXCHANGE",
                          "EXCOEFF = 1 s/m\nTEMPER = Outside\nRELHUM = Damp\nGASPRESS = High\n") +
         quantityBoundary("Lee", "AIRPRESS", "EXCHANGE",
                          "EXCOEFF = 1 s/m\nTEMPER = Room\nRELHUM = Damp\nGASPRESS = Low\n") +
         "[FIELD_CONDITIONS]\n" + quantitySource("Heater", "ENESOURCE", "ENESOURCE = Power\n") +
         quantitySource("Drip", "WATSOURCE", "WATSOURCE = Water\n") +
         quantitySource("Draught", "AIRFLOW", "FLOW_DIRECTION = 1 -\nFLUIDVELOCITY = Breeze\n") +
         quantitySource("Leak", "CONVECTIVE_SOURCE",
                        "FLAGS = CONVECTION_X\nCMC_INDOOR_TEMPER = Room\nCMC_OUTDOOR_TEMPER = Outside\n"
                        "CMC_INDOOR_RELHUM = Damp\nCMP_Q50 = 3 m3/m2h\nCMP_HEIGHT = 8 m\n"
                        "CMP_DIFFPRESSURE_MECH = 0 Pa\n") +
         "[INITIAL_CONDITIONS]\n" + quantityBlock("INIT_COND", "Mild", "TYPE = TEMPER\nVALUE = 12 C\n") +
         quantityBlock("INIT_COND", "Moist", "TYPE = RELHUM\nVALUE = 70 %\n") +
         quantityBlock("INIT_COND", "Wet", "TYPE = RELHUM\nVALUE = 97 %\n");
}

/// Outputs of all quantities of a list, of all cells or of all sides.
std::string quantityOutputs(std::string& files, std::string& assignments) {
  std::string formats;
  const auto add = [&](const ShownQuantity& quantity, bool field) {
    const std::string name = quantity.keyword, type = field ? "FIELD" : "FLUX";
    formats += quantityBlock("OUTPUT_FORMAT", name,
                             "TYPE = " + type + "\n" + type + "_TYPE = " + name +
                                 "\nSPACE_TYPE = SINGLE\nTIME_TYPE = NONE\nTIME_UNIT = h\nVALUE_UNIT = " +
                                 quantity.unit + "\nBINARY = yes\n");
    files += quantityBlock("OUTPUT_FILE", name, "OUTPUT_GRID = Hours\nOUTPUT_FORMAT = " + name + "\n");
    if (field) {
      assignments += quantitySelection("FIELDOUTPUT", "0 0 2 1", name, "ELEMENT");
      return;
    }
    assignments += quantitySelection("FLUXOUTPUT", "0 0 2 1", name, "LEFT") +
                   quantitySelection("FLUXOUTPUT", "2 0 2 1", name, "RIGHT") +
                   quantitySelection("FLUXOUTPUT", "0 0 2 1", name, "TOP") +
                   quantitySelection("FLUXOUTPUT", "0 1 2 1", name, "BOTTOM");
  };
  for (const ShownQuantity& quantity : FIELD_QUANTITIES) add(quantity, true);
  for (const ShownQuantity& quantity : FLUX_QUANTITIES) add(quantity, false);
  return formats;
}

std::string quantityProject() {
  std::string files, assignments;
  const std::string formats = quantityOutputs(files, assignments);
  const auto assign = [&](const char* type, const char* range, const char* name, const char* location) {
    assignments += quantitySelection(type, range, name, location);
  };
  assign("MATERIAL", "0 0 2 1", "Plaster", "ELEMENT");
  assign("INITIALCOND", "0 0 2 1", "Mild", "ELEMENT");
  assign("INITIALCOND", "0 0 1 1", "Moist", "ELEMENT");
  assign("INITIALCOND", "2 0 2 1", "Wet", "ELEMENT");
  for (const char* name : {"Film", "Sunshine", "Skylight", "Shower"})
    assign("BOUNDARYCOND", "0 0 0 1", name, "LEFT");
  assign("BOUNDARYCOND", "0 1 0 1", "Wind", "LEFT");
  assign("BOUNDARYCOND", "2 0 2 0", "Lee", "RIGHT");
  assign("FIELDCOND", "2 0 2 0", "Heater", "ELEMENT");
  assign("FIELDCOND", "2 1 2 1", "Drip", "ELEMENT");
  assign("FIELDCOND", "1 0 1 0", "Draught", "ELEMENT");
  assign("FIELDCOND", "1 1 1 1", "Leak", "ELEMENT");
  return "[PROJECT_INFO]\nFILE_VERSION = 5.9\n[INIT]\n[GENERAL]\nBALANCE_EQUATIONS = ENERGY MOISTURE AIR\n"
         "DURATION = 2 h\nPRESSURE_UPDATE_INTERVAL = 10 min\nUSE_KIRCHHOFF = "
         "NO\n[SOLVER_SETTINGS]\n[CVODE_SOLVER_SETTINGS]\n"
         "[MATERIALS]\n" +
         quantityBlock("MATERIAL", "Plaster", "FILENAME = plaster.m6\n") + quantityConditions() +
         "[DISCRETISATION]\nGEOMETRY = PLANE2D\nX_STEPS = 0.1 0.1 0.1 m\nY_STEPS = 0.12 0.12 m\nZ_STEPS = 1 "
         "m\n" +
         "[OUTPUTS]\n[GENERAL]\nMAX_HYG_RELHUM = 90 %\nEXP_REF_TEMPER = 10 C\nEXP_REF_RELHUM = 50 "
         "%\n[GRIDS]\n" +
         quantityBlock("OUTPUT_GRID", "Hours", "INTERVAL = 0 d 1 h\n") + "[FORMATS]\n" + formats +
         "[FILES]\n" + files + "[ASSIGNMENTS]\n" + assignments;
}

/// The files of one run for all tests.
class Quantities : public ::testing::Test {
 protected:
  void SetUp() override {
    if (files_.empty()) runOnce();
    ASSERT_EQ(files_.size(), FIELD_QUANTITIES.size() + FLUX_QUANTITIES.size());
  }
  static void TearDownTestSuite() { files_.clear(); }

  static void runOnce() {
    const TKL::TempFolder folder;
    folder.write("plaster.m6", EXPANDING_PLASTER);
    const ProcessResult result = runSolver({"-x", "-v0", folder.write("wall.vel", quantityProject())});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    for (const auto* list : {&FIELD_QUANTITIES, &FLUX_QUANTITIES})
      for (const ShownQuantity& quantity : *list)
        files_[quantity.keyword] =
            TKL::readOutputFile(folder.read(std::string("wall.results/") + quantity.keyword));
  }

  static const TKL::ReadOutputFile& file(const std::string& keyword) { return files_.at(keyword); }
  /// The value of a cell in the last record, found by the place that the file gives it.
  static double at(const std::string& keyword, int cell) {
    const TKL::ReadOutputFile& field = file(keyword);
    for (std::size_t i = 0; i < field.numbers.size(); ++i) {
      const auto& element = field.elements.at(static_cast<std::size_t>(field.numbers[i]));
      if (element.column == cell % QUANTITY_COLUMNS && element.row == cell / QUANTITY_COLUMNS)
        return field.records.back().values.at(i);
    }
    ADD_FAILURE() << keyword << " has no cell " << cell;
    return 0.0;
  }
  /// The flux density through a side in the last record, positive to the right and upwards.
  static double through(const std::string& keyword, bool vertical, int column, int row) {
    const std::vector<double> found = throughIfThere(keyword, vertical, column, row);
    EXPECT_EQ(found.size(), 1U) << keyword << " at " << column << " " << row;
    return found.empty() ? 0.0 : found.front();
  }
  /// None for a sealed surface, which is no side.
  static std::vector<double> throughIfThere(const std::string& keyword, bool vertical, int column, int row) {
    const TKL::ReadOutputFile& flux = file(keyword);
    std::vector<double> found;
    for (std::size_t i = 0; i < flux.numbers.size(); ++i) {
      const auto& side = flux.sides.at(static_cast<std::size_t>(flux.numbers[i]));
      if ((side.tag == 1) == vertical && side.column == column && side.row == row)
        found.push_back(flux.records.back().values.at(i));
    }
    return found;
  }
  enum place { LEFT, RIGHT, TOP, BOTTOM };
  /// The flux density through a side of a cell, or none.
  static std::vector<double> beside(const std::string& keyword, int cell, place where) {
    const int i = cell % QUANTITY_COLUMNS, j = cell / QUANTITY_COLUMNS;
    return throughIfThere(keyword, where == LEFT || where == RIGHT, i + (where == RIGHT ? 1 : 0),
                          j + (where == BOTTOM ? 1 : 0));
  }
  static double meanAround(const std::string& keyword, int cell) {
    double sum = 0.0;
    int count = 0;
    for (const place where : {LEFT, RIGHT, TOP, BOTTOM}) {
      for (const double flux : beside(keyword, cell, where)) {
        sum += std::fabs(flux);
        ++count;
      }
    }
    return sum / count;
  }
  static double saturation(double T) { return 288.68 * std::pow(1.098 + (T - 273.15) / 100.0, 8.02); }
  static double enthalpyOfVapour(double T) { return 2050.0 * T + 3.08e6; }

  static void expectClose(double actual, double expected, const char* what, int cell) {
    EXPECT_NEAR(actual, expected, 1e-9 * std::fabs(expected) + 1e-300) << what << " of cell " << cell;
  }

 private:
  static inline std::map<std::string, TKL::ReadOutputFile> files_;
};

}  // namespace

TEST_F(Quantities, eachHasAFileWithItsNameUnitAndTimes) {
  for (const auto* list : {&FIELD_QUANTITIES, &FLUX_QUANTITIES}) {
    const bool field = list == &FIELD_QUANTITIES;
    for (const ShownQuantity& quantity : *list) {
      SCOPED_TRACE(quantity.keyword);
      const TKL::ReadOutputFile& one = file(quantity.keyword);
      EXPECT_TRUE(one.binary);
      EXPECT_EQ(one.type, field ? "FIELD" : "FLUX");
      EXPECT_EQ(one.quantity, quantity.description);
      EXPECT_EQ(one.valueUnit, quantity.unit);
      ASSERT_EQ(one.records.size(), field ? 3U : 2U);  // fluxes have no record at the start
      for (std::size_t i = 0; i < one.records.size(); ++i)
        EXPECT_EQ(one.records[i].time, static_cast<double>(field ? i : i + 1));
      EXPECT_EQ(one.records.back().values.size(),
                static_cast<std::size_t>(field ? QUANTITY_CELLS : QUANTITY_SIDES));
      EXPECT_EQ(one.rest, 0U);
      EXPECT_EQ(one.paddingBits, 0U);
    }
  }
}

TEST_F(Quantities, stateOfACell_followsFromItsTemperatureAndMoisture) {
  for (int cell = 0; cell < QUANTITY_CELLS; ++cell) {
    const double T = at("TEMPER", cell), mw = at("MOISTURE", cell), Theta = mw / 1000.0;
    const double RH = Theta / 0.2;  // the straight line of the material
    const double pC = std::log(RH) * 1000.0 * QUANTITY_RV * T;
    expectClose(at("ENERGY", cell), (2e6 + 4180.0 * mw) * T, "ENERGY", cell);
    expectClose(at("THETAL", cell), Theta, "THETAL", cell);
    expectClose(at("ULIQU", cell), mw / 2000.0, "ULIQU", cell);
    expectClose(at("SATDEGREE", cell), Theta / 0.4, "SATDEGREE", cell);
    expectClose(at("RELHUM", cell), RH, "RELHUM", cell);
    EXPECT_NEAR(at("CAPILLARYPRESS", cell), pC, 1e-6 * std::fabs(pC)) << cell;
    EXPECT_NEAR(at("LIQUIDPRESS", cell), pC, 1e-6 * std::fabs(pC)) << cell;
    expectClose(at("VAPPRESS", cell), RH * saturation(T), "VAPPRESS", cell);
    const double vapour = (0.4 - Theta) * RH * saturation(T) / (QUANTITY_RV * T);
    expectClose(at("VAPORMASS", cell), vapour, "VAPORMASS", cell);
    expectClose(at("WATERMASS", cell), mw - vapour, "WATERMASS", cell);
    EXPECT_NEAR(saturation(at("DEW_POINT", cell)), at("VAPPRESS", cell), 1e-9 * at("VAPPRESS", cell)) << cell;
  }
}

TEST_F(Quantities, waterAboveTheHygroscopicRange_isCountedFromItsLimitOn) {
  int above = 0;
  for (int cell = 0; cell < QUANTITY_CELLS; ++cell) {
    const double excess = std::max(0.0, at("THETAL", cell) - 0.2 * 0.9);
    above += excess > 0.0;
    EXPECT_NEAR(at("OVHWATCONT", cell), excess, 1e-12) << cell;
    EXPECT_NEAR(at("OVHWATMASS", cell), 1000.0 * excess, 1e-9) << cell;
  }
  EXPECT_GT(above, 0);
  EXPECT_LT(above, QUANTITY_CELLS);
}

TEST_F(Quantities, expansions_countFromTheirReferences) {
  for (int cell = 0; cell < QUANTITY_CELLS; ++cell) {
    EXPECT_NEAR(at("THERMAL_EXPANSION", cell), 0.01 * (at("TEMPER", cell) - 283.15), 1e-12) << cell;
    EXPECT_NEAR(at("HYGRIC_EXPANSION", cell), 2.0 * (at("THETAL", cell) - 0.2 * 0.5), 1e-12) << cell;
  }
}

TEST_F(Quantities, sources_standInTheirCells) {
  // the leak: from a tightness of 3 m3/m2h at 50 Pa under the stack effect of half of 8 m
  const double Ti = 295.15, To = 281.15;
  const double pressure = (Ti - To) / Ti * 9.81 * 4.0 * 1.3;
  const double flow = 3.0 / 3600.0 / 750.0 * pressure;
  const double coldest = at("TEMPER", LEAKY_CELL);
  const double condensate =
      (0.8 * saturation(Ti) / (QUANTITY_RV * Ti) - saturation(coldest) / (QUANTITY_RV * coldest)) * flow /
      0.1;
  ASSERT_GT(condensate, 0.0);
  // the air that comes from the cell at the left of the draught
  const double from = at("TEMPER", DRAUGHTY_CELL - 1), own = at("TEMPER", DRAUGHTY_CELL);
  const double entering = at("VAPPRESS", DRAUGHTY_CELL - 1) / (QUANTITY_RV * from);
  const double leaving = at("VAPPRESS", DRAUGHTY_CELL) / (QUANTITY_RV * own);
  for (int cell = 0; cell < QUANTITY_CELLS; ++cell) {
    const double leak = cell == LEAKY_CELL ? condensate : 0.0;
    EXPECT_NEAR(at("CONVECTIVE_MOISTURE_SOURCE", cell), leak, 2e-3 * leak) << cell;
    EXPECT_NEAR(at("CONVECTIVE_AIR_FLOW", cell), cell == LEAKY_CELL ? flow : 0.0, 2e-3 * flow) << cell;
    const double draught = cell == DRAUGHTY_CELL ? (entering - leaving) * 1e-5 / 0.1 : 0.0;
    const double drip = cell == DRIPPING_CELL ? 1e-5 : 0.0;
    EXPECT_NEAR(at("MOISTSOURCE", cell), at("CONVECTIVE_MOISTURE_SOURCE", cell) + draught + drip, 1e-12)
        << cell;
    const double water = (drip + at("CONVECTIVE_MOISTURE_SOURCE", cell)) * 4180.0 * at("TEMPER", cell);
    double heat = water + (cell == HEATED_CELL ? 100.0 : 0.0);
    if (cell == DRAUGHTY_CELL)
      heat += (at("AIRFLOWENTHALPY_IN", cell) - at("AIRFLOWENTHALPY_OUT", cell)) / 0.1 +
              (enthalpyOfVapour(from) * entering - enthalpyOfVapour(own) * leaving) * 1e-5 / 0.1;
    EXPECT_NEAR(at("HEATSOURCE", cell), heat, 1e-6 * std::fabs(heat)) << cell;
    const bool flows = cell == DRAUGHTY_CELL;
    EXPECT_NEAR(at("AIRFLOWENTHALPY_IN", cell), flows ? 1e-5 * 1.2 * 1006.0 * from : 0.0, 0.1) << cell;
    EXPECT_EQ(at("AIRFLOWENTHALPY_OUT", cell) > 0.0, flows) << cell;
    for (const char* pipe : {"HP_FLOW_TEMPERATURE", "HP_RETURN_FLOW_TEMPERATURE", "HP_HEAT_FLUX"})
      EXPECT_EQ(at(pipe, cell), 0.0) << pipe << cell;
  }
}

TEST_F(Quantities, moistureFlow_isTheSumOfItsParts) {
  const auto& total = file("MOISTFLUX").records.back().values;
  const auto part = [](const char* keyword) { return file(keyword).records.back().values; };
  double water = 0.0, diffusion = 0.0, convection = 0.0;
  for (std::size_t i = 0; i < total.size(); ++i) {
    EXPECT_NEAR(total[i], part("WATFLUX")[i] + part("VAPDIFF")[i] + part("VAPCONV")[i], 1e-15) << i;
    water = std::max(water, std::fabs(part("WATFLUX")[i]));
    diffusion = std::max(diffusion, std::fabs(part("VAPDIFF")[i]));
    convection = std::max(convection, std::fabs(part("VAPCONV")[i]));
  }
  EXPECT_GT(water, 0.0);
  EXPECT_GT(diffusion, 0.0);
  EXPECT_GT(convection, 0.0);
}

TEST_F(Quantities, surface_hasItsRadiationAndItsRain) {
  for (int row = 0; row < QUANTITY_ROWS; ++row) {
    const int cell = row * QUANTITY_COLUMNS;
    EXPECT_NEAR(through("LWRAD", true, 0, row), 0.9 * 50.0, 1e-9);
    const double film = 8.0 * (281.15 - at("TEMPER", cell));
    EXPECT_NEAR(through("HEATFLUX", true, 0, row), film, 1e-9 * std::fabs(film));
    const double rain = through("NORMRAIN", true, 0, row), taken = through("WATFLUX", true, 0, row);
    EXPECT_NEAR(rain, 0.5 * 4.0 / 3600.0, 1e-12);
    // the cell takes in what flows from its surface, which is saturated, over half its width
    const double dry = std::pow(10.0, -17.0 + 4.0 * at("THETAL", cell) / 0.2), wet = 1e-13;
    EXPECT_NEAR(taken, -0.5 * (dry + wet) * at("CAPILLARYPRESS", cell) / 0.05, 1e-6 * taken);
    EXPECT_NEAR(through("RAINRUNOFF", true, 0, row), rain - taken, 1e-12);
    const double rainT = std::pow(0.8, 0.1247) * (281.15 + 109.8) - 109.8;
    EXPECT_NEAR(through("WATENTH", true, 0, row), taken * 4180.0 * rainT, 1e-6);
    // the rain of this temperature leaves with that of the surface
    const double balance = (rain - taken) * 4180.0 * (rainT - at("TEMPER", cell));
    EXPECT_NEAR(through("RAINRUNOFFENTH", true, 0, row), balance, 1e-6);
  }
  EXPECT_NEAR(through("SHWRAD", true, 0, 0), 0.6 * 400.0, 1e-9);
  for (const char* keyword : {"SHWRAD", "LWRAD", "NORMRAIN", "RAINRUNOFF", "RAINRUNOFFENTH"})
    for (int column = 1; column < QUANTITY_COLUMNS; ++column)
      EXPECT_EQ(through(keyword, true, column, 0), 0.0) << keyword << column;
}

TEST_F(Quantities, conduction_followsFromTheTemperaturesOfItsCells) {
  for (int row = 0; row < QUANTITY_ROWS; ++row) {
    const int left = row * QUANTITY_COLUMNS, right = left + 1;
    // the mean of the two conductivities, each 0.8 W/mK dry and 2.8 W/mK at the content 0.2
    const double lambda = 0.8 + 10.0 * 0.5 * (at("THETAL", left) + at("THETAL", right));
    const double expected = lambda * (at("TEMPER", left) - at("TEMPER", right)) / 0.1;
    EXPECT_NEAR(through("HEATFLUX", true, 1, row), expected, 1e-6 * std::fabs(expected)) << row;
  }
}

TEST_F(Quantities, meansOfACell_areTakenOverItsSides) {
  for (int cell = 0; cell < QUANTITY_CELLS; ++cell) {
    expectClose(at("HEATFLUXMEAN", cell), meanAround("HEATFLUX", cell), "HEATFLUXMEAN", cell);
    expectClose(at("AIRFLUXMEAN", cell), meanAround("AIRFLUX", cell), "AIRFLUXMEAN", cell);
    expectClose(at("AIRENTHALPYFLUX", cell), meanAround("AIRENTH", cell), "AIRENTHALPYFLUX", cell);
  }
}

TEST_F(Quantities, largestAirFlows_areThoseOfTheSides) {
  int shown = 0;
  for (int cell = 0; cell < QUANTITY_CELLS; ++cell) {
    double x = 0.0, y = 0.0;
    for (const place where : {TOP, BOTTOM})  // files show upward flows as positive
      for (const double upwards : beside("AIRFLUX", cell, where))
        if (std::fabs(upwards) > std::fabs(y)) y = -upwards;
    for (const place where : {LEFT, RIGHT})
      for (const double flow : beside("AIRFLUX", cell, where))
        if (std::fabs(flow) > std::fabs(y)) x = flow;
    expectClose(at("AIRFLUXMAX_Y", cell), y, "AIRFLUXMAX_Y", cell);
    expectClose(at("AIRFLUXMAX_X", cell), x, "AIRFLUXMAX_X", cell);
    shown += x != 0.0;
  }
  EXPECT_GT(shown, 0);
  EXPECT_LT(shown, QUANTITY_CELLS);  // where the vertical flow is stronger, none is shown
}

TEST_F(Quantities, air_flowsFromHighToLowPressureAndCarriesItsHeat) {
  for (int cell = 0; cell < QUANTITY_CELLS; ++cell) {
    EXPECT_NEAR(at("GASPRESS_DIFF", cell), at("GASPRESS", cell) - 101325.0, 1e-9) << cell;
    EXPECT_GT(at("GASPRESS_DIFF", cell), 0.0);
    EXPECT_LT(at("GASPRESS_DIFF", cell), 20.0);
  }
  const double entering = through("AIRFLUX", true, 0, 1),
               leaving = through("AIRFLUX", true, QUANTITY_COLUMNS, 0);
  EXPECT_GT(entering, 0.0);
  EXPECT_NEAR(entering, leaving, 1e-6 * entering);
  EXPECT_NEAR(through("AIRENTH", true, 0, 1), entering * 1006.0 * 281.15, 1e-6);
  EXPECT_NEAR(through("AIRENTH", true, QUANTITY_COLUMNS, 0), leaving * 1006.0 * at("TEMPER", HEATED_CELL),
              1e-6);
  // what the cells give away at the right carries their vapour
  const double vapour =
      leaving * at("VAPPRESS", HEATED_CELL) / at("GASPRESS", HEATED_CELL) * QUANTITY_RA / QUANTITY_RV;
  EXPECT_NEAR(through("VAPCONV", true, QUANTITY_COLUMNS, 0), vapour, 2e-3 * vapour);
}

TEST(PipeQuantities, pipe_showsItsTemperaturesAndItsHeatAtItsCell) {
  ConditionProject project;
  project.climate("TEMPER", "40 C");
  project.climate("MASSFLUXDENS", "200 kg/m2s");
  project.boundary("HEATCOND", "HEATPIPE",
                   "HP_RADIUS = 10 mm\nHP_LENGTH = 50 m\nHP_CAPACITY = 4180 J/kgK\nHP_TRANSFER = 300 W/m2K\n"
                   "TEMPER = TEMPER\nMASSFLUXDENS = MASSFLUXDENS\n");
  for (const char* keyword : {"HP_FLOW_TEMPERATURE", "HP_RETURN_FLOW_TEMPERATURE"})
    project.fieldOutput(keyword, "C");
  project.fieldOutput("HP_HEAT_FLUX", "W");
  const ProcessResult result = project.run();
  ASSERT_EQ(result.exitCode, 0) << result.err;
  // the fluid approaches the 20 C of the wall along its 50 m
  const double rate = 200.0 * 3.14e-4 * 4180.0;
  const double approach = std::exp(-300.0 * 2.0 * 3.141592653589793 * 0.01 * 50.0 / rate);
  const std::vector<double> supply = project.values("HP_FLOW_TEMPERATURE");
  ASSERT_EQ(supply.size(), 2U);  // the cells that are not cut away: that at the pipe and its neighbour
  EXPECT_NEAR(supply[0], 40.0, 1e-6);
  EXPECT_NEAR(project.values("HP_RETURN_FLOW_TEMPERATURE")[0], 20.0 + 20.0 * approach, 1e-2);
  EXPECT_NEAR(project.values("HP_HEAT_FLUX")[0], 20.0 * (1.0 - approach) * rate, 1.0);
}

}  // namespace VELMORA_TEST
