#include "solver/InitialConditions.h"

#include <algorithm>
#include <cmath>
#include <string>

#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "foundation/PhysicalConstants.h"
#include "material/Material.h"
#include "project/VelInitialCond.h"

namespace VELMORA_SOLVER {

using MM::Material;
using MM::MoistureStorage;
using VELMORA::VelInitialCond;

namespace {

constexpr double COLDEST_PLAUSIBLE = 223.15;  // [K]
constexpr double DRIEST_PRESSURE = -1e10;     // [Pa]
constexpr double DRIEST_CONTENT = 1e-10;      // [m3/m3]
constexpr double LOWEST_HUMIDITY = 0.01;      // [-]

void warn(const std::string& text) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::setInitialConditions]";
  TKL::message(text, TKL::MSG_WARNING, FUNC_ID, -1);
}

/// A value that is brought into its range after a warning.
double corrected(double value, bool isWrong, double limit, const char* text) {
  if (isWrong) warn(text);
  return isWrong ? limit : value;
}

bool isMoistureKind(VelInitialCond::condition_t kind) {
  return kind == VelInitialCond::C_RELHUM || kind == VelInitialCond::C_MSTMASS ||
         kind == VelInitialCond::C_MSTCONT || kind == VelInitialCond::C_CAPPRESS;
}

bool hasStorage(const Material& material) {
  if (material.moistureStorage.kind != MoistureStorage::K_NONE) return true;
  warn(TKL::FormatString(
           "Missing moisture storage function for material '%1', using 0 kg/m3 as moisture content.\n")
           .arg(material.name())
           .str());
  return false;
}

InitialMoisture fromHumidity(const Material& material, double T, double RH) {
  InitialMoisture start;
  if (material.isAir()) {
    start.mw = TKL::pSat(T) * RH / (T * TKL::R_V);
    return start;
  }
  if (!hasStorage(material)) return start;
  const double phi =
      RH < LOWEST_HUMIDITY
          ? corrected(RH, true, LOWEST_HUMIDITY,
                      "Initial relative humidity below 1%. It was automatically corrected to 1% RH!")
          : corrected(RH, RH > 1.0, 1.0,
                      "Initial relative humidity above 100%. It was automatically corrected to 100% RH!");
  start.pC = std::log(phi) * TKL::RHO_W * TKL::R_V * T;  // Kelvin's law, 0 at saturation
  start.mw = TKL::RHO_W * material.moistureStorage.Thetal_pl(start.pC, T);
  return start;
}

InitialMoisture fromPressure(const Material& material, double T, double pressure) {
  InitialMoisture start;
  if (material.isAir()) {
    warn(TKL::FormatString("Capillary pressure IC not applicable to AIR materials '%1', using 0 kg/m3 as "
                           "moisture content.\n")
             .arg(material.name())
             .str());
    return start;
  }
  if (!hasStorage(material)) return start;
  start.pC =
      pressure < DRIEST_PRESSURE
          ? corrected(pressure, true, DRIEST_PRESSURE,
                      "Initial capillary pressure too small. It was automatically corrected to -1e10 Pa!")
          : corrected(pressure, pressure >= 0.0, 0.0,
                      "Initial capillary pressure too large (must be negative!). It was automatically "
                      "corrected to 0 Pa!");
  start.mw = TKL::RHO_W * std::max(material.moistureStorage.Thetal_pl(start.pC, T), DRIEST_CONTENT);
  return start;
}

/// @param limit  largest value, of a material with a retention curve
double limited(double value, const Material& material, double limit, const char* negative,
               const char* tooLarge) {
  if (value < 0.0) return corrected(value, true, 0.0, negative);
  const bool hasLimit = material.moistureStorage.kind != MoistureStorage::K_NONE;
  return corrected(value, hasLimit && value > limit, limit, tooLarge);
}

InitialMoisture fromMass(const Material& material, double mw) {
  InitialMoisture start;
  start.mw = limited(
      mw, material, TKL::RHO_W * material.thetaEff(),
      "Initial moisture mass density negative. It was automatically corrected to 0 kg/m3!",
      "Initial moisture mass density too large. It was automatically corrected to effective saturation!");
  return start;
}

InitialMoisture fromContent(const Material& material, double Theta) {
  InitialMoisture start;
  start.mw =
      TKL::RHO_W *
      limited(Theta, material, material.thetaEff(),
              "Initial moisture content is negative. It was automatically corrected to 0 m3/m3!",
              "Initial moisture content too big. It was automatically corrected to effective saturation!");
  return start;
}

}  // namespace

double initialTemperature(const VELMORA::Element& element, const TKL::Parameter& defaultTemperature) {
  const auto& conditions = element.initialConds;
  const auto last = std::find_if(conditions.rbegin(), conditions.rend(), [](const auto* condition) {
    return condition->condition == VelInitialCond::C_TEMPER;
  });
  const double T = last != conditions.rend() ? (*last)->value.value : defaultTemperature.value;
  if (T < COLDEST_PLAUSIBLE)
    warn("Initial temperature below -50 degree C. Simulation results will probably be invalid!");
  return T;
}

InitialMoisture initialMoisture(const VELMORA::Element& element, double T,
                                const TKL::Parameter& defaultRelativeHumidity) {
  const Material& material = *element.material;
  if (material.isVaporTight() && material.isWaterTight()) return {};  // holds no moisture
  const auto& conditions = element.initialConds;
  const auto last = std::find_if(conditions.rbegin(), conditions.rend(),
                                 [](const auto* condition) { return isMoistureKind(condition->condition); });
  if (last == conditions.rend()) return fromHumidity(material, T, defaultRelativeHumidity.value);
  const double value = (*last)->value.value;
  switch ((*last)->condition) {
    case VelInitialCond::C_MSTMASS:
      return fromMass(material, value);
    case VelInitialCond::C_MSTCONT:
      return fromContent(material, value);
    case VelInitialCond::C_CAPPRESS:
      return fromPressure(material, T, value);
    default:
      return fromHumidity(material, T, value);
  }
}

double initialPollutant(const VELMORA::Element& element) {
  const char* const FUNC_ID = "[VelmoraCvodeSolver::initialConditionsHP]";
  const auto& conditions = element.initialConds;
  const auto last = std::find_if(conditions.rbegin(), conditions.rend(), [](const auto* condition) {
    return condition->condition == VelInitialCond::C_VOCMASS;
  });
  const double mass = last != conditions.rend() ? (*last)->value.value : 0.0;
  if (mass >= 0.0) return mass;
  TKL::message("Initial VOC mass density below 0 kg/m3. It was automatically corrected to 0 kg/m3!\n",
               TKL::MSG_WARNING, FUNC_ID, -1);
  return 0.0;
}

}  // namespace VELMORA_SOLVER
