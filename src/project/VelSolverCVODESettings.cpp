#include "project/VelSolverCVODESettings.h"

#include <utility>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/StringUtilities.h"
#include "keywords/KeywordList.h"

namespace VELMORA {

namespace {

const char* const PARA_CATEGORY = "VelSolverCVODESettings::solver_para_t";

template <class Value>
struct Entry {
  const char* keyword;
  Value VelSolverCVODESettings::*field;
};

constexpr Entry<double> NUMBERS[] = {
    {"REL_TOL", &VelSolverCVODESettings::relTol},
    {"ABS_TOL_ENERGY", &VelSolverCVODESettings::absTolEnergy},
    {"ABS_TOL_MOISTURE", &VelSolverCVODESettings::absTolMoisture},
    {"ABS_TOL_AIR", &VelSolverCVODESettings::absTolAir},
    {"ABS_TOL_SALT", &VelSolverCVODESettings::absTolSalt},
    {"ABS_TOL_POLLUTANT", &VelSolverCVODESettings::absTolPollutant},
};

constexpr Entry<std::int32_t> COUNTS[] = {
    {"MAX_ORDER", &VelSolverCVODESettings::maxOrder},
    {"MAX_STEPS", &VelSolverCVODESettings::maxSteps},
};

constexpr Entry<bool> SWITCHES[] = {
    {"USE_AUTO_RECOVER", &VelSolverCVODESettings::useAutoRecover},
    {"USE_MONITORS_FILE", &VelSolverCVODESettings::useMonitorsFile},
    {"USE_ONE_STEP_MONITORS", &VelSolverCVODESettings::useOneStepMonitors},
    {"PREVENT_OVERFILLING", &VelSolverCVODESettings::preventOverfilling},
    {"USE_STRICT_RANGE_CHECKING", &VelSolverCVODESettings::useStrictRangeChecking},
};

VelSolverCVODESettings::linear_solver_t linearSolverOf(const std::string& word) {
  const char* const FUNC_ID = "[VelSolverCVODESettings::read]";
  constexpr std::pair<const char*, VelSolverCVODESettings::linear_solver_t> WORDS[] = {
      {"AUTO", VelSolverCVODESettings::L_AUTO},   {"BAND", VelSolverCVODESettings::L_BAND},
      {"KLU", VelSolverCVODESettings::L_KLU},     {"BLOCK", VelSolverCVODESettings::L_BLOCK},
      {"GMRES", VelSolverCVODESettings::L_GMRES},
  };
  for (const auto& [name, value] : WORDS)
    if (word == name) return value;
  throw TKL::Exception(
      TKL::FormatString("Unknown linear solver '%1', expected one of AUTO, BAND, KLU, BLOCK, GMRES.")
          .arg(word),
      FUNC_ID);
}

/// Reads a plain number or a switch; false where the keyword names neither.
bool readEntry(const KeywordLine& line, VelSolverCVODESettings& settings) {
  for (const auto& entry : NUMBERS)
    if (line.keyword == entry.keyword) {
      settings.*entry.field = TKL::string2val<double>(line.value);
      return true;
    }
  for (const auto& entry : COUNTS)
    if (line.keyword == entry.keyword) {
      settings.*entry.field = TKL::string2val<std::int32_t>(line.value);
      return true;
    }
  for (const auto& entry : SWITCHES)
    if (line.keyword == entry.keyword) {
      settings.*entry.field = isYes(line.value);
      return true;
    }
  if (line.keyword == "LINEAR_SOLVER") {
    settings.linearSolver = linearSolverOf(line.value);
    return true;
  }
  return false;
}

}  // namespace

void VelSolverCVODESettings::clear() {
  para[P_INITIAL_DT].set("INITIAL_DT", 0.01, "s");
  para[P_MAX_DT].set("MAX_DT", 30.0, "min");
  para[P_MIN_DT].set("MIN_DT", 1e-9, "s");
  relTol = 1e-5;
  absTol = 1e-6;
  absTolEnergy = 1.0;
  absTolMoisture = 1e-6;
  absTolAir = 1e-6;
  absTolSalt = 1e-10;
  absTolPollutant = 1e-12;
  useAutoRecover = true;
  maxOrder = 5;
  maxSteps = 1000000;
  useMonitorsFile = false;
  useOneStepMonitors = false;
  preventOverfilling = true;
  useStrictRangeChecking = false;
  linearSolver = L_AUTO;
}

void VelSolverCVODESettings::read(const SectionText& text) {
  const char* const FUNC_ID = "[VelSolverCVODESettings::read]";
  forEachKeywordLine(text, FUNC_ID, [&](const KeywordLine& line) {
    if (KeywordList::KeywordExists(PARA_CATEGORY, line.keyword)) {
      const auto index = static_cast<std::size_t>(KeywordList::Enumeration(PARA_CATEGORY, line.keyword));
      readParameter(line, para[index], FUNC_ID);
    } else if (!readEntry(line, *this)) {
      warnUnknownKeyword(line, FUNC_ID);
    }
  });
}

}  // namespace VELMORA
