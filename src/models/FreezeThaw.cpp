#include "models/FreezeThaw.h"

#include "foundation/Exception.h"
#include "foundation/PhysicalConstants.h"
#include "project/VelOutputs.h"

namespace VELMORA {

using MM::MaterialBase;

void FreezeThaw::setMaterial(const MM::Material* newMaterial) {
  const char* const FUNC_ID = "[FreezeThaw::setMaterial]";
  if (newMaterial == nullptr)
    throw TKL::Exception("NULL pointer passed to FreezeThaw setMaterial().", FUNC_ID);
  material = newMaterial;
  for (const auto index : {MaterialBase::PS_THETA_POR, MaterialBase::PS_THETA_EFF}) {
    const TKL::Parameter& volume = newMaterial->paraStorage[index];
    if (!MaterialBase::isUsable(volume)) continue;
    poreVolume = volume.value;
    return;
  }
  material = nullptr;
}

void FreezeThaw::update(double rhoIce, double T, double threshold, int kind) {
  constexpr double RHO_ICE = 916.7;  // [kg/m3]
  iceSaturation = rhoIce / RHO_ICE / poreVolume;
  if (!frozen) {
    frozen = iceSaturation >= threshold;
    return;
  }
  bool thawed = false;
  switch (kind) {
    case VelOutputs::TB_ZEROTEMPERATURE:
      thawed = T > TKL::T_FREEZE;
      break;
    case VelOutputs::TB_ICEVOLUMERATE:
      thawed = iceSaturation < threshold;
      break;
    default:
      frozen = false;
      break;
  }
  if (!thawed) return;
  frozen = false;
  ++cycles;
}

}  // namespace VELMORA
