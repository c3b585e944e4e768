#include "output/DerivedQuantities.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "foundation/CheckedMath.h"
#include "foundation/PhysicalConstants.h"
#include "material/Material.h"

namespace VELMORA {

namespace {

enum retention_t { R_CURVE, R_AIR, R_NONE };

retention_t retentionOf(const MM::Material& material) {
  if (material.isAir()) return R_AIR;
  if (material.isVaporTight() && material.isWaterTight()) return R_NONE;
  return material.moistureStorage.kind == MM::MoistureStorage::K_NONE ? R_NONE : R_CURVE;
}

double equilibriumWaterContent(const MM::Material& material, double RH, double T) {
  return material.moistureStorage.Thetal_pl(TKL::pCFromRH(RH, T), T);
}

double density(double flow, double area) {
  return area != 0.0 ? flow / area : 0.0;
}

double flowDensity(const Side* side, std::span<const double> flow) {
  return side ? density(flow[static_cast<std::size_t>(side->number)], side->area) : 0.0;
}

}  // namespace

double overhygroscopicWaterContent(const MM::Material& material, double Theta, double T,
                                   const ReferenceState& reference) {
  switch (retentionOf(material)) {
    case R_AIR:
      return Theta;
    case R_NONE:
      return 0.0;
    case R_CURVE:
      break;
  }
  return std::max(0.0, Theta - equilibriumWaterContent(material, reference.maxHygRelHum, T));
}

double liquidMassFraction(const MM::Material& material, double Theta) {
  const double rho = material.paraStorage[MM::MaterialBase::PS_RHO].value;
  if (retentionOf(material) == R_NONE || rho == 0.0) return 0.0;
  return TKL::RHO_W * Theta / rho;
}

double hygricExpansion(const MM::Material& material, double Theta, double T,
                       const ReferenceState& reference) {
  if (retentionOf(material) != R_CURVE) return 0.0;
  const double coefficient = material.paraMechanical[MM::MaterialBase::PM_BETA_THETA_L].value;
  if (coefficient == 0.0) return 0.0;
  return (Theta - equilibriumWaterContent(material, reference.expRefRelHum, T)) * coefficient;
}

double thermalExpansion(const MM::Material& material, double T, const ReferenceState& reference) {
  return (T - reference.expRefTemper) * material.paraMechanical[MM::MaterialBase::PM_ALPHA].value;
}

double saturationDegree(const MM::Material& material, double Theta) {
  return Theta / material.thetaPor();
}

double dewPoint(double RH, double T) {
  constexpr double WARM_EXPONENT = 0.12468827930174564;  // 1/8.02
  constexpr double WARM_OFFSET = 163.35;
  constexpr double COLD_EXPONENT = 0.08130081300813008;  // 1/12.3
  constexpr double COLD_OFFSET = 124.55;
  if (T >= TKL::T_FREEZE) return TKL::f_pow(RH, WARM_EXPONENT) * (T - WARM_OFFSET) + WARM_OFFSET;
  return TKL::f_pow(RH, COLD_EXPONENT) * (T - COLD_OFFSET) + COLD_OFFSET;
}

double meanFluxDensity(const Element& element, const RecordView& flow, std::size_t slot) {
  double sum = 0.0;
  int count = 0;
  for (const Side* side : {element.sideLeft, element.sideRight, element.sideTop, element.sideBottom}) {
    if (!side) continue;
    sum += density(std::abs(flow.at(static_cast<std::size_t>(side->number), slot)), side->area);
    ++count;
  }
  return count > 0 ? sum / count : 0.0;
}

double maxFluxDensityY(const Element& element, std::span<const double> flow) {
  const double top = flowDensity(element.sideTop, flow);
  const double bottom = flowDensity(element.sideBottom, flow);
  return std::abs(bottom) > std::abs(top) ? bottom : top;
}

double maxFluxDensityX(const Element& element, std::span<const double> flow, double maxY) {
  double result = 0.0;
  for (const Side* side : {element.sideLeft, element.sideRight}) {
    const double sideDensity = flowDensity(side, flow);
    if (std::abs(sideDensity) > std::abs(maxY)) result = sideDensity;
  }
  return result;
}

}  // namespace VELMORA
