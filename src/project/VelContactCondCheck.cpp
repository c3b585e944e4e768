#include <cstdint>
#include <stdexcept>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "keywords/KeywordList.h"
#include "project/ParameterLimits.h"
#include "project/VelContactCond.h"

namespace VELMORA {

namespace {

/// sd-value [m] to vapour resistance [m/s]: gas constant of vapour [J/kgK] times temperature [K] over the
/// vapour diffusion coefficient of air [m2/s], at 20 C.
constexpr double RESISTANCE_PER_SD = 461.89 * 293.15 / 2.662e-05;

bool isLength(const TKL::Parameter& parameter) {
  return parameter.IO_unit.base().name() == "m";
}

}  // namespace

void VelContactCond::checkParameters() const {
  try {
    checkCondition();
  } catch (const TKL::Exception& failure) {
    throw std::runtime_error(failure.what());
  }
}

void VelContactCond::checkCondition() const {
  switch (condition) {
    case C_AIR_MAT_HEATCOND:
      checkExchange("W/m2K", "J/m3K");
      break;
    case C_AIR_MAT_VAPDIFF:
      checkExchange("s/m", "s2/m2");
      break;
    case C_FOIL:
      checkFoil();
      break;
    case C_FOIL_ADAPTIVE:
      checkFoilAdaptive();
      break;
    case C_ADDITIONAL_RESISTANCE:
      checkAdditionalResistance();
      break;
    default:
      break;
  }
}

void VelContactCond::checkExchange(const char* unit, const char* slopeUnit) const {
  if (kind != K_EXCHANGE && kind != K_EXCHANGE_VEL) return;
  requireAtLeast(para[P_EXCOEFF], "EXCOEFF", 0.0, unit);
  if (kind == K_EXCHANGE_VEL) requireAtLeast(para[P_EXCH_SLOPE], "EXCH_SLOPE", 0.0, slopeUnit);
}

void VelContactCond::checkAdditionalResistance() const {
  const auto check = [this](para_t index, const char* keyword, const char* unit) {
    if (para[index].isSet()) requireAtLeast(para[index], keyword, 0.0, unit, LIMIT_EXCLUDED);
  };
  check(P_HEATCONDRES, "HEATCONDRES", "m2K/W");
  check(P_VAPDIFFRES, "VAPDIFFRES", isLength(para[P_VAPDIFFRES]) ? "m" : "m/s");
  check(P_WATCONDRES, "WATCONDRES", "m/s");
  check(P_AIRCONVRES, "AIRCONVRES", "m/s");
  check(P_SALDIFFRES, "SALDIFFRES", "m2s/kg");
}

void VelContactCond::checkFoil() const {
  if (foilName.empty()) throw std::runtime_error("Missing FOIL_NAME parameter.");
  const TKL::Parameter& sdValue = para[P_VAPDIFFRES];
  if (!sdValue.isSet()) throw std::runtime_error("Parameter VAPDIFFRES is required.");
  if (sdValue.IO_unit.name() != "m") {
    throw std::runtime_error("Parameter VAPDIFFRES must be an sd-value in m.");
  }
}

void VelContactCond::checkFoilAdaptive() const {
  if (foilName.empty()) throw std::runtime_error("Missing FOIL_NAME parameter.");
  const auto requireFunction = [this](function_t index) {
    if (!functions[index].empty()) return;
    const std::string keyword =
        KeywordList::Keyword("VelContactCond::function_t", static_cast<std::uint32_t>(index));
    throw std::runtime_error(TKL::FormatString("Missing FUNCTION '%1'.").arg(keyword).str());
  };
  requireFunction(FUN_SD_POS);
  if (kind != K_DIRECTION_DEPENDENT && kind != K_DIRECTION_INDEPENDENT) {
    throw std::runtime_error("Missing or invalid KIND parameter.");
  }
  checkFunction(FUN_SD_POS);
  if (kind == K_DIRECTION_DEPENDENT) {
    requireFunction(FUN_SD_NEG);
    checkFunction(FUN_SD_NEG);
  }
}

void VelContactCond::checkFunction(function_t index) const {
  const TKL::LinearSpline& function = functions[index];
  const std::string keyword =
      KeywordList::Keyword("VelContactCond::function_t", static_cast<std::uint32_t>(index));
  if (function.x.front() != 0.0 || function.x.back() != 1.0) {
    throw std::runtime_error(
        TKL::FormatString("Invalid foil data for rh-value range in FUNCTION '%1'.").arg(keyword).str());
  }
  for (const double sdValue : function.y) {
    if (sdValue > 0.0) continue;
    throw std::runtime_error(TKL::FormatString("Invalid foil data for sd-value '%1' in FUNCTION '%2'.")
                                 .arg(sdValue)
                                 .arg(keyword)
                                 .str());
  }
}

void VelContactCond::prepareParameters() {
  if (condition == C_FOIL || condition == C_FOIL_ADAPTIVE) prepareFoil();
  if (condition == C_FOIL_ADAPTIVE) prepareScaling();
  if (condition == C_ADDITIONAL_RESISTANCE && isLength(para[P_VAPDIFFRES])) convertSdValue();
}

void VelContactCond::prepareFoil() {
  // a foil lets vapour through, and nothing else
  para[P_WATCONDRES].set("WATCONDRES", 1e50, "m/s");
  para[P_AIRCONVRES].set("AIRCONVRES", 1e50, "m/s");
  para[P_SALDIFFRES].set("SALDIFFRES", 1e50, "m2/s");
  convertSdValue();
}

void VelContactCond::convertSdValue() {
  para[P_VAPDIFFRES].setBaseValue("Vapour diffusion resistance value",
                                  para[P_VAPDIFFRES].value * RESISTANCE_PER_SD, TKL::Unit("m/s"));
}

void VelContactCond::prepareScaling() {
  const auto setDefault = [this](para_t index, const char* shownName) {
    if (!para[index].isSet()) para[index].set(shownName, 0.0, "-");
  };
  setDefault(P_SCALING_A_POS, "SCALING_A_POS");
  setDefault(P_SCALING_B_POS, "KP_SCALING_B_POS");
  setDefault(P_SCALING_C_POS, "KP_SCALING_C_POS");
  setDefault(P_SCALING_A_NEG, "SCALING_A_NEG");
  setDefault(P_SCALING_B_NEG, "KP_SCALING_B_NEG");
  setDefault(P_SCALING_C_NEG, "KP_SCALING_C_NEG");
}

}  // namespace VELMORA
