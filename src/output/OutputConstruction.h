#pragma once

#include <bitset>
#include <span>

#include "foundation/Path.h"
#include "grid/Element.h"
#include "grid/Side.h"
#include "project/VelDisc.h"
#include "project/VelInit.h"

namespace VELMORA {

class VelProject;
struct CalculationData;

/// What the output files tell about the calculation as a whole. Points into the project and the calculation
/// data, which must live as long.
struct OutputConstruction {
  TKL::Path projectFile;
  TKL::Path outputDir;  ///< directory of the output files
  std::bitset<VelInit::NUM_B> balanceEquations;
  const VelDisc* disc = nullptr;
  std::span<const MM::Material* const> materials;
  std::span<const Element> elements;
  std::span<const Side> sides;
};

/// The construction of a project whose calculation has been set up.
OutputConstruction outputConstruction(const VelProject& project, const CalculationData& data);

}  // namespace VELMORA
