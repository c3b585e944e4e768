#pragma once

#include <cstdint>

#include "material/Material.h"

namespace VELMORA {

/// Counts how often an element has frozen and thawed.
///
/// An element is frozen from the moment on at which its ice fills a given share of the pores. A cycle is
/// complete when it thaws: when it is warmer than the freezing point, or when its ice fills less than that
/// share.
class FreezeThaw {
 public:
  bool frozen = false;
  const MM::Material* material = nullptr;  ///< not owned
  double poreVolume = 1.0;                 ///< [m3/m3]
  std::uint32_t cycles = 0;                ///< completed ones
  double iceSaturation = 0.0;              ///< [-] ice volume to pore volume at the last update

  /// Takes the pore volume from the material: THETA_POR, else THETA_EFF. Without either of them the pointer
  /// is null and the pore volume stays.
  /// @throws TKL::Exception "NULL pointer passed to FreezeThaw setMaterial()."
  void setMaterial(const MM::Material* newMaterial);

  /// Takes the state of the element into account.
  /// @param rhoIce     [kg/m3] ice per total volume
  /// @param T          [K]
  /// @param threshold  [-] ice to pore volume, at which the element freezes
  /// @param kind       what ends the frozen state, a `VelOutputs::ThawBeginKind`; any other value ends
  ///                   it at the next update without a count
  void update(double rhoIce, double T, double threshold, int kind);
};

}  // namespace VELMORA
