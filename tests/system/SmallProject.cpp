#include "system/SmallProject.h"

#include <gtest/gtest.h>

#include <sstream>

namespace VELMORA_TEST {

namespace {

const char* const INIT = R"([INIT]
[GENERAL]
BALANCE_EQUATIONS = ENERGY
DURATION = 1 d
)";

const char* const MATERIALS = R"([MATERIALS]
[MATERIAL]
NAME = Brick
FILENAME = $(PROJECT_DIR)/brick.m6
)";

const char* const CONDITIONS = R"([CONDITIONS]
[CLIMATE_CONDITIONS]
[CLIMATE_COND]
NAME = Frost
TYPE = TEMPER
KIND = CONSTANT
CONSTVALUE = 0 C
[BOUNDARY_CONDITIONS]
[BOUND_COND]
NAME = Outside
TYPE = HEATCOND
KIND = EXCHANGE
EXCOEFF = 25 W/m2K
TEMPER = Frost
[INITIAL_CONDITIONS]
[INIT_COND]
NAME = Start
TYPE = TEMPER
VALUE = 20 C
)";

const char* const DISCRETISATION = R"([DISCRETISATION]
GEOMETRY = PLANE2D
X_STEPS = 2 2 2 2 2 cm
Y_STEPS = 1 m
)";

const char* const OUTPUTS = R"([OUTPUTS]
[GRIDS]
[OUTPUT_GRID]
NAME = Hourly
INTERVAL = 0 d 1 h
[FORMATS]
[OUTPUT_FORMAT]
NAME = Temperature
TYPE = FIELD
FIELD_TYPE = TEMPER
SPACE_TYPE = SINGLE
TIME_TYPE = NONE
TIME_UNIT = h
VALUE_UNIT = C
PRECISION = 6
[FILES]
[OUTPUT_FILE]
NAME = profile.out
OUTPUT_GRID = Hourly
OUTPUT_FORMAT = Temperature
)";

const char* const ASSIGNMENTS = R"([ASSIGNMENTS]
[SELECTION]
TYPE = MATERIAL
RANGE = 0 0 4 0
NAME = Brick
LOCATION = ELEMENT
[SELECTION]
TYPE = INITIALCOND
RANGE = 0 0 4 0
NAME = Start
LOCATION = ELEMENT
[SELECTION]
TYPE = BOUNDARYCOND
RANGE = 0 0 0 0
NAME = Outside
LOCATION = LEFT
[SELECTION]
TYPE = FIELDOUTPUT
RANGE = 0 0 4 0
NAME = profile.out
LOCATION = ELEMENT
)";

const char* const ORDER[] = {"INIT", "MATERIALS", "CONDITIONS", "DISCRETISATION", "OUTPUTS", "ASSIGNMENTS"};

}  // namespace

SmallProject::SmallProject()
    : sections_{{"INIT", INIT},
                {"MATERIALS", MATERIALS},
                {"CONDITIONS", CONDITIONS},
                {"DISCRETISATION", DISCRETISATION},
                {"OUTPUTS", OUTPUTS},
                {"ASSIGNMENTS", ASSIGNMENTS}} {
  folder_.write("brick.m6", materialFile("RHO = 1800 kg/m3\nCE = 1000 J/kgK\n", "LAMBDA = 0.8 W/mK\n"));
}

void SmallProject::replace(const std::string& section, const std::string& from, const std::string& to) {
  std::string& lines = sections_.at(section);
  const std::size_t position = lines.find(from);
  if (position == std::string::npos) {
    ADD_FAILURE() << "no '" << from << "' in section " << section;
    return;
  }
  lines.replace(position, from.size(), to);
}

std::string SmallProject::text() const {
  std::string result;
  for (const char* const section : ORDER) {
    const auto found = sections_.find(section);
    if (found != sections_.end()) result += found->second;
  }
  return result;
}

ProcessResult SmallProject::run(std::vector<std::string> options) const {
  return runText(text(), std::move(options));
}

ProcessResult SmallProject::runText(const std::string& text, std::vector<std::string> options) const {
  options.push_back(folder_.write("wall.vel", text));
  return runSolver(std::move(options));
}

int SmallProject::lineOf(const std::string& line) const {
  std::istringstream lines(text());
  std::string current;
  for (int number = 1; std::getline(lines, current); ++number)
    if (current == line) return number;
  ADD_FAILURE() << "no line '" << line << "'";
  return 0;
}

std::vector<std::string> SmallProject::outputTimes(const std::string& name) const {
  std::istringstream lines(output(name));
  std::vector<std::string> times;
  std::string line;
  bool inRecords = false;
  while (std::getline(lines, line)) {
    if (line.starts_with("ELEMENTS"))
      inRecords = true;
    else if (inRecords && !line.empty())
      times.push_back(line.substr(0, line.find_first_of(" \t")));
  }
  return times;
}

std::string materialFile(const std::string& storage, const std::string& transport) {
  return "V6MARLZ! 006.000\n\n[IDENTIFICATION]\nNAME = en:Brick\nCATEGORY = "
         "BRICK\n\n[STORAGE_BASE_PARAMETERS]\n" +
         storage + "\n[TRANSPORT_BASE_PARAMETERS]\n" + transport;
}

}  // namespace VELMORA_TEST
