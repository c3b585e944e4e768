#include "system/ConditionProject.h"

#include <gtest/gtest.h>

#include <sstream>

namespace VELMORA_TEST {

namespace {

std::string blockOf(const std::string& title, const std::string& name, const std::string& lines) {
  return "[" + title + "]\nNAME = " + name + "\n" + lines;
}

std::string selectionOf(const std::string& type, int first, int last, const std::string& name,
                        const std::string& location) {
  return "[SELECTION]\nTYPE = " + type + "\nRANGE = " + std::to_string(first) + " 0 " + std::to_string(last) +
         " 0\nNAME = " + name + "\nLOCATION = " + location + "\n";
}

std::string initialOf(const std::string& name, const std::string& typeAndValue) {
  return blockOf("INIT_COND", name, "TYPE = " + typeAndValue + "\n");
}

}  // namespace

void ConditionProject::climate(const std::string& type, const std::string& value) {
  climates_ +=
      blockOf("CLIMATE_COND", type, "TYPE = " + type + "\nKIND = CONSTANT\nCONSTVALUE = " + value + "\n");
}

void ConditionProject::wall(double inclination) {
  walls_ += blockOf(
      "WALL_DATA", "Wall",
      "ORIENTATION = 270 Deg\nINCLINATION = " + std::to_string(inclination) + " Deg\nLATITUDE = 51 Deg\n");
}

void ConditionProject::boundary(const std::string& type, const std::string& kind, const std::string& lines,
                                const std::string& location) {
  boundaries_ += blockOf("BOUND_COND", "Surface", "TYPE = " + type + "\nKIND = " + kind + "\n" + lines);
  assignments_ += selectionOf("BOUNDARYCOND", 2, 2, "Surface", location);
}

void ConditionProject::source(const std::string& name, const std::string& type, const std::string& lines,
                              int first, int last) {
  sources_ += blockOf("FIELD_COND", name, "TYPE = " + type + "\n" + lines);
  assignments_ += selectionOf("FIELDCOND", first, last, name, "ELEMENT");
}

void ConditionProject::fieldOutput(const std::string& quantity, const std::string& unit) {
  formats_ += blockOf("OUTPUT_FORMAT", quantity,
                      "TYPE = FIELD\nFIELD_TYPE = " + quantity + "\nSPACE_TYPE = SINGLE\nTIME_TYPE = NONE\n" +
                          "TIME_UNIT = s\nVALUE_UNIT = " + unit + "\nPRECISION = 10\n");
  files_ += blockOf("OUTPUT_FILE", quantity, "OUTPUT_GRID = End\nOUTPUT_FORMAT = " + quantity + "\n");
  assignments_ += selectionOf("FIELDOUTPUT", 0, 3, quantity, "ELEMENT");
}

void ConditionProject::fluxOutput(const std::string& quantity, const std::string& unit,
                                  const std::string& location) {
  formats_ += blockOf("OUTPUT_FORMAT", quantity,
                      "TYPE = FLUX\nFLUX_TYPE = " + quantity + "\nSPACE_TYPE = SINGLE\nTIME_TYPE = NONE\n" +
                          "TIME_UNIT = s\nVALUE_UNIT = " + unit + "\nPRECISION = 10\n");
  files_ += blockOf("OUTPUT_FILE", quantity, "OUTPUT_GRID = End\nOUTPUT_FORMAT = " + quantity + "\n");
  assignments_ += selectionOf("FLUXOUTPUT", 2, 2, quantity, location);
}

std::string ConditionProject::text() const {
  const bool surface = !boundaries_.empty();
  std::string text =
      "[PROJECT_INFO]\nFILE_VERSION = 5.9\n[INIT]\n[GENERAL]\nBALANCE_EQUATIONS = " + balances +
      "\nDURATION = 3 s\n" + general +
      "[SOLVER_SETTINGS]\n[CVODE_SOLVER_SETTINGS]\nREL_TOL = 1e-7\n[MATERIALS]\n" +
      blockOf("MATERIAL", "Brick", "FILENAME = $(MATERIALS_DIR)/Brick_2001.m6\n") +
      blockOf("MATERIAL", "Air", "FILENAME = $(MATERIALS_DIR)/StillAir_2008.m6\n");
  text += "[CONDITIONS]\n[WALLS]\n" + walls_ + "[CLIMATE_CONDITIONS]\n" + climates_ +
          "[BOUNDARY_CONDITIONS]\n" + boundaries_ + "[FIELD_CONDITIONS]\n" + sources_ +
          "[INITIAL_CONDITIONS]\n" + initialOf("Warm", "TEMPER\nVALUE = 30 C") +
          initialOf("Mild", "TEMPER\nVALUE = 25 C") + initialOf("Medium", "TEMPER\nVALUE = 20 C") +
          initialOf("Cold", "TEMPER\nVALUE = 10 C") + initialOf("Moisture", moisture);
  if (!damp.empty()) text += initialOf("Damp", damp);
  text += "[DISCRETISATION]\nGEOMETRY = PLANE2D\nX_STEPS = 0.5 0.5 0.5 0.5 m\nY_STEPS = 1 m\nZ_STEPS = 1 m\n";
  text += "[OUTPUTS]\n[GRIDS]\n[OUTPUT_GRID]\nNAME = End\nINTERVAL = 0 d 3 s\n[FORMATS]\n" + formats_ +
          "[FILES]\n" + files_ + "[ASSIGNMENTS]\n" + selectionOf("MATERIAL", 0, 3, "Brick", "ELEMENT") +
          selectionOf("MATERIAL", 1, 1, "Air", "ELEMENT");
  if (surface) text += selectionOf("MATERIAL", 0, 1, "VOID", "ELEMENT");
  const char* const names[] = {"Warm", "Mild", "Medium", "Cold"};
  for (int i = 0; i < 4; ++i) text += selectionOf("INITIALCOND", i, i, names[i], "ELEMENT");
  text += selectionOf("INITIALCOND", 0, 3, "Moisture", "ELEMENT");
  if (!damp.empty()) text += selectionOf("INITIALCOND", 0, 0, "Damp", "ELEMENT");
  return text + assignments_;
}

ProcessResult ConditionProject::run() const {
  return runSolver({"-x", "-v0", folder_.write("block.vel", text())});
}

std::vector<double> ConditionProject::values(const std::string& quantity) const {
  std::istringstream lines(folder_.read("block.results/" + quantity));
  std::string last;
  for (std::string line; std::getline(lines, line);)
    if (!line.empty()) last = line;
  std::istringstream words(last);
  std::vector<double> record;
  for (double value; words >> value;) record.push_back(value);
  if (record.size() < 2 || record[0] != SECONDS) {
    ADD_FAILURE() << "no values of " << quantity;
    return std::vector<double>(4, 0.0);
  }
  record.erase(record.begin());
  return record;
}

}  // namespace VELMORA_TEST
