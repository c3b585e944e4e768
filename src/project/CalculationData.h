#pragma once

#include <vector>

#include "climate/VelClimateCond.h"
#include "foundation/Path.h"
#include "grid/Element.h"
#include "grid/IndexMatrix.h"
#include "grid/Side.h"
#include "project/VelBoundaryCond.h"
#include "project/VelContactCond.h"
#include "project/VelFieldCond.h"
#include "project/VelInitialCond.h"
#include "project/VelOutputFile.h"
#include "project/VelOutputFormat.h"
#include "project/VelOutputGrid.h"
#include "project/VelWallData.h"

namespace MM {
class Material;
}

namespace VELMORA {

/// What the solver runs on, as `VelProject::setup_calculation` makes it of a project. The vectors own the
/// conditions, elements and sides; elements, sides, conditions and output files point into them. So no
/// vector may change its size after the set-up, and the struct can be moved but not copied. The materials
/// belong to the project, which must live as long.
struct CalculationData {
  CalculationData() = default;
  CalculationData(const CalculationData&) = delete;
  CalculationData& operator=(const CalculationData&) = delete;
  CalculationData(CalculationData&&) = default;
  CalculationData& operator=(CalculationData&&) = default;
  ~CalculationData() = default;

  /// Only what the assignments reach, each in project order.
  std::vector<const MM::Material*> materials;
  std::vector<VelWallData> wallData;
  std::vector<VelClimateCond> climateConds;
  std::vector<VelBoundaryCond> boundaryConds;
  std::vector<VelInitialCond> initialConds;
  std::vector<VelFieldCond> fieldConds;  ///< the last one is a hidden adsorption condition
  std::vector<VelContactCond> contactConds;

  std::vector<VelOutputFormat> outputFormats;  ///< all formats of the project
  std::vector<VelOutputGrid> outputGrids;      ///< grids that a file refers to, in project order
  std::vector<VelOutputFile> outputFiles;      ///< files that an assignment refers to

  std::vector<Element> elements;
  std::vector<Side> sides;                     ///< horizontal ones first, then vertical ones
  std::vector<SideQuantities> sideQuantities;  ///< one row for each side
  IndexMatrix indexMatrix;                     ///< element numbers of the cells of the grid

  int bandWidth = 0;             ///< largest distance of the numbers of two neighbours
  bool numberedRowWise = false;  ///< numbering runs along the rows
  TKL::Path outputDir;           ///< the directory of the output files, which exists
};

}  // namespace VELMORA
