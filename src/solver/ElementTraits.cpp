#include "solver/ElementTraits.h"

#include <cmath>

#include "foundation/PhysicalConstants.h"
#include "project/VelContactCond.h"
#include "solver/IceBalance.h"

namespace VELMORA_SOLVER {

namespace {

ElementTraits traitsOf(const VELMORA::Element& element, const ModelSettings& settings) {
  constexpr double PI = 3.141592653589793;
  ElementTraits traits;
  if (element.material == nullptr) return traits;
  const MM::Material& material = *element.material;
  traits.material = &material;
  traits.storage = &material.moistureStorage;
  traits.transport = &material.moistureTransport[MM::Material::D_U];
  traits.isAir = material.isAir();
  traits.vapourTight = material.isVaporTight();
  traits.liquidTight = material.isWaterTight() || traits.isAir;
  traits.storesNothing = traits.vapourTight && material.isWaterTight();
  if (settings.equations.has(BE_ICE) && !traits.isAir &&
      material.moistureStorage.kind != MM::MoistureStorage::K_NONE)
    traits.risesToSaturation = IceBalance::risesToSaturation(material.moistureStorage);
  traits.thetaEff = traits.isAir ? 1.0 : material.thetaEff();
  traits.thetaPor = traits.isAir ? 1.0 : material.thetaPor();
  traits.thetaMax = traits.thetaEff + settings.overfillMargin;
  if (settings.useGravity)
    traits.gravityHead = std::cos(settings.thetaZ / 180.0 * PI) * (settings.height - element.y) * TKL::G_RHO;
  return traits;
}

}  // namespace

std::vector<ElementTraits> elementTraits(const std::vector<VELMORA::Element>& elements,
                                         const ModelSettings& settings) {
  std::vector<ElementTraits> traits;
  traits.reserve(elements.size());
  for (const VELMORA::Element& element : elements) traits.push_back(traitsOf(element, settings));
  return traits;
}

std::vector<ElementTraits> elementTraits(const VELMORA::CalculationData& data,
                                         const ModelSettings& settings) {
  std::vector<ElementTraits> traits = elementTraits(data.elements, settings);
  if (!settings.useKirchhoff) return traits;
  for (ElementTraits& element : traits) element.needsConductivity = false;
  for (const VELMORA::Side& side : data.sides) {
    const auto& quantities = data.sideQuantities[static_cast<std::size_t>(side.number)];
    if (!(quantities[VELMORA::VelContactCond::P_WATCONDRES] > 0.0)) continue;
    for (const VELMORA::Element* element : {side.elementLeft, side.elementRight})
      if (element != nullptr) traits[static_cast<std::size_t>(element->number)].needsConductivity = true;
  }
  for (ElementTraits& element : traits)
    element.hasPlainPotential = element.transport != nullptr && !element.liquidTight &&
                                element.transport->liquidKind != MM::MoistureTransport::L_NONE &&
                                !element.needsConductivity && !settings.useGravity;
  return traits;
}

}  // namespace VELMORA_SOLVER
