#include <climits>
#include <cstdint>
#include <numeric>

#include "foundation/Exception.h"
#include "foundation/FormatString.h"
#include "foundation/Message.h"
#include "project/AssignElements.h"
#include "project/ElementGrid.h"
#include "project/SetupCalculation.h"

namespace VELMORA::setup {

namespace {

/// Numbers of cells and sides are 32-bit integers; a grid beyond that is no grid that anyone means.
bool isUsableSize(std::size_t columns, std::size_t rows) {
  return columns > 0 && rows > 0 && columns < INT_MAX && rows < INT_MAX &&
         (columns + 1) <= INT_MAX / (rows + 1);
}

void checkElementCount(std::size_t count) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  progress(TKL::FormatString("Elements numbered, number of elements: %1\n").arg(count).str());
  if (count == 0) throw TKL::Exception("No materials assigned to the construction grid!", FUNC_ID);
  if (count == 1) {
    throw TKL::Exception("Just one element specified. Discretization missing?", FUNC_ID);
  }
}

void checkGridSize(const VelDisc& disc) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  const double width = std::accumulate(disc.dx.data.begin(), disc.dx.data.end(), 0.0);
  const double height = std::accumulate(disc.dy.data.begin(), disc.dy.data.end(), 0.0);
  if (!(width > 0.0)) throw TKL::Exception("Invalid discretization data in x-direction!", FUNC_ID);
  if (!(height > 0.0)) throw TKL::Exception("Invalid discretization data in y-direction!", FUNC_ID);
  const bool rsym = disc.geometry == VelDisc::G_RSYM;
  const TKL::MessageIndentor indentor;
  progress(
      TKL::FormatString(rsym ? "Grid width  (x-dim, radius) = %1 m\n" : "Grid width  (x-dimension) = %1 m\n")
          .arg(width)
          .str());
  progress(
      TKL::FormatString(rsym ? "Grid height (y-dim, height) = %1 m\n" : "Grid height (y-dimension) = %1 m\n")
          .arg(height)
          .str());
}

}  // namespace

IndexMatrix createElements(const VelProject& project, CalculationData& data) {
  const char* const FUNC_ID = "[VelProject::setup_calculation]";
  const VelDisc& disc = project.m_disc;
  if (!isUsableSize(disc.dx.data.size(), disc.dy.data.size())) {
    throw TKL::Exception("Invalid or missing discretization (dx and dy vectors)!", FUNC_ID);
  }
  const int nx = static_cast<int>(disc.dx.data.size());
  const int ny = static_cast<int>(disc.dy.data.size());
  check_ranges(nx, ny, project.m_assignments);

  progress("Creating element index matrix and selecting used elements\n");
  IndexMatrix indexMatrix(nx, ny);
  selectUsedCells(project.m_assignments, indexMatrix);

  progress("Numbering elements and creating vector with used elements\n");
  const Numbering numbering = numberElements(indexMatrix, data.elements);
  data.bandWidth = numbering.bandWidth;
  data.numberedRowWise = numbering.rowWise;
  checkElementCount(data.elements.size());

  progress("Calculating element geometry\n");
  checkGridSize(disc);
  setElementGeometry(disc, indexMatrix, data.elements);
  return indexMatrix;
}

void assignToElements(const VelProject& project, const IndexMatrix& indexMatrix, CalculationData& data) {
  const VelAssignments& assignments = project.m_assignments;
  progress("Assigning materials\n");
  assignMaterials(assignments, project.m_materials.materials, indexMatrix, data.elements);
  progress("Assigning initial conditions\n");
  assignInitialConds(assignments, data.initialConds, indexMatrix, data.elements);
  progress("Assigning field conditions\n");
  assignFieldConds(assignments, data.fieldConds, indexMatrix, data.elements);
  for (VelFieldCond& condition : data.fieldConds) condition.matchRemoteElements(data.elements);
}

}  // namespace VELMORA::setup
