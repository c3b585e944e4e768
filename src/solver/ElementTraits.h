#pragma once

#include <vector>

#include "material/Material.h"
#include "project/CalculationData.h"
#include "solver/ModelSettings.h"

namespace VELMORA_SOLVER {

/// What does not change at an element during a run, looked up once.
struct ElementTraits {
  const MM::Material* material = nullptr;
  const MM::MoistureStorage* storage = nullptr;      ///< of the material
  const MM::MoistureTransport* transport = nullptr;  ///< of the material, in the direction of calculation
  bool isAir = false;
  bool vapourTight = false;
  bool liquidTight = false;        ///< water tight, or air: no liquid moves in it
  bool storesNothing = false;      ///< tight to vapour and water: its moisture has no pressure
  bool risesToSaturation = true;   ///< its retention curve, looked at in runs with ice
  bool needsConductivity = true;   ///< a flow at it is calculated from the liquid conductivity
  bool hasPlainPotential = false;  ///< its liquid needs nothing but the flow potential of its content
  double thetaEff = 0.0;           ///< [m3/m3] effective saturation, 1 for air
  double thetaPor = 0.0;           ///< [m3/m3] porosity
  double thetaMax = 0.0;           ///< [m3/m3] upper limit of the moisture content
  double gravityHead = 0.0;  ///< [Pa] weight of the water column from the top to the centre of the element
};

/// Traits of all elements, by their number, each as if it needed its liquid conductivity. Elements without a
/// material get none.
std::vector<ElementTraits> elementTraits(const std::vector<VELMORA::Element>& elements,
                                         const ModelSettings& settings);

/// The same for a whole construction. With the flow potential, liquid conductivities are needed beside sides
/// with a resistance against liquid water only.
std::vector<ElementTraits> elementTraits(const VELMORA::CalculationData& data, const ModelSettings& settings);

}  // namespace VELMORA_SOLVER
